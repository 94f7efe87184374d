# Fails when the component needs a DLL that Windows does not ship: hosts get one file.
cmake_minimum_required(VERSION 3.25)

set(shipped advapi32 comctl32 gdi32 kernel32 msvcrt odbc32 ole32 oleaut32 oleacc user32 uxtheme)
execute_process(COMMAND "${OBJDUMP}" -p "${DLL}" OUTPUT_VARIABLE headers
  COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "DLL Name: [^\n\r]+" imports "${headers}")
if(NOT imports)
  message(FATAL_ERROR "No import table was found in ${DLL}")
endif()
foreach(import IN LISTS imports)
  string(REGEX REPLACE "DLL Name: (.*)\\.(dll|DLL|drv)$" "\\1" name "${import}")
  string(TOLOWER "${name}" name)
  if(NOT name IN_LIST shipped)
    message(FATAL_ERROR "${name} is not among what Windows ships: ${shipped}")
  endif()
endforeach()
