#include "vorn/model/x_sections.h"

#include <gtest/gtest.h>

#include "tests/archive/full_records.h"

namespace archive_test {

VornXSections FullSet() {
  VornXSections set;
  set.SetRefAlign("alignment A");
  set.SetRefVertical("vertical V");
  set.SetProjectPhase("phase P");
  set.SetAlignment(true);
  set.GetXSectionArray().Add(FullSection(3));
  set.GetXSectionArray().Add(FullSection(6));
  set.GetFormCtrlTargetArray().Add(FullTarget(8));
  set.GetHiErr() = true;  // not archived
  return set;
}

ExpectedBytes SetBytes(const Layout& at) {
  const bool isNew = at.IsAfter("03.00");
  return {
      {"extension table", EmptyTable()},
      {"alignment name", Text("alignment A")},
      {"vertical name", Text("vertical V")},
      {"project phase", Text("phase P"), isNew},
      {"alignment", Bool(true), isNew},
      {"section count", U32(2)},
      {"sections[0]", SectionBytes(at, 3)},
      {"sections[1]", SectionBytes(at, 6)},
      {"next target serial", U32(886), isNew && at.IsReadSince("05.00")},
      {"target count", U32(1), isNew},
      {"targets[0]", TargetBytes(at, 8), isNew},
  };
}

void ExpectSet(const VornXSections& set, const Layout& at) {
  const bool isNew = at.IsAfter("03.00");
  EXPECT_EQ(set.GetRefAlign(), "alignment A");
  EXPECT_EQ(set.GetRefVertical(), "vertical V");
  EXPECT_EQ(set.GetProjectPhase(), isNew ? "phase P" : "");
  EXPECT_EQ(set.GetAlignment(), isNew ? true : VornXSections().GetAlignment());
  EXPECT_EQ(set.GetHiErr(), VornXSections().GetHiErr());
  ASSERT_EQ(set.GetXSectionArray().GetSize(), 2);
  ExpectSection(set.GetXSectionArray()[0], at, 3);
  ExpectSection(set.GetXSectionArray()[1], at, 6);
  EXPECT_EQ(set.GetFormCtrlTargetArray().GetNextSerialID(), at.IsFrom("05.00") ? 886u : 0u);
  ASSERT_EQ(set.GetFormCtrlTargetArray().GetSize(), isNew ? 1 : 0);
  if (isNew) ExpectTarget(set.GetFormCtrlTargetArray()[0], at, 8);
}

namespace {

class XSectionsArchive : public InStoreVersion {};
IN_EVERY_STORE_VERSION(XSectionsArchive);

TEST_P(XSectionsArchive, WritesItsFields) {
  EXPECT_TRUE(HasBytes(StoredAs(FullSet(), GetParam()), SetBytes(Written())));
}

TEST_P(XSectionsArchive, ReadsItsFieldsAndLeavesTheOthersAtTheirDefaults) {
  ExpectSet(ReadBack<VornXSections>(SetBytes(Read()).All(), GetParam()), Read());
}

TEST_P(XSectionsArchive, ReadingOldDataKeepsPhaseFlagAndTargetsThatAreThere) {
  VornXSections set = FullSet();
  const ExpectedBytes bytes = {{"table", EmptyTable()},
                               {"alignment name", Text("B")},
                               {"vertical name", Text("W")},
                               {"project phase", Text("Q"), Read().IsAfter("03.00")},
                               {"alignment", Bool(false), Read().IsAfter("03.00")},
                               {"sections", U32(0)},
                               {"next target serial", U32(5), Read().IsFrom("05.00")},
                               {"targets", U32(0), Read().IsAfter("03.00")}};
  ReadInto(set, bytes.All(), GetParam());
  EXPECT_EQ(set.GetRefAlign(), "B");
  EXPECT_EQ(set.GetRefVertical(), "W");
  EXPECT_EQ(set.GetXSectionArray().GetSize(), 0);
  const bool isOld = !Read().IsAfter("03.00");
  EXPECT_EQ(set.GetProjectPhase(), isOld ? "phase P" : "Q");
  EXPECT_EQ(set.GetAlignment(), isOld);
  EXPECT_EQ(set.GetFormCtrlTargetArray().GetSize(), isOld ? 1 : 0);
  EXPECT_TRUE(set.GetHiErr());
}

TEST_P(XSectionsArchive, LeavesTheOrderOfItsSectionsAlone) {
  ExpectedBytes bytes = {{"count", U32(2)}, {"0", SectionBytes(Read(), 6)}, {"1", SectionBytes(Read(), 3)}};
  const auto sections = ReadBack<Vorn_XSectionArray>(bytes.All(), GetParam());
  ASSERT_EQ(sections.GetSize(), 2);
  EXPECT_EQ(sections[0].GetCumulativeDist(), 6.91);
  EXPECT_EQ(sections[1].GetCumulativeDist(), 3.91);
}

// Values that a later version put into the tables: they are read over, wherever a table stands, and are gone when the
// set is written again.
TEST_P(XSectionsArchive, ForgetsWhatLaterVersionsPutIntoAnyTable) {
  const ExpectedBytes expected = SetBytes(Read());
  const Bytes later = TableOf(9, 0x01020304).bytes;
  Bytes bytes;
  int tables = 0;
  for (const ExpectedBytes::Field& field : expected.Fields()) {
    const bool isEmptyTable = field.value.type == "table" && field.value.bytes == EmptyTable().bytes;
    tables += isEmptyTable ? 1 : 0;
    const Bytes& put = isEmptyTable ? later : field.value.bytes;
    bytes.insert(bytes.end(), put.begin(), put.end());
  }
  EXPECT_GT(tables, 20);
  auto set = ReadBack<VornXSections>(bytes, GetParam());
  ExpectSet(set, Read());
  EXPECT_EQ(StoredAs(set, GetParam()), StoredAs(ReadBack<VornXSections>(expected.All(), GetParam()), GetParam()));
}

// An archive of the newest versions comes back whole: what is written is what is read.
TEST(XSectionsArchiveRoundTrip, TheNewestVersionsComeBackAndAreWrittenAgainByteForByte) {
  for (const char* version : {"05.00", "05.50", "06.00", "06.50"}) {
    SCOPED_TRACE(version);
    const Bytes bytes = StoredAs(FullSet(), version);
    auto set = ReadBack<VornXSections>(bytes, version);
    ExpectSet(set, {version, Way::Written});
    EXPECT_EQ(StoredAs(set, version), bytes);
  }
}

TEST(XSectionsArchive0300, KeepsTheReferencesAndLosesPhaseFlagAndTargets) {
  VornXSections set = FullSet();
  set.GetXSectionArray() = Vorn_XSectionArray();
  const auto loaded = ReadBack<VornXSections>(StoredAs(set, "03.00"), "03.00");
  EXPECT_EQ(loaded.GetRefAlign(), "alignment A");
  EXPECT_EQ(loaded.GetRefVertical(), "vertical V");
  EXPECT_EQ(loaded.GetProjectPhase(), "");
  EXPECT_EQ(loaded.GetAlignment(), VornXSections().GetAlignment());
  EXPECT_EQ(loaded.GetFormCtrlTargetArray().GetSize(), 0);
}

// A section is written without its station in old versions, and read with it.
TEST(XSectionsArchive0300, SectionsThatItWritesAreShorterThanThoseThatItReads) {
  const Bytes written = StoredAs(FullSet(), "03.00");
  VornXSections set;
  const CString tag("03.00");
  test_support::LoadingArchive ar(written);
  EXPECT_NE(test_support::ArchiveRefusal([&] { set.Serialize(*ar, tag); }), CArchiveException::none);
}

TEST(XSectionsArchiveVersions, ChangeTheLayoutExactlyAtTheirNumber) {
  for (const char* version : {"02.99", "03.01"}) {
    SCOPED_TRACE(version);
    EXPECT_TRUE(HasBytes(StoredAs(FullSet(), version), SetBytes({version, Way::Written})));
    ExpectSet(ReadBack<VornXSections>(SetBytes({version, Way::Read}).All(), version), {version, Way::Read});
  }
}

TEST(OldXSectionsArchive, IsTakenForWhateverVersionWhenAskedFor) {
  const CString tag("06.00");
  VornXSections set = FullSet();
  set.GetXSectionArray() = Vorn_XSectionArray();
  const Bytes bytes = test_support::Stored([&](CArchive& ar) { set.SerializeOld(ar, tag); });
  EXPECT_TRUE(HasBytes(bytes, {{"table", EmptyTable()},
                               {"alignment name", Text("alignment A")},
                               {"vertical name", Text("vertical V")},
                               {"sections", U32(0)}}));
}

}  // namespace
}  // namespace archive_test
