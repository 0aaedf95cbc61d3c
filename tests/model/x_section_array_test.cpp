#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <type_traits>
#include <vector>

#include "tests/model/editions.h"
#include "tests/model/model_builders.h"
#include "vorn/model/x_section.h"

namespace {

using model_test::EnabledForm;
using model_test::FormOf;
using model_test::SectionAt;
using testing::ElementsAre;

static_assert(std::is_nothrow_move_constructible_v<Vorn_XSectionArray>);
static_assert(std::is_nothrow_move_assignable_v<Vorn_XSectionArray>);

Vorn_XSectionArray SectionsAt(std::initializer_list<double> stations) {
  Vorn_XSectionArray array;
  for (const double station : stations) array.Add(SectionAt(station));
  return array;
}

std::vector<double> Stations(const Vorn_XSectionArray& array) {
  std::vector<double> stations;
  for (const VornXSection& section : array) stations.push_back(section.GetCumulativeDist().Value());
  return stations;
}

TEST(XSectionArray, HoldsOneOrMoreSections) {
  Vorn_XSectionArray array;
  EXPECT_EQ(array.tagName(), "tsf:XSection");
  EXPECT_EQ(array.occurs(), VORN_Occurs::OneOrMore);
  EXPECT_FALSE(array.IsEnable());
  VornXSection section = SectionAt(20.0);
  section.GetBuildFormArray().Add(EnabledForm("road"));
  array.Add(section);
  EXPECT_TRUE(array.IsEnable());
  array.Add(VornXSection());
  EXPECT_FALSE(array.IsEnable());
}

TEST(XSectionArray, ReadsItsRunAndLeavesTheCursorOnTheLastSection) {
  test_support::XmlTree tree = test_support::XmlTree::Parse(
      "<root><tsf:XSection cumulativeDist='1'/><tsf:XSection cumulativeDist='2'/><tsf:XSection cumulativeDist='3'/>"
      "<tsf:FormCtrlTarget/></root>");
  test_support::XmlTreeCursor cursor(tree);
  ASSERT_TRUE(cursor.Child());
  Vorn_XSectionArray array;
  EXPECT_TRUE(array.fromXML(&cursor));
  EXPECT_THAT(Stations(array), ElementsAre(1.0, 2.0, 3.0));
  EXPECT_EQ(cursor.Current().attributes[0].second, "3");
}

TEST(XSectionArray, FindsTheFirstSectionLessThanAMicrometreAway) {
  const Vorn_XSectionArray array = SectionsAt({10.0, 20.0, 20.0000001, 30.0});
  EXPECT_EQ(array.Find(20.0), 1);
  EXPECT_EQ(array.Find(20.0000005), 1);
  EXPECT_EQ(array.Find(19.9999995), 1);
  EXPECT_EQ(array.Find(20.000002), -1);
  EXPECT_EQ(array.Find(19.999998), -1);
  EXPECT_EQ(Vorn_XSectionArray().Find(20.0), -1);
}

TEST(XSectionArray, FindsNoSectionExactlyAMicrometreAway) {
  EXPECT_EQ(SectionsAt({0.0}).Find(1e-6), -1);
  EXPECT_EQ(SectionsAt({0.0}).Find(0.999e-6), 0);
}

TEST(XSectionArray, TakesASectionWithoutAStationForOneAtTheStart) {
  Vorn_XSectionArray array = SectionsAt({20.0});
  array.Add(VornXSection());
  EXPECT_EQ(array.Find(0.0), 1);
  EXPECT_EQ(array.Find(kNurUnsetReal), 1);
  EXPECT_EQ(SectionsAt({20.0, 0.0}).Find(kNurUnsetReal), 1);
}

TEST(XSectionArray, InsertsInTheOrderOfStations) {
  Vorn_XSectionArray array;
  for (const double station : {10.0, 30.0, 20.0, 5.0, 40.0}) EXPECT_TRUE(array.Insert(SectionAt(station)));
  EXPECT_THAT(Stations(array), ElementsAre(5.0, 10.0, 20.0, 30.0, 40.0));
}

TEST(XSectionArray, InsertsBehindASectionAtTheSameStation) {
  Vorn_XSectionArray array = SectionsAt({10.0, 20.0, 30.0});
  EXPECT_TRUE(array.Insert(SectionAt(20.0000001)));
  EXPECT_TRUE(array.Insert(SectionAt(20.0, true)));
  EXPECT_TRUE(array.Insert(SectionAt(30.0, true)));
  EXPECT_THAT(Stations(array), ElementsAre(10.0, 20.0, 20.0000001, 20.0, 30.0, 30.0));
  EXPECT_TRUE(array[3].GetXSectChg());
  EXPECT_TRUE(array[5].GetXSectChg());
  EXPECT_FALSE(array[4].GetXSectChg());
}

TEST(XSectionArray, InsertsBeforeASectionExactlyAMicrometreAhead) {
  Vorn_XSectionArray array = SectionsAt({1e-6});
  EXPECT_TRUE(array.Insert(SectionAt(0.0)));
  EXPECT_THAT(Stations(array), ElementsAre(0.0, 1e-6));
  array = SectionsAt({0.999e-6});
  EXPECT_TRUE(array.Insert(SectionAt(0.0)));
  EXPECT_THAT(Stations(array), ElementsAre(0.999e-6, 0.0));
}

TEST(XSectionArray, InsertsACopyOfOneOfItsOwnSections) {
  Vorn_XSectionArray array = SectionsAt({10.0, 20.0});
  array[0].SetName("first");
  EXPECT_TRUE(array.Insert(array[0]));
  EXPECT_THAT(Stations(array), ElementsAre(10.0, 10.0, 20.0));
  EXPECT_EQ(array[1].GetName(), "first");
}

struct Neighbours {
  bool found;
  const VornXSection* before;
  const VornXSection* after;
};

Neighbours NeighboursOf(Vorn_XSectionArray& array, double station, VornXSection* passed = nullptr) {
  VornXSection* before = passed;
  VornXSection* after = passed;
  const bool found = array.QueryNearSection(station, before, after);
  return {found, before, after};
}

TEST(XSectionArrayNeighbours, AreTheSectionsOnEitherSide) {
  Vorn_XSectionArray array = SectionsAt({10.0, 20.0, 30.0});
  const Neighbours near = NeighboursOf(array, 25.0);
  EXPECT_TRUE(near.found);
  EXPECT_EQ(near.before, &array[1]);
  EXPECT_EQ(near.after, &array[2]);
}

TEST(XSectionArrayNeighbours, AreNoneForAStationOnASection) {
  Vorn_XSectionArray array = SectionsAt({10.0, 20.0, 30.0});
  for (const double station : {10.0, 20.0, 20.0000005, 19.9999995, 30.0}) {
    VornXSection passed;
    const Neighbours near = NeighboursOf(array, station, &passed);
    EXPECT_FALSE(near.found) << station;
    EXPECT_EQ(near.before, nullptr) << station;
    EXPECT_EQ(near.after, nullptr) << station;
  }
}

TEST(XSectionArrayNeighbours, LackTheOneBehindTheLastSection) {
  Vorn_XSectionArray array = SectionsAt({10.0, 20.0});
  VornXSection passed;
  const Neighbours near = NeighboursOf(array, 25.0, &passed);
  EXPECT_FALSE(near.found);
  EXPECT_EQ(near.before, &array[1]);
  EXPECT_EQ(near.after, &passed);
}

TEST(XSectionArrayNeighbours, LackTheOneBeforeTheFirstSection) {
  Vorn_XSectionArray array = SectionsAt({10.0, 20.0});
  const Neighbours near = NeighboursOf(array, 5.0);
  EXPECT_FALSE(near.found);
  EXPECT_EQ(near.before, nullptr);
  EXPECT_EQ(near.after, &array[0]);
}

TEST(XSectionArrayNeighbours, KeepTheOneThatThePassedPointerNamesBeforeTheFirstSection) {
  Vorn_XSectionArray array = SectionsAt({10.0, 20.0});
  VornXSection passed;
  const Neighbours near = NeighboursOf(array, 5.0, &passed);
  EXPECT_TRUE(near.found);
  EXPECT_EQ(near.before, &passed);
  EXPECT_EQ(near.after, &array[0]);
}

TEST(XSectionArrayNeighbours, AreUntouchedByAnEmptyArray) {
  Vorn_XSectionArray array;
  VornXSection passed;
  const Neighbours near = NeighboursOf(array, 5.0, &passed);
  EXPECT_FALSE(near.found);
  EXPECT_EQ(near.before, &passed);
  EXPECT_EQ(near.after, &passed);
}

TEST(XSectionArray, TellsWhetherAnySectionUsesATypeAndName) {
  Vorn_XSectionArray array = SectionsAt({10.0, 20.0});
  VornBuildForm form = FormOf("road", {});
  form.SetXSectType("A");
  array[1].GetBuildFormArray().Add(form);
  EXPECT_TRUE(array.IsUsedBuildName("A", "road"));
  EXPECT_FALSE(array.IsUsedBuildName("B", "road"));
  EXPECT_FALSE(array.IsUsedBuildName("A", "pave"));
  EXPECT_FALSE(Vorn_XSectionArray().IsUsedBuildName("A", "road"));
}

}  // namespace
