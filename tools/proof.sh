# Sourced by `./release --proof`, in the root of the tree. Expects SOURCE_DATE_EPOCH and VTV4V_COMMIT.

# proof_archive
# Builds build/vtv4v-proof-VERSION.zip, with which anyone can test the program on real Windows. It contains the 32-bit
# and 64-bit unit tests, window driver and program; the licences; and proof.cmd, which runs the tests.
proof_archive() {
    local preset folder
    for preset in win32 win64; do
        quietly cmake --preset "$preset" --fresh -DBUILD_TESTING=ON -DVTV4V_COMMIT="$VTV4V_COMMIT"
        quietly cmake --build --preset "$preset" --target vtv4v vtv4v_tests vtv4v_utf8_tests vtv4v_driver
    done
    folder=build/vtv4v-proof-$(cached CMAKE_PROJECT_VERSION)
    rm -rf "$folder"
    for preset in win32 win64; do
        mkdir -p "$folder/$preset/tests"
        cp "build/$preset/vtv4v.exe" "$folder/$preset"
        cp "build/$preset/tests/"vtv4v_{tests,utf8_tests,driver}.exe "$folder/$preset/tests"
    done
    sed 's/$/\r/' tests/windows/proof.cmd >"$folder/proof.cmd"
    cp build/win32/{BUILD,LICENSE,THIRD-PARTY}.txt "$folder"
    sed 's/$/\r/' package/DOCTEST-LICENSE.txt >"$folder/DOCTEST-LICENSE.txt"
    tools/archive "$folder" "${folder#build/}"
    rm -rf "$folder"
    echo "$folder.zip"
}
