#include "vorn/road/form_ctrl.h"

#include <algorithm>
#include <utility>

#include "vorn/framework/enum_table.h"
#include "vorn/platform/code_page_932.h"

namespace {

using CtrlMarkType = VornFormCtrl::CtrlMarkType;

constexpr std::array kMarkTypes = {
    EnumText<CtrlMarkType>{CtrlMarkType::Digits, u8"１２３４５"_cp932},
    EnumText<CtrlMarkType>{CtrlMarkType::Capitals, u8"ＡＢＣＤＥ"_cp932},
    EnumText<CtrlMarkType>{CtrlMarkType::SmallLetters, u8"ａｂｃｄｅ"_cp932},
};

}  // namespace

constexpr std::array<VornFormCtrl::ItemName, VornFormCtrl::NameCount> VornFormCtrl::kItemNames = {{
    {u8"道路中心"_cp932, {"basec", u8"道路中心"_cp932}},
    {u8"道路(左)"_cp932, {"basel", u8"道路端左"_cp932}},
    {u8"道路(右)"_cp932, {"baser", u8"道路端右"_cp932}},
    {u8"法面(左)"_cp932, {"noril", u8"左法面"_cp932}},
    {u8"法面(右)"_cp932, {"norir", u8"右法面"_cp932}},
    {u8"道路面"_cp932, {"widthrd", u8"道路面"_cp932}},
    {u8"小段(左)"_cp932, {"widthl", u8"左小段"_cp932}},
    {u8"小段(右)"_cp932, {"widthr", u8"右小段"_cp932}},
    {u8"その他(左)"_cp932, {"otherl", u8"左その他"_cp932}},
    {u8"その他(右)"_cp932, {"otherr", u8"右その他"_cp932}},
}};

constexpr std::array<VornIntegerSetting, VornFormCtrl::MarkCount> VornFormCtrl::kMarkSettings = {
    {{"norimark", 0}, {"widthmark", 0}, {"roadmark", 0}, {"othermark", 0}}};

void VornFormCtrl::Init() {
  std::transform(kItemNames.begin(), kItemNames.end(), m_names.begin(),
                 [](const ItemName& item) { return item.initial; });
}

void VornFormCtrl::LoadRegistry(WexKey* parent) {
  const WexKeyGroup together(parent);
  WexKey key;
  if (!key.Open(parent, kSettingsKey)) return;
  Names names;
  Marks marks{};
  std::transform(kItemNames.begin(), kItemNames.end(), names.begin(),
                 [&](const ItemName& item) { return item.setting.Load(key); });
  std::transform(kMarkSettings.begin(), kMarkSettings.end(), marks.begin(),
                 [&](const VornIntegerSetting& setting) { return static_cast<CtrlMarkType>(setting.Load(key)); });
  m_names = std::move(names);
  m_marks = marks;
}

void VornFormCtrl::StoreRegistry(WexKey* parent) const {
  const WexKeyGroup together(parent);
  WexKey key;
  if (!key.Create(parent, kSettingsKey)) return;
  auto name = m_names.begin();
  for (const ItemName& item : kItemNames) item.setting.Store(key, *name++);
  auto mark = m_marks.begin();
  for (const VornIntegerSetting& setting : kMarkSettings) setting.Store(key, static_cast<std::int32_t>(*mark++));
}

CString VornFormCtrl::GetMarkTypeStr(CtrlMarkType type) { return EnumToText(kMarkTypes, type); }

bool VornFormCtrl::CompareFormCtrl(const VornFormCtrl& other) const {
  return m_names == other.m_names && m_marks[SlopeMarks] == other.m_marks[SlopeMarks] &&
         m_marks[BermMarks] == other.m_marks[BermMarks] && m_value == other.m_value;
}
