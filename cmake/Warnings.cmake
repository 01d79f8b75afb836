# Compiler settings of everything in this project.
add_library(quillmar_warnings INTERFACE)
target_compile_options(quillmar_warnings INTERFACE
  $<$<COMPILE_LANGUAGE:C,CXX>:-Wall;-Wextra;-Wpedantic;-Werror>
  # Reports name their source file relative to the project, wherever it was built.
  $<$<COMPILE_LANGUAGE:C,CXX>:-ffile-prefix-map=${CMAKE_SOURCE_DIR}/=>)
if(NOT WIN32 AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # Otherwise a template's static data would keep a library loaded that was unloaded.
  target_compile_options(quillmar_warnings INTERFACE -fno-gnu-unique)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 takes a text put before another for overlapping memory when it inlines much (-O3).
  target_compile_options(quillmar_warnings INTERFACE -Wno-restrict)
endif()
