# Debian has the library for its own platforms only: its source becomes part of whatever uses it.
include(VornForeign)
include(FindPackageHandleStandardArgs)

if(NOT TARGET pugixml::pugixml)
  vorn_foreign_source(pugixml_SOURCE pugixml)
  add_library(pugixml::pugixml INTERFACE IMPORTED GLOBAL)
  target_include_directories(pugixml::pugixml INTERFACE "${pugixml_SOURCE}/src")
  target_compile_definitions(pugixml::pugixml INTERFACE PUGIXML_HEADER_ONLY)
endif()
get_target_property(pugixml_HEADERS pugixml::pugixml INTERFACE_INCLUDE_DIRECTORIES)
find_package_handle_standard_args(pugixml REQUIRED_VARS pugixml_HEADERS)
