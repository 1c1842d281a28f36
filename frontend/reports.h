// SPDX-License-Identifier: GPL-3.0-or-later
// The reports on standard output. Each reads a new record from the chip and prints it; fields that cannot be read print
// as 0. Each returns 0, except where documented.
#pragma once

#include <cstdint>

int print_chip_info();
int print_digrad_status();
int print_digrad_status_json();
int print_event_status();
int print_digital_service_list();  ///< always JSON
int print_ensembletime();
int print_ensembletime_json();

/// Switches RDS reception on and prints the signal quality and RDS replies of the FM station in hexadecimal.
/// @return 0, or the result of the property that could not be written; nothing is printed then.
int16_t get_rds_status();
