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
# Installs what is missing, as far as this user and this machine can. False, with one line on standard error that names
# the packages, when something is missing after that.
packages_install() {
    local missing
    mapfile -t missing < <(packages_missing "$@")
    ((${#missing[@]})) || return 0
    if [[ $(id -u) == 0 ]] && command -v apt-get >/dev/null; then
        echo "Installing ${missing[*]}" >&2
        {
            [[ -n $(find /var/lib/apt/lists -name '*_Packages*' -print -quit 2>/dev/null) ]] || apt-get update
            apt-get install -y --no-install-recommends "${missing[@]}" ||
                { apt-get update && apt-get install -y --no-install-recommends "${missing[@]}"; }
        } >/dev/null 2>&1 </dev/null || true
        mapfile -t missing < <(packages_missing "$@")
        ((${#missing[@]})) || return 0
    fi
    echo "Missing, and not installable here: ${missing[*]} (Debian packages; as root: apt-get install ${missing[*]})" >&2
    return 1
}

# quietly COMMAND...
# Runs a command and shows what it printed only when it fails.
quietly() {
    local output status=0
    output=$("$@" 2>&1 </dev/null) || status=$?
    ((status == 0)) || printf '%s\n' "$output" >&2
    return "$status"
}

BUILD_PACKAGES=(g++=g++ cmake=cmake ninja=ninja-build /usr/include/sqlite3.h=libsqlite3-dev)
