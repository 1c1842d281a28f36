// SPDX-License-Identifier: GPL-3.0-or-later
// The file, device or pipe that a trace is written to.
#include "trace/trace_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <ctime>

#include "messages/messages.h"

namespace trace {

namespace {

constexpr std::string_view first_line = "         0.000 trace kelvo\n";  // no other file begins like this

// Makes a regular file empty. @return why it must stay
std::optional<std::string> replace(int descriptor) {
  std::string start(first_line.size(), '\0');
  const ssize_t length = pread(descriptor, start.data(), start.size(), 0);
  if (length < 0) return std::strerror(errno);
  if (length != 0 && start != first_line) return "it exists and is not a trace";
  if (ftruncate(descriptor, 0) != 0) return std::strerror(errno);
  return std::nullopt;
}

// While it exists, a write to a pipe that nobody reads fails and does not end the program.
class Without_sigpipe {
 public:
  Without_sigpipe() {
    sigemptyset(&sigpipe_);
    sigaddset(&sigpipe_, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &sigpipe_, &before_);
  }
  Without_sigpipe(const Without_sigpipe&) = delete;
  Without_sigpipe& operator=(const Without_sigpipe&) = delete;
  ~Without_sigpipe() {
    constexpr timespec at_once{};
    if (sigismember(&before_, SIGPIPE) == 0) sigtimedwait(&sigpipe_, nullptr, &at_once);
    pthread_sigmask(SIG_SETMASK, &before_, nullptr);
  }

 private:
  sigset_t sigpipe_{};
  sigset_t before_{};
};

// @return 0 or an error number
int write_all(int descriptor, std::string_view text) {
  const Without_sigpipe guard;
  while (!text.empty()) {
    const ssize_t written = ::write(descriptor, text.data(), text.size());
    if (written < 0 && errno != EINTR) return errno;
    if (written > 0) text.remove_prefix(static_cast<size_t>(written));
  }
  return 0;
}

}  // namespace

File::~File() {
  if (descriptor_ >= 0) close(descriptor_);
}

std::optional<std::string> File::open(const std::string& path) {
  struct stat file {};
  const bool is_regular = ::stat(path.c_str(), &file) != 0 || S_ISREG(file.st_mode);  // or will be
  const int descriptor =
      ::open(path.c_str(), (is_regular ? O_RDWR | O_CREAT : O_WRONLY) | O_NONBLOCK | O_CLOEXEC, 0666);
  if (descriptor < 0) return errno == ENXIO && S_ISFIFO(file.st_mode) ? "nobody reads this pipe" : std::strerror(errno);
  fcntl(descriptor, F_SETFL, 0);  // only the open must not wait for a reader
  if (is_regular)
    if (std::optional<std::string> reason = replace(descriptor)) {
      close(descriptor);
      return reason;
    }
  descriptor_ = descriptor;
  path_ = path;
  write(std::string(first_line));
  return std::nullopt;
}

void File::write(const std::string& line) {
  if (descriptor_ < 0) return;
  const int error = write_all(descriptor_, line);
  if (error == 0) return;
  close(descriptor_);
  descriptor_ = -1;
  messages::print(path_ + ": the trace ends here: " + std::strerror(error));
}

}  // namespace trace
