// SPDX-License-Identifier: GPL-3.0-or-later
// Reading a file of the simulated board.
#include "simulator/json/text_file.h"

#include <cerrno>
#include <cstring>
#include <fstream>

#include "messages/messages.h"

namespace sim {

File_error::File_error(const std::string& file, const std::string& fault)
    : std::runtime_error(messages::one_line(file + ": " + fault)) {}

std::string read_text(const std::string& path) {
  constexpr size_t largest_file = size_t{16} << 20;  // bytes
  constexpr size_t block_size = 65536;
  errno = 0;
  std::ifstream in(path, std::ios::binary);
  if (!in) throw File_error(path, std::string("cannot be opened: ") + std::strerror(errno));
  std::string text;
  while (in) {
    const size_t size = text.size();
    text.resize(size + block_size);
    in.read(text.data() + size, block_size);
    text.resize(size + static_cast<size_t>(in.gcount()));
    if (text.size() > largest_file) throw File_error(path, "more than 16 MiB");
  }
  if (in.bad()) throw File_error(path, std::string("cannot be read: ") + std::strerror(errno));
  return text;
}

}  // namespace sim
