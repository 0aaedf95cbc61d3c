// Regulation: puts control targets into their canonical form, and keeps their points in step when cross sections are
// re-stationed, renumbered or deleted.

#include <algorithm>
#include <cmath>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "vorn/control/form_ctrl_target.h"
#include "vorn/framework/tolerance.h"
#include "vorn/model/build_form.h"

namespace {

/// Whether a target keeps the stations of its own points: a length or an area runs over several cross sections.
bool SpansSections(const VornFormCtrlTarget& target) {
  return target.GetControlItem() == VornFormCtrlTarget::ControlItem::Length ||
         target.GetControlItem() == VornFormCtrlTarget::ControlItem::Area;
}

VornFormCtrlTargetPnt PointAt(const NurReal& dist, const CString& code) {
  VornFormCtrlTargetPnt point;
  point.SetCumulativeDist(dist);
  point.SetCode(code);
  return point;
}

}  // namespace

void VornFormCtrlTarget::RegulatePnt(const NurReal& dist, [[maybe_unused]] VornBuildForm* form) {
  if (!m_targetPntArray.IsEmpty()) return;
  switch (m_controlItem) {
    case ControlItem::SlopeLength:
    case ControlItem::Width: {
      // Both codes are taken before a point is added: from then on the codes would be read from the points.
      VornFormCtrlTargetPnt first = PointAt(dist, GetCode1());
      VornFormCtrlTargetPnt second = PointAt(dist, GetCode2());
      m_targetPntArray.Reserve(2);  // a target with one point would never get the other
      m_targetPntArray.Add(std::move(first));
      m_targetPntArray.Add(std::move(second));
      return;
    }
    case ControlItem::Height:
      // The point is made whether or not the form has a composed point of that code.
      m_targetPntArray.Add(PointAt(dist, m_code));
      return;
    default:
      return;
  }
}

bool VornFormCtrlTarget::Regulate() {
  switch (m_controlItem) {
    case ControlItem::SlopeLength:
      return RegulateSlope();
    case ControlItem::Width:
      return RegulateWidth();
    case ControlItem::Thickness:
      return RegulateThickness();
    case ControlItem::Depth:
      return RegulateDepth();
    case ControlItem::Height:
    case ControlItem::XSectArea:
    case ControlItem::Length:
    case ControlItem::Area:
      return true;
    default:
      return false;
  }
}

void VornFormCtrlTarget::SwapPair() { std::swap(m_targetPntArray[0], m_targetPntArray[1]); }

bool VornFormCtrlTarget::RegulateSlope() {
  if (m_targetPntArray.GetSize() != 2) return false;
  const VornFormCtrlTargetPnt& p0 = m_targetPntArray[0];
  const VornFormCtrlTargetPnt& p1 = m_targetPntArray[1];
  const bool acrossCenter =
      p0.GetSide() != p1.GetSide() && p0.GetSide() != VornLocation::Center && p1.GetSide() != VornLocation::Center;
  if (acrossCenter) return false;
  if (std::abs(p1.GetOffset()) < std::abs(p0.GetOffset())) SwapPair();
  m_targetPntType = p1.GetElevation() <= p0.GetElevation() ? TargetPntType::ShoulderToe : TargetPntType::ToeShoulder;
  return true;
}

bool VornFormCtrlTarget::RegulateWidth() {
  if (m_targetPntArray.GetSize() != 2) return false;
  const VornFormCtrlTargetPnt& p0 = m_targetPntArray[0];
  const VornFormCtrlTargetPnt& p1 = m_targetPntArray[1];
  if (p0.GetSide() != p1.GetSide()) {
    m_targetPntType = TargetPntType::LeftRight;
    if (p1.GetOffset() < p0.GetOffset()) SwapPair();
  } else {
    m_targetPntType = TargetPntType::InnerOuter;
    if (std::abs(p1.GetOffset()) < std::abs(p0.GetOffset())) SwapPair();
  }
  return true;
}

bool VornFormCtrlTarget::RegulateThickness() {
  if (m_targetPntArray.GetSize() != 2) return false;
  m_targetPntType = TargetPntType::LowerUpper;
  if (m_targetPntArray[1].GetElevation() < m_targetPntArray[0].GetElevation()) SwapPair();
  return true;
}

bool VornFormCtrlTarget::RegulateDepth() {
  if (m_targetPntArray.GetSize() != 2) return false;
  m_targetPntType = TargetPntType::UpperLower;
  if (m_targetPntArray[1].GetElevation() > m_targetPntArray[0].GetElevation()) SwapPair();
  return true;
}

void VornFormCtrlTarget::RegulateDist(const NurReal& dist) {
  for (VornFormCtrlTargetPnt& point : m_targetPntArray) point.SetCumulativeDist(dist);
}

void VornFormCtrlTarget::SwapBuildFormID(const std::uint32_t& sectionID, const std::uint32_t& a,
                                         const std::uint32_t& b) {
  m_targetPntArray.SwapBuildFormID(sectionID, a, b);
}

void VornFormCtrlTarget::ChangeID(const std::uint32_t& oldSectionID, const std::uint32_t& oldBuildFormID,
                                  const std::uint32_t& oldSerialID, const std::uint32_t& newSectionID,
                                  const std::uint32_t& newBuildFormID, const std::uint32_t& newSerialID) {
  m_targetPntArray.ChangeID(oldSectionID, oldBuildFormID, oldSerialID, newSectionID, newBuildFormID, newSerialID);
}

void VornFormCtrlTargetPntArray::ChangeDist(const double& oldDist, const double& newDist, bool xSectChg) {
  for (int i = GetUpperBound(); i >= 0; --i) {
    VornFormCtrlTargetPnt& point = GetAt(i);
    const bool hit =
        std::abs(point.GetCumulativeDist().Value() - oldDist) < kSameStation && point.GetXSectChg() == xSectChg;
    if (!hit) continue;
    if (KelIsShoki(newDist)) {
      RemoveAt(i);
    } else {
      point.SetCumulativeDist(newDist);
    }
  }
}

// The identifiers of the renumbering below are captured by copy: a caller may well pass those of one of the points,
// which change on the way.

void VornFormCtrlTargetPntArray::SwapBuildFormID(const std::uint32_t& sectionID, const std::uint32_t& a,
                                                 const std::uint32_t& b) {
  std::for_each(begin(), end(), [=](VornFormCtrlTargetPnt& point) {
    if (point.GetSectionID() != sectionID) return;
    if (point.GetBuildFormID() == a) {
      point.SetBuildFormID(b);
    } else if (point.GetBuildFormID() == b) {
      point.SetBuildFormID(a);
    }
  });
}

void VornFormCtrlTargetPntArray::ChangeID(const std::uint32_t& oldSectionID, const std::uint32_t& oldBuildFormID,
                                          const std::uint32_t& oldSerialID, const std::uint32_t& newSectionID,
                                          const std::uint32_t& newBuildFormID, const std::uint32_t& newSerialID) {
  std::for_each(begin(), end(), [=](VornFormCtrlTargetPnt& point) {
    const bool hit = point.GetSectionID() == oldSectionID && point.GetBuildFormID() == oldBuildFormID &&
                     point.GetSerialID() == oldSerialID;
    if (!hit) return;
    point.SetSectionID(newSectionID);
    point.SetBuildFormID(newBuildFormID);
    point.SetSerialID(newSerialID);
  });
}

void Vorn_FormCtrlTargetArray::Regulate() {
  std::set<std::pair<VornFormCtrlTarget::ControlItem, std::string>> seen;
  std::vector<bool> repeats;  // all of them are known before the first is removed
  repeats.reserve(static_cast<std::size_t>(GetSize()));
  for (const VornFormCtrlTarget& target : *this) {
    repeats.push_back(!seen.emplace(target.GetControlItem(), std::string(target.GetCode().View())).second);
  }
  std::size_t next = 0;
  RemoveIf([&](const VornFormCtrlTarget&) { return repeats[next++]; });
}

void Vorn_FormCtrlTargetArray::RegulateDist(const NurReal& dist) {
  for (VornFormCtrlTarget& target : *this) {
    if (!SpansSections(target)) target.RegulateDist(dist);
  }
}

void Vorn_FormCtrlTargetArray::ChangeDist(const double& oldDist, const double& newDist, bool xSectChg) {
  for (VornFormCtrlTarget& target : *this) {
    if (!SpansSections(target)) target.GetTargetPntArray().ChangeDist(oldDist, newDist, xSectChg);
  }
}

void Vorn_FormCtrlTargetArray::ChangeDistH(const double& oldDist, const double& newDist, bool xSectChg) {
  for (VornFormCtrlTarget& target : *this) {
    if (SpansSections(target)) target.GetTargetPntArray().ChangeDist(oldDist, newDist, xSectChg);
  }
}

void Vorn_FormCtrlTargetArray::SwapBuildFormID(const std::uint32_t& sectionID, const std::uint32_t& a,
                                               const std::uint32_t& b) {
  std::for_each(begin(), end(), [=](VornFormCtrlTarget& target) { target.SwapBuildFormID(sectionID, a, b); });
}

void Vorn_FormCtrlTargetArray::ChangeID(const std::uint32_t& oldSectionID, const std::uint32_t& oldBuildFormID,
                                        const std::uint32_t& oldSerialID, const std::uint32_t& newSectionID,
                                        const std::uint32_t& newBuildFormID, const std::uint32_t& newSerialID) {
  std::for_each(begin(), end(), [=](VornFormCtrlTarget& target) {
    target.ChangeID(oldSectionID, oldBuildFormID, oldSerialID, newSectionID, newBuildFormID, newSerialID);
  });
}
