#include "vorn/model/composed_pnt.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/model/editions.h"
#include "tests/model/items.h"
#include "tests/model/model_builders.h"
#include "tests/support/xml_tree.h"
#include "vorn/model/cross_point_info.h"
#include "vorn/platform/code_page_932.h"

namespace {

using model_test::Items;
using model_test::PointOn;
using model_test::PointWith;
using test_support::EditionScope;
using test_support::ReadXml;
using test_support::WriteXml;
using testing::ElementsAre;
using testing::IsEmpty;

using ComponentType = VornComposedPnt::ComponentType;
using DataType = VornComposedPnt::DataType;
using ElementType = VornComposedPnt::ElementType;
using PntType = VornComposedPnt::PntType;
using SlopeType = VornComposedPnt::SlopeType;

constexpr std::uint32_t kNone = 0xFFFFFFFF;
/// A role past the known ones: read and set as the main one.
constexpr auto kBeyondSub = static_cast<PntType>(2);

// Arrays of points grow by moving them.
static_assert(std::is_nothrow_move_constructible_v<VornComposedPnt>);
static_assert(std::is_nothrow_move_assignable_v<VornComposedPnt>);

// --- fields --------------------------------------------------------------------------------------------------------

TEST(ComposedPnt, StartsWithItsDefaults) {
  const VornComposedPnt point;
  EXPECT_EQ(point.tagName(), "tsf:ComposedPnt");
  EXPECT_EQ(point.GetDrawID(), kNone);
  EXPECT_THAT(Items(point.DrawPairIDs()), IsEmpty());
  EXPECT_FALSE(point.GetCLDist().IsSet());
  EXPECT_FALSE(point.GetGh().IsSet());
  EXPECT_EQ(point.GetX(), 0.0);
  EXPECT_EQ(point.GetY(), 0.0);
  EXPECT_FALSE(point.GetRatio().IsSet());
  EXPECT_FALSE(point.GetPercent().IsSet());
  EXPECT_TRUE(point.GetSeriesPnt());
  EXPECT_EQ(point.GetExistence(), VORN_Existence::Unset);
  EXPECT_EQ(point.GetCtrlFlags(), 0u);
  EXPECT_EQ(point.GetLocation(), VornLocation::Unset);
  EXPECT_EQ(point.GetComponentType(), ComponentType::Unset);
  EXPECT_EQ(point.GetOldCmpType(), ComponentType::Unset);
  EXPECT_EQ(point.GetSlopeType(), SlopeType::Unset);
  EXPECT_EQ(point.GetPointType(), 0);
  EXPECT_EQ(point.GetDataType(), DataType::Unset);
  EXPECT_EQ(point.ElmType(), ElementType::Unset);
  EXPECT_EQ(point.GetTargetIndex(), 0);
  EXPECT_EQ(point.GetSerialID(), kNone);
  EXPECT_EQ(point.GetOrgID(), kNone);
  EXPECT_EQ(point.GetParentID(), kNone);
  EXPECT_EQ(point.GetID(), 0u);
  EXPECT_THAT(Items(point.ThDPairIDs()), IsEmpty());
  EXPECT_EQ(point.IsAutoConnect(), 0);
  EXPECT_EQ(point.IsConnected(), 0);
  EXPECT_EQ(point.GetLastCode(), "");
}

void ExpectFreshDetail(const VornComposedPnt& point, PntType role) {
  EXPECT_EQ(point.GetCode(role), "");
  EXPECT_EQ(point.GetXSectType(role), 0u);
  EXPECT_EQ(point.GetXSectNameID(role), 0u);
  EXPECT_EQ(point.GetXSectName(role), "");
  EXPECT_EQ(point.GetDekiPairID(role), kNone);
  EXPECT_EQ(point.IsConnectionAutoLinePrev(role), 0);
  EXPECT_EQ(point.IsConnectionAutoLineNext(role), 0);
  EXPECT_EQ(point.FormID(role), kNone);
}

TEST(ComposedPnt, StartsWithTwoFreshDetailRecords) {
  const VornComposedPnt point;
  for (const PntType role : {PntType::Main, PntType::Sub}) {
    ExpectFreshDetail(point, role);
    EXPECT_THAT(Items(point.Measure(role)), IsEmpty());
  }
}

TEST(ComposedPnt, KeepsTheValuesOfItsEnumerations) {
  // Archives store them as numbers.
  EXPECT_EQ(static_cast<int>(VornLocation::Center), 0);
  EXPECT_EQ(static_cast<int>(VORN_Existence::True), 2);
  EXPECT_EQ(static_cast<int>(SlopeType::Rate), 1);
  EXPECT_EQ(static_cast<int>(DataType::Rate), 2);
  EXPECT_EQ(static_cast<int>(PntType::Main), 0);
  EXPECT_EQ(static_cast<int>(PntType::Sub), 1);
  EXPECT_EQ(static_cast<int>(PntType::Both), -1);
}

/// Fills a record with values that differ from the defaults, between the fields and between the roles.
void FillDetail(VornComposedPnt& point, PntType role, std::uint32_t seed) {
  const std::string text = std::to_string(seed);
  point.SetCode(CString("code" + text), role);
  point.SetXSectType(seed + 1, role);
  point.SetXSectNameID(seed + 2, role);
  point.SetXSectName(CString("name" + text), role);
  point.SetDekiPairID(seed + 3, role);
  point.SetConnectionAutoLinePrev(static_cast<std::int32_t>(seed + 4), role);
  point.SetConnectionAutoLineNext(static_cast<std::int32_t>(seed + 5), role);
  point.Measure(role).Add({static_cast<std::int32_t>(seed + 6), static_cast<std::int32_t>(seed + 7)});
  point.FormID(role) = seed + 8;
}

void ExpectMeasure(const VornComposedPnt& point, PntType role, std::int32_t seed) {
  EXPECT_THAT(Items(point.Measure(role)), ElementsAre(VornMeasureInfo{seed + 6, seed + 7}));
}

void ExpectFilledDetail(const VornComposedPnt& point, PntType role, std::uint32_t seed) {
  const std::string text = std::to_string(seed);
  EXPECT_EQ(point.GetCode(role), CString("code" + text));
  EXPECT_EQ(point.GetXSectType(role), seed + 1);
  EXPECT_EQ(point.GetXSectNameID(role), seed + 2);
  EXPECT_EQ(point.GetXSectName(role), CString("name" + text));
  EXPECT_EQ(point.GetDekiPairID(role), seed + 3);
  EXPECT_EQ(point.IsConnectionAutoLinePrev(role), static_cast<std::int32_t>(seed + 4));
  EXPECT_EQ(point.IsConnectionAutoLineNext(role), static_cast<std::int32_t>(seed + 5));
  ExpectMeasure(point, role, static_cast<std::int32_t>(seed));
  EXPECT_EQ(point.FormID(role), seed + 8);
}

VornComposedPnt FilledPoint() {
  VornComposedPnt point;
  point.SetDrawID(1);
  point.DrawPairIDs().Add(2);
  point.SetCLDist(3.0);
  point.SetGh(4.0);
  point.SetX(5.0);
  point.SetY(6.0);
  point.SetRatio(7.0);
  point.SetPercent(8.0);
  point.SetSeriesPnt(false);
  point.SetExistence(VORN_Existence::False);
  point.SetCtrlFlags(9);
  point.SetLocation(VornLocation::Right);
  point.SetComponentType(ComponentType::BermCut);
  point.SetComponentType(ComponentType::Slope);
  point.SetSlopeType(SlopeType::Rate);
  point.SetPointType(3);
  point.SetDataType(DataType::Percent);
  point.ElmType(ElementType::Shoulder);
  point.SetTargetIndex(10);
  point.SetSerialID(11);
  point.SetOrgID(12);
  point.SetParentID(13);
  FillDetail(point, PntType::Main, 100);
  FillDetail(point, PntType::Sub, 200);
  point.SetID(14);
  point.ThDPairIDs().Add(15);
  point.SetAutoConnect(16);
  point.SetConnected(17);
  return point;
}

/// All that `FilledPoint` holds, the detail records and what ties the point to others left out.
void ExpectFilledValues(const VornComposedPnt& point) {
  EXPECT_EQ(point.GetDrawID(), 1u);
  EXPECT_THAT(Items(point.DrawPairIDs()), ElementsAre(2u));
  EXPECT_EQ(point.GetCLDist(), 3.0);
  EXPECT_EQ(point.GetGh(), 4.0);
  EXPECT_EQ(point.GetX(), 5.0);
  EXPECT_EQ(point.GetY(), 6.0);
  EXPECT_EQ(point.GetRatio(), 7.0);
  EXPECT_EQ(point.GetPercent(), 8.0);
  EXPECT_FALSE(point.GetSeriesPnt());
  EXPECT_EQ(point.GetExistence(), VORN_Existence::False);
  EXPECT_EQ(point.GetCtrlFlags(), 9u);
  EXPECT_EQ(point.GetLocation(), VornLocation::Right);
  EXPECT_EQ(point.GetComponentType(), ComponentType::Slope);
  EXPECT_EQ(point.GetOldCmpType(), ComponentType::BermCut);
  EXPECT_EQ(point.GetSlopeType(), SlopeType::Rate);
  EXPECT_EQ(point.GetPointType(), 3);
  EXPECT_EQ(point.GetDataType(), DataType::Percent);
  EXPECT_EQ(point.ElmType(), ElementType::Shoulder);
  EXPECT_EQ(point.GetTargetIndex(), 10);
  EXPECT_EQ(point.GetOrgID(), 12u);
  EXPECT_EQ(point.GetParentID(), 13u);
  EXPECT_EQ(point.GetID(), 14u);
  EXPECT_EQ(point.IsConnected(), 17);
  EXPECT_EQ(point.GetLastCode(), "code200");
}

void ExpectFilled(const VornComposedPnt& point) {
  ExpectFilledValues(point);
  EXPECT_EQ(point.GetSerialID(), 11u);
  EXPECT_THAT(Items(point.ThDPairIDs()), ElementsAre(15u));
  EXPECT_EQ(point.IsAutoConnect(), 16);
  ExpectFilledDetail(point, PntType::Main, 100);
  ExpectFilledDetail(point, PntType::Sub, 200);
}

TEST(ComposedPnt, KeepsWhatItIsGiven) { ExpectFilled(FilledPoint()); }

TEST(ComposedPnt, CopiesAndMovesEveryField) {
  const VornComposedPnt original = FilledPoint();
  ExpectFilled(VornComposedPnt(original));
  VornComposedPnt assigned;
  assigned = original;
  ExpectFilled(assigned);
  const VornComposedPnt moved = std::move(assigned);
  ExpectFilled(moved);
  ExpectFilled(original);
}

TEST(ComposedPnt, LendsItsFieldsForChange) {
  VornComposedPnt point;
  point.GetX() = 1.0;
  point.GetY() = 2.0;
  point.GetCLDist() = 3.0;
  point.GetGh() = 4.0;
  point.GetRatio() = 5.0;
  point.GetPercent() = 6.0;
  point.GetSeriesPnt() = false;
  point.GetExistence() = VORN_Existence::True;
  point.GetCtrlFlags() = 7;
  point.GetLocation() = VornLocation::Left;
  point.GetSlopeType() = SlopeType::Percent;
  point.GetDataType() = DataType::Rate;
  point.GetPointType() = 2;
  point.GetDrawID() = 8;
  point.GetTargetIndex() = 9;
  point.GetSerialID() = 10;
  point.GetOrgID() = 11;
  point.GetParentID() = 12;
  point.GetID() = 13;
  EXPECT_EQ(std::as_const(point).GetX(), 1.0);
  EXPECT_EQ(std::as_const(point).GetY(), 2.0);
  EXPECT_EQ(std::as_const(point).GetCLDist(), 3.0);
  EXPECT_EQ(std::as_const(point).GetGh(), 4.0);
  EXPECT_EQ(std::as_const(point).GetRatio(), 5.0);
  EXPECT_EQ(std::as_const(point).GetPercent(), 6.0);
  EXPECT_FALSE(std::as_const(point).GetSeriesPnt());
  EXPECT_EQ(std::as_const(point).GetExistence(), VORN_Existence::True);
  EXPECT_EQ(std::as_const(point).GetCtrlFlags(), 7u);
  EXPECT_EQ(std::as_const(point).GetLocation(), VornLocation::Left);
  EXPECT_EQ(std::as_const(point).GetSlopeType(), SlopeType::Percent);
  EXPECT_EQ(std::as_const(point).GetDataType(), DataType::Rate);
  EXPECT_EQ(std::as_const(point).GetPointType(), 2);
  EXPECT_EQ(std::as_const(point).GetDrawID(), 8u);
  EXPECT_EQ(std::as_const(point).GetTargetIndex(), 9);
  EXPECT_EQ(std::as_const(point).GetSerialID(), 10u);
  EXPECT_EQ(std::as_const(point).GetOrgID(), 11u);
  EXPECT_EQ(std::as_const(point).GetParentID(), 12u);
  EXPECT_EQ(std::as_const(point).GetID(), 13u);
}

TEST(ComposedPnt, RemembersTheFormerComponentType) {
  VornComposedPnt point;
  point.SetComponentType(ComponentType::SlopeFill);
  EXPECT_EQ(point.GetOldCmpType(), ComponentType::Unset);
  point.SetComponentType(ComponentType::Slope);
  EXPECT_EQ(point.GetComponentType(), ComponentType::Slope);
  EXPECT_EQ(point.GetOldCmpType(), ComponentType::SlopeFill);
}

// --- predicates ----------------------------------------------------------------------------------------------------

TEST(ComposedPnt, IsNotEnabledWhenNew) { EXPECT_FALSE(VornComposedPnt().IsEnable()); }

TEST(ComposedPnt, IsEnabledWithACodeAndAnyExistenceThatWasGiven) {
  VornComposedPnt point;
  point.SetCode("A");
  EXPECT_FALSE(point.IsEnable());
  for (const VORN_Existence existence : {VORN_Existence::Empty, VORN_Existence::False, VORN_Existence::True}) {
    point.SetExistence(existence);
    EXPECT_TRUE(point.IsEnable());
  }
  for (const int unknown : {-2, -1, 3}) {
    point.SetExistence(static_cast<VORN_Existence>(unknown));
    EXPECT_FALSE(point.IsEnable());
  }
}

TEST(ComposedPnt, IsNotEnabledWithoutAMainCode) {
  VornComposedPnt point;
  point.SetExistence(VORN_Existence::True);
  point.SetCode("A", PntType::Sub);
  EXPECT_FALSE(point.IsEnable());
}

TEST(ComposedPnt, IsASlopeWhenItsSlopeTypeIsRate) {
  VornComposedPnt point;
  EXPECT_FALSE(point.IsSlope());
  point.SetSlopeType(SlopeType::Percent);
  EXPECT_FALSE(point.IsSlope());
  point.SetSlopeType(SlopeType::Rate);
  EXPECT_TRUE(point.IsSlope());
}

TEST(ComposedPnt, KnowsItsSide) {
  for (const VornLocation side : {VornLocation::Unset, VornLocation::Center, VornLocation::Left, VornLocation::Right}) {
    const VornComposedPnt point = PointOn(side);
    EXPECT_EQ(point.IsCenter(), side == VornLocation::Center);
    EXPECT_EQ(point.IsLeft(), side == VornLocation::Left);
    EXPECT_EQ(point.IsRight(), side == VornLocation::Right);
  }
}

TEST(ComposedPnt, TellsKePointsAndCrossPointsByTheBitsOfThePointType) {
  for (const int bits : {0, 1, 2, 3, 4}) {
    VornComposedPnt point;
    point.SetPointType(static_cast<std::uint16_t>(bits));
    EXPECT_EQ(point.IsKePoint(), bits == 1 || bits == 3) << bits;
    EXPECT_EQ(point.IsCrossPoint(), bits == 2 || bits == 3) << bits;
  }
}

TEST(ComposedPnt, IsConnectedThroughTheMainPairOrAThreeDimensionalOne) {
  VornComposedPnt point;
  EXPECT_FALSE(point.IsConnect());
  point.SetDekiPairID(1, PntType::Sub);
  EXPECT_FALSE(point.IsConnect());
  point.SetDekiPairID(0, PntType::Main);
  EXPECT_TRUE(point.IsConnect());

  VornComposedPnt threeDimensional;
  threeDimensional.ThDPairIDs().Add(1);
  EXPECT_TRUE(threeDimensional.IsConnect());
}

VornComposedPnt PointOfKinds(std::uint32_t mainType, std::uint32_t mainNameID, std::uint32_t subType,
                             std::uint32_t subNameID) {
  VornComposedPnt point;
  point.SetXSectType(mainType, PntType::Main);
  point.SetXSectNameID(mainNameID, PntType::Main);
  point.SetXSectType(subType, PntType::Sub);
  point.SetXSectNameID(subNameID, PntType::Sub);
  return point;
}

TEST(ComposedPnt, UsesTheSubRecordWhenThatHasATypeOrNameOfItsOwn) {
  EXPECT_FALSE(PointOfKinds(0, 0, 0, 0).IsUsedSub());
  EXPECT_FALSE(PointOfKinds(1, 2, 1, 2).IsUsedSub());
  EXPECT_FALSE(PointOfKinds(1, 2, 0, 0).IsUsedSub());
  EXPECT_TRUE(PointOfKinds(1, 2, 3, 2).IsUsedSub());
  EXPECT_TRUE(PointOfKinds(1, 2, 1, 3).IsUsedSub());
  EXPECT_TRUE(PointOfKinds(1, 2, 0, 3).IsUsedSub());
  EXPECT_TRUE(PointOfKinds(0, 0, 1, 0).IsUsedSub());
}

TEST(ComposedPnt, SeparatesNoKindsWhenTheSubRecordSaysNothingNew) {
  for (const bool byID : {false, true}) {
    EXPECT_FALSE(PointOfKinds(1, 2, 1, 2).IsSeptSectPoint(byID));
    EXPECT_FALSE(PointOfKinds(1, 2, 0, 0).IsSeptSectPoint(byID));
    EXPECT_FALSE(PointOfKinds(1, 2, 1, 0).IsSeptSectPoint(byID));
    EXPECT_FALSE(PointOfKinds(1, 2, 0, 2).IsSeptSectPoint(byID));
  }
}

TEST(ComposedPnt, SeparatesTwoTypesWhateverTheNames) {
  for (const bool byID : {false, true}) {
    EXPECT_TRUE(PointOfKinds(1, 2, 3, 2).IsSeptSectPoint(byID));
    EXPECT_TRUE(PointOfKinds(1, 2, 3, 4).IsSeptSectPoint(byID));
    // A sub record without a type, but with a name of its own, differs in the type as well.
    EXPECT_TRUE(PointOfKinds(1, 2, 0, 4).IsSeptSectPoint(byID));
  }
}

TEST(ComposedPnt, SeparatesTwoNamesOfOneTypeByIdentifierOrByName) {
  VornComposedPnt point = PointOfKinds(1, 2, 1, 3);
  EXPECT_TRUE(point.IsSeptSectPoint(true));
  EXPECT_FALSE(point.IsSeptSectPoint(false));
  point.SetXSectName("road", PntType::Main);
  point.SetXSectName("Road", PntType::Sub);
  EXPECT_TRUE(point.IsSeptSectPoint(false));
}

// --- texts ---------------------------------------------------------------------------------------------------------

/// How one enumeration is turned into text and back.
struct LocationTexts {
  using Enum = VornLocation;
  static constexpr std::array<const char*, 3> kTexts = {"Center", "Left", "Right"};
  static constexpr const char* kUnknownText = "";
  static constexpr bool kResetsFirst = true;
  static CString Text(Enum value) { return VornComposedPnt::GetLocationStr(value); }
  static bool Parse(VornComposedPnt& point, std::string_view text) { return point.SetLocationStr(text); }
  static Enum Get(const VornComposedPnt& point) { return point.GetLocation(); }
};

struct ExistenceTexts {
  using Enum = VORN_Existence;
  static constexpr std::array<const char*, 3> kTexts = {"", "false", "true"};
  static constexpr const char* kUnknownText = "";
  static constexpr bool kResetsFirst = true;
  static CString Text(Enum value) { return VornComposedPnt::GetExistenceString(value); }
  static bool Parse(VornComposedPnt& point, std::string_view text) { return point.SetExistenceString(text); }
  static Enum Get(const VornComposedPnt& point) { return point.GetExistence(); }
};

struct ComponentTypeTexts {
  using Enum = ComponentType;
  static constexpr std::array<const char*, 10> kTexts = {"Roadbed(Fill)", "Roadbed(Cut)", "Slope(Fill)", "Slope(Cut)",
                                                         "Berm(Fill)",    "Berm(Cut)",    "Other",       "Roadbed",
                                                         "Slope",         "Berm"};
  static constexpr const char* kUnknownText = "";
  static constexpr bool kResetsFirst = true;
  static CString Text(Enum value) { return VornComposedPnt::GetComponentTypeStr(value); }
  static bool Parse(VornComposedPnt& point, std::string_view text) { return point.SetComponentTypeStr(text); }
  static Enum Get(const VornComposedPnt& point) { return point.GetComponentType(); }
};

struct SlopeTypeTexts {
  using Enum = SlopeType;
  static constexpr std::array<const char*, 2> kTexts = {"Percent", "Rate"};
  static constexpr const char* kUnknownText = "";
  static constexpr bool kResetsFirst = true;
  static CString Text(Enum value) { return VornComposedPnt::GetSlopeTypeStr(value); }
  static bool Parse(VornComposedPnt& point, std::string_view text) { return point.SetSlopeTypeStr(text); }
  static Enum Get(const VornComposedPnt& point) { return point.GetSlopeType(); }
};

struct DataTypeTexts {
  using Enum = DataType;
  static constexpr std::array<const char*, 3> kTexts = {"WidthHeight", "Percent", "Rate"};
  static constexpr const char* kUnknownText = "WidthHeight";
  static constexpr bool kResetsFirst = false;
  static CString Text(Enum value) { return VornComposedPnt::GetDataTypeStr(value); }
  static bool Parse(VornComposedPnt& point, std::string_view text) { return point.SetDataTypeStr(text); }
  static Enum Get(const VornComposedPnt& point) { return point.GetDataType(); }
};

template <typename Texts>
class ComposedPntTexts : public testing::Test {
 protected:
  using Enum = typename Texts::Enum;
  static constexpr int kCount = static_cast<int>(Texts::kTexts.size());

  static Enum ValueOf(int number) { return static_cast<Enum>(number); }
  static std::string TextOf(int number) { return Texts::kTexts[static_cast<std::size_t>(number)]; }

  /// A text that is none of the enumeration is refused, and the field is what the parser promises afterwards.
  static void ExpectRefused(std::string_view text) {
    VornComposedPnt point;
    const int former = kCount - 1;
    ASSERT_TRUE(Texts::Parse(point, TextOf(former)));
    EXPECT_FALSE(Texts::Parse(point, text)) << text;
    EXPECT_EQ(Texts::Get(point), Texts::kResetsFirst ? Enum::Unset : ValueOf(former)) << text;
  }
};

using AllTexts = testing::Types<LocationTexts, ExistenceTexts, ComponentTypeTexts, SlopeTypeTexts, DataTypeTexts>;
TYPED_TEST_SUITE(ComposedPntTexts, AllTexts);

TYPED_TEST(ComposedPntTexts, EveryValueHasItsText) {
  for (int i = 0; i < TestFixture::kCount; ++i) EXPECT_EQ(TypeParam::Text(this->ValueOf(i)), this->TextOf(i).c_str());
}

TYPED_TEST(ComposedPntTexts, UnknownValuesHaveTheFallbackText) {
  for (const int unknown : {-2, -1, TestFixture::kCount, 1000}) {
    EXPECT_EQ(TypeParam::Text(this->ValueOf(unknown)), TypeParam::kUnknownText) << unknown;
  }
}

TYPED_TEST(ComposedPntTexts, EveryTextGivesItsValue) {
  for (int i = 0; i < TestFixture::kCount; ++i) {
    VornComposedPnt point;
    EXPECT_TRUE(TypeParam::Parse(point, this->TextOf(i)));
    EXPECT_EQ(TypeParam::Get(point), this->ValueOf(i)) << this->TextOf(i);
  }
}

TYPED_TEST(ComposedPntTexts, TextsInTheWrongCaseAreRefused) {
  for (int i = 0; i < TestFixture::kCount; ++i) {
    CString changed = this->TextOf(i).c_str();
    changed.MakeUpper();
    if (changed != this->TextOf(i).c_str()) this->ExpectRefused(changed.View());
    changed = this->TextOf(i).c_str();
    changed.MakeLower();
    if (changed != this->TextOf(i).c_str()) this->ExpectRefused(changed.View());
  }
}

TYPED_TEST(ComposedPntTexts, OtherTextsAreRefused) {
  for (int i = 0; i < TestFixture::kCount; ++i) {
    this->ExpectRefused(this->TextOf(i) + " ");
    this->ExpectRefused(" " + this->TextOf(i));
  }
  this->ExpectRefused("bad");
  if (this->TextOf(0) != "") this->ExpectRefused("");
}

TEST(ComposedPnt, LosesTheFormerComponentTypeWhenATextSetsTheType) {
  VornComposedPnt point;
  point.SetComponentType(ComponentType::SlopeFill);
  point.SetComponentType(ComponentType::BermCut);
  ASSERT_EQ(point.GetOldCmpType(), ComponentType::SlopeFill);
  EXPECT_TRUE(point.SetComponentTypeStr("Slope"));
  EXPECT_EQ(point.GetComponentType(), ComponentType::Slope);
  EXPECT_EQ(point.GetOldCmpType(), ComponentType::Unset);
}

TEST(ComposedPnt, KeepsTheFormerComponentTypeWhenATextSetsNone) {
  VornComposedPnt point;
  point.SetComponentType(ComponentType::SlopeFill);
  point.SetComponentType(ComponentType::BermCut);
  EXPECT_FALSE(point.SetComponentTypeStr("bad"));
  EXPECT_EQ(point.GetOldCmpType(), ComponentType::SlopeFill);
}

TEST(ComposedPnt, NamesItsComponentTypesWithAsciiParentheses) {
  constexpr std::array<std::string_view, 10> kNames = {
      u8"道路面(盛土)"_cp932, u8"道路面(切土)"_cp932, u8"法面(盛土)"_cp932, u8"法面(切土)"_cp932, u8"小段(盛土)"_cp932,
      u8"小段(切土)"_cp932,   u8"その他"_cp932,       u8"道路"_cp932,       u8"法面"_cp932,       u8"小段"_cp932};
  for (std::size_t i = 0; i < kNames.size(); ++i) {
    EXPECT_EQ(VornComposedPnt::ComponentTypeName(static_cast<ComponentType>(i)), kNames[i]) << i;
  }
  for (const int unknown : {-2, -1, 10}) {
    EXPECT_EQ(VornComposedPnt::ComponentTypeName(static_cast<ComponentType>(unknown)), "") << unknown;
  }
}

/// The names of the element types, in the order of their values, with full-width parentheses.
constexpr std::array<std::string_view, 23> kElementNames = {
    u8"車道"_cp932,         u8"中央帯"_cp932,       u8"路肩"_cp932,          u8"停車帯"_cp932,
    u8"歩道"_cp932,         u8"植樹帯"_cp932,       u8"副道"_cp932,          u8"軌道敷"_cp932,
    u8"分離帯"_cp932,       u8"側帯"_cp932,         u8"路床"_cp932,          u8"路体"_cp932,
    u8"床掘（掘削）"_cp932, u8"法面（盛土）"_cp932, u8"法面（切土）"_cp932,  u8"小段（盛土）"_cp932,
    u8"小段（切土）"_cp932, u8"擁壁"_cp932,         u8"側溝"_cp932,          u8"舗装"_cp932,
    u8"その他"_cp932,       u8"堤防天端"_cp932,     u8"土工面（盛土）"_cp932};

TEST(ComposedPnt, NamesItsElementTypes) {
  for (std::size_t i = 0; i < kElementNames.size(); ++i) {
    const auto type = static_cast<ElementType>(i);
    EXPECT_EQ(VornComposedPnt::ElmTypeName(type), kElementNames[i]) << i;
    VornComposedPnt point;
    point.ElmType(type);
    EXPECT_EQ(point.ElmTypeName(), kElementNames[i]) << i;
  }
  for (const int unknown : {-2, -1, 23}) {
    EXPECT_EQ(VornComposedPnt::ElmTypeName(static_cast<ElementType>(unknown)), "") << unknown;
  }
}

TEST(ComposedPnt, TakesItsElementTypeFromTheName) {
  for (std::size_t i = 0; i < kElementNames.size(); ++i) {
    VornComposedPnt point;
    point.ElmType(kElementNames[i]);
    EXPECT_EQ(point.ElmType(), static_cast<ElementType>(i));
  }
}

constexpr std::array<std::string_view, 4> kNoElementNames = {"", u8"車道 "_cp932, u8"法面(盛土)"_cp932, u8"車"_cp932};

TEST(ComposedPnt, KeepsItsElementTypeWhenTheNameIsUnknown) {
  VornComposedPnt point;
  point.ElmType(ElementType::Pavement);
  for (const std::string_view unknown : kNoElementNames) {
    point.ElmType(unknown);
    EXPECT_EQ(point.ElmType(), ElementType::Pavement);
  }
}

// --- detail records ------------------------------------------------------------------------------------------------

TEST(ComposedPnt, ReadsTheMainRecordForAnyRoleButSub) {
  VornComposedPnt point;
  FillDetail(point, PntType::Main, 100);
  FillDetail(point, PntType::Sub, 200);
  ExpectFilledDetail(point, kBeyondSub, 100);
  ExpectFilledDetail(point, PntType::Both, 100);
}

TEST(ComposedPnt, SetsTheRecordOfTheRole) {
  VornComposedPnt point;
  FillDetail(point, PntType::Sub, 200);
  ExpectFreshDetail(point, PntType::Main);
  ExpectFilledDetail(point, PntType::Sub, 200);
}

TEST(ComposedPnt, SetsTheMainRecordForARoleBeyondSub) {
  VornComposedPnt point;
  FillDetail(point, kBeyondSub, 100);
  ExpectFilledDetail(point, PntType::Main, 100);
  ExpectFreshDetail(point, PntType::Sub);
}

TEST(ComposedPnt, SetsBothRecords) {
  VornComposedPnt point;
  point.SetCode("A", PntType::Both);
  point.SetXSectType(1, PntType::Both);
  point.SetXSectName("N", PntType::Both);
  point.SetXSectNameID(2, PntType::Both);
  point.SetDekiPairID(3, PntType::Both);
  point.SetConnectionAutoLinePrev(4, PntType::Both);
  point.SetConnectionAutoLineNext(5, PntType::Both);
  for (const PntType role : {PntType::Main, PntType::Sub}) {
    EXPECT_EQ(point.GetCode(role), "A");
    EXPECT_EQ(point.GetXSectType(role), 1u);
    EXPECT_EQ(point.GetXSectName(role), "N");
    EXPECT_EQ(point.GetXSectNameID(role), 2u);
    EXPECT_EQ(point.GetDekiPairID(role), 3u);
    EXPECT_EQ(point.IsConnectionAutoLinePrev(role), 4);
    EXPECT_EQ(point.IsConnectionAutoLineNext(role), 5);
  }
}

TEST(ComposedPnt, SetsTheAutomaticLinesOfBothRecords) {
  VornComposedPnt point;
  point.SetConnectionAutoLine(4, 5);
  for (const PntType role : {PntType::Main, PntType::Sub}) {
    EXPECT_EQ(point.IsConnectionAutoLinePrev(role), 4);
    EXPECT_EQ(point.IsConnectionAutoLineNext(role), 5);
  }
}

TEST(ComposedPnt, SetsOneAutomaticLineAndClearsTheOther) {
  const auto expectLines = [](const VornComposedPnt& point, std::int32_t prev, std::int32_t next) {
    for (const PntType role : {PntType::Main, PntType::Sub}) {
      EXPECT_EQ(point.IsConnectionAutoLinePrev(role), prev);
      EXPECT_EQ(point.IsConnectionAutoLineNext(role), next);
    }
  };
  VornComposedPnt point;
  point.SetConnectionAutoLine(0, 0);
  expectLines(point, 0, 0);
  point.SetConnectionAutoLine(0, 5);
  expectLines(point, 0, 5);
  point.SetConnectionAutoLine(4, 0);
  expectLines(point, 4, 0);
}

TEST(ComposedPnt, RemembersTheLastCodeWhateverItsRole) {
  VornComposedPnt point;
  for (const auto& [code, role] : {std::pair("A", PntType::Main), std::pair("B", PntType::Sub),
                                   std::pair("C", PntType::Both), std::pair("D", kBeyondSub)}) {
    point.SetCode(code, role);
    EXPECT_EQ(point.GetLastCode(), code);
  }
  EXPECT_EQ(point.GetCode(PntType::Main), "D");
  EXPECT_EQ(point.GetCode(PntType::Sub), "C");
}

TEST(ComposedPnt, TakesACodeFromItself) {
  VornComposedPnt point;
  point.SetCode("A", PntType::Main);
  point.SetCode("B", PntType::Sub);
  point.SetCode(point.GetCode(PntType::Main), PntType::Both);
  EXPECT_EQ(point.GetCode(PntType::Sub), "A");
  point.SetXSectName("N", PntType::Main);
  point.SetXSectName(point.GetXSectName(PntType::Main), PntType::Both);
  EXPECT_EQ(point.GetXSectName(PntType::Sub), "N");
}

TEST(ComposedPnt, FindsTheFirstRoleOfATypeAndName) {
  VornComposedPnt point;
  point.SetXSectType(1, PntType::Both);
  point.SetXSectName("A", PntType::Both);
  EXPECT_EQ(point.FindPntType(1, "A"), PntType::Main);
  point.SetXSectName("B", PntType::Sub);
  EXPECT_EQ(point.FindPntType(1, "A"), PntType::Main);
  EXPECT_EQ(point.FindPntType(1, "B"), PntType::Sub);
  EXPECT_EQ(point.FindPntType(1, "b"), PntType::Both);
  EXPECT_EQ(point.FindPntType(2, "A"), PntType::Both);
}

TEST(ComposedPnt, ResetsARecordButKeepsItsMeasurements) {
  VornComposedPnt point = FilledPoint();
  point.InitDetail(PntType::Sub);
  ExpectFilledDetail(point, PntType::Main, 100);
  ExpectFreshDetail(point, PntType::Sub);
  ExpectMeasure(point, PntType::Sub, 200);
}

TEST(ComposedPnt, ResetsTheMainRecordForAnyOtherRole) {
  for (const PntType role : {PntType::Main, kBeyondSub}) {
    VornComposedPnt point = FilledPoint();
    point.InitDetail(role);
    ExpectFreshDetail(point, PntType::Main);
    ExpectMeasure(point, PntType::Main, 100);
    ExpectFilledDetail(point, PntType::Sub, 200);
  }
}

TEST(ComposedPnt, ResetsBothRecords) {
  VornComposedPnt point = FilledPoint();
  point.InitDetail(PntType::Both);
  ExpectFreshDetail(point, PntType::Main);
  ExpectFreshDetail(point, PntType::Sub);
  ExpectMeasure(point, PntType::Main, 100);
  ExpectMeasure(point, PntType::Sub, 200);
}

TEST(ComposedPnt, ResetsASingleRecordTheSameWay) {
  VornComposedPnt::Detail detail;
  detail.Code = "A";
  detail.XSectType = 1;
  detail.XSectNameID = 2;
  detail.XSectName = "N";
  detail.DekiPairID = 3;
  detail.AutoLinePrev = 4;
  detail.AutoLineNext = 5;
  detail.Measure.Add({6, 7});
  detail.FormID = 8;
  VornComposedPnt::InitDetail(detail);
  EXPECT_EQ(detail.Code, "");
  EXPECT_EQ(detail.XSectType, 0u);
  EXPECT_EQ(detail.XSectNameID, 0u);
  EXPECT_EQ(detail.XSectName, "");
  EXPECT_EQ(detail.DekiPairID, kNone);
  EXPECT_EQ(detail.AutoLinePrev, 0);
  EXPECT_EQ(detail.AutoLineNext, 0);
  EXPECT_THAT(Items(detail.Measure), ElementsAre(VornMeasureInfo{6, 7}));
  EXPECT_EQ(detail.FormID, kNone);
}

TEST(ComposedPnt, HasRecordsThatAreEqualInEveryMemberOrDiffer) {
  using Detail = VornComposedPnt::Detail;
  const std::vector<void (*)(Detail&)> changes = {
      [](Detail& detail) { detail.Code = "A"; },       [](Detail& detail) { detail.XSectName = "N"; },
      [](Detail& detail) { detail.Measure.Add({}); },  [](Detail& detail) { detail.XSectType = 1; },
      [](Detail& detail) { detail.XSectNameID = 2; },  [](Detail& detail) { detail.DekiPairID = 3; },
      [](Detail& detail) { detail.AutoLinePrev = 4; }, [](Detail& detail) { detail.AutoLineNext = 5; },
      [](Detail& detail) { detail.FormID = 6; },
  };
  for (std::size_t i = 0; i < changes.size(); ++i) {
    Detail detail;
    changes[i](detail);
    Detail same;
    EXPECT_FALSE(detail == same) << i;
    changes[i](same);
    EXPECT_TRUE(detail == same) << i;
  }
}

TEST(ComposedPnt, HasMeasurementsThatAreEqualInBothNumbersOrDiffer) {
  EXPECT_TRUE((VornMeasureInfo{1, 2} == VornMeasureInfo{1, 2}));
  EXPECT_FALSE((VornMeasureInfo{1, 2} == VornMeasureInfo{3, 2}));
  EXPECT_FALSE((VornMeasureInfo{1, 2} == VornMeasureInfo{1, 3}));
}

TEST(ComposedPnt, CopiesTheRecordsOfAnotherPointAndNothingElse) {
  VornComposedPnt point;
  point.CopyDetail(FilledPoint());
  ExpectFilledDetail(point, PntType::Main, 100);
  ExpectFilledDetail(point, PntType::Sub, 200);
  EXPECT_EQ(point.GetX(), 0.0);
  EXPECT_EQ(point.GetSerialID(), kNone);
  EXPECT_EQ(point.GetLastCode(), "");
}

TEST(ComposedPnt, CopiesTheMainRecordToTheSubRecord) {
  VornComposedPnt point = FilledPoint();
  point.FromMainToSub();
  ExpectFilledDetail(point, PntType::Main, 100);
  ExpectFilledDetail(point, PntType::Sub, 100);
}

// --- connections ---------------------------------------------------------------------------------------------------

TEST(ComposedPnt, ForgetsItsConnectionsAndKeepsItsCodes) {
  VornComposedPnt point = FilledPoint();
  point.ClearConnectInfo(false);
  for (const PntType role : {PntType::Main, PntType::Sub}) EXPECT_EQ(point.GetDekiPairID(role), kNone);
  EXPECT_THAT(Items(point.ThDPairIDs()), IsEmpty());
  EXPECT_EQ(point.IsAutoConnect(), 0);
  EXPECT_EQ(point.GetCode(PntType::Main), "code100");
  EXPECT_EQ(point.GetCode(PntType::Sub), "code200");
  EXPECT_EQ(point.IsConnected(), 17);
  EXPECT_EQ(point.GetID(), 14u);
}

TEST(ComposedPnt, ForgetsItsCodesWithItsConnectionsWhenAsked) {
  VornComposedPnt point = FilledPoint();
  point.ClearConnectInfo(true);
  for (const PntType role : {PntType::Main, PntType::Sub}) {
    EXPECT_EQ(point.GetCode(role), "");
    EXPECT_EQ(point.GetDekiPairID(role), kNone);
  }
}

TEST(ComposedPnt, TakesOverTheConnectionOfACrossing) {
  VornCrossPointInfo info;
  info.SetID(1);
  info.SetDekiPairID(2);
  info.ThDPairIDs().Add(3);
  VornComposedPnt point = FilledPoint();
  point.CopyConnectInfo(info);
  EXPECT_EQ(point.GetID(), 1u);
  for (const PntType role : {PntType::Main, PntType::Sub}) EXPECT_EQ(point.GetDekiPairID(role), 2u);
  EXPECT_THAT(Items(point.ThDPairIDs()), ElementsAre(3u));
}

struct Connection {
  std::uint32_t mainPair;
  std::vector<std::uint32_t> threeDimensional;
  std::vector<std::uint32_t> connected;
};

TEST(ComposedPnt, ListsTheIdentifiersThatItConnectsToOnceAndAscending) {
  const std::vector<Connection> connections = {
      {0, {7, 3, 7}, {3, 7}},
      {5, {7, 3}, {3, 5, 7}},
      {5, {5}, {5}},
      {kNone, {}, {}},
      {kNone, {4}, {4}},
      {0x80000000u, {4}, {4}},
      {0x7FFFFFFFu, {}, {0x7FFFFFFF}},
      {1, {kNone, 2}, {1, 2, kNone}},
  };
  for (const Connection& connection : connections) {
    VornComposedPnt point;
    point.SetDekiPairID(connection.mainPair);
    point.SetDekiPairID(99, PntType::Sub);
    for (const std::uint32_t id : connection.threeDimensional) point.ThDPairIDs().Add(id);
    VornUIntArray ids;
    ids.Add(1000);
    point.ConnectIDs(ids);
    EXPECT_EQ(Items(ids), connection.connected);
  }
}

TEST(ComposedPnt, CopiesItsAttributesWithoutTheTiesToOtherPoints) {
  VornComposedPnt copy;
  copy.AttrCopy(FilledPoint());
  ExpectFilledValues(copy);
  EXPECT_EQ(copy.GetSerialID(), kNone);
  EXPECT_THAT(Items(copy.ThDPairIDs()), IsEmpty());
  EXPECT_EQ(copy.IsAutoConnect(), 0);
  for (const PntType role : {PntType::Main, PntType::Sub}) {
    const std::uint32_t seed = role == PntType::Main ? 100 : 200;
    EXPECT_EQ(copy.GetCode(role), "");
    EXPECT_EQ(copy.GetXSectType(role), 0u);
    EXPECT_EQ(copy.GetXSectNameID(role), seed + 2);
    EXPECT_EQ(copy.GetXSectName(role), CString("name" + std::to_string(seed)));
    EXPECT_EQ(copy.GetDekiPairID(role), kNone);
    EXPECT_EQ(copy.IsConnectionAutoLinePrev(role), static_cast<std::int32_t>(seed + 4));
    EXPECT_EQ(copy.IsConnectionAutoLineNext(role), static_cast<std::int32_t>(seed + 5));
    EXPECT_THAT(Items(copy.Measure(role)), IsEmpty());
    EXPECT_EQ(copy.FormID(role), seed + 8);
  }
}

// --- classification ------------------------------------------------------------------------------------------------

ComponentType ComponentFrom(ElementType element, ComponentType current) {
  VornComposedPnt point;
  point.SetComponentType(ComponentType::BermCut);
  point.SetComponentType(current);
  point.ElmType(element);
  point.RegulateComponent(true, true);
  EXPECT_EQ(point.GetOldCmpType(), ComponentType::BermCut);
  EXPECT_EQ(point.ElmType(), element);
  return point.GetComponentType();
}

TEST(ComposedPnt, DerivesTheComponentTypeFromTheElementType) {
  constexpr auto kRoadbed = ComponentType::Roadbed;
  constexpr auto kSlope = ComponentType::Slope;
  constexpr auto kBerm = ComponentType::Berm;
  constexpr auto kOther = ComponentType::Other;
  const std::array<ComponentType, 23> expected = {
      kRoadbed, kOther, kRoadbed, kOther, kRoadbed, kOther, kRoadbed, kRoadbed, kOther, kOther,   kRoadbed, kRoadbed,
      kRoadbed, kSlope, kSlope,   kBerm,  kBerm,    kOther, kOther,   kRoadbed, kOther, kRoadbed, kRoadbed};
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(ComponentFrom(static_cast<ElementType>(i), ComponentType::SlopeCut), expected[i]) << i;
  }
}

TEST(ComposedPnt, LeavesTheComponentTypeAloneWithoutAnElementType) {
  EXPECT_EQ(ComponentFrom(ElementType::Unset, ComponentType::SlopeCut), ComponentType::SlopeCut);
  EXPECT_EQ(ComponentFrom(ElementType::Unset, ComponentType::Unset), ComponentType::Unset);
}

TEST(ComposedPnt, TakesAnUnknownElementTypeForAnotherComponent) {
  for (const int unknown : {-2, 23, 1000}) {
    EXPECT_EQ(ComponentFrom(static_cast<ElementType>(unknown), ComponentType::SlopeCut), ComponentType::Other);
  }
}

ElementType ElementFrom(ComponentType component, bool isFill) {
  VornComposedPnt point;
  point.SetComponentType(ComponentType::BermCut);
  point.SetComponentType(component);
  point.ElmType(ElementType::Pavement);
  point.RegulateComponent(false, isFill);
  EXPECT_EQ(point.GetOldCmpType(), ComponentType::BermCut);
  EXPECT_EQ(point.GetComponentType(), component);
  return point.ElmType();
}

TEST(ComposedPnt, DerivesTheElementTypeFromTheComponentType) {
  const auto expected = [](bool isFill) {
    return std::array<ElementType, 10>{ElementType::Carriageway,
                                       ElementType::Carriageway,
                                       ElementType::SlopeFill,
                                       ElementType::SlopeCut,
                                       ElementType::BermFill,
                                       ElementType::BermCut,
                                       ElementType::Other,
                                       ElementType::Carriageway,
                                       isFill ? ElementType::SlopeFill : ElementType::SlopeCut,
                                       isFill ? ElementType::BermFill : ElementType::BermCut};
  };
  for (const bool isFill : {false, true}) {
    for (std::size_t i = 0; i < 10; ++i) {
      EXPECT_EQ(ElementFrom(static_cast<ComponentType>(i), isFill), expected(isFill)[i]) << i;
    }
  }
}

TEST(ComposedPnt, LeavesTheElementTypeAloneWithoutAKnownComponentType) {
  for (const int unknown : {-2, -1, 10}) {
    EXPECT_EQ(ElementFrom(static_cast<ComponentType>(unknown), true), ElementType::Pavement);
  }
}

// --- the element's text --------------------------------------------------------------------------------------------

constexpr double kX = 1.23456789012;
constexpr double kY = 2.34567890123;

CString TextOf(DataType type, NurReal x = kX, NurReal y = kY) {
  return PointWith(VornLocation::Right, type, x, y).GetTextData();
}

TEST(ComposedPntText, HasThePlacesOfTheSlopeTypeInEdition20) {
  const EditionScope edition(VornSchema::Version20);
  VornComposedPnt point = PointWith(VornLocation::Right, DataType::WidthHeight, kX, kY);
  EXPECT_EQ(point.GetTextData(), "1.2346 2.346");
  point.SetSlopeType(SlopeType::Percent);
  EXPECT_EQ(point.GetTextData(), "1.2346 2.346");
  point.SetSlopeType(SlopeType::Rate);
  EXPECT_EQ(point.GetTextData(), "1.2346 2.3");
}

TEST(ComposedPntText, HasThePlacesOfTheDataTypeInLaterEditions) {
  for (const auto& [name, version, kind] : model_test::kLaterEditions) {
    const EditionScope edition(version, kind);
    EXPECT_EQ(TextOf(DataType::WidthHeight), "1.2346 2.3457") << name;
    EXPECT_EQ(TextOf(DataType::Percent), "1.2346 2.346") << name;
    EXPECT_EQ(TextOf(DataType::Rate), "1.2346 2.346") << name;
    EXPECT_EQ(TextOf(DataType::Unset), "1.234567890 2.345678901") << name;
    EXPECT_EQ(TextOf(static_cast<DataType>(3)), "1.234567890 2.345678901") << name;
  }
}

TEST(ComposedPntText, HasThePlacesOfAHeightWhereAValueIsOne) {
  // With the places of edition 2.0 still in force, heights have one place fewer than distances.
  EditionScope edition(VornSchema::Version20);
  VornSchema::Instance().SetVersion(VornSchema::Version41);
  EXPECT_EQ(TextOf(DataType::WidthHeight), "1.2346 2.346");
  EXPECT_EQ(TextOf(DataType::Percent), "1.2346 2.346");
  EXPECT_EQ(TextOf(DataType::Rate), "1.235 2.346");
}

TEST(ComposedPntText, RoundsHalfAwayFromZero) {
  EXPECT_EQ(TextOf(DataType::WidthHeight, 1.00005, -1.00005), "1.0001 -1.0001");
  EXPECT_EQ(TextOf(DataType::WidthHeight, 2.0, -0.00004), "2.0000 0.0000");
}

TEST(ComposedPntText, LeavesTheNumberOutWhenAValueIsUnset) {
  EXPECT_EQ(TextOf(DataType::WidthHeight, NurReal(), 2.0), " 2.0000");
  EXPECT_EQ(TextOf(DataType::WidthHeight, 1.0, NurReal()), "1.0000 ");
  EXPECT_EQ(TextOf(DataType::Unset, NurReal(), NurReal()), " ");
}

struct TextValue {
  const char* text;
  NurReal x;
  NurReal y;
};

TEST(ComposedPntText, GivesTheInputValues) {
  const std::vector<TextValue> texts = {
      {"1.5 -2.5", 1.5, -2.5},  {"1.5", 1.5, 8.0},        {"1.5 ", 1.5, 8.0},
      {"", 7.0, 8.0},           {" 2.5", NurReal(), 2.5}, {"1.5  2.5", 1.5, NurReal()},
      {"1.5 2.5 9", 1.5, 2.5},  {" ", NurReal(), 8.0},    {"abc 2.5", 0.0, 2.5},
      {"1.5 2.5x 9", 1.5, 2.5}, {"  2.5", NurReal(), 2.5}};
  for (const TextValue& row : texts) {
    VornComposedPnt point = PointWith(VornLocation::Right, DataType::WidthHeight, 7.0, 8.0);
    point.GetTextVal(row.text);
    EXPECT_EQ(point.GetX(), row.x) << row.text;
    EXPECT_EQ(point.GetY(), row.y) << row.text;
  }
}

// --- XML -----------------------------------------------------------------------------------------------------------

/// A point that has something to say in every attribute.
VornComposedPnt EloquentPoint(VornLocation side) {
  VornComposedPnt point = PointWith(side, DataType::Percent, kX, -1.55555);
  point.SetCode("R1");
  point.SetComponentType(ComponentType::SlopeFill);
  point.SetSeriesPnt(false);
  point.SetSlopeType(SlopeType::Rate);
  point.SetExistence(VORN_Existence::True);
  return point;
}

class ComposedPntInEarlyEdition : public model_test::InEdition {};
class ComposedPntInLaterEdition : public model_test::InEdition {};
class ComposedPntInEdition : public model_test::InEdition {};

INSTANTIATE_TEST_SUITE_P(, ComposedPntInEarlyEdition, testing::ValuesIn(model_test::kEarlyEditions),
                         model_test::InEdition::Name);
INSTANTIATE_TEST_SUITE_P(, ComposedPntInLaterEdition, testing::ValuesIn(model_test::kLaterEditions),
                         model_test::InEdition::Name);
INSTANTIATE_TEST_SUITE_P(, ComposedPntInEdition, testing::ValuesIn(model_test::kEditions), model_test::InEdition::Name);

TEST_P(ComposedPntInEarlyEdition, WritesTheSlopeType) {
  VornComposedPnt point = EloquentPoint(VornLocation::Right);
  EXPECT_EQ(WriteXml(point),
            "<tsf:ComposedPnt code=\"R1\" location=\"Right\" componentType=\"Slope(Fill)\" seriesPnt=\"false\""
            " slopeType=\"Rate\" existence=\"true\">1.2346 -1.6</tsf:ComposedPnt>\n");
}

TEST_P(ComposedPntInLaterEdition, WritesTheDataType) {
  VornComposedPnt point = EloquentPoint(VornLocation::Left);
  EXPECT_EQ(WriteXml(point),
            "<tsf:ComposedPnt code=\"R1\" location=\"Left\" componentType=\"Slope(Fill)\" seriesPnt=\"false\""
            " dataType=\"Percent\" existence=\"true\">1.2346 -1.556</tsf:ComposedPnt>\n");
}

TEST_P(ComposedPntInEarlyEdition, WritesACenterPointWithoutComponentTypeAndSlopeType) {
  VornComposedPnt point = EloquentPoint(VornLocation::Center);
  EXPECT_EQ(WriteXml(point),
            "<tsf:ComposedPnt code=\"R1\" location=\"Center\" seriesPnt=\"false\" existence=\"true\">1.2346 -1.6"
            "</tsf:ComposedPnt>\n");
}

TEST_P(ComposedPntInLaterEdition, WritesACenterPointWithoutComponentType) {
  VornComposedPnt point = EloquentPoint(VornLocation::Center);
  EXPECT_EQ(WriteXml(point),
            "<tsf:ComposedPnt code=\"R1\" location=\"Center\" seriesPnt=\"false\" dataType=\"Percent\""
            " existence=\"true\">1.2346 -1.556</tsf:ComposedPnt>\n");
}

TEST_P(ComposedPntInEarlyEdition, WritesUnsetTextsEmpty) {
  VornComposedPnt point;
  EXPECT_EQ(WriteXml(point),
            "<tsf:ComposedPnt code=\"\" location=\"\" componentType=\"\" slopeType=\"\">0.0000 0.000"
            "</tsf:ComposedPnt>\n");
}

TEST_P(ComposedPntInLaterEdition, WritesUnsetTextsEmptyButTheDataType) {
  VornComposedPnt point;
  EXPECT_EQ(WriteXml(point),
            "<tsf:ComposedPnt code=\"\" location=\"\" componentType=\"\" dataType=\"WidthHeight\">"
            "0.000000000 0.000000000</tsf:ComposedPnt>\n");
}

TEST_P(ComposedPntInEdition, WritesTheExistenceOnlyWhenItIsFalseOrTrue) {
  const std::array<const char*, 5> expected = {"", "", " existence=\"false\"", " existence=\"true\"", ""};
  VornComposedPnt point;
  for (int i = 0; i < 5; ++i) {
    point.SetExistence(static_cast<VORN_Existence>(i - 1));
    const std::string xml = WriteXml(point);
    const std::string text = expected[static_cast<std::size_t>(i)];
    EXPECT_EQ(xml.find("existence") != std::string::npos, !text.empty()) << xml;
    EXPECT_THAT(xml, testing::HasSubstr(text + ">"));
  }
}

TEST_P(ComposedPntInEdition, WritesTheMainCode) {
  VornComposedPnt point;
  point.SetCode("main", PntType::Main);
  point.SetCode("sub", PntType::Sub);
  EXPECT_THAT(WriteXml(point), testing::StartsWith("<tsf:ComposedPnt code=\"main\" "));
}

TEST_P(ComposedPntInEdition, WritesIntoTheNamespaceOfTheEdition) {
  VornComposedPnt point;
  const std::string uri = VornSchema::Instance().Tsf().GetString();
  EXPECT_THAT(model_test::WriteXmlWithNamespaces(point),
              testing::HasSubstr("<tsf:ComposedPnt xmlns=\"" + uri + "\" code"));
}

TEST_P(ComposedPntInEdition, StopsWritingAtTheFirstFailure) {
  VornComposedPnt eloquent = EloquentPoint(VornLocation::Right);
  EXPECT_THAT(test_support::WriteFailuresOverlooked(eloquent), IsEmpty());
}

TEST_P(ComposedPntInEdition, ReadsWhatItWrites) {
  VornComposedPnt written = EloquentPoint(VornLocation::Right);
  VornComposedPnt read;
  ASSERT_TRUE(ReadXml(read, WriteXml(written)));
  EXPECT_EQ(read.GetCode(), "R1");
  EXPECT_EQ(read.GetLocation(), VornLocation::Right);
  EXPECT_EQ(read.GetComponentType(), ComponentType::SlopeFill);
  EXPECT_FALSE(read.GetSeriesPnt());
  EXPECT_EQ(read.GetExistence(), VORN_Existence::True);
  EXPECT_EQ(read.GetX(), 1.2346);
  const bool ver2 = VornSchema::Instance().IsVer2();
  EXPECT_EQ(read.GetSlopeType(), ver2 ? SlopeType::Rate : SlopeType::Unset);
  EXPECT_EQ(read.GetDataType(), ver2 ? DataType::Unset : DataType::Percent);
  EXPECT_EQ(read.GetY(), ver2 ? -1.6 : -1.556);
  EXPECT_TRUE(read.IsEnable());
}

TEST_P(ComposedPntInLaterEdition, ReadsAnUnsetDataTypeBackAsWidthAndHeight) {
  VornComposedPnt written = PointOn(VornLocation::Right);
  VornComposedPnt read;
  ASSERT_TRUE(ReadXml(read, WriteXml(written)));
  EXPECT_EQ(read.GetDataType(), DataType::WidthHeight);
}

TEST_P(ComposedPntInEdition, ReadsUnsetInputValuesBackAsUnsetWhereTheirPlaceShows) {
  VornComposedPnt written = PointWith(VornLocation::Right, DataType::WidthHeight, NurReal(), 2.0);
  VornComposedPnt read;
  ASSERT_TRUE(ReadXml(read, WriteXml(written)));
  EXPECT_FALSE(read.GetX().IsSet());
  EXPECT_EQ(read.GetY(), 2.0);
}

TEST_P(ComposedPntInEdition, ReadsTheAttributesOfEveryEdition) {
  VornComposedPnt point;
  ASSERT_TRUE(ReadXml(point,
                      "<tsf:ComposedPnt dataType='Rate' slopeType='Percent' existence='false' componentType='Berm'"
                      " location='Left' seriesPnt='false' code='L1'>-2 1.5</tsf:ComposedPnt>"));
  EXPECT_EQ(point.GetCode(), "L1");
  EXPECT_EQ(point.GetLocation(), VornLocation::Left);
  EXPECT_EQ(point.GetComponentType(), ComponentType::Berm);
  EXPECT_EQ(point.GetDataType(), DataType::Rate);
  EXPECT_EQ(point.GetSlopeType(), SlopeType::Percent);
  EXPECT_EQ(point.GetExistence(), VORN_Existence::False);
  EXPECT_FALSE(point.GetSeriesPnt());
  EXPECT_EQ(point.GetX(), -2.0);
  EXPECT_EQ(point.GetY(), 1.5);
}

TEST(ComposedPntXml, ReadsTheCodeIntoTheMainRecordOnly) {
  VornComposedPnt point;
  point.SetCode("sub", PntType::Sub);
  ASSERT_TRUE(ReadXml(point, "<tsf:ComposedPnt code='main'/>"));
  EXPECT_EQ(point.GetCode(PntType::Main), "main");
  EXPECT_EQ(point.GetCode(PntType::Sub), "sub");
  EXPECT_EQ(point.GetLastCode(), "main");
}

TEST(ComposedPntXml, IsNotASeriesPointOnlyForTheExactTextFalse) {
  for (const char* text : {"FALSE", "False", "0", "", "true", "false "}) {
    VornComposedPnt point;
    point.SetSeriesPnt(false);
    ASSERT_TRUE(ReadXml(point, std::string("<tsf:ComposedPnt seriesPnt='") + text + "'/>"));
    EXPECT_TRUE(point.GetSeriesPnt()) << text;
  }
  VornComposedPnt point;
  ASSERT_TRUE(ReadXml(point, "<tsf:ComposedPnt seriesPnt='false'/>"));
  EXPECT_FALSE(point.GetSeriesPnt());
}

TEST(ComposedPntXml, IsNotEnabledWithoutAnExistenceEvenWithACode) {
  VornComposedPnt point;
  ASSERT_TRUE(ReadXml(point, "<tsf:ComposedPnt code='A'/>"));
  EXPECT_EQ(point.GetExistence(), VORN_Existence::Unset);
  EXPECT_FALSE(point.IsEnable());
  ASSERT_TRUE(ReadXml(point, "<tsf:ComposedPnt existence=''/>"));
  EXPECT_EQ(point.GetExistence(), VORN_Existence::Empty);
  EXPECT_TRUE(point.IsEnable());
}

TEST(ComposedPntXml, IgnoresTextsThatItDoesNotKnow) {
  VornComposedPnt point = EloquentPoint(VornLocation::Right);
  ASSERT_TRUE(ReadXml(point,
                      "<tsf:ComposedPnt location='right' existence='yes' componentType='slope' slopeType='bad'"
                      " dataType='bad' elementType='x' Code='y'/>"));
  EXPECT_EQ(point.GetLocation(), VornLocation::Unset);
  EXPECT_EQ(point.GetExistence(), VORN_Existence::Unset);
  EXPECT_EQ(point.GetComponentType(), ComponentType::Unset);
  EXPECT_EQ(point.GetSlopeType(), SlopeType::Unset);
  EXPECT_EQ(point.GetDataType(), DataType::Percent);
  EXPECT_EQ(point.GetCode(), "R1");
}

TEST(ComposedPntXml, KeepsWhatTheElementDoesNotName) {
  VornComposedPnt point = FilledPoint();
  ASSERT_TRUE(ReadXml(point, "<tsf:ComposedPnt/>"));
  ExpectFilled(point);
}

TEST(ComposedPntXml, LeavesTheComputedValuesAlone) {
  VornComposedPnt point;
  ASSERT_TRUE(ReadXml(point, "<tsf:ComposedPnt code='A' location='Right' dataType='Percent'>4 2</tsf:ComposedPnt>"));
  EXPECT_FALSE(point.GetCLDist().IsSet());
  EXPECT_FALSE(point.GetGh().IsSet());
  EXPECT_FALSE(point.GetRatio().IsSet());
  EXPECT_FALSE(point.GetPercent().IsSet());
}

TEST(ComposedPntXml, RefusesAnotherTagAndStaysAsItWas) {
  for (const char* tag : {"ComposedPnt", "tsf:composedPnt", "tsf:BuildForm"}) {
    VornComposedPnt point = FilledPoint();
    EXPECT_FALSE(ReadXml(point, "<" + std::string(tag) + " code='A' location='Left'>9 9</" + tag + ">"));
    ExpectFilled(point);
  }
}

}  // namespace
