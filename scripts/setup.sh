# shellcheck shell=bash
# Sourced by run.sh, test.sh, fuzz.sh, bench.sh and scripts/*.sh: functions that install missing
# packages, configure and build. Expects `set -euo pipefail`; works from any folder and with an
# empty environment.

KELVANE_ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# chroot, and programs that dpkg and the tests need, are in these folders. A user's PATH lacks them,
# and so does that of a plain "su".
export PATH=$PATH:/usr/sbin:/sbin

say() { printf '%s\n' "kelvane: $*"; }

fail() {
  printf '%s\n' "kelvane: $*" >&2
  exit 1
}

# packages_of GROUP...: prints the groups' packages, one to a line.
packages_of() {
  local wanted=" $* " group package rest
  while read -r group package rest; do
    [[ $wanted == *" $group "* ]] && printf '%s\n' "$package"
  done < <(grep -v '^#' "$KELVANE_ROOT/packaging/packages.txt")
  return 0
}

# install_packages GROUP...: installs those of the groups' packages that are missing.
install_packages() {
  local packages missing installed
  mapfile -t packages < <(packages_of "$@")
  command -v apt-get >/dev/null ||
    fail "this system has no apt-get. Kelvane is set up for Debian 13 and 12; it needs: ${packages[*]}"

  # An unknown package makes the query fail, and counts as missing.
  # shellcheck disable=SC2016  # the format is dpkg's
  installed=$(dpkg-query -W -f='${Package} ${db:Status-Status}\n' "${packages[@]}" 2>/dev/null |
    sed -n 's/ installed$//p') || true
  mapfile -t missing < <(comm -23 <(printf '%s\n' "${packages[@]}" | LC_ALL=C sort -u) \
    <(printf '%s\n' "$installed" | LC_ALL=C sort -u))
  ((${#missing[@]} > 0)) || return 0

  local as_root=()
  if ((EUID != 0)); then
    command -v sudo >/dev/null ||
      fail "these packages are missing, and only root can install them: ${missing[*]}"
    as_root=(sudo)
  fi
  say "installing ${missing[*]}"
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update -q ||
    say "the package lists can't be brought up to date; trying with those at hand"
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -q --no-install-recommends "${missing[@]}" </dev/null ||
    fail "these packages could not be installed: ${missing[*]}"
}

# build_dir PRESET: prints the preset's build folder.
build_dir() {
  if [[ $1 == release ]]; then
    printf '%s\n' "$KELVANE_ROOT/build"
  else
    printf '%s\n' "$KELVANE_ROOT/build/$1"
  fi
}

# build PRESET [TARGET...]: configures if that hasn't been done, and builds the targets, or all.
build() {
  local preset=$1 folder
  shift
  folder=$(build_dir "$preset")
  cd "$KELVANE_ROOT" || return
  if [[ ! -f $folder/build.ninja ]]; then
    say "configuring in $folder"
    cmake --preset "$preset" >/dev/null
  fi
  say "building in $folder"
  cmake --build "$folder" --parallel "$(nproc)" ${1:+--target "$@"}
}
