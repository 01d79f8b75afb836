# Header-only libraries of companions, tools and tests, the same ones on both targets:
#   qm::json (nlohmann-json)   qm::cli11 (CLI11)   qm::fmt (fmt)
# A cross-compiler must never see the whole of /usr/include, so each gets a folder that holds nothing
# but a link to its own headers.
function(quillmar_header_library name folder)
  if(NOT IS_DIRECTORY /usr/include/${folder})
    message(FATAL_ERROR "/usr/include/${folder} is missing; scripts/setup installs what is needed.")
  endif()
  set(view ${CMAKE_BINARY_DIR}/headers/${name})
  file(MAKE_DIRECTORY ${view})
  file(CREATE_LINK /usr/include/${folder} ${view}/${folder} SYMBOLIC)
  add_library(qm_${name} INTERFACE)
  add_library(qm::${name} ALIAS qm_${name})
  target_include_directories(qm_${name} SYSTEM INTERFACE ${view})
endfunction()

quillmar_header_library(json nlohmann)
quillmar_header_library(cli11 CLI)
quillmar_header_library(fmt fmt)
target_compile_definitions(qm_fmt INTERFACE FMT_HEADER_ONLY)
