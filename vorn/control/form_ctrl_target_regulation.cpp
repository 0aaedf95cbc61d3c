// Regulation: puts control targets into their canonical form, and keeps their points in step when cross sections are
// re-stationed, renumbered or deleted.

#include <algorithm>
#include <cmath>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "vorn/control/form_ctrl_target.h"
#include "vorn/framework/tolerance.h"

namespace {

VornFormCtrlTargetPnt PointAt(const NurReal& dist, const CString& code) {
  VornFormCtrlTargetPnt point;
  point.SetCumulativeDist(dist);
  point.SetCode(code);
  return point;
}

}  // namespace

void VornFormCtrlTarget::RegulatePnt(const NurReal& dist, VornBuildForm*) {
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
      m_targetPntArray.Add(PointAt(dist, m_code));
      return;
    default:
      return;
  }
}

bool VornFormCtrlTarget::Regulate() {
  const bool isPair = m_targetPntArray.GetSize() == 2;
  switch (m_controlItem) {
    case ControlItem::SlopeLength:
      return isPair && RegulateSlope(m_targetPntArray[0], m_targetPntArray[1]);
    case ControlItem::Width:
      if (isPair) RegulateWidth(m_targetPntArray[0], m_targetPntArray[1]);
      return isPair;
    case ControlItem::Thickness:
      if (isPair) RegulateThickness(m_targetPntArray[0], m_targetPntArray[1]);
      return isPair;
    case ControlItem::Depth:
      if (isPair) RegulateDepth(m_targetPntArray[0], m_targetPntArray[1]);
      return isPair;
    case ControlItem::Height:
    case ControlItem::XSectArea:
    case ControlItem::Length:
    case ControlItem::Area:
      return true;
    default:
      return false;
  }
}

bool VornFormCtrlTarget::RegulateSlope(VornFormCtrlTargetPnt& p0, VornFormCtrlTargetPnt& p1) {
  const bool acrossCenter =
      p0.GetSide() != p1.GetSide() && p0.GetSide() != VornLocation::Center && p1.GetSide() != VornLocation::Center;
  if (acrossCenter) return false;
  if (std::abs(p1.GetOffset()) < std::abs(p0.GetOffset())) std::swap(p0, p1);
  m_targetPntType = p1.GetElevation() <= p0.GetElevation() ? TargetPntType::ShoulderToe : TargetPntType::ToeShoulder;
  return true;
}

void VornFormCtrlTarget::RegulateWidth(VornFormCtrlTargetPnt& p0, VornFormCtrlTargetPnt& p1) {
  if (p0.GetSide() != p1.GetSide()) {
    m_targetPntType = TargetPntType::LeftRight;
    if (p1.GetOffset() < p0.GetOffset()) std::swap(p0, p1);
  } else {
    m_targetPntType = TargetPntType::InnerOuter;
    if (std::abs(p1.GetOffset()) < std::abs(p0.GetOffset())) std::swap(p0, p1);
  }
}

void VornFormCtrlTarget::RegulateThickness(VornFormCtrlTargetPnt& p0, VornFormCtrlTargetPnt& p1) {
  m_targetPntType = TargetPntType::LowerUpper;
  if (p1.GetElevation() < p0.GetElevation()) std::swap(p0, p1);
}

void VornFormCtrlTarget::RegulateDepth(VornFormCtrlTargetPnt& p0, VornFormCtrlTargetPnt& p1) {
  m_targetPntType = TargetPntType::UpperLower;
  if (p1.GetElevation() > p0.GetElevation()) std::swap(p0, p1);
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
    const bool hit = IsSameStation(point.GetCumulativeDist().Value(), oldDist) && point.GetXSectChg() == xSectChg;
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
  RemoveIndices([&](int index) { return repeats[static_cast<std::size_t>(index)]; });
}

void Vorn_FormCtrlTargetArray::RegulateDist(const NurReal& dist) {
  for (VornFormCtrlTarget& target : *this) {
    if (!target.SpansSections()) target.RegulateDist(dist);
  }
}

void Vorn_FormCtrlTargetArray::ChangeDist(const double& oldDist, const double& newDist, bool xSectChg) {
  for (VornFormCtrlTarget& target : *this) {
    if (!target.SpansSections()) target.GetTargetPntArray().ChangeDist(oldDist, newDist, xSectChg);
  }
}

void Vorn_FormCtrlTargetArray::ChangeDistH(const double& oldDist, const double& newDist, bool xSectChg) {
  for (VornFormCtrlTarget& target : *this) {
    if (target.SpansSections()) target.GetTargetPntArray().ChangeDist(oldDist, newDist, xSectChg);
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
