#include "host/drawing/paper_profile.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "host/drawing/paper.h"

namespace vorn_host {

namespace {

void IncludeHeight(PaperProfile::Reach& reach, double y) {
  reach.lowest = std::min(reach.lowest, y);
  reach.highest = std::max(reach.highest, y);
}

}  // namespace

PaperProfile::PaperProfile(double left, double right)
    : m_left(left),
      m_column(std::max(kNarrowestColumn, (right - left) / kMostColumns)),
      m_columns(static_cast<std::size_t>((right - left) / m_column) + 1) {}

int PaperProfile::ColumnAt(double x) const {
  const double last = static_cast<double>(m_columns.size()) - 1.0;
  return static_cast<int>(std::clamp(std::floor((x - m_left) / m_column), 0.0, last));
}

void PaperProfile::Include(const PaperPlace& from, const PaperPlace& to) {
  const auto [left, right] = std::minmax(from, to, [](const auto& a, const auto& b) { return a.x < b.x; });
  const double slope = right.x > left.x ? (right.y - left.y) / (right.x - left.x) : 0.0;
  const int first = ColumnAt(left.x);
  const int last = ColumnAt(right.x);
  IncludeHeight(m_columns[static_cast<std::size_t>(first)], left.y);
  IncludeHeight(m_columns[static_cast<std::size_t>(last)], right.y);
  for (int column = first + 1; column <= last; ++column) {
    const double y = left.y + slope * (m_left + column * m_column - left.x);  // between two columns, in both of them
    IncludeHeight(m_columns[static_cast<std::size_t>(column - 1)], y);
    IncludeHeight(m_columns[static_cast<std::size_t>(column)], y);
  }
}

PaperProfile::Reach PaperProfile::Between(double left, double right) const {
  Reach reach;
  for (int column = ColumnAt(left); column <= ColumnAt(right); ++column) {
    const Reach& here = m_columns[static_cast<std::size_t>(column)];
    reach.lowest = std::min(reach.lowest, here.lowest);
    reach.highest = std::max(reach.highest, here.highest);
  }
  return reach;
}

}  // namespace vorn_host
