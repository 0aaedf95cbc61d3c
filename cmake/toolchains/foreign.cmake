# What the toolchains for other platforms have in common: libraries come from cmake/foreign/.
list(PREPEND CMAKE_MODULE_PATH "${CMAKE_CURRENT_LIST_DIR}/../foreign")
