// SPDX-License-Identifier: GPL-3.0-or-later
// kelvo: one run, from the command line to the last action.
#include <argp.h>

#include <cstdio>
#include <cstdlib>
#include <new>

#include "frontend/audio.h"
#include "frontend/boot.h"
#include "frontend/options.h"
#include "frontend/reports.h"
#include "frontend/tuning.h"
#include "messages/messages.h"
#include "scan/ensemble_list.h"
#include "si468x/si468x.h"

namespace {

void print_new_start_banner() {
  std::puts("Please note:");
  std::puts("kelvo is free software under the GNU General Public License, version 3 or later;");
  std::puts("you may use, share and change it under its terms: <https://www.gnu.org/licenses/>.");
  std::puts("It comes with NO WARRANTY, to the extent permitted by law.");
  std::puts("");
}

void boot(char firmware) {
  // Result ignored: the power-up state decides.
  if (firmware == 'D') power_up_and_load_fw(1);
  if (firmware == 'F') power_up_and_load_fw(0);
}

bool application_runs() {
  Si468x_chip_info chip;
  return chip.get_status() == 0 && chip.powerup_state == Si468x_application_runs;
}

void play(const arguments& options) {
  if (options.service != 0 && options.component != 0)
    play_station(static_cast<uint32_t>(options.service), static_cast<uint32_t>(options.component));
  else
    std::puts("To play, a service id and component id have to be given\n");
}

// The requested actions, in their fixed order; each prints its own failure, or ignores it. Returns false when tuning
// failed, which ends the run; no other result counts.
bool perform_actions(const arguments& options) {
  if (options.i2s_out) set_properties_output(static_cast<uint8_t>(options.i2s_enable));
  if (options.frequency != 0 && tune_freq(options.frequency) != 0) return false;
  if (options.play) play(options);
  if (options.set_level) set_volume(static_cast<uint32_t>(options.level));
  if (options.chip_info) print_chip_info();
  if (options.digrad_status) options.format_json ? print_digrad_status_json() : print_digrad_status();
  if (options.digital_service_list) print_digital_service_list();
  if (options.event_status) print_event_status();
  if (options.datetime) options.format_json ? print_ensembletime_json() : print_ensembletime();
  if (options.next) static_cast<void>(Si468x_tune_next_station());
  if (options.rds_status) get_rds_status();
  if (options.full_scan) dab_full_scan();
  return true;
}

int run(const arguments& options) {
  if (Si468x_bus_init() != 0) {
    std::puts("Error initializing SPI bus. Check that SPI is enabled and that /dev/spidev0.0 exists");
    return 0;
  }
  std::puts("SPI bus enabled.\n");
  if (options.boot) boot(options.firmware);
  if (!application_runs()) {
    std::puts("Si468x is not booted up, no firmware loaded. Please use the command boot first.\n");
    return 0;
  }
  if (!perform_actions(options)) return 0;
  if (!options.shutdown) std::exit(0);  // the chip continues to play; the link stays open
  Si468x_power_down();
  std::puts("Si468x shut down\n");
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  // Line buffered also into a pipe: a message appears before the long operation that it announces, and before argp's
  // text on standard error.
  std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
  std::puts("Starting...kelvo DAB radio client");
  std::puts(argp_program_version);
  const arguments options = read_options(argc, argv);
  print_new_start_banner();
  try {
    return run(options);
  } catch (const std::bad_alloc& error) {  // from a report's or a scan's text; the chip keeps its state
    messages::print(error);
    return 0;
  }
}
