# shellcheck shell=bash disable=SC2154
# Sourced by run: the library's typical use on a source tree that every Linux machine with a
# compiler has. Each file is read, its text format detected, preprocessed with a table of defined
# symbols, and written only when the result differs from what is there.

tour_source=/usr/include/linux
tour_target=$root/build/tour

microseconds() { echo "${EPOCHREALTIME//[!0-9]/}"; }

# preprocess_all REPORT: one command a file; the report keeps what the commands said.
preprocess_all() {
    local file started
    started=$(microseconds)
    while read -r file; do
        mkdir -p "$(dirname "$tour_target/$file")"
        "$brcore8" preprocess -D __KERNEL__ -D __x86_64__=1 "$tour_source/$file" \
            -o "$tour_target/$file" 2>>"$1" || true
    done <"$root/build/tour.files"
    elapsed=$((($(microseconds) - started) / 1000))
}

bytes_in() { (cd "$1" && tr '\n' '\0' <"$root/build/tour.files" | du -bc --files0-from=- 2>/dev/null | tail -n 1 | cut -f 1); }
stamps() { (cd "$tour_target" && find . -type f -printf '%p %T@ %i\n' | sort); }

tour() {
    local report=$root/build/tour.report elapsed files before
    rm -rf "$tour_target"
    (cd "$tour_source" && find . -name '*.h' -printf '%P\n' | sort) >"$root/build/tour.files"
    files=$(wc -l <"$root/build/tour.files")
    echo "$("$brcore8" --version): preprocessing $files C headers of $tour_source"

    : >"$report.1"
    preprocess_all "$report.1"
    printf '  first time:  %4d written, %4d unchanged, %4d failed in %5d ms\n' \
        "$(grep -c ': written$' "$report.1")" "$(grep -c ': unchanged$' "$report.1")" \
        "$(grep -c '^brcore8: ' "$report.1")" "$elapsed"
    before=$(stamps)

    : >"$report.2"
    preprocess_all "$report.2"
    printf '  second time: %4d written, %4d unchanged, %4d failed in %5d ms\n' \
        "$(grep -c ': written$' "$report.2")" "$(grep -c ': unchanged$' "$report.2")" \
        "$(grep -c '^brcore8: ' "$report.2")" "$elapsed"
    if [ "$before" = "$(stamps)" ]; then
        echo "  no time stamp moved: what depends on these files needs no rebuild"
    else
        echo "  time stamps moved although nothing changed"
        return 1
    fi
    printf '  %d bytes in, %d bytes out\n' "$(bytes_in "$tour_source")" "$(bytes_in "$tour_target")"
    echo "  results: $tour_target"
}
