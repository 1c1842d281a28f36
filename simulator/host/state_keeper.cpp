// SPDX-License-Identifier: GPL-3.0-or-later
// The file that keeps the state of a board while no program has the board open.
#include "simulator/host/state_keeper.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <utility>

#include "lock/board_lock.h"
#include "messages/messages.h"
#include "simulator/board/state_file.h"
#include "simulator/json/text_file.h"

namespace sim {

namespace {

// The file that a path leads to, behind symbolic links; it need not exist. Of a circle any part.
std::string behind_links(const std::string& path) {
  constexpr unsigned most_links = 40;  // as in the kernel
  std::filesystem::path target = path;
  for (unsigned links = 0; links < most_links; ++links) {
    std::error_code no_link;
    const std::filesystem::path next = std::filesystem::read_symlink(target, no_link);
    if (no_link) break;
    target = target.parent_path() / next;
  }
  return target.string();
}

[[noreturn]] void fail(const std::string& file, const std::string& what) {
  throw File_error(file, what + ": " + std::strerror(errno));
}

bool is_same_file(const struct stat& a, const struct stat& b) { return a.st_dev == b.st_dev && a.st_ino == b.st_ino; }

bool is_unchanged(const struct stat& a, const struct stat& b) {
  return is_same_file(a, b) && a.st_size == b.st_size && a.st_mtim.tv_sec == b.st_mtim.tv_sec &&
         a.st_mtim.tv_nsec == b.st_mtim.tv_nsec;
}

}  // namespace

State_keeper::State_keeper(std::string path)
    : name_(std::move(path)), target_(behind_links(name_)), keeping_(!name_.empty() && target_ != "/dev/null") {}

bool State_keeper::open(std::optional<Board_state>& state) {
  if (!keeping_) return true;
  try {
    bool in_use = false;
    while (!lock(in_use)) {
      close();
      if (in_use) return false;
    }
    state = read();
  } catch (const File_error& error) {
    messages::print(std::string(error.what()) + "; the chip starts in reset and its state is not kept");
    close();
    keeping_ = false;
  }
  return true;
}

// Read-only: the file may be another user's, and some systems refuse O_CREAT on it. Without waiting: it may be a FIFO.
// @return false: it is in use, or a program that had the lock before has replaced the file
bool State_keeper::lock(bool& in_use) {
  constexpr int flags = O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
  opened_ = ::open(target_.c_str(), flags);
  if (opened_ < 0 && errno == ENOENT) opened_ = ::open(target_.c_str(), flags | O_CREAT, 0666);
  if (opened_ < 0 || fstat(opened_, &known_) != 0) fail(name_, "cannot be opened");
  if (!S_ISREG(known_.st_mode)) throw File_error(name_, "not a regular file");
  errno = lock::acquire(opened_, name_);
  in_use = errno == EWOULDBLOCK;
  if (errno != 0 && !in_use) fail(name_, "cannot be locked");
  struct stat present {};
  return !in_use && lstat(target_.c_str(), &present) == 0 && is_same_file(present, known_);
}

// A file that is new or empty, or that had to be put aside: the state of a board just switched on.
Board_state State_keeper::read() const {
  const std::string text = read_text(target_);
  try {
    return text.empty() ? Board_state{} : parse_state(text, name_);
  } catch (const File_error& error) {
    if (!begins_as_state(text)) throw;  // another program's file
    const std::string kept = target_ + ".bad";
    if (renameat2(AT_FDCWD, target_.c_str(), AT_FDCWD, kept.c_str(), RENAME_NOREPLACE) != 0)
      fail(name_, "damaged, and cannot be renamed to " + kept);
    messages::print(std::string(error.what()) + "; the chip starts in reset; the file is kept as " + kept);
    return {};
  }
}

void State_keeper::save(const Board_state& state) {
  if (!keeping_ || opened_ < 0) return;
  try {
    write(format_state(state));
  } catch (const File_error& error) {
    messages::print(error.what());
    keeping_ = false;
  }
}

// Under the lock no other run writes a draft: one that exists is a killed run's, or another program's file. The draft
// is locked before it gets the file's name.
void State_keeper::write(const std::string& text) {
  struct stat present {};
  const bool exists = lstat(target_.c_str(), &present) == 0;
  if (exists && !is_unchanged(present, known_))
    throw File_error(name_, "changed by another program; the board's state is not kept any more");
  const std::string draft = target_ + ".draft";
  std::error_code none;
  if (std::filesystem::is_regular_file(std::filesystem::symlink_status(draft, none)) &&
      begins_as_state(read_text(draft)))
    unlink(draft.c_str());
  const int descriptor = ::open(draft.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  if (descriptor < 0) fail(draft, "cannot be written");
  if (exists) {  // the owner before the permissions: a change of owner may clear some
    static_cast<void>(!fchown(descriptor, present.st_uid, present.st_gid));  // root alone may; others own the file
    static_cast<void>(fchmod(descriptor, present.st_mode & 0777));
  }
  errno = ENOSPC;  // of a write that ends early
  if (flock(descriptor, LOCK_EX | LOCK_NB) == 0 &&
      ::write(descriptor, text.data(), text.size()) == static_cast<ssize_t>(text.size()) &&
      fstat(descriptor, &known_) == 0 && std::rename(draft.c_str(), target_.c_str()) == 0) {
    if (written_ >= 0) ::close(written_);
    written_ = descriptor;
    return;
  }
  const int error = errno;
  ::close(descriptor);
  unlink(draft.c_str());
  errno = error;
  fail(name_, "cannot be written");
}

void State_keeper::close() {
  for (int* const descriptor : {&opened_, &written_})
    if (*descriptor >= 0) ::close(std::exchange(*descriptor, -1));
}

}  // namespace sim
