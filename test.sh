#!/usr/bin/env bash
# Sets up, builds and runs the tests. Without an argument: all of them.
#   ./test.sh quick     those that need neither a display server nor a minute
#   ./test.sh asan      all of them, with AddressSanitizer and UndefinedBehaviorSanitizer
#   ./test.sh tsan      those of the player and of the console runner, which have threads, and those
#                       of runs inside each other, with ThreadSanitizer
#   ./test.sh coverage  all of them, and reports which lines and branches of src/ they run
#   ./test.sh sharpness the quick ones on sources with small faults, drawn at random; see --help
set -euo pipefail

# shellcheck source=scripts/setup.sh
source "$(dirname "${BASH_SOURCE[0]}")/scripts/setup.sh"

preset=release
chosen=()
case "$#:${1:-}" in
  0:) ;;
  1:quick) chosen=(--label-exclude '^(desktop|long)$') ;;
  1:asan | 1:coverage) preset=$1 ;;
  1:tsan)
    install_packages build run test
    build tsan media_tests player_tests workspace_tests
    races=$KELVANE_ROOT/tests/platform/races.supp
    export TSAN_OPTIONS="suppressions='$races':history_size=7"
    failed=()
    say "running the console runner's tests"
    "$(build_dir tsan)/tests/media/media_tests" || failed+=(media_tests)
    say "running the player's tests"
    "$(build_dir tsan)/tests/platform/player_tests" \
      --gtest_filter=-Player.RepaintsNoControlThatLiesBesideOrOverIt || failed+=(player_tests)
    say "running the main window's tests of runs inside each other"
    # Qt paints on threads of its own.
    (cat "$races" && echo called_from_lib:libQt6Gui.so) >"$(build_dir tsan)/windows.supp"
    TSAN_OPTIONS="suppressions='$(build_dir tsan)/windows.supp':history_size=7" \
      "$(build_dir tsan)/tests/workspace/workspace_tests" --gtest_filter='NestedRuns.*' ||
      failed+=(workspace_tests)
    ((${#failed[@]} == 0)) || fail "failed: ${failed[*]}"
    exit
    ;;
  *:sharpness)
    install_packages build run test
    exec python3 "$KELVANE_ROOT/scripts/sharpness.py" "${@:2}"
    ;;
  *) fail "usage: ./test.sh [quick | asan | tsan | coverage | sharpness]" ;;
esac

export LSAN_OPTIONS="suppressions='$KELVANE_ROOT/tests/desktop/leaks.supp':print_suppressions=0"

install_packages build run test
[[ $preset != coverage ]] || install_packages coverage
build "$preset"
if [[ $preset == coverage ]]; then find "$(build_dir coverage)" -name '*.gcda' -delete; fi
say "running the tests"
ctest --preset "$preset" --output-on-failure --no-tests=error --parallel $((2 * $(nproc))) "${chosen[@]}"
if [[ $preset == coverage ]]; then python3 "$KELVANE_ROOT/scripts/coverage.py"; fi
