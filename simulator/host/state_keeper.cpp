// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/host/state_keeper.h"

#include <fcntl.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string_view>

#include "simulator/board/state_file.h"
#include "simulator/json/text_file.h"

namespace sim {

namespace {

constexpr std::string_view draft_mark = ".draft-";  // then the process id of the run that writes it

std::string reason(int error) { return std::strerror(error); }

bool is_null_device(const struct stat& file) { return S_ISCHR(file.st_mode) && file.st_rdev == makedev(1, 3); }

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

// @return 0 or an error number
int write_all(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = ::write(descriptor, text.data(), text.size());
    if (written < 0 && errno != EINTR) return errno;
    if (written > 0) text.remove_prefix(static_cast<size_t>(written));
  }
  return 0;
}

}  // namespace

State_keeper::State_keeper(std::string path, std::function<void(const std::string&)> complain)
    : name_(std::move(path)), target_(behind_links(name_)), complain_(std::move(complain)), keeping_(!name_.empty()) {}

void State_keeper::stop(const std::string& fault) {
  keeping_ = false;
  complain_(name_ + ": " + fault);
}

Board_state State_keeper::load() {
  if (!keeping_ || !find_file()) return {};
  if (lock() && !find_file()) return {};  // it may have changed during the wait
  return replaced_ ? read() : Board_state{};
}

// Notes what is there. @return whether it can be read and replaced
bool State_keeper::find_file() {
  constexpr const char* consequence = "; the chip starts in reset and its state is not kept";
  struct stat found {};
  replaced_.reset();
  if (stat(target_.c_str(), &found) != 0) {
    if (errno == ENOENT) return true;
    stop("cannot be opened: " + reason(errno) + consequence);
  } else if (is_null_device(found)) {
    keeping_ = false;
  } else if (!S_ISREG(found.st_mode)) {
    stop(std::string("not a regular file") + consequence);
  } else {
    replaced_ = found;
  }
  return keeping_;
}

bool State_keeper::lock() {
  const int error =
      lock_.acquire(target_ + ".lock", [this] { complain_(name_ + ": waiting for another run that uses this file"); });
  if (error != 0)
    stop("the lock file beside it cannot be used: " + reason(error) + "; what this run changes is not kept");
  else
    remove_drafts_of_killed_runs();
  return error == 0;
}

Board_state State_keeper::read() {
  try {
    return parse_state(read_text(target_), name_);
  } catch (const File_error& error) {
    set_aside(std::string(error.what()) + "; the chip starts in reset");
    return {};
  }
}

// Renames the file to the first of NAME.bad, NAME.bad.2 and so on that is free.
void State_keeper::set_aside(const std::string& fault) {
  constexpr unsigned most_kept = 99;
  if (!keeping_) return complain_(fault);
  for (unsigned number = 1; number <= most_kept; ++number) {
    const std::string suffix = number == 1 ? ".bad" : ".bad." + std::to_string(number);
    const std::string kept = target_ + suffix;
    if (renameat2(AT_FDCWD, target_.c_str(), AT_FDCWD, kept.c_str(), RENAME_NOREPLACE) == 0)
      return complain_(std::string(fault).append("; the file is kept as ").append(kept));
    if (errno != EEXIST) break;
  }
  keeping_ = false;
  complain_(fault + " and its state is not kept: the file cannot be renamed: " + reason(errno));
}

// Called under the lock, so that no other run is writing a draft; the check of the process covers file systems whose
// locks do not reach other machines or containers.
void State_keeper::remove_drafts_of_killed_runs() const {
  const std::filesystem::path target = target_;
  const std::string prefix = target.filename().string().append(draft_mark);
  const std::filesystem::path directory = target.has_parent_path() ? target.parent_path() : ".";
  std::error_code error;  // drafts that cannot be listed or removed do no harm
  for (std::filesystem::directory_iterator entry(directory, error), end; !error && entry != end;
       entry.increment(error)) {
    const std::string name = entry->path().filename().string();
    if (!name.starts_with(prefix)) continue;
    pid_t process = 0;
    std::from_chars(name.data() + prefix.size(), name.data() + name.size(), process);
    if (process <= 0 || name != prefix + std::to_string(process)) continue;
    const bool gone = process == getpid() || (kill(process, 0) != 0 && errno == ESRCH);
    std::error_code ignored;
    if (gone && std::filesystem::is_regular_file(entry->symlink_status(ignored)))
      std::filesystem::remove(entry->path(), ignored);
  }
}

void State_keeper::save(const Board_state& state) {
  if (!keeping_) return;
  if (const int error = write(format_state(state)); error != 0) stop("cannot be written: " + reason(error));
}

// @return 0 or an error number
int State_keeper::write(const std::string& text) {
  struct stat found {};
  if (lstat(target_.c_str(), &found) == 0) replaced_ = found;
  if (replaced_ && !S_ISREG(replaced_->st_mode)) return EEXIST;  // made by somebody else during the run
  const std::string draft = target_ + std::string(draft_mark) + std::to_string(getpid());
  const int descriptor = open(draft.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  if (descriptor < 0) return errno;
  if (replaced_) {  // the owner before the permissions: a change of owner may clear some
    static_cast<void>(
        !fchown(descriptor, replaced_->st_uid, replaced_->st_gid));  // root alone may; others own the file
    static_cast<void>(fchmod(descriptor, replaced_->st_mode & 0777));
  }
  int error = write_all(descriptor, text);
  if (close(descriptor) != 0 && error == 0) error = errno;
  if (error == 0 && std::rename(draft.c_str(), target_.c_str()) != 0) error = errno;
  if (error != 0) unlink(draft.c_str());
  return error;
}

void State_keeper::release() {
  keeping_ = false;
  lock_.release();
}

}  // namespace sim
