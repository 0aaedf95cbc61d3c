#include "host/settings/file_lock.h"

#include <system_error>

#ifdef _WIN32
#include <windows.h>
#else
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#endif

#include "host/document/document_error.h"

namespace vorn_host {

namespace {

/// What the system says about the call that failed last.
std::error_code LastError() {
#ifdef _WIN32
  return {static_cast<int>(GetLastError()), std::system_category()};
#else
  return {errno, std::generic_category()};
#endif
}

[[noreturn]] void Fail(const std::filesystem::path& path, std::error_code error) {
  ThrowFileError(path, "cannot be locked", error);
}

}  // namespace

#ifdef _WIN32

FileLock::FileLock(const std::filesystem::path& path)
    : m_file(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                         OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr)) {
  if (m_file == INVALID_HANDLE_VALUE) Fail(path, LastError());
  OVERLAPPED whole{};
  if (LockFileEx(m_file, LOCKFILE_EXCLUSIVE_LOCK, 0, MAXDWORD, MAXDWORD, &whole) == 0) {
    const std::error_code error = LastError();
    CloseHandle(m_file);
    Fail(path, error);
  }
}

FileLock::~FileLock() {
  OVERLAPPED whole{};
  UnlockFileEx(m_file, 0, MAXDWORD, MAXDWORD, &whole);
  CloseHandle(m_file);
}

#else

FileLock::FileLock(const std::filesystem::path& path)
    : m_file(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR)) {
  if (m_file < 0) Fail(path, LastError());
  int outcome = 0;
  do outcome = flock(m_file, LOCK_EX);
  while (outcome != 0 && errno == EINTR);
  if (outcome != 0) {
    const std::error_code error = LastError();
    close(m_file);
    Fail(path, error);
  }
}

FileLock::~FileLock() { close(m_file); }

#endif

}  // namespace vorn_host
