// SPDX-License-Identifier: GPL-3.0-or-later
// Trees of scan files as JSON.
#include "survey/file/document.h"

#include <algorithm>

#include "survey/text/text.h"

namespace survey {

namespace {

void append_text(std::string& json, std::string_view text) {
  json += '"';
  for (;;) {
    const size_t plain = plain_length(text);
    json.append(text.substr(0, plain));
    text.remove_prefix(plain);
    if (text.empty()) break;
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
