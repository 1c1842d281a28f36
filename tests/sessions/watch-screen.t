The full screen of kelvo-watch, in a terminal that tmux plays.

  $ command -v tmux > /dev/null || exit 80
  $ . "$TESTDIR/setup.sh"
  $ export LC_ALL=C.UTF-8 KELVO_SIM_REALTIME=1
  $ unset NO_COLOR TMUX COLUMNS LINES
  $ terminal() { command tmux -S "$PWD/terminal-$number" -f /dev/null "$@"; }
  $ screen() { terminal capture-pane -p "$@"; }
  $ plain() { sed 'y/█▏▎▍▌▋▊▉▁▂▃▄▅▆▇µ/#1234567abcdefgu/; s/ \{9,\}/  ---  /g; s/#\{15,\}/#---#/' | uniq -c; }
  $ shows() {  # PATTERN [CAPTURE-OPTION]: waits for a line with the pattern, and prints the first one
  >   for i in $(seq 400); do
  >     ! screen ${@:2} | grep -m 1 -e "$1" || return 0
  >     sleep 0.05
  >   done
  >   screen; return 1
  > }
  $ cat > script << 'END'
  > trap : INT
  > stty -g > before
  > sh -c 'echo $$ > process; exec kelvo-watch-sim "$@"' watch "$@"
  > echo "ended with $?"
  > stty -g > after; cmp before after && echo restored
  > sleep 100
  > END
  $ start() {  # WIDTH HEIGHT VARIABLE=VALUE OPTION...
  >   [ -z "$number" ] || terminal kill-server
  >   number=$((number + 1))
  >   terminal new-session -d -x $1 -y $2 -e $3 "sh script ${*:4}"
  > }

What the board receives, in each size. Digits are cells filled from the left, letters from below.

  $ kelvo-sim -b D -f 33 > all
  $ start 40 12 A=B -i 60000; shows space; screen | plain
  space mark  +- 60000 ms  b beep off  q e
        1 DAB 12C  227.360 MHz  index 33  acquired
        1 RSSI   52 dBuV ########3      52 to 52
        1 SNR    21 dB   #########      21 to 21
        1 FIC   100      ############# 100 to 100
        1  30
        1   ---  a
        1   ---  #
        1 SNR  ---  #
        1   ---  #
        1   0  ---  #
        1 position 1  SNR 21.0  RSSI 52.0  FIC 100
        1 space mark  +- 60000 ms  b beep off  q e
  $ start 80 24 A=B -i 60000; shows end; screen | plain
  space mark  +- 60000 ms  b beep off  q end
        1 DAB 12C  227.360 MHz  index 33  acquired
        1 
        1 ### ###  ---  ###  #  ---  #  ### ###
        1 #     #  ---  #  #  ---  #  # # # #
        1 ### ###  ---  ###  #  ---  #  # # # #
        1   # #  ---  #    #  ---  #  # # # #
        1 ### ### RSSI dBuV  ---  ###  #  SNR dB  ---  #  ### ### FIC
        1 
        1 RSSI   52 dBuV #---#  ---  52 to 52, mean 52.0
        1 SNR    21 dB   #---#  ---  21 to 21, mean 21.0
        1 FIC   100      #---# 100 to 100, mean 100.0
        1  30
        2 
        1   ---  e
        1   ---  #
        1 SNR  ---  #
        4   ---  #
        1   0  ---  #
        1 position 1  SNR 21.0  RSSI 52.0  FIC 100.0
        1 space mark  +- 60000 ms  b beep off  q end
  $ terminal resize-window -x 200 -y 50; shows '^.\{170\}.*mean' > all; shows end; screen | plain
  space mark  +- 60000 ms  b beep off  q end
        1 DAB 12C  227.360 MHz  index 33  acquired
        1 
        1 ### ###  ---  ###  #  ---  #  ### ###
        1 #     #  ---  #  #  ---  #  # # # #
        1 ### ###  ---  ###  #  ---  #  # # # #
        1   # #  ---  #    #  ---  #  # # # #
        1 ### ### RSSI dBuV  ---  ###  #  SNR dB  ---  #  ### ### FIC
        1 
        1 RSSI   52 dBuV #---#  ---  52 to 52, mean 52.0
        1 SNR    21 dB   #---#  ---  21 to 21, mean 21.0
        1 FIC   100      #---# 100 to 100, mean 100.0
        1  30
       10 
        1   ---  g
        6   ---  #
        1 SNR  ---  #
       17   ---  #
        1   0  ---  #
        1 position 1  SNR 21.0  RSSI 52.0  FIC 100.0
        1 space mark  +- 60000 ms  b beep off  q end
  $ terminal resize-window -x 20 -y 5; shows '^SNR .* to .*1$'
  SNR    2  21 to 21
  $ terminal resize-window -x 40 -y 12; shows 'position 1'
  position 1  SNR 21.0  RSSI 52.0  FIC 100

Keys. A mark begins a position; eight earlier ones stay.

  $ terminal send-keys ' '; shows 'position 2'; screen | grep 'position 1'
  position 2
  position 1  SNR 21.0  RSSI 52.0  FIC 100
  $ terminal send-keys - - b; shows '10000 ms'
  space mark  +- 10000 ms  b beep on  q en
  $ terminal send-keys + b; shows '30000 ms  b beep off'
  space mark  +- 30000 ms  b beep off  q e
  $ terminal resize-window -x 80 -y 45; shows 'SNR dB .*FIC' > all
  $ terminal send-keys ' ' ' ' ' ' ' ' ' ' ' ' ' ' ' '; shows 'position 10'
  position 10
  $ screen | grep -o 'position [0-9]*' | paste -sd ' '
  position 10 position 9 position 8 position 7 position 6 position 5 position 4 position 3 position 2
  $ terminal send-keys q; shows restored; screen | grep .
  restored
  ended with 0
  restored

The terminal is as it was before, also after a signal.

  $ start 80 24 A=B; shows end; terminal send-keys C-c; shows restored; screen | grep .
  space mark  +- 500 ms  b beep off  q end
  restored
  ended with 130
  restored
  $ start 80 24 A=B; shows end; kill -TERM $(cat process); shows restored; screen | grep ended
  space mark  +- 500 ms  b beep off  q end
  restored
  ended with 143

Colours, and characters, that the user's settings allow.

  $ start 80 24 A=B -i 60000; shows '38;5;75m' -e | grep -c .
  1
  $ start 80 24 NO_COLOR=1 -i 60000; shows end; screen -e | grep '38;'
  space mark  +- 60000 ms  b beep off  q end
  [1]
  $ start 80 24 LC_ALL=C -i 60000; shows end; screen | grep '[^ -~]'; shows '^SNR'
  space mark  +- 60000 ms  b beep off  q end
  SNR    21 dB   ############################              21 to 21, mean 21.0

The bell rings while there is a signal. A failed sample leaves a gap in the graph.

  $ faults '{"command": "DAB_DIGRAD_STATUS", "occurrence": 3, "status_bits": "40 00 00 00"}'
  $ start 40 12 A=B --beep -i 100; terminal pipe-pane 'cat > written'
  $ shows '█ █' | grep -c .
  1
  $ until [ "$(tr -cd '\a' < written | wc -c)" -ge 3 ]; do sleep 0.05; done
  $ unset KELVO_SIM_FAULTS

A fading from 10 to 20 dB and back. Then the chip is shut down, and tuned to FM, beside it.

  $ python3 -c 'import json; air = json.load(open("air.json")); air["ensembles"] = [{
  >     "index": 33, "signal": {},
  >     "fading": [dict(at_s=at, rssi=10 + 2 * snr, snr=snr, fic_quality=5 * snr) for at, snr in ((0, 10), (1, 20), (2, 10))]}]
  > json.dump(air, open("air.json", "w"))'
  $ start 80 24 A=B -i 10; shows 'SNR.* 10 to 20, mean 1[45]\.' | grep -c .
  1
  $ kelvo-sim -k > all; shows booted
  The chip is not booted: kelvo-spidev -b D
  $ kelvo-sim -b F -x > all; shows FM
  FM  107.50 MHz  station
  $ terminal kill-server
