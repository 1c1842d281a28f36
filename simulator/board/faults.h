// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sim {

/// What can go wrong on the wire during one transaction (one chip-select period).
enum class Bus_fault : uint8_t {
  none,
  zeros,       ///< the host reads 0x00 in every byte
  ones,        ///< the host reads 0xFF in every byte
  flip_bit,    ///< the host reads one bit inverted (`Fault::bit`)
  shift,       ///< the host reads every byte one place late, 0x00 first
  reset_chip,  ///< brown-out: the chip loses all state and waits for POWER_UP; the transaction does not reach it
  never_done,  ///< the controller never shows DONE; a host that waits for it is stopped by the board
};

/// One fault of the board. It changes what it is set on and nothing else.
///
/// When: by command (`command`, `occurrence`) or by transaction (`transaction`), never both. Both are counted from the
/// moment the fault is set. The command RD_REPLY means single reads of status or reply.
///
/// What: one or more of the other members. Those that change what is read apply to every read until the next command;
/// set on a single read, they apply to that read only (but `cts_low_reads` always counts its reads).
struct Fault {
  std::string command{};     ///< the chip's name of the command ("DAB_GET_TIME"), or its opcode ("0xBC")
  uint32_t occurrence = 0;   ///< 1 = the next such command, 2 = the one after it ...; 0 = every one
  uint64_t transaction = 0;  ///< 1 = the next transaction on the bus, 2 = the one after it ...; 0 = not by transaction

  bool cts_never = false;                          ///< no read shows clear-to-send until the next command
  uint32_t cts_low_reads = 0;                      ///< so many reads do not show clear-to-send
  std::array<uint8_t, 4> status_bits{};            ///< bits set in STATUS0 to STATUS3 on top of the live ones
  std::optional<std::array<uint8_t, 4>> status{};  ///< STATUS0 to STATUS3 read like this instead
  std::optional<std::vector<uint8_t>> reply{};     ///< the reply from its byte 4 on reads like this instead
  bool property_not_kept = false;                  ///< SET_PROPERTY succeeds but the old value stays
  bool stc_never = false;                          ///< the tune or seek never completes

  Bus_fault bus = Bus_fault::none;
  std::optional<uint32_t> bit{};  ///< for `flip_bit`: its place in the transaction; 0 is bit 7 of the first byte
};

/// The fault's trigger, for messages: "DAB_GET_TIME, occurrence 2".
std::string describe(const Fault& fault);

/// The faults set on a board, and which of them apply to the transaction in progress.
class Faults {
 public:
  /// @throws std::invalid_argument when the fault names no known command, not exactly one trigger, or no effect, or
  /// when its members do not go together.
  void set(const Fault& fault);
  void clear();

  /// Faults that were set and never triggered, as `describe` names them.
  std::vector<std::string> never_triggered() const;

  /// The opcode of a new transaction has gone over the wire: chooses the faults that apply to it.
  /// @return the text for the trace, empty when no fault was triggered.
  std::string begin(uint8_t opcode);

  /// The transaction is over.
  void end() { on_bus_ = false; }

  /// What the host reads in place of STATUS`number`, which is `live` on the healthy chip.
  uint8_t status_byte(unsigned number, uint8_t live) const;
  /// What the host reads in place of the response (from reply byte 4 on); null: the healthy one.
  const std::vector<uint8_t>* reply() const;
  bool property_not_kept() const;
  bool stc_never() const;
  /// The fault on the wire of this transaction; null: none.
  const Fault* on_bus() const { return on_bus_ ? &bus_fault_ : nullptr; }

 private:
  struct Entry {
    Fault fault;
    uint8_t opcode = 0;
    uint64_t seen = 0;  // matching commands, or transactions, since it was set
    bool triggered = false;
  };

  std::vector<Entry> entries_;
  std::vector<Fault> on_command_;  // in force until the next command
  std::vector<Fault> on_read_;     // in force during this read only
  Fault bus_fault_;
  bool on_bus_ = false;
  bool cts_never_ = false;
  uint32_t cts_low_reads_ = 0;  // still to come
  bool cts_low_ = false;        // in this read
};

}  // namespace sim
