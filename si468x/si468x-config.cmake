# SPDX-License-Identifier: GPL-3.0-or-later
find_library(BCM2835_LIBRARY bcm2835)
if(BCM2835_LIBRARY)
  include(${CMAKE_CURRENT_LIST_DIR}/si468x-targets.cmake)
else()
  set(si468x_FOUND FALSE)
  set(si468x_NOT_FOUND_MESSAGE "The bcm2835 library is missing (Debian package libbcm2835-dev)")
endif()
