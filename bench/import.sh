#!/usr/bin/env bash
# Times an import of 1,000, 10,000 and 100,000 entries on the host machine: the whole process from its start to its end,
# the time per entry, its ratio to that of the smallest import, and the peak memory. Beside it stands what an
# administrator would use instead, `reg import` of the same values, where Wine is there to run it.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source tools/packages.sh

RUNS=${RUNS:-5}
SIZES=${SIZES:-1000 10000 100000}

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# control_file COUNT
control_file() {
    printf '[Tallora]\r\n'
    seq -f 'user%.0f=1' "$1" | sed 's/$/\r/'
}

# reg_file COUNT
reg_file() {
    printf 'Windows Registry Editor Version 5.00\r\n\r\n'
    printf '[HKEY_LOCAL_MACHINE\\Software\\Vandrel\\Tallora\\V4\\Version\\ForcedVersion]\r\n'
    seq -f '"user%.0f"=dword:00000001' "$1" | sed 's/$/\r/'
}

# seconds COMMAND: the median of several runs, each on the state that $prepare leaves
seconds() {
    hyperfine --runs "$RUNS" --warmup 1 --prepare "$prepare" --export-json "$work/times.json" "$1" >/dev/null 2>&1
    jq '.results[0].median' "$work/times.json"
}

machine() {
    export VTV4V_MACHINE=$work/machine HOMEDRIVE=C: HOMEPATH='\bench' USERNAME=bench
    mkdir -p "$VTV4V_MACHINE/drives/c/bench/Eigene Dateien"
    printf 'Importieren\nJa\nOK\nFertig\n' >"$work/input"
    control="$VTV4V_MACHINE/drives/c/bench/Eigene Dateien/vtv4v.txt"
}

table() {
    printf '%8s  %9s  %8s  %9s  %8s  %10s  %5s\n' entries seconds us/entry 'to first' 'peak MiB' 'reg import' ratio
    local size first='' time per peak other ratio
    for size in $SIZES; do
        control_file "$size" >"$control"
        prepare="rm -f $VTV4V_MACHINE/*.reg"
        time=$(seconds "build/host/vtv4v -master <$work/input")
        rm -f "$VTV4V_MACHINE"/*.reg
        peak=$(/usr/bin/time -f %M build/host/vtv4v -master <"$work/input" 2>&1 >/dev/null | tail -n 1)
        per=$(jq -n "$time * 1000000 / $size")
        first=${first:-$per}
        other=- ratio=-
        if command -v wine >/dev/null; then
            export WINEPREFIX=$work/wine WINEDEBUG=-all
            reg_file "$size" >"$work/values.reg"
            prepare='wine reg delete HKLM\\Software\\Vandrel /f || true'
            other=$(seconds "wine reg import $work/values.reg")
            ratio=$(jq -n "$time / $other * 1000 | round / 1000")
        fi
        printf '%8d  %9.3f  %8.2f  %9.2f  %8.1f  %10s  %5s\n' "$size" "$time" "$per" "$(jq -n "$per / $first")" \
            "$(jq -n "$peak / 1024")" "$other" "$ratio"
    done
}

packages_install "${BUILD_PACKAGES[@]}" hyperfine=hyperfine jq=jq /usr/bin/time=time
quietly cmake --preset host
quietly cmake --build --preset host --target vtv4v
machine
table
