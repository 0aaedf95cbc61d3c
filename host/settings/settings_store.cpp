#include "host/settings/settings_store.h"

#include <algorithm>
#include <utility>

#include "host/document/text_encoding.h"
#include "vorn/platform/code_page_932.h"

namespace vorn_host {

namespace {

SettingsPath FoldedPath(SettingsPath path) {
  for (std::string& name : path) name = FoldedName(name);
  return path;
}

bool HasNul(std::string_view text) { return text.find('\0') != std::string_view::npos; }

}  // namespace

SettingsStore::SettingsStore(ProblemHandler report)
    : m_report(report ? std::move(report) : [](const std::string&) {}) {}

void SettingsStore::ReportOnce(Access access, const std::string& problem, const std::string& place) const {
  std::string& told = Told(access)[place];
  if (problem == told) return;
  told = problem;
  Report(problem);
}

// --- keys ------------------------------------------------------------------------------------------------------------

bool SettingsStore::KeyExists(const SettingsPath& path) const {
  SettingsPath key = FoldedPath(path);
  const bool exists = path.empty() || m_created.contains(key) || HasKey(path);
  if (exists) m_writable.insert(std::move(key));
  return exists;
}

bool SettingsStore::KeyExists(std::string_view path) const {
  const std::optional<SettingsPath> names = ToSettingsPath(path);
  return names && KeyExists(*names);
}

bool SettingsStore::CreateKey(std::string_view path) {
  std::optional<SettingsPath> names = ToSettingsPath(path);
  if (!names) return false;
  for (SettingsPath key = FoldedPath(*std::move(names)); !key.empty(); key.pop_back()) {
    m_created.insert(key);
    m_writable.insert(key);
  }
  return true;
}

bool SettingsStore::MayWrite(const SettingsPath& path) const {
  return m_writable.contains(FoldedPath(path)) || KeyExists(path);
}

void SettingsStore::NoteTried(const SettingsPath& path) {
  for (SettingsPath key = FoldedPath(path); !key.empty(); key.pop_back()) m_created.erase(key);
}

// --- values ----------------------------------------------------------------------------------------------------------

std::optional<SettingValue> SettingsStore::Read(std::string_view path, std::string_view name) const {
  const std::optional<SettingsPath> names = ToSettingsPath(path);
  const std::optional<std::string> valueName = ToStoredText(name);
  if (!names || !valueName) return std::nullopt;
  std::optional<SettingsEntry> entry = Find(*names, *valueName);
  return entry ? std::move(entry->value) : std::nullopt;
}

std::optional<std::int32_t> SettingsStore::ReadInt(std::string_view path, std::string_view name) const {
  return IntegerOf(Read(path, name));
}

std::optional<CString> SettingsStore::ReadString(std::string_view path, std::string_view name) const {
  return TextOf(Read(path, name));
}

bool SettingsStore::Write(std::string_view path, std::string_view name, std::optional<SettingValue> value) {
  std::optional<SettingsPath> names = ToSettingsPath(path);
  if (!names || !MayWrite(*names)) {
    return Refuse(names.value_or(SettingsPath{ToUtf8(path)}), name, "there is no such key");
  }
  std::optional<std::string> valueName = ToStoredText(name);
  if (valueName && value) return Keep({*std::move(names), *std::move(valueName), *std::move(value)});
  NoteTried(*names);
  return Refuse(*names, name, "it is no text in code page 932, or has a NUL within");
}

bool SettingsStore::Refuse(const SettingsPath& path, std::string_view name, const char* reason) const {
  ReportOnce(Access::Write, Place() + ": " + DottedName(path, ToUtf8(name)) + " cannot be written: " + reason);
  return false;
}

bool SettingsStore::WriteInt(std::string_view path, std::string_view name, std::int32_t value) {
  return Write(path, name, value);
}

bool SettingsStore::WriteString(std::string_view path, std::string_view name, std::string_view value) {
  return Write(path, name, ToStoredText(value));
}

// --- names and texts -------------------------------------------------------------------------------------------------

bool SettingsEntry::IsAt(const SettingsPath& key, std::string_view valueName) const {
  return std::equal(path.begin(), path.end(), key.begin(), key.end(), IsSameName) && IsSameName(name, valueName);
}

std::optional<std::string> ToStoredText(std::string_view text) {
  std::string utf8;
  if (HasNul(text) || !code_page_932::AppendAsUtf8(text, utf8)) return std::nullopt;
  return utf8;
}

std::optional<SettingsPath> ToSettingsPath(std::string_view path) {
  const std::optional<std::string> utf8 = ToStoredText(path);
  if (!utf8) return std::nullopt;
  SettingsPath names;
  if (utf8->empty()) return names;
  // In UTF-8 the separator's byte is never part of another character.
  std::size_t first = 0;
  for (std::size_t end = utf8->find(WexStore::kSeparator); end != std::string::npos;
       end = utf8->find(WexStore::kSeparator, first)) {
    names.push_back(utf8->substr(first, end - first));
    first = end + 1;
  }
  names.push_back(utf8->substr(first));
  return names.size() <= kMostNames ? std::optional(std::move(names)) : std::nullopt;
}

std::optional<std::int32_t> IntegerOf(const std::optional<SettingValue>& value) {
  const auto* number = value ? std::get_if<std::int32_t>(&*value) : nullptr;
  return number != nullptr ? std::optional(*number) : std::nullopt;
}

std::optional<CString> TextOf(const std::optional<SettingValue>& value) {
  const auto* stored = value ? std::get_if<std::string>(&*value) : nullptr;
  std::optional<std::string> text = stored != nullptr && !HasNul(*stored) ? FromUtf8(*stored) : std::nullopt;
  return text ? std::optional<CString>(std::in_place, std::move(*text)) : std::nullopt;
}

std::string ShownText(const SettingValue& value) {
  const auto* text = std::get_if<std::string>(&value);
  return text != nullptr ? '"' + *text + '"' : std::to_string(std::get<std::int32_t>(value));
}

std::string DottedName(const SettingsPath& path, std::string_view name) {
  std::string dotted;
  for (const std::string& part : path) (dotted += part) += '.';
  return dotted += name;
}

std::string DottedName(const SettingsEntry& entry) { return DottedName(entry.path, entry.name); }

std::string FoldedName(std::string_view name) { return AsciiLower(name); }

bool IsSameName(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return AsciiLower(x) == AsciiLower(y); });
}

}  // namespace vorn_host
