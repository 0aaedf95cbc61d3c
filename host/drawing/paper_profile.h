#pragma once

#include <vector>

namespace vorn_host {

struct PaperPlace;

/// How high and how low lines on paper reach, from left to right in narrow columns: a question takes the same time
/// among five lines and among thousands.
class PaperProfile {
 public:
  /// The upper and lower end of what lies somewhere; the lowest lies above the highest where nothing does.
  struct Reach {
    double lowest = 1e300;    ///< lower end
    double highest = -1e300;  ///< upper end
  };

  /// @param left,right what lies farther out counts as lying there
  PaperProfile(double left, double right);

  /// Adds a line.
  void Include(const PaperPlace& from, const PaperPlace& to);
  /// Between two places, rounded outward to whole columns.
  [[nodiscard]] Reach Between(double left, double right) const;

 private:
  static constexpr double kNarrowestColumn = 0.25;  ///< mm
  static constexpr double kMostColumns = 4000.0;

  [[nodiscard]] int ColumnAt(double x) const;

  double m_left;
  double m_column;
  std::vector<Reach> m_columns;
};

}  // namespace vorn_host
