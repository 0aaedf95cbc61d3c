#pragma once

#include <array>
#include <cstdint>

#include "vorn/framework/enum_table.h"
#include "vorn/platform/code_page_932.h"
#include "vorn/road/survey_point.h"

/// Class of a horizontal control point.
enum class VornCtrlClass : std::int32_t {
  Unset = -1,
  GnssStation = 0,
  FirstOrder = 1,
  SecondOrder = 2,
  ThirdOrder = 3,
  FourthOrder = 4,
  Grade1 = 5,
  Grade2 = 6,
  Grade3 = 7,
  Grade4 = 8,
};

/// Texts of the classes.
inline constexpr std::array kVornCtrlClassTexts = {
    EnumText<VornCtrlClass>{VornCtrlClass::GnssStation, u8"電子基準点"_cp932},
    EnumText<VornCtrlClass>{VornCtrlClass::FirstOrder, u8"一等三角点"_cp932},
    EnumText<VornCtrlClass>{VornCtrlClass::SecondOrder, u8"二等三角点"_cp932},
    EnumText<VornCtrlClass>{VornCtrlClass::ThirdOrder, u8"三等三角点"_cp932},
    EnumText<VornCtrlClass>{VornCtrlClass::FourthOrder, u8"四等三角点"_cp932},
    EnumText<VornCtrlClass>{VornCtrlClass::Grade1, u8"1級基準点"_cp932},
    EnumText<VornCtrlClass>{VornCtrlClass::Grade2, u8"2級基準点"_cp932},
    EnumText<VornCtrlClass>{VornCtrlClass::Grade3, u8"3級基準点"_cp932},
    EnumText<VornCtrlClass>{VornCtrlClass::Grade4, u8"4級基準点"_cp932},
};

/// A horizontal control point.
class VornCtrlPoint : public VornSurveyPoint<VornCtrlClass, kVornCtrlClassTexts> {
 public:
  /// The class of these points.
  using CtrlClass = VornCtrlClass;

  /// Class of the control point.
  [[nodiscard]] CtrlClass GetCtrlClass() const { return m_class; }
  void SetCtrlClass(CtrlClass ctrlClass) { m_class = ctrlClass; }
};

/// The horizontal control points of a site.
class VornCtrlPosArray : public VornNumberedArray<VornCtrlPoint> {};
