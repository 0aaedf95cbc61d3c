#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

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

/// A point whose position is known: its height and its distance from the centre line, in metres.
inline VornComposedPnt PointAt(VornLocation side, NurReal height, NurReal dist, std::string_view code = "P") {
  VornComposedPnt point = PointOn(side, code);
  point.SetGh(height);
  point.SetCLDist(dist);
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

/// An existing ground form with points at (height, distance from the centre line).
inline VornExistingBuildForm GroundOf(std::initializer_list<TamWorld2> points) {
  VornExistingBuildForm form;
  for (const TamWorld2& position : points) {
    VornExistingComposedPnt point;
    point.SetGh(position.x);
    point.SetCLDist(position.y);
    form.GetComposedPntArray().Add(point);
  }
  return form;
}

/// The main codes of a form's points, which tell tests what became of each point.
inline std::vector<std::string> CodesOf(const VornBuildForm& form) {
  std::vector<std::string> codes;
  for (const VornComposedPnt& point : form.GetComposedPntArray()) codes.emplace_back(point.GetCode().View());
  return codes;
}

inline std::vector<std::string> NamesOf(const Vorn_BuildFormArray& forms) {
  std::vector<std::string> names;
  for (const VornBuildForm& form : forms) names.emplace_back(form.GetName().View());
  return names;
}

/// What a member function tells of each element of an array.
template <typename Array, typename Item, typename Value>
std::vector<Value> Each(const Array& array, const Value& (Item::*get)() const) {
  std::vector<Value> values;
  for (const Item& item : array) values.push_back((item.*get)());
  return values;
}

}  // namespace model_test
