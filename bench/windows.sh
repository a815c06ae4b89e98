#!/usr/bin/env bash
# Times the Windows program under Wine, all in one run: its start until its window is shown beside a program that shows one
# empty window; the whole check in a loop beside one that only reads the same files, and beside the system's calls that
# the check is made of; imports and exports beside `reg import` and `reg export` of the same values, with the registry
# calls per entry. An import or export is a whole process that runs its operation without the window, and replaces a
# table of the same size, as `reg import` does.
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
    count=$(WINEDEBUG=+reg wine "$programs/bench-transfer.exe" "$1" 2>&1 | grep -cE 'trace:reg:Nt[A-Za-z]+ \(') || true
    echo "$count"
}

build() {
    quietly cmake --preset win64 -DVTV4V_BENCH=ON
    quietly cmake --build --preset win64 --target vtv4v suite bench-check bench-transfer bench-window bench-start
}

# start_time PROGRAM [OPTION]: the milliseconds from a start until the window is shown
start_time() {
    wine "$programs/bench-start.exe" "$(winepath -w "$1")" "${@:2}" | tr -d '\r'
}

start_compared() {
    local round program=() empty=()
    for ((round = 0; round < ROUNDS; ++round)); do
        program+=("$(start_time build/win64/vtv4v.exe -master)")
        empty+=("$(start_time "$programs/bench-window.exe")")
    done
    row 'start until the window is shown, Windows' "[$(IFS=,; echo "${program[*]}")]" 'one empty window' \
        "[$(IFS=,; echo "${empty[*]}")]" ms
}

# check_row WHAT LOOP BESIDE
check_row() {
    row "$1" "$(jq -c .check <<<"$measured")" "$3" "$(jq -c ".$2" <<<"$measured")" us
}

# The files that are enlarged now, and their own sizes: they get those back whatever happens, so that the machine is the
# same for the next run.
files=()
sizes=()

files_restore() {
    local number
    for number in "${!files[@]}"; do truncate -s "${sizes[number]}" "${files[number]}"; done
    files=()
}

# Real libraries are larger than the sample's, which a loop that reads them whole feels, and the check does not. A file
# that is a link is not this machine's own and stays.
check_compared() {
    local measured file
    measured=$(wine "$programs/bench-check.exe" "$ROUNDS")
    check_row 'whole check, in a loop, Windows' calls 'the same calls of the system alone'
    check_row '' read 'bare loop, the sample as it is'
    while read -r file; do
        file=$(winepath -u "$file")
        [[ ! -L $file ]] || continue
        files+=("$file")
        sizes+=("$(stat -c %s "$file")")
    done < <(wine "$programs/bench-check.exe" files | tr -d '\r')
    truncate -s '>512K' "${files[@]}"
    measured=$(wine "$programs/bench-check.exe" "$ROUNDS")
    check_row '' read 'bare loop, files of 512 KiB and above'
    files_restore
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
            seconds 3 -- "wine $programs/bench-transfer.exe $operation" "$other"
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
    table_head
    start_compared
    check_compared
    transfers_compared
    wineserver -k -w
}

packages_install "${BUILD_PACKAGES[@]}" "${CROSS_PACKAGES[@]}" "${WINE_PACKAGES[@]}" "${DISPLAY_PACKAGES[@]}" \
    hyperfine=hyperfine jq=jq
machine=$PWD/build/win64/wine-bench
programs=build/win64
if [[ ${1:-} != --on-display ]]; then
    build
    # Every call of Wine waits for a server of its own: on one processor, so that what is measured is the call, and not how
    # long another processor takes to wake up.
    exec taskset -c 0 xvfb-run -a -s '-screen 0 800x600x24' "$0" --on-display
fi
work=$(mktemp -d)
trap 'files_restore; rm -rf "$work"' EXIT
on_display
