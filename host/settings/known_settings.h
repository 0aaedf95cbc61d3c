#pragma once

#include <array>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <variant>

#include "vorn/platform/code_page_932.h"

namespace vorn_host {

/// An integer setting: what holds when none is stored, and which values a user may choose.
struct IntegerSetting {
  std::int32_t defaultValue = 0;
  std::int32_t min = std::numeric_limits<std::int32_t>::min();
  std::int32_t max = std::numeric_limits<std::int32_t>::max();
  /// What a value stands for, in UTF-8; empty for one that stands for nothing. Null when the setting is a plain number.
  std::string (*meaning)(std::int32_t value) = nullptr;
};

/// A text setting and what holds when none is stored, in code page 932.
struct TextSetting {
  std::string_view defaultValue;
};

/// A setting of the construction-information dialogs.
struct KnownSetting {
  std::string_view group;  ///< the key that it lies in
  std::string_view name;
  std::variant<IntegerSetting, TextSetting> kind;
};

/// Road class: "第3種第2級"; empty for a code that is none.
[[nodiscard]] std::string RoadClassMeaning(std::int32_t code);
/// Design speed: "60 km/h".
[[nodiscard]] std::string DesignSpeedMeaning(std::int32_t code);
/// How points of a kind are labelled: the first labels of the series, "１２３４５".
[[nodiscard]] std::string MarkSeriesMeaning(std::int32_t code);

/// The settings that the library reads and writes, in the order in which people are shown them.
inline constexpr std::array kKnownSettings = {
    KnownSetting{"RoadInfo", "classificat", IntegerSetting{0, 0, 14, RoadClassMeaning}},
    KnownSetting{"RoadInfo", "speed", IntegerSetting{0, 0, 7, DesignSpeedMeaning}},
    KnownSetting{"RoadInfo", "traffic", IntegerSetting{1}},
    KnownSetting{"FormCtrl", "basec", TextSetting{u8"道路中心"_cp932}},
    KnownSetting{"FormCtrl", "basel", TextSetting{u8"道路端左"_cp932}},
    KnownSetting{"FormCtrl", "baser", TextSetting{u8"道路端右"_cp932}},
    KnownSetting{"FormCtrl", "noril", TextSetting{u8"左法面"_cp932}},
    KnownSetting{"FormCtrl", "norir", TextSetting{u8"右法面"_cp932}},
    KnownSetting{"FormCtrl", "widthrd", TextSetting{u8"道路面"_cp932}},
    KnownSetting{"FormCtrl", "widthl", TextSetting{u8"左小段"_cp932}},
    KnownSetting{"FormCtrl", "widthr", TextSetting{u8"右小段"_cp932}},
    KnownSetting{"FormCtrl", "otherl", TextSetting{u8"左その他"_cp932}},
    KnownSetting{"FormCtrl", "otherr", TextSetting{u8"右その他"_cp932}},
    KnownSetting{"FormCtrl", "norimark", IntegerSetting{0, 0, 2, MarkSeriesMeaning}},
    KnownSetting{"FormCtrl", "widthmark", IntegerSetting{0, 0, 2, MarkSeriesMeaning}},
    KnownSetting{"FormCtrl", "roadmark", IntegerSetting{0, 0, 2, MarkSeriesMeaning}},
    KnownSetting{"FormCtrl", "othermark", IntegerSetting{0, 0, 2, MarkSeriesMeaning}},
};

/// The setting of a name as people write it (RoadInfo.speed, without regard to case); null when there is none.
[[nodiscard]] const KnownSetting* FindKnownSetting(std::string_view dottedName);

}  // namespace vorn_host
