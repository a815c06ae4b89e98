#!/usr/bin/env bash
# Times the Windows program under Wine, all in one run: its start until its window is shown beside a program that shows one
# empty window, and imports and exports of 1,000 and 10,000 entries beside `reg import` and `reg export` of the same
# values, with the registry calls per entry. An import or export is a whole process that runs its operation without the
# window, and replaces a table of the same size, as `reg import` does.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source tools/packages.sh
source tools/wine.sh

source bench/table.sh

SIZES=${SIZES:-100 1000 10000}
key='HKLM\Software\Vandrel\Tallora\V4\Version\ForcedVersion'

# calls OPERATION: the registry calls of one run, beyond those of a run that does nothing
calls() {
    local count
    count=$(WINEDEBUG=+reg wine "$work/WindowsTransfer.exe" "$1" 2>&1 | grep -cE 'trace:reg:Nt[A-Za-z]+ \(') || true
    echo "$count"
}

compile() {
    x86_64-w64-mingw32-g++ -std=c++20 -O2 -static -s "$@"
}

build() {
    quietly cmake --preset win64
    quietly cmake --build --preset win64 --target vtv4v suite
    compile -municode -mwindows bench/EmptyWindow.cpp -o "$work/empty.exe"
    compile -municode bench/EmptyWindow.cpp -o "$work/start.exe"
    compile -I. bench/ReadFiles.cpp -o "$work/read-files.exe"
    local name
    for name in WindowsTransfer Check; do
        compile -Isrc "bench/$name.cpp" -o "$work/$name.exe" build/win64/libvtv4v_system.a \
            -lcomctl32 -lgdi32 -lole32 -loleaut32 -lshell32 -luuid -lversion -fstack-protector-strong
    done
}

# start_time PROGRAM [OPTION]: the milliseconds from a start until the window is shown
start_time() {
    wine "$work/start.exe" "$(winepath -w "$1")" "${@:2}" | tr -d '\r'
}

start_compared() {
    local round program=() empty=()
    for ((round = 0; round < ROUNDS; ++round)); do
        program+=("$(start_time build/win64/vtv4v.exe -master)")
        empty+=("$(start_time "$work/empty.exe")")
    done
    row 'start until the window is shown, Windows' "[$(IFS=,; echo "${program[*]}")]" 'one empty window' \
        "[$(IFS=,; echo "${empty[*]}")]" ms
}

# The files of the check as its report names them.
check_compared() {
    local files
    mapfile -t files < <(wine "$work/Check.exe" report | sed -n 's/.*=Path(\([^)]*\)).*/"\1"/p')
    seconds 3 -- "wine $work/Check.exe" "wine $work/read-files.exe ${files[*]//\\\\//}"
    row 'whole check, a process, Windows' "$(scaled "${times[0]}" 1000)" "reading the same ${#files[@]} files" \
        "$(scaled "${times[1]}" 1000)" ms
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
    local size operation other base
    base=$(calls nothing)
    for size in $SIZES; do
        wine reg delete "$key" /f >/dev/null 2>&1 || true
        values_make "$size"
        for operation in import export; do
            other="wine reg import $work/values.reg"
            [[ $operation == import ]] || other="wine reg export '$key' $work/out.reg /y"
            seconds 3 -- "wine $work/WindowsTransfer.exe $operation" "$other"
            row "$operation of $size, Windows, $(awk -v all="$(calls "$operation")" -v base="$base" -v size="$size" \
                'BEGIN { printf "%.1f", (all - base) / size }') calls an entry" "$(scaled "${times[0]}" 1000)" \
                "reg $operation" "$(scaled "${times[1]}" 1000)" ms
        done
    done
}

on_display() {
    quietly tools/wine-machine win64 "$machine" --suite
    export WINEPREFIX=$machine WINEDEBUG=-all
    wineserver -p
    documents="$machine/drive_c/users/$(id -un)/Eigene Dateien"
    build
    table_head
    start_compared
    check_compared
    transfers_compared
    wineserver -k -w
}

packages_install "${BUILD_PACKAGES[@]}" "${CROSS_PACKAGES[@]}" "${WINE_PACKAGES[@]}" "${DISPLAY_PACKAGES[@]}" \
    hyperfine=hyperfine jq=jq
machine=$PWD/build/win64/wine-bench
if [[ ${1:-} != --on-display ]]; then
    quietly cmake --preset win64
    quietly cmake --build --preset win64 --target vtv4v suite
    exec xvfb-run -a -s '-screen 0 800x600x24' "$0" --on-display
fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
on_display
