#pragma once

#include <cstddef>
#include <cstdint>

#include "vorn/platform/cfile.h"

namespace archive_test {

/// A file that takes a number of bytes and no more.
class SmallDisk : public CMemFile {
 public:
  explicit SmallDisk(std::size_t room) : m_room(room) {}
  void Write(const void* bytes, std::uint32_t count) override {
    if (Bytes().size() + count > m_room) throw CFileException(CFileException::diskFull);
    CMemFile::Write(bytes, count);
  }

 private:
  std::size_t m_room;
};

}  // namespace archive_test
