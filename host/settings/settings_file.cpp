#include "host/settings/settings_file.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <system_error>
#include <thread>
#include <utility>

#ifndef _WIN32
#include <sys/stat.h>
#endif

#include "host/document/atomic_file.h"
#include "host/document/document_error.h"
#include "host/document/path_text.h"
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

/// Whether it is the device that keeps nothing, which is how a person does without settings.
bool IsNullDevice(const fs::path& path) {
#ifdef _WIN32
  (void)path;
  return false;
#else
  struct stat file {};
  struct stat null {};
  return stat(path.c_str(), &file) == 0 && stat("/dev/null", &null) == 0 && S_ISCHR(file.st_mode) &&
         S_ISCHR(null.st_mode) && file.st_rdev == null.st_rdev;
#endif
}

/// Reading a pipe would wait for a writer, for ever if none comes; some devices have no end.
void RefuseWhatIsNoFile(const fs::path& path) {
  std::error_code ignored;
  const fs::file_status status = fs::status(path, ignored);
  if (!fs::exists(status) || fs::is_regular_file(status) || fs::is_directory(status) || IsNullDevice(path)) return;
  throw DocumentError(Utf8Text(path) + ": this is no ordinary file");
}

/// The file that the path's links lead to. Beside a device nothing can be put: then it is the path itself, and so it is
/// where the links cannot be followed, which is told when the file is read or written.
fs::path FileOf(const fs::path& path) try {
  std::error_code ignored;
  const fs::file_status status = fs::status(path, ignored);
  return fs::exists(status) && !fs::is_regular_file(status) ? path : ThroughLinks(path);
} catch (const DocumentError&) {
  return path;
}

std::string ReadText(const fs::path& path) {
  RefuseWhatIsNoFile(path);
  return ReadFileIfThere(path).value_or("");
}

using SettingNames = std::vector<std::pair<SettingsPath, std::string>>;

/// Under which names a text has settings, in order.
SettingNames NamesIn(const SettingsText& text) {
  SettingNames names;
  for (SettingsEntry& entry : text.Entries()) names.emplace_back(std::move(entry.path), std::move(entry.name));
  std::sort(names.begin(), names.end());
  return names;
}

/// Whether a text lacks settings that a former one had.
bool Lacks(const SettingsText& text, const SettingsText& former) {
  const SettingNames names = NamesIn(text);
  const SettingNames formerNames = NamesIn(former);
  return !std::includes(names.begin(), names.end(), formerNames.begin(), formerNames.end());
}

}  // namespace

void PauseForEditors() { std::this_thread::sleep_for(std::chrono::milliseconds(100)); }

SettingsFile::SettingsFile(fs::path path, ProblemHandler report, std::function<void()> pause)
    : SettingsStore(std::move(report)),
      m_path(std::move(path)),
      m_pause(std::move(pause)),
      m_last(std::make_shared<const SettingsText>()),
      m_known(m_last) {}

// --- reading ---------------------------------------------------------------------------------------------------------

SettingsFile::Text SettingsFile::Understand(std::string text) const {
  if (text == m_last->Text()) return m_last;
  m_last = std::make_shared<const SettingsText>(std::move(text));
  if (!Lacks(*m_last, *m_known)) m_known = m_last;
  return m_last;
}

SettingsFile::Text SettingsFile::Load() const { return Understand(ReadText(m_path)); }

SettingsFile::Text SettingsFile::Remembered(Text text) const {
  if (m_groups > 0) m_snapshot = text;
  return text;
}

SettingsFile::Text SettingsFile::CurrentOrThrow() const {
  if (m_snapshot != nullptr) return m_snapshot;
  try {
    Text text = Remembered(Load());
    NoteSuccess(Access::Read);
    return text;
  } catch (const SettingsSyntaxError& damage) {
    Text nothing = Remembered(std::make_shared<const SettingsText>());
    ReportOnce(Access::Read, Utf8Text(m_path) + ": " + damage.what() + "; the defaults are used");
    return nothing;
  }
}

SettingsFile::Text SettingsFile::Current() const {
  try {
    return CurrentOrThrow();
  } catch (const std::exception& error) {
    Text nothing = Remembered(std::make_shared<const SettingsText>());
    ReportOnce(Access::Read, error.what());
    return nothing;
  }
}

std::vector<SettingsEntry> SettingsFile::Entries() const { return CurrentOrThrow()->Entries(); }

std::optional<SettingsEntry> SettingsFile::Find(const SettingsPath& path, std::string_view name) const {
  return Current()->FindEntry(path, name);
}

bool SettingsFile::HasKey(const SettingsPath& path) const { return Current()->HasKey(path); }

// --- writing ---------------------------------------------------------------------------------------------------------

bool SettingsFile::Keep(SettingChange change) {
  if (m_groups == 0) return WriteTogether({&change, 1});
  std::optional<SettingsText> changed = Current()->With(change.path, change.name, change.value);
  const bool isWritable = changed.has_value();
  if (isWritable) m_snapshot = std::make_shared<const SettingsText>(*std::move(changed));
  m_changes.push_back(std::move(change));  // if there is no room for it, that is told at the end
  return isWritable;
}

void SettingsFile::EndGroup() {
  if (--m_groups > 0) return;
  m_snapshot.reset();
  const std::vector<SettingChange> changes = std::exchange(m_changes, {});
  if (!changes.empty()) WriteTogether(changes);
}

bool SettingsFile::WriteTogether(std::span<const SettingChange> changes) {
  std::string setAside;
  std::string problem;
  try {
    ChangeFile(changes, setAside);
  } catch (const std::exception& error) {
    problem = error.what();
  }
  for (const SettingChange& change : changes) NoteTried(change.path);
  // The lock is free again: whoever hears of a problem may store a setting, or show a message for as long as it takes.
  if (!setAside.empty()) Report(setAside);
  problem.empty() ? NoteSuccess(Access::Write) : ReportOnce(Access::Write, problem);
  return problem.empty();
}

void SettingsFile::ChangeFile(std::span<const SettingChange> changes, std::string& setAside) {
  const fs::path file = FileOf(m_path);
  MakeDirectoryOf(file);
  const FileLock lock(LockPath(file));
  const Text former = LoadToChange(file, setAside);
  Text text = former;
  std::string refused;
  for (const SettingChange& change : changes) {
    std::optional<SettingsText> changed = text->With(change.path, change.name, change.value);
    if (changed) {
      text = std::make_shared<const SettingsText>(*std::move(changed));
    } else {
      refused += (refused.empty() ? "" : ", ") + DottedName(change.path, change.name);
    }
  }
  if (text->Text() != former->Text()) {
    // An editor that is not done yet goes on writing into the file that is kept.
    const bool isLosing = former != m_known && Lacks(*former, *m_known);
    WriteFileAtomically(m_path, text->Text(), isLosing ? FormerFile::Keep : FormerFile::Drop);
    m_known = text;
  }
  m_last = text;
  if (!refused.empty()) {
    throw DocumentError(Utf8Text(m_path) + ": " + refused +
                        " cannot be added: something else in the file is in its place");
  }
}

SettingsFile::Text SettingsFile::LoadToChange(const fs::path& file, std::string& setAside) const {
  constexpr int kMostLooks = 10;
  const bool hadSettings = !m_known->Text().empty();
  std::string text = ReadText(m_path);
  for (int looks = 1; looks < kMostLooks; ++looks) {
    std::optional<SettingsSyntaxError> damage;
    try {
      Text understood = Understand(text);
      if (!text.empty() || !hadSettings) return understood;
    } catch (const SettingsSyntaxError& error) {
      damage = error;
    }
    m_pause();
    std::string again = ReadText(m_path);
    if (again == text) {
      if (damage) setAside = SetAside(file, *damage);
      return std::make_shared<const SettingsText>();
    }
    text = std::move(again);
  }
  throw DocumentError(Utf8Text(m_path) + ": another program does not come to an end of changing the file");
}

std::string SettingsFile::SetAside(const fs::path& file, const SettingsSyntaxError& damage) const {
  const fs::path aside = NameToSetAside(file);
  std::error_code error;
  fs::rename(file, aside, error);
  if (!error) {
    const fs::path name = file == m_path ? aside.filename() : aside;
    return Utf8Text(m_path) + ": " + damage.what() + "; the file was set aside as " + Utf8Text(name) +
           ", and the defaults are used";
  }
  throw DocumentError(Utf8Text(m_path) + ": " + damage.what() + "; the file cannot be set aside: " + error.message());
}

}  // namespace vorn_host
