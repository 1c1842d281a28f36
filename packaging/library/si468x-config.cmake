# SPDX-License-Identifier: GPL-3.0-or-later
#   find_package(si468x 1.0 REQUIRED)                       target si468x::si468x, over the bcm2835 library
#   find_package(si468x 1.0 REQUIRED COMPONENTS spidev)     target si468x::spidev, over the kernel's drivers
#   find_package(si468x 1.0 REQUIRED COMPONENTS simulator)  target si468x::simulator, over the simulated board
include(${CMAKE_CURRENT_LIST_DIR}/si468x-targets.cmake)
set(si468x_spidev_FOUND TRUE)
set(si468x_simulator_FOUND TRUE)
find_library(BCM2835_LIBRARY bcm2835)
foreach(component ${si468x_FIND_COMPONENTS})
  if(NOT si468x_${component}_FOUND AND si468x_FIND_REQUIRED_${component})
    set(si468x_FOUND FALSE)
    set(si468x_NOT_FOUND_MESSAGE "There is no component ${component}; there are spidev and simulator")
  endif()
endforeach()
if(NOT si468x_FIND_COMPONENTS AND NOT BCM2835_LIBRARY)
  set(si468x_FOUND FALSE)
  set(si468x_NOT_FOUND_MESSAGE "The bcm2835 library is missing (Debian package libbcm2835-dev)")
endif()
