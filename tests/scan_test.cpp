// SPDX-License-Identifier: GPL-3.0-or-later
// The full scan: what is visited, printed and stored, the prompts, the file.
#include <filesystem>
#include <iostream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "scan/ensemble_list.h"
#include "tests/support.h"

namespace {

const std::string prompts =
    "Please indicate the location of the Quillet (the antenna location) during the scan:\n"
    "Street number (optional): \nStreet name: \nPostal code: \nCity: \nCountry: \n"
    "Indoor or outdoor. If indoor, please indicate the building level (0 = ground floor) as well: \n"
    "GPS latitude (optional): \nGPS longitude (optional): \nThank you\n";

// A board with three frequencies: nothing, an ensemble with one service, a signal too weak.
class Scan : public Dab_running {
 protected:
  Scan() : directory(testing::TempDir() + "kelvo-scan-" + std::to_string(getpid())) {
    std::filesystem::create_directory(directory);
    std::filesystem::current_path(directory);
    board.air().noise = {.rssi = 2};
    board.air().frequencies = {174928, 176640, 178352};
    sim::Component component{.tmid = 0, .id = 12};
    sim::Service service{.id = 0x43B5, .label = "Aurora", .components = {component}};
    board.air().ensembles = {
        {.index = 1, .signal = {.rssi = 40, .fic_quality = 30}, .lists = {{.version = 7, .services = {service}}}},
        {.index = 2, .signal = {.rssi = 9, .fic_quality = 29}, .lists = {{.version = 8, .services = {service}}}},
    };
    board.air().time = sim::Date_time{2026, 3, 7, 9, 5, 0};
  }
  ~Scan() override {
    std::filesystem::current_path("/");
    std::filesystem::remove_all(directory);
  }
  // Scans while `answers` stand on standard input.
  std::string scan(
      const std::string& answers, const std::function<void()>& run = [] { dab_full_scan(); }) {
    std::istringstream input(answers);
    std::streambuf* const terminal = std::cin.rdbuf(input.rdbuf());
    std::cin.clear();
    const std::string text = output_of(run);
    std::cin.rdbuf(terminal);
    return text;
  }
  const std::string directory;
};

const std::string answers = "12a\nMain Street\n4711\nSpringfield\nUtopia\nindoor, 2\n47.37\n8.54\n";

TEST_F(Scan, VisitsStoresAndWritesEveryFrequency) {
  EXPECT_EQ(scan(answers),
            "Scanning frequency: 174928 kHz. Found signal with RSSI: --\n"
            "Scanning frequency: 176640 kHz. Found signal with RSSI: " +
                std::string(40, '-') +
                "\n"
                "Found ensemble!\n"
                "Scanning frequency: 178352 kHz. Found signal with RSSI: ---------\n" +
                prompts);
  const std::string file = read_file("ensemblescan_4711_Springfield.json");
  const std::string page = read_file(SOURCE_DIR "/docs/scan-file.md");
  const size_t start = page.find("```\n{\"content\"") + 4;
  EXPECT_EQ(file.substr(0, page.rfind("```") - start), page.substr(start, page.rfind("```") - start));
  EXPECT_TRUE(file.ends_with("\"fast_dect\": 0\n}}\n]}"));

  const auto json = nlohmann::json::parse(file);
  ASSERT_EQ(json["ensembleList"].size(), 41U);
  EXPECT_EQ(json["ensembleList"][1]["DigitalServiceList"]["ServiceList"][0]["Label"], "Aurora          ");
  EXPECT_EQ(json["ensembleList"][2]["DigradStatus"]["rssi"], 9);
  EXPECT_FALSE(json["ensembleList"][2].contains("DigitalServiceList"));
  EXPECT_EQ(json["ensembleList"][40]["DigradStatus"]["tune_freq"], 0);
}

TEST_F(Scan, FailuresStoreNothingOrNothingMore) {
  for (const uint32_t tune : {1U, 3U})
    board.fault({.command = "DAB_TUNE_FREQ", .occurrence = tune, .status_bits = {0x40}});
  board.fault({.command = "GET_DIGITAL_SERVICE_LIST", .status_bits = {0x40}});
  board.fault({.command = "DAB_GET_TIME", .cts_never = true});
  Ensemble_list list;
  const std::string text = scan("", [&] { EXPECT_EQ(list.rescan(), 0); });
  // The bar shows the work record as it was left: nothing read yet, and later what the frequency before it gave.
  EXPECT_TRUE(text.starts_with("Scanning frequency: 174928 kHz. Found signal with RSSI: \nScanning")) << text;
  EXPECT_NE(text.find("Found ensemble!\nScanning frequency: 178352 kHz. Found signal with RSSI: " +
                      std::string(40, '-') + "\n"),
            std::string::npos);
  EXPECT_EQ(list.service_list[0].data, nullptr);
  EXPECT_NE(list.service_list[1].data, nullptr);
  EXPECT_EQ(list.service_list[1].num_services + list.service_list[1].size, 0);
  EXPECT_EQ(list.ensemble_time[1].year, 0);
  EXPECT_EQ(list.digrad_status[1].rssi, 40);
  EXPECT_EQ(list.service_list[2].data, nullptr);
  EXPECT_EQ(list.filename, "ensemblescan__.json");
}

TEST_F(Scan, ListAndTimeOfOneFrequencyDoNotShowUpAtTheNext) {
  Ensemble_list list;
  scan(answers, [&] { list.rescan(); });
  EXPECT_EQ(list.service_list[1].num_services, 1);
  EXPECT_EQ(list.service_list[1].version, 7);
  EXPECT_EQ(list.ensemble_time[1].year, 2026);
  EXPECT_EQ(list.service_list[2].num_services, 0);
  EXPECT_EQ(list.ensemble_time[2].year, 0);
}

TEST_F(Scan, ChipsListDecidesHowMuchIsVisitedUpToTheCapacity) {
  board.air().ensembles.clear();
  const struct { size_t listed, visited; } cases[] = {{0, 0}, {1, 1}, {41, 41}, {42, 41}, {255, 41}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.listed);
    board.air().frequencies.assign(c.listed, 200000);
    board.clear_record();
    const std::string text = scan(answers);
    EXPECT_TRUE(text.ends_with(prompts));
    const auto& commands = board.totals().commands;
    EXPECT_EQ(commands.contains("DAB_TUNE_FREQ") ? commands.at("DAB_TUNE_FREQ") : 0, c.visited);
    EXPECT_EQ(nlohmann::json::parse(read_file("ensemblescan_4711_Springfield.json"))["ensembleList"].size(), 41U);
  }
  board.fault({.command = "DAB_GET_FREQ_LIST", .occurrence = 2, .status_bits = {0x40}});
  EXPECT_TRUE(scan(answers).starts_with("Scanning frequency: 0 kHz. Found"));
}

TEST_F(Scan, WaitsAreTheFixedOnesAndNoMore) {
  scan(answers);
  // Three tunes of a little under 200 or 300 ms, and the polls until the one list is announced and seen again.
  const Waits tune_and_poll{100ms, 100ms, 100ms, 100ms, 100ms, 200ms, 200ms, 200ms, 200ms, 100ms, 100ms};
  EXPECT_EQ(board.waits(), tune_and_poll);
}

TEST_F(Scan, ServicesAndTimeStandInTheFileEachForItself) {
  board.fault({.command = "DAB_GET_TIME", .cts_never = true});
  scan("\n\nno\ntime\n");
  const std::string no_time = read_file("ensemblescan_no_time.json");
  EXPECT_NE(no_time.find("}]\n}]\n}}\n,{\n\"EnsemleNo\": 2,\n"), std::string::npos);
  board.clear_faults();
  board.fault({.command = "GET_DIGITAL_SERVICE_LIST", .status_bits = {0x40}});
  scan("\n\nno\nservices\n");
  const std::string no_services = read_file("ensemblescan_no_services.json");
  EXPECT_NE(no_services.find("\"fast_dect\": 0\n},\n\"ensembleTime\": {\n\"year\": 2026,\n"), std::string::npos);
}

// Fails as memory does that runs out, at the second ensemble's time.
class Fail_late : public sim::Board_log {
 public:
  void transaction(const sim::Transaction& done) override {
    if (done.command == "DAB_GET_TIME" && ++seen_ == 2) throw std::bad_alloc();
  }

 private:
  int seen_ = 0;
};

TEST_F(Scan, ExceptionPassesAndTheStoredListsAreFreed) {
  board.air().ensembles[1].signal.fic_quality = 90;
  Fail_late fail;
  board.add_log(fail);
  output_of([] { EXPECT_THROW(dab_full_scan(), std::bad_alloc); });
  board.remove_log(fail);
}

TEST_F(Scan, AnswersGoIntoTheFileAsTyped) {
  EXPECT_EQ(scan("\n a\"b\\c \n4711").substr(0, 8), "Scanning");  // ends in the middle of the third answer
  const std::string file = read_file("ensemblescan_4711_.json");
  EXPECT_NE(file.find("\"StreetNo\": \"\",\n\"Street\": \" a\"b\\c \",\n\"PostalCode\": \"4711\",\n\"City\": \"\",\n"),
            std::string::npos);
}

TEST_F(Scan, FileIsReplacedWholeOrNotWritten) {
  write_file("ensemblescan_1_x.json", std::string(1000000, 'o'));
  scan("\n\n1\nx\n");
  const std::string file = read_file("ensemblescan_1_x.json");
  EXPECT_TRUE(file.ends_with("]}")) << file.size();
  EXPECT_EQ(nlohmann::json::parse(file)["content"], "FullStationScan");
  EXPECT_TRUE(scan("\n\n1\nno/such\n").ends_with("Thank you\n"));  // in silence
  std::filesystem::create_directory("ensemblescan_d");
  scan("\n\nd/e\nf\n");
  EXPECT_TRUE(std::filesystem::exists("ensemblescan_d/e_f.json"));
}

TEST(Ensembles, StoreOnlyWhatFits) {
  Ensemble_list list;
  std::vector<uint8_t> entries(5000, 0xA1);
  const Si468x_digital_service_list huge{.version = 1, .num_services = 3, .size = 5000, .data = entries.data()};
  EXPECT_EQ(list.add_ensemble(40, huge, {}, {}), 0);
  EXPECT_EQ(list.service_list[40].size, 4096);
  EXPECT_EQ(list.add_ensemble(41, huge, {}, {}), 0);  // beyond the last entry
  const uint8_t* const block = list.service_list[40].data;
  EXPECT_EQ(list.add_ensemble(40, {.version = 2}, {}, {}), 0);
  EXPECT_EQ(list.service_list[40].data, block);
  EXPECT_EQ(list.service_list[40].size, 0);
}

}  // namespace
