#include "vorn/types/type_manager.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/xml_tree.h"
#include "vorn/platform/code_page_932.h"

namespace {

using WorkType = VornStructureType::Type;
using Flags = std::array<std::uint8_t, 8>;
using test_support::EditionScope;

constexpr Flags kNoFlags{};
constexpr Flags kByte6 = {1, 1, 1, 0, 0, 1, 0, 0};
constexpr Flags kByte7 = {1, 1, 1, 0, 0, 0, 1, 0};
constexpr Flags kBase = {1, 1, 1, 0, 0, 0, 0, 0};

constexpr std::string_view kReferenceSurface = u8"基準面"_cp932;
constexpr std::string_view kUnknown = u8"不明"_cp932;

struct Form {
  std::string_view name;
  Flags flags;

  friend bool operator==(const Form& a, const Form& b) { return a.name == b.name && a.flags == b.flags; }
  friend void PrintTo(const Form& form, std::ostream* out) {
    *out << testing::PrintToString(form.name) << ' ' << testing::PrintToString(form.flags);
  }
};
using Forms = std::vector<Form>;

constexpr Form kRoad[] = {{u8"路体盛土工"_cp932, kByte6}, {u8"路床盛土工"_cp932, kByte6}, {u8"掘削工"_cp932, kByte6}};
constexpr Form kRiver[] = {{u8"盛土工"_cp932, kByte6}, {u8"掘削工"_cp932, kByte6}};
constexpr Form kOther[] = {{u8"その他"_cp932, kNoFlags}, {u8"基準面"_cp932, kNoFlags}};
constexpr Form kEdition20[] = {{u8"盛土工"_cp932, kByte7}, {u8"切土工"_cp932, kByte7}};

template <std::size_t kSize>
Forms Of(const Form (&forms)[kSize]) {
  return Forms(std::begin(forms), std::end(forms));
}

Forms operator+(Forms a, const Forms& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

Form Of(const VornFormAttr& attr) { return {attr.name, attr.flags}; }

Forms Of(const VornTypeManager::List& list) {
  Forms forms;
  for (const VornFormAttr& attr : list) forms.push_back(Of(attr));
  return forms;
}

/// The forms of a work type.
Forms FormsOf(int type, bool includeOther) {
  VornTypeManager::List list;
  list.Add(VornFormAttr{"stale", kBase});
  VornTypeManager().Type(static_cast<WorkType>(type), list, includeOther);
  return Of(list);
}

struct Found {
  bool found;
  Form form;

  friend bool operator==(const Found& a, const Found& b) { return a.found == b.found && a.form == b.form; }
  friend void PrintTo(const Found& result, std::ostream* out) {
    *out << (result.found ? "found " : "not found ");
    PrintTo(result.form, out);
  }
};

constexpr Found kNotFound = {false, {kUnknown, kNoFlags}};

Found Find(int type, std::string_view name, bool includeOther, bool allowBase) {
  VornFormAttr attr{"stale", {9, 9, 9, 9, 9, 9, 9, 9}};
  const bool found = VornTypeManager().Find(attr, static_cast<WorkType>(type), CString(name), includeOther, allowBase);
  return {found, Of(attr)};
}

Found Find(std::string_view name) {
  VornFormAttr attr{"stale", {9, 9, 9, 9, 9, 9, 9, 9}};
  const bool found = VornTypeManager().Find(attr, CString(name));
  return {found, Of(attr)};
}

struct Edition {
  VornSchema::Version version;
  int kind;
};
constexpr Edition kEarlyEditions[] = {{VornSchema::Version20, VornSchema::KindTsf},
                                      {VornSchema::VersionUnknown, VornSchema::KindTsf}};
constexpr Edition kLaterEditions[] = {{VornSchema::Version40, VornSchema::KindTsf},
                                      {VornSchema::Version41, VornSchema::KindTsf},
                                      {VornSchema::Version41, VornSchema::KindMaff}};

class TypeManagerTest : public testing::Test {
 protected:
  void Select(const Edition& edition) { m_edition.Select(edition.version, edition.kind); }

  EditionScope m_edition{VornSchema::Version41};
};

// --- the attribute record --------------------------------------------------------------------------------------------

TEST_F(TypeManagerTest, AFormIsANameAndEightFlagBytesBehindIt) {
  const VornFormAttr attr;
  EXPECT_STREQ(attr.name, "");
  EXPECT_EQ(attr.flags, kNoFlags);
  EXPECT_EQ(sizeof(VornFormAttr), sizeof(const char*) + 8);

  const VornFormAttr numbered{"name", {1, 2, 3, 4, 5, 6, 7, 8}};
  unsigned char bytes[sizeof numbered];
  std::memcpy(bytes, &numbered, sizeof numbered);
  for (std::size_t i = 0; i < 8; ++i) EXPECT_EQ(bytes[sizeof(const char*) + i], i + 1);
}

// --- tables ----------------------------------------------------------------------------------------------------------

TEST_F(TypeManagerTest, AppendsEachTableInOrderInEveryEdition) {
  for (const Edition& edition : {kEarlyEditions[0], kLaterEditions[0], kLaterEditions[1], kLaterEditions[2]}) {
    Select(edition);
    VornTypeManager::List list;
    const VornTypeManager manager;
    manager.Other(list);
    EXPECT_EQ(Of(list), Of(kOther));
    manager.River(list);
    EXPECT_EQ(Of(list), Of(kOther) + Of(kRiver));
    manager.Road(list);
    EXPECT_EQ(Of(list), Of(kOther) + Of(kRiver) + Of(kRoad));
  }
}

TEST_F(TypeManagerTest, ListsTheFormsOfEachTypeFromEdition40On) {
  for (const Edition& edition : kLaterEditions) {
    Select(edition);
    EXPECT_EQ(FormsOf(0, false), Of(kRoad));
    EXPECT_EQ(FormsOf(1, false), Of(kRiver));
    EXPECT_EQ(FormsOf(5, false), Of(kOther));
    for (const int type : {-1, 2, 3, 4, 6, 7, 8, 9}) EXPECT_EQ(FormsOf(type, false), Forms()) << type;
  }
}

TEST_F(TypeManagerTest, AddsTheOtherFormsToAnyTypeOnDemandButNeverTwice) {
  for (const Edition& edition : kLaterEditions) {
    Select(edition);
    EXPECT_EQ(FormsOf(0, true), Of(kRoad) + Of(kOther));
    EXPECT_EQ(FormsOf(1, true), Of(kRiver) + Of(kOther));
    for (const int type : {-1, 2, 3, 4, 5, 6, 7, 8, 9}) EXPECT_EQ(FormsOf(type, true), Of(kOther)) << type;
  }
}

TEST_F(TypeManagerTest, ListsFillAndCutForRoadAndRiverEarthworkInEdition20) {
  for (const Edition& edition : kEarlyEditions) {
    Select(edition);
    for (const int type : {0, 1}) EXPECT_EQ(FormsOf(type, false), Of(kEdition20)) << type;
    for (const int type : {-1, 2, 3, 4, 5, 6, 7, 8, 9}) EXPECT_EQ(FormsOf(type, false), Forms()) << type;
  }
}

TEST_F(TypeManagerTest, NeverAddsTheOtherFormsInEdition20) {
  for (const Edition& edition : kEarlyEditions) {
    Select(edition);
    for (const int type : {0, 1}) EXPECT_EQ(FormsOf(type, true), Of(kEdition20)) << type;
    for (const int type : {-1, 2, 5, 9}) EXPECT_EQ(FormsOf(type, true), Forms()) << type;
  }
}

TEST_F(TypeManagerTest, SetsFlagByteSevenInsteadOfSixInEdition20) {
  Select(kEarlyEditions[0]);
  EXPECT_EQ(Find(1, u8"盛土工"_cp932, false, false).form.flags, kByte7);
  Select(kLaterEditions[0]);
  EXPECT_EQ(Find(1, u8"盛土工"_cp932, false, false).form.flags, kByte6);
}

// --- finding in a type -----------------------------------------------------------------------------------------------

TEST_F(TypeManagerTest, FindsEveryFormOfAType) {
  for (const Edition& edition : kLaterEditions) {
    Select(edition);
    for (const Form& form : kRoad) EXPECT_EQ(Find(0, form.name, false, false), (Found{true, form}));
    for (const Form& form : kRiver) EXPECT_EQ(Find(1, form.name, false, false), (Found{true, form}));
    for (const Form& form : kOther) EXPECT_EQ(Find(5, form.name, false, false), (Found{true, form}));
  }
  for (const Edition& edition : kEarlyEditions) {
    Select(edition);
    for (const Form& form : kEdition20) {
      for (const int type : {0, 1}) EXPECT_EQ(Find(type, form.name, false, false), (Found{true, form}));
    }
  }
}

TEST_F(TypeManagerTest, FindsNoFormOfAnotherType) {
  EXPECT_EQ(Find(0, u8"盛土工"_cp932, true, true), kNotFound);
  EXPECT_EQ(Find(1, u8"路体盛土工"_cp932, true, true), kNotFound);
  EXPECT_EQ(Find(5, u8"掘削工"_cp932, true, true), kNotFound);
  EXPECT_EQ(Find(0, u8"切土工"_cp932, true, true), kNotFound);
}

TEST_F(TypeManagerTest, KnowsSubgradeFillFromEdition40On) {
  for (const Edition& edition : kLaterEditions) {
    Select(edition);
    EXPECT_TRUE(Find(0, u8"路床盛土工"_cp932, false, false).found);
  }
  for (const Edition& edition : kEarlyEditions) {
    Select(edition);
    EXPECT_EQ(Find(0, u8"路床盛土工"_cp932, false, false), kNotFound);
  }
}

TEST_F(TypeManagerTest, FindsOtherFormsOnlyOnDemand) {
  EXPECT_EQ(Find(0, u8"その他"_cp932, true, false), (Found{true, kOther[0]}));
  EXPECT_EQ(Find(0, u8"その他"_cp932, false, false), kNotFound);
  Select(kEarlyEditions[0]);
  EXPECT_EQ(Find(0, u8"その他"_cp932, true, false), kNotFound);
}

TEST_F(TypeManagerTest, ComparesNamesExactly) {
  for (const std::string_view name : {std::string_view(), u8"掘削"_cp932, u8"掘削工 "_cp932, u8" 掘削工"_cp932,
                                      u8"掘削工工"_cp932, std::string_view("?")}) {
    EXPECT_EQ(Find(0, name, true, true), kNotFound);
  }
}

TEST_F(TypeManagerTest, MatchesHalfWidthAndFullWidthNamesBothWays) {
  VornTypeManager::List list;
  list.Add(VornFormAttr{u8"セメント"_cp932.data(), kByte6});
  list.Add(VornFormAttr{u8"ｱｽﾌｧﾙﾄA"_cp932.data(), kByte7});
  for (const std::string_view name : {u8"セメント"_cp932, u8"ｾﾒﾝﾄ"_cp932, u8"ｾメﾝト"_cp932}) {
    EXPECT_EQ(VornTypeManager::FindIn(list, CString(name)), &list[0]);
  }
  for (const std::string_view name : {u8"アスファルトＡ"_cp932, u8"ｱｽﾌｧﾙﾄA"_cp932, u8"アスファルトA"_cp932}) {
    EXPECT_EQ(VornTypeManager::FindIn(list, CString(name)), &list[1]);
  }
  EXPECT_EQ(VornTypeManager::FindIn(list, CString(u8"せめんと"_cp932)), nullptr);
  EXPECT_EQ(VornTypeManager::FindIn(list, CString(u8"ｱｽﾌｧﾙﾄa"_cp932)), nullptr);
}

TEST_F(TypeManagerTest, FindsTheFirstOfFormsWithEqualNames) {
  VornTypeManager::List list;
  list.Add(VornFormAttr{"A", kByte6});
  list.Add(VornFormAttr{u8"Ａ"_cp932.data(), kByte7});
  EXPECT_EQ(VornTypeManager::FindIn(list, CString(u8"Ａ"_cp932)), &list[0]);
  EXPECT_EQ(VornTypeManager::FindIn({}, "A"), nullptr);
}

TEST_F(TypeManagerTest, KnowsTheReferenceSurfaceInEveryTypeIfAllowed) {
  for (const int type : {-1, 0, 1, 2, 3, 4, 6, 7, 8, 9}) {
    EXPECT_EQ(Find(type, kReferenceSurface, false, true), (Found{true, {kReferenceSurface, kBase}})) << type;
    EXPECT_EQ(Find(type, kReferenceSurface, false, false), kNotFound) << type;
  }
}

TEST_F(TypeManagerTest, TakesTheReferenceSurfaceWithoutFlagsWhereTheListHoldsIt) {
  for (const bool allowBase : {false, true}) {
    EXPECT_EQ(Find(5, kReferenceSurface, false, allowBase), (Found{true, {kReferenceSurface, kNoFlags}}));
    EXPECT_EQ(Find(2, kReferenceSurface, true, allowBase), (Found{true, {kReferenceSurface, kNoFlags}}));
  }
}

TEST_F(TypeManagerTest, KnowsTheReferenceSurfaceInEdition20OnlyByItsRule) {
  for (const Edition& edition : kEarlyEditions) {
    Select(edition);
    for (const int type : {0, 1, 2, 5}) {
      EXPECT_EQ(Find(type, kReferenceSurface, true, true), (Found{true, {kReferenceSurface, kBase}})) << type;
      EXPECT_EQ(Find(type, kReferenceSurface, true, false), kNotFound) << type;
    }
  }
}

// --- finding anywhere ------------------------------------------------------------------------------------------------

TEST_F(TypeManagerTest, FindsFormsOfAllTypesInOrder) {
  for (const Edition& edition : kLaterEditions) {
    Select(edition);
    for (const Form& form : kRoad) EXPECT_EQ(Find(form.name), (Found{true, form}));
    for (const Form& form : kRiver) EXPECT_EQ(Find(form.name), (Found{true, form}));
    for (const Form& form : kOther) EXPECT_EQ(Find(form.name), (Found{true, form}));
    EXPECT_EQ(Find(u8"切土工"_cp932), kNotFound);
  }
}

TEST_F(TypeManagerTest, FindsFillCutAndTheReferenceSurfaceAnywhereInEdition20) {
  for (const Edition& edition : kEarlyEditions) {
    Select(edition);
    for (const Form& form : kEdition20) EXPECT_EQ(Find(form.name), (Found{true, form}));
    EXPECT_EQ(Find(kReferenceSurface), (Found{true, {kReferenceSurface, kBase}}));
    for (const std::string_view name : {u8"路体盛土工"_cp932, u8"掘削工"_cp932, u8"その他"_cp932, kUnknown}) {
      EXPECT_EQ(Find(name), kNotFound);
    }
  }
}

TEST_F(TypeManagerTest, ReportsWhatItFindsNowhereAsUnknown) {
  EXPECT_EQ(Find(""), kNotFound);
  EXPECT_EQ(Find("no form"), kNotFound);
  EXPECT_EQ(Find(kUnknown), kNotFound);
}

TEST_F(TypeManagerTest, CopiesNothing) {
  VornTypeManager manager;
  const VornTypeManager other;
  manager = other;
  VornTypeManager::List list;
  manager.Road(list);
  EXPECT_EQ(Of(list), Of(kRoad));
}

}  // namespace
