# Sourced by bench/run: the rows for the host machine. Times whole processes.
program=$PWD/build/host/vtv4v
machine=$work/machine

configure host -DBUILD_TESTING=OFF
quietly cmake --build --preset host --target vtv4v vtv4v-reg sample-machine
quietly build/host/sample-machine "$machine"
printf 'Importieren\nJa\nOK\nFertig\n' >"$work/input"
export WINEPREFIX=$work/wine WINEDEBUG=-all
quietly wineboot --init

declare -A entry
for size in 1000 10000 100000; do
    values "$size"
    cp "$work/vtv4v.txt" "$machine/drives/c/Users/hugo/Eigene Dateien/vtv4v.txt"
    seconds 3 --prepare 'wine reg delete HKLM\\Software\\Vandrel /f >/dev/null 2>&1 || true' -- \
        "VTV4V_MACHINE=$machine $program -master <$work/input" "wine reg import $work/values.reg"
    imported=$(sqlite3 "$machine/machine.db" "SELECT count(*) FROM registry WHERE name LIKE 'user%'")
    [[ $imported == "$size" ]] || { echo "Only $imported of $size entries were imported." >&2; exit 1; }
    row "import of $size, host" "$(scaled "${times[0]}" 1000)" 'wine reg import' "$(scaled "${times[1]}" 1000)" ms
    entry[$size]=$(scaled "${times[0]}" "1000000 / $size")
done
row 'import, host: per entry of 100000' "${entry[100000]}" 'per entry of 1000' "${entry[1000]}" us

seconds 3 -- "build/host/vtv4v-reg $work/vtv4v.txt $work/out.reg" \
    "awk -F= 'NF == 2 && \$2 ~ /^[0-9]+\\r?\$/ { print }' $work/vtv4v.txt >$work/out.txt"
row 'vtv4v-reg, 100000 lines, host' "$(scaled "${times[0]}" 1000)" 'awk on the same file' "$(scaled "${times[1]}" 1000)" ms
wine_end
