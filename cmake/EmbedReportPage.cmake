# Builds the report's page into the program: cmake -DPAGE=<folder> -DOUT=<file.cpp> -DSCRIPTS=<a.js,b.js> -P this file
#
# The scripts become one module, in the order given.

function(bytes_of_hex hex variable)
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "'\\\\x\\1'," bytes "${hex}")
  string(REGEX REPLACE "(('[^']*',)(('[^']*',)(('[^']*',)(('[^']*',)('[^']*',)))))" "\\1\n" bytes "${bytes}")
  set(${variable} "${bytes}" PARENT_SCOPE)
endfunction()

function(embed name hex)
  bytes_of_hex("${hex}" bytes)
  file(APPEND "${OUT}.new" "constexpr char ${name}[] = {${bytes}};\n")
endfunction()

string(REPLACE "," ";" SCRIPTS "${SCRIPTS}")
set(script_file "${OUT}.js")
file(WRITE "${script_file}" "")
foreach(script IN LISTS SCRIPTS)
  file(READ "${PAGE}/${script}" text)
  if(text MATCHES "</[sS][cC][rR][iI][pP][tT]")
    message(FATAL_ERROR "${script} would end the script element it stands in")
  endif()
  file(APPEND "${script_file}" "${text}\n")
endforeach()

file(READ "${PAGE}/page.html" html HEX)
file(READ "${PAGE}/page.css" style HEX)
file(READ "${script_file}" script HEX)
file(SHA256 "${PAGE}/page.css" style_sha256)
file(SHA256 "${script_file}" script_sha256)

file(WRITE "${OUT}.new" "// Made from host/report/page/ by the build.\n#include \"host/report/page_parts.h\"\n\nnamespace {\n\n")
embed(kHtml "${html}")
embed(kStyle "${style}")
embed(kScript "${script}")
file(APPEND "${OUT}.new" "
}  // namespace

const vorn_host::PageParts vorn_host::kReportPage = {{kHtml, sizeof kHtml},
                                                     {kStyle, sizeof kStyle},
                                                     {kScript, sizeof kScript},
                                                     \"${style_sha256}\",
                                                     \"${script_sha256}\"};
")
file(RENAME "${OUT}.new" "${OUT}")
