Every report; each field has a different value.

  $ . "$TESTDIR/setup.sh"
  $ report() { run "$1" $2 | diff "$TESTDIR/../expected/$3" -; }
  $ run -b D -f 33
  Boot up successful
  
  Tuned.
  
  $ faults '{"command": "RD_REPLY", "occurrence": 2, "status": "B0 20 00 D4"},
  >   {"command": "GET_PART_INFO", "reply": "11 22 09 09 83 12 09"},
  >   {"command": "GET_SYS_STATE", "reply": "03 09"},
  >   {"command": "GET_FUNC_INFO", "reply": "05 06 07 63 0D 0C 0B FA"}'
  $ report -i "" chip_info.txt
  $ faults '{"command": "DAB_DIGRAD_STATUS",
  >   "reply": "06 15 F6 81 63 15 03 04 60 A6 03 00 21 FE 9C 01 AC 02 07"}'
  $ report -d "" digrad_status.txt
  $ report -d -j digrad_status.json
  $ faults '{"command": "DAB_GET_EVENT_STATUS", "reply": "89 02 34 12"}'
  $ report -n "" event_status.txt
  $ faults '{"command": "GET_DIGITAL_SERVICE_LIST", "reply": "'"$(echo \
  >     3A 00 03 00 02 E1 E2 E3 \
  >     B5 43 00 00 14 01 00 EE 53 74 61 74 69 6F 6E 20 41 20 20 20 20 20 20 20 0C 00 FC 01 \
  >     45 23 D1 E0 01 00 00 EE 44 61 74 61 20 42 20 20 20 20 20 20 20 20 20 20)"'"}'
  $ report -g "" service_list.json
  $ faults '{"command": "DAB_GET_TIME", "reply": "E0 07 03 07 09 05 00"}'
  $ run -t
  2016-3-7T9:5:0Z
  $ run -t -j
  "ensembleTime": {
  "year": 2016,
  "month": 3,
  "day": 7,
  "hour": 9,
  "minute": 5,
  "second": 0
  }

The names of the images.

  $ for image in 00 01 02 03 04 05 06 07 08 FF; do
  >   faults '{"command": "GET_SYS_STATE", "reply": "'$image'"}'; run -i | grep CMD
  > done
  Firmware image running the sysstate CMD:    Bootloader
  Firmware image running the sysstate CMD:    FMHD
  Firmware image running the sysstate CMD:    DAB
  Firmware image running the sysstate CMD:    TDMB or data only DAB
  Firmware image running the sysstate CMD:    FMHD Demod
  Firmware image running the sysstate CMD:    AMHD
  Firmware image running the sysstate CMD:    AMHD Demod
  Firmware image running the sysstate CMD:    DAB Demod
  Firmware image running the sysstate CMD:    unknown
  Firmware image running the sysstate CMD:    unknown

Values that cannot be read print as zeros.

  $ faults '{"command": "DAB_DIGRAD_STATUS", "status_bits": "40 00 00 00"}'
  $ report -d -j digrad_status_zero.json
  $ faults '{"command": "DAB_GET_TIME", "cts_never": true}'
  $ run -t
  0-0-0T0:0:0Z
  $ run -t -j
  "ensembleTime": {
  "year": 0,
  "month": 0,
  "day": 0,
  "hour": 0,
  "minute": 0,
  "second": 0
  }
  $ faults '{"command": "GET_DIGITAL_SERVICE_LIST", "status_bits": "00 00 00 01"}'
  $ run -g
  "DigitalServiceList": {
  "ServiceListVersion": 0,
  "NumberServices": 0,
  "ServiceList": [
  ]
  } (no-eol)

FM: the replies byte for byte.

  $ unset KELVO_SIM_FAULTS
  $ air '"fm": {"stations": [{"khz": 98700, "signal": {"rssi": 41, "valid": true}}]}'
  $ sed -i '/^, "fm"/q' air.json; echo '}' >> air.json
  $ run -b F -x -r
  Boot up successful
  
  00 80 00 00 c0 00 01 8e 26 00 29 00 00 00 00 00 00 00 00 00 00 00 00 
  00 80 00 00 c0 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 
