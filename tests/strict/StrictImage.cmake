# The strict image: laid out like the suite's (cmake/Image.cmake) in a folder of its own. Setting the
# folders in the calling scope turns the functions of Image.cmake to this image.
set(STRICT_IMAGE ${CMAKE_BINARY_DIR}/strict/image)
set(STRICT_DRIVE_C ${STRICT_IMAGE}/drive_c)
set(STRICT_CAD_FOLDER Strictcad)

macro(strict_image_scope)
  set(QUILLMAR_IMAGE ${STRICT_IMAGE})
  set(QUILLMAR_DRIVE_C ${STRICT_DRIVE_C})
endmacro()

#   strict_library(<target> FOLDER <folder> NAME <name> SOURCES ... [LINKS ...])
#   strict_program(<target> FOLDER <folder> NAME <name> SOURCES ... [LINKS ...])
# What lies in the add-in's folder is put into the suite's image too: contract tests bring their own
# add-in and host to both.
function(strict_library target)
  set(suite_drive_c ${QUILLMAR_DRIVE_C})
  strict_image_scope()
  quillmar_image_library(${target} ${ARGN})
  strict_finish(${target} ${suite_drive_c} ${ARGN})
endfunction()

function(strict_program target)
  set(suite_drive_c ${QUILLMAR_DRIVE_C})
  strict_image_scope()
  quillmar_image_program(${target} ${ARGN})
  strict_finish(${target} ${suite_drive_c} ${ARGN})
endfunction()

function(strict_finish target suite_drive_c)
  cmake_parse_arguments(ARG "" "FOLDER" "" ${ARGN})
  target_include_directories(${target} PRIVATE ${CMAKE_SOURCE_DIR}/tests/strict)
  # Import libraries bear the names of the suite's.
  set_target_properties(${target} PROPERTIES
                        ARCHIVE_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/strict/import/${target})
  set_property(GLOBAL APPEND PROPERTY STRICT_TARGETS ${target})
  if(ARG_FOLDER MATCHES "^${STRICT_CAD_FOLDER}")
    set(place ${suite_drive_c}/${ARG_FOLDER})
    add_custom_command(TARGET ${target} POST_BUILD
      COMMAND ${CMAKE_COMMAND} -E make_directory ${place}
      COMMAND ${CMAKE_COMMAND} -E copy $<TARGET_FILE:${target}> ${place}/$<TARGET_FILE_NAME:${target}>)
  endif()
endfunction()

# Names of the functions whose entries in a contract's list begin with PREFIX.
function(strict_contract_functions out header prefix)
  file(READ ${CMAKE_SOURCE_DIR}/include/quillmar/${header} text)
  string(REGEX MATCHALL "X\\(${prefix}[A-Za-z0-9_]+" names "${text}")
  list(TRANSFORM names REPLACE "X\\(${prefix}" "")
  set(${out} ${names} PARENT_SCOPE)
endfunction()
