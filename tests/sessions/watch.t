JSON lines of kelvo-watch, and other programs beside it.

  $ . "$TESTDIR/setup.sh"
  $ export KELVO_SIM_REALTIME=0
  $ timeless() { sed 's/"time":"[^"]*",//; s/process [0-9]*/process N/'; }
  $ watch() {
  >   kelvo-watch-sim "$@" 2>&1 | timeless
  >   said ${PIPESTATUS[0]}
  > }

Every line has the time, UTC. A signal on a block, its first sample without the errors since the last one; a signal of
negative values on another frequency, where a counter of 16 bits passes its end; an FM station.

  $ TZ=Asia/Tokyo kelvo-watch-sim -n 1 > line; date -u -d "$(cut -d '"' -f 4 line)" +%s > seen; date +%s > now
  $ echo $(($(cat now) - $(cat seen) < 60)); sed -E 's/[0-9]/9/g' line
  1
  {"time":"9999-99-99T99:99:99.999Z","mode":"not booted"}
  $ kelvo-sim -b D -f 33 > all
  $ faults '{"command": "DAB_DIGRAD_STATUS", "occurrence": 2, "reply": "00 00 fe fd 02 03 fe ff 01 00 00 00 05"},
  >   {"command": "DAB_DIGRAD_STATUS", "occurrence": 3, "reply": "00 15 80 7f 64 ff 03 00 01 00 00 00 05"}'
  $ watch -n 3 -i 0
  {"mode":"DAB","tune_index":33,"block":"12C","tune_freq":227360,"rssi":52,"snr":21,"fic_quality":100,"cnr":28,"fib_errors":null,"acq":true,"valid":true,"hardmute":false}
  {"mode":"DAB","tune_index":5,"tune_freq":1,"rssi":-2,"snr":-3,"fic_quality":2,"cnr":3,"fib_errors":null,"acq":false,"valid":false,"hardmute":false}
  {"mode":"DAB","tune_index":5,"tune_freq":1,"rssi":-128,"snr":127,"fic_quality":100,"cnr":255,"fib_errors":5,"acq":true,"valid":true,"hardmute":true}
  $ unset KELVO_SIM_FAULTS
  $ kelvo-sim -b F -x > all
  $ watch --json --count=1
  {"mode":"FM","tune_freq":107500,"rssi":69,"snr":43,"multipath":44,"frequency_offset":15,"valid":true}

A fading from 10 to 20 dB and back within 20 seconds.

  $ fade() { echo "{\"at_s\": $1, \"rssi\": $2, \"snr\": $3, \"fic_quality\": $4}"; }
  $ echo "{\"ensembles\": [{\"index\": 33, \"signal\": {}, \"fading\": [$(fade 0 30 10 50), $(fade 10 50 20 100), $(fade 20 30 10 50)]}]}" > air.json
  $ kelvo-sim -b D -f 33 > all
  $ watch --interval=100 --count=200 | python3 -c '
  > import json, sys
  > lines = [json.loads(line) for line in sys.stdin]
  > for key in "rssi", "snr", "fic_quality":
  >     values = [line[key] for line in lines]
  >     print(key, min(values), max(values), "mean %.1f" % (sum(values) / len(values)))'
  rssi 30 50 mean 39.9
  snr 10 20 mean 15.0
  fic_quality 50 100 mean 74.8

Failures of the link and of the chip appear in the place of the sample, and the next sample is as good as before. Only a
chip that has lost its firmware stays silent.

  $ air
  $ failing() { faults "{\"command\": \"DAB_DIGRAD_STATUS\", \"occurrence\": 2, $1}"; watch -n 3 -i 0 | cut -c 1-100; }
  $ failing '"status_bits": "40 00 00 00"'
  {"mode":"DAB","tune_index":33,"block":"12C","tune_freq":227360,"rssi":52,"snr":21,"fic_quality":100,
  {"error":"DAB_DIGRAD_STATUS: the chip refused the command (code 22)"}
  {"mode":"DAB","tune_index":33,"block":"12C","tune_freq":227360,"rssi":52,"snr":21,"fic_quality":100,
  $ failing '"cts_never": true'
  {"mode":"DAB","tune_index":33,"block":"12C","tune_freq":227360,"rssi":52,"snr":21,"fic_quality":100,
  {"error":"DAB_DIGRAD_STATUS: the chip does not answer (code 22)"}
  {"mode":"DAB","tune_index":33,"block":"12C","tune_freq":227360,"rssi":52,"snr":21,"fic_quality":100,
  $ failing '"cts_low_reads": 3'
  {"mode":"DAB","tune_index":33,"block":"12C","tune_freq":227360,"rssi":52,"snr":21,"fic_quality":100,
  {"mode":"DAB","tune_index":33,"block":"12C","tune_freq":227360,"rssi":52,"snr":21,"fic_quality":100,
  {"mode":"DAB","tune_index":33,"block":"12C","tune_freq":227360,"rssi":52,"snr":21,"fic_quality":100,
  $ failing '"bus": "reset_chip"'
  {"mode":"DAB","tune_index":33,"block":"12C","tune_freq":227360,"rssi":52,"snr":21,"fic_quality":100,
  {"mode":"not booted"}
  {"mode":"not booted"}
  $ unset KELVO_SIM_FAULTS; kelvo-sim -b D -f 33 > all
  $ faults '{"command": "RD_REPLY", "bus": "ones"}'; watch -n 2 -i 0
  {"error":"GET_SYS_STATE: the chip refused the command (code 12)"}
  {"error":"GET_SYS_STATE: the chip refused the command (code 12)"}
  $ unset KELVO_SIM_FAULTS

Another program has the board for longer than a second, then shuts the chip down, boots and tunes it again: all of it is
seen by the run that goes on.

  $ mkfifo lines
  $ sees() { timeout 30 grep -m 1 -e "$1" <&3 > found && timeless < found | cut -c 1-100; }
  $ flock --no-fork board.json sleep 100 & holder=$!
  $ until ! flock --nonblock board.json true; do sleep 0.01; done
  $ KELVO_SIM_REALTIME=1 kelvo-watch-sim -i 20 > lines & exec 3< lines
  $ sees error
  {"error":"waiting: the board is in use by process N (sleep)"}
  $ kill $holder; sees DAB
  {"mode":"DAB","tune_index":33,"block":"12C","tune_freq":227360,"rssi":52,"snr":21,"fic_quality":100,
  $ kelvo-sim -k > all; sees booted
  {"mode":"not booted"}
  $ kelvo-sim -b D -f 27 > all; sees 11B
  {"mode":"DAB","tune_index":27,"block":"11B","tune_freq":218640,"rssi":33,"snr":12,"fic_quality":92,"
  $ kelvo-sim -f 99 > all; kelvo-sim -b F -x > all; sees FM
  {"mode":"FM","tune_freq":107500,"rssi":69,"snr":43,"multipath":44,"frequency_offset":15,"valid":true
  $ exec 3<&-; wait $!; said $?

A reader that leaves ends the run quietly; a full disk is an error.

  $ kelvo-watch-sim -i 0 | head -n 1 | timeless | cut -c 1-30; said ${PIPESTATUS[0]}
  {"mode":"FM","tune_freq":10750
  $ kelvo-watch-sim -i 0 > /dev/full
  kelvo-watch-sim: standard output cannot be written: No space left on device
  [1]

Arguments, a variable, and a machine without a board.

  $ for words in --interval=60001 -i-1 -ix -n0 -n --beep extra --json=1; do
  >   kelvo-watch-sim $words > all 2>&1; said $?; head -n 1 all
  > done
  = 2
  kelvo-watch-sim: 60001: not a number up to 60000
  = 2
  kelvo-watch-sim: -1: not a number up to 60000
  = 2
  kelvo-watch-sim: x: not a number up to 60000
  = 2
  kelvo-watch-sim: --count needs a number from 1 up
  = 2
  kelvo-watch-sim: option requires an argument -- 'n'
  = 2
  kelvo-watch-sim: --beep needs the full screen of a terminal
  = 2
  kelvo-watch-sim: Too many arguments
  = 2
  kelvo-watch-sim: option '--json' doesn't allow an argument
  $ KELVO_SIM_TRACE_BYTES=x watch -n 1
  kelvo-watch-sim: KELVO_SIM_TRACE_BYTES is neither a number nor "all"
  = 2
  $ [ -e /dev/spidev0.0 ] && echo "kelvo-watch: /dev/spidev0.0: No such" || kelvo-watch 2>&1 | cut -c 1-37
  kelvo-watch: /dev/spidev0.0: No such 
