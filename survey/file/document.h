// SPDX-License-Identifier: GPL-3.0-or-later
// A JSON text as a tree that knows its lines.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace survey {

/// What is wrong with a file: "NAME: line 12: expected ...", one line of text without control characters.
struct File_error : std::runtime_error {
  File_error(const std::string& name, const std::string& fault);
};

/// A value; a scan file has only these four kinds of them, and whole numbers.
struct Node {
  enum class Kind : uint8_t { number, text, object, array };

  Kind kind = Kind::number;
  size_t line = 0;
  int64_t number = 0;
  std::string key;             ///< of a member of an object
  std::string text;            ///< valid UTF-8
  std::vector<Node> children;  ///< members or elements

  /// The member `wanted`, null if there is none.
  [[nodiscard]] const Node* find(std::string_view wanted) const;
  [[nodiscard]] Node* find(std::string_view wanted);
};

/// The tree of `json`, a file called `name`. Throws File_error; refuses what is nested too deeply or too large for a
/// scan, and keys that are twice in one object.
Node parse(const std::string& json, const std::string& name);

/// Appends the tree as JSON without blanks.
void append_json(std::string& json, const Node& node);

}  // namespace survey
