The systemd service: its command fails when the radio does not play.

  $ . "$TESTDIR/setup.sh"
  $ systemd=$TESTDIR/../../packaging/systemd
  $ command=$(sed -n '/^ExecStart=/,/[^\\]$/{s/^ExecStart=//; s/\\$//; p}' $systemd/kelvo.service.in | tr -d '\n' |
  >   sed 's/[$]\$/$/g; s/%%/%/g; s|@bindir@/||')
  $ start() { KELVO_OPTIONS=$*; eval "$command" | grep . | tail -n 2; said ${PIPESTATUS[0]}; }
  $ start $(sed -n 's/^KELVO_OPTIONS=//p' $systemd/kelvo.conf)
  Tuned.
  Setting volume to 50
  $ start -b F -x -r
  00 80 00 00 c0 00 01 fe 29 0f 45 2b 2c 76 00 00 03 02 00 00 00 00 00 
  00 80 00 00 c0 01 1a 05 00 9c 4d 04 00 9c 4d a8 00 8e 55 54 53 
  $ start -b D -f 2
  Boot up successful
  Could not tune to frequency
  = 1
  $ start -f 33 -e 1 -c 12 -p
  Tuned.
  Could not start service
  = 1
  $ start -p
  SPI bus enabled.
  To play, a service id and component id have to be given
  = 1
  $ start -l 64
  SPI bus enabled.
  Illegal value for volume. Volume must be an integer between 0 and 63
  = 1
  $ start -f
  kelvo-spidev: option requires an argument -- 'f'
  Try `kelvo-spidev --help' or `kelvo-spidev --usage' for more information.
  = 64
  $ start -k
  SPI bus enabled.
  Si468x shut down
  $ start -l 20
  SPI bus enabled.
  Si468x is not booted up, no firmware loaded. Please use the command boot first.
  = 1
  $ for fault in '"POWER_UP"' '"HOST_LOAD"' '"HOST_LOAD", "occurrence": 4' '"BOOT"'; do
  >   faults '{"command": '"$fault"', "status_bits": "40 00 00 00"}'; start -b D
  > done
  Could not power up the Si468x
  Si468x is not booted up, no firmware loaded. Please use the command boot first.
  = 1
  Patch not transmitted successfully
  Si468x is not booted up, no firmware loaded. Please use the command boot first.
  = 1
  Firmware not transmitted successfully
  Si468x is not booted up, no firmware loaded. Please use the command boot first.
  = 1
  SPI bus enabled.
  Boot up failed
  = 1
  $ unset KELVO_SIM_FAULTS; air '"board": {"spi_enabled": false}'; start -b D
  kelvo-spidev: /dev/spidev0.0: No such file or directory; enable SPI with raspi-config
  Error initializing SPI bus. Check that SPI is enabled and that /dev/spidev0.0 exists
  = 1
