#!/usr/bin/env bash
# Tells for every source of the rooms how many of its lines the last run of the preset `coverage`
# reached, and for every room the sum.
#
#   scripts/coverage.sh [REPORT]     the lines of every file go to REPORT
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)
source "$root/scripts/common.sh"

build=$root/build/coverage
report=${1:-$build/coverage.txt}
[ -d "$build" ] || fail "Nothing was measured yet; run ./test.sh --preset coverage first."

# gcov writes a line "File '...'" and then "Lines executed:12.50% of 80". A source that several
# targets compile comes several times; the best of them counts.
find "$build" -name '*.gcda' -print0 |
    (cd "$build" && xargs -0 -r gcov --no-output --relative-only --source-prefix "$root" 2>/dev/null) |
    awk -F"'" '
        /^File / { file = $2; next }
        /^Lines executed:/ && file ~ /\.cpp$/ && file !~ /^(tests|benchmarks|fuzz|build|examples)\// {
            match($0, /[0-9.]+%/); percent = substr($0, RSTART, RLENGTH - 1)
            count = $0; sub(/.* of /, "", count)
            reached = percent * count / 100
            if (!(file in lines) || reached > best[file]) { best[file] = reached; lines[file] = count }
            file = ""
        }
        END { for (f in lines) printf "%6.2f%% %6d %s\n", 100 * best[f] / lines[f], lines[f], f }
    ' | sort -k3 >"$report"
[ -s "$report" ] || fail "The last run of the preset coverage left no counts."

awk '
    { room = $3; sub(/\/[^\/]*$/, "", room); percent = $1; sub(/%/, "", percent)
      lines[room] += $2; reached[room] += percent * $2 / 100; all += $2; sum += percent * $2 / 100 }
    END { for (r in lines) printf "%6.2f%% %6d %s\n", 100 * reached[r] / lines[r], lines[r], r
          printf "%6.2f%% %6d all\n", 100 * sum / all, all }
' "$report" | sort -k3 >&2
say "The lines of every file: $report"
