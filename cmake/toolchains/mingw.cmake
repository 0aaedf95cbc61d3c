# What the toolchains for Windows have in common; VORN_MINGW is the prefix of the compiler's tools.
set(CMAKE_SYSTEM_NAME Windows)

# The threads of the C++ standard library are those of the "posix" compilers.
set(CMAKE_C_COMPILER ${VORN_MINGW}-gcc-posix)
set(CMAKE_CXX_COMPILER ${VORN_MINGW}-g++-posix)
set(CMAKE_RC_COMPILER ${VORN_MINGW}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${VORN_MINGW})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# A program needs no file beside it: the runtime of the compiler and zlib are part of it.
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
set(CMAKE_SHARED_LINKER_FLAGS_INIT -static)
set(ZLIB_LIBRARY /usr/${VORN_MINGW}/lib/libz.a CACHE FILEPATH "zlib for Windows")

include("${CMAKE_CURRENT_LIST_DIR}/foreign.cmake")
