// Cross sections in one CAD drawing: where their sheets lie, and that every length is true.

#include "host/drawing/dxf_sections.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <string>
#include <vector>

#include "host/document/document_error.h"
#include "tests/host/drawn_sections.h"

namespace {

using namespace host_test;  // NOLINT(google-build-using-namespace): the vocabulary of these tests
using namespace vorn_host;  // NOLINT(google-build-using-namespace)
using testing::Contains;
using testing::Each;
using testing::Not;
using testing::SizeIs;

struct DrawnSection {
  SectionView view = HandMadeView();
  SectionDrawing drawing = HandMadeDrawing();
};

SheetGrid GridOf(const std::vector<DrawnSection>& sections) {
  SheetGrid grid;
  for (const DrawnSection& section : sections) grid.Add(section.view, section.drawing);
  return grid;
}

std::string FileOf(const std::vector<DrawnSection>& sections) {
  const SheetGrid grid = GridOf(sections);
  std::string file;
  DxfSectionWriter writer([&](std::string_view piece) { file += piece; }, grid);
  for (const DrawnSection& section : sections) writer.Add(section.view, section.drawing);
  writer.Finish();
  return file;
}

std::vector<DrawnSection> Many(int count) { return std::vector<DrawnSection>(static_cast<std::size_t>(count)); }

std::vector<std::string> TextsOn(std::string_view file, std::string_view layer) {
  std::vector<std::string> texts;
  for (const DxfItem& item : ItemsOf(file, "TEXT", layer)) texts.push_back(item[1]);
  return texts;
}

bool Overlap(const DxfArea& a, const DxfArea& b) {
  return a.low.x < b.high.x && b.low.x < a.high.x && a.low.y < b.high.y && b.low.y < a.high.y;
}

bool Within(DxfPlace place, const DxfArea& area) {
  return place.x >= area.low.x && place.x <= area.high.x && place.y >= area.low.y && place.y <= area.high.y;
}

// --- the grid --------------------------------------------------------------------------------------------------------

TEST(ReferenceHeight, IsTheWholeMetreBelowTheCentreLine) {
  SectionView view;
  EXPECT_EQ(ReferenceHeight(view), 0.0);
  view.centerHeight = 62.5;
  EXPECT_EQ(ReferenceHeight(view), 62.0);
  view.centerHeight = -0.25;
  EXPECT_EQ(ReferenceHeight(view), -1.0);
  view.centerHeight = 5.0;
  EXPECT_EQ(ReferenceHeight(view), 5.0);
}

TEST(SheetGrid, KeepsSheetsApart) {
  for (const int count : {1, 2, 3, 7, 30}) {
    const SheetGrid grid = GridOf(Many(count));
    for (int a = 0; a < count; ++a) {
      for (int b = a + 1; b < count; ++b) EXPECT_FALSE(Overlap(grid.AreaOf(a), grid.AreaOf(b))) << count;
    }
  }
}

TEST(SheetGrid, HasMoreColumnsForMoreSections) {
  const auto columns = [](int count) {
    const SheetGrid grid = GridOf(Many(count));
    std::set<double> places;
    for (int i = 0; i < count; ++i) places.insert(grid.OriginOf(i).x);
    return places.size();
  };
  EXPECT_EQ(columns(1), 1u);
  EXPECT_GT(columns(100), columns(10));
  EXPECT_GT(columns(1000), columns(100));
}

TEST(SheetGrid, GoesFromLeftToRightAndFromTheTopDown) {
  const SheetGrid grid = GridOf(Many(30));
  EXPECT_EQ(grid.OriginOf(0), (DxfPlace{0.0, 0.0}));
  EXPECT_GT(grid.OriginOf(1).x, 0.0);
  EXPECT_EQ(grid.OriginOf(1).y, 0.0);
  EXPECT_LT(grid.OriginOf(29).y, 0.0);
}

TEST(SheetGrid, HasOriginsAtMultiplesOfTenMetres) {
  const SheetGrid grid = GridOf(Many(17));
  for (int i = 0; i < 17; ++i) {
    EXPECT_EQ(std::fmod(grid.OriginOf(i).x, 10.0), 0.0);
    EXPECT_EQ(std::fmod(grid.OriginOf(i).y, 10.0), 0.0);
  }
}

TEST(SheetGrid, MakesRoomForWhatLiesOutsideTheDrawingsOwnLimits) {
  std::vector<DrawnSection> sections = Many(2);
  sections[0].drawing.lines[0].places[0].offset = -300.0;
  sections[1].drawing.texts[0].place = {500.0, 62.0};
  sections[1].drawing.texts[0].anchor = DrawnText::Anchor::Start;
  const SheetGrid grid = GridOf(sections);
  EXPECT_LE(grid.AreaOf(0).low.x, -300.0);
  EXPECT_GT(grid.AreaOf(0).high.x, 500.0) << "the text itself has to fit";
}

TEST(SheetGrid, MakesRoomForTextsInTheirDirection) {
  std::vector<DrawnSection> sections = Many(1);
  DrawnText& text = sections[0].drawing.texts[0];
  text.text = std::string(100, 'x');
  text.place = {0.0, 62.0};
  text.anchor = DrawnText::Anchor::Start;
  text.angle = 90.0;
  const double upright = GridOf(sections).AreaOf(0).high.y;
  text.angle = -90.0;
  EXPECT_GT(upright, 20.0);
  EXPECT_LT(GridOf(sections).AreaOf(0).low.y, -20.0);
}

TEST(SheetGrid, TakesTheSmallestScale) {
  std::vector<DrawnSection> sections = Many(2);
  EXPECT_TRUE(GridOf(sections).HasOneScale());
  sections[1].drawing.scale = 500.0;
  EXPECT_FALSE(GridOf(sections).HasOneScale());
  EXPECT_EQ(GridOf(sections).Scale(), 500.0);
}

TEST(SheetGrid, KeepsItsScaleForASectionWithALongName) {
  SectionView named = HandMadeView();
  named.name = std::string(400, 'N');
  SheetGrid grid;
  for (const SectionView& view : {HandMadeView(), named}) grid.Add(view, Draw(view));
  EXPECT_TRUE(grid.HasOneScale());
  EXPECT_EQ(grid.Scale(), Draw(HandMadeView()).scale);
}

TEST(SheetGrid, NumbersTheSheets) {
  EXPECT_EQ(GridOf(Many(3)).NameOf(2), "S0003");
  EXPECT_EQ(GridOf(Many(12)).NameOf(11), "S0012");
}

TEST(SheetGrid, KeepsTheIndexAboveTheSheetsWithoutALineOnAnother) {
  const SheetGrid grid = GridOf(Many(40));
  std::set<std::pair<double, double>> places;
  for (int i = 0; i < 40; ++i) {
    const DxfPlace place = grid.IndexPlaceOf(i);
    EXPECT_GT(place.y, grid.AreaOf(0).high.y);
    EXPECT_TRUE(Within(place, grid.Extents()));
    EXPECT_TRUE(places.emplace(place.x, place.y).second);
  }
  EXPECT_TRUE(Within(grid.IndexTitlePlace(), grid.Extents()));
}

// --- the drawing -----------------------------------------------------------------------------------------------------

TEST(DxfSections, HaveALayerForEachKind) {
  std::vector<std::string> names;
  for (const DxfItem& layer : ItemsOf(FileOf(Many(1)), "LAYER")) names.push_back(layer[2]);
  EXPECT_THAT(names, testing::ElementsAre("0", "DESIGN_SURFACE", "SLOPE", "PAVEMENT_LAYER", "OTHER_FORM", "GROUND",
                                          "GROUND_HATCH", "CROSSING", "CENTER_LINE", "CODE", "GRADE", "DIMENSION",
                                          "FRAME", "TITLE", "ORIGIN", "INDEX"));
}

TEST(DxfSections, HaveTrueLengthsAroundTheirOrigin) {
  const std::string file = FileOf(Many(2));
  const SheetGrid grid = GridOf(Many(2));
  const std::vector<DxfItem> slopes = ItemsOf(file, "LINE", "SLOPE");
  ASSERT_THAT(slopes, SizeIs(2));
  for (int sheet = 0; sheet < 2; ++sheet) {
    const DxfItem& slope = slopes[static_cast<std::size_t>(sheet)];
    const DxfPlace origin = grid.OriginOf(sheet);
    EXPECT_NEAR(slope.Place(10).x - origin.x, -9.5, 1e-9);
    EXPECT_NEAR(slope.Place(10).y - origin.y, 58.45 - 62.0, 1e-9);
    EXPECT_NEAR(slope.Place(11).x - slope.Place(10).x, 6.0, 1e-9);
    EXPECT_NEAR(slope.Place(11).y - slope.Place(10).y, 4.0, 1e-9);
  }
  EXPECT_THAT(ItemsOf(file, "POLYLINE", "DESIGN_SURFACE"), SizeIs(2));
  EXPECT_THAT(ItemsOf(file, "VERTEX", "GROUND"), SizeIs(6));
  EXPECT_THAT(ItemsOf(file, "POLYLINE", "FRAME"), SizeIs(0));
  EXPECT_THAT(ItemsOf(file, "LINE", "FRAME"), SizeIs(0));
}

TEST(DxfSections, ShowTheirOrigin) {
  const std::string file = FileOf(Many(3));
  const SheetGrid grid = GridOf(Many(3));
  const std::vector<DxfItem> points = ItemsOf(file, "POINT", "ORIGIN");
  ASSERT_THAT(points, SizeIs(3));
  for (int i = 0; i < 3; ++i) EXPECT_EQ(points[static_cast<std::size_t>(i)].Place(), grid.OriginOf(i));
  EXPECT_THAT(TextsOn(file, "ORIGIN"), Each(std::string("DL=62.000")));
}

TEST(DxfSections, MarkTheHeightOfTheirOriginWhereItIsOnlyAssumed) {
  std::vector<DrawnSection> sections = Many(2);
  sections[1].view.isHeightAssumed = true;
  EXPECT_THAT(TextsOn(FileOf(sections), "ORIGIN"), testing::ElementsAre("DL=62.000", DxfText("DL≒62.000")));
}

TEST(DxfSections, CountHeightsFromTheCentreLineWhereItsElevationIsNotKnown) {
  std::vector<DrawnSection> sections = Many(1);
  sections[0].view.centerHeight.reset();
  sections[0].drawing.lines[1].places = {{-9.5, -4.05}, {-3.5, -0.05}};
  const std::string file = FileOf(sections);
  EXPECT_THAT(TextsOn(file, "ORIGIN"), Each(std::string("H=0.000")));
  EXPECT_EQ(ItemsOf(file, "LINE", "SLOPE").at(0).Place(10), (DxfPlace{-9.5, -4.05}));
}

TEST(DxfSections, DrawTextsAndMarksAsLargeAsOnPaper) {
  const std::string file = FileOf(Many(1));
  const DxfItem code = ItemsOf(file, "TEXT", "CODE").at(0);
  EXPECT_EQ(code[1], "L1");
  EXPECT_DOUBLE_EQ(code.Real(40), 2.5 * 200 / 1000) << "2.5 mm at 1:200";
  EXPECT_THAT(TextsOn(file, "TITLE"), Contains("No.6+0.0000 \x90\xB7\x93\x79\x96\xCA"));
  EXPECT_THAT(ItemsOf(file, "TEXT", "GRADE"), SizeIs(0)) << "an empty text";
  EXPECT_EQ(ItemsOf(file, "CIRCLE", "CODE").at(0).Place(), (DxfPlace{-3.5, 0.45}));
  EXPECT_EQ(ItemsOf(file, "CIRCLE", "CROSSING").at(0).Place(), (DxfPlace{-9.5, -3.55}));
}

TEST(DxfSections, LiftTextsAcrossTheirDirection) {
  std::vector<DrawnSection> sections = Many(1);
  DrawnText& text = sections[0].drawing.texts[0];
  text.place = {1.0, 62.0};
  text.liftMm = 5.0;
  text.angle = 90.0;
  const DxfItem upright = ItemsOf(FileOf(sections), "TEXT", "CODE").at(0);
  EXPECT_NEAR(upright.Place().x, 1.0 - 5.0 * 0.2, 1e-9);
  EXPECT_NEAR(upright.Place().y, 0.0, 1e-9);
  text.alongMm = -2.0;
  EXPECT_NEAR(ItemsOf(FileOf(sections), "TEXT", "CODE").at(0).Place().y, -2.0 * 0.2, 1e-9);
  text.alongMm = 0.0;
  text.angle = 0.0;
  EXPECT_NEAR(ItemsOf(FileOf(sections), "TEXT", "CODE").at(0).Place().y, 1.0, 1e-9);
}

TEST(DxfSections, StandArrowsAndHeightMarksOnTheirTips) {
  const std::string file = FileOf(Many(1));
  const std::vector<DxfItem> height = ItemsOf(file, "VERTEX", "DIMENSION");
  ASSERT_THAT(height, SizeIs(4));
  EXPECT_EQ(height[0].Place(), (DxfPlace{0.0, 0.5}));
  EXPECT_GT(height[1].Place().y, 0.5) << "stands on its tip";
  EXPECT_EQ(height[3].Place(), height[0].Place());
  const DxfItem arrow = ItemsOf(file, "SOLID", "DIMENSION").at(0);
  EXPECT_EQ(arrow.Place(10), (DxfPlace{3.5, 2.0}));
  EXPECT_GT(arrow.Place(11).x, 3.5) << "an arrow to the left has its shaft on the right";
}

TEST(DxfSections, AreListedInAnIndexAndNamedViews) {
  std::vector<DrawnSection> sections = Many(2);
  sections[1].view.stationText = "No.7+0.0000";
  sections[1].view.name = "";
  sections[1].view.alignment = "";
  const std::string file = FileOf(sections);
  EXPECT_THAT(TextsOn(file, "INDEX"),
              testing::IsSupersetOf({std::string("S0001"), std::string("No.6+0.0000"), std::string("S0002"),
                                     std::string("No.7+0.0000"), std::string("2 cross sections, 1:200, metres")}));
  std::vector<std::string> views;
  for (const DxfItem& view : ItemsOf(file, "VIEW")) views.push_back(view[2]);
  EXPECT_THAT(views, testing::ElementsAre("S0001", "S0002"));
}

TEST(DxfSections, TellSectionsOfOneStationApart) {
  std::vector<DrawnSection> sections = Many(2);
  sections[1].view.isBehindChange = true;
  EXPECT_THAT(TextsOn(FileOf(sections), "INDEX"),
              testing::IsSupersetOf({std::string("No.6+0.0000"), std::string("No.6+0.0000 (behind)")}));
}

TEST(DxfSections, HaveTheirNameAndReferenceAboveTheirCorner) {
  const std::vector<DrawnSection> sections = Many(2);
  const SheetGrid grid = GridOf(sections);
  const DxfItem second = ItemsOf(FileOf(sections), "TEXT", "ORIGIN").at(1);
  EXPECT_EQ(second[1], "DL=62.000");
  EXPECT_EQ(second.Place().y, grid.OriginOf(1).y + 66.0 - 62.0);
  EXPECT_GT(second.Place().x, grid.OriginOf(1).x - 22.0);
}

TEST(DxfSections, HaveAJapaneseIndexOnRequest) {
  std::vector<DrawnSection> sections = Many(1);
  sections[0].view.isBehindChange = true;
  const SheetGrid grid = GridOf(sections);
  std::string file;
  DxfSectionWriter writer([&](std::string_view piece) { file += piece; }, grid, Language::Japanese);
  writer.Add(sections[0].view, sections[0].drawing);
  writer.Finish();
  EXPECT_THAT(TextsOn(file, "INDEX"),
              testing::IsSupersetOf({DxfText("横断面 1  縮尺 1:200  単位 m"), DxfText("No.6+0.0000 (後)")}));
}

TEST(DxfSections, LieWithinTheExtents) {
  const std::vector<DrawnSection> sections = Many(23);
  const DxfArea extents = GridOf(sections).Extents();
  const std::string file = FileOf(sections);
  for (const char* type : {"LINE", "VERTEX", "CIRCLE", "SOLID", "TEXT", "POINT"}) {
    for (const DxfItem& item : ItemsOf(file, type)) EXPECT_TRUE(Within(item.Place(), extents)) << type;
  }
}

TEST(DxfSections, OfNoSectionAreAnEmptyDrawing) {
  const std::string file = FileOf({});
  EXPECT_THAT(ItemsOf(file, "TEXT"), SizeIs(0));
  EXPECT_THAT(ItemsOf(file, "EOF"), SizeIs(1));
}

TEST(DxfSections, WithNothingDrawnStillHaveTheirSheet) {
  std::vector<DrawnSection> sections(1);
  sections[0].view = SectionView();
  sections[0].drawing = SectionDrawing();
  const std::string file = FileOf(sections);
  EXPECT_THAT(ItemsOf(file, "POINT", "ORIGIN"), SizeIs(1));
  EXPECT_THAT(TextsOn(file, "INDEX"), Contains("-")) << "no station";
}

TEST(DxfSections, KeepHugeCoordinates) {
  std::vector<DrawnSection> sections = Many(2);
  sections[0].drawing.lines[1].places = {{-1e7, 62.0}, {1e7, 1e6}};
  const std::string file = FileOf(sections);
  const DxfItem slope = ItemsOf(file, "LINE", "SLOPE").at(0);
  EXPECT_EQ(slope.Real(11) - slope.Real(10), 2e7);
  EXPECT_FALSE(Overlap(GridOf(sections).AreaOf(0), GridOf(sections).AreaOf(1)));
}

TEST(DxfSections, RefuseWhatIsNoNumber) {
  std::vector<DrawnSection> sections = Many(1);
  sections[0].drawing.lines[0].places[0].height = std::nan("");
  EXPECT_THROW((void)FileOf(sections), DocumentError);
}

TEST(DxfSections, TakeHostileNamesForText) {
  std::vector<DrawnSection> sections = Many(1);
  sections[0].view.name = "x\r\n  0\r\nEOF\r\n";
  sections[0].drawing.texts[1].text = "<script>\n  0\nENDSEC";
  const std::string file = FileOf(sections);
  EXPECT_THAT(ItemsOf(file, "EOF"), SizeIs(1));
  EXPECT_THAT(TextsOn(file, "TITLE"), Contains("<script>   0 ENDSEC"));
}

}  // namespace
