# Sourced by bench/run: measures commands and prints the table. Measurements are JSON arrays with one number per round.

ROUNDS=${ROUNDS:-5}

table_head() {
    printf '%s, %s CPUs, load %s\n\n' "$(sed -n 's/^model name\t*: //p' /proc/cpuinfo | head -n 1)" "$(nproc)" \
        "$(cut -d ' ' -f 1 /proc/loadavg)"
    printf '%-44s %11s  %-40s %11s  %6s  %s\n' program median 'compared with' median ratio min..max
}

# row NAME MEASUREMENTS OTHER-NAME OTHER-MEASUREMENTS UNIT
row() {
    jq -rn --argjson ours "$2" --argjson theirs "$4" --arg unit "$5" '
        def median: sort | if length % 2 == 1 then .[length / 2 | floor] else (.[length / 2 - 1] + .[length / 2]) / 2 end;
        [range($ours | length) | $ours[.] / $theirs[.]] as $ratios
        | [($ours | median), ($theirs | median), ($ratios | median), ($ratios | min), ($ratios | max)] | @tsv' |
        { read -r ours theirs ratio least most
          LC_ALL=C printf '%-44s %8.2f %-2s  %-40s %8.2f %-2s  %6.2f  %.2f..%.2f\n' "$1" "$ours" "$5" "$3" "$theirs" \
              "$5" "$ratio" "$least" "$most"; }
}

# scaled MEASUREMENTS FACTOR
# Multiplies the measurements. FACTOR can be a jq expression.
scaled() {
    jq -c "map(. * ($2))" <<<"$1"
}

# seconds RUNS OPTION... -- COMMAND...
# Measures the commands alternately, in seconds, and stores the measurements of each command in the array `times`. Each
# round takes the fastest of RUNS runs, because other load on the machine can only add time. The options are passed to
# hyperfine.
seconds() {
    local runs=$1 options=() number round
    shift
    while [[ $1 != -- ]]; do options+=("$1"); shift; done
    shift
    times=()
    for ((number = 0; number < $#; ++number)); do times[number]='[]'; done
    for ((round = 0; round < ROUNDS; ++round)); do
        quietly hyperfine --runs "$runs" --warmup 1 "${options[@]}" --export-json "$work/times.json" "$@"
        for ((number = 0; number < $#; ++number)); do
            times[number]=$(jq -c --slurpfile run "$work/times.json" --argjson number "$number" \
                '. + [$run[0].results[$number].min]' <<<"${times[number]}")
        done
    done
}
