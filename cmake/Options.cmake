# Flags for the project's own code; third-party code is built without them.
add_library(tessaline_options INTERFACE)
target_include_directories(tessaline_options INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_options(tessaline_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
# GCC 12 takes `"x" + std::string` for overlapping copies when it optimises (its bug 105651).
target_compile_options(tessaline_options INTERFACE $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wno-restrict>)
if(TESSALINE_SANITIZE)
  target_compile_options(tessaline_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(tessaline_options INTERFACE -fsanitize=address,undefined)
endif()
if(WIN32)
  target_compile_definitions(tessaline_options INTERFACE
    UNICODE _UNICODE WINVER=0x0A00 _WIN32_WINNT=0x0A00 NOMINMAX WIN32_LEAN_AND_MEAN STRICT)
endif()

# tessaline_library(NAME SOURCES... ): a static library of the project's own code.
function(tessaline_library name)
  add_library(${name} STATIC ${ARGN})
  target_link_libraries(${name} PUBLIC tessaline_options)
endfunction()

# tessaline_test(NAME SOURCES...): a GoogleTest program named NAME, known to ctest.
function(tessaline_test name)
  add_executable(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE tessaline_options tessaline_gtest)
  add_test(NAME ${name} COMMAND ${name})
endfunction()
