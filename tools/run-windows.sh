# Sourced by ./run: the Windows program under Wine, on a Wine machine of its own with the suite's components on it.
source tools/wine.sh

if wine32_here; then
    preset=win32
else
    preset=win64
fi
machine=${XDG_DATA_HOME:-$HOME/.local/share}/vtv4v/wine-$preset

# The screen once something is drawn on it.
picture_take() {
    local try
    for ((try = 0; try < 60; ++try)); do
        sleep 0.5
        import -silent -window root "$1" && [[ $(identify -format %k "$1") -gt 16 ]] && return
    done
    echo "The window did not come." >&2
    return 1
}

# The program on a display that nobody sees.
run_virtually() {
    packages_install "${DISPLAY_PACKAGES[@]}" import=imagemagick
    local picture=$PWD/build/$preset/window.png
    export -f picture_take
    # shellcheck disable=SC2016
    xvfb-run -a -s '-screen 0 800x600x24' bash -c '
        tools/wine-machine "$1" "$2" --suite >/dev/null 2>&1
        WINEDEBUG=-all WINEPREFIX=$2 wine "build/$1/vtv4v.exe" -master &
        result=0
        picture_take "$3" || result=1
        WINEPREFIX=$2 wineserver -k -w
        exit "$result"' bash "$preset" "$machine" "$picture"
    echo "$picture"
}

packages_install "${BUILD_PACKAGES[@]}" "${CROSS_PACKAGES[@]}" "${WINE_PACKAGES[@]}"
if [[ ${2:-} != --virtual && -z ${DISPLAY:-} ]]; then
    echo "There is no display (DISPLAY is not set). On a virtual one, with a picture of the window in a file:" >&2
    echo "    ./run --windows --virtual" >&2
    exit 1
fi
echo "The ${preset#win}-bit program, on the Wine machine $machine" >&2
quietly cmake --preset "$preset" -DBUILD_TESTING=OFF
quietly cmake --build --preset "$preset"
mkdir -p "${machine%/*}"
if [[ ${2:-} == --virtual ]]; then
    run_virtually
else
    quietly tools/wine-machine "$preset" "$machine" --suite
    WINEDEBUG=-all WINEPREFIX=$machine exec wine "build/$preset/vtv4v.exe" -master
fi
