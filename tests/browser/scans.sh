#!/bin/sh
# SPDX-License-Identifier: GPL-3.0-or-later
# scans.sh FOLDER: scans the simulated board's broadcasts from five places into FOLDER, the same files in every run:
# roof, suburb, cellar, village and hostile, whose answers and labels are markup and control characters.
[ $# -eq 1 ] || { echo "usage: $0 FOLDER" >&2; exit 1; }
set -eu
root=$(realpath "$(dirname "$0")/../..")
. "$root/scripts/lib/board.sh"
PATH=$PATH:$root/build
files=$root/simulator/broadcast/files
cd "$1"
clean_environment
export KELVO_SIM_BROADCAST="$PWD/broadcast.json" KELVO_SIM_STATE="$PWD/board.json"

# scan NAME ANSWER...: scans the broadcast from standard input, with a fixed time added, into NAME.json.
scan() {
  name=$1
  shift
  sed '/"time":/d' | with_members "$fixed_time" >broadcast.json
  printf '%s\n' "$@" | kelvo-sim -b D -u >log || { cat log >&2; exit 1; }
  mv "ensemblescan_$3_$4.json" "$name.json"
}
scan roof 12a "Main Street" 4711 Springfield Utopia roof 47.37 8.54 <"$files/default.json"
scan suburb 3 "Orchard Lane" 4715 "Springfield Heights" Utopia "indoor, 2" <"$files/suburb.json"
sed -E 's/"rssi": [34]/"rssi": 2/; s/"snr": 2[0-9]/"snr": 11/' "$files/default.json" |
  scan cellar 12a "Main Street" 4711 Springfield Utopia "indoor, -1, behind the boiler"
scan village 1 Steinhaufenweg 4800 Oberhinterbergwaldkirchen Utopia outdoor <"$files/village.json"
sed -E 's/"label": "[A-Z][^"]*n",/"label": "<b>\&\\u0007\\u001b[7mW",/; s/"label": "[A-Z][^"]*k",/"label": "WWWWWWWWWWWWWWWW",/' \
  "$files/default.json" |
  scan hostile '"><svg onload=alert(1)>' "</title><script>alert(1)</script>$(printf '\033[7m\342\200\256')" 1 \
    WWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWW Utopia
rm broadcast.json board.json* log
