# Sourced by the scripts that need Wine, with the root of the tree as the current directory. The functions that install
# packages also need tools/packages.sh.

CROSS_PACKAGES=(x86_64-w64-mingw32-g++=g++-mingw-w64-x86-64 i686-w64-mingw32-g++=g++-mingw-w64-i686)
WINE_PACKAGES=(wine=wine /usr/lib/wine/wine64=wine64 /usr/share/wine/fonts/marlett.ttf=fonts-wine)
DISPLAY_PACKAGES=(xvfb-run=xvfb xauth=xauth)

# If wine32 isn't installed, 32-bit programs run in a small 32-bit Debian in this folder.
WINE32_ROOT=$PWD/build/wine32-root

# True if this system can run 32-bit Windows programs without the 32-bit Debian.
wine32_installed() {
    [[ $(dpkg-query -W -f='${Status}' wine32:i386 2>/dev/null) == *'ok installed' ]]
}

# wine_installed PRESET
# True if this system can run the programs of build/PRESET without the 32-bit Debian.
wine_installed() {
    [[ $1 == win64 ]] || wine32_installed
}

# wine_loader PRESET
# Prints the Wine loader for the programs in build/PRESET. Debian's `wine` prefers the 32-bit loader, for which System32
# is the 32-bit system folder, even in a 64-bit prefix.
wine_loader() {
    local loader=/usr/lib/wine/wine64
    [[ $1 == win64 ]] || loader=/usr/lib/wine/wine
    [[ -x $loader ]] || loader=wine
    echo "$loader"
}

# Kills the Wine server for $WINEPREFIX and all its programs. The server may already have exited.
wine_end() {
    wineserver -k || true
}

# Runs a command in its own mount, process and network namespaces.
isolated() {
    unshare --mount --net --pid --fork --kill-child "$@"
}

# package_mirror CODENAME
# Prints the mirror from which this system gets its packages, or nothing if apt doesn't know one.
package_mirror() {
    apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' "Codename: $1" 2>/dev/null | head -n 1
}

# wine32_root_create
# Creates the 32-bit Debian if it is missing, under a temporary name until it is complete. On failure, prints the reason
# to standard output and returns false.
wine32_root_create() {
    [[ ! -d $WINE32_ROOT ]] || return 0
    if [[ $(id -u) != 0 ]]; then
        echo "32-bit Wine is missing, and setting up a 32-bit Debian for it requires root"
        return 1
    elif ! isolated true 2>/dev/null; then
        echo "32-bit Wine is missing, and this system doesn't allow the mounts that a 32-bit Debian needs"
        return 1
    elif ! packages_install debootstrap=debootstrap 2>/dev/null; then
        echo "32-bit Wine and debootstrap are missing"
        return 1
    fi
    local suite mirror
    suite=$(. /etc/os-release && echo "${VERSION_CODENAME:-stable}")
    mirror=$(package_mirror "$suite")
    rm -rf "$WINE32_ROOT.new"
    if ! debootstrap --arch=i386 --variant=minbase --include=wine,wine32,fonts-wine,xvfb,xauth \
        "$suite" "$WINE32_ROOT.new" ${mirror:+"$mirror"} >"$WINE32_ROOT.log" 2>&1 </dev/null; then
        rm -rf "$WINE32_ROOT.new"
        echo "a 32-bit Debian couldn't be installed; see build/wine32-root.log"
        return 1
    fi
    rm -rf "$WINE32_ROOT.new"/var/cache/apt/archives/*.deb
    mv "$WINE32_ROOT.new" "$WINE32_ROOT"
}

# in_wine32_root COMMAND...
# Runs a command in the 32-bit Debian, where this tree has the same path. The inner shell remains process 1, because an
# X server whose parent is process 1 doesn't signal that it is ready.
in_wine32_root() {
    mkdir -p "$WINE32_ROOT$PWD"
    # shellcheck disable=SC2016
    isolated sh -c '
        root=$1 tree=$2
        shift 2
        mount -t proc proc "$root/proc" && mount --bind "$tree" "$root$tree" || exit
        exec env -i HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin LANG=C.UTF-8 \
            chroot "$root" sh -c "cd \"\$0\" && \"\$@\"; exit" "$tree" "$@"
    ' sh "$WINE32_ROOT" "$PWD" "$@"
}

# wine_session PRESET COMMAND...
# Runs a command on a virtual display, in the 32-bit Debian if Wine can't run the programs in build/PRESET here. Kills
# the command after 20 minutes. If neither system is suitable, prints the reason to standard output and returns 77.
wine_session() {
    local session=(timeout --kill-after=10 1200 xvfb-run -a -s '-screen 0 800x600x24' "${@:2}")
    if ! wine_installed "$1"; then
        wine32_root_create || return 77
        in_wine32_root "${session[@]}"
    elif packages_install "${WINE_PACKAGES[@]}" "${DISPLAY_PACKAGES[@]}" 2>/dev/null; then
        "${session[@]}"
    else
        echo "Wine or Xvfb is missing"
        return 77
    fi
}
