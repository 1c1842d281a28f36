The boot: its order, waits, reset line and texts.

  $ . "$TESTDIR/setup.sh"
  $ boot() { wire "$@" | awk '/^HOST_LOAD 04 00 00 00/ { n++; getline; next } n { print n " chunk(s)"; n = 0 } 1'; }
  $ boot -b D
  pin 23 low
  wait 200000.000
  pin 23 high
  wait 50000.000
  POWER_UP 01 00 1f 7f 00 f8 24 01 20 10 00 00 00 18 00 00
  read 7
  read 5
  LOAD_INIT 06 00
  read 7
  2 chunk(s)
  wait 50000.000
  LOAD_INIT 06 00
  read 7
  128 chunk(s)
  wait 100000.000
  BOOT 07 00
  read 7
  read 5
  Boot up successful
  
  read 7
  $ boot -b F -k
  pin 23 low
  wait 200000.000
  pin 23 high
  wait 50000.000
  POWER_UP 01 00 1f 7f 00 f8 24 01 20 10 00 00 00 18 00 00
  read 7
  read 5
  LOAD_INIT 06 00
  read 7
  2 chunk(s)
  wait 50000.000
  LOAD_INIT 06 00
  read 7
  130 chunk(s)
  wait 100000.000
  BOOT 07 00
  read 7
  read 5
  Boot up successful
  
  read 7
  pin 23 low
  Si468x shut down
  

The driver waits for a slow chip.

  $ KELVO_SIM_BROADCAST= run -b D
  Boot up successful
  

After a failed power-up no image is sent; the SPI link stays up.

  $ air '"faults": [{"command": "POWER_UP", "status_bits": "40 00 00 00"}]'
  $ boot -b D
  pin 23 low
  wait 200000.000
  pin 23 high
  wait 50000.000
  fault POWER_UP, every one
  POWER_UP 01 00 1f 7f 00 f8 24 01 20 10 00 00 00 18 00 00
  read 7
  Could not power up the Si468x
  read 7
  Si468x is not booted up, no firmware loaded. Please use the command boot first.
  

The download of the patch fails: the chip is held in reset, then the message is printed. No further chunk is sent.
The last read of the chip's state reaches no chip, since the link is down; see direct.t.

  $ air '"faults": [{"command": "HOST_LOAD", "occurrence": 2, "status_bits": "00 00 00 04"}]'
  $ boot -b D | sed '/^mistake/,/^read/d'
  pin 23 low
  wait 200000.000
  pin 23 high
  wait 50000.000
  POWER_UP 01 00 1f 7f 00 f8 24 01 20 10 00 00 00 18 00 00
  read 7
  read 5
  LOAD_INIT 06 00
  read 7
  1 chunk(s)
  fault HOST_LOAD, occurrence 2
  1 chunk(s)
  pin 23 low
  wait 2000000.000
  Patch not transmitted successfully
  
  Si468x is not booted up, no firmware loaded. Please use the command boot first.
  

The download of an image fails: the message is printed, then the chip is held in reset.

  $ air '"faults": [{"command": "HOST_LOAD", "occurrence": 4, "status_bits": "40 00 00 00"}]'
  $ boot -b D | sed '/^mistake/,/^read/d'
  pin 23 low
  wait 200000.000
  pin 23 high
  wait 50000.000
  POWER_UP 01 00 1f 7f 00 f8 24 01 20 10 00 00 00 18 00 00
  read 7
  read 5
  LOAD_INIT 06 00
  read 7
  2 chunk(s)
  wait 50000.000
  LOAD_INIT 06 00
  read 7
  1 chunk(s)
  fault HOST_LOAD, occurrence 4
  1 chunk(s)
  Firmware not transmitted successfully
  
  pin 23 low
  wait 2000000.000
  Si468x is not booted up, no firmware loaded. Please use the command boot first.
  

An application that does not start.

  $ air '"faults": [{"command": "BOOT", "status": "80 00 00 80"}]'
  $ run -b D
  Boot up failed
  
  Si468x is not booted up, no firmware loaded. Please use the command boot first.
  
