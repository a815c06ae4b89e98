# Sourced by bench/run: the rows of the host machine.

program=build/bench/vtv4v

quietly cmake --preset host -B build/bench -DVTV4V_BENCH=ON -DBUILD_TESTING=OFF
quietly cmake --build build/bench --target vtv4v sample-machine bench-loops bench-check bench-read-files

# Whole processes, from their start to their end. At the end of its input the window closes.
host_start() {
    export VTV4V_MACHINE=$work/sample
    quietly build/bench/sample-machine "$VTV4V_MACHINE"
    local files ms=() each
    files=$(find "$VTV4V_MACHINE/drives" -type f ! -name notepad -printf "'%p' ")
    seconds 50 -N -- build/bench/bench-check "build/bench/bench-read-files $files" "cat $files" \
        "$program -master" "$program"
    for each in "${times[@]}"; do ms+=("$(scaled "$each" 1000)"); done
    row 'whole check, a process' "${ms[0]}" 'a process that reads the same 26 files' "${ms[1]}" ms
    row '' "${ms[0]}" 'cat of the same 26 files' "${ms[2]}" ms
    row 'start, check, window, end' "${ms[3]}" 'start and end alone (no -master)' "${ms[4]}" ms
}

host_check() {
    loops 'WholeCheck|BareLoop'
    row 'whole check, in a loop (CPU time)' "$(loop WholeCheck/0)" 'bare loop, samples of 1 KiB' "$(loop BareLoop/0)" us
    row '' "$(loop WholeCheck/524288)" 'bare loop, files of 512 KiB' "$(loop BareLoop/524288)" us
}

# per_subkey LOOP COUNT
per_subkey() {
    scaled "$(loop "$1/$2")" "1 / $2"
}

host_products() {
    loops 'InstallerList|FailedLookup|BareRegistryLoop'
    local name title count
    for name in InstallerList FailedLookup; do
        title='Installer.List'
        [[ $name == InstallerList ]] || title='failed lookup'
        for count in 2500 5000 10000; do
            row "$title, a subkey of $count (CPU time)" "$(per_subkey $name $count)" 'the same of 1250' \
                "$(per_subkey $name 1250)" us
        done
        row "$title of 10000 (CPU time)" "$(scaled "$(loop $name/10000)" 0.001)" 'bare loop of registry calls' \
            "$(scaled "$(loop BareRegistryLoop/10000)" 0.001)" ms
    done
}

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

# import_machine COUNT
# A sample machine with so many entries in its control file; `fresh.reg` is its registry without them.
import_machine() {
    local machine=$work/import$1
    quietly env VTV4V_MACHINE= build/bench/sample-machine "$machine"
    control_file "$1" >"$machine/drives/c/Users/hugo/Eigene Dateien/vtv4v.txt"
    cp "$machine/machine.reg" "$machine/fresh.reg"
    reg_file "$1" >"$machine/values.reg"
}

import_command() {
    echo "VTV4V_MACHINE=$work/import$1 $program -master <$work/input"
}

import_fresh() {
    echo "cp $work/import$1/fresh.reg $work/import$1/machine.reg"
}

# Times mean nothing when the entries do not arrive.
import_proved() {
    eval "$(import_fresh "$1")"
    quietly bash -c "$(import_command "$1")"
    local arrived
    arrived=$(grep -c '"user[0-9]*"=dword:00000001' "$work/import$1/machine.reg")
    [[ $arrived == "$1" ]] || { echo "$arrived of $1 entries arrived" >&2; return 1; }
}

host_import() {
    local sizes=(1000 10000 100000) size number options=() commands=() entry=()
    printf 'Importieren\nJa\nOK\nFertig\n' >"$work/input"
    for size in "${sizes[@]}"; do
        import_machine "$size"
        import_proved "$size"
        options+=(--prepare "$(import_fresh "$size")")
        commands+=("$(import_command "$size")")
    done
    seconds 3 "${options[@]}" -- "${commands[@]}"
    for number in 0 1 2; do
        entry+=("$(scaled "${times[number]}" "1000000 / ${sizes[number]}")")
    done
    row 'import, an entry of 10000 (whole process)' "${entry[1]}" 'an entry of 1000' "${entry[0]}" us
    row 'import, an entry of 100000 (whole process)' "${entry[2]}" 'an entry of 1000' "${entry[0]}" us
    row '' "${entry[2]}" 'an entry of 10000' "${entry[1]}" us
    row 'import of 100000, peak memory' "$(import_memory 100000)" 'import of 1000' "$(import_memory 1000)" MiB
    if command -v wine >/dev/null; then
        import_beside_wine "${sizes[@]}"
    else
        echo 'Wine is not here: no rows beside reg import' >&2
    fi
}

# import_memory COUNT
import_memory() {
    export VTV4V_MACHINE=$work/import$1
    peak_mebibytes "$(import_fresh "$1")" "$program" -master
}

# What an administrator would use instead: the same values as a .reg file. Wine's server runs already.
import_beside_wine() {
    export WINEPREFIX=$work/wine WINEDEBUG=-all
    trap 'wineserver -k; rm -rf "$work"' EXIT
    local size cleared='wine reg delete HKLM\\Software\\Vandrel /f || true'
    quietly wineboot --init
    for size in "$@"; do
        seconds 1 --prepare "$(import_fresh "$size")" --prepare "$cleared" -- \
            "$(import_command "$size")" "wine reg import $work/import$size/values.reg"
        row "import of $size (whole process)" "$(scaled "${times[0]}" 1000)" 'wine reg import' \
            "$(scaled "${times[1]}" 1000)" ms
    done
}

host_start
host_check
host_products
host_import
