What each action sends, how long it waits, and what it prints.

  $ . "$TESTDIR/setup.sh"
  $ run -b D
  Boot up successful
  
  $ wire -o 1 -f 33 -e 17333 -c 12 -p -l 50
  read 7
  SET_PROPERTY 13 00 00 02 00 80
  read 7
  GET_PROPERTY 14 01 00 02
  read 7
  read 7
  SET_PROPERTY 13 00 00 08 02 00
  read 7
  GET_PROPERTY 14 01 00 08
  read 7
  read 7
  SET_PROPERTY 13 00 02 02 00 10
  read 7
  GET_PROPERTY 14 01 02 02
  read 7
  read 7
  DAB_TUNE_FREQ b0 00 21 00 00 00
  read 7
  read 7
  wait 100000.000
  read 7
  wait 100000.000
  read 7
  wait 500000.000
  DAB_DIGRAD_STATUS b2 00
  read 7
  read 24
  wait 200000.000
  Tuned.
  
  START_DIGITAL_SERVICE 81 00 00 00 b5 43 00 00 0c 00 00 00
  read 7
  Setting volume to 50
  
  SET_PROPERTY 13 00 00 03 32 00
  read 7
  GET_PROPERTY 14 01 00 03
  read 7
  read 7
  $ wire -i | grep -v ':'
  read 7
  read 7
  GET_PART_INFO 08 00
  read 7
  read 24
  GET_SYS_STATE 09 00
  read 7
  read 7
  GET_FUNC_INFO 12 00
  read 7
  read 13
  Chip info ---------------------------- 
  $ wire -d -j -n -t | grep -Ev '^"|:'
  read 7
  DAB_DIGRAD_STATUS b2 00
  read 7
  read 24
  }
  DAB_GET_EVENT_STATUS b3 01
  read 7
  read 9
  Event status ------------------------- 
  New announcement info available             0
  DAB_GET_TIME bc 01
  read 7
  read 12
  }
  $ wire -g | grep -Ev '"|[]{}]'
  read 7
  GET_DIGITAL_SERVICE_LIST 80 00
  read 7
  read 7
  GET_DIGITAL_SERVICE_LIST 80 00
  read 7
  read 493
  $ wire -u -r -x -t -n -g -d -i -l 40 -p -e 17333 -c 12 -f 33 -o 1 < /dev/null | grep -oE '^[A-Z_]{5,} ' | uniq | sed /FREQ_LIST/q
  SET_PROPERTY 
  GET_PROPERTY 
  SET_PROPERTY 
  GET_PROPERTY 
  SET_PROPERTY 
  GET_PROPERTY 
  DAB_TUNE_FREQ 
  DAB_DIGRAD_STATUS 
  START_DIGITAL_SERVICE 
  SET_PROPERTY 
  GET_PROPERTY 
  GET_PART_INFO 
  GET_SYS_STATE 
  GET_FUNC_INFO 
  DAB_DIGRAD_STATUS 
  GET_DIGITAL_SERVICE_LIST 
  DAB_GET_EVENT_STATUS 
  DAB_GET_TIME 
  FM_SEEK_START 
  SET_PROPERTY 
  DAB_GET_FREQ_LIST 
  $ wire -k
  read 7
  pin 23 low
  Si468x shut down
  

No ensemble at this index.

  $ run -b D
  Boot up successful
  
  $ wire -f 2 | grep -E 'STATUS|wait' | uniq -c
        3 wait 100000.000
        1 wait 500000.000
        1 DAB_DIGRAD_STATUS b2 00
        1 wait 200000.000
        1 DAB_DIGRAD_STATUS b2 00
        1 wait 200000.000
        1 DAB_DIGRAD_STATUS b2 00
        1 wait 200000.000
        1 DAB_DIGRAD_STATUS b2 00
        1 wait 200000.000
        1 DAB_DIGRAD_STATUS b2 00
        1 wait 200000.000
        1 DAB_DIGRAD_STATUS b2 00
        1 wait 200000.000
        1 DAB_DIGRAD_STATUS b2 00
        1 wait 200000.000
        1 DAB_DIGRAD_STATUS b2 00
        1 wait 200000.000
        1 DAB_DIGRAD_STATUS b2 00
        1 wait 200000.000
        1 DAB_DIGRAD_STATUS b2 00
        1 wait 200000.000
  $ run -f 2
  Could not tune to frequency
  

After a tune that is refused or never completes, only the acquired ensemble decides the result.

  $ run -b D
  Boot up successful
  
  $ air '"faults": [{"command": "DAB_TUNE_FREQ", "stc_never": true}]'
  $ wire -f 33 | grep wait | uniq -c
      100 wait 100000.000
        1 wait 500000.000
       10 wait 200000.000
  $ air
  $ run -k
  Si468x shut down
  
  $ run -b D -f 33
  Boot up successful
  
  Tuned.
  
  $ air '"faults": [{"command": "DAB_TUNE_FREQ", "status_bits": "00 00 00 02"},
  >                 {"command": "DAB_DIGRAD_STATUS", "occurrence": 1, "status_bits": "40 00 00 00"}]'
  $ wire -f 33
  read 7
  fault DAB_TUNE_FREQ, every one
  DAB_TUNE_FREQ b0 00 21 00 00 00
  read 7
  wait 500000.000
  fault DAB_DIGRAD_STATUS, occurrence 1
  DAB_DIGRAD_STATUS b2 00
  read 7
  wait 200000.000
  DAB_DIGRAD_STATUS b2 00
  read 7
  read 24
  wait 200000.000
  Tuned.
  

A property that is not kept ends the output routing.

  $ air '"faults": [{"command": "SET_PROPERTY", "occurrence": 2, "property_not_kept": true}]'
  $ wire -o 0
  read 7
  SET_PROPERTY 13 00 00 02 00 80
  read 7
  GET_PROPERTY 14 01 00 02
  read 7
  read 7
  fault SET_PROPERTY, occurrence 2
  SET_PROPERTY 13 00 00 08 01 00
  read 7
  GET_PROPERTY 14 01 00 08
  read 7
  read 7

FM.

  $ air
  $ run -b F
  Boot up successful
  
  $ wire -x -r
  read 7
  FM_SEEK_START 31 00 01 00 00 00
  read 7
  read 7
  wait 100000.000
  read 7
  SET_PROPERTY 13 00 02 3c 01 00
  read 7
  GET_PROPERTY 14 01 02 3c
  read 7
  read 7
  SET_PROPERTY 13 00 00 39 00 39
  read 7
  GET_PROPERTY 14 01 00 39
  read 7
  read 7
  FM_RSQ_STATUS 32 09
  read 7
  read 23
  00 80 00 00 c0 00 01 fe 29 0f 45 2b 2c 76 00 00 03 02 00 00 00 00 00 
  FM_RDS_STATUS 34 00
  read 7
  read 21
  00 80 00 00 c0 01 1a 05 00 9c 4d 04 00 9c 4d a8 00 8e 55 54 53 
  $ air '"faults": [{"command": "SET_PROPERTY", "occurrence": 2, "status_bits": "40 00 00 00"}]'
  $ wire -r
  read 7
  SET_PROPERTY 13 00 02 3c 01 00
  read 7
  GET_PROPERTY 14 01 02 3c
  read 7
  read 7
  fault SET_PROPERTY, occurrence 2
  SET_PROPERTY 13 00 00 39 00 39
  read 7
  $ air '"faults": [{"command": "FM_RSQ_STATUS", "status_bits": "40 00 00 00"}]'
  $ run -r
  00 80 00 00 c0 01 1a 05 00 9c 4d 03 00 9c 4d a9 00 8e 55 44 41 
  $ air '"faults": [{"command": "FM_SEEK_START", "stc_never": true}]'
  $ wire -x | grep wait | uniq -c
      100 wait 100000.000
