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
function(strict_library target)
  strict_image_scope()
  quillmar_image_library(${target} ${ARGN})
  target_include_directories(${target} PRIVATE ${CMAKE_SOURCE_DIR}/tests/strict)
  # Import libraries bear the names of the suite's.
  set_target_properties(${target} PROPERTIES
                        ARCHIVE_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/strict/import/${target})
endfunction()

#   strict_program(<target> FOLDER <folder> NAME <name> SOURCES ... [LINKS ...])
function(strict_program target)
  strict_image_scope()
  quillmar_image_program(${target} ${ARGN})
  target_include_directories(${target} PRIVATE ${CMAKE_SOURCE_DIR}/tests/strict)
endfunction()

# Names of the functions whose entries in a contract's list begin with PREFIX.
function(strict_contract_functions out header prefix)
  file(READ ${CMAKE_SOURCE_DIR}/include/quillmar/${header} text)
  string(REGEX MATCHALL "X\\(${prefix}[A-Za-z0-9_]+" names "${text}")
  list(TRANSFORM names REPLACE "X\\(${prefix}" "")
  set(${out} ${names} PARENT_SCOPE)
endfunction()
