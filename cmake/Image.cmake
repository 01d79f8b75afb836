# Libraries, programs and files of the image: the folder tree that stands for drive C of a machine
# on which the suite is installed. FOLDER is relative to drive C, with "/" between its parts.
set(QUILLMAR_IMAGE ${CMAKE_BINARY_DIR}/image)
set(QUILLMAR_DRIVE_C ${QUILLMAR_IMAGE}/drive_c)
set(QUILLMAR_SUITE_FOLDER Vantorel/Fendrake)
set(QUILLMAR_MODULE_FOLDER Vantorel/Quillmar)
set(QUILLMAR_CAD_FOLDER Drawboard)

# Everything that belongs on drive C, for whoever wants to run it and not the tests.
add_custom_target(image)

function(quillmar_place_in_image target folder name suffix)
  add_dependencies(image ${target})
  set_target_properties(${target} PROPERTIES
    PREFIX "" OUTPUT_NAME ${name} SUFFIX ${suffix}
    LIBRARY_OUTPUT_DIRECTORY ${QUILLMAR_DRIVE_C}/${folder}
    RUNTIME_OUTPUT_DIRECTORY ${QUILLMAR_DRIVE_C}/${folder}
    ARCHIVE_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/import)
endfunction()

# A library <name>.dll with its undecorated exports.
#   quillmar_image_library(<target> FOLDER <folder> NAME <name> SOURCES ... LINKS ...)
function(quillmar_image_library target)
  cmake_parse_arguments(ARG "" "FOLDER;NAME" "SOURCES;LINKS" ${ARGN})
  add_library(${target} SHARED ${ARG_SOURCES})
  quillmar_place_in_image(${target} ${ARG_FOLDER} ${ARG_NAME} ".dll")
  target_link_libraries(${target} PRIVATE quillmar_contracts quillmar_warnings ${ARG_LINKS})
  set_target_properties(${target} PROPERTIES CXX_VISIBILITY_PRESET hidden
                                             C_VISIBILITY_PRESET hidden)
  if(WIN32)
    target_link_libraries(${target} PRIVATE quillmar_leftovers)
    target_link_options(${target} PRIVATE -Wl,--kill-at)
  endif()
endfunction()

# A program <name>.exe.
#   quillmar_image_program(<target> FOLDER <folder> NAME <name> SOURCES ... LINKS ...)
function(quillmar_image_program target)
  cmake_parse_arguments(ARG "" "FOLDER;NAME" "SOURCES;LINKS" ${ARGN})
  add_executable(${target} ${ARG_SOURCES})
  quillmar_place_in_image(${target} ${ARG_FOLDER} ${ARG_NAME} ".exe")
  target_link_libraries(${target} PRIVATE quillmar_contracts quillmar_warnings ${ARG_LINKS})
endfunction()

# Copies files into a folder of drive C, again whenever they change.
function(quillmar_image_files folder)
  foreach(file IN LISTS ARGN)
    get_filename_component(name ${file} NAME)
    configure_file(${file} ${QUILLMAR_DRIVE_C}/${folder}/${name} COPYONLY)
  endforeach()
endfunction()
