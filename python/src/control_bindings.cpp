#include "python/src/binding.h"
#include "vorn/control/form_ctrl_target.h"

/// Control targets and their points.
namespace vorn_python {

namespace {

void AddTargetPoint(py::module_& module) {
  using Point = VornFormCtrlTargetPnt;
  auto cls = AddClass<Point>(module, "ControlTargetPoint",
                             "A point of a control target: the build form and the code of the composed point on which\n"
                             "it stands, and the station of its cross section.");
  cls.def(py::init([](NurReal station, const CString& formName, const CString& code, bool isBehindChange) {
            Point point;
            point.Set(station, formName, code, isBehindChange);
            return Alone(std::move(point));
          }),
          py::arg("station") = py::none(), py::arg("form_name") = CString(), py::arg("code") = CString(),
          py::arg("is_behind_change") = false, "A point that stands alone, until it is added to a target's `points`.");
  Property(cls, "station", &Point::GetCumulativeDist, &Point::SetCumulativeDist,
           "Station of the cross section in metres.");
  Property(cls, "is_behind_change", &Point::GetXSectChg, &Point::SetXSectChg,
           "Whether the cross section is the one behind a change of shape.");
  Property(cls, "form_name", &Point::GetBuildFormName, &Point::SetBuildFormName, "Name of the build form.");
  Property(cls, "code", &Point::GetCode, &Point::SetCode, "Code of the composed point.");
  Property(cls, "side", &Point::GetSide, &Point::SetSide, "Side of the centre line; None until filled.");
  Attribute(
      cls, "offset", [](const Point& point) { return NurReal(point.GetOffset()); },
      [](Point& point, NurReal offset) { point.SetOffset(offset.Value()); },
      "Distance from the centre line in metres, negative on the left; None until filled.");
  Attribute(
      cls, "elevation", [](const Point& point) { return NurReal(point.GetElevation()); },
      [](Point& point, NurReal elevation) { point.SetElevation(elevation.Value()); },
      "Height in metres; None until filled.");
  Identifier(cls, "point_id", &Point::GetPntID, &Point::SetPntID,
             "Identifier of the composed point; None until filled.");
  cls.def_property_readonly(
      "is_valid", [](Element<Point>& e) { return InEdition(e, [](Point& point) { return point.IsEnable(); }); },
      "Whether the station is set, and form and code are named.");
  Repr(cls, [](const Point& point) { return Quoted(point.GetCode()) + " on " + Quoted(point.GetBuildFormName()); });
}

void AddTarget(py::module_& module) {
  using Target = VornFormCtrlTarget;
  auto cls =
      AddClass<Target>(module, "ControlTarget",
                       "One as-built control item: what is measured, for which work, over which scope and region,\n"
                       "and between which points. Edition 2.0 carries the codes of the points in the target, which\n"
                       "stands in its form; later editions carry target points, and the target stands in the set.");
  cls.def(py::init([](Target::ControlItem item, Target::WorkType work) {
            Target target;
            target.SetControlItem(item);
            target.SetWorkType(work);
            return Alone(std::move(target));
          }),
          py::arg("control_item") = py::none(), py::arg("work_type") = py::none(),
          "A target that stands alone, until it is added to the `targets` of a set or a form.");
  Property(cls, "control_item", &Target::GetControlItem, &Target::SetControlItem, "What is measured.");
  Property(cls, "work_type", &Target::GetWorkType, &Target::SetWorkType, "For which work.");
  Property(cls, "target_scope", &Target::GetTargetScope, &Target::SetTargetScope, "Over which scope.");
  Property(cls, "target_region", &Target::GetTargetRegio, &Target::SetTargetRegio, "Over which region.");
  Property(cls, "target_point_type", &Target::GetTargetPntType, &Target::SetTargetPntType,
           "Which pair of points bounds the measurement.");
  Property(cls, "side", &Target::GetLR, &Target::SetLR, "Side of the centre line.");
  Flag(cls, "is_exported", &Target::GetExport, &Target::SetExport, "Whether the target is written to documents.");
  Identifier(cls, "serial_id", &Target::GetSerialID, &Target::SetSerialID,
             "Running identifier within the collection; None when unassigned.");
  Attribute(
      cls, "code_text", [](const Target& target) { return target.GetCodeName(); },
      [](Target& target, const CString& codes) { target.SetCode(codes); },
      "The codes as edition 2.0 has them, separated by blanks.");
  cls.def_property_readonly(
      "codes",
      [](Element<Target>& e) {
        return InEdition(e, [](Target& target) {
          CStringArray pieces;
          Vorn_Base::DivideString(target.GetCode().View(), pieces);
          return std::vector<CString>(pieces.begin(), pieces.end());
        });
      },
      "The codes of the points: those of `code_text` in edition 2.0, otherwise those of `points`.");
  Collection(
      cls, "points", [](Target & target) -> auto& { return target.GetTargetPntArray(); },
      "The points, from edition 4.0 on.");
  cls.def_property_readonly(
      "is_valid", [](Element<Target>& e) { return InEdition(e, [](Target& target) { return target.IsEnable(); }); },
      "Whether codes, scope, region, work type, control item and kind of points are given and valid.");
  Repr(cls, [](const Target& target) {
    const CString item = target.GetControlItemString();
    return (item.IsEmpty() ? "without an item" : vorn_host::ToUtf8(item.View())) + ", " +
           std::to_string(target.GetTargetPntArray().GetSize()) + " points";
  });
}

}  // namespace

void AddControl(py::module_& module) {
  AddTargetPoint(module);
  BindSequence<VornFormCtrlTargetPntArray>(module, "ControlTargetPoints", "The points of a control target.");
  AddTarget(module);
  BindSequence<Vorn_FormCtrlTargetArray>(module, "ControlTargets", "The control targets of a set or of a form.");
}

}  // namespace vorn_python
