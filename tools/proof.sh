# Sourced by ./release on --proof: the archive with which anybody who has a Windows can prove the program on it. Expects
# SOURCE_DATE_EPOCH, VTV4V_COMMIT, and the tree's root as the working folder.

# proof_archive
# Makes build/vtv4v-proof-VERSION.zip: the unit tests, the window driver and the program in 32 and 64 bits, and proof.cmd,
# which runs them. The same commit gives the same file.
proof_archive() {
    local preset version name
    for preset in win32 win64; do
        quietly cmake --preset "$preset" --fresh -DBUILD_TESTING=ON -DVTV4V_COMMIT="$VTV4V_COMMIT"
        quietly cmake --build --preset "$preset" --target vtv4v vtv4v_tests vtv4v_driver
    done
    version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' build/win32/CMakeCache.txt)
    name=vtv4v-proof-$version
    rm -rf "build/$name"
    for preset in win32 win64; do
        mkdir -p "build/$name/$preset/tests"
        cp "build/$preset/vtv4v.exe" "build/$name/$preset"
        cp "build/$preset/tests/vtv4v_tests.exe" "build/$preset/tests/vtv4v_driver.exe" "build/$name/$preset/tests"
    done
    sed 's/$/\r/' tests/windows/proof.cmd >"build/$name/proof.cmd"
    tools/archive "build/$name" "$name"
    rm -rf "build/${name:?}"
    echo "build/$name.zip"
}
