The simulated board: its files, its state between runs, its trace.

  $ . "$TESTDIR/setup.sh"

An invalid broadcast file: one line that names the place, and exit status 2.

  $ while read -r text; do
  >   printf '%s' "$text" > air.json; kelvo-sim -b D 2>&1 | tail -n 1 | sed 's|.*/air.json: ||'
  > done << END
  > {
  > []
  > {"ensembels": []}
  > {"ensembles": [{"index": 41, "signal": {}}]}
  > {"ensembles": [{"index": 1, "signal": {"rssi": 1.5}}]}
  > {"ensembles": [{"index": 1, "signal": {}}, {"index": 1, "signal": {}}]}
  > {"time": {"year": 2026, "month": 13, "day": 1}}
  > {"faults": [{"command": "NO_SUCH"}]}
  > {"fm": {"stations": [{"khz": 87501, "signal": {}}]}}
  > {"ensembles": [{"index": 1, "signal": {"cnr": 1, "snr": 2, "cnr": 3}}]}
  > {"time": {"year": 2026, "month": 2, "day": 31}}
  > {"fm": {"stations": [{"khz": 88200, "signal": {}, "rds": {"pi": "0x10000", "ps": ""}}]}}
  > {"fm": {"stations": [{"khz": 88200, "signal": {}, "rds": {"pi": "43B5", "ps": ""}}]}}
  > [[[[[[[[[[[[[[[[[[[[[]]]]]]]]]]]]]]]]]]]]]
  > {"ensembles": [{"index": 1, "signal": {}, "lists": [{"version": 1, "services": [{"id": 1, "label": "seventeen letters"}]}]}]}
  > END
  line 1, column 2: not valid JSON
  not an object
  unknown key "ensembels"
  /ensembles/0/index: 41 is not from 0 to 40
  /ensembles/0/signal/rssi: not a whole number
  /ensembles/1: there is an ensemble on this index already
  /time/month: 13 is not from 1 to 12
  /faults/0: unknown command "NO_SUCH"
  /fm/stations/0/khz: not a multiple of 10
  line 1, column 60: /ensembles/0/signal: duplicate key "cnr"
  /time: there is no such day
  /fm/stations/0/rds/pi: "0x10000" is not from "0x0" to 65535
  /fm/stations/0/rds/pi: "43B5" is not from "0x0" to 65535
  line 1, column 21: /0/0/0/0/0/0/0/0/0/0/0/0/0/0/0/0/0/0/0: nested too deeply
  /ensembles/0/lists/0/services/0/label: a label of more than 16 characters
  $ run -b D | sed "s|$PWD/||"
  kelvo-sim: air.json: /ensembles/0/lists/0/services/0/label: a label of more than 16 characters
  = 2
  $ KELVO_SIM_BROADCAST=none.json kelvo-sim -b D > /dev/null
  kelvo-sim: none.json: cannot be opened: No such file or directory
  [2]
  $ [ -e board.json ]
  [1]

Too many elements are refused before they are read.

  $ many() { printf "%s," $(yes "$1" | head -n "$2") | sed 's/,$//'; }
  $ lists() { echo "{\"ensembles\": [{\"index\": 33, \"signal\": {}, \"lists\": [{\"version\": 1, \"services\": [$1]}]}]}"; }
  $ service() { echo "{\"id\":$1,\"label\":\"\",\"components\":[$2]}"; }
  $ refused() { cat > air.json; timeout 10 kelvo-sim -b D 2>&1 | tail -n 1 | sed 's|.*/air.json: ||'; }
  $ echo "{\"frequencies\": [$(many 7 200000)]}" | refused
  /frequencies: more than 255 elements
  $ echo "{\"ensembles\": [$(many '{}' 500000)]}" | refused
  line 1, column 1500010: /ensembles: more than 500000 values
  $ echo "{\"ensembles\": [$(many '{}' 400000)]}" | refused
  /ensembles: more than 41 elements
  $ lists "$(many "$(service 1)" 20000)" | refused
  /ensembles/0/lists/0/services: more than 170 elements
  $ lists "$(service 1 "$(many '{"tmid":0}' 20000)")" | refused
  /ensembles/0/lists/0/services/0/components: more than 15 elements
  $ lists "$(service 1 '{"tmid":2,"fidc":1,"segments":['"$(many '{}' 70000)"']}')" | refused
  /ensembles/0/lists/0/services/0/components/0/segments: more than 65535 elements
  $ head -c 17000000 /dev/zero | refused
  more than 16 MiB

The driver reads service lists of up to 4089 bytes: 60 services with 11 components each, but not one component more. Ids
may be hexadecimal.

  $ components() { for c in $(seq "$1"); do echo "{\"tmid\":0,\"subchannel\":$c}"; done | paste -sd,; }
  $ eleven=$(components 11)
  $ full() { for id in $(seq 59); do service $id "$eleven"; done; service '"0x43B5"' "$(components "$1")"; }
  $ lists "$(full 12 | paste -sd,)" | refused
  /ensembles/0/lists/0: a list of 4090 bytes is larger than 4089
  $ lists "$(full 11 | paste -sd,)" > air.json; run -b D -f 33 -g -p -e 17333 -c 11 | grep -c ServId
  60
  $ grep -E '_id'  board.json
          "component_id": 11,
          "service_id": 17333

Numbers beyond every range, and a zero byte, which does not end the file.

  $ echo '{"time": {"year": 1e999}}' | refused
  line 1, column 23: a number is too large
  $ echo '{"time": {"year": 100000000000000000000}}' | refused
  /time/year: 1e+20 is not from 1900 to 9999
  $ printf '{"time":\n null}\0{}' | refused
  line 2, column 7: not valid JSON: a zero byte

The files in docs/simulator.md are valid.

  $ json() { sed -n '/^```json/,/^```/p' "$TESTDIR/../../docs/simulator.md" | awk '/^```json/ { n++ } !/^```/ && n == '"$1"; }
  $ json 1 > air.json
  $ run -b D -f 33 -t
  Boot up successful
  
  Tuned.
  
  2016-3-7T9:5:0Z

  $ json 2 > air.json
  $ run -b D -f 33 -d -j | grep -E '"(rssi|snr|FIC_quality|cnr)"'
  "rssi": 42,
  "snr": 19,
  "FIC_quality": 77,
  "cnr": 22,

The points of a fading begin at 0, ascend and are two or more.

  $ fading() { echo '{"ensembles": [{"index": 1, "signal": {}, "fading": ['"$1"']}]}' | refused; }
  $ point() { echo '{"at_s": '"$1"', "rssi": 1, "snr": 1, "fic_quality": 1}'; }
  $ fading "$(point 0)"
  /ensembles/0/fading: a fading has two points or more
  $ fading "$(point 1), $(point 2)"
  /ensembles/0/fading/0/at_s: the times begin at 0 and ascend
  $ fading "$(point 0), $(point 3), $(point 3)"
  /ensembles/0/fading/2/at_s: the times begin at 0 and ascend

Its two non-ASCII labels decode to the same name, each in its character set.

  $ json 3 > air.json; run -b D -f 33 -g | LC_ALL=C sed -n 's/\x99/\xc3\xbc/; s/\x8d/\xc3\x9f/; s/ *",$//; /Label/p'
  "Label": "Gr\xc3\xbc\xc3\x9fe (esc)
  "Label": "Gr\xc3\xbc\xc3\x9fe (esc)

The location of the state file. Its directories are private; a home that does not exist is not created.

  $ air; mkdir h
  $ (unset KELVO_SIM_STATE; XDG_STATE_HOME=$PWD/x run -b D; unset XDG_STATE_HOME; HOME=$PWD/h run -b D)
  Boot up successful
  
  Boot up successful
  
  $ find x h -type f
  x/kelvo/board.json
  h/.local/state/kelvo/board.json
  $ stat -c '%A %n' x x/kelvo h/.local/state h/.local/state/kelvo
  drwx------ x
  drwx------ x/kelvo
  drwx------ h/.local/state
  drwx------ h/.local/state/kelvo
  $ (unset KELVO_SIM_STATE XDG_STATE_HOME; HOME=$PWD/none run -b D | sed "s|$PWD/||"); ls -d none
  kelvo-sim: none/.local/state/kelvo/board.json: cannot be opened: No such file or directory; the chip starts in reset and its state is not kept
  Boot up successful
  
  ls: cannot access 'none': No such file or directory
  [2]
  $ (unset KELVO_SIM_STATE XDG_STATE_HOME HOME; run -b D)
  kelvo-sim: the board's state is not kept: none of KELVO_SIM_STATE, XDG_STATE_HOME and HOME is set
  Boot up successful
  

A state that does not match the broadcast any more.

  $ run -b D -f 33 -p -e 17333 -c 12
  Boot up successful
  
  Tuned.
  
  $ echo '{"frequencies": [174928]}' > air.json
  $ run -d -t | grep -E 'acquired|Tune|Z$'
  Ensemble acquired:                          0
  Tune Freq.:                                 0
  Tune index:                                 0
  0-0-0T0:0:0Z

The trace: one line for each event, and totals.

  $ air
  $ KELVO_SIM_TRACE=trace run -b D
  Boot up successful
  
  $ grep -c 'spi HOST_LOAD .* > 04 00 00 00 ' trace
  130
  $ awk '$2 == "spi" { n += $4 } END { print n }' trace
  528741
  $ sed -n 's/^.* total //p' trace
  transactions 271
  bytes 528741
  wire 541430.784
  wait 400000.000
  command BOOT 1
  command HOST_LOAD 130
  command LOAD_INIT 2
  command POWER_UP 1
  command RD_REPLY 137
  $ KELVO_SIM_TRACE=/no/such/trace run -d | head -n 1
  kelvo-sim: /no/such/trace: the trace cannot be written: No such file or directory
  $ echo mine > notes; KELVO_SIM_TRACE=notes run -d | head -n 1; cat notes
  kelvo-sim: notes: the trace cannot be written: it exists and is not a trace
  mine
