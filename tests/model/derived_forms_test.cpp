// How derived forms, such as pavement layers, follow the forms that they hang on.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "tests/model/model_builders.h"
#include "vorn/model/build_form_array.h"
#include "vorn/platform/exceptions.h"

namespace {

using model_test::CodesOf;
using model_test::Each;
using model_test::FormOf;
using model_test::NamesOf;
using model_test::PointAt;
using model_test::PointOn;
using testing::ElementsAre;

using DataType = VornComposedPnt::DataType;
using ElementType = VornComposedPnt::ElementType;
using SlopeType = VornComposedPnt::SlopeType;

constexpr std::uint32_t kNone = 0xFFFFFFFF;
constexpr auto kCenter = VornLocation::Center;
constexpr auto kLeft = VornLocation::Left;
constexpr auto kRight = VornLocation::Right;

// --- pieces --------------------------------------------------------------------------------------------------------

// Points of a derived form. Each hangs on the parent's point with that serial, and its code tells the side and the
// serial; one without a serial hangs on nothing. A point that is made for a new one has no code.

VornComposedPnt Hanging(VornLocation side, char letter, std::uint32_t parent) {
  VornComposedPnt point = PointOn(side, letter + (parent == kNone ? std::string() : std::to_string(parent)));
  point.SetParentID(parent);
  return point;
}
VornComposedPnt Center(std::uint32_t parent = kNone) { return Hanging(kCenter, 'C', parent); }
VornComposedPnt Left(std::uint32_t parent = kNone) { return Hanging(kLeft, 'L', parent); }
VornComposedPnt Right(std::uint32_t parent = kNone) { return Hanging(kRight, 'R', parent); }

/// A form derived from the form with that serial.
VornBuildForm Layer(std::uint32_t parentForm, std::initializer_list<VornComposedPnt> points) {
  VornBuildForm form = FormOf("layer", points);
  form.SetParentID(parentForm);
  return form;
}

VornBuildForm Named(std::string_view name, VornBuildForm form) {
  form.SetName(CString(name), false);
  return form;
}

VornBuildForm WithSerial(std::uint32_t serialID, VornBuildForm form) {
  form.SetSerialID(serialID);
  return form;
}

/// The first form becomes the design surface, with serial 0; the others have the serials 1, 2, ...
Vorn_BuildFormArray FormsOf(std::initializer_list<VornBuildForm> list) {
  Vorn_BuildFormArray forms;
  for (const VornBuildForm& form : list) forms.Add(form);
  return forms;
}

Vorn_ComposedPntArray& PointsOf(Vorn_BuildFormArray& forms, int form) { return forms[form].GetComposedPntArray(); }

/// The first point without a code, which was made for a new point of the surface; -1 when there is none.
int NewPointIn(const Vorn_BuildFormArray& forms, int form) { return forms[form].GetComposedPntArray().Find(""); }

// --- a new point that has not been placed yet ------------------------------------------------------------------------

/// A design surface whose points have no positions: 0 in the centre, 1, 2, 3 on the left, 4, 5, 6 on the right.
VornBuildForm Surface() {
  return FormOf("surface", {PointOn(kCenter), PointOn(kLeft), PointOn(kLeft), PointOn(kLeft), PointOn(kRight),
                            PointOn(kRight), PointOn(kRight)});
}

/// A layer that has points for all of the surface but for 2 and 5, which are new.
VornBuildForm LayerWithout2And5(std::uint32_t parentForm = 0) {
  return Layer(parentForm, {Center(0), Left(1), Left(3), Left(), Right(4), Right(6), Right()});
}

TEST(AddedPoint, GetsAPointBeforeTheOneThatHangsOnItsOuterNeighbourOnTheLeft) {
  Vorn_BuildFormArray forms = FormsOf({Surface(), LayerWithout2And5()});
  forms.AddedComposedPnt(0, 2);
  EXPECT_THAT(CodesOf(forms[1]), ElementsAre("C0", "L1", "", "L3", "L", "R4", "R6", "R"));
}

TEST(AddedPoint, GetsAPointBeforeTheOneThatHangsOnItsOuterNeighbourOnTheRight) {
  Vorn_BuildFormArray forms = FormsOf({Surface(), LayerWithout2And5()});
  forms.AddedComposedPnt(0, 5);
  EXPECT_THAT(CodesOf(forms[1]), ElementsAre("C0", "L1", "L3", "L", "R4", "", "R6", "R"));
}

TEST(AddedPoint, GetsAPointThatHangsOnItWithAFreshSerial) {
  Vorn_BuildFormArray forms = FormsOf({Surface(), LayerWithout2And5()});
  forms.AddedComposedPnt(0, 2);
  const VornComposedPnt& made = forms[1].GetComposedPntArray()[2];
  EXPECT_EQ(made.GetParentID(), 2u);
  EXPECT_EQ(made.GetSerialID(), 7u);
  EXPECT_EQ(made.GetLocation(), kLeft);
  EXPECT_EQ(forms[1].GetComposedPntArray().GetNextSerialID(), 8u);
}

TEST(AddedPoint, PassesItsAttributesOnButNotWhatTiesItToOthers) {
  Vorn_BuildFormArray forms =
      FormsOf({Surface(), LayerWithout2And5(), Layer(1, {Center(0), Left(1), Left(2), Left(3)})});
  VornComposedPnt& added = PointsOf(forms, 0)[2];
  added.SetX(1.5);
  added.ElmType(ElementType::Pavement);
  added.SetDekiPairID(8);
  added.SetOrgID(33);
  added.SetPointType(VornComposedPnt::kKePoint);
  added.SetParentID(44);
  forms.AddedComposedPnt(0, 2);
  for (const int level : {1, 2}) {
    const int index = NewPointIn(forms, level);
    ASSERT_GE(index, 0);
    const VornComposedPnt& made = forms[level].GetComposedPntArray()[index];
    EXPECT_EQ(made.GetX(), 1.5);
    EXPECT_EQ(made.ElmType(), ElementType::Pavement);
    EXPECT_EQ(made.GetDekiPairID(), kNone);
    EXPECT_EQ(made.GetOrgID(), 33u);
    EXPECT_EQ(made.GetPointType(), VornComposedPnt::kKePoint);
    EXPECT_FALSE(made.GetCLDist().IsSet());
  }
}

TEST(AddedPoint, LeavesTheSurfaceAsItIs) {
  Vorn_BuildFormArray forms = FormsOf({Surface(), LayerWithout2And5()});
  forms.AddedComposedPnt(0, 2);
  EXPECT_EQ(forms[0].GetComposedPntArray().GetSize(), 7);
}

TEST(AddedPoint, GetsNoPointBehindTheOutermost) {
  for (const std::uint32_t outermost : {3u, 6u}) {
    Vorn_BuildFormArray forms = FormsOf({Surface(), LayerWithout2And5()});
    forms.AddedComposedPnt(0, outermost);
    EXPECT_EQ(NewPointIn(forms, 1), -1);
  }
}

TEST(AddedPoint, HasTheStartPointForItsInnerNeighbourWhenItIsTheFirstOfItsSide) {
  Vorn_BuildFormArray left = FormsOf({Surface(), Layer(0, {Center(0), Left(2), Left(3), Left(), Right()})});
  left.AddedComposedPnt(0, 1);
  EXPECT_THAT(CodesOf(left[1]), ElementsAre("C0", "", "L2", "L3", "L", "R"));
  Vorn_BuildFormArray right = FormsOf({Surface(), Layer(0, {Center(0), Left(), Right(5), Right(6), Right()})});
  right.AddedComposedPnt(0, 4);
  EXPECT_THAT(CodesOf(right[1]), ElementsAre("C0", "L", "", "R5", "R6", "R"));
  // A layer that ends at the start point does not reach across.
  Vorn_BuildFormArray ending = FormsOf({Surface(), Layer(0, {Left(), Left(0), Left(2)})});
  ending.AddedComposedPnt(0, 1);
  EXPECT_EQ(NewPointIn(ending, 1), -1);
}

TEST(AddedPoint, GetsNoPointWhenItIsTheStartPoint) {
  for (const VornLocation side : {kCenter, kLeft, kRight}) {
    VornBuildForm surface = Surface();
    surface.GetComposedPntArray()[0].SetLocation(side);
    Vorn_BuildFormArray forms = FormsOf({surface, LayerWithout2And5()});
    forms.AddedComposedPnt(0, 0);
    EXPECT_EQ(NewPointIn(forms, 1), -1);
  }
}

TEST(AddedPoint, GetsNoPointOffBothSides) {
  for (const VornLocation side : {kCenter, VornLocation::Unset}) {
    Vorn_BuildFormArray forms = FormsOf({Surface(), LayerWithout2And5()});
    PointsOf(forms, 0)[2].SetLocation(side);
    forms.AddedComposedPnt(0, 2);
    EXPECT_EQ(NewPointIn(forms, 1), -1);
  }
}

TEST(AddedPoint, GetsNoPointInALayerThatEndsAtItsInnerNeighbour) {
  Vorn_BuildFormArray left = FormsOf({Surface(), Layer(0, {Center(0), Left(1), Left(3)})});
  left.AddedComposedPnt(0, 2);
  EXPECT_THAT(CodesOf(left[1]), ElementsAre("C0", "L1", "L3"));
  Vorn_BuildFormArray right = FormsOf({Surface(), Layer(0, {Center(0), Right(4), Right(6)})});
  right.AddedComposedPnt(0, 5);
  EXPECT_THAT(CodesOf(right[1]), ElementsAre("C0", "R4", "R6"));
}

TEST(AddedPoint, GetsNoPointInALayerThatBeginsAtItsOuterNeighbour) {
  Vorn_BuildFormArray left = FormsOf({Surface(), Layer(0, {Left(), Left(3), Left(9), Left()})});
  left.AddedComposedPnt(0, 2);
  EXPECT_THAT(CodesOf(left[1]), ElementsAre("L", "L3", "L9", "L"));
  Vorn_BuildFormArray right = FormsOf({Surface(), Layer(0, {Right(), Right(6), Right(9), Right()})});
  right.AddedComposedPnt(0, 5);
  EXPECT_THAT(CodesOf(right[1]), ElementsAre("R", "R6", "R9", "R"));
}

TEST(AddedPoint, TellsTheEndsOfALayerFromTheOtherSide) {
  // The same neighbours at the opposite ends do not matter.
  Vorn_BuildFormArray left = FormsOf({Surface(), Layer(0, {Center(0), Left(3), Left(), Right(1), Right()})});
  left.AddedComposedPnt(0, 2);
  EXPECT_THAT(CodesOf(left[1]), ElementsAre("C0", "", "L3", "L", "R1", "R"));
  Vorn_BuildFormArray right = FormsOf({Surface(), Layer(0, {Center(0), Left(4), Left(), Right(6), Right()})});
  right.AddedComposedPnt(0, 5);
  EXPECT_THAT(CodesOf(right[1]), ElementsAre("C0", "L4", "L", "", "R6", "R"));
}

TEST(AddedPoint, GetsAPointInALayerOfTwoPoints) {
  Vorn_BuildFormArray forms = FormsOf({Surface(), Layer(0, {Left(3), Left()}), Layer(0, {Right(6), Right()})});
  forms.AddedComposedPnt(0, 2);
  EXPECT_THAT(CodesOf(forms[1]), ElementsAre("", "L3", "L"));
  forms.AddedComposedPnt(0, 5);
  EXPECT_THAT(CodesOf(forms[2]), ElementsAre("", "R6", "R"));
}

TEST(AddedPoint, LooksAtBothPointsOfALayerOfTwo) {
  Vorn_BuildFormArray forms = FormsOf({Surface(), Layer(0, {Left(1), Left(3)}), Layer(0, {Left(), Left(3)})});
  forms.AddedComposedPnt(0, 2);
  EXPECT_EQ(NewPointIn(forms, 1), -1);
  EXPECT_EQ(NewPointIn(forms, 2), -1);
}

TEST(AddedPoint, SkipsLayersOfFewerThanTwoPointsAndGoesOn) {
  Vorn_BuildFormArray forms = FormsOf({Surface(), Layer(0, {}), Layer(0, {Left(3)}), LayerWithout2And5()});
  forms.AddedComposedPnt(0, 2);
  EXPECT_TRUE(forms[1].GetComposedPntArray().IsEmpty());
  EXPECT_THAT(CodesOf(forms[2]), ElementsAre("L3"));
  EXPECT_EQ(NewPointIn(forms, 3), 2);
}

TEST(AddedPoint, GetsAPointInEveryDerivedLayer) {
  Vorn_BuildFormArray forms =
      FormsOf({Surface(), LayerWithout2And5(), Layer(0, {Center(0), Left(1), Left(3)}), FormOf("other", {Left(3)}),
               Layer(0, {Center(0), Left(1), Left()}), LayerWithout2And5()});
  forms.AddedComposedPnt(0, 2);
  EXPECT_EQ(NewPointIn(forms, 1), 2);
  EXPECT_EQ(NewPointIn(forms, 2), -1);  // ends at the inner neighbour
  EXPECT_EQ(NewPointIn(forms, 3), -1);  // is not derived
  EXPECT_EQ(NewPointIn(forms, 4), -1);  // has nothing that hangs on the outer neighbour
  EXPECT_EQ(NewPointIn(forms, 5), 2);
}

TEST(AddedPoint, GetsAPointBeforeTheFirstOfSeveralThatHangOnItsOuterNeighbour) {
  Vorn_BuildFormArray forms = FormsOf({Surface(), Layer(0, {Center(0), Left(1), Left(3), Left(3), Left()})});
  forms.AddedComposedPnt(0, 2);
  EXPECT_THAT(CodesOf(forms[1]), ElementsAre("C0", "L1", "", "L3", "L3", "L"));
}

TEST(AddedPoint, GoesDownAChainOfThreeLayers) {
  // The serial of the outer neighbour is another one on each level: 3, 2, 1.
  Vorn_BuildFormArray forms = FormsOf(
      {Surface(), LayerWithout2And5(0), Layer(1, {Left(2), Left(1), Left()}), Layer(2, {Right(5), Left(1), Left(3)})});
  forms.AddedComposedPnt(0, 2);
  EXPECT_THAT(CodesOf(forms[1]), ElementsAre("C0", "L1", "", "L3", "L", "R4", "R6", "R"));
  EXPECT_THAT(CodesOf(forms[2]), ElementsAre("", "L2", "L1", "L"));
  EXPECT_THAT(CodesOf(forms[3]), ElementsAre("R5", "", "L1", "L3"));
  EXPECT_EQ(forms[1].GetComposedPntArray()[2].GetParentID(), 2u);
  EXPECT_EQ(forms[2].GetComposedPntArray()[0].GetParentID(), forms[1].GetComposedPntArray()[2].GetSerialID());
  EXPECT_EQ(forms[3].GetComposedPntArray()[1].GetParentID(), forms[2].GetComposedPntArray()[0].GetSerialID());
}

TEST(AddedPoint, LooksForTheEndsOfTheFirstLayerOfAChainOnly) {
  Vorn_BuildFormArray forms = FormsOf({Surface(), LayerWithout2And5(0), Layer(1, {Left(2)})});
  forms.AddedComposedPnt(0, 2);
  EXPECT_THAT(CodesOf(forms[2]), ElementsAre("", "L2"));
}

TEST(AddedPoint, EndsTheChainAtALayerWhereNothingHangsOnTheOuterNeighbour) {
  Vorn_BuildFormArray forms = FormsOf({Surface(), LayerWithout2And5(0), Layer(1, {Center(0), Left(1), Left()}),
                                       Layer(2, {Center(0), Left(2), Left(3)})});
  forms.AddedComposedPnt(0, 2);
  EXPECT_EQ(NewPointIn(forms, 1), 2);
  EXPECT_EQ(NewPointIn(forms, 2), -1);
  EXPECT_EQ(NewPointIn(forms, 3), -1);
}

TEST(AddedPoint, FollowsFirstChildrenOnly) {
  Vorn_BuildFormArray forms = FormsOf({Surface(), LayerWithout2And5(0), Layer(1, {Left(2)}), Layer(1, {Left(2)})});
  forms.AddedComposedPnt(0, 2);
  EXPECT_EQ(NewPointIn(forms, 2), 0);
  EXPECT_EQ(NewPointIn(forms, 3), -1);
}

TEST(AddedPoint, FollowsChildrenBehindTheirParentOnly) {
  Vorn_BuildFormArray forms = FormsOf({Surface(), WithSerial(5, Layer(7, {Left(2)})),
                                       WithSerial(7, LayerWithout2And5(0)), WithSerial(8, Layer(7, {Left(2)}))});
  forms.AddedComposedPnt(0, 2);
  EXPECT_EQ(NewPointIn(forms, 1), -1);
  EXPECT_EQ(NewPointIn(forms, 2), 2);
  EXPECT_EQ(NewPointIn(forms, 3), 0);
}

TEST(AddedPoint, IsPassedOnToLayersBeforeTheSurfaceToo) {
  Vorn_BuildFormArray forms =
      FormsOf({Surface(), WithSerial(7, LayerWithout2And5(0)), WithSerial(8, Layer(7, {Left(2)})), Surface()});
  forms[0].SetSerialID(9);
  forms[3].SetSerialID(0);
  forms.AddedComposedPnt(3, 2);
  EXPECT_EQ(NewPointIn(forms, 1), 2);
  EXPECT_EQ(NewPointIn(forms, 2), 0);
}

TEST(AddedPoint, IsPassedOnByTheDesignSurfaceOnly) {
  Vorn_BuildFormArray forms = FormsOf({Surface(), Surface(), LayerWithout2And5(0), LayerWithout2And5(1)});
  forms[1].SetParentID(0);
  forms.AddedComposedPnt(1, 2);
  forms.AddedComposedPnt(1, 99);  // not even looked for
  for (const int layer : {2, 3}) EXPECT_EQ(NewPointIn(forms, layer), -1);
}

TEST(AddedPoint, MustExist) {
  Vorn_BuildFormArray forms = FormsOf({Surface(), LayerWithout2And5()});
  EXPECT_THROW(forms.AddedComposedPnt(-1, 2), CInvalidArgException);
  EXPECT_THROW(forms.AddedComposedPnt(2, 2), CInvalidArgException);
  EXPECT_THROW(forms.AddedComposedPnt(0, 99), CInvalidArgException);
  EXPECT_THROW(Vorn_BuildFormArray().AddedComposedPnt(0, 0), CInvalidArgException);
  EXPECT_EQ(NewPointIn(forms, 1), -1);
}

// --- a new point that has been placed ------------------------------------------------------------------------------

/// A design surface with points every two metres: 3, 2, 1 on the left, 0 in the centre, 4, 5, 6 on the right; and the
/// new point, 7.
VornBuildForm SurfaceWithNewPoint(VornLocation side, double dist) {
  VornBuildForm surface =
      FormOf("surface", {PointAt(kCenter, 100.0, 0.0), PointAt(kLeft, 100.0, -2.0), PointAt(kLeft, 100.0, -4.0),
                         PointAt(kLeft, 100.0, -6.0), PointAt(kRight, 100.0, 2.0), PointAt(kRight, 100.0, 4.0),
                         PointAt(kRight, 100.0, 6.0), PointAt(kLeft, 100.0, dist)});
  surface.GetComposedPntArray()[7].SetLocation(side);
  return surface;
}

VornBuildForm FullLayer(std::uint32_t parentForm = 0) {
  return Layer(parentForm, {Center(0), Left(1), Left(2), Left(3), Right(4), Right(5), Right(6)});
}

/// Where a point goes into a full layer.
struct Place {
  const char* behaviour;
  VornLocation side;
  double dist;
  int index;  ///< -1: nowhere
};

void PrintTo(const Place& place, std::ostream* out) { *out << place.behaviour; }

class AddedPlacedPoint : public testing::TestWithParam<Place> {};

TEST_P(AddedPlacedPoint, GoesWhereItLies) {
  const Place& place = GetParam();
  Vorn_BuildFormArray forms = FormsOf({SurfaceWithNewPoint(place.side, place.dist), FullLayer()});
  forms.AddedComposedPnt(0, 7);
  EXPECT_EQ(NewPointIn(forms, 1), place.index);
  EXPECT_EQ(forms[1].GetComposedPntArray().GetSize(), place.index < 0 ? 7 : 8);
}

INSTANTIATE_TEST_SUITE_P(
    , AddedPlacedPoint,
    testing::Values(
        Place{"LeftAtTheIndexOfALeftPoint", kLeft, -3.0, 2},
        Place{"LeftAtTheIndexOfTheInnermostLeftPoint", kLeft, -1.0, 1},
        Place{"LeftBeforeTheIndexOfTheCurrentOneAtACenterPoint", kLeft, 1.0, 3},
        Place{"LeftNowhereAtARightPoint", kLeft, 3.0, -1}, Place{"RightBehindTheIndexOfARightPoint", kRight, 3.0, 5},
        Place{"RightAtOneAtACenterPoint", kRight, 1.0, 1}, Place{"RightNowhereAtALeftPoint", kRight, -1.0, -1},
        Place{"RightNowhereFarOnTheLeft", kRight, -3.0, -1}, Place{"CenterNowhereAtALeftPoint", kCenter, -1.0, -1},
        Place{"CenterNowhereAtACenterPoint", kCenter, 1.0, -1}, Place{"CenterNowhereAtARightPoint", kCenter, 3.0, -1},
        Place{"WithoutASideNowhereAtALeftPoint", VornLocation::Unset, -1.0, -1},
        Place{"WithoutASideNowhereAtACenterPoint", VornLocation::Unset, 1.0, -1},
        Place{"WithoutASideNowhereAtARightPoint", VornLocation::Unset, 3.0, -1},
        Place{"LeftNotBeforeTheLeftmostPoint", kLeft, -5.0, -1},
        Place{"RightNotBeforeTheRightmostPoint", kRight, 5.0, -1}, Place{"LeftNotBeyondTheLayer", kLeft, -9.0, -1},
        Place{"RightNotBeyondTheLayer", kRight, 9.0, -1}, Place{"LeftNotOnAnotherPoint", kLeft, -2.0, -1},
        Place{"RightNotOnAnotherPoint", kRight, 2.0, -1},
        Place{"RightAMicrometreBehindThePreviousOne", kRight, 1e-6, 1},
        Place{"RightNotLessThanAMicrometreBehindThePreviousOne", kRight, 0.999e-6, -1},
        Place{"LeftAMicrometreBeforeTheCurrentOne", kLeft, -1e-6, 1},
        Place{"LeftNotLessThanAMicrometreBeforeTheCurrentOne", kLeft, -0.999e-6, -1}),
    [](const testing::TestParamInfo<Place>& info) { return std::string(info.param.behaviour); });

TEST(AddedPlacedPointIndex, CountsFromTheCurrentOneForALeftPointAtACenterPoint) {
  Vorn_BuildFormArray forms =
      FormsOf({SurfaceWithNewPoint(kLeft, 1.0), Layer(0, {Center(0), Left(1), Right(4), Left(2), Right(5), Right(6)})});
  forms.AddedComposedPnt(0, 7);
  EXPECT_THAT(CodesOf(forms[1]), ElementsAre("C0", "", "L1", "R4", "L2", "R5", "R6"));
}

TEST(AddedPlacedPointIndex, CountsFromThePreviousOneInInterleavedSides) {
  const VornBuildForm layer = Layer(0, {Center(0), Right(4), Left(1), Right(5), Left(2), Right(6), Left(3)});
  Vorn_BuildFormArray left = FormsOf({SurfaceWithNewPoint(kLeft, -3.0), layer});
  left.AddedComposedPnt(0, 7);
  EXPECT_THAT(CodesOf(left[1]), ElementsAre("C0", "R4", "L1", "R5", "", "L2", "R6", "L3"));
  Vorn_BuildFormArray right = FormsOf({SurfaceWithNewPoint(kRight, 3.0), layer});
  right.AddedComposedPnt(0, 7);
  EXPECT_THAT(CodesOf(right[1]), ElementsAre("C0", "R4", "", "L1", "R5", "L2", "R6", "L3"));
}

TEST(AddedPlacedPointIndex, IsNoneBehindAPointWithoutASide) {
  VornComposedPnt start = Left(1);
  start.SetLocation(VornLocation::Unset);
  for (const VornLocation side : {kLeft, kRight}) {
    Vorn_BuildFormArray forms = FormsOf({SurfaceWithNewPoint(side, 1.0), Layer(0, {start, Left(), Right(4), Right()})});
    forms.AddedComposedPnt(0, 7);
    EXPECT_EQ(NewPointIn(forms, 1), -1);
  }
}

TEST(AddedPlacedPointIndex, MustLieInTheArray) {
  // From left to right: the centre point, and then a left point that stands before it in the array.
  VornBuildForm surface = SurfaceWithNewPoint(kLeft, 1.0);
  Vorn_BuildFormArray forms = FormsOf({surface, Layer(0, {Left(4), Center(0), Left(), Right()})});
  EXPECT_THROW(forms.AddedComposedPnt(0, 7), CInvalidArgException);
  EXPECT_EQ(forms[1].GetComposedPntArray().GetSize(), 4);
}

TEST(AddedPlacedPointIndex, TakesTheFirstPairThatThePointLiesIn) {
  // The layer runs back and forth: from the left, its points hang at -4, 2, -2 and 4.
  Vorn_BuildFormArray forms =
      FormsOf({SurfaceWithNewPoint(kLeft, 1.0), Layer(0, {Center(5), Left(1), Left(4), Left(2), Left(), Right()})});
  forms.AddedComposedPnt(0, 7);
  EXPECT_THAT(CodesOf(forms[1]), ElementsAre("C5", "L1", "L4", "", "L2", "L", "R"));
}

TEST(AddedPlacedPointNeighbours, LieWhereThePointsThatTheyHangOnLie) {
  VornBuildForm layer = FullLayer();
  for (VornComposedPnt& point : layer.GetComposedPntArray()) point.SetCLDist(50.0);
  Vorn_BuildFormArray forms = FormsOf({SurfaceWithNewPoint(kRight, 3.0), layer});
  forms.AddedComposedPnt(0, 7);
  EXPECT_EQ(NewPointIn(forms, 1), 5);
}

TEST(AddedPlacedPointNeighbours, LieAtTheirOwnDistanceWhenTheyHangOnNothing) {
  VornBuildForm layer = Layer(0, {Center(0), Left(99), Left(), Right(), Right(99), Right()});
  layer.GetComposedPntArray()[1].SetCLDist(-1.0);
  layer.GetComposedPntArray()[3].SetCLDist(1.0);
  layer.GetComposedPntArray()[4].SetCLDist(5.0);
  Vorn_BuildFormArray forms = FormsOf({SurfaceWithNewPoint(kRight, 3.0), layer});
  forms.AddedComposedPnt(0, 7);
  EXPECT_EQ(NewPointIn(forms, 1), 4);
}

TEST(AddedPlacedPointNeighbours, AreSkippedWithoutADistance) {
  for (const int unplaced : {4, 1, 2}) {
    VornBuildForm surface = SurfaceWithNewPoint(kRight, 3.0);
    surface.GetComposedPntArray()[unplaced].GetCLDist().Unset();
    VornBuildForm layer = FullLayer();
    layer.GetComposedPntArray()[unplaced].SetCLDist(2.5);  // its own distance does not count
    Vorn_BuildFormArray forms = FormsOf({surface, layer});
    forms.AddedComposedPnt(0, 7);
    EXPECT_EQ(NewPointIn(forms, 1), unplaced == 4 ? 1 : 5) << unplaced;
  }
}

TEST(AddedPlacedPointNeighbours, AreTwo) {
  for (const VornBuildForm& layer :
       {Layer(0, {}), Layer(0, {Right(4)}), Layer(0, {Right(4), Right(5)}), Layer(0, {Right(), Right(4), Right()}),
        Layer(0, {Right(4), Right(5), Right()}), Layer(0, {Right(), Right(4), Right(5)})}) {
    Vorn_BuildFormArray forms = FormsOf({SurfaceWithNewPoint(kRight, 3.0), layer});
    forms.AddedComposedPnt(0, 7);
    EXPECT_EQ(NewPointIn(forms, 1), -1) << layer.GetComposedPntArray().GetSize();
  }
  Vorn_BuildFormArray forms =
      FormsOf({SurfaceWithNewPoint(kRight, 3.0), Layer(0, {Right(), Right(4), Right(5), Right()})});
  forms.AddedComposedPnt(0, 7);
  EXPECT_EQ(NewPointIn(forms, 1), 2);
}

TEST(AddedPlacedPointNeighbours, StayAsTheyWere) {
  VornBuildForm layer = FullLayer();
  for (VornComposedPnt& point : layer.GetComposedPntArray()) {
    point.SetCLDist(50.0);
    point.SetGh(0.25);
    point.SetX(9.0);
    point.SetDataType(DataType::Rate);
  }
  VornBuildForm surface = SurfaceWithNewPoint(kRight, 3.0);
  surface.GetComposedPntArray()[7].SetDataType(DataType::Percent);
  Vorn_BuildFormArray forms = FormsOf({surface, layer});
  forms.AddedComposedPnt(0, 7);
  ASSERT_EQ(NewPointIn(forms, 1), 5);
  for (const int index : {0, 1, 2, 3, 4, 6, 7}) {
    const VornComposedPnt& point = forms[1].GetComposedPntArray()[index];
    EXPECT_EQ(point.GetCLDist(), 50.0);
    EXPECT_EQ(point.GetGh(), 0.25);
    EXPECT_EQ(point.GetX(), 9.0);
    EXPECT_EQ(point.GetDataType(), DataType::Rate);
  }
  EXPECT_EQ(forms[1].GetComposedPntArray()[5].GetDataType(), DataType::Percent);
}

TEST(AddedPlacedPointCopy, HangsOnItWithAFreshSerialAndItsAttributes) {
  VornBuildForm surface = SurfaceWithNewPoint(kRight, 3.0);
  VornComposedPnt& added = surface.GetComposedPntArray()[7];
  added.SetOrgID(33);
  added.SetPointType(VornComposedPnt::kCrossPoint);
  added.ElmType(ElementType::Pavement);
  added.SetDekiPairID(8);
  added.SetParentID(44);
  Vorn_BuildFormArray forms = FormsOf({surface, FullLayer()});
  forms.AddedComposedPnt(0, 7);
  const VornComposedPnt& made = forms[1].GetComposedPntArray()[5];
  EXPECT_EQ(made.GetCode(), "");
  EXPECT_EQ(made.GetParentID(), 7u);
  EXPECT_EQ(made.GetSerialID(), 7u);  // the layer had six on its sides
  EXPECT_EQ(made.GetOrgID(), 33u);
  EXPECT_EQ(made.GetPointType(), VornComposedPnt::kCrossPoint);
  EXPECT_EQ(made.ElmType(), ElementType::Pavement);
  EXPECT_EQ(made.GetDekiPairID(), kNone);
  EXPECT_EQ(made.GetCLDist(), 3.0);
}

/// A layer between the same points of a layer above it; its points lie at their own distances.
VornBuildForm DeeperLayer(std::uint32_t parentForm, double inner = 2.0, double outer = 4.0) {
  VornBuildForm layer = Layer(parentForm, {Right(), Right(2), Right(3), Right()});
  layer.GetComposedPntArray()[1].SetCLDist(inner);
  layer.GetComposedPntArray()[2].SetCLDist(outer);
  return layer;
}

VornBuildForm FirstLayer(double inner = 2.0, double outer = 4.0) {
  VornBuildForm layer = DeeperLayer(0, inner, outer);
  layer.GetComposedPntArray()[1].SetParentID(4);
  layer.GetComposedPntArray()[2].SetParentID(5);
  return layer;
}

TEST(AddedPlacedPointChain, GoesDownThreeLayers) {
  Vorn_BuildFormArray forms = FormsOf({SurfaceWithNewPoint(kRight, 3.0), FirstLayer(), DeeperLayer(1), DeeperLayer(2)});
  PointsOf(forms, 0)[7].SetOrgID(33);
  PointsOf(forms, 0)[7].SetPointType(VornComposedPnt::kKePoint);
  PointsOf(forms, 2).Add(Right());  // so that the serials differ
  forms.AddedComposedPnt(0, 7);
  std::uint32_t above = 7;
  for (const int level : {1, 2, 3}) {
    ASSERT_EQ(NewPointIn(forms, level), 2) << level;
    const VornComposedPnt& made = forms[level].GetComposedPntArray()[2];
    EXPECT_EQ(made.GetParentID(), above) << level;
    EXPECT_EQ(made.GetOrgID(), 33u);
    EXPECT_EQ(made.GetPointType(), VornComposedPnt::kKePoint);
    above = made.GetSerialID();
  }
}

TEST(AddedPlacedPointChain, LooksAtThePlacesThatTheLayerAboveReallyHas) {
  // By the surface the point lies between the two, and goes into the first layer; by that layer's own distances it
  // lies before both of them.
  Vorn_BuildFormArray forms =
      FormsOf({SurfaceWithNewPoint(kRight, 3.0), FirstLayer(12.0, 14.0), DeeperLayer(1), DeeperLayer(2)});
  forms.AddedComposedPnt(0, 7);
  EXPECT_EQ(NewPointIn(forms, 1), 2);
  EXPECT_EQ(NewPointIn(forms, 2), -1);
  EXPECT_EQ(NewPointIn(forms, 3), -1);  // the chain has ended
}

TEST(AddedPlacedPointChain, DoesNotBeginBelowALayerWhereThePointHasNoPlace) {
  Vorn_BuildFormArray forms =
      FormsOf({SurfaceWithNewPoint(kRight, 3.0), Layer(0, {Center(0), Left(1), Right()}), DeeperLayer(1)});
  forms.AddedComposedPnt(0, 7);
  EXPECT_EQ(NewPointIn(forms, 1), -1);
  EXPECT_EQ(NewPointIn(forms, 2), -1);
}

TEST(AddedPlacedPointChain, BeginsInEveryDerivedLayer) {
  Vorn_BuildFormArray forms = FormsOf({SurfaceWithNewPoint(kRight, 3.0), FirstLayer(), Layer(0, {Center(0)}),
                                       DeeperLayer(kNone), FirstLayer(), DeeperLayer(4)});
  forms.AddedComposedPnt(0, 7);
  for (const int reached : {1, 4, 5}) EXPECT_EQ(NewPointIn(forms, reached), 2) << reached;
  for (const int skipped : {2, 3}) EXPECT_EQ(NewPointIn(forms, skipped), -1) << skipped;
}

TEST(AddedPlacedPointChain, FollowsFirstChildrenBehindTheirParentOnly) {
  Vorn_BuildFormArray forms =
      FormsOf({SurfaceWithNewPoint(kRight, 3.0), WithSerial(5, DeeperLayer(7)), WithSerial(7, FirstLayer()),
               WithSerial(8, DeeperLayer(7)), WithSerial(9, DeeperLayer(7))});
  forms.AddedComposedPnt(0, 7);
  for (const int reached : {2, 3}) EXPECT_EQ(NewPointIn(forms, reached), 2) << reached;
  for (const int skipped : {1, 4}) EXPECT_EQ(NewPointIn(forms, skipped), -1) << skipped;
}

TEST(AddedPlacedPointChain, BeginsAtTheDesignSurfaceOnly) {
  Vorn_BuildFormArray forms =
      FormsOf({SurfaceWithNewPoint(kRight, 3.0), SurfaceWithNewPoint(kRight, 3.0), FirstLayer(), FirstLayer()});
  forms[3].SetParentID(1);
  forms.AddedComposedPnt(1, 7);
  for (const int layer : {2, 3}) EXPECT_EQ(NewPointIn(forms, layer), -1) << layer;
}

TEST(AddedPlacedPointChain, TakesADistanceOfZeroForAPlace) {
  Vorn_BuildFormArray forms =
      FormsOf({SurfaceWithNewPoint(kRight, 0.0), Layer(0, {Right(), Right(1), Right(4), Right()})});
  forms.AddedComposedPnt(0, 7);
  EXPECT_EQ(NewPointIn(forms, 1), 2);
}

// --- a removed point -----------------------------------------------------------------------------------------------

TEST(RemovedPoint, TakesAlongWhatHungOnItInTheLayerAndItsFirstChild) {
  Vorn_BuildFormArray forms = FormsOf({Surface(), Layer(0, {Center(0), Left(1), Left(2), Left(3)}),
                                       Layer(1, {Center(0), Left(1), Left(2)}), Layer(1, {Left(1), Left(2)})});
  forms.RemovedComposedPnt(0, 2);
  EXPECT_THAT(CodesOf(forms[1]), ElementsAre("C0", "L1", "L3"));
  EXPECT_THAT(CodesOf(forms[2]), ElementsAre("C0", "L1"));
  EXPECT_THAT(CodesOf(forms[3]), ElementsAre("L1", "L2"));  // a second child
}

TEST(RemovedPoint, TakesAlongDownAChainOfThreeLayersByTheSerialsOfEach) {
  Vorn_BuildFormArray forms = FormsOf({Surface(), Layer(0, {Left(2), Left(9)}), Layer(1, {Left(2), Left(1), Left(3)}),
                                       Layer(2, {Left(1), Left(3), Left(2)})});
  forms.RemovedComposedPnt(0, 9);
  EXPECT_THAT(CodesOf(forms[1]), ElementsAre("L2"));
  EXPECT_THAT(CodesOf(forms[2]), ElementsAre("L1", "L3"));
  EXPECT_THAT(CodesOf(forms[3]), ElementsAre("L3", "L2"));
}

TEST(RemovedPoint, EndsTheChainAtALayerWhereNothingHungOnIt) {
  Vorn_BuildFormArray forms = FormsOf({Surface(), Layer(0, {Left(2)}), Layer(1, {Left(8)}), Layer(2, {Left(1)})});
  forms.RemovedComposedPnt(0, 2);
  EXPECT_THAT(CodesOf(forms[1]), ElementsAre());
  EXPECT_THAT(CodesOf(forms[2]), ElementsAre("L8"));
  EXPECT_THAT(CodesOf(forms[3]), ElementsAre("L1"));
}

TEST(RemovedPoint, TakesAlongFromEveryDerivedForm) {
  Vorn_BuildFormArray forms = FormsOf({Surface(), Layer(0, {Left(2), Left(3)}), Layer(0, {Left(3)}),
                                       FormOf("other", {Left(2)}), Layer(0, {Left(3), Left(2)}), Layer(4, {Left(2)})});
  forms.RemovedComposedPnt(0, 2);
  EXPECT_THAT(CodesOf(forms[1]), ElementsAre("L3"));
  EXPECT_THAT(CodesOf(forms[2]), ElementsAre("L3"));
  EXPECT_THAT(CodesOf(forms[3]), ElementsAre("L2"));
  EXPECT_THAT(CodesOf(forms[4]), ElementsAre("L3"));
  EXPECT_THAT(CodesOf(forms[5]), ElementsAre());
}

TEST(RemovedPoint, TakesAlongOnlyTheFirstThatHungOnIt) {
  VornComposedPnt second = Left(2);
  second.SetCode("second");
  Vorn_BuildFormArray forms = FormsOf({Surface(), Layer(0, {Left(1), Left(2), second})});
  forms.RemovedComposedPnt(0, 2);
  EXPECT_THAT(CodesOf(forms[1]), ElementsAre("L1", "second"));
}

TEST(RemovedPoint, RenumbersNothing) {
  Vorn_BuildFormArray forms = FormsOf({Surface(), Layer(0, {Left(1), Left(2), Left(3)})});
  forms.RemovedComposedPnt(0, 2);
  EXPECT_THAT(Each(forms[1].GetComposedPntArray(), &VornComposedPnt::GetSerialID), ElementsAre(1u, 3u));
  EXPECT_EQ(forms[1].GetComposedPntArray().GetNextSerialID(), 4u);
  EXPECT_EQ(forms[0].GetComposedPntArray().GetSize(), 7);
}

TEST(RemovedPoint, IsPassedOnByADerivedForm) {
  Vorn_BuildFormArray forms =
      FormsOf({Surface(), Layer(0, {Left(1)}), Layer(1, {Left(2)}), Layer(2, {Left(1)}), Layer(1, {Left(2)})});
  forms.RemovedComposedPnt(1, 2);
  EXPECT_THAT(CodesOf(forms[1]), ElementsAre("L1"));
  EXPECT_THAT(CodesOf(forms[2]), ElementsAre());
  EXPECT_THAT(CodesOf(forms[3]), ElementsAre());
  EXPECT_THAT(CodesOf(forms[4]), ElementsAre());  // a derived form of its own, not a second child of a chain
}

TEST(RemovedPoint, IsPassedOnToDerivedFormsBeforeTheirParentButInChainsBehindItOnly) {
  Vorn_BuildFormArray forms =
      FormsOf({Surface(), WithSerial(5, Layer(7, {Left(1)})), WithSerial(7, Layer(9, {Left(2)})), Surface()});
  forms[0].SetSerialID(20);
  forms[3] = WithSerial(9, Layer(20, {Left(6)}));
  forms.RemovedComposedPnt(3, 2);
  EXPECT_THAT(CodesOf(forms[2]), ElementsAre());
  EXPECT_THAT(CodesOf(forms[1]), ElementsAre("L1"));
}

TEST(RemovedPoint, IsNotPassedOnByAnyOtherForm) {
  Vorn_BuildFormArray forms = FormsOf({Surface(), Surface(), Layer(1, {Left(2)})});
  forms.RemovedComposedPnt(1, 2);
  EXPECT_THAT(CodesOf(forms[2]), ElementsAre("L2"));
}

TEST(RemovedPoint, ChangesNothingOutsideTheArray) {
  Vorn_BuildFormArray forms = FormsOf({Surface(), Layer(0, {Left(2)})});
  for (const int outside : {-1, 2}) forms.RemovedComposedPnt(outside, 2);
  EXPECT_THAT(CodesOf(forms[1]), ElementsAre("L2"));
  Vorn_BuildFormArray().RemovedComposedPnt(0, 2);
}

TEST(RemovedPoint, TakesNothingAlongWhereNothingHungOnIt) {
  Vorn_BuildFormArray forms = FormsOf({Surface(), Layer(0, {Left(1), Left()})});
  forms.RemovedComposedPnt(0, 2);
  EXPECT_THAT(CodesOf(forms[1]), ElementsAre("L1", "L"));
}

// --- forms that hang on their parent no longer ---------------------------------------------------------------------

VornBuildForm LinkedLayer(std::string_view name, std::uint32_t parentForm) {
  return Named(name, Layer(parentForm, {Left(1), Left(), Left(0)}));
}

VornBuildForm LooseLayer(std::string_view name, std::uint32_t parentForm) {
  return Named(name, Layer(parentForm, {Left(), Left(1), Left()}));
}

TEST(NormalizedForms, KeepDerivedFormsWithTwoLinkedPoints) {
  Vorn_BuildFormArray forms = FormsOf({Surface(), LinkedLayer("two", 0), LooseLayer("one", 0),
                                       Named("none", Layer(0, {Left(), Left(), Left()})), Named("empty", Layer(0, {})),
                                       LinkedLayer("last", 0)});
  forms.NormalizePaveBuildForm();
  EXPECT_THAT(NamesOf(forms), ElementsAre("surface", "two", "last"));
  EXPECT_THAT(Each(forms, &VornBuildForm::GetSerialID), ElementsAre(0u, 1u, 5u));
}

TEST(NormalizedForms, KeepFormsThatAreNotDerivedWhateverTheirPoints) {
  Vorn_BuildFormArray forms = FormsOf({FormOf("empty", {}), FormOf("other", {Left()}), LooseLayer("kept", kNone)});
  forms.NormalizePaveBuildForm();
  EXPECT_THAT(NamesOf(forms), ElementsAre("empty", "other", "kept"));
}

TEST(NormalizedForms, LoseTheChainOfALooseFormWithIt) {
  Vorn_BuildFormArray forms =
      FormsOf({Surface(), LooseLayer("loose", 0), LinkedLayer("child", 1), Surface(), LinkedLayer("grandchild", 2),
               LinkedLayer("second child", 1), LinkedLayer("second grandchild", 2)});
  forms.NormalizePaveBuildForm();
  EXPECT_THAT(NamesOf(forms), ElementsAre("surface", "surface", "second child", "second grandchild"));
}

TEST(NormalizedForms, KeepTheChainOfALinkedForm) {
  Vorn_BuildFormArray forms =
      FormsOf({Surface(), LinkedLayer("linked", 0), LooseLayer("child", 1), LooseLayer("grandchild", 2),
               LooseLayer("second child", 1), LooseLayer("second grandchild", 2)});
  forms.NormalizePaveBuildForm();
  EXPECT_THAT(NamesOf(forms), ElementsAre("surface", "linked", "child", "grandchild"));
}

TEST(NormalizedForms, JudgeAChildBeforeItsParentOnItsOwn) {
  Vorn_BuildFormArray forms =
      FormsOf({Surface(), WithSerial(5, LinkedLayer("linked child", 7)), WithSerial(6, LooseLayer("loose child", 8)),
               WithSerial(7, LooseLayer("loose", 0)), WithSerial(8, LinkedLayer("linked", 0))});
  forms.NormalizePaveBuildForm();
  EXPECT_THAT(NamesOf(forms), ElementsAre("surface", "linked child", "linked"));
}

TEST(NormalizedForms, KeepALinkedFormWithoutAParent) {
  Vorn_BuildFormArray forms = FormsOf({Surface(), LinkedLayer("orphan", 50), LooseLayer("loose orphan", 50)});
  forms.NormalizePaveBuildForm();
  EXPECT_THAT(NamesOf(forms), ElementsAre("surface", "orphan"));
}

TEST(NormalizedForms, FollowTheLastOfTwoParentsWithOneSerial) {
  Vorn_BuildFormArray forms = FormsOf({Surface(), WithSerial(7, LinkedLayer("first", 0)),
                                       WithSerial(7, LooseLayer("second", 0)), WithSerial(8, LinkedLayer("child", 7))});
  forms.NormalizePaveBuildForm();
  EXPECT_THAT(NamesOf(forms), ElementsAre("surface", "first"));
}

TEST(NormalizedForms, KeepTheNextSerial) {
  Vorn_BuildFormArray forms = FormsOf({Surface(), LooseLayer("loose", 0)});
  forms.NormalizePaveBuildForm();
  EXPECT_EQ(forms.GetNextSerialID(), 2u);
  Vorn_BuildFormArray empty;
  empty.NormalizePaveBuildForm();
  EXPECT_TRUE(empty.IsEmpty());
}

// --- where the points of a layer lie -------------------------------------------------------------------------------

/// A surface with points 3, 2, 1, 0, 4, 5, 6 from left to right, each at its own height.
VornBuildForm HillySurface() {
  return FormOf("surface", {PointAt(kCenter, 100.0, 0.0), PointAt(kLeft, 101.0, -2.0), PointAt(kLeft, 102.0, -4.0),
                            PointAt(kLeft, 103.0, -6.0), PointAt(kRight, 104.0, 2.0), PointAt(kRight, 105.0, 4.0),
                            PointAt(kRight, 106.0, 6.0)});
}

/// Puts every point of a form to a place of its own: heights from 0.5 on, distances from 1000 on.
VornBuildForm PlacedElsewhere(VornBuildForm form) {
  for (int i = 0; i < form.GetComposedPntArray().GetSize(); ++i) {
    form.GetComposedPntArray()[i].SetGh(0.5 + i);
    form.GetComposedPntArray()[i].SetCLDist(1000.0 + i);
  }
  return form;
}

std::vector<double> Distances(const VornBuildForm& form) {
  std::vector<double> distances;
  for (const VornComposedPnt& point : form.GetComposedPntArray()) distances.push_back(point.GetCLDist().Value());
  return distances;
}

std::vector<double> Heights(const VornBuildForm& form) {
  std::vector<double> heights;
  for (const VornComposedPnt& point : form.GetComposedPntArray()) heights.push_back(point.GetGh().Value());
  return heights;
}

TEST(PlacedLayer, TakesTheDistancesOfTheParentAndItsHeightsAboveTheStartPoint) {
  Vorn_BuildFormArray forms = FormsOf({HillySurface(), PlacedElsewhere(FullLayer())});
  forms.CalcPavePointGhDist(1);
  EXPECT_THAT(Distances(forms[1]), ElementsAre(0.0, -2.0, -4.0, 1003.0, 2.0, 4.0, 1006.0));
  EXPECT_THAT(Heights(forms[1]), ElementsAre(99.5, 100.5, 101.5, 3.5, 103.5, 104.5, 6.5));
}

TEST(PlacedLayer, MeasuresFromItsFirstPointEvenWhereThatIsNotTheLeftmost) {
  // The first point is an inner one, and is placed itself: its height before that counts for all of them.
  VornBuildForm layer = Layer(0, {Right(4), Left(), Left(), Right(5), Right()});
  layer.GetComposedPntArray()[0].SetGh(10.0);
  layer.GetComposedPntArray()[2].SetGh(20.0);
  Vorn_BuildFormArray forms = FormsOf({HillySurface(), layer});
  forms.CalcPavePointGhDist(1);
  EXPECT_EQ(forms[1].GetComposedPntArray()[0].GetGh(), 94.0);
  EXPECT_EQ(forms[1].GetComposedPntArray()[3].GetGh(), 95.0);
}

TEST(PlacedLayer, TakesTheHeightsAsTheyAreWhenItsFirstPointHasNone) {
  Vorn_BuildFormArray forms = FormsOf({HillySurface(), FullLayer()});
  forms.CalcPavePointGhDist(1);
  EXPECT_EQ(forms[1].GetComposedPntArray()[1].GetGh(), 101.0);
  EXPECT_EQ(forms[1].GetComposedPntArray()[5].GetGh(), 105.0);
}

TEST(PlacedLayer, HasNoHeightOverAPointWithoutOne) {
  VornBuildForm surface = HillySurface();
  surface.GetComposedPntArray()[1].GetGh().Unset();
  surface.GetComposedPntArray()[4].GetCLDist().Unset();
  Vorn_BuildFormArray forms = FormsOf({surface, PlacedElsewhere(FullLayer())});
  forms.CalcPavePointGhDist(1);
  EXPECT_FALSE(forms[1].GetComposedPntArray()[1].GetGh().IsSet());
  EXPECT_EQ(forms[1].GetComposedPntArray()[1].GetCLDist(), -2.0);
  EXPECT_EQ(forms[1].GetComposedPntArray()[4].GetGh(), 103.5);
  EXPECT_FALSE(forms[1].GetComposedPntArray()[4].GetCLDist().IsSet());
}

TEST(PlacedLayer, SubtractsHeightsWithCare) {
  VornBuildForm surface = HillySurface();
  surface.GetComposedPntArray()[1].SetGh(2.3);
  VornBuildForm layer = FullLayer();
  layer.GetComposedPntArray()[0].SetGh(0.1);
  Vorn_BuildFormArray forms = FormsOf({surface, layer});
  forms.CalcPavePointGhDist(1);
  ASSERT_NE(2.3 - 0.1, 2.2);
  EXPECT_EQ(forms[1].GetComposedPntArray()[1].GetGh(), 2.2);
}

TEST(PlacedLayer, TakesOverTheInputValues) {
  VornBuildForm surface = HillySurface();
  VornComposedPnt& above = surface.GetComposedPntArray()[4];
  above.SetX(1.0);
  above.SetY(2.0);
  above.SetRatio(3.0);
  above.SetPercent(4.0);
  above.SetDataType(DataType::Rate);
  above.SetSlopeType(SlopeType::Rate);
  above.ElmType(ElementType::Shoulder);
  above.SetOrgID(9);
  Vorn_BuildFormArray forms = FormsOf({surface, PlacedElsewhere(FullLayer())});
  forms.CalcPavePointGhDist(1);
  const VornComposedPnt& placed = forms[1].GetComposedPntArray()[4];
  EXPECT_EQ(placed.GetX(), 1.0);
  EXPECT_EQ(placed.GetY(), 2.0);
  EXPECT_EQ(placed.GetRatio(), 3.0);
  EXPECT_EQ(placed.GetPercent(), 4.0);
  EXPECT_EQ(placed.GetDataType(), DataType::Rate);
  EXPECT_EQ(placed.GetSlopeType(), SlopeType::Rate);
  EXPECT_EQ(placed.GetCode(), "R4");
  EXPECT_EQ(placed.ElmType(), ElementType::Unset);
  EXPECT_EQ(placed.GetOrgID(), kNone);
  EXPECT_EQ(placed.GetParentID(), 4u);
}

TEST(PlacedLayer, TakesOverInputValuesThatAreUnset) {
  VornBuildForm layer = PlacedElsewhere(FullLayer());
  for (VornComposedPnt& point : layer.GetComposedPntArray()) {
    point.SetX(1.0);
    point.SetY(1.0);
    point.SetRatio(1.0);
    point.SetPercent(1.0);
  }
  VornBuildForm surface = HillySurface();
  surface.GetComposedPntArray()[4].GetX().Unset();
  surface.GetComposedPntArray()[4].GetY().Unset();
  Vorn_BuildFormArray forms = FormsOf({surface, layer});
  forms.CalcPavePointGhDist(1);
  const VornComposedPnt& placed = forms[1].GetComposedPntArray()[4];
  EXPECT_FALSE(placed.GetX().IsSet());
  EXPECT_FALSE(placed.GetY().IsSet());
  EXPECT_FALSE(placed.GetRatio().IsSet());
  EXPECT_FALSE(placed.GetPercent().IsSet());
  EXPECT_EQ(forms[1].GetComposedPntArray()[6].GetX(), 1.0);  // the rightmost point stays
}

TEST(PlacedLayer, LeavesAPointAloneThatHangsOnNothing) {
  Vorn_BuildFormArray forms =
      FormsOf({HillySurface(), PlacedElsewhere(Layer(0, {Center(0), Left(), Left(2), Right(99), Right(5)}))});
  forms.CalcPavePointGhDist(1);
  EXPECT_THAT(Distances(forms[1]), ElementsAre(0.0, 1001.0, 1002.0, 1003.0, 1004.0));
}

TEST(PlacedLayer, HasInnerPointsFromThreePointsOn) {
  for (const VornBuildForm& layer : {Layer(0, {}), Layer(0, {Center(0)}), Layer(0, {Right(4), Right(5)})}) {
    Vorn_BuildFormArray forms = FormsOf({HillySurface(), PlacedElsewhere(layer)});
    forms.CalcPavePointGhDist(1);
    EXPECT_EQ(Distances(forms[1]), Distances(PlacedElsewhere(layer)));
  }
  Vorn_BuildFormArray forms = FormsOf({HillySurface(), PlacedElsewhere(Layer(0, {Center(0), Left(1), Right(4)}))});
  forms.CalcPavePointGhDist(1);
  EXPECT_THAT(Distances(forms[1]), ElementsAre(0.0, 1001.0, 1002.0));
}

TEST(PlacedLayer, HangsOnTheFirstPointOfASerialInTheFirstFormOfASerial) {
  VornBuildForm surface = HillySurface();
  surface.GetComposedPntArray()[5].SetSerialID(4);
  VornBuildForm namesake = WithSerial(0, HillySurface());
  namesake.GetComposedPntArray()[4].SetCLDist(77.0);
  Vorn_BuildFormArray forms = FormsOf({surface, PlacedElsewhere(Layer(0, {Center(0), Right(4), Right(6)})), namesake});
  forms.CalcPavePointGhDist(1);
  EXPECT_THAT(Distances(forms[1]), ElementsAre(1000.0, 2.0, 1002.0));
}

TEST(PlacedLayer, MustBeDerived) {
  Vorn_BuildFormArray forms = FormsOf({HillySurface(), PlacedElsewhere(FullLayer(kNone))});
  forms.CalcPavePointGhDist(0);
  forms.CalcPavePointGhDist(1);
  EXPECT_EQ(Distances(forms[0]), Distances(HillySurface()));
  EXPECT_EQ(Distances(forms[1]), Distances(PlacedElsewhere(FullLayer())));
}

TEST(PlacedLayer, MustHaveItsParent) {
  Vorn_BuildFormArray forms = FormsOf({HillySurface(), FullLayer(50), Layer(50, {})});
  for (const int orphan : {1, 2}) EXPECT_THROW(forms.CalcPavePointGhDist(orphan), CInvalidArgException);
  EXPECT_THROW(forms.CalcPavePointGhDist(), CInvalidArgException);
}

TEST(PlacedLayer, MustExist) {
  Vorn_BuildFormArray forms = FormsOf({HillySurface()});
  for (const int outside : {-1, 1}) EXPECT_THROW(forms.CalcPavePointGhDist(outside), CInvalidArgException);
}

TEST(PlacedLayers, ArePlacedInTheOrderOfTheArray) {
  // The middle one hangs on the first, and is placed behind it; the last hangs on none that is placed before it.
  const VornBuildForm deeper = PlacedElsewhere(Layer(7, {Center(0), Left(1), Left(2), Right(4), Right(5)}));
  Vorn_BuildFormArray forms =
      FormsOf({HillySurface(), WithSerial(6, deeper), WithSerial(7, PlacedElsewhere(FullLayer())),
               WithSerial(8, deeper), FormOf("other", {Left(1)})});
  forms.CalcPavePointGhDist();
  EXPECT_THAT(Distances(forms[1]), ElementsAre(1000.0, 1001.0, 1002.0, 1004.0, 1004.0));
  EXPECT_THAT(Distances(forms[2]), ElementsAre(0.0, -2.0, -4.0, 1003.0, 2.0, 4.0, 1006.0));
  EXPECT_THAT(Distances(forms[3]), ElementsAre(0.0, -2.0, 1002.0, 2.0, 1004.0));
  EXPECT_EQ(Distances(forms[0]), Distances(HillySurface()));
}

TEST(PlacedLayer, MeasuresFromTheHeightThatItsFirstPointHadBefore) {
  Vorn_BuildFormArray forms = FormsOf(
      {FormOf("surface", {PointAt(kCenter, 100.0, 0.0), PointAt(kLeft, 99.0, -2.0), PointAt(kRight, 98.0, 2.0)}),
       Layer(0, {Center(0), Left(1), Right(2)})});
  PointsOf(forms, 1)[0].SetGh(0.5);
  forms.CalcPavePointGhDist(1);
  EXPECT_EQ(PointsOf(forms, 1)[0].GetGh(), 99.5);
  forms.CalcPavePointGhDist(1);
  EXPECT_EQ(PointsOf(forms, 1)[0].GetGh(), 0.5);
}

TEST(PlacedLayer, TakesItsStartPointForAnInnerOneWherePointsHaveNoSide) {
  Vorn_BuildFormArray forms = FormsOf(
      {FormOf("surface", {PointAt(kCenter, 100.0, 0.0), PointAt(kRight, 101.0, 2.0), PointAt(kRight, 102.0, 4.0)}),
       Layer(0, {Center(0), Hanging(VornLocation::Unset, 'U', 1), Right(1), Right(2)})});
  PointsOf(forms, 1)[0].SetGh(0.5);
  PointsOf(forms, 1)[0].SetCLDist(50.0);
  forms.CalcPavePointGhDist(1);
  EXPECT_EQ(PointsOf(forms, 1)[0].GetCLDist(), 0.0);
  EXPECT_EQ(PointsOf(forms, 1)[0].GetGh(), 99.5);
  EXPECT_EQ(PointsOf(forms, 1)[2].GetGh(), 100.5);
  EXPECT_FALSE(PointsOf(forms, 1)[1].GetGh().IsSet());
}

TEST(AddedPlacedPointIndex, IsNoneWhenTheFirstPairDoesNotFitItsSide) {
  Vorn_BuildFormArray forms = FormsOf(
      {FormOf("surface", {PointAt(kCenter, 100.0, 0.0), PointAt(kRight, 100.0, -2.0), PointAt(kRight, 100.0, 2.0),
                          PointAt(kRight, 100.0, -3.0), PointAt(kRight, 100.0, 3.0), PointAt(kRight, 100.0, 1.0)}),
       Layer(0, {Left(1), Left(), Right(2), Right(3), Right(4), Right()})});
  forms.AddedComposedPnt(0, 5);
  EXPECT_EQ(PointsOf(forms, 1).GetSize(), 6);
}

}  // namespace
