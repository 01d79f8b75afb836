# Test programs of unit tests (one GoogleTest binary a floor; on the Windows target run by the
# cross-compiling emulator).
#
#   quillmar_test(<name> SOURCES ... LINKS ...)
function(quillmar_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LINKS} quillmar_contracts quillmar_warnings
                                        GTest::gmock_main)
  add_test(NAME ${name} COMMAND ${name})
endfunction()

# The modeller keeps objects for the life of the process that its own libraries lose sight of: no
# leaks of the tests that use it, or start who does.
function(quillmar_tests_with_solids)
  set_tests_properties(${ARGN} PROPERTIES ENVIRONMENT
    "LSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/drawboard/native/leaks.txt:print_suppressions=0")
endfunction()
