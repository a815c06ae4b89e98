# Sourced by the scripts at the root: sees to the Debian packages that they need.

# packages_missing COMMAND=PACKAGE...
# Prints the packages whose command (or file, when it begins with "/") is not there. A pattern may stand for a file.
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
# Installs what is missing, as far as this user and this machine can, unless $NO_INSTALL says not to. False, with the
# packages on standard error and why they are not there, when something is missing after that.
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
    echo "Missing: ${missing[*]} (Debian packages; as root: apt-get install ${missing[*]})" >&2
    return 1
}

# apt_get ARGUMENT...: without questions, and not before another package manager has ended.
apt_get() {
    DEBIAN_FRONTEND=noninteractive apt-get -y -o DPkg::Lock::Timeout=300 --no-install-recommends "$@"
}

# quietly COMMAND...
# Runs a command and shows what it printed only when it fails.
quietly() {
    local output status=0
    output=$("$@" 2>&1 </dev/null) || status=$?
    ((status == 0)) || printf '%s\n' "$output" >&2
    return "$status"
}

BUILD_PACKAGES=(g++=g++ cmake=cmake ninja=ninja-build /usr/include/SQLiteCpp/SQLiteCpp.h=libsqlitecpp-dev
    /usr/include/newt.h=libnewt-dev)
