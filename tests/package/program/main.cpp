// SPDX-License-Identifier: GPL-3.0-or-later
#include <si468x/si468x.h>

int main() {
  Si468x_chip_info info;
  if (Si468x_bus_init() != 0 || info.get_status() != 0) return 1;
  info.print_data();
  return 0;
}
