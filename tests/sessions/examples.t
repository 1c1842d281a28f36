The library's example programs and what they print.

  $ . "$TESTDIR/setup.sh"
  $ run -b D -f 33
  Boot up successful
  
  Tuned.
  
  $ example-component_info-sim
  DAB component info ------------------- 
  Global ID:                                  135
  Language:                                   8
  charsetID:                                  4
  Label:                                      Stadtbilder     
  Char abrev:                                 65280
  Number user application data:               2
  Length user application data:               18
  User application no:                        0
  User application type:                      2
  User application length:                    4
    User application data:                    0c 3c 40 80 
  User application no:                        1
  User application type:                      1863
  User application length:                    6
    User application data:                    57 65 69 68 65 72 
  
  $ example-data_packets-sim | grep -E 'remaining|Segment'
  In buffer remaining data:                   4
  Segment number:                             0
  In buffer remaining data:                   3
  Segment number:                             1
  In buffer remaining data:                   2
  Segment number:                             2
  In buffer remaining data:                   1
  Segment number:                             3

The service was stopped, so it can be started again. Without a running application the examples print why they end.

  $ example-data_packets-sim | wc -l
  52
  $ run -k
  Si468x shut down
  
  $ example-component_info-sim
  The chip does not know this component (code 30).
  [1]
  $ example-data_packets-sim
  The service cannot be started (code 32).
  [1]

The third example does everything from reset on. The simulated chip only counts the bytes of an image.

  $ head -c 5796 /dev/zero > patch
  $ head -c 521448 /dev/zero > image
  $ KELVO_SIM_TRACE=trace example-receive-sim patch image | sed -n '1p; $p'
  Radio Quellberg  service 17333, component 12
  Premium Klang    service 19687, component 44
  $ grep -oE '(START_DIGITAL_SERVICE|SET_PROPERTY) [0-9]+ > [^<]*' trace
  START_DIGITAL_SERVICE 12 > 81 00 00 00 b5 43 00 00 0c 00 00 00 
  SET_PROPERTY 6 > 13 00 00 03 28 00 
  $ example-receive-sim patch image.gone
  Failed (code 7).
  [1]
