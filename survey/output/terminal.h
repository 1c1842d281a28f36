// SPDX-License-Identifier: GPL-3.0-or-later
// The terminal that tables are made for.
#pragma once

#include <cstddef>

namespace survey {

struct Terminal {
  size_t width = 0;     ///< columns; 0: no terminal, nothing is cut
  bool unicode = true;  ///< its locale is UTF-8; otherwise the text is ASCII
  bool colour = false;
};

/// The terminal at standard output, in the program's locale; COLUMNS overrides its width.
Terminal standard_output();

}  // namespace survey
