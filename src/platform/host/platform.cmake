# The host machine needs the standard library and POSIX alone. The program takes the library into itself where it can:
# to load it and to bind its names is a quarter of the time that a start takes.
include(CheckLinkerFlag)
check_linker_flag(CXX "-static-libstdc++;-static-libgcc" VTV4V_LIBRARY_CAN_BE_STATIC)
if(VTV4V_LIBRARY_CAN_BE_STATIC AND NOT VTV4V_SANITIZE AND NOT VTV4V_FUZZ)
  set(VTV4V_PROGRAM_LINK_OPTIONS -static-libstdc++ -static-libgcc)
endif()
