find_package(SQLite3 REQUIRED)  # the registry
target_link_libraries(vtv4v_system PUBLIC SQLite::SQLite3)

# The program takes the standard library into itself where it can: to load it and to bind its names is a quarter of the
# time that a start takes.
include(CheckLinkerFlag)
check_linker_flag(CXX "-static-libstdc++;-static-libgcc" VTV4V_LIBRARY_CAN_BE_STATIC)
if(VTV4V_LIBRARY_CAN_BE_STATIC AND NOT VTV4V_SANITIZE AND NOT VTV4V_FUZZ)
  set(VTV4V_PROGRAM_LINK_OPTIONS -static-libstdc++ -static-libgcc)
endif()
