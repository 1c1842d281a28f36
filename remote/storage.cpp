// SPDX-License-Identifier: GPL-3.0-or-later
// The files that outlive the program.
#include "remote/storage.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <thread>

namespace remote {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const fs::path& file, const char* what) {
  throw Storage_error(file.string() + ": " + what + ": " + std::strerror(errno));
}

std::string variable(const char* name) {
  const char* const value = std::getenv(name);
  return value != nullptr ? value : "";
}

// Closed when the object ends.
struct Descriptor {
  explicit Descriptor(int opened) : number(opened) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (number >= 0) close(number);
  }
  int number;
};

// Waits for a second at most: the caller has a radio to serve.
void lock_folder(int folder, const fs::path& name) {
  constexpr int attempts = 20;
  for (int attempt = 1; flock(folder, LOCK_EX | LOCK_NB) != 0; ++attempt) {
    if (attempt == attempts) fail(name, "cannot be locked");
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
}

bool write_all(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = write(descriptor, text.data(), text.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    text.remove_prefix(static_cast<size_t>(written));
  }
  return fsync(descriptor) == 0;
}

}  // namespace

fs::path state_folder() {
  const std::string given = variable("STATE_DIRECTORY"), state_home = variable("XDG_STATE_HOME"),
                    home = variable("HOME");
  if (given.empty() && state_home.empty() && home.empty())
    throw Storage_error("none of STATE_DIRECTORY, XDG_STATE_HOME and HOME is set");
  if (!given.empty()) return given.substr(0, given.find(':'));  // systemd lists several with colons
  fs::path folder = (state_home.empty() ? fs::path(home) / ".local" / "state" : fs::path(state_home)) / "kelvo";
  fs::path parent;
  for (const fs::path& name : folder)  // one that cannot be made shows when a file is written
    static_cast<void>(mkdir((parent /= name).c_str(), S_IRWXU));
  return folder;
}

// A stream, since its system calls are not those of the board's thread in the tests.
std::optional<std::string> read_file(const fs::path& file) {
  std::error_code unknown;
  const fs::file_type type = fs::status(file, unknown).type();
  if (type == fs::file_type::not_found) return std::nullopt;
  if (type != fs::file_type::regular && type != fs::file_type::none)
    throw Storage_error(file.string() + ": not a regular file");
  std::ifstream stream(file, std::ios::binary);
  std::string text{std::istreambuf_iterator<char>(stream), {}};
  if (!stream) fail(file, "cannot be read");
  return text;
}

std::time_t time_written(const fs::path& file) {
  struct stat status {};
  return stat(file.c_str(), &status) == 0 ? status.st_mtime : 0;
}

// The folder is locked meanwhile: a draft that exists is a killed program's.
void write_file(const fs::path& file, std::string_view text, const std::function<bool(std::string_view)>& is_ours) {
  const Descriptor folder(open(file.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (folder.number < 0) fail(file.parent_path(), "cannot be opened");
  lock_folder(folder.number, file.parent_path());
  const std::optional<std::string> present = read_file(file);
  if (present && !present->empty() && !is_ours(*present))
    throw Storage_error(file.string() + ": another program's file, left as it is");
  const fs::path draft = file.string() + ".draft";
  static_cast<void>(unlink(draft.c_str()));
  const Descriptor opened(open(draft.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR));
  if (opened.number < 0) fail(file, "cannot be written");
  errno = ENOSPC;  // of a write that ends early
  if (!write_all(opened.number, text) || rename(draft.c_str(), file.c_str()) != 0) {
    const int error = errno;
    static_cast<void>(unlink(draft.c_str()));
    errno = error;
    fail(file, "cannot be written");
  }
  static_cast<void>(fsync(folder.number));  // the name; where it fails, the file before it is whole, too
}

std::string to_text(const Last& last) {
  std::string text;
  if (last.play) text += to_json(*last.play) + '\n';
  if (last.volume) text += to_json(*last.volume) + '\n';
  return text;
}

std::optional<Last> parse_last(std::string_view text) {
  Last last;
  try {
    while (!text.empty()) {
      const size_t end = std::min(text.find('\n'), text.size());
      const Order order = parse_order(text.substr(0, end));
      text.remove_prefix(std::min(end + 1, text.size()));
      if (const auto* const play = std::get_if<Play>(&order))
        last.play = *play;
      else if (const auto* const volume = std::get_if<Volume>(&order))
        last.volume = *volume;
      else
        return std::nullopt;
    }
  } catch (const Order_error&) {
    return std::nullopt;
  }
  return last;
}

}  // namespace remote
