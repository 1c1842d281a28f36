kelvo-spidev on a simulated kernel: devices, reset line, and the trace of a board.

  $ . "$TESTDIR/setup.sh"
  $ kernel() { export KELVO_SIM_KERNEL="$*"; }
  $ run() { kelvo-spidev "$@" 2>&1 | sed '1,/NO WARRANTY/d' | sed '1d; /^SPI bus enabled/,+1d'; said ${PIPESTATUS[0]}; }
  $ pins() { : >trace; KELVO_SIM_TRACE=trace run "$@"; sed -n 's/^ *[0-9.]* pin/pin/p' trace; }

The reset line is requested, with its level, only when it is driven. Other runs leave the chip playing.

  $ pins -b D -f 33
  Boot up successful
  
  Tuned.
  
  pin 23 pull down
  pin 23 output
  pin 23 low
  pin 23 pull up
  pin 23 high
  $ pins -t
  2026-3-7T9:5:0Z
  $ pins -k
  Si468x shut down
  
  pin 23 pull down
  pin 23 low

The controller is found by its label, whatever its number.

  $ for label in pinctrl-bcm2835 pinctrl-bcm2711 pinctrl-rp1; do
  >   for chip in 0 4 13; do kernel label=$label chip=$chip; run -b F -k; done
  > done | sort | uniq -c
       18 
        9 Boot up successful
        9 Si468x shut down
  $ kernel chip=63; run -b F; kernel chip=64; run -b F | head -n 1
  Boot up successful
  
  kelvo-spidev: no GPIO controller of a Raspberry Pi; name the reset line, as in KELVO_RESET=gpiochip1:17
  $ kernel label=pinctrl-bcm27; run -b D
  kelvo-spidev: no GPIO controller of a Raspberry Pi; name the reset line, as in KELVO_RESET=gpiochip1:17
  Could not power up the Si468x
  Si468x is not booted up, no firmware loaded. Please use the command boot first.
  

KELVO_RESET names the line of another board. An invalid value ends the run before any device is accessed.

  $ kernel label=pinctrl-other chip=2 line=17; KELVO_RESET=gpiochip2:17 pins -b D
  Boot up successful
  
  pin 23 pull down
  pin 23 low
  pin 23 pull up
  pin 23 high
  $ for line in gpiochip gpiochip2 gpiochip:17 gpiochip2: gpiochip2:17x gpiochip2:4294967296 chip2:17; do
  >   KELVO_RESET=$line pins -k
  > done | sort | uniq -c
        7 = 2
        7 kelvo-spidev: KELVO_RESET: not a controller and a line, as in gpiochip1:17
  $ KELVO_RESET=gpiochip9:17 pins -k; KELVO_RESET=gpiochip2:54 pins -k
  kelvo-spidev: KELVO_RESET: /dev/gpiochip9: No such file or directory
  = 2
  kelvo-spidev: KELVO_RESET: /dev/gpiochip2 has lines 0 to 53 only
  = 2
  $ for trace in none/trace .; do KELVO_TRACE=$trace pins -k; done
  kelvo-spidev: none/trace: the trace cannot be written: No such file or directory
  = 2
  kelvo-spidev: .: the trace cannot be written: Is a directory
  = 2

A kernel that does not keep the level of a released line, or has no parameter for it: the chip goes into reset unless the board's pull prevents it.

  $ kernel persist=N; pins -b D
  kelvo-spidev: warning: after this run only a pull resistor keeps the level of the reset line: /sys/module/pinctrl_bcm2835/parameters/persist_gpio_outputs is N
  Boot up successful
  
  pin 23 pull down
  pin 23 low
  pin 23 pull up
  pin 23 high
  pin 23 input
  $ run -t
  Si468x is not booted up, no firmware loaded. Please use the command boot first.
  
  $ kernel label=pinctrl-bcm2835 persist=none; run -b D | head -n 1
  kelvo-spidev: warning: after this run only a pull resistor keeps the level of the reset line: this kernel has no /sys/module/pinctrl_bcm2835/parameters/persist_gpio_outputs
  $ kernel label=pinctrl-other persist=N line=17; KELVO_RESET=gpiochip0:17 run -b D | head -n 1
  Boot up successful
  $ kernel label=pinctrl-rp1 persist=N; pins -b D
  kelvo-spidev: warning: after this run only a pull resistor keeps the level of the reset line: /sys/module/pinctrl_rp1/parameters/persist_gpio_outputs is N
  Boot up successful
  
  pin 23 pull down
  pin 23 output
  pin 23 low
  pin 23 pull up
  pin 23 high
  pin 23 input

A line or a device that cannot be used: one line with the reason.

  $ kernel busy=$'lirc\e[8m'; KELVO_TRACE=board run -b D; grep -cE 'pin|spi' board
  kelvo-spidev: /dev/gpiochip0: line 23: Device or resource busy; "lirc?[8m" uses it
  Could not power up the Si468x
  Si468x is not booted up, no firmware loaded. Please use the command boot first.
  
  0
  [1]
  $ kernel gpio_denied=1; run -b D; KELVO_RESET=gpiochip0:23 run -k
  kelvo-spidev: /dev/gpiochip0: Permission denied; join the group gpio
  Could not power up the Si468x
  Si468x is not booted up, no firmware loaded. Please use the command boot first.
  
  Si468x is not booted up, no firmware loaded. Please use the command boot first.
  
  $ kernel bufsiz=2048; run -b D
  kelvo-spidev: /dev/spidev0.0: Message too long; set the parameter bufsiz of the module spidev to 4096 or more
  Patch not transmitted successfully
  
  Si468x is not booted up, no firmware loaded. Please use the command boot first.
  
  $ kernel unbound=100; run -b D
  kelvo-spidev: /dev/spidev0.0: Cannot send after transport endpoint shutdown; the device was removed from its driver, start again when it is back
  Firmware not transmitted successfully
  
  Si468x is not booted up, no firmware loaded. Please use the command boot first.
  
  $ kernel unbound=2; run -b D; kernel unbound=1; run -b D; kernel
  kelvo-spidev: /dev/spidev0.0: Cannot send after transport endpoint shutdown; the device was removed from its driver, start again when it is back
  Could not power up the Si468x
  Si468x is not booted up, no firmware loaded. Please use the command boot first.
  
  kelvo-spidev: /dev/spidev0.0: Cannot send after transport endpoint shutdown; the device was removed from its driver, start again when it is back
  Error initializing SPI bus. Check that SPI is enabled and that /dev/spidev0.0 exists
  $ kernel chip=x; run -t; kernel
  kelvo-spidev: KELVO_SIM_KERNEL: "chip=x" is not a setting of the simulated kernel
  = 2

The same for a device that does not exist or belongs to others, and for a controller that never ends a transfer.

  $ air '"board": {"spi_enabled": false}'; run -b D
  kelvo-spidev: /dev/spidev0.0: No such file or directory; enable SPI with raspi-config
  Error initializing SPI bus. Check that SPI is enabled and that /dev/spidev0.0 exists
  $ air '"board": {"registers": false}'; run -b D
  kelvo-spidev: /dev/spidev0.0: Permission denied; join the group spi
  Error initializing SPI bus. Check that SPI is enabled and that /dev/spidev0.0 exists
  $ air '"faults": [{"transaction": 3, "bus": "never_done"}]'; run -b D; air
  kelvo-spidev: /dev/spidev0.0: Connection timed out
  Could not power up the Si468x
  Si468x is not booted up, no firmware loaded. Please use the command boot first.
  

A transfer that fails receives zeros; then the chip is out of reach, and the run ends soon. So a boot is never reported
that lacks a part of an image.

  $ kernel failing=1; KELVO_TRACE=board run -b D | head -n 1; sed -n 's/^.* spi //p; s/.* total wait/wait/p' board
  kelvo-spidev: /dev/spidev0.0: Input/output error
  POWER_UP 16 > 01 00 1f 7f 00 f8 24 01 20 10 00 00 00 18 00 00 < 00*16
  wait 250000.000
  $ for n in 4 6 8; do kernel failing=$n; run -b D | sed -n 2p; done
  Patch not transmitted successfully
  Patch not transmitted successfully
  Patch not transmitted successfully
  $ kernel; run -b D >/dev/null; kernel failing=2; run -f 2
  kelvo-spidev: /dev/spidev0.0: Input/output error
  Could not tune to frequency
  
  $ kernel unbound=2; yes '' | head | KELVO_SIM_TRACE=scan run -u >/dev/null; kernel
  $ awk '/total wait/ { print ($4 < 3e6 ? "at most" : "more than"), "3 s" }' scan
  at most 3 s

Signals interrupt no transfer and shorten no wait.

  $ kernel interrupted=1; KELVO_SIM_TRACE=interrupted run -b D; kernel; KELVO_SIM_TRACE=whole run -b D
  Boot up successful
  
  Boot up successful
  
  $ cmp interrupted whole

The trace of a board equals that of the simulated board, without the events that only the simulated board can show.

  $ KELVO_TRACE=board KELVO_SIM_TRACE=simulated run -b D -f 33 -g | tail -n 1
  } (no-eol)
  $ diff simulated board | grep '^[<>]'
  <          0.000 pin 23 pull down
  <     200000.000 pin 23 pull up
  <    1121436.928 chip tune ended at 227360 kHz, ensemble acquired
  <    1571436.928 chip service list version 98 arrived
  $ KELVO_TRACE=/dev/full run -t
  kelvo-spidev: /dev/full: the trace ends here: No space left on device
  2026-3-7T9:5:0Z

With standard output closed, printed text does not go to a device.

  $ KELVO_TRACE=board kelvo-spidev -g >&-; grep -c ServId board
  0
  [1]

A read in pieces sends nothing but zeros, whatever was sent or received before.

  $ KELVO_TRACE=board example-data_packets-sim >/dev/null; grep -o 'RD_REPLY 4096 > .* <' board | uniq -c
        5 RD_REPLY 4096 > 00*4096 <

A packet longer than the longest transaction.

  $ packet() {
  >   air; sed -i 's/"text": "Weiher"}], "segments": \[/&{"text": "'"$(printf "%$1s" .)"'"}, /' "$KELVO_SIM_BROADCAST"
  >   run -k; run -b D -f 33; example-data_packets-sim | sed -n '/Data:/{s/  */ /gp;q}; /does not fit/p' | cut -c 1-90
  > }
  $ packet 4071
  Si468x shut down
  
  Boot up successful
  
  Tuned.
  
  Data: .
  $ packet 4072
  Si468x shut down
  
  Boot up successful
  
  Tuned.
  
  example-data_packets-sim: a packet of 4097 bytes does not fit into a transaction of 4096
  Data: 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 

A trace replaces a trace and no other file, needs a reader at a pipe, and ends alone when that reader leaves.

  $ KELVO_TRACE=board run -k; wc -l <board
  Si468x shut down
  
  8
  $ echo '         0.000 spi data' > notes; mkfifo pipe
  $ for trace in notes pipe; do KELVO_TRACE=$trace pins -k; done; cat notes
  kelvo-spidev: notes: the trace cannot be written: it exists and is not a trace
  = 2
  kelvo-spidev: pipe: the trace cannot be written: nobody reads this pipe
  = 2
           0.000 spi data
  $ yes '' | head -n 10 | KELVO_TRACE=/dev/fd/7 run -b D -u 7> >(head -n 1) | grep -E '^ |pipe|Boot|Thank' | sort
           0.000 trace kelvo
  Boot up successful
  Thank you
  kelvo-spidev: /dev/fd/7: the trace ends here: Broken pipe
