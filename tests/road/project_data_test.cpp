#include "vorn/road/project_data.h"

#include <gtest/gtest.h>

#include <array>
#include <string_view>
#include <type_traits>

#include "tests/road/full_road_records.h"
#include "vorn/platform/code_page_932.h"

namespace road_test {

VornProjectData FullProject() {
  VornProjectData project;
  project.SetName("project");
  project.SetDate(COleDateTime(1900, 1, 1, 6, 0, 0));
  project.SetProjPhase(static_cast<VornProjectData::ProjPhase>(77));
  project.SetText("text");
  project.GetCreators().SetSize(2);
  project.GetCreators()[0].SetName("creator 0");
  project.GetCreators()[0].SetText("text 0");
  project.GetCreators()[1].SetName("creator 1");
  project.GetCreators()[1].SetText("text 1");
  return project;
}

ExpectedBytes ProjectBytes() {
  return {
      {"name", Text("project")},
      {"date status", I32(0)},
      {"date", Real(2.25)},
      {"phase", I32(77)},
      {"text", Text("text")},
      {"creator count", I32(2)},
      {"creators[0].name", Text("creator 0")},
      {"creators[0].text", Text("text 0")},
      {"creators[1].name", Text("creator 1")},
      {"creators[1].text", Text("text 1")},
  };
}

void ExpectProject(const VornProjectData& project) {
  EXPECT_EQ(project.GetName(), "project");
  EXPECT_EQ(project.GetDate(), COleDateTime(1900, 1, 1, 6, 0, 0));
  EXPECT_EQ(static_cast<int>(project.GetProjPhase()), 77);
  EXPECT_EQ(project.GetText(), "text");
  ASSERT_EQ(project.GetCreators().GetSize(), 2);
  EXPECT_EQ(project.GetCreators()[0].GetName(), "creator 0");
  EXPECT_EQ(project.GetCreators()[0].GetText(), "text 0");
  EXPECT_EQ(project.GetCreators()[1].GetName(), "creator 1");
  EXPECT_EQ(project.GetCreators()[1].GetText(), "text 1");
}

namespace {

using ProjPhase = VornProjectData::ProjPhase;

static_assert(std::has_virtual_destructor_v<VornProjectData> && std::has_virtual_destructor_v<VornCreatorInfoData>);
static_assert(std::is_nothrow_move_constructible_v<VornProjectData>);

TEST(ProjectData, StartsInConstructionWithAnInvalidDate) {
  const VornProjectData project;
  EXPECT_EQ(project.GetName(), "");
  EXPECT_EQ(project.GetDate().m_dt, 0.0);
  EXPECT_EQ(static_cast<int>(project.GetDate().GetStatus()), 1);
  EXPECT_EQ(static_cast<int>(project.GetProjPhase()), 3);
  EXPECT_EQ(project.GetText(), "");
  EXPECT_TRUE(project.GetCreators().IsEmpty());
}

TEST(ProjectData, CopiesAllItsMembers) {
  VornProjectData copy;
  copy = FullProject();
  ExpectProject(copy);
  copy.SetCreators(VornCreatorInfoArray());
  EXPECT_TRUE(copy.GetCreators().IsEmpty());
}

TEST(ProjectData, GivesEachPhaseItsText) {
  constexpr std::array kTexts = {u8"概略"_cp932, u8"予備"_cp932, u8"詳細"_cp932, u8"施工"_cp932};
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(VornProjectData::GetProjPhaseStr(static_cast<ProjPhase>(i)), kTexts[static_cast<std::size_t>(i)]) << i;
  }
}

TEST(ProjectData, GivesAnUnknownPhaseNoText) {
  for (const int value : {-1, 4, 1000}) {
    EXPECT_EQ(VornProjectData::GetProjPhaseStr(static_cast<ProjPhase>(value)), "") << value;
  }
}

class ProjectArchive : public InStoreVersion {};
IN_EVERY_ROAD_VERSION(ProjectArchive);

TEST_P(ProjectArchive, WritesItsFields) {
  EXPECT_TRUE(HasBytes(StoredWith(FullProject(), GetParam()), ProjectBytes()));
}

TEST_P(ProjectArchive, ReadsItsFields) {
  VornProjectData project;
  project.GetCreators().SetSize(5);
  ReadWith(project, ProjectBytes().All(), GetParam());
  ExpectProject(project);
}

TEST(ProjectArchive, ReadsCreatorsWithoutAnyText) {
  using test_support::operator+;
  VornCreatorInfoArray creators;
  ReadWith(creators, I32(3).bytes + Bytes(6, 0), "05.00");
  EXPECT_EQ(creators.GetSize(), 3);
}

TEST(ProjectArchive, EndsTooEarlyWhereverItIsTruncated) {
  EXPECT_EQ(test_support::TruncationOverlooked(ProjectBytes().All(),
                                               [](CArchive& ar) { VornProjectData().Serialize(ar, "05.00"); }),
            -1);
}

}  // namespace
}  // namespace road_test
