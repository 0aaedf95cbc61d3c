// Drawings as SVG: what stands where, in which class, and texts that stay texts.

#include "host/drawing/svg_writer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <pugixml.hpp>
#include <string>
#include <vector>

#include "host/drawing/drawing_style.h"
#include "tests/host/editing.h"

namespace {

using namespace host_test;  // NOLINT(google-build-using-namespace): the vocabulary of these tests
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using vorn_host::DrawingKind;
using vorn_host::DrawingStyle;
using vorn_host::DrawingStyles;
using vorn_host::DrawnLine;
using vorn_host::DrawnMark;
using vorn_host::DrawnText;
using vorn_host::SectionDrawing;
using vorn_host::WriteSvg;

/// 20 m wide and 10 m high at 1:100: 200 mm by 100 mm.
SectionDrawing Empty() {
  SectionDrawing drawing;
  drawing.left = -10.0;
  drawing.right = 10.0;
  drawing.bottom = 50.0;
  drawing.top = 60.0;
  return drawing;
}

SectionDrawing WithText(const DrawnText& text) {
  SectionDrawing drawing = Empty();
  drawing.texts.push_back(text);
  return drawing;
}

DrawnText Text(const std::string& label, DrawingKind kind = DrawingKind::Code) {
  DrawnText text{kind, {0.0, 55.0}};
  text.text = label;
  return text;
}

pugi::xml_document Parsed(const std::string& svg) {
  pugi::xml_document document;
  const pugi::xml_parse_result result = document.load_buffer(svg.data(), svg.size(), pugi::parse_full);
  EXPECT_TRUE(result) << result.description() << "\n" << svg;
  return document;
}

std::string Attribute(const pugi::xml_document& document, const char* path, const char* name) {
  return document.select_node(path).node().attribute(name).value();
}

TEST(SvgWriter, IsInMillimetresOnPaper) {
  const auto document = Parsed(WriteSvg(Empty(), "title"));
  const pugi::xml_node svg = document.child("svg");
  EXPECT_STREQ(svg.attribute("xmlns").value(), "http://www.w3.org/2000/svg");
  EXPECT_STREQ(svg.attribute("width").value(), "200mm");
  EXPECT_STREQ(svg.attribute("height").value(), "100mm");
  EXPECT_STREQ(svg.attribute("viewBox").value(), "0 0 200 100");
  EXPECT_STREQ(svg.child_value("title"), "title");
}

TEST(SvgWriter, DrawsLinesFromTheUpperLeftCorner) {
  SectionDrawing drawing = Empty();
  drawing.lines.push_back({DrawingKind::Slope, {{-10.0, 60.0}, {0.0, 55.0}, {10.0, 50.005}}});
  EXPECT_EQ(Attribute(Parsed(WriteSvg(drawing, "")), "//g[@class='slope']/polyline", "points"), "0,0 100,50 200,99.95");
  drawing.exaggeration = 2.0;
  EXPECT_EQ(Attribute(Parsed(WriteSvg(drawing, "")), "//g[@class='slope']/polyline", "points"),
            "0,0 100,100 200,199.9");
}

TEST(SvgWriter, SetsTextsWhereTheyStand) {
  DrawnText text = Text("1:1.5", DrawingKind::Grade);
  text.liftMm = 2.0;
  auto document = Parsed(WriteSvg(WithText(text), ""));
  EXPECT_EQ(Attribute(document, "//g[@class='grade']/text", "x"), "100");
  EXPECT_EQ(Attribute(document, "//g[@class='grade']/text", "y"), "48");
  EXPECT_EQ(Attribute(document, "//g[@class='grade']/text", "font-size"), "2.5");
  EXPECT_EQ(Attribute(document, "//g[@class='grade']/text", "text-anchor"), "middle");
  EXPECT_EQ(Attribute(document, "//g[@class='grade']/text", "transform"), "");
  text.alongMm = 1.5;
  EXPECT_EQ(Attribute(Parsed(WriteSvg(WithText(text), "")), "//text", "x"), "101.5");
  text.alongMm = 0.0;
  text.angle = 90.0;
  text.anchor = DrawnText::Anchor::End;
  document = Parsed(WriteSvg(WithText(text), ""));
  EXPECT_EQ(Attribute(document, "//text", "x"), "98") << "across its direction";
  EXPECT_EQ(Attribute(document, "//text", "y"), "50");
  EXPECT_EQ(Attribute(document, "//text", "text-anchor"), "end");
  EXPECT_EQ(Attribute(document, "//text", "transform"), "rotate(-90 98 50)");
}

TEST(SvgWriter, DrawsEveryKindOfMark) {
  SectionDrawing drawing = Empty();
  using Shape = DrawnMark::Shape;
  for (const Shape shape : {Shape::Point, Shape::Crossing, Shape::Height, Shape::Arrow}) {
    drawing.marks.push_back({DrawingKind::Dimension, shape, {0.0, 55.0}, shape == Shape::Height ? -90.0 : 0.0});
  }
  const auto document = Parsed(WriteSvg(drawing, ""));
  EXPECT_EQ(Attribute(document, "//circle[@class='mark point']", "cx"), "100");
  EXPECT_EQ(Attribute(document, "//circle[@class='mark cross']", "cy"), "50");
  EXPECT_EQ(Attribute(document, "//polygon[@class='mark height']", "points"), "100,50 98.7,47.8 101.3,47.8");
  EXPECT_EQ(Attribute(document, "//polygon[@class='mark arrow']", "points"), "100,50 97.8,50.35 97.8,49.65")
      << "it points to the right";
}

TEST(SvgWriter, GivesEveryKindAClassOfItsOwnInTheOrderOfTheStyles) {
  SectionDrawing drawing = Empty();
  for (const DrawingStyle& style : DrawingStyles()) {
    drawing.lines.insert(drawing.lines.begin(), {style.kind, {{0.0, 55.0}, {1.0, 56.0}}});
    drawing.texts.push_back(Text("text", style.kind));
  }
  const auto document = Parsed(WriteSvg(drawing, ""));
  std::vector<std::string> classes;
  for (const pugi::xpath_node group : document.select_nodes("/svg/g/g")) {
    classes.emplace_back(group.node().attribute("class").value());
    EXPECT_TRUE(group.node().child("polyline"));
    EXPECT_TRUE(group.node().child("text"));
  }
  std::vector<std::string> names;
  for (const DrawingStyle& style : DrawingStyles()) names.emplace_back(style.name);
  EXPECT_EQ(classes, names);
}

TEST(SvgWriter, LooksAsTheStylesSay) {
  const std::string style = Parsed(WriteSvg(Empty(), "")).child("svg").child_value("style");
  EXPECT_THAT(style, HasSubstr("\n.slope{stroke:#0072b2;stroke-width:0.5}.slope text{fill:#000000}"));
  EXPECT_THAT(style, HasSubstr("\n.center-line{stroke:#000000;stroke-width:0.18;stroke-dasharray:8 1.5 1.5 1.5}"));
  EXPECT_THAT(style, HasSubstr(".grade text{fill:#00507d}"));
  EXPECT_THAT(style, HasSubstr(".dimension .arrow{fill:#000000}"));
  EXPECT_THAT(style, HasSubstr("\n.cross{stroke-width:0.3}\n"));
}

TEST(SvgWriter, FetchesNothing) {
  const std::string style = Parsed(WriteSvg(Empty(), "")).child("svg").child_value("style");
  EXPECT_THAT(style, HasSubstr("Noto Sans CJK JP"));
  EXPECT_THAT(style, Not(HasSubstr("url(")));
  EXPECT_THAT(style, Not(HasSubstr("@import")));
}

TEST(SvgWriter, KeepsHostileTextsTexts) {
  const std::string hostile = "</text><script>alert('1')</script> & \"]]>";
  const std::string svg = WriteSvg(WithText(Text(hostile, DrawingKind::Title)), hostile);
  EXPECT_THAT(svg, Not(HasSubstr("<script")));
  const auto document = Parsed(svg);
  EXPECT_STREQ(document.select_node("//text").node().child_value(), hostile.c_str());
  EXPECT_STREQ(document.child("svg").child_value("title"), hostile.c_str());
  EXPECT_STREQ(document.child("svg").child_value("desc"), hostile.c_str());
  EXPECT_TRUE(document.select_nodes("//script").empty());
}

TEST(SvgWriter, ReplacesControlCharacters) {
  const std::string text("a\0b\x1b[31m\x7f\n\t", 11);
  EXPECT_THAT(WriteSvg(WithText(Text(text)), text), HasSubstr(">a\uFFFDb\uFFFD[31m\uFFFD\uFFFD\uFFFD</text>"));
  EXPECT_TRUE(Parsed(WriteSvg(WithText(Text(text)), text)).child("svg"));
}

TEST(SvgWriter, KeepsCharactersOfEveryScript) {
  const std::string text = U8(u8"路面 ｱ é Ω 𠮷 🚧");
  EXPECT_STREQ(Parsed(WriteSvg(WithText(Text(text)), text)).select_node("//text").node().child_value(), text.c_str());
}

TEST(SvgWriter, SetsSeveralDrawingsBelowEachOther) {
  SectionDrawing wide = WithText(Text("second"));
  wide.right = 30.0;
  const auto document = Parsed(WriteSvg({WithText(Text("first")), wide}, ""));
  EXPECT_STREQ(document.child("svg").attribute("viewBox").value(), "0 0 400 200");
  EXPECT_EQ(Attribute(document, "/svg/g[2]", "transform"), "translate(0 100)");
  EXPECT_STREQ(document.select_node("/svg/g[2]//text").node().child_value(), "second");
  EXPECT_THAT(WriteSvg(std::vector<SectionDrawing>(), ""), HasSubstr("viewBox=\"0 0 0 0\""));
}

TEST(SvgWriter, BeginsAsXmlInUtf8) {
  EXPECT_THAT(WriteSvg(Empty(), ""), StartsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg "));
}

}  // namespace
