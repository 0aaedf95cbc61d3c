#include "vorn/types/bld_name_map.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/archive/expected_bytes.h"
#include "tests/model/model_builders.h"
#include "vorn/platform/code_page_932.h"

namespace {

using archive_test::EmptyTable;
using archive_test::ExpectedBytes;
using archive_test::HasBytes;
using archive_test::TableOf;
using archive_test::Text;
using archive_test::U32;
using test_support::ArchiveRefusal;
using test_support::Bytes;
using test_support::LoadingArchive;
using test_support::Stored;
using test_support::TruncationOverlooked;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::string_view kFillWork = u8"盛土工"_cp932;
constexpr std::string_view kCutWork = u8"切土工"_cp932;
constexpr std::string_view kOtherWork = u8"その他"_cp932;
constexpr std::string_view kFullWidthKey = u8"ガＡ１"_cp932;
constexpr std::string_view kHalfWidthKey = u8"ｶﾞA1"_cp932;

static_assert(std::has_virtual_destructor_v<VornBldNameList>);
static_assert(std::has_virtual_destructor_v<VornBldNameMap>);
static_assert(std::is_nothrow_move_constructible_v<VornBldNameMap>);
static_assert(std::is_nothrow_move_assignable_v<VornBldNameMap>);

// A map that takes keys as they are: nobody may reach the registry as one.
using PlainMap = CMap<CString, VornBldNameList>;
static_assert(std::is_base_of_v<PlainMap, VornBldNameMap>);
static_assert(!std::is_convertible_v<VornBldNameMap&, PlainMap&>);
static_assert(!std::is_convertible_v<VornBldNameMap*, PlainMap*>);

VornBldNameList ListOf(std::initializer_list<const char*> names) {
  VornBldNameList list;
  for (const char* name : names) list.AddTail(VornBuildItem(name));
  return list;
}

std::vector<std::string> NamesOf(const VornBldNameList& list) {
  std::vector<std::string> names;
  for (const VornBuildItem& item : list) names.emplace_back(item.GetName().View());
  return names;
}

std::vector<std::string> NamesOf(VornBldNameMap& map, std::string_view key) {
  const VornBldNameList* list = map.Get(CString(key));
  return list == nullptr ? std::vector<std::string>{"(no list)"} : NamesOf(*list);
}

std::vector<std::string> KeysOf(const VornBldNameMap& map) {
  std::vector<std::string> keys;
  for (const auto& [key, list] : map) keys.emplace_back(key.View());
  return keys;
}

template <typename Record>
Bytes StoredRecord(Record record) {
  return Stored([&](CArchive& ar) { record.Serialize(ar); });
}

template <typename Record>
void Load(Record& record, const ExpectedBytes& bytes) {
  LoadingArchive ar(bytes.All());
  record.Serialize(*ar);
  EXPECT_EQ(ar->Remaining(), 0u);
}

// --- items -----------------------------------------------------------------------------------------------------------

TEST(BuildItem, StartsWithoutANameInItsColorAndUnused) {
  const VornBuildItem item;
  EXPECT_EQ(item.GetName(), "");
  EXPECT_EQ(item.GetColor(), 0xFF8000u);
  EXPECT_EQ(item.GetUsed(), 0);
}

TEST(BuildItem, TakesItsNameFromAText) {
  const VornBuildItem item("road");
  EXPECT_EQ(item.GetName(), "road");
  EXPECT_EQ(item.GetColor(), 0xFF8000u);
  EXPECT_EQ(item.GetUsed(), 0);
}

TEST(BuildItem, WithTheSameNameInAnotherColorIsNotEqual) {
  VornBuildItem other("road");
  EXPECT_TRUE(VornBuildItem("road") == other);
  other.SetColor(0xFF8001);
  EXPECT_FALSE(VornBuildItem("road") == other);
}

TEST(BuildItem, WithAnotherCaseIsNotEqual) { EXPECT_FALSE(VornBuildItem("road") == VornBuildItem("Road")); }

TEST(BuildItem, IsEqualWhetherUsedOrNot) {
  VornBuildItem used("road");
  used.SetUsed(1);
  EXPECT_TRUE(VornBuildItem("road") == used);
}

TEST(BuildItem, CopiesAllItsMembers) {
  VornBuildItem item("road");
  item.SetColor(7);
  item.SetUsed(8);
  const VornBuildItem copy(item);
  VornBuildItem assigned;
  assigned = item;
  for (const VornBuildItem& other : {copy, assigned}) {
    EXPECT_EQ(other.GetName(), "road");
    EXPECT_EQ(other.GetColor(), 7u);
    EXPECT_EQ(other.GetUsed(), 8);
  }
}

TEST(BuildItem, ArchivesATableItsNameAndItsColor) {
  VornBuildItem item("road");
  item.SetColor(0x11223344);
  item.SetUsed(9);
  EXPECT_TRUE(
      HasBytes(StoredRecord(item), {{"table", EmptyTable()}, {"name", Text("road")}, {"color", U32(0x11223344)}}));
}

TEST(BuildItem, ReadsNameAndColorAndNotWhetherItIsUsed) {
  VornBuildItem item("old");
  item.SetUsed(9);
  Load(item, {{"table", TableOf(3, 4)}, {"name", Text("road")}, {"color", U32(0x11223344)}});
  EXPECT_EQ(item.GetName(), "road");
  EXPECT_EQ(item.GetColor(), 0x11223344u);
  EXPECT_EQ(item.GetUsed(), 9);
}

// --- lists -----------------------------------------------------------------------------------------------------------

TEST(BldNameList, FindsNamesExactly) {
  const VornBldNameList list = ListOf({"a", "b"});
  EXPECT_TRUE(list.IsExist("a"));
  EXPECT_TRUE(list.IsExist("b"));
  EXPECT_FALSE(list.IsExist("A"));
  EXPECT_FALSE(list.IsExist(""));
  EXPECT_FALSE(VornBldNameList().IsExist("a"));
}

TEST(BldNameList, DoesNotNormaliseNames) {
  VornBldNameList list;
  VornBuildItem item;
  item.SetName(CString(kHalfWidthKey));
  list.AddTail(item);
  EXPECT_TRUE(list.IsExist(CString(kHalfWidthKey)));
  EXPECT_FALSE(list.IsExist(CString(kFullWidthKey)));
}

TEST(BldNameList, AssignmentReplacesTheListByACopy) {
  VornBldNameList list = ListOf({"old", "older"});
  const VornBldNameList other = ListOf({"a", "b", "c"});
  list = other;
  EXPECT_THAT(NamesOf(list), ElementsAre("a", "b", "c"));
  list.begin()->SetName("changed");
  EXPECT_THAT(NamesOf(other), ElementsAre("a", "b", "c"));
}

TEST(BldNameList, ArchivesATableACountAndItsItemsInOrder) {
  EXPECT_TRUE(HasBytes(StoredRecord(ListOf({"b", "a"})), {{"table", EmptyTable()},
                                                          {"count", U32(2)},
                                                          {"0.table", EmptyTable()},
                                                          {"0.name", Text("b")},
                                                          {"0.color", U32(0xFF8000)},
                                                          {"1.table", EmptyTable()},
                                                          {"1.name", Text("a")},
                                                          {"1.color", U32(0xFF8000)}}));
  EXPECT_TRUE(HasBytes(StoredRecord(VornBldNameList()), {{"table", EmptyTable()}, {"count", U32(0)}}));
}

TEST(BldNameList, ReadingAppendsInTheStoredOrder) {
  VornBldNameList list = ListOf({"first"});
  Load(list, {{"table", TableOf(1, 2)},
              {"count", U32(2)},
              {"0.table", EmptyTable()},
              {"0.name", Text("z")},
              {"0.color", U32(1)},
              {"1.table", EmptyTable()},
              {"1.name", Text("a")},
              {"1.color", U32(2)}});
  EXPECT_THAT(NamesOf(list), ElementsAre("first", "z", "a"));
}

TEST(BldNameList, StaysAsItWasWhenItsRecordIsTruncated) {
  VornBldNameList list = ListOf({"first"});
  const Bytes whole = StoredRecord(ListOf({"a", "b"}));
  LoadingArchive ar(Bytes(whole.begin(), whole.end() - 1));
  EXPECT_EQ(ArchiveRefusal([&] { list.Serialize(*ar); }), CArchiveException::endOfFile);
  EXPECT_THAT(NamesOf(list), ElementsAre("first"));
}

// --- used names ------------------------------------------------------------------------------------------------------

VornBuildForm FormOf(std::string_view type, std::string_view name) {
  VornBuildForm form = model_test::FormOf(name, {});
  form.SetXSectType(CString(type));
  return form;
}

/// Each section with one form of a type and a name.
Vorn_XSectionArray SectionsOf(std::initializer_list<std::pair<std::string_view, std::string_view>> forms) {
  Vorn_XSectionArray sections;
  for (const auto& [type, name] : forms) {
    VornXSection section;
    section.GetBuildFormArray().Add(FormOf(type, name));
    sections.Add(section);
  }
  return sections;
}

std::vector<int> UsedOf(const VornBldNameList& list) {
  std::vector<int> used;
  for (const VornBuildItem& item : list) used.push_back(item.GetUsed());
  return used;
}

TEST(BldNameList, MarksTheNamesThatAFormOfTheClassHas) {
  VornBldNameList list = ListOf({"a", "b", "c"});
  for (VornBuildItem& item : list) item.SetUsed(5);
  const Vorn_XSectionArray sections = SectionsOf({{kFillWork, "a"}, {kCutWork, "b"}, {kFillWork, "c"}});
  list.CheckUsedName(CString(kFillWork), sections);
  EXPECT_THAT(UsedOf(list), ElementsAre(1, 0, 1));
  list.CheckUsedName(CString(kCutWork), sections);
  EXPECT_THAT(UsedOf(list), ElementsAre(0, 1, 0));
  list.CheckUsedName(CString(kCutWork), Vorn_XSectionArray());
  EXPECT_THAT(UsedOf(list), ElementsAre(0, 0, 0));
}

TEST(BldNameList, MarksEachNameAsTheSectionsAnswerForIt) {
  Vorn_XSectionArray sections = SectionsOf({{kFillWork, "a"}, {kCutWork, "a"}, {kCutWork, "A"}, {"", "b"}, {"T", ""}});
  sections[0].GetBuildFormArray().Add(FormOf(kFillWork, "c"));
  for (const std::string_view key : {kFillWork, kCutWork, kOtherWork, std::string_view(), std::string_view("T")}) {
    VornBldNameList list = ListOf({"a", "A", "b", "c", "", "d", "a"});
    list.CheckUsedName(CString(key), sections);
    for (const VornBuildItem& item : list) {
      EXPECT_EQ(item.GetUsed(), sections.IsUsedBuildName(CString(key), item.GetName()) ? 1 : 0) << item.GetName();
    }
  }
}

// Not as the registry takes keys: it is the forms' own type that is asked for.
TEST(BldNameList, TakesTheKeyOfUsedNamesAsItIs) {
  VornBldNameList list = ListOf({"a"});
  const Vorn_XSectionArray halfWidth = SectionsOf({{kHalfWidthKey, "a"}});
  list.CheckUsedName(CString(kHalfWidthKey), halfWidth);
  EXPECT_THAT(UsedOf(list), ElementsAre(1));
  list.CheckUsedName(CString(kFullWidthKey), halfWidth);
  EXPECT_THAT(UsedOf(list), ElementsAre(0));
  list.CheckUsedName(CString(kHalfWidthKey), SectionsOf({{kFullWidthKey, "a"}}));
  EXPECT_THAT(UsedOf(list), ElementsAre(0));
}

// The registry derives a class for them, which they do not have themselves.
TEST(BldNameList, FindsNamesOfFormsWithoutATypeUnusedUnderADerivedClass) {
  constexpr std::string_view kFillName = u8"路体盛"_cp932;
  VornBldNameList list;
  VornBuildItem item;
  item.SetName(CString(kFillName));
  list.AddTail(item);
  const Vorn_XSectionArray sections = SectionsOf({{"", kFillName}});
  list.CheckUsedName(CString(kFillWork), sections);
  EXPECT_THAT(UsedOf(list), ElementsAre(0));
  list.CheckUsedName("", sections);
  EXPECT_THAT(UsedOf(list), ElementsAre(1));
}

TEST(BldNameList, TakesNamesOfUsedFormsAsTheyAre) {
  VornBldNameList list;
  VornBuildItem item;
  item.SetName(CString(kHalfWidthKey));
  list.AddTail(item);
  list.CheckUsedName(CString(kFillWork), SectionsOf({{kFillWork, kFullWidthKey}}));
  EXPECT_THAT(UsedOf(list), ElementsAre(0));
}

TEST(BldNameList, LosesTheMarksInTheArchive) {
  VornBldNameList list = ListOf({"a"});
  list.CheckUsedName(CString(kFillWork), SectionsOf({{kFillWork, "a"}}));
  ASSERT_THAT(UsedOf(list), ElementsAre(1));
  VornBldNameList loaded;
  LoadingArchive ar(StoredRecord(list));
  loaded.Serialize(*ar);
  EXPECT_THAT(NamesOf(loaded), ElementsAre("a"));
  EXPECT_THAT(UsedOf(loaded), ElementsAre(0));
}

// --- registry --------------------------------------------------------------------------------------------------------

TEST(BldNameMap, SetOfAHalfWidthKeyAndGetOfTheFullWidthOneReachTheSameList) {
  VornBldNameMap map;
  map.Set(CString(kHalfWidthKey), "a");
  EXPECT_THAT(NamesOf(map, kFullWidthKey), ElementsAre("a"));
  EXPECT_EQ(map.Get(CString(kFullWidthKey)), map.Get(CString(kHalfWidthKey)));
  EXPECT_THAT(KeysOf(map), ElementsAre(std::string(kFullWidthKey)));
}

TEST(BldNameMap, EveryOperationNormalisesItsKey) {
  VornBldNameMap map;
  map.SetAt(CString(kHalfWidthKey), ListOf({"a"}));
  EXPECT_TRUE(map.IsExist(CString(kFullWidthKey), "a"));
  EXPECT_TRUE(map.IsExist(CString(kHalfWidthKey), "a"));
  VornBldNameList list;
  EXPECT_NE(map.Lookup(CString(kFullWidthKey), list), 0);
  EXPECT_NE(map.Lookup(CString(kHalfWidthKey), list), 0);
  map.Set(CString(kFullWidthKey), "b");
  map.Set(CString(kHalfWidthKey), "c");
  map[CString(kFullWidthKey)].AddTail(VornBuildItem("d"));
  map[CString(kHalfWidthKey)].AddTail(VornBuildItem("e"));
  EXPECT_EQ(map.GetCount(), 1);
  EXPECT_THAT(NamesOf(map, kHalfWidthKey), ElementsAre("a", "b", "c", "d", "e"));
  const VornBldNameMap& constant = map;
  EXPECT_EQ(constant.Get(CString(kHalfWidthKey)), map.Get(CString(kFullWidthKey)));
  map.SetAt(CString(kHalfWidthKey), list);
  EXPECT_THAT(NamesOf(map, kFullWidthKey), ElementsAre("a"));
  EXPECT_THAT(KeysOf(map), ElementsAre(std::string(kFullWidthKey)));
  EXPECT_TRUE(map.RemoveKey(CString(kHalfWidthKey)));
  EXPECT_TRUE(map.IsEmpty());
}

TEST(BldNameMap, ANewListHasTheFullWidthKeyHoweverItIsMade) {
  VornBldNameMap map;
  map[CString(kHalfWidthKey)];
  EXPECT_THAT(KeysOf(map), ElementsAre(std::string(kFullWidthKey)));
  map.RemoveAll();
  map.SetAt(CString(kHalfWidthKey), VornBldNameList());
  EXPECT_THAT(KeysOf(map), ElementsAre(std::string(kFullWidthKey)));
}

TEST(BldNameMap, RemoveKeyRemovesAClassAndTellsWhetherItWasThere) {
  VornBldNameMap map;
  map.Set("1", "a");
  map.Set("2", "b");
  EXPECT_TRUE(map.RemoveKey("1"));
  EXPECT_FALSE(map.RemoveKey("1"));
  EXPECT_EQ(map.Get("1"), nullptr);
  EXPECT_THAT(NamesOf(map, "2"), ElementsAre("b"));
}

TEST(BldNameMap, GoesThroughTheKeysInTheOrderOfTheirUnsignedBytes) {
  constexpr std::string_view kFullA = u8"Ａ"_cp932;       // 82 60
  constexpr std::string_view kFullSmallA = u8"ａ"_cp932;  // 82 81
  VornBldNameMap map;
  for (const std::string_view key : {kCutWork, kFillWork, kFullSmallA, kOtherWork, kFullA, std::string_view("\t")}) {
    map.Set(CString(key), "a");
  }
  EXPECT_THAT(KeysOf(map), ElementsAre("\t", std::string(kFullA), std::string(kFullSmallA), std::string(kOtherWork),
                                       std::string(kFillWork), std::string(kCutWork)));
}

TEST(BldNameMap, SetAddsToAListThatIsEmpty) {
  VornBldNameMap map;
  map.SetAt("key", VornBldNameList());
  map.Set("key", "a");
  EXPECT_THAT(NamesOf(map, "key"), ElementsAre("a"));
}

TEST(BldNameMap, SetTakesANameThatIsInTheRegistryItself) {
  VornBldNameMap map;
  map.Set("1", "a");
  map.Set("2", map.Get("1")->begin()->GetName());
  map.Set("1", map.Get("2")->begin()->GetName());
  EXPECT_THAT(NamesOf(map, "1"), ElementsAre("a"));
  EXPECT_THAT(NamesOf(map, "2"), ElementsAre("a"));
}

TEST(BldNameMap, SetTwiceLeavesOneItem) {
  VornBldNameMap map;
  map.Set("key", "a");
  map.Set("key", "a");
  EXPECT_THAT(NamesOf(map, "key"), ElementsAre("a"));
}

TEST(BldNameMap, SetAddsAtTheEnd) {
  VornBldNameMap map;
  map.Set("key", "b");
  map.Set("key", "a");
  EXPECT_THAT(NamesOf(map, "key"), ElementsAre("b", "a"));
}

TEST(BldNameMap, SetMakesAnUnusedItemInTheDefaultColor) {
  VornBldNameMap map;
  map.Set("key", "a");
  const VornBuildItem& item = *map.Get("key")->begin();
  EXPECT_EQ(item.GetColor(), 0xFF8000u);
  EXPECT_EQ(item.GetUsed(), 0);
}

TEST(BldNameMap, SetLeavesAnItemThatIsThereAsItIs) {
  VornBldNameList list = ListOf({"a"});
  list.begin()->SetColor(7);
  list.begin()->SetUsed(1);
  VornBldNameMap map;
  map.SetAt("key", list);
  map.Set("key", "a");
  ASSERT_THAT(NamesOf(map, "key"), ElementsAre("a"));
  EXPECT_EQ(map.Get("key")->begin()->GetColor(), 7u);
  EXPECT_EQ(map.Get("key")->begin()->GetUsed(), 1);
}

TEST(BldNameMap, DoesNotNormaliseNames) {
  VornBldNameMap map;
  map.Set("key", CString(kHalfWidthKey));
  map.Set("key", CString(kFullWidthKey));
  EXPECT_EQ(map.Get("key")->GetCount(), 2);
}

TEST(BldNameMap, LookupOfAMissingKeyLeavesTheOutput) {
  const VornBldNameMap map;
  VornBldNameList list = ListOf({"kept"});
  EXPECT_EQ(map.Lookup("key", list), 0);
  EXPECT_THAT(NamesOf(list), ElementsAre("kept"));
}

TEST(BldNameMap, LookupCopiesTheList) {
  VornBldNameMap map;
  map.SetAt("key", ListOf({"a"}));
  VornBldNameList list = ListOf({"old"});
  EXPECT_NE(map.Lookup("key", list), 0);
  EXPECT_THAT(NamesOf(list), ElementsAre("a"));
  list.RemoveAll();
  EXPECT_THAT(NamesOf(map, "key"), ElementsAre("a"));
}

TEST(BldNameMap, GetOfAMissingKeyIsNullAndMakesNoList) {
  VornBldNameMap map;
  EXPECT_EQ(map.Get("key"), nullptr);
  EXPECT_FALSE(map.IsExist("key", "a"));
  EXPECT_TRUE(map.IsEmpty());
}

TEST(BldNameMap, GetReachesTheStoredList) {
  VornBldNameMap map;
  map.Set("key", "a");
  map.Get("key")->begin()->SetColor(7);
  EXPECT_EQ(map.Get("key")->begin()->GetColor(), 7u);
}

TEST(BldNameMap, IsExistLooksIntoTheListOfTheKeyOnly) {
  VornBldNameMap map;
  map.Set("key", "a");
  map.Set("other", "b");
  EXPECT_TRUE(map.IsExist("key", "a"));
  EXPECT_FALSE(map.IsExist("key", "b"));
  EXPECT_FALSE(map.IsExist("key", "A"));
}

TEST(BldNameMap, SetAtReplacesTheList) {
  VornBldNameMap map;
  VornBldNameList list = ListOf({"b", "c"});
  map.Set("key", "a");
  map.SetAt("key", list);
  list.RemoveAll();
  EXPECT_THAT(NamesOf(map, "key"), ElementsAre("b", "c"));
}

TEST(BldNameMap, SetAtTakesATemporaryListOverWithItsItems) {
  VornBldNameMap map;
  map.Set("key", "old");
  VornBldNameList list = ListOf({"a", "b"});
  const VornBuildItem* first = &*list.begin();
  map.SetAt("key", std::move(list));
  EXPECT_THAT(NamesOf(map, "key"), ElementsAre("a", "b"));
  EXPECT_EQ(&*map.Get("key")->begin(), first);
}

TEST(BldNameMap, AssignmentCopiesAllAssociations) {
  VornBldNameMap map;
  map.Set("old", "x");
  VornBldNameMap other;
  other.Set("1", "a");
  other.Set("2", "b");
  map = other;
  EXPECT_EQ(map.GetCount(), 2);
  EXPECT_EQ(map.Get("old"), nullptr);
  map.Set("1", "c");
  EXPECT_THAT(NamesOf(other, "1"), ElementsAre("a"));
}

// --- archive of the registry -----------------------------------------------------------------------------------------

TEST(BldNameMapArchive, IsATableACountAndTheKeysWithTheirLists) {
  VornBldNameMap map;
  map.Set(CString(kFillWork), "a");
  EXPECT_TRUE(HasBytes(StoredRecord(map), {{"table", EmptyTable()},
                                           {"count", U32(1)},
                                           {"key", Text(kFillWork)},
                                           {"list.table", EmptyTable()},
                                           {"list.count", U32(1)},
                                           {"item.table", EmptyTable()},
                                           {"item.name", Text("a")},
                                           {"item.color", U32(0xFF8000)}}));
}

ExpectedBytes EmptyListUnder(std::string_view key) {
  return {{"key", Text(key)}, {"list.table", EmptyTable()}, {"list.count", U32(0)}};
}

TEST(BldNameMapArchive, GoesThroughTheAssociationsInTheMapsOrder) {
  VornBldNameMap map;
  for (const char* key : {"c", "a", "b"}) map.SetAt(key, VornBldNameList());
  ExpectedBytes expected = {{"table", EmptyTable()}, {"count", U32(3)}};
  for (const std::string& key : KeysOf(map)) expected.Add({key, EmptyListUnder(key)});
  EXPECT_TRUE(HasBytes(StoredRecord(map), expected));
}

TEST(BldNameMapArchive, ReadingNormalisesTheKeys) {
  VornBldNameMap map;
  Load(map, {{"table", TableOf(1, 2)}, {"count", U32(1)}, {"0", EmptyListUnder(kHalfWidthKey)}});
  EXPECT_THAT(KeysOf(map), ElementsAre(std::string(kFullWidthKey)));
}

TEST(BldNameMapArchive, OfTwoKeysThatDifferInWidthTheLastOneStays) {
  VornBldNameMap map;
  Load(map, {{"table", EmptyTable()},
             {"count", U32(2)},
             {"key", Text(kFullWidthKey)},
             {"list.table", EmptyTable()},
             {"list.count", U32(1)},
             {"item.table", EmptyTable()},
             {"item.name", Text("a")},
             {"item.color", U32(1)},
             {"1", EmptyListUnder(kHalfWidthKey)}});
  EXPECT_THAT(NamesOf(map, kFullWidthKey), IsEmpty());
}

TEST(BldNameMapArchive, ReadingReplacesTheRegistry) {
  VornBldNameMap map;
  map.Set("old", "x");
  Load(map, {{"table", EmptyTable()}, {"count", U32(0)}});
  EXPECT_TRUE(map.IsEmpty());
}

TEST(BldNameMapArchive, IsInTheOrderOfTheUnsignedBytesOfItsKeys) {
  VornBldNameMap map;
  for (const std::string_view key : {kCutWork, kFillWork, kOtherWork, std::string_view("\t")}) {
    map.SetAt(CString(key), VornBldNameList());
  }
  EXPECT_TRUE(HasBytes(StoredRecord(map), {{"table", EmptyTable()},
                                           {"count", U32(4)},
                                           {"0", EmptyListUnder("\t")},
                                           {"1", EmptyListUnder(kOtherWork)},
                                           {"2", EmptyListUnder(kFillWork)},
                                           {"3", EmptyListUnder(kCutWork)}}));
}

TEST(BldNameMapArchive, ForgetsWhatLaterVersionsPutIntoItsTables) {
  VornBldNameMap map;
  Load(map, {{"table", TableOf(1, 2)},
             {"count", U32(1)},
             {"key", Text(kFillWork)},
             {"list.table", TableOf(3, 4)},
             {"list.count", U32(1)},
             {"item.table", TableOf(5, 6)},
             {"item.name", Text("a")},
             {"item.color", U32(7)}});
  EXPECT_THAT(NamesOf(map, kFillWork), ElementsAre("a"));
}

VornBldNameMap SmallRegistry() {
  VornBldNameMap map;
  map.Set(CString(kFillWork), "a");
  map.Set(CString(kFillWork), "b");
  map.Set(CString(kOtherWork), "c");
  return map;
}

TEST(BldNameMapArchive, ComesBackWithNamesAndColors) {
  VornBldNameMap map = SmallRegistry();
  map.Get(CString(kFillWork))->begin()->SetColor(5);
  map.Get(CString(kFillWork))->begin()->SetUsed(1);
  VornBldNameMap loaded;
  LoadingArchive ar(StoredRecord(map));
  loaded.Serialize(*ar);
  EXPECT_EQ(loaded.GetCount(), 2);
  EXPECT_THAT(NamesOf(loaded, kFillWork), ElementsAre("a", "b"));
  EXPECT_THAT(NamesOf(loaded, kOtherWork), ElementsAre("c"));
  EXPECT_EQ(loaded.Get(CString(kFillWork))->begin()->GetColor(), 5u);
  EXPECT_EQ(loaded.Get(CString(kFillWork))->begin()->GetUsed(), 0);
}

TEST(BldNameMapArchive, FindsTheEndWhereverItIsTruncated) {
  EXPECT_EQ(TruncationOverlooked(StoredRecord(SmallRegistry()),
                                 [](CArchive& ar) {
                                   VornBldNameMap map;
                                   map.Serialize(ar);
                                 }),
            -1);
}

TEST(BldNameMapArchive, LeavesTheRegistryAsItWasWhenItIsTruncated) {
  VornBldNameMap map;
  map.Set("old", "x");
  const Bytes whole = StoredRecord(SmallRegistry());
  for (std::size_t kept = 0; kept < whole.size(); ++kept) {
    LoadingArchive ar(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(kept)));
    ASSERT_EQ(ArchiveRefusal([&] { map.Serialize(*ar); }), CArchiveException::endOfFile) << kept;
    ASSERT_EQ(map.GetCount(), 1);
    ASSERT_THAT(NamesOf(map, "old"), ElementsAre("x"));
  }
}

TEST(BldNameMapArchive, RefusesCountsThatTheBytesCannotBack) {
  for (const ExpectedBytes& bytes :
       {ExpectedBytes{{"table", EmptyTable()}, {"count", U32(0xFFFFFFFF)}, {"0", EmptyListUnder("k")}},
        ExpectedBytes{{"table", EmptyTable()},
                      {"count", U32(1)},
                      {"key", Text("k")},
                      {"list.table", EmptyTable()},
                      {"list.count", U32(0xFFFFFFFF)}}}) {
    LoadingArchive ar(bytes.All());
    VornBldNameMap map;
    EXPECT_EQ(ArchiveRefusal([&] { map.Serialize(*ar); }), CArchiveException::endOfFile);
  }
}

/// Counts how often it is stored or loaded.
template <typename Record>
class Counting : public Record {
 public:
  void Serialize(CArchive& ar) override {
    ++transfers;
    Record::Serialize(ar);
  }
  int transfers = 0;
};

TEST(BldNameMapArchive, GoesThroughTheOverrideOfAHost) {
  Counting<VornBldNameMap> map;
  Counting<VornBldNameList> list;
  VornBldNameMap& plainMap = map;
  VornBldNameList& plainList = list;
  static_cast<void>(Stored([&](CArchive& ar) {
    plainMap.Serialize(ar);
    plainList.Serialize(ar);
  }));
  EXPECT_EQ(map.transfers, 1);
  EXPECT_EQ(list.transfers, 1);
}

// --- filling from the design data ------------------------------------------------------------------------------------

class BldNameMapInitiate : public testing::Test {
 protected:
  ~BldNameMapInitiate() override { VornBldNameMap::Instance().RemoveAll(); }

  static VornBldNameMap& InitiatedFrom(Vorn_XSectionArray sections) {
    VornBldNameMap::Instance().Initiate(&sections);
    return VornBldNameMap::Instance();
  }
};

TEST_F(BldNameMapInitiate, ThereIsOneRegistry) { EXPECT_EQ(&VornBldNameMap::Instance(), &VornBldNameMap::Instance()); }

TEST_F(BldNameMapInitiate, DerivesTheClassOfFormsWithoutATypeFromTheirNames) {
  constexpr std::string_view kFillName = u8"路体盛A"_cp932;
  constexpr std::string_view kCutName = u8"切B"_cp932;
  VornBldNameMap& map = InitiatedFrom(SectionsOf({{"", kFillName}, {"", kCutName}, {"", "C"}, {"", kFillName}}));
  EXPECT_EQ(map.GetCount(), 3);
  EXPECT_THAT(NamesOf(map, kFillWork), ElementsAre(std::string(kFillName)));
  EXPECT_THAT(NamesOf(map, kCutWork), ElementsAre(std::string(kCutName)));
  EXPECT_THAT(NamesOf(map, kOtherWork), ElementsAre("C"));
}

TEST_F(BldNameMapInitiate, CountsANameThatTellsBothAsFillWork) {
  constexpr std::string_view kBoth = u8"切盛"_cp932;
  VornBldNameMap& map = InitiatedFrom(SectionsOf({{"", kBoth}}));
  EXPECT_THAT(KeysOf(map), ElementsAre(std::string(kFillWork)));
}

// 削 tells cut work elsewhere; not here.
TEST_F(BldNameMapInitiate, TakesNoOtherCharacterForCutWork) {
  constexpr std::string_view kScraped = u8"掘削"_cp932;
  EXPECT_THAT(KeysOf(InitiatedFrom(SectionsOf({{"", kScraped}}))), ElementsAre(std::string(kOtherWork)));
}

// Bytes 90 B7 and 90 D8, as 盛 and 切 have them, but across two characters.
TEST_F(BldNameMapInitiate, FindsNoCharacterInTheBytesOfTwoOthers) {
  constexpr std::string_view kLikeFill = u8"＄ｷ"_cp932;
  constexpr std::string_view kLikeCut = u8"＄ﾘ"_cp932;
  static_assert(kLikeFill.substr(1) == u8"盛"_cp932 && kLikeCut.substr(1) == u8"切"_cp932);
  EXPECT_THAT(KeysOf(InitiatedFrom(SectionsOf({{"", kLikeFill}, {"", kLikeCut}}))),
              ElementsAre(std::string(kOtherWork)));
}

TEST_F(BldNameMapInitiate, PutsAnUnnamedFormWithTheOthers) {
  EXPECT_THAT(NamesOf(InitiatedFrom(SectionsOf({{"", ""}})), kOtherWork), ElementsAre(""));
}

TEST_F(BldNameMapInitiate, TakesTheTypeOfAFormForItsClassWhateverItsName) {
  constexpr std::string_view kFillName = u8"盛A"_cp932;
  VornBldNameMap& map = InitiatedFrom(SectionsOf({{kCutWork, kFillName}, {"T", "B"}}));
  constexpr std::string_view kFullWidthT = u8"Ｔ"_cp932;
  EXPECT_THAT(NamesOf(map, kCutWork), ElementsAre(std::string(kFillName)));
  EXPECT_THAT(NamesOf(map, kFullWidthT), ElementsAre("B"));
  EXPECT_EQ(map.GetCount(), 2);
}

TEST_F(BldNameMapInitiate, ListsEachNameOnceInAClassInTheOrderOfItsFirstOccurrence) {
  Vorn_XSectionArray sections;
  sections.SetSize(2);
  for (const char* name : {"z", "a", "z"}) sections[0].GetBuildFormArray().Add(FormOf(kFillWork, name));
  for (const char* name : {"m", "a"}) sections[1].GetBuildFormArray().Add(FormOf(kFillWork, name));
  sections[1].GetBuildFormArray().Add(FormOf(kCutWork, "z"));
  VornBldNameMap& map = InitiatedFrom(sections);
  EXPECT_THAT(NamesOf(map, kFillWork), ElementsAre("z", "a", "m"));
  EXPECT_THAT(NamesOf(map, kCutWork), ElementsAre("z"));
}

TEST_F(BldNameMapInitiate, ReplacesWhatTheRegistryHeld) {
  VornBldNameMap::Instance().Set("old", "x");
  EXPECT_TRUE(InitiatedFrom(Vorn_XSectionArray()).IsEmpty());
}

TEST_F(BldNameMapInitiate, WithoutDesignDataEmptiesTheRegistry) {
  VornBldNameMap::Instance().Set("old", "x");
  VornBldNameMap::Initiate(nullptr);
  EXPECT_TRUE(VornBldNameMap::Instance().IsEmpty());
}

TEST_F(BldNameMapInitiate, CountsTypesThatDifferInWidthAsOneClass) {
  VornBldNameMap& map = InitiatedFrom(
      SectionsOf({{kHalfWidthKey, "a"}, {kFullWidthKey, "b"}, {kHalfWidthKey, "b"}, {kFullWidthKey, "a"}}));
  EXPECT_THAT(KeysOf(map), ElementsAre(std::string(kFullWidthKey)));
  EXPECT_THAT(NamesOf(map, kFullWidthKey), ElementsAre("a", "b"));
}

TEST_F(BldNameMapInitiate, PutsDerivedAndGivenClassesOfOneNameTogether) {
  constexpr std::string_view kFillName = u8"盛A"_cp932;
  VornBldNameMap& map = InitiatedFrom(SectionsOf({{"", kFillName}, {kFillWork, "B"}, {kFillWork, kFillName}}));
  EXPECT_THAT(NamesOf(map, kFillWork), ElementsAre(std::string(kFillName), "B"));
}

TEST_F(BldNameMapInitiate, MakesUnusedItemsInTheDefaultColor) {
  const VornBuildItem item = *InitiatedFrom(SectionsOf({{kFillWork, "a"}})).Get(CString(kFillWork))->begin();
  EXPECT_EQ(item.GetColor(), 0xFF8000u);
  EXPECT_EQ(item.GetUsed(), 0);
}

TEST_F(BldNameMapInitiate, GivesWhatAddingNameByNameGives) {
  constexpr std::array kTypes = {kFillWork, kHalfWidthKey, kFullWidthKey, kCutWork};
  Vorn_XSectionArray sections;
  sections.SetSize(20);
  VornBldNameMap expected;
  for (int i = 0; i < 400; ++i) {
    const std::string name = "n" + std::to_string(i * 7 % 90);
    const CString type(kTypes[static_cast<std::size_t>(i * 5 % 11 % 4)]);
    sections[i / 20].GetBuildFormArray().Add(FormOf(type.View(), name));
    if (!expected.IsExist(type, CString(name))) expected.Set(type, CString(name));
  }
  VornBldNameMap& map = InitiatedFrom(sections);
  ASSERT_EQ(KeysOf(map), KeysOf(expected));
  for (const std::string& key : KeysOf(expected)) EXPECT_EQ(NamesOf(map, key), NamesOf(expected, key));
}

TEST_F(BldNameMapInitiate, FillsTheRegistryOfTheProcessAndNoOther) {
  VornBldNameMap own;
  own.Set("key", "x");
  Vorn_XSectionArray sections = SectionsOf({{kFillWork, "a"}});
  own.Initiate(&sections);
  EXPECT_EQ(own.GetCount(), 1);
  EXPECT_TRUE(own.IsExist("key", "x"));
  EXPECT_TRUE(VornBldNameMap::Instance().IsExist(CString(kFillWork), "a"));
}

}  // namespace
