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
