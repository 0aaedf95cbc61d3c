# 64-bit programs for Windows; wine runs the tests.
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(VORN_MINGW x86_64-w64-mingw32)
include("${CMAKE_CURRENT_LIST_DIR}/mingw.cmake")

find_program(VORN_WINE NAMES wine64 wine64-stable PATHS /usr/lib/wine NO_CMAKE_FIND_ROOT_PATH)
mark_as_advanced(VORN_WINE)
if(VORN_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR "${VORN_WINE}")
endif()
