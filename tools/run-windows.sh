# Sourced by ./run: starts the Windows program under Wine, in a Wine prefix that contains the suite's components.
source tools/wine.sh

# True if windows can be shown on $DISPLAY. Otherwise prints the reason and an alternative.
display_works() {
    local problem
    if [[ -z ${DISPLAY:-} ]]; then
        problem="There is no display: DISPLAY isn't set."
    else
        packages_install xdpyinfo=x11-utils || return
        timeout 10 xdpyinfo >/dev/null 2>&1 && return
        problem="The display \"$DISPLAY\" (from DISPLAY) can't be reached, or doesn't allow access."
    fi
    echo "$problem" >&2
    echo "To run the program on a virtual display and save a screenshot: ./run --windows --virtual" >&2
    return 1
}

if wine32_installed; then
    preset=win32
else
    preset=win64
fi
prefix=$(data_folder)/wine-$preset

[[ ${2:-} == --virtual ]] || display_works
packages_install "${BUILD_PACKAGES[@]}" "${CROSS_PACKAGES[@]}" "${WINE_PACKAGES[@]}"
[[ ${2:-} != --virtual ]] || packages_install "${DISPLAY_PACKAGES[@]}" import=imagemagick
if [[ $preset == win64 ]]; then
    echo "Using the 64-bit program, because 32-bit Wine is missing. To install it, run as root:" >&2
    echo "    dpkg --add-architecture i386 && apt-get update && apt-get install wine32:i386" >&2
fi
echo "Building (the first time takes a few minutes)..." >&2
configure "$preset" -DBUILD_TESTING=OFF
quietly cmake --build --preset "$preset" --target vtv4v suite
echo "Starting in the Wine prefix $prefix" >&2
mkdir -p "${prefix%/*}"
if [[ ${2:-} == --virtual ]]; then
    picture=$PWD/build/$preset/window.png
    quietly xvfb-run -a -s '-screen 0 800x600x24' tools/windows-picture "$preset" "$prefix" "$picture"
    echo "$picture"
else
    quietly tools/wine-machine "$preset" "$prefix" --suite
    WINEDEBUG=-all WINEPREFIX=$prefix exec "$(wine_loader "$preset")" "build/$preset/vtv4v.exe" -master
fi
