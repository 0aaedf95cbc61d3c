#include "vorn/model/existing_build_form.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/model/editions.h"

namespace {

using test_support::EditionScope;
using test_support::ReadXml;
using test_support::WriteFailuresOverlooked;
using test_support::WriteXml;
using testing::HasSubstr;
using testing::IsEmpty;

const NurReal kUnset;

VornExistingComposedPnt GroundAt(NurReal clDist, NurReal gh, const char* name = "") {
  VornExistingComposedPnt point;
  point.SetCLDist(clDist);
  point.SetGh(gh);
  point.SetName(name);
  return point;
}

VornExistingBuildForm GroundForm(const char* name, std::initializer_list<VornExistingComposedPnt> points) {
  VornExistingBuildForm form;
  form.SetName(name);
  for (const VornExistingComposedPnt& point : points) form.GetComposedPntArray().Add(point);
  return form;
}

class ExistingGroundInEdition : public model_test::InEdition {};
class ExistingGroundInEarlyEdition : public model_test::InEdition {};
class ExistingGroundInLaterEdition : public model_test::InEdition {};

INSTANTIATE_TEST_SUITE_P(, ExistingGroundInEdition, testing::ValuesIn(model_test::kEditions),
                         model_test::InEdition::Name);
INSTANTIATE_TEST_SUITE_P(, ExistingGroundInEarlyEdition, testing::ValuesIn(model_test::kEarlyEditions),
                         model_test::InEdition::Name);
INSTANTIATE_TEST_SUITE_P(, ExistingGroundInLaterEdition, testing::ValuesIn(model_test::kLaterEditions),
                         model_test::InEdition::Name);

// --- a point -------------------------------------------------------------------------------------------------------

TEST(ExistingComposedPnt, StartsWithItsDefaults) {
  const VornExistingComposedPnt point;
  EXPECT_EQ(point.tagName(), "tsf:ExistingComposedPnt");
  EXPECT_FALSE(point.GetSpare1().IsSet());
  EXPECT_FALSE(point.GetSpare2().IsSet());
  EXPECT_FALSE(point.GetCLDist().IsSet());
  EXPECT_FALSE(point.GetGh().IsSet());
  EXPECT_EQ(point.GetName(), "");
}

VornExistingComposedPnt FilledPoint() {
  VornExistingComposedPnt point = GroundAt(-3.0, 4.0, "G");
  point.SetSpare1(5.0);
  point.SetSpare2(6.0);
  return point;
}

void ExpectFilled(const VornExistingComposedPnt& point) {
  EXPECT_EQ(point.GetCLDist(), -3.0);
  EXPECT_EQ(point.GetGh(), 4.0);
  EXPECT_EQ(point.GetName(), "G");
  EXPECT_EQ(point.GetSpare1(), 5.0);
  EXPECT_EQ(point.GetSpare2(), 6.0);
}

TEST(ExistingComposedPnt, KeepsAndCopiesWhatItIsGiven) {
  const VornExistingComposedPnt original = FilledPoint();
  ExpectFilled(original);
  ExpectFilled(VornExistingComposedPnt(original));
  VornExistingComposedPnt assigned;
  assigned = original;
  ExpectFilled(assigned);
}

TEST(ExistingComposedPnt, LendsItsFieldsForChange) {
  VornExistingComposedPnt point;
  point.GetCLDist() = 1.0;
  point.GetGh() = 2.0;
  point.GetName() = "G";
  EXPECT_EQ(std::as_const(point).GetCLDist(), 1.0);
  EXPECT_EQ(std::as_const(point).GetGh(), 2.0);
  EXPECT_EQ(std::as_const(point).GetName(), "G");
}

TEST(ExistingComposedPnt, GivesItsPositionAsDistanceAndHeight) {
  EXPECT_EQ(GroundAt(-3.0, 4.0).Pos(), (TamWorld2{-3.0, 4.0}));
}

TEST(ExistingComposedPnt, IsEnabledWithDistanceAndHeight) {
  EXPECT_TRUE(GroundAt(0.0, 0.0).IsEnable());
  EXPECT_FALSE(GroundAt(kUnset, 0.0).IsEnable());
  EXPECT_FALSE(GroundAt(0.0, kUnset).IsEnable());
}

TEST(ExistingComposedPnt, HasDistanceAndHeightAsItsText) {
  const EditionScope edition(VornSchema::Version41);
  EXPECT_EQ(GroundAt(3.5, 12.3).GetTextData(), "3.5000 12.3000");
  EXPECT_EQ(GroundAt(-1.00005, 0.00005).GetTextData(), "-1.0001 0.0001");
  EXPECT_EQ(GroundAt(-0.00004, 0.0).GetTextData(), "0.0000 0.0000");
}

TEST(ExistingComposedPnt, HasThePlacesOfADistanceForItsHeightToo) {
  // With the places of edition 2.0 still in force, heights have one place fewer than distances.
  const EditionScope edition(VornSchema::Version20);
  VornSchema::Instance().SetVersion(VornSchema::Version41);
  EXPECT_EQ(GroundAt(1.23456, 2.34567).GetTextData(), "1.2346 2.3457");
}

TEST(ExistingComposedPnt, LeavesOutOfItsTextWhatIsUnset) {
  const EditionScope edition(VornSchema::Version41);
  EXPECT_EQ(GroundAt(kUnset, 12.3).GetTextData(), "12.3000");
  EXPECT_EQ(GroundAt(3.5, kUnset).GetTextData(), "3.5000 ");
  EXPECT_EQ(GroundAt(kUnset, kUnset).GetTextData(), "");
}

struct GroundText {
  const char* text;
  NurReal clDist;
  NurReal gh;
};

TEST(ExistingComposedPnt, TakesDistanceAndHeightFromAText) {
  const std::vector<GroundText> texts = {
      {"3.5 12.3", 3.5, 12.3},   {"12.3", 12.3, 8.0},           {"", 7.0, 8.0},
      {"3.5 ", 3.5, 8.0},        {"3.5  12.3", 3.5, NurReal()}, {" 12.3", kUnset, 12.3},
      {"3.5 12.3 9", 3.5, 12.3}, {"x 12.3", 0.0, 12.3},
  };
  for (const GroundText& row : texts) {
    VornExistingComposedPnt point = GroundAt(7.0, 8.0);
    point.GetTextValue(CString(row.text));
    EXPECT_EQ(point.GetCLDist(), row.clDist) << row.text;
    EXPECT_EQ(point.GetGh(), row.gh) << row.text;
  }
}

TEST(ExistingComposedPnt, ReadsAHeightThatStoodAloneAsTheDistance) {
  const EditionScope edition(VornSchema::Version41);
  VornExistingComposedPnt read;
  read.GetTextValue(GroundAt(kUnset, 12.3).GetTextData());
  EXPECT_EQ(read.GetCLDist(), 12.3);
  EXPECT_FALSE(read.GetGh().IsSet());
}

TEST_P(ExistingGroundInEarlyEdition, WritesNoPoint) {
  VornExistingComposedPnt point = FilledPoint();
  EXPECT_EQ(WriteXml(point), "");
}

TEST_P(ExistingGroundInLaterEdition, WritesAPoint) {
  VornExistingComposedPnt point = FilledPoint();
  EXPECT_EQ(WriteXml(point), "<tsf:ExistingComposedPnt name=\"G\">-3.0000 4.0000</tsf:ExistingComposedPnt>\n");
  VornExistingComposedPnt empty;
  EXPECT_EQ(WriteXml(empty), "<tsf:ExistingComposedPnt name=\"\"/>\n");
}

TEST_P(ExistingGroundInLaterEdition, StopsWritingAPointAtTheFirstFailure) {
  VornExistingComposedPnt point = FilledPoint();
  EXPECT_THAT(WriteFailuresOverlooked(point), IsEmpty());
}

TEST_P(ExistingGroundInEdition, ReadsAPoint) {
  VornExistingComposedPnt point;
  ASSERT_TRUE(ReadXml(point, "<tsf:ExistingComposedPnt other='x' name='G'>3.5 12.3</tsf:ExistingComposedPnt>"));
  EXPECT_EQ(point.GetName(), "G");
  EXPECT_EQ(point.GetCLDist(), 3.5);
  EXPECT_EQ(point.GetGh(), 12.3);
}

TEST_P(ExistingGroundInEdition, ReadsAPointWithoutTextAndNameAsItWas) {
  VornExistingComposedPnt point = FilledPoint();
  ASSERT_TRUE(ReadXml(point, "<tsf:ExistingComposedPnt/>"));
  ExpectFilled(point);
  VornExistingComposedPnt fresh;
  ASSERT_TRUE(ReadXml(fresh, "<tsf:ExistingComposedPnt/>"));
  EXPECT_FALSE(fresh.GetCLDist().IsSet());
  EXPECT_FALSE(fresh.GetGh().IsSet());
}

TEST_P(ExistingGroundInEdition, RefusesAnotherTagForAPoint) {
  VornExistingComposedPnt point = FilledPoint();
  EXPECT_FALSE(ReadXml(point, "<tsf:ComposedPnt name='x'>1 2</tsf:ComposedPnt>"));
  ExpectFilled(point);
}

TEST(ExistingComposedPntArray, HoldsTwoOrMore) {
  VornExistingComposedPntArray array;
  EXPECT_EQ(array.tagName(), "tsf:ExistingComposedPnt");
  EXPECT_EQ(array.occurs(), VORN_Occurs::TwoOrMore);
  array.Add(FilledPoint());
  EXPECT_FALSE(array.IsEnable());
  array.Add(FilledPoint());
  EXPECT_TRUE(array.IsEnable());
}

// --- a form --------------------------------------------------------------------------------------------------------

TEST(ExistingBuildForm, StartsEmpty) {
  const VornExistingBuildForm form;
  EXPECT_EQ(form.tagName(), "tsf:ExistingBuildForm");
  EXPECT_EQ(form.GetName(), "");
  EXPECT_TRUE(form.GetComposedPntArray().IsEmpty());
}

void ExpectFilled(const VornExistingBuildForm& form) {
  EXPECT_EQ(form.GetName(), "ground");
  ASSERT_EQ(form.GetComposedPntArray().GetSize(), 1);
  ExpectFilled(form.GetComposedPntArray()[0]);
}

TEST(ExistingBuildForm, KeepsAndCopiesWhatItIsGiven) {
  VornExistingBuildForm original;
  original.SetName("ground");
  VornExistingComposedPntArray points;
  points.Add(FilledPoint());
  original.SetComposedPntArray(points);
  ExpectFilled(original);
  ExpectFilled(VornExistingBuildForm(original));
  VornExistingBuildForm assigned;
  assigned = original;
  ExpectFilled(assigned);
  assigned.GetName() = "changed";
  EXPECT_EQ(std::as_const(assigned).GetName(), "changed");
  ExpectFilled(original);
}

TEST(ExistingBuildForm, IsEnabledWithANameAndTwoEnabledPoints) {
  EXPECT_TRUE(GroundForm("g", {FilledPoint(), FilledPoint()}).IsEnable());
  EXPECT_FALSE(GroundForm("", {FilledPoint(), FilledPoint()}).IsEnable());
  EXPECT_FALSE(GroundForm("g", {FilledPoint()}).IsEnable());
  EXPECT_FALSE(GroundForm("g", {FilledPoint(), GroundAt(1.0, kUnset)}).IsEnable());
}

TEST(ExistingBuildForm, StandsOneOrMoreInAnArray) {
  VornExistingBuildFormArray array;
  EXPECT_EQ(array.tagName(), "tsf:ExistingBuildForm");
  EXPECT_EQ(array.occurs(), VORN_Occurs::OneOrMore);
  EXPECT_FALSE(array.IsEnable());
  array.Add(GroundForm("g", {FilledPoint(), FilledPoint()}));
  EXPECT_TRUE(array.IsEnable());
}

TEST_P(ExistingGroundInEarlyEdition, WritesNoForm) {
  VornExistingBuildForm form = GroundForm("ground", {FilledPoint(), FilledPoint()});
  EXPECT_EQ(WriteXml(form), "");
}

TEST_P(ExistingGroundInLaterEdition, WritesAForm) {
  VornExistingBuildForm form = GroundForm("ground", {GroundAt(-3.0, 4.0, "G"), GroundAt(2.5, 12.34567)});
  EXPECT_EQ(WriteXml(form),
            "<tsf:ExistingBuildForm name=\"ground\">\n"
            "  <tsf:ExistingComposedPnt name=\"G\">-3.0000 4.0000</tsf:ExistingComposedPnt>\n"
            "  <tsf:ExistingComposedPnt name=\"\">2.5000 12.3457</tsf:ExistingComposedPnt>\n"
            "</tsf:ExistingBuildForm>\n");
}

TEST_P(ExistingGroundInLaterEdition, WritesAFormWithTwoPointsWhateverTheyHold) {
  VornExistingBuildForm form = GroundForm("", {VornExistingComposedPnt(), VornExistingComposedPnt()});
  EXPECT_EQ(WriteXml(form),
            "<tsf:ExistingBuildForm name=\"\">\n"
            "  <tsf:ExistingComposedPnt name=\"\"/>\n"
            "  <tsf:ExistingComposedPnt name=\"\"/>\n"
            "</tsf:ExistingBuildForm>\n");
}

TEST_P(ExistingGroundInLaterEdition, WritesNoFormWithFewerThanTwoPoints) {
  VornExistingBuildForm form = GroundForm("ground", {FilledPoint()});
  EXPECT_EQ(WriteXml(form), "");
  form.GetComposedPntArray().RemoveAll();
  EXPECT_EQ(WriteXml(form), "");
}

TEST_P(ExistingGroundInLaterEdition, WritesIntoTheNamespaceOfTheEdition) {
  VornExistingBuildForm form = GroundForm("ground", {FilledPoint(), FilledPoint()});
  const std::string uri = VornSchema::Instance().Tsf().GetString();
  const std::string xml = model_test::WriteXmlWithNamespaces(form);
  EXPECT_THAT(xml, HasSubstr("<tsf:ExistingBuildForm xmlns=\"" + uri + "\" name"));
  EXPECT_THAT(xml, HasSubstr("<tsf:ExistingComposedPnt xmlns=\"" + uri + "\" name"));
}

TEST_P(ExistingGroundInLaterEdition, StopsWritingAFormAtTheFirstFailure) {
  VornExistingBuildForm form = GroundForm("ground", {FilledPoint(), FilledPoint()});
  EXPECT_THAT(WriteFailuresOverlooked(form), IsEmpty());
}

TEST_P(ExistingGroundInLaterEdition, ReadsTheFormThatItWrites) {
  VornExistingBuildForm written = GroundForm("ground", {FilledPoint(), GroundAt(2.5, 12.3)});
  const std::string xml = WriteXml(written);
  VornExistingBuildForm read;
  ASSERT_TRUE(ReadXml(read, xml));
  EXPECT_EQ(WriteXml(read), xml);
}

TEST_P(ExistingGroundInEdition, ReadsRunsOfPointsAndSkipsOtherChildren) {
  test_support::XmlTree tree = test_support::XmlTree::Parse(
      "<tsf:ExistingBuildForm other='x' name='ground'><tsf:Unknown/><tsf:ExistingComposedPnt name='A'/>"
      "<tsf:ExistingComposedPnt name='B'/><tsf:ComposedPnt/><tsf:ExistingComposedPnt name='C'/>"
      "</tsf:ExistingBuildForm>");
  test_support::XmlTreeCursor cursor(tree);
  VornExistingBuildForm form;
  ASSERT_TRUE(form.fromXML(&cursor));
  EXPECT_TRUE(cursor.IsOnRoot());
  EXPECT_EQ(form.GetName(), "ground");
  std::string names;
  for (const VornExistingComposedPnt& point : form.GetComposedPntArray()) names += point.GetName().GetString();
  EXPECT_EQ(names, "ABC");
}

TEST_P(ExistingGroundInEdition, RefusesAnotherTagForAForm) {
  VornExistingBuildForm form = GroundForm("ground", {FilledPoint()});
  EXPECT_FALSE(ReadXml(form, "<tsf:BuildForm name='x'><tsf:ExistingComposedPnt/></tsf:BuildForm>"));
  ExpectFilled(form);
  EXPECT_TRUE(ReadXml(form, "<tsf:ExistingBuildForm/>"));
  ExpectFilled(form);
}

TEST_P(ExistingGroundInEdition, FailsWhenARunOfPointsCannotBeRead) {
  test_support::XmlTree tree = test_support::XmlTree::Parse(
      "<tsf:ExistingBuildForm><tsf:ExistingComposedPnt/><tsf:ExistingComposedPnt/></tsf:ExistingBuildForm>");
  int refused = 0;
  for (int n = 1; n <= 20; ++n) {
    test_support::XmlTreeCursor cursor(tree);
    cursor.FailAfter(n);
    VornExistingBuildForm form;
    if (!form.fromXML(&cursor)) ++refused;
  }
  // The tags: the form's own, the run's and each point's, at the least.
  EXPECT_GE(refused, 4);
}

}  // namespace
