#!/usr/bin/env bash
# Sets up, builds and runs the benches. Each prints minimum, median and maximum, and a ratio taken
# inside the one run.
set -euo pipefail

# shellcheck source=scripts/setup.sh
source "$(dirname "${BASH_SOURCE[0]}")/scripts/setup.sh"

(($# == 0)) || fail "usage: ./bench.sh"

install_packages build run test bench
build release
shopt -s nullglob
for bench in "$(build_dir release)"/bench/*_bench; do
  say "running $(basename "$bench")"
  "$bench"
done
