// SPDX-License-Identifier: GPL-3.0-or-later
// One pass over the text, which takes the raw parts as they are.
#include "survey/file/parser.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "survey/text/text.h"

namespace survey {

namespace {

using Kind = Node::Kind;

constexpr size_t deepest = 8;            // the members of a component
constexpr size_t most_members = 64;      // of one object
constexpr size_t most_values = 2000000;  // of one file: some 200 MB

constexpr std::string_view blanks = " \t\r\n";
constexpr std::string_view scan_beginning =
    "{\"content\": \"FullStationScan\",\n\"FrequencyRegion\": \"Europe\",\n\"Location\": {\n\"StreetNo\": \"";
constexpr std::string_view answer_keys[] = {"StreetNo", "Street", "PostalCode",   "City",
                                            "Country",  "Floor",  "gps_latitude", "gps_longitude"};
constexpr size_t label_length = 16;

class Parser {
 public:
  Parser(std::string_view text, const std::string& name) : text_(text), name_(name) {}

  /// The next object of the file, none at its end.
  std::optional<Node> next() {
    skip_blanks();
    if (at_ == text_.size()) return {};
    if (text_[at_] != '{') fail(values_ == 0 ? "a scan" : "the end of the file or another scan");
    as_scanned_ = text_.substr(at_).starts_with(scan_beginning);
    labels_are_text_ = false;
    return value({});
  }

 private:
  [[noreturn]] void fail(const std::string& expected) {
    // A file that is cut off ends on its last line that is not blank.
    const bool cut = text_.find_first_not_of(blanks, at_) == text_.npos;
    const std::string_view before = text_.substr(0, cut ? text_.find_last_not_of(blanks) + 1 : at_);
    throw File_error(name_, "line " + std::to_string(1 + std::ranges::count(before, '\n')) + ": expected " +
                                (cut ? "the rest of a scan" : expected));
  }

  // Counts on from the last call.
  size_t line() {
    line_ += static_cast<size_t>(std::ranges::count(text_.substr(counted_, at_ - counted_), '\n'));
    counted_ = at_;
    return line_;
  }

  void skip_blanks() {
    while (at_ < text_.size() && (text_[at_] == ' ' || text_[at_] == '\n' || text_[at_] == '\t' || text_[at_] == '\r'))
      ++at_;
  }

  // Takes `expected` with the blanks in front of it.
  bool take(std::string_view expected) {
    skip_blanks();
    if (!text_.substr(at_).starts_with(expected)) return false;
    at_ += expected.size();
    return true;
  }

  Node value(std::string key) {
    skip_blanks();
    if (++values_ > most_values) fail("fewer values");
    Node node;
    node.line = line();
    node.key = std::move(key);
    if (take("\"")) {
      node.kind = Kind::text;
      node.text = text_of(node.key);
    } else if (take("{")) {
      members(node);
    } else if (take("[")) {
      elements(node);
    } else {
      node.number = number();
    }
    return node;
  }

  void enter(Node& node, Kind kind) {
    node.kind = kind;
    if (++depth_ > deepest) fail("less deeply nested values");
  }

  void members(Node& object) {
    enter(object, Kind::object);
    for (bool more = !take("}"); more; more = !take("}")) {
      if (!object.children.empty() && !take(",")) fail("',' or '}'");
      if (!take("\"")) fail("a key in quotes");
      std::string key = string();
      if (object.find(key) != nullptr) fail("the member \"" + key + "\" once only");
      if (object.children.size() == most_members) fail("fewer members");
      if (!take(":")) fail("':'");
      if (key == block_key) labels_are_text_ = true;
      object.children.push_back(value(std::move(key)));
    }
    --depth_;
  }

  void elements(Node& array) {
    enter(array, Kind::array);
    for (bool more = !take("]"); more; more = !take("]")) {
      if (!array.children.empty() && !take(",")) fail("',' or ']'");
      array.children.push_back(value({}));
    }
    --depth_;
  }

  int64_t number() {
    const std::string_view rest = text_.substr(at_);
    const std::string_view digits = rest.substr(rest.starts_with('-') ? 1 : 0);
    if (digits.empty() || digits[0] < '0' || digits[0] > '9')
      fail(rest.starts_with("true") || rest.starts_with("false") || rest.starts_with("null")
               ? "a number, a text, an object or an array"
               : "a value");
    int64_t number = 0;
    const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), number);
    const std::string_view after = rest.substr(static_cast<size_t>(end - rest.data()));
    const bool zero_in_front = digits.size() > 1 && digits[0] == '0' && digits[1] >= '0' && digits[1] <= '9';
    if (zero_in_front || std::string_view(".eE").find(after.empty() ? ' ' : after[0]) != after.npos)
      fail("a whole number");
    if (error != std::errc()) fail("a smaller number");
    at_ = text_.size() - after.size();
    return number;
  }

  // The text of member `key`, behind the quote in front of it.
  std::string text_of(std::string_view key) {
    if (key == label_key)
      if (const auto label = received_label()) return *label;
    if (std::ranges::find(answer_keys, key) == std::end(answer_keys)) return string();
    const std::optional<std::string> answer = typed_answer();
    return answer ? *answer : string();
  }

  std::optional<std::string> received_label() {
    const size_t begin = at_;
    const size_t end = begin + label_length;
    if (labels_are_text_ || end >= text_.size() || text_[end] != '"') return {};
    if (!as_scanned_) {
      at_ = end + 1;
      const bool precedes_components = take(",") && take("\"ComponentList\"");
      at_ = begin;
      if (!precedes_components) return {};
    }
    at_ = end + 1;
    return std::string(text_.substr(begin, label_length));
  }

  // An answer ends at the last quote of its line.
  std::optional<std::string> typed_answer() {
    std::string_view rest = text_.substr(at_);
    rest = rest.substr(0, rest.find('\n'));
    size_t end = rest.find_last_not_of(blanks);
    if (end != rest.npos && end > 0 && rest[end] == ',') --end;
    if (end == rest.npos || rest[end] != '"' || (!as_scanned_ && is_json())) return {};
    at_ += end + 1;
    return valid_utf8(rest.substr(0, end));
  }

  // Whether a JSON string is here: the end of its object, or the next member, follows it.
  bool is_json() {
    const size_t begin = at_;
    bool good = find_end(nullptr);
    if (good && !take("}")) good = take(",") && take("\"") && find_end(nullptr) && take(":");
    at_ = begin;
    return good;
  }

  std::string string() {
    std::string text;
    if (!find_end(&text)) fail("a text in UTF-8 without control characters");
    return text;
  }

  // Passes a JSON string with the quote at its end; appends its characters to `text`. Returns false at what must not be
  // in one.
  bool find_end(std::string* text) {
    for (;;) {
      const std::string_view plain = text_.substr(at_, plain_length(text_.substr(at_)));
      if (text != nullptr) text->append(plain);
      at_ += plain.size();
      if (at_ == text_.size()) return false;
      if (text_[at_] == '"') return ++at_, true;
      const std::optional<char32_t> character = text_[at_] == '\\' ? escape() : beyond_ascii();
      if (!character) return false;
      if (text != nullptr) append_character(*text, *character);
    }
  }

  std::optional<char32_t> beyond_ascii() {
    std::string_view rest = text_.substr(at_);
    const char32_t character = take_character(rest);
    const bool damaged = character == 0xFFFD && !text_.substr(at_).starts_with("\uFFFD");
    if (character < 0x20 || damaged) return {};
    at_ = text_.size() - rest.size();
    return character;
  }

  std::optional<char32_t> escape() {
    constexpr std::string_view letters = "\"\\/bfnrt", characters = "\"\\/\b\f\n\r\t";
    const char letter = at_ + 1 < text_.size() ? text_[at_ + 1] : '\0';
    if (letter != 'u') {
      const size_t found = letters.find(letter);
      if (found == letters.npos) return {};
      at_ += 2;
      return static_cast<char32_t>(characters[found]);
    }
    const std::optional<char32_t> first = code_unit();
    if (!first || *first < 0xD800 || *first > 0xDFFF) return first;
    const std::optional<char32_t> second = code_unit();
    if (*first > 0xDBFF || !second || *second < 0xDC00 || *second > 0xDFFF) return {};
    return 0x10000 + ((*first - 0xD800) << 10) + (*second - 0xDC00);
  }

  // \u and four digits.
  std::optional<char32_t> code_unit() {
    const std::string_view digits = text_.substr(at_, 6);
    uint32_t unit = 0;
    if (digits.size() < 6 || !digits.starts_with("\\u")) return {};
    const auto [end, error] = std::from_chars(digits.data() + 2, digits.data() + 6, unit, 16);
    if (error != std::errc() || end != digits.data() + 6) return {};
    at_ += 6;
    return unit;
  }

  std::string_view text_;
  size_t at_ = 0;
  size_t counted_ = 0;  // up to here line feeds are counted
  size_t line_ = 1;
  size_t values_ = 0;
  size_t depth_ = 0;
  bool as_scanned_ = false;
  bool labels_are_text_ = false;
  const std::string& name_;
};

}  // namespace

std::vector<Node> parse(std::string_view text, const std::string& name) {
  std::vector<Node> objects;
  Parser parser(text, name);
  while (std::optional<Node> object = parser.next()) objects.push_back(std::move(*object));
  if (objects.empty()) throw File_error(name, "line 1: expected a scan");
  return objects;
}

}  // namespace survey
