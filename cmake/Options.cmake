# Flags for the project's own code; third-party code is built without them.
add_library(tessaline_options INTERFACE)
target_include_directories(tessaline_options INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_options(tessaline_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
# GCC 12 takes `"x" + std::string` for overlapping copies when it optimises (its bug 105651).
target_compile_options(tessaline_options INTERFACE $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wno-restrict>)
if(TESSALINE_SANITIZE)
  target_compile_options(tessaline_options INTERFACE -fsanitize=address -fno-omit-frame-pointer)
  target_link_options(tessaline_options INTERFACE -fsanitize=address,undefined)
  # The tests' own code, by far the larger part, goes without these, since it compiles a third
  # faster so, and runs once: the folder of the tests sets this empty.
  set(TESSALINE_PRODUCT_CHECKS -O1 -fsanitize=undefined -fno-sanitize-recover=all)
endif()
if(TESSALINE_FUZZ)
  target_compile_options(tessaline_options INTERFACE -fsanitize=fuzzer-no-link)
endif()
if(TESSALINE_COVERAGE)
  target_compile_options(tessaline_options INTERFACE -fprofile-instr-generate -fcoverage-mapping)
  target_link_options(tessaline_options INTERFACE -fprofile-instr-generate)
endif()
if(WIN32)
  # The same sources give the same bytes at any time.
  target_link_options(tessaline_options INTERFACE -Wl,--no-insert-timestamp)
  target_compile_definitions(tessaline_options INTERFACE
    UNICODE _UNICODE WINVER=0x0A00 _WIN32_WINNT=0x0A00 NOMINMAX WIN32_LEAN_AND_MEAN STRICT)
endif()

# The headers that nearly every file reads are read once, by a target of their own for the product
# and one for the tests; other files reuse what it has read. That a file includes what it needs is
# seen by clang-tidy, which reads each file alone.
# tessaline_precompile(NAME HEADERS...): such a target.
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  # What the compiler cache has kept is as good as what was compiled now.
  target_compile_options(tessaline_options INTERFACE "SHELL:-Xclang -fno-pch-timestamp")
endif()
function(tessaline_precompile name)
  file(CONFIGURE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp CONTENT "")
  add_library(${name} OBJECT ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp)
  target_link_libraries(${name} PRIVATE tessaline_options)
  target_compile_options(${name} PRIVATE ${TESSALINE_PRODUCT_CHECKS})
  target_precompile_headers(${name} PRIVATE ${ARGN})
endfunction()
set(TESSALINE_STANDARD_HEADERS <algorithm> <array> <functional> <map> <memory> <optional> <string>
  <string_view> <vector>)
# GCC 12 warns of what is right (its bug 105651) when it optimises, in standard headers too once they
# are precompiled: it reads them file by file.
set(TESSALINE_PRECOMPILES ON)
if(WIN32)
  tessaline_precompile(tessaline_precompiled <windows.h> <ole2.h>)
  list(PREPEND TESSALINE_STANDARD_HEADERS <windows.h> <ole2.h>)
elseif(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  tessaline_precompile(tessaline_precompiled ${TESSALINE_STANDARD_HEADERS})
else()
  set(TESSALINE_PRECOMPILES OFF)
endif()
# Which of them the targets of a folder reuse.
set(TESSALINE_PRECOMPILED tessaline_precompiled)

# Compiled some at a time, sources take half as long. A folder asks for it by setting this; what its
# sources declare in namespaces without a name is then told apart.
set(TESSALINE_TOGETHER OFF)
option(TESSALINE_ALONE "Compile each source by itself all the same" OFF)
set(TESSALINE_BATCH 6)

function(tessaline_own name visibility)
  target_link_libraries(${name} ${visibility} tessaline_options)
  target_compile_options(${name} PRIVATE ${TESSALINE_PRODUCT_CHECKS})
  if(TESSALINE_PRECOMPILES)
    target_precompile_headers(${name} REUSE_FROM ${TESSALINE_PRECOMPILED})
  endif()
  if(TESSALINE_TOGETHER AND NOT TESSALINE_ALONE)
    set_target_properties(${name} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE ${TESSALINE_BATCH})
  endif()
endfunction()

# tessaline_library(NAME SOURCES... ): a static library of the project's own code.
function(tessaline_library name)
  add_library(${name} STATIC ${ARGN})
  tessaline_own(${name} PUBLIC)
endfunction()

# The same of a program, and of a shared library.
function(tessaline_program name)
  add_executable(${name} ${ARGN})
  tessaline_own(${name} PRIVATE)
endfunction()
function(tessaline_module name)
  add_library(${name} SHARED ${ARGN})
  tessaline_own(${name} PRIVATE)
endfunction()

# tessaline_test(NAME SOURCES...): a GoogleTest program named NAME, known to ctest.
function(tessaline_test name)
  tessaline_program(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE tessaline_gtest)
  add_test(NAME ${name} COMMAND ${name})
endfunction()
