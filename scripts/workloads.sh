# shellcheck shell=bash disable=SC2154
# Sourced by measure: runs each workload's contestants in turn, repetition by repetition, so that a
# machine that becomes slower or faster meanwhile does so for all of them. Every workload leaves a
# file of results/: what Google Benchmark writes (.json), or the seconds of whole processes (.tsv).

repetitions=5
bin=$root/build/bench/bin
bench=$bin/brcore8_bench
brcore8=$bin/brcore8

# Whole processes, their output thrown away: one line a contestant, WORKLOAD|CONTESTANT|COMMAND.
processes() {
    local data=$measured/data
    cat <<EOF
archive/list_60k_process|brcore8|$brcore8 zip list --tsv $data/small_60000.zip
archive/list_60k_process|unzip|unzip -v $data/small_60000.zip
archive/list_60k_process|bsdtar|bsdtar -tvf $data/small_60000.zip
archive/inflate_200m_process|brcore8|$brcore8 zip cat $data/inflate_200m.zip large.txt
archive/inflate_200m_process|unzip|unzip -p $data/inflate_200m.zip large.txt
archive/inflate_200m_process|bsdtar|bsdtar -xOf $data/inflate_200m.zip large.txt
archive/read_60k_small_process|brcore8|$brcore8 zip test $data/small_60000.zip
archive/read_60k_small_process|unzip|unzip -tqq $data/small_60000.zip
archive/read_60k_small_process|bsdtar|bsdtar -xOf $data/small_60000.zip
text/preprocess_50m_process|brcore8|$brcore8 preprocess -D FEATURE $data/source_50m.txt
text/preprocess_50m_process|unifdef|unifdef -x2 -DFEATURE $data/source_50m.txt
text/preprocess_50m_process|cpp|cpp -P -undef -DFEATURE $data/source_50m.txt
text/rtf_to_text_8m_process|brcore8|$brcore8 rtf text $data/document_8m.rtf
text/rtf_to_text_8m_process|unrtf|unrtf --text --nopict $data/document_8m.rtf
startup/process|brcore8|$bin/starts 300 $bin/startup_uses_library
startup/process|an empty C++ program|$bin/starts 300 $bin/startup_empty
startup/process|(without the C++ run-time)|$bin/starts 300 $bin/startup_nothing
EOF
}

# chosen WORKLOAD: whether it was asked for.
chosen() {
    [ ${#workloads[@]} -gt 0 ] || return 0
    local workload
    for workload in "${workloads[@]}"; do [ "$workload" != "$1" ] || return 0; done
    return 1
}

measure_benchmark() {
    "$bench" --benchmark_filter="^$1:" --benchmark_repetitions=$repetitions \
        --benchmark_enable_random_interleaving=true --benchmark_min_time=0.1 \
        --benchmark_out="$measured/new.json" --benchmark_out_format=json >/dev/null
    mv "$measured/new.json" "$measured/results/${1//\//-}.json"
}

# measure_processes WORKLOAD: one round that does not count, then the rounds that do.
measure_processes() {
    local round workload contestant command started ended
    : >"$measured/new.tsv"
    for ((round = 0; round <= repetitions; round++)); do
        while IFS='|' read -r workload contestant command; do
            [ "$workload" = "$1" ] || continue
            started=${EPOCHREALTIME//[!0-9]/}
            $command >/dev/null 2>&1 </dev/null || { echo "failed: $command" >&2; return 1; }
            ended=${EPOCHREALTIME//[!0-9]/}
            [ $round -eq 0 ] || printf '%s\t%s\t%d\n' "$workload" "$contestant" \
                $((ended - started)) >>"$measured/new.tsv"
        done < <(processes)
    done
    mv "$measured/new.tsv" "$measured/results/${1//\//-}.tsv"
}

# measure_workloads [WORKLOAD]...
measure_workloads() {
    local workload workloads=("$@") failed=0
    # Room for the thread data of a heap that is loaded late.
    export GLIBC_TUNABLES=glibc.rtld.optional_static_tls=32768
    export BRCORE8_BENCH_DATA=$measured/data BRCORE8_SETTINGS=$measured/data/settings.db
    while read -r workload; do
        chosen "$workload" || continue
        echo "$workload" >&2
        measure_benchmark "$workload" || failed=1
    done < <("$bench" --benchmark_list_tests | grep : | sed "s/:.*//" | awk '!seen[$0]++')
    while read -r workload; do
        chosen "$workload" || continue
        echo "$workload" >&2
        measure_processes "$workload" || failed=1
    done < <(processes | cut -d'|' -f1 | awk '!seen[$0]++')
    return $failed
}
