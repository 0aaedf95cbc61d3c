#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "host/sample/sample_terrain.h"
#include "vorn/model/build_form.h"

namespace vorn_host {

/// Builds the points of one build form, side by side from the centre point outward, and keeps account of where it is.
/// The codes are "CL", then "L1", "L2" ... and "R1", "R2" ... outward.
class FormBuilder {
 public:
  /// What leads to a point.
  using Component = VornComposedPnt::ComponentType;
  /// The finer kind of it.
  using Element = VornComposedPnt::ElementType;

  /// @param serial running number of the form within its section: 0 for the design surface
  /// @param profileHeight height of the centre line
  FormBuilder(std::uint32_t serial, Millimetres profileHeight);

  /// The start point, offset from the centre line (positive to the right) and above the profile.
  void Center(Millimetres offset, Millimetres height);
  /// Goes back to the start point; the next points lie on that side.
  void Begin(VornLocation side);
  /// The surface that the next points end.
  void Surface(Component component, Element element);

  /// A point by width and height difference.
  void WidthHeight(Millimetres width, Millimetres height);
  /// A point by width and grade in 0.001 %.
  void Percent(Millimetres width, std::int64_t grade);
  /// A point by height difference and slope ratio in tenths (15 is 1:1.5).
  void Rate(Millimetres height, std::int64_t ratio);
  /// Slopes with berms from here on until they meet the ground, downward or upward as it lies. Nothing where the
  /// ground is as good as reached already.
  struct SlopeShape {
    std::int64_t fillRatio = 15;       ///< of the uppermost fill slope, in tenths
    std::int64_t lowerFillRatio = 18;  ///< of the fill slopes below the first berm
    std::int64_t cutRatio = 10;        ///< of the lowest cut slope
    std::int64_t upperCutRatio = 12;   ///< of the cut slopes above the first berm
    Millimetres fillStage = 5'000;     ///< height of a fill slope between berms
    Millimetres cutStage = 7'000;      ///< height of a cut slope between berms
    Millimetres bermWidth = 1'500;     ///< width of a berm
    bool bermByHeight = false;         ///< berms by width and height instead of percent
  };
  /// Goes on outward to the ground.
  void SlopesToGround(const GroundLine& ground, const SlopeShape& shape);

  /// Whether the ground lies above the place reached, or above one so far outward and upward from there.
  [[nodiscard]] bool IsBelowGround(const GroundLine& ground, Millimetres width = 0, Millimetres height = 0) const;
  /// Code of a point: number counts from 1 outward.
  [[nodiscard]] static CString Code(VornLocation side, int number);

  /// The finished form.
  [[nodiscard]] VornBuildForm Take(std::string_view name, std::string_view xSectType);

 private:
  /// Positions count in 1/100,000 mm: a width in millimetres times a grade in 0.001 % is a whole number of them.
  static constexpr std::int64_t kFine = 100'000;

  void Add(VornComposedPnt::DataType type, double x, double y);
  [[nodiscard]] Millimetres OffsetOutward() const { return m_outward / kFine; }
  [[nodiscard]] Millimetres HeightReached() const { return m_height / kFine; }
  [[nodiscard]] Millimetres GroundHeight(const GroundLine& ground, Millimetres outward) const;
  [[nodiscard]] Millimetres HeightToGround(const GroundLine& ground, std::int64_t ratio, int direction) const;

  VornBuildForm m_form;
  Millimetres m_profileHeight;
  VornLocation m_side = VornLocation::Center;
  Component m_component = Component::Unset;
  Element m_element = Element::Unset;
  std::int64_t m_startOutward = 0;
  std::int64_t m_startHeight = 0;
  std::int64_t m_outward = 0;
  std::int64_t m_height = 0;
  int m_left = 0;
  int m_right = 0;
};

}  // namespace vorn_host
