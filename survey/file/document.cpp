// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/file/document.h"

#include <algorithm>
#include <iterator>
#include <nlohmann/json.hpp>

#include "survey/text/text.h"

namespace survey {

namespace {

constexpr size_t deepest = 8;            // the members of a component
constexpr size_t most_members = 64;      // of one object
constexpr size_t most_values = 2000000;  // of one file: some 200 MB

/// Reads text and stores its current place for others to read.
class Observed {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = char;
  using difference_type = std::ptrdiff_t;
  using pointer = const char*;
  using reference = const char&;

  Observed(const char* at, const char** place) : at_(at), place_(place) {}
  reference operator*() const { return *at_; }
  Observed& operator++() {
    *place_ = ++at_;
    return *this;
  }
  bool operator==(const Observed& other) const { return at_ == other.at_; }

 private:
  const char* at_;
  const char** place_;
};

/// Builds the tree from the parser's events.
class Builder {
 public:
  using Json = nlohmann::json;

  Builder(const char* const& place, const std::string& name) : place_(place), counted_(place), name_(name) {}

  Node root;

  bool null() { return fail("a number, a text, an object or an array"); }
  bool boolean(bool /*value*/) { return null(); }
  bool number_float(double /*value*/, const std::string& /*text*/) { return fail("a whole number"); }
  bool binary(Json::binary_t& /*value*/) { return null(); }
  bool number_integer(int64_t value) {
    add(Node::Kind::number).number = value;
    return true;
  }
  bool number_unsigned(uint64_t value) {
    if (value > INT64_MAX) return fail("a smaller number");
    return number_integer(static_cast<int64_t>(value));
  }
  bool string(std::string& value) {
    add(Node::Kind::text).text = std::move(value);
    return true;
  }
  bool start_object(size_t /*size*/) { return open(Node::Kind::object); }
  bool start_array(size_t /*size*/) { return open(Node::Kind::array); }
  bool end_object() { return close(); }
  bool end_array() { return close(); }
  bool key(std::string& key) {
    const Node& object = *open_.back();
    if (object.find(key) != nullptr) return fail("the member \"" + key + "\" once only");
    if (object.children.size() == most_members) return fail("fewer members");
    key_ = std::move(key);
    return true;
  }
  bool parse_error(size_t /*place*/, const std::string& /*token*/, const nlohmann::detail::exception& error) {
    // "... unexpected X; expected Y", or what is wrong with a single token.
    const std::string_view what = error.what();
    const std::string_view before = "; expected ";
    const size_t expected = what.rfind(before);
    if (what.ends_with("or a literal")) return fail("a value");
    if (expected != what.npos) return fail(std::string(what.substr(expected + before.size())));
    return fail(what.find("unexpected end of input") == what.npos ? "valid JSON" : "more text before the end");
  }

 private:
  // A number ends with the character behind it, which the parser has taken then: that one is not counted.
  size_t line() {
    if (place_ > counted_ + 1) {
      line_ += static_cast<size_t>(std::count(counted_, place_ - 1, '\n'));
      counted_ = place_ - 1;
    }
    return line_;
  }

  [[noreturn]] bool fail(const std::string& expected) {
    throw File_error(name_, "line " + std::to_string(line()) + ": expected " + expected);
  }

  Node& add(Node::Kind kind) {
    if (++values_ > most_values) fail("fewer values");
    Node& node = open_.empty() ? root : open_.back()->children.emplace_back();
    node.kind = kind;
    node.line = line();
    node.key = std::move(key_);
    key_.clear();
    return node;
  }

  bool open(Node::Kind kind) {
    if (open_.size() == deepest) fail("less deeply nested values");
    open_.push_back(&add(kind));
    return true;
  }

  bool close() {
    open_.pop_back();
    return true;
  }

  const char* const& place_;
  const char* counted_;  // up to here line feeds are counted
  size_t line_ = 1;
  size_t values_ = 0;
  const std::string& name_;
  std::string key_;
  std::vector<Node*> open_;  // objects and arrays, outermost first
};

void append_text(std::string& json, std::string_view text) {
  json += '"';
  while (!text.empty()) {
    const char32_t character = take_character(text);
    if (character == '"' || character == '\\') {
      (json += '\\') += static_cast<char>(character);
    } else if (is_control(character)) {
      json += "\\u";
      for (unsigned shift = 16; shift != 0; shift -= 4) json += "0123456789abcdef"[character >> (shift - 4) & 0xF];
    } else {
      append_character(json, character);
    }
  }
  json += '"';
}

}  // namespace

File_error::File_error(const std::string& name, const std::string& fault)
    : std::runtime_error(visible(name + ": " + fault)) {}

const Node* Node::find(std::string_view wanted) const {
  const auto found = std::ranges::find(children, wanted, &Node::key);
  return found == children.end() ? nullptr : &*found;
}

Node* Node::find(std::string_view wanted) {
  const auto found = std::ranges::find(children, wanted, &Node::key);
  return found == children.end() ? nullptr : &*found;
}

Node parse(const std::string& json, const std::string& name) {
  // Versions of the parser differ in their message for an empty text.
  if (json.find_first_not_of(" \t\r\n") == json.npos) throw File_error(name, "line 1: expected a value");
  const char* const begin = json.data();
  const char* place = begin;
  Builder builder(place, name);
  static_cast<void>(
      nlohmann::json::sax_parse(Observed(begin, &place), Observed(begin + json.size(), &place), &builder));
  return std::move(builder.root);
}

void append_json(std::string& json, const Node& node) {
  if (node.kind == Node::Kind::number) {
    json += std::to_string(node.number);
  } else if (node.kind == Node::Kind::text) {
    append_text(json, node.text);
  } else {
    const bool object = node.kind == Node::Kind::object;
    json += object ? '{' : '[';
    for (const Node& child : node.children) {
      if (&child != &node.children.front()) json += ',';
      if (object) append_text(json, child.key);
      if (object) json += ':';
      append_json(json, child);
    }
    json += object ? '}' : ']';
  }
}

}  // namespace survey
