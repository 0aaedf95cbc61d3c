#pragma once

#include <cstdint>
#include <cstring>
#include <span>
#include <string_view>

#include "vorn/platform/cfile.h"

namespace vorn_host {

/// Bytes that somebody else holds, as a file to be read: a part of a larger file needs no copy.
class MemoryViewFile final : public CFile {
 public:
  /// The bytes have to outlive the file.
  explicit MemoryViewFile(std::string_view bytes) : m_bytes(bytes) {}

  std::uint32_t Read(void* bytes, std::uint32_t count) override {
    const std::string_view part = m_bytes.substr(m_position, count);
    if (!part.empty()) std::memcpy(bytes, part.data(), part.size());
    m_position += part.size();
    return static_cast<std::uint32_t>(part.size());
  }
  std::span<const std::uint8_t> ReadInPlace() override {
    const std::string_view rest = m_bytes.substr(m_position);
    m_position = m_bytes.size();
    return {reinterpret_cast<const std::uint8_t*>(rest.data()), rest.size()};
  }
  void Write(const void*, std::uint32_t) override { throw CFileException(CFileException::accessDenied); }
  /// Nothing is to be written.
  void Flush() override {}
  /// Nothing is to be closed.
  void Close() override {}

  /// Number of the bytes.
  [[nodiscard]] std::uint64_t GetLength() const override { return m_bytes.size(); }
  [[nodiscard]] std::uint64_t GetPosition() const override { return m_position; }
  /// A position outside the bytes throws `CFileException`.
  std::uint64_t Seek(std::int64_t offset, SeekPosition from) override {
    const std::size_t origin = from == begin ? 0 : from == current ? m_position : m_bytes.size();
    const std::int64_t position = static_cast<std::int64_t>(origin) + offset;
    if (position < 0 || position > static_cast<std::int64_t>(m_bytes.size())) {
      throw CFileException(CFileException::badSeek);
    }
    m_position = static_cast<std::size_t>(position);
    return m_position;
  }

 private:
  std::string_view m_bytes;
  std::size_t m_position = 0;
};

}  // namespace vorn_host
