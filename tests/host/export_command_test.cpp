// `vorn export`: cross sections for CAD and for scripts.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <vector>

#include "tests/host/drawing_tool_test.h"
#include "tests/host/drawn_sections.h"
#include "tests/host/editing.h"
#include "tests/host/tool.h"

namespace {

using namespace host_test;  // NOLINT(google-build-using-namespace): the vocabulary of these tests
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

class ExportCommand : public DrawingToolTest {
 protected:
  /// The path of a design of that text.
  [[nodiscard]] std::string Design(const std::string& text) const {
    WriteAll(Path("in.xml"), text);
    return Path("in.xml");
  }
  /// What is exported of a design, as a file of that name.
  [[nodiscard]] std::string Exported(const std::string& design, const std::string& name,
                                     const std::vector<std::string>& options = {}) const {
    std::vector<std::string> arguments = {"export", design, "-o", Path(name)};
    arguments.insert(arguments.end(), options.begin(), options.end());
    (void)Output(arguments);
    return ReadAll(Path(name));
  }
};

TEST_F(ExportCommand, TakesTheFormatFromTheName) {
  EXPECT_THAT(Exported(Sample("road-4.1.xml"), "x.dxf"), StartsWith("  0\r\nSECTION\r\n"));
  EXPECT_THAT(Exported(Sample("road-4.1.xml"), "x.CSV"), StartsWith("set,section,"));
  EXPECT_THAT(Exported(Sample("road-4.1.xml"), "x.geojson"), StartsWith("{\"type\":\"FeatureCollection\""));
  EXPECT_THAT(Exported(Sample("road-4.1.xml"), "x.json"), StartsWith("{\"type\":\"FeatureCollection\""));
  EXPECT_THAT(Exported(Sample("road-4.1.xml"), "x.dxf", {"--format", "csv"}), StartsWith("set,section,"));
}

TEST_F(ExportCommand, HasToKnowTheFormat) {
  ExpectFailure({"export", Sample("road-4.1.xml"), "-o", Path("x.txt")}, HasSubstr("--format"));
  ExpectFailure({"export", Sample("road-4.1.xml"), "-o", Path("x")}, HasSubstr("--format"));
  ExpectFailure({"export", Sample("road-4.1.xml")}, HasSubstr("--format"));
  ExpectFailure({"export", Sample("road-4.1.xml"), "--format", "dwg"}, HasSubstr("--format"));
  EXPECT_EQ(FileCount(), 0u);
}

TEST_F(ExportCommand, TellsWhatItWrote) {
  EXPECT_THAT(Output({"export", Sample("road-4.1.xml"), "-o", Path("x.dxf"), "--scale", "200"}),
              AllOf(HasSubstr("Written             " + Path("x.dxf")), HasSubstr("Format              dxf"),
                    HasSubstr("Cross sections      10"), HasSubstr("Scale of texts      1:200")));
  const Json json = OutputJson({"export", Sample("road-4.1.xml"), "-o", Path("x.csv"), "--json"});
  EXPECT_EQ(json["written"], Path("x.csv"));
  EXPECT_EQ(json["format"], "csv");
  EXPECT_EQ(json["crossSections"], 10);
  EXPECT_GT(json["rows"], 100);
  EXPECT_TRUE(json["features"].is_null());
  EXPECT_TRUE(json["notes"].is_number());
}

TEST_F(ExportCommand, TellsAScaleWithItsDecimals) {
  EXPECT_THAT(Output({"export", Sample("road-4.1.xml"), "-o", Path("x.dxf"), "--scale", "1.4"}),
              HasSubstr("Scale of texts      1:1.4\n"));
  EXPECT_THAT(ReadAll(Path("x.dxf")), HasSubstr("10 cross sections, 1:1.4, metres"));
}

TEST_F(ExportCommand, WritesToTheStandardOutput) {
  const ToolRun run = Vorn({"export", Sample("river-2.0.xml"), "--format", "csv"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.out, Exported(Sample("river-2.0.xml"), "x.csv"));
  ExpectFailure({"export", Sample("river-2.0.xml"), "--format", "csv", "--json"}, HasSubstr("--json"));
}

TEST_F(ExportCommand, SaysWhereThereIsMoreToKnow) {
  const std::string design = Design(OneSection(FormXml("S", kFillType, "")));
  const ToolRun run = Vorn({"export", design, "--format", "geojson"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_THAT(run.err, AllOf(StartsWith("vorn: 1 note"), HasSubstr("-o")));
  EXPECT_THAT(Output({"export", design, "-o", Path("x.geojson")}), AllOf(HasSubstr("Notes:"), HasSubstr("S")));
}

TEST_F(ExportCommand, SaysOfWhichSectionANoteIs) {
  const auto notesOf = [&](const std::string& text) {
    return OutputJson({"export", Design(text), "-o", Path("x.csv"), "--json"})["firstNotes"];
  };
  const std::string empty = FormXml("S", kFillType, "");
  const std::string section = Replaced(SectionXml("20.0000", empty), "<tsf:XSection", "<tsf:XSection name=\"Bridge\"");
  EXPECT_EQ(notesOf(DesignXml(section)), Json::array({"20.0000 (Bridge): form S has no points"}));
  EXPECT_EQ(notesOf(DesignXml(Replaced(section, "cumulativeDist=\"20.0000\"", ""))),
            Json::array({"no station (Bridge): form S has no points"}));
  EXPECT_EQ(notesOf(Replaced(DesignXml(section), "</tsf:XSections>", "</tsf:XSections>" + SetXml(section))),
            Json::array(
                {"set 1 > 20.0000 (Bridge): form S has no points", "set 2 > 20.0000 (Bridge): form S has no points"}));
}

#ifndef _WIN32  // only POSIX systems have a device that is always full
TEST_F(ExportCommand, SaysWhenTheStandardOutputIsFull) {
  for (const std::string format : {"dxf", "csv", "geojson"}) {
    const ToolRun run =
        Shell(Command({"export", Sample("road-4.1.xml"), "--format", format}) + " >/dev/full 2>" + Quoted(Path("err")));
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_THAT(ReadAll(Path("err")), HasSubstr("vorn: "));
  }
}
#endif

TEST_F(ExportCommand, RefusesAnEmptyFileName) {
  ExpectFailure({"export", Sample("road-4.1.xml"), "-o", "", "--format", "csv"},
                HasSubstr("the name of the file is empty"));
}

TEST_F(ExportCommand, KeepsTargetsThatStandAtNoSection) {
  const std::string design =
      Design(DesignXml(SectionXml("20.0000", FillForm("S")) + WidthXml("30.0000", "S", "L1", "R1")));
  const std::string out = Path("targets.csv");
  EXPECT_THAT(Output({"export", design, "-o", out, "--what", "targets"}),
              HasSubstr("set 1: 1 control target stands at no cross section"));
  EXPECT_THAT(ReadAll(out), HasSubstr(",S L1,30,false,"));
  EXPECT_THAT(Vorn({"export", design, "--format", "geojson"}).out,
              HasSubstr("\"name\":\"S L1\",\"elsewhere\":{\"station\":30.0,"));
  EXPECT_THAT(Output({"export", design, "-o", Path("x.dxf")}),
              HasSubstr("1 control target stands at no cross section"));
}

TEST_F(ExportCommand, NeverReplacesADesignBehindALongComment) {
  const std::string design = Design(OneSection(FillForm()));
  const std::string text = ReadAll(design);
  const std::size_t afterDeclaration = text.find("?>") + 2;
  const std::string other = Path("other.txt");
  std::ofstream(other, std::ios::binary) << text.substr(0, afterDeclaration) << "<!--" << std::string(100'000, ' ')
                                         << "-->" << text.substr(afterDeclaration);
  ExpectFailure({"export", design, "-o", other, "--format", "csv"}, HasSubstr("would replace the design"));
}

TEST_F(ExportCommand, NeverReplacesTheDesign) {
  const std::string design = Design(OneSection(FillForm()));
  const std::string before = ReadAll(design);
  ExpectFailure({"export", design, "-o", design, "--format", "csv"}, HasSubstr("would replace the design"));
#ifndef _WIN32  // links there take a right that few users have
  std::filesystem::create_symlink(design, Path("link.csv"));
  ExpectFailure({"export", design, "-o", Path("link.csv")}, HasSubstr("would replace the design"));
#endif
  EXPECT_EQ(ReadAll(design), before);
}

TEST_F(ExportCommand, NeverTakesThePlaceOfAnotherDesign) {
  ExpectNoDesignReplaced({"export", Sample("road-4.1.xml"), "--format", "csv"});
}

TEST_F(ExportCommand, WritesNothingOfADesignThatCannotBeRead) {
  WriteAll(Path("x.csv"), "old");
  ExpectFailure({"export", Design("<broken"), "-o", Path("x.csv")}, HasSubstr("in.xml"));
  ExpectFailure({"export", Path("missing.xml"), "-o", Path("x.csv")}, HasSubstr("missing.xml"));
  EXPECT_EQ(ReadAll(Path("x.csv")), "old");
  ExpectFailure({"export", Sample("road-4.1.xml"), "-o", Path("nowhere/x.csv")}, HasSubstr("nowhere/x.csv"));
}

TEST_F(ExportCommand, RefusesOptionsOfOtherFormats) {
  const auto refuses = [&](const std::string& format, const std::vector<std::string>& options) {
    std::vector<std::string> arguments = {"export", Sample("road-4.1.xml"), "--format", format};
    arguments.insert(arguments.end(), options.begin(), options.end());
    ExpectFailure(arguments, HasSubstr(options[0]));
  };
  refuses("dxf", {"--what", "ground"});
  refuses("geojson", {"--bom"});
  refuses("csv", {"--scale", "100"});
  refuses("geojson", {"--language", "ja"});
  for (const std::string scale : {"0", "nan", "inf", "1e9"}) refuses("dxf", {"--scale", scale});
  for (const std::string height : {"nan", "inf", "-100000", "1m", ""}) refuses("csv", {"--height", height});
}

TEST_F(ExportCommand, ShowsTheGroundWhereTheHeightIsTold) {
  const std::string design = Design(OneSection(FillForm() + FlatGround("58.0000")));
  EXPECT_THAT(Exported(design, "x.csv", {"--what", "ground", "--height", "62.5"}), HasSubstr(",58\r\n"));
  const std::string drawing = Exported(design, "x.dxf", {"--height", "62.5"});
  EXPECT_THAT(drawing, HasSubstr("DL=62.000"));
  const auto lines = ItemsOf(drawing, "LINE", "GROUND").size() + ItemsOf(drawing, "POLYLINE", "GROUND").size();
  EXPECT_GT(lines, 0u);
}

TEST_F(ExportCommand, DrawsAllSectionsAtOneScale) {
  const std::string wide = CenterXml() + PointXml("L1", 'L', "Percent", "400.0000 -2.000") +
                           PointXml("R1", 'R', "Percent", "400.0000 -2.000");
  const std::string design =
      Design(DesignXml(SectionXml("0.0000", FillForm()) + SectionXml("20.0000", FormXml("S", kFillType, wide))));
  std::set<std::string> heights;
  for (const DxfItem& text : ItemsOf(Exported(design, "x.dxf"), "TEXT", "CODE")) heights.insert(text[40]);
  EXPECT_THAT(heights, SizeIs(1));
}

TEST_F(ExportCommand, NamesTheSectionThatMakesTheDrawingSmall) {
  const auto notesOf = [&](const std::string& width, const std::vector<std::string>& options = {}) {
    const std::string wide = CenterXml() + PointXml("L1", 'L', "Percent", width + " -2.000");
    const std::string design = Design(DesignXml(SectionXml("0.0000", FillForm()) + SectionXml("20.0000", FillForm()) +
                                                SectionXml("40.0000", FormXml("S", kFillType, wide))));
    std::vector<std::string> arguments = {"export", design, "-o", Path("x.dxf"), "--json"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return OutputJson(arguments)["firstNotes"];
  };
  EXPECT_EQ(notesOf("3.5000"), Json::array());
  EXPECT_EQ(notesOf("35.0000"), Json::array()) << "sections may well differ";
  const Json notes = notesOf("350000.0000");
  ASSERT_EQ(notes.size(), 1u) << notes;
  EXPECT_EQ(notes[0],
            "40.0000: its size makes the whole drawing 1:2000000; most of the other cross sections need no "
            "smaller scale than 1:100");
  EXPECT_EQ(notesOf("350000.0000", {"--scale", "100"}), Json::array()) << "the scale is told";
}

TEST_F(ExportCommand, SaysWhatIsNotShownInTheLanguageOfTheDrawing) {
  const std::string japanese = vorn_host::DxfText("* 中心線の標高");
  EXPECT_THAT(Exported(Sample("road-4.1.xml"), "x.dxf", {"--language", "ja"}), HasSubstr(japanese));
  EXPECT_THAT(Exported(Sample("road-4.1.xml"), "y.dxf"), HasSubstr("* the height of the centre line"));
}

TEST_F(ExportCommand, WritesWordsThatEveryCadProgramReads) {
  const std::string drawing = Exported(Sample("road-4.1.xml"), "x.dxf");
  EXPECT_THAT(drawing, HasSubstr(vorn_host::DxfText("FH≒79.000")));
  EXPECT_THAT(drawing, Not(HasSubstr("\\U+"))) << "an escape in front of digits is read as a part of the number";
}

TEST_F(ExportCommand, ExportsADesignWithoutSections) {
  const std::string design = Design(DesignXml(""));
  EXPECT_THAT(Exported(design, "x.dxf"), HasSubstr("ENTITIES\r\n  0\r\nENDSEC"));
  EXPECT_THAT(Exported(design, "x.csv"), Not(HasSubstr("\r\n1,")));
  EXPECT_EQ(Json::parse(Exported(design, "x.json"))["features"], Json::array());
}

TEST_F(ExportCommand, ExportsSectionsOfEveryShape) {
  const std::string onlyLeft = CenterXml() + PointXml("L1", 'L', "Percent", "3.5000 -2.000");
  const std::string onePoint = CenterXml();
  for (const std::string& form : {FormXml("S", kFillType, onlyLeft), FormXml("S", kFillType, onePoint),
                                  FormXml("S", kFillType, ""), std::string()}) {
    const std::string design = Design(OneSection(form));
    EXPECT_THAT(ItemsOf(Exported(design, "x.dxf"), "POINT", "ORIGIN"), SizeIs(1));
    EXPECT_FALSE(Json::parse(Exported(design, "x.json"))["features"].empty());
    EXPECT_THAT(Exported(design, "x.csv"), StartsWith("set,"));
  }
}

TEST_F(ExportCommand, ShowsEveryGround) {
  const std::string ground = FlatGround("58.0000");
  const std::string design = Design(OneSection(FillForm() + ground + Replaced(ground, "\"ground\"", "\"second\"")));
  const Json collection = Json::parse(Exported(design, "x.json", {"--height", "62.5"}));
  std::set<std::string> names;
  for (const Json& feature : collection["features"]) {
    if (feature["properties"]["kind"] == "ground") names.insert(feature["properties"]["name"].get<std::string>());
  }
  EXPECT_EQ(names, (std::set<std::string>{"ground", "second"}));
}

TEST_F(ExportCommand, KeepsHugeOffsets) {
  const std::string far = CenterXml() + PointXml("L1", 'L', "WidthHeight", "987654.1234 -1.0000");
  const std::string design = Design(OneSection(FormXml("S", kFillType, far)));
  EXPECT_THAT(Exported(design, "x.csv"), HasSubstr(",-987654.1234,-1,"));
  EXPECT_THAT(Exported(design, "x.dxf"), AllOf(HasSubstr("-987654.1234\r\n"), Not(HasSubstr("nan"))));
}

}  // namespace
