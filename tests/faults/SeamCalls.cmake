# Uses NM to look up the symbols of the seam functions in LIBRARY. Writes OUTPUT.h, which defines SEAM_CALLS(Use) as one
# Use(name, symbol) per function, and OUTPUT.txt, the linker options that redirect the calls to FaultySeam.cpp. The
# order matters there: registry calls come first, then file calls; calls from ShellExecuteA on are recorded.
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
