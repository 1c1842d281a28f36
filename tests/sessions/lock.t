One board, many programs: a command, its polls and its reply stay together.

  $ . "$TESTDIR/setup.sh"
  $ run() { kelvo-spidev "$@" 2>&1 | sed '1,/NO WARRANTY/d' | sed '1d; /^SPI bus enabled/,+1d'; said ${PIPESTATUS[0]}; }
  $ on_board() { kelvo-shared-board bus env KELVO_SIM_STATE=/dev/null "$@"; }
  $ scan() { printf '%s\n' 12a Street 4711 Town '' '' '' '' '' '' | kelvo-spidev -u >/dev/null && mv ensemblescan* "$1"; }
  $ export -f scan
  $ run -b D
  Boot up successful
  
  $ on_board true; export KELVO_SIM_KERNEL="board=bus spidev=device"
  $ on_board bash -c 'for report in i t d g; do kelvo-spidev -f 33 -$report >$report.alone; done; scan scan.alone'

Two hundred runs and a scan at once give the answers of lone runs. Without the device's lock they do not.

  $ cat >crowd <<'END'
  > for i in {1..50}; do for report in i t d g; do
  >   kelvo-spidev -f 33 -$report >$report.$i 2>faults.$report.$i &
  > done; done
  > scan scan.crowd 2>faults.scan
  > wait
  > END
  $ different() { for kind in i t d g scan; do sha1sum $kind.* | sort -u -k 1,1 | wc -l; done | xargs; }
  $ on_board bash crowd; different; grep -hv 'in use by .*; waiting$' faults.*
  1 1 1 1 1
  [1]
  $ KELVO_SIM_KERNEL="board=bus" on_board bash crowd; different | grep -qx '1 1 1 1 1' || echo mixed
  mixed

A run that waits prints a line after a second, and goes on when the other program ends.

  $ export KELVO_SIM_KERNEL=spidev=device
  $ exec 8>device; flock 8; run -f 33 -t >answer 8>&- &
  $ for i in {1..100}; do grep -qs waiting answer && break; sleep 0.1; done; exec 8>&-; wait
  $ sed 's/in use by .*;/in use by SOMEBODY;/' answer
  kelvo-spidev: /dev/spidev0.0: in use by SOMEBODY; waiting
  Tuned.
  
  2026-3-7T9:5:0Z
