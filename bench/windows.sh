# Sourced by bench/run: the rows for the Windows program under Wine. Measures its startup, the installation check in a
# loop, and imports and exports as whole processes without a window.
key='HKLM\Software\Vandrel\Tallora\V4\Version\ForcedVersion'
programs=build/win64

if [[ ${1:-} == build ]]; then
    configure win64 -DVTV4V_BENCH=ON -DBUILD_TESTING=OFF
    quietly cmake --build --preset win64 --target vtv4v suite bench-check bench-transfer bench-window bench-start
    return
fi

# start_time PROGRAM [OPTION]: prints the milliseconds until the window is shown.
start_time() {
    "$wine" "$programs/bench-start.exe" "$(winepath -w "$1")" "${@:2}" | tr -d '\r'
}

start_compared() {
    local round program=() empty=()
    for ((round = 0; round < ROUNDS; ++round)); do
        program+=("$(start_time build/win64/vtv4v.exe -master)")
        empty+=("$(start_time "$programs/bench-window.exe")")
    done
    row 'start until the window is shown' "[$(IFS=,; echo "${program[*]}")]" 'an empty window' \
        "[$(IFS=,; echo "${empty[*]}")]" ms
}

check_compared() {
    local measured
    measured=$("$wine" "$programs/bench-check.exe" "$ROUNDS")
    row 'whole check, in a loop' "$(jq -cs 'map(.check)' <<<"$measured")" 'only its system calls' \
        "$(jq -cs 'map(.calls)' <<<"$measured")" us
}

# transfer NAME OPERATION OTHER-NAME COMMAND
transfer() {
    seconds 3 -- "$wine $programs/bench-transfer.exe $2" "$4"
    row "$1" "$(scaled "${times[0]}" 1000)" "$3" "$(scaled "${times[1]}" 1000)" ms
}

wine=$(wine_loader win64)
export WINEPREFIX=$PWD/build/win64/wine-bench WINEDEBUG=-all
quietly tools/wine-machine win64 "$WINEPREFIX" --suite
wineserver -p
start_compared
check_compared
for size in 100 1000 10000; do
    "$wine" reg delete "$key" /f >/dev/null 2>&1 || true
    values "$size"
    cp "$work/vtv4v.txt" "$WINEPREFIX/drive_c/users/$(id -un)/Eigene Dateien/vtv4v.txt"
    transfer "import of $size" import 'only its system calls' "$wine $programs/bench-transfer.exe bare"
    transfer '' import 'reg import' "$wine reg import $work/values.reg"
    transfer "export of $size" export 'reg export' "$wine reg export '$key' $work/out.reg /y"
done
wine_end
