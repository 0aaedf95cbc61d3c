#pragma once

#ifdef _WIN32

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/settings/settings_store.h"

namespace vorn_host {

/// Settings in the system registry, under a key of HKEY_CURRENT_USER: integers as REG_DWORD, texts as REG_SZ. Every
/// value is stored at once, in a group too: only single values are whole.
class RegistryStore final : public SettingsStore {
 public:
  /// The store is the key at the path, which need not exist: `Software\Company\Application`, in UTF-8.
  RegistryStore(std::string rootPath, ProblemHandler report);

  [[nodiscard]] std::string Place() const override { return PlaceOf({}); }
  /// Leaves out, and reports, keys within the store that cannot be read.
  [[nodiscard]] std::vector<SettingsEntry> Entries() const override;
  [[nodiscard]] std::optional<SettingsEntry> Find(const SettingsPath& path, std::string_view name) const override;

 private:
  [[nodiscard]] bool HasKey(const SettingsPath& path) const override;
  bool Keep(SettingChange change) override;

  /// The path of a key of the store, below HKEY_CURRENT_USER.
  [[nodiscard]] std::string FullPath(const SettingsPath& path) const;
  /// As messages name a key.
  [[nodiscard]] std::string PlaceOf(const SettingsPath& path) const { return "HKEY_CURRENT_USER\\" + FullPath(path); }
  /// As messages name a value.
  [[nodiscard]] std::string PlaceOf(const SettingsPath& path, std::string_view name) const {
    return PlaceOf(path) + ", value " + std::string(name);
  }
  /// Reports that a key or a value cannot be read, unless it simply is not there.
  void CheckRead(const std::string& place, long status) const;
  void Collect(const SettingsPath& path, std::vector<SettingsEntry>& entries) const;

  std::string m_rootPath;
};

}  // namespace vorn_host

#endif  // _WIN32
