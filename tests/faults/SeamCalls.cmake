# Finds in LIBRARY, by NM, the symbols of the calls that pass through FaultySeam.cpp. Leaves them in OUTPUT.h as
# SEAM_CALLS(Use), which makes a Use(name, symbol) of each, and in OUTPUT.txt what tells the linker to lead them there.
# FaultySeam.cpp knows the order: calls on keys come first, then those on files; those from ShellExecuteA on are recorded.
set(calls
  RegOpenKeyExA RegCreateKeyExA RegDeleteKeyA RegDeleteValueA RegEnumKeyExA RegEnumValueA RegQueryValueExA
  RegSetValueExA
  CreateFileA ReadFile WriteFile FlushFileBuffers CopyPermissions MoveFileExA DateLastModified
  RegCloseKey CloseHandle FindNormalFile OpenProcess GetFileVersionInfoSizeA GetFileVersionInfoA VerQueryValueA
  CreateObject StatusText ClipboardClear ClipboardSet MessageBoxW DoEvents
  ShellExecuteA CallTextFunction StartCommandLine WaitForSingleObject
  WindowCreate)
execute_process(COMMAND ${NM} --defined-only ${LIBRARY} OUTPUT_VARIABLE symbols ERROR_QUIET COMMAND_ERROR_IS_FATAL ANY)
set(header "#define SEAM_CALLS(Use)")
set(options "")
foreach(call IN LISTS calls)
  string(LENGTH ${call} length)
  if(NOT symbols MATCHES " T (_ZN8platform${length}${call}(B[a-z0-9]+)?E[A-Za-z0-9_]*)")
    message(FATAL_ERROR "${LIBRARY} defines no platform::${call}")
  endif()
  string(APPEND header " \\\n    Use(${call}, \"${CMAKE_MATCH_1}\")")
  string(APPEND options "-Wl,--wrap=${CMAKE_MATCH_1}\n")
endforeach()
file(CONFIGURE OUTPUT ${OUTPUT}.h CONTENT "${header}\n")
file(CONFIGURE OUTPUT ${OUTPUT}.txt CONTENT "${options}")
