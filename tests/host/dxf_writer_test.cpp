// DXF as bytes: what any reader of the format has to find.

#include "host/drawing/dxf_writer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <string>
#include <vector>

#include "host/document/document_error.h"
#include "tests/host/drawn_sections.h"

namespace {

using namespace host_test;  // NOLINT(google-build-using-namespace): the vocabulary of these tests
using namespace vorn_host;  // NOLINT(google-build-using-namespace)
using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::Pair;
using testing::SizeIs;
using testing::StartsWith;

constexpr std::array<DxfLayer, 2> kTwoLayers = {
    {{"ROAD", 1, DxfLineType::Continuous}, {"AXIS", 140, DxfLineType::Center}}};

DxfHeader SmallHeader() {
  DxfHeader header;
  header.extents = {{-1.5, -2.0}, {30.0, 40.25}};
  header.metresPerMillimetre = 0.2;
  header.layers = kTwoLayers;
  header.views = {{"S0001", {{0.0, 0.0}, {10.0, 5.0}}}};
  return header;
}

/// The file that holds what is drawn.
template <typename Draws>
std::string Written(const Draws& draw, const DxfHeader& header = SmallHeader()) {
  std::string file;
  DxfWriter writer([&](std::string_view piece) { file += piece; }, header);
  draw(writer);
  writer.Finish();
  return file;
}

std::string WrittenEmpty() {
  return Written([](DxfWriter&) {});
}

TEST(DxfWriter, ConsistsOfCodesAndValuesOnLinesOfTheirOwn) {
  const std::string file = WrittenEmpty();
  EXPECT_THAT(file,
              AllOf(StartsWith("  0\r\nSECTION\r\n  2\r\nHEADER\r\n"), EndsWith("  0\r\nENDSEC\r\n  0\r\nEOF\r\n")));
  int lines = 0;
  for (std::size_t at = 0; at < file.size(); ++at) {
    if (file[at] != '\n') continue;
    ++lines;
    EXPECT_EQ(file[at - 1], '\r');
  }
  EXPECT_EQ(lines % 2, 0);
}

TEST(DxfWriter, TellsVersionCodePageAndExtents) {
  std::map<std::string, DxfGroups> variables;
  std::string name;
  for (const auto& [code, value] : GroupsOf(WrittenEmpty())) {
    if (code == 0 && value == "ENDSEC") break;
    if (code == 9) {
      name = value;
    } else if (!name.empty()) {
      variables[name].emplace_back(code, value);
    }
  }
  EXPECT_THAT(variables["$ACADVER"], ElementsAre(Pair(1, "AC1009")));
  EXPECT_THAT(variables["$DWGCODEPAGE"], ElementsAre(Pair(3, "ANSI_932")));
  EXPECT_THAT(variables["$EXTMIN"], ElementsAre(Pair(10, "-1.5"), Pair(20, "-2.0"), Pair(30, "0.0")));
  EXPECT_THAT(variables["$EXTMAX"], ElementsAre(Pair(10, "30.0"), Pair(20, "40.25"), Pair(30, "0.0")));
  EXPECT_THAT(variables["$LTSCALE"], ElementsAre(Pair(40, "0.2")));
}

TEST(DxfWriter, HasATableEntryForEachLayerLineTypeStyleAndView) {
  const std::string file = WrittenEmpty();
  const std::vector<DxfItem> layers = ItemsOf(file, "LAYER");
  ASSERT_THAT(layers, SizeIs(3));
  EXPECT_EQ(layers[0][2], "0");
  EXPECT_EQ(layers[1][2], "ROAD");
  EXPECT_EQ(layers[1][62], "1");
  EXPECT_EQ(layers[1][6], "CONTINUOUS");
  EXPECT_EQ(layers[2][2], "AXIS");
  EXPECT_EQ(layers[2][62], "140");
  EXPECT_EQ(layers[2][6], "CENTER");

  const std::vector<DxfItem> types = ItemsOf(file, "LTYPE");
  ASSERT_THAT(types, SizeIs(3));
  for (const DxfItem& type : types) {
    double length = 0.0;
    int dashes = 0;
    for (const auto& [code, value] : type.groups) {
      if (code != 49) continue;
      length += std::abs(std::stod(value));
      ++dashes;
    }
    EXPECT_EQ(type[73], std::to_string(dashes)) << type[2];
    EXPECT_DOUBLE_EQ(type.Real(40), length) << type[2];
  }

  const std::vector<DxfItem> styles = ItemsOf(file, "STYLE");
  ASSERT_THAT(styles, SizeIs(1));
  EXPECT_NE(styles[0][4], "") << "a font for Japanese text";

  const std::vector<DxfItem> views = ItemsOf(file, "VIEW");
  ASSERT_THAT(views, SizeIs(1));
  EXPECT_EQ(views[0][2], "S0001");
  EXPECT_EQ(views[0].Place(10), (DxfPlace{5.0, 2.5}));
  EXPECT_EQ(views[0].Real(41), 10.0);
  EXPECT_EQ(views[0].Real(40), 5.0);
}

TEST(DxfWriter, OpensWithEverythingInSight) {
  const std::vector<DxfItem> ports = ItemsOf(WrittenEmpty(), "VPORT");
  ASSERT_THAT(ports, SizeIs(1));
  EXPECT_EQ(ports[0].Place(12), (DxfPlace{14.25, 19.125}));
  EXPECT_GE(ports[0].Real(40), 42.25);
  EXPECT_EQ(ports[0][36], "1.0") << "seen from above";
}

TEST(DxfWriter, WritesLines) {
  const std::string file = Written([](DxfWriter& writer) { writer.Line("ROAD", {1.0, 2.0}, {-3.5, 0.001}); });
  const std::vector<DxfItem> lines = ItemsOf(file, "LINE");
  ASSERT_THAT(lines, SizeIs(1));
  EXPECT_THAT(lines[0].groups, ElementsAre(Pair(8, "ROAD"), Pair(10, "1.0"), Pair(20, "2.0"), Pair(30, "0.0"),
                                           Pair(11, "-3.5"), Pair(21, "0.001"), Pair(31, "0.0")));
}

TEST(DxfWriter, WritesPolylinesAsVerticesUpToASequenceEnd) {
  const std::vector<DxfPlace> places = {{0.0, 0.0}, {1.0, 0.5}, {2.0, 0.0}};
  const std::string file = Written([&](DxfWriter& writer) { writer.Polyline("AXIS", places); });
  const std::vector<DxfItem> polylines = ItemsOf(file, "POLYLINE");
  ASSERT_THAT(polylines, SizeIs(1));
  EXPECT_EQ(polylines[0][66], "1") << "vertices follow";
  EXPECT_EQ(polylines[0][70], "0") << "not closed";
  const std::vector<DxfItem> vertices = ItemsOf(file, "VERTEX", "AXIS");
  ASSERT_THAT(vertices, SizeIs(3));
  for (std::size_t i = 0; i < places.size(); ++i) EXPECT_EQ(vertices[i].Place(), places[i]);
  EXPECT_THAT(ItemsOf(file, "SEQEND", "AXIS"), SizeIs(1));
}

TEST(DxfWriter, WritesAShortPolylineAsALineOrNotAtAll) {
  const std::vector<DxfPlace> two = {{0.0, 0.0}, {1.0, 0.5}};
  const std::string file = Written([&](DxfWriter& writer) {
    writer.Polyline("ROAD", two);
    writer.Polyline("ROAD", std::vector<DxfPlace>{{5.0, 5.0}});
    writer.Polyline("ROAD", std::vector<DxfPlace>{});
  });
  EXPECT_THAT(ItemsOf(file, "LINE"), SizeIs(1));
  EXPECT_THAT(ItemsOf(file, "POLYLINE"), SizeIs(0));
}

TEST(DxfWriter, WritesPointsCirclesAndTriangles) {
  const std::string file = Written([](DxfWriter& writer) {
    writer.Point("ROAD", {1.0, 2.0});
    writer.Circle("ROAD", {3.0, 4.0}, 0.25);
    writer.FilledTriangle("AXIS", {0.0, 0.0}, {1.0, 0.0}, {0.0, 1.0});
  });
  EXPECT_EQ(ItemsOf(file, "POINT").at(0).Place(), (DxfPlace{1.0, 2.0}));
  EXPECT_EQ(ItemsOf(file, "CIRCLE").at(0).Place(), (DxfPlace{3.0, 4.0}));
  EXPECT_EQ(ItemsOf(file, "CIRCLE").at(0)[40], "0.25");
  const DxfItem solid = ItemsOf(file, "SOLID", "AXIS").at(0);
  EXPECT_EQ(solid.Place(11), (DxfPlace{1.0, 0.0}));
  EXPECT_EQ(solid.Place(12), solid.Place(13)) << "three corners";
}

TEST(DxfWriter, WritesTextsWithHeightAngleAndAnchor) {
  const std::string file = Written([](DxfWriter& writer) {
    writer.Text("ROAD", {1.0, 2.0}, "start", {0.5, 0.0, DxfTextStyle::Anchor::Start});
    writer.Text("ROAD", {1.0, 2.0}, "middle", {0.5, 30.0, DxfTextStyle::Anchor::Middle});
    writer.Text("ROAD", {1.0, 2.0}, "end", {0.5, -90.0, DxfTextStyle::Anchor::End});
    writer.Text("ROAD", {1.0, 2.0}, "", {0.5});
  });
  const std::vector<DxfItem> texts = ItemsOf(file, "TEXT");
  ASSERT_THAT(texts, SizeIs(3));
  EXPECT_EQ(texts[0][40], "0.5");
  EXPECT_EQ(texts[0][72], "");
  EXPECT_EQ(texts[0].Place(10), (DxfPlace{1.0, 2.0}));
  EXPECT_EQ(texts[1][50], "30.0");
  EXPECT_EQ(texts[1][72], "1");
  EXPECT_EQ(texts[1].Place(11), (DxfPlace{1.0, 2.0}));
  EXPECT_EQ(texts[2][50], "-90.0");
  EXPECT_EQ(texts[2][72], "2");
}

TEST(DxfWriter, WritesNumbersInFullWithoutExponents) {
  const auto x = [](double value) {
    return ItemsOf(Written([&](DxfWriter& writer) { writer.Point("ROAD", {value, 0.0}); }), "POINT").at(0)[10];
  };
  EXPECT_EQ(x(0.1 + 0.2), "0.3");
  EXPECT_EQ(x(-0.0), "0.0");
  EXPECT_EQ(x(-1e-12), "0.0");
  EXPECT_EQ(x(1e-9), "0.000000001");
  EXPECT_EQ(x(123456.123456789), "123456.123456789");
  EXPECT_EQ(x(1e20), "100000000000000000000.0");
}

TEST(DxfWriter, RefusesWhatIsNoNumber) {
  const auto write = [](double value) {
    return Written([&](DxfWriter& writer) { writer.Point("ROAD", {0.0, value}); });
  };
  EXPECT_THROW((void)write(std::numeric_limits<double>::infinity()), DocumentError);
  EXPECT_THROW((void)write(std::numeric_limits<double>::quiet_NaN()), DocumentError);
}

TEST(DxfWriter, PassesTheFileOnInSmallPieces) {
  std::size_t largest = 0;
  std::size_t total = 0;
  const DxfHeader header = SmallHeader();
  DxfWriter writer(
      [&](std::string_view piece) {
        largest = std::max(largest, piece.size());
        total += piece.size();
      },
      header);
  for (int i = 0; i < 50'000; ++i) writer.Line("ROAD", {1.0 * i, 0.0}, {0.0, 1.0});
  writer.Finish();
  EXPECT_GT(total, 2'000'000u);
  EXPECT_LT(largest, 100'000u);
}

// --- texts -----------------------------------------------------------------------------------------------------------

TEST(DxfText, IsCodePage932) {
  EXPECT_EQ(DxfText("No.6+0.0000"), "No.6+0.0000");
  EXPECT_EQ(DxfText("盛土"), "\x90\xB7\x93\x79");
  EXPECT_EQ(DxfText("ｶﾅ"), "\xB6\xC5");
}

TEST(DxfText, EscapesWhatTheCodePageLacks) {
  EXPECT_EQ(DxfText("café"), "caf\\U+00E9");
  EXPECT_EQ(DxfText("𠮷野"), "\\U+D842\\U+DFB7\x96\xEC");
  EXPECT_EQ(DxfText("a\xFF"
                    "b"),
            "a\\U+FFFDb");
}

TEST(DxfText, KeepsTheLineWhole) {
  EXPECT_EQ(DxfText("a\r\n  0\nLINE\tb\x1B\x7F"), "a    0 LINE b  ");
  EXPECT_EQ(DxfText(std::string_view("a\0b", 3)), "a b");
  EXPECT_EQ(DxfText("a\xC2\x85"
                    "b\xE2\x80\xA8"
                    "c"),
            "a b c");
}

TEST(DxfText, WritesSignsThatAreNoControlCodesSo) {
  EXPECT_EQ(DxfText("-1.5%"), "-1.5%");
  EXPECT_EQ(DxfText("100%%d%"),
            "100\x81\x93\x81\x93"
            "d%");
  EXPECT_EQ(DxfText("^J"), "^ J");
  EXPECT_EQ(DxfText("\\U+0041"), "\\\\U+0055+0041");
  EXPECT_EQ(DxfText("\\M+n8140"), "\\\\U+004D+n8140");
  EXPECT_EQ(DxfText("表U+0041"), "\x95\x5C\\U+0055+0041") << "the second byte reads like a backslash";
  EXPECT_EQ(DxfText("C:\\Users"), "C:\\Users");
}

TEST(DxfText, IsCutBetweenCharactersAtTheLimit) {
  const std::string longest(255, 'a');
  EXPECT_EQ(DxfText(longest), longest);
  EXPECT_EQ(DxfText(longest + "b"), std::string(252, 'a') + "...");
  std::string japanese;
  for (int i = 0; i < 200; ++i) japanese += "道";
  std::string kept;
  for (int i = 0; i < 126; ++i) kept += "\x93\xB9";
  EXPECT_EQ(DxfText(japanese), kept + "...");
}

}  // namespace
