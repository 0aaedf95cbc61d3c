#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

/// One row of an enumeration's table: the value and the text that documents carry for it.
template <typename Enum>
struct EnumText {
  Enum value;             ///< the value
  std::string_view text;  ///< what documents carry for it
};

/// The text of a value, or the fallback for a value outside the table.
template <typename Enum, std::size_t kRows>
[[nodiscard]] constexpr std::string_view EnumToText(const std::array<EnumText<Enum>, kRows>& table, Enum value,
                                                    std::string_view fallback = {}) {
  for (const auto& row : table) {
    if (row.value == value) return row.text;
  }
  return fallback;
}

/// The value of the first row whose text equals the given one exactly.
template <typename Enum, std::size_t kRows>
[[nodiscard]] constexpr std::optional<Enum> TextToEnum(const std::array<EnumText<Enum>, kRows>& table,
                                                       std::string_view text) {
  for (const auto& row : table) {
    if (row.text == text) return row.value;
  }
  return std::nullopt;
}

/// Resets a member to `Unset`, then takes the value of the text; false when the text is none of the table.
template <typename Enum, std::size_t kRows>
bool ResetAndSet(const std::array<EnumText<Enum>, kRows>& table, std::string_view text, Enum& member) {
  const auto value = TextToEnum(table, text);
  member = value.value_or(Enum::Unset);
  return value.has_value();
}

/// Takes the value of the text; false, and the member unchanged, when the text is none of the table.
template <typename Enum, std::size_t kRows>
bool SetIfKnown(const std::array<EnumText<Enum>, kRows>& table, std::string_view text, Enum& member) {
  const auto value = TextToEnum(table, text);
  if (value) member = *value;
  return value.has_value();
}
