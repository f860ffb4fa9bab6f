#!/usr/bin/env bash
# Sets up, builds and runs the benches. Each prints minimum, median and maximum of what it measures.
# At the end comes a table of the figures, with a verdict on those that have a mark, and of the
# benches that failed. The table is kept as bench-report.txt in the build folder. docs/benches.md
# says how each figure is measured. To be run on a machine that does nothing else.
set -euo pipefail

# shellcheck source=scripts/setup.sh
source "$(dirname "${BASH_SOURCE[0]}")/scripts/setup.sh"

(($# == 0)) || fail "usage: ./bench.sh"

install_packages build run test bench
build release
folder=$(build_dir release)
KELVANE_BENCH_REPORT=$(mktemp)
export KELVANE_BENCH_REPORT
trap 'rm -f "$KELVANE_BENCH_REPORT"' EXIT

begin=$SECONDS
failed=()
for bench in noise program waits playback join stabilise windows runner handler; do
  say "running ${bench}_bench"
  "$folder/bench/${bench}_bench" || {
    failed+=("${bench}_bench")
    printf '%s, ended early\t-\t\tfailed\n' "${bench}_bench" >>"$KELVANE_BENCH_REPORT"
  }
done
seconds=$((SECONDS - begin))
most=600
((seconds <= most)) && verdict=met || verdict=missed
printf 'the benches, all in all\t%s s\tat most %s s\t%s\n' "$seconds" "$most" "$verdict" \
  >>"$KELVANE_BENCH_REPORT"
report=$folder/bench-report.txt
{
  date '+%Y-%m-%d %H:%M'
  printf '%s cores, %s\n' "$(nproc)" "$(uptime | sed 's/.*load/load/')"
  echo
  column -t -s $'\t' -N 'what,figure,mark,verdict' <"$KELVANE_BENCH_REPORT"
} | tee "$report"
say "the table is kept as $report"
((${#failed[@]} == 0)) || fail "failed: ${failed[*]}"
