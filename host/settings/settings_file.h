#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/document/path_text.h"
#include "host/settings/settings_store.h"
#include "host/settings/settings_text.h"

namespace vorn_host {

/// Lets an editor that is just saving come to its end: a tenth of a second.
void PauseForEditors();

/// Settings in a file that a person can read and edit. It is read anew at every question, so that what another process
/// or an editor wrote counts at once. Every write locks out other processes, reads the file, changes one value and
/// puts the file in place whole; the values of a group are written together, and its questions answered from one
/// reading. Beside the file lies another with .lock at the end of its name, which stays. Where the path is a link, all
/// this is done to the file that it leads to, and beside that.
///
/// Reading changes nothing: of a file that cannot be understood the defaults are used, which is reported, and the file
/// stays. A write renames such a file out of the way (settings.toml.damaged-1), and reports that, but only when the
/// file says the same a moment later: editors empty a file before they fill it again. For the same reason a write takes
/// a second look at an empty file that held settings, and where settings are missing that the object has seen in it, it
/// keeps the file that it replaces (settings.toml.bak): what an editor still writes goes there.
class SettingsFile final : public SettingsStore {
 public:
  /// Neither the file nor its directory has to exist. `pause` lets time pass between two looks at a file that seems to
  /// be in the middle of being saved.
  SettingsFile(std::filesystem::path path, ProblemHandler report, std::function<void()> pause = PauseForEditors);

  [[nodiscard]] std::string Place() const override { return Utf8Text(m_path); }
  [[nodiscard]] std::vector<SettingsEntry> Entries() const override;
  [[nodiscard]] std::optional<SettingsEntry> Find(const SettingsPath& path, std::string_view name) const override;

  void BeginGroup() override { ++m_groups; }
  void EndGroup() override;

 private:
  using Text = std::shared_ptr<const SettingsText>;

  [[nodiscard]] bool HasKey(const SettingsPath& path) const override;
  bool Keep(SettingChange change) override;

  /// What the file says now; nothing when it is not there. Throws `DocumentError`, or `SettingsSyntaxError`
  /// when it cannot be understood.
  Text Load() const;
  /// The meaning of the file's text; throws `SettingsSyntaxError`.
  Text Understand(std::string text) const;
  /// In a group, makes a text its snapshot.
  Text Remembered(Text text) const;
  /// What the file says, or in a group said at the first question; nothing, and a report, when it cannot be understood.
  /// Throws `DocumentError`.
  Text CurrentOrThrow() const;
  /// As `CurrentOrThrow`, but nothing, and a report, for every reason.
  Text Current() const;

  /// Writes values together; false, and a report, when one of them could not be kept.
  bool WriteTogether(std::span<const SettingChange> changes);
  /// As `WriteTogether`, but throws `DocumentError`. `setAside` tells that a damaged file was set aside; empty
  /// otherwise.
  void ChangeFile(std::span<const SettingChange> changes, std::string& setAside);
  /// What the file says when nobody is in the middle of saving it; sets a damaged one aside. The lock has to be held.
  /// @param file what the path's links lead to
  Text LoadToChange(const std::filesystem::path& file, std::string& setAside) const;
  /// Gives the sentence that tells of it.
  [[nodiscard]] std::string SetAside(const std::filesystem::path& file, const SettingsSyntaxError& damage) const;

  std::filesystem::path m_path;
  std::function<void()> m_pause;
  mutable Text m_last;                   ///< what the file said when it was last understood; never null
  mutable Text m_known;                  ///< the last since it was replaced that lacked no settings; never null
  int m_groups = 0;                      ///< that have begun, and not ended
  mutable Text m_snapshot;               ///< what the outermost group reads; null before its first question
  std::vector<SettingChange> m_changes;  ///< that are written when it ends
};

}  // namespace vorn_host
