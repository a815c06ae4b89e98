# Sourced by the scripts in the root: installs Debian packages and configures builds.

BUILD_PACKAGES=(g++=g++ cmake=cmake ninja=ninja-build /usr/include/SQLiteCpp/SQLiteCpp.h=libsqlitecpp-dev
    /usr/include/newt.h=libnewt-dev)

# packages_missing COMMAND=PACKAGE...
# Prints the packages whose command is missing. COMMAND can also be a file path, with wildcards.
packages_missing() {
    local pair need
    for pair in "$@"; do
        need=${pair%%=*}
        if [[ $need == /* ]]; then
            compgen -G "$need" >/dev/null || echo "${pair#*=}"
        else
            command -v "$need" >/dev/null || echo "${pair#*=}"
        fi
    done | sort -u
}

# packages_install COMMAND=PACKAGE...
# Installs the missing packages if the user is root and $NO_INSTALL isn't set. If packages are still missing afterwards,
# prints them and the reason to standard error and returns false.
packages_install() {
    local missing log
    mapfile -t missing < <(packages_missing "$@")
    ((${#missing[@]})) || return 0
    if [[ -z ${NO_INSTALL:-} && $(id -u) == 0 ]] && command -v apt-get >/dev/null; then
        echo "Installing ${missing[*]}" >&2
        log=$(mktemp)
        {
            [[ -n $(find /var/lib/apt/lists -name '*_Packages*' -print -quit 2>/dev/null) ]] || apt_get update
            apt_get install "${missing[@]}" || { apt_get update && apt_get install "${missing[@]}"; }
        } >"$log" 2>&1 </dev/null || tail -n 3 "$log" >&2
        rm -f "$log"
        mapfile -t missing < <(packages_missing "$@")
        ((${#missing[@]})) || return 0
    fi
    echo "Missing Debian packages. To install them, run as root: apt-get install ${missing[*]}" >&2
    return 1
}

# Runs apt-get non-interactively. If another package manager is running, waits up to 5 minutes for it.
apt_get() {
    DEBIAN_FRONTEND=noninteractive apt-get -y -o DPkg::Lock::Timeout=300 --no-install-recommends "$@"
}

# quietly COMMAND...
# Runs a command and prints its output only if the command fails.
quietly() {
    local output status=0
    output=$("$@" 2>&1 </dev/null) || status=$?
    ((status == 0)) || printf '%s\n' "$output" >&2
    return "$status"
}

# configure PRESET [CMAKE-OPTION]...
# Configures build/PRESET. Deletes a build folder that was copied along with its tree, because CMake would reject it.
configure() {
    local cache=build/$1/CMakeCache.txt
    if [[ -f $cache && ! $(sed -n 's/^CMAKE_HOME_DIRECTORY:INTERNAL=//p' "$cache") -ef . ]]; then
        echo "build/$1 was configured for another folder. Recreating it." >&2
        rm -rf "build/$1"
    fi
    quietly cmake --preset "$@"
}

# Prints the folder for the user's machines.
data_folder() {
    if [[ -z ${XDG_DATA_HOME:-}${HOME:-} ]]; then
        echo "HOME isn't set, so there is no folder for the machine. Set HOME or XDG_DATA_HOME." >&2
        return 1
    fi
    echo "${XDG_DATA_HOME:-$HOME/.local/share}/vtv4v"
}
