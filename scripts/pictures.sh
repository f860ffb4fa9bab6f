#!/usr/bin/env bash
# Renews the pictures of the README: runs the demo and keeps some of the pictures that it leaves,
# with 256 colours, in docs/pictures.
set -euo pipefail

# shellcheck source=scripts/setup.sh
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

(($# == 0)) || fail "usage: scripts/pictures.sh"

install_packages build run test
build release kelvane_demo

# The windows show this path, which is short and the same on every machine.
demo=/tmp/demo-of-kelvane
[[ ! -e $demo ]] || fail "$demo is in the way"
trap 'rm -rf "$demo"' EXIT
"$(build_dir release)/demo/kelvane_demo" "$(build_dir release)/bin" "$demo"

# keep NAME_IN_THE_DEMO NAME
keep() {
  ffmpeg -v error -y -i "$demo/$1.png" \
    -vf 'split[all][used];[used]palettegen=reserve_transparent=0[colours];[all][colours]paletteuse=dither=sierra2_4a' \
    "$KELVANE_ROOT/docs/pictures/$2.png"
}
keep 10-running-job crop
keep 07-dragged-bars main-window
keep stabiliser-4-testing stabiliser
keep joiner-4-hovered joiner-window
