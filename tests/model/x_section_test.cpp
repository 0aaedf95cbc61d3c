#include "vorn/model/x_section.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "tests/model/editions.h"
#include "tests/model/model_builders.h"

namespace {

using model_test::EnabledForm;
using model_test::FormOf;
using model_test::PointOn;
using model_test::SectionAt;
using model_test::TargetOn;
using test_support::ReadXml;
using test_support::WriteFailuresOverlooked;
using test_support::WriteXml;
using testing::HasSubstr;
using testing::IsEmpty;

using PntType = VornComposedPnt::PntType;

static_assert(std::is_nothrow_move_constructible_v<VornXSection>);
static_assert(std::is_nothrow_move_assignable_v<VornXSection>);

VornExistingBuildForm GroundForm(const char* name, int points = 2) {
  VornExistingBuildForm form;
  form.SetName(name);
  for (int i = 0; i < points; ++i) {
    VornExistingComposedPnt point;
    point.SetCLDist(1.0 * i);
    point.SetGh(10.0);
    form.GetComposedPntArray().Add(point);
  }
  return form;
}

// --- fields --------------------------------------------------------------------------------------------------------

TEST(XSection, StartsWithItsDefaults) {
  const VornXSection section;
  EXPECT_EQ(section.tagName(), "tsf:XSection");
  EXPECT_EQ(section.GetExistingFlag(), 0);
  EXPECT_EQ(section.GetSectionID(), 0xFFFFFFFFu);
  EXPECT_EQ(section.GetName(), "");
  EXPECT_FALSE(section.GetControlSect());
  EXPECT_FALSE(section.GetXSectChg());
  EXPECT_FALSE(section.GetHeight().IsSet());
  EXPECT_FALSE(section.GetCumulativeDist().IsSet());
  EXPECT_TRUE(section.GetBuildFormArray().IsEmpty());
  EXPECT_EQ(section.GetShiftGH(), 0.0);
  EXPECT_EQ(section.GetShiftDist(), 0.0);
  EXPECT_TRUE(section.GetExistingBuildFormArray().IsEmpty());
  EXPECT_EQ(section.GetDirectionAngle(), "");
  EXPECT_EQ(section.GetTargetPntID(), "");
}

VornXSection FilledSection() {
  VornXSection section;
  section.SetExistingFlag(1);
  section.SetSectionID(2);
  section.SetName("No.1");
  section.SetControlSect(true);
  section.SetXSectChg(true);
  section.SetHeight(3.0);
  section.SetCumulativeDist(20.00005);
  Vorn_BuildFormArray forms;
  forms.Add(EnabledForm("road"));
  section.SetBuildFormArray(forms);
  section.SetShiftGH(4.0);
  section.SetShiftDist(5.0);
  VornExistingBuildFormArray ground;
  ground.Add(GroundForm("ground"));
  section.SetExistingBuildFormArray(ground);
  section.SetDirectionAngle("90-00-00");
  section.SetTargetPntID("T1");
  return section;
}

void ExpectFilled(const VornXSection& section) {
  EXPECT_EQ(section.GetExistingFlag(), 1);
  EXPECT_EQ(section.GetSectionID(), 2u);
  EXPECT_EQ(section.GetName(), "No.1");
  EXPECT_TRUE(section.GetControlSect());
  EXPECT_TRUE(section.GetXSectChg());
  EXPECT_EQ(section.GetHeight(), 3.0);
  EXPECT_EQ(section.GetCumulativeDist(), 20.00005);
  ASSERT_EQ(section.GetBuildFormArray().GetSize(), 1);
  EXPECT_EQ(section.GetBuildFormArray()[0].GetName(), "road");
  EXPECT_EQ(section.GetShiftGH(), 4.0);
  EXPECT_EQ(section.GetShiftDist(), 5.0);
  ASSERT_EQ(section.GetExistingBuildFormArray().GetSize(), 1);
  EXPECT_EQ(section.GetExistingBuildFormArray()[0].GetName(), "ground");
  EXPECT_EQ(section.GetDirectionAngle(), "90-00-00");
  EXPECT_EQ(section.GetTargetPntID(), "T1");
}

TEST(XSection, KeepsWhatItIsGiven) { ExpectFilled(FilledSection()); }

TEST(XSection, CopiesAndMovesEveryField) {
  const VornXSection original = FilledSection();
  VornXSection copy(original);
  ExpectFilled(copy);
  VornXSection assigned;
  assigned = original;
  ExpectFilled(assigned);
  assigned.GetBuildFormArray().RemoveAll();
  ExpectFilled(VornXSection(std::move(copy)));
  ExpectFilled(original);
}

TEST(XSection, LendsItsFieldsForChange) {
  VornXSection section;
  section.GetName() = "N";
  section.GetControlSect() = true;
  section.GetXSectChg() = true;
  section.GetHeigt() = 1.0;
  section.GetCumulativeDist() = 2.0;
  section.GetBuildFormArray().Add(VornBuildForm());
  section.GetShiftGH() = 3.0;
  section.GetShiftDist() = 4.0;
  section.GetExistingBuildFormArray().Add(VornExistingBuildForm());
  section.GetDirectionAngle() = "D";
  section.GetTargetPntID() = "T";
  const VornXSection& changed = section;
  EXPECT_EQ(changed.GetName(), "N");
  EXPECT_TRUE(changed.GetControlSect());
  EXPECT_TRUE(changed.GetXSectChg());
  EXPECT_EQ(changed.GetHeight(), 1.0);
  EXPECT_EQ(changed.GetCumulativeDist(), 2.0);
  EXPECT_EQ(changed.GetBuildFormArray().GetSize(), 1);
  EXPECT_EQ(changed.GetShiftGH(), 3.0);
  EXPECT_EQ(changed.GetShiftDist(), 4.0);
  EXPECT_EQ(changed.GetExistingBuildFormArray().GetSize(), 1);
  EXPECT_EQ(changed.GetDirectionAngle(), "D");
  EXPECT_EQ(changed.GetTargetPntID(), "T");
}

TEST(XSection, IsEnabledWithAStationAndEnabledForms) {
  VornXSection section;
  section.GetBuildFormArray().Add(EnabledForm("road"));
  EXPECT_FALSE(section.IsEnable());
  section.SetCumulativeDist(0.0);
  EXPECT_TRUE(section.IsEnable());
  section.GetBuildFormArray().Add(VornBuildForm());
  EXPECT_FALSE(section.IsEnable());
  section.GetBuildFormArray().RemoveAll();
  EXPECT_FALSE(section.IsEnable());
}

// --- XML -----------------------------------------------------------------------------------------------------------

class XSectionInEdition : public model_test::InEdition {};
class XSectionInEarlyEdition : public model_test::InEdition {};
class XSectionInLaterEdition : public model_test::InEdition {};

INSTANTIATE_TEST_SUITE_P(, XSectionInEdition, testing::ValuesIn(model_test::kEditions), model_test::InEdition::Name);
INSTANTIATE_TEST_SUITE_P(, XSectionInEarlyEdition, testing::ValuesIn(model_test::kEarlyEditions),
                         model_test::InEdition::Name);
INSTANTIATE_TEST_SUITE_P(, XSectionInLaterEdition, testing::ValuesIn(model_test::kLaterEditions),
                         model_test::InEdition::Name);

TEST_P(XSectionInEarlyEdition, WritesStationFlagsAndFormsOnly) {
  VornXSection section = FilledSection();
  EXPECT_EQ(WriteXml(section),
            "<tsf:XSection cumulativeDist=\"20.0001\" xSectChg=\"true\" controlSect=\"true\">\n"
            "  <tsf:BuildForm name=\"road\">\n"
            "    <tsf:ComposedPnt code=\"C\" location=\"Center\" existence=\"true\">0.0000 0.000</tsf:ComposedPnt>\n"
            "    <tsf:ComposedPnt code=\"R\" location=\"Right\" componentType=\"\" slopeType=\"\" existence=\"true\">"
            "0.0000 0.000</tsf:ComposedPnt>\n"
            "  </tsf:BuildForm>\n"
            "</tsf:XSection>\n");
}

TEST_P(XSectionInLaterEdition, WritesTheExistingGroundToo) {
  VornXSection section = FilledSection();
  EXPECT_EQ(WriteXml(section),
            "<tsf:XSection name=\"No.1\" cumulativeDist=\"20.0001\" xSectChg=\"true\" controlSect=\"true\""
            " directionAngle=\"90-00-00\" targetPntID=\"T1\">\n"
            "  <tsf:BuildForm name=\"road\" xSectType=\"\">\n"
            "    <tsf:ComposedPnt code=\"C\" location=\"Center\" dataType=\"WidthHeight\" existence=\"true\">"
            "0.0000 0.0000</tsf:ComposedPnt>\n"
            "    <tsf:ComposedPnt code=\"R\" location=\"Right\" componentType=\"\" dataType=\"WidthHeight\""
            " existence=\"true\">0.0000 0.0000</tsf:ComposedPnt>\n"
            "  </tsf:BuildForm>\n"
            "  <tsf:ExistingBuildForm name=\"ground\">\n"
            "    <tsf:ExistingComposedPnt name=\"\">0.0000 10.0000</tsf:ExistingComposedPnt>\n"
            "    <tsf:ExistingComposedPnt name=\"\">1.0000 10.0000</tsf:ExistingComposedPnt>\n"
            "  </tsf:ExistingBuildForm>\n"
            "</tsf:XSection>\n");
}

TEST_P(XSectionInEdition, WritesAnEmptyStationWhenThatIsUnsetAndNothingElse) {
  VornXSection section;
  EXPECT_EQ(WriteXml(section), "<tsf:XSection cumulativeDist=\"\"/>\n");
  EXPECT_FALSE(section.IsEnable());
}

TEST_P(XSectionInEdition, WritesEachFlagWhenItIsSet) {
  VornXSection section = SectionAt(20.0);
  section.SetXSectChg(true);
  EXPECT_EQ(WriteXml(section), "<tsf:XSection cumulativeDist=\"20.0000\" xSectChg=\"true\"/>\n");
  section.SetXSectChg(false);
  section.SetControlSect(true);
  EXPECT_EQ(WriteXml(section), "<tsf:XSection cumulativeDist=\"20.0000\" controlSect=\"true\"/>\n");
}

TEST_P(XSectionInLaterEdition, WritesEachTextWhenItIsNotEmpty) {
  VornXSection section = SectionAt(20.0);
  section.SetDirectionAngle("D");
  EXPECT_EQ(WriteXml(section), "<tsf:XSection cumulativeDist=\"20.0000\" directionAngle=\"D\"/>\n");
  section.SetDirectionAngle("");
  section.SetTargetPntID("T");
  EXPECT_EQ(WriteXml(section), "<tsf:XSection cumulativeDist=\"20.0000\" targetPntID=\"T\"/>\n");
}

TEST_P(XSectionInLaterEdition, WritesTheExistingGroundWhenItsFlagIsSet) {
  VornXSection section = FilledSection();
  section.SetExistingFlag(0);
  EXPECT_THAT(WriteXml(section), testing::Not(HasSubstr("Existing")));
  section.SetExistingFlag(-1);
  EXPECT_THAT(WriteXml(section), HasSubstr("<tsf:ExistingBuildForm"));
}

TEST_P(XSectionInEdition, WritesIntoTheNamespaceOfTheEdition) {
  VornXSection section;
  const std::string uri = VornSchema::Instance().Tsf().GetString();
  EXPECT_THAT(model_test::WriteXmlWithNamespaces(section), HasSubstr("<tsf:XSection xmlns=\"" + uri + "\" "));
}

TEST_P(XSectionInEdition, StopsWritingAtTheFirstFailure) {
  VornXSection section = FilledSection();
  EXPECT_THAT(WriteFailuresOverlooked(section), IsEmpty());
}

TEST_P(XSectionInEdition, ReadsWhatItWrites) {
  VornXSection written = FilledSection();
  const std::string xml = WriteXml(written);
  VornXSection read;
  ASSERT_TRUE(ReadXml(read, xml));
  EXPECT_EQ(read.GetCumulativeDist(), 20.0001);
  EXPECT_EQ(WriteXml(read), xml);
}

TEST_P(XSectionInEdition, ReadsTheAttributesOfEveryEdition) {
  VornXSection section;
  ASSERT_TRUE(ReadXml(section,
                      "<tsf:XSection other='x' targetPntID='T' directionAngle='D' controlSect='true' xSectChg='true'"
                      " cumulativeDist='20.5' name='N'/>"));
  EXPECT_EQ(section.GetName(), "N");
  EXPECT_EQ(section.GetCumulativeDist(), 20.5);
  EXPECT_TRUE(section.GetXSectChg());
  EXPECT_TRUE(section.GetControlSect());
  EXPECT_EQ(section.GetDirectionAngle(), "D");
  EXPECT_EQ(section.GetTargetPntID(), "T");
}

TEST_P(XSectionInEdition, ReadsAnEmptyStationAsUnset) {
  VornXSection section = SectionAt(20.0);
  ASSERT_TRUE(ReadXml(section, "<tsf:XSection cumulativeDist=''/>"));
  EXPECT_FALSE(section.GetCumulativeDist().IsSet());
}

TEST_P(XSectionInEdition, SetsAFlagForTheExactTextTrueOnly) {
  for (const char* text : {"True", "TRUE", "1", "", "false", "true "}) {
    VornXSection section;
    section.SetXSectChg(true);
    section.SetControlSect(true);
    ASSERT_TRUE(ReadXml(section, std::string("<tsf:XSection xSectChg='") + text + "' controlSect='" + text + "'/>"));
    EXPECT_FALSE(section.GetXSectChg()) << text;
    EXPECT_FALSE(section.GetControlSect()) << text;
  }
}

TEST_P(XSectionInEdition, KeepsWhatTheElementDoesNotName) {
  VornXSection section = FilledSection();
  ASSERT_TRUE(ReadXml(section, "<tsf:XSection/>"));
  ExpectFilled(section);
}

TEST_P(XSectionInEdition, RefusesAnotherTagAndStaysAsItWas) {
  VornXSection section = FilledSection();
  EXPECT_FALSE(ReadXml(section, "<tsf:XSections name='x'><tsf:BuildForm/></tsf:XSections>"));
  ExpectFilled(section);
}

/// The names of the forms that are read from the children, and whether the cursor came back.
template <typename Forms>
std::string Names(const Forms& forms) {
  std::string names;
  for (const auto& form : forms) names += form.GetName().GetString();
  return names;
}

TEST_P(XSectionInEdition, ReadsRunsOfFormsAndSkipsOtherChildren) {
  test_support::XmlTree tree = test_support::XmlTree::Parse(
      "<tsf:XSection><tsf:Unknown/><tsf:BuildForm name='A'/><tsf:BuildForm name='B'/><tsf:ExistingBuildForm name='a'/>"
      "<tsf:BuildForm name='C'/><tsf:FormCtrlTarget/><tsf:ExistingBuildForm name='b'/>"
      "<tsf:ExistingBuildForm name='c'/><tsf:Unknown/></tsf:XSection>");
  test_support::XmlTreeCursor cursor(tree);
  VornXSection section;
  ASSERT_TRUE(section.fromXML(&cursor));
  EXPECT_TRUE(cursor.IsOnRoot());
  EXPECT_EQ(Names(section.GetBuildFormArray()), "ABC");
  EXPECT_EQ(Names(section.GetExistingBuildFormArray()), "abc");
}

TEST_P(XSectionInEdition, SetsTheExistingFlagWhenTheFirstGroundFormHasPoints) {
  const std::string empty = "<tsf:ExistingBuildForm/>";
  const std::string filled = "<tsf:ExistingBuildForm><tsf:ExistingComposedPnt/></tsf:ExistingBuildForm>";
  const auto flagAfter = [](const std::string& children, std::int32_t before) {
    VornXSection section;
    section.SetExistingFlag(before);
    EXPECT_TRUE(ReadXml(section, "<tsf:XSection>" + children + "</tsf:XSection>"));
    return section.GetExistingFlag();
  };
  EXPECT_EQ(flagAfter(filled, 0), 1);
  EXPECT_EQ(flagAfter(filled + empty, 0), 1);
  EXPECT_EQ(flagAfter(empty, 1), 0);
  EXPECT_EQ(flagAfter(empty + filled, 1), 0);
  EXPECT_EQ(flagAfter("<tsf:BuildForm/>", 5), 5);
}

TEST_P(XSectionInEdition, FailsWhenARunOfFormsCannotBeRead) {
  for (const std::string child : {"<tsf:BuildForm/>", "<tsf:ExistingBuildForm/>"}) {
    test_support::XmlTree tree = test_support::XmlTree::Parse("<tsf:XSection>" + child + child + "</tsf:XSection>");
    int refused = 0;
    for (int n = 1; n <= 20; ++n) {
      test_support::XmlTreeCursor cursor(tree);
      cursor.FailAfter(n);
      VornXSection section;
      if (!section.fromXML(&cursor)) ++refused;
    }
    // The tags: the section's own, the run's and each form's, at the least.
    EXPECT_GE(refused, 4) << child;
  }
}

// --- look-ups ------------------------------------------------------------------------------------------------------

/// The forms "road" (points C, R), "pave" (points C, P) and "road" again (points C, Q).
VornXSection ThreeForms() {
  const auto form = [](const char* name, const char* type, const char* code) {
    VornBuildForm built = FormOf(name, {PointOn(VornLocation::Center, "C"), PointOn(VornLocation::Right, code)});
    built.SetXSectType(type);
    return built;
  };
  VornXSection section = SectionAt(20.0);
  section.GetBuildFormArray().Add(form("road", "A", "R"));
  section.GetBuildFormArray().Add(form("pave", "B", "P"));
  section.GetBuildFormArray().Add(form("road", "A", "Q"));
  return section;
}

int FindForm(const VornXSection& section, const char* formName, const char* pointName = nullptr) {
  const CString point(pointName);
  return section.Find(formName, pointName == nullptr ? nullptr : &point);
}

TEST(XSectionLookup, FindsTheFirstFormOfANameExactly) {
  const VornXSection section = ThreeForms();
  EXPECT_EQ(FindForm(section, "road"), 0);
  EXPECT_EQ(FindForm(section, "pave"), 1);
  EXPECT_EQ(FindForm(section, "Road"), -1);
  EXPECT_EQ(FindForm(VornXSection(), "road"), -1);
}

TEST(XSectionLookup, FindsTheFormOfANameThatHasAPoint) {
  const VornXSection section = ThreeForms();
  EXPECT_EQ(FindForm(section, "road", "C"), 0);
  EXPECT_EQ(FindForm(section, "road", "Q"), 2);
  EXPECT_EQ(FindForm(section, "road", "q"), -1);
  EXPECT_EQ(FindForm(section, "road", "P"), -1);
  EXPECT_EQ(FindForm(section, "pave", ""), -1);
}

/// Index of the form that is given; -1 for none.
int IndexOfForm(VornXSection& section, const char* formName, const char* pointName = nullptr) {
  const CString point(pointName);
  const VornBuildForm* form = section.GetBuildForm(formName, pointName == nullptr ? nullptr : &point);
  for (int i = 0; i < section.GetBuildFormArray().GetSize(); ++i) {
    if (form == &section.GetBuildFormArray()[i]) return i;
  }
  EXPECT_EQ(form, nullptr);
  return -1;
}

TEST(XSectionLookup, GivesTheFormThatItFinds) {
  VornXSection section = ThreeForms();
  EXPECT_EQ(IndexOfForm(section, "pave"), 1);
  EXPECT_EQ(IndexOfForm(section, "road", "Q"), 2);
  EXPECT_EQ(IndexOfForm(section, "other"), -1);
  EXPECT_EQ(IndexOfForm(section, "road", "P"), -1);
  VornXSection empty;
  EXPECT_EQ(IndexOfForm(empty, "road"), -1);
}

TEST(XSectionLookup, GivesTheFirstFormWhenOneOfItsPointsCarriesTheName) {
  for (const PntType role : {PntType::Main, PntType::Sub}) {
    VornXSection section = ThreeForms();
    section.GetBuildFormArray()[0].GetComposedPntArray()[1].SetXSectName("slope", role);
    section.GetBuildFormArray()[0].GetComposedPntArray()[1].SetXSectName("pave", role);
    EXPECT_EQ(IndexOfForm(section, "slope"), -1);
    EXPECT_EQ(IndexOfForm(section, "pave"), 1);
    section.GetBuildFormArray()[0].GetComposedPntArray()[0].SetXSectName("slope", role);
    EXPECT_EQ(IndexOfForm(section, "slope"), 0);
    EXPECT_EQ(IndexOfForm(section, "Slope"), -1);
    EXPECT_EQ(IndexOfForm(section, "slope", "C"), -1);
  }
}

TEST(XSectionLookup, GivesTheFirstFormForAnEmptyNameWhenOneOfItsPointsCarriesNone) {
  VornXSection section = ThreeForms();
  EXPECT_EQ(IndexOfForm(section, ""), 0);
  EXPECT_EQ(IndexOfForm(section, "", "C"), -1);
  for (VornComposedPnt& point : section.GetBuildFormArray()[0].GetComposedPntArray()) {
    point.SetXSectName("slope", PntType::Both);
  }
  EXPECT_EQ(IndexOfForm(section, ""), -1);
  section.GetBuildFormArray()[0].GetComposedPntArray()[1].SetXSectName("", PntType::Sub);
  EXPECT_EQ(IndexOfForm(section, ""), 0);
  section.GetBuildFormArray()[1].SetName("", false);
  EXPECT_EQ(IndexOfForm(section, ""), 1);
}

TEST(XSectionLookup, LooksForThatNameInTheFirstFormOnly) {
  VornXSection section = ThreeForms();
  section.GetBuildFormArray()[1].GetComposedPntArray()[0].SetXSectName("slope");
  EXPECT_EQ(IndexOfForm(section, "slope"), -1);
}

TEST(XSectionLookup, GivesTheMainCodeOfAPointOfTheFirstForm) {
  VornXSection section = ThreeForms();
  Vorn_ComposedPntArray& points = section.GetBuildFormArray()[0].GetComposedPntArray();
  points[1].SetCode("sub", PntType::Sub);
  section.GetBuildFormArray()[1].GetComposedPntArray()[1].SetSerialID(50);
  EXPECT_EQ(section.FindNameFromID(0), "C");
  EXPECT_EQ(section.FindNameFromID(1), "R");
  EXPECT_EQ(section.FindNameFromID(50), "");
  EXPECT_EQ(VornXSection().FindNameFromID(0), "");
}

TEST(XSectionLookup, GivesTheMainCodeOfTheFirstOfTwoPointsWithOneSerial) {
  VornXSection section = ThreeForms();
  Vorn_ComposedPntArray& points = section.GetBuildFormArray()[0].GetComposedPntArray();
  points.Add(PointOn(VornLocation::Right, "second"));
  points[2].SetSerialID(1);
  EXPECT_EQ(section.FindNameFromID(1), "R");
  points[2].SetSerialID(0);
  EXPECT_EQ(section.FindNameFromID(0), "C");
}

TEST(XSectionLookup, TellsWhetherATypeAndNameAreUsed) {
  const VornXSection section = ThreeForms();
  EXPECT_TRUE(section.IsUsedBuildName("A", "road"));
  EXPECT_TRUE(section.IsUsedBuildName("B", "pave"));
  EXPECT_FALSE(section.IsUsedBuildName("B", "road"));
  EXPECT_FALSE(section.IsUsedBuildName("A", "Road"));
  EXPECT_FALSE(section.IsUsedBuildName("a", "road"));
}

TEST(XSectionRename, RenamesEveryFormOfTheTypeAndName) {
  VornXSection section = ThreeForms();
  section.RenameBuildForm("A", "road", "new");
  EXPECT_EQ(Names(section.GetBuildFormArray()), "newpavenew");
  section.RenameBuildForm("A", "pave", "other");
  EXPECT_EQ(Names(section.GetBuildFormArray()), "newpavenew");
}

TEST(XSectionRename, RenamesTheFormInItsTargetsToo) {
  VornXSection section = ThreeForms();
  VornBuildForm& form = section.GetBuildFormArray()[1];
  form.GetFormCtrlTargetArray().Add(TargetOn("pave", VornFormCtrlTarget::TargetPntType::LeftRight, {"C", "P"}));
  form.GetFormCtrlTargetArray()[0].GetTargetPntArray()[0].SetBuildFormID(form.GetSerialID());
  section.RenameBuildForm("B", "pave", "new");
  EXPECT_EQ(form.GetFormCtrlTargetArray()[0].GetTargetPntArray()[0].GetBuildFormName(), "new");
}

TEST(XSectionRename, TakesTheOldNameFromAFormItself) {
  VornXSection section = ThreeForms();
  const VornBuildForm& first = section.GetBuildFormArray()[0];
  section.RenameBuildForm(first.GetXSectType(), first.GetName(), "new");
  EXPECT_EQ(Names(section.GetBuildFormArray()), "newpavenew");
}

}  // namespace
