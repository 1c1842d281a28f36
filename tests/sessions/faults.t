Faults, the variables of the simulated board, and what its trace shows.

  $ . "$TESTDIR/setup.sh"
  $ run -b D -f 33
  Boot up successful
  
  Tuned.
  

A file of faults applies in addition to any broadcast file; the faults of both files apply.

  $ air '"faults": [{"command": "DAB_DIGRAD_STATUS", "status_bits": "40 00 00 00"}]'
  $ faults '{"command": "0xBC", "reply": "E0 07 03 07 09 05 00"}'
  $ run -d -t | grep -E 'RSSI:|T9'
  RSSI:                                       0
  2016-3-7T9:5:0Z
  $ air
  $ (unset KELVO_SIM_BROADCAST; run -t)
  2016-3-7T9:5:0Z

A fault that was never triggered causes a warning and a line in the trace.

  $ faults '{"command": "DAB_GET_TIME", "occurrence": 2, "cts_never": true}, {"transaction": 900, "bus": "ones"}'
  $ KELVO_SIM_TRACE=trace run -t
  2026-3-7T9:5:0Z
  kelvo-sim: warning: never triggered: DAB_GET_TIME, occurrence 2; transaction 900
  $ sed -n 's/.* total never/never/p' trace
  never triggered DAB_GET_TIME, occurrence 2
  never triggered transaction 900

So does one that changes nothing: a bit behind the end of the transaction, a tune or a property that is refused.

  $ faults '{"command": "DAB_GET_TIME", "bus": "flip_bit", "bit": 16}'
  $ run -t
  2026-3-7T9:5:0Z
  kelvo-sim: warning: never triggered: DAB_GET_TIME, every one
  $ faults '{"command": "DAB_TUNE_FREQ", "stc_never": true}, {"command": "SET_PROPERTY", "property_not_kept": true}'
  $ run -f 200 -l 64 | tail -n 1
  kelvo-sim: warning: never triggered: DAB_TUNE_FREQ, every one; SET_PROPERTY, every one

Of two faults that change the same in one transaction, one applies; a warning and a line in the trace name the other.

  $ faults '{"command": "DAB_GET_TIME", "reply": "E0 07 03 07 09 05 00"}, {"transaction": 2, "reply": "E1 07"}'
  $ KELVO_SIM_TRACE=trace run -t
  2016-3-7T9:5:0Z
  kelvo-sim: warning: overridden by another fault: transaction 2
  $ tail -n 1 trace | sed 's/.* total/total/'
  total overridden transaction 2
  $ faults '{"command": "0x'"$(printf '0%.0s' {1..3000})"'BC", "occurrence": 5, "bus": "ones"}'
  $ KELVO_SIM_TRACE=trace run -t | wc -c; tail -n 1 trace | tail -c 19
  1031
  0..., occurrence 5

An invalid fault is refused: one line with its place, exit status 2.

  $ refused() { kelvo-sim -t 2>&1 | sed "1,7d; s|$PWD/||"; said ${PIPESTATUS[0]}; }
  $ while read -r fault; do faults "$fault"; refused; done << END
  > {"bus": "ones"}
  > {"command": "DAB_GET_TIME", "transaction": 1, "bus": "ones"}
  > {"command": "DAB_GET_TIM", "bus": "ones"}
  > {"command": "DAB_GET_TIME"}
  > {"command": "DAB_GET_TIME", "cts_low_reads": 0, "status_bits": "00 00 00 00"}
  > {"command": "DAB_GET_TIME", "occurrence": 0, "bus": "ones"}
  > {"transaction": 1, "occurrence": 1, "bus": "ones"}
  > {"command": "DAB_GET_TIME", "bus": "flip_bit"}
  > {"command": "DAB_GET_TIME", "bus": "ones", "bit": 3}
  > {"command": "GET_PROPERTY", "property_not_kept": true}
  > {"command": "DAB_GET_TIME", "stc_never": true}
  > {"transaction": 1, "stc_never": true}
  > {"transaction": 1, "bus": "on"}
  > {"command": "DAB_GET_TIME", "cts_never": true}, {"command": "0xBC", "cts_never": true, "reply": ""}
  > END
  kelvo-sim: faults.json: /0: a fault needs either a command or a transaction
  = 2
  kelvo-sim: faults.json: /0: a fault needs either a command or a transaction
  = 2
  kelvo-sim: faults.json: /0: unknown command "DAB_GET_TIM"
  = 2
  kelvo-sim: faults.json: /0: the fault has no effect
  = 2
  kelvo-sim: faults.json: /0: the fault has no effect
  = 2
  kelvo-sim: faults.json: /0/occurrence: 0 is not from 1 to 4294967295
  = 2
  kelvo-sim: faults.json: /0: "occurrence" counts commands; it does not go with "transaction"
  = 2
  kelvo-sim: faults.json: /0: "bit" and the bus fault "flip_bit" need each other
  = 2
  kelvo-sim: faults.json: /0: "bit" and the bus fault "flip_bit" need each other
  = 2
  kelvo-sim: faults.json: /0: "property_not_kept" needs the command SET_PROPERTY
  = 2
  kelvo-sim: faults.json: /0: "stc_never" needs the command DAB_TUNE_FREQ or FM_SEEK_START
  = 2
  kelvo-sim: faults.json: /0: "stc_never" needs the command DAB_TUNE_FREQ or FM_SEEK_START
  = 2
  kelvo-sim: faults.json: /0/bus: unknown bus fault "on"
  = 2
  kelvo-sim: faults.json: /1: another fault has the same trigger and the same effect
  = 2
  $ echo '{"faults": []}' > faults.json; refused
  kelvo-sim: faults.json: not an array
  = 2
  $ KELVO_SIM_FAULTS=none refused
  kelvo-sim: none: cannot be opened: No such file or directory
  = 2
  $ unset KELVO_SIM_FAULTS

A misspelt variable causes a warning.

  $ KELVO_SIM_BRAODCAST=x.json run -t
  kelvo-sim: warning: KELVO_SIM_BRAODCAST is not a variable of the simulated board
  2026-3-7T9:5:0Z

The trace shows the events that a user waits for, and only the beginning of each chunk of an image.

  $ trace() { KELVO_SIM_TRACE=trace run "$@" > /dev/null; sed -En 's/^ *[0-9.]+ '"$kind"' //p' trace; }
  $ kind=chip trace -f 33; kind=chip trace -f 2; kind=chip trace -b F -x
  tune ended at 227360 kHz, ensemble acquired
  service list version 98 arrived
  tune ended at 178352 kHz, no ensemble acquired
  seek ended at 107500 kHz
  $ kind=spi trace -b D | awk '/HOST_LOAD/ { print $2, $4, $5, $6, $7, "+ 8", $16, $17, $18, $19; exit }'
  4096 04 00 00 00 + 8 ... < 00*12 ...
  $ export KELVO_SIM_TRACE_BYTES=2; kind=spi trace -b D | sed -n '/HOST_LOAD/{n;p;q}'
  RD_REPLY 7 > 00 00 ... < 00 80 ...
  $ export KELVO_SIM_TRACE_BYTES=all; kind=spi trace -b D | grep HOST_LOAD | tail -n 1 | wc -w
  1773
  $ KELVO_SIM_TRACE_BYTES=2x refused
  kelvo-sim: KELVO_SIM_TRACE_BYTES is neither a number nor "all"
  = 2
