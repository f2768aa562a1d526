#!/usr/bin/env bash
# Tells which lines of the library the tests reach: by file with the numbers of those they do not
# (build/coverage/lines.txt), and by folder.
#   scripts/coverage.sh                                after all tests
#   scripts/coverage.sh CTEST OPTION...                after those that are chosen ("-R replay")
#   scripts/coverage.sh -f FOLDER... [CTEST OPTION...] after the tests of these folders, which alone
#                                                      are built; tells about their sources only
set -euo pipefail
root=$(dirname "$(dirname "$(readlink -f "$0")")")
. "$root/scripts/packages.sh"
prepare_environment
cd "$root"

folders=()
while [ "${1-}" = -f ]; do
    folders+=("${2:?a folder of tests/ follows -f}")
    shift 2
done
targets=()
chosen=("$@")
sources=(--filter src/ --filter include/)
if [ ${#folders[@]} -gt 0 ]; then
    chosen=(-R "^($(IFS='|' && echo "${folders[*]}"))\$" "$@")
    sources=()
    targets=(--target)
    for folder in "${folders[@]}"; do
        targets+=("brcore8_${folder}_test")
        sources+=(--filter "src/$folder/" --filter "include/brcore8/$folder/")
    done
fi

need "$needs_build" "$needs_test" "$needs_coverage"
quietly configure cmake --preset coverage
cmake --build --preset coverage -j "$jobs" "${targets[@]}"
find build/coverage -name '*.gcda' -delete
# A test that fails has reached its lines all the same.
status=0
ctest --no-tests=error --test-dir build/coverage --output-on-failure -j "$jobs" -LE long "${chosen[@]}" ||
    status=$?

quietly coverage gcovr --root . --object-directory build/coverage -j "$jobs" "${sources[@]}" \
    --csv build/coverage/lines.csv --txt build/coverage/lines.txt
cat build/coverage/lines.txt
awk -F, 'NR > 1 {
        folder = $1
        sub(/^(src|include\/brcore8)\//, "", folder)
        sub(/\/[^\/]*$/, "", folder)
        lines[folder] += $2
        reached[folder] += $3
    }
    END { for (f in lines) printf "%-18s %6d lines %6.1f %%\n", f, lines[f], 100 * reached[f] / lines[f] }' \
    build/coverage/lines.csv | sort
exit $status
