// SPDX-License-Identifier: GPL-3.0-or-later
// Compares two parts of the driver with libraries: the split transfer with the bcm2835 library's one-call transfer,
// both on registers in plain memory, and the service list's JSON with RapidJSON and nlohmann.
//
// beside NAME   runs that part once, for callgrind
// beside        measures the time of all of them, for Google Benchmark
#include <bcm2835.h>
#include <benchmark/benchmark.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <valgrind/callgrind.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "si468x/si468x.h"

namespace {

// ---- Transfers ------------------------------------------------------------------------------------------------------

// The registers are always ready: callgrind counts the transfer's own instructions and those of the library's register
// access, which both sides use.
std::array<uint32_t, 8> registers{BCM2835_SPI0_CS_TXD | BCM2835_SPI0_CS_RXD | BCM2835_SPI0_CS_DONE};
std::array<uint8_t, 4096> block{};

void split_transfer() {
  Si468x_SPI_CS_low();
  Si468x_SPI_RW_data_noCS(block.data(), 4);
  Si468x_SPI_RW_data_noCS(block.data() + 4, block.size() - 4);
  Si468x_SPI_CS_high();
}

void one_call_transfer() { bcm2835_spi_transfern(reinterpret_cast<char*>(block.data()), block.size()); }

// ---- JSON -----------------------------------------------------------------------------------------------------------

constexpr uint8_t services = 145;  // with one component each: the most that fit a reply of 4096 bytes

std::vector<uint8_t> list_entries() {
  std::vector<uint8_t> entries;
  for (unsigned i = 0; i < services; ++i) {
    char label[17];
    std::snprintf(label, sizeof label, "Programme %-6u", i);
    for (const unsigned byte : {0x10 + i, 0x43U, 0U, 0U, 10U << 1, 1U, 0U, 0U})
      entries.push_back(static_cast<uint8_t>(byte));
    entries.insert(entries.end(), label, label + 16);
    for (const unsigned byte : {i & 0x3F, 0U, 63U << 2 | 2U, 1U}) entries.push_back(static_cast<uint8_t>(byte));
  }
  return entries;
}

std::vector<uint8_t> entries = list_entries();
const Si468x_digital_service_list list{
    .version = 3, .num_services = services, .size = static_cast<uint16_t>(entries.size()), .data = entries.data()};

// The input of the other writers: decoded services and components.
struct Decoded {
  Si468x_service_data service;
  std::vector<Si468x_DAB_component> components;
};

std::vector<Decoded> decoded_list() {
  std::vector<Decoded> decoded(services);
  for (uint8_t i = 0; i < services; ++i) {
    // The list is complete: nothing can fail.
    static_cast<void>(decoded[i].service.get_service(&list, i));
    decoded[i].components.resize(decoded[i].service.NumberComponents);
    for (uint8_t j = 0; j < decoded[i].service.NumberComponents; ++j)
      static_cast<void>(decoded[i].components[j].get_component(&decoded[i].service, j));
  }
  return decoded;
}

const std::vector<Decoded> decoded = decoded_list();

std::string_view label_of(const Si468x_service_data& service) {
  return {reinterpret_cast<const char*>(service.Label.data()), service.Label.size()};
}

std::string driver_json() {
  std::stringstream ss;
  list.json_print_data(ss);
  return std::move(ss).str();
}

template <typename Writer, size_t length>
void number(Writer& writer, const char (&key)[length], uint32_t value) {
  writer.Key(key, length - 1);
  writer.Uint(value);
}

template <typename Writer>
void write_component(Writer& writer, const Si468x_DAB_component& component, uint32_t component_no) {
  writer.StartObject();
  number(writer, "ComponentNo", component_no);
  number(writer, "comp_ID", component.comp_ID);
  number(writer, "TMID", component.TMID);
  if (component.TMID < 2) number(writer, "SubChId", component.SubChId);
  if (component.TMID == 2) number(writer, "FIDCId", component.FIDCId);
  if (component.TMID == 3) number(writer, "SCId", component.SCId);
  if (component.TMID == 3) number(writer, "DGFlag", component.DGFlag);
  number(writer, "CA_flag", component.CA_flag);
  number(writer, "ps", component.ps);
  number(writer, "ASCTyDSCTy", component.ASCTyDSCTy);
  number(writer, "muA_info_valid", component.muA_info_valid);
  writer.EndObject();
}

template <typename Writer>
void write_service(Writer& writer, const Decoded& entry, uint32_t service_no) {
  const Si468x_service_data& service = entry.service;
  writer.StartObject();
  number(writer, "ServiceNo", service_no);
  number(writer, "ServId", service.ServId);
  number(writer, "AudioOrDataFlag", service.AudioOrDataFlag);
  number(writer, "ServRef", service.ServRef);
  number(writer, "CountryID", service.CountryID);
  if (service.AudioOrDataFlag == 1) number(writer, "ECC", service.ECC);
  number(writer, "ProgramType", service.ProgramType);
  number(writer, "LinkingInfo", service.LinkingInfo);
  number(writer, "NumberComponents", service.NumberComponents);
  number(writer, "CAId", service.CAId);
  number(writer, "local", service.local);
  number(writer, "SICharset", service.SICharset);
  writer.Key("Label");
  writer.String(label_of(service).data(), static_cast<rapidjson::SizeType>(label_of(service).size()));
  writer.Key("ComponentList");
  writer.StartArray();
  for (size_t j = 0; j < entry.components.size(); ++j)
    write_component(writer, entry.components[j], static_cast<uint32_t>(j));
  writer.EndArray();
  writer.EndObject();
}

template <typename Writer>
std::string rapidjson_text() {
  rapidjson::StringBuffer buffer;
  Writer writer(buffer);
  if constexpr (requires { writer.SetIndent(' ', 0); }) writer.SetIndent(' ', 0);
  writer.StartObject();
  writer.Key("DigitalServiceList");
  writer.StartObject();
  number(writer, "ServiceListVersion", list.version);
  number(writer, "NumberServices", list.num_services);
  writer.Key("ServiceList");
  writer.StartArray();
  for (size_t i = 0; i < decoded.size(); ++i) write_service(writer, decoded[i], static_cast<uint32_t>(i));
  writer.EndArray();
  writer.EndObject();
  writer.EndObject();
  return {buffer.GetString(), buffer.GetSize()};
}

std::string rapidjson_json() { return rapidjson_text<rapidjson::PrettyWriter<rapidjson::StringBuffer>>(); }
std::string rapidjson_compact_json() { return rapidjson_text<rapidjson::Writer<rapidjson::StringBuffer>>(); }

nlohmann::ordered_json component_json(const Si468x_DAB_component& component, size_t component_no) {
  nlohmann::ordered_json json;
  json["ComponentNo"] = component_no;
  json["comp_ID"] = component.comp_ID;
  json["TMID"] = component.TMID;
  if (component.TMID < 2) json["SubChId"] = component.SubChId;
  if (component.TMID == 2) json["FIDCId"] = component.FIDCId;
  if (component.TMID == 3) json["SCId"] = component.SCId;
  if (component.TMID == 3) json["DGFlag"] = component.DGFlag;
  json["CA_flag"] = component.CA_flag;
  json["ps"] = component.ps;
  json["ASCTyDSCTy"] = component.ASCTyDSCTy;
  json["muA_info_valid"] = component.muA_info_valid;
  return json;
}

nlohmann::ordered_json service_json(const Decoded& entry, size_t service_no) {
  const Si468x_service_data& service = entry.service;
  nlohmann::ordered_json json;
  json["ServiceNo"] = service_no;
  json["ServId"] = service.ServId;
  json["AudioOrDataFlag"] = service.AudioOrDataFlag;
  json["ServRef"] = service.ServRef;
  json["CountryID"] = service.CountryID;
  if (service.AudioOrDataFlag == 1) json["ECC"] = service.ECC;
  json["ProgramType"] = service.ProgramType;
  json["LinkingInfo"] = service.LinkingInfo;
  json["NumberComponents"] = service.NumberComponents;
  json["CAId"] = service.CAId;
  json["local"] = service.local;
  json["SICharset"] = service.SICharset;
  json["Label"] = label_of(service);
  nlohmann::ordered_json& components = json["ComponentList"] = nlohmann::ordered_json::array();
  for (size_t j = 0; j < entry.components.size(); ++j) components.push_back(component_json(entry.components[j], j));
  return json;
}

std::string nlohmann_json() {
  nlohmann::ordered_json json;
  nlohmann::ordered_json& member = json["DigitalServiceList"];
  member["ServiceListVersion"] = list.version;
  member["NumberServices"] = list.num_services;
  nlohmann::ordered_json& array = member["ServiceList"] = nlohmann::ordered_json::array();
  for (size_t i = 0; i < decoded.size(); ++i) array.push_back(service_json(decoded[i], i));
  return json.dump(0);
}

// The writers break lines at different places (ours puts "},{" on one line), and the compact one not at all.
std::string without_layout(std::string text) {
  std::erase(text, '\n');
  for (size_t at = 0; (at = text.find("\": ", at)) != std::string::npos;) text.erase(at + 2, 1);
  return text;
}

bool texts_agree() {
  const std::string ours = without_layout("{" + driver_json() + "}");
  return ours == without_layout(rapidjson_json()) && ours == rapidjson_compact_json() &&
         ours == without_layout(nlohmann_json());
}

// ---- Both -----------------------------------------------------------------------------------------------------------

struct Piece {
  const char* name;
  void (*work)();
};

template <auto write>
void keep() {
  benchmark::DoNotOptimize(write());
}

constexpr Piece pieces[] = {
    {"split_transfer", split_transfer},
    {"one_call_transfer", one_call_transfer},
    {"driver_json", keep<driver_json>},
    {"rapidjson_json", keep<rapidjson_json>},
    {"rapidjson_compact_json", keep<rapidjson_compact_json>},
    {"nlohmann_json", keep<nlohmann_json>},
};

// Once to warm up, then once counted by callgrind.
void do_counted(void (*work)()) {
  work();
  CALLGRIND_TOGGLE_COLLECT;
  work();
  CALLGRIND_TOGGLE_COLLECT;
}

}  // namespace

int main(int argc, char** argv) {
  bcm2835_spi0 = registers.data();
  if (!texts_agree()) {
    std::fputs("The JSON texts differ in more than their line feeds\n", stderr);
    return EXIT_FAILURE;
  }
  for (const Piece& piece : pieces) {
    if (argc == 2 && std::string_view(argv[1]) == piece.name) {
      do_counted(piece.work);
      return EXIT_SUCCESS;
    }
    benchmark::RegisterBenchmark(piece.name, [work = piece.work](benchmark::State& state) {
      for (auto _ : state) work();
    });
  }
  benchmark::Initialize(&argc, argv);
  return benchmark::RunSpecifiedBenchmarks() == 0 ? EXIT_FAILURE : EXIT_SUCCESS;
}
