#!/usr/bin/env bash
# Sets up, builds and runs the fuzzers, each for as many seconds as the argument says (60 without
# one), from the kept inputs in fuzz/corpus. New inputs stay in build/fuzz/corpus for the next run.
# Fails at the first finding and leaves its input in build/fuzz/findings.
set -euo pipefail

# shellcheck source=scripts/setup.sh
source "$(dirname "${BASH_SOURCE[0]}")/scripts/setup.sh"

usage="usage: ./fuzz.sh [seconds for each target]"
(($# <= 1)) || fail "$usage"
seconds=${1:-60}
[[ $seconds =~ ^[1-9][0-9]*$ ]] || fail "$usage"

export LSAN_OPTIONS="suppressions='$KELVANE_ROOT/tests/desktop/leaks.supp':print_suppressions=0"

install_packages build run fuzz
build fuzz
folder=$(build_dir fuzz)
mkdir -p "$folder/findings"
for kept in "$KELVANE_ROOT"/fuzz/corpus/*; do
  target=$(basename "$kept")
  log=$folder/findings/$target.log
  mkdir -p "$folder/corpus/$target"
  say "fuzzing $target for $seconds seconds"
  "$folder/fuzz/${target}_fuzz" -max_total_time="$seconds" -max_len=2048 \
    -dict="$KELVANE_ROOT/fuzz/words/$target.dict" -artifact_prefix="$folder/findings/$target-" \
    -print_final_stats=1 "$folder/corpus/$target" "$kept" >"$log" 2>&1 || {
    grep -aE 'what\(\)|ERROR|runtime error|Test unit written' "$log" >&2 || tail -n 20 "$log" >&2
    finding=$(grep -aoP 'Test unit written to \K.*' "$log" || true)
    fail "a finding in $target. Its report: $log. To see it again:" \
      "$folder/fuzz/${target}_fuzz ${finding:-(it left no input)}"
  }
  grep -aE '^Done|average_exec_per_sec' "$log"
done
say "no finding"
