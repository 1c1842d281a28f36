// SPDX-License-Identifier: GPL-3.0-or-later
// The faults of a board: what each changes, and when it is triggered.
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <optional>
#include <set>
#include <string>
#include <tuple>
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
/// `status_bits`, `status` and `reply` of a fault that is set on a single read apply to that read only.
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

/// A fault that is set on a board.
struct Armed_fault {
  Fault fault;
  uint8_t opcode = 0;       ///< of its command
  uint64_t seen = 0;        ///< matching commands, or transactions, since it was set
  bool triggered = false;   ///< it has changed something
  bool overridden = false;  ///< another fault changed the same instead
};

/// The faults that are set on a board.
class Faults {
 public:
  /// @throws std::invalid_argument when the fault names no known command, not exactly one trigger, or no effect, when
  /// its members do not go together, or when a fault with the same trigger has the same effect.
  void set(const Fault& fault);
  void clear();

  /// Counts a transaction that begins. @return the faults that it triggers; they stay valid until `clear`
  std::vector<Armed_fault*> triggered_by(uint8_t opcode);

  /// The triggers of those that changed nothing, as `describe` gives them.
  std::vector<std::string> never_triggered() const {
    return triggers_of([](const Armed_fault& armed) { return !armed.triggered && !armed.overridden; });
  }
  /// The triggers of those that another fault overrode in a transaction.
  std::vector<std::string> overridden() const {
    return triggers_of([](const Armed_fault& armed) { return armed.overridden; });
  }

 private:
  std::vector<std::string> triggers_of(bool (*chosen)(const Armed_fault&)) const;

  std::deque<Armed_fault> all_;  // which do not move
  // Opcode, occurrence, transaction and effect: each combination belongs to one fault at most.
  std::set<std::tuple<uint8_t, uint32_t, uint64_t, unsigned>> taken_;
};

/// The fault's trigger, for messages: "DAB_GET_TIME, occurrence 2".
std::string describe(const Fault& fault);

}  // namespace sim
