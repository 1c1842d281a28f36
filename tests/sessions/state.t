The state file of the simulated board: no other file is ever lost, and no run loses the changes of another.

  $ . "$TESTDIR/setup.sh"
  $ short() { sed "s|$PWD/||g"; }
  $ boot() { kelvo-sim -b D 2>&1 > /dev/null | short; }

A damaged state file: the chip starts in reset, and the file is kept under another name.

  $ start='{\n  "command_error": false,\n'
  $ for rest in '' '"mode": 99}' '"mode": "reset", "mode": "reset"}' '"mode": "reset", "properties": {"7": 1, "07": 2}}' \
  >     '"mode": "reset", "dab": {"loaded_frequencies": [1, "2"]}}'; do
  >   printf "$start$rest" > board.json; cp board.json damaged; boot; cmp damaged board.json.bad; rm board.json.bad; done
  kelvo-sim: board.json: line 3, column 1: not valid JSON; the chip starts in reset; the file is kept as board.json.bad
  kelvo-sim: board.json: /mode: not a text; the chip starts in reset; the file is kept as board.json.bad
  kelvo-sim: board.json: line 3, column 18: duplicate key "mode"; the chip starts in reset; the file is kept as board.json.bad
  kelvo-sim: board.json: /properties/07: the key is not a number from 0 to 65535; the chip starts in reset; the file is kept as board.json.bad
  kelvo-sim: board.json: /dab/loaded_frequencies/1: not a whole number; the chip starts in reset; the file is kept as board.json.bad

That name is taken: the file stays where it is.

  $ echo mine > board.json.bad; cp damaged board.json
  $ boot; cmp damaged board.json; cat board.json.bad; rm board.json* damaged
  kelvo-sim: board.json: damaged, and cannot be renamed to board.json.bad: File exists; the chip starts in reset and its state is not kept
  mine

Any other file is left alone, also behind a link; so is a state file that cannot be read.

  $ echo mine > notes; ln -s notes link
  $ for name in notes link air.json /proc/self/mem; do KELVO_SIM_STATE=$name boot; done
  kelvo-sim: notes: line 1, column 1: not valid JSON; the chip starts in reset and its state is not kept
  kelvo-sim: link: line 1, column 1: not valid JSON; the chip starts in reset and its state is not kept
  kelvo-sim: air.json: unknown key "chip"; the chip starts in reset and its state is not kept
  kelvo-sim: /proc/self/mem: cannot be read: Input/output error; the chip starts in reset and its state is not kept
  $ cat notes; ls; rm notes link
  mine
  air.json
  link
  notes

A file that another program writes during the run is left alone: a scan, the trace.

  $ printf '\n\n1\nx\n' | KELVO_SIM_STATE=ensemblescan_1_x.json run -b D -u | tail -n 2 | short
  Thank you
  kelvo-sim: ensemblescan_1_x.json: changed by another program; the board's state is not kept any more
  $ head -n 1 ensemblescan_1_x.json; rm ensemblescan_1_x.json
  {"content": "FullStationScan",
  $ KELVO_SIM_TRACE=board.json boot; grep -c BOOT board.json; rm board.json
  kelvo-sim: board.json: the board's state is not kept: the trace is written to this file
  2

A file with the chip's mode alone, or an empty one, is a state.

  $ echo '{"mode": "dab"}' > board.json; run -i | grep -c Part
  1
  $ : > board.json; boot; grep '"mode"' board.json; rm board.json
    "mode": "dab",

/dev/null keeps nothing, even behind a link. Anything but a regular file is left alone.

  $ KELVO_SIM_STATE=/dev/null boot
  $ ln -s /dev/null board.json; boot; rm board.json
  $ mkdir folder; mkfifo fifo; ln -s circle circle
  $ for name in folder fifo /dev/full circle missing/board.json board.json/; do
  >   KELVO_SIM_STATE=$name boot; done
  kelvo-sim: folder: not a regular file; the chip starts in reset and its state is not kept
  kelvo-sim: fifo: not a regular file; the chip starts in reset and its state is not kept
  kelvo-sim: /dev/full: not a regular file; the chip starts in reset and its state is not kept
  kelvo-sim: circle: cannot be opened: Too many levels of symbolic links; the chip starts in reset and its state is not kept
  kelvo-sim: missing/board.json: cannot be opened: No such file or directory; the chip starts in reset and its state is not kept
  kelvo-sim: board.json/: cannot be opened: Is a directory; the chip starts in reset and its state is not kept
  $ [ -d folder ] && [ -p fifo ] && [ -c /dev/full ] && [ -c /dev/null ] && ls
  air.json
  circle
  fifo
  folder

The target of a symbolic link is replaced in its own folder and keeps its permissions.

  $ ln -s folder/real board.json; boot; ls folder; chmod 640 folder/real
  real
  $ kelvo-sim -k > /dev/null; stat -c '%A' folder/real board.json | cut -c 1-10; printf "$start" > folder/real
  -rw-r-----
  lrwxrwxrwx
  $ boot; ls folder; rm -r folder/* board.json
  kelvo-sim: board.json: line 3, column 1: not valid JSON; the chip starts in reset; the file is kept as folder/real.bad
  real
  real.bad

A full disk: the old state stays, and no draft is left.

  $ boot; cp board.json before
  $ (ulimit -f 0; trap '' XFSZ; kelvo-sim -k 2>&1 > /dev/null) | short
  kelvo-sim: board.json: cannot be written: File too large
  $ cmp board.json before; ls
  air.json
  before
  board.json
  circle
  fifo
  folder

The draft of a killed run is replaced. Another file with that name is left alone, and the state is not kept.

  $ head -n 1 board.json > board.json.draft; boot; ls board.json*
  board.json
  $ echo mine > board.json.draft; boot; cat board.json.draft; rm board.json.draft
  kelvo-sim: board.json.draft: cannot be written: File exists
  mine

Two runs at once each change one thing: neither change is lost.

  $ for n in 1 2 3 4 5 6 7 8; do
  >   boot; kelvo-sim -l $n > /dev/null & kelvo-sim -f $n > /dev/null & wait
  >   grep -oE '"(768|tuned_index)": [0-9]+' board.json
  > done | sort | uniq -c
        1 "768": 1
        1 "768": 2
        1 "768": 3
        1 "768": 4
        1 "768": 5
        1 "768": 6
        1 "768": 7
        1 "768": 8
        1 "tuned_index": 1
        1 "tuned_index": 2
        1 "tuned_index": 3
        1 "tuned_index": 4
        1 "tuned_index": 5
        1 "tuned_index": 6
        1 "tuned_index": 7
        1 "tuned_index": 8
  $ ls board.json*
  board.json

A run that waits for another one prints a line. A killed run blocks nobody.

  $ flock board.json sleep 2 & until ! flock -n board.json true; do sleep 0.01; done; boot | sed 's/process [0-9]*/PROCESS/'
  kelvo-sim: board.json: in use by PROCESS (flock); waiting
  $ (KELVO_SIM_REALTIME=1 exec kelvo-sim -u < /dev/null > /dev/null 2>&1) & disown
  $ until ! flock -n board.json true; do sleep 0.01; done; kill -s KILL $!
  $ boot; ls board.json*
  board.json

