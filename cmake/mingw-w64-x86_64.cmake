# Cross build for 64-bit Windows with mingw-w64 (Debian's posix thread
# variant, which has the standard library's threads and locks). Programs and
# the DLL are linked statically against the compiler's runtime, so that
# tmrdar.dll and the programs need no DLL but the system's. With Wine on
# the path, tests run under it.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(TMRDAR_MINGW_TRIPLE x86_64-w64-mingw32)

set(CMAKE_C_COMPILER ${TMRDAR_MINGW_TRIPLE}-gcc-posix)
set(CMAKE_CXX_COMPILER ${TMRDAR_MINGW_TRIPLE}-g++-posix)
set(CMAKE_RC_COMPILER ${TMRDAR_MINGW_TRIPLE}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${TMRDAR_MINGW_TRIPLE})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")

find_program(TMRDAR_WINE NAMES wine64 wine PATHS /usr/lib/wine NO_CMAKE_FIND_ROOT_PATH)
if(TMRDAR_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${TMRDAR_WINE})
endif()
