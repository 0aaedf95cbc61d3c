#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "vorn/platform/carchive.h"
#include "vorn/platform/cfile.h"

// Archives in memory, for tests that compare and damage their bytes.

namespace test_support {

using Bytes = std::vector<std::uint8_t>;

inline Bytes operator+(Bytes a, const Bytes& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

/// Raw bytes of a text.
inline Bytes BytesOf(std::string_view text) { return {text.begin(), text.end()}; }

/// What `store(archive)` puts into an archive.
template <typename Store>
Bytes Stored(Store store, std::uint32_t bufferSize = 4096) {
  CMemFile file;
  CArchive ar(&file, CArchive::store, bufferSize);
  store(ar);
  ar.Close();
  return file.Detach();
}

/// An archive that loads the given bytes.
class LoadingArchive {
 public:
  explicit LoadingArchive(Bytes bytes, std::uint32_t bufferSize = 4096)
      : m_file(std::move(bytes)), m_archive(&m_file, CArchive::load, bufferSize) {}

  CArchive& operator*() { return m_archive; }
  CArchive* operator->() { return &m_archive; }

 private:
  CMemFile m_file;
  CArchive m_archive;
};

/// The cause with which an archive refuses an action; `none` when it does not.
template <typename Action>
CArchiveException::Cause ArchiveRefusal(Action action) {
  try {
    action();
  } catch (const CArchiveException& error) {
    return error.m_cause;
  }
  return CArchiveException::none;
}

/// The first bytes after which `load(archive)` does not find the end of the archive although the rest is missing; -1
/// when it always does. With small buffers as well, so that values lie across their edges.
template <typename Load>
int TruncationOverlooked(const Bytes& whole, Load load) {
  for (const std::uint32_t bufferSize : {1u, 3u, 8u, 4096u}) {
    for (std::size_t kept = 0; kept < whole.size(); ++kept) {
      LoadingArchive ar(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(kept)), bufferSize);
      if (ArchiveRefusal([&] { load(*ar); }) != CArchiveException::endOfFile) return static_cast<int>(kept);
    }
  }
  return -1;
}

}  // namespace test_support
