#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <utility>

#include "tests/road/full_road_records.h"
#include "vorn/platform/code_page_932.h"

namespace road_test {

namespace {

COleDateTime DateOf(double days) {
  COleDateTime date;
  date.m_dt = days;
  return date;
}

ExpectedBytes DateBytes(std::int32_t status, double days) { return {{"status", I32(status)}, {"date", Real(days)}}; }

VornUpDate FullDates(int n) {
  VornUpDate dates;
  for (int i = 0; i < 3; ++i) dates.GetDates()[static_cast<std::size_t>(i)] = DateOf(1000 * n + i);
  dates.GetDates()[1].SetStatus(COleDateTime::invalid);
  return dates;
}

ExpectedBytes DatesBytes(int n) {
  return {{"[0]", DateBytes(0, 1000 * n)}, {"[1]", DateBytes(1, 1000 * n + 1)}, {"[2]", DateBytes(0, 1000 * n + 2)}};
}

VornAlignment FullAlignment(int n) {
  VornAlignment alignment;
  alignment.SetName(Numbered("alignment", n));
  alignment.SetCrsName(Numbered("crs", n));
  alignment.SetAuxText(Numbered("aux", n));
  alignment.SetAttr1(static_cast<std::uint16_t>(10 + n));
  alignment.SetAttr2(static_cast<std::uint16_t>(20 + n));
  alignment.SetAttr3(static_cast<std::uint16_t>(60000 + n));
  alignment.SetXSections(archive_test::FullSet());
  alignment.SetUpDate(FullDates(n));
  alignment.SetMemo1("memo 1");
  alignment.SetMemo2("memo 2");
  alignment.SetMemo3("memo 3");
  return alignment;
}

/// Whether an alignment has its cross sections and dates.
bool HasSections(const Layout& at, VORN_DataKind kind) {
  return at.IsWritten() || kind == kRoadGeometry || (kind == kFormControl && at.IsFrom("02.50"));
}

ExpectedBytes AlignmentBytes(const Layout& at, VORN_DataKind kind, int n) {
  const bool whole = HasSections(at, kind);
  return {
      {"name", Text(Numbered("alignment", n).View())},     {"crs name", Text(Numbered("crs", n).View())},
      {"aux text", Text(Numbered("aux", n).View())},       {"attr 1", U16(static_cast<std::uint16_t>(10 + n))},
      {"attr 2", U16(static_cast<std::uint16_t>(20 + n))}, {"attr 3", U16(static_cast<std::uint16_t>(60000 + n))},
      {"sections", archive_test::SetBytes(at), whole},     {"dates", DatesBytes(n), whole},
  };
}

void ExpectAlignment(const VornAlignment& alignment, const Layout& at, VORN_DataKind kind, int n) {
  EXPECT_EQ(alignment.GetName(), Numbered("alignment", n));
  EXPECT_EQ(alignment.GetCrsName(), Numbered("crs", n));
  EXPECT_EQ(alignment.GetAuxText(), Numbered("aux", n));
  EXPECT_EQ(alignment.GetAttr1(), 10 + n);
  EXPECT_EQ(alignment.GetAttr2(), 20 + n);
  EXPECT_EQ(alignment.GetAttr3(), 60000 + n);
  EXPECT_EQ(alignment.GetMemo1(), "");
  EXPECT_EQ(alignment.GetMemo2(), "");
  EXPECT_EQ(alignment.GetMemo3(), "");
  if (HasSections(at, kind)) {
    archive_test::ExpectSet(alignment.GetXSections(), at);
    EXPECT_EQ(alignment.GetUpDate().GetDates(), FullDates(n).GetDates());
  } else {
    EXPECT_EQ(alignment.GetXSections().GetRefAlign(), "");
    EXPECT_TRUE(alignment.GetXSections().GetXSectionArray().IsEmpty());
    EXPECT_EQ(alignment.GetUpDate().GetDates(), VornUpDate().GetDates());
  }
}

}  // namespace

VornAlignmentsArray FullAlignments() {
  VornAlignmentsArray alignments;
  alignments.Add(FullAlignment(1));
  alignments.Add(FullAlignment(2));
  alignments.SetCurrent(-5);
  return alignments;
}

ExpectedBytes AlignmentsBytes(const Layout& at, VORN_DataKind kind) {
  return {
      {"current", I32(-5)},
      {"count", I32(2)},
      {"[0]", AlignmentBytes(at, kind, 1)},
      {"[1]", AlignmentBytes(at, kind, 2)},
  };
}

void ExpectAlignments(const VornAlignmentsArray& alignments, const Layout& at, VORN_DataKind kind) {
  EXPECT_EQ(alignments.GetCurrent(), -5);
  ASSERT_EQ(alignments.GetSize(), 2);
  ExpectAlignment(alignments[0], at, kind, 1);
  ExpectAlignment(alignments[1], at, kind, 2);
}

namespace {

constexpr std::string_view kWork = u8"道路土工"_cp932;

VornFileInfo FullFileInfo(int n) {
  VornFileInfo info;
  info.SetCreateDate(DateOf(n));
  info.SetNote(Numbered("note", n));
  return info;
}

ExpectedBytes FileInfoBytes(int n) {
  return {
      {"create", DateBytes(0, n)},
      {"change", DateBytes(2, 0)},
      {"note", Text(Numbered("note", n).View())},
      {"table", EmptyTable()},
  };
}

}  // namespace

VornRoadGmData FullRoad() {
  VornRoadGmData road;
  VornRoadInfo& info = road.GetRoadInfo();
  info.SetName("road");
  info.SetClassificat(static_cast<VornRoadInfo::Classificat>(31));
  info.SetDesignSpeed(static_cast<VornRoadInfo::DesignSpeed>(32));
  info.SetTraffic(-33);
  info.SetClassRiver(VornRoadInfo::ClassRiver::Class2);
  info.SetText1("not archived");
  info.SetText2("not archived");
  info.Side(1);
  info.SingleLane(true);
  road.SetOption(34);
  road.SetAlignments(FullAlignments());
  road.SetSchemaVersion(static_cast<VornSchema::Version>(35));
  road.GetFileInfos().Add(FullFileInfo(1));
  road.GetFileInfos().Add(FullFileInfo(2));
  road.GetStructureType().SetType(CString(kWork));
  road.GetStructureType().SetJobName("job");
  road.SetOption2(-36);
  road.SetText("text");
  return road;
}

ExpectedBytes RoadBytes(const Layout& at, VORN_DataKind kind) {
  const bool isNew = at.IsFrom("03.00");
  const bool hasInfo = isNew || at.IsRead();
  return {
      {"table", EmptyTable(), isNew},
      {"name", Text("road"), hasInfo},
      {"class", I32(31), hasInfo},
      {"speed", I32(32), hasInfo},
      {"traffic", I32(-33), hasInfo},
      {"option", I32(34), isNew},
      {"schema version", I32(35), isNew},
      {"option 2", I32(-36), isNew},
      {"text", Text("text"), isNew},
      {"alignments", AlignmentsBytes(at, kind)},
      {"cross-section type", EmptyTable(), isNew},
      {"file count", U32(2), isNew},
      {"files[0]", FileInfoBytes(1), isNew},
      {"files[1]", FileInfoBytes(2), isNew},
      {"work", Text(kWork), isNew},
      {"job", Text("job"), isNew},
      {"company", Text(""), isNew},
      {"station type", Text("NO"), isNew},
      {"structure table", EmptyTable(), isNew},
  };
}

void ExpectRoad(const VornRoadGmData& road, const Layout& at, VORN_DataKind kind) {
  const bool isNew = at.IsFrom("03.00");
  const VornRoadInfo& info = road.GetRoadInfo();
  EXPECT_EQ(info.GetName(), "road");
  EXPECT_EQ(static_cast<int>(info.GetClassificat()), 31);
  EXPECT_EQ(static_cast<int>(info.GetSpeed()), 32);
  EXPECT_EQ(info.GetTraffic(), -33);
  EXPECT_EQ(info.GetClassRiver(), VornRoadInfo::ClassRiver::Class1);
  EXPECT_EQ(info.GetText1(), "");
  EXPECT_EQ(info.GetText2(), "");
  EXPECT_EQ(info.Side(), 0);
  EXPECT_FALSE(info.SingleLane());
  EXPECT_EQ(road.GetOption(), isNew ? 34 : 0);
  EXPECT_EQ(static_cast<int>(road.GetSchemaVersion()), isNew ? 35 : 0);
  EXPECT_EQ(road.GetOption2(), isNew ? -36 : 0);
  EXPECT_EQ(road.GetText(), isNew ? "text" : "");
  ExpectAlignments(road.GetAlignments(), at, kind);
  ASSERT_EQ(road.GetFileInfos().GetSize(), isNew ? 2 : 0);
  if (isNew) {
    EXPECT_EQ(road.GetFileInfos()[0].GetNote(), "note1");
    EXPECT_EQ(road.GetFileInfos()[1].GetCreateDate(), DateOf(2));
  }
  EXPECT_EQ(road.GetStructureType().GetTypeStr(), isNew ? kWork : std::string_view());
  EXPECT_EQ(road.GetStructureType().GetJobName(), isNew ? "job" : "");
}

namespace {

/// The record before "03.00" is the same object's other function.
class OldRecord : public VornRoadGmData {
 public:
  explicit OldRecord(VornRoadGmData road = VornRoadGmData()) : VornRoadGmData(std::move(road)) {}
  void Serialize(CArchive& ar, const char* tag, VORN_DataKind kind) { SerializeOld(ar, tag, kind); }
};

// --- dates and alignments --------------------------------------------------------------------------------------------

class AlignmentArchive : public InStoreVersion {};
IN_EVERY_ROAD_VERSION(AlignmentArchive);

TEST_P(AlignmentArchive, WritesTheThreeDates) {
  EXPECT_TRUE(HasBytes(StoredWith(FullDates(4), GetParam()), DatesBytes(4)));
}

TEST_P(AlignmentArchive, ReadsTheThreeDates) {
  VornUpDate dates;
  ReadWith(dates, DatesBytes(4).All(), GetParam());
  EXPECT_EQ(dates.GetDates(), FullDates(4).GetDates());
}

TEST_P(AlignmentArchive, AlwaysWritesCrossSectionsAndDates) {
  for (const VORN_DataKind kind : kKinds) {
    EXPECT_TRUE(HasBytes(StoredWith(FullAlignment(3), GetParam(), kind), AlignmentBytes(Written(), kind, 3)));
    EXPECT_TRUE(HasBytes(StoredWith(FullAlignments(), GetParam(), kind), AlignmentsBytes(Written(), kind)));
  }
}

TEST_P(AlignmentArchive, ReadsCrossSectionsAndDatesByKindAndVersion) {
  for (const VORN_DataKind kind : kKinds) {
    VornAlignment alignment;
    ReadWith(alignment, AlignmentBytes(Read(), kind, 3).All(), GetParam(), kind);
    ExpectAlignment(alignment, Read(), kind, 3);
    VornAlignmentsArray alignments;
    ReadWith(alignments, AlignmentsBytes(Read(), kind).All(), GetParam(), kind);
    ExpectAlignments(alignments, Read(), kind);
  }
}

TEST_P(AlignmentArchive, StoringMakesNoSetOfCrossSections) {
  const VornAlignment untouched;
  VornAlignment alignment;
  VornAlignment withSet;
  withSet.SetXSections(VornXSections());
  for (const VORN_DataKind kind : kKinds) {
    EXPECT_EQ(StoredWith(alignment, GetParam(), kind), StoredWith(withSet, GetParam(), kind));
    EXPECT_EQ(&std::as_const(alignment).GetXSections(), &untouched.GetXSections()) << "all new ones share one";
  }
}

TEST(AlignmentArchive, ReadsOldFormControlDataWithoutCrossSections) {
  EXPECT_FALSE(HasSections({"02.00"}, kFormControl));
  EXPECT_TRUE(HasSections({"02.00"}, kRoadGeometry));
  VornAlignment alignment;
  ReadWith(alignment, AlignmentBytes({"02.00"}, kFormControl, 3).All(), "02.00", kFormControl);
  EXPECT_TRUE(alignment.GetXSections().GetXSectionArray().IsEmpty());
  ReadWith(alignment, AlignmentBytes({"02.00"}, kRoadGeometry, 3).All(), "02.00", kRoadGeometry);
  EXPECT_EQ(alignment.GetXSections().GetXSectionArray().GetSize(), 2);
}

TEST(AlignmentArchive, KeepsWhatItDoesNotRead) {
  VornAlignment alignment = FullAlignment(1);
  ReadWith(alignment, AlignmentBytes({"05.00"}, kOtherKind, 3).All(), "05.00", kOtherKind);
  EXPECT_EQ(alignment.GetName(), "alignment3");
  EXPECT_EQ(alignment.GetXSections().GetRefAlign(), "alignment A");
  EXPECT_EQ(alignment.GetUpDate().GetDates(), FullDates(1).GetDates());
  EXPECT_EQ(alignment.GetMemo2(), "memo 2");
}

TEST(AlignmentArchive, ReplacesTheAlignmentsThatWereThere) {
  VornAlignmentsArray alignments = FullAlignments();
  ReadWith(alignments, AlignmentsBytes({"05.00"}, kOtherKind).All(), "05.00", kOtherKind);
  ASSERT_EQ(alignments.GetSize(), 2);
  EXPECT_EQ(alignments[0].GetXSections().GetRefAlign(), "") << "a new alignment, not the old one filled up";
  EXPECT_EQ(alignments[0].GetMemo1(), "");
}

TEST(AlignmentArchive, TakesACountBelowOneForNoAlignments) {
  using test_support::operator+;
  for (const std::int32_t count : {0, -1, std::numeric_limits<std::int32_t>::min()}) {
    VornAlignmentsArray alignments = FullAlignments();
    ReadWith(alignments, I32(8).bytes + I32(count).bytes, "05.00", kFormControl);
    EXPECT_TRUE(alignments.IsEmpty());
    EXPECT_EQ(alignments.GetCurrent(), 8);
  }
}

// --- road geometry ---------------------------------------------------------------------------------------------------

class RoadArchive : public InStoreVersion {};
IN_EVERY_ROAD_VERSION(RoadArchive);

TEST_P(RoadArchive, WritesItsFields) {
  for (const VORN_DataKind kind : kKinds) {
    EXPECT_TRUE(HasBytes(StoredWith(FullRoad(), GetParam(), kind), RoadBytes(Written(), kind)));
  }
}

TEST_P(RoadArchive, ReadsItsFields) {
  for (const VORN_DataKind kind : kKinds) {
    VornRoadGmData road;
    ReadWith(road, RoadBytes(Read(), kind).All(), GetParam(), kind);
    ExpectRoad(road, Read(), kind);
  }
}

TEST_P(RoadArchive, ComesBackFromItsOwnBytes) {
  if (!Read().IsFrom("05.00")) return;  // older cross sections are only read, not written
  for (const VORN_DataKind kind : {kFormControl, kRoadGeometry}) {
    VornRoadGmData road = FullRoad();
    VornRoadGmData loaded;
    const Bytes bytes = StoredWith(road, GetParam(), kind);
    ReadWith(loaded, bytes, GetParam(), kind);
    EXPECT_EQ(StoredWith(loaded, GetParam(), kind), bytes);
  }
}

TEST(RoadArchive, GoesThroughTheOldRecordJustBefore0300) {
  VornRoadGmData road;
  ReadWith(road, RoadBytes({"02.99"}, kFormControl).All(), "02.99", kFormControl);
  EXPECT_EQ(static_cast<int>(road.GetSchemaVersion()), 0);
  EXPECT_EQ(road.GetRoadInfo().GetName(), "road");
}

TEST(RoadArchive, ComparesTheStoreVersionAsANumber) {
  // Without alignments, whose parts compare store versions as texts.
  VornRoadGmData road = FullRoad();
  road.SetAlignments(VornAlignmentsArray());
  for (const char* tag : {"3", "3.0", "+3.0", " 03.00", "10.00"}) {
    EXPECT_EQ(StoredWith(road, tag, kFormControl), StoredWith(road, "03.00", kFormControl)) << tag;
  }
  for (const char* tag : {"2.999", "", "x", "-3"}) {
    EXPECT_TRUE(HasBytes(StoredWith(road, tag, kFormControl), {{"current", I32(-1)}, {"count", I32(0)}})) << tag;
  }
}

TEST(RoadArchive, ForgetsWhatLaterVersionsPutIntoItsTables) {
  VornRoadGmData road;
  ExpectedBytes bytes = {
      {"table", TableOf(1, 2)}, {"name", Text("n")},         {"class", I32(1)},
      {"speed", I32(2)},        {"traffic", I32(3)},         {"option", I32(4)},
      {"schema", I32(1)},       {"option 2", I32(5)},        {"text", Text("t")},
      {"current", I32(-1)},     {"count", I32(0)},           {"type", TableOf(3, 4)},
      {"files", U32(0)},        {"structure", Text("work")}, {"job", Text("")},
      {"company", Text("")},    {"station", Text("")},       {"structure table", TableOf(5, 6)},
  };
  ReadWith(road, bytes.All(), "05.00", kFormControl);
  EXPECT_EQ(road.GetText(), "t");
  EXPECT_EQ(road.GetStructureType().GetTypeStr(), "work");
}

// --- the record before 03.00 -----------------------------------------------------------------------------------------

/// The old record read with a store version of any number.
ExpectedBytes OldBytes(const Layout& at, VORN_DataKind kind) {
  const bool isFrom3 = at.IsFrom("03.00");
  return {
      {"name", Text("road"), at.IsRead()},
      {"class", I32(31), at.IsRead()},
      {"speed", I32(32), at.IsRead()},
      {"traffic", I32(-33), at.IsRead()},
      {"option", I32(34), at.IsRead() && isFrom3},
      {"alignments", AlignmentsBytes(at, kind)},
      {"table", EmptyTable(), isFrom3},
  };
}

TEST_P(RoadArchive, WritesTheOldRecordWithoutTheRoadsInformation) {
  for (const VORN_DataKind kind : kKinds) {
    EXPECT_TRUE(HasBytes(StoredWith(OldRecord(FullRoad()), GetParam(), kind), OldBytes(Written(), kind)));
  }
}

TEST_P(RoadArchive, StaysAsItIsWhenItIsStored) {
  for (const VORN_DataKind kind : kKinds) {
    OldRecord old(FullRoad());
    static_cast<void>(StoredWith(old, GetParam(), kind));
    VornRoadGmData road = FullRoad();
    static_cast<void>(StoredWith(road, GetParam(), kind));
    for (const VornRoadGmData& stored : {static_cast<const VornRoadGmData&>(old), std::as_const(road)}) {
      EXPECT_EQ(static_cast<int>(stored.GetSchemaVersion()), 35);
      EXPECT_EQ(StoredWhole(stored, "", kind), StoredWhole(FullRoad(), "", kind));
    }
  }
}

TEST_P(RoadArchive, ReadsTheOldRecordWithTheRoadsInformation) {
  for (const VORN_DataKind kind : kKinds) {
    OldRecord road;
    road.SetText("kept");
    road.SetOption2(7);
    ReadWith(road, OldBytes(Read(), kind).All(), GetParam(), kind);
    EXPECT_EQ(road.GetRoadInfo().GetName(), "road");
    EXPECT_EQ(static_cast<int>(road.GetRoadInfo().GetClassificat()), 31);
    EXPECT_EQ(static_cast<int>(road.GetRoadInfo().GetSpeed()), 32);
    EXPECT_EQ(road.GetRoadInfo().GetTraffic(), -33);
    EXPECT_EQ(road.GetOption(), Read().IsFrom("03.00") ? 34 : 0);
    EXPECT_EQ(static_cast<int>(road.GetSchemaVersion()), 0);
    EXPECT_EQ(road.GetText(), "kept");
    EXPECT_EQ(road.GetOption2(), 7);
    ExpectAlignments(road.GetAlignments(), Read(), kind);
  }
}

}  // namespace
}  // namespace road_test
