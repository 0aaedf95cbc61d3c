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
  [[nodiscard]] KelMrmFigure GetDecimalPlaceXY() const { return m_places.xy; }
  /// Positions along the line (stations).
  [[nodiscard]] KelMrmFigure GetDecimalPlacePos() const { return m_places.pos; }
  /// Distances.
  [[nodiscard]] KelMrmFigure GetDecimalPlaceDist() const { return m_places.dist; }
  /// Elevations.
  [[nodiscard]] KelMrmFigure GetDecimalPlaceZ() const { return m_places.z; }
  /// Radii.
  [[nodiscard]] KelMrmFigure GetDecimalPlaceRad() const { return m_places.rad; }
  /// Clothoid parameters.
  [[nodiscard]] KelMrmFigure GetDecimalPlaceClothoidPrm() const { return m_places.clothoidPrm; }
  /// Clothoid radii.
  [[nodiscard]] KelMrmFigure GetDecimalPlaceClothoidRad() const { return m_places.clothoidRad; }
  /// Slant (grade in percent) of a "Percent" point.
  [[nodiscard]] KelMrmFigure GetDecimalPlaceSlant() const { return m_places.slant; }
  /// Slope ratios.
  [[nodiscard]] KelMrmFigure GetDecimalPlaceSlope() const { return m_places.slope; }
  /// Angles.
  [[nodiscard]] KelMrmFigure GetDecimalPlaceAngle() const { return m_places.angle; }
  /// Differences of elevation datum.
  [[nodiscard]] KelMrmFigure GetDecimalPlaceDiffTP() const { return m_places.diffTP; }
  /// Percentages of edition 2.0.
  [[nodiscard]] KelMrmFigure GetDecimalPercent() const { return m_places.percent; }
  /// Rates of edition 2.0.
  [[nodiscard]] KelMrmFigure GetDecimalRate() const { return m_places.rate; }

 private:
  /// A number of decimal places for each kind of quantity.
  struct Places {
    KelMrmFigure xy;
    KelMrmFigure pos;
    KelMrmFigure dist;
    KelMrmFigure z;
    KelMrmFigure rad;
    KelMrmFigure clothoidPrm;
    KelMrmFigure clothoidRad;
    KelMrmFigure slant;
    KelMrmFigure slope;
    KelMrmFigure angle;
    KelMrmFigure diffTP;
    KelMrmFigure percent;
    KelMrmFigure rate;
  };
  /// Those of edition 2.0, with the places for slant that are to stay.
  static constexpr Places Edition20(KelMrmFigure slant) {
    return {.xy = 6,
            .pos = 6,
            .dist = 4,
            .z = 3,
            .rad = 3,
            .clothoidPrm = 3,
            .clothoidRad = 3,
            .slant = slant,
            .slope = 3,
            .angle = 4,
            .diffTP = 4,
            .percent = 3,
            .rate = 1};
  }
  static constexpr Places kLaterEditions = {.xy = 6,
                                            .pos = 4,
                                            .dist = 4,
                                            .z = 4,
                                            .rad = 4,
                                            .clothoidPrm = 4,
                                            .clothoidRad = 4,
                                            .slant = 3,
                                            .slope = 3,
                                            .angle = 5,
                                            .diffTP = 4,
                                            .percent = 3,
                                            .rate = 1};

  /// Starts with the places of edition 4.1, whatever edition is selected by then.
  VornNumericalPrecision() = default;

  Places m_places = kLaterEditions;
};
