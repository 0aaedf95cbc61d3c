#pragma once

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "host/settings/settings_store.h"

namespace vorn_host {

/// A settings text that cannot be read. The message is the line, the column and the reason.
class SettingsSyntaxError : public std::runtime_error {
 public:
  /// A mistake at a place.
  explicit SettingsSyntaxError(const std::string& message) : std::runtime_error(message) {}
};

/// The text of a settings file, which is TOML in UTF-8, and what it says: keys are tables, values are integers and
/// strings. A value is changed where it stands, so comments, order, spacing and whatever else a person wrote stay as
/// they are, to the byte. Does not change after its construction.
class SettingsText {
 public:
  /// No settings.
  SettingsText();
  /// Reads a text, with or without a byte-order mark; throws `SettingsSyntaxError`.
  explicit SettingsText(std::string text);
  /// Takes the text over.
  SettingsText(SettingsText&&) noexcept;
  /// Takes the text over in place of its own.
  SettingsText& operator=(SettingsText&&) noexcept;
  ~SettingsText();

  /// The text itself.
  [[nodiscard]] const std::string& Text() const { return m_text; }

  /// Whether there is such a key. Names are looked up as they are spelled, then without regard to case.
  [[nodiscard]] bool HasKey(const SettingsPath& path) const;
  /// The value of a name; none when it is missing, or neither a text nor an integer of 32 bits.
  [[nodiscard]] std::optional<SettingValue> Find(const SettingsPath& path, std::string_view name) const;
  /// As `Find`, but also for a value of another kind, and with path and name as they are spelled in the text.
  [[nodiscard]] std::optional<SettingsEntry> FindEntry(const SettingsPath& path, std::string_view name) const;
  /// All values, in the order of the text.
  [[nodiscard]] std::vector<SettingsEntry> Entries() const;

  /// The text with one value in place of whatever has the name, or added. None when the text leaves no room for it:
  /// the name is a key, or a name in the path is a value.
  [[nodiscard]] std::optional<SettingsText> With(const SettingsPath& path, const std::string& name,
                                                 const SettingValue& value) const;

 private:
  struct Tree;
  struct Edit;

  [[nodiscard]] std::optional<Edit> PlanEdit(const SettingsPath& path, const std::string& name,
                                             const std::string& literal) const;
  /// Whether this says what a former text said, but for one value.
  [[nodiscard]] bool Follows(const SettingsText& former, const SettingsPath& path, const std::string& name,
                             const SettingValue& value) const;

  std::string m_text;
  std::unique_ptr<const Tree> m_tree;
};

}  // namespace vorn_host
