// SPDX-License-Identifier: GPL-3.0-or-later
// The reports on standard output. Each reads a fresh, zeroed record from the chip and prints it; what cannot be read
// prints as zeros. Each returns 0 where not said otherwise.
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
