kelvo-sim has no kernel between itself and the board. kernel.t has what differs for kelvo-spidev.

  $ . "$TESTDIR/setup.sh"

The program sets up the pins of SPI0, and the reset line before them.

  $ KELVO_SIM_TRACE=/dev/stdout kelvo-sim -b X | sed -n '/^ /s/^ *[0-9.]* pin/pin/p'
  pin 23 output
  pin 7 input
  pin 7 pull up
  pin 7 alternate 0
  pin 8 alternate 0
  pin 9 alternate 0
  pin 10 alternate 0
  pin 11 alternate 0
  $ wire_and_pins -b D | grep -E '^(pin|Boot)'
  pin 7 alternate 0
  pin 8 alternate 0
  pin 9 alternate 0
  pin 10 alternate 0
  pin 11 alternate 0
  pin 23 low
  pin 23 high
  Boot up successful
  $ wire_and_pins -k
  read 7
  pin 23 low
  pin 7 input
  pin 8 input
  pin 9 input
  pin 10 input
  pin 11 input
  Si468x shut down
  

After a failed download the link is down. The read of the chip's state that follows is then a mistake.

  $ air '"faults": [{"command": "HOST_LOAD", "status_bits": "40 00 00 00"}]'
  $ wire_and_pins -b D | sed '1,/^Firmware\|^Patch/d'
  
  mistake transfer before bcm2835_spi_begin
  kelvo-sim: board: transfer before bcm2835_spi_begin
  read 7
  Si468x is not booted up, no firmware loaded. Please use the command boot first.
  

A link that cannot be set up. No pin is touched.

  $ air '"board": {"spi_enabled": false}'
  $ KELVO_SIM_TRACE=trace kelvo-sim -b D | tail -n 1; grep -c pin trace
  Error initializing SPI bus. Check that SPI is enabled and that /dev/spidev0.0 exists
  0
  [1]
  $ air '"board": {"registers": false}'
  $ kelvo-sim -b D | tail -n 1
  Error initializing SPI bus. Check that SPI is enabled and that /dev/spidev0.0 exists

A program that waits for something that never happens is stopped.

  $ air '"faults": [{"transaction": 3, "bus": "never_done"}]'
  $ kelvo-sim -b D | tail -n 1; echo "= ${PIPESTATUS[0]}"
  kelvo-sim: board: the host reads SPI0 registers without end: no byte moves and no time passes
  
  = 3
