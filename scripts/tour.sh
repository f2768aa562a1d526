# shellcheck shell=bash disable=SC2154
# Sourced by run: the library's typical use on a source tree that every Linux machine with a
# compiler has. Each file is read, its text format detected, preprocessed with a table of defined
# symbols, and written only where the result differs from what is there.

tour_source=/usr/include/linux
tour_target=$root/build/tour/out
tour_files=$root/build/tour/files

milliseconds() { echo $((${EPOCHREALTIME//[!0-9]/} / 1000)); }

# timed COMMAND...: leaves the time in elapsed, in milliseconds.
timed() {
    local started
    started=$(milliseconds)
    "$@"
    elapsed=$(($(milliseconds) - started))
}

# preprocess_all REPORT SYMBOL...: one command a file; the report keeps what the commands said.
preprocess_all() {
    local report=$1 file symbol options=()
    shift
    for symbol; do options+=(-D "$symbol"); done
    : >"$report"
    while read -r file; do
        "$brcore8" preprocess "${options[@]}" -o "$tour_target/$file" "$tour_source/$file" \
            2>>"$report" || true
    done <"$tour_files"
}

# row WHAT REPORT
row() {
    printf '  %-34s %7d %9d %6d %6d ms\n' "$1" "$(grep -c ': written$' "$2" || true)" \
        "$(grep -c ': unchanged$' "$2" || true)" "$(grep -c '^brcore8: ' "$2" || true)" "$elapsed"
}

# line_of WHAT RESULT: one of the other commands, its result and its time.
line_of() { printf '  %-56s %s, %d ms\n' "$1" "$2" "$elapsed"; }

total_bytes() { (cd "$1" && xargs -d '\n' cat <"$tour_files" | wc -c); }
stamps() { (cd "$tour_target" && find . -type f -printf '%p %T@ %i\n' | sort); }

tour_preprocess() {
    local reports=$root/build/tour before unchanged_stamps=no
    echo
    printf '  %-34s %7s %9s %6s %9s\n' '' written unchanged failed time
    timed preprocess_all "$reports/first" __x86_64__=1
    row "first run" "$reports/first"
    before=$(stamps)
    timed preprocess_all "$reports/second" __x86_64__=1
    row "the same again" "$reports/second"
    [ "$before" != "$(stamps)" ] || unchanged_stamps=yes
    timed preprocess_all "$reports/third" __x86_64__=1 __ASSEMBLY__
    row "with one more symbol, __ASSEMBLY__" "$reports/third"
    echo
    if [ "$unchanged_stamps" = no ]; then
        echo "The second run touched files although nothing had changed." >&2
        return 1
    fi
    echo "After the second run every file had its old time stamp and its old inode: what depends on"
    echo "these files would not be built again. The third run rewrote those that test the symbol."
    printf 'Text: %d bytes in, %d bytes out.\n' \
        "$(total_bytes "$tour_source")" "$(total_bytes "$tour_target")"
    sed -n '/^brcore8: /p' "$reports/first" | head -n 3
}

# Work that takes long enough for the bar that a terminal shows meanwhile.
tour_long_work() {
    local text=$root/build/tour/long.txt result=$root/build/tour/long.out
    find /usr/include -name '*.h' -type f -print0 | LC_ALL=C sort -z |
        { xargs -0 cat 2>/dev/null || true; } | head -c 100000000 >"$text" || true
    echo
    echo "On the first $(($(wc -c <"$text") / 1000000)) MB of all C headers of this machine:"
    timed "$brcore8" match '#include*<*>*' "$text" >"$result"
    line_of "match '#include*<*>*'" "$(wc -l <"$result") lines match"
    timed "$brcore8" convert --from ansi --to utf16 "$text" >"$result"
    line_of "convert --from ansi --to utf16" "$(wc -c <"$result") bytes"
    rm "$text" "$result"
}

tour_other_commands() {
    local text=$root/build/tour/all.txt sorted=$root/build/tour/sorted.txt
    local found=$root/build/tour/found.txt wide=$root/build/tour/wide.txt ini=$root/build/tour/sizes.ini
    local packed=$root/build/tour/packed.bin
    (cd "$tour_source" && xargs -d '\n' cat <"$tour_files") >"$text"
    echo
    echo "The other commands on all of that text at once ($(wc -l <"$text") lines):"
    timed "$brcore8" sort -n "$text" >"$sorted"
    line_of "sort -n" "$(wc -l <"$sorted") lines in numeric-aware order"
    timed "$brcore8" match '#define*0x*' "$text" >"$found"
    line_of "match '#define*0x*'" "$(wc -l <"$found") lines match"
    timed "$brcore8" convert --from utf8 --to utf16 -o "$wide" "$text" 2>/dev/null
    line_of "convert --from utf8 --to utf16" "$(wc -c <"$wide") bytes"
    printf '%s\n' struct union enum define typedef >"$root/build/tour/keywords"
    timed "$brcore8" scan -k "$root/build/tour/keywords" "$text" >"$found"
    line_of "scan -k (struct, union, enum, ...)" "$(grep -vc '^-1' "$found") keywords"
    timed "$brcore8" list format -s : "$tour_files" >"$wide"
    line_of "list format -s :" "$(wc -c <"$wide") bytes list the file names"
    timed "$brcore8" map parse -iu 'Name=Tower;12;NAME=Bridge' >"$found"
    line_of "map parse -iu 'Name=Tower;12;NAME=Bridge'" "$(tr '\t\n' '= ' <"$found")"
    timed "$brcore8" modules "$root/fuzz/corpus/module/real32.exe" >"$found"
    line_of "modules real32.exe" "a Windows program imports $(grep -c ^missing "$found") modules"
    rm -f "$ini"
    (cd "$tour_source" && find . -name '*.h' -size -2k -printf '[%h]\n%f = %s\n') >"$ini"
    cp "$ini" "$ini.old"
    timed "$brcore8" profile set "$ini" . Visited yes
    line_of "profile set" "$(diff "$ini.old" "$ini" | grep -c '^[<>]') of $(wc -l <"$ini") lines differ"
    timed "$brcore8" classes >"$found"
    line_of "classes" "$(wc -l <"$found") classes of the library"
    timed "$brcore8" binary pack "$sorted" >"$packed"
    line_of "binary pack" "$(wc -c <"$packed") bytes hold the lines as a table"
    timed "$brcore8" binary unpack "$packed" >"$found"
    cmp -s "$sorted" "$found"
    line_of "binary unpack" "the same lines again"
}

# merge_documents TARGET FIRST DOCUMENT...: one document after the other.
merge_documents() {
    local target=$1 document
    cp "$2" "$target"
    for document in "${@:3}"; do
        "$brcore8" rtf merge "$target" "$document" -o "$target" 2>/dev/null
    done
}

tour_documents() {
    local documents=("$root"/tests/text/documents/*.rtf) fonts
    local merged=$root/build/tour/merged.rtf text=$root/build/tour/merged.txt
    echo
    echo "On RTF documents in the manner of many writers:"
    timed merge_documents "$merged" "${documents[@]}"
    fonts=$("$brcore8" rtf fonts "$merged" | wc -l)
    line_of "rtf merge" "${#documents[@]} documents are one, with $fonts fonts"
    timed "$brcore8" rtf text "$merged" >"$text" 2>"$text.lost"
    line_of "rtf text" "$(wc -l <"$text") lines, $(wc -w <"$text") words"
    sed 's/^/  /' "$text.lost"
}

# What it packs: headers that no two of differ in case alone, which would be refused.
tour_archives() {
    local archive=$root/build/tour/headers.zip out=$root/build/tour/extracted
    local found=$root/build/tour/found.txt
    (cd /usr/include && cmake -E tar cf "$archive" --format=zip c++)
    echo
    echo "On an archive of $(wc -c <"$archive") bytes, the C++ headers:"
    timed "$brcore8" zip list --tsv "$archive" >"$found"
    line_of "zip list --tsv" "$(wc -l <"$found") entries, the largest $(cut -f 4 "$found" | sort -n | tail -1) bytes"
    timed "$brcore8" zip test "$archive" >"$found"
    line_of "zip test" "$(cat "$found")"
    timed "$brcore8" zip extract "$archive" -d "$out"
    diff -r /usr/include/c++ "$out/c++"
    line_of "zip extract" "$(find "$out" -type f | wc -l) files, the same as those packed"
}

tour() {
    local elapsed
    rm -rf "$root/build/tour"
    mkdir -p "$tour_target"
    (cd "$tour_source" && find . -name '*.h' -printf '%P\n' | LC_ALL=C sort) >"$tour_files"
    (cd "$tour_source" && find . -type d -printf '%P\n') |
        while read -r folder; do mkdir -p "$tour_target/$folder"; done

    echo "$("$brcore8" --version) preprocesses the $(wc -l <"$tour_files") C headers of $tour_source."
    echo "Each is read, its text format detected, its regions kept or dropped by the symbols that are"
    echo "defined, and the result written, but only where it differs from what is there already."
    tour_preprocess
    tour_other_commands
    tour_archives
    tour_documents
    tour_long_work
    echo
    echo "Results: $tour_target"
    echo "Go on with:  ./run help"
    echo "             ./run preprocess -D __ASSEMBLY__ $tour_source/types.h"
    echo "             ./test"
}
