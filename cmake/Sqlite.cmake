# qm::sqlite: the library of the machine on the native target; on the Windows target one compiled once
# from the same Debian source and kept in the cache folder.
add_library(qm_sqlite INTERFACE)
add_library(qm::sqlite ALIAS qm_sqlite)
if(WIN32)
  execute_process(COMMAND ${CMAKE_SOURCE_DIR}/scripts/windows-sqlite
                  OUTPUT_VARIABLE folder OUTPUT_STRIP_TRAILING_WHITESPACE RESULT_VARIABLE status)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "SQLite for the Windows target could not be made.")
  endif()
  target_include_directories(qm_sqlite SYSTEM INTERFACE ${folder})
  target_link_libraries(qm_sqlite INTERFACE ${folder}/libsqlite3.a)
else()
  find_package(SQLite3 REQUIRED)
  target_link_libraries(qm_sqlite INTERFACE SQLite::SQLite3)
endif()
