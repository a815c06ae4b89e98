# Looks up the symbols of the seam's functions in LIBRARY with NM. Writes OUTPUT.h, which defines SEAM_CALLS(Use) as a
# Use(name, symbol) for each function, and OUTPUT.txt, the linker options that redirect the calls to FaultySeam.cpp.
# FaultySeam.cpp relies on the order: registry calls, then file calls, then other calls that return a status.
set(calls
  RegOpenKeyExA RegCreateKeyExA RegDeleteKeyA RegDeleteValueA RegEnumKeyExA RegEnumValueA RegQueryValueExA
  RegSetValueExA
  CreateFileA ReadFile WriteFile FlushFileBuffers CopyPermissions MoveFileExA DateLastModified
  RegCloseKey CloseHandle CreateObject CallTextFunction
  FindNormalFile GetFileVersionInfoSizeA GetFileVersionInfoA VerQueryValueA StatusText ClipboardClear ClipboardSet
  MessageBoxW ShellExecuteA StartCommandLine WindowCreate)
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
