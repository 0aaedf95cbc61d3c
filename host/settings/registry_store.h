#pragma once

#ifdef _WIN32

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/settings/settings_store.h"

namespace vorn_host {

/// Settings in the system registry, under a key of HKEY_CURRENT_USER: integers as REG_DWORD, texts as REG_SZ.
class RegistryStore final : public SettingsStore {
 public:
  /// The store is the key at the path, which need not exist: Software\Company\Application, in UTF-8.
  RegistryStore(std::string rootPath, ProblemHandler report);

  [[nodiscard]] std::string Place() const override;
  [[nodiscard]] std::vector<SettingsEntry> Entries() const override;

  [[nodiscard]] bool KeyExists(std::string_view path) const override;
  bool CreateKey(std::string_view path) override;

 private:
  /// The path below HKEY_CURRENT_USER of one below the store, in UTF-16; none when it is no text in code page 932.
  [[nodiscard]] std::optional<std::wstring> FullPath(std::string_view path) const;
  [[nodiscard]] std::optional<SettingValue> Read(std::string_view path, std::string_view name) const override;
  bool Write(std::string_view path, std::string_view name, const std::optional<SettingValue>& value) override;
  /// Whether a system call succeeded; reports when it did not.
  bool Check(long status) const;

  std::string m_rootPath;
};

}  // namespace vorn_host

#endif  // _WIN32
