find_package(SQLiteCpp REQUIRED)  # the registry
target_link_libraries(vtv4v_system PUBLIC SQLiteCpp)

# The program takes the standard library into itself where it can: to load it and to bind its names is a quarter of the
# time that a start takes.
include(CheckLinkerFlag)
check_linker_flag(CXX "-static-libstdc++;-static-libgcc" VTV4V_LIBRARY_CAN_BE_STATIC)
if(VTV4V_LIBRARY_CAN_BE_STATIC AND NOT VTV4V_SANITIZE AND NOT VTV4V_FUZZ)
  set(VTV4V_PROGRAM_LINK_OPTIONS -static-libstdc++ -static-libgcc)
endif()

# newt draws the windows on a terminal. Where it cannot be had, lines tell of them there too.
find_path(VTV4V_NEWT_HEADERS newt.h)
find_library(VTV4V_NEWT newt)
find_library(VTV4V_SLANG slang)
set(VTV4V_CONSOLE src/platform/host/console)
if(VTV4V_NEWT_HEADERS AND VTV4V_NEWT AND VTV4V_SLANG)
  target_include_directories(vtv4v_system SYSTEM PRIVATE ${VTV4V_NEWT_HEADERS})
  target_link_libraries(vtv4v_system PRIVATE ${VTV4V_NEWT} ${VTV4V_SLANG})
  set(VTV4V_LEFT_OUT ${VTV4V_CONSOLE}/WithoutNewt.cpp)
else()
  file(GLOB VTV4V_LEFT_OUT RELATIVE ${PROJECT_SOURCE_DIR} ${VTV4V_CONSOLE}/Newt*.cpp)
endif()
set_source_files_properties(${VTV4V_LEFT_OUT} PROPERTIES HEADER_FILE_ONLY ON)
