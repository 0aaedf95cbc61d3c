#pragma once

#include "vorn/platform/nur_mrm.h"

/// With how many decimal places each kind of quantity is written. Process-wide; follows the schema edition.
class VornNumericalPrecision {
 public:
  /// The places of the process.
  static VornNumericalPrecision& GetInstance();
  virtual ~VornNumericalPrecision() = default;
  VornNumericalPrecision(const VornNumericalPrecision&) = default;
  VornNumericalPrecision& operator=(const VornNumericalPrecision&) = default;

  /// Takes the places of the current schema edition. Call it after every change of the edition. Edition 2.0 names no
  /// places for slant: that field then keeps what it held.
  void SetDecimalPlace();

  /// Plane coordinates.
  [[nodiscard]] KelMrmFigure GetDecimalPlaceXY() const { return m_xy; }
  /// Positions along the line (stations).
  [[nodiscard]] KelMrmFigure GetDecimalPlacePos() const { return m_pos; }
  /// Distances.
  [[nodiscard]] KelMrmFigure GetDecimalPlaceDist() const { return m_dist; }
  /// Elevations.
  [[nodiscard]] KelMrmFigure GetDecimalPlaceZ() const { return m_z; }
  /// Radii.
  [[nodiscard]] KelMrmFigure GetDecimalPlaceRad() const { return m_rad; }
  /// Clothoid parameters.
  [[nodiscard]] KelMrmFigure GetDecimalPlaceClothoidPrm() const { return m_clothoidPrm; }
  /// Clothoid radii.
  [[nodiscard]] KelMrmFigure GetDecimalPlaceClothoidRad() const { return m_clothoidRad; }
  /// Slant (grade in percent) of a "Percent" point.
  [[nodiscard]] KelMrmFigure GetDecimalPlaceSlant() const { return m_slant; }
  /// Slope ratios.
  [[nodiscard]] KelMrmFigure GetDecimalPlaceSlope() const { return m_slope; }
  /// Angles.
  [[nodiscard]] KelMrmFigure GetDecimalPlaceAngle() const { return m_angle; }
  /// Differences of elevation datum.
  [[nodiscard]] KelMrmFigure GetDecimalPlaceDiffTP() const { return m_diffTP; }
  /// Percentages of edition 2.0.
  [[nodiscard]] KelMrmFigure GetDecimalPercent() const { return m_percent; }
  /// Rates of edition 2.0.
  [[nodiscard]] KelMrmFigure GetDecimalRate() const { return m_rate; }

 private:
  /// Starts with the places of edition 4.1, whatever edition is selected by then.
  VornNumericalPrecision() = default;

  KelMrmFigure m_xy = 6;
  KelMrmFigure m_pos = 4;
  KelMrmFigure m_dist = 4;
  KelMrmFigure m_z = 4;
  KelMrmFigure m_rad = 4;
  KelMrmFigure m_clothoidPrm = 4;
  KelMrmFigure m_clothoidRad = 4;
  KelMrmFigure m_slant = 3;
  KelMrmFigure m_slope = 3;
  KelMrmFigure m_angle = 5;
  KelMrmFigure m_diffTP = 4;
  KelMrmFigure m_percent = 3;
  KelMrmFigure m_rate = 1;
};
