#include "host/document/atomic_file.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <random>
#include <system_error>

#ifdef _WIN32
#include <io.h>
#else
#include <sys/stat.h>
#include <unistd.h>
#endif

#include "host/document/document_error.h"

namespace vorn_host {

namespace fs = std::filesystem;

namespace {

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

/// What the last call of the C library says about its failure.
std::error_code LastError() { return {errno, std::generic_category()}; }

/// Opens a file; messages name `path`, which is what the user asked for.
File Open(const fs::path& place, const char* mode, const fs::path& path, const char* what) {
  errno = 0;
  File file(std::fopen(place.string().c_str(), mode));
  if (!file) ThrowFileError(path, what, LastError());
  return file;
}

/// The rest of a file, whose size is only a hint; `path` is what messages name.
std::string ReadToEnd(std::FILE* file, std::size_t expectedSize, const fs::path& path) {
  constexpr std::size_t kStep = std::size_t{1} << 20;
  std::string content;
  content.reserve(expectedSize + 1);
  while (true) {
    const std::size_t former = content.size();
    content.resize(former + kStep);
    errno = 0;
    const std::size_t count = std::fread(content.data() + former, 1, kStep, file);
    content.resize(former + count);
    if (count == kStep) continue;
    if (std::ferror(file) != 0) ThrowFileError(path, "cannot be read", LastError());
    return content;
  }
}

bool FlushToDisk(std::FILE* file) {
#ifdef _WIN32
  return _commit(_fileno(file)) == 0;
#else
  return fsync(fileno(file)) == 0 || errno == EINVAL || errno == ENOTSUP;  // a pipe has no disk
#endif
}

/// Writes, flushes and closes; `path` is what messages name.
void WriteAll(File file, std::string_view content, const fs::path& path) {
  errno = 0;
  const bool written = std::fwrite(content.data(), 1, content.size(), file.get()) == content.size() &&
                       std::fflush(file.get()) == 0 && FlushToDisk(file.get());
  if (!written) ThrowFileError(path, "cannot be written", LastError());
  if (std::fclose(file.release()) != 0) ThrowFileError(path, "cannot be written", LastError());
}

fs::path TemporaryBeside(const fs::path& path) {
  std::random_device random;
  return path.parent_path() / (".vorn-" + std::to_string(random()) + ".tmp");
}

/// The file that a path names in the end, whether it exists yet or not.
fs::path ThroughLinks(fs::path path) {
  constexpr int kMostLinks = 40;
  std::error_code error;
  for (int i = 0; i < kMostLinks && fs::is_symlink(fs::symlink_status(path, error)); ++i) {
    path = path.parent_path() / fs::read_symlink(path, error);
  }
  return path;
}

#ifndef _WIN32
/// Name of the file that is being written, for the signal handler; empty when there is none.
std::array<char, 4096> unfinishedFile{};

extern "C" void RemoveUnfinishedFile(int signal) {
  if (unfinishedFile[0] != '\0') unlink(unfinishedFile.data());
  std::signal(signal, SIG_DFL);
  std::raise(signal);
}

void RememberUnfinishedFile(const std::string& path) {
  if (path.size() < unfinishedFile.size()) std::strcpy(unfinishedFile.data(), path.c_str());
}
#else
void RememberUnfinishedFile(const std::string&) {}
#endif

/// Removes the temporary file unless it was renamed into place.
struct TemporaryFile {
  explicit TemporaryFile(fs::path where) : path(std::move(where)) { RememberUnfinishedFile(path.string()); }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() {
    std::error_code ignored;
    if (!path.empty()) fs::remove(path, ignored);
    RememberUnfinishedFile("");
  }

  fs::path path;
};

/// Whether the file itself may be written: a read-only file is protected, although its directory would let another
/// one be put in its place.
bool IsWritable(const fs::path& path) {
#ifdef _WIN32
  return _waccess(path.c_str(), 2) == 0;
#else
  return access(path.c_str(), W_OK) == 0;
#endif
}

/// Gives the temporary file the rights and, where that is allowed, the owner of the file that it replaces.
void TakeOver(const fs::path& temporary, const fs::path& former, fs::perms permissions) {
  std::error_code ignored;
#ifndef _WIN32
  struct stat owner {};
  if (stat(former.c_str(), &owner) == 0 && chown(temporary.c_str(), owner.st_uid, owner.st_gid) != 0) errno = 0;
#endif
  fs::permissions(temporary, permissions, ignored);
}

/// Gives a file a second name, or where the file system has no such thing, a copy.
void Duplicate(const fs::path& from, const fs::path& to, const fs::path& path) {
  std::error_code error;
  fs::create_hard_link(from, to, error);
  if (error) fs::copy_file(from, to, error);
  if (error) ThrowFileError(path, "the former file cannot be kept", error);
}

/// Makes the file that is about to be replaced its own backup.
void KeepFormer(const fs::path& target, const fs::path& path) {
  TemporaryFile second(TemporaryBeside(target));
  Duplicate(target, second.path, path);
  std::error_code error;
  fs::rename(second.path, BackupOf(target), error);
  if (error) ThrowFileError(path, "the former file cannot be kept", error);
  // When a program was ended between these steps, both names already are the same file: renaming does nothing then,
  // and the second name goes away with its object.
}

}  // namespace

std::optional<std::string> ReadFileIfThere(const fs::path& path) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (status.type() == fs::file_type::none) ThrowFileError(path, "cannot be opened", error);
  if (!fs::exists(status)) return std::nullopt;
  if (fs::is_directory(status)) throw DocumentError(path.string() + ": this is a directory, not a file");

  errno = 0;
  const File file(std::fopen(path.string().c_str(), "rb"));
  if (!file && errno == ENOENT) return std::nullopt;  // taken away since it was looked at
  if (!file) ThrowFileError(path, "cannot be opened", LastError());
  const std::uintmax_t size = fs::is_regular_file(status) ? fs::file_size(path, error) : 0;
  return ReadToEnd(file.get(), error ? 0 : static_cast<std::size_t>(size), path);
}

std::string ReadFile(const fs::path& path) {
  std::optional<std::string> content = ReadFileIfThere(path);
  if (!content) throw DocumentError(path.string() + ": there is no such file");
  if (content->empty()) throw DocumentError(path.string() + ": the file is empty");
  return std::move(*content);
}

fs::path BackupOf(const fs::path& path) {
  fs::path backup = ThroughLinks(path);
  return backup += ".bak";
}

void WriteFileAtomically(const fs::path& path, std::string_view content) {
  WriteFileAtomically(path, content, FormerFile::Drop);
}

void WriteFileAtomically(const fs::path& path, std::string_view content, FormerFile former) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (status.type() == fs::file_type::none) ThrowFileError(path, "cannot be written", error);
  if (fs::is_directory(status)) throw DocumentError(path.string() + ": this is a directory, not a file");
  if (fs::exists(status) && !fs::is_regular_file(status)) {
    WriteAll(Open(path, "wb", path, "cannot be opened for writing"), content, path);
    return;
  }

  const fs::path target = ThroughLinks(path);
  if (fs::exists(status) && !IsWritable(target)) throw DocumentError(path.string() + ": the file is read-only");
  TemporaryFile temporary(TemporaryBeside(target));
  File file = Open(temporary.path, "wb", path, "cannot be written in its directory");
  if (fs::exists(status)) TakeOver(temporary.path, target, status.permissions());
  WriteAll(std::move(file), content, path);
  if (former == FormerFile::Keep && fs::exists(status)) KeepFormer(target, path);
  RememberUnfinishedFile(temporary.path.string());
  fs::rename(temporary.path, target, error);
  if (error) ThrowFileError(path, "cannot be put in place", error);
  temporary.path.clear();
}

void RemoveUnfinishedFilesOnSignals() {
#ifndef _WIN32
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) std::signal(signal, RemoveUnfinishedFile);
  std::signal(SIGXFSZ, SIG_IGN);
#endif
}

}  // namespace vorn_host
