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
  > for i in 1 2; do curl -sN -H "Cookie: kelvo-remote=$(cat remote.key)" $base/events >events.$i & done
  > seq 200 | xargs -P 8 -I % bash -c 'kelvo-spidev -d >d.% 2>waits.%; sleep 0.05'
  > kill $server; wait
  > END
  $ crowd() {
  >   on_board bash crowd 2>faults
  >   sha1sum d.* | sort -u -k 1,1 | wc -l
  >   grep -h tune_index events.* | sed -E 's/.*"rssi"/"rssi"/; s/("fib_errors":)(null|0),/\1 N,/' | sort -u
  >   grep -h '"error":' events.* | grep -v 'in use'
  > }
  $ KELVO_SIM_KERNEL="board=bus spidev=device" crowd; [ $(grep -c rssi events.2) -gt 10 ] || echo hardly a sample
  1
  "rssi":52,"snr":21,"fic_quality":100,"cnr":28,"fib_errors": N,"acq":true,"valid":true,"hardmute":false}
  $ KELVO_SIM_KERNEL="board=bus" crowd | wc -l | sed 's/^2$/not mixed/; s/[0-9].*/mixed/'
  mixed
