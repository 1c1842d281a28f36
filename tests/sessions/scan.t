The full scan of the built-in broadcast: progress, prompts, the file.

  $ . "$TESTDIR/setup.sh"
  $ run -b D
  Boot up successful
  
  $ printf '1\nWay\n4711\nSpringfield\nUtopia\nroof\n' | run -u | diff "$TESTDIR/../expected/scan.txt" -
  $ diff ensemblescan_4711_Springfield.json "$TESTDIR/../expected/scan.json"

A chip with three frequencies: nothing, an ensemble of one service, a signal too weak.

  $ three() {
  >   cat > air.json << END
  > {"time": {"year": 2026, "month": 3, "day": 7, "hour": 9, "minute": 5}, "chip": {"always_ready": true},
  >  "frequencies": [174928, 176640, 178352], "noise": {"rssi": 2}, "ensembles": [
  >  {"index": 1, "signal": {"rssi": 40, "fic_quality": 30}, "lists": [{"version": 7, "services": [
  >   {"id": 17333, "label": "Aurora", "components": [{"tmid": 0, "subchannel": 12}]}]}]},
  >  {"index": 2, "signal": {"rssi": 9, "fic_quality": 29}, "lists": [{"version": 8, "services": []}]}]
  > $1}
  > END
  > }
  $ three
  $ page=$TESTDIR/../../docs/scan-file.md
  $ printf '%s\n' 12a 'Main Street' 4711 Springfield Utopia 'indoor, 2' 47.37 8.54 | wire -u | sed /^Please/q
  read 7
  DAB_GET_FREQ_LIST b9 00
  read 7
  read 6
  DAB_GET_FREQ_LIST b9 00
  read 7
  read 21
  DAB_TUNE_FREQ b0 00 00 00 00 00
  read 7
  read 7
  wait 100000.000
  read 7
  wait 100000.000
  read 7
  wait 100000.000
  read 7
  DAB_DIGRAD_STATUS b2 00
  read 7
  read 24
  Scanning frequency: 174928 kHz. Found signal with RSSI: --
  DAB_TUNE_FREQ b0 00 01 00 00 00
  read 7
  read 7
  wait 100000.000
  read 7
  wait 100000.000
  read 7
  DAB_DIGRAD_STATUS b2 00
  read 7
  read 24
  DAB_GET_EVENT_STATUS b3 01
  read 7
  read 9
  wait 200000.000
  DAB_GET_EVENT_STATUS b3 01
  read 7
  read 9
  wait 200000.000
  DAB_GET_EVENT_STATUS b3 01
  read 7
  read 9
  wait 200000.000
  DAB_GET_EVENT_STATUS b3 01
  read 7
  read 9
  wait 200000.000
  DAB_GET_EVENT_STATUS b3 01
  read 7
  read 9
  Scanning frequency: 176640 kHz. Found signal with RSSI: ----------------------------------------
  GET_DIGITAL_SERVICE_LIST 80 00
  read 7
  read 7
  GET_DIGITAL_SERVICE_LIST 80 00
  read 7
  read 41
  DAB_GET_TIME bc 01
  read 7
  read 12
  Found ensemble!
  DAB_TUNE_FREQ b0 00 02 00 00 00
  read 7
  read 7
  wait 100000.000
  read 7
  wait 100000.000
  read 7
  DAB_DIGRAD_STATUS b2 00
  read 7
  read 24
  Scanning frequency: 178352 kHz. Found signal with RSSI: ---------
  Please indicate the location of the Quillet (the antenna location) during the scan:
  $ sed -n '/^{"content"/,/^```/p' "$page" | sed '$d' > shown
  $ head -n "$(wc -l < shown)" ensemblescan_4711_Springfield.json | diff shown -

The answers go into the file as typed, and they make its name; without a directory of that name nothing is written.

  $ run -b D
  Boot up successful
  
  $ printf '\n a"b\\c \n4711' | run -u | tail -n 2
  GPS longitude (optional): 
  Thank you
  $ sed -n '/StreetNo/,/City/p' ensemblescan_4711_.json
  "StreetNo": "",
  "Street": " a"b\c ",
  "PostalCode": "4711",
  "City": "",
  $ mkdir ensemblescan_d
  $ printf '\n\nd/e\nf\n' | run -u | tail -n 1
  Thank you
  $ printf '\n\nno/such\nplace\n' | run -u | tail -n 1
  Thank you
  $ find . -name 'ens*' -o -name 'e_*' | sort
  ./ensemblescan_4711_.json
  ./ensemblescan_4711_Springfield.json
  ./ensemblescan_d
  ./ensemblescan_d/e_f.json

Services and time are written independently; whichever cannot be read is left out.

  $ three ', "faults": [{"command": "DAB_GET_TIME", "cts_never": true}]'
  $ printf '\n\nno\ntime\n' | run -u | grep ^Found
  Found ensemble!
  $ grep -B 4 '"EnsemleNo": 2,' ensemblescan_no_time.json
  }]
  }]
  }}
  ,{
  "EnsemleNo": 2,
  $ three ', "faults": [{"command": "GET_DIGITAL_SERVICE_LIST", "status_bits": "40 00 00 00"}]'
  $ printf '\n\nno\nservices\n' | run -u | grep Scanning
  Scanning frequency: 174928 kHz. Found signal with RSSI: --
  Scanning frequency: 176640 kHz. Found signal with RSSI: ----------------------------------------
  Scanning frequency: 178352 kHz. Found signal with RSSI: ---------
  $ grep -B 2 -A 3 ensembleTime ensemblescan_no_services.json
  "fast_dect": 0
  },
  "ensembleTime": {
  "year": 2026,
  "month": 3,
  "day": 7,

A value that cannot be read is not replaced by the value of the ensemble before it.

  $ three ', "faults": [{"command": "GET_DIGITAL_SERVICE_LIST", "occurrence": 3, "status_bits": "40 00 00 00"},
  >                    {"command": "DAB_GET_TIME", "occurrence": 2, "status_bits": "40 00 00 00"}]'
  $ sed -i 's/"fic_quality": 29/"fic_quality": 90/' air.json
  $ run -u < /dev/null | grep -c ^Found; grep -c NumberServices ensemblescan__.json; grep -c year ensemblescan__.json
  2
  1
  1

A frequency that cannot be tuned leaves only its progress line, which shows the previous measurement.

  $ three ', "faults": [{"command": "DAB_TUNE_FREQ", "occurrence": 1, "status_bits": "40 00 00 00"},
  >                    {"command": "DAB_TUNE_FREQ", "occurrence": 3, "cts_never": true}]'
  $ printf '\n\nno\ntune\n' | run -u | grep -v ':.$'
  Scanning frequency: 176640 kHz. Found signal with RSSI: ----------------------------------------
  Found ensemble!
  Scanning frequency: 178352 kHz. Found signal with RSSI: ----------------------------------------
  Please indicate the location of the Quillet (the antenna location) during the scan:
  Thank you
  $ grep -c '"tune_freq": 0,' ensemblescan_no_tune.json
  40

The bar has a dash for each dB, up to 255.

  $ three ', "faults": [{"command": "DAB_DIGRAD_STATUS", "reply": "00 04 C8"}]'
  $ run -u < /dev/null | grep -o -- '-*$' | awk '/-/ { print length }'
  200
  200
  200

The frequency list cannot be read: the scan tunes by index, and its lines show 0 kHz.

  $ three ', "faults": [{"command": "DAB_GET_FREQ_LIST", "occurrence": 2, "status_bits": "40 00 00 00"}]'
  $ run -u < /dev/null | grep Scanning
  Scanning frequency: 0 kHz. Found signal with RSSI: --
  Scanning frequency: 0 kHz. Found signal with RSSI: ----------------------------------------
  Scanning frequency: 0 kHz. Found signal with RSSI: ---------

A service list is stable when a later poll still reports the version that was announced as new; a newer version replaces
the remembered one.

  $ event() { echo '{"command": "DAB_GET_EVENT_STATUS", "occurrence": '$1', "reply": "'"$2"'"}'; }
  $ three ', "faults": ['"$(event 1 '00 01 05 00'), $(event 2 '01 01 05 00'), $(event 3 '01 01 06 00'),
  >   $(event 4 '01 00 06 00'), $(event 5 '00 01 05 00'), $(event 6 '00 01 06 01'), $(event 7 '00 01 06 00')]"
  $ wire -u < /dev/null | grep -E '^DAB_GET_EV|^Found' | uniq -c
        7 DAB_GET_EVENT_STATUS b3 01
        1 Found ensemble!
  $ three ', "faults": [{"command": "DAB_GET_EVENT_STATUS", "reply": "00 01 00 00"}]'
  $ wire -u < /dev/null | grep -E '^DAB_GET_EV|^Found|wait 2' | sort | uniq -c
       50 DAB_GET_EVENT_STATUS b3 01
       50 wait 200000.000

The chip's frequency list decides how many indexes are visited, 41 at most; the file always has 41 entries.

  $ for count in 0 1 41 42 255; do
  >   echo '{"frequencies": ['$(seq -s , 174000 $((173999 + count)))'], "chip": {"always_ready": true}}' > air.json
  >   run -u < /dev/null | grep -c Scanning; grep -c Ensemle ensemblescan__.json
  > done
  0
  41
  1
  41
  41
  41
  41
  41
  41
  41
