# 32-bit programs for this machine itself, which runs them.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR i686)

set(CMAKE_C_COMPILER gcc)
set(CMAKE_CXX_COMPILER g++)
set(CMAKE_C_FLAGS_INIT -m32)
set(CMAKE_CXX_FLAGS_INIT -m32)

# Debian's 32-bit zlib comes beside the headers of this machine's own.
set(ZLIB_LIBRARY /usr/lib32/libz.so CACHE FILEPATH "zlib of 32 bits")
set(ZLIB_INCLUDE_DIR /usr/include CACHE PATH "Headers of zlib")

include("${CMAKE_CURRENT_LIST_DIR}/foreign.cmake")
