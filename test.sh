#!/usr/bin/env bash
# Installs what is missing (Debian 12), builds and runs the tests, with an X display of their own.
#
#   ./test.sh                                    preset dev, everything
#   ./test.sh --preset asan                      another preset: dev, asan, tsan, coverage
#   ./test.sh -R geometry                        further arguments go on to ctest
#   ./test.sh -LE slow                           leaves out what takes long
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd -P)
source "$root/scripts/common.sh"

preset=dev
ctest_arguments=()
while [ $# -gt 0 ]; do
    case $1 in
    --preset)
        [ $# -ge 2 ] || fail "--preset takes a name: dev, asan, tsan or coverage."
        preset=$2
        shift ;;
    --preset=*) preset=${1#*=} ;;
    -h | --help)
        sed -n '2,/^set /{/^set /d;s/^# \{0,1\}//;p}' "${BASH_SOURCE[0]}"
        exit 0 ;;
    *) ctest_arguments+=("$1") ;;
    esac
    shift
done
case $preset in
dev | asan | tsan | coverage) ;;
*) fail "There are no tests in the preset '$preset'; choose dev, asan, tsan or coverage." ;;
esac

# The sanitizers of GCC 12 cannot place their memory under a strongly randomised address space.
wrapper=()
if { [ "$preset" = tsan ] || [ "$preset" = asan ]; } && setarch -R true 2>/dev/null; then
    wrapper=(setarch -R)
fi

# One language everywhere, and what the sanitizers are to know of libraries that are not ours. The search
# for leaks of GCC 12 crashes over thread-local memory that the graphics driver's threads have given back,
# unless it leaves such memory alone (intercept_tls_get_addr).
export LC_ALL=C.UTF-8
export ASAN_OPTIONS=allocator_may_return_null=1:detect_leaks=1:intercept_tls_get_addr=0
export UBSAN_OPTIONS=print_stacktrace=1
export LSAN_OPTIONS=suppressions=$root/tests/support/lsan.supp:print_suppressions=0
# Qt's threads agree in ways that the thread sanitizer does not see, as Qt is not built with it: what
# libraries do themselves is left out, what this project's code does is not. Of their locks it then sees
# some being taken and not given back, so it does not judge their order. Tests start programs and threads
# in turn (die_after_fork).
export TSAN_OPTIONS=suppressions=$root/tests/support/tsan.supp:ignore_noninstrumented_modules=1:detect_deadlocks=0:die_after_fork=0

install_packages "$root/scripts/packages.txt" "$root/scripts/packages-tests.txt"
build "$preset" -- "${wrapper[@]}"

source "$root/scripts/display.sh"
trap stop_display EXIT
trap 'exit 130' INT
trap 'exit 143' TERM
start_display

if [ "$preset" = coverage ]; then
    find "$root/build/coverage" -name '*.gcda' -delete
fi
status=0
"${wrapper[@]}" ctest --test-dir "$root/build/$preset" -j"$(nproc)" --output-on-failure \
    "${ctest_arguments[@]}" || status=$?
if [ "$preset" = coverage ]; then
    "$root/scripts/coverage.sh" "$root/build/coverage/coverage.txt"
fi
exit "$status"
