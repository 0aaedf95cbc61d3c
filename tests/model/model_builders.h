#pragma once

#include <initializer_list>
#include <string_view>

#include "vorn/model/x_section.h"

// Small pieces of a cross section, for tests that care about one thing only.

namespace model_test {

inline VornComposedPnt PointOn(VornLocation side, std::string_view code = "P") {
  VornComposedPnt point;
  point.SetLocation(side);
  point.SetCode(CString(code));
  return point;
}

/// A point that is complete enough to be valid.
inline VornComposedPnt EnabledPoint(VornLocation side, std::string_view code = "P") {
  VornComposedPnt point = PointOn(side, code);
  point.SetDataType(VornComposedPnt::DataType::WidthHeight);
  point.SetExistence(VORN_Existence::True);
  return point;
}

/// A point with input values of a data type.
inline VornComposedPnt PointWith(VornLocation side, VornComposedPnt::DataType type, NurReal x, NurReal y) {
  VornComposedPnt point = PointOn(side);
  point.SetDataType(type);
  point.SetX(x);
  point.SetY(y);
  return point;
}

inline VornBuildForm FormOf(std::string_view name, std::initializer_list<VornComposedPnt> points) {
  VornBuildForm form;
  form.SetName(CString(name), false);
  for (const VornComposedPnt& point : points) form.GetComposedPntArray().Add(point);
  return form;
}

inline VornBuildForm EnabledForm(std::string_view name) {
  return FormOf(name, {EnabledPoint(VornLocation::Center, "C"), EnabledPoint(VornLocation::Right, "R")});
}

/// A control target between points of a form, named as every edition names them.
inline VornFormCtrlTarget TargetOn(std::string_view formName, VornFormCtrlTarget::TargetPntType type,
                                   std::initializer_list<const char*> codes) {
  VornFormCtrlTarget target;
  target.SetWorkType(VornFormCtrlTarget::WorkType::FillWork);
  target.SetControlItem(VornFormCtrlTarget::ControlItem::Width);
  target.SetTargetScope("S");
  target.SetTargetRegio("R");
  target.SetTargetPntType(type);
  CString joined;
  for (const char* code : codes) {
    if (!joined.IsEmpty()) joined += ' ';
    joined += code;
    VornFormCtrlTargetPnt point;
    point.Set(20.0, CString(formName), code, false);
    target.GetTargetPntArray().Add(point);
  }
  target.SetCode(joined);
  return target;
}

inline VornXSection SectionAt(double station, bool xSectChg = false) {
  VornXSection section;
  section.SetCumulativeDist(station);
  section.SetXSectChg(xSectChg);
  return section;
}

}  // namespace model_test
