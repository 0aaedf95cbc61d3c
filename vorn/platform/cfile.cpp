#include "vorn/platform/cfile.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>
#include <new>

const char* CFileException::what() const noexcept {
  switch (m_cause) {
    case none:
      return "no file error";
    case accessDenied:
      return "access to the file was denied";
    case badSeek:
      return "the file has no such position";
    case hardIO:
      return "the file's device failed";
    case diskFull:
      return "there is no room for the file";
    case endOfFile:
      return "the file has ended";
    case genericException:
      break;
  }
  return "the file could not be read or written";
}

void CMemFile::Attach(std::vector<std::uint8_t> bytes) {
  m_bytes = std::move(bytes);
  m_position = 0;
}

std::vector<std::uint8_t> CMemFile::Detach() {
  m_position = 0;
  return std::exchange(m_bytes, {});
}

std::uint32_t CMemFile::Read(void* bytes, std::uint32_t count) {
  if (m_position >= m_bytes.size()) return 0;
  const auto at = static_cast<std::size_t>(m_position);
  const auto taken = static_cast<std::uint32_t>(std::min<std::size_t>(count, m_bytes.size() - at));
  if (taken > 0) std::memcpy(bytes, m_bytes.data() + at, taken);
  m_position += taken;
  return taken;
}

std::span<const std::uint8_t> CMemFile::ReadInPlace() {
  if (m_position >= m_bytes.size()) return {};
  const auto at = static_cast<std::size_t>(std::exchange(m_position, m_bytes.size()));
  return std::span<const std::uint8_t>(m_bytes).subspan(at);
}

void CMemFile::Write(const void* bytes, std::uint32_t count) {
  if (count == 0) return;
  const std::uint64_t last = m_position + count;
  if (last > m_bytes.max_size()) throw CFileException(CFileException::diskFull);
  try {
    Put(static_cast<const std::uint8_t*>(bytes), count, static_cast<std::size_t>(last));
  } catch (const std::bad_alloc&) {
    throw CFileException(CFileException::diskFull);
  }
  m_position = last;
}

void CMemFile::Put(const std::uint8_t* bytes, std::size_t count, std::size_t last) {
  if (m_position == m_bytes.size()) {
    m_bytes.insert(m_bytes.end(), bytes, bytes + count);
    return;
  }
  if (last > m_bytes.size()) m_bytes.resize(last);
  std::memcpy(m_bytes.data() + m_position, bytes, count);
}

std::uint64_t CMemFile::Seek(std::int64_t offset, SeekPosition from) {
  std::uint64_t origin = 0;
  if (from == current) origin = m_position;
  if (from == end) origin = GetLength();
  const auto start = static_cast<std::int64_t>(origin);
  if (offset < -start || offset > std::numeric_limits<std::int64_t>::max() - start) {
    throw CFileException(CFileException::badSeek);
  }
  m_position = static_cast<std::uint64_t>(start + offset);
  return m_position;
}
