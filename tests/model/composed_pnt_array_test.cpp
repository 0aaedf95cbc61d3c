#include "vorn/model/composed_pnt_array.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/model/items.h"
#include "tests/model/model_builders.h"
#include "vorn/platform/exceptions.h"

namespace {

using model_test::EnabledPoint;
using model_test::Items;
using model_test::PointOn;
using model_test::PointWith;
using testing::ElementsAre;
using testing::IsEmpty;

using DataType = VornComposedPnt::DataType;
using PntType = VornComposedPnt::PntType;

constexpr std::uint32_t kNone = 0xFFFFFFFF;

static_assert(std::is_nothrow_move_constructible_v<Vorn_ComposedPntArray>);
static_assert(std::is_nothrow_move_assignable_v<Vorn_ComposedPntArray>);

VornLocation SideOf(char letter) {
  switch (letter) {
    case 'C':
      return VornLocation::Center;
    case 'L':
      return VornLocation::Left;
    case 'R':
      return VornLocation::Right;
    default:
      return VornLocation::Unset;
  }
}

/// Points on the sides that the letters name, "?" for none; each knows its place by its connection identifier.
Vorn_ComposedPntArray ArrayOf(std::string_view sides) {
  Vorn_ComposedPntArray array;
  for (const char letter : sides) {
    VornComposedPnt point = PointOn(SideOf(letter));
    point.SetID(static_cast<std::uint32_t>(array.GetSize()));
    array.Add(std::move(point));
  }
  return array;
}

VornComposedPnt Numbered(VornLocation side, std::uint32_t serialID) {
  VornComposedPnt point = PointOn(side);
  point.SetSerialID(serialID);
  return point;
}

std::vector<std::uint32_t> Serials(const Vorn_ComposedPntArray& array) {
  std::vector<std::uint32_t> serials;
  for (const VornComposedPnt& point : array) serials.push_back(point.GetSerialID());
  return serials;
}

// --- as a collection -----------------------------------------------------------------------------------------------

TEST(ComposedPntArray, HoldsTwoOrMoreComposedPoints) {
  Vorn_ComposedPntArray array;
  EXPECT_EQ(array.tagName(), "tsf:ComposedPnt");
  EXPECT_EQ(array.occurs(), VORN_Occurs::TwoOrMore);
  EXPECT_FALSE(array.IsEnable());
  array.Add(EnabledPoint(VornLocation::Center));
  EXPECT_FALSE(array.IsEnable());
  array.Add(EnabledPoint(VornLocation::Right));
  EXPECT_TRUE(array.IsEnable());
  array.Add(VornComposedPnt());
  EXPECT_FALSE(array.IsEnable());
}

TEST(ComposedPntArray, IsValidWithTwoPointsOrWithOneWhenThatWillDo) {
  EXPECT_FALSE(ArrayOf("").IsValid(false));
  EXPECT_FALSE(ArrayOf("").IsValid(true));
  EXPECT_FALSE(ArrayOf("C").IsValid(false));
  EXPECT_TRUE(ArrayOf("C").IsValid(true));
  EXPECT_TRUE(ArrayOf("CR").IsValid(false));
  EXPECT_TRUE(ArrayOf("CR").IsValid(true));
}

// --- numbering -----------------------------------------------------------------------------------------------------

TEST(ComposedPntArray, NumbersPointsFromOneOn) {
  Vorn_ComposedPntArray array;
  EXPECT_EQ(array.GetNextSerialID(), 1u);
  EXPECT_EQ(array.Add(PointOn(VornLocation::Left)), 0);
  EXPECT_EQ(array.Add(PointOn(VornLocation::Right)), 1);
  EXPECT_EQ(array.Add(PointOn(VornLocation::Unset)), 2);
  const VornComposedPnt point = PointOn(VornLocation::Left);
  EXPECT_EQ(array.Add(point), 3);
  EXPECT_THAT(Serials(array), ElementsAre(1u, 2u, 3u, 4u));
  EXPECT_EQ(array.GetNextSerialID(), 5u);
}

TEST(ComposedPntArray, GivesACenterPointTheSerialZeroEvenWhenItHadOne) {
  Vorn_ComposedPntArray array;
  array.Add(Numbered(VornLocation::Center, 9));
  array.Add(Numbered(VornLocation::Center, kNone));
  EXPECT_THAT(Serials(array), ElementsAre(0u, 0u));
  EXPECT_EQ(array.GetNextSerialID(), 1u);
}

TEST(ComposedPntArray, RaisesTheNextSerialAboveASerialThatAPointBrings) {
  Vorn_ComposedPntArray array = ArrayOf("LL");
  ASSERT_EQ(array.GetNextSerialID(), 3u);
  array.Add(Numbered(VornLocation::Right, 7));
  EXPECT_EQ(array.GetNextSerialID(), 8u);
  array.Add(Numbered(VornLocation::Right, 4));
  EXPECT_EQ(array.GetNextSerialID(), 8u);
  array.Add(PointOn(VornLocation::Right));
  EXPECT_THAT(Serials(array), ElementsAre(1u, 2u, 7u, 4u, 8u));
  EXPECT_EQ(array.GetNextSerialID(), 9u);
}

TEST(ComposedPntArray, RaisesTheNextSerialAboveAnEqualOne) {
  Vorn_ComposedPntArray array;
  array.Add(Numbered(VornLocation::Right, 1));
  EXPECT_EQ(array.GetNextSerialID(), 2u);
}

TEST(ComposedPntArray, AddsACopyAndLeavesTheOriginalAlone) {
  Vorn_ComposedPntArray array;
  const VornComposedPnt original = PointOn(VornLocation::Left, "A");
  array.Add(original);
  EXPECT_EQ(original.GetSerialID(), kNone);
  EXPECT_EQ(array[0].GetCode(), "A");
}

TEST(ComposedPntArray, NumbersAnInsertedPoint) {
  Vorn_ComposedPntArray array = ArrayOf("LL");
  array.InsertAt(1, PointOn(VornLocation::Right));
  array.InsertAt(0, Numbered(VornLocation::Center, 5));
  array.InsertAt(4, Numbered(VornLocation::Right, 8));
  EXPECT_THAT(Serials(array), ElementsAre(0u, 1u, 3u, 2u, 8u));
  EXPECT_EQ(array.GetNextSerialID(), 9u);
}

TEST(ComposedPntArray, NumbersAPointThatReplacesAnother) {
  Vorn_ComposedPntArray array = ArrayOf("LLL");
  array.SetAt(0, PointOn(VornLocation::Right));
  array.SetAt(1, Numbered(VornLocation::Center, 5));
  array.SetAt(2, Numbered(VornLocation::Right, 8));
  EXPECT_THAT(Serials(array), ElementsAre(4u, 0u, 8u));
  EXPECT_EQ(array.GetNextSerialID(), 9u);
}

TEST(ComposedPntArray, NumbersAPointInPlace) {
  Vorn_ComposedPntArray array = ArrayOf("LLLL");
  array[0].SetSerialID(kNone);
  array[1].SetLocation(VornLocation::Center);
  array[2].SetSerialID(20);
  for (int i = 0; i < array.GetSize(); ++i) array.SetSerialID(i);
  EXPECT_THAT(Serials(array), ElementsAre(5u, 0u, 20u, 4u));
  EXPECT_EQ(array.GetNextSerialID(), 21u);
}

TEST(ComposedPntArray, RefusesToReplaceOrNumberOutsideTheArray) {
  Vorn_ComposedPntArray array = ArrayOf("CR");
  for (const int outside : {-1, 2}) {
    EXPECT_THROW(array.SetAt(outside, VornComposedPnt()), CInvalidArgException);
    EXPECT_THROW(array.SetSerialID(outside), CInvalidArgException);
    EXPECT_THROW((void)array[outside], CInvalidArgException);
  }
  EXPECT_THROW(array.InsertAt(-1, VornComposedPnt()), CInvalidArgException);
  EXPECT_EQ(array.GetSize(), 2);
}

TEST(ComposedPntArray, NeverLowersTheNextSerial) {
  Vorn_ComposedPntArray array = ArrayOf("LLL");
  array.RemoveAt(2);
  EXPECT_EQ(array.GetNextSerialID(), 4u);
  array.RemoveAll();
  EXPECT_EQ(array.GetNextSerialID(), 4u);
}

TEST(ComposedPntArray, NumbersAppendedPointsAfresh) {
  Vorn_ComposedPntArray array = ArrayOf("LRL");
  array.Append(ArrayOf("LRL"));
  EXPECT_THAT(Serials(array), ElementsAre(1u, 2u, 3u, 4u, 5u, 6u));
}

TEST(ComposedPntArray, AppendsInOrderAndKeepsTheCenterAtZero) {
  Vorn_ComposedPntArray array = ArrayOf("L");
  const Vorn_ComposedPntArray other = ArrayOf("CRR");
  array.Append(other);
  EXPECT_THAT(Serials(array), ElementsAre(1u, 0u, 2u, 3u));
  EXPECT_EQ(array[3].GetID(), 2u);
  EXPECT_THAT(Serials(other), ElementsAre(0u, 1u, 2u));
}

TEST(ComposedPntArray, CanBeAppendedToItself) {
  Vorn_ComposedPntArray array = ArrayOf("LR");
  array.Append(array);
  EXPECT_THAT(Serials(array), ElementsAre(1u, 2u, 3u, 4u));
}

TEST(ComposedPntArray, NumbersEveryPointWithoutASerialCenterPointsIncluded) {
  Vorn_ComposedPntArray array = ArrayOf("CLCR");
  for (const int index : {0, 1, 2}) array[index].SetSerialID(kNone);
  array.RegulateSerialID();
  EXPECT_THAT(Serials(array), ElementsAre(3u, 4u, 5u, 2u));
  EXPECT_EQ(array.GetNextSerialID(), 6u);
}

TEST(ComposedPntArray, CopiesThePointsAndTheNextSerial) {
  const Vorn_ComposedPntArray original = ArrayOf("CLR");
  Vorn_ComposedPntArray copy;
  copy = original;
  EXPECT_EQ(copy.GetNextSerialID(), 3u);
  EXPECT_THAT(Serials(copy), ElementsAre(0u, 1u, 2u));
  copy.Add(PointOn(VornLocation::Left));
  EXPECT_EQ(original.GetSize(), 3);
  EXPECT_EQ(Vorn_ComposedPntArray(original).GetNextSerialID(), 3u);
}

// --- searches ------------------------------------------------------------------------------------------------------

TEST(ComposedPntArraySearch, FindsTheFirstMainCodeExactly) {
  Vorn_ComposedPntArray array = ArrayOf("CLLL");
  array[1].SetCode("Ab");
  array[2].SetCode("AB");
  array[3].SetCode("AB");
  array[0].SetCode("sub", PntType::Sub);
  EXPECT_EQ(array.Find("AB"), 2);
  EXPECT_EQ(array.Find(CString("Ab")), 1);
  EXPECT_EQ(array.Find("ab"), -1);
  EXPECT_EQ(array.Find("sub"), -1);
}

/// A search by identifier, and how a point gets the identifier.
struct Search {
  const char* name;
  void (VornComposedPnt::*set)(const std::uint32_t&);
  int (Vorn_ComposedPntArray::*find)(std::uint32_t) const;
};

class ComposedPntArrayIdSearch : public testing::TestWithParam<Search> {};

TEST_P(ComposedPntArrayIdSearch, FindsTheFirstPointWithTheIdentifier) {
  const auto [name, set, find] = GetParam();
  Vorn_ComposedPntArray array = ArrayOf("CLRL");
  for (const int index : {0, 1, 2, 3}) (array[index].*set)(100);
  for (const int index : {2, 3}) (array[index].*set)(55);
  EXPECT_EQ((array.*find)(55), 2);
  EXPECT_EQ((array.*find)(100), 0);
  EXPECT_EQ((array.*find)(56), -1);
  EXPECT_EQ((Vorn_ComposedPntArray().*find)(55), -1);
}

INSTANTIATE_TEST_SUITE_P(
    , ComposedPntArrayIdSearch,
    testing::Values(Search{"Find", &VornComposedPnt::SetSerialID, &Vorn_ComposedPntArray::Find},
                    Search{"FindOrg", &VornComposedPnt::SetOrgID, &Vorn_ComposedPntArray::FindOrg},
                    Search{"FindParent", &VornComposedPnt::SetParentID, &Vorn_ComposedPntArray::FindParent},
                    Search{"FindID", &VornComposedPnt::SetID, &Vorn_ComposedPntArray::FindID},
                    Search{"FindDrawID", &VornComposedPnt::SetDrawID, &Vorn_ComposedPntArray::FindDrawID}),
    [](const testing::TestParamInfo<Search>& info) { return std::string(info.param.name); });

TEST(ComposedPntArraySearch, TakesAPlainZeroForTheSerialOfTheCenterPoint) {
  const Vorn_ComposedPntArray array = ArrayOf("LRC");
  EXPECT_EQ(array.Find(0), 2);
  EXPECT_EQ(array.Find(2), 1);
  EXPECT_EQ(array.Find(-1), -1);
  EXPECT_EQ(ArrayOf("LR").Find(0), -1);
}

TEST(ComposedPntArraySearch, TakesADrawingIdentifierOfZeroForTheFirstPointWithoutASearch) {
  EXPECT_EQ(Vorn_ComposedPntArray().FindDrawID(0), 0);
  Vorn_ComposedPntArray array = ArrayOf("CLR");
  array[2].SetDrawID(0);
  EXPECT_EQ(array.FindDrawID(0), 0);
}

TEST(ComposedPntArraySearch, FindsAPointByTheFormOfARole) {
  Vorn_ComposedPntArray array = ArrayOf("CLRL");
  array[1].FormID(PntType::Sub) = 5;
  array[2].FormID(PntType::Main) = 5;
  array[3].FormID(PntType::Main) = 6;
  EXPECT_EQ(array.FindPnt(5, PntType::Main), 2);
  EXPECT_EQ(array.FindPnt(5, PntType::Sub), 1);
  EXPECT_EQ(array.FindPnt(5, static_cast<PntType>(2)), 2);
  EXPECT_EQ(array.FindPnt(5, PntType::Both), 1);
  EXPECT_EQ(array.FindPnt(6, PntType::Both), 3);
  EXPECT_EQ(array.FindPnt(6, PntType::Sub), -1);
  EXPECT_EQ(array.FindPnt(7, PntType::Both), -1);
}

// --- sides and order -----------------------------------------------------------------------------------------------

TEST(ComposedPntArrayOrder, GivesTheFirstAndLastIndexOfASide) {
  const Vorn_ComposedPntArray array = ArrayOf("CLRLR");
  const auto area = [&](VornLocation side) {
    std::pair<int, int> indices(99, 99);
    array.GetLocationAreaIndex(side, indices.first, indices.second);
    return indices;
  };
  EXPECT_EQ(area(VornLocation::Center), std::pair(0, 0));
  EXPECT_EQ(area(VornLocation::Left), std::pair(1, 3));
  EXPECT_EQ(area(VornLocation::Right), std::pair(2, 4));
  EXPECT_EQ(area(VornLocation::Unset), std::pair(-1, -1));
}

/// Index lists that are not empty, so that a query has to empty them.
VornIndexArray UsedList() {
  VornIndexArray list;
  list.Add(77);
  return list;
}

TEST(ComposedPntArrayOrder, SplitsIntoSidesThatBothBeginWithTheStartPoint) {
  VornIndexArray left = UsedList();
  VornIndexArray right = UsedList();
  EXPECT_TRUE(ArrayOf("CLR?LCR").QueryIndexArray(left, right));
  EXPECT_THAT(Items(left), ElementsAre(0, 1, 4));
  EXPECT_THAT(Items(right), ElementsAre(0, 2, 6));
}

TEST(ComposedPntArrayOrder, CountsTheStartPointOnceWhateverItsSide) {
  VornIndexArray left;
  VornIndexArray right;
  EXPECT_TRUE(ArrayOf("LLR").QueryIndexArray(left, right));
  EXPECT_THAT(Items(left), ElementsAre(0, 1));
  EXPECT_THAT(Items(right), ElementsAre(0, 2));
}

TEST(ComposedPntArrayOrder, SplitsASinglePointIntoItself) {
  for (const char* sides : {"C", "L", "R", "?"}) {
    VornIndexArray left;
    VornIndexArray right;
    EXPECT_TRUE(ArrayOf(sides).QueryIndexArray(left, right));
    EXPECT_THAT(Items(left), ElementsAre(0));
    EXPECT_THAT(Items(right), ElementsAre(0));
  }
}

TEST(ComposedPntArrayOrder, SplitsNothingOfAnEmptyArray) {
  int center = 77;
  VornIndexArray left = UsedList();
  VornIndexArray right = UsedList();
  EXPECT_FALSE(ArrayOf("").QueryIndexArray(left, right));
  EXPECT_THAT(Items(left), IsEmpty());
  EXPECT_THAT(Items(right), IsEmpty());

  left = UsedList();
  right = UsedList();
  VornIndexArray order = UsedList();
  EXPECT_FALSE(ArrayOf("").QueryIndexArray(center, left, right));
  EXPECT_EQ(center, -1);
  EXPECT_THAT(Items(left), IsEmpty());
  EXPECT_THAT(Items(right), IsEmpty());
  EXPECT_FALSE(ArrayOf("").QueryIndexArrayLtoR(order));
  EXPECT_THAT(Items(order), IsEmpty());
}

TEST(ComposedPntArrayOrder, ClassifiesEveryPoint) {
  int center = 77;
  VornIndexArray left = UsedList();
  VornIndexArray right = UsedList();
  EXPECT_TRUE(ArrayOf("CLRLR").QueryIndexArray(center, left, right));
  EXPECT_EQ(center, 0);
  EXPECT_THAT(Items(left), ElementsAre(1, 3));
  EXPECT_THAT(Items(right), ElementsAre(2, 4));
}

TEST(ComposedPntArrayOrder, TakesTheLastCenterPointAndDoesWithoutOne) {
  int center = 77;
  VornIndexArray left;
  VornIndexArray right;
  EXPECT_TRUE(ArrayOf("CLCR").QueryIndexArray(center, left, right));
  EXPECT_EQ(center, 2);
  EXPECT_TRUE(ArrayOf("LR").QueryIndexArray(center, left, right));
  EXPECT_EQ(center, -1);
  EXPECT_THAT(Items(left), ElementsAre(0));
  EXPECT_THAT(Items(right), ElementsAre(1));
}

TEST(ComposedPntArrayOrder, EndsClassifyingAtAPointWithoutASide) {
  int center = 77;
  VornIndexArray left;
  VornIndexArray right;
  EXPECT_FALSE(ArrayOf("CLR?LR").QueryIndexArray(center, left, right));
  EXPECT_EQ(center, 0);
  EXPECT_THAT(Items(left), ElementsAre(1));
  EXPECT_THAT(Items(right), ElementsAre(2));
}

TEST(ComposedPntArrayOrder, RunsFromLeftToRight) {
  const std::vector<std::pair<const char*, std::vector<int>>> orders = {
      {"CLLRR", {2, 1, 0, 3, 4}},
      {"CRRLL", {4, 3, 0, 1, 2}},
      {"CLRLR", {3, 1, 0, 2, 4}},
      {"CRR", {0, 1, 2}},
      {"LL", {1, 0}},
      {"C?LR", {2, 0, 0, 3}},
      {"?", {0}},
      {"CLR??", {1, 0, 0, 0, 2}},
  };
  for (const auto& [sides, expected] : orders) {
    VornIndexArray order = UsedList();
    EXPECT_TRUE(ArrayOf(sides).QueryIndexArrayLtoR(order));
    EXPECT_EQ(Items(order), expected) << sides;
  }
}

struct Ends {
  const char* sides;
  bool throughStart;
  int first;  ///< -1: there are no ends
  int last;
};

void PrintTo(const Ends& ends, std::ostream* out) {
  *out << ends.sides << (ends.throughStart ? "" : ", not through the start");
}

class ComposedPntArrayEnds : public testing::TestWithParam<Ends> {};

TEST_P(ComposedPntArrayEnds, AreTheOutermostPoints) {
  const Ends& ends = GetParam();
  Vorn_ComposedPntArray array = ArrayOf(ends.sides);
  for (int i = 0; i < array.GetSize(); ++i) {
    array[i].SetCLDist(i);
    array[i].SetGh(100 + i);
  }
  if (!array.IsEmpty()) array[0].SetSeriesPnt(ends.throughStart);

  VornComposedPnt firstPoint;
  VornComposedPnt lastPoint;
  TamWorld2 firstPosition;
  TamWorld2 lastPosition;
  const bool expected = ends.first >= 0;
  ASSERT_EQ(array.QueryTermPoint(firstPoint, lastPoint), expected);
  ASSERT_EQ(array.QueryTermPoint(firstPosition, lastPosition), expected);
  if (!expected) return;
  EXPECT_EQ(firstPoint.GetID(), static_cast<std::uint32_t>(ends.first));
  EXPECT_EQ(lastPoint.GetID(), static_cast<std::uint32_t>(ends.last));
  EXPECT_EQ(firstPosition, (TamWorld2{1.0 * ends.first, 100.0 + ends.first}));
  EXPECT_EQ(lastPosition, (TamWorld2{1.0 * ends.last, 100.0 + ends.last}));
}

INSTANTIATE_TEST_SUITE_P(, ComposedPntArrayEnds,
                         testing::Values(Ends{"", true, -1, -1}, Ends{"C", true, -1, -1}, Ends{"CR", true, 0, 1},
                                         Ends{"CL", true, 1, 0}, Ends{"CLR", true, 1, 2}, Ends{"CLLRR", true, 2, 4},
                                         Ends{"CRR", true, 0, 2}, Ends{"CLL", true, 2, 0}, Ends{"C?", true, 0, 0},
                                         Ends{"CLLRR", false, 2, 4}, Ends{"CLR", false, 1, 2}, Ends{"CRR", false, 1, 2},
                                         Ends{"CRRR", false, 1, 3}, Ends{"CLL", false, 2, 1}, Ends{"CR", false, -1, -1},
                                         Ends{"CL", false, -1, -1}, Ends{"C?", false, -1, -1}, Ends{"LRR", true, 0, 2},
                                         Ends{"LRR", false, 1, 2}, Ends{"LL", true, 1, 0}));

TEST(ComposedPntArrayOrder, GivesItsEndsIntoPointsOfTheArrayItself) {
  for (int first = 0; first < 5; ++first) {
    for (int last = 0; last < 5; ++last) {
      if (first == last) continue;
      Vorn_ComposedPntArray array = ArrayOf("CLLRR");
      ASSERT_TRUE(array.QueryTermPoint(array[first], array[last]));
      EXPECT_EQ(array[first].GetID(), 2u) << first << ", " << last;
      EXPECT_EQ(array[last].GetID(), 4u) << first << ", " << last;
    }
  }
}

Vorn_ComposedPntArray SeparationAt(std::string_view sides, int index, int neighbour) {
  Vorn_ComposedPntArray array = ArrayOf(sides);
  array[index].SetXSectType(5, PntType::Sub);
  array[index].SetXSectNameID(6, PntType::Sub);
  array[neighbour].SetXSectType(5, PntType::Main);
  array[neighbour].SetXSectNameID(6, PntType::Main);
  return array;
}

TEST(ComposedPntArraySeparation, AgreesWithTheOutwardNeighbourOfItsSide) {
  const Vorn_ComposedPntArray right = SeparationAt("CRLR", 1, 3);
  EXPECT_TRUE(right.IsValidPointSubDetail(right[1].GetSerialID()));
  const Vorn_ComposedPntArray left = SeparationAt("CLRL", 1, 3);
  EXPECT_TRUE(left.IsValidPointSubDetail(left[1].GetSerialID()));
  const Vorn_ComposedPntArray inward = SeparationAt("CRR", 2, 1);
  EXPECT_FALSE(inward.IsValidPointSubDetail(inward[2].GetSerialID()));
}

TEST(ComposedPntArraySeparation, AgreesFromAStartPointOnASide) {
  const Vorn_ComposedPntArray array = SeparationAt("LRL", 0, 2);
  EXPECT_TRUE(array.IsValidPointSubDetail(array[0].GetSerialID()));
}

TEST(ComposedPntArraySeparation, HasNoNeighbourAtAStartPointWithoutASide) {
  for (const char* sides : {"?RL", "?LR"}) {
    for (const int neighbour : {1, 2}) {
      const Vorn_ComposedPntArray array = SeparationAt(sides, 0, neighbour);
      EXPECT_FALSE(array.IsValidPointSubDetail(array[0].GetSerialID())) << sides << neighbour;
    }
  }
}

TEST(ComposedPntArraySeparation, DisagreesInTypeOrInName) {
  Vorn_ComposedPntArray array = SeparationAt("CRR", 1, 2);
  array[2].SetXSectType(7, PntType::Main);
  EXPECT_FALSE(array.IsValidPointSubDetail(array[1].GetSerialID()));
  array = SeparationAt("CRR", 1, 2);
  array[2].SetXSectNameID(7, PntType::Main);
  EXPECT_FALSE(array.IsValidPointSubDetail(array[1].GetSerialID()));
}

TEST(ComposedPntArraySeparation, NeedsAPointWithASideAndANeighbour) {
  const Vorn_ComposedPntArray array = ArrayOf("CR?R");
  EXPECT_FALSE(array.IsValidPointSubDetail(99));
  EXPECT_FALSE(array.IsValidPointSubDetail(0));
  EXPECT_TRUE(array.IsValidPointSubDetail(array[1].GetSerialID()));
  EXPECT_FALSE(array.IsValidPointSubDetail(array[2].GetSerialID()));
  EXPECT_FALSE(array.IsValidPointSubDetail(array[3].GetSerialID()));
}

TEST(ComposedPntArraySeparation, IsJudgedAtTheFirstPointOfTheSerial) {
  Vorn_ComposedPntArray array = SeparationAt("CRR", 1, 2);
  array[2].SetSerialID(array[1].GetSerialID());
  EXPECT_TRUE(array.IsValidPointSubDetail(array[1].GetSerialID()));
}

// --- recalculation -------------------------------------------------------------------------------------------------

constexpr double kUntouched = 777.0;

/// A point with width X and height difference Y whose position is not computed yet.
VornComposedPnt Untouched(VornLocation side, DataType type, NurReal x, NurReal y) {
  VornComposedPnt point = PointWith(side, type, x, y);
  point.SetCLDist(kUntouched);
  point.SetGh(kUntouched);
  return point;
}

VornComposedPnt Right(NurReal x, NurReal y, DataType type = DataType::WidthHeight) {
  return Untouched(VornLocation::Right, type, x, y);
}

VornComposedPnt Left(NurReal x, NurReal y) { return Untouched(VornLocation::Left, DataType::WidthHeight, x, y); }

VornComposedPnt RightSlope(DataType type, NurReal x, NurReal y, NurReal ratio, NurReal percent) {
  VornComposedPnt point = Right(x, y, type);
  point.SetRatio(ratio);
  point.SetPercent(percent);
  return point;
}

const NurReal kUnset;

std::vector<double> DistancesFromCL(std::initializer_list<VornComposedPnt> points, bool left, NurReal offset) {
  Vorn_ComposedPntArray array;
  for (const VornComposedPnt& point : points) array.Add(point);
  array.RecalcDistFromCL(left, offset);
  std::vector<double> distances;
  for (const VornComposedPnt& point : array) {
    distances.push_back(point.GetCLDist().Value());
    EXPECT_EQ(point.GetGh(), kUntouched);
  }
  return distances;
}

TEST(ComposedPntArrayDistance, ChainsTheWidthsOfOneSideOutward) {
  const auto center = Untouched(VornLocation::Center, DataType::WidthHeight, 9.0, 9.0);
  const auto nowhere = Untouched(VornLocation::Unset, DataType::WidthHeight, 9.0, 9.0);
  const auto points = {center, Left(2.0, 0.0), Right(3.0, 0.0), nowhere, Left(4.0, 0.0), Right(5.0, 0.0)};
  EXPECT_THAT(DistancesFromCL(points, false, 1.0),
              ElementsAre(kUntouched, kUntouched, 4.0, kUntouched, kUntouched, 9.0));
  EXPECT_THAT(DistancesFromCL(points, true, -1.0),
              ElementsAre(kUntouched, -3.0, kUntouched, kUntouched, -7.0, kUntouched));
}

TEST(ComposedPntArrayDistance, StartsAtASignedOffset) {
  EXPECT_THAT(DistancesFromCL({Right(3.0, 0.0), Right(5.0, 0.0)}, false, -1.0), ElementsAre(2.0, 7.0));
  EXPECT_THAT(DistancesFromCL({Left(3.0, 0.0), Left(5.0, 0.0)}, true, 1.0), ElementsAre(-2.0, -7.0));
}

TEST(ComposedPntArrayDistance, GoesOnFromTheLastCompletePoint) {
  EXPECT_THAT(DistancesFromCL({Right(2.0, 0.0), Right(5.0, kUnset), Right(3.0, 0.0)}, false, 1.0),
              ElementsAre(3.0, 8.0, 6.0));
  EXPECT_THAT(DistancesFromCL({Left(2.0, 0.0), Left(5.0, kUnset), Left(3.0, 0.0)}, true, 0.0),
              ElementsAre(-2.0, -7.0, -5.0));
}

TEST(ComposedPntArrayDistance, WritesNothingWithoutAWidth) {
  EXPECT_THAT(DistancesFromCL({Right(2.0, 0.0), Right(kUnset, 1.0), Right(3.0, 0.0)}, false, 1.0),
              ElementsAre(3.0, kUntouched, 6.0));
}

TEST(ComposedPntArrayDistance, UsesTheOffsetForTheFirstPointOnly) {
  EXPECT_THAT(DistancesFromCL({Right(2.0, kUnset), Right(3.0, 0.0)}, false, 1.0), ElementsAre(3.0, 3.0));
  EXPECT_THAT(DistancesFromCL({Left(2.0, kUnset), Left(3.0, 0.0)}, true, 1.0), ElementsAre(-1.0, -3.0));
  EXPECT_THAT(DistancesFromCL({Right(kUnset, 0.0), Right(3.0, 0.0)}, false, 1.0), ElementsAre(kUntouched, 3.0));
  const auto slope = RightSlope(DataType::Percent, kUnset, 0.0, 1.0, 1.0);
  EXPECT_THAT(DistancesFromCL({slope, Right(3.0, 0.0)}, false, 1.0), ElementsAre(kUntouched, 3.0));
}

struct Completeness {
  VornComposedPnt point;  ///< with a width of 2
  bool complete;
};

TEST(ComposedPntArrayDistance, ChainsFromAPointWhoseTypeIsKnownAndWhoseValuesAreThere) {
  const std::vector<Completeness> rows = {
      {Right(2.0, 1.0), true},
      {Right(2.0, kUnset), false},
      {RightSlope(DataType::WidthHeight, 2.0, kUnset, 1.0, 1.0), false},
      {RightSlope(DataType::Percent, 2.0, 1.0, kUnset, kUnset), false},
      {RightSlope(DataType::Percent, 2.0, 1.0, 1.0, kUnset), true},
      {RightSlope(DataType::Percent, 2.0, 1.0, kUnset, 1.0), true},
      {RightSlope(DataType::Percent, 2.0, kUnset, 1.0, 1.0), true},
      {RightSlope(DataType::Rate, 2.0, 1.0, kUnset, kUnset), false},
      {RightSlope(DataType::Rate, 2.0, 1.0, 1.0, kUnset), true},
      {RightSlope(DataType::Rate, 2.0, 1.0, kUnset, 1.0), true},
      {RightSlope(DataType::Unset, 2.0, 1.0, 1.0, 1.0), false},
      {RightSlope(static_cast<DataType>(3), 2.0, 1.0, 1.0, 1.0), false},
  };
  for (std::size_t i = 0; i < rows.size(); ++i) {
    EXPECT_THAT(DistancesFromCL({rows[i].point, Right(3.0, 0.0)}, false, 0.0),
                ElementsAre(2.0, rows[i].complete ? 5.0 : 3.0))
        << i;
  }
}

std::vector<double> Heights(std::initializer_list<VornComposedPnt> points, bool left, NurReal base) {
  Vorn_ComposedPntArray array;
  for (const VornComposedPnt& point : points) array.Add(point);
  array.RecalcHeight(left, base);
  std::vector<double> heights;
  for (const VornComposedPnt& point : array) {
    heights.push_back(point.GetGh().Value());
    EXPECT_EQ(point.GetCLDist(), kUntouched);
  }
  return heights;
}

TEST(ComposedPntArrayHeight, ChainsTheHeightDifferencesOfOneSide) {
  const auto center = Untouched(VornLocation::Center, DataType::WidthHeight, 9.0, 9.0);
  const auto nowhere = Untouched(VornLocation::Unset, DataType::WidthHeight, 9.0, 9.0);
  const auto points = {center, Left(1.0, 2.0), Right(1.0, -3.0), nowhere, Left(1.0, 4.0), Right(1.0, 5.0)};
  EXPECT_THAT(Heights(points, false, 10.0), ElementsAre(kUntouched, kUntouched, 7.0, kUntouched, kUntouched, 12.0));
  EXPECT_THAT(Heights(points, true, 10.0), ElementsAre(kUntouched, 12.0, kUntouched, kUntouched, 16.0, kUntouched));
}

TEST(ComposedPntArrayHeight, ReadsYAsAHeightDifferenceWhateverTheDataType) {
  EXPECT_THAT(Heights({RightSlope(DataType::Percent, 4.0, 2.0, 1.0, kUnset),
                       RightSlope(DataType::Rate, 4.0, 3.0, kUnset, 1.0), Right(4.0, 1.0)},
                      false, 10.0),
              ElementsAre(12.0, 15.0, 16.0));
}

TEST(ComposedPntArrayHeight, GoesOnFromTheLastCompletePoint) {
  EXPECT_THAT(Heights({Right(1.0, 2.0), Right(kUnset, 5.0), Right(1.0, 3.0)}, false, 10.0),
              ElementsAre(12.0, 17.0, 15.0));
  EXPECT_THAT(
      Heights({Right(1.0, 2.0), RightSlope(DataType::Rate, 1.0, 5.0, kUnset, kUnset), Right(1.0, 3.0)}, false, 10.0),
      ElementsAre(12.0, 17.0, 15.0));
  EXPECT_THAT(
      Heights({Right(1.0, 2.0), RightSlope(DataType::Rate, kUnset, 5.0, 1.0, 1.0), Right(1.0, 3.0)}, false, 10.0),
      ElementsAre(12.0, 17.0, 15.0));
}

TEST(ComposedPntArrayHeight, WritesNothingForAnIncompletePointWithoutY) {
  EXPECT_THAT(Heights({Right(1.0, 2.0), Right(1.0, kUnset), Right(1.0, 3.0)}, false, 10.0),
              ElementsAre(12.0, kUntouched, 15.0));
}

TEST(ComposedPntArrayHeight, PutsAPointOfNoDataTypeAboveTheRunningHeight) {
  const auto none = [](NurReal y) { return Right(1.0, y, DataType::Unset); };
  EXPECT_THAT(Heights({none(1.0), Right(1.0, 2.0), none(5.0), none(6.0), Right(1.0, 3.0)}, false, 10.0),
              ElementsAre(11.0, 12.0, 17.0, 18.0, 15.0));
  EXPECT_THAT(Heights({Right(1.0, 2.0), none(kUnset), none(1.0)}, false, 10.0), ElementsAre(12.0, kUntouched, 13.0));
}

TEST(ComposedPntArrayHeight, TakesAnUnknownDataTypeForNone) {
  const auto unknown = [](NurReal y) { return RightSlope(static_cast<DataType>(3), 1.0, y, 1.0, 1.0); };
  EXPECT_THAT(Heights({unknown(1.0), Right(1.0, 2.0), unknown(5.0), unknown(kUnset), Right(1.0, 3.0)}, false, 10.0),
              ElementsAre(11.0, 12.0, 17.0, kUntouched, 15.0));
  const auto slope = RightSlope(DataType::Rate, 4.0, 2.0, 1.0, kUnset);
  EXPECT_THAT(Heights({slope, unknown(1.0), unknown(1.0)}, false, 10.0), ElementsAre(12.0, 5.0, 13.0));
}

TEST(ComposedPntArrayHeight, PutsAPointOfNoDataTypeAboveTheWidthOfACompleteSlopeDirectlyBefore) {
  const auto none = [](NurReal y) { return Right(1.0, y, DataType::Unset); };
  for (const DataType type : {DataType::Percent, DataType::Rate}) {
    const auto slope = RightSlope(type, 4.0, 2.0, 1.0, kUnset);
    const auto incompleteSlope = RightSlope(type, 4.0, 2.0, kUnset, kUnset);
    EXPECT_THAT(Heights({slope, none(1.0), none(1.0), Right(1.0, 3.0)}, false, 10.0),
                ElementsAre(12.0, 5.0, 13.0, 15.0));
    EXPECT_THAT(Heights({slope, Right(1.0, 3.0), none(1.0)}, false, 10.0), ElementsAre(12.0, 15.0, 16.0));
    EXPECT_THAT(Heights({slope, incompleteSlope, none(1.0)}, false, 10.0), ElementsAre(12.0, 14.0, 13.0));
    EXPECT_THAT(Heights({incompleteSlope, none(1.0)}, false, 10.0), ElementsAre(12.0, 11.0));
    // Points of the other side do not come between.
    EXPECT_THAT(Heights({slope, Left(1.0, 9.0), none(1.0)}, false, 10.0), ElementsAre(12.0, kUntouched, 5.0));
    // A point of no data type does, even one that has nothing to add.
    EXPECT_THAT(Heights({slope, none(kUnset), none(1.0)}, false, 10.0), ElementsAre(12.0, kUntouched, 13.0));
  }
}

TEST(ComposedPntArrayHeight, GoesOnAtTheSameHeightFromACompleteSlopeWithoutY) {
  for (const DataType type : {DataType::Percent, DataType::Rate}) {
    const auto slope = RightSlope(type, 4.0, kUnset, 1.0, kUnset);
    EXPECT_THAT(Heights({slope, Right(1.0, 3.0)}, false, 10.0), ElementsAre(10.0, 13.0));
    EXPECT_THAT(Heights({slope, Right(1.0, 1.0, DataType::Unset)}, false, 10.0), ElementsAre(10.0, 5.0));
  }
}

TEST(ComposedPntArrayNumbering, GoesOnBehindACopy) {
  Vorn_ComposedPntArray points;
  for (int i = 0; i < 3; ++i) points.Add(model_test::PointOn(VornLocation::Left));
  Vorn_ComposedPntArray copy;
  copy.Copy(points);
  EXPECT_EQ(copy[copy.Add(model_test::PointOn(VornLocation::Left))].GetSerialID(), 4U);
}

TEST(ComposedPntArrayAppend, TakesItselfMovedAsACopy) {
  Vorn_ComposedPntArray points;
  points.Add(model_test::PointOn(VornLocation::Left, "L1"));
  points.Append(std::move(points));
  ASSERT_EQ(points.GetSize(), 2);  // NOLINT(bugprone-use-after-move)
  EXPECT_EQ(points[1].GetCode(), "L1");
}

}  // namespace
