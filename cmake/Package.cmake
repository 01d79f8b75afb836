# What "cmake --install" gives. Component "development": all that an author of an add-in compiles
# against. Component "tools": the command-line programs. Component "module": Quillmar.dll (Windows).
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(package_folder ${CMAKE_BINARY_DIR}/package)
set(package_cmake ${CMAKE_INSTALL_LIBDIR}/cmake/Quillmar)

install(DIRECTORY include/quillmar DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)

if(WIN32)
  # The import library is made from the list of exports. A function of the standard convention is
  # called by its decorated name and found by its plain one, which is what killing the "@n" does.
  set(exports ${CMAKE_SOURCE_DIR}/src/exports/Quillmar.def)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${exports})
  file(READ ${exports} definition)
  string(REGEX REPLACE "[A-Za-z0-9_]+=([A-Za-z0-9_]+@[0-9]+)" "\\1" definition "${definition}")
  file(CONFIGURE OUTPUT ${package_folder}/Quillmar.def CONTENT "${definition}" @ONLY)
  set(import_library ${package_folder}/libQuillmar.dll.a)
  add_custom_command(OUTPUT ${import_library} DEPENDS ${package_folder}/Quillmar.def
    COMMAND ${CMAKE_DLLTOOL} --kill-at --input-def ${package_folder}/Quillmar.def
            --dllname Quillmar.dll --output-lib ${import_library})
  add_custom_target(import_library ALL DEPENDS ${import_library})
  install(FILES ${import_library} ${package_folder}/Quillmar.def
          DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
  install(TARGETS Quillmar RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT module)
  set(package_libraries "-L\${libdir} -lQuillmar")
else()
  # The tools play the machine with it.
  install(TARGETS quillmar_platform LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/quillmar
          COMPONENT tools)
  set(package_libraries "")
endif()

set(tools quillmar-addin quillmar-convert quillmar-store quillmar-trace)
set_target_properties(${tools} PROPERTIES
  INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}/quillmar")
install(TARGETS ${tools} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tools)

# An add-in for Windows is a 32-bit library too.
install(FILES cmake/toolchains/windows-i686.cmake DESTINATION ${package_cmake}
        COMPONENT development)
install(FILES docs/addin-guide.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development)
install(DIRECTORY samples/addin DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development)

configure_package_config_file(cmake/QuillmarConfig.cmake.in ${package_folder}/QuillmarConfig.cmake
  INSTALL_DESTINATION ${package_cmake}
  PATH_VARS CMAKE_INSTALL_INCLUDEDIR CMAKE_INSTALL_LIBDIR CMAKE_INSTALL_BINDIR)
# Headers alone serve 32- and 64-bit tools alike.
write_basic_package_version_file(${package_folder}/QuillmarConfigVersion.cmake
  COMPATIBILITY SameMajorVersion ARCH_INDEPENDENT)
configure_file(cmake/quillmar.pc.in ${package_folder}/quillmar.pc @ONLY)
install(FILES ${package_folder}/QuillmarConfig.cmake ${package_folder}/QuillmarConfigVersion.cmake
        DESTINATION ${package_cmake} COMPONENT development)
install(FILES ${package_folder}/quillmar.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
