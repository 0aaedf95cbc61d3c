#pragma once

#include <array>
#include <cstdint>

#include "vorn/framework/enum_table.h"
#include "vorn/platform/code_page_932.h"
#include "vorn/road/survey_point.h"

/// Class of a levelling bench mark.
enum class VornBMClass : std::int32_t {
  Unset = -1,
  FirstOrder = 0,
  SecondOrder = 1,
  ThirdOrder = 2,
  Grade1 = 3,
  Grade2 = 4,
  Grade3 = 5,
  Grade4 = 6,
  Simple = 7,
};

/// Texts of the classes.
inline constexpr std::array kVornBMClassTexts = {
    EnumText<VornBMClass>{VornBMClass::FirstOrder, u8"一等水準点"_cp932},
    EnumText<VornBMClass>{VornBMClass::SecondOrder, u8"二等水準点"_cp932},
    EnumText<VornBMClass>{VornBMClass::ThirdOrder, u8"三等水準点"_cp932},
    EnumText<VornBMClass>{VornBMClass::Grade1, u8"1級水準点"_cp932},
    EnumText<VornBMClass>{VornBMClass::Grade2, u8"2級水準点"_cp932},
    EnumText<VornBMClass>{VornBMClass::Grade3, u8"3級水準点"_cp932},
    EnumText<VornBMClass>{VornBMClass::Grade4, u8"4級水準点"_cp932},
    EnumText<VornBMClass>{VornBMClass::Simple, u8"簡易水準点"_cp932},
};

/// A levelling bench mark.
class VornBenchMark : public VornSurveyPoint<VornBMClass, kVornBMClassTexts> {
 public:
  /// The class of these points.
  using BMClass = VornBMClass;

  /// Class of the bench mark.
  [[nodiscard]] BMClass GetBMClass() const { return m_class; }
  void SetBMClass(BMClass bmClass) { m_class = bmClass; }
};

/// The levelling bench marks of a site.
class VornBenchMkArray : public VornNumberedArray<VornBenchMark> {};
