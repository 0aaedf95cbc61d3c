#include "host/settings/known_settings.h"

#include <algorithm>
#include <cstddef>
#include <span>

#include "host/settings/settings_store.h"

namespace vorn_host {

namespace {

constexpr std::array<std::string_view, 15> kRoadClasses = {
    "第1種第1級", "第1種第2級", "第1種第3級", "第1種第4級", "第2種第1級", "第2種第2級", "第3種第1級", "第3種第2級",
    "第3種第3級", "第3種第4級", "第3種第5級", "第4種第1級", "第4種第2級", "第4種第3級", "第4種第4級"};
constexpr std::array<std::string_view, 8> kDesignSpeeds = {"120 km/h", "100 km/h", "80 km/h", "60 km/h",
                                                           "50 km/h",  "40 km/h",  "30 km/h", "20 km/h"};
constexpr std::array<std::string_view, 3> kMarkSeries = {"１２３４５", "ＡＢＣＤＥ", "ａｂｃｄｅ"};

std::string TextOf(std::span<const std::string_view> texts, std::int32_t code) {
  const bool isKnown = code >= 0 && static_cast<std::size_t>(code) < texts.size();
  return isKnown ? std::string(texts[static_cast<std::size_t>(code)]) : std::string();
}

}  // namespace

std::string RoadClassMeaning(std::int32_t code) { return TextOf(kRoadClasses, code); }
std::string DesignSpeedMeaning(std::int32_t code) { return TextOf(kDesignSpeeds, code); }
std::string MarkSeriesMeaning(std::int32_t code) { return TextOf(kMarkSeries, code); }

const KnownSetting* FindKnownSetting(std::string_view dottedName) {
  const auto* found = std::find_if(kKnownSettings.begin(), kKnownSettings.end(), [&](const KnownSetting& setting) {
    return IsSameName(DottedName({std::string(setting.group)}, setting.name), dottedName);
  });
  return found != kKnownSettings.end() ? found : nullptr;
}

}  // namespace vorn_host
