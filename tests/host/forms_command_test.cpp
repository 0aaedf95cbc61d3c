// `vorn forms`: the forms of a document with their attribute records and pavement categories.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "tests/host/editing.h"
#include "tests/host/tool.h"

namespace {

using namespace host_test;  // NOLINT(google-build-using-namespace): the vocabulary of these tests
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

class FormsCommand : public ToolTest {
 protected:
  /// The forms of a document, as programs are told.
  [[nodiscard]] Json FormsOf(const std::string& text) const {
    WriteAll(Path("in.xml"), text);
    return OutputJson({"forms", Path("in.xml"), "--json"})["forms"];
  }
  [[nodiscard]] Json FormOf(std::string_view name, std::string_view type) const {
    return FormsOf(OneSection(FormXml(name, type, FillPoints())))[0];
  }
};

TEST_F(FormsCommand, ListsTheFormsWithTheirAttributesAndCategories) {
  EXPECT_THAT(Output({"forms", Sample("road-4.1.xml")}),
              AllOf(HasSubstr("Edition             4.1"), HasSubstr("Work type           道路土工"),
                    HasSubstr("盛土面 (盛土工): 6 forms, 64 points\n"
                              "    plan surface    yes\n"
                              "    attributes      盛土工  1 1 1 0 0 1 0 0\n"
                              "    pavement        none\n"),
                    HasSubstr("基層 (基層工): 10 forms, 30 points\n"
                              "    plan surface    no\n"
                              "    attributes      none on record\n"
                              "    pavement        category 3\n")));
}

TEST_F(FormsCommand, TellsProgramsTheSame) {
  const Json json = OutputJson({"forms", Sample("road-4.1.xml"), "--json"});
  EXPECT_EQ(json["file"], Sample("road-4.1.xml"));
  EXPECT_EQ(json["edition"], "4.1");
  EXPECT_EQ(json["editionAssumed"], false);
  EXPECT_EQ(json["workType"], "道路土工");
  const Json& surface = json["forms"][0];
  EXPECT_EQ(surface["name"], "盛土面");
  EXPECT_EQ(surface["xSectType"], "盛土工");
  EXPECT_EQ(surface["forms"], 6);
  EXPECT_EQ(surface["points"], 64);
  EXPECT_EQ(surface["planSurface"], true);
  EXPECT_EQ(surface["attributes"]["name"], "盛土工");
  EXPECT_EQ(surface["attributes"]["flags"], (Json{1, 1, 1, 0, 0, 1, 0, 0}));
  EXPECT_TRUE(surface["pavementCategory"].is_null());
  EXPECT_TRUE(json["forms"][1]["attributes"].is_null());
  EXPECT_EQ(json["forms"][1]["pavementCategory"], 1);
}

TEST_F(FormsCommand, ListsAKindOfFormOnceInTheOrderOfItsFirst) {
  const Json forms = FormsOf(DesignXml(SectionXml("0.0000", FillForm("S") + LayerForm("P")) +
                                       SectionXml("20.0000", LayerForm("Q") + FillForm("S"))));
  ASSERT_EQ(forms.size(), 3u);
  EXPECT_EQ(forms[0]["name"], "S");
  EXPECT_EQ(forms[0]["forms"], 2);
  EXPECT_EQ(forms[0]["points"], 10);
  EXPECT_EQ(forms[1]["name"], "P");
  EXPECT_EQ(forms[2]["name"], "Q");
}

TEST_F(FormsCommand, TellsFormsOfOneNameAndTwoTypesApart) {
  EXPECT_EQ(FormsOf(OneSection(FillForm("S") + LayerForm("S"))).size(), 2u);
}

TEST_F(FormsCommand, FindsThePavementByItsNameWhenTheTypeTellsNone) {
  EXPECT_EQ(FormOf("表層", "")["pavementCategory"], 1);
  EXPECT_EQ(FormOf("表層", "舗装")["pavementCategory"], 1);
  EXPECT_EQ(FormOf("S", "表層工")["pavementCategory"], 1);
  EXPECT_TRUE(FormOf("S", "盛土工")["pavementCategory"].is_null());
}

TEST_F(FormsCommand, FindsTheAttributesByTheNameOfAFormWithoutAType) {
  EXPECT_EQ(FormOf("盛土工", "")["attributes"]["name"], "盛土工");
  EXPECT_TRUE(FormOf("盛土工", "未知")["attributes"].is_null());
}

TEST_F(FormsCommand, FindsTheAttributesOfAnotherWorkType) {
  const std::string text = OneSection(FillForm("S"));
  const std::string asPavement =
      WithBefore(text, "  <tsf:XSections", "  <tsf:StructureType type=\"道路舗装\" stationType=\"NO\" />\n");
  EXPECT_EQ(FormsOf(asPavement)[0]["attributes"]["name"], "盛土工");
  EXPECT_EQ(FormsOf(text)[0]["attributes"]["name"], "盛土工") << "no work type at all";
}

TEST_F(FormsCommand, SaysSoWhenThereIsNoWorkTypeAndNoForm) {
  WriteAll(Path("in.xml"), DesignXml(""));
  EXPECT_THAT(Output({"forms", Path("in.xml")}),
              AllOf(HasSubstr("Work type           not told"), HasSubstr("Kinds of form       0")));
}

TEST_F(FormsCommand, ReadsEveryEdition) {
  for (const std::string edition : {"2.0", "4.0", "4.1", "maff-1.0"}) {
    (void)Output({"sample", Path("in.xml"), "--edition", edition, "--sections", "3"});
    const Json json = OutputJson({"forms", Path("in.xml"), "--json"});
    EXPECT_EQ(json["edition"], edition);
    EXPECT_GT(json["forms"].size(), 1u) << edition;
  }
  EXPECT_THAT(Output({"forms", Sample("river-2.0.xml")}), HasSubstr("堤防盛土面 (盛土工): 8 forms, 78 points"));
}

TEST_F(FormsCommand, ReadsAnUnknownEditionAsTold) {
  std::string text = OneSection(FillForm());
  for (std::size_t at = text.find("4.1"); at != std::string::npos; at = text.find("4.1", at))
    text.replace(at, 3, "9.9");
  WriteAll(Path("in.xml"), text);
  ExpectFailure({"forms", Path("in.xml")}, HasSubstr("in.xml"));
  EXPECT_THAT(Output({"forms", Path("in.xml"), "--assume", "4.1"}), HasSubstr("4.1 (assumed)"));
}

TEST_F(FormsCommand, ReplacesWhatCodePage932CannotHoldOnlyWhenAsked) {
  WriteAll(Path("in.xml"), OneSection(FillForm("é")));
  ExpectFailure({"forms", Path("in.xml")}, HasSubstr("é"));
  EXPECT_THAT(Output({"forms", Path("in.xml"), "--lossy"}), AllOf(HasSubstr("〓 (盛土工)"), Not(HasSubstr("é"))));
}

TEST_F(FormsCommand, RefusesMisuse) {
  ExpectFailure({"forms"}, HasSubstr("FILE"));
  ExpectFailure({"forms", Path("absent.xml")}, HasSubstr("absent.xml"));
  ExpectFailure({"forms", Sample("road-4.1.xml"), "--edition", "2.0"}, HasSubstr("--edition"));
}

}  // namespace
