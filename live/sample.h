// SPDX-License-Identifier: GPL-3.0-or-later
// The received signal at one moment.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>

#include "live/board.h"

namespace live {

/// The chip runs no application: it is in reset, or in its bootloader.
struct Not_booted {
  bool operator==(const Not_booted&) const = default;
};

/// DAB_DIGRAD_STATUS, with signs applied.
struct Dab_signal {
  uint8_t index = 0;        ///< in the chip's frequency list
  uint32_t frequency = 0;   ///< kHz; 0 before the first tune
  int rssi = 0;             ///< dBµV
  int snr = 0;              ///< dB
  uint8_t fic_quality = 0;  ///< 0 to 100
  uint8_t cnr = 0;          ///< dB
  /// Errors in fast information blocks since the sample before; nothing where that was no sample of the same tuning.
  std::optional<uint16_t> fib_errors{};
  bool acquired = false, valid = false, muted = false;

  bool operator==(const Dab_signal&) const = default;
};

/// FM_RSQ_STATUS, with signs applied.
struct Fm_signal {
  uint32_t frequency = 0;  ///< kHz
  int rssi = 0;            ///< dBµV
  int snr = 0;             ///< dB
  uint8_t multipath = 0;
  int frequency_offset = 0;
  bool valid = false;

  bool operator==(const Fm_signal&) const = default;
};

struct Sample {
  std::chrono::steady_clock::time_point moment{};
  std::chrono::system_clock::time_point time{};
  std::variant<Failure, Not_booted, Dab_signal, Fm_signal> reading{};
};

/// Takes samples. It remembers which application answered last, so that a sample costs one command; when that command
/// fails, it asks the chip what it runs.
class Sampler {
 public:
  Sample take();

 private:
  enum class Application { unknown, dab, fm };

  Outcome read(Sample& sample);
  Outcome read_dab(Sample& sample);
  Outcome read_fm(Sample& sample);
  Outcome identify();

  Application application_ = Application::unknown;
  struct Fib_count {
    uint32_t frequency;  // kHz
    uint16_t errors;     // as the chip counts them: modulo 2^16
  };
  std::optional<Fib_count> last_fib_count_;
};

/// One line of JSON without a line end, in the form that kelvo-watch(1) documents.
std::string to_json(const Sample& sample);

}  // namespace live
