#!/usr/bin/env bash
# Which lines the tests reach: the share of each folder, and of each file with the lines that
# nothing ran.
#   scripts/coverage.sh                    after all tests
#   scripts/coverage.sh CTEST OPTION...    after those that are chosen ("-R strings")
set -euo pipefail
root=$(dirname "$(dirname "$(readlink -f "$0")")")
. "$root/scripts/packages.sh"
prepare_environment
cd "$root"

need "$needs_build" "$needs_test" "$needs_coverage"
quietly configure cmake --preset coverage
cmake --build --preset coverage -j "$jobs"
find build/coverage -name '*.gcda' -delete
ctest --no-tests=error --test-dir build/coverage --output-on-failure -j "$jobs" -LE long "$@"

quietly coverage gcovr --root . --object-directory build/coverage --filter src/ --filter include/ \
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
