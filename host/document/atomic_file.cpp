#include "host/document/atomic_file.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <memory>
#include <random>
#include <system_error>
#include <utility>
#include <vector>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#include <windows.h>
#else
#include <dirent.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

#include "host/document/document_error.h"
#include "host/document/path_text.h"

namespace vorn_host {

namespace fs = std::filesystem;

namespace {

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

/// What the last call of the C library says about its failure.
std::error_code LastError() { return {errno, std::generic_category()}; }

/// What a file is opened for: what it holds stays as it is, or nothing else, or there must be no such file yet.
enum class Opening { Read, Overwrite, Create };

/// Who may read and write a file that is made: all whom the system's settings let, or only its owner as long as it has
/// not got the rights of the file that it replaces.
enum class Rights { Usual, OwnerOnly };

/// A file's number, negative with `errno` set where it cannot be opened.
int OpenNumber(const fs::path& place, Opening opening, [[maybe_unused]] Rights rights) {
#ifdef _WIN32
  // Names are UTF-16 here, and not every runtime knows the mode that creates.
  constexpr int kBytes = _O_BINARY | _O_NOINHERIT;
  constexpr int kFlags[] = {_O_RDONLY, _O_WRONLY | _O_CREAT | _O_TRUNC, _O_WRONLY | _O_CREAT | _O_EXCL};
  return _wopen(place.c_str(), kFlags[static_cast<int>(opening)] | kBytes, _S_IREAD | _S_IWRITE);
#else
  constexpr int kFlags[] = {O_RDONLY, O_WRONLY | O_CREAT | O_TRUNC, O_WRONLY | O_CREAT | O_EXCL};
  return open(place.c_str(), kFlags[static_cast<int>(opening)] | O_CLOEXEC,
              rights == Rights::OwnerOnly ? S_IRUSR | S_IWUSR : 0666);
#endif
}

/// The file of a number, which is the file's to close from then on.
std::FILE* StreamOf(int number, const char* mode) {
#ifdef _WIN32
  return _fdopen(number, mode);
#else
  return fdopen(number, mode);
#endif
}

void CloseNumber(int number) {
#ifdef _WIN32
  _close(number);
#else
  close(number);
#endif
}

/// A file of bytes, none of which the C library may change; null, with `errno` set, where it cannot be opened. What was
/// created for nothing goes away again.
File TryOpen(const fs::path& place, Opening opening, Rights rights = Rights::Usual) {
  errno = 0;
  const int number = OpenNumber(place, opening, rights);
  if (number < 0) return nullptr;
  File file(StreamOf(number, opening == Opening::Read ? "rb" : "wb"));
  if (!file) {
    const int error = errno;
    CloseNumber(number);
    std::error_code ignored;
    if (opening == Opening::Create) fs::remove(place, ignored);
    errno = error;
  }
  return file;
}

/// Opens a file; messages name `path`, which is what the user asked for.
File Open(const fs::path& place, Opening opening, const fs::path& path, const char* what,
          Rights rights = Rights::Usual) {
  File file = TryOpen(place, opening, rights);
  if (!file) ThrowFileError(path, what, LastError());
  return file;
}

/// What a path names; messages name `path`. That nothing is there is an answer, that it cannot be told is an error.
fs::file_status StatusOf(const fs::path& place, const fs::path& path, const char* what) {
  std::error_code error;
  const fs::file_status status = fs::status(place, error);
  if (status.type() == fs::file_type::none) ThrowFileError(path, what, error);
  return status;
}

/// A file to be read; null when it was taken away since it was looked at.
File OpenToRead(const fs::path& path) {
  File file = TryOpen(path, Opening::Read);
  if (!file && errno != ENOENT) ThrowFileError(path, "cannot be opened", LastError());
  return file;
}

/// Asks for large pages of memory: the system gives out a large text in far fewer steps then. Does nothing
/// where it has none.
void UseLargePages([[maybe_unused]] std::string& text) {
#ifdef MADV_HUGEPAGE
  constexpr std::size_t kLargePage = std::size_t{1} << 21;
  const std::size_t behindBoundary = reinterpret_cast<std::uintptr_t>(text.data()) % kLargePage;
  const std::size_t before = (kLargePage - behindBoundary) % kLargePage;
  if (text.capacity() < before + kLargePage) return;
  madvise(text.data() + before, (text.capacity() - before) / kLargePage * kLargePage, MADV_HUGEPAGE);
#endif
}

void RequireAtMost(std::uint64_t most, std::uint64_t size, const fs::path& path) {
  if (size > most) throw DocumentError(TooLarge(Utf8Text(path), most));
}

/// The rest of a file, whose size is only a hint; `path` is what messages name.
std::string ReadToEnd(std::FILE* file, std::size_t expectedSize, std::uint64_t most, const fs::path& path) {
  constexpr std::size_t kStep = std::size_t{1} << 20;
  std::string content;
  content.reserve(expectedSize + kStep);  // the last step finds the end, and must not move what is there
  UseLargePages(content);
  while (true) {
    const std::size_t former = content.size();
    content.resize(former + kStep);
    errno = 0;
    const std::size_t count = std::fread(content.data() + former, 1, kStep, file);
    content.resize(former + count);
    RequireAtMost(most, content.size(), path);
    if (count == kStep) continue;
    if (std::ferror(file) != 0) ThrowFileError(path, "cannot be read", LastError());
    return content;
  }
}

bool FlushToDisk(std::FILE* file) {
#ifdef _WIN32
  return _commit(_fileno(file)) == 0 || errno == EBADF;  // a pipe or a device has no disk
#else
  return fsync(fileno(file)) == 0 || errno == EINVAL || errno == ENOTSUP;  // a pipe has no disk
#endif
}

using Producer = std::function<void(const TextSink&)>;

/// Writes, flushes and closes; `path` is what messages name.
void WriteAll(File file, const Producer& produce, const fs::path& path) {
  produce([&](std::string_view piece) {
    errno = 0;
    if (std::fwrite(piece.data(), 1, piece.size(), file.get()) == piece.size()) return;
    ThrowFileError(path, "cannot be written", LastError());
  });
  errno = 0;
  if (std::fflush(file.get()) != 0 || !FlushToDisk(file.get())) ThrowFileError(path, "cannot be written", LastError());
  if (std::fclose(file.release()) != 0) ThrowFileError(path, "cannot be written", LastError());
}

/// Content that is there as a whole.
Producer Whole(std::string_view content) {
  return [content](const TextSink& write) { write(content); };
}

/// The longest name that a file in a directory may have, in units of its text.
std::size_t LongestNameIn([[maybe_unused]] const fs::path& directory) {
#ifndef _WIN32
  const long limit = pathconf(directory.empty() ? "." : directory.c_str(), _PC_NAME_MAX);
  if (limit > 0) return static_cast<std::size_t>(limit);
#endif
  return 255;
}

/// Whether a unit of a file name's text goes on with the character before it.
bool IsWithinCharacter(fs::path::value_type unit) {
  if constexpr (sizeof(unit) == 1) {
    return (static_cast<unsigned char>(unit) & 0xC0) == 0x80;
  } else {
    return (static_cast<unsigned>(unit) & 0xFC00) == 0xDC00;
  }
}

/// The file's name, its last characters left out where so many more units would make it too long.
fs::path NameWithRoomFor(std::size_t more, const fs::path& file) {
  fs::path::string_type name = file.filename().native();
  const std::size_t longest = LongestNameIn(file.parent_path());
  if (name.size() + more > longest) {
    std::size_t end = longest > more ? longest - more : 0;
    while (end > 0 && IsWithinCharacter(name[end])) --end;
    name.resize(end);
  }
  return name;
}

/// A file that is being written, and the second name of a whole one that is to become the backup.
constexpr std::string_view kTemporaryEnding = ".tmp";
constexpr std::string_view kBackupEnding = ".bak";
constexpr std::size_t kRandomDigits = 10;
static_assert(kTemporaryEnding.size() == kBackupEnding.size());

/// What the names of a file's temporaries begin with: ".NAME-"; behind it are the random digits and the ending.
fs::path TemporaryPrefix(const fs::path& target) {
  fs::path prefix(".");
  prefix += NameWithRoomFor(2 + kRandomDigits + kTemporaryEnding.size(), target);
  return prefix += "-";
}

fs::path TemporaryBeside(const fs::path& target, std::string_view ending) {
  std::random_device random;
  std::string digits = std::to_string(static_cast<std::uint32_t>(random()));
  digits.insert(0, kRandomDigits - digits.size(), '0');
  fs::path name = TemporaryPrefix(target);
  return target.parent_path() / (name += digits.append(ending));
}

bool IsTemporaryName(const fs::path& name, const fs::path& prefix) {
  const fs::path::string_type& text = name.native();
  const std::size_t start = prefix.native().size();
  const auto isDigit = [](fs::path::value_type unit) { return unit >= '0' && unit <= '9'; };
  return text.size() == start + kRandomDigits + kTemporaryEnding.size() &&
         text.compare(0, start, prefix.native()) == 0 &&
         (name.extension() == kTemporaryEnding || name.extension() == kBackupEnding) &&
         std::all_of(text.begin() + static_cast<std::ptrdiff_t>(start),
                     text.end() - static_cast<std::ptrdiff_t>(kTemporaryEnding.size()), isDigit);
}

/// How many names a file has; 0 when that cannot be told.
std::uintmax_t NameCount(const fs::path& file) {
#ifdef _WIN32
  const HANDLE handle = CreateFileW(file.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (handle == INVALID_HANDLE_VALUE) return 0;
  BY_HANDLE_FILE_INFORMATION information{};
  const bool isKnown = GetFileInformationByHandle(handle, &information) != 0;
  CloseHandle(handle);
  return isKnown ? information.nNumberOfLinks : 0;
#else
  std::error_code error;
  const std::uintmax_t count = fs::hard_link_count(file, error);
  return error ? 0 : count;
#endif
}

/// Whether a temporary is left over from a program that was killed: nobody takes an hour to write one. A second name
/// of a file has that file's age and may be in use now; it is left over once no other name leads there.
bool IsStale(const fs::path& temporary) {
  constexpr std::chrono::hours kLongestUse{1};
  std::error_code error;
  if (!fs::is_regular_file(fs::symlink_status(temporary, error)) || NameCount(temporary) != 1) return false;
  const fs::file_time_type written = fs::last_write_time(temporary, error);
  return !error && written < fs::file_time_type::clock::now() - kLongestUse;
}

/// Whether a file is of a later save than the backup, or there is no backup.
bool IsNewerThan(const fs::path& file, const fs::path& backup) {
  std::error_code error;
  const fs::file_time_type kept = fs::last_write_time(backup, error);
  return error || fs::last_write_time(file, error) > kept;
}

#ifdef _WIN32
struct CloseDirectory {
  void operator()(HANDLE search) const { FindClose(search); }
};
using Directory = std::unique_ptr<void, CloseDirectory>;
#else
struct CloseDirectory {
  void operator()(DIR* directory) const { closedir(directory); }
};
using Directory = std::unique_ptr<DIR, CloseDirectory>;
#endif

/// The temporaries in a directory, as far as it can be read. Memory may run out meanwhile: `fs::directory_iterator`
/// would end the program.
std::vector<fs::path> TemporariesIn(const fs::path& directory, const fs::path& prefix) {
  std::vector<fs::path> found;
  const auto add = [&](const fs::path& name) {
    if (IsTemporaryName(name, prefix)) found.push_back(directory / name);
  };
#ifdef _WIN32
  WIN32_FIND_DATAW entry{};
  const HANDLE search = FindFirstFileW((directory / "*").c_str(), &entry);
  if (search == INVALID_HANDLE_VALUE) return found;
  const Directory open(search);
  do {
    add(entry.cFileName);
  } while (FindNextFileW(search, &entry) != 0);
#else
  const Directory open(opendir(directory.c_str()));
  if (!open) return found;
  while (const dirent* entry = readdir(open.get())) add(entry->d_name);
#endif
  return found;
}

/// Takes away what saves of the file that were killed left behind; a former file that was to become the backup becomes
/// it. It matters to no save whether that can be done.
void TidyUpAfterKilledSaves(const fs::path& target) try {
  const fs::path directory = target.has_parent_path() ? target.parent_path() : fs::path(".");
  const fs::path backup = BackupOf(target);
  for (const fs::path& path : TemporariesIn(directory, TemporaryPrefix(target))) {
    if (!IsStale(path)) continue;
    const bool isFormer = path.extension() == kBackupEnding && IsNewerThan(path, backup);
    std::error_code ignored;
    isFormer ? fs::rename(path, backup, ignored) : static_cast<void>(fs::remove(path, ignored));
  }
} catch (const DocumentError&) {
}

#ifndef _WIN32
/// Names of the temporaries in use, for the signal handler; empty ones are free. A save has at most three.
std::array<std::array<char, 4096>, 3> unfinishedFiles{};

/// Whether signals have to wait, and the one that does.
std::atomic<bool> signalsWait = false;
std::atomic<int> waitingSignal = 0;
static_assert(std::atomic<bool>::is_always_lock_free && std::atomic<int>::is_always_lock_free);

extern "C" void RemoveUnfinishedFiles(int signal) {
  if (signalsWait) {
    waitingSignal = signal;
    return;
  }
  for (const auto& name : unfinishedFiles) {
    if (name[0] != '\0') unlink(name.data());
  }
  std::signal(signal, SIG_DFL);
  std::raise(signal);
}

/// Has a file removed when a signal stops the program, while this lives.
class RemovedOnSignals {
 public:
  explicit RemovedOnSignals(const std::string& path) {
    for (auto& name : unfinishedFiles) {
      if (name[0] != '\0' || path.empty() || path.size() >= name.size()) continue;
      // The first byte comes last: the handler never sees half a name.
      std::strcpy(name.data() + 1, path.c_str() + 1);
      std::atomic_signal_fence(std::memory_order_seq_cst);
      name[0] = path[0];
      m_name = name.data();
      return;
    }
  }
  RemovedOnSignals(const RemovedOnSignals&) = delete;
  RemovedOnSignals& operator=(const RemovedOnSignals&) = delete;
  ~RemovedOnSignals() { Forget(); }

  /// From now on the file stays.
  void Forget() {
    if (m_name != nullptr) *m_name = '\0';
    m_name = nullptr;
    std::atomic_signal_fence(std::memory_order_seq_cst);
  }

 private:
  char* m_name = nullptr;
};

/// While this lives, a signal that stops the program waits for its end: between the two steps that put a new file and
/// its backup in place, the former file has no name of its own.
class SignalsWait {
 public:
  SignalsWait() { signalsWait = true; }
  SignalsWait(const SignalsWait&) = delete;
  SignalsWait& operator=(const SignalsWait&) = delete;
  ~SignalsWait() {
    signalsWait = false;
    if (const int signal = waitingSignal.exchange(0); signal != 0) std::raise(signal);
  }
};
#else
struct RemovedOnSignals {
  explicit RemovedOnSignals(const std::string&) {}
  void Forget() {}
};
struct SignalsWait {
  SignalsWait() {}
};
#endif

/// A temporary file beside the one that is to be saved; it goes away with the object unless it was renamed.
class TemporaryFile {
 public:
  explicit TemporaryFile(const fs::path& target, std::string_view ending = kTemporaryEnding)
      : m_path(TemporaryBeside(target, ending)), m_removedOnSignals(Utf8Text(m_path)) {}
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() {
    std::error_code ignored;
    if (m_isOurs) fs::remove(m_path, ignored);
  }

  [[nodiscard]] const fs::path& Path() const { return m_path; }

  /// Makes the file, which must not be there yet: what another program made is not ours to overwrite.
  File Create(const fs::path& path, Rights rights) {
    File file = Open(m_path, Opening::Create, path, "cannot be written in its directory", rights);
    m_isOurs = true;
    return file;
  }
  /// Takes over a file that was written whole under another name.
  std::error_code TakeOver(TemporaryFile& written) {
    const std::error_code error = written.RenameTo(m_path);
    m_isOurs = !error;
    return error;
  }
  /// Makes it a second name of a file, where the file system has such a thing.
  bool LinkTo(const fs::path& target) {
    std::error_code error;
    fs::create_hard_link(target, m_path, error);
    return m_isOurs = !error;
  }
  /// It stays, whatever becomes of the object, and whatever signal waits.
  void Leave() {
    m_isOurs = false;
    m_removedOnSignals.Forget();
  }
  /// Renames it, over what has the name. Where that is the same file already, nothing happens.
  std::error_code RenameTo(const fs::path& name) {
    std::error_code error;
    fs::rename(m_path, name, error);
    return error;
  }

 private:
  fs::path m_path;
  RemovedOnSignals m_removedOnSignals;
  bool m_isOurs = false;
};

/// The file itself has to be writable: a read-only file is protected, although its directory would let another one be
/// put in its place.
void RequireWritable(const fs::path& target, const fs::path& path) {
  errno = 0;
#ifdef _WIN32
  if (_waccess(target.c_str(), 2) == 0) return;
#else
  if (access(target.c_str(), W_OK) == 0) return;
#endif
  const std::error_code error = LastError();
  const bool isProtected = error == std::errc::permission_denied || error == std::errc::read_only_file_system;
  if (isProtected) throw DocumentError(Utf8Text(path) + ": the file is read-only");
  ThrowFileError(path, "cannot be written", error);
}

/// Gives the temporary file the rights and, where that is allowed, the owner of the file that it replaces.
/// What the group of the former file may do is given to no other group.
void CopyRightsAndOwner(std::FILE* temporary, const fs::path& former, const fs::path& path) {
  constexpr const char* kFailed = "the rights of the former file cannot be given to the new one";
#ifdef _WIN32
  (void)temporary, (void)former, (void)path, (void)kFailed;  // a file that may be written has no rights of its own here
#else
  // By the open file: under its name there could be another one by now.
  const int handle = fileno(temporary);
  struct stat owner {};
  struct stat own {};
  errno = 0;
  if (stat(former.c_str(), &owner) != 0 || fstat(handle, &own) != 0) ThrowFileError(path, kFailed, LastError());
  const bool hasGroup = fchown(handle, owner.st_uid, owner.st_gid) == 0 ||
                        fchown(handle, static_cast<uid_t>(-1), owner.st_gid) == 0 || own.st_gid == owner.st_gid;
  const mode_t rights = owner.st_mode & (S_IRWXU | S_IRWXO | (hasGroup ? S_IRWXG : 0));
  errno = 0;
  if (fchmod(handle, rights) == 0) return;
  const std::error_code error = LastError();
  // A file system without rights, such as that of a memory stick, gives all files the same ones.
  if (fstat(handle, &own) == 0 && (own.st_mode & 0777) == rights) return;
  ThrowFileError(path, kFailed, error);
#endif
}

/// Fills a temporary file that is to replace `former` or to be its copy; `path` is what messages name.
void Fill(TemporaryFile& temporary, const Producer& produce, const fs::path& former, const fs::path& path) {
  const fs::file_status status = StatusOf(former, path, "cannot be written");
  File file = temporary.Create(path, fs::exists(status) ? Rights::OwnerOnly : Rights::Usual);
  if (fs::exists(status)) CopyRightsAndOwner(file.get(), former, path);
  WriteAll(std::move(file), produce, path);
}

/// Whether a further name of the file could be removed again in any directory: in one with the sticky bit only the
/// owner may do that.
bool MayHaveSecondName(const fs::path& file) {
#ifdef _WIN32
  (void)file;
  return true;
#else
  struct stat owner {};
  return geteuid() == 0 || (lstat(file.c_str(), &owner) == 0 && owner.st_uid == geteuid());
#endif
}

/// Makes the renaming of files outlast a power failure, where a file system can do so.
void FlushDirectory(const fs::path& directory) {
#ifdef _WIN32
  (void)directory;
#else
  const int handle = open(directory.empty() ? "." : directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (handle < 0) return;
  fsync(handle);
  close(handle);
#endif
}

void PutInPlace(TemporaryFile& temporary, const fs::path& target, const fs::path& path) {
  if (const std::error_code error = temporary.RenameTo(target)) ThrowFileError(path, "cannot be put in place", error);
}

/// Gives a file a second name, or where that cannot be, makes a copy, which has the name once it is whole.
void KeepUnderSecondName(TemporaryFile& second, const fs::path& target, const fs::path& path) {
  if (MayHaveSecondName(target) && second.LinkTo(target)) return;
  TemporaryFile copy(target);
  const std::string content =
      ReadFileIfThere(target, std::numeric_limits<std::uint64_t>::max()).value_or(std::string());
  Fill(copy, Whole(content), target, path);
  if (const std::error_code error = second.TakeOver(copy))
    ThrowFileError(path, "the former file cannot be kept", error);
}

/// Puts a file in place and makes the one that was there its backup. An earlier backup stays until the new file is in
/// place, and what was there comes back when it cannot become the backup: a save that fails changes neither.
void PutInPlaceKeepingFormer(TemporaryFile& temporary, const fs::path& target, const fs::path& path) {
  const fs::path backup = BackupOf(target);  // may fail, and nothing has happened yet
  TemporaryFile former(target, kBackupEnding);
  KeepUnderSecondName(former, target, path);
  const SignalsWait untilBothAreDone;
  PutInPlace(temporary, target, path);
  const std::error_code error = former.RenameTo(backup);
  if (!error) return;
  const bool isBack = !former.RenameTo(target);
  if (!isBack) former.Leave();
  const std::string where = isBack ? "" : "; it is " + Utf8Text(former.Path());
  ThrowFileError(path, ("the former file cannot be kept as " + Utf8Text(backup) + where).c_str(), error);
}

void Save(const fs::path& path, const Producer& produce, FormerFile former) {
  const fs::file_status status = StatusOf(path, path, "cannot be written");
  if (fs::is_directory(status)) throw DocumentError(Utf8Text(path) + ": this is a directory, not a file");
  if (fs::exists(status) && !fs::is_regular_file(status)) {
    WriteAll(Open(path, Opening::Overwrite, path, "cannot be opened for writing"), produce, path);
    return;
  }

  const fs::path target = ThroughLinks(path);
  const fs::path directory = target.parent_path();  // once the file is in place, nothing may fail any more
  if (fs::exists(status)) RequireWritable(target, path);
  TidyUpAfterKilledSaves(target);
  TemporaryFile temporary(target);
  Fill(temporary, produce, target, path);
  if (former == FormerFile::Keep && fs::exists(status)) {
    PutInPlaceKeepingFormer(temporary, target, path);
  } else {
    PutInPlace(temporary, target, path);
  }
  FlushDirectory(directory);
}

}  // namespace

std::string TooLarge(const std::string& name, std::uint64_t most) {
  return name + ": this is larger than " + std::to_string(most) + " bytes, the most that is read";
}

std::string ReadBeginning(const fs::path& path, std::size_t size) {
  if (!fs::is_regular_file(StatusOf(path, path, "cannot be opened"))) return {};
  const File file = OpenToRead(path);
  if (!file) return {};
  std::string beginning(size, '\0');
  errno = 0;
  beginning.resize(std::fread(beginning.data(), 1, size, file.get()));
  if (std::ferror(file.get()) != 0) ThrowFileError(path, "cannot be read", LastError());
  return beginning;
}

std::optional<std::string> ReadFileIfThere(const fs::path& path, std::uint64_t most) {
  const fs::file_status status = StatusOf(path, path, "cannot be opened");
  if (!fs::exists(status)) return std::nullopt;
  if (fs::is_directory(status)) throw DocumentError(Utf8Text(path) + ": this is a directory, not a file");

  const File file = OpenToRead(path);
  if (!file) return std::nullopt;
  std::error_code error;
  const std::uintmax_t size = fs::is_regular_file(status) ? fs::file_size(path, error) : 0;
  RequireAtMost(most, error ? 0 : size, path);
  return ReadToEnd(file.get(), error ? 0 : static_cast<std::size_t>(size), most, path);
}

std::string ReadFile(const fs::path& path, std::uint64_t most) {
  std::optional<std::string> content = ReadFileIfThere(path, most);
  if (!content) throw DocumentError(Utf8Text(path) + ": there is no such file");
  if (content->empty()) throw DocumentError(Utf8Text(path) + ": the file is empty");
  return std::move(*content);
}

fs::path ThroughLinks(const fs::path& path) {
  constexpr int kMostLinks = 40;
  fs::path place = path;
  std::error_code error;
  for (int i = 0; i < kMostLinks; ++i) {
    const fs::file_status status = fs::symlink_status(place, error);
    if (status.type() == fs::file_type::none) ThrowFileError(path, "cannot be looked at", error);
    if (!fs::is_symlink(status)) return place;
    const fs::path target = fs::read_symlink(place, error);
    if (error) ThrowFileError(path, "the link cannot be followed", error);
    place = place.parent_path() / target;
  }
  return place;
}

fs::path BackupOf(const fs::path& path) {
  const fs::path target = ThroughLinks(path);
  fs::path name = NameWithRoomFor(kBackupEnding.size(), target);
  return target.parent_path() / (name += kBackupEnding);
}

void WriteFileAtomically(const fs::path& path, std::string_view content) {
  WriteFileAtomically(path, content, FormerFile::Drop);
}

void WriteFileAtomically(const fs::path& path, std::string_view content, FormerFile former) {
  Save(path, Whole(content), former);
}

void WriteFileAtomically(const fs::path& path, const Producer& produce) { Save(path, produce, FormerFile::Drop); }

void RemoveUnfinishedFilesOnSignals() {
#ifndef _WIN32
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) std::signal(signal, RemoveUnfinishedFiles);
  std::signal(SIGXFSZ, SIG_IGN);
#endif
}

}  // namespace vorn_host
