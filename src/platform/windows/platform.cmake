# Import libraries of Windows alone. Compiler and standard library go into the program, so that one file is all of it.
enable_language(RC)
target_link_libraries(vtv4v_system PUBLIC advapi32 comctl32 gdi32 ole32 oleaut32 shell32 user32 uuid)

configure_file(src/platform/windows/vtv4v.manifest.in generated/platform/windows/vtv4v.manifest @ONLY)
set(VTV4V_RESOURCES ${CMAKE_SOURCE_DIR}/src/platform/windows/vtv4v.rc)
set(VTV4V_REG_RESOURCES ${CMAKE_SOURCE_DIR}/src/platform/windows/vtv4v-reg.rc)

# No program tells in which folder it was built.
target_compile_options(vtv4v_system PUBLIC $<$<COMPILE_LANGUAGE:CXX>:-fstack-protector-strong -ffunction-sections
  -fdata-sections -ffile-prefix-map=${PROJECT_SOURCE_DIR}/=>)
target_link_options(vtv4v_system PUBLIC -static -s -fstack-protector-strong
  -Wl,--gc-sections -Wl,--nxcompat -Wl,--dynamicbase)
if(CMAKE_SIZEOF_VOID_P EQUAL 8)
  target_link_options(vtv4v_system PUBLIC -Wl,--high-entropy-va)
endif()
