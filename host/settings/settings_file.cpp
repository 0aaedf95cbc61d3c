#include "host/settings/settings_file.h"

#include <exception>
#include <memory>
#include <system_error>
#include <utility>

#include "host/document/atomic_file.h"
#include "host/document/document_error.h"
#include "host/document/text_encoding.h"
#include "host/settings/file_lock.h"

namespace vorn_host {

namespace fs = std::filesystem;

namespace {

fs::path Beside(const fs::path& path, const std::string& suffix) { return fs::path(path) += suffix; }

fs::path LockPath(const fs::path& path) { return Beside(path, ".lock"); }

void MakeDirectoryOf(const fs::path& path) {
  std::error_code error;
  fs::create_directories(path.parent_path(), error);
  if (error) ThrowFileError(path, "its directory cannot be made", error);
}

/// A name that nothing has yet.
fs::path NameToSetAside(const fs::path& path) {
  fs::path aside;
  int number = 0;
  do aside = Beside(path, ".damaged-" + std::to_string(++number));
  while (fs::exists(fs::symlink_status(aside)));
  return aside;
}

[[noreturn]] void ThrowNotSetAside(const fs::path& path, const SettingsSyntaxError& damage, const std::string& reason) {
  throw DocumentError(path.string() + ": " + damage.what() + "; the file cannot be set aside: " + reason);
}

std::unique_ptr<FileLock> LockToSetAside(const fs::path& path, const SettingsSyntaxError& damage) {
  try {
    return std::make_unique<FileLock>(LockPath(path));
  } catch (const DocumentError& error) {
    ThrowNotSetAside(path, damage, error.what());
  }
}

SettingsPath Folded(SettingsPath path) {
  for (std::string& name : path) name = FoldedName(std::move(name));
  return path;
}

}  // namespace

SettingsFile::SettingsFile(fs::path path, ProblemHandler report)
    : SettingsStore(std::move(report)), m_path(std::move(path)) {}

// --- the file --------------------------------------------------------------------------------------------------------

const SettingsText& SettingsFile::Load() const {
  std::string text = ReadFileIfThere(m_path).value_or("");
  if (text != m_text.Text()) m_text = SettingsText(std::move(text));
  return m_text;
}

const SettingsText& SettingsFile::LoadLocked() const {
  try {
    return Load();
  } catch (const SettingsSyntaxError& damage) {
    SetAside(damage);
    return m_text = SettingsText();
  }
}

const SettingsText& SettingsFile::LoadUnderstood() const {
  try {
    return Load();
  } catch (const SettingsSyntaxError& damage) {
    const std::unique_ptr<FileLock> lock = LockToSetAside(m_path, damage);
    return LoadLocked();  // another process may have put it right by now
  }
}

void SettingsFile::SetAside(const SettingsSyntaxError& damage) const {
  const fs::path aside = NameToSetAside(m_path);
  std::error_code error;
  fs::rename(m_path, aside, error);
  if (error) ThrowNotSetAside(m_path, damage, error.message());
  Report(m_path.string() + ": " + damage.what() + "; the file was set aside as " + aside.filename().string() +
         ", and the defaults are used");
}

const SettingsText& SettingsFile::Current() const {
  try {
    const SettingsText& text = LoadUnderstood();
    m_readProblem.clear();
    return text;
  } catch (const std::exception& error) {
    ReportOnce(m_readProblem, error.what());
    return m_text = SettingsText();
  }
}

std::vector<SettingsEntry> SettingsFile::Entries() const { return LoadUnderstood().Entries(); }

// --- keys and values -------------------------------------------------------------------------------------------------

bool SettingsFile::KeyExists(const SettingsPath& path) const {
  return path.empty() || m_created.contains(Folded(path)) || Current().HasKey(path);
}

bool SettingsFile::KeyExists(std::string_view path) const {
  const std::optional<SettingsPath> names = ToSettingsPath(path);
  return names && KeyExists(*names);
}

bool SettingsFile::CreateKey(std::string_view path) {
  std::optional<SettingsPath> names = ToSettingsPath(path);
  if (!names) return false;
  for (SettingsPath key = Folded(*names); !key.empty(); key.pop_back()) m_created.insert(key);
  return true;
}

std::optional<SettingValue> SettingsFile::Read(std::string_view path, std::string_view name) const {
  const std::optional<SettingsPath> names = ToSettingsPath(path);
  const std::optional<std::string> valueName = ToStoredText(name);
  return names && valueName ? Current().Find(*names, *valueName) : std::nullopt;
}

bool SettingsFile::Write(std::string_view path, std::string_view name, const std::optional<SettingValue>& value) {
  const std::optional<SettingsPath> names = ToSettingsPath(path);
  if (!names || !KeyExists(*names)) return false;
  try {
    const std::optional<std::string> valueName = ToStoredText(name);
    if (!valueName || !value) {
      throw DocumentError(m_path.string() + ": " + DottedName(*names, ToUtf8(name)) +
                          " cannot be written: it is no text in code page 932");
    }
    Change(*names, *valueName, *value);
    m_writeProblem.clear();
    return true;
  } catch (const std::exception& error) {
    ReportOnce(m_writeProblem, error.what());
    return false;
  }
}

void SettingsFile::Change(const SettingsPath& path, const std::string& name, const SettingValue& value) {
  MakeDirectoryOf(m_path);
  const FileLock lock(LockPath(m_path));
  std::optional<SettingsText> changed = LoadLocked().With(path, name, value);
  if (!changed) {
    throw DocumentError(m_path.string() + ": " + DottedName(path, name) +
                        " cannot be added: something else in the file is in its place");
  }
  if (changed->Text() != m_text.Text()) WriteFileAtomically(m_path, changed->Text());
  m_text = std::move(*changed);
}

void SettingsFile::ReportOnce(std::string& last, const std::string& problem) const {
  if (problem == last) return;
  last = problem;
  Report(problem);
}

}  // namespace vorn_host
