# Debian packages, one for each component that VornInstall.cmake installs: libvorn0.1 for programs, libvorn-dev for
# those who build them, vorn for people.

if(NOT TARGET vorn_cli OR NOT VORN_BUILD_BOTH_KINDS)
  message(FATAL_ERROR "Debian packages hold the host, the tool and both kinds of library: none may be left out")
endif()

set(debian "${PROJECT_BINARY_DIR}/debian")
set(soversion "${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}")
set(contact "Vorn contributors <contributors@vorn.invalid>")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vorn)
set(CPACK_PACKAGE_CONTACT "${contact}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # every package has its own
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL runtime development tool)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
                                                WORLD_READ WORLD_EXECUTE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# libvorn-host.so needs libvorn.so, which is of the same package and not installed while that is made.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${PROJECT_BINARY_DIR}/vorn" "${PROJECT_BINARY_DIR}/host")

# vorn_describe_debian_package(<component> <package> <section> <summary> <line>...)
function(vorn_describe_debian_package component package section summary)
  string(TOUPPER ${component} component_name)
  list(JOIN ARGN "\n" text)
  set(CPACK_DEBIAN_${component_name}_PACKAGE_NAME ${package} PARENT_SCOPE)
  set(CPACK_DEBIAN_${component_name}_PACKAGE_SECTION ${section} PARENT_SCOPE)
  set(CPACK_DEBIAN_${component_name}_DESCRIPTION "${summary}\n${text}" PARENT_SCOPE)
  set(doc "${CMAKE_INSTALL_DATADIR}/doc/${package}")
  install(FILES "${PROJECT_SOURCE_DIR}/LICENSE" RENAME copyright DESTINATION "${doc}" COMPONENT ${component})
  install(FILES "${debian}/changelog.gz" DESTINATION "${doc}" COMPONENT ${component})
endfunction()

set(subject "Cross sections along an alignment, their build forms and control targets,"
            "in the editions 2.0, 4.0, 4.1 and the agricultural 1.0 of the exchange"
            "documents, and projects with all road data.")
vorn_describe_debian_package(runtime libvorn${soversion} libs "design data of roads and rivers - shared libraries"
                             ${subject} "This package is for the programs that use them.")
vorn_describe_debian_package(development libvorn-dev libdevel "design data of roads and rivers - development files"
                             ${subject} "This package has the headers, and the libraries for linking.")
vorn_describe_debian_package(tool vorn science "checks, converts and draws design data of roads and rivers"
                             ${subject} "This package has the command-line tool.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "libvorn${soversion} (= ${PROJECT_VERSION}), libpugixml-dev, libtomlplusplus-dev, zlib1g-dev")

# Programs that are packaged find their dependency by the first file; by the second the system finds the libraries.
file(WRITE "${debian}/shlibs" "libvorn ${soversion} libvorn${soversion} (>= ${PROJECT_VERSION})
libvorn-host ${soversion} libvorn${soversion} (>= ${PROJECT_VERSION})\n")
file(WRITE "${debian}/triggers" "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA "${debian}/shlibs" "${debian}/triggers")

# What changed is told in the repository; Debian wants a file of this form.
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
file(WRITE "${debian}/changelog" "vorn (${PROJECT_VERSION}) unstable; urgency=medium

  * See CHANGELOG.md in the sources.

 -- ${contact}  ${date}
")
execute_process(COMMAND gzip -9n INPUT_FILE "${debian}/changelog" OUTPUT_FILE "${debian}/changelog.gz"
                COMMAND_ERROR_IS_FATAL ANY)

include(CPack)
