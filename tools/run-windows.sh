# Sourced by ./run: the Windows program under Wine, on a Wine machine of its own with the suite's components on it.
source tools/wine.sh

if wine32_here; then
    preset=win32
else
    preset=win64
fi
machine=${XDG_DATA_HOME:-$HOME/.local/share}/vtv4v/wine-$preset

if [[ ${2:-} != --virtual && -z ${DISPLAY:-} ]]; then
    echo "There is no display (DISPLAY is not set). On a virtual one, with a picture of the window in a file:" >&2
    echo "    ./run --windows --virtual" >&2
    exit 1
fi
packages_install "${BUILD_PACKAGES[@]}" "${CROSS_PACKAGES[@]}" "${WINE_PACKAGES[@]}"
[[ ${2:-} != --virtual ]] || packages_install "${DISPLAY_PACKAGES[@]}" import=imagemagick
if [[ $preset == win64 ]]; then
    echo "The 64-bit program, because a 32-bit Wine is missing. To get one, as root:" >&2
    echo "    dpkg --add-architecture i386 && apt-get update && apt-get install wine32:i386" >&2
fi
echo "Building..." >&2
quietly cmake --preset "$preset" -DBUILD_TESTING=OFF
quietly cmake --build --preset "$preset" --target vtv4v suite
echo "Starting on the Wine machine $machine" >&2
mkdir -p "${machine%/*}"
if [[ ${2:-} == --virtual ]]; then
    picture=$PWD/build/$preset/window.png
    quietly xvfb-run -a -s '-screen 0 800x600x24' tools/windows-picture "$preset" "$machine" "$picture"
    echo "$picture"
else
    quietly tools/wine-machine "$preset" "$machine" --suite
    WINEDEBUG=-all WINEPREFIX=$machine exec wine "build/$preset/vtv4v.exe" -master
fi
