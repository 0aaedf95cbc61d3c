// `vorn plot`: which cross section is drawn, and the drawings of fixed samples, byte for byte.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <pugixml.hpp>
#include <string>
#include <vector>

#include "tests/host/drawing_tool_test.h"
#include "tests/host/editing.h"
#include "tests/host/tool.h"

namespace {

using namespace host_test;  // NOLINT(google-build-using-namespace): the vocabulary of these tests
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class PlotCommand : public DrawingToolTest {
 protected:
  [[nodiscard]] static std::string Road() { return Sample("road-4.1.xml"); }
  /// A document with sections of these names at these stations.
  [[nodiscard]] std::string Design(const std::vector<std::pair<std::string, std::string>>& sections,
                                   const std::string& more = {}) const {
    std::string content;
    for (const auto& [name, station] : sections) {
      content += With(SectionXml(station, FillForm()), "<tsf:XSection ", "<tsf:XSection name=\"" + name + "\" ");
    }
    WriteAll(Path("in.xml"), Xml(Edition::V41, SetXml(content) + more));
    return Path("in.xml");
  }
  /// What `vorn plot` tells programs about what it drew.
  [[nodiscard]] Json Plotted(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), "plot");
    arguments.insert(arguments.end(), {"-o", Path("out.svg"), "--json"});
    return OutputJson(arguments)["crossSections"];
  }
  [[nodiscard]] int IndexOf(const std::vector<std::string>& arguments) const {
    const Json sections = Plotted(arguments);
    EXPECT_EQ(sections.size(), 1u);
    return sections.at(0)["index"];
  }
};

// --- which section ---------------------------------------------------------------------------------------------------

TEST_F(PlotCommand, TakesTheStationInMetresAndAsTheDocumentCounts) {
  for (const char* station : {"40", "40.0", "40.0000", "No.2", "No.2+0", "No.2+0.0000", "No.1+20"}) {
    EXPECT_EQ(IndexOf({Road(), "--station", station}), 3) << station;
  }
  EXPECT_EQ(IndexOf({Road(), "--station=0"}), 1);
}

TEST_F(PlotCommand, TakesTheNameOrTheIndex) {
  EXPECT_EQ(IndexOf({Road(), "--name", "No.2"}), 3);
  EXPECT_EQ(IndexOf({Road(), "--index", "9"}), 9);
  EXPECT_EQ(IndexOf({Road(), "--station", "80", "--index", "6"}), 6);
  EXPECT_EQ(IndexOf({Design({{"A", "20.0000"}})}), 1) << "the only one needs no choice";
}

TEST_F(PlotCommand, DrawsBothSectionsAtAChangeOfShape) {
  const Json sections = Plotted({Road(), "--station", "80"});
  ASSERT_EQ(sections.size(), 2u);
  EXPECT_EQ(sections[0]["behindChangeOfShape"], false);
  EXPECT_EQ(sections[1]["behindChangeOfShape"], true);
  EXPECT_THAT(ReadAll(Path("out.svg")), AllOf(HasSubstr(">8.500<"), HasSubstr(">11.500<")));
}

TEST_F(PlotCommand, NamesTheNearestStations) {
  ExpectFailure({"plot", Road(), "--station", "85"},
                AllOf(HasSubstr("road-4.1.xml: there is no cross section with station 85; the nearest: station 80.0000 "
                                "(No.4), station 80.0000 behind the change of shape (No.4), station 100.0000 (No.5)"),
                      Not(HasSubstr("station 0.0000"))));
  ExpectFailure({"plot", Road(), "--station", "40.001"}, HasSubstr("the nearest: station 40.0000 (No.2)"));
  for (const char* nonsense : {"No.x", "x", "40 m", "nan", "inf", "1e400", "No.2+x", "No.-2", "+"}) {
    ExpectFailure({"plot", Road(), "--station", nonsense}, HasSubstr("a station is told in metres"));
  }
}

TEST_F(PlotCommand, AdvisesAStationAsTheDesignCounts) {
  ExpectFailure({"plot", Road(), "--station", "x"}, HasSubstr("or as the document counts (No.0+0.0000)"));
  const std::string inMetres = Design({{"A", "20.0000"}, {"B", "40.0000"}});
  ExpectFailure({"plot", inMetres, "--station", "No.1"},
                AllOf(HasSubstr("a station is told in metres"), Not(HasSubstr("counts"))));
}

TEST_F(PlotCommand, AdvisesAStationAsADesignCountsItsHundreds) {
  std::string text = ReadAll(Road());
  for (std::size_t at = text.find("No."); at != std::string::npos; at = text.find("No.", at)) {
    text.replace(at, 3, "STA.");
  }
  WriteAll(Path("in.xml"), With(text, "stationType=\"NO\"", "stationType=\"STA\""));
  ExpectFailure({"plot", Path("in.xml"), "--station", "No.1"},
                HasSubstr("a station is told in metres, or as the document counts (STA.0+0.0000)"));
  EXPECT_EQ(IndexOf({Path("in.xml"), "--station", "STA.1+20"}), 3) << "as advised";
}

TEST_F(PlotCommand, AsksWhichOneWhereSeveralCouldBeMeant) {
  ExpectFailure({"plot", Road()}, HasSubstr("there are 10 cross sections: choose one with --station"));
  const std::string design = Design({{"A", "20.0000"}, {"A", "40.0000"}});
  ExpectFailure({"plot", design, "--name", "A"},
                HasSubstr("name A could be station 20.0000 (A), station 40.0000 (A): choose one with --set"));
  const std::string sets =
      Design({{"A", "20.0000"}}, SetXml(SectionXml("20.0000", FillForm()) + SectionXml("40.0000", FillForm())));
  ExpectFailure({"plot", sets, "--station", "20"},
                HasSubstr("station 20 could be set 1 (A) > station 20.0000 (A), set 2 (A) > station 20.0000"));
  EXPECT_EQ(Plotted({sets, "--station", "20", "--set", "2"})[0]["set"], 2);
  EXPECT_EQ(Plotted({sets, "--set", "1"})[0]["set"], 1);
}

TEST_F(PlotCommand, RefusesWhatIsNotThere) {
  ExpectFailure({"plot", Road(), "--index", "99"}, HasSubstr("there is no cross section with index 99"));
  ExpectFailure({"plot", Road(), "--set", "2", "--index", "1"}, HasSubstr("there is no set 2; the last one is set 1"));
  ExpectFailure({"plot", Road(), "--name", "nobody"}, HasSubstr("there is no cross section with name nobody"));
  ExpectFailure({"plot", Design({})}, HasSubstr("there is no cross section"));
  ExpectFailure({"plot", Path("absent.xml"), "--index", "1"}, HasSubstr("absent.xml"));
}

TEST_F(PlotCommand, RefusesMisuse) {
  ExpectFailure({"plot"}, HasSubstr("FILE"));
  ExpectFailure({"plot", Road(), "--index", "0"}, HasSubstr("--index"));
  ExpectFailure({"plot", Road(), "--index", "1", "--scale", "0"}, HasSubstr("--scale"));
  ExpectFailure({"plot", Road(), "--index", "1", "--exaggerate", "-2"}, HasSubstr("--exaggerate"));
  for (const std::string option : {"--height", "--exaggerate", "--scale"}) {
    for (const std::string value : {"nan", "-nan", "inf", "-inf", "1e999", "1e300", "-100000", "1m", ""}) {
      ExpectFailure({"plot", Road(), "--index", "1", option, value}, HasSubstr(option));
    }
  }
  ExpectFailure({"plot", Road(), "--index", "1", "--language", "fr"}, HasSubstr("--language"));
  ExpectFailure({"plot", Road(), "--index", "1", "-o", ""}, HasSubstr("the name of the file is empty"));
  ExpectFailure({"plot", Road(), "--index", "1", "--json"}, HasSubstr("--output"));
}

// --- what is written -------------------------------------------------------------------------------------------------

TEST_F(PlotCommand, WritesToTheStandardOutputOrAFileAlike) {
  const std::string svg = Output({"plot", Road(), "--index", "1"});
  EXPECT_THAT(svg, AllOf(StartsWith("<?xml "), EndsWith("</svg>\n")));
  EXPECT_THAT(Output({"plot", Road(), "--index", "1", "-o", Path("out.svg")}),
              AllOf(HasSubstr("Written             " + Path("out.svg")),
                    HasSubstr("Cross section       No.0+0.0000 (No.0), scale 1:100"),
                    HasSubstr("note: the height of the centre line, 79.000 m, is taken from")));
  EXPECT_EQ(ReadAll(Path("out.svg")), svg);
}

TEST_F(PlotCommand, NeverWritesOverTheDesign) {
  const std::string design = Design({{"A", "20.0000"}});
  const std::string before = ReadAll(design);
  ExpectFailure({"plot", design, "-o", design}, HasSubstr("would replace the design"));
#ifndef _WIN32  // links there take a right that few users have
  std::filesystem::create_symlink(design, Path("link.svg"));
  ExpectFailure({"plot", design, "-o", Path("link.svg")}, HasSubstr("would replace the design"));
#endif
  EXPECT_EQ(ReadAll(design), before);
}

TEST_F(PlotCommand, NeverTakesThePlaceOfAnotherDesign) {
  ExpectNoDesignReplaced({"plot", Sample("road-4.1.xml"), "--index", "1"});
}

TEST_F(PlotCommand, LeavesNoFileBehindAFailure) {
  ExpectFailure({"plot", Road(), "--index", "99", "-o", Path("out.svg")}, HasSubstr("index 99"));
  ExpectFailure({"plot", Road(), "--index", "1", "-o", Path("absent/out.svg")}, HasSubstr("absent/out.svg"));
  EXPECT_EQ(FileCount(), 0u);
}

#ifndef _WIN32  // only POSIX systems have a device that is always full
TEST_F(PlotCommand, SaysWhenTheStandardOutputIsFull) {
  EXPECT_EQ(Shell(Command({"plot", Road(), "--index", "1"}) + " >/dev/full").exitCode, 2);
}
#endif

TEST_F(PlotCommand, FollowsTheOptionsOfTheDrawing) {
  const Json plotted = Plotted({Road(), "--index", "1", "--scale", "250", "--exaggerate", "2", "--language", "ja"});
  EXPECT_EQ(plotted[0]["scale"], 250.0);
  EXPECT_EQ(plotted[0]["exaggeration"], 2.0);
  EXPECT_THAT(ReadAll(Path("out.svg")), AllOf(HasSubstr("縮尺 H 1:250  V 1:125"), HasSubstr("標高 (m)")));
  EXPECT_EQ(Plotted({Road(), "--index", "1", "--height", "100.5"})[0]["centerHeight"], 100.5);
  EXPECT_TRUE(Plotted({Sample("river-2.0.xml"), "--index", "1"})[0]["centerHeight"].is_null());
}

TEST_F(PlotCommand, DrawsProjects) {
  (void)Output({"sample", Path("design.vorn"), "--sections", "3"});
  (void)Output({"sample", Path("design.xml"), "--sections", "3"});
  const Json project = Plotted({Path("design.vorn"), "--index", "1"});
  const Json document = Plotted({Path("design.xml"), "--index", "1"});
  EXPECT_NEAR(project[0]["centerHeight"], document[0]["centerHeight"].get<double>(), 0.003);
  EXPECT_TRUE(project[0]["notes"].empty()) << "a project knows the height";
  EXPECT_FALSE(document[0]["notes"].empty());
}

TEST_F(PlotCommand, DrawsEverySectionOfEverySample) {
  for (const char* sample : {"road-4.1.xml", "road-with-geometry-4.0.xml", "river-2.0.xml", "farm-maff-1.0.xml"}) {
    const int sections = OutputJson({"info", Sample(sample), "--json"})["sets"][0]["crossSections"]["count"];
    for (int i = 1; i <= sections; ++i) {
      const std::string svg = Output({"plot", Sample(sample), "--index", std::to_string(i)});
      pugi::xml_document parsed;
      EXPECT_TRUE(parsed.load_buffer(svg.data(), svg.size())) << sample << " " << i;
      EXPECT_THAT(svg, Not(HasSubstr("nan"))) << sample << " " << i;
      EXPECT_FALSE(parsed.select_nodes("//g[@class='design-surface']/polyline").empty()) << sample << " " << i;
    }
  }
}

TEST_F(PlotCommand, KeepsHostileNamesTexts) {
  const std::string hostile = "&lt;script&gt;alert(1)&lt;/script&gt;&quot;&#9;";
  const std::string content =
      With(OneSection(FillForm(hostile)), "<tsf:XSection ", "<tsf:XSection name=\"" + hostile + "\" ");
  WriteAll(Path("in.xml"), Replaced(content, "code=\"L1\"", "code=\"" + hostile + "\""));
  const std::string svg = Output({"plot", Path("in.xml")});
  EXPECT_THAT(svg, AllOf(HasSubstr("&lt;script&gt;alert(1)&lt;/script&gt;&quot;"), Not(HasSubstr("<script"))));
  pugi::xml_document parsed;
  EXPECT_TRUE(parsed.load_buffer(svg.data(), svg.size()));
  EXPECT_THAT(Output({"plot", Path("in.xml"), "-o", Path("out.svg")}), Not(HasSubstr("\t")));
}

// --- fixed drawings --------------------------------------------------------------------------------------------------

/// The drawings of tests/data/drawings/; README.md there tells how to renew them.
class FixedDrawings : public ToolTest {
 protected:
  static void ExpectAsBefore(const std::string& svg, const std::string& name) {
    EXPECT_TRUE(svg == ReadAll(std::string(VORN_TEST_DATA) + "/drawings/" + name)) << name << " is drawn otherwise";
  }
};

TEST_F(FixedDrawings, ShowAFill) {
  ExpectAsBefore(Output({"plot", Sample("road-4.1.xml"), "--station", "0"}), "fill.svg");
}

TEST_F(FixedDrawings, ShowACut) {
  ExpectAsBefore(Output({"plot", Sample("road-4.1.xml"), "--station", "No.8"}), "cut.svg");
}

TEST_F(FixedDrawings, ShowARiver) {
  (void)Output({"sample", Path("river.xml"), "--kind", "river", "--sections", "8", "--seed", "3"});
  ExpectAsBefore(Output({"plot", Path("river.xml"), "--index", "5", "--language", "ja"}), "river.svg");
}

}  // namespace
