# Fails when a 32-bit DLL or program of FILES has an unwinding entry for an empty range of code. The
# unwinder may find it instead of the entry of a function at the same address, and then ends the host
# although an exception would be caught. Writes copies to FOLDER.
cmake_minimum_required(VERSION 3.25)

foreach(file IN LISTS FILES)
  cmake_path(GET file FILENAME name)
  set(copy "${FOLDER}/${name}.unwinding")
  # Stripping cuts the section's name, and objdump finds the section by its name.
  execute_process(COMMAND "${OBJCOPY}" --long-section-names=enable
    --rename-section .eh_fram=.eh_frame "${file}" "${copy}" COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND "${OBJDUMP}" --dwarf=frames "${copy}" OUTPUT_VARIABLE frames
    COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCHALL "pc=[0-9a-f]+\\.\\.[0-9a-f]+" ranges "${frames}")
  if(NOT ranges)
    message(FATAL_ERROR "No unwinding entry was found in ${name}")
  endif()
  foreach(range IN LISTS ranges)
    string(REGEX MATCH "=(.*)\\.\\.(.*)" range "${range}")
    if(CMAKE_MATCH_1 STREQUAL CMAKE_MATCH_2)
      message(FATAL_ERROR "${name} has an unwinding entry for an empty range at ${CMAKE_MATCH_1}")
    endif()
  endforeach()
endforeach()
