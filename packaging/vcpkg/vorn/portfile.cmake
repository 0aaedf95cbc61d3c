# An overlay port: vcpkg install vorn --overlay-ports=packaging/vcpkg. It builds the sources that it lies in.
set(SOURCE_PATH "${CURRENT_PORT_DIR}/../../..")

vcpkg_check_features(OUT_FEATURE_OPTIONS FEATURE_OPTIONS FEATURES host VORN_BUILD_HOST)

# VCPKG_LIBRARY_LINKAGE reaches the build as BUILD_SHARED_LIBS.
vcpkg_cmake_configure(SOURCE_PATH "${SOURCE_PATH}"
                      OPTIONS ${FEATURE_OPTIONS} -DVORN_BUILD_BOTH_KINDS=OFF -DVORN_BUILD_TESTS=OFF
                              -DVORN_BUILD_BENCH=OFF -DVORN_BUILD_EXAMPLES=OFF -DVORN_BUILD_PYTHON=OFF
                              -DVORN_WERROR=OFF)
vcpkg_cmake_install()
vcpkg_cmake_config_fixup(CONFIG_PATH lib/cmake/vorn)
vcpkg_fixup_pkgconfig()
vcpkg_copy_pdbs()
if("host" IN_LIST FEATURES)
  vcpkg_copy_tools(TOOL_NAMES vorn AUTO_CLEAN)
endif()
file(REMOVE_RECURSE "${CURRENT_PACKAGES_DIR}/debug/include" "${CURRENT_PACKAGES_DIR}/debug/share")
vcpkg_install_copyright(FILE_LIST "${SOURCE_PATH}/LICENSE")
