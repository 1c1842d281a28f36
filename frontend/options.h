// SPDX-License-Identifier: GPL-3.0-or-later
// The command line.
#pragma once

#include <cstdint>

/// The options of the command line. Flags are 0 or 1.
struct arguments {
  int32_t level = 30;  ///< volume level to set
  int32_t set_level = 0;
  int32_t boot = 0;
  char firmware = 'D';  ///< 'D' DAB, 'F' FM; any other letter boots nothing
  int32_t shutdown = 0;
  int32_t i2s_out = 0;
  int32_t i2s_enable = 0;  ///< low 8 bits: 0 analogue output, else I2S output
  int32_t chip_info = 0;
  int32_t digrad_status = 0;
  int32_t event_status = 0;
  int32_t datetime = 0;
  int32_t play = 0;
  int32_t next = 0;
  int32_t service = 0;
  int32_t component = 0;
  uint8_t frequency = 0;  ///< index into the chip's DAB frequency list; 0 tunes nothing
  int32_t rds_status = 0;
  int32_t format_json = 0;
  int32_t digital_service_list = 0;
  int32_t full_scan = 0;
};

/// Reads the command line. Prints help, usage, version and errors as argp does, and then ends the program.
arguments read_options(int argc, char** argv);
