#pragma once

#include <initializer_list>

#include "tests/model/model_builders.h"
#include "vorn/model/x_sections.h"

// Design data in which nothing fits into an object: every text, and nearly every list, takes memory of its own.

namespace allocation_test {

inline constexpr const char* kSurface = "the design surface of the road";
inline constexpr const char* kLayer = "a layer of pavement under the surface";
inline constexpr const char* kFillType = "\x90\xB7\x93\x79\x8D\x48 of the embankment";  // names a plan surface
inline constexpr const char* kNewName = "a name that comes after the other one";

inline VornComposedPnt FullPoint(VornLocation side, double dist, double height, const char* code) {
  VornComposedPnt point = model_test::PointAt(side, height, dist, code);
  point.SetDataType(VornComposedPnt::DataType::WidthHeight);
  point.SetX(2.0);
  point.SetY(-0.5);
  point.SetExistence(VORN_Existence::True);
  point.DrawPairIDs().Add(7);
  point.ThDPairIDs().Add(8);
  point.ThDPairIDs().Add(8);
  point.SetXSectName("a cross-section name of the main role");
  point.SetXSectName("a cross-section name of the other role", VornComposedPnt::PntType::Sub);
  point.Measure().Add({1, 2});
  point.SetDekiPairID(9);
  return point;
}

inline VornFormCtrlTarget FullTarget(const char* form, VornFormCtrlTarget::TargetPntType type, VornLocation side) {
  VornFormCtrlTarget target =
      model_test::TargetOn(form, type, {"a code of the left shoulder", "a code of the right one"});
  target.SetTargetScope("the whole of the works");
  target.SetTargetRegio("the region of the works");
  target.SetLR(side);
  return target;
}

/// A form with a point at the centre and two on each side.
inline VornBuildForm FullForm(const char* name) {
  using TargetPntType = VornFormCtrlTarget::TargetPntType;
  VornBuildForm form =
      model_test::FormOf(name, {FullPoint(VornLocation::Center, 0.0, 10.0, "the point on the centre line"),
                                FullPoint(VornLocation::Left, -2.0, 9.5, "a code of the left shoulder"),
                                FullPoint(VornLocation::Left, -4.0, 9.0, "a code of the toe on the left"),
                                FullPoint(VornLocation::Right, 2.0, 9.5, "a code of the right one"),
                                FullPoint(VornLocation::Right, 4.0, 9.0, "design-a code of the toe on the right")});
  form.SetXSectType(kFillType);
  form.GetCrossLeft().ThDPairIDs().Add(5);
  Vorn_FormCtrlTargetArray& targets = form.GetFormCtrlTargetArray();
  targets.Add(FullTarget(name, TargetPntType::LeftRight, VornLocation::Unset));
  targets.Add(FullTarget(name, TargetPntType::ShoulderToe, VornLocation::Left));
  targets.Add(FullTarget(name, TargetPntType::ShoulderToe, VornLocation::Right));
  VornFormCtrlTarget withoutPoints = FullTarget(name, TargetPntType::InnerOuter, VornLocation::Right);
  withoutPoints.GetTargetPntArray().RemoveAll();
  targets.Add(withoutPoints);
  return form;
}

/// The design surface, and a layer whose points hang on those of the surface.
inline VornXSection FullSection(double station) {
  VornXSection section = model_test::SectionAt(station);
  section.SetName("a section with a long name");
  section.SetDirectionAngle("12.345678901234567");
  section.SetTargetPntID("an identifier of the target");
  Vorn_BuildFormArray& forms = section.GetBuildFormArray();
  forms.Add(FullForm(kSurface));
  VornBuildForm layer = FullForm(kLayer);
  layer.SetXSectType("a pavement, no plan surface");
  layer.SetParentID(0);
  for (VornComposedPnt& point : layer.GetComposedPntArray()) point.SetParentID(point.GetSerialID());
  forms.Add(layer);
  section.SetExistingFlag(1);
  VornExistingBuildForm ground = model_test::GroundOf({{8.0, -5.0}, {9.75, -1.5}, {9.0, 0.0}, {9.75, 1.5}, {8.0, 5.0}});
  ground.SetName("the ground before the works");
  for (VornExistingComposedPnt& point : ground.GetComposedPntArray()) point.SetName("L, a point of the ground");
  section.GetExistingBuildFormArray().Add(ground);
  return section;
}

inline VornXSections FullSet() {
  VornXSections set;
  set.SetRefAlign("the alignment of the road");
  set.SetRefVertical("its vertical alignment");
  set.SetProjectPhase("the phase of the project");
  set.GetXSectionArray().Add(FullSection(40.0));
  set.GetXSectionArray().Add(FullSection(20.0));
  set.GetFormCtrlTargetArray().Add(
      FullTarget(kSurface, VornFormCtrlTarget::TargetPntType::LeftRight, VornLocation::Unset));
  return set;
}

}  // namespace allocation_test
