#include "vorn/model/composed_pnt.h"

#include <algorithm>
#include <utility>

#include "vorn/framework/enum_table.h"
#include "vorn/framework/numerical_precision.h"
#include "vorn/framework/schema.h"
#include "vorn/model/cross_point_info.h"
#include "vorn/platform/code_page_932.h"

namespace {

using ComponentType = VornComposedPnt::ComponentType;
using SlopeType = VornComposedPnt::SlopeType;
using DataType = VornComposedPnt::DataType;
using ElementType = VornComposedPnt::ElementType;

constexpr std::array kExistences = {
    EnumText<VORN_Existence>{VORN_Existence::Empty, ""},
    EnumText<VORN_Existence>{VORN_Existence::False, "false"},
    EnumText<VORN_Existence>{VORN_Existence::True, "true"},
};

constexpr std::array kComponentTypes = {
    EnumText<ComponentType>{ComponentType::RoadbedFill, "Roadbed(Fill)"},
    EnumText<ComponentType>{ComponentType::RoadbedCut, "Roadbed(Cut)"},
    EnumText<ComponentType>{ComponentType::SlopeFill, "Slope(Fill)"},
    EnumText<ComponentType>{ComponentType::SlopeCut, "Slope(Cut)"},
    EnumText<ComponentType>{ComponentType::BermFill, "Berm(Fill)"},
    EnumText<ComponentType>{ComponentType::BermCut, "Berm(Cut)"},
    EnumText<ComponentType>{ComponentType::Other, "Other"},
    EnumText<ComponentType>{ComponentType::Roadbed, "Roadbed"},
    EnumText<ComponentType>{ComponentType::Slope, "Slope"},
    EnumText<ComponentType>{ComponentType::Berm, "Berm"},
};

constexpr std::array kComponentTypeNames = {
    EnumText<ComponentType>{ComponentType::RoadbedFill, u8"道路面(盛土)"_cp932},
    EnumText<ComponentType>{ComponentType::RoadbedCut, u8"道路面(切土)"_cp932},
    EnumText<ComponentType>{ComponentType::SlopeFill, u8"法面(盛土)"_cp932},
    EnumText<ComponentType>{ComponentType::SlopeCut, u8"法面(切土)"_cp932},
    EnumText<ComponentType>{ComponentType::BermFill, u8"小段(盛土)"_cp932},
    EnumText<ComponentType>{ComponentType::BermCut, u8"小段(切土)"_cp932},
    EnumText<ComponentType>{ComponentType::Other, u8"その他"_cp932},
    EnumText<ComponentType>{ComponentType::Roadbed, u8"道路"_cp932},
    EnumText<ComponentType>{ComponentType::Slope, u8"法面"_cp932},
    EnumText<ComponentType>{ComponentType::Berm, u8"小段"_cp932},
};

constexpr std::array kSlopeTypes = {
    EnumText<SlopeType>{SlopeType::Percent, "Percent"},
    EnumText<SlopeType>{SlopeType::Rate, "Rate"},
};

constexpr std::array kDataTypes = {
    EnumText<DataType>{DataType::WidthHeight, "WidthHeight"},
    EnumText<DataType>{DataType::Percent, "Percent"},
    EnumText<DataType>{DataType::Rate, "Rate"},
};

// The parentheses are full-width here and ASCII in the component types' names.
constexpr std::array kElementTypes = {
    EnumText<ElementType>{ElementType::Carriageway, u8"車道"_cp932},
    EnumText<ElementType>{ElementType::Median, u8"中央帯"_cp932},
    EnumText<ElementType>{ElementType::Shoulder, u8"路肩"_cp932},
    EnumText<ElementType>{ElementType::StoppingLane, u8"停車帯"_cp932},
    EnumText<ElementType>{ElementType::Sidewalk, u8"歩道"_cp932},
    EnumText<ElementType>{ElementType::PlantingStrip, u8"植樹帯"_cp932},
    EnumText<ElementType>{ElementType::FrontageRoad, u8"副道"_cp932},
    EnumText<ElementType>{ElementType::TrackBed, u8"軌道敷"_cp932},
    EnumText<ElementType>{ElementType::Separator, u8"分離帯"_cp932},
    EnumText<ElementType>{ElementType::MarginalStrip, u8"側帯"_cp932},
    EnumText<ElementType>{ElementType::Subgrade, u8"路床"_cp932},
    EnumText<ElementType>{ElementType::RoadBody, u8"路体"_cp932},
    EnumText<ElementType>{ElementType::Excavation, u8"床掘（掘削）"_cp932},
    EnumText<ElementType>{ElementType::SlopeFill, u8"法面（盛土）"_cp932},
    EnumText<ElementType>{ElementType::SlopeCut, u8"法面（切土）"_cp932},
    EnumText<ElementType>{ElementType::BermFill, u8"小段（盛土）"_cp932},
    EnumText<ElementType>{ElementType::BermCut, u8"小段（切土）"_cp932},
    EnumText<ElementType>{ElementType::RetainingWall, u8"擁壁"_cp932},
    EnumText<ElementType>{ElementType::SideDitch, u8"側溝"_cp932},
    EnumText<ElementType>{ElementType::Pavement, u8"舗装"_cp932},
    EnumText<ElementType>{ElementType::Other, u8"その他"_cp932},
    EnumText<ElementType>{ElementType::LeveeCrown, u8"堤防天端"_cp932},
    EnumText<ElementType>{ElementType::EarthworkSurfaceFill, u8"土工面（盛土）"_cp932},
};

ComponentType ComponentOf(ElementType element, ComponentType current) {
  switch (element) {
    case ElementType::Unset:
      return current;
    case ElementType::Carriageway:
    case ElementType::Shoulder:
    case ElementType::Sidewalk:
    case ElementType::FrontageRoad:
    case ElementType::TrackBed:
    case ElementType::Subgrade:
    case ElementType::RoadBody:
    case ElementType::Excavation:
    case ElementType::Pavement:
    case ElementType::LeveeCrown:
    case ElementType::EarthworkSurfaceFill:
      return ComponentType::Roadbed;
    case ElementType::SlopeFill:
    case ElementType::SlopeCut:
      return ComponentType::Slope;
    case ElementType::BermFill:
    case ElementType::BermCut:
      return ComponentType::Berm;
    default:
      return ComponentType::Other;
  }
}

ElementType ElementOf(ComponentType component, bool isFill, ElementType current) {
  switch (component) {
    case ComponentType::RoadbedFill:
    case ComponentType::RoadbedCut:
    case ComponentType::Roadbed:
      return ElementType::Carriageway;
    case ComponentType::SlopeFill:
      return ElementType::SlopeFill;
    case ComponentType::SlopeCut:
      return ElementType::SlopeCut;
    case ComponentType::BermFill:
      return ElementType::BermFill;
    case ComponentType::BermCut:
      return ElementType::BermCut;
    case ComponentType::Other:
      return ElementType::Other;
    case ComponentType::Slope:
      return isFill ? ElementType::SlopeFill : ElementType::SlopeCut;
    case ComponentType::Berm:
      return isFill ? ElementType::BermFill : ElementType::BermCut;
    default:
      return current;
  }
}

}  // namespace

VornComposedPnt::VornComposedPnt() : Vorn_Base("tsf:ComposedPnt") {}

// --- classification ------------------------------------------------------------------------------------------------

bool VornComposedPnt::IsEnable() const {
  return !GetCode().IsEmpty() && m_existence >= VORN_Existence::Empty && m_existence <= VORN_Existence::True;
}

void VornComposedPnt::RegulateComponent(bool fromElement, bool isFill) {
  if (fromElement) {
    m_componentType = ComponentOf(m_elementType, m_componentType);
  } else {
    m_elementType = ElementOf(m_componentType, isFill, m_elementType);
  }
}

CString VornComposedPnt::GetLocationStr(VornLocation location) { return EnumToText(kVornLocationTexts, location); }
CString VornComposedPnt::GetExistenceString(VORN_Existence existence) { return EnumToText(kExistences, existence); }
CString VornComposedPnt::GetComponentTypeStr(ComponentType type) { return EnumToText(kComponentTypes, type); }
CString VornComposedPnt::GetSlopeTypeStr(SlopeType type) { return EnumToText(kSlopeTypes, type); }
CString VornComposedPnt::GetDataTypeStr(DataType type) { return EnumToText(kDataTypes, type, "WidthHeight"); }
CString VornComposedPnt::ComponentTypeName(ComponentType type) { return EnumToText(kComponentTypeNames, type); }
CString VornComposedPnt::ElmTypeName(ElementType type) { return EnumToText(kElementTypes, type); }

bool VornComposedPnt::SetLocationStr(std::string_view text) {
  return ResetAndSet(kVornLocationTexts, text, m_location);
}

bool VornComposedPnt::SetExistenceString(std::string_view text) { return ResetAndSet(kExistences, text, m_existence); }

bool VornComposedPnt::SetComponentTypeStr(std::string_view text) {
  const bool known = ResetAndSet(kComponentTypes, text, m_componentType);
  // The reset happens before the old type is taken, so a read point never knows a former type: intended.
  if (known) m_oldCmpType = ComponentType::Unset;
  return known;
}

bool VornComposedPnt::SetSlopeTypeStr(std::string_view text) { return ResetAndSet(kSlopeTypes, text, m_slopeType); }

bool VornComposedPnt::SetDataTypeStr(std::string_view text) { return SetIfKnown(kDataTypes, text, m_dataType); }

void VornComposedPnt::ElmType(std::string_view text) {
  for (const auto& row : kElementTypes) {
    if (row.text == text) m_elementType = row.value;
  }
}

// --- detail records ------------------------------------------------------------------------------------------------

template <typename Change>
void VornComposedPnt::ForEachDetail(Change&& change) {
  change(m_main);
  if (m_sub.IsMade()) change(m_sub.Change());
}

/// Both records change or none does: all that needs memory comes first.
template <typename Member>
void VornComposedPnt::SetDetail(Member Detail::*member, Member value, PntType t) {
  const bool sub = t == PntType::Sub || t == PntType::Both;
  // What a new record holds already does not make one.
  if (sub && !(m_sub.Get().*member == value)) {
    Member copy = value;
    m_sub.Change().*member = std::move(copy);
  }
  if (t != PntType::Sub) m_main.*member = std::move(value);
}

void VornComposedPnt::SetCode(const CString& code, PntType t) {
  CString last = code;  // code may be a reference into a record
  SetDetail(&Detail::Code, code, t);
  m_lastCode = std::move(last);
}

void VornComposedPnt::SetXSectType(std::uint32_t type, PntType t) { SetDetail(&Detail::XSectType, type, t); }
void VornComposedPnt::SetXSectName(const CString& name, PntType t) { SetDetail(&Detail::XSectName, name, t); }

void VornComposedPnt::SetXSectName(const CString& name, std::uint32_t id, PntType t) {
  // A record that the identifier needs is made before the name changes.
  if (t != PntType::Main && m_sub.Get().XSectNameID != id) (void)m_sub.Change();
  SetXSectName(name, t);
  SetXSectNameID(id, t);
}

void VornComposedPnt::SetXSectNameID(std::uint32_t id, PntType t) { SetDetail(&Detail::XSectNameID, id, t); }
void VornComposedPnt::SetDekiPairID(std::uint32_t id, PntType t) { SetDetail(&Detail::DekiPairID, id, t); }
void VornComposedPnt::SetConnectionAutoLinePrev(std::int32_t on, PntType t) { SetDetail(&Detail::AutoLinePrev, on, t); }
void VornComposedPnt::SetConnectionAutoLineNext(std::int32_t on, PntType t) { SetDetail(&Detail::AutoLineNext, on, t); }

void VornComposedPnt::SetConnectionAutoLine(std::int32_t prev, std::int32_t next) {
  if (prev != 0 || next != 0) (void)m_sub.Change();  // before the first of the two lines changes
  SetConnectionAutoLinePrev(prev, PntType::Both);
  SetConnectionAutoLineNext(next, PntType::Both);
}

VornComposedPnt::PntType VornComposedPnt::FindPntType(std::uint32_t xsectType, const CString& xsectName) const {
  for (const PntType t : {PntType::Main, PntType::Sub}) {
    if (DetailOf(t).XSectType == xsectType && DetailOf(t).XSectName == xsectName) return t;
  }
  return PntType::Both;
}

void VornComposedPnt::InitDetail(PntType t) {
  if (t == PntType::Both) {
    ForEachDetail([](Detail& detail) { InitDetail(detail); });
  } else {
    InitDetail(DetailOf(t));
  }
}

void VornComposedPnt::InitDetail(Detail& detail) {
  Detail fresh;
  fresh.Measure = std::move(detail.Measure);
  detail = std::move(fresh);
}

void VornComposedPnt::CopyDetail(const VornComposedPnt& other) {
  Detail main = other.m_main;
  m_sub = other.m_sub;
  m_main = std::move(main);
}

bool VornComposedPnt::IsUsedSub() const {
  const Detail& sub = m_sub.Get();
  return (sub.XSectType != m_main.XSectType && sub.XSectType != 0) ||
         (sub.XSectNameID != m_main.XSectNameID && sub.XSectNameID != 0);
}

bool VornComposedPnt::IsSeptSectPoint(bool byID) const {
  if (!IsUsedSub()) return false;
  const Detail& sub = m_sub.Get();
  if (m_main.XSectType != sub.XSectType) return true;
  return byID ? m_main.XSectNameID != sub.XSectNameID : !(m_main.XSectName == sub.XSectName);
}

// --- connections ---------------------------------------------------------------------------------------------------

void VornComposedPnt::ClearConnectInfo(bool clearCode) {
  ForEachDetail([&](Detail& detail) {
    if (clearCode) detail.Code.Empty();
    detail.DekiPairID = kVornNoID;
  });
  m_thDPairIDs.RemoveAll();
  m_autoConnect = 0;
}

void VornComposedPnt::CopyConnectInfo(const VornCrossPointInfo& info) {
  VornUIntArray pairs = info.ThDPairIDs();
  SetDekiPairID(info.GetDekiPairID(), PntType::Both);
  m_thDPairIDs = std::move(pairs);
  m_id = info.GetID();
}

void VornComposedPnt::ConnectIDs(VornUIntArray& ids) const {
  VornUIntArray connected;
  const std::uint32_t pair = GetDekiPairID();
  if (static_cast<std::int32_t>(pair) > 0) connected.Add(pair);
  for (const std::uint32_t id : m_thDPairIDs) connected.Add(id);
  connected.RemoveDup();
  std::sort(connected.begin(), connected.end());
  ids = std::move(connected);
}

void VornComposedPnt::AttrCopy(const VornComposedPnt& other) {
  *this = other;
  ClearConnectInfo(true);
  ForEachDetail([](Detail& detail) {
    detail.XSectType = 0;
    detail.Measure.RemoveAll();
  });
  m_serialID = kVornNoID;
}

// --- XML -----------------------------------------------------------------------------------------------------------

bool VornComposedPnt::toXML(PimIterator* cursor) {
  const VornSchema& schema = VornSchema::Instance();
  const bool ver2 = schema.IsVer2();
  const bool existenceGiven = m_existence == VORN_Existence::False || m_existence == VORN_Existence::True;
  return MakeChild(cursor, m_tagName.View(), schema.Tsf()) && AddAttr(cursor, "code", GetCode().View()) &&
         AddAttr(cursor, "location", EnumToText(kVornLocationTexts, m_location)) &&
         (IsCenter() || AddAttr(cursor, "componentType", EnumToText(kComponentTypes, m_componentType))) &&
         (m_seriesPnt || AddAttr(cursor, "seriesPnt", "false")) &&
         (!ver2 || IsCenter() || AddAttr(cursor, "slopeType", EnumToText(kSlopeTypes, m_slopeType))) &&
         (ver2 || AddAttr(cursor, "dataType", EnumToText(kDataTypes, m_dataType, "WidthHeight"))) &&
         (!existenceGiven || AddAttr(cursor, "existence", EnumToText(kExistences, m_existence))) &&
         SetValue(cursor, GetTextData().View()) && ReturnParent(cursor);
}

bool VornComposedPnt::fromXML(PimIterator* cursor) {
  if (!IsOnOwnTag(cursor)) return false;
  cursor->VisitAttributes([this](std::string_view name, std::string_view value) { ReadAttribute(name, value); });
  cursor->VisitText([this](std::string_view text) { GetTextVal(text); });
  return true;
}

void VornComposedPnt::ReadAttribute(std::string_view name, std::string_view value) {
  if (IsMatchTagName(name, "code")) {
    m_main.Code = value;
    m_lastCode = value;
  } else if (IsMatchTagName(name, "location")) {
    SetLocationStr(value);
  } else if (IsMatchTagName(name, "componentType")) {
    SetComponentTypeStr(value);
  } else if (IsMatchTagName(name, "dataType")) {
    SetDataTypeStr(value);
  } else if (IsMatchTagName(name, "slopeType")) {
    SetSlopeTypeStr(value);
  } else if (IsMatchTagName(name, "existence")) {
    SetExistenceString(value);
  } else if (IsMatchTagName(name, "seriesPnt")) {
    m_seriesPnt = value != "false";
  }
}

std::array<KelMrmFigure, 2> VornComposedPnt::TextPlaces() const {
  constexpr KelMrmFigure kPlacesOfUntyped = 9;  // nothing is lost of values that nobody knows how to read
  const VornNumericalPrecision& precision = VornNumericalPrecision::GetInstance();
  if (VornSchema::Instance().IsVer2()) {
    return {precision.GetDecimalPlaceDist(), IsSlope() ? precision.GetDecimalRate() : precision.GetDecimalPercent()};
  }
  switch (m_dataType) {
    case DataType::WidthHeight:
      return {precision.GetDecimalPlaceDist(), precision.GetDecimalPlaceZ()};
    case DataType::Percent:
      return {precision.GetDecimalPlaceDist(), precision.GetDecimalPlaceSlant()};
    case DataType::Rate:
      return {precision.GetDecimalPlaceZ(), precision.GetDecimalPlaceSlope()};
    default:
      return {kPlacesOfUntyped, kPlacesOfUntyped};
  }
}

CString VornComposedPnt::GetTextData() const {
  const auto [placesX, placesY] = TextPlaces();
  CString text(NurMrm(placesX).Format(m_x.Value()).View());
  text += ' ';
  text += NurMrm(placesY).Format(m_y.Value()).View();
  return text;
}

void VornComposedPnt::GetTextVal(std::string_view text) { ReadTwoReals(text, m_x, m_y); }
