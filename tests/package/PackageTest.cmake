# Installs the package into an empty folder and builds projects against it.
function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE told ERROR_VARIABLE told)
  if(NOT status EQUAL 0)
    list(JOIN ARGN " " line)
    message(FATAL_ERROR "${line}\n${told}")
  endif()
  set(told "${told}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE ${WORK})
set(package ${WORK}/package)
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${package} --component development)

if(TOOLCHAIN)
  # A toolchain looks for packages in its own folder only.
  set(compilers -DQuillmar_DIR=${package}/lib/cmake/Quillmar -DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN})
else()
  set(compilers -DCMAKE_PREFIX_PATH=${package} -DCMAKE_C_COMPILER=${C_COMPILER}
                -DCMAKE_CXX_COMPILER=${CXX_COMPILER})
endif()
foreach(project ${SOURCE}/tests/package/consumer ${SOURCE}/samples/addin)
  get_filename_component(name ${project} NAME)
  run(${CMAKE_COMMAND} -G Ninja -S ${project} -B ${WORK}/${name} ${compilers}
      -DEXPECTED_VERSION=${VERSION})
  run(${CMAKE_COMMAND} --build ${WORK}/${name})
endforeach()

file(GLOB_RECURSE pc ${package}/*/quillmar.pc)
get_filename_component(folder ${pc} DIRECTORY)
set(ENV{PKG_CONFIG_PATH} ${folder})
run(pkg-config --modversion quillmar)
if(NOT told STREQUAL "${VERSION}\n")
  message(FATAL_ERROR "pkg-config says version ${told}")
endif()
run(pkg-config --cflags quillmar)
string(STRIP "${told}" flags)
run(${C_COMPILER} ${flags} -c ${SOURCE}/tests/package/consumer/Headers.c -o ${WORK}/Headers.o)
