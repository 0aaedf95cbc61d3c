# `cmake --install` gives an application all it needs for find_package(vorn) and pkg-config, and people the tool. The
# components are the Debian packages: runtime, development, tool.

include(CMakePackageConfigHelpers)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/vorn")
set(host_include_dir "${CMAKE_INSTALL_INCLUDEDIR}/vorn-host")

# vorn_install_library(<target> <kind>): with the description that vornConfig.cmake takes for a library of that kind.
function(vorn_install_library target kind)
  get_target_property(name ${target} EXPORT_NAME)
  if(NOT name)
    set(name ${target})
  endif()
  install(TARGETS ${target} EXPORT ${target}-${kind}
          RUNTIME COMPONENT runtime
          LIBRARY COMPONENT runtime NAMELINK_COMPONENT development
          ARCHIVE COMPONENT development)
  install(EXPORT ${target}-${kind} NAMESPACE vorn:: FILE ${name}-${kind}.cmake DESTINATION "${package_dir}"
          COMPONENT development)
endfunction()

if(VORN_BUILD_BOTH_KINDS OR NOT BUILD_SHARED_LIBS)
  set(vorn_kind static)
else()
  set(vorn_kind shared)
endif()
foreach(target IN ITEMS vorn vorn_host)
  if(TARGET ${target})
    vorn_install_library(${target} ${vorn_kind})
  endif()
  if(TARGET ${target}_shared)
    vorn_install_library(${target}_shared shared)
  endif()
endforeach()

if(NOT VORN_DEBIAN_PACKAGES)  # whose copyright files hold it
  install(FILES "${PROJECT_SOURCE_DIR}/LICENSE" DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT development)
endif()

# Tables of code page 932 that only the library's own sources need.
install(DIRECTORY "${PROJECT_SOURCE_DIR}/vorn" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" COMPONENT development
        FILES_MATCHING PATTERN "*.h" PATTERN "code_page_932_decode_table.h" EXCLUDE)

# The host's headers keep their "host/..." paths but get a root of their own: `host` is too common a name for the
# shared include directory.
if(TARGET vorn_host)
  get_target_property(headers vorn_host VORN_PUBLIC_HEADERS)
  foreach(header IN LISTS headers)
    get_filename_component(folder "${header}" DIRECTORY)
    install(FILES "${PROJECT_SOURCE_DIR}/host/${header}" DESTINATION "${host_include_dir}/host/${folder}"
            COMPONENT development)
  endforeach()
endif()

if(TARGET vorn_cli)
  install(TARGETS vorn_cli RUNTIME COMPONENT tool)
  if(WIN32 AND BUILD_SHARED_LIBS)
    install(FILES ${VORN_RUNTIME_DLLS} TYPE BIN COMPONENT tool)
  endif()
  set(packaging "${PROJECT_SOURCE_DIR}/packaging")
  set(man_page "${packaging}/vorn.1")
  set(zsh_completions site-functions)
  if(VORN_DEBIAN_PACKAGES)
    set(man_page "${PROJECT_BINARY_DIR}/vorn.1.gz")
    execute_process(COMMAND gzip -9n INPUT_FILE "${packaging}/vorn.1" OUTPUT_FILE "${man_page}"
                    COMMAND_ERROR_IS_FATAL ANY)
    set(zsh_completions vendor-completions)
  endif()
  if(NOT WIN32)
    install(FILES "${man_page}" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT tool)
    install(FILES "${packaging}/completions/vorn.bash" RENAME vorn COMPONENT tool
            DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions")
    install(FILES "${packaging}/completions/vorn.zsh" RENAME _vorn COMPONENT tool
            DESTINATION "${CMAKE_INSTALL_DATADIR}/zsh/${zsh_completions}")
    install(FILES "${packaging}/completions/vorn.fish" COMPONENT tool
            DESTINATION "${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d")
  endif()
endif()

configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/vornConfig.cmake.in"
                              "${PROJECT_BINARY_DIR}/vornConfig.cmake" INSTALL_DESTINATION "${package_dir}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/vornConfigVersion.cmake" COMPATIBILITY SameMinorVersion)
install(FILES "${PROJECT_BINARY_DIR}/vornConfig.cmake" "${PROJECT_BINARY_DIR}/vornConfigVersion.cmake"
        DESTINATION "${package_dir}" COMPONENT development)

# pkg-config: paths are told from the place of the file itself, so that an installation can be moved.
file(RELATIVE_PATH pc_prefix "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig" "${CMAKE_INSTALL_PREFIX}")
string(REGEX REPLACE "/$" "" pc_prefix "${pc_prefix}")
get_target_property(pc_options vorn INTERFACE_COMPILE_OPTIONS)
if(NOT pc_options)
  set(pc_options)
endif()
list(JOIN pc_options " " pc_options)
set(pc_files vorn)
if(TARGET vorn_host)
  list(APPEND pc_files vorn-host)
endif()
foreach(name IN LISTS pc_files)
  configure_file("${PROJECT_SOURCE_DIR}/cmake/${name}.pc.in" "${PROJECT_BINARY_DIR}/${name}.pc" @ONLY)
  install(FILES "${PROJECT_BINARY_DIR}/${name}.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig"
          COMPONENT development)
endforeach()
