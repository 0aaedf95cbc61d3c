#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "tests/archive/full_records.h"
#include "tests/road/full_road_records.h"
#include "vorn/platform/code_page_932.h"
#include "vorn/types/bld_name_map.h"

// Archives that were written once and stay as they are (tests/data/archives/README.md): what a project file holds must
// never read otherwise.

namespace archive_test {
namespace {

using testing::ElementsAre;

constexpr std::string_view kFillWork = u8"盛土工"_cp932;
constexpr std::string_view kCutWork = u8"切土工"_cp932;
constexpr std::string_view kRoadbed = u8"路体盛土"_cp932;

Bytes GoldenBytes(const std::string& content, std::string_view version) {
  const std::string path = std::string(VORN_TEST_DATA) + "/archives/" + content + "-" + std::string(version) + ".bin";
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file.is_open()) << path;
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::vector<std::string> NamesOf(VornBldNameMap& registry, std::string_view key) {
  std::vector<std::string> names;
  if (registry.Get(CString(key)) == nullptr) return names;
  for (const VornBuildItem& item : *registry.Get(CString(key))) names.emplace_back(item.GetName().View());
  return names;
}

void ExpectRegistry(VornBldNameMap& registry) {
  EXPECT_EQ(registry.GetCount(), 2);
  EXPECT_THAT(NamesOf(registry, kFillWork), ElementsAre(std::string(kRoadbed), "B"));
  EXPECT_THAT(NamesOf(registry, kCutWork), ElementsAre("C"));
  ASSERT_NE(registry.Get(CString(kFillWork)), nullptr);
  EXPECT_EQ(registry.Get(CString(kFillWork))->begin()->GetColor(), 0x00123456u);
}

/// How the sets of the files lie: those of the newest versions as they are written, the others as older programs left
/// them, with automatic lines.
Layout LayoutOf(std::string_view version) { return {version, version >= "06.00" ? Way::Written : Way::Read}; }

class GoldenArchive : public InStoreVersion {};
INSTANTIATE_TEST_SUITE_P(Archive, GoldenArchive,
                         testing::Values("01.10", "01.11", "02.50", "03.00", "04.00", "05.00", "05.50", "06.00",
                                         "06.50"),
                         InStoreVersion::Name);

TEST_P(GoldenArchive, IsReadAsItAlwaysWas) {
  const CString tag = Tag();
  test_support::LoadingArchive ar(GoldenBytes("store", GetParam()));
  VornXSections set;
  set.Serialize(*ar, tag);
  VornBldNameMap registry;
  registry.Serialize(*ar);
  EXPECT_EQ(ar->Remaining(), 0u);
  ExpectSet(set, LayoutOf(GetParam()));
  ExpectRegistry(registry);
}

TEST(GoldenArchives, OfTheNewestVersionsAreWrittenAgainByteForByte) {
  for (const char* version : {"06.00", "06.50"}) {
    const CString tag(version);
    const Bytes golden = GoldenBytes("store", version);
    test_support::LoadingArchive in(golden);
    VornXSections set;
    VornBldNameMap registry;
    set.Serialize(*in, tag);
    registry.Serialize(*in);
    const auto store = [&](CArchive& out) {
      set.Serialize(out, tag);
      registry.Serialize(out);
    };
    EXPECT_EQ(test_support::Stored(store), golden) << version;
  }
}

// --- all road data ---------------------------------------------------------------------------------------------------

/// The version of the LandXML data in the files.
std::string_view LandXmlVersionOf(std::string_view version) { return version <= "02.50" ? "01.10" : "01.11"; }

/// Road data of a library that writes that version.
VornLinearXMLData RoadDataOf(const char* libVersion) {
  VornLinearXMLData data;
  data.GetInfoConstrcut().SetStoreVersion(libVersion);
  data.GetRoadCenter().SetStoreVersion(libVersion);
  return data;
}

class GoldenRoadArchive : public InStoreVersion {};
INSTANTIATE_TEST_SUITE_P(Archive, GoldenRoadArchive,
                         testing::Values("01.10", "02.50", "03.00", "04.00", "05.00", "05.50", "06.00", "06.50"),
                         InStoreVersion::Name);

TEST_P(GoldenRoadArchive, IsReadAsItAlwaysWas) {
  VornLinearXMLData data = RoadDataOf("06.50");
  road_test::ReadWith(data, GoldenBytes("road", GetParam()), "");
  const Layout layout = LayoutOf(GetParam());
  road_test::ExpectData(data, layout, layout, LandXmlVersionOf(GetParam()));
}

TEST_P(GoldenRoadArchive, IsRefusedByALibraryThatIsOlder) {
  VornLinearXMLData data = RoadDataOf("01.09");
  EXPECT_TRUE(road_test::IsRefusedAsNewer(data, GoldenBytes("road", GetParam()), ""));
  EXPECT_TRUE(data.GetInfoConstrcut().GetCrsArray().IsEmpty());
}

TEST(GoldenRoadArchives, OfTheNewestVersionsAreWrittenAgainByteForByte) {
  for (const char* version : {"06.00", "06.50"}) {
    const Bytes golden = GoldenBytes("road", version);
    VornLinearXMLData data = RoadDataOf(version);
    road_test::ReadWith(data, golden, "");
    EXPECT_EQ(road_test::StoredWith(data, ""), golden) << version;
  }
}

}  // namespace
}  // namespace archive_test
