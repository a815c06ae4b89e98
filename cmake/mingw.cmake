# Included by mingw-i686.cmake and mingw-x86_64.cmake, which set the processor. On Windows, uses the compiler found in
# PATH.

# Without a timestamp, the same source always produces the same program.
set(CMAKE_EXE_LINKER_FLAGS_INIT -Wl,--no-insert-timestamp)
if(CMAKE_HOST_WIN32)
  set(CMAKE_CXX_COMPILER g++)
  return()
endif()
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_CXX_COMPILER ${CMAKE_SYSTEM_PROCESSOR}-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER ${CMAKE_SYSTEM_PROCESSOR}-w64-mingw32-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${CMAKE_SYSTEM_PROCESSOR}-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE BOTH)
# CTest runs the tests through this command.
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../tools/wine-run ${CMAKE_BINARY_DIR})
