#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "vorn/road/setting.h"

namespace vorn_host {

/// An integer setting, and which values a user may choose.
struct IntegerSetting : VornIntegerSetting {
  std::int32_t min = std::numeric_limits<std::int32_t>::min();  ///< smallest value that a user may choose
  std::int32_t max = std::numeric_limits<std::int32_t>::max();  ///< largest value that a user may choose
  /// What a value stands for, in UTF-8; empty for one that stands for nothing. Null when the setting is a plain number.
  std::string (*meaning)(std::int32_t value) = nullptr;
};

/// A setting of the construction-information dialogs.
struct KnownSetting {
  const char* group;                                   ///< the key that it lies in
  std::variant<IntegerSetting, VornTextSetting> kind;  ///< an integer or a text

  /// Name of the value in its key.
  [[nodiscard]] const char* Name() const;
};

/// The settings that the library reads and writes, in the order in which people are shown them.
[[nodiscard]] const std::vector<KnownSetting>& KnownSettings();

/// The name of a setting as people write it: RoadInfo.speed.
[[nodiscard]] std::string DottedName(const KnownSetting& setting);
/// The setting of such a name, without regard to case; null when there is none.
[[nodiscard]] const KnownSetting* FindKnownSetting(std::string_view dottedName);

/// Road class: "第3種第2級"; empty for a code that is none.
[[nodiscard]] std::string RoadClassMeaning(std::int32_t code);
/// Design speed: "60 km/h".
[[nodiscard]] std::string DesignSpeedMeaning(std::int32_t code);
/// How points of a kind are labelled: the first labels of the series, "１２３４５".
[[nodiscard]] std::string MarkSeriesMeaning(std::int32_t code);

}  // namespace vorn_host
