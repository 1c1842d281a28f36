The production program on a machine that is not a Raspberry Pi.

  $ [ ! -e /proc/device-tree/compatible ] || exit 80
  $ kelvo -b D -k
  Starting...kelvo DAB radio client
  kelvo 1.0.0
  Please note:
  kelvo is free software under the GNU General Public License, version 3 or later;
  you may use, share and change it under its terms: <https://www.gnu.org/licenses/>.
  It comes with NO WARRANTY, to the extent permitted by law.
  
  kelvo: /proc/device-tree/compatible cannot be read: not a Raspberry Pi, or a container that hides it; use kelvo-sim, in a program of your own si468x::simulator
  Error initializing SPI bus. Check that SPI is enabled and that /dev/spidev0.0 exists
