#!/usr/bin/env bash
# Runs a command on a bare Debian of another release, in a fresh clone of this one's last commit:
#   scripts/elsewhere.sh trixie ./test.sh quick
# Needs root. Installs mmdebstrap if that is missing, makes the system in a temporary folder below
# ${TMPDIR:-/var/tmp} with packages from this machine's own mirror, and removes the folder at the
# end, also if the script is interrupted. Exits with the command's status.
set -euo pipefail

# shellcheck source=scripts/setup.sh
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

(($# >= 2)) || fail "usage: scripts/elsewhere.sh RELEASE COMMAND..."
((EUID == 0)) || fail "only root can make a system in a folder"
release=$1
shift

install_packages elsewhere
find_mirror() {
  apt-get indextargets --format '$(REPO_URI)' "Created-By: Packages" "Component: main" \
    "Codename: $(. /etc/os-release && printf '%s' "$VERSION_CODENAME")" | head -n 1
}
mirror=$(find_mirror)
# apt-get knows no mirror until it has package lists, which images of containers often lack.
[[ -n $mirror ]] || { apt-get update -q || true; mirror=$(find_mirror); }
[[ -n $mirror ]] || fail "this machine's sources name no mirror to make $release from"

folder=$(mktemp -d --tmpdir="${TMPDIR:-/var/tmp}" kelvane-elsewhere-XXXXXX)
chmod 755 "$folder" # the package manager downloads as a user of its own
inside=
clean_up() {
  # When this process ends, so do all those inside, even those that ignore signals.
  if [[ -n $inside ]] && kill -KILL "$inside" 2>/dev/null; then wait "$inside" || true; fi
  rm -rf --one-file-system "$folder" 2>/dev/null || { sleep 1 && rm -rf --one-file-system "$folder"; }
}
trap clean_up EXIT
trap 'exit 130' INT
trap 'exit 143' TERM HUP
system=$folder/$release

# Runs a command in namespaces of its own, so that its mounts and processes end with it.
run_isolated() {
  unshare --mount --mount-proc --pid --fork --kill-child "$@" </dev/null &
  inside=$!
  local status=0
  wait "$inside" || status=$?
  inside=
  return "$status"
}

say "making a bare Debian $release in $folder"
run_isolated mmdebstrap --quiet --variant=apt --include=ca-certificates,git "$release" "$system" "$mirror" ||
  fail "a Debian $release can't be made from $mirror"
git clone --quiet "$KELVANE_ROOT" "$system/root/kelvane" ||
  fail "$KELVANE_ROOT can't be cloned"
cp /etc/resolv.conf "$system/etc/resolv.conf"

# The environment of a bare machine, and what the network needs.
environment=(HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin)
for name in http_proxy https_proxy no_proxy; do
  [[ -z ${!name:-} ]] || environment+=("$name=${!name}")
done

say "running there: $*"
run_isolated bash -euc '
  system=$1
  shift
  mount -t proc proc "$system/proc"
  mount --rbind /sys "$system/sys"
  mount --rbind /dev "$system/dev"
  exec chroot "$system" /usr/bin/env --default-signal -i "$@"' bash "$system" "${environment[@]}" \
  bash -c 'cd /root/kelvane && exec "$@"' bash "$@"
