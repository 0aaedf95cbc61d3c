#pragma once

#include <array>
#include <cstdint>

#include "vorn/framework/enum_table.h"

/// Side of the centre line, looking along it. Distances from the centre line are negative on the left.
enum class VornLocation : std::int32_t { Unset = -1, Center = 0, Left = 1, Right = 2 };

/// Texts of the "location" attribute.
inline constexpr std::array kVornLocationTexts = {
    EnumText<VornLocation>{VornLocation::Center, "Center"},
    EnumText<VornLocation>{VornLocation::Left, "Left"},
    EnumText<VornLocation>{VornLocation::Right, "Right"},
};
