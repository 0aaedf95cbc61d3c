#include "vorn/platform/cfile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Bytes = std::vector<std::uint8_t>;

constexpr std::int64_t kFarthest = std::numeric_limits<std::int64_t>::max();

void Write(CFile& file, const Bytes& bytes) { file.Write(bytes.data(), static_cast<std::uint32_t>(bytes.size())); }

Bytes Read(CFile& file, std::uint32_t count) {
  Bytes bytes(count, 0xEE);
  const std::uint32_t read = file.Read(bytes.data(), count);
  EXPECT_LE(read, count);
  bytes.resize(read);
  return bytes;
}

template <typename Action>
CFileException::Cause CauseOf(Action action) {
  try {
    action();
  } catch (const CFileException& error) {
    return error.m_cause;
  }
  return CFileException::none;
}

TEST(CMemFile, StartsEmptyAtItsBeginning) {
  CMemFile file;
  EXPECT_EQ(file.GetLength(), 0u);
  EXPECT_EQ(file.GetPosition(), 0u);
  EXPECT_THAT(Read(file, 1), IsEmpty());
}

TEST(CMemFile, GrowsAsItIsWritten) {
  CMemFile file;
  Write(file, {1, 2, 3});
  Write(file, {4});
  EXPECT_THAT(file.Bytes(), ElementsAre(1, 2, 3, 4));
  EXPECT_EQ(file.GetLength(), 4u);
  EXPECT_EQ(file.GetPosition(), 4u);
}

TEST(CMemFile, ReadsUpToItsEnd) {
  CMemFile file(Bytes{1, 2, 3});
  EXPECT_THAT(Read(file, 2), ElementsAre(1, 2));
  EXPECT_EQ(file.GetPosition(), 2u);
  EXPECT_THAT(Read(file, 2), ElementsAre(3));
  EXPECT_THAT(Read(file, 2), IsEmpty());
  EXPECT_EQ(file.GetPosition(), 3u);
}

TEST(CMemFile, WritesOverWhatIsThereAndBeyond) {
  CMemFile file(Bytes{1, 2, 3});
  file.Seek(1, CFile::begin);
  Write(file, {8});
  EXPECT_THAT(file.Bytes(), ElementsAre(1, 8, 3));
  Write(file, {9, 10});
  EXPECT_THAT(file.Bytes(), ElementsAre(1, 8, 9, 10));
}

TEST(CMemFile, ReadsAndWritesNothingWithoutMemory) {
  CMemFile file(Bytes{1});
  EXPECT_EQ(file.Read(nullptr, 0), 0u);
  file.Write(nullptr, 0);
  EXPECT_EQ(file.GetPosition(), 0u);
  EXPECT_THAT(file.Bytes(), ElementsAre(1));
}

TEST(CMemFile, DoesNotGrowWhenNothingIsWrittenBehindItsEnd) {
  for (const std::int64_t position : {std::int64_t{5}, kFarthest}) {
    CMemFile file(Bytes{1});
    file.Seek(position, CFile::begin);
    file.Write(nullptr, 0);
    EXPECT_THAT(file.Bytes(), ElementsAre(1)) << position;
    EXPECT_EQ(file.GetPosition(), static_cast<std::uint64_t>(position));
  }
}

TEST(CMemFile, MovesFromEitherEndAndFromWhereItIs) {
  CMemFile file(Bytes{1, 2, 3, 4});
  EXPECT_EQ(file.Seek(3, CFile::begin), 3u);
  EXPECT_EQ(file.Seek(-2, CFile::current), 1u);
  EXPECT_EQ(file.Seek(1, CFile::current), 2u);
  EXPECT_EQ(file.Seek(-1, CFile::end), 3u);
  EXPECT_THAT(Read(file, 9), ElementsAre(4));
  file.SeekToBegin();
  EXPECT_EQ(file.GetPosition(), 0u);
  EXPECT_EQ(file.SeekToEnd(), 4u);
  EXPECT_EQ(file.GetPosition(), 4u);
}

TEST(CMemFile, RefusesPositionsBeforeItsBeginning) {
  CMemFile file(Bytes{1, 2, 3});
  file.Seek(2, CFile::begin);
  for (const auto& [offset, from] : {std::pair(std::int64_t{-1}, CFile::begin),
                                     {-3, CFile::current},
                                     {-4, CFile::end},
                                     {std::numeric_limits<std::int64_t>::min(), CFile::end}}) {
    EXPECT_EQ(CauseOf([&, at = offset, base = from] { file.Seek(at, base); }), CFileException::badSeek) << offset;
    EXPECT_EQ(file.GetPosition(), 2u) << offset;
  }
}

TEST(CMemFile, RefusesPositionsThatCannotBeCounted) {
  CMemFile file(Bytes{1});
  EXPECT_EQ(CauseOf([&] { file.Seek(kFarthest, CFile::end); }), CFileException::badSeek);
  EXPECT_EQ(file.Seek(kFarthest, CFile::begin), static_cast<std::uint64_t>(kFarthest));
  EXPECT_EQ(CauseOf([&] { file.Seek(1, CFile::current); }), CFileException::badSeek);
}

TEST(CMemFile, ReadsNothingBehindItsEnd) {
  CMemFile file(Bytes{1});
  file.Seek(kFarthest, CFile::begin);
  EXPECT_THAT(Read(file, 4), IsEmpty());
  EXPECT_EQ(file.GetLength(), 1u);
}

TEST(CMemFile, FillsASkippedStretchWithZeros) {
  CMemFile file(Bytes{1});
  file.Seek(2, CFile::end);
  EXPECT_EQ(file.GetLength(), 1u);
  Write(file, {7});
  EXPECT_THAT(file.Bytes(), ElementsAre(1, 0, 0, 7));
}

TEST(CMemFile, IsFullWhenNoMemoryCouldHoldIt) {
  CMemFile file(Bytes{1});
  file.Seek(kFarthest, CFile::begin);
  EXPECT_EQ(CauseOf([&] { Write(file, {7}); }), CFileException::diskFull);
  EXPECT_THAT(file.Bytes(), ElementsAre(1));
}

// --- reading in place ------------------------------------------------------------------------------------------------

TEST(CMemFile, GivesTheBytesFromItsPositionOnWhereTheyAre) {
  for (const std::int64_t position : {0, 1, 3}) {
    CMemFile file(Bytes{1, 2, 3, 4});
    file.Seek(position, CFile::begin);
    const auto held = file.ReadInPlace();
    EXPECT_EQ(held.data(), file.Bytes().data() + position);
    EXPECT_EQ(held.size(), 4u - static_cast<std::size_t>(position));
    EXPECT_EQ(file.GetPosition(), 4u);
    EXPECT_THAT(Read(file, 1), IsEmpty());
  }
}

TEST(CMemFile, GivesNoBytesInPlaceAtItsEndOrBehindItAndStays) {
  for (const std::int64_t position : {std::int64_t{4}, std::int64_t{5}, kFarthest}) {
    CMemFile file(Bytes{1, 2, 3, 4});
    file.Seek(position, CFile::begin);
    EXPECT_TRUE(file.ReadInPlace().empty()) << position;
    EXPECT_EQ(file.GetPosition(), static_cast<std::uint64_t>(position));
  }
}

TEST(CMemFile, GivesNoBytesInPlaceWhenEmpty) {
  CMemFile file;
  EXPECT_TRUE(file.ReadInPlace().empty());
  EXPECT_EQ(file.GetPosition(), 0u);
}

/// A file with nothing but what every file has.
class PlainFile : public CFile {
 public:
  std::uint32_t Read(void*, std::uint32_t count) override {
    m_position += count;
    return count;
  }
  void Write(const void*, std::uint32_t) override {}
  void Flush() override {}
  void Close() override {}
  [[nodiscard]] std::uint64_t GetLength() const override { return 100; }
  [[nodiscard]] std::uint64_t GetPosition() const override { return m_position; }
  std::uint64_t Seek(std::int64_t offset, SeekPosition) override {
    return m_position = static_cast<std::uint64_t>(offset);
  }

 private:
  std::uint64_t m_position = 7;
};

TEST(CFile, GivesNoBytesInPlaceUnlessItHoldsThem) {
  PlainFile file;
  EXPECT_TRUE(file.ReadInPlace().empty());
  EXPECT_EQ(file.GetPosition(), 7u);
}

TEST(CMemFile, TakesBytesAndGivesThemBack) {
  CMemFile file(Bytes{1, 2});
  file.SeekToEnd();
  file.Attach({3, 4, 5});
  EXPECT_THAT(Read(file, 9), ElementsAre(3, 4, 5));
  EXPECT_THAT(file.Detach(), ElementsAre(3, 4, 5));
  EXPECT_EQ(file.GetLength(), 0u);
  EXPECT_EQ(file.GetPosition(), 0u);
}

TEST(CMemFile, KeepsItsContentWhenFlushedAndDropsItWhenClosed) {
  CMemFile file;
  Write(file, {1, 2});
  file.Flush();
  EXPECT_EQ(file.GetLength(), 2u);
  EXPECT_EQ(file.GetPosition(), 2u);
  file.Close();
  EXPECT_EQ(file.GetLength(), 0u);
  EXPECT_EQ(file.GetPosition(), 0u);
}

TEST(CFileException, IsAStandardExceptionThatSaysWhatFailed) {
  static_assert(std::is_base_of_v<CException, CFileException>);
  const auto text = [](CFileException::Cause cause) {
    try {
      throw CFileException(cause);
    } catch (const std::exception& error) {
      return std::string(error.what());
    }
  };
  EXPECT_EQ(text(CFileException::none), "no file error");
  EXPECT_EQ(text(CFileException::genericException), "the file could not be read or written");
  EXPECT_EQ(text(CFileException::accessDenied), "access to the file was denied");
  EXPECT_EQ(text(CFileException::badSeek), "the file has no such position");
  EXPECT_EQ(text(CFileException::hardIO), "the file's device failed");
  EXPECT_EQ(text(CFileException::diskFull), "there is no room for the file");
  EXPECT_EQ(text(CFileException::endOfFile), "the file has ended");
  EXPECT_EQ(text(static_cast<CFileException::Cause>(99)), "the file could not be read or written");
  EXPECT_EQ(CFileException().m_cause, CFileException::genericException);
}

}  // namespace
