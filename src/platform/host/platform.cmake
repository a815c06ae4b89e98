# SQLiteCpp stores the registry.
find_package(SQLiteCpp QUIET)
require_found("${SQLiteCpp_FOUND}" SQLiteCpp libsqlitecpp-dev)
target_link_libraries(vtv4v_system PUBLIC SQLiteCpp)

# The standard library is linked statically if possible: loading it dynamically takes a quarter of the startup time.
include(CheckLinkerFlag)
check_linker_flag(CXX "-static-libstdc++;-static-libgcc" VTV4V_LIBRARY_CAN_BE_STATIC)
if(VTV4V_LIBRARY_CAN_BE_STATIC AND NOT VTV4V_SANITIZE AND NOT VTV4V_FUZZ)
  set(VTV4V_PROGRAM_LINK_OPTIONS -static-libstdc++ -static-libgcc)
endif()

# newt draws the windows on a terminal.
find_path(VTV4V_NEWT_HEADERS newt.h)
find_library(VTV4V_NEWT newt)
find_library(VTV4V_SLANG slang)
require_found("${VTV4V_NEWT_HEADERS}" newt libnewt-dev)
target_include_directories(vtv4v_system SYSTEM PRIVATE ${VTV4V_NEWT_HEADERS})
target_link_libraries(vtv4v_system PRIVATE ${VTV4V_NEWT} ${VTV4V_SLANG})
