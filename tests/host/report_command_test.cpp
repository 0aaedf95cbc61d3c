// `vorn report`: the page, written whole or not at all.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/host/drawing_tool_test.h"
#include "tests/host/editing.h"
#include "tests/host/report_pages.h"
#include "tests/host/tool.h"

namespace {

using namespace host_test;  // NOLINT(google-build-using-namespace): the vocabulary of these tests
using testing::AllOf;
using testing::HasSubstr;

class ReportCommand : public DrawingToolTest {
 protected:
  /// The page of a file, written with these options.
  [[nodiscard]] ReportPage Report(const std::string& file, const std::vector<std::string>& options = {}) const {
    std::vector<std::string> arguments = {"report", file, "-o", Path("page.html")};
    arguments.insert(arguments.end(), options.begin(), options.end());
    (void)Output(arguments);
    return ReportPage(ReadAll(Path("page.html")));
  }
};

TEST_F(ReportCommand, TellsWhatItWrote) {
  EXPECT_EQ(Output({"report", Sample("road-4.1.xml"), "-o", Path("page.html")}),
            "Written             " + Path("page.html") +
                "\n"
                "Cross sections      10\n"
                "Findings            0 errors, 1 note\n");
  const Json json = OutputJson({"report", Sample("road-4.1.xml"), "--output", Path("page.html"), "--json"});
  EXPECT_EQ(json, (Json{{"written", Path("page.html")},
                        {"crossSections", 10},
                        {"errors", 0},
                        {"notes", 1},
                        {"targetsWithoutSection", 0}}));
}

TEST_F(ReportCommand, TellsOfTargetsThatNoSectionShows) {
  const std::string target = TargetXml("Width", "40.0000", "Left Right", {{"S", "L1"}, {"S", "R1"}});
  WriteAll(Path("in.xml"), DesignXml(SectionXml("20.0000", FillForm()) + target));
  EXPECT_THAT(Output({"report", Path("in.xml"), "-o", Path("page.html")}),
              HasSubstr("Control targets     1 at no cross section\n"));
  EXPECT_EQ(OutputJson({"report", Path("in.xml"), "-o", Path("page.html"), "--json"})["targetsWithoutSection"], 1);
}

TEST_F(ReportCommand, WritesEverySample) {
  for (const std::string sample :
       {"road-4.1.xml", "road-with-geometry-4.0.xml", "river-2.0.xml", "farm-maff-1.0.xml"}) {
    const ReportPage page = Report(Sample(sample));
    EXPECT_EQ(page.index["file"], sample);
    EXPECT_EQ(page.sections.size(), page.index["sections"].size());
    for (const Json& section : page.sections) {
      EXPECT_GT(section["drawing"]["lines"].size(), 2u) << sample;
      EXPECT_GT(section["drawing"]["texts"].size(), 2u) << sample;
      EXPECT_GT(section["forms"].size(), 0u) << sample;
    }
  }
}

TEST_F(ReportCommand, ShowsAProjectAsItsDocument) {
  (void)Output({"convert", Sample("road-4.1.xml"), Path("p.vorn")});
  const ReportPage ofDocument = Report(Sample("road-4.1.xml"));
  const ReportPage ofProject = Report(Path("p.vorn"));
  EXPECT_EQ(ofProject.index["file"], "p.vorn");
  EXPECT_EQ(ofProject.index["sections"], ofDocument.index["sections"]);
  EXPECT_EQ(ofProject.sections.size(), ofDocument.sections.size());
}

TEST_F(ReportCommand, SucceedsForADesignWithErrors) {
  const std::string damaged = Damaged("road-4.1.xml", "location=\"Left\"", "location=\"Lefft\"");
  const ReportPage page = Report(damaged);
  EXPECT_GT(page.index["errors"], 0);
  EXPECT_EQ(page.documentFindings[0][1], "value not understood");
}

TEST_F(ReportCommand, TakesTheOptionsOfTheDrawing) {
  const ReportPage page =
      Report(Sample("river-2.0.xml"), {"--height", "12.5", "--exaggerate", "2", "--language", "ja"});
  EXPECT_EQ(page.sections[0]["centerHeight"], 12.5);
  EXPECT_EQ(page.sections[0]["drawing"]["exaggeration"], 2.0);
  EXPECT_EQ(page.index["language"], "ja");
}

TEST_F(ReportCommand, ReadsAnUnknownEditionAsTold) {
  std::string text = DesignXml(SectionXml("0.0000", FillForm("S")));
  for (std::size_t at = text.find("4.1"); at != std::string::npos; at = text.find("4.1", at))
    text.replace(at, 3, "9.9");
  WriteAll(Path("in.xml"), text);
  ExpectFailure({"report", Path("in.xml"), "-o", Path("page.html")}, HasSubstr("in.xml"));
  EXPECT_EQ(FileCount(), 1u) << "no page without a design";
  EXPECT_EQ(Report(Path("in.xml"), {"--assume", "4.1"}).index["assumed"], true);
}

TEST_F(ReportCommand, ReplacesWhatCodePage932CannotHoldOnlyWhenAsked) {
  WriteAll(Path("in.xml"), DesignXml(SectionXml("0.0000", FillForm("é"))));
  ExpectFailure({"report", Path("in.xml"), "-o", Path("page.html")}, HasSubstr("é"));
  EXPECT_EQ(Report(Path("in.xml"), {"--lossy"}).sections[0]["forms"][0]["name"], "〓");
}

TEST_F(ReportCommand, RefusesAnEmptyFileName) {
  ExpectFailure({"report", Sample("road-4.1.xml"), "-o", ""}, HasSubstr("the name of the file is empty"));
}

TEST_F(ReportCommand, NeverTakesThePlaceOfTheDesign) {
  const std::string design = ReadAll(Sample("road-4.1.xml"));
  WriteAll(Path("in.xml"), design);
  ExpectFailure({"report", Path("in.xml"), "-o", Path("./in.xml")}, HasSubstr("would replace the design"));
  EXPECT_EQ(ReadAll(Path("in.xml")), design);
}

TEST_F(ReportCommand, NeverTakesThePlaceOfAnotherDesign) { ExpectNoDesignReplaced({"report", Sample("road-4.1.xml")}); }

TEST_F(ReportCommand, LeavesTheFormerPageWhenItFails) {
  WriteAll(Path("page.html"), "former");
  WriteAll(Path("in.xml"), "no design");
  ExpectFailure({"report", Path("in.xml"), "-o", Path("page.html")}, HasSubstr("in.xml"));
  EXPECT_EQ(ReadAll(Path("page.html")), "former");
  ExpectFailure({"report", Sample("road-4.1.xml"), "-o", Path("absent/page.html")}, HasSubstr("absent/page.html"));
  EXPECT_EQ(FileCount(), 2u);
}

TEST_F(ReportCommand, RefusesMisuse) {
  const std::string sample = Sample("road-4.1.xml");
  ExpectFailure({"report"}, HasSubstr("FILE"));
  ExpectFailure({"report", sample}, HasSubstr("--output"));
  ExpectFailure({"report", Path("absent.xml"), "-o", Path("p")}, HasSubstr("absent.xml"));
  ExpectFailure({"report", sample, "-o", Path("p"), "--height", "high"}, HasSubstr("--height"));
  for (const std::string option : {"--height", "--exaggerate"}) {
    for (const std::string value : {"nan", "-nan", "inf", "-inf", "1e999", "1e300", "-100000", "1m", ""}) {
      ExpectFailure({"report", sample, "-o", Path("p"), option, value}, HasSubstr(option));
    }
  }
  ExpectFailure({"report", sample, "-o", Path("p"), "--exaggerate", "0"}, HasSubstr("--exaggerate"));
  ExpectFailure({"report", sample, "-o", Path("p"), "--language", "fr"}, HasSubstr("--language"));
  EXPECT_EQ(FileCount(), 0u);
}

}  // namespace
