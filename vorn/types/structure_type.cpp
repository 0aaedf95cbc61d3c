#include "vorn/types/structure_type.h"

#include <algorithm>
#include <array>
#include <utility>

#include "vorn/framework/enum_table.h"
#include "vorn/framework/schema.h"
#include "vorn/platform/code_page_932.h"
#include "vorn/platform/exceptions.h"

namespace {

using Type = VornStructureType::Type;

constexpr std::array kTypes = {
    EnumText<Type>{Type::RoadEarthwork, u8"道路土工"_cp932},
    EnumText<Type>{Type::RiverCoastErosionControl, u8"河川・海岸・砂防土工"_cp932},
    EnumText<Type>{Type::RoadPavement, u8"舗装工(道路)"_cp932},
    EnumText<Type>{Type::RiverPavement, u8"舗装工(河川)"_cp932},
    EnumText<Type>{Type::RoadBuriedStructure, u8"道路地下埋設物工"_cp932},
    EnumText<Type>{Type::Other, u8"その他"_cp932},
    EnumText<Type>{Type::MaffCommonEarthwork, u8"共通土工"_cp932},
    EnumText<Type>{Type::MaffPipeline, u8"管水路工事"_cp932},
    EnumText<Type>{Type::MaffFarmField, u8"ほ場整備工事"_cp932},
};

constexpr std::array<std::string_view, 4> kStationTypes = {"NO", "SP", "STA", u8"距離標"_cp932};

constexpr std::array<std::string_view, 6> kPlanTexts = {u8"盛土"_cp932, u8"切土"_cp932,   u8"掘削"_cp932,
                                                        u8"表層"_cp932, u8"基準面"_cp932, u8"その他"_cp932};

struct SiblingCode {
  std::uint32_t code;
  Type type;
};
constexpr std::array kSiblingCodes = {
    SiblingCode{1, Type::RoadEarthwork},         SiblingCode{2, Type::RiverCoastErosionControl},
    SiblingCode{100, Type::RoadPavement},        SiblingCode{101, Type::RiverPavement},
    SiblingCode{200, Type::RoadBuriedStructure}, SiblingCode{300, Type::MaffCommonEarthwork},
    SiblingCode{350, Type::MaffPipeline},        SiblingCode{360, Type::MaffFarmField},
};

}  // namespace

VornStructureType::VornStructureType() : Vorn_Base("tsf:StructureType"), m_stationType("NO") {}

bool VornStructureType::toXML(PimIterator* cursor) {
  if (VornSchema::Instance().IsVer2()) return true;
  return MakeChild(cursor, m_tagName.View(), VornSchema::Instance().Tsf()) && AddAttr(cursor, "type", m_type.View()) &&
         AddAttr(cursor, "jobName", m_jobName.View()) && AddAttr(cursor, "company", m_company.View()) &&
         AddAttr(cursor, "stationType", m_stationType.View()) && ReturnParent(cursor);
}

bool VornStructureType::fromXML(PimIterator* cursor) {
  if (!IsOnOwnTag(cursor)) return false;
  cursor->VisitAttributes([this](std::string_view name, std::string_view value) {
    if (IsMatchTagName(name, "type")) {
      m_type = value;
    } else if (IsMatchTagName(name, "jobName")) {
      m_jobName = value;
    } else if (IsMatchTagName(name, "company")) {
      m_company = value;
    } else if (IsMatchTagName(name, "stationType")) {
      m_stationType = value;
    }
  });
  return true;
}

bool VornStructureType::IsEnable() const {
  const bool knownType = std::any_of(kTypes.begin(), kTypes.end(),
                                     [this](const auto& row) { return m_type.CompareNoCase(row.text) == 0; });
  const bool knownStationType =
      std::find(kStationTypes.begin(), kStationTypes.end(), m_stationType.View()) != kStationTypes.end();
  return knownType && knownStationType;
}

void VornStructureType::Initialize() {
  m_type.Empty();
  m_jobName.Empty();
  m_company.Empty();
  m_stationType.Empty();
}

bool VornStructureType::GetStructureTypes(CStringArray& names) {
  CStringArray all;
  for (const auto& row : kTypes) all.Add(CString(row.text));
  names = std::move(all);
  return !names.IsEmpty();
}

VornStructureType::Type VornStructureType::GetType() const {
  return TextToEnum(kTypes, m_type.View()).value_or(Type::Unknown);
}

void VornStructureType::SetType(Type type) {
  if (type < Type::Unknown) throw CInvalidArgException();
  const std::string_view name = EnumToText(kTypes, type);
  if (!name.empty()) m_type = name;
}

VornStructureType::MinistryType VornStructureType::Ministry(Type type) {
  return VornIsMaff(type) ? MinistryType::Agriculture : MinistryType::Land;
}

CString VornStructureType::MinistryStr() const {
  return Ministry() == MinistryType::Agriculture ? u8"農林水産省"_cp932 : u8"国土交通省"_cp932;
}

bool VornIsRiver(Type type, bool withPavement) {
  return type == Type::RiverCoastErosionControl || (withPavement && type == Type::RiverPavement);
}

bool VornIsPavement(Type type) { return type == Type::RoadPavement || type == Type::RiverPavement; }

bool VornIsMaff(Type type) { return type >= Type::MaffCommonEarthwork && type <= Type::MaffFarmField; }

bool VornIsPlan(const CString& name) {
  return std::any_of(kPlanTexts.begin(), kPlanTexts.end(), [&](std::string_view text) { return name.Find(text) >= 0; });
}

Type VornStructureTypeLumrToVorn(const std::uint32_t& code) {
  for (const SiblingCode& row : kSiblingCodes) {
    if (row.code == code) return row.type;
  }
  return Type::Unknown;
}

std::uint32_t VornStructureTypeVornToLumr(const Type& type) {
  for (const SiblingCode& row : kSiblingCodes) {
    if (row.type == type) return row.code;
  }
  return 0;
}
