The state file of the simulated board: no other file is ever lost, and no run loses the changes of another.

  $ . "$TESTDIR/setup.sh"
  $ short() { sed "s|$PWD/||g"; }
  $ boot() { kelvo-sim -b D 2>&1 > /dev/null | short; }

A file that is not a state file: the chip starts in reset, and the file is kept under another name, numbered if needed.

  $ while read -r text; do
  >   printf '%s' "$text" > board.json; run -i | short | head -n 2
  > done << END
  > 
  > {
  > [1]
  > {"mode": 99}
  > {"mode": "reset", "mode": "reset"}
  > {"mode": "reset", "dab": {"loaded_frequencies": [1, "2"]}}
  > END
  kelvo-sim: board.json: line 1, column 1: not valid JSON; the chip starts in reset; the file is kept as board.json.bad
  Si468x is not booted up, no firmware loaded. Please use the command boot first.
  kelvo-sim: board.json: line 1, column 2: not valid JSON; the chip starts in reset; the file is kept as board.json.bad.2
  Si468x is not booted up, no firmware loaded. Please use the command boot first.
  kelvo-sim: board.json: not an object; the chip starts in reset; the file is kept as board.json.bad.3
  Si468x is not booted up, no firmware loaded. Please use the command boot first.
  kelvo-sim: board.json: /mode: not a text; the chip starts in reset; the file is kept as board.json.bad.4
  Si468x is not booted up, no firmware loaded. Please use the command boot first.
  kelvo-sim: board.json: line 1, column 19: duplicate key "mode"; the chip starts in reset; the file is kept as board.json.bad.5
  Si468x is not booted up, no firmware loaded. Please use the command boot first.
  kelvo-sim: board.json: /dab/loaded_frequencies/1: not a whole number; the chip starts in reset; the file is kept as board.json.bad.6
  Si468x is not booted up, no firmware loaded. Please use the command boot first.
  $ ls board.json*; cat board.json.bad.3
  board.json
  board.json.bad
  board.json.bad.2
  board.json.bad.3
  board.json.bad.4
  board.json.bad.5
  board.json.bad.6
  [1] (no-eol)

All these names are taken: the file stays where it is.

  $ touch board.json.bad.{7..99}; echo mine > board.json
  $ boot; cat board.json; rm board.json*
  kelvo-sim: board.json: line 1, column 1: not valid JSON; the chip starts in reset and its state is not kept: the file cannot be renamed: File exists
  mine

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
  kelvo-sim: missing/board.json: the lock file beside it cannot be used: No such file or directory; what this run changes is not kept
  kelvo-sim: board.json/: the lock file beside it cannot be used: No such file or directory; what this run changes is not kept
  $ [ -d folder ] && [ -p fifo ] && [ -c /dev/full ] && [ -c /dev/null ] && ls
  air.json
  circle
  fifo
  folder

The target of a symbolic link is replaced in its own folder and keeps its permissions.

  $ ln -s folder/real board.json; boot; ls folder; chmod 640 folder/real
  real
  $ kelvo-sim -k > /dev/null; stat -c '%A' folder/real board.json | cut -c 1-10; echo bad > folder/real
  -rw-r-----
  lrwxrwxrwx
  $ boot; ls folder; rm -r folder/* board.json
  kelvo-sim: board.json: line 1, column 1: not valid JSON; the chip starts in reset; the file is kept as folder/real.bad
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

Drafts of killed runs are removed, and nothing else.

  $ mkdir board.json.draft-999999997; touch board.json.draft-99999999{8,9} board.json.draft-$$ board.json.draft-1x board.json.1
  $ boot; ls -d board.json* | sed "s/$$/PID/" | sort; rm -r board.json?*
  board.json
  board.json.1
  board.json.draft-1x
  board.json.draft-999999997
  board.json.draft-PID

Two runs at once each change one thing: neither change is lost, and their lock file is removed.

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

A run that waits for another one prints a line.

  $ flock board.json.lock sleep 2 & until [ -e board.json.lock ]; do sleep 0.01; done; boot
  kelvo-sim: board.json: waiting for another run that uses this file

The lock file of a killed run blocks nobody; a file of somebody else with that name is kept.

  $ (KELVO_SIM_REALTIME=1 exec kelvo-sim -u < /dev/null > /dev/null 2>&1) & disown
  $ until [ -e board.json.lock ]; do sleep 0.01; done; kill -s KILL $!
  $ boot; ls board.json*; echo mine > board.json.lock; boot; cat board.json.lock
  board.json
  mine
