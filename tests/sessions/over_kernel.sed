# SPDX-License-Identifier: GPL-3.0-or-later
# What differs in a session when a kernel is between the simulated board and the program.

# SPI0 and its pins are the kernel's: it has set them up before the program starts.
/^  pin \(7\|8\|9\|10\|11\) /d

# The reset line is touched when it is driven and not before, each time with a pull to its level.
/^  pin 23 output$/d
/^The boot:/,/^  pin 23 low$/s/^  pin 23 low$/  pin 23 pull down\n  pin 23 output\n&/
t
s/^  pin 23 low$/  pin 23 pull down\n&/
s/^  pin 23 high$/  pin 23 pull up\n&/

# After a failed download the link is down, and nothing more reaches the board.
/^  mistake transfer before/d
/^  kelvo-sim: board: transfer before/ {
  N
  d
}

# A device that cannot be used is named on standard error.
/"spi_enabled": false/,/Error init/s/^  Error init/  kelvo-sim: \/dev\/spidev0.0: No such file or directory; enable SPI with raspi-config\n&/
/"registers": false/,/Error init/s/^  Error init/  kelvo-sim: \/dev\/spidev0.0: Permission denied; join the group spi\n&/

# A kernel does not wait without end for a controller that is never done.
s/^  kelvo-sim: board: the host reads .*/  kelvo-sim: \/dev\/spidev0.0: Connection timed out/
/^  kelvo-sim: .*timed out/,/^  = 3/s/^  = 3/  = 0/
