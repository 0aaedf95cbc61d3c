#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "tests/road/full_road_records.h"

namespace road_test {

namespace {

VornLandXMLAlignment FullEntry(int n, std::int32_t flag) {
  VornLandXMLAlignment alignment;
  alignment.SetName(Numbered("entry", n));
  alignment.SetText(Numbered("text", n));
  alignment.SetFlag(flag);
  alignment.SetCode1(static_cast<std::uint16_t>(10 + n));
  alignment.SetCode2(static_cast<std::uint16_t>(20 + n));
  alignment.SetCode3(static_cast<std::uint16_t>(60000 + n));
  return alignment;
}

ExpectedBytes EntryBytes(int n, std::int32_t flag) {
  return {
      {"name", Text(Numbered("entry", n).View())},
      {"text", Text(Numbered("text", n).View())},
      {"flag", I32(flag)},
      {"code 1", U16(static_cast<std::uint16_t>(10 + n))},
      {"code 2", U16(static_cast<std::uint16_t>(20 + n))},
      {"code 3", U16(static_cast<std::uint16_t>(60000 + n))},
  };
}

void ExpectEntry(const VornLandXMLAlignment& entry, int n, std::int32_t flag) {
  EXPECT_EQ(entry.GetName(), Numbered("entry", n));
  EXPECT_EQ(entry.GetText(), Numbered("text", n));
  EXPECT_EQ(entry.GetFlag(), flag);
  EXPECT_EQ(entry.GetCode1(), 10 + n);
  EXPECT_EQ(entry.GetCode2(), 20 + n);
  EXPECT_EQ(entry.GetCode3(), 60000 + n);
}

/// What follows the options.
ExpectedBytes PartsBytes(std::int32_t flag0, std::int32_t flag1) {
  return {
      {"project name", Text("name")}, {"project desc", Text("desc")}, {"point count", I32(2)},
      {"points[0]", U16(65535)},      {"points[1]", U16(7)},          {"point option 1", I32(-41)},
      {"point option 2", I32(42)},    {"alignment count", I32(2)},    {"[0]", EntryBytes(0, flag0)},
      {"[1]", EntryBytes(1, flag1)},
  };
}

std::vector<std::string> Texts(const VornLandXMLData& data) {
  std::vector<std::string> texts;
  for (const CString& text : data.GetTexts()) texts.emplace_back(text.GetString());
  return texts;
}

}  // namespace

VornLandXMLData FullLandXml() {
  VornLandXMLData data;
  data.GetProject().SetName("name");
  data.GetProject().SetDesc("desc");
  data.GetCgPoints().SetSize(2);
  data.GetCgPoints()[0].SetNumber(65535);
  data.GetCgPoints()[1].SetNumber(7);
  data.GetCgPoints().SetOption1(-41);
  data.GetCgPoints().SetOption2(42);
  data.GetAlignments().Add(FullEntry(0, 0));
  data.GetAlignments().Add(FullEntry(1, -3));
  data.SetFlagAny(51);
  data.SetOption1(-52);
  data.SetOption2(53);
  data.SetOption3(-54);
  data.SetValue(0.125);
  data.GetTexts().AddTail("one");
  data.GetTexts().AddTail("two");
  return data;
}

ExpectedBytes LandXmlBytes(std::string_view version) {
  const bool isNew = version >= "01.11";
  return {
      {"version", Text(version)},       {"flag any", I32(51), isNew},     {"option 1", I32(-52), isNew},
      {"option 3", I32(-54), isNew},    {"value", Real(0.125), isNew},    {"short text count", U16(2), isNew},
      {"texts[0]", Text("one"), isNew}, {"texts[1]", Text("two"), isNew}, {"parts", PartsBytes(0, -3)},
  };
}

void ExpectLandXml(const VornLandXMLData& data, std::string_view version) {
  const bool isNew = version >= "01.11";
  EXPECT_EQ(data.GetStoreVersion(), version);
  EXPECT_EQ(data.GetProject().GetName(), "name");
  EXPECT_EQ(data.GetProject().GetDesc(), "desc");
  ASSERT_EQ(data.GetCgPoints().GetSize(), 2);
  EXPECT_EQ(data.GetCgPoints()[0].GetNumber(), 65535);
  EXPECT_EQ(data.GetCgPoints()[1].GetNumber(), 7);
  EXPECT_EQ(data.GetCgPoints().GetOption1(), -41);
  EXPECT_EQ(data.GetCgPoints().GetOption2(), 42);
  ASSERT_EQ(data.GetAlignments().GetSize(), 2);
  ExpectEntry(data.GetAlignments()[0], 0, 0);
  ExpectEntry(data.GetAlignments()[1], 1, -3);
  EXPECT_EQ(data.GetFlagAny(), isNew ? 51 : 1);
  EXPECT_EQ(data.GetOption1(), isNew ? -52 : 1);
  EXPECT_EQ(data.GetOption2(), 0);
  EXPECT_EQ(data.GetOption3(), isNew ? -54 : 0);
  EXPECT_EQ(data.GetValue(), isNew ? 0.125 : 5.0);
  EXPECT_EQ(Texts(data), isNew ? (std::vector<std::string>{"one", "two"}) : std::vector<std::string>());
}

namespace {

// --- the parts -------------------------------------------------------------------------------------------------------

/// With each store version of the project, which none of the records looks at.
class LandXmlArchive : public InStoreVersion {};
IN_EVERY_ROAD_VERSION(LandXmlArchive);

TEST_P(LandXmlArchive, WritesAndReadsItsPartsAlikeInEveryVersion) {
  for (const char* version : kRoadVersions) {
    VornLandXMLData data = FullLandXml();
    using test_support::operator+;
    EXPECT_TRUE(HasBytes(StoredWith(data.GetProject(), GetParam(), version) +
                             StoredWith(data.GetCgPoints(), GetParam(), version) +
                             StoredWith(data.GetAlignments(), GetParam(), version),
                         PartsBytes(0, -3)));
    VornLandXMLAlignment entry;
    ReadWith(entry, EntryBytes(5, 6).All(), GetParam(), version);
    ExpectEntry(entry, 5, 6);
    VornLandXMLCgPoint point;
    ReadWith(point, U16(50000).bytes, GetParam(), version);
    EXPECT_EQ(point.GetNumber(), 50000);
  }
}

TEST_P(LandXmlArchive, AlwaysWritesTheNewestVersion) {
  VornLandXMLData data = FullLandXml();
  EXPECT_TRUE(HasBytes(StoredWith(data, GetParam()), LandXmlBytes("01.11")));
  EXPECT_EQ(data.GetStoreVersion(), "01.11");
}

TEST_P(LandXmlArchive, ReadsTheNewestVersion) {
  VornLandXMLData data;
  ReadWith(data, LandXmlBytes("01.11").All(), GetParam());
  ExpectLandXml(data, "01.11");
}

TEST_P(LandXmlArchive, ReadsOlderVersionsWithoutOptions) {
  for (const char* version : {"", "00.99", "01.00", "01.09", "01.10"}) {
    VornLandXMLData data;
    ReadWith(data, LandXmlBytes(version).All(), GetParam());
    ExpectLandXml(data, version);
  }
}

TEST_P(LandXmlArchive, RefusesNewerVersionsBeforeAnythingElseIsRead) {
  for (const char* version : {"01.12", "01.110", "02.00", "x"}) {
    VornLandXMLData data = FullLandXml();
    EXPECT_TRUE(IsRefusedAsNewer(data, Text(version).bytes, GetParam())) << version;
    EXPECT_EQ(data.GetStoreVersion(), version);
    EXPECT_EQ(data.GetProject().GetName(), "name");
    EXPECT_EQ(data.GetFlagAny(), 51);
  }
}

TEST(LandXmlArchive, WritesTheNewestVersionAfterAnOlderOneWasRead) {
  VornLandXMLData data;
  ReadWith(data, LandXmlBytes("01.10").All(), "05.00");
  EXPECT_EQ(data.GetStoreVersion(), "01.10");
  const Bytes bytes = StoredWith(data, "05.00");
  EXPECT_EQ(data.GetStoreVersion(), "01.11");
  EXPECT_EQ(Bytes(bytes.begin(), bytes.begin() + 6), Text("01.11").bytes);
}

// --- the flag of version 01.10 ---------------------------------------------------------------------------------------

int FlagAnyAfterReading(std::string_view version, std::int32_t flag0, std::int32_t flag1, std::int32_t before) {
  using test_support::operator+;
  VornLandXMLData data;
  data.SetFlagAny(before);
  ReadWith(data, Text(version).bytes + PartsBytes(flag0, flag1).All(), "05.00");
  return data.GetFlagAny();
}

TEST(LandXmlArchive, FindsOutInVersion0110WhetherAnyAlignmentIsFlagged) {
  EXPECT_EQ(FlagAnyAfterReading("01.10", 0, 0, 1), 0);
  EXPECT_EQ(FlagAnyAfterReading("01.10", 1, 0, 0), 1);
  EXPECT_EQ(FlagAnyAfterReading("01.10", 0, -1, 0), 1);
  EXPECT_EQ(FlagAnyAfterReading("01.10", 7, 8, 5), 1);
}

TEST(LandXmlArchive, HasNoFlagInVersion0110WithoutAlignments) {
  const ExpectedBytes bytes = {{"version", Text("01.10")}, {"name", Text("")},   {"desc", Text("")},
                               {"points", I32(0)},         {"option 1", I32(1)}, {"option 2", I32(0)},
                               {"alignments", I32(0)}};
  VornLandXMLData data;
  ReadWith(data, bytes.All(), "05.00");
  EXPECT_EQ(data.GetFlagAny(), 0);
}

TEST(LandXmlArchive, KeepsTheFlagInStillOlderVersions) {
  EXPECT_EQ(FlagAnyAfterReading("01.09", 0, 0, 1), 1);
  EXPECT_EQ(FlagAnyAfterReading("01.09", 4, 4, 0), 0);
}

// --- what is there already -------------------------------------------------------------------------------------------

TEST(LandXmlArchive, ReplacesWhatWasThere) {
  VornLandXMLData data = FullLandXml();
  ReadWith(data, LandXmlBytes("01.11").All(), "05.00");
  EXPECT_EQ(Texts(data), (std::vector<std::string>{"one", "two"}));
  EXPECT_EQ(data.GetCgPoints().GetSize(), 2);
  EXPECT_EQ(data.GetAlignments().GetSize(), 2);
}

TEST(LandXmlArchive, LeavesTheSecondOptionAsItWas) {
  VornLandXMLData data;
  data.SetOption2(99);
  ReadWith(data, LandXmlBytes("01.11").All(), "05.00");
  EXPECT_EQ(data.GetOption2(), 99);
}

TEST(LandXmlArchive, KeepsOptionsAndTextsThatAnOldVersionDoesNotHave) {
  VornLandXMLData data = FullLandXml();
  ReadWith(data, LandXmlBytes("01.10").All(), "05.00");
  EXPECT_EQ(data.GetOption1(), -52);
  EXPECT_EQ(data.GetOption3(), -54);
  EXPECT_EQ(data.GetValue(), 0.125);
  EXPECT_EQ(Texts(data).size(), 2u);
}

TEST(LandXmlArchive, TakesACountBelowOneForNoElements) {
  using test_support::operator+;
  for (const std::int32_t count : {0, -1, std::numeric_limits<std::int32_t>::min()}) {
    VornLandXMLData data = FullLandXml();
    ReadWith(data.GetCgPoints(), I32(count).bytes + I32(3).bytes + I32(4).bytes, "05.00", "01.11");
    EXPECT_TRUE(data.GetCgPoints().IsEmpty());
    EXPECT_EQ(data.GetCgPoints().GetOption2(), 4);
    ReadWith(data.GetAlignments(), I32(count).bytes, "05.00", "01.11");
    EXPECT_TRUE(data.GetAlignments().IsEmpty());
  }
}

}  // namespace
}  // namespace road_test
