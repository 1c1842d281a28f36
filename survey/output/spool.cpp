// SPDX-License-Identifier: GPL-3.0-or-later
// A temporary file without a name.
#include "survey/output/spool.h"

#include <array>
#include <cerrno>
#include <cstring>

#include "survey/file/document.h"

namespace survey {

namespace {

void require(bool good) {
  if (!good) throw File_error("temporary file", std::strerror(errno));
}

}  // namespace

Spool::Spool() : file_(std::tmpfile(), [](std::FILE* file) { return std::fclose(file); }) { require(file_ != nullptr); }

void Spool::add(std::string_view text) {
  require(std::fwrite(text.data(), 1, text.size(), file_.get()) == text.size());
}

void Spool::print(std::ostream& out) {
  std::array<char, 65536> piece{};
  std::rewind(file_.get());
  while (const size_t size = std::fread(piece.data(), 1, piece.size(), file_.get()))
    out.write(piece.data(), static_cast<std::streamsize>(size));
  require(std::ferror(file_.get()) == 0);
}

}  // namespace survey
