# Sourced by the scripts that need Wine: where it comes from, and its machines. Expects tools/packages.sh, and the tree's
# root as the working folder.

CROSS_PACKAGES=(x86_64-w64-mingw32-g++=g++-mingw-w64-x86-64 i686-w64-mingw32-g++=g++-mingw-w64-i686)
WINE_PACKAGES=(wine=wine /usr/lib/wine/wine64=wine64 /usr/share/wine/fonts/marlett.ttf=fonts-wine)
DISPLAY_PACKAGES=(xvfb-run=xvfb xauth=xauth)

# Where wine32 cannot stand beside wine64, a small 32-bit system of its own holds it.
WINE32_ROOT=$PWD/build/wine32-root

# True when 32-bit programs run here as they are.
wine32_here() {
    [[ $(dpkg-query -W -f='${Status}' wine32:i386 2>/dev/null) == *'ok installed' ]]
}

# wine_here PRESET
# True when the programs of that build run here as they are.
wine_here() {
    [[ $1 == win64 ]] || wine32_here
}

# Runs a command with mounts, processes and a network of its own, all gone at its end.
apart() {
    unshare --mount --net --pid --fork --kill-child "$@"
}

# The mirror that this machine's own packages come from; nothing when apt does not know one.
package_mirror() {
    apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' "Codename: $1" 2>/dev/null | head -n 1
}

# wine32_root_make
# Sees to the 32-bit system. False, with the reason on standard output, where it cannot be had. It takes its name when it
# is whole.
wine32_root_make() {
    [[ ! -d $WINE32_ROOT ]] || return 0
    if [[ $(id -u) != 0 ]]; then
        echo "a 32-bit Wine is missing, and only root can set one up"
        return 1
    elif ! apart true 2>/dev/null; then
        echo "a 32-bit Wine is missing, and this machine does not let root mount what a system of its own needs"
        return 1
    elif ! packages_install debootstrap=debootstrap 2>/dev/null; then
        echo "neither a 32-bit Wine nor debootstrap can be had"
        return 1
    fi
    local suite mirror
    suite=$(. /etc/os-release && echo "${VERSION_CODENAME:-stable}")
    mirror=$(package_mirror "$suite")
    rm -rf "$WINE32_ROOT.new"
    if ! debootstrap --arch=i386 --variant=minbase --include=wine,wine32,fonts-wine,xvfb,xauth \
        "$suite" "$WINE32_ROOT.new" ${mirror:+"$mirror"} >"$WINE32_ROOT.log" 2>&1 </dev/null; then
        rm -rf "$WINE32_ROOT.new"
        echo "a 32-bit Wine could not be fetched, see build/wine32-root.log"
        return 1
    fi
    rm -rf "$WINE32_ROOT.new"/var/cache/apt/archives/*.deb
    mv "$WINE32_ROOT.new" "$WINE32_ROOT"
}

# in_wine32_root COMMAND...
# Runs a command in the 32-bit system, which sees this tree at its own path. The inner shell stays as the first process:
# an X server does not tell that it is ready when its parent is the first.
in_wine32_root() {
    mkdir -p "$WINE32_ROOT$PWD"
    # shellcheck disable=SC2016
    apart sh -c '
        root=$1 tree=$2
        shift 2
        mount -t proc proc "$root/proc" && mount --bind "$tree" "$root$tree" || exit
        exec env -i HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin LANG=C.UTF-8 \
            chroot "$root" sh -c "cd \"\$0\" && \"\$@\"; exit" "$tree" "$@"
    ' sh "$WINE32_ROOT" "$PWD" "$@"
}

# wine_session PRESET COMMAND...
# Runs a command on a virtual display, where Wine can run that build: here, or in the 32-bit system. One that hangs is
# ended after 20 minutes. Ends with 77, and the reason on standard output, where this machine cannot.
wine_session() {
    local session=(timeout --kill-after=10 1200 xvfb-run -a -s '-screen 0 800x600x24' "${@:2}")
    if ! wine_here "$1"; then
        wine32_root_make || return 77
        in_wine32_root "${session[@]}"
    elif packages_install "${WINE_PACKAGES[@]}" "${DISPLAY_PACKAGES[@]}" 2>/dev/null; then
        "${session[@]}"
    else
        echo "Wine or Xvfb is not there"
        return 77
    fi
}
