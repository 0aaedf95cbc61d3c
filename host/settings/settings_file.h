#pragma once

#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "host/settings/settings_store.h"
#include "host/settings/settings_text.h"

namespace vorn_host {

/// Settings in a file that a person can read and edit. It is read anew at every question, so that what another process
/// or an editor wrote counts at once. Every write locks out other processes, reads the file, changes one value and
/// puts the file in place whole.
///
/// Reading makes no file: a key that is created is remembered by the object, and comes into the file with its first
/// value. A file that cannot be understood is renamed out of the way (settings.toml.damaged-1) and reported.
class SettingsFile final : public SettingsStore {
 public:
  /// Neither the file nor its directory has to exist.
  SettingsFile(std::filesystem::path path, ProblemHandler report);

  [[nodiscard]] std::string Place() const override { return m_path.string(); }
  [[nodiscard]] std::vector<SettingsEntry> Entries() const override;

  [[nodiscard]] bool KeyExists(std::string_view path) const override;
  bool CreateKey(std::string_view path) override;

 private:
  /// What the file says now; nothing when there is none. Throws `DocumentError`, or `SettingsSyntaxError` when the file
  /// cannot be understood.
  const SettingsText& Load() const;
  /// As `Load`, but sets aside a file that cannot be understood. The lock has to be held.
  const SettingsText& LoadLocked() const;
  /// As `LoadLocked`, taking the lock only if it is needed.
  const SettingsText& LoadUnderstood() const;
  /// What the file says; nothing, and a report, when that cannot be told.
  const SettingsText& Current() const;
  void SetAside(const SettingsSyntaxError& damage) const;

  [[nodiscard]] bool KeyExists(const SettingsPath& path) const;
  [[nodiscard]] std::optional<SettingValue> Read(std::string_view path, std::string_view name) const override;
  bool Write(std::string_view path, std::string_view name, const std::optional<SettingValue>& value) override;
  /// Throws `DocumentError`.
  void Change(const SettingsPath& path, const std::string& name, const SettingValue& value);

  /// Reports a problem unless it is the one that was reported last.
  void ReportOnce(std::string& last, const std::string& problem) const;

  std::filesystem::path m_path;
  std::set<SettingsPath> m_created;   ///< with the names folded
  mutable SettingsText m_text;        ///< what the file said when it was last read
  mutable std::string m_readProblem;  ///< reported, and not over yet
  std::string m_writeProblem;
};

}  // namespace vorn_host
