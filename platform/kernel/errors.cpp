// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/kernel/errors.h"

#include <cstring>

#include "messages/messages.h"

namespace kernel {

namespace {

bool reported = false;

}  // namespace

std::string reason(int error) { return std::strerror(error); }

void report(const std::string& fault) {
  if (!reported) messages::print(fault);
  reported = true;
}

void expect_first_fault() { reported = false; }

}  // namespace kernel
