# What the tool writes is the same on every platform, byte for byte: documents in every edition and encoding, projects in
# every store version, after reading, conversion and edits whose numbers a project keeps to the last bit.
#
#   cmake -DTOOL=<vorn> -DEMULATOR=<program that runs it> -DSOURCES=<repository> -DWORK=<folder> -P this file
#
# The sums are those that sha256sum checks. With -DRENEW=ON they are written anew, for a change that is meant to alter
# what is written.

set(sums_file "${CMAKE_CURRENT_LIST_DIR}/sums.sha256")
set(sums "")
file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}")

# write(<file> <argument>...): runs the tool, which has to make the file, and notes its sum.
function(write name)
  execute_process(COMMAND ${EMULATOR} "${TOOL}" ${ARGN} WORKING_DIRECTORY "${WORK}"
                  RESULT_VARIABLE result OUTPUT_QUIET ERROR_VARIABLE error)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "vorn ${ARGN}: exit code ${result}\n${error}")
  endif()
  file(SHA256 "${WORK}/${name}" sum)
  set(sums "${sums}${sum}  ${name}\n" PARENT_SCOPE)
endfunction()

foreach(kind IN ITEMS road river farm)
  foreach(edition IN ITEMS 2.0 4.0 4.1 maff-1.0)
    foreach(encoding IN ITEMS utf-8 shift_jis)
      set(name "${kind}-${edition}-${encoding}.xml")
      write("${name}" sample "${name}" --kind ${kind} --edition ${edition} --encoding ${encoding} --sections 30)
    endforeach()
  endforeach()
endforeach()

foreach(version IN ITEMS 05.00 05.50 06.00)
  foreach(sample IN ITEMS road-4.1 road-with-geometry-4.0 river-2.0 farm-maff-1.0)
    set(name "${sample}-${version}.vorn")
    write("${name}" convert "${SOURCES}/samples/${sample}.xml" "${name}" --store-version ${version})
  endforeach()
  foreach(former IN ITEMS 01.10 02.50 03.00 04.00 05.00 05.50 06.00)
    set(name "from-${former}-${version}.vorn")
    write("${name}" convert "${SOURCES}/tests/data/projects/road-${former}.vorn" "${name}" --store-version ${version})
  endforeach()
  set(name "edited-${version}.vorn")
  write("${name}" edit "road-4.1-${version}.vorn" "${name}" --recalc 62.512345 --cross-points --shift 0.1,0 --mirror
        --regulate)
endforeach()

foreach(sample IN ITEMS road-4.1 road-with-geometry-4.0 river-2.0 farm-maff-1.0)
  set(name "${sample}-again.xml")
  write("${name}" convert "${sample}-06.00.vorn" "${name}")
endforeach()
write(edited.xml edit "${SOURCES}/samples/road-4.1.xml" edited.xml --recalc 62.512345 --cross-points --mirror)

if(RENEW)
  file(WRITE "${sums_file}" "${sums}")
  return()
endif()
file(READ "${sums_file}" expected)
if(NOT sums STREQUAL expected)
  file(WRITE "${WORK}/sums.sha256" "${sums}")
  execute_process(COMMAND diff "${sums_file}" "${WORK}/sums.sha256" OUTPUT_VARIABLE differences)
  message(FATAL_ERROR "What the tool writes has changed:\n${differences}")
endif()
