#include "host/document/carried_content.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/document/edition_conversion.h"
#include "tests/host/documents.h"

namespace vorn_host {
namespace {

using namespace host_test;  // NOLINT(google-build-using-namespace): the vocabulary of these tests
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::Pair;

/// The rows of what a document carries.
std::vector<std::pair<std::string, int>> RowsOf(const std::vector<CarriedContent::Row>& rows) {
  std::vector<std::pair<std::string, int>> pairs;
  for (const CarriedContent::Row& row : rows) pairs.emplace_back(row.name, row.count);
  return pairs;
}

/// What has no place when the document is written.
std::vector<std::pair<std::string, int>> Unplaced(DesignDocument& document) {
  DesignDocument::WriteReport report;
  (void)document.ToBytes("out.xml", {}, report);
  return RowsOf(report.unplaced);
}

std::string Converted(const std::string& text, Edition target) {
  DesignDocument document = ReadText(text);
  ConvertEdition(document, target);
  return WriteText(document);
}

constexpr std::string_view kCenter41 =
    "        <tsf:ComposedPnt code=\"CL\" location=\"Center\" dataType=\"WidthHeight\" existence=\"true\">0.0000 "
    "0.0000</tsf:ComposedPnt>\n";
constexpr std::string_view kRight41 =
    "        <tsf:ComposedPnt code=\"R1\" location=\"Right\" componentType=\"Roadbed\" dataType=\"Percent\" "
    "existence=\"true\">3.5000 -2.000</tsf:ComposedPnt>\n";

std::string Form41(std::string_view name) {
  return "      <tsf:BuildForm name=\"" + std::string(name) + "\" xSectType=\"\">\n" + std::string(kCenter41) +
         std::string(kRight41) + "      </tsf:BuildForm>\n";
}

/// A document of 4.1 with everything below the root that the library models, laid out as it is written.
std::string Full41() {
  return Xml(Edition::V41,
             "  <tsf:FileInfo createDate=\"2024-04-01T09:30:00\" />\n"
             "  <tsf:StructureType type=\"\" jobName=\"\" company=\"\" stationType=\"NO\" />\n"
             "  <tsf:XSections refAlign=\"CL-1\" refVertical=\"VL-1\" projectPhase=\"\">\n"
             "    <tsf:XSection cumulativeDist=\"0.0000\">\n" +
                 Form41("A") + Form41("B") +
                 "      <tsf:ExistingBuildForm name=\"G\">\n"
                 "        <tsf:ExistingComposedPnt name=\"G1\">-1.0000 2.0000</tsf:ExistingComposedPnt>\n"
                 "        <tsf:ExistingComposedPnt name=\"G2\">1.0000 2.0000</tsf:ExistingComposedPnt>\n"
                 "      </tsf:ExistingBuildForm>\n"
                 "    </tsf:XSection>\n"
                 "    <tsf:FormCtrlTarget controlItem=\"Width\" targetScope=\"S\" targetRegio=\"R\" "
                 "targetPntType=\"Left Right\">\n"
                 "      <tsf:FormCtrlTargetPnt cumulativeDist=\"0.0000\" buildFormName=\"A\" code=\"CL\" />\n"
                 "      <tsf:FormCtrlTargetPnt cumulativeDist=\"0.0000\" buildFormName=\"A\" code=\"R1\" />\n"
                 "    </tsf:FormCtrlTarget>\n"
                 "  </tsf:XSections>\n");
}

TEST(CarriedContent, IsNothingInADocumentThatTheLibraryModelsWhole) {
  const DesignDocument document = ReadText(Full41());
  EXPECT_TRUE(document.carried.IsEmpty());
  EXPECT_THAT(document.carried.Rows(), IsEmpty());
  EXPECT_FALSE(document.carried.HasRoadGeometry());
  EXPECT_EQ(Rewritten(Full41()), Full41());
  EXPECT_TRUE(DesignDocument().carried.IsEmpty());
}

// --- in place ------------------------------------------------------------------------------------------------------

struct Insertion {
  const char* name;
  std::string_view before;  ///< a text of `Full41` that occurs once
  std::string_view what;
};

/// Something unknown at every level, first, last and in the middle.
class UnknownContent : public testing::TestWithParam<Insertion> {};

constexpr Insertion kInsertions[] = {
    {"FirstInRoot", "  <tsf:FileInfo", "  <rgm:RoadGm name=\"x\">\n    <rgm:A>1 2</rgm:A>\n  </rgm:RoadGm>\n"},
    {"BetweenHeadAndSets", "  <tsf:XSections", "  <vendor>\n    <x />\n  </vendor>\n"},
    {"LastInRoot", "</tsf:TSFormControlData>", "  <rgm:RoadGm />\n  <!-- end -->\n  <?tool data?>\n"},
    {"CommentInRoot", "  <tsf:StructureType", "  <!-- one -->\n  <!-- two -->\n"},
    {"FirstInSet", "    <tsf:XSection ", "    <vendor a=\"1\" />\n"},
    {"BeforeTargets", "    <tsf:FormCtrlTarget ", "    <!-- the control targets -->\n    <tsf:Unknown />\n"},
    {"LastInSet", "  </tsf:XSections>", "    <vendor>text</vendor>\n"},
    {"FirstInSection", "      <tsf:BuildForm name=\"A\"", "      <?tool section?>\n"},
    {"BetweenForms", "      <tsf:BuildForm name=\"B\"", "      <vendor />\n      <!-- B -->\n"},
    {"BeforeGround", "      <tsf:ExistingBuildForm", "      <!-- ground -->\n"},
    {"LastInSection", "    </tsf:XSection>", "      <tsf:Later version=\"5\" />\n"},
    {"InGround", "        <tsf:ExistingComposedPnt name=\"G2\"", "        <vendor />\n"},
    {"InTarget", "      <tsf:FormCtrlTargetPnt cumulativeDist=\"0.0000\" buildFormName=\"A\" code=\"R1\"",
     "      <vendor />\n      <!-- second point -->\n"},
    {"AttributeOfFileInfo", " createDate", " vendor=\"1\""},
    {"AttributeOfStructureType", " stationType=", " vendor=\"1\""},
    {"BeforeRoot", "<tsf:TSFormControlData",
     "<!-- one -->\n<?xml-stylesheet href=\"a.xsl\"?>\n<!DOCTYPE tsf:TSFormControlData>\n<!-- two -->\n"},
};

INSTANTIATE_TEST_SUITE_P(Everywhere, UnknownContent, testing::ValuesIn(kInsertions),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_P(UnknownContent, StaysInPlace) {
  const Insertion& insertion = GetParam();
  const std::string text =
      With(Full41(), insertion.before, std::string(insertion.what) + std::string(insertion.before));
  if (!insertion.what.starts_with(' ') || insertion.what.starts_with("  ")) {
    EXPECT_EQ(Rewritten(text), text);
  } else {  // an attribute goes behind those that the library writes
    EXPECT_THAT(Rewritten(text), HasSubstr(std::string(insertion.what) + " />"));
  }
  EXPECT_EQ(Rewritten(Rewritten(text)), Rewritten(text));
  DesignDocument document = ReadText(text);
  EXPECT_FALSE(document.carried.IsEmpty());
  EXPECT_THAT(Unplaced(document), IsEmpty());
}

TEST(CarriedContent, StaysBehindTheRoot) {
  const std::string text = Full41() + "<!-- behind -->\n<?tool end?>\n";
  EXPECT_EQ(Rewritten(text), text);
}

TEST(CarriedContent, StaysInTheElementsThatHoldAText) {
  const std::string text =
      With(With(Full41(), "-1.0000 2.0000", "<!-- left -->-1.0000 2.0000"), "name=\"G1\"", "name=\"G1\" vendor=\"1\"");
  const std::string written = Rewritten(text);
  ExpectInOrder(written, {"name=\"G1\" vendor=\"1\">", "<!-- left -->", "-1.0000 2.0000</tsf:ExistingComposedPnt>"});
  EXPECT_EQ(Rewritten(written), written);
}

TEST(CarriedContent, HoldsUnknownAttributesAtEveryLevel) {
  std::string text = Full41();
  for (const std::string_view tag :
       {"<tsf:FileInfo", "<tsf:StructureType", "<tsf:XSections", "<tsf:XSection ", "<tsf:BuildForm name=\"A\"",
        "<tsf:ExistingBuildForm", "<tsf:ExistingComposedPnt name=\"G2\"", "<tsf:FormCtrlTarget ",
        "<tsf:FormCtrlTargetPnt cumulativeDist=\"0.0000\" buildFormName=\"A\" code=\"R1\""}) {
    const std::string owner(tag);
    text = With(text, tag, owner + (owner.back() == ' ' ? "vendor=\"x\" " : " vendor=\"x\""));
  }
  DesignDocument document = ReadText(text);
  EXPECT_THAT(
      RowsOf(document.carried.Rows()),
      ElementsAre(Pair("attribute vendor of tsf:FileInfo", 1), Pair("attribute vendor of tsf:StructureType", 1),
                  Pair("attribute vendor of tsf:XSections", 1), Pair("attribute vendor of tsf:XSection", 1),
                  Pair("attribute vendor of tsf:BuildForm", 1), Pair("attribute vendor of tsf:ExistingBuildForm", 1),
                  Pair("attribute vendor of tsf:ExistingComposedPnt", 1),
                  Pair("attribute vendor of tsf:FormCtrlTarget", 1),
                  Pair("attribute vendor of tsf:FormCtrlTargetPnt", 1)));
  const std::string written = WriteText(document);
  ExpectInOrder(written,
                {"createDate=\"2024-04-01T09:30:00\" vendor=\"x\"", "stationType=\"NO\" vendor=\"x\"",
                 "projectPhase=\"\" vendor=\"x\"", "cumulativeDist=\"0.0000\" vendor=\"x\">",
                 "name=\"A\" xSectType=\"\" vendor=\"x\"", "name=\"G\" vendor=\"x\"", "name=\"G2\" vendor=\"x\"",
                 "targetPntType=\"Left Right\" vendor=\"x\"", "code=\"R1\" vendor=\"x\" />"});
  EXPECT_EQ(Rewritten(written), written);
}

TEST(CarriedContent, HoldsUnknownAttributesAndElementsOfPoints) {
  const std::string xml =
      Xml(Edition::V41,
          "<tsf:XSections><tsf:XSection cumulativeDist='0'><tsf:BuildForm name='A'>"
          "<tsf:ComposedPnt code='CL' location='Center' dataType='WidthHeight' tolerance='0.05'>0 0</tsf:ComposedPnt>"
          "<tsf:ComposedPnt code='R1' location='Right' dataType='Percent' vendor='y' vendor2='z'>1 "
          "2<measured>3</measured></tsf:ComposedPnt>"
          "</tsf:BuildForm></tsf:XSection></tsf:XSections>");
  const std::string written = Rewritten(xml);
  ExpectInOrder(written, {"code=\"CL\"", " tolerance=\"0.05\">", "code=\"R1\"", " vendor=\"y\" vendor2=\"z\">",
                          "<measured>3</measured>", "1.0000"});
  EXPECT_EQ(Rewritten(written), written);
}

TEST(CarriedContent, DoesNotReplaceWhatTheLibraryWrites) {
  // An attribute of an edition that does not read it is known all the same: nothing of it is written twice.
  const std::string xml = Xml(Edition::V40, "<tsf:XSections refAlign='A' alignment='true'/>");
  EXPECT_THAT(Rewritten(xml), HasSubstr("<tsf:XSections refAlign=\"A\" refVertical=\"\" projectPhase=\"\" />"));
}

TEST(CarriedContent, HoldsStrayText) {
  const std::string xml =
      Xml(Edition::V41,
          "root text<tsf:XSections>set text<tsf:XSection cumulativeDist='0'>section text</tsf:XSection>"
          "more<![CDATA[<data>]]></tsf:XSections>");
  DesignDocument document = ReadText(xml);
  EXPECT_THAT(RowsOf(document.carried.Rows()),
              ElementsAre(Pair("text of tsf:TSFormControlData", 1), Pair("text of tsf:XSections", 3),
                          Pair("text of tsf:XSection", 1)));
  const std::string written = WriteText(document);
  ExpectInOrder(written, {"root text", "<tsf:XSections", "set text", "<tsf:XSection ", "section text",
                          "</tsf:XSection>", "more", "<![CDATA[<data>]]>", "</tsf:XSections>"});
  EXPECT_EQ(Rewritten(written), written);
}

TEST(CarriedContent, HoldsTheTextOfTargetsWhereOnlyTheirPointsAreRead) {
  const std::string xml = Xml(Edition::V41,
                              "<tsf:XSections><tsf:FormCtrlTarget controlItem='Width'>L1 R1"
                              "</tsf:FormCtrlTarget></tsf:XSections>");
  ExpectInOrder(Rewritten(xml), {"<tsf:FormCtrlTarget ", "L1 R1", "</tsf:FormCtrlTarget>"});
}

TEST(CarriedContent, HoldsTheTargetPointsOfAnEditionThatOnlyReadsCodes) {
  const std::string xml =
      Xml(Edition::V20,
          "<tsf:XSections><tsf:XSection cumulativeDist='0'><tsf:BuildForm name='A'>"
          "<tsf:ComposedPnt code='A'>0 0</tsf:ComposedPnt><tsf:ComposedPnt code='B'>1 2</tsf:ComposedPnt>"
          "<tsf:FormCtrlTarget workType='RE_CutWork'>A B<tsf:FormCtrlTargetPnt code='x'/>"
          "</tsf:FormCtrlTarget></tsf:BuildForm></tsf:XSection></tsf:XSections>");
  ExpectInOrder(Rewritten(xml), {"<tsf:FormCtrlTarget ", "<tsf:FormCtrlTargetPnt code=\"x\"", "A B"});
}

// --- where neighbours move -----------------------------------------------------------------------------------------

TEST(CarriedContent, StaysWithItsSectionWhenTheSectionsAreOrdered) {
  const auto section = [](const char* station, const char* vendor, bool changed = false) {
    return "<tsf:XSection cumulativeDist='" + std::string(station) + "'" + (changed ? " xSectChg='true'" : "") +
           " vendor='" + vendor + "'><in>" + vendor + "</in></tsf:XSection><!-- behind " + vendor + " -->";
  };
  const std::string xml =
      Xml(Edition::V41, "<tsf:XSections><!-- first -->" + section("40", "forty") + section("20", "change", true) +
                            section("20", "twenty") + section("", "unset") + section("20", "twenty again") +
                            "</tsf:XSections>");
  DesignDocument document = ReadText(xml);
  EXPECT_THAT(document.carried.SectionOrder(0), ElementsAre(4, 3, 1, 0, 2));
  EXPECT_THAT(document.carried.SectionOrder(1), IsEmpty());
  const std::string written = WriteText(document);
  ExpectInOrder(written, {"<!-- first -->", "cumulativeDist=\"\" vendor=\"unset\"", "<in>unset</in>",
                          "<!-- behind unset -->", "cumulativeDist=\"20.0000\" vendor=\"twenty\"", "<in>twenty</in>",
                          "<!-- behind twenty -->", "vendor=\"twenty again\"", "<!-- behind twenty again -->",
                          "xSectChg=\"true\" vendor=\"change\"", "<in>change</in>", "<!-- behind change -->",
                          "cumulativeDist=\"40.0000\" vendor=\"forty\"", "<in>forty</in>", "<!-- behind forty -->"});
  EXPECT_EQ(Rewritten(written), written);
}

TEST(CarriedContent, StaysInPlaceWhenAFormBeforeItIsNotWritten) {
  std::string xml = Full41();
  xml = With(xml, "      <tsf:BuildForm name=\"A\"",
             "<tsf:BuildForm name='short' vendor='lost'><!-- lost too --><tsf:ComposedPnt "
             "code='A'>0 0</tsf:ComposedPnt></tsf:BuildForm><!-- before A -->\n      <tsf:BuildForm name=\"A\"");
  xml =
      With(xml, "<tsf:BuildForm name=\"B\" xSectType=\"\">", "<tsf:BuildForm name=\"B\" xSectType=\"\" vendor=\"b\">");
  DesignDocument document = ReadText(xml);
  const std::string written = WriteText(document);
  EXPECT_THAT(written, Not(HasSubstr("lost")));
  ExpectInOrder(written, {"<tsf:XSection ", "<!-- before A -->", "name=\"A\" xSectType=\"\">",
                          "name=\"B\" xSectType=\"\" vendor=\"b\">"});
  EXPECT_THAT(Unplaced(document), ElementsAre(Pair("attribute vendor of tsf:BuildForm", 1), Pair("comment", 1)))
      << "what has no place any more is reported";
}

TEST(CarriedContent, StaysInPlaceWhenAGroundFormBeforeItIsNotWritten) {
  std::string xml = With(Full41(), "      <tsf:ExistingBuildForm name=\"G\">",
                         "<tsf:ExistingBuildForm name='short'><tsf:ExistingComposedPnt>0 0</tsf:ExistingComposedPnt>"
                         "</tsf:ExistingBuildForm><tsf:ExistingBuildForm name=\"G\" vendor=\"g\">");
  EXPECT_THAT(Rewritten(xml), HasSubstr("name=\"G\" vendor=\"g\">"));
}

TEST(CarriedContent, StaysInPlaceWhenSetsFollowEachOther) {
  const std::string xml = Xml(Edition::V41,
                              "  <tsf:XSections refAlign=\"A\" refVertical=\"\" projectPhase=\"\" vendor=\"a\" />\n"
                              "  <!-- between -->\n"
                              "  <tsf:XSections refAlign=\"B\" refVertical=\"\" projectPhase=\"\">\n"
                              "    <!-- in B -->\n"
                              "  </tsf:XSections>\n"
                              "  <rgm:RoadGm />\n");
  EXPECT_EQ(Rewritten(xml), xml);
}

// --- other editions ------------------------------------------------------------------------------------------------

TEST(CarriedContent, StaysInPlaceWhenTheEditionChanges) {
  std::string xml = Full41();
  for (const Insertion& insertion : kInsertions) {
    if (insertion.what.starts_with(' ') && !insertion.what.starts_with("  ")) continue;
    if (std::string_view(insertion.name) == "InTarget" || std::string_view(insertion.name) == "InGround") continue;
    xml = With(xml, insertion.before, std::string(insertion.what) + std::string(insertion.before));
  }
  const std::string in20 = Converted(xml, Edition::V20);
  ExpectInOrder(in20, {"<!-- one -->",
                       "<?xml-stylesheet",
                       "<!DOCTYPE",
                       "<!-- two -->",
                       "<tsf:TSFormControlData",
                       "<rgm:RoadGm name=\"x\">",
                       "<rgm:A>1 2</rgm:A>",
                       "<!-- one -->",
                       "<!-- two -->",
                       "<vendor>",
                       "<tsf:XSections",
                       "<vendor a=\"1\" />",
                       "<tsf:XSection ",
                       "<?tool section?>",
                       "<tsf:BuildForm name=\"A\"",
                       "<vendor />",
                       "<!-- B -->",
                       "<tsf:BuildForm name=\"B\"",
                       "<!-- ground -->",
                       "<tsf:Later version=\"5\" />",
                       "</tsf:XSection>",
                       "<!-- the control targets -->",
                       "<tsf:Unknown />",
                       "<vendor>text</vendor>",
                       "</tsf:XSections>",
                       "<rgm:RoadGm />",
                       "<!-- end -->",
                       "<?tool data?>"});
  for (const Edition edition : {Edition::V40, Edition::Maff10}) {
    const std::string later = Converted(xml, edition);
    EXPECT_EQ(later.substr(later.find("<rgm:RoadGm name")), xml.substr(xml.find("<rgm:RoadGm name")));
  }
}

TEST(CarriedContent, HasTheRoadGeometryNamespaceOfTheEdition) {
  const std::string xml = Xml(Edition::V41, "  <rgm:RoadGm />\n");
  for (const Edition edition : kWritableEditions) {
    EXPECT_THAT(Converted(xml, edition), HasSubstr(RootOpen(edition) + "  <rgm:RoadGm />\n"));
  }
}

TEST(CarriedContent, HasTheNamespaceOfTheEditionWhereItDeclaresOneItself) {
  const auto document = [](Edition edition) {
    const EditionScope scope(edition);
    const VornSchema& schema = VornSchema::Instance();
    return Xml(edition, "  <v:extra xmlns:v=\"urn:v\">\n    <rgm:RoadGm xmlns:rgm=\"" +
                            std::string(schema.Rgm().GetString()) +
                            "\" />\n  </v:extra>\n  <tsf:XSections refAlign=\"\" refVertical=\"\" projectPhase=\"\" "
                            "xmlns:tsf=\"" +
                            schema.Tsf().GetString() + "\" />\n");
  };
  for (const Edition edition : {Edition::V40, Edition::V41, Edition::Maff10}) {
    EXPECT_EQ(Converted(document(Edition::V41), edition), document(edition));
  }
}

TEST(CarriedContent, KeepsTheRootsTagAndItsAttributesInOrder) {
  const EditionScope scope(Edition::V40);
  const VornSchema& schema = VornSchema::Instance();
  const auto root = [&](const std::string& rgm, const std::string& tsf, const std::string& location) {
    return std::string(kDeclaration) + "<tsf:Special version=\"3\" xmlns:rgm=\"" + rgm + "\" xsi:schemaLocation=\"" +
           location + "\" xmlns:v=\"urn:v\" xmlns:xsi=\"" + VornSchema::Xsi().GetString() +
           "\" v:a=\"1\" xmlns:tsf=\"" + tsf + "\" />\n";
  };
  const std::string in40 = root(schema.Rgm().GetString(), schema.Tsf().GetString(), schema.Location().GetString());
  EXPECT_EQ(Rewritten(in40), in40);
  const std::string in41 = Converted(in40, Edition::V41);
  const EditionScope later(Edition::V41);
  EXPECT_EQ(in41, root(schema.Rgm().GetString(), schema.Tsf().GetString(), schema.Location().GetString()));
}

TEST(CarriedContent, ReportsUnknownAttributesOfTheRoot) {
  std::string xml =
      With(Full41(), "<tsf:TSFormControlData ", "<tsf:TSFormControlData version=\"3\" xmlns:v=\"urn:v\" ");
  EXPECT_THAT(RowsOf(ReadText(xml).carried.Rows()), ElementsAre(Pair("attribute version of tsf:TSFormControlData", 1),
                                                                Pair("attribute xmlns:v of tsf:TSFormControlData", 1)));
  EXPECT_EQ(Rewritten(xml), xml);
}

TEST(CarriedContent, ReportsASchemaLocationUnderAPrefixOfAnotherNamespace) {
  const std::string xml = With(Full41(), "<tsf:TSFormControlData ",
                               "<tsf:TSFormControlData xmlns:v=\"urn:v\" v:schemaLocation=\"urn:a a.xsd\" ");
  EXPECT_THAT(RowsOf(ReadText(xml).carried.Rows()),
              ElementsAre(Pair("attribute xmlns:v of tsf:TSFormControlData", 1),
                          Pair("attribute v:schemaLocation of tsf:TSFormControlData", 1)));
  EXPECT_EQ(Rewritten(xml), xml);
}

TEST(CarriedContent, DoesNotReportTheRootsOwnDeclarationsUnderWhateverPrefix) {
  std::string xml = Full41();
  for (std::size_t at = xml.find("xsi"); at != std::string::npos; at = xml.find("xsi", at)) xml.replace(at, 3, "i");
  EXPECT_TRUE(ReadText(xml).carried.IsEmpty());
}

TEST(CarriedContent, IsDroppedBelowControlTargetsThatMove) {
  std::string xml = With(Full41(), "<tsf:FormCtrlTarget ", "<tsf:FormCtrlTarget vendor=\"1\" ");
  xml = With(xml, " code=\"R1\" />", " code=\"R1\" vendor=\"2\" />");
  xml = With(xml, "    </tsf:FormCtrlTarget>", "      <!-- of the target -->\n    </tsf:FormCtrlTarget>");
  xml = With(xml, "  </tsf:XSections>", "    <!-- of the set -->\n  </tsf:XSections>");
  DesignDocument document = ReadText(xml);
  EXPECT_THAT(RowsOf(document.carried.DropBelowControlTargets()),
              ElementsAre(Pair("attribute vendor of tsf:FormCtrlTarget", 1),
                          Pair("attribute vendor of tsf:FormCtrlTargetPnt", 1), Pair("comment", 1)));
  EXPECT_THAT(RowsOf(document.carried.Rows()), ElementsAre(Pair("comment", 1)));
  EXPECT_THAT(document.carried.DropBelowControlTargets(), IsEmpty());
}

TEST(CarriedContent, IsReportedWhenTheElementThatHeldItIsNotWritten) {
  std::string xml = With(Full41(), " createDate", " vendor=\"1\" createDate");
  xml = With(xml, "name=\"G1\"", "name=\"G1\" vendor=\"2\"");
  DesignDocument document = ReadText(xml);
  ConvertEdition(document, Edition::V20);
  EXPECT_THAT(Unplaced(document), ElementsAre(Pair("attribute vendor of tsf:FileInfo", 1),
                                              Pair("attribute vendor of tsf:ExistingComposedPnt", 1)));
}

// --- reports -------------------------------------------------------------------------------------------------------

TEST(CarriedContent, IsDescribedInTheOrderOfTheDocument) {
  std::string xml = With(Full41(), "  <tsf:FileInfo", "  <!-- a --><rgm:RoadGm/><?tool x?>  <tsf:FileInfo");
  xml = With(xml, "</tsf:TSFormControlData>", "<!-- b --><rgm:CtrlPnts/></tsf:TSFormControlData><!-- c -->");
  xml = With(xml, "<tsf:TSFormControlData", "<!DOCTYPE tsf:TSFormControlData><tsf:TSFormControlData");
  const DesignDocument document = ReadText(xml);
  EXPECT_EQ(Describe(document.carried.Rows()),
            "document type, comment (3), rgm:RoadGm, processing instruction tool, rgm:CtrlPnts");
  EXPECT_TRUE(document.carried.HasRoadGeometry());
  EXPECT_EQ(Describe(std::vector<CarriedContent::Row>()), "");
}

TEST(CarriedContent, RemembersTheModelledElementsOfTheRootByFirstAppearance) {
  const DesignDocument document =
      ReadText(Xml(Edition::V41, "<tsf:XSections/><x/><tsf:FileInfo/><tsf:XSections/><tsf:FileInfo/>"));
  EXPECT_THAT(document.carried.RootOrder(), ElementsAre("tsf:XSections", "tsf:FileInfo"));
  EXPECT_EQ(document.carried.RootTag(), "tsf:TSFormControlData");
}

}  // namespace
}  // namespace vorn_host
