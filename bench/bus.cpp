// SPDX-License-Identifier: GPL-3.0-or-later
// Compares the bus cost of each operation with the minimum: its commands, replies and fixed waits on a chip that is
// always ready. Writes the table to standard output; exit status 1 if an operation needs a byte, a transaction or a
// wait more.
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <string>

#include "frontend/audio.h"
#include "frontend/boot.h"
#include "frontend/reports.h"
#include "frontend/tuning.h"
#include "live/sample.h"
#include "scan/ensemble_list.h"
#include "si468x/si468x.h"
#include "simulator/host/environment.h"

namespace {

using namespace std::chrono_literals;
using sim::Time;

// ---- The least cost -------------------------------------------------------------------------------------------------

struct Cost {
  uint64_t bytes = 0;
  uint64_t transactions = 0;
  Time waited{};

  Time on_wire() const { return bytes * Time(1024); }  // 8 bits at 7.8125 MHz
  Time total() const { return on_wire() + waited; }
  bool operator==(const Cost&) const = default;
};

Cost operator+(const Cost& a, const Cost& b) {
  return {a.bytes + b.bytes, a.transactions + b.transactions, a.waited + b.waited};
}
Cost operator*(unsigned times, const Cost& cost) {
  return {times * cost.bytes, times * cost.transactions, times * cost.waited};
}

Cost wait(Time span) { return {.waited = span}; }
const Cost status_read{.bytes = 7, .transactions = 1};

// A command, one poll for clear-to-send, the reply.
Cost command(uint64_t bytes, uint64_t reply = 0) {
  return Cost{bytes, 1} + status_read + (reply == 0 ? Cost{} : Cost{reply, 1});
}

// An image is sent in chunks of 4092 bytes, each with a header of 4 bytes and followed by a status read.
Cost download(unsigned size) {
  const unsigned blocks = (size + 4091) / 4092;
  return command(2) + Cost{.bytes = size} + blocks * (Cost{4, 1} + status_read);
}

Cost boot(unsigned image) {
  return wait(200ms) + wait(50ms) + command(16, 5) + download(5796) + wait(50ms) + download(image) + wait(100ms) +
         command(2, 5);
}

// Waits of a loop that polls immediately and then after each `step`, for something that takes `time`.
unsigned waits_for(Time time, Time step) { return static_cast<unsigned>((time + step - Time(1)) / step); }

// The times of the simulated chip.
constexpr Time tune_time = 180ms;
constexpr Time tune_time_without_signal = 250ms;
constexpr Time list_time = 450ms;  // from the end of the tune
constexpr Time seek_time = 60ms;   // over 1 MHz: down from 87.5 MHz, where the band ends, to 107 MHz

Cost poll(Time time) {
  const unsigned waits = waits_for(time, 100ms);
  return (waits + 1) * status_read + waits * wait(100ms);
}

const Cost digrad_status = command(2, 24);
const Cost first_sample = status_read + command(2, 7) + digrad_status;  // asks what the chip runs
const Cost event_status = command(2, 9);
const Cost time_report = command(2, 12);
const Cost tune = command(6) + poll(tune_time);
const Cost tune_without_signal = command(6) + poll(tune_time_without_signal);
const Cost property = command(6) + command(4, 7);

// The length of the list is read first.
Cost service_list(unsigned services) { return command(2, 7) + command(2, 13 + services * 28); }

// For an ensemble: the polls until the list has arrived, and one more that finds it unchanged.
Cost visit(unsigned services) {
  const Time tuned = waits_for(tune_time, 100ms) * Time(100ms);
  const unsigned waits = waits_for(tune_time + list_time - tuned, 200ms) + 1;
  return tune + digrad_status + (waits + 1) * event_status + waits * wait(200ms) + service_list(services) + time_report;
}

constexpr unsigned band = 41;
constexpr unsigned services = 20;        // of an ensemble, with one component each
constexpr unsigned most_services = 145;  // that fit a reply of 4096 bytes

Cost scan(unsigned ensembles) {
  return command(2, 6) + command(2, 9 + 4 * band) + ensembles * visit(services) +
         (band - ensembles) * (tune_without_signal + digrad_status);
}

// ---- What it costs --------------------------------------------------------------------------------------------------

// The first `ensembles` frequencies have one each.
sim::Broadcast on_air(unsigned ensembles, unsigned services_each) {
  sim::Service_list list{.version = 1, .after = std::chrono::duration_cast<std::chrono::milliseconds>(list_time)};
  for (unsigned i = 0; i < services_each; ++i) {
    const auto subchannel = static_cast<uint16_t>(i % 64);
    list.services.push_back({.id = 0x1000 + i, .label = "Service", .components = {{.tmid = 0, .id = subchannel}}});
  }
  sim::Broadcast air;
  for (unsigned i = 0; i < ensembles; ++i)
    air.ensembles.push_back({.index = static_cast<uint8_t>(i), .signal = {.fic_quality = 100}, .lists = {list}});
  air.time = sim::Date_time{2026, 3, 7, 9, 5, 0};
  air.fm.stations = {{.khz = 107000, .signal = {.valid = true}}};
  return air;
}

double ms(Time time) { return std::chrono::duration<double, std::milli>(time).count(); }

class Table {
 public:
  // The operations print to standard output, which is reserved for the table.
  Table() : out_(fdopen(dup(STDOUT_FILENO), "w")) {
    if (out_ == nullptr || std::freopen("/dev/null", "w", stdout) == nullptr) std::abort();
    std::cin.setstate(std::ios::eofbit);  // a scan's questions get no answers
    std::fputs(
        "| Operation | Bytes | Transactions | Wire, ms | Waits, ms | Total, ms | Least, ms | Ratio |\n"
        "|---|--:|--:|--:|--:|--:|--:|--:|\n",
        out_);
  }
  Table(const Table&) = delete;
  Table& operator=(const Table&) = delete;
  ~Table() { static_cast<void>(std::fclose(out_)); }

  void row(const std::string& name, const Cost& least, const sim::Chip_state& state, const sim::Broadcast& air,
           const std::function<void()>& operation) {
    sim::Board board(air, {.chip = {.always_ready = true}});
    sim::use_board(&board);
    board.set_recording(false);
    board.restore({.chip = state});
    const bool link_up = Si468x_bus_init() == 0;
    board.clear_record();
    const Time start = board.now();
    operation();
    const Time passed = board.now() - start;
    sim::use_board(nullptr);

    const trace::Totals& totals = board.totals();
    const Cost cost{totals.bytes, totals.transactions, totals.waited};
    std::fprintf(out_, "| %s | %llu | %llu | %.3f | %.0f | %.3f | %.3f | %.3f |\n", name.c_str(),
                 static_cast<unsigned long long>(cost.bytes), static_cast<unsigned long long>(cost.transactions),
                 ms(totals.on_wire), ms(cost.waited), ms(passed), ms(least.total()), ms(passed) / ms(least.total()));
    if (cost == least && passed == least.total() && link_up && board.refusals().empty()) return;
    std::fprintf(stderr, "%s: %llu bytes, %llu transactions and %.3f ms would do\n", name.c_str(),
                 static_cast<unsigned long long>(least.bytes), static_cast<unsigned long long>(least.transactions),
                 ms(least.total()));
    all_least_ = false;
  }

  bool all_least() const { return all_least_; }

 private:
  std::FILE* out_;
  bool all_least_ = true;
};

}  // namespace

int main() {
  const sim::Chip_state off{};
  const sim::Chip_state dab{.mode = sim::Mode::dab};
  const sim::Chip_state tuned{.mode = sim::Mode::dab, .dab = {.tuned_index = 0}};
  const sim::Chip_state fm{.mode = sim::Mode::fm};
  const sim::Broadcast air = on_air(1, services);

  Table table;
  table.row("boot, DAB: -b D", boot(521448), off, air, [] { power_up_and_load_fw(1); });
  table.row("boot, FM: -b F", boot(530180), off, air, [] { power_up_and_load_fw(0); });
  table.row("tune: -f", tune + wait(500ms) + digrad_status + wait(200ms), dab, air, [] { tune_freq(0); });
  table.row("tune, nothing there: -f", tune_without_signal + wait(500ms) + 10 * (digrad_status + wait(200ms)), dab, air,
            [] { tune_freq(1); });
  table.row("play: -p -e -c", command(12), tuned, air, [] { play_station(0x1000, 0); });
  table.row("volume: -l", property, tuned, air, [] { set_volume(50); });
  table.row("output: -o", 3 * property, tuned, air, [] { set_properties_output(1); });
  table.row("chip information: -i", status_read + command(2, 24) + command(2, 7) + command(2, 13), tuned, air,
            [] { print_chip_info(); });
  table.row("digital radio status: -d", digrad_status, tuned, air, [] { print_digrad_status(); });
  table.row("digital radio status, JSON: -d -j", digrad_status, tuned, air, [] { print_digrad_status_json(); });
  live::Sampler sampler;
  table.row("first sample of kelvo-watch", first_sample, tuned, air, [&] { static_cast<void>(sampler.take()); });
  table.row("sample of kelvo-watch", digrad_status, tuned, air, [&] { static_cast<void>(sampler.take()); });
  table.row("events: -n", event_status, tuned, air, [] { print_event_status(); });
  table.row("time: -t", time_report, tuned, air, [] { print_ensembletime(); });
  table.row("time, JSON: -t -j", time_report, tuned, air, [] { print_ensembletime_json(); });
  for (const unsigned count : {1U, services, most_services})
    table.row("service list: -g, services: " + std::to_string(count), service_list(count), tuned, on_air(1, count),
              [] { print_digital_service_list(); });
  table.row("FM seek over 1 MHz: -x", command(6) + poll(seek_time), fm, air,
            [] { static_cast<void>(Si468x_tune_next_station()); });
  table.row("FM signal quality and RDS: -r", 2 * property + command(2, 23) + command(2, 21), fm, air,
            [] { get_rds_status(); });
  for (const unsigned ensembles : {0U, 1U, 8U, 20U, band})
    table.row("scan: -u, ensembles: " + std::to_string(ensembles), scan(ensembles), dab, on_air(ensembles, services),
              [] {
                Ensemble_list list;
                list.rescan();
              });
  return table.all_least() ? EXIT_SUCCESS : EXIT_FAILURE;
}
