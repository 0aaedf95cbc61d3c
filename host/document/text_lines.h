#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace vorn_host {

/// Where the lines of a text end: messages about a large document name lines after its text is gone.
class TextLines {
 public:
  /// Adds the position of a line feed, which lies behind those that were added before.
  void AddBreak(std::size_t offset) { m_breaks.push_back(offset); }

  /// Where the line of a position begins.
  [[nodiscard]] std::size_t StartOf(std::size_t offset) const {
    const std::size_t line = LineOf(offset);
    return line == 1 ? 0 : m_breaks[line - 2] + 1;
  }

  /// The line of a position, from 1.
  [[nodiscard]] std::size_t LineOf(std::size_t offset) const {
    const auto behind = std::lower_bound(m_breaks.begin(), m_breaks.end(), offset);
    return static_cast<std::size_t>(behind - m_breaks.begin()) + 1;
  }

 private:
  std::vector<std::size_t> m_breaks;
};

}  // namespace vorn_host
