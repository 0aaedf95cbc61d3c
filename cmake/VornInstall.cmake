# `cmake --install` gives an application all it needs for find_package(vorn).

include(CMakePackageConfigHelpers)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/vorn")

if(TARGET vorn)
  install(TARGETS vorn EXPORT vornTargets)
  install(DIRECTORY "${PROJECT_SOURCE_DIR}/vorn" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}"
          FILES_MATCHING PATTERN "*.h" PATTERN "*.inc")
  install(EXPORT vornTargets NAMESPACE vorn:: DESTINATION "${package_dir}")
endif()

# The host's headers keep their "host/..." paths but get a root of their own: `host` is too common a name for the
# shared include directory.
if(TARGET vorn_host)
  install(TARGETS vorn_host EXPORT vornHostTargets)
  install(DIRECTORY "${PROJECT_SOURCE_DIR}/host" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/vorn-host"
          FILES_MATCHING PATTERN "*.h" PATTERN "cli" EXCLUDE)
  install(EXPORT vornHostTargets NAMESPACE vorn:: DESTINATION "${package_dir}")
endif()

if(TARGET vorn_cli)
  install(TARGETS vorn_cli)
  if(WIN32 AND BUILD_SHARED_LIBS)
    install(FILES ${VORN_RUNTIME_DLLS} TYPE BIN)
  endif()
endif()

configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/vornConfig.cmake.in"
                              "${PROJECT_BINARY_DIR}/vornConfig.cmake" INSTALL_DESTINATION "${package_dir}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/vornConfigVersion.cmake" COMPATIBILITY SameMinorVersion)
install(FILES "${PROJECT_BINARY_DIR}/vornConfig.cmake" "${PROJECT_BINARY_DIR}/vornConfigVersion.cmake"
        DESTINATION "${package_dir}")
