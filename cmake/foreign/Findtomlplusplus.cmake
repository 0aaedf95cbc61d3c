# As headers alone: the shared library of Debian is this machine's.
include(VornForeign)
include(FindPackageHandleStandardArgs)

if(NOT TARGET tomlplusplus::tomlplusplus)
  vorn_foreign_headers(tomlplusplus::tomlplusplus "toml++")
endif()
if(TARGET tomlplusplus::tomlplusplus)
  set(tomlplusplus_HEADERS "/usr/include/toml++")
endif()
find_package_handle_standard_args(tomlplusplus REQUIRED_VARS tomlplusplus_HEADERS)
