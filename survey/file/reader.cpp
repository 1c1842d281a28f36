// SPDX-License-Identifier: GPL-3.0-or-later
// Checks the tree of a scan and turns it into records.
#include "survey/file/reader.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <memory>

#include "survey/file/parser.h"
#include "survey/text/codes.h"
#include "survey/text/text.h"

namespace survey {

namespace {

using Kind = Node::Kind;

constexpr size_t largest_file = size_t{32} << 20;  // bytes
constexpr size_t all_entries = 41;
constexpr size_t most_services = 255;
constexpr size_t most_components = 15;
constexpr size_t label_length = 16;

/// Reads one file's tree; whatever is not as it should be is refused with its line.
class Reader {
 public:
  explicit Reader(const std::string& name) : name_(name) {}

  Scan_file scan(Node document) {
    require(document, Kind::object, "an object");
    const Node& content = member(document, "content", Kind::text);
    if (content.text != "FullStationScan") fail(content, "\"FullStationScan\"");
    Scan scan;
    scan.file = valid_utf8(name_);
    scan.location = location(member(document, "Location", Kind::object));
    std::vector<Node>& entries = array(document, "ensembleList", all_entries);
    if (entries.empty()) fail(member(document, "ensembleList", Kind::array), "at least one entry in \"ensembleList\"");
    if (entries.size() < all_entries) note_gap(entries.size(), all_entries, "entries");
    for (Node& node : entries) {
      scan.entries.push_back(entry(node));
      const auto same = [&](const Entry& other) { return other.index == scan.entries.back().index; };
      if (std::ranges::count_if(scan.entries, same) > 1) fail(node, "an entry with another \"EnsemleNo\"");
    }
    // Behind the others, which keep the order of the document's.
    for (unsigned index = 0; index < all_entries; ++index)
      if (std::ranges::find(scan.entries, index, &Entry::index) == scan.entries.end())
        scan.entries.push_back({.index = index, .frequency = block_frequency(index), .measured = false});
    return {std::move(scan), std::move(document), gaps_};
  }

 private:
  [[noreturn]] void fail(const Node& node, const std::string& expected) const {
    throw File_error(name_, "line " + std::to_string(node.line) + ": expected " + expected);
  }

  void note_gap(size_t found, size_t written, const std::string& what) {
    gaps_ += (gaps_.empty() ? "" : ", ") + std::to_string(found) + " of " + std::to_string(written) + " " + what;
  }

  void require(const Node& node, Kind kind, const std::string& what) const {
    if (node.kind != kind) fail(node, what);
  }

  Node& member(Node& object, std::string_view key, Kind kind) const {
    static constexpr std::array<const char*, 4> kinds = {"a number", "a text", "an object", "an array"};
    Node* const found = object.find(key);
    const std::string in_quotes = "\"" + std::string(key) + "\"";
    if (found == nullptr) fail(object, "the member " + in_quotes + " in this object");
    require(*found, kind, std::string(kinds[static_cast<size_t>(kind)]) + " as " + in_quotes);
    return *found;
  }

  template <typename Number>
  Number number(Node& object, std::string_view key, Number largest) const {
    const Node& node = member(object, key, Kind::number);
    if (node.number < 0 || node.number > static_cast<int64_t>(largest))
      fail(node, "\"" + std::string(key) + "\" from 0 to " + std::to_string(largest));
    return static_cast<Number>(node.number);
  }

  // The file has the chip's byte, of which 128 and more are negative.
  int measure(Node& object, std::string_view key) const {
    Node& node = member(object, key, Kind::number);
    if (node.number < INT8_MIN || node.number > UINT8_MAX) fail(node, "\"" + std::string(key) + "\" from -128 to 255");
    if (node.number > INT8_MAX) node.number -= UINT8_MAX + 1;
    return static_cast<int>(node.number);
  }

  std::vector<Node>& array(Node& object, std::string_view key, size_t most) const {
    Node& node = member(object, key, Kind::array);
    if (node.children.size() > most) fail(node.children[most], "at most " + std::to_string(most) + " elements");
    for (const Node& element : node.children) require(element, Kind::object, "an object");
    return node.children;
  }

  Location location(Node& node) const {
    const auto answer = [&](std::string_view key) { return member(node, key, Kind::text).text; };
    return {answer("StreetNo"), answer("Street"), answer("PostalCode"),   answer("City"),
            answer("Country"),  answer("Floor"),  answer("gps_latitude"), answer("gps_longitude")};
  }

  Entry entry(Node& node) {
    Entry entry;
    entry.index = number(node, "EnsemleNo", unsigned{all_entries - 1});
    Node& status = member(node, "DigradStatus", Kind::object);
    for (const Node& field : status.children) require(field, Kind::number, "a number");
    entry.measured = std::ranges::any_of(status.children, [](const Node& field) { return field.number != 0; });
    entry.frequency = number(status, "tune_freq", UINT32_MAX);
    if (entry.frequency == 0) entry.frequency = block_frequency(entry.index);
    entry.rssi = measure(status, "rssi");
    entry.snr = measure(status, "snr");
    static_cast<void>(measure(status, "fft_offset"));  // for the document alone
    entry.fic_quality = std::min(number(status, "FIC_quality", unsigned{UINT8_MAX}), 100U);
    entry.valid = number(status, "valid", 1U) != 0;
    if (node.find("DigitalServiceList") != nullptr) {
      const bool labels_are_text = node.find(block_key) != nullptr;
      Node& list = member(node, "DigitalServiceList", Kind::object);
      for (Node& service_node : array(list, "ServiceList", most_services))
        entry.services.push_back(service(service_node, labels_are_text));
      const auto written = number(list, "NumberServices", unsigned{most_services});
      if (entry.services.size() < written)
        note_gap(entry.services.size(), written, "services at index " + std::to_string(entry.index));
    }
    if (node.find("ensembleTime") != nullptr) entry.time = time(member(node, "ensembleTime", Kind::object));
    return entry;
  }

  std::optional<Time> time(Node& node) const {
    const auto byte = [&](std::string_view key) { return number(node, key, unsigned{UINT8_MAX}); };
    const Time time{number(node, "year", unsigned{UINT16_MAX}),
                    byte("month"),
                    byte("day"),
                    byte("hour"),
                    byte("minute"),
                    byte("second")};
    using namespace std::chrono;
    const bool exists = year_month_day(year(static_cast<int>(time.year)), month(time.month), day(time.day)).ok() &&
                        time.hour < 24 && time.minute < 60 && time.second < 60;
    return exists ? std::optional(time) : std::nullopt;
  }

  Service service(Node& node, bool labels_are_text) const {
    Service service;
    service.id = number(node, "ServId", UINT32_MAX);
    service.data = number(node, "AudioOrDataFlag", 1U) != 0;
    service.programme_type = number(node, "ProgramType", 31U);
    service.label = decode(member(node, label_key, Kind::text), number(node, "SICharset", 15U), labels_are_text);
    for (const Node& field : node.children)
      if (field.key != label_key && field.key != "ComponentList") require(field, Kind::number, "a number");
    for (Node& component_node : array(node, "ComponentList", most_components))
      service.components.push_back(component(component_node));
    const Component* const main = main_component(service);
    service.encrypted = number(node, "CAId", 7U) != 0 || (main != nullptr && main->encrypted);
    return service;
  }

  // Replaces the label by its text.
  const std::string& decode(Node& label, unsigned charset, bool is_text) const {
    const bool received = !is_text && label.text.size() == label_length;
    label.text = decode_label(label.text, received ? charset : utf8_charset);
    return label.text;
  }

  Component component(Node& node) const {
    for (const Node& field : node.children) require(field, Kind::number, "a number");
    return {.id = number(node, "comp_ID", uint32_t{UINT16_MAX}),
            .transport = number(node, "TMID", 3U),
            .type = number(node, "ASCTyDSCTy", 63U),
            .primary = number(node, "ps", 1U) != 0,
            .encrypted = number(node, "CA_flag", 1U) != 0};
  }

  const std::string& name_;
  std::string gaps_;
};

}  // namespace

std::vector<Scan_file> read_file(const std::string& name) {
  const bool standard_input = name == "-";
  const std::string title = standard_input ? "standard input" : name;
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> opened(
      standard_input ? nullptr : std::fopen(name.c_str(), "rb"), [](std::FILE* file) { return std::fclose(file); });
  std::FILE* const file = standard_input ? stdin : opened.get();
  if (file == nullptr) throw File_error(title, std::string("cannot be opened: ") + std::strerror(errno));
  std::string bytes;
  std::array<char, 65536> piece{};
  while (const size_t size = std::fread(piece.data(), 1, piece.size(), file)) {
    bytes.append(piece.data(), size);
    if (bytes.size() > largest_file) throw File_error(title, "more than 32 MiB");
  }
  if (std::ferror(file) != 0) throw File_error(title, std::string("cannot be read: ") + std::strerror(errno));
  return read_scans(bytes, title);
}

std::vector<Scan_file> read_scans(std::string_view bytes, const std::string& name) {
  constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";
  if (bytes.starts_with(byte_order_mark)) bytes.remove_prefix(byte_order_mark.size());
  std::vector<Scan_file> files;
  std::vector<Node> documents = parse(bytes, name);
  for (Node& document : documents) {
    Scan_file& file = files.emplace_back(Reader(name).scan(std::move(document)));
    if (documents.size() > 1) file.scan.file += ", scan " + std::to_string(files.size());
  }
  return files;
}

}  // namespace survey
