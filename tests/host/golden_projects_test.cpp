#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/document/atomic_file.h"
#include "host/project/project.h"
#include "tests/support/archive_bytes.h"

// Projects that were made once and stay as they are (tests/data/projects/README.md): what people have saved must never
// read otherwise.

namespace vorn_host {
namespace {

using test_support::Bytes;
using test_support::BytesOf;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::size_t kHeadSize = 45;

std::string GoldenFile(const std::string& folder, const std::string& file) {
  return ReadFile(std::string(VORN_TEST_DATA) + "/" + folder + "/" + file);
}
std::string GoldenProject(const std::string& version) { return GoldenFile("projects", "road-" + version + ".vorn"); }
std::string GoldenRecord(const std::string& version) { return GoldenFile("archives", "road-" + version + ".bin"); }

Project ReadGolden(const std::string& version) { return Project::FromBytes(GoldenProject(version), version); }

/// All members of road data that the newest record has, to compare two.
Bytes Stored(VornLinearXMLData data) {
  data.GetInfoConstrcut().SetStoreVersion("06.00");
  data.GetRoadCenter().SetStoreVersion("06.00");
  return test_support::Stored([&](CArchive& ar) { data.Serialize(ar, CString("06.00")); });
}

/// What the record holds, read without a project around it.
VornLinearXMLData DataOfRecord(const std::string& version) {
  VornLinearXMLData data;
  data.GetInfoConstrcut().SetStoreVersion("06.00");
  data.GetRoadCenter().SetStoreVersion("06.00");
  test_support::LoadingArchive ar(BytesOf(GoldenRecord(version)));
  data.Serialize(*ar, CString(std::string_view(version)));
  return data;
}

std::vector<std::string> RefAlignsOf(const DesignDocument& design) {
  std::vector<std::string> names;
  for (const VornXSections& set : design.sets) names.emplace_back(set.GetRefAlign().View());
  return names;
}

class GoldenProjects : public testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(Project, GoldenProjects,
                         testing::Values("01.10", "02.50", "03.00", "04.00", "05.00", "05.50", "06.00"),
                         [](const auto& info) {
                           const std::string_view version = info.param;
                           return "V" + std::string(version.substr(0, 2)) + std::string(version.substr(3));
                         });

TEST_P(GoldenProjects, HoldTheRoadDataOfTheirRecord) {
  const Project project = ReadGolden(GetParam());
  EXPECT_EQ(project.GetStoreVersion(), GetParam());
  EXPECT_TRUE(Stored(project.data) == Stored(DataOfRecord(GetParam())));
}

TEST_P(GoldenProjects, HoldWhatTheRoadIsCalledAndMeasuredBy) {
  const Project project = ReadGolden(GetParam());
  const VornInfoConstrcut& info = project.data.GetInfoConstrcut();
  const VornRoadCenterData& center = project.data.GetRoadCenter();
  EXPECT_EQ(info.GetRoadGm().GetRoadInfo().GetName(), "road");
  ASSERT_EQ(info.GetCrsArray().GetSize(), 2);
  EXPECT_EQ(info.GetCrsArray()[1].GetName(), "crs2");
  ASSERT_EQ(info.GetCtrlPoints().GetCtrlPos().GetSize(), 2);
  EXPECT_EQ(info.GetCtrlPoints().GetCtrlPos()[0].GetName(), "point2");
  EXPECT_EQ(info.GetCtrlPoints().GetBenchMarks().GetSize(), 1);
  EXPECT_EQ(info.GetFormCtrl().GetValue(), 0.75);
  EXPECT_EQ(center.GetProject().GetName(), "project");
  EXPECT_EQ(center.GetGmPnts().GetSize(), 2);
  for (const VornRoadGmData* road : {&info.GetRoadGm(), &center.GetRoadGm()}) {
    ASSERT_EQ(road->GetAlignments().GetSize(), 2);
    EXPECT_EQ(road->GetAlignments()[0].GetName(), "alignment1");
    EXPECT_EQ(road->GetAlignments()[1].GetName(), "alignment2");
  }
}

TEST_P(GoldenProjects, HandOutTheirDesign) {
  const DesignDocument design = ReadGolden(GetParam()).GiveDesign();
  ASSERT_FALSE(design.sets.IsEmpty());
  for (const VornXSections& set : design.sets) {
    const Vorn_XSectionArray& sections = set.GetXSectionArray();
    ASSERT_EQ(sections.GetSize(), 2);
    EXPECT_EQ(sections[0].GetCumulativeDist(), 3.91);
    EXPECT_EQ(sections[1].GetCumulativeDist(), 6.91);
    EXPECT_EQ(sections[0].GetName(), "section 3");
    ASSERT_EQ(sections[1].GetBuildFormArray().GetSize(), 2);
    EXPECT_EQ(sections[1].GetBuildFormArray()[0].GetName(), "form 6");
    ASSERT_EQ(sections[1].GetBuildFormArray()[0].GetComposedPntArray().GetSize(), 2);
    // Up to 03.00 the existing ground is a run of presentation points.
    const int grounds = std::string_view(GetParam()) > "03.00" ? 2 : 1;
    EXPECT_EQ(sections[0].GetExistingBuildFormArray().GetSize(), grounds);
    EXPECT_NE(sections[0].GetExistingFlag(), 0);
  }
}

TEST(GoldenProjectsWithoutDocument, HaveOneSetForEachAlignment) {
  for (const char* version : {"01.10", "02.50", "03.00", "04.00", "05.50"}) {
    SCOPED_TRACE(version);
    const DesignDocument design = ReadGolden(version).GiveDesign();
    EXPECT_THAT(RefAlignsOf(design), ElementsAre("alignment A", "alignment A"));
    // Before 03.00 no record tells the edition: these designs are of the first one.
    EXPECT_EQ(design.edition, std::string_view(version) < "03.00" ? Edition::V20 : Edition::V41);
    EXPECT_TRUE(design.carried.IsEmpty());
  }
}

TEST(GoldenProjectOfADocument, BringsItBackInItsEdition) {
  DesignDocument design = ReadGolden("05.00").GiveDesign();
  EXPECT_EQ(design.edition, Edition::V40);
  EXPECT_EQ(design.encodingName, "Shift_JIS");
  EXPECT_TRUE(design.hasStructureType);
  EXPECT_EQ(design.sets.GetSize(), 2);
  EXPECT_THAT(design.carried.SectionOrder(1), ElementsAre(1, 0));
  DesignDocument::WriteReport report;
  const std::string text = design.ToBytes("out.xml", {}, report);
  EXPECT_THAT(report.unplaced, IsEmpty());
  EXPECT_THAT(text, AllOf(HasSubstr("<!DOCTYPE tsf:TSFormControlData>"), HasSubstr("note=\"道路 as agreed\"")));
  // The comment is the last thing in its cross section: the first of the model, the second of the document.
  const std::size_t comment = text.find("<!-- checked -->");
  ASSERT_NE(comment, std::string::npos);
  EXPECT_LT(text.rfind("name=\"section 6\"", comment), text.rfind("name=\"section 3\"", comment));
}

TEST(GoldenProjectOfADocument, BringsItBackFromTheRoadCentre) {
  Project project = ReadGolden("06.00");
  DesignDocument design = project.GiveDesign();
  EXPECT_EQ(design.edition, Edition::Maff10);
  EXPECT_FALSE(design.hasStructureType);
  EXPECT_EQ(design.sets.GetSize(), 2);
  const auto sectionsLeft = [](const VornRoadGmData& road) {
    return road.GetAlignments()[1].GetXSections().GetXSectionArray().GetSize();
  };
  EXPECT_EQ(sectionsLeft(project.data.GetRoadCenter().GetRoadGm()), 0) << "they are handed out";
  EXPECT_EQ(sectionsLeft(project.data.GetInfoConstrcut().GetRoadGm()), 2);
  DesignDocument::WriteReport report;
  const std::string text = design.ToBytes("out.xml", {}, report);
  EXPECT_THAT(report.unplaced, IsEmpty());
  EXPECT_THAT(text, AllOf(HasSubstr("<site:Remark by=\"a &amp; b\"> two  blanks </site:Remark>"),
                          HasSubstr("xmlns:site=\"http://example.com/site\""), HasSubstr("<!--end-->")));
}

// --- the head --------------------------------------------------------------------------------------------------------

std::string LittleEndian(std::uint64_t value, int bytes) {
  std::string text;
  for (int i = 0; i < bytes; ++i) text += static_cast<char>(value >> (8 * i) & 0xFF);
  return text;
}

/// CRC-32 bit by bit, from its definition.
std::uint64_t Crc32(std::string_view bytes) {
  std::uint32_t crc = 0xFFFFFFFF;
  for (const char byte : bytes) {
    crc ^= static_cast<std::uint8_t>(byte);
    for (int bit = 0; bit < 8; ++bit) crc = (crc >> 1) ^ ((crc & 1) != 0 ? 0xEDB88320 : 0);
  }
  return crc ^ 0xFFFFFFFF;
}

struct HeadField {
  const char* name;
  std::size_t offset;
  std::string bytes;
};

/// Every field of the head of a file of which only the record's length is known otherwise.
void ExpectHead(const std::string& file, std::size_t recordSize) {
  ASSERT_GE(file.size(), kHeadSize + recordSize);
  const std::string record = file.substr(kHeadSize, recordSize);
  const std::string document = file.substr(kHeadSize + recordSize);
  const std::array<HeadField, 9> fields = {{
      {"mark", 0, "\x89VORN\r\n\x1A"},
      {"layout", 8, LittleEndian(1, 4)},
      {"store version", 12, "06.00"},
      {"length of the record", 17, LittleEndian(record.size(), 8)},
      {"checksum of the record", 25, LittleEndian(Crc32(record), 4)},
      {"length of the document part", 29, LittleEndian(document.size(), 8)},
      {"checksum of the document part", 37, LittleEndian(Crc32(document), 4)},
      {"checksum of the head", 41, LittleEndian(Crc32(std::string_view(file).substr(0, 41)), 4)},
      {"record", 45,
       "\x05"
       "06.00"},
  }};
  for (const HeadField& field : fields) {
    EXPECT_EQ(file.substr(field.offset, field.bytes.size()), field.bytes) << field.name;
  }
}

TEST(ProjectHead, IsTheSameInTheGoldenFileAndInWhatIsWritten) {
  const std::size_t recordSize = GoldenRecord("06.00").size();
  ExpectHead(GoldenProject("06.00"), recordSize);

  Project project = ReadGolden("06.00");
  std::vector<Project::Loss> losses;
  const Bytes written = project.ToBytes("out.vorn", "06.00", losses);
  ExpectHead({written.begin(), written.end()}, recordSize);
}

}  // namespace
}  // namespace vorn_host
