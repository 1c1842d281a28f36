// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/host/state_keeper.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <thread>

#include "simulator/board/state_file.h"

namespace sim {

namespace {

namespace fs = std::filesystem;

std::string reason() { return std::strerror(errno); }

// The file behind symbolic links; the last one's target need not exist.
fs::path followed(fs::path path) {
  constexpr int longest_chain = 40;  // as the kernel's
  std::error_code error;
  for (int i = 0; i < longest_chain && fs::is_symlink(path, error); ++i) {
    const fs::path target = fs::read_symlink(path, error);
    if (error) break;
    path = target.is_absolute() ? target : path.parent_path() / target;
  }
  return path;
}

const char* kind_name(fs::file_type type) {
  switch (type) {
    case fs::file_type::directory:
      return "a directory";
    case fs::file_type::socket:
      return "a socket";
    case fs::file_type::fifo:
      return "a FIFO";
    case fs::file_type::symlink:
      return "a symbolic link that leads nowhere";
    default:
      return "a device";
  }
}

bool write_all(int file, const std::string& text) {
  for (size_t at = 0; at < text.size();) {
    const ssize_t written = write(file, text.data() + at, text.size() - at);
    if (written < 0 && errno != EINTR) return false;
    if (written > 0) at += static_cast<size_t>(written);
  }
  return true;
}

}  // namespace

State_keeper::State_keeper(const std::string& path, Complain complain)
    : path_(followed(path).string()), complain_(std::move(complain)) {
  if (path_ == "/dev/null") path_.clear();
  if (!path_.empty() && usable()) lock();
}

State_keeper::~State_keeper() {
  if (lock_ >= 0) close(lock_);
}

bool State_keeper::usable() {
  std::error_code error;
  const fs::file_type type = fs::symlink_status(path_, error).type();
  if (type == fs::file_type::regular || type == fs::file_type::not_found || type == fs::file_type::none) return true;
  complain_(path_ + ": is " + kind_name(type) + "; the board's state is not kept");
  path_.clear();
  return false;
}

void State_keeper::give_up(const std::string& why) {
  complain_(path_ + ": " + why + "; the board's state is not kept");
  writable_ = false;
}

// The lock file stays: a run that removed it could take it from under another that waits for it.
void State_keeper::lock() {
  using namespace std::chrono_literals;
  const std::string name = path_ + ".lock";
  // Not one of the three standard streams, which the program may have been started without.
  constexpr int first_free = 3;
  const int file = open(name.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0666);
  lock_ = file < 0 || file >= first_free ? file : fcntl(file, F_DUPFD_CLOEXEC, first_free);
  if (file >= 0 && file < first_free) close(file);
  if (lock_ < 0) return give_up("the lock " + name + " cannot be opened: " + reason());
  constexpr auto look_every = 20ms;
  constexpr auto patience = 1s;
  for (auto waited = 0ms; waited < patience; waited += look_every) {
    if (flock(lock_, LOCK_EX | LOCK_NB) == 0) return;
    if (errno != EWOULDBLOCK && errno != EINTR) return give_up("cannot be locked: " + reason());
    std::this_thread::sleep_for(look_every);
  }
  complain_(path_ + ": waiting for another run that uses it");
  while (flock(lock_, LOCK_EX) != 0)
    if (errno != EINTR) return give_up("cannot be locked: " + reason());
}

Board_state State_keeper::load() {
  std::error_code error;
  if (path_.empty() || fs::symlink_status(path_, error).type() == fs::file_type::not_found) return {};
  try {
    return parse_state(read_text(path_), path_);
  } catch (const File_error& wrong) {
    std::string kept;
    const std::string what = wrong.what();
    if (!writable_)
      complain_(what + "; the chip starts in reset");
    else if (set_aside(kept))
      complain_(what + "; the chip starts in reset, and the file is kept as " + kept);
    else
      give_up(what.substr(path_.size() + 2) + "; it cannot be renamed: " + reason());
    return {};
  }
}

// Gives the file a name that is not taken: NAME.bad, NAME.bad2 and so on.
bool State_keeper::set_aside(std::string& name) {
  constexpr int most = 1000;
  for (int i = 1; i < most; ++i) {
    name = path_ + ".bad" + (i == 1 ? "" : std::to_string(i));
    if (link(path_.c_str(), name.c_str()) == 0) return unlink(path_.c_str()) == 0;
    if (errno != EEXIST) return false;
  }
  return false;
}

void State_keeper::save(const Board_state& state) {
  if (path_.empty() || !writable_) return;
  // Under the lock a draft that is there was left by a run that was killed.
  const std::string draft = path_ + ".draft";
  unlink(draft.c_str());
  const int file = open(draft.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  struct stat old {};
  bool good = file >= 0;
  if (good && stat(path_.c_str(), &old) == 0) {
    // root may use a file of another user's; whoever may not give it away keeps it.
    static_cast<void>(fchown(file, old.st_uid, old.st_gid));
    good = fchmod(file, old.st_mode & 07777U) == 0;
  }
  good = good && write_all(file, format_state(state));
  if (file >= 0 && close(file) != 0) good = false;
  if (good && rename(draft.c_str(), path_.c_str()) == 0) return;
  const std::string why = reason();
  unlink(draft.c_str());
  give_up("cannot be written: " + why);
}

}  // namespace sim
