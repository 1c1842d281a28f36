// SPDX-License-Identifier: GPL-3.0-or-later
// The received signal at one moment.
#include "live/sample.h"

#include "si468x/si468x.h"

namespace live {

namespace {

// The chip reports signed measures as their low 8 bits.
int with_sign(uint8_t byte) { return static_cast<int8_t>(byte); }

// kHz; 0 where there is no reading, before the first tune, and in the zeros of a chip that has lost its firmware.
uint32_t frequency(const Sample& sample) {
  if (const auto* const dab = std::get_if<Dab_signal>(&sample.reading)) return dab->frequency;
  const auto* const fm = std::get_if<Fm_signal>(&sample.reading);
  return fm != nullptr ? fm->frequency : 0;
}

}  // namespace

Outcome Sampler::read_dab(Sample& sample) {
  Si468x_DAB_digrad_status status;
  if (Outcome failed = outcome("DAB_DIGRAD_STATUS", status.get_new_status())) return failed;
  Dab_signal signal{.index = status.tune_index,
                    .frequency = status.tune_freq,
                    .rssi = with_sign(status.rssi),
                    .snr = with_sign(status.snr),
                    .fic_quality = status.FIC_quality,
                    .cnr = status.cnr,
                    .acquired = status.acq != 0,
                    .valid = status.valid != 0,
                    .muted = status.hardmute != 0};
  if (last_fib_count_ && last_fib_count_->frequency == signal.frequency)
    signal.fib_errors = static_cast<uint16_t>(status.FIB_error_count - last_fib_count_->errors);
  last_fib_count_ = {.frequency = signal.frequency, .errors = status.FIB_error_count};
  sample.reading = signal;
  return std::nullopt;
}

Outcome Sampler::read_fm(Sample& sample) {
  Si468x_FM_rsq_status status;
  if (Outcome failed = outcome("FM_RSQ_STATUS", status.get_new_status())) return failed;
  sample.reading = Fm_signal{.frequency = 10U * status.frequency,
                             .rssi = with_sign(status.rssi),
                             .snr = with_sign(status.snr),
                             .multipath = status.multipath,
                             .frequency_offset = with_sign(status.frequency_offset),
                             .valid = status.valid != 0};
  return std::nullopt;
}

// Asks the chip which application it runs; unknown: none.
Outcome Sampler::identify() {
  Si468x_chip_info chip;
  application_ = Application::unknown;
  if (Outcome failed = outcome("RD_REPLY", chip.get_status())) return failed;
  if (chip.powerup_state != Si468x_application_runs) return std::nullopt;
  if (Outcome failed = outcome("GET_SYS_STATE", chip.get_sys_state())) return failed;
  if (chip.image == Si468x_dab_image) application_ = Application::dab;
  if (chip.image == Si468x_fm_image) application_ = Application::fm;
  return std::nullopt;
}

Outcome Sampler::read(Sample& sample) {
  const Application expected = application_;
  Outcome failed;
  if (expected == Application::dab) failed = read_dab(sample);
  if (expected == Application::fm) failed = read_fm(sample);
  if (frequency(sample) != 0) return std::nullopt;
  if (Outcome silent = identify()) return silent;
  if (application_ == Application::unknown) {
    sample.reading = Not_booted{};
    return std::nullopt;
  }
  if (application_ == expected) return failed;
  return application_ == Application::dab ? read_dab(sample) : read_fm(sample);
}

Sample Sampler::take() {
  Sample sample;
  const Outcome failed = with_board([&] { return read(sample); });
  sample.moment = std::chrono::steady_clock::now();
  sample.time = std::chrono::system_clock::now();
  if (failed) sample.reading = *failed;
  if (!std::holds_alternative<Dab_signal>(sample.reading)) last_fib_count_.reset();
  return sample;
}

}  // namespace live
