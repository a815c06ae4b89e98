# Links Windows import libraries only; the compiler runtime and the standard library are static, so that each program is
# a single file.
enable_language(RC)
target_link_libraries(vtv4v_system PUBLIC advapi32 comctl32 gdi32 ole32 oleaut32 shell32 user32 uuid)

# program_manifest(PROGRAM NAME DESCRIPTION)
function(program_manifest PROGRAM MANIFEST_NAME MANIFEST_DESCRIPTION)
  configure_file(src/platform/windows/program.manifest.in generated/platform/windows/${PROGRAM}.manifest @ONLY)
endfunction()
program_manifest(vtv4v Vandrel.Tallora.VersionController "${PROJECT_DESCRIPTION}")
program_manifest(vtv4v-reg Vandrel.Tallora.VersionRollout "${VTV4V_REG_DESCRIPTION}")
set(VTV4V_RESOURCES ${CMAKE_SOURCE_DIR}/src/platform/windows/vtv4v.rc)
set(VTV4V_REG_RESOURCES ${CMAKE_SOURCE_DIR}/src/platform/windows/vtv4v-reg.rc)

# -ffile-prefix-map keeps the build folder's path out of the programs.
target_compile_options(vtv4v_system PUBLIC $<$<COMPILE_LANGUAGE:CXX>:-fstack-protector-strong -ffunction-sections
  -fdata-sections -ffile-prefix-map=${PROJECT_SOURCE_DIR}/=>)
target_link_options(vtv4v_system PUBLIC -static -s -fstack-protector-strong
  -Wl,--gc-sections -Wl,--nxcompat -Wl,--dynamicbase)
if(CMAKE_SIZEOF_VOID_P EQUAL 8)
  target_link_options(vtv4v_system PUBLIC -Wl,--high-entropy-va)
endif()
