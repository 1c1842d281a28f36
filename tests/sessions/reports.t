Every report; each field has a different value.

  $ . "$TESTDIR/setup.sh"
  $ run -b D -f 33
  Boot up successful
  
  Tuned.
  
  $ faults '{"command": "RD_REPLY", "occurrence": 2, "status": "B0 20 00 D4"},
  >   {"command": "GET_PART_INFO", "reply": "11 22 09 09 83 12 09"},
  >   {"command": "GET_SYS_STATE", "reply": "03 09"},
  >   {"command": "GET_FUNC_INFO", "reply": "05 06 07 63 0D 0C 0B FA"}'
  $ run -i
  Chip info ---------------------------- 
  Clear to send:                              1
  Command error:                              0
  Digital radio link change interrupt:        1
  Data component interrupt:                   1
  Seek/Tune complete:                         0
  Digital radio event change interrupt:       1
  Powerup state:                              3
  DSP frame overrun:                          1
  Data dropped during read reply:             0
  Dropped data during command write:          1
  Arbiter error:                              0
  Non-recoverable error:                      0
  Chip Mask Revision:                         17
  ROM ID:                                     34
  Part Number:                                4739
  Firmware image running the sysstate CMD:    TDMB or data only DAB
  Revision number:                            5.6.7
  No SVN info:                                0
  Mixed revisions:                            1
  Local modifications:                        1
  Build location:                             2
  SVN ID:                                     4195027981
  $ faults '{"command": "DAB_DIGRAD_STATUS",
  >   "reply": "06 15 F6 81 63 15 03 04 60 A6 03 00 21 FE 9C 01 AC 02 07"}'
  $ run -d
  Digrad status ------------------------ 
  Audio was muted:                            0
  FIC errors encountered:                     0
  Ensemble acquisition state changed:         1
  below RSSI thresh:                          1
  above RSSI thresh:                          0
  hardmute:                                   1
  FIC errors:                                 0
  Ensemble acquired:                          1
  RSSI valid:                                 1
  RSSI:                                       246
  SNR:                                        129
  FIC quality:                                99
  CNR:                                        21
  FIB error count:                            1027
  Tune Freq.:                                 239200
  Tune index:                                 33
  FFT offset:                                 254
  Antenna tuning cap value:                   412
  CU level:                                   684
  Metric for DAB fast detect:                 7
  $ run -d -j
  "DigradStatus": {
  "hardmuteINT": 0,
  "FICerrINT": 0,
  "acqINT": 1,
  "rssihINT": 1,
  "rssilINT": 0,
  "hardmute": 1,
  "FICerr": 0,
  "acq": 1,
  "valid": 1,
  "rssi": 246,
  "snr": 129,
  "FIC_quality": 99,
  "cnr": 21,
  "FIB_error_count": 1027,
  "tune_freq": 239200,
  "tune_index": 33,
  "fft_offset": 254,
  "readAntCap": 412,
  "cu_level": 684,
  "fast_dect": 7
  } (no-eol)
  $ faults '{"command": "DAB_GET_EVENT_STATUS", "reply": "89 02 34 12"}'
  $ run -n
  Event status ------------------------- 
  Ensemble reconfig event:                    1
  Ensemble reconfig warning:                  0
  New announcement info available             1
  New freq. info available:                   0
  New service list available:                 1
  Freq. Info available:                       1
  Service list available:                     0
  Service list version:                       4660
  $ faults '{"command": "GET_DIGITAL_SERVICE_LIST", "reply": "'"$(echo \
  >     3A 00 03 00 02 E1 E2 E3 \
  >     B5 43 00 00 14 01 00 EE 53 74 61 74 69 6F 6E 20 41 20 20 20 20 20 20 20 0C 00 FC 01 \
  >     45 23 D1 E0 01 00 00 EE 44 61 74 61 20 42 20 20 20 20 20 20 20 20 20 20)"'"}'
  $ run -g
  "DigitalServiceList": {
  "ServiceListVersion": 3,
  "NumberServices": 2,
  "ServiceList": [
  {
  "ServiceNo": 0,
  "ServId": 17333,
  "AudioOrDataFlag": 0,
  "ServRef": 949,
  "CountryID": 4,
  "ProgramType": 10,
  "LinkingInfo": 0,
  "NumberComponents": 1,
  "CAId": 0,
  "local": 0,
  "SICharset": 0,
  "Label": "Station A       ",
  "ComponentList": [
  {
  "ComponentNo": 0,
  "comp_ID": 12,
  "TMID": 0,
  "SubChId": 12,
  "CA_flag": 0,
  "ps": 0,
  "ASCTyDSCTy": 63,
  "muA_info_valid": 1
  }]
  },{
  "ServiceNo": 1,
  "ServId": 3771802437,
  "AudioOrDataFlag": 1,
  "ServRef": 74565,
  "CountryID": 13,
  "ECC": 224,
  "ProgramType": 0,
  "LinkingInfo": 0,
  "NumberComponents": 0,
  "CAId": 0,
  "local": 0,
  "SICharset": 0,
  "Label": "Data B          ",
  "ComponentList": [
  ]
  }]
  } (no-eol)
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
  $ run -d -j | grep -v ': 0,*$'; run -d -j | grep -c ': 0,*$'
  "DigradStatus": {
  }
  20
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
