// Where the design surface of a cross section meets the existing ground.

#include <algorithm>
#include <cmath>
#include <optional>

#include "vorn/model/ground_profile.h"
#include "vorn/model/x_section.h"
#include "vorn/platform/line_geometry.h"
#include "vorn/types/structure_type.h"

namespace {

bool IsCrossingOn(const VornComposedPnt& point, VornLocation side) {
  return point.GetLocation() == side && !point.GetSeriesPnt();
}

void MarkAsCrossing(VornComposedPnt& point) {
  point.SetPointType(point.GetPointType() | VornComposedPnt::kKePoint | VornComposedPnt::kCrossPoint);
  point.SetSeriesPnt(false);
}

/// A point of its own at a crossing, in the segment that ends at `outer`.
VornComposedPnt CrossingPoint(const TamWorld2& pos, VornLocation side, const VornComposedPnt& outer) {
  VornComposedPnt point;
  point.SetCode(side == VornLocation::Left ? "XL" : "XR");
  point.SetGh(pos.x);
  point.SetCLDist(pos.y);
  point.SetLocation(outer.GetLocation());
  point.SetComponentType(outer.GetComponentType());  // from a new point's unset type: the old type stays unset
  point.SetCtrlFlags(outer.GetCtrlFlags());
  point.SetPointType(VornComposedPnt::kCrossPoint);
  point.SetSeriesPnt(false);
  point.SetExistence(VORN_Existence::True);
  point.SetDataType(VornComposedPnt::DataType::WidthHeight);
  return point;
}

/// A point without a position lies nowhere, and no segment to or from it passes anywhere.
bool IsPlaced(const VornComposedPnt& point) { return point.GetGh().IsSet() && point.GetCLDist().IsSet(); }

bool LiesAt(const TamWorld2& pos, const VornComposedPnt& point) {
  return IsPlaced(point) && TamIsTinyDistance(pos, point.HeightAndDist());
}

bool LiesBetween(const TamWorld2& pos, const VornComposedPnt& inner, const VornComposedPnt& outer) {
  if (!IsPlaced(inner) || !IsPlaced(outer)) return false;
  const TamWorld2 from = inner.HeightAndDist();
  const TamWorld2 to = outer.HeightAndDist();
  TamWorld2 nearest;
  return TamyIntersectDotLine(nearest, pos, {from, {to.x - from.x, to.y - from.y}});
}

/// Marks or inserts a crossing point in one form; false when the position is not on it. A segment begins at the point
/// before it in the array, also where that is one of the other side: intended. Between the start point and a side that
/// stands behind the other one no point is inserted; another choice would put crossings elsewhere than in the projects
/// that hosts have made so far.
bool InsertIntoForm(Vorn_ComposedPntArray& points, const TamWorld2& pos, VornLocation side) {
  for (int i = 0; i < points.GetSize(); ++i) {
    VornComposedPnt& point = points[i];
    if (i > 0 && point.GetLocation() != side) continue;
    if (LiesAt(pos, point)) {
      MarkAsCrossing(point);
      return true;
    }
    if (i > 0 && LiesBetween(pos, points[i - 1], point)) {
      points.InsertAt(i, CrossingPoint(pos, side, point));
      return true;
    }
  }
  return false;
}

/// A KE point was a design point before a crossing made it one: its code in the design stands behind the last "-".
void MakeOrdinary(VornComposedPnt& point) {
  const int hyphen = point.GetCode().ReverseFind('-');
  if (hyphen >= 0) point.SetCode(point.GetCode().Mid(hyphen + 1));  // first: it may lack memory
  point.SetPointType(static_cast<std::uint16_t>(point.GetPointType() & ~VornComposedPnt::kCrossPoint));
  point.SetSeriesPnt(true);
}

}  // namespace

bool VornXSection::IsCrossPoint() const {
  bool left = false;
  bool right = false;
  for (const VornBuildForm& form : m_buildFormArray) {
    for (const VornComposedPnt& point : form.GetComposedPntArray()) {
      left = left || IsCrossingOn(point, VornLocation::Left);
      right = right || IsCrossingOn(point, VornLocation::Right);
    }
  }
  return left && right;
}

void VornXSection::ChangeCrossPoint(VornLocation side) {
  for (VornBuildForm& form : m_buildFormArray) {
    int first = -1;
    int last = -1;
    form.GetComposedPntArray().GetLocationAreaIndex(side, first, last);
    if (last >= 0) MarkAsCrossing(form.GetComposedPntArray()[last]);
  }
}

void VornXSection::RemoveCrossPoint(VornLocation side) {
  for (VornBuildForm& form : m_buildFormArray) {
    Vorn_ComposedPntArray& points = form.GetComposedPntArray();
    points.RemoveIf([=](const VornComposedPnt& point) { return IsCrossingOn(point, side) && !point.IsKePoint(); });
    for (VornComposedPnt& point : points) {
      if (IsCrossingOn(point, side)) MakeOrdinary(point);
    }
  }
}

void VornXSection::InsertPoint(const TamWorld2& pos, VornLocation side) {
  for (VornBuildForm& form : m_buildFormArray) {
    if (InsertIntoForm(form.GetComposedPntArray(), pos, side)) return;
  }
}

bool VornXSection::IsValidPres() const {
  return m_existingFlag != 0 && !m_existingBuildFormArray.IsEmpty() &&
         !m_existingBuildFormArray[0].GetComposedPntArray().IsEmpty();
}

KelPointArray VornXSection::Crossings(const VornGroundProfile& ground, VornLocation side) const {
  KelPointArray crossings;
  for (const VornBuildForm& form : m_buildFormArray) {
    if (!VornIsPlan(form.GetXSectType())) continue;
    const Vorn_ComposedPntArray& design = form.GetComposedPntArray();
    VornIndexArray left;
    VornIndexArray right;
    design.QueryIndexArray(left, right);
    const VornIndexArray& indices = side == VornLocation::Left ? left : right;
    for (int i = 0; i + 1 < indices.GetSize(); ++i) {
      const TamWorld2 from = design[indices[i]].HeightAndDist();
      const TamWorld2 to = design[indices[i + 1]].HeightAndDist();
      if (const auto crossing = ground.FindCrossing(from, to)) crossings.Add(*crossing);
    }
  }
  return crossings;
}

int VornXSection::GetCrossPoint(VornLocation side, KelPointArray& points) const {
  if (!IsValidPres()) return 0;
  const VornGroundProfile ground(m_existingBuildFormArray[0].GetComposedPntArray());
  const KelPointArray found = Crossings(ground, side);
  points.Append(found);
  return found.GetSize();
}

void VornXSection::CalcCrossPoint() {
  // The ground first: the crossing points go only when everything is there to find them again.
  std::optional<VornGroundProfile> ground;
  if (IsValidPres()) ground.emplace(m_existingBuildFormArray[0].GetComposedPntArray());
  RemoveCrossPoint(VornLocation::Left);
  RemoveCrossPoint(VornLocation::Right);
  if (ground) {
    InsertOutermostCrossing(*ground, VornLocation::Left);
    InsertOutermostCrossing(*ground, VornLocation::Right);
  }
  RegulateComposedPnt();
}

void VornXSection::InsertOutermostCrossing(const VornGroundProfile& ground, VornLocation side) {
  const KelPointArray crossings = Crossings(ground, side);
  if (crossings.IsEmpty()) return;
  const auto nearer = [](const TamWorld2& a, const TamWorld2& b) { return std::abs(a.y) < std::abs(b.y); };
  InsertPoint(*std::max_element(crossings.begin(), crossings.end(), nearer), side);  // the first of equals
}
