#!/usr/bin/env bash
# Sets up, builds and opens Kelvane. `./run.sh demo`, or a start without a display server, instead
# runs the demo on a private virtual display, which leaves pictures in build/demo/pictures.
set -euo pipefail

# shellcheck source=scripts/setup.sh
source "$(dirname "${BASH_SOURCE[0]}")/scripts/setup.sh"

(($# == 0)) || [[ $# == 1 && $1 == demo ]] || fail "usage: ./run.sh [demo]"

run_demo() {
  install_packages build run test
  build release kelvane kelvane_demo
  exec "$(build_dir release)/demo/kelvane_demo" \
    "$(build_dir release)/bin" "$(build_dir release)/demo/pictures"
}

[[ ${1:-} != demo ]] || run_demo

install_packages build run
build release kelvane kelvane-joiner kelvane-sections kelvane-stabiliser display_answers
if ! platform=$("$(build_dir release)/tests/desktop/display_answers"); then
  say "no display server answers: showing the demo instead"
  run_demo
fi
say "opening the window"
QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-$platform} exec "$(build_dir release)/bin/kelvane"
