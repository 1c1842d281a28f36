// SPDX-License-Identifier: GPL-3.0-or-later
// A scan file as a tree.
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
  std::string key{};             ///< of a member of an object
  std::string text{};            ///< valid UTF-8, but for a label as it was received
  std::vector<Node> children{};  ///< members or elements

  /// The member `wanted`, null if there is none.
  [[nodiscard]] const Node* find(std::string_view wanted) const;
  [[nodiscard]] Node* find(std::string_view wanted);
};

/// Appends the tree as JSON without blanks.
void append_json(std::string& json, const Node& node);

}  // namespace survey
