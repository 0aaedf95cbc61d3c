#pragma once

#include <array>
#include <cstdint>

/// What is known of a build form by its name.
struct VornFormAttr {
  /// The form's name: constant text in code page 932, ended by a NUL.
  const char* name = "";
  /// Eight flag bytes, the size of two 32-bit words. The library hands them to the host as they stand.
  std::array<std::uint8_t, 8> flags{};
};

static_assert(sizeof(VornFormAttr) == sizeof(const char*) + 2 * sizeof(std::uint32_t));
