# SPDX-License-Identifier: GPL-3.0-or-later
# Read by the other scripts. They all work from the project's root and stop at the first failure.
set -eu
CDPATH= cd -- "$(dirname "$0")/.."
jobs=$(nproc)

build_packages="g++ make cmake libbcm2835-dev nlohmann-json3-dev"
test_packages="libgtest-dev python3-cram"
bench_packages="libbenchmark-dev rapidjson-dev valgrind"

# install PACKAGE...: installs those of Debian's packages that are missing, or ends with one clear line.
# NAME:ARCHITECTURE is a package of another processor.
install() {
  missing=""
  for package in "$@"; do
    dpkg-query -W -f '${Status}\n' "$package" 2>/dev/null | grep -q 'ok installed' || missing="$missing $package"
  done
  [ -n "$missing" ] || return 0
  command -v apt-get >/dev/null || { echo "$0: please install first:$missing" >&2; exit 1; }
  as_root=""
  if [ "$(id -u)" != 0 ]; then
    as_root=sudo
    command -v sudo >/dev/null || { echo "$0: run it as root once, to install:$missing" >&2; exit 1; }
  fi
  echo "Installing$missing"
  for package in $missing; do
    case $package in *:*) $as_root dpkg --add-architecture "${package#*:}" ;; esac
  done
  # An index that is stale may still know the packages.
  $as_root apt-get update >/dev/null 2>&1 || true
  why=$($as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends $missing 2>&1 >/dev/null) ||
    { echo "$0: cannot install$missing: $(echo "$why" | grep -E '^(E|sudo):' | head -n 1)" >&2; exit 1; }
}
