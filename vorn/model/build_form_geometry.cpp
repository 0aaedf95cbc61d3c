// From the input values of a build form's points to their positions, and between codes and positions.

#include <cmath>

#include "vorn/framework/schema.h"
#include "vorn/model/build_form.h"
#include "vorn/platform/nur_mrm.h"
#include "vorn/types/structure_type.h"

void VornBuildForm::RegulateComposedPnt(const NurReal& centerHeight, NurReal& dist, NurReal& height) {
  if (!VornSchema::Instance().IsValid() || m_composedPntArray.IsEmpty()) return;
  VornComposedPnt& start = m_composedPntArray[0];
  start.RegulateCenter(centerHeight);
  if (VornIsPlan(m_xSectType)) {
    dist = start.GetX();
    height = start.GetY();
  }
  const VornComposedPnt* previous = &start;
  for (int i = 1; i < m_composedPntArray.GetSize(); ++i) {
    VornComposedPnt& point = m_composedPntArray[i];
    if (m_composedPntArray[i - 1].GetLocation() != point.GetLocation()) previous = &start;
    point.Regulate(*previous);
    previous = &point;
  }
}

void VornBuildForm::CalcPointGhDist(const NurReal& centerHeight) {
  int center = -1;
  VornIndexArray left;
  VornIndexArray right;
  // At a point without a side the lists end early, and what they hold so far is placed: intended.
  m_composedPntArray.QueryIndexArray(center, left, right);
  if (center < 0) return;
  VornComposedPnt& centerPoint = m_composedPntArray[center];
  const NurReal dist = centerPoint.GetX().IsSet() ? centerPoint.GetX() : NurReal(0.0);
  NurReal height = centerHeight;
  if (height.IsSet() && centerPoint.GetY().IsSet()) height = height.Value() + centerPoint.GetY().Value();
  centerPoint.SetCLDist(dist);
  centerPoint.SetGh(height);
  PlaceOutward(left, -1.0, dist, height);
  PlaceOutward(right, 1.0, dist, height);
}

void VornBuildForm::PlaceOutward(const VornIndexArray& side, double sign, NurReal dist, NurReal height) {
  for (const int index : side) {
    VornComposedPnt& point = m_composedPntArray[index];
    NurReal nextDist;
    NurReal nextHeight;
    // Told by X itself: with a sign before it, an unset X would pass for a set one on the left.
    if (dist.IsSet() && height.IsSet() && point.GetX().IsSet() && point.GetY().IsSet()) {
      nextDist = dist.Value() + sign * point.GetX().Value();
      nextHeight = height.Value() + point.GetY().Value();
    }
    point.SetCLDist(nextDist);
    point.SetGh(nextHeight);
    if (!nextDist.IsSet() || !nextHeight.IsSet()) continue;
    dist = nextDist;
    height = nextHeight;
  }
}

bool VornBuildForm::GetPntFromCode(const CString& code, TamWorld2& pos) const {
  for (const VornComposedPnt& point : m_composedPntArray) {
    if (point.GetCode().CompareNoCase(code.View()) != 0) continue;
    pos = point.HeightAndDist();
    return true;
  }
  return false;
}

bool VornBuildForm::GetCodeFromPnt(const TamWorld2& pos, CString& code) const {
  for (const VornComposedPnt& point : m_composedPntArray) {
    if (!TamIsTinyLength(pos.y - point.GetCLDist().Value()) || !TamIsTinyLength(pos.x - point.GetGh().Value()))
      continue;
    code = point.GetCode();
    return true;
  }
  return false;
}

bool VornBuildForm::QueryPaveInfo(NurReal& height, NurReal& leftDist, NurReal& rightDist) const {
  VornIndexArray order;
  const bool any = m_composedPntArray.QueryIndexArrayLtoR(order);
  height.Unset();
  leftDist.Unset();
  rightDist.Unset();
  if (!any) return false;
  const VornComposedPnt& leftmost = m_composedPntArray[order[0]];
  height = leftmost.GetGh();
  leftDist = leftmost.GetCLDist();
  rightDist = m_composedPntArray[order[order.GetUpperBound()]].GetCLDist();
  return true;
}

bool VornBuildForm::IsSurface(const NurReal& height) const {
  constexpr KelMrmFigure kMillimetres = 3;
  constexpr double kSameHeight = 1e-6;
  if (m_composedPntArray.IsEmpty()) return false;
  const NurMrm rounding(kMillimetres);
  const double start = rounding.ZMrm(m_composedPntArray[0].GetGh().Value());
  return std::abs(start - rounding.ZMrm(height.Value())) < kSameHeight;
}
