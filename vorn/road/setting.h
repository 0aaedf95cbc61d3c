#pragma once

#include <cstdint>
#include <string_view>

#include "vorn/platform/cstring.h"
#include "vorn/platform/wex_key.h"

/// An integer that outlasts a session: its name in a settings key, and what holds while none is stored.
struct VornIntegerSetting {
  const char* name;           ///< of the value in the settings key
  std::int32_t defaultValue;  ///< what holds while none is stored

  /// The stored integer; the default when there is none, or when the key is closed.
  [[nodiscard]] std::int32_t Load(const WexKey& key) const { return key.GetInt(name, defaultValue); }
  /// False when the integer could not be stored.
  bool Store(WexKey& key, std::int32_t value) const { return key.SetInt(name, value); }
};

/// A text that outlasts a session. The default is in code page 932 and ended by a NUL.
struct VornTextSetting {
  const char* name;               ///< of the value in the settings key
  std::string_view defaultValue;  ///< what holds while none is stored

  /// The stored text; the default when there is none, or when the key is closed.
  [[nodiscard]] CString Load(const WexKey& key) const { return key.GetString(name, defaultValue.data()); }
  /// False when the text could not be stored. One with a NUL within never is: a settings key would keep it cut short.
  bool Store(WexKey& key, const CString& value) const {
    return value.View().find('\0') == std::string_view::npos && key.SetString(name, value);
  }
};
