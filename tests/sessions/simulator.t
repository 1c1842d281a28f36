The simulated board: its files, its memory between runs, its trace.

  $ . "$TESTDIR/setup.sh"

A broadcast file that cannot be used: one line that names the place, and exit status 2.

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
  /ensembles/0/lists/0/services/0/label: a label of more than 16 characters
  $ run -b D | sed "s|$PWD/||"
  kelvo-sim: air.json: /ensembles/0/lists/0/services/0/label: a label of more than 16 characters
  = 2
  $ KELVO_SIM_BROADCAST=none.json kelvo-sim -b D > /dev/null
  kelvo-sim: none.json: cannot be opened: No such file or directory
  [2]
  $ [ -e board.json ]
  [1]

A number beyond every range, which fuzzing found.

  $ echo '{"time": {"year": 1e999}}' > air.json
  $ run -b D | sed "s|$PWD/||"
  kelvo-sim: air.json: a number is too large
  = 2

The file that docs/simulator.md shows can be used.

  $ sed -n '/^```json/,/^```/p' "$TESTDIR/../../docs/simulator.md" | sed '/^```/d' > air.json
  $ run -b D -f 33 -t
  Boot up successful
  
  Tuned.
  
  2016-3-7T9:5:0Z

A damaged state file: one line, and the chip starts in reset.

  $ air
  $ while read -r text; do
  >   printf '%s' "$text" > board.json; run -i | sed "s|$PWD/||g; s/bad[0-9]/bad/" | head -n 2
  > done << END
  > 
  > {
  > [1]
  > {"mode": "dab"}
  > {"mode": 99}
  > null
  > END
  kelvo-sim: board.json: line 1, column 1: not valid JSON; the chip starts in reset, and the file is kept as board.json.bad
  Si468x is not booted up, no firmware loaded. Please use the command boot first.
  kelvo-sim: board.json: line 1, column 2: not valid JSON; the chip starts in reset, and the file is kept as board.json.bad
  Si468x is not booted up, no firmware loaded. Please use the command boot first.
  kelvo-sim: board.json: not an object; the chip starts in reset, and the file is kept as board.json.bad
  Si468x is not booted up, no firmware loaded. Please use the command boot first.
  kelvo-sim: board.json: the chip is in mode "dab" with its reset line low; the chip starts in reset, and the file is kept as board.json.bad
  Si468x is not booted up, no firmware loaded. Please use the command boot first.
  kelvo-sim: board.json: /mode: not a text; the chip starts in reset, and the file is kept as board.json.bad
  Si468x is not booted up, no firmware loaded. Please use the command boot first.
  kelvo-sim: board.json: not an object; the chip starts in reset, and the file is kept as board.json.bad
  Si468x is not booted up, no firmware loaded. Please use the command boot first.
  $ mkdir taken; KELVO_SIM_STATE=taken kelvo-sim 2>&1 | grep taken
  kelvo-sim: taken: is a directory; the board's state is not kept

Where the state file is kept.

  $ (unset KELVO_SIM_STATE; XDG_STATE_HOME=$PWD/x run -b D; unset XDG_STATE_HOME; HOME=$PWD/h run -b D)
  Boot up successful
  
  Boot up successful
  
  $ find x h -name '*.json'
  x/kelvo/board.json
  h/.local/state/kelvo/board.json
  $ (unset KELVO_SIM_STATE XDG_STATE_HOME HOME; run -b D)
  kelvo-sim: the board's state is not kept: none of KELVO_SIM_STATE, XDG_STATE_HOME and HOME is set
  Boot up successful
  

A state that the broadcast no longer fits.

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
  kelvo-sim: /no/such/trace: the trace cannot be written

A program that waits for what never comes is stopped.

  $ air '"faults": [{"transaction": 3, "bus": "never_done"}]'
  $ kelvo-sim -b D | tail -n 1; echo "= ${PIPESTATUS[0]}"
  kelvo-sim: board: the host reads SPI0 registers without end: no byte moves and no time passes
  
  = 3
