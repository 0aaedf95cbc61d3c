#pragma once

#include <algorithm>
#include <cstdint>
#include <utility>

#include "tests/support/archive_bytes.h"

namespace test_support {

/// A file that claims more bytes than it has and notes the largest read that it was asked for.
class BoastfulFile : public StreamedFile {
 public:
  BoastfulFile(test_support::Bytes bytes, std::uint64_t claimed) : StreamedFile(std::move(bytes)), m_claimed(claimed) {}

  std::uint32_t Read(void* bytes, std::uint32_t count) override {
    m_largestRead = std::max(m_largestRead, count);
    return CMemFile::Read(bytes, count);
  }
  [[nodiscard]] std::uint64_t GetLength() const override { return m_claimed; }

  [[nodiscard]] std::uint32_t LargestRead() const { return m_largestRead; }

 private:
  std::uint64_t m_claimed;
  std::uint32_t m_largestRead = 0;
};

}  // namespace test_support
