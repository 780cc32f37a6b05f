# tessaline_engine_tests(NAME SOURCE LIBRARY): the suite that every engine passes, as the programs
# NAME_tests and NAME_processes_tests. SOURCE defines newStore() of StoreUnderTest.h.
set(TESSALINE_SUITE ${CMAKE_CURRENT_LIST_DIR})
function(tessaline_engine_tests name source library)
  set(programs ${name}_tests)
  tessaline_test(${name}_tests ${source}
    ${TESSALINE_SUITE}/AgreementUpdateTest.cpp
    ${TESSALINE_SUITE}/RandomWritesTest.cpp
    ${TESSALINE_SUITE}/RecordsTest.cpp
    ${TESSALINE_SUITE}/SelectionTest.cpp
    ${TESSALINE_SUITE}/SentenceTest.cpp)
  # Processes that fork and are killed.
  if(NOT WIN32)
    list(APPEND programs ${name}_processes_tests)
    tessaline_test(${name}_processes_tests ${source}
      ${TESSALINE_SUITE}/AgreementUpdateProcessesTest.cpp
      ${TESSALINE_SUITE}/ProcessesTest.cpp)
  endif()
  foreach(program ${programs})
    target_include_directories(${program} PRIVATE ${TESSALINE_SUITE})
    target_link_libraries(${program} PRIVATE ${library})
  endforeach()
endfunction()
