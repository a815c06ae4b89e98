#!/usr/bin/env bash
# Times the Windows program under Wine, all in one run: its start until its window is shown beside a program that shows one
# empty window, and imports and exports of 1,000 and 10,000 entries beside `reg import` and `reg export` of the same
# values, with the registry calls per entry. Each time is the median of several runs of a whole process; an import or
# export runs its operation without the window, and replaces a table of the same size, as `reg import` does.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source tools/packages.sh
source tools/wine.sh

RUNS=${RUNS:-7}
SIZES=${SIZES:-1000 10000}
key='HKLM\Software\Vandrel\Tallora\V4\Version\ForcedVersion'

# milliseconds COMMAND...: the median of several runs
milliseconds() {
    local run begin
    for ((run = 0; run <= RUNS; ++run)); do
        begin=$(date +%s%N)
        "$@" >/dev/null 2>&1
        # The first one fills caches.
        ((run == 0)) || echo $((($(date +%s%N) - begin) / 1000))
    done | sort -n | sed -n "$((RUNS / 2 + 1))p" | awk '{ printf "%.1f", $1 / 1000 }'
}

# calls OPERATION: the registry calls of one run, beyond those of a run that does nothing
calls() {
    local count
    count=$(WINEDEBUG=+reg wine "$work/transfer.exe" "$1" 2>&1 | grep -cE 'trace:reg:Nt[A-Za-z]+ \(') || true
    echo "$count"
}

ratio() {
    awk -v a="$1" -v b="$2" 'BEGIN { printf "%.2f", a / b }'
}

compile() {
    x86_64-w64-mingw32-g++ -std=c++20 -O2 -static -s "$@"
}

build() {
    quietly cmake --preset win64
    quietly cmake --build --preset win64 --target vtv4v suite
    compile -municode -mwindows bench/EmptyWindow.cpp -o "$work/empty.exe"
    compile -municode bench/EmptyWindow.cpp -o "$work/start.exe"
    compile -Isrc bench/WindowsTransfer.cpp -o "$work/transfer.exe" build/win64/libvtv4v_system.a \
        -lcomctl32 -lgdi32 -lole32 -loleaut32 -lshell32 -luuid -lversion -fstack-protector-strong
}

start_compared() {
    local empty program
    empty=$(wine "$work/start.exe" "$(winepath -w "$work/empty.exe")" | tr -d '\r')
    program=$(wine "$work/start.exe" "$(winepath -w build/win64/vtv4v.exe)" -master | tr -d '\r')
    echo "start to window shown: $program ms, one empty window: $empty ms, ratio $(ratio "$program" "$empty")"
}

# Control file and .reg file of that many values.
values_make() {
    { printf '[Tallora]\r\n' && seq -f 'user%.0f=1' "$1" | sed 's/$/\r/'; } >"$documents/vtv4v.txt"
    {
        printf 'Windows Registry Editor Version 5.00\r\n\r\n'
        printf '[HKEY_LOCAL_MACHINE\\Software\\Vandrel\\Tallora\\V4\\Version\\ForcedVersion]\r\n'
        seq -f '"user%.0f"=dword:00000001' "$1" | sed 's/$/\r/'
    } >"$work/values.reg"
}

transfers_compared() {
    printf '%-7s %8s %9s %9s %6s %11s\n' '' entries ours/ms reg/ms ratio calls/entry
    local size operation ours other base
    for size in $SIZES; do
        wine reg delete "$key" /f >/dev/null 2>&1 || true
        values_make "$size"
        for operation in import export; do
            ours=$(milliseconds wine "$work/transfer.exe" "$operation")
            if [[ $operation == import ]]; then
                other=$(milliseconds wine reg import "$work/values.reg")
            else
                other=$(milliseconds wine reg export "$key" "$work/out.reg" /y)
            fi
            base=$(calls nothing)
            printf '%-7s %8d %9s %9s %6s %11s\n' "$operation" "$size" "$ours" "$other" "$(ratio "$ours" "$other")" \
                "$(awk -v all="$(calls "$operation")" -v base="$base" -v size="$size" \
                    'BEGIN { printf "%.2f", (all - base) / size }')"
        done
    done
}

on_display() {
    quietly tools/wine-machine win64 "$machine" --suite
    export WINEPREFIX=$machine WINEDEBUG=-all
    wineserver -p
    documents="$machine/drive_c/users/$(id -un)/Eigene Dateien"
    build
    start_compared
    transfers_compared
    wineserver -k -w
}

packages_install "${BUILD_PACKAGES[@]}" "${CROSS_PACKAGES[@]}" "${WINE_PACKAGES[@]}" "${DISPLAY_PACKAGES[@]}"
machine=$PWD/build/win64/wine-bench
if [[ ${1:-} != --on-display ]]; then
    quietly cmake --preset win64
    quietly cmake --build --preset win64 --target vtv4v suite
    exec xvfb-run -a -s '-screen 0 800x600x24' "$0" --on-display
fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
on_display
