# Debian packages, one for each component that VornInstall.cmake installs: libvorn0.1 for programs, libvorn-dev for
# those who build them, vorn for people.

if(NOT TARGET vorn_cli OR NOT VORN_BUILD_BOTH_KINDS)
  message(FATAL_ERROR "Debian packages hold the host, the tool and both kinds of library: none may be left out")
endif()

set(runtime "libvorn${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}")
set(contact "Vorn contributors <contributors@vorn.invalid>")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vorn)
set(CPACK_PACKAGE_CONTACT "${contact}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL runtime development tool)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
                                                WORLD_READ WORLD_EXECUTE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
# libvorn-host.so needs libvorn.so, which is of the same package and not installed while that is made.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${PROJECT_BINARY_DIR}/vorn" "${PROJECT_BINARY_DIR}/host")

# vorn_describe_debian_package(<component> <package> <section> <summary> <text>)
macro(vorn_describe_debian_package component package section summary text)
  string(TOUPPER ${component} upper_component)
  set(CPACK_DEBIAN_${upper_component}_PACKAGE_NAME ${package})
  set(CPACK_DEBIAN_${upper_component}_PACKAGE_SECTION ${section})
  set(CPACK_COMPONENT_${upper_component}_DESCRIPTION "${summary}\n${text} in\nthe editions 2.0, 4.0, 4.1 and the agricultural 1.0 of the exchange documents.")
  install(FILES "${PROJECT_SOURCE_DIR}/LICENSE" RENAME copyright DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${package}"
          COMPONENT ${component})
  install(FILES "${PROJECT_BINARY_DIR}/changelog.gz" DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${package}"
          COMPONENT ${component})
endmacro()

vorn_describe_debian_package(runtime ${runtime} libs "design data of roads and rivers - shared libraries"
  "The model of cross sections, build forms and control targets, and its files,")
vorn_describe_debian_package(development libvorn-dev libdevel "design data of roads and rivers - development files"
  "Headers and libraries for applications with cross sections and control targets")
vorn_describe_debian_package(tool vorn science "tool for design data of roads and rivers"
  "Checks, converts, edits and draws cross sections, with their control targets,")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "${runtime} (= ${PROJECT_VERSION}), libpugixml-dev, libtomlplusplus-dev, zlib1g-dev")

# What changed is told in the repository; Debian wants a file of this form.
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
file(WRITE "${PROJECT_BINARY_DIR}/changelog" "vorn (${PROJECT_VERSION}) unstable; urgency=medium

  * See CHANGELOG.md in the sources.

 -- ${contact}  ${date}
")
execute_process(COMMAND gzip -9n INPUT_FILE "${PROJECT_BINARY_DIR}/changelog"
                OUTPUT_FILE "${PROJECT_BINARY_DIR}/changelog.gz" COMMAND_ERROR_IS_FATAL ANY)

include(CPack)
