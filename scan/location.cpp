// SPDX-License-Identifier: GPL-3.0-or-later
// The questions for the antenna's location. The postal code and the city are also the scan file's name.
#include <cstdio>
#include <iostream>

#include "scan/ensemble_list.h"

int Ensemble_list::getGeolocation() {
  struct Question {
    const char* text;
    std::string& answer;
  };
  const Question questions[] = {
      {"Street number (optional): \n", street_no},
      {"Street name: \n", street},
      {"Postal code: \n", postal_code},
      {"City: \n", city},
      {"Country: \n", country},
      {"Indoor or outdoor. If indoor, please indicate the building level (0 = ground floor) as well: \n", floor},
      {"GPS latitude (optional): \n", gps_latitude},
      {"GPS longitude (optional): \n", gps_longitude},
  };
  std::printf("Please indicate the location of the Quillet (the antenna location) during the scan:\n");
  for (const auto& question : questions) {
    std::fputs(question.text, stdout);
    std::fflush(stdout);
    std::getline(std::cin, question.answer);
  }
  std::printf("Thank you\n");
  filename = "ensemblescan_" + postal_code + "_" + city + ".json";
  return 0;
}
