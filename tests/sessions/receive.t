From power-up to a playing service; a later run finds the chip as this one left it.

  $ . "$TESTDIR/setup.sh"
  $ kelvo-sim -b D -f 33 -e 17333 -c 12 -p -l 50
  Starting...kelvo DAB radio client
  kelvo 1.0.0
  Please note:
  kelvo is free software under the GNU General Public License, version 3 or later;
  you may use, share and change it under its terms: <https://www.gnu.org/licenses/>.
  It comes with NO WARRANTY, to the extent permitted by law.
  
  SPI bus enabled.
  
  Boot up successful
  
  Tuned.
  
  Setting volume to 50
  
  $ run -g | grep -E -A 1 'NumberServices|"ServId": 17333,'
  "NumberServices": 17,
  "ServiceList": [
  --
  "ServId": 17333,
  "AudioOrDataFlag": 0,
  $ run -n -d -i | grep -E 'Powerup|CMD|Ensemble acq|Tune Freq|New service| -'
  Chip info ---------------------------- 
  Powerup state:                              3
  Firmware image running the sysstate CMD:    DAB
  Digrad status ------------------------ 
  Ensemble acquisition state changed:         1
  Ensemble acquired:                          1
  Tune Freq.:                                 227360
  Event status ------------------------- 
  New service list available:                 1
  $ run -n | grep 'New service'
  New service list available:                 0
  $ run -k
  Si468x shut down
  
  $ run -i -k
  Si468x is not booted up, no firmware loaded. Please use the command boot first.
  

The actions run in a fixed order, whatever the order of the options.

  $ run -b D
  Boot up successful
  
  $ run -k -t -j -n -d -l 40 -f 33 -o 1
  Tuned.
  
  Setting volume to 40
  
  "DigradStatus": {
  "hardmuteINT": 0,
  "FICerrINT": 0,
  "acqINT": 1,
  "rssihINT": 0,
  "rssilINT": 0,
  "hardmute": 0,
  "FICerr": 0,
  "acq": 1,
  "valid": 1,
  "rssi": 52,
  "snr": 21,
  "FIC_quality": 100,
  "cnr": 28,
  "FIB_error_count": 2,
  "tune_freq": 227360,
  "tune_index": 33,
  "fft_offset": 254,
  "readAntCap": 87,
  "cu_level": 684,
  "fast_dect": 15
  }Event status ------------------------- 
  Ensemble reconfig event:                    0
  Ensemble reconfig warning:                  1
  New announcement info available             0
  New freq. info available:                   1
  New service list available:                 1
  Freq. Info available:                       1
  Service list available:                     1
  Service list version:                       98
  "ensembleTime": {
  "year": 2026,
  "month": 3,
  "day": 7,
  "hour": 9,
  "minute": 5,
  "second": 0
  }
  Si468x shut down
  
