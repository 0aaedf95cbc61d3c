#pragma once

#include <filesystem>

namespace vorn_host {

/// Keeps other processes out while this lives. The lock is a file that stays; what counts is who holds it, and the
/// system lets go of it when a process ends, however that happens.
class FileLock {
 public:
  /// Waits until the lock is free; makes the file if there is none. Throws `DocumentError` when that is impossible.
  explicit FileLock(const std::filesystem::path& path);
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;
  /// Lets go of the lock.
  ~FileLock();

 private:
#ifdef _WIN32
  void* m_file;
#else
  int m_file;
#endif
};

}  // namespace vorn_host
