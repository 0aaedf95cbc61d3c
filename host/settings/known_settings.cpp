#include "host/settings/known_settings.h"

#include <algorithm>

#include "host/document/text_encoding.h"
#include "host/settings/settings_store.h"
#include "vorn/road/form_ctrl.h"
#include "vorn/road/road_gm_data.h"
#include "vorn/road/road_info.h"

namespace vorn_host {

namespace {

using Classificat = VornRoadInfo::Classificat;
using CtrlMarkType = VornFormCtrl::CtrlMarkType;
using DesignSpeed = VornRoadInfo::DesignSpeed;

/// A setting whose values are those of an enumeration.
template <typename Enum>
IntegerSetting CodeSetting(const VornIntegerSetting& setting, Enum first, Enum last,
                           std::string (*meaning)(std::int32_t)) {
  return {setting, static_cast<std::int32_t>(first), static_cast<std::int32_t>(last), meaning};
}

std::vector<KnownSetting> CollectKnownSettings() {
  constexpr const char* kRoad = VornRoadGmData::kSettingsKey;
  constexpr const char* kFormCtrl = VornFormCtrl::kSettingsKey;
  std::vector<KnownSetting> settings = {
      {kRoad, CodeSetting(VornRoadGmData::kClassificatSetting, Classificat::Type1Class1, Classificat::Type4Class4,
                          RoadClassMeaning)},
      {kRoad, CodeSetting(VornRoadGmData::kSpeedSetting, DesignSpeed::Kmh120, DesignSpeed::Kmh20, DesignSpeedMeaning)},
      {kRoad, IntegerSetting{VornRoadGmData::kTrafficSetting}},
  };
  for (const VornFormCtrl::ItemName& name : VornFormCtrl::kItemNames) settings.push_back({kFormCtrl, name.setting});
  for (const VornIntegerSetting& mark : VornFormCtrl::kMarkSettings) {
    settings.push_back(
        {kFormCtrl, CodeSetting(mark, CtrlMarkType::Digits, CtrlMarkType::SmallLetters, MarkSeriesMeaning)});
  }
  return settings;
}

}  // namespace

const char* KnownSetting::Name() const {
  return std::visit([](const auto& setting) { return setting.name; }, kind);
}

const std::vector<KnownSetting>& KnownSettings() {
  static const std::vector<KnownSetting> settings = CollectKnownSettings();
  return settings;
}

std::string DottedName(const KnownSetting& setting) { return DottedName({setting.group}, setting.Name()); }

const KnownSetting* FindKnownSetting(std::string_view dottedName) {
  const auto found = std::find_if(KnownSettings().begin(), KnownSettings().end(), [&](const KnownSetting& setting) {
    return IsSameName(DottedName(setting), dottedName);
  });
  return found != KnownSettings().end() ? &*found : nullptr;
}

std::string RoadClassMeaning(std::int32_t code) {
  return ToUtf8(VornRoadInfo::GetClassificatRoad(static_cast<Classificat>(code)).View());
}

std::string DesignSpeedMeaning(std::int32_t code) {
  const std::int32_t kmh = VornRoadInfo::GetSpeed(static_cast<DesignSpeed>(code));
  return kmh > 0 ? std::to_string(kmh) + " km/h" : std::string();
}

std::string MarkSeriesMeaning(std::int32_t code) {
  return ToUtf8(VornFormCtrl::GetMarkTypeStr(static_cast<CtrlMarkType>(code)).View());
}

}  // namespace vorn_host
