#include "vorn/control/form_ctrl_target.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>
#include <vector>

#include "vorn/framework/enum_table.h"
#include "vorn/framework/schema.h"
#include "vorn/framework/tolerance.h"

namespace {

using WorkType = VornFormCtrlTarget::WorkType;
using ControlItem = VornFormCtrlTarget::ControlItem;
using TargetPntType = VornFormCtrlTarget::TargetPntType;

constexpr std::array kWorkTypes = {
    EnumText<WorkType>{WorkType::CutWork, "RE_CutWork"},
    EnumText<WorkType>{WorkType::FillWork, "RE_FillWork"},
};

constexpr std::array kControlItems = {
    EnumText<ControlItem>{ControlItem::SlopeLength, "SlopeLength"},
    EnumText<ControlItem>{ControlItem::Width, "Width"},
    EnumText<ControlItem>{ControlItem::Height, "Height"},
    EnumText<ControlItem>{ControlItem::Thickness, "Thickness"},
    EnumText<ControlItem>{ControlItem::Depth, "Depth"},
    EnumText<ControlItem>{ControlItem::XSectArea, "XSectArea"},
    EnumText<ControlItem>{ControlItem::Length, "Length"},
    EnumText<ControlItem>{ControlItem::Area, "Area"},
};

constexpr std::array kTargetPntTypes = {
    EnumText<TargetPntType>{TargetPntType::ShoulderToe, "Shoulder Toe"},
    EnumText<TargetPntType>{TargetPntType::ToeShoulder, "Toe Shoulder"},
    EnumText<TargetPntType>{TargetPntType::InnerOuter, "Inner Outer"},
    EnumText<TargetPntType>{TargetPntType::LeftRight, "Left Right"},
    EnumText<TargetPntType>{TargetPntType::TargetPnt, "TargetPnt"},
    EnumText<TargetPntType>{TargetPntType::UpperLower, "Upper Lower"},
    EnumText<TargetPntType>{TargetPntType::LowerUpper, "Lower Upper"},
};

template <typename Enum>
bool IsWithin(Enum value, Enum first, Enum last) {
  return value >= first && value <= last;
}

}  // namespace

VornFormCtrlTarget::VornFormCtrlTarget() : Vorn_Base("tsf:FormCtrlTarget") {}

CString VornFormCtrlTarget::GetWorkTypeString(WorkType type) { return EnumToText(kWorkTypes, type); }
CString VornFormCtrlTarget::GetControlItemString(ControlItem item) { return EnumToText(kControlItems, item); }
CString VornFormCtrlTarget::GetTargetPntTypeString(TargetPntType type) { return EnumToText(kTargetPntTypes, type); }

bool VornFormCtrlTarget::SetWorkTypeString(std::string_view text) { return ResetAndSet(kWorkTypes, text, m_workType); }
bool VornFormCtrlTarget::SetControlItemString(std::string_view text) {
  return ResetAndSet(kControlItems, text, m_controlItem);
}
bool VornFormCtrlTarget::SetTargetPntTypeString(std::string_view text) {
  return ResetAndSet(kTargetPntTypes, text, m_targetPntType);
}

CString VornFormCtrlTarget::GetCode() const {
  if (VornSchema::Instance().IsVer2()) return m_code;
  CString codes;
  for (const VornFormCtrlTargetPnt& point : m_targetPntArray) {
    codes += point.GetCode();
    codes += ' ';
  }
  return codes.Trim();
}

CString VornFormCtrlTarget::CodePiece(int index) const {
  if (VornSchema::Instance().IsVer2()) {
    CStringArray pieces;
    DivideString(m_code.View(), pieces);
    return index < pieces.GetSize() ? pieces[index] : CString();
  }
  return m_targetPntArray.IsRange(index) ? m_targetPntArray[index].GetCode() : CString();
}

CString VornFormCtrlTarget::GetCodeN(int n) const {
  if (VornSchema::Instance().IsVer2()) return CString();
  return m_targetPntArray[n].GetCode();
}

bool VornFormCtrlTarget::IsHitBuildForm(const CString& name) const {
  if (VornSchema::Instance().IsVer2()) return false;
  return std::any_of(m_targetPntArray.begin(), m_targetPntArray.end(),
                     [&](const VornFormCtrlTargetPnt& point) { return point.GetBuildFormName() == name; });
}

bool VornFormCtrlTarget::FindPnt(std::uint32_t id) const {
  return std::any_of(m_targetPntArray.begin(), m_targetPntArray.end(),
                     [id](const VornFormCtrlTargetPnt& point) { return point.GetPntID() == id; });
}

bool VornFormCtrlTarget::toXML(PimIterator* cursor) {
  const VornSchema& schema = VornSchema::Instance();
  const bool ver2 = schema.IsVer2();
  if (ver2) m_export = 1;  // edition 2.0 knows no unexported targets, and writing it makes that last: intended
  if (m_export == 0) return true;
  return MakeChild(cursor, m_tagName.View(), schema.Tsf()) &&
         (!ver2 || AddAttr(cursor, "workType", EnumToText(kWorkTypes, m_workType))) &&
         AddAttr(cursor, "controlItem", EnumToText(kControlItems, m_controlItem)) &&
         AddAttr(cursor, "targetScope", m_targetScope.View()) && AddAttr(cursor, "targetRegio", m_targetRegio.View()) &&
         AddAttr(cursor, "targetPntType", EnumToText(kTargetPntTypes, m_targetPntType)) &&
         (ver2 ? SetValue(cursor, m_code.View()) : m_targetPntArray.toXML(cursor)) && ReturnParent(cursor);
}

bool VornFormCtrlTarget::fromXML(PimIterator* cursor) {
  if (!IsOnOwnTag(cursor)) return false;
  cursor->VisitAttributes([this](std::string_view name, std::string_view value) {
    if (IsMatchTagName(name, "workType")) {
      SetWorkTypeString(value);
    } else if (IsMatchTagName(name, "controlItem")) {
      SetControlItemString(value);
    } else if (IsMatchTagName(name, "targetPntType")) {
      SetTargetPntTypeString(value);
    } else if (IsMatchTagName(name, "targetScope")) {
      m_targetScope = value;
    } else if (IsMatchTagName(name, "targetRegio")) {
      m_targetRegio = value;
    }
  });
  cursor->VisitText([this](std::string_view text) { m_code = text; });
  if (VornSchema::Instance().IsVer2()) return true;
  const CString pointTag = m_targetPntArray.tagName();
  return ForEachChild(cursor, [&] { return !IsOnTag(cursor, pointTag.View()) || m_targetPntArray.fromXML(cursor); });
}

bool VornFormCtrlTarget::IsEnable() const {
  return !m_code.IsEmpty() && IsWithin(m_workType, WorkType::CutWork, WorkType::FillWork) &&
         IsWithin(m_controlItem, ControlItem::SlopeLength, ControlItem::Area) && !m_targetScope.IsEmpty() &&
         !m_targetRegio.IsEmpty() && IsWithin(m_targetPntType, TargetPntType::ShoulderToe, TargetPntType::TargetPnt) &&
         (m_targetPntArray.IsEmpty() || m_targetPntArray.IsEnable());
}

int Vorn_FormCtrlTargetArray::Add(const VornFormCtrlTarget& target) { return Add(VornFormCtrlTarget(target)); }

int Vorn_FormCtrlTargetArray::Add(VornFormCtrlTarget&& target) {
  const int index = Vorn_Array::Add(std::move(target));
  SetSerialID(index);
  return index;
}

bool Vorn_FormCtrlTargetArray::AddFromXML(PimIterator* cursor) {
  if (IsEmpty()) Reserve(cursor->CountRun());
  if (!AddFilled([&](VornFormCtrlTarget& target) { return target.fromXML(cursor); })) return false;
  SetSerialID(GetUpperBound());
  return true;
}

bool Vorn_FormCtrlTargetArray::AddRunFromXML(PimIterator* cursor) {
  const int before = GetSize();
  const auto number = [&] {
    for (int i = before; i < GetSize(); ++i) SetSerialID(i);
  };
  try {
    const bool read = fromXML(cursor);
    number();
    return read;
  } catch (...) {
    number();  // the targets that were read stay
    throw;
  }
}

void Vorn_FormCtrlTargetArray::InsertAt(int index, const VornFormCtrlTarget& target) {
  Vorn_Array::InsertAt(index, target);
  SetSerialID(index);
}

void Vorn_FormCtrlTargetArray::SetAt(int index, const VornFormCtrlTarget& target) {
  Vorn_Array::SetAt(index, target);
  SetSerialID(index);
}

void Vorn_FormCtrlTargetArray::SetSerialID(int index) { m_serials.Number(GetAt(index)); }

int Vorn_FormCtrlTargetArray::Find(std::uint32_t serialID) const {
  return FindFirst([=](const VornFormCtrlTarget& target) { return target.GetSerialID() == serialID; });
}

bool Vorn_FormCtrlTargetArray::FindPnt(std::uint32_t id) const {
  return std::any_of(begin(), end(), [id](const VornFormCtrlTarget& target) { return target.FindPnt(id); });
}

void Vorn_FormCtrlTargetArray::ChangeBuildName(const CString& oldName, const CString& newName) {
  SetBuildFormNames(newName, [&](const VornFormCtrlTargetPnt& point) { return point.GetBuildFormName() == oldName; });
}

void Vorn_FormCtrlTargetArray::ChangeBuildName(const CString& oldName, std::uint32_t formID, const CString& newName) {
  SetBuildFormNames(newName, [&](const VornFormCtrlTargetPnt& point) {
    return point.GetBuildFormName() == oldName && point.GetBuildFormID() == formID;
  });
}

template <typename Matches>
void Vorn_FormCtrlTargetArray::SetBuildFormNames(const CString& name, Matches&& matches) {
  std::vector<CString*> changing;
  for (VornFormCtrlTarget& target : *this) {
    for (VornFormCtrlTargetPnt& point : target.GetTargetPntArray()) {
      if (matches(point)) changing.push_back(&point.GetBuildFormName());
    }
  }
  // All copies before the first point changes; the caller may pass the name that one of them holds, too.
  std::vector<CString> names(changing.size(), name);
  for (std::size_t i = 0; i < names.size(); ++i) *changing[i] = std::move(names[i]);
}

int VornIsPoint_LR(VornLocation side, double offset) {
  const bool left = offset < -kAtCenterLine;
  if (side == VornLocation::Left) return left ? 1 : 0;
  if (side == VornLocation::Right) return left ? 0 : 1;
  return 1;
}
