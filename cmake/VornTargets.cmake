# What every target of this project shares.

# vorn_glob_sources(<variable> <directory>...): every .cpp below the directories, followed as files come and go.
function(vorn_glob_sources variable)
  set(found)
  foreach(directory IN LISTS ARGN)
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS "${directory}/*.cpp")
    list(APPEND found ${sources})
  endforeach()
  set(${variable} "${found}" PARENT_SCOPE)
endfunction()

# vorn_match_64_bits(<target>): 32-bit programs compute, and take files and times, as those of 64 bits do.
function(vorn_match_64_bits target)
  # Numbers have to come out the same on every machine: the older unit of these processors computes with more digits
  # than a double keeps, and rounds twice.
  if(CMAKE_SYSTEM_PROCESSOR MATCHES "86")
    target_compile_options(${target} PUBLIC -msse2 -mfpmath=sse)
  endif()
  # Files beyond 2 GB or on large disks, and dates after January 2038.
  if(WIN32)
    target_compile_definitions(${target} PRIVATE __MINGW_USE_VC2005_COMPAT)
    # A host need not align the stack of its calls as these instructions want it.
    target_compile_options(${target} PRIVATE -mstackrealign)
  else()
    target_compile_definitions(${target} PRIVATE _FILE_OFFSET_BITS=64 _TIME_BITS=64)
  endif()
endfunction()

# vorn_configure_target(<target>): C++20 without extensions, and warnings that stay private to the target.
function(vorn_configure_target target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
  if(MSVC)
    target_compile_options(${target} PUBLIC /source-charset:utf-8 PRIVATE /W4 /permissive-)
    target_compile_definitions(${target} PRIVATE NOMINMAX)
    if(VORN_WERROR)
      target_compile_options(${target} PRIVATE /WX)
    endif()
  else()
    if(CMAKE_SIZEOF_VOID_P EQUAL 4)
      vorn_match_64_bits(${target})
    endif()
    # clang counts changes of sign among its conversions and g++ does not; ask both the same question.
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wno-sign-conversion)
    if(VORN_WERROR)
      target_compile_options(${target} PRIVATE -Werror)
    endif()
  endif()
endfunction()

# vorn_describe_library(<target> <name>): the name and the version of its file, and what it exports (exports.map).
function(vorn_describe_library target name)
  # Before 1.0.0, a minor version may change the interface.
  set_target_properties(${target} PROPERTIES OUTPUT_NAME ${name} VERSION ${PROJECT_VERSION}
                                             SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
  get_target_property(kind ${target} TYPE)
  if(kind STREQUAL "SHARED_LIBRARY" AND CMAKE_EXECUTABLE_FORMAT STREQUAL "ELF")
    set(exports "${CMAKE_CURRENT_SOURCE_DIR}/exports.map")
    target_link_options(${target} PRIVATE "LINKER:--version-script=${exports}")
    set_target_properties(${target} PROPERTIES LINK_DEPENDS "${exports}")
  endif()
endfunction()

# vorn_add_shared_library(<target> <name>): <target>_shared, a library of the objects of the static <target>.
function(vorn_add_shared_library target name)
  add_library(${target}_shared SHARED $<TARGET_OBJECTS:${target}>)
  target_compile_features(${target}_shared PUBLIC cxx_std_20)
  get_target_property(include_directories ${target} INTERFACE_INCLUDE_DIRECTORIES)
  target_include_directories(${target}_shared INTERFACE ${include_directories})
  set_target_properties(${target}_shared PROPERTIES LINKER_LANGUAGE CXX)
  vorn_describe_library(${target}_shared ${name})
endfunction()
