// SPDX-License-Identifier: GPL-3.0-or-later
// The simulated board.
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "simulator/board/board_settings.h"
#include "simulator/board/board_state.h"
#include "simulator/board/fault_layer.h"
#include "simulator/board/faults.h"
#include "simulator/board/observers.h"
#include "simulator/board/recorder.h"
#include "simulator/board/spi_controller.h"
#include "simulator/board/spi_wire.h"
#include "simulator/broadcast/broadcast.h"
#include "simulator/chip/chip.h"
#include "simulator/chip/clock.h"
#include "trace/totals.h"

namespace sim {

/// A Raspberry Pi's SPI0 and GPIO pins with the receiver chip behind them. It owns everything below it, its broadcast
/// included.
class Board {
 public:
  /// A board that was just switched on: the chip is held in reset.
  explicit Board(Broadcast broadcast = default_broadcast(), const Board_settings& settings = {});
  Board(const Board&) = delete;
  Board& operator=(const Board&) = delete;
  ~Board() = default;

  // What happened so far ---------------------------------------------------------------------------------------------

  /// Every transaction's bytes as the host sent and read them, every wait in the order of the calls.
  const Frames& sent() const { return recorder_.sent(); }
  const Frames& received() const { return recorder_.received(); }
  const Waits& waits() const { return recorder_.waits(); }
  const std::vector<std::string>& mistakes() const { return recorder_.mistakes(); }  ///< set-up faults of the host
  const std::vector<std::string>& refusals() const { return recorder_.refusals(); }  ///< commands the chip refused
  const trace::Totals& totals() const { return recorder_.totals(); }
  void clear_record() { recorder_.clear(); }
  /// Off: bytes and waits are not kept; mistakes, refusals and totals always are.
  void set_recording(bool on) { recorder_.set_keeping(on); }
  /// From now on `observer` is called on every event; it belongs to the caller and must outlive the board or be
  /// removed.
  void add_observer(Observer& observer) { observers_.add(observer); }
  void remove_observer(Observer& observer) { observers_.remove(observer); }

  // State ------------------------------------------------------------------------------------------------------------

  Time now() const { return clock_.now(); }
  bool chip_select_active() const { return controller_.transfer_active(); }
  bool pin(unsigned number) const;               ///< level of an output; an input reads its pull
  unsigned pin_function(unsigned number) const;  ///< BCM2835_GPIO_FSEL_...
  unsigned pin_pull(unsigned number) const;      ///< BCM2835_GPIO_PUD_...
  bool spi_running() const { return wire_.running(); }
  /// The state that outlives the program; `restore` continues from it, with anything in progress completed.
  Board_state state() const;
  void restore(const Board_state& state);

  // The back door ----------------------------------------------------------------------------------------------------

  /// What is on the air; changes take effect with the next command.
  Broadcast& air() { return broadcast_; }
  Board_settings& settings() { return settings_; }
  /// @throws std::invalid_argument
  void fault(const Fault& fault) { fault_layer_.faults().set(fault); }
  void use_faults(Faults faults) { fault_layer_.use(std::move(faults)); }
  void clear_faults() { use_faults({}); }
  const Faults& faults() const { return fault_layer_.faults(); }
  std::vector<std::string> never_triggered() const { return faults().never_triggered(); }
  void set_realtime(bool on) { clock_.set_realtime(on); }
  void set_receive_delay(unsigned reads) { controller_.set_receive_delay(reads); }

  // The host's side, for the bcm2835 functions or a kernel -----------------------------------------------------------

  bool open();  ///< maps the registers
  void close();
  bool spi_begin();
  void spi_end();
  void set_bit_order(bool msb_first) { wire_.set_bit_order(msb_first); }
  void set_pin_function(unsigned number, unsigned function);
  void set_pin_pull(unsigned number, unsigned pull);
  void write_pin(unsigned number, bool level);
  /// Makes the pin an output that begins with this level.
  void drive_pin(unsigned number, bool level);
  /// From now on as a kernel's drivers leave the board before any program starts: SPI0 runs and has its pins.
  void start_drivers();
  /// One register of SPI0, by its byte offset. @throws Hang when the host keeps reading and no byte moves.
  uint32_t read_register(uint32_t offset);
  void write_register(uint32_t offset, uint32_t value);
  void wait(Time span);

 private:
  bool valid_pin(unsigned number, const char* what);
  bool reset_line() const;
  void mistake(const std::string& what);

  Broadcast broadcast_;
  Board_settings settings_;
  Clock clock_;
  Recorder recorder_;
  Observers observers_;
  Chip chip_;
  Fault_layer fault_layer_;
  Spi_wire wire_;
  Spi_controller controller_;
  std::array<Pin_state, 54> pins_{};
  bool open_ = false;
};

}  // namespace sim
