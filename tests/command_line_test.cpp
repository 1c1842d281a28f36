// SPDX-License-Identifier: GPL-3.0-or-later
// The program as a person runs it, on the simulated board.
#include <filesystem>
#include <nlohmann/json.hpp>

#include "tests/support.h"

namespace {

using Command_line = Runs;

const std::string enabled = "SPI bus enabled.\n\n";
const std::string not_booted = "Si468x is not booted up, no firmware loaded. Please use the command boot first.\n\n";
const std::string booted = enabled + "Boot up successful\n\n";

TEST_F(Command_line, ReceivesAStationFromPowerUpToAPlayingService) {
  const Outcome run = kelvo_sim("-b D -f 33 -e 17333 -c 12 -p -l 50 -g", "KELVO_SIM_TRACE=trace");
  EXPECT_EQ(run.status, 0);
  EXPECT_TRUE(run.output.starts_with("Starting...kelvo DAB radio client\nkelvo 1.0.0\nPlease note:\n")) << run.output;
  const std::string words = booted + "Tuned.\n\nSetting volume to 50\n\n";
  ASSERT_TRUE(run.after_banner().starts_with(words + "\"DigitalServiceList\": {\n")) << run.after_banner();
  const auto list = nlohmann::json::parse("{" + run.after_banner().substr(words.size()) + "}")["DigitalServiceList"];
  EXPECT_EQ(list["NumberServices"], list["ServiceList"].size());
  EXPECT_TRUE(std::any_of(list["ServiceList"].begin(), list["ServiceList"].end(),
                          [](const auto& service) { return service["ServId"] == 17333; }));

  const std::string later = kelvo_sim("-n -d -i").output;  // the chip as the first run left it
  EXPECT_NE(later.find("Powerup state:                              3\n"), std::string::npos);
  EXPECT_NE(later.find("Firmware image running the sysstate CMD:    DAB\n"), std::string::npos);
  EXPECT_NE(later.find("Ensemble acquired:                          1\n"), std::string::npos);
  EXPECT_NE(later.find("Tune Freq.:                                 227360\n"), std::string::npos);
  EXPECT_NE(later.find("New service list available:                 1\n"), std::string::npos);
  EXPECT_LT(later.find("Chip info -"), later.find("Digrad status -"));
  EXPECT_LT(later.find("Digrad status -"), later.find("Event status -"));
  EXPECT_NE(kelvo_sim("-n").output.find("New service list available:                 0\n"), std::string::npos);

  EXPECT_EQ(kelvo_sim("-k").after_banner(), enabled + "Si468x shut down\n\n");
  EXPECT_EQ(kelvo_sim("-i -k").after_banner(), enabled + not_booted);
}

TEST_F(Command_line, ActionsRunInOneOrderWhateverTheOptionsOrder) {
  ASSERT_EQ(kelvo_sim("-b D").after_banner(), booted);
  const std::string text = kelvo_sim("-k -t -j -n -d -l 40 -f 33 -o 1").after_banner();
  const char* const order[] = {"Tuned.\n\n",      "Setting volume to 40\n\n", "\"DigradStatus\": {\n",
                               "}Event status -", "\"ensembleTime\": {\n",    "}\nSi468x shut down\n\n"};
  size_t at = 0;
  for (const char* const part : order) {
    EXPECT_GE(text.find(part), at) << part;
    at = text.find(part);
    ASSERT_NE(at, std::string::npos) << part << " in " << text;
  }
}

TEST_F(Command_line, PlayNeedsBothIds) {
  ASSERT_EQ(kelvo_sim("-b D -f 33").after_banner(), booted + "Tuned.\n\n");
  const std::string message = "To play, a service id and component id have to be given\n\n";
  for (const char* const ids : {"-p", "-p -e 17333", "-p -c 12", "-p -e 0 -c 12", "-p -e x -c 12"})
    EXPECT_EQ(kelvo_sim(std::string(ids) + " -l 64").after_banner(),
              enabled + message + "Illegal value for volume. Volume must be an integer between 0 and 63\n\n");
  EXPECT_EQ(kelvo_sim("-p -e 17333 -c 99").after_banner(), enabled + "Could not start service\n\n");
  EXPECT_EQ(kelvo_sim("-p -e ' +017333x' -c 12 -l -1").after_banner(),
            enabled + "Illegal value for volume. Volume must be an integer between 0 and 63\n\n");
}

TEST_F(Command_line, FirstLetterOfTheFirmwareCountsAndOnlyDAndFBoot) {
  for (const char* const letter : {"d", "X", "''"})
    EXPECT_EQ(kelvo_sim(std::string("-k -b ") + letter).after_banner(), enabled + not_booted);
  EXPECT_EQ(kelvo_sim("-b DAB").after_banner(), booted);
  EXPECT_NE(kelvo_sim("-b X -i").output.find("CMD:    DAB\n"), std::string::npos);  // boots nothing, goes on
  EXPECT_NE(kelvo_sim("--boot=FM --chip_info").output.find("CMD:    FMHD\n"), std::string::npos);
}

TEST_F(Command_line, BootloaderAloneIsNotAnApplication) {
  write_file(path("air.json"), R"({"faults": [{"command": "BOOT", "status": "80 00 00 80"}]})");
  EXPECT_EQ(kelvo_sim("-b D", "KELVO_SIM_BROADCAST=air.json").after_banner(),
            enabled + "Boot up failed\n\n" + not_booted);
}

TEST_F(Command_line, OutputRoutingTakesTheLowEightBits) {
  ASSERT_EQ(kelvo_sim("-b D").status, 0);
  const std::pair<const char*, const char*> cases[] = {{"-o 256", "01"}, {"-o 0", "01"}, {"-o 3", "02"}, {"-i", ""}};
  for (const auto& [options, value] : cases) {
    kelvo_sim(options, "KELVO_SIM_TRACE=trace");
    const std::string trace = read_file(path("trace"));
    const size_t written = trace.find("> 13 00 00 08 ");
    EXPECT_EQ(written == std::string::npos ? "" : trace.substr(written + 14, 2), value) << options;
    EXPECT_EQ(trace.find("pin 8 input"), std::string::npos);  // the link stays as it is
  }
}

TEST_F(Command_line, FrequencyIsTheLowEightBitsAndZeroTunesNothing) {
  ASSERT_EQ(kelvo_sim("-b D -f 0 -f 256").after_banner(), booted);
  EXPECT_EQ(kelvo_sim("-f 289").after_banner(), enabled + "Tuned.\n\n");
  EXPECT_EQ(kelvo_sim("-f 4294967329").after_banner(), enabled + "Tuned.\n\n");
  // A failed tune ends the run: no volume, no report, and the chip is not shut down.
  EXPECT_EQ(kelvo_sim("-f 2 -l 3 -i -k").after_banner(), enabled + "Could not tune to frequency\n\n");
  EXPECT_NE(kelvo_sim("-i").output.find("CMD:    DAB\n"), std::string::npos);
}

TEST_F(Command_line, TimeAndFmReports) {
  write_file(path("air.json"), R"({"time": {"year": 2016, "month": 3, "day": 7, "hour": 9, "minute": 5},
    "ensembles": [{"index": 33, "signal": {"fic_quality": 90}}],
    "fm": {"stations": [{"khz": 98700, "signal": {"rssi": 41, "valid": true}}]}})");
  const std::string air = "KELVO_SIM_BROADCAST=air.json";
  EXPECT_EQ(kelvo_sim("-b D -f 33 -t", air).after_banner(), booted + "Tuned.\n\n2016-3-7T9:5:0Z\n");
  EXPECT_TRUE(kelvo_sim("-t -j", air).output.ends_with("\"minute\": 5,\n\"second\": 0\n}\n"));
  const std::string fm = kelvo_sim("-b F -x -r", air).after_banner();
  EXPECT_EQ(fm.size(), booted.size() + 70 + 64) << fm;
  EXPECT_EQ(fm.substr(booted.size() + 15, 12), "00 01 8e 26 ") << fm;  // 9870 × 10 kHz, valid
}

TEST_F(Command_line, FullScanOfTheDefaultBroadcast) {
  std::string air = read_file(SOURCE_DIR "/simulator/broadcasts/default.json");
  write_file(path("air.json"), air.insert(1, R"("time": {"year": 2026, "month": 3, "day": 7, "hour": 9},)"));
  ASSERT_EQ(kelvo_sim("-b D").status, 0);
  const Outcome run = kelvo_sim("-u",
                                "printf '1\\nWay\\n4711\\nSpringfield\\nUtopia\\nroof\\n' |"
                                "KELVO_SIM_BROADCAST=air.json");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.after_banner(), enabled + expected("scan.txt"));
  const std::string file = read_file(path("ensemblescan_4711_Springfield.json"));
  EXPECT_EQ(file, expected("scan.json"));
  EXPECT_EQ(nlohmann::json::parse(file)["ensembleList"][33]["DigitalServiceList"]["NumberServices"], 17);
}

TEST_F(Command_line, ExamplesOfTheLibraryShowWhatTheyPromise) {
  ASSERT_EQ(kelvo_sim("-b D -f 33").after_banner(), booted + "Tuned.\n\n");
  const std::string example = "KELVO_SIM_STATE=state.json '" EXAMPLES_DIR "'/example-";
  const Outcome info = run_shell(example + "component_info-sim", directory);
  EXPECT_EQ(info.status, 0);
  EXPECT_NE(info.output.find("User application no:                        1\n"), std::string::npos) << info.output;
  const Outcome packets = run_shell(example + "data_packets-sim", directory);
  EXPECT_EQ(packets.status, 0);
  EXPECT_NE(packets.output.find("In buffer remaining data:                   1\n"), std::string::npos);
  EXPECT_EQ(run_shell(example + "data_packets-sim", directory).status, 0);  // stopped, so it can be started again
  ASSERT_EQ(kelvo_sim("-k").status, 0);
  EXPECT_EQ(run_shell(example + "component_info-sim", directory).status, 1);
}

TEST_F(Command_line, ArgpAnswersBeforeTheBoardIsTouched) {
  const std::string start = "Starting...kelvo DAB radio client\nkelvo 1.0.0\n";
  const std::string no_board = "KELVO_SIM_BROADCAST=/no/such/file";
  const Outcome help = kelvo_sim("--help", no_board);
  EXPECT_EQ(help.status, 0);
  EXPECT_TRUE(help.output.starts_with(start + "Usage: kelvo-sim [OPTION...]\n            Commands and options"))
      << help.output;
  EXPECT_NE(help.output.find("-c, --component=SERVICE    Component id"), std::string::npos);
  EXPECT_NE(help.output.find("Report bugs to <"), std::string::npos);
  EXPECT_EQ(kelvo_sim("--version", no_board).output, start + "kelvo 1.0.0\n");
  for (const char* const wrong : {"-q", "--no-such", "-f", "33", "-l"}) {
    const Outcome run = kelvo_sim(wrong, no_board);
    EXPECT_EQ(run.status, 64) << wrong;
    EXPECT_TRUE(run.output.starts_with(start)) << run.output;  // not overtaken by the error
    EXPECT_EQ(run.output.find("Please note"), std::string::npos);
  }
}

TEST_F(Command_line, OutputArrivesInTimeAlsoInAPipe) {
  // The program is killed in the middle of the boot: what it has said by then must have left it.
  write_file(path("slow.json"), R"({"faults": [{"command": "HOST_LOAD", "cts_never": true}]})");
  const Outcome run =
      run_shell("KELVO_SIM_REALTIME=1 KELVO_SIM_BROADCAST=slow.json KELVO_SIM_STATE=s timeout 1 '" KELVO_SIM_PATH
                "' -b D | head -n 8",
                directory);
  EXPECT_NE(run.output.find("SPI bus enabled."), std::string::npos) << run.output;
}

TEST_F(Command_line, WithoutAReceiverBoardTheProductionProgramSaysSo) {
  if (std::filesystem::exists("/proc/device-tree/compatible")) GTEST_SKIP() << "there may be a board here";
  const Outcome run = run_shell("'" KELVO_PATH "' -b D -k", directory);
  EXPECT_EQ(run.status, 0);
  EXPECT_NE(run.output.find("to try without a board, run kelvo-sim\n"), std::string::npos);
  EXPECT_TRUE(
      run.output.ends_with("Error initializing SPI bus. Check that SPI is enabled and that /dev/spidev0.0 exists\n"))
      << run.output;
}

TEST_F(Command_line, SpiSwitchedOffInTheSystem) {
  write_file(path("off.json"), R"({"board": {"spi_enabled": false}})");
  EXPECT_EQ(kelvo_sim("-b D", "KELVO_SIM_BROADCAST=off.json").after_banner(),
            "Error initializing SPI bus. Check that SPI is enabled and that /dev/spidev0.0 exists\n");
}

}  // namespace
