Two places, from what is on the air to the comparison. The first label holds what JSON readers refuse or change: D7, a
backslash, a quote, a line feed and a zero; the others and the answers what a terminal or a spreadsheet would obey.

  $ . "$TESTDIR/setup.sh"
  $ export LC_ALL=C.UTF-8
  $ unset COLUMNS NO_COLOR
  $ place() {  # SIGNAL
  >   cat > air.json << END
  > {"time": {"year": 2026, "month": 3, "day": 7, "hour": 9, "minute": 5}, "chip": {"always_ready": true},
  >  "frequencies": [174928, 176640, 178352], "noise": {"rssi": -2}, "ensembles": [
  >  {"index": 1, "signal": $1, "lists": [{"version": 7, "services": [
  >   {"id": 17333, "programme_type": 10, "label": "A\u00d7\\\\\"\n\u0000Z", "components": [{"tmid": 0, "subchannel": 12}]},
  >   {"id": 17334, "charset": 4, "label": "=1+\u001b[31m\u009b", "components": [{"tmid": 0, "subchannel": 13}]},
  >   {"id": 17335, "charset": 4, "label": "M\u00fcnchen <b>", "components": [{"tmid": 0, "subchannel": 14}]},
  >   {"id": 17336, "charset": 4, "label": "M\u00fcnchen", "components": [{"tmid": 0, "subchannel": 15}]},
  >   {"id": "0xE0D00001", "data": true, "charset": 4, "label": "Daten", "components": [{"tmid": 3, "scid": 9}]}]}]},
  >  {"index": 2, "valid": false, "signal": {"rssi": 33}}]}
  > END
  >   run -b D > /dev/null
  >   run -u > /dev/null
  > }
  $ printf '%s\n' 12a '-Main" \Street\' 4711 City Utopia $'roof\e[2J\xff' -47.37 '=8' |
  >   place '{"rssi": 40, "snr": 17, "fic_quality": 99}'
  $ place '{"rssi": 48, "snr": 9, "fic_quality": 99}' < /dev/null
  $ roof=ensemblescan_4711_City.json cellar=ensemblescan__.json
  $ sed -n '/"ServId": 17333/,$p' $roof | grep -a -A 1 -m 1 '"Label"' | od -An -c
  sed: can't read ensemblescan_4711_City.json: No such file or directory
  $ python3 -m json.tool $roof > /dev/null 2>&1
  [2]

Tables.

  $ kelvo-survey $roof $cellar
  /bin/bash: line 35: kelvo-survey: command not found
  [127]
  $ kelvo-survey --stations $roof $cellar
  /bin/bash: line 37: kelvo-survey: command not found
  [127]
  $ LC_ALL=C COLUMNS=40 kelvo-survey $roof $cellar | head -n 7
  /bin/bash: line 39: kelvo-survey: command not found

On a terminal there is colour, unless it is not wanted.

  $ script -qc "kelvo-survey $cellar" /dev/null < /dev/null | grep -c $'\e\[36m'
  0
  [1]
  $ NO_COLOR=1 script -qc "kelvo-survey $cellar" /dev/null < /dev/null | grep -c $'\e'
  0
  [1]

For other programs. JSON is one line a file; read again, also after another program has written it, it is the same.

  $ kelvo-survey --json $roof $cellar > both.json
  /bin/bash: line 45: kelvo-survey: command not found
  [127]
  $ head -n 1 both.json | python3 -m json.tool > pretty.json
  Expecting value: line 1 column 1 (char 0)
  [1]
  $ grep -E '"(Street|Floor|rssi|Label|Block)"' pretty.json | head -n 11
  $ head -n 1 both.json | cmp - <(kelvo-survey --json pretty.json)
  /bin/bash: line 51: kelvo-survey: command not found
  $ kelvo-survey --csv $roof
  /bin/bash: line 53: kelvo-survey: command not found
  [127]

The same scan after an editor that has moved lines, but no byte of a label or an answer.

  $ head -n 1 both.json | cmp - <(sed -E 's/^"/    "/; s/^( *"[A-Z][A-Za-z]*": [0-9]+,)$/\1\r/; $a\' $roof | kelvo-survey --json -)
  /bin/bash: line 55: kelvo-survey: command not found
  sed: can't read ensemblescan_4711_City.json: No such file or directory

Nothing is printed of several files where one is none.

  $ head -n 30 $roof > cut.json
  head: cannot open 'ensemblescan_4711_City.json' for reading: No such file or directory
  [1]
  $ kelvo-survey --csv $roof cut.json $cellar
  /bin/bash: line 59: kelvo-survey: command not found
  [127]
  $ kelvo-survey $roof /dev/null
  /bin/bash: line 61: kelvo-survey: command not found
  [127]
  $ kelvo-survey --html $roof nowhere.json
  /bin/bash: line 63: kelvo-survey: command not found
  [127]

By name: upper and lower case are the same, and a whole name goes before a part. Only numbers are printed.

  $ kelvo-survey --play MÜNCHEN $roof $cellar
  /bin/bash: line 65: kelvo-survey: command not found
  [127]
  $ kelvo-survey --play 'ö' $cellar
  /bin/bash: line 67: kelvo-survey: command not found
  [127]
  $ kelvo-survey --play mün $roof
  /bin/bash: line 69: kelvo-survey: command not found
  [127]
  $ kelvo-survey --play daten $roof
  /bin/bash: line 71: kelvo-survey: command not found
  [127]
  $ run $(kelvo-survey --play 'münchen' $roof) -d | grep acquired
  /bin/bash: line 73: kelvo-survey: command not found
  [1]
  $ kelvo-survey --play '' $roof
  /bin/bash: line 75: kelvo-survey: command not found
  [127]
  $ kelvo-survey
  /bin/bash: line 77: kelvo-survey: command not found
  [127]
  $ kelvo-survey --svg --csv $roof 2>&1 | head -n 1
  /bin/bash: line 79: kelvo-survey: command not found
