Two places, from the broadcast to the comparison. The first label contains bytes that JSON readers refuse or change:
D7, a backslash, a quote, a line feed and a zero. The others and the answers contain what a terminal or a spreadsheet
would execute.

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
  >   {"id": 17335, "charset": 4, "label": "M\u00fcnchen <b>", "ca_id": 1, "components": [{"tmid": 0, "subchannel": 14}]},
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
     "   L   a   b   e   l   "   :       "   A 327   \   "  \n  \0
     Z                                       "   ,  \n
  $ python3 -m json.tool $roof > /dev/null 2>&1
  [1]

Tables.

  $ kelvo-survey $roof $cellar
  1  -Main" \\Street\\ 12a, roof\xef\xbf\xbd[2J\xef\xbf\xbd, City  2026-03-07 09:05 UTC  ensemblescan_4711_City.json (esc)
  2  ensemblescan__.json  2026-03-07 09:05 UTC
  
                1                                 2
  Block   kHz   Signal        dB\xc2\xb5V SNR FIC Svc    Signal        dB\xc2\xb5V SNR FIC Svc (esc)
  5B   176640   \xe2\x96\x88\xe2\x96\x88\xe2\x96\x88\xe2\x96\x88\xe2\x96\x88\xe2\x96\x88\xe2\x96\x8c         40  17  99   5*   \xe2\x96\x88\xe2\x96\x88\xe2\x96\x88\xe2\x96\x88\xe2\x96\x88\xe2\x96\x88\xe2\x96\x88\xe2\x96\x8a        48   9  99   5 (esc)
  5C   178352   \xe2\x96\x88\xe2\x96\x88\xe2\x96\x88\xe2\x96\x88\xe2\x96\x88\xe2\x96\x8e          33  no DAB        \xe2\x96\x88\xe2\x96\x88\xe2\x96\x88\xe2\x96\x88\xe2\x96\x88\xe2\x96\x8e          33  no DAB (esc)
  
  No signal: 5A.
  Not measured: 5D, 6A, 6B, 6C, 6D, 7A, 7B, 7C, 7D, 8A, 8B, 8C, 8D, 9A, 9B, 9C, 9D, 10A, 10N, 10B, 10C, 10D, 11A, 11N, 11B, 11C, 11D, 12A, 12N, 12B, 12C, 12D, 13A, 13B, 13C, 13D, 13E, 13F.
  * best place. SNR in dB; FIC: its quality, 0 to 100; Svc: services. Bars end at 80 dB\xc2\xb5V. (esc)
  $ kelvo-survey --stations $roof $cellar
  1  -Main" \\Street\\ 12a, roof\xef\xbf\xbd[2J\xef\xbf\xbd, City  2026-03-07 09:05 UTC  ensemblescan_4711_City.json (esc)
  2  ensemblescan__.json  2026-03-07 09:05 UTC
  
  Block  Station      Programme type      Service   Comp  In  Best
  5B     A\xc3\x96\xc5\xae"Z        Pop music             17333     12  DE  1 (esc)
  5B     =1+\xef\xbf\xbd[31m\xef\xbf\xbd    None                  17334     13  DE  1 (esc)
  5B     M\xc3\xbcnchen <b>  None                  17335     14  DE  1     encrypted (esc)
  5B     M\xc3\xbcnchen      None                  17336     15  DE  1 (esc)
  5B     Daten        (data)           3771727873  49161  DE  1
  $ LC_ALL=C COLUMNS=40 kelvo-survey $roof $cellar | head -n 7
  1  -Main" \Street~  2026-03-07 09:05 UTC
  2  ensemblescan__~  2026-03-07 09:05 UTC
  
                1
  Block   kHz   Signal   dBuV SNR FIC Svc
  5B   176640   ####       40  17  99   5*
  5C   178352   ###        33  no DAB

The table has colours on a terminal, unless NO_COLOR is set.

  $ script -qc "kelvo-survey $cellar" /dev/null < /dev/null | grep -c $'\e\[36m'
  1
  $ NO_COLOR=1 script -qc "kelvo-survey $cellar" /dev/null < /dev/null | grep -c $'\e'
  0
  [1]

For other programs. JSON has one line for each scan; read back, even after another program has rewritten it, it is the
same.

  $ kelvo-survey --json $roof $cellar > both.json
  $ head -n 1 both.json | python3 -m json.tool > pretty.json
  $ grep -E '"(Street|Floor|rssi|Label|Block)"' pretty.json | head -n 11
          "Street": "-Main\" \\Street\\",
          "Floor": "roof\u001b[2J\ufffd",
              "Block": "5A",
                  "rssi": -2,
              "Block": "5B",
                  "rssi": 40,
                          "Label": "A\u00d6\u016e\"Z",
                          "Label": "=1+\u001b[31m\u009b",
                          "Label": "M\u00fcnchen <b>",
                          "Label": "M\u00fcnchen",
                          "Label": "Daten",
  $ head -n 1 both.json | cmp - <(kelvo-survey --json pretty.json)
  $ cat both.json pretty.json $cellar | kelvo-survey --json - | cmp - <(cat both.json both.json)
  $ kelvo-survey --csv - < $roof
  file,street_no,street,postal_code,city,country,floor,latitude,longitude,time,block,index,khz,rssi,snr,fic_quality,ensemble_country,station,kind,programme_type,service,component,encrypted
  "standard input","12a","'-Main"" \\Street\\","4711","City","Utopia","roof\xef\xbf\xbd[2J\xef\xbf\xbd","-47.37","'=8","2026-03-07 09:05 UTC","5B",1,176640,40,17,99,"DE","A\xc3\x96\xc5\xae""Z","audio","Pop music",17333,12,"no" (esc)
  "standard input","12a","'-Main"" \\Street\\","4711","City","Utopia","roof\xef\xbf\xbd[2J\xef\xbf\xbd","-47.37","'=8","2026-03-07 09:05 UTC","5B",1,176640,40,17,99,"DE","'=1+\xef\xbf\xbd[31m\xef\xbf\xbd","audio","None",17334,13,"no" (esc)
  "standard input","12a","'-Main"" \\Street\\","4711","City","Utopia","roof\xef\xbf\xbd[2J\xef\xbf\xbd","-47.37","'=8","2026-03-07 09:05 UTC","5B",1,176640,40,17,99,"DE","M\xc3\xbcnchen <b>","audio","None",17335,14,"yes" (esc)
  "standard input","12a","'-Main"" \\Street\\","4711","City","Utopia","roof\xef\xbf\xbd[2J\xef\xbf\xbd","-47.37","'=8","2026-03-07 09:05 UTC","5B",1,176640,40,17,99,"DE","M\xc3\xbcnchen","audio","None",17336,15,"no" (esc)
  "standard input","12a","'-Main"" \\Street\\","4711","City","Utopia","roof\xef\xbf\xbd[2J\xef\xbf\xbd","-47.37","'=8","2026-03-07 09:05 UTC","5B",1,176640,40,17,99,"DE","Daten","data","None",3771727873,49161,"no" (esc)

The same scan after an editor has moved lines without changing a byte of a label or an answer.

  $ sed -E 's/^"/    "/; s/^( *"[A-Z][A-Za-z]*": [0-9]+,)$/\1\r/; $a\' $roof | sed -z 's/},\n *"ensemble/}, "ensemble/' > edited
  $ head -n 1 both.json | cmp - <(kelvo-survey --json edited)

Nothing is printed if one of several files is not a scan.

  $ head -n 30 $roof > cut.json
  $ kelvo-survey --csv $roof cut.json $cellar
  kelvo-survey: cut.json: line 30: expected the rest of a scan
  [1]
  $ kelvo-survey $roof /dev/null
  kelvo-survey: /dev/null: line 1: expected a scan
  [1]
  $ kelvo-survey --html $roof nowhere.json
  kelvo-survey: nowhere.json: cannot be opened: No such file or directory
  [1]
  $ kelvo-survey --json $roof | python3 -c '
  > import json, sys
  > scan = json.load(sys.stdin)
  > scan["ensembleList"] = scan["ensembleList"][:2]
  > scan["ensembleList"][1]["DigitalServiceList"]["ServiceList"][1:] = []
  > print(json.dumps(scan))' > half.json
  $ kelvo-survey --svg half.json | tail -n 1
  kelvo-survey: half.json: incomplete: 2 of 41 entries, 1 of 5 services at index 1
  </svg>
  $ kelvo-survey half.json 2> /dev/null | grep -o '^Not measured: 5C, 5D'
  Not measured: 5C, 5D
  $ kelvo-survey - - < $roof 2>&1 | head -n 1
  kelvo-survey: - is given twice: standard input is read once

  $ head -c 34000000 /dev/zero | kelvo-survey -
  kelvo-survey: standard input: more than 32 MiB
  [1]

Output that nobody gets is a failure.

  $ kelvo-survey --csv $roof > /dev/full
  kelvo-survey: standard output: cannot be written
  [1]
  $ kelvo-survey --csv $(printf "$roof %.0s" {1..60}) >&-
  kelvo-survey: standard output: is closed
  [1]

By name: upper and lower case are not distinguished, and a whole name is preferred to a part. Only numbers are printed.

  $ kelvo-survey --play MÜNCHEN $roof $cellar
  -f 1 -e 17336 -c 15 -p
  $ kelvo-survey --play 'ö' $cellar
  -f 1 -e 17333 -c 12 -p
  $ kelvo-survey --play '5B/17335' $roof
  kelvo-survey: "M\xc3\xbcnchen <b>" is encrypted (esc)
  -f 1 -e 17335 -c 14 -p
  $ LC_ALL=C kelvo-survey --play mün $roof 2>&1 | tail -n 2
    --play '5B/17335'  M?nchen <b>
    --play '5B/17336'  M?nchen
  $ kelvo-survey --play mün $roof
  kelvo-survey: several stations have "m\xc3\xbcn" in their names: (esc)
    --play '5B/M\xc3\xbcnchen <b>'  M\xc3\xbcnchen <b> (esc)
    --play '5B/M\xc3\xbcnchen'  M\xc3\xbcnchen (esc)
  [1]
  $ kelvo-survey --play daten $roof
  kelvo-survey: no audio service has "daten" in its name
  [1]
  $ run $(kelvo-survey --play 'münchen' $roof) -d | grep acquired
  Ensemble acquired:                          1
  $ kelvo-survey --play '' $roof
  kelvo-survey: --play needs a name
  Try `kelvo-survey --help' or `kelvo-survey --usage' for more information.
  [2]
  $ kelvo-survey
  kelvo-survey: a scan file is missing
  Try `kelvo-survey --help' or `kelvo-survey --usage' for more information.
  [2]
  $ kelvo-survey --svg --csv $roof 2>&1 | head -n 1
  kelvo-survey: only one output can be chosen

Help, manual and completion list the same options.

  $ packaging=$TESTDIR/../../packaging
  $ options() { grep -oE -e '--[a-z]+' | sort -u; }
  $ kelvo-survey --help | options > help
  $ sed -n '/^\.Sh OPTIONS/,/^\.Sh ENV/s/\(Fl\|,\) -/--/gp' "$packaging/man/man1/kelvo-survey.1" | options | diff help -
  $ . "$packaging/bash-completion/kelvo-survey"
  $ COMP_WORDS=(kelvo-survey --) COMP_CWORD=1
  $ _kelvo_survey && printf '%s\n' "${COMPREPLY[@]}" | options | diff help -
  [1]
