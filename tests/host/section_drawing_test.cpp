// How a cross section is drawn: what is drawn at all, where labels stand, and the sheet around it.

#include "host/drawing/section_drawing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <numbers>
#include <string>
#include <vector>

#include "host/document/text_encoding.h"
#include "host/drawing/paper.h"
#include "tests/host/editing.h"
#include "tests/host/tool.h"

namespace {

using namespace host_test;  // NOLINT(google-build-using-namespace): the vocabulary of these tests
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using vorn_host::Draw;
using vorn_host::DrawInEach;
using vorn_host::DrawingKind;
using vorn_host::DrawingOptions;
using vorn_host::DrawnLine;
using vorn_host::DrawnMark;
using vorn_host::DrawnText;
using vorn_host::FormRole;
using vorn_host::LabelBox;
using vorn_host::Language;
using vorn_host::PaperGrid;
using vorn_host::PaperScale;
using vorn_host::SectionDrawing;
using vorn_host::SectionPart;
using vorn_host::SectionPlace;
using vorn_host::SectionView;
using vorn_host::SectionViewer;
using vorn_host::ViewForm;
using vorn_host::ViewGround;
using vorn_host::ViewNote;
using vorn_host::ViewPoint;
using vorn_host::ViewTarget;

// --- views and what is drawn of them ---------------------------------------------------------------------------------

ViewPoint At(const std::string& code, double offset, double height, int from, SectionPart part = SectionPart::Roadbed,
             const std::string& grade = {}) {
  ViewPoint point;
  point.code = code;
  point.place = {offset, height};
  point.from = from;
  point.part = from < 0 ? SectionPart::Start : part;
  point.side = offset < 0.0 ? "Left" : offset > 0.0 ? "Right" : "Center";
  point.grade = grade;
  return point;
}

/// 7 m of road with a slope down on either side: L2, L1, CL, R1, R2.
ViewForm Road() {
  ViewForm form;
  form.name = "S";
  form.role = FormRole::DesignSurface;
  form.points = {At("CL", 0.0, 0.0, -1), At("L1", -3.5, -0.07, 0, SectionPart::Roadbed, "-2.0%"),
                 At("L2", -9.5, -4.07, 1, SectionPart::Slope, "1:1.5"),
                 At("R1", 3.5, -0.07, 0, SectionPart::Roadbed, "-2.0%"),
                 At("R2", 9.5, -4.07, 3, SectionPart::Slope, "1:1.5")};
  form.lines = {{2, 1, 0, 3, 4}};
  return form;
}

SectionView RoadView() {
  SectionView view;
  view.station = 120.0;
  view.stationText = "120.0000";
  view.forms = {Road()};
  return view;
}

SectionView WithGround(SectionView view, double height) {
  view.centerHeight = 0.0;
  view.grounds.push_back({"ground", {{-50.0, height}, {50.0, height}}});
  return view;
}

ViewTarget TargetOf(ViewTarget::Item item, std::initializer_list<int> points, double value) {
  ViewTarget target;
  target.item = item;
  for (const int point : points) target.points.push_back({0, point, ""});
  target.designValue = value;
  return target;
}

std::vector<DrawnLine> LinesOf(const SectionDrawing& drawing, DrawingKind kind) {
  std::vector<DrawnLine> lines;
  std::copy_if(drawing.lines.begin(), drawing.lines.end(), std::back_inserter(lines),
               [&](const DrawnLine& line) { return line.kind == kind; });
  return lines;
}

std::vector<DrawnMark> MarksOf(const SectionDrawing& drawing, DrawnMark::Shape shape) {
  std::vector<DrawnMark> marks;
  std::copy_if(drawing.marks.begin(), drawing.marks.end(), std::back_inserter(marks),
               [&](const DrawnMark& mark) { return mark.shape == shape; });
  return marks;
}

Texts TextsOf(const SectionDrawing& drawing, DrawingKind kind) {
  Texts texts;
  for (const DrawnText& text : drawing.texts) {
    if (text.kind == kind) texts.push_back(text.text);
  }
  return texts;
}

DrawnText TextOf(const SectionDrawing& drawing, DrawingKind kind, const std::string& label) {
  for (const DrawnText& text : drawing.texts) {
    if (text.kind == kind && text.text == label) return text;
  }
  ADD_FAILURE() << "no text " << label;
  return {};
}

PaperScale ScaleOf(const SectionDrawing& drawing) { return {drawing.scale, drawing.exaggeration}; }

double WidthMm(const SectionDrawing& drawing) { return (drawing.right - drawing.left) * 1000.0 / drawing.scale; }
double HeightMm(const SectionDrawing& drawing) {
  return (drawing.top - drawing.bottom) * 1000.0 / drawing.scale * drawing.exaggeration;
}

/// Whether two labels cover a common place, looked at from closely set places of one of them.
bool Overlap(const LabelBox& a, const LabelBox& b) {
  const auto holds = [](const LabelBox& box, const vorn_host::PaperPlace& place) {
    const vorn_host::PaperDirection& direction = box.direction;
    const double x = place.x - box.corner.x;
    const double y = place.y - box.corner.y;
    const vorn_host::PaperPlace inside = {x * direction.cosine + y * direction.sine,
                                          y * direction.cosine - x * direction.sine};
    return inside.x > 0.0 && inside.x < box.width && inside.y > 0.0 && inside.y < box.height;
  };
  constexpr int kSteps = 24;
  for (int i = 0; i <= kSteps; ++i) {
    for (int j = 0; j <= kSteps; ++j) {
      if (holds(b, a.At(a.width * i / kSteps, a.height * j / kSteps))) return true;
    }
  }
  return false;
}

/// A line of two places on paper.
struct Stroke {
  vorn_host::PaperPlace from;
  vorn_host::PaperPlace to;
};

std::vector<Stroke> LeadersOf(const SectionDrawing& drawing) {
  std::vector<Stroke> leaders;
  const PaperScale scale = ScaleOf(drawing);
  for (const DrawnLine& line : drawing.lines) {
    if (line.leadsTo) leaders.push_back({scale.ToPaper(line.places.front()), scale.ToPaper(line.places.back())});
  }
  return leaders;
}

bool Cross(const Stroke& one, const Stroke& other) {
  const auto side = [](const Stroke& stroke, const vorn_host::PaperPlace& place) {
    return (stroke.to.x - stroke.from.x) * (place.y - stroke.from.y) -
           (stroke.to.y - stroke.from.y) * (place.x - stroke.from.x);
  };
  return side(one, other.from) * side(one, other.to) < 0.0 && side(other, one.from) * side(other, one.to) < 0.0;
}

void ExpectNoCrossedLeaders(const SectionDrawing& drawing) {
  const std::vector<Stroke> leaders = LeadersOf(drawing);
  for (std::size_t i = 0; i < leaders.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) EXPECT_FALSE(Cross(leaders[i], leaders[j])) << i << " and " << j;
  }
}

/// What holds of every drawing: no number is none, everything lies on the sheet, no label lies on another, and no
/// leaders cross.
void ExpectSound(const SectionDrawing& drawing) {
  const auto expectOnSheet = [&](const SectionPlace& place, const std::string& what) {
    EXPECT_TRUE(std::isfinite(place.offset) && std::isfinite(place.height)) << what;
    EXPECT_GE(place.offset, drawing.left) << what;
    EXPECT_LE(place.offset, drawing.right) << what;
    EXPECT_GE(place.height, drawing.bottom) << what;
    EXPECT_LE(place.height, drawing.top) << what;
  };
  for (const double side : {drawing.left, drawing.right, drawing.bottom, drawing.top}) EXPECT_TRUE(std::isfinite(side));
  EXPECT_LT(drawing.left, drawing.right);
  EXPECT_LT(drawing.bottom, drawing.top);
  for (const DrawnLine& line : drawing.lines) {
    EXPECT_GE(line.places.size(), 2u);
    for (const SectionPlace& place : line.places) expectOnSheet(place, "line");
  }
  for (const DrawnMark& mark : drawing.marks) expectOnSheet(mark.place, "mark");
  const PaperScale scale = ScaleOf(drawing);
  std::vector<std::pair<LabelBox, const DrawnText*>> boxes;
  for (const DrawnText& text : drawing.texts) {
    const LabelBox box = BoxOf(text, scale);
    expectOnSheet(scale.ToSection(box.At(0.0, 0.0)), text.text);
    expectOnSheet(scale.ToSection(box.At(box.width, box.height)), text.text);
    for (const auto& [other, otherText] : boxes) {
      EXPECT_FALSE(Overlap(box, other)) << text.text << " on " << otherText->text;
    }
    boxes.emplace_back(box, &text);
  }
  ExpectNoCrossedLeaders(drawing);
}

// --- lines and marks -------------------------------------------------------------------------------------------------

TEST(SectionDrawingLines, TellTheSurfaceFromItsSlopes) {
  const SectionDrawing drawing = Draw(RoadView());
  const std::vector<DrawnLine> surface = LinesOf(drawing, DrawingKind::DesignSurface);
  ASSERT_THAT(surface, SizeIs(1));
  EXPECT_THAT(surface[0].places,
              ElementsAre(SectionPlace{-3.5, -0.07}, SectionPlace{0.0, 0.0}, SectionPlace{3.5, -0.07}));
  EXPECT_EQ(surface[0].form, 0);
  const std::vector<DrawnLine> slopes = LinesOf(drawing, DrawingKind::Slope);
  ASSERT_THAT(slopes, SizeIs(2));
  EXPECT_THAT(slopes[0].places, ElementsAre(SectionPlace{-9.5, -4.07}, SectionPlace{-3.5, -0.07}));
  ExpectSound(drawing);
}

TEST(SectionDrawingLines, ShowLayersAndOtherFormsAsTheirOwnKind) {
  SectionView view = RoadView();
  view.forms.push_back(Road());
  view.forms.push_back(Road());
  view.forms[1].role = FormRole::Layer;
  view.forms[2].role = FormRole::Other;
  const SectionDrawing drawing = Draw(view);
  ASSERT_THAT(LinesOf(drawing, DrawingKind::PavementLayer), SizeIs(1)) << "also where it slopes";
  EXPECT_EQ(LinesOf(drawing, DrawingKind::PavementLayer)[0].form, 1);
  EXPECT_EQ(LinesOf(drawing, DrawingKind::PavementLayer)[0].places.size(), 5u);
  EXPECT_THAT(LinesOf(drawing, DrawingKind::OtherForm), SizeIs(1));
  ExpectSound(drawing);
}

TEST(SectionDrawingLines, LeaveOutWhatIsNotBuilt) {
  SectionView view = RoadView();
  view.forms[0].points[2].exists = false;
  view.forms[0].lines = {{1, 0, 3, 4}};
  const SectionDrawing drawing = Draw(view);
  EXPECT_THAT(TextsOf(drawing, DrawingKind::Code), Not(Contains("L2")));
  EXPECT_THAT(MarksOf(drawing, DrawnMark::Shape::Point), SizeIs(4));
  EXPECT_GT(drawing.left, -9.5) << "the sheet ends nearer";
}

TEST(SectionDrawingMarks, StandAtPointsAndCrossings) {
  SectionView view = RoadView();
  view.forms[0].points[4].isCrossing = true;
  const SectionDrawing drawing = Draw(view);
  EXPECT_THAT(MarksOf(drawing, DrawnMark::Shape::Point), SizeIs(4));
  const std::vector<DrawnMark> crossings = MarksOf(drawing, DrawnMark::Shape::Crossing);
  ASSERT_THAT(crossings, SizeIs(1));
  EXPECT_EQ(crossings[0].kind, DrawingKind::Crossing);
  EXPECT_EQ(crossings[0].form, 0);
  EXPECT_EQ(crossings[0].point, 4);
  EXPECT_EQ(crossings[0].place, (SectionPlace{9.5, -4.07}));
}

TEST(SectionDrawingLines, HaveACentreLineThatSaysSo) {
  const SectionDrawing drawing = Draw(RoadView());
  const std::vector<DrawnLine> lines = LinesOf(drawing, DrawingKind::CenterLine);
  ASSERT_THAT(lines, SizeIs(1));
  EXPECT_EQ(lines[0].places[0].offset, 0.0);
  EXPECT_EQ(lines[0].places[1].offset, 0.0);
  EXPECT_LT(lines[0].places[0].height, -4.07);
  EXPECT_GT(lines[0].places[1].height, 0.0);
  EXPECT_THAT(TextsOf(drawing, DrawingKind::CenterLine), ElementsAre("CL"));
  EXPECT_THAT(TextsOf(drawing, DrawingKind::Code), Not(Contains("CL"))) << "not told twice";
}

// --- ground ----------------------------------------------------------------------------------------------------------

TEST(SectionDrawingGround, GoesSomewhatBeyondTheDesignAndHasAHatch) {
  const SectionDrawing drawing = Draw(WithGround(RoadView(), -4.07));
  const std::vector<DrawnLine> ground = LinesOf(drawing, DrawingKind::Ground);
  ASSERT_THAT(ground, SizeIs(1));
  EXPECT_LT(ground[0].places.front().offset, -9.5);
  EXPECT_GT(ground[0].places.front().offset, -15.0);
  EXPECT_NEAR(ground[0].places.front().height, -4.07, 1e-9);
  const std::vector<DrawnLine> ticks = LinesOf(drawing, DrawingKind::GroundHatch);
  const double length = (ground[0].places.back().offset - ground[0].places.front().offset) * 1000.0 / drawing.scale;
  EXPECT_NEAR(static_cast<double>(ticks.size()), length / 12.0 * 3.0, 3.0);
  for (const DrawnLine& tick : ticks) {
    EXPECT_NEAR(tick.places[0].height, -4.07, 1e-9) << "from the ground";
    EXPECT_LT(tick.places[1].height, -4.07) << "down into it";
  }
  const double step = (ticks[3].places[0].offset - ticks[0].places[0].offset) * 1000.0 / drawing.scale;
  EXPECT_NEAR(step, 12.0, 1e-6) << "at regular distances on paper";
  EXPECT_THAT(TextsOf(drawing, DrawingKind::Ground), ElementsAre("ground"));
  ExpectSound(drawing);
}

TEST(SectionDrawingGround, HasItsHatchInTheEarthHoweverSteepItIs) {
  for (const double rise : {30.0, -30.0}) {
    SectionView view = RoadView();
    view.centerHeight = 0.0;
    view.grounds.push_back({"ground", {{-10.0, -rise}, {10.0, rise}}});
    const SectionDrawing drawing = Draw(view);
    const std::vector<DrawnLine> ticks = LinesOf(drawing, DrawingKind::GroundHatch);
    EXPECT_THAT(ticks, Not(IsEmpty()));
    for (const DrawnLine& tick : ticks) {
      EXPECT_LT(tick.places[1].height, tick.places[1].offset * rise / 10.0 - 1e-6) << "below the ground";
    }
  }
}

TEST(SectionDrawingGround, MayBeSeveral) {
  SectionView view = WithGround(RoadView(), -4.07);
  view.grounds.push_back({"rock", {{-50.0, -8.0}, {-4.0, -9.0}, {50.0, -8.0}}});
  const SectionDrawing drawing = Draw(view);
  EXPECT_THAT(LinesOf(drawing, DrawingKind::Ground), SizeIs(2));
  EXPECT_THAT(TextsOf(drawing, DrawingKind::Ground), ElementsAre("ground", "rock"));
  ExpectSound(drawing);
}

TEST(SectionDrawingGround, IsDrawnAloneToo) {
  SectionView view = WithGround(SectionView(), 12.0);
  const SectionDrawing drawing = Draw(view);
  ASSERT_THAT(LinesOf(drawing, DrawingKind::Ground), SizeIs(1));
  EXPECT_EQ(LinesOf(drawing, DrawingKind::Ground)[0].places.front().offset, -50.0);
  ExpectSound(drawing);
}

// --- labels ----------------------------------------------------------------------------------------------------------

TEST(SectionDrawingLabels, TellCodesAndGrades) {
  const SectionDrawing drawing = Draw(RoadView());
  EXPECT_THAT(TextsOf(drawing, DrawingKind::Code), testing::UnorderedElementsAre("L1", "L2", "R1", "R2"));
  EXPECT_THAT(TextsOf(drawing, DrawingKind::Grade), testing::UnorderedElementsAre("-2.0%", "-2.0%", "1:1.5", "1:1.5"));
  for (const DrawnText& text : drawing.texts) {
    if (text.text != "1:1.5") continue;
    const double slope = std::atan2(4.0, 6.0) * 180.0 / std::numbers::pi;
    EXPECT_NEAR(text.angle, text.place.offset < 0.0 ? slope : -slope, 1e-9) << "along the slope, never upside down";
  }
}

TEST(SectionDrawingLabels, BelongToTheirPoints) {
  const SectionView view = RoadView();
  const SectionDrawing drawing = Draw(view);
  for (const ViewPoint& point : view.forms[0].points) {
    if (point.code == "CL") continue;
    const DrawnText code = TextOf(drawing, DrawingKind::Code, point.code);
    EXPECT_EQ(code.place, point.place) << "what keeps them apart is told in millimetres";
    EXPECT_NE(code.liftMm, 0.0);
  }
}

TEST(SectionDrawingLabels, FollowTheExaggeratedSlope) {
  const SectionDrawing drawing = Draw(RoadView(), {2.0});
  EXPECT_NEAR(TextOf(drawing, DrawingKind::Grade, "1:1.5").angle, std::atan2(8.0, 6.0) * 180.0 / std::numbers::pi,
              1e-9);
  ExpectSound(drawing);
}

TEST(SectionDrawingLabels, LeaveOutGradesOfShortSegments) {
  SectionView view = RoadView();
  view.forms[0].points[1].place = {-0.3, -0.006};
  const SectionDrawing drawing = Draw(view);
  EXPECT_THAT(TextsOf(drawing, DrawingKind::Grade), testing::UnorderedElementsAre("-2.0%", "1:1.5", "1:1.5"));
  ExpectSound(drawing);
}

TEST(SectionDrawingLabels, MoveApartWhereTheyCollide) {
  SectionView view = RoadView();
  ViewForm& form = view.forms[0];
  for (int i = 0; i < 4; ++i) {
    form.points.push_back(
        At("A" + std::to_string(i), 9.5 + 0.05 * (i + 1), -4.07, static_cast<int>(form.points.size()) - 1));
    form.lines[0].push_back(static_cast<int>(form.points.size()) - 1);
  }
  const SectionDrawing drawing = Draw(view);
  const Texts codes = TextsOf(drawing, DrawingKind::Code);
  EXPECT_GE(std::count_if(codes.begin(), codes.end(), [](const auto& code) { return code.front() == 'A'; }), 3);
  ExpectSound(drawing);
}

TEST(SectionDrawingLabels, AreLeftOutWhereThereIsNoRoomAndDrawnInTime) {
  SectionView view = RoadView();
  ViewForm& form = view.forms[0];
  constexpr int kPoints = 5000;
  for (int i = 0; i < kPoints; ++i) {
    form.points.push_back(At("P" + std::to_string(i), 10.0 + 0.001 * i, -4.0 - (i % 2) * 0.01,
                             static_cast<int>(form.points.size()) - 1, SectionPart::Roadbed, "-2.0%"));
    form.lines[0].push_back(static_cast<int>(form.points.size()) - 1);
  }
  const auto begin = std::chrono::steady_clock::now();
  const SectionDrawing drawing = Draw(view);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(20));
  EXPECT_LT(TextsOf(drawing, DrawingKind::Code).size(), 200u);
  EXPECT_GT(TextsOf(drawing, DrawingKind::Code).size(), 10u);
  ExpectSound(drawing);
}

TEST(SectionDrawingLabels, KeepHostileTextsAsTheyAre) {
  SectionView view = RoadView();
  view.name = "<script>alert(1)</script>\x01\"";
  view.forms[0].points[1].code = "&<b>";
  const SectionDrawing drawing = Draw(view);
  EXPECT_THAT(TextsOf(drawing, DrawingKind::Code), Contains("&<b>"));
  EXPECT_THAT(TextsOf(drawing, DrawingKind::Title), Contains(HasSubstr("<script>alert(1)</script>\x01\"")));
}

// --- dimensions ------------------------------------------------------------------------------------------------------

TEST(SectionDrawingDimensions, ShowWidthsAboveAFill) {
  SectionView view = RoadView();
  view.targets = {TargetOf(ViewTarget::Item::Width, {1, 3}, 7.0)};
  const SectionDrawing drawing = Draw(view);
  const DrawnText value = TextOf(drawing, DrawingKind::Dimension, "7.000");
  EXPECT_EQ(value.place.offset, 0.0);
  EXPECT_GT(value.place.height, 0.0);
  EXPECT_EQ(value.target, 0);
  EXPECT_EQ(value.form, 0);
  const std::vector<DrawnLine> lines = LinesOf(drawing, DrawingKind::Dimension);
  ASSERT_THAT(lines, SizeIs(3)) << "two extension lines, and the dimension line";
  for (const DrawnLine& line : lines) EXPECT_EQ(line.target, 0);
  const std::vector<DrawnMark> arrows = MarksOf(drawing, DrawnMark::Shape::Arrow);
  ASSERT_THAT(arrows, SizeIs(2));
  EXPECT_EQ(arrows[0].place.offset, -3.5);
  EXPECT_EQ(arrows[0].angle, 180.0);
  EXPECT_EQ(arrows[1].place.offset, 3.5);
  EXPECT_EQ(arrows[1].angle, 0.0);
  ExpectSound(drawing);
}

TEST(SectionDrawingDimensions, ShowWidthsBelowACut) {
  SectionView view = WithGround(RoadView(), 8.0);
  view.targets = {TargetOf(ViewTarget::Item::Width, {3, 1}, 7.0)};
  const SectionDrawing drawing = Draw(view);
  EXPECT_LT(TextOf(drawing, DrawingKind::Dimension, "7.000").place.height, -0.07);
  ExpectSound(drawing);
}

TEST(SectionDrawingDimensions, StandInTiers) {
  SectionView view = RoadView();
  view.targets = {TargetOf(ViewTarget::Item::Width, {2, 4}, 19.0), TargetOf(ViewTarget::Item::Width, {1, 3}, 7.0),
                  TargetOf(ViewTarget::Item::Width, {0, 3}, 3.5), TargetOf(ViewTarget::Item::Width, {3, 1}, 7.0)};
  const SectionDrawing drawing = Draw(view);
  EXPECT_THAT(TextsOf(drawing, DrawingKind::Dimension), ElementsAre("3.500", "7.000", "19.000"))
      << "the narrow ones first, the same one once";
  const double narrow = TextOf(drawing, DrawingKind::Dimension, "3.500").place.height;
  const double middle = TextOf(drawing, DrawingKind::Dimension, "7.000").place.height;
  const double wide = TextOf(drawing, DrawingKind::Dimension, "19.000").place.height;
  EXPECT_LT(narrow, middle);
  EXPECT_LT(wide, -4.07) << "from toe to toe, below the feet of the slopes";
  ExpectSound(drawing);
}

TEST(SectionDrawingDimensions, LeaveOutWidthsWithoutRoomInTime) {
  constexpr int kWidths = 3000;
  SectionView view = RoadView();
  ViewForm form;
  form.role = FormRole::Layer;
  for (int i = 0; i <= kWidths; ++i) {
    form.points.push_back(At("", 5.0 + i * 0.0001, 0.0, i - 1));
    if (i > 0) form.lines.push_back({i - 1, i});
  }
  view.forms.push_back(form);
  for (int i = 1; i <= kWidths; ++i) {
    view.targets.push_back(TargetOf(ViewTarget::Item::Width, {0, i}, 5.0 + i * 0.0001));
    for (ViewTarget::Pnt& pnt : view.targets.back().points) pnt.form = 1;
  }
  const auto start = std::chrono::steady_clock::now();
  const SectionDrawing drawing = Draw(view, {.scale = 100.0});
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
  const std::size_t drawn = TextsOf(drawing, DrawingKind::Dimension).size();
  EXPECT_GT(drawn, 5u);
  EXPECT_LT(drawn, 80u);
  EXPECT_EQ(drawn + static_cast<std::size_t>(drawing.widthsLeftOut), kWidths);
  ExpectSound(drawing);
}

TEST(SectionDrawingDimensions, StandOutsideWhereTheyAreShort) {
  SectionView view = RoadView();
  view.forms[0].points[1].place.offset = -0.4;
  view.targets = {TargetOf(ViewTarget::Item::Width, {0, 1}, 0.4)};
  const SectionDrawing drawing = Draw(view);
  const DrawnText value = TextOf(drawing, DrawingKind::Dimension, "0.400");
  EXPECT_EQ(value.anchor, DrawnText::Anchor::End);
  EXPECT_LT(value.place.offset, -0.4);
  EXPECT_LT(value.alongMm, 0.0) << "a little beyond the end of its line";
  EXPECT_EQ(MarksOf(drawing, DrawnMark::Shape::Arrow)[0].angle, 0.0) << "from outside";
  ExpectSound(drawing);
}

TEST(SectionDrawingDimensions, ShowHeightsAsTriangles) {
  SectionView view = WithGround(RoadView(), -4.07);
  view.targets = {TargetOf(ViewTarget::Item::Height, {0, 3}, 0.0), TargetOf(ViewTarget::Item::Height, {3}, -0.07)};
  const SectionDrawing known = Draw(view);
  const std::vector<DrawnMark> triangles = MarksOf(known, DrawnMark::Shape::Height);
  ASSERT_THAT(triangles, SizeIs(2)) << "one at each point";
  EXPECT_EQ(triangles[1].point, 3);
  EXPECT_EQ(triangles[0].target, 0);
  EXPECT_EQ(triangles[1].target, 1) << "both targets measure there";
  EXPECT_EQ(known.measured, (std::vector<std::vector<int>>{{0}, {0, 1}}));
  EXPECT_THAT(TextsOf(known, DrawingKind::Dimension), ElementsAre("0.000", "-0.070"));
  view.centerHeight.reset();
  view.forms[0].points[3].place.height = 0.5;
  EXPECT_THAT(TextsOf(Draw(view), DrawingKind::Dimension), ElementsAre("±0.000", "+0.500"))
      << "no elevations, but heights above the centre line";
  ExpectSound(known);
}

/// The same view with a layer that lies on its road.
SectionView WithLayer(SectionView view) {
  view.forms.push_back(Road());
  view.forms[1].name = "T";
  view.forms[1].role = FormRole::Layer;
  return view;
}

TEST(SectionDrawingDimensions, ShowAllTargetsThatMeasureTheSame) {
  SectionView view = WithLayer(WithGround(RoadView(), -4.07));
  view.targets = {
      TargetOf(ViewTarget::Item::Width, {1, 3}, 7.0),          TargetOf(ViewTarget::Item::Height, {0}, 0.0),
      TargetOf(ViewTarget::Item::Width, {1, 3}, 7.0),          TargetOf(ViewTarget::Item::Height, {0, 3}, 0.0),
      TargetOf(ViewTarget::Item::SlopeLength, {1, 2}, 7.2111), TargetOf(ViewTarget::Item::SlopeLength, {2, 1}, 7.2111)};
  for (const std::size_t target : {2u, 3u}) {
    for (ViewTarget::Pnt& pnt : view.targets[target].points) pnt.form = 1;
  }
  const SectionDrawing drawing = Draw(view);
  const auto targetsOf = [&](const char* text) {
    return drawing.measured.at(static_cast<std::size_t>(TextOf(drawing, DrawingKind::Dimension, text).target));
  };
  EXPECT_THAT(TextsOf(drawing, DrawingKind::Dimension), SizeIs(4)) << "each once";
  EXPECT_THAT(targetsOf("7.000"), ElementsAre(0, 2));
  EXPECT_THAT(targetsOf("0.000"), ElementsAre(1, 3));
  EXPECT_THAT(targetsOf("-0.070"), ElementsAre(3));
  EXPECT_THAT(targetsOf("SL=7.211"), ElementsAre(4, 5));
  EXPECT_THAT(MarksOf(drawing, DrawnMark::Shape::Height), SizeIs(2)) << "no triangle on another";
  ExpectSound(drawing);
}

TEST(SectionDrawingDimensions, ShowTheLengthOfAWallOnceWhicheverPointIsNamedFirst) {
  SectionView view = RoadView();
  view.forms[0].points[2].place.offset = -3.5;
  view.targets = {TargetOf(ViewTarget::Item::SlopeLength, {1, 2}, 4.0),
                  TargetOf(ViewTarget::Item::SlopeLength, {2, 1}, 4.0)};
  const SectionDrawing drawing = Draw(view);
  EXPECT_THAT(TextsOf(drawing, DrawingKind::Dimension), ElementsAre("SL=4.000"));
  EXPECT_EQ(drawing.measured, (std::vector<std::vector<int>>{{0, 1}}));
}

TEST(SectionDrawingDimensions, ShowLengthsOfSeveralSegmentsOnTheLongestOne) {
  SectionView view = RoadView();
  view.targets = {TargetOf(ViewTarget::Item::SlopeLength, {0, 2}, 10.7118)};
  const DrawnText value = TextOf(Draw(view), DrawingKind::Dimension, "SL=10.712");
  EXPECT_NEAR(value.angle, std::atan2(4.0, 6.0) * 180.0 / std::numbers::pi, 1e-9)
      << "along the slope, which the chord is not";
}

TEST(SectionDrawingDimensions, LeadToLengthsThatFindNoRoomAlongTheirSlopes) {
  SectionView view = RoadView();
  view.targets = {TargetOf(ViewTarget::Item::SlopeLength, {1, 2}, 7.2111)};
  const SectionDrawing drawing = Draw(view, {.scale = 1000.0});
  EXPECT_EQ(TextOf(drawing, DrawingKind::Dimension, "SL=7.211").angle, 0.0);
  const std::vector<DrawnLine> lines = LinesOf(drawing, DrawingKind::Dimension);
  EXPECT_TRUE(std::any_of(lines.begin(), lines.end(), [](const DrawnLine& line) { return line.leadsTo.has_value(); }));
  EXPECT_EQ(drawing.lengthsLeftOut, 0);
}

TEST(SectionDrawingDimensions, CountHeightsAndLengthsWithoutRoom) {
  constexpr int kPoints = 300;
  SectionView view = WithGround(RoadView(), -4.07);
  ViewForm form;
  form.role = FormRole::Layer;
  form.lines = {{}};
  for (int i = 0; i < kPoints; ++i) {
    form.points.push_back(At("", 5.0 + i * 0.001, -1.0, i - 1));
    form.lines[0].push_back(i);
  }
  view.forms.push_back(form);
  for (int i = 1; i < kPoints; ++i) {
    view.targets.push_back(TargetOf(ViewTarget::Item::Height, {i}, -1.0));
    view.targets.push_back(TargetOf(ViewTarget::Item::SlopeLength, {i - 1, i}, 0.001));
    view.targets[view.targets.size() - 2].points[0].form = 1;
    for (ViewTarget::Pnt& pnt : view.targets.back().points) pnt.form = 1;
  }
  const SectionDrawing drawing = Draw(view, {.scale = 100.0});
  const std::vector<std::string> texts = TextsOf(drawing, DrawingKind::Dimension);
  const auto lengths = std::count(texts.begin(), texts.end(), "SL=0.001");
  EXPECT_GT(drawing.heightsLeftOut, 0);
  EXPECT_GT(drawing.lengthsLeftOut, 0);
  EXPECT_EQ(lengths + drawing.lengthsLeftOut, kPoints - 1);
  EXPECT_EQ(static_cast<int>(texts.size() - static_cast<std::size_t>(lengths)) + drawing.heightsLeftOut, kPoints - 1);
  EXPECT_THAT(NotesOf(view, drawing), SizeIs(2));
  ExpectSound(drawing);
}

/// A road with lines closely above and below its right edge, where no label stands.
SectionView CrowdedView() {
  SectionView view = WithGround(RoadView(), -9.0);
  ViewForm lines;
  lines.role = FormRole::Other;
  for (const double height : {-0.37, -0.27, -0.17, 0.03, 0.13, 0.23, 0.33}) {
    const int first = static_cast<int>(lines.points.size());
    for (const double offset : {2.0, 5.0}) lines.points.push_back(At("", offset, height, -1));
    lines.lines.push_back({first, first + 1});
  }
  view.forms.push_back(lines);
  return view;
}

TEST(SectionDrawingLabels, AreLedToFromAfar) {
  SectionView view = CrowdedView();
  for (const auto kind : {DrawingKind::Code, DrawingKind::Dimension}) {
    const SectionDrawing drawing = Draw(view, {.scale = 100.0});
    const std::vector<DrawnLine> lines = LinesOf(drawing, kind);
    const auto isLeader = [&](const DrawnLine& line) { return line.leadsTo == view.forms[0].points[3].place; };
    EXPECT_EQ(std::count_if(lines.begin(), lines.end(), isLeader), 1);
    ExpectSound(drawing);
    view.targets = {TargetOf(ViewTarget::Item::Height, {3}, -0.07)};
    view.forms[0].points[3].code.clear();
  }
}

TEST(SectionDrawingLabels, AreNotCrossedByLeaders) {
  SectionView view = RoadView();
  ViewForm& form = view.forms[0];
  for (int i = 0; i < 40; ++i) form.points.push_back(At("A" + std::to_string(i), 9.5 + 0.05 * i, -4.07, 0));
  const SectionDrawing drawing = Draw(view);
  const PaperScale scale = ScaleOf(drawing);
  for (const DrawnLine& line : LinesOf(drawing, DrawingKind::Code)) {
    const auto from = scale.ToPaper(line.places.front());
    const auto to = scale.ToPaper(line.places.back());
    LabelBox leader{from, std::hypot(to.x - from.x, to.y - from.y), 0.01};
    leader.direction.cosine = (to.x - from.x) / leader.width;
    leader.direction.sine = (to.y - from.y) / leader.width;
    for (const DrawnText& text : drawing.texts) {
      LabelBox box = BoxOf(text, scale);
      box.corner = box.At(0.5, 0.5);  // labels are kept apart in cells of half a millimetre
      box.width -= 1.0;
      box.height -= 1.0;
      EXPECT_FALSE(Overlap(leader, box)) << text.text;
    }
  }
}

TEST(SectionDrawingLabels, KeepTheirLeadersFromCrossing) {
  SectionView view = RoadView();
  ViewForm& form = view.forms[0];
  for (int i = 0; i < 60; ++i) {
    // Groups of six points, as at the edges of layers.
    form.points.push_back(At("A" + std::to_string(i), 9.5 + 2.4 * (i / 6) + 0.1 * (i % 6), -4.07 - 0.1 * (i % 6), 0));
  }
  const SectionDrawing drawing = Draw(view, {.scale = 100.0});
  EXPECT_GE(TextsOf(drawing, DrawingKind::Code).size(), 60u);
  EXPECT_GE(LeadersOf(drawing).size(), 10u);
  ExpectSound(drawing);
}

TEST(SectionDrawingLabels, NameAPlaceOnce) {
  SectionView view = RoadView();
  view.forms.push_back(Road());
  view.forms[1].role = FormRole::Layer;
  view.forms[1].points[3].code = "R7";
  EXPECT_THAT(TextsOf(Draw(view), DrawingKind::Code), testing::UnorderedElementsAre("L1", "L2", "R1", "R2", "R7"));
}

TEST(SectionDrawingLabels, StandBesideTheTriangleOfTheirPoint) {
  SectionView view = WithGround(RoadView(), -4.07);
  view.targets = {TargetOf(ViewTarget::Item::Height, {3}, -0.07)};
  const SectionDrawing drawing = Draw(view);
  EXPECT_THAT(TextsOf(drawing, DrawingKind::Code), Contains("R1"));
  EXPECT_THAT(LeadersOf(drawing), IsEmpty());
  ExpectSound(drawing);
}

TEST(PaperGrid, KnowsLinesThatCrossBetweenItsCells) {
  PaperGrid grid({0.0, 20.0, 0.0, 20.0, false});
  grid.OccupyLine({0.1, 0.1}, {9.9, 9.9});
  EXPECT_FALSE(grid.IsLineFree({0.1, 9.9}, {9.9, 0.1}));
  EXPECT_TRUE(grid.IsLineFree({11.0, 1.0}, {19.0, 9.0}));
  EXPECT_EQ(grid.CoveredLength({12.0, 1.0}, {12.0, 9.0}), 0.0);
  EXPECT_NEAR(grid.CoveredLength({0.0, 5.0}, {10.0, 5.0}), 0.5, 0.5);
  EXPECT_NEAR(grid.CoveredLength({0.1, 0.1}, {5.0, 5.0}), std::hypot(4.9, 4.9), 1e-9);
}

TEST(SectionDrawingDimensions, ShowLengthsAlongSlopes) {
  SectionView view = RoadView();
  view.targets = {TargetOf(ViewTarget::Item::SlopeLength, {1, 2}, 7.2111)};
  const DrawnText value = TextOf(Draw(view), DrawingKind::Dimension, "SL=7.211");
  EXPECT_NEAR(value.angle, std::atan2(4.0, 6.0) * 180.0 / std::numbers::pi, 1e-9);
  EXPECT_LT(value.liftMm, 0.0) << "the ratio stands on the other side";
}

TEST(SectionDrawingDimensions, LeaveOutTargetsOnMissingPoints) {
  SectionView view = RoadView();
  for (const auto item : {ViewTarget::Item::Width, ViewTarget::Item::Height, ViewTarget::Item::SlopeLength}) {
    view.targets.push_back(TargetOf(item, {1, -1}, 1.0));
    view.targets.back().points[1].form = -1;
    view.targets.back().designValue.reset();
    view.targets.push_back(ViewTarget{});
    view.targets.back().item = item;
  }
  const SectionDrawing drawing = Draw(view);
  EXPECT_THAT(MarksOf(drawing, DrawnMark::Shape::Arrow), IsEmpty());
  EXPECT_THAT(MarksOf(drawing, DrawnMark::Shape::Height), SizeIs(1)) << "the one point that is there has a height";
}

// --- the sheet -------------------------------------------------------------------------------------------------------

TEST(SectionDrawingSheet, TakesTheLargestUsualScaleThatFits) {
  EXPECT_EQ(Draw(RoadView()).scale, 100.0);
  const auto stretched = [](double factor) {
    SectionView view = RoadView();
    for (ViewPoint& point : view.forms[0].points) point.place.offset *= factor;
    return view;
  };
  EXPECT_EQ(Draw(stretched(0.4)).scale, 50.0);
  EXPECT_EQ(Draw(stretched(2.0)).scale, 200.0);
  EXPECT_EQ(Draw(stretched(3.5)).scale, 250.0);
  EXPECT_EQ(Draw(stretched(10.0)).scale, 1000.0);
  for (const double factor : {0.01, 0.4, 1.0, 2.0, 5.0, 40.0, 1e4}) {
    const SectionDrawing drawing = Draw(stretched(factor));
    EXPECT_LE(WidthMm(drawing), 400.0 + 1e-6);
    EXPECT_LE(HeightMm(drawing), 277.0 + 1e-6);
    ExpectSound(drawing);
  }
}

TEST(SectionDrawingSheet, KeepsToTheScaleAndTheExaggerationAskedFor) {
  const SectionDrawing drawing = Draw(RoadView(), {5.0, 200.0});
  EXPECT_EQ(drawing.scale, 200.0);
  EXPECT_EQ(drawing.exaggeration, 5.0);
  EXPECT_THAT(TextsOf(drawing, DrawingKind::Frame), Contains("Scale H 1:200  V 1:40"));
  EXPECT_THAT(TextsOf(Draw(RoadView()), DrawingKind::Frame), Contains("Scale 1:100"));
  ExpectSound(drawing);
  for (const double nonsense : {0.0, -1.0, std::nan(""), HUGE_VAL}) {
    EXPECT_EQ(Draw(RoadView(), {nonsense, nonsense}).scale, 100.0);
    EXPECT_EQ(Draw(RoadView(), {nonsense, nonsense}).exaggeration, 1.0);
  }
}

TEST(SectionDrawingSheet, HasAxesInRoundSteps) {
  const Texts numbers = TextsOf(Draw(RoadView()), DrawingKind::Frame);
  for (const char* number : {"-10", "-8", "0", "2", "10", "-4", "-2"}) EXPECT_THAT(numbers, Contains(number));
  EXPECT_THAT(numbers, Contains("Height above CL (m)"));
  EXPECT_THAT(numbers, Contains("4 m")) << "the scale bar";
  EXPECT_THAT(TextsOf(Draw(WithGround(RoadView(), -4.0)), DrawingKind::Frame), Contains("Elevation (m)"));
}

TEST(SectionDrawingSheet, SaysWhichSectionItShows) {
  const auto titles = [](const SectionView& view, Language language = Language::English) {
    return TextsOf(Draw(view, {1.0, 0.0, language}), DrawingKind::Title);
  };
  SectionView view = WithGround(RoadView(), -4.07);
  view.alignment = "CL-1";
  view.isBehindChange = true;
  view.isControlSection = true;
  EXPECT_THAT(titles(view), ElementsAre("Station 120.0000 m",
                                        "CL-1   behind the change of shape   control section   "
                                        "FH=0.000   GH=-4.070"));
  EXPECT_THAT(titles(view, Language::Japanese), ElementsAre("測点 120.0000 m",
                                                            "CL-1   断面変化点（後）   管理断面   FH=0.000   "
                                                            "GH=-4.070"));
  view.name = "bridge";
  EXPECT_EQ(titles(view)[0], "Station 120.0000 m  bridge");
  view.stationText = "No.6+0.0000";
  EXPECT_EQ(titles(view)[0], "No.6+0.0000  bridge");
  view.name = "No.6";
  EXPECT_EQ(titles(view)[0], "No.6+0.0000");
  view.station.reset();
  view.stationText.clear();
  EXPECT_EQ(titles(view)[0], "No.6");
}

TEST(SectionDrawingSheet, CutsTitlesThatAreTooLong) {
  SectionView view = RoadView();
  for (int i = 0; i < 100; ++i) view.name += "長い名前";
  view.alignment = view.name;
  const SectionDrawing drawing = Draw(view);
  EXPECT_EQ(drawing.scale, 100.0);
  EXPECT_LE(WidthMm(drawing), 400.0);
  const Texts titles = TextsOf(drawing, DrawingKind::Title);
  EXPECT_THAT(titles[0], testing::AllOf(testing::StartsWith("Station 120.0000 m  長い名前"), testing::EndsWith("…")));
  EXPECT_THAT(titles[1], testing::EndsWith("…"));
  ExpectSound(drawing);
}

TEST(SectionDrawingSheet, KeepsItsScaleUnderATitleThatFillsThePaper) {
  SectionView view = RoadView();
  view.name = std::string(400, 'N');
  const SectionDrawing drawing = Draw(view);
  EXPECT_EQ(drawing.scale, 100.0);
  EXPECT_LE(WidthMm(drawing), 400.0 + 1e-6);
}

TEST(SectionDrawingSheet, MarksAnAssumedHeight) {
  SectionView view = WithGround(RoadView(), -4.07);
  EXPECT_THAT(TextsOf(Draw(view), DrawingKind::Title)[1], HasSubstr("FH=0.000"));
  view.isHeightAssumed = true;
  EXPECT_THAT(TextsOf(Draw(view), DrawingKind::Title)[1], HasSubstr("FH≒0.000"));
}

TEST(SectionDrawingSheet, BreaksNotesBetweenCharacters) {
  SectionView view = RoadView();
  std::string name;
  for (int i = 0; i < 3000; ++i) name += "あ";
  view.notes = {{vorn_host::ViewNote::Kind::FormWithoutPoints, name}};
  for (const std::string& line : TextsOf(Draw(view), DrawingKind::Title)) {
    EXPECT_FALSE(!line.empty() && vorn_host::IsUtf8Continuation(line.front())) << line;
  }
}

TEST(SectionDrawingSheet, TellsHowManyWidthsAreNotDrawn) {
  SectionDrawing drawing;
  EXPECT_THAT(NotesOf(RoadView(), drawing), IsEmpty());
  drawing.widthsLeftOut = 2;
  ASSERT_THAT(NotesOf(RoadView(), drawing), SizeIs(1));
  EXPECT_EQ(NotesOf(RoadView(), drawing)[0].points, 2);
}

TEST(TextWidths, AreHalfOfTheSizeForHalfWidthKatakana) {
  EXPECT_EQ(vorn_host::TextWidth("｡ｱﾟ", 1.0), vorn_host::TextWidth("abc", 1.0));
  EXPECT_EQ(vorn_host::TextWidth("｠ア", 1.0), 2.0);
}

TEST(SectionDrawingSheet, ShowsTheNotesOnAsManyLinesAsTheyNeed) {
  SectionView view = RoadView();
  view.notes = {{ViewNote::Kind::FormWithoutPoints, "S"},
                {ViewNote::Kind::FormWithoutPoints, std::string(3000, 'x')},
                {ViewNote::Kind::FormWithoutPoints, "日本語日本語"}};
  const Texts titles = TextsOf(Draw(view), DrawingKind::Title);
  EXPECT_THAT(titles, Contains("* form S has no points"));
  EXPECT_GT(titles.size(), 6u);
  ExpectSound(Draw(view));
  view.notes.assign(100, {ViewNote::Kind::GroundWithoutHeight});
  EXPECT_THAT(TextsOf(Draw(view), DrawingKind::Title), Contains("* ..."));
}

TEST(SectionDrawingSheet, SaysItsNotesInItsLanguage) {
  SectionView view = RoadView();
  view.notes = {{.kind = ViewNote::Kind::HeightFromGround, .height = 62.5}};
  EXPECT_THAT(TextsOf(Draw(view, {1.0, 0.0, Language::Japanese}), DrawingKind::Title),
              Contains(testing::StartsWith("* 中心線の標高 62.500 m は")));
}

TEST(SectionDrawingSheet, IsTheSameInEveryLanguageButForItsWords) {
  SectionView view = RoadView();
  // Two lines of English notes and one of Japanese ones, or the other way round.
  view.notes = {{.kind = ViewNote::Kind::HeightFromGround, .height = 62.5}};
  view.alignment = std::string(60, 'x');
  for (const double rise : {1.0, 4.0, 4.3, 4.5, 5.0}) {
    for (ViewPoint& point : view.forms[0].points) point.place.height *= rise;
    const std::vector<SectionDrawing> drawings =
        DrawInEach(std::array{Language::English, Language::Japanese}, view, {});
    ASSERT_THAT(drawings, SizeIs(2));
    EXPECT_EQ(drawings[0].scale, drawings[1].scale);
    EXPECT_THAT(TextsOf(drawings[0], DrawingKind::Frame), Contains("Offset from CL (m)"));
    EXPECT_THAT(TextsOf(drawings[1], DrawingKind::Frame), Contains("CLからの距離 (m)"));
    EXPECT_EQ(LinesOf(drawings[0], DrawingKind::Slope)[0].places, LinesOf(drawings[1], DrawingKind::Slope)[0].places);
    EXPECT_EQ(TextsOf(drawings[0], DrawingKind::Code), TextsOf(drawings[1], DrawingKind::Code));
    for (const SectionDrawing& drawing : drawings) {
      EXPECT_LE(HeightMm(drawing), 277.0 + 1e-6);
      ExpectSound(drawing);
    }
  }
}

TEST(SectionDrawingSheet, TakesNoLargerScaleThanTold) {
  DrawingOptions options;
  for (const double least : {1.0, 100.0, 100.1, 200.0, 333.0}) {
    options.leastScale = least;
    EXPECT_EQ(Draw(RoadView(), options).scale, least <= 100.0 ? 100.0 : least <= 200.0 ? 200.0 : 500.0);
  }
}

TEST(SectionDrawingSheet, IsMeasuredBeforeItIsDrawn) {
  for (const double factor : {0.1, 1.0, 3.0, 10.0, 500.0}) {
    SectionView view = WithGround(RoadView(), 0.0);
    for (ViewPoint& point : view.forms[0].points)
      point.place = {point.place.offset * factor, point.place.height * factor};
    for (const double exaggeration : {1.0, 20.0}) {
      const DrawingOptions options{exaggeration};
      const double scale = Draw(view, options).scale;
      EXPECT_LE(vorn_host::LargestScale(view, options), scale) << "never a smaller one than the drawing has";
      EXPECT_GT(vorn_host::LargestScale(view, options) * 2.6, scale) << "not far from it";
    }
  }
  EXPECT_EQ(vorn_host::LargestScale(RoadView(), {1.0, 333.0}), 333.0);
}

TEST(SectionDrawingSheet, IsThereWithoutAnythingOnIt) {
  ExpectSound(Draw(SectionView()));
  SectionView view = RoadView();
  view.forms[0].points.resize(1);
  view.forms[0].lines.clear();
  ExpectSound(Draw(view));
  view.forms[0].points.clear();
  ExpectSound(Draw(view));
}

TEST(SectionDrawingSheet, HoldsHugeSections) {
  for (const double size : {1e3, 1e5, 1e6}) {
    SectionView view = WithGround(RoadView(), 0.0);
    view.forms[0].points[2].place = {-size, -size};
    view.forms[0].points[4].place = {size, size};
    view.grounds[0].line = {{-size, -size}, {0.0, size}, {size, -size}};
    view.targets = {TargetOf(ViewTarget::Item::Width, {2, 4}, 2.0 * size),
                    TargetOf(ViewTarget::Item::Height, {4}, size)};
    ExpectSound(Draw(view));
  }
  ExpectSound(Draw(RoadView(), {1.0, 1.0}));
}

class DrawnSamples : public ToolTest, public testing::WithParamInterface<const char*> {};

TEST_P(DrawnSamples, AreSoundInEveryWay) {
  const DesignDocument document = DesignDocument::Read(Sample(GetParam()));
  const SectionViewer viewer(document);
  for (int i = 0; i < document.sets[0].GetXSectionArray().GetSize(); ++i) {
    SCOPED_TRACE(std::string(GetParam()) + " " + std::to_string(i));
    ExpectSound(Draw(viewer.Of(0, i)));
    ExpectSound(Draw(viewer.Of(0, i, 100.0), {4.0, 0.0, Language::Japanese}));
    ExpectSound(Draw(viewer.Of(0, i), {1.0, 1000.0}));
  }
}

/// The farm's ditches are a few millimetres wide on paper, with four points each.
TEST_F(ToolTest, DrawingsNameNearlyEveryPointOfACrowdedSection) {
  const DesignDocument document = DesignDocument::Read(Sample("farm-maff-1.0.xml"));
  const SectionViewer viewer(document);
  for (int i = 0; i < document.sets[0].GetXSectionArray().GetSize(); ++i) {
    std::size_t named = 0;
    const SectionView view = viewer.Of(0, i);
    for (const ViewForm& form : view.forms) {
      named += static_cast<std::size_t>(std::count_if(form.points.begin(), form.points.end(),
                                                      [](const ViewPoint& point) { return point.from >= 0; }));
    }
    EXPECT_GE(TextsOf(Draw(view), DrawingKind::Code).size() * 20, named * 17) << i << " of " << named;
  }
}

INSTANTIATE_TEST_SUITE_P(AllSamples, DrawnSamples,
                         testing::Values("road-4.1.xml", "road-with-geometry-4.0.xml", "river-2.0.xml",
                                         "farm-maff-1.0.xml"),
                         [](const auto& sample) { return "Sample" + std::to_string(sample.index); });

}  // namespace
