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

if(BUILD_SHARED_LIBS)
  # A DLL and its program share one runtime of the compiler, or exceptions would not get from one to the other.
  foreach(library IN ITEMS libstdc++-6 libgcc_s_dw2-1 libgcc_s_seh-1 libwinpthread-1)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${library}.dll
                    OUTPUT_VARIABLE file OUTPUT_STRIP_TRAILING_WHITESPACE)
    if(IS_ABSOLUTE "${file}")
      list(APPEND VORN_RUNTIME_DLLS "${file}")
    endif()
  endforeach()
else()
  # A program needs no file beside it: the runtime of the compiler is part of it.
  set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
endif()
set(ZLIB_LIBRARY /usr/${VORN_MINGW}/lib/libz.a CACHE FILEPATH "zlib for Windows")

include("${CMAKE_CURRENT_LIST_DIR}/foreign.cmake")
