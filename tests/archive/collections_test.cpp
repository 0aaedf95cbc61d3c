#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string_view>
#include <vector>

#include "tests/archive/full_records.h"
#include "tests/model/items.h"
#include "tests/model/model_builders.h"

namespace archive_test {
namespace {

using model_test::Items;
using model_test::PointOn;
using testing::ElementsAre;

// --- collections that number their elements --------------------------------------------------------------------------

class CollectionArchive : public InStoreVersion {};
IN_EVERY_STORE_VERSION(CollectionArchive);

/// A collection with the next serial 41 and one element.
template <typename Collection, typename Element>
Collection Numbered(Element element) {
  Collection collection;
  element.SetSerialID(40);
  collection.SetSize(1);  // so that a build form does not become the design surface
  collection.Add(element);
  collection.RemoveAt(0);
  return collection;
}

template <typename Collection>
ExpectedBytes CounterAndElement(Collection& collection, const Layout& at) {
  ExpectedBytes bytes = {{"next serial", U32(41), at.IsReadSince("05.00")}, {"count", U32(1)}};
  bytes.Add({"element", Encoded{"record", StoredAs(collection[0], at.version)}});
  return bytes;
}

TEST_P(CollectionArchive, WritesTheNextSerialOfFormsInEveryVersion) {
  auto forms = Numbered<Vorn_BuildFormArray>(VornBuildForm());
  EXPECT_TRUE(HasBytes(StoredAs(forms, GetParam()), CounterAndElement(forms, Written())));
}

TEST_P(CollectionArchive, WritesTheNextSerialOfPointsInEveryVersion) {
  auto points = Numbered<Vorn_ComposedPntArray>(VornComposedPnt());
  EXPECT_TRUE(HasBytes(StoredAs(points, GetParam()), CounterAndElement(points, Written())));
}

TEST_P(CollectionArchive, WritesTheNextSerialOfControlTargetsInEveryVersion) {
  auto targets = Numbered<Vorn_FormCtrlTargetArray>(VornFormCtrlTarget());
  EXPECT_TRUE(HasBytes(StoredAs(targets, GetParam()), CounterAndElement(targets, Written())));
}

/// What becomes of the next serial of a collection that is read, and of what the collection held.
template <typename Collection, typename Element>
std::uint32_t NextSerialRead(Element element, const Layout& at) {
  auto collection = Numbered<Collection>(std::move(element));
  const ExpectedBytes bytes = {{"next serial", U32(77), at.IsFrom("05.00")}, {"count", U32(0)}};
  ReadInto(collection, bytes.All(), at.version);
  EXPECT_EQ(collection.GetSize(), 0);
  return collection.GetNextSerialID();
}

TEST_P(CollectionArchive, ReadsTheNextSerialAndLeavesItAtZeroInOldData) {
  const std::uint32_t expected = Read().IsFrom("05.00") ? 77 : 0;
  EXPECT_EQ(NextSerialRead<Vorn_BuildFormArray>(VornBuildForm(), Read()), expected);
  EXPECT_EQ(NextSerialRead<Vorn_ComposedPntArray>(VornComposedPnt(), Read()), expected);
  EXPECT_EQ(NextSerialRead<Vorn_FormCtrlTargetArray>(VornFormCtrlTarget(), Read()), expected);
}

// The serials of elements that were read do not raise the counter: what is added afterwards does.
TEST_P(CollectionArchive, ReadingNumbersNothing) {
  const ExpectedBytes bytes = {
      {"next serial", U32(2), Read().IsFrom("05.00")}, {"count", U32(1)}, {"0", TargetBytes(Read(), 3)}};
  const auto targets = ReadBack<Vorn_FormCtrlTargetArray>(bytes.All(), GetParam());
  EXPECT_EQ(targets.GetNextSerialID(), Read().IsFrom("05.00") ? 2u : 0u);
  EXPECT_EQ(targets[0].GetSerialID(), Read().IsFrom("05.00") ? 385u : 0xFFFFFFFF);
}

// --- numbering after data without a next serial ----------------------------------------------------------------------

/// Store versions whose data tell neither serials nor the next one.
constexpr const char* kVersionsWithoutSerials[] = {"01.10", "02.50", "03.00", "03.50", "04.00", "04.99"};

template <typename Collection>
Collection ReadOld(const ExpectedBytes& elements, std::uint32_t count, std::string_view version) {
  ExpectedBytes bytes = {{"count", U32(count)}};
  bytes.Add({"elements", elements});
  return ReadBack<Collection>(bytes.All(), version);
}

Vorn_ComposedPntArray OldPoints(std::string_view version) {
  const Layout at{version, Way::Read};
  return ReadOld<Vorn_ComposedPntArray>({{"0", PointBytes(at, 3)}, {"1", PointBytes(at, 4)}}, 2, version);
}

Vorn_BuildFormArray OldForms(std::string_view version) {
  const Layout at{version, Way::Read};
  return ReadOld<Vorn_BuildFormArray>({{"0", FormBytes(at, 2)}, {"1", FormBytes(at, 3)}}, 2, version);
}

template <typename Collection>
std::vector<std::uint32_t> SerialsOf(const Collection& elements) {
  std::vector<std::uint32_t> serials;
  for (const auto& element : elements) serials.push_back(element.GetSerialID());
  return serials;
}

constexpr std::uint32_t kNone = 0xFFFFFFFF;

TEST(NumberingAfterOldData, ThePointsThatWereReadHaveNoSerialsAndTheFirstNewOneGetsZero) {
  for (const char* version : kVersionsWithoutSerials) {
    Vorn_ComposedPntArray points = OldPoints(version);
    points.Add(PointOn(VornLocation::Left));
    points.Add(PointOn(VornLocation::Right));
    EXPECT_THAT(SerialsOf(points), ElementsAre(kNone, kNone, 0u, 1u)) << version;
  }
}

TEST(NumberingAfterOldData, NoPointGetsTheSerialOfACentrePointThatCameBeforeIt) {
  for (const char* version : kVersionsWithoutSerials) {
    Vorn_ComposedPntArray points = OldPoints(version);
    points.Add(PointOn(VornLocation::Center));
    points.Add(PointOn(VornLocation::Left));
    points.Add(PointOn(VornLocation::Right));
    EXPECT_THAT(SerialsOf(points), ElementsAre(kNone, kNone, 0u, 1u, 2u)) << version;
  }
}

TEST(NumberingAfterOldData, NumberingThePointsOneByOneGivesEachItsOwnSerial) {
  for (const char* version : kVersionsWithoutSerials) {
    Vorn_ComposedPntArray points = OldPoints(version);
    points[0].SetLocation(VornLocation::Center);
    points.SetSerialID(0);
    points.SetSerialID(1);
    points.Add(PointOn(VornLocation::Left));
    EXPECT_THAT(SerialsOf(points), ElementsAre(0u, 1u, 2u)) << version;
  }
}

TEST(NumberingAfterOldData, NumberingAllPointsAtOnceBeginsAtZeroAndGoesOnBehindThem) {
  for (const char* version : kVersionsWithoutSerials) {
    Vorn_ComposedPntArray points = OldPoints(version);
    points[0].SetLocation(VornLocation::Center);
    points.RegulateSerialID();
    points.Add(PointOn(VornLocation::Left));
    EXPECT_THAT(SerialsOf(points), ElementsAre(0u, 1u, 2u)) << version;
  }
}

TEST(NumberingAfterOldData, APointThatBringsItsSerialDecidesTheNextOnes) {
  for (const char* version : kVersionsWithoutSerials) {
    Vorn_ComposedPntArray points = OldPoints(version);
    VornComposedPnt own = PointOn(VornLocation::Left);
    own.SetSerialID(7);
    points.Add(own);
    points.Add(PointOn(VornLocation::Left));
    EXPECT_THAT(SerialsOf(points), ElementsAre(kNone, kNone, 7u, 8u)) << version;
  }
}

// There is no design surface among the forms that were read: the new form takes that place.
TEST(NumberingAfterOldData, TheFormsThatWereReadHaveNoSerialsAndTheFirstNewOneGetsZero) {
  for (const char* version : kVersionsWithoutSerials) {
    Vorn_BuildFormArray forms = OldForms(version);
    forms.Add(VornBuildForm());
    forms.Add(VornBuildForm());
    EXPECT_THAT(SerialsOf(forms), ElementsAre(kNone, kNone, 0u, 1u)) << version;
    EXPECT_TRUE(forms[2].IsOrgSurface());
    EXPECT_FALSE(forms[3].IsOrgSurface());
  }
}

TEST(NumberingAfterOldData, NoFormBecomesASecondDesignSurface) {
  for (const char* version : kVersionsWithoutSerials) {
    Vorn_BuildFormArray forms = OldForms(version);
    forms.SetSerialID(0, true);
    forms.SetSerialID(1, true);
    forms.Add(VornBuildForm());
    EXPECT_THAT(SerialsOf(forms), ElementsAre(0u, 1u, 2u)) << version;
    EXPECT_FALSE(forms[2].IsOrgSurface());
  }
}

TEST(NumberingAfterOldData, ASectionThatHadNoFormsNumbersThoseThatComeAsANewOneDoes) {
  for (const char* version : kVersionsWithoutSerials) {
    auto forms = ReadOld<Vorn_BuildFormArray>({}, 0, version);
    for (int i = 0; i < 3; ++i) forms.Add(VornBuildForm());
    EXPECT_THAT(SerialsOf(forms), ElementsAre(0u, 1u, 2u)) << version;
  }
}

TEST(NumberingAfterOldData, AFormThatBringsItsSerialDecidesTheNextOnes) {
  for (const char* version : kVersionsWithoutSerials) {
    Vorn_BuildFormArray forms = OldForms(version);
    VornBuildForm own;
    own.SetSerialID(7);
    forms.Add(own);
    forms.Add(VornBuildForm());
    EXPECT_THAT(SerialsOf(forms), ElementsAre(kNone, kNone, 7u, 8u)) << version;
  }
}

// What an application wrote that had read old data: elements with serials behind a next serial of 0.
TEST(NumberingAfterANextSerialOfZero, SerialsThatWereReadDecideTheNextOnesOnceTheyAreNumbered) {
  const Layout at{"06.00", Way::Read};
  const ExpectedBytes pointBytes = {{"next serial", U32(0)}, {"count", U32(1)}, {"0", PointBytes(at, 3)}};
  auto points = ReadBack<Vorn_ComposedPntArray>(pointBytes.All(), "06.00");
  EXPECT_EQ(points.GetNextSerialID(), 0u);
  points.SetSerialID(0);
  points.Add(PointOn(VornLocation::Left));
  EXPECT_THAT(SerialsOf(points), ElementsAre(315u, 316u));

  const ExpectedBytes formBytes = {{"next serial", U32(0)}, {"count", U32(1)}, {"0", FormBytes(at, 2)}};
  auto forms = ReadBack<Vorn_BuildFormArray>(formBytes.All(), "06.00");
  EXPECT_EQ(forms.GetNextSerialID(), 0u);
  forms.SetSerialID(0, false);
  forms.Add(VornBuildForm());
  EXPECT_THAT(SerialsOf(forms), ElementsAre(291u, 292u));

  const ExpectedBytes targetBytes = {{"next serial", U32(0)}, {"count", U32(1)}, {"0", TargetBytes(at, 3)}};
  auto targets = ReadBack<Vorn_FormCtrlTargetArray>(targetBytes.All(), "06.00");
  targets.SetAt(0, VornFormCtrlTarget(targets[0]));
  targets.Add(VornFormCtrlTarget());
  EXPECT_THAT(SerialsOf(targets), ElementsAre(385u, 386u));
}

// --- collections that do not -----------------------------------------------------------------------------------------

TEST_P(CollectionArchive, OtherCollectionsAreACountAndTheElements) {
  VornFormCtrlTargetPntArray targetPoints;
  targetPoints.Add(FullTargetPoint(2));
  targetPoints.Add(FullTargetPoint(3));
  EXPECT_TRUE(
      HasBytes(StoredAs(targetPoints, GetParam()),
               {{"count", U32(2)}, {"0", TargetPointBytes(Written(), 2)}, {"1", TargetPointBytes(Written(), 3)}}));
  VornExistingBuildFormArray grounds;
  grounds.Add(FullGround(4));
  EXPECT_TRUE(HasBytes(StoredAs(grounds, GetParam()), {{"count", U32(1)}, {"0", GroundBytes(4)}}));
  Vorn_XSectionArray sections;
  sections.Add(FullSection(3));
  EXPECT_TRUE(HasBytes(StoredAs(sections, GetParam()), {{"count", U32(1)}, {"0", SectionBytes(Written(), 3)}}));
  VornFileInfoArray files;
  EXPECT_TRUE(HasBytes(StoredAs(files, GetParam()), {{"count", U32(0)}}));
}

TEST_P(CollectionArchive, ElementsGoByTheVersionOfTheirCollection) {
  const ExpectedBytes bytes = {
      {"count", U32(2)}, {"0", TargetPointBytes(Read(), 2)}, {"1", TargetPointBytes(Read(), 3)}};
  const auto points = ReadBack<VornFormCtrlTargetPntArray>(bytes.All(), GetParam());
  ASSERT_EQ(points.GetSize(), 2);
  ExpectTargetPoint(points[0], Read(), 2);
  ExpectTargetPoint(points[1], Read(), 3);
}

TEST_P(CollectionArchive, ReadingReplacesTheElements) {
  VornExistingBuildFormArray grounds;
  grounds.Add(FullGround(7));
  grounds.Add(FullGround(8));
  ReadInto(grounds, ExpectedBytes{{"count", U32(1)}, {"0", GroundBytes(4)}}.All(), GetParam());
  ASSERT_EQ(grounds.GetSize(), 1);
  ExpectGround(grounds[0], 4);
}

// An element that was there has its spare reals; one that is read has none.
TEST_P(CollectionArchive, ReadingMakesNewElements) {
  VornExistingBuildFormArray grounds;
  grounds.Add(FullGround(4));
  ReadInto(grounds, ExpectedBytes{{"count", U32(1)}, {"0", GroundBytes(4)}}.All(), GetParam());
  ASSERT_EQ(grounds[0].GetComposedPntArray().GetSize(), 2);
  EXPECT_FALSE(grounds[0].GetComposedPntArray()[0].GetSpare1().IsSet());
}

// Counts are believed as far as the shortest records can back them.
TEST_P(CollectionArchive, ReadsTheShortestRecordsThatThereAre) {
  const Layout at = Read();
  const ExpectedBytes form = {{"table", EmptyTable()},
                              {"name", Text("")},
                              {"type", Text(""), at.IsFrom("04.00")},
                              {"work code", I32(0), !at.IsFrom("04.00")},
                              {"export form", I32(1)},
                              {"five numbers", Encoded{"", Bytes(17)}, at.IsFrom("05.00")},
                              {"left", Encoded{"", Bytes(32)}, at.IsFrom("05.00")},
                              {"right", Encoded{"", Bytes(32)}, at.IsFrom("05.00")},
                              {"org surface", Bool(false), at.IsFrom("05.50")},
                              {"next point serial", U32(1), at.IsFrom("05.00")},
                              {"points", U32(0)},
                              {"next target serial", U32(0), at.IsFrom("05.00")},
                              {"targets", U32(0)}};
  const ExpectedBytes ground = {{"name", Text("")}, {"points", U32(0)}, {"table", EmptyTable()}};
  ExpectedBytes forms = {{"next serial", U32(1), at.IsFrom("05.00")}, {"count", U32(100)}};
  ExpectedBytes grounds = {{"count", U32(100)}};
  for (int i = 0; i < 100; ++i) {
    forms.Add({"form", form});
    grounds.Add({"ground", ground});
  }
  EXPECT_EQ(ReadBack<Vorn_BuildFormArray>(forms.All(), GetParam()).GetSize(), 100);
  EXPECT_EQ(ReadBack<VornExistingBuildFormArray>(grounds.All(), GetParam()).GetSize(), 100);
}

// --- plain arrays of 32-bit values -----------------------------------------------------------------------------------

template <typename Array>
Bytes StoredArray(Array array) {
  return test_support::Stored([&](CArchive& ar) { array.Serialize(ar); });
}

template <typename Array>
Array LoadedArray(const Bytes& bytes) {
  Array array;
  test_support::LoadingArchive ar(bytes);
  array.Serialize(*ar);
  EXPECT_EQ(ar->Remaining(), 0u);
  return array;
}

TEST(KelArraySerialArchive, IsACountAndItsValues) {
  VornUIntArray values;
  values.Add(1);
  values.Add(0xFFFFFFFE);
  EXPECT_EQ(StoredArray(values), (Bytes{2, 0, 0, 0, 1, 0, 0, 0, 0xFE, 0xFF, 0xFF, 0xFF}));
  EXPECT_THAT(Items(LoadedArray<VornUIntArray>(StoredArray(values))), ElementsAre(1u, 0xFFFFFFFEu));
}

TEST(KelArraySerialArchive, TakesSignedValues) {
  KelArraySerial<int> values;
  values.Add(-2);
  EXPECT_EQ(StoredArray(values), (Bytes{1, 0, 0, 0, 0xFE, 0xFF, 0xFF, 0xFF}));
  EXPECT_THAT(Items(LoadedArray<KelArraySerial<int>>(StoredArray(values))), ElementsAre(-2));
}

TEST(KelArraySerialArchive, OfNoValuesIsItsCount) {
  EXPECT_EQ(StoredArray(VornUIntArray()), (Bytes{0, 0, 0, 0}));
  EXPECT_TRUE(LoadedArray<VornUIntArray>({0, 0, 0, 0}).IsEmpty());
}

TEST(KelArraySerialArchive, ReadingReplacesWhatItHeld) {
  VornUIntArray values;
  for (std::uint32_t i = 0; i < 20; ++i) values.Add(i);
  test_support::LoadingArchive ar({1, 0, 0, 0, 9, 0, 0, 0});
  values.Serialize(*ar);
  EXPECT_THAT(Items(values), ElementsAre(9u));
}

TEST(KelArraySerialArchive, KeepsManyValuesInOrder) {
  VornUIntArray values;
  for (std::uint32_t i = 0; i < 100'000; ++i) values.Add(i * 7);
  EXPECT_EQ(Items(LoadedArray<VornUIntArray>(StoredArray(values))), Items(values));
}

TEST(KelArraySerialArchive, RefusesACountThatTheBytesCannotBack) {
  for (const std::uint32_t count : {2u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
    test_support::LoadingArchive ar(ExpectedBytes({{"count", U32(count)}, {"0", U32(1)}}).All());
    VornUIntArray values;
    EXPECT_EQ(test_support::ArchiveRefusal([&] { values.Serialize(*ar); }), CArchiveException::endOfFile);
    EXPECT_EQ(values.GetSize(), 0);
  }
}

TEST(KelArraySerialArchive, FindsTheEndWhereverItIsTruncated) {
  VornUIntArray values;
  for (std::uint32_t i = 0; i < 9; ++i) values.Add(i);
  EXPECT_EQ(test_support::TruncationOverlooked(StoredArray(values),
                                               [](CArchive& ar) {
                                                 VornUIntArray loaded;
                                                 loaded.Serialize(ar);
                                               }),
            -1);
}

}  // namespace
}  // namespace archive_test
