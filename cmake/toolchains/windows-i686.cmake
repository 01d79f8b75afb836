# The Windows target: 32-bit programs and libraries, made by the mingw-w64 cross-compiler with the
# POSIX thread model. A part of the package too, for add-ins; in the checkout scripts/wine-run runs
# what was built.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86)

set(CMAKE_C_COMPILER i686-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER i686-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER i686-w64-mingw32-windres)
if(EXISTS ${CMAKE_CURRENT_LIST_DIR}/../../scripts/wine-run)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../../scripts/wine-run)
endif()

# Packages of this machine do not count, those that the user names do.
set(CMAKE_FIND_ROOT_PATH /usr/i686-w64-mingw32 ${CMAKE_PREFIX_PATH})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# SSE arithmetic, so that numbers come out as on the native target (x87 would keep more digits); a
# stack made straight on entry, for callers that keep it aligned to 4 bytes only.
set(CMAKE_C_FLAGS_INIT "-march=pentium4 -mfpmath=sse -mstackrealign")
set(CMAKE_CXX_FLAGS_INIT "-march=pentium4 -mfpmath=sse -mstackrealign")

# Every library carries its own runtime: a guest must not need one in its host's folder.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")
