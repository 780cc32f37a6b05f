# Third-party code that the scripts install: GoogleTest and SQLite from source (so that both targets
# build them alike), CLI11 and nlohmann-json as headers.
set(TESSALINE_SQLITE_DIR ${CMAKE_SOURCE_DIR}/.cache/sqlite CACHE PATH "SQLite amalgamation")

if(NOT EXISTS ${TESSALINE_SQLITE_DIR}/sqlite3.c)
  message(FATAL_ERROR "No SQLite source in ${TESSALINE_SQLITE_DIR}: run scripts/install first")
endif()
add_library(tessaline_sqlite STATIC ${TESSALINE_SQLITE_DIR}/sqlite3.c)
target_include_directories(tessaline_sqlite SYSTEM PUBLIC ${TESSALINE_SQLITE_DIR})
# Each thread may have connections of its own; one connection is used by one thread at a time.
target_compile_definitions(tessaline_sqlite PUBLIC SQLITE_THREADSAFE=2 SQLITE_DQS=0
  SQLITE_OMIT_LOAD_EXTENSION SQLITE_OMIT_DEPRECATED SQLITE_DEFAULT_MEMSTATUS=0)
# Under sanitizers it is built as often as it runs.
if(TESSALINE_SANITIZE)
  target_compile_options(tessaline_sqlite PRIVATE -w -g0 -O1)
else()
  target_compile_options(tessaline_sqlite PRIVATE -w -O2)
endif()

# GoogleTest as one object library, without its own build's warnings about this project's flags.
add_library(tessaline_gtest STATIC EXCLUDE_FROM_ALL
  /usr/src/googletest/googletest/src/gtest-all.cc
  /usr/src/googletest/googlemock/src/gmock-all.cc
  /usr/src/googletest/googlemock/src/gmock_main.cc)
target_include_directories(tessaline_gtest SYSTEM
  PUBLIC /usr/src/googletest/googletest/include /usr/src/googletest/googlemock/include
  PRIVATE /usr/src/googletest/googletest /usr/src/googletest/googlemock)
target_compile_options(tessaline_gtest PRIVATE -w -g0 -O0)
find_package(Threads REQUIRED)
target_link_libraries(tessaline_gtest PUBLIC Threads::Threads)

# Header-only libraries through links of their own: a cross compiler must not see /usr/include.
set(headers ${CMAKE_BINARY_DIR}/third-party-headers)
file(MAKE_DIRECTORY ${headers})
foreach(library CLI nlohmann)
  file(CREATE_LINK /usr/include/${library} ${headers}/${library} SYMBOLIC)
endforeach()
add_library(tessaline_headers INTERFACE)
target_include_directories(tessaline_headers SYSTEM INTERFACE ${headers})
