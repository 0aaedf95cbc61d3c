#include "host/document/unread_values.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "host/document/document_check.h"
#include "tests/host/documents.h"

namespace vorn_host {
namespace {

using namespace host_test;  // NOLINT(google-build-using-namespace): the vocabulary of these tests
using testing::ElementsAre;
using testing::IsEmpty;

/// What is not understood in a document of that content, without the lines.
std::vector<std::string> UnreadIn(const std::string& content, Edition edition = Edition::V41) {
  std::vector<std::string> found;
  for (const UnreadValue& value : ReadText(Xml(edition, content)).unreadValues) {
    found.push_back(value.where + ": " + Describe(value));
  }
  return found;
}

std::string Section(const std::string& attributes, const std::string& content = "") {
  return "<tsf:XSections><tsf:XSection " + attributes + ">" + content + "</tsf:XSection></tsf:XSections>";
}

std::string PointElement(const std::string& attributes, const std::string& text) {
  return Section("cumulativeDist=\"0\"", "<tsf:BuildForm name=\"a\"><tsf:ComposedPnt code=\"L1\" " + attributes + ">" +
                                             text + "</tsf:ComposedPnt></tsf:BuildForm>");
}

std::string ExistingElement(const std::string& text) {
  return Section("cumulativeDist=\"0\"", "<tsf:ExistingBuildForm name=\"a\"><tsf:ExistingComposedPnt name=\"G1\">" +
                                             text + "</tsf:ExistingComposedPnt></tsf:ExistingBuildForm>");
}

std::string TargetElement(const std::string& attributes, const std::string& pointAttributes) {
  return "<tsf:XSections><tsf:FormCtrlTarget targetScope=\"all\" " + attributes +
         "><tsf:FormCtrlTargetPnt code=\"R1\" " + pointAttributes + "/></tsf:FormCtrlTarget></tsf:XSections>";
}

TEST(UnreadValues, NoneInTheSamples) {
  for (const auto& sample : std::filesystem::directory_iterator(VORN_SAMPLES)) {
    if (sample.path().extension() != ".xml") continue;
    EXPECT_THAT(DesignDocument::Read(sample.path()).unreadValues, IsEmpty()) << sample.path();
  }
}

TEST(UnreadValues, TellTheLineAndComeInTheOrderOfTheDocument) {
  const DesignDocument document = ReadText(Xml(Edition::V41, "<tsf:FileInfo\n createDate=\"yesterday\"/>\n" +
                                                                 PointElement("location=\"Lefft\"", "1 2") + "\n" +
                                                                 PointElement("location=\"left\"", "1 2")));
  std::vector<std::string> places;
  for (const UnreadValue& value : document.unreadValues) places.push_back(PlaceOf(value));
  EXPECT_THAT(places, ElementsAre("line 3: tsf:FileInfo, attribute createDate",
                                  "line 5: tsf:ComposedPnt L1, attribute location",
                                  "line 6: tsf:ComposedPnt L1, attribute location"));
}

TEST(UnreadValues, EnumerationsOfPoints) {
  const std::string at = "tsf:ComposedPnt L1, attribute ";
  EXPECT_THAT(UnreadIn(PointElement("location=\"Lefft\" componentType=\"Verge\" dataType=\"rate\" slopeType=\"1:1\" "
                                    "existence=\"yes\" seriesPnt=\"0\"",
                                    "1 2")),
              ElementsAre(at + "location: \"Lefft\" is none of Center, Left, Right",
                          at + "componentType: \"Verge\" is none of Roadbed(Fill), Roadbed(Cut), Slope(Fill), "
                               "Slope(Cut), Berm(Fill), Berm(Cut), Other, Roadbed, Slope, Berm",
                          at + "dataType: \"rate\" is none of WidthHeight, Percent, Rate",
                          at + "slopeType: \"1:1\" is none of Percent, Rate",
                          at + "existence: \"yes\" is neither true nor false",
                          at + "seriesPnt: \"0\" is neither true nor false"));
  EXPECT_THAT(UnreadIn(PointElement("location=\"\" componentType=\"\" dataType=\"\" slopeType=\"\" existence=\"\" "
                                    "seriesPnt=\"\" other=\"x\"",
                                    "1 2")),
              IsEmpty());
}

TEST(UnreadValues, NumbersOfPoints) {
  const std::string at = "tsf:ComposedPnt L1, text: ";
  for (const char* fine : {"3.5 -0.07", " 12.3", "12.3 ", " ", "+1 .5", "5. 1e3", "\n  1 2\n  ", "0 0 "}) {
    EXPECT_THAT(UnreadIn(PointElement("", fine)), IsEmpty()) << '"' << fine << '"';
    EXPECT_THAT(UnreadIn(ExistingElement(fine)), IsEmpty()) << '"' << fine << '"';
  }
  EXPECT_THAT(UnreadIn(PointElement("", "")), ElementsAre(at + "holds no numbers"));
  EXPECT_THAT(UnreadIn(PointElement("", "\n  ")), ElementsAre(at + "holds no numbers"));
  EXPECT_THAT(UnreadIn(PointElement("", "3.5")), ElementsAre(at + "\"3.5\" holds one number instead of two"));
  EXPECT_THAT(UnreadIn(PointElement("", "1 2 3")), ElementsAre(at + "\"1 2 3\" holds 3 values instead of two"));
  EXPECT_THAT(UnreadIn(PointElement("", "1  2")), ElementsAre(at + "\"1  2\" holds 3 values instead of two"));
  EXPECT_THAT(UnreadIn(PointElement("", "3.5m 1,5")),
              ElementsAre(at + "\"3.5m\" is no number", at + "\"1,5\" is no number"));
  EXPECT_THAT(UnreadIn(PointElement("", "1\t2")), ElementsAre(at + "\"1\t2\" is no number"));
}

TEST(UnreadValues, NumbersOfExistingGround) {
  const std::string at = "tsf:ExistingComposedPnt G1, text: ";
  EXPECT_THAT(UnreadIn(ExistingElement("")), IsEmpty()) << "the check reports a missing value";
  EXPECT_THAT(UnreadIn(ExistingElement("3.5")), IsEmpty());
  EXPECT_THAT(UnreadIn(ExistingElement("- 1")), ElementsAre(at + "\"-\" is no number"));
  EXPECT_THAT(UnreadIn(ExistingElement("1 2 3")), ElementsAre(at + "\"1 2 3\" holds 3 values instead of two"));
}

TEST(UnreadValues, Stations) {
  const auto stationIs = [](const std::string& text) { return UnreadIn(Section("cumulativeDist=\"" + text + "\"")); };
  const std::string at = "tsf:XSection, attribute cumulativeDist: ";
  for (const char* fine : {"", "20", " 20.5 ", "-0.0000", "1E2"}) EXPECT_THAT(stationIs(fine), IsEmpty()) << fine;
  for (const std::string wrong : {"20,5", "20 5", "No.1", "inf", "nan", "0x10", "1e", "--1", "."}) {
    EXPECT_THAT(stationIs(wrong), ElementsAre(at + "\"" + wrong + "\" is no number"));
  }
  EXPECT_THAT(stationIs("1e400"), ElementsAre(at + "\"1e400\" is a number out of range"));
}

TEST(UnreadValues, FlagsOfSectionsAndSets) {
  EXPECT_THAT(UnreadIn(Section("name=\"No.1\" xSectChg=\"maybe\" controlSect=\"1\"")),
              ElementsAre("tsf:XSection No.1, attribute xSectChg: \"maybe\" is neither true nor false",
                          "tsf:XSection No.1, attribute controlSect: \"1\" is neither true nor false"));
  EXPECT_THAT(UnreadIn("<tsf:XSections refAlign=\"A\" alignment=\"no\"/>"),
              ElementsAre("tsf:XSections A, attribute alignment: \"no\" is neither true nor false"));
}

TEST(UnreadValues, ControlTargets) {
  const std::string wrong = TargetElement("workType=\"Cut\" controlItem=\"Breadth\" targetPntType=\"Left\"",
                                          "cumulativeDist=\"2O\" xSectChg=\"x\"");
  const std::vector<std::string> ofTarget = {
      "tsf:FormCtrlTarget all, attribute workType: \"Cut\" is none of RE_CutWork, RE_FillWork",
      "tsf:FormCtrlTarget all, attribute controlItem: \"Breadth\" is none of SlopeLength, Width, Height, Thickness, "
      "Depth, XSectArea, Length, Area",
      "tsf:FormCtrlTarget all, attribute targetPntType: \"Left\" is none of Shoulder Toe, Toe Shoulder, Inner Outer, "
      "Left Right, TargetPnt, Upper Lower, Lower Upper"};
  std::vector<std::string> all = ofTarget;
  all.emplace_back("tsf:FormCtrlTargetPnt R1, attribute cumulativeDist: \"2O\" is no number");
  all.emplace_back("tsf:FormCtrlTargetPnt R1, attribute xSectChg: \"x\" is neither true nor false");
  EXPECT_EQ(UnreadIn(wrong), all);
  EXPECT_EQ(UnreadIn(wrong, Edition::V20), ofTarget) << "the points are carried over as they are";
}

TEST(UnreadValues, Dates) {
  const auto dateIs = [](const std::string& text) { return UnreadIn("<tsf:FileInfo changeDate=\"" + text + "\"/>"); };
  for (const char* fine : {"2024-02-29T23:59:59", "1899-12-30T00:00:00", "2024-04-01T09:00:00.5+09:00"}) {
    EXPECT_THAT(dateIs(fine), IsEmpty()) << fine;
  }
  for (const std::string wrong :
       {"yesterday", "2024-04-01", "2024-13-01T00:00:00", "2023-02-29T00:00:00", "2024-04-01T09:00",
        "2024-04-01T09:00:0", "2024-04-01T09:00:00 PM", "2024-4x-01T09:00:00", "2024/04/01T09:00:00"}) {
    EXPECT_THAT(dateIs(wrong), ElementsAre("tsf:FileInfo, attribute changeDate: \"" + wrong + "\" is no date"));
  }
  // The library takes it for 30 December 1899, which would be written from then on.
  EXPECT_THAT(dateIs(""), ElementsAre("tsf:FileInfo, attribute changeDate: is empty, which is no date"));
}

TEST(UnreadValues, ASecondStructureType) {
  const std::string type = "<tsf:StructureType type=\"\" stationType=\"NO\"/>";
  EXPECT_THAT(UnreadIn(type), IsEmpty());
  EXPECT_THAT(UnreadIn(type + type), ElementsAre("tsf:StructureType: is given twice; the last one is read"));
}

TEST(UnreadValues, LookOnlyAtWhatTheLibraryReads) {
  EXPECT_THAT(UnreadIn("<x:Other><tsf:XSection cumulativeDist=\"a\"/></x:Other><tsf:XSection cumulativeDist=\"b\"/>"),
              IsEmpty());
}

TEST(UnreadValues, ShortenALongText) {
  const auto found = ReadText(Xml(Edition::V41, Section("cumulativeDist=\"" + std::string(1000, 'x') + "\"")));
  ASSERT_EQ(found.unreadValues.size(), 1u);
  EXPECT_EQ(found.unreadValues[0].text, std::string(80, 'x') + "...");
}

TEST(UnreadValues, AreTheFirstFindingsOfTheCheck) {
  const std::vector<Finding> findings =
      CheckDocument(ReadText(Xml(Edition::V41, PointElement("location=\"L\"", "1 2"))));
  ASSERT_FALSE(findings.empty());
  EXPECT_EQ(findings[0].severity, Severity::Error);
  EXPECT_EQ(findings[0].kind, "value not understood");
  EXPECT_EQ(findings[0].path, "line 3: tsf:ComposedPnt L1, attribute location");
  EXPECT_EQ(findings[0].reason, "\"L\" is none of Center, Left, Right");
}

}  // namespace
}  // namespace vorn_host
