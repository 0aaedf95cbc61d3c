#include "vorn/model/x_sections.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/model/editions.h"
#include "tests/model/model_builders.h"

namespace {

using model_test::EnabledForm;
using model_test::EnabledPoint;
using model_test::FormOf;
using model_test::SectionAt;
using model_test::TargetOn;
using test_support::ReadXml;
using test_support::WriteFailuresOverlooked;
using test_support::WriteXml;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using TargetPntType = VornFormCtrlTarget::TargetPntType;

static_assert(std::is_nothrow_move_constructible_v<VornXSections>);
static_assert(std::is_nothrow_move_assignable_v<VornXSections>);
static_assert(std::is_nothrow_move_constructible_v<Vorn_XSectionsArray>);
static_assert(std::is_nothrow_move_assignable_v<Vorn_XSectionsArray>);

/// A set that opens what only derived sets may call.
class OpenXSections : public VornXSections {
 public:
  using VornXSections::ConvFormCtrlTarget;
  using VornXSections::CreateFormCtrlTargetPnt;
  using VornXSections::ReformSelf;
};

// --- fields --------------------------------------------------------------------------------------------------------

TEST(XSections, StartsWithItsDefaults) {
  const VornXSections set;
  EXPECT_EQ(set.tagName(), "tsf:XSections");
  EXPECT_EQ(set.GetRefAlign(), "");
  EXPECT_EQ(set.GetRefVertical(), "");
  EXPECT_TRUE(set.GetXSectionArray().IsEmpty());
  EXPECT_EQ(set.GetProjectPhase(), "");
  EXPECT_TRUE(set.GetAlignment());
  EXPECT_TRUE(set.GetFormCtrlTargetArray().IsEmpty());
  EXPECT_FALSE(set.GetHiErr());
}

VornXSections FilledSet() {
  VornXSections set;
  set.SetRefAlign("align");
  set.SetRefVertical("vertical");
  Vorn_XSectionArray sections;
  sections.Add(SectionAt(20.0));
  set.SetXSectionArray(sections);
  set.SetProjectPhase("phase");
  set.SetAlignment(false);
  Vorn_FormCtrlTargetArray targets;
  targets.Add(TargetOn("road", TargetPntType::LeftRight, {"A"}));
  set.SetFormCtrlTargetArray(targets);
  set.SetHiErr(true);
  return set;
}

void ExpectFilled(const VornXSections& set) {
  EXPECT_EQ(set.GetRefAlign(), "align");
  EXPECT_EQ(set.GetRefVertical(), "vertical");
  ASSERT_EQ(set.GetXSectionArray().GetSize(), 1);
  EXPECT_EQ(set.GetXSectionArray()[0].GetCumulativeDist(), 20.0);
  EXPECT_EQ(set.GetProjectPhase(), "phase");
  EXPECT_FALSE(set.GetAlignment());
  ASSERT_EQ(set.GetFormCtrlTargetArray().GetSize(), 1);
  EXPECT_EQ(set.GetFormCtrlTargetArray()[0].GetTargetScope(), "S");
  EXPECT_TRUE(set.GetHiErr());
}

TEST(XSections, KeepsWhatItIsGiven) { ExpectFilled(FilledSet()); }

TEST(XSections, CopiesAndMovesEveryField) {
  const VornXSections original = FilledSet();
  VornXSections copy(original);
  ExpectFilled(copy);
  VornXSections assigned;
  assigned = original;
  ExpectFilled(assigned);
  assigned.GetXSectionArray().RemoveAll();
  ExpectFilled(VornXSections(std::move(copy)));
  ExpectFilled(original);
}

TEST(XSections, LendsItsFieldsForChange) {
  VornXSections set;
  set.GetRefAlign() = "align";
  set.GetRefVertical() = "vertical";
  set.GetXSectionArray().Add(SectionAt(20.0));
  set.GetProjectPhase() = "phase";
  set.GetAlignment() = false;
  set.GetFormCtrlTargetArray().Add(TargetOn("road", TargetPntType::LeftRight, {"A"}));
  set.GetHiErr() = true;
  ExpectFilled(std::as_const(set));
}

TEST(XSections, IsEnabledWithBothAlignmentsAndEnabledSections) {
  const auto enabled = [](const char* refAlign, const char* refVertical) {
    VornXSections set;
    set.SetRefAlign(refAlign);
    set.SetRefVertical(refVertical);
    VornXSection section = SectionAt(20.0);
    section.GetBuildFormArray().Add(EnabledForm("road"));
    set.GetXSectionArray().Add(section);
    return set;
  };
  EXPECT_TRUE(enabled("a", "v").IsEnable());
  EXPECT_FALSE(enabled("", "v").IsEnable());
  EXPECT_FALSE(enabled("a", "").IsEnable());
  VornXSections set = enabled("a", "v");
  set.GetXSectionArray().Add(VornXSection());
  EXPECT_FALSE(set.IsEnable());
  set.GetXSectionArray().RemoveAll();
  EXPECT_FALSE(set.IsEnable());
}

// --- XML -----------------------------------------------------------------------------------------------------------

class XSectionsInEdition : public model_test::InEdition {};
class XSectionsInEarlyEdition : public model_test::InEdition {};
class XSectionsInLaterEdition : public model_test::InEdition {};

INSTANTIATE_TEST_SUITE_P(, XSectionsInEdition, testing::ValuesIn(model_test::kEditions), model_test::InEdition::Name);
INSTANTIATE_TEST_SUITE_P(, XSectionsInEarlyEdition, testing::ValuesIn(model_test::kEarlyEditions),
                         model_test::InEdition::Name);
INSTANTIATE_TEST_SUITE_P(, XSectionsInLaterEdition, testing::ValuesIn(model_test::kLaterEditions),
                         model_test::InEdition::Name);

/// A set with a target of its own and a section whose form has a target too.
VornXSections EloquentSet() {
  VornXSections set = FilledSet();
  VornBuildForm form =
      FormOf("road", {EnabledPoint(VornLocation::Center, "C"), EnabledPoint(VornLocation::Center, "D")});
  form.GetFormCtrlTargetArray().Add(TargetOn("road", TargetPntType::InnerOuter, {"C", "D"}));
  set.GetXSectionArray()[0].GetBuildFormArray().Add(form);
  return set;
}

TEST_P(XSectionsInEarlyEdition, WritesAlignmentNamesAndSections) {
  VornXSections set = EloquentSet();
  EXPECT_EQ(WriteXml(set),
            "<tsf:XSections refAlign=\"align\" refVertical=\"vertical\">\n"
            "  <tsf:XSection cumulativeDist=\"20.0000\">\n"
            "    <tsf:BuildForm name=\"road\">\n"
            "      <tsf:ComposedPnt code=\"C\" location=\"Center\" existence=\"true\">0.0000 0.000</tsf:ComposedPnt>\n"
            "      <tsf:ComposedPnt code=\"D\" location=\"Center\" existence=\"true\">0.0000 0.000</tsf:ComposedPnt>\n"
            "      <tsf:FormCtrlTarget workType=\"RE_FillWork\" controlItem=\"Width\" targetScope=\"S\""
            " targetRegio=\"R\" targetPntType=\"Inner Outer\">C D</tsf:FormCtrlTarget>\n"
            "    </tsf:BuildForm>\n"
            "  </tsf:XSection>\n"
            "</tsf:XSections>\n");
  EXPECT_EQ(set.GetFormCtrlTargetArray().GetSize(), 1);
}

TEST_P(XSectionsInLaterEdition, WritesItsOwnTargetsAndThoseOfTheForms) {
  VornXSections set = EloquentSet();
  EXPECT_EQ(
      WriteXml(set),
      "<tsf:XSections refAlign=\"align\" refVertical=\"vertical\" alignment=\"false\" projectPhase=\"phase\">\n"
      "  <tsf:XSection cumulativeDist=\"20.0000\">\n"
      "    <tsf:BuildForm name=\"road\" xSectType=\"\">\n"
      "      <tsf:ComposedPnt code=\"C\" location=\"Center\" dataType=\"WidthHeight\" existence=\"true\">0.0000 0.0000"
      "</tsf:ComposedPnt>\n"
      "      <tsf:ComposedPnt code=\"D\" location=\"Center\" dataType=\"WidthHeight\" existence=\"true\">0.0000 0.0000"
      "</tsf:ComposedPnt>\n"
      "    </tsf:BuildForm>\n"
      "  </tsf:XSection>\n"
      "  <tsf:FormCtrlTarget controlItem=\"Width\" targetScope=\"S\" targetRegio=\"R\""
      " targetPntType=\"Left Right\">\n"
      "    <tsf:FormCtrlTargetPnt cumulativeDist=\"20.0000\" buildFormName=\"road\" code=\"A\"/>\n"
      "  </tsf:FormCtrlTarget>\n"
      "  <tsf:FormCtrlTarget controlItem=\"Width\" targetScope=\"S\" targetRegio=\"R\""
      " targetPntType=\"Inner Outer\">\n"
      "    <tsf:FormCtrlTargetPnt cumulativeDist=\"20.0000\" buildFormName=\"road\" code=\"C\"/>\n"
      "    <tsf:FormCtrlTargetPnt cumulativeDist=\"20.0000\" buildFormName=\"road\" code=\"D\"/>\n"
      "  </tsf:FormCtrlTarget>\n"
      "</tsf:XSections>\n");
}

TEST_P(XSectionsInEarlyEdition, WritesEmptyNames) {
  VornXSections set;
  EXPECT_EQ(WriteXml(set), "<tsf:XSections refAlign=\"\" refVertical=\"\"/>\n");
}

TEST_P(XSectionsInLaterEdition, WritesEmptyNamesAndAnEmptyPhase) {
  VornXSections set;
  EXPECT_EQ(WriteXml(set), "<tsf:XSections refAlign=\"\" refVertical=\"\" projectPhase=\"\"/>\n");
}

TEST_P(XSectionsInLaterEdition, GathersTheTargetsAgainWithEveryWriting) {
  VornXSections set = EloquentSet();
  const auto targetsWritten = [&set] {
    const std::string xml = WriteXml(set);
    int count = 0;
    for (std::size_t at = xml.find("<tsf:FormCtrlTarget "); at != std::string::npos;
         at = xml.find("<tsf:FormCtrlTarget ", at + 1)) {
      ++count;
    }
    return count;
  };
  EXPECT_EQ(targetsWritten(), 2);
  EXPECT_EQ(targetsWritten(), 3);
  EXPECT_EQ(set.GetFormCtrlTargetArray().GetSize(), 3);
}

TEST_P(XSectionsInEdition, WritesIntoTheNamespaceOfTheEdition) {
  VornXSections set;
  const std::string uri = VornSchema::Instance().Tsf().GetString();
  EXPECT_THAT(model_test::WriteXmlWithNamespaces(set), HasSubstr("<tsf:XSections xmlns=\"" + uri + "\" "));
}

TEST_P(XSectionsInEdition, StopsWritingAtTheFirstFailure) {
  VornXSections set = EloquentSet();
  EXPECT_THAT(WriteFailuresOverlooked(set), IsEmpty());
}

TEST_P(XSectionsInEdition, ReadsWhatItWrites) {
  VornXSections written = EloquentSet();
  const std::string xml = WriteXml(written);
  VornXSections read;
  ASSERT_TRUE(ReadXml(read, xml));
  EXPECT_EQ(WriteXml(read), xml);
}

TEST_P(XSectionsInEdition, ReadsTheAttributesOfEveryEdition) {
  VornXSections set;
  ASSERT_TRUE(ReadXml(set,
                      "<tsf:XSections other='x' projectPhase='phase' alignment='false' refVertical='vertical'"
                      " refAlign='align' hiErr='true'/>"));
  EXPECT_EQ(set.GetRefAlign(), "align");
  EXPECT_EQ(set.GetRefVertical(), "vertical");
  EXPECT_EQ(set.GetProjectPhase(), "phase");
  EXPECT_FALSE(set.GetAlignment());
  EXPECT_FALSE(set.GetHiErr());
}

TEST_P(XSectionsInEdition, HasNoAlignmentForTheExactTextFalseOnly) {
  for (const char* text : {"FALSE", "False", "0", "", "true"}) {
    VornXSections set;
    set.SetAlignment(false);
    ASSERT_TRUE(ReadXml(set, std::string("<tsf:XSections alignment='") + text + "'/>"));
    EXPECT_TRUE(set.GetAlignment()) << text;
  }
}

TEST_P(XSectionsInEdition, KeepsWhatTheElementDoesNotName) {
  VornXSections set = FilledSet();
  ASSERT_TRUE(ReadXml(set, "<tsf:XSections/>"));
  ExpectFilled(set);
}

TEST_P(XSectionsInEdition, RefusesAnotherTagAndStaysAsItWas) {
  VornXSections set = FilledSet();
  EXPECT_FALSE(ReadXml(set, "<tsf:XSection refAlign='x'><tsf:XSection/></tsf:XSection>"));
  ExpectFilled(set);
}

TEST_P(XSectionsInEdition, ReadsWithoutAVerticalAlignmentButIsNotEnabled) {
  VornXSections set;
  ASSERT_TRUE(ReadXml(set,
                      "<tsf:XSections refAlign='a'><tsf:XSection cumulativeDist='20'><tsf:BuildForm name='road'>"
                      "<tsf:ComposedPnt code='C' location='Center' existence='true'/>"
                      "<tsf:ComposedPnt code='R' location='Right' existence='true'/>"
                      "</tsf:BuildForm></tsf:XSection></tsf:XSections>"));
  EXPECT_FALSE(set.IsEnable());
  set.SetRefVertical("v");
  EXPECT_TRUE(set.IsEnable());
}

TEST_P(XSectionsInEdition, ReadsSectionsAndTargetsInAnyOrderAndSkipsOtherChildren) {
  test_support::XmlTree tree = test_support::XmlTree::Parse(
      "<tsf:XSections><tsf:Unknown/><tsf:FormCtrlTarget targetScope='a'/><tsf:XSection cumulativeDist='10'/>"
      "<tsf:XSection cumulativeDist='20'/><tsf:FormCtrlTarget targetScope='b'/><tsf:BuildForm/>"
      "<tsf:XSection cumulativeDist='30'/><tsf:FormCtrlTarget targetScope='c'/></tsf:XSections>");
  test_support::XmlTreeCursor cursor(tree);
  VornXSections set;
  ASSERT_TRUE(set.fromXML(&cursor));
  EXPECT_TRUE(cursor.IsOnRoot());
  EXPECT_EQ(set.GetXSectionArray().GetSize(), 3);
  const Vorn_FormCtrlTargetArray& targets = set.GetFormCtrlTargetArray();
  ASSERT_EQ(targets.GetSize(), 3);
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(targets[i].GetTargetScope(), CString("abc").Mid(i, 1));
    EXPECT_EQ(targets[i].GetSerialID(), static_cast<std::uint32_t>(i));
  }
}

TEST_P(XSectionsInEdition, FailsWhenAChildCannotBeRead) {
  for (const std::string child : {"<tsf:XSection/>", "<tsf:FormCtrlTarget/>"}) {
    test_support::XmlTree tree = test_support::XmlTree::Parse("<tsf:XSections>" + child + "</tsf:XSections>");
    int refused = 0;
    for (int n = 1; n <= 20; ++n) {
      test_support::XmlTreeCursor cursor(tree);
      cursor.FailAfter(n);
      VornXSections set;
      if (!set.fromXML(&cursor)) ++refused;
    }
    // The set's own tag and the child's, at the least.
    EXPECT_GE(refused, 2) << child;
  }
}

// --- order ---------------------------------------------------------------------------------------------------------

struct Placed {
  NurReal station;
  bool xSectChg;
};

const NurReal kUnset;

/// The names of the sections in their order, once they are put into it; each is named by its former place.
std::string OrderOf(const std::vector<Placed>& placed) {
  OpenXSections set;
  for (std::size_t i = 0; i < placed.size(); ++i) {
    VornXSection section;
    section.SetCumulativeDist(placed[i].station);
    section.SetXSectChg(placed[i].xSectChg);
    section.SetName(CString(std::to_string(i).c_str()));
    set.GetXSectionArray().Add(section);
  }
  set.ReformSelf();
  std::string order;
  for (const VornXSection& section : set.GetXSectionArray()) order += section.GetName().GetString();
  return order;
}

TEST(XSectionsOrder, IsByStation) {
  EXPECT_EQ(OrderOf({{30.0, false}, {10.0, false}, {20.0, false}}), "120");
  EXPECT_EQ(OrderOf({{10.0, false}, {20.0, false}}), "01");
  EXPECT_EQ(OrderOf({{20.0, false}}), "0");
  EXPECT_EQ(OrderOf({}), "");
}

TEST(XSectionsOrder, PutsAChangeOfShapeSecondAtOneStation) {
  EXPECT_EQ(OrderOf({{20.0, true}, {20.0, false}}), "10");
  EXPECT_EQ(OrderOf({{20.0, false}, {20.0, true}}), "01");
  EXPECT_EQ(OrderOf({{30.0, false}, {20.0, true}, {20.0, false}, {10.0, true}}), "3210");
}

TEST(XSectionsOrder, KeepsTheDocumentsOrderOfSectionsThatAreAlike) {
  EXPECT_EQ(OrderOf({{30.0, false}, {20.0, false}, {20.0, false}, {20.0, false}}), "1230");
  EXPECT_EQ(OrderOf({{20.0, true}, {20.0, true}, {20.0, false}, {20.0, false}}), "2301");
}

TEST(XSectionsOrder, TakesStationsLessThanANanometreApartForOne) {
  EXPECT_EQ(OrderOf({{20.0000000005, false}, {20.0, false}}), "01");
  EXPECT_EQ(OrderOf({{20.0, true}, {20.0000000005, false}}), "10");
  EXPECT_EQ(OrderOf({{20.0, true}, {20.00001, false}}), "01");
  EXPECT_EQ(OrderOf({{20.00001, false}, {20.0, false}}), "10");
  // A look-up would take these two for one station.
  EXPECT_EQ(OrderOf({{20.0000005, false}, {20.0, true}}), "10");
  EXPECT_EQ(OrderOf({{1e-9, false}, {0.0, false}}), "10");
}

TEST(XSectionsOrder, BeginsWithSectionsWithoutAStation) {
  EXPECT_EQ(OrderOf({{-10.0, false}, {kUnset, true}, {kUnset, false}, {kUnset, false}}), "2310");
}

TEST_P(XSectionsInEdition, OrdersTheSectionsThatItReads) {
  VornXSections set;
  ASSERT_TRUE(ReadXml(set,
                      "<tsf:XSections><tsf:XSection cumulativeDist='30'/><tsf:XSection cumulativeDist='20'"
                      " xSectChg='true'/><tsf:XSection cumulativeDist='20'/><tsf:XSection cumulativeDist='10'/>"
                      "</tsf:XSections>"));
  const Vorn_XSectionArray& sections = set.GetXSectionArray();
  ASSERT_EQ(sections.GetSize(), 4);
  EXPECT_EQ(sections[0].GetCumulativeDist(), 10.0);
  EXPECT_EQ(sections[1].GetCumulativeDist(), 20.0);
  EXPECT_FALSE(sections[1].GetXSectChg());
  EXPECT_TRUE(sections[2].GetXSectChg());
  EXPECT_EQ(sections[3].GetCumulativeDist(), 30.0);
}

TEST_P(XSectionsInEdition, OrdersItsSectionsEvenWhenTheElementHasNone) {
  VornXSections set;
  set.GetXSectionArray().Add(SectionAt(20.0));
  set.GetXSectionArray().Add(SectionAt(10.0));
  ASSERT_TRUE(ReadXml(set, "<tsf:XSections/>"));
  EXPECT_EQ(set.GetXSectionArray()[0].GetCumulativeDist(), 10.0);
}

TEST(XSectionsOrder, KeepsEverySectionWhole) {
  OpenXSections set;
  for (const double station : {20.0, 10.0}) {
    VornXSection section = SectionAt(station);
    section.GetBuildFormArray().Add(EnabledForm(station > 15.0 ? "second" : "first"));
    set.GetXSectionArray().Add(section);
  }
  set.ReformSelf();
  EXPECT_EQ(set.GetXSectionArray()[0].GetBuildFormArray()[0].GetName(), "first");
  EXPECT_EQ(set.GetXSectionArray()[1].GetBuildFormArray()[0].GetName(), "second");
  EXPECT_TRUE(set.GetXSectionArray().IsEnable());
}

// --- control targets -----------------------------------------------------------------------------------------------

TEST(XSectionsTargets, AreGatheredFromAllFormsBehindTheSetsOwn) {
  OpenXSections set;
  set.GetFormCtrlTargetArray().Add(TargetOn("own", TargetPntType::LeftRight, {"A"}));
  for (const double station : {10.0, 20.0}) {
    VornXSection section = SectionAt(station);
    for (const char* name : {"road", "pave"}) {
      VornBuildForm form = FormOf(name, {});
      form.GetFormCtrlTargetArray().Add(TargetOn(name, TargetPntType::LeftRight, {station < 15.0 ? "1" : "2"}));
      section.GetBuildFormArray().Add(form);
    }
    set.GetXSectionArray().Add(section);
  }
  set.ConvFormCtrlTarget();
  std::vector<std::string> gathered;
  for (const VornFormCtrlTarget& target : set.GetFormCtrlTargetArray()) {
    const VornFormCtrlTargetPnt& point = target.GetTargetPntArray()[0];
    gathered.push_back(std::string(point.GetBuildFormName().GetString()) + point.GetCode().GetString());
  }
  EXPECT_THAT(gathered, ElementsAre("ownA", "road1", "pave1", "road2", "pave2"));
  EXPECT_EQ(set.GetXSectionArray()[0].GetBuildFormArray()[0].GetFormCtrlTargetArray().GetSize(), 1);
}

TEST(XSectionsTargets, AreNumberedWhenTheyHaveNoSerialYet) {
  OpenXSections set;
  VornXSection section = SectionAt(10.0);
  VornBuildForm form = FormOf("road", {});
  form.GetFormCtrlTargetArray().Add(TargetOn("road", TargetPntType::LeftRight, {"A"}));
  form.GetFormCtrlTargetArray().Add(TargetOn("road", TargetPntType::LeftRight, {"B"}));
  form.GetFormCtrlTargetArray()[0].SetSerialID(0xFFFFFFFF);
  form.GetFormCtrlTargetArray()[1].SetSerialID(7);
  section.GetBuildFormArray().Add(form);
  set.GetXSectionArray().Add(section);
  set.ConvFormCtrlTarget();
  EXPECT_EQ(set.GetFormCtrlTargetArray()[0].GetSerialID(), 0u);
  EXPECT_EQ(set.GetFormCtrlTargetArray()[1].GetSerialID(), 7u);
}

TEST_P(XSectionsInEdition, AddsATargetPointWithTheTargetsCode) {
  VornFormCtrlTarget target = TargetOn("road", TargetPntType::LeftRight, {"A", "B"});
  OpenXSections::CreateFormCtrlTargetPnt(target, 25.0);
  ASSERT_EQ(target.GetTargetPntArray().GetSize(), 3);
  const VornFormCtrlTargetPnt& point = target.GetTargetPntArray()[2];
  EXPECT_EQ(point.GetCumulativeDist(), 25.0);
  EXPECT_EQ(point.GetCode(), "A B");
  EXPECT_EQ(point.GetBuildFormName(), "");
}

// --- look-ups ------------------------------------------------------------------------------------------------------

VornXSections SetWithChangeOfShape() {
  VornXSections set;
  for (const auto& [station, xSectChg, form] :
       {std::tuple(10.0, false, "first"), std::tuple(20.0, false, "before"), std::tuple(20.0, true, "behind")}) {
    VornXSection section = SectionAt(station, xSectChg);
    section.GetBuildFormArray().Add(EnabledForm(form));
    set.GetXSectionArray().Add(section);
  }
  return set;
}

TEST(XSectionsLookup, FindsASectionByStationAndChangeOfShape) {
  const VornXSections set = SetWithChangeOfShape();
  EXPECT_EQ(set.Find(20.0, false), 1);
  EXPECT_EQ(set.Find(20.0, true), 2);
  EXPECT_EQ(set.Find(10.0, false), 0);
  EXPECT_EQ(set.Find(10.0, true), -1);
  EXPECT_EQ(set.Find(15.0, false), -1);
}

TEST(XSectionsLookup, TakesAnUnsetStationForTheStart) {
  VornXSections set = SetWithChangeOfShape();
  EXPECT_EQ(set.Find(NurReal(), false), -1);
  set.GetXSectionArray().Add(VornXSection());
  EXPECT_EQ(set.Find(0.0, false), 3);
  EXPECT_EQ(set.Find(NurReal(), false), 3);
  set.GetXSectionArray()[3].SetCumulativeDist(0.0);
  EXPECT_EQ(set.Find(NurReal(), false), 3);
}

TEST(XSectionsLookup, FindsASectionLessThanAMicrometreAway) {
  const VornXSections set = SetWithChangeOfShape();
  EXPECT_EQ(set.Find(20.0000005, true), 2);
  EXPECT_EQ(set.Find(19.9999995, true), 2);
  EXPECT_EQ(set.Find(20.000002, true), -1);
  VornXSections atZero;
  atZero.GetXSectionArray().Add(SectionAt(0.0));
  EXPECT_EQ(atZero.Find(1e-6, false), -1);
  EXPECT_EQ(atZero.Find(0.999e-6, false), 0);
}

TEST(XSectionsLookup, GivesAFormOfASection) {
  VornXSections set = SetWithChangeOfShape();
  const CString known = "R";
  const CString unknown = "x";
  EXPECT_EQ(set.GetBuildForm(20.0, "behind", true, nullptr), &set.GetXSectionArray()[2].GetBuildFormArray()[0]);
  EXPECT_EQ(set.GetBuildForm(20.0, "before", false, &known), &set.GetXSectionArray()[1].GetBuildFormArray()[0]);
  EXPECT_EQ(set.GetBuildForm(20.0, "before", false, &unknown), nullptr);
  EXPECT_EQ(set.GetBuildForm(20.0, "before", true, nullptr), nullptr);
  EXPECT_EQ(set.GetBuildForm(15.0, "before", false, nullptr), nullptr);
}

TEST(XSectionsLookup, GivesTheFirstFormWhoseSectionNameIsAskedFor) {
  VornXSections set = SetWithChangeOfShape();
  VornBuildForm& form = set.GetXSectionArray()[0].GetBuildFormArray()[0];
  form.GetComposedPntArray()[1].SetXSectName("slope", VornComposedPnt::PntType::Sub);
  EXPECT_EQ(set.GetBuildForm(10.0, "slope", false, nullptr), &form);
}

TEST(XSectionsLookup, RenamesTheAlignmentThatHasTheOldNameExactly) {
  VornXSections set;
  set.SetRefAlign("road");
  set.ChangeRefAlign("Road", "new");
  EXPECT_EQ(set.GetRefAlign(), "road");
  set.ChangeRefAlign("road", "new");
  EXPECT_EQ(set.GetRefAlign(), "new");
}

// --- all sets of a document ----------------------------------------------------------------------------------------

Vorn_XSectionsArray SetsOn(std::initializer_list<const char*> refAligns) {
  Vorn_XSectionsArray array;
  for (const char* refAlign : refAligns) {
    VornXSections set;
    set.SetRefAlign(refAlign);
    array.Add(set);
  }
  return array;
}

std::vector<std::string> RefAligns(const Vorn_XSectionsArray& array) {
  std::vector<std::string> names;
  for (const VornXSections& set : array) names.emplace_back(set.GetRefAlign().GetString());
  return names;
}

TEST(XSectionsArray, HoldsOneOrMoreSets) {
  Vorn_XSectionsArray array;
  EXPECT_EQ(array.tagName(), "tsf:XSections");
  EXPECT_EQ(array.occurs(), VORN_Occurs::OneOrMore);
  EXPECT_FALSE(array.IsEnable());
}

TEST(XSectionsArray, LosesAllSetsWhenInitialised) {
  Vorn_XSectionsArray array = SetsOn({"a", "b"});
  array.Initialize();
  EXPECT_TRUE(array.IsEmpty());
}

TEST(XSectionsArray, RenamesTheAlignmentInEverySet) {
  Vorn_XSectionsArray array = SetsOn({"a", "b", "a"});
  array.ChangeRefAlign("a", "new");
  EXPECT_THAT(RefAligns(array), ElementsAre("new", "b", "new"));
}

TEST(XSectionsArray, RenamesTheAlignmentThatASetItselfNames) {
  Vorn_XSectionsArray array = SetsOn({"a", "b", "a"});
  array.ChangeRefAlign(array[0].GetRefAlign(), "new");
  EXPECT_THAT(RefAligns(array), ElementsAre("new", "b", "new"));
}

}  // namespace
