kelvo-remote with two viewers and two hundred runs beside it on one board: no reply is mixed. Without the device's lock
some are.

  $ . "$TESTDIR/setup.sh"
  $ export STATE_DIRECTORY=$PWD KELVO_SIM_REALTIME=0
  $ kelvo-spidev -b D -f 33 >all
  $ on_board() { kelvo-shared-board bus env KELVO_SIM_STATE=/dev/null "$@"; }
  $ on_board true
  $ cat >crowd <<'END'
  > kelvo-remote-sim --listen 127.0.0.1:0 --interval 100 >said 2>faults & server=$!
  > until base=$(grep -so 'http://[^;]*' said); do sleep 0.02; done
  > for i in 1 2; do curl -sN -H "Cookie: kelvo-remote=$(cat kelvo-remote-sim.key)" $base/events >events.$i & done
  > for i in {1..50}; do for report in i t d g; do
  >   kelvo-spidev -$report >$report.$i 2>waits & runs+=($!)
  > done; done; wait ${runs[@]}; sleep 1
  > kill $server; wait
  > END
  $ crowd() {
  >   on_board bash crowd 2>faults
  >   for report in i t d g; do sha1sum $report.* | sort -u -k 1,1 | wc -l; done | xargs
  >   grep -h tune_index events.* | sed -E 's/.*"rssi"/"rssi"/; s/("fib_errors":)(null|0),/\1 N,/' | sort -u
  >   grep -h '"error":' events.* | grep -v 'in use'
  > }
  $ KELVO_SIM_KERNEL="board=bus spidev=device" crowd; [ $(grep -c rssi events.2) -gt 10 ] || echo hardly a sample
  1 1 1 1
  "rssi":52,"snr":21,"fic_quality":100,"cnr":28,"fib_errors": N,"acq":true,"valid":true,"hardmute":false}
  $ KELVO_SIM_KERNEL="board=bus" crowd | grep -qx '1 1 1 1' || echo mixed
  mixed
