# What a build for another platform than this machine's own (cmake/toolchains/) uses of the packages that are installed.
# Only toolchain files put this folder before CMake's own modules.
include_guard(GLOBAL)

# vorn_foreign_headers(<target> <name in /usr/include>): a library of headers alone, which serve every platform. The
# other headers beside them are this machine's: a folder with nothing but a link leads to those of the library.
function(vorn_foreign_headers target name)
  if(NOT EXISTS "/usr/include/${name}")
    return()
  endif()
  set(folder "${PROJECT_BINARY_DIR}/foreign/${name}")
  file(MAKE_DIRECTORY "${folder}")
  file(CREATE_LINK "/usr/include/${name}" "${folder}/${name}" SYMBOLIC)
  add_library(${target} INTERFACE IMPORTED GLOBAL)
  target_include_directories(${target} INTERFACE "${folder}")
endfunction()

# vorn_foreign_source(<variable> <Debian source package>): the folder of its source, fetched by apt if need be. Presets
# share the sources; they stay outside the repository.
set(VORN_FOREIGN_SOURCES "${PROJECT_BINARY_DIR}/foreign/sources" CACHE PATH "Sources of Debian packages")
function(vorn_foreign_source variable package)
  execute_process(COMMAND "${PROJECT_SOURCE_DIR}/tools/fetch_debian_source.sh" "${package}"
                          "${VORN_FOREIGN_SOURCES}/${package}"
                  RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "The source of ${package} cannot be fetched:\n${output}")
  endif()
  set(${variable} "${VORN_FOREIGN_SOURCES}/${package}" PARENT_SCOPE)
endfunction()
