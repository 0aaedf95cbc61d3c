#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
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

/// A file that hands its bytes out only when it is asked to read them, as one on a disk does.
class StreamedFile : public CMemFile {
 public:
  using CMemFile::CMemFile;
  std::span<const std::uint8_t> ReadInPlace() override { return {}; }
};

/// How an archive gets at its bytes: where the file holds them, or through a buffer of a size.
using Reading = std::optional<std::uint32_t>;
inline constexpr Reading kInPlace = std::nullopt;
/// Both ways, with values across the edges of the buffer and without.
inline constexpr std::array<Reading, 6> kReadings = {kInPlace, 0, 1, 3, 8, 4096};

inline std::string ToText(Reading reading) {
  return reading ? "buffer of " + std::to_string(*reading) : std::string("in place");
}

/// An archive that loads the given bytes.
class LoadingArchive {
 public:
  explicit LoadingArchive(Bytes bytes, Reading reading = kInPlace)
      : m_file(reading ? std::make_unique<StreamedFile>(std::move(bytes))
                       : std::make_unique<CMemFile>(std::move(bytes))),
        m_archive(m_file.get(), CArchive::load, reading.value_or(4096)) {}

  CArchive& operator*() { return m_archive; }
  CArchive* operator->() { return &m_archive; }
  [[nodiscard]] CMemFile& File() { return *m_file; }

 private:
  std::unique_ptr<CMemFile> m_file;
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
/// when it always does. Reads in place and through buffers.
template <typename Load>
int TruncationOverlooked(const Bytes& whole, Load load) {
  for (const Reading reading : kReadings) {
    for (std::size_t kept = 0; kept < whole.size(); ++kept) {
      LoadingArchive ar(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(kept)), reading);
      if (ArchiveRefusal([&] { load(*ar); }) != CArchiveException::endOfFile) return static_cast<int>(kept);
    }
  }
  return -1;
}

}  // namespace test_support
