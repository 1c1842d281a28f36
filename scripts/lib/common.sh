# SPDX-License-Identifier: GPL-3.0-or-later
# Included by the other scripts. They all run in the project's root and stop at the first failure.
set -eu
CDPATH= cd -- "$(dirname "$0")/.."

build_packages="g++ make cmake libbcm2835-dev libncurses-dev nlohmann-json3-dev libmicrohttpd-dev libqrencode-dev"
test_packages="curl libgtest-dev python3-cram tmux"
bench_packages="libbenchmark-dev rapidjson-dev valgrind"

# A compiler takes up to 400 MB: run as many at once as processors and memory allow. JOBS=N overrides.
jobs=$(awk -v most="$(nproc)" '/^MemAvailable:/ { most = $2 / 400000 < most ? int($2 / 400000) : most }
  END { print most < 1 ? 1 : most }' /proc/meminfo 2>/dev/null) || jobs=1
jobs=${JOBS:-$jobs}

for folder in . build build-*; do
  if [ -d "$folder" ] && [ ! -w "$folder" ]; then
    [ "$folder" = . ] && where=$PWD || where=$PWD/$folder
    echo "$0: $where cannot be written, it belongs to $(stat -c %U "$folder"); to build elsewhere:" \
      "cmake -S '$PWD' -B ~/kelvo-build && cmake --build ~/kelvo-build" >&2
    exit 1
  fi
done

# quietly COMMAND...: prints what the command prints only if it fails, and then ends the script. On a slow machine the
# last line, cmake's percentage for example, appears on standard error every 30 seconds.
quietly() {
  output=$(mktemp)
  while sleep 30 >/dev/null 2>&1 && kill -0 $$; do tail -n 1 "$output" | cut -c 1-100 >&2; done </dev/null >/dev/null &
  progress=$!
  result=0
  "$@" >"$output" 2>&1 || result=$?
  kill $progress
  [ $result = 0 ] || cat "$output" >&2
  rm -f "$output"
  [ $result = 0 ] || exit $result
}

# build_programs TARGET...: configures the default build with the tests and builds these targets.
build_programs() {
  quietly cmake --preset default -DBUILD_TESTING=ON
  quietly cmake --build --preset default --parallel "$jobs" --target "$@"
}

# install PACKAGE...: installs those of Debian's packages that are missing, or ends with one line that has the command.
# NAME:ARCHITECTURE is a package for another processor.
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
    command -v sudo >/dev/null || { echo "$0: please run as root first: apt-get install$missing" >&2; exit 1; }
  fi
  echo "Installing with apt${as_root:+, through sudo}:$missing" >&2
  architectures=""
  for package in $missing; do
    case $package in *:*) architectures="$architectures ${package#*:}" ;; esac
  done
  # One call, so that sudo asks once. A stale index may still list the packages.
  $as_root sh -c '
    lock="-o DPkg::Lock::Timeout=120"  # another apt may be running
    for architecture in $1; do dpkg --add-architecture "$architecture"; done
    tries=24  # apt itself does not wait for the lock of its index
    while apt-get update 2>&1 | grep -q /var/lib/apt/lists/lock && [ $tries -gt 0 ]; do
      tries=$((tries - 1))
      sleep 5
    done
    why=$(DEBIAN_FRONTEND=noninteractive apt-get $lock install -y --no-install-recommends $2 2>&1 >/dev/null) ||
      { echo "$why" | grep "^E:" | head -n 1 >&2; exit 1; }' install "$architectures" "$missing" ||
    { echo "$0: cannot install; please run as root: apt-get install$missing" >&2; exit 1; }
}
