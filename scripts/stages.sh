# shellcheck shell=bash disable=SC2154
# Sourced by test: the stages of "./test --all", each with its count of cases and its time.
# A stage is a function that counts with pass, fail or count_tests; it runs to its end, so that one
# run tells everything that is wrong.

total_passed=0
total_failed=0
run_under=()  # what ctest itself is started by

pass() { stage_passed=$((stage_passed + ${1:-1})); }
fail() {
    stage_failed=$((stage_failed + 1))
    echo "  FAILED: $*"
}

# run_logged WHAT COMMAND...: shows the end of the output only when the command fails.
run_logged() {
    local what=$1 log="build/log/$stage-${1//[^a-z0-9]/-}"
    shift
    if ! "$@" >"$log" 2>&1 </dev/null; then
        fail "$what"
        tail -n 60 "$log"
        return 1
    fi
}

stage() {
    stage=$1
    stage_passed=0
    stage_failed=0
    local started=$SECONDS
    "stage_$stage" || true
    total_passed=$((total_passed + stage_passed))
    total_failed=$((total_failed + stage_failed))
    printf '%-8s %5d passed, %d failed, %4d s   %s\n' "$stage" "$stage_passed" "$stage_failed" \
        $((SECONDS - started)) "$2"
}

build() { # PRESET [TARGET]...
    local preset=$1 targets=()
    shift
    [ $# -eq 0 ] || targets=(--target "$@")
    run_logged "$preset: configure" cmake --preset "$preset" &&
        run_logged "$preset: build" cmake --build --preset "$preset" -j "$jobs" "${targets[@]}"
}

# run_tests PRESET [CTEST OPTION]...: every case of every program counts; a program that is no
# GoogleTest program counts as one case.
run_tests() {
    local dir=build/$1 preset=$1 results name status tests failures skipped
    shift
    rm -rf "$dir"/{tests,bin}/results "$dir/ctest.xml"
    "${run_under[@]}" ctest --test-dir "$dir" --output-on-failure --output-junit "$root/$dir/ctest.xml" "$@" \
        >"build/log/$preset-ctest" 2>&1 </dev/null || tail -n 80 "build/log/$preset-ctest"
    if [ ! -s "$dir/ctest.xml" ]; then
        fail "$preset: ctest left no results"
        return
    fi
    while read -r name status; do
        results=$dir/tests/results/brcore8_${name}_test.xml
        [ -s "$results" ] || results=$dir/bin/results/brcore8_${name}_test.xml
        case $name in wine_*) [ "$status" != run ] || continue ;; esac
        if [ -s "$results" ]; then
            read -r tests failures skipped < <(count_cases "$results")
            pass $((tests - failures - skipped))
            stage_failed=$((stage_failed + failures))
            [ "$skipped" -eq 0 ] || echo "  $preset: $name: $skipped cases skipped"
            # What fails outside the cases, such as a leak at the end, is a failure of its own.
            [ "$status" = run ] || [ "$failures" -gt 0 ] || fail "$preset: $name"
        elif [ "$status" = run ]; then
            pass
        else
            fail "$preset: $name"
        fi
    done < <(sed -n 's/.*<testcase name="\([^"]*\)".* status="\([a-z]*\)".*/\1 \2/p' "$dir/ctest.xml")
}

# Cases, failures and skipped cases of one GoogleTest report.
count_cases() {
    awk '/<testsuite / {
            for (i = 1; i <= NF; ++i) if (split($i, a, /[="]+/) > 1) n[a[1]] += a[2]
        }
        END { print n["tests"] - n["disabled"], n["failures"] + n["errors"], n["skipped"] + 0 }' "$1"
}

stage_linux() { build linux && run_tests linux -j "$jobs"; }
stage_asan() { build asan && run_tests asan -j "$jobs"; }

# Only what is shared between threads is worth the slow program: the suites named ...Threads.
stage_tsan() {
    local targets name runner=()
    mapfile -t targets < <(grep -lE 'TEST(_[FP])?\([A-Za-z0-9]*Threads,' tests/*/*_test.cpp |
        sed 's|tests/\([^/]*\)/.*|brcore8_\1_test|' | sort -u)
    [ ${#targets[@]} -gt 0 ] || { fail "no suite is named ...Threads"; return; }
    build tsan "${targets[@]}" || return
    # ThreadSanitizer needs its addresses free; a wide randomisation takes them.
    ! setarch -R true 2>/dev/null || runner=(setarch -R)
    rm -rf build/tsan/tests/results
    for name in "${targets[@]}"; do
        local report=build/tsan/tests/results/$name.xml tests failures skipped
        if run_logged "$name" "${runner[@]}" "build/tsan/bin/$name" --gtest_filter='*Threads*' \
            --gtest_output="xml:$report"; then
            read -r tests failures skipped < <(count_cases "$report")
            pass $((tests - skipped))
        fi
    done
}

stage_win64() {
    build win64 || return
    local run_under=()
    [ -n "${DISPLAY-}" ] || run_under=(xvfb-run -a)
    run_tests win64
}

stage_win32() { build win32 && pass; }

# Each fuzz target starts from its committed inputs and looks around from there.
stage_fuzz() {
    local target name inputs options
    build fuzz fuzz/all || return
    local -x BRCORE8_SETTINGS=$PWD/build/fuzz/settings.db
    for target in fuzz/{,posix/}*_fuzz.cpp; do
        name=$(basename "$target" _fuzz.cpp)
        inputs=build/fuzz/corpus/$name
        mkdir -p "$inputs" build/fuzz/findings
        options=(-max_total_time=5 -timeout=10 -rss_limit_mb=4096
            "-artifact_prefix=build/fuzz/findings/$name-")
        [ ! -f "fuzz/$name.dict" ] || options+=("-dict=fuzz/$name.dict")
        run_logged "$name" "build/fuzz/bin/fuzz_$name" "${options[@]}" \
            "$inputs" "fuzz/corpus/$name" && pass
    done
}

stage_docs() {
    rm -rf build/docs
    run_logged "a warning of Doxygen" doxygen docs/Doxyfile && pass
}

all_stages() {
    mkdir -p build/log
    export GTEST_OUTPUT=xml:results/
    stage linux "native build and tests"
    stage asan "AddressSanitizer, UBSan and LeakSanitizer"
    stage tsan "ThreadSanitizer over the suites named ...Threads"
    stage win64 "Windows, 64 bits, under Wine"
    stage win32 "Windows, 32 bits: compiled, every layout asserted"
    stage fuzz "every fuzz target for five seconds"
    stage docs "reference pages without a warning"
    echo "$total_passed passed, $total_failed failed"
    [ "$total_failed" -eq 0 ] && [ "$total_passed" -gt 0 ]
}
