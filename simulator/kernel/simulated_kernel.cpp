// SPDX-License-Identifier: GPL-3.0-or-later
// The device files of a kernel over the simulated board.
#include "simulator/kernel/simulated_kernel.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

#include "simulator/host/environment.h"

namespace sim {

namespace {

constexpr const char* spi_device = "/dev/spidev0.0";
const std::string controller_prefix = "/dev/gpiochip";

// Never destroyed: a program may end in the middle of a call.
Simulated_kernel* kernel = nullptr;

}  // namespace

// A Raspberry Pi has further controllers, for lines that are not on its connector.
Simulated_kernel::Simulated_kernel(const Kernel_settings& settings)
    : settings_(settings),
      shared_(settings.board.empty() ? std::nullopt : std::make_optional<Shared_board>(settings.board)),
      spidev_(settings, shared_ ? &*shared_ : nullptr) {
  const auto path = [](uint32_t number) { return controller_prefix + std::to_string(number); };
  Gpio_controller pins(settings.label, 54,
                       {.to_board = true,
                        .reset_line = settings.line,
                        .shared = shared_ ? &*shared_ : nullptr,
                        .keeps_levels = settings.persist == "Y"});
  if (!settings.busy.empty()) pins.occupy(settings.line, settings.busy);
  controllers_.emplace(path(settings.chip), std::move(pins));
  if (settings.chip != 0) controllers_.emplace(path(0), Gpio_controller("brcmvirt-gpio", 2, {}));
  controllers_.emplace(path(settings.chip + 1), Gpio_controller("raspberrypi-exp-gpio", 8, {}));
}

bool Simulated_kernel::is_device(const std::string& path) {
  return path == spi_device || path.starts_with(controller_prefix);
}

int Simulated_kernel::access(const std::string& path) const {
  const Board_settings& board = current_board().settings();
  const bool is_spi = path == spi_device;
  if (is_spi ? !board.spi_enabled : !controllers_.contains(path)) return ENOENT;
  return !board.registers || (!is_spi && settings_.gpio_denied != 0) ? EACCES : 0;
}

// The descriptor is that of a file: of the one that the programs of a board lock, or of an unnamed one.
int Simulated_kernel::open(const std::string& path) {
  const auto found = controllers_.find(path);
  if (files_.empty() && !open_board()) {
    errno = EBUSY;
    return -1;
  }
  Gpio_controller* const controller = found != controllers_.end() ? &found->second : nullptr;
  const bool shared = controller == nullptr && !settings_.spidev.empty();
  const int descriptor = shared ? ::open(settings_.spidev.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)
                                : memfd_create("device", MFD_CLOEXEC);
  if (descriptor < 0) return -1;
  files_[descriptor] = {.controller = controller};
  current_board().start_drivers();
  return descriptor;
}

int Simulated_kernel::control(int descriptor, unsigned long request, void* argument) {
  const Open_file& file = files_.at(descriptor);
  if (file.controller == nullptr) return spidev_.control(request, argument);
  if (!file.is_line) return control_controller(*file.controller, request, argument);
  if (request != GPIO_V2_LINE_SET_CONFIG_IOCTL) return -EINVAL;
  return file.controller->configure_line(file.line, *static_cast<gpio_v2_line_config*>(argument));
}

int Simulated_kernel::control_controller(Gpio_controller& controller, unsigned long request, void* argument) {
  if (request == GPIO_GET_CHIPINFO_IOCTL) {
    controller.read_info(*static_cast<gpiochip_info*>(argument));
    return 0;
  }
  if (request == GPIO_V2_GET_LINEINFO_IOCTL)
    return controller.read_line_info(*static_cast<gpio_v2_line_info*>(argument));
  if (request != GPIO_V2_GET_LINE_IOCTL) return -EINVAL;
  auto& wanted = *static_cast<gpio_v2_line_request*>(argument);
  const int descriptor = ::open("/dev/null", O_RDWR | O_CLOEXEC);
  Open_file& line = files_[descriptor];
  if (const int error = controller.request_line(wanted); error != 0) {
    ::close(descriptor);
    return error;
  }
  line = {.controller = &controller, .is_line = true, .line = wanted.offsets[0]};
  wanted.fd = descriptor;
  return 0;
}

void Simulated_kernel::close(int descriptor) {
  const auto found = files_.find(descriptor);
  if (found->second.is_line) found->second.controller->release_line(found->second.line);
  files_.erase(found);
  if (files_.empty()) close_board();
}

void Simulated_kernel::close_all() {
  while (!files_.empty()) close(files_.begin()->first);
}

void Simulated_kernel::wait(Time span) const {
  current_board().wait(span);
  if (shared_) shared_->wait(span);
}

std::string Simulated_kernel::parameter(const std::string& path) const {
  const std::string module = settings_.label == "pinctrl-rp1" ? "pinctrl_rp1" : "pinctrl_bcm2835";
  const bool exists = path == "/sys/module/" + module + "/parameters/persist_gpio_outputs";
  return exists && settings_.persist != "none" ? settings_.persist + "\n" : "";
}

// The board is created first, so that its state is written after the lines are released.
Simulated_kernel& simulated_kernel() {
  if (kernel == nullptr) {
    static_cast<void>(current_board());
    kernel = new Simulated_kernel(read_kernel_settings());
    std::atexit([] { kernel->close_all(); });
  }
  return *kernel;
}

// The board also closes files while it is created.
void close_in_kernel(int descriptor) {
  if (kernel != nullptr && kernel->has_open(descriptor)) kernel->close(descriptor);
}

}  // namespace sim
