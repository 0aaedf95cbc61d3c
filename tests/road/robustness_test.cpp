#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <optional>

#include "tests/archive/small_disk.h"
#include "tests/road/full_road_records.h"

// Damaged archives of all road data together: an archive exception, a refusal as newer, or data that can be used,
// nothing else.

namespace road_test {
namespace {

using archive_test::SmallDisk;
using Cause = CArchiveException::Cause;

/// The road geometry with one alignment, whose cross-section set is empty.
ExpectedBytes SmallRoad(const Layout& at, VORN_DataKind kind) {
  const bool isNew = at.IsFrom("03.00");
  const bool whole = kind == kRoadGeometry || at.IsFrom("02.50");
  const bool newSet = at.IsAfter("03.00");
  return {
      {"table", EmptyTable(), isNew},
      {"name", Text("road")},
      {"class", I32(1)},
      {"speed", I32(2)},
      {"traffic", I32(3)},
      {"option", I32(4), isNew},
      {"schema version", I32(2), isNew},
      {"option 2", I32(5), isNew},
      {"text", Text("text"), isNew},
      {"current", I32(0)},
      {"alignment count", I32(1)},
      {"alignment name", Text("A")},
      {"crs name", Text("crs1")},
      {"aux text", Text("")},
      {"attr 1", U16(1)},
      {"attr 2", U16(2)},
      {"attr 3", U16(3)},
      {"set table", EmptyTable(), whole},
      {"road alignment", Text("A"), whole},
      {"vertical", Text("V"), whole},
      {"phase", Text("P"), whole && newSet},
      {"alignment", Bool(true), whole && newSet},
      {"section count", U32(0), whole},
      {"next target serial", U32(1), whole && at.IsFrom("05.00")},
      {"target count", U32(0), whole && newSet},
      {"status 1", I32(0), whole},
      {"date 1", Real(1.5), whole},
      {"status 2", I32(1), whole},
      {"date 2", Real(2.5), whole},
      {"status 3", I32(2), whole},
      {"date 3", Real(3.5), whole},
      {"cross-section type", EmptyTable(), isNew},
      {"file count", U32(1), isNew},
      {"create status", I32(0), isNew},
      {"create date", Real(1.5), isNew},
      {"change status", I32(2), isNew},
      {"change date", Real(0), isNew},
      {"note", Text("note"), isNew},
      {"file table", EmptyTable(), isNew},
      {"work", Text("work"), isNew},
      {"job", Text("job"), isNew},
      {"company", Text(""), isNew},
      {"station type", Text("NO"), isNew},
      {"structure table", EmptyTable(), isNew},
  };
}

/// A record in which every kind of road record occurs.
ExpectedBytes SmallData(const Layout& at) {
  return {
      {"info version", Text(at.version)},
      {"info systems", CrsArrayBytes(1)},
      {"points", CtrlPointsBytes(2, false)},
      {"info road", SmallRoad(at, kFormControl)},
      {"form control", FormCtrlBytes(at)},
      {"center version", Text(at.version)},
      {"project", ProjectBytes()},
      {"center systems", CrsArrayBytes(3)},
      {"groups", GroupsBytes(4)},
      {"center road", SmallRoad(at, kRoadGeometry)},
      {"land xml", LandXmlBytes("01.11")},
  };
}

/// Data that take every store version.
VornLinearXMLData Reader() {
  VornLinearXMLData data;
  data.GetInfoConstrcut().SetStoreVersion("06.50");
  data.GetRoadCenter().SetStoreVersion("06.50");
  return data;
}

/// Why reading is refused: `none` when data were read; nothing at all when they count as newer.
std::optional<Cause> Outcome(const Bytes& bytes) {
  VornLinearXMLData data = Reader();
  std::optional<Cause> cause;
  try {
    cause = ArchiveRefusal([&] {
      LoadingArchive ar(bytes);
      data.Serialize(*ar, "05.00");
    });
  } catch (bool) {
    // A damaged version; the rest of the record is not read.
  }
  // What was read until then is data as any other.
  static_cast<void>(StoredWith(data, "05.00"));
  return cause;
}

class DamagedRoadArchive : public InStoreVersion {};
IN_EVERY_ROAD_VERSION(DamagedRoadArchive);

TEST_P(DamagedRoadArchive, IsReadWhenNothingIsDamaged) {
  const Bytes bytes = SmallData(Read()).All();
  EXPECT_EQ(Outcome(bytes), CArchiveException::none);
  VornLinearXMLData data = Reader();
  ReadWith(data, bytes, "05.00");
  EXPECT_EQ(data.GetRoadCenter().GetRoadGm().GetAlignments()[0].GetUpDate().GetDates()[2].m_dt, 3.5);
}

TEST_P(DamagedRoadArchive, EndsTooEarlyWhereverItIsTruncated) {
  const Bytes whole = SmallData(Read()).All();
  for (std::size_t kept = 0; kept < whole.size(); ++kept) {
    const Bytes bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(kept));
    ASSERT_EQ(Outcome(bytes), CArchiveException::endOfFile) << kept;
  }
}

TEST_P(DamagedRoadArchive, IsRefusedOrReadWhicheverByteChanges) {
  const Bytes whole = SmallData(Read()).All();
  for (std::size_t i = 0; i < whole.size(); ++i) {
    for (const int changed : {0x00, 0x7F, 0x80, 0xFF, whole[i] ^ 0x01}) {
      Bytes bytes = whole;
      bytes[i] = static_cast<std::uint8_t>(changed);
      // Anything but an archive exception and a refusal as newer ends the test.
      ASSERT_NO_THROW(Outcome(bytes)) << "byte " << i << " as " << changed;
    }
  }
}

TEST_P(DamagedRoadArchive, DoesNotBelieveCountsThatItsBytesCannotBack) {
  const ExpectedBytes table = SmallData(Read());
  int counts = 0;
  for (std::size_t i = 0; i < table.Fields().size(); ++i) {
    const auto& [name, value] = table.Fields()[i];
    if (!name.ends_with("count") || value.bytes.size() != 4) continue;
    ++counts;
    for (const std::uint32_t count : {0x7FFFFFFFu, 0x40000000u, 0x10000u}) {
      ASSERT_EQ(Outcome(With(table, i, U32(count).bytes)), CArchiveException::endOfFile) << name << ' ' << count;
    }
    for (const std::uint32_t count : {0xFFFFFFFFu, 0x80000000u}) {
      ASSERT_NO_THROW(Outcome(With(table, i, U32(count).bytes))) << name << ' ' << count;
    }
  }
  EXPECT_GE(counts, 13);
}

TEST_P(DamagedRoadArchive, DoesNotBelieveANumberOfTextsThatItsBytesCannotBack) {
  using test_support::operator+;
  const ExpectedBytes table = SmallData(Read());
  int counts = 0;
  for (std::size_t i = 0; i < table.Fields().size(); ++i) {
    if (!table.Fields()[i].name.ends_with("short text count")) continue;
    ++counts;
    for (const Bytes& count : {U16(0xFFFE).bytes, U16(0xFFFF).bytes + U32(0xFFFFFFFF).bytes}) {
      ASSERT_EQ(Outcome(With(table, i, count)), CArchiveException::endOfFile);
    }
  }
  EXPECT_EQ(counts, 1);
}

TEST_P(DamagedRoadArchive, DoesNotBelieveLengthsPastItsEnd) {
  const ExpectedBytes table = SmallData(Read());
  const Bytes medium = {0xFF, 0xFD, 0xFF};
  const Bytes endless = {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};
  const Bytes longest = {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x7F};
  int texts = 0;
  for (std::size_t i = 0; i < table.Fields().size(); ++i) {
    if (table.Fields()[i].value.type != "text") continue;
    ++texts;
    for (const Bytes& length : {medium, endless, longest}) {
      ASSERT_EQ(Outcome(With(table, i, length)), CArchiveException::endOfFile) << table.Fields()[i].name;
    }
  }
  EXPECT_GE(texts, 60);
}

TEST_P(DamagedRoadArchive, DoesNotBelieveTablesThatItsBytesCannotBack) {
  const ExpectedBytes table = SmallData(Read());
  for (std::size_t i = 0; i < table.Fields().size(); ++i) {
    if (table.Fields()[i].value.type != "table") continue;
    for (const std::uint32_t count : {0xFFFFFFFFu, 0x7FFFFFFFu, 0x10000u}) {
      ASSERT_EQ(Outcome(With(table, i, U32(count).bytes)), CArchiveException::endOfFile) << table.Fields()[i].name;
    }
  }
}

TEST_P(DamagedRoadArchive, IsRefusedOrReadInAnotherVersionThanItsOwn) {
  const ExpectedBytes table = SmallData(Read());
  for (const char* version : kRoadVersions) {
    EXPECT_NO_THROW(Outcome(With(table, 0, Text(version).bytes))) << version;
  }
}

TEST_P(DamagedRoadArchive, ReportsADiskThatFillsUpWhileItIsWritten) {
  VornLinearXMLData data = Reader();
  ReadWith(data, SmallData(Read()).All(), "05.00");
  const std::size_t size = StoredWith(data, "05.00").size();
  for (const std::uint32_t bufferSize : {0u, 100u, 4096u}) {
    for (std::size_t room = 0; room < size; room += 37) {
      SmallDisk disk(room);
      CArchive ar(&disk, CArchive::store, bufferSize);
      const auto write = [&] {
        data.Serialize(ar, "05.00");
        ar.Close();
      };
      ASSERT_THROW(write(), CFileException) << bufferSize << ' ' << room;
      ASSERT_THROW(ar.Close(), CArchiveException);
    }
  }
}

}  // namespace
}  // namespace road_test
