# Fails when PROGRAM imports a library that would be looked for in the program's own folder: one that is neither among
# those that the system keeps ready for all processes (KnownDLLs below HKLM\SYSTEM\CurrentControlSet\Control\Session
# Manager, on every Windows from 7 on) nor bound by the manifest, as comctl32 is.
cmake_minimum_required(VERSION 3.25)
set(SAFE advapi32 comctl32 gdi32 kernel32 msvcrt ole32 oleaut32 shell32 user32)
execute_process(COMMAND ${OBJDUMP} -p ${PROGRAM} OUTPUT_VARIABLE HEADERS COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "DLL Name: [^\r\n]+" IMPORTS "${HEADERS}")
if(NOT IMPORTS)
  message(FATAL_ERROR "${PROGRAM} seems to import nothing")
endif()
foreach(IMPORT IN LISTS IMPORTS)
  string(REGEX REPLACE "DLL Name: (.*)\\.[Dd][Ll][Ll]" "\\1" LIBRARY "${IMPORT}")
  string(TOLOWER "${LIBRARY}" LIBRARY)
  if(NOT LIBRARY IN_LIST SAFE)
    message(FATAL_ERROR "${PROGRAM} imports ${LIBRARY}")
  endif()
endforeach()
