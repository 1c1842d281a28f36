Faults of the host: closed and full files, missing input, directories that cannot be written.

  $ . "$TESTDIR/setup.sh"
  $ run -b D -f 33
  Boot up successful
  
  Tuned.
  

Standard output closed or full: the actions are carried out anyway.

  $ kelvo-sim -g -d >&-
  $ kelvo-sim -g -d > /dev/full
  $ kelvo-sim -f 38 > /dev/full; run -d | grep index
  Tune index:                                 38

No file of the board takes the place of a closed stream.

  $ KELVO_SIM_TRACE=trace kelvo-sim -f 38 >&-; grep -c Tuned trace
  0
  [1]

The state is saved before the last message, whose reader may be gone.

  $ faults '{"transaction": 900, "bus": "ones"}'
  $ rm board.json; exec 9> >(true); wait $!; kelvo-sim -i > /dev/null 2>&9; exec 9>&-; grep -c '"mode": "reset"' board.json
  1
  $ unset KELVO_SIM_FAULTS; run -b D | head -n 1
  Boot up successful

Standard input that ends before an answer, or is closed: the questions are still asked, the file is written.

  $ for n in 0 1 2 3 4 5 6 7; do
  >   printf '%s\n' 1 Way 4711 Springfield Utopia roof 47 8 | head -n $n | run -u | grep -c ': $\|Thank you'
  >   ls ensemblescan*; rm ensemblescan*
  > done
  9
  ensemblescan__.json
  9
  ensemblescan__.json
  9
  ensemblescan__.json
  9
  ensemblescan_4711_.json
  9
  ensemblescan_4711_Springfield.json
  9
  ensemblescan_4711_Springfield.json
  9
  ensemblescan_4711_Springfield.json
  9
  ensemblescan_4711_Springfield.json
  $ run -u <&- | tail -n 1
  Thank you
  $ rm ensemblescan__.json

An existing file with the scan's name is replaced. If it cannot be written, it is unchanged and nothing is printed.

  $ head -c 1000000 /dev/zero > ensemblescan_1_x.json
  $ printf '\n\n1\nx\n' | run -u | tail -n 1
  Thank you
  $ head -n 2 ensemblescan_1_x.json; tail -n 1 ensemblescan_1_x.json
  {"content": "FullStationScan",
  "FrequencyRegion": "Europe",
  ]} (no-eol)
  $ rm ensemblescan_1_x.json; cp "$(command -v sleep)" ensemblescan_1_x.json
  $ ./ensemblescan_1_x.json 60 & disown
  $ until [ "$(readlink /proc/$!/exe)" = "$PWD/ensemblescan_1_x.json" ]; do sleep 0.01; done
  $ printf '\n\n1\nx\n' | run -u | tail -n 1
  Thank you
  $ kill $!; cmp ensemblescan_1_x.json "$(command -v sleep)"

A folder with that name.

  $ mkdir ensemblescan_2_y.json
  $ printf '\n\n2\ny\n' | run -u | tail -n 1
  Thank you
  $ ls ensemblescan_2_y.json

A working directory that not even root can write.

  $ (cd /proc && printf '\n\n1\nx\n' | run -u | tail -n 1)
  Thank you

A full disk.

  $ ln -s /dev/full ensemblescan_3_z.json
  $ printf '\n\n3\nz\n' | run -u | tail -n 1
  Thank you

Each line is flushed as it is written, even into a pipe: the first lines of a scan in real time arrive while it runs.

  $ KELVO_SIM_REALTIME=1 kelvo-sim -u < /dev/null > said 2>&1 & disown
  $ for i in $(seq 100); do ! grep -qs 'SPI bus enabled' said || break; sleep 0.05; done
  $ kill -s KILL $! && tail -n 2 said
  SPI bus enabled.
  
