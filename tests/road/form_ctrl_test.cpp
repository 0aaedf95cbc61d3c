#include "vorn/road/form_ctrl.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/road/full_road_records.h"
#include "tests/support/settings.h"
#include "vorn/platform/code_page_932.h"

namespace road_test {

VornFormCtrl FullFormCtrl() {
  VornFormCtrl formCtrl;
  for (int i = 0; i < 10; ++i) formCtrl.GetNames()[static_cast<std::size_t>(i)] = Numbered("name", i);
  for (int i = 0; i < 4; ++i) {
    formCtrl.GetMarks()[static_cast<std::size_t>(i)] = static_cast<VornFormCtrl::CtrlMarkType>(21 + i);
  }
  formCtrl.SetValue(0.75);
  return formCtrl;
}

ExpectedBytes FormCtrlBytes(const Layout& at) {
  const bool isNew = at.IsReadSince("02.50");
  return {
      {"empty 1", Text("")},
      {"empty 2", Text("")},
      {"names[0]", Text("name0")},
      {"names[1]", Text("name1")},
      {"names[2]", Text("name2")},
      {"names[3]", Text("name3")},
      {"names[4]", Text("name4")},
      {"names[5]", Text("name5")},
      {"names[6]", Text("name6")},
      {"names[7]", Text("name7")},
      {"names[8]", Text("name8"), isNew},
      {"names[9]", Text("name9"), isNew},
      {"marks[0]", I32(21)},
      {"marks[1]", I32(22)},
      {"marks[2]", I32(23), isNew},
      {"marks[3]", I32(24), isNew},
      {"value", Real(0.75)},
  };
}

void ExpectFormCtrl(const VornFormCtrl& formCtrl, const Layout& at) {
  const bool isNew = at.IsFrom("02.50");
  EXPECT_EQ(formCtrl.GetNames(), isNew ? FullFormCtrl().GetNames() : VornFormCtrl().GetNames());
  EXPECT_EQ(static_cast<int>(formCtrl.GetMarks()[0]), 21);
  EXPECT_EQ(static_cast<int>(formCtrl.GetMarks()[1]), 22);
  EXPECT_EQ(static_cast<int>(formCtrl.GetMarks()[2]), isNew ? 23 : 0);
  EXPECT_EQ(static_cast<int>(formCtrl.GetMarks()[3]), isNew ? 24 : 0);
  EXPECT_EQ(formCtrl.GetValue(), 0.75);
}

namespace {

using CtrlMarkType = VornFormCtrl::CtrlMarkType;

/// By index: what a new object has.
constexpr std::array kInitialNames = {
    u8"道路中心"_cp932, u8"道路(左)"_cp932, u8"道路(右)"_cp932, u8"法面(左)"_cp932,   u8"法面(右)"_cp932,
    u8"道路面"_cp932,   u8"小段(左)"_cp932, u8"小段(右)"_cp932, u8"その他(左)"_cp932, u8"その他(右)"_cp932,
};

struct Setting {
  const char* name;
  std::string_view defaultText;
};

/// By index: names in the settings, and what a missing one gives.
constexpr std::array kNameSettings = {
    Setting{"basec", u8"道路中心"_cp932},  Setting{"basel", u8"道路端左"_cp932}, Setting{"baser", u8"道路端右"_cp932},
    Setting{"noril", u8"左法面"_cp932},    Setting{"norir", u8"右法面"_cp932},   Setting{"widthrd", u8"道路面"_cp932},
    Setting{"widthl", u8"左小段"_cp932},   Setting{"widthr", u8"右小段"_cp932},  Setting{"otherl", u8"左その他"_cp932},
    Setting{"otherr", u8"右その他"_cp932},
};
constexpr std::array kMarkSettings = {"norimark", "widthmark", "roadmark", "othermark"};

static_assert(std::has_virtual_destructor_v<VornFormCtrl> && std::is_nothrow_move_constructible_v<VornFormCtrl>);

// --- data ------------------------------------------------------------------------------------------------------------

TEST(FormCtrl, StartsWithItsInitialNames) {
  const VornFormCtrl formCtrl;
  ASSERT_EQ(formCtrl.GetNames().size(), 10u);
  for (std::size_t i = 0; i < 10; ++i) EXPECT_EQ(formCtrl.GetNames()[i], kInitialNames[i]) << i;
  ASSERT_EQ(formCtrl.GetMarks().size(), 4u);
  for (const CtrlMarkType mark : formCtrl.GetMarks()) EXPECT_EQ(static_cast<int>(mark), 0);
  EXPECT_EQ(formCtrl.GetValue(), 15.0);
}

TEST(FormCtrl, NamesItsItemsAndMarks) {
  const VornFormCtrl formCtrl;
  EXPECT_EQ(formCtrl.GetNames()[VornFormCtrl::RoadLeft], u8"道路(左)"_cp932);
  EXPECT_EQ(formCtrl.GetNames()[VornFormCtrl::RoadSurface], u8"道路面"_cp932);
  EXPECT_EQ(formCtrl.GetNames()[VornFormCtrl::OtherRight], u8"その他(右)"_cp932);
  EXPECT_EQ(static_cast<int>(VornFormCtrl::SlopeMarks), 0);
  EXPECT_EQ(static_cast<int>(VornFormCtrl::BermMarks), 1);
  EXPECT_EQ(static_cast<int>(VornFormCtrl::RoadMarks), 2);
  EXPECT_EQ(static_cast<int>(VornFormCtrl::OtherMarks), 3);
}

TEST(FormCtrl, InitSetsTheNamesAlone) {
  VornFormCtrl formCtrl = FullFormCtrl();
  formCtrl.Init();
  EXPECT_EQ(formCtrl.GetNames(), VornFormCtrl().GetNames());
  EXPECT_EQ(formCtrl.GetMarks(), FullFormCtrl().GetMarks());
  EXPECT_EQ(formCtrl.GetValue(), 0.75);
}

TEST(FormCtrl, CopiesAllItsMembers) {
  VornFormCtrl copy;
  copy = FullFormCtrl();
  const VornFormCtrl moved = std::move(copy);
  ExpectFormCtrl(moved, {"05.00"});
}

TEST(FormCtrl, GivesEachSeriesOfMarksItsSample) {
  EXPECT_EQ(VornFormCtrl::GetMarkTypeStr(static_cast<CtrlMarkType>(0)), u8"１２３４５"_cp932);
  EXPECT_EQ(VornFormCtrl::GetMarkTypeStr(static_cast<CtrlMarkType>(1)), u8"ＡＢＣＤＥ"_cp932);
  EXPECT_EQ(VornFormCtrl::GetMarkTypeStr(static_cast<CtrlMarkType>(2)), u8"ａｂｃｄｅ"_cp932);
  for (const int value : {-1, 3, 1000}) {
    EXPECT_EQ(VornFormCtrl::GetMarkTypeStr(static_cast<CtrlMarkType>(value)), "") << value;
  }
}

// --- comparison ------------------------------------------------------------------------------------------------------

TEST(FormCtrl, ComparesEveryName) {
  EXPECT_TRUE(FullFormCtrl().CompareFormCtrl(FullFormCtrl()));
  for (std::size_t i = 0; i < 10; ++i) {
    VornFormCtrl other = FullFormCtrl();
    other.GetNames()[i] += "x";
    EXPECT_FALSE(FullFormCtrl().CompareFormCtrl(other)) << i;
  }
}

TEST(FormCtrl, ComparesTheFirstTwoMarksOnly) {
  for (std::size_t i = 0; i < 4; ++i) {
    VornFormCtrl other = FullFormCtrl();
    other.GetMarks()[i] = CtrlMarkType::SmallLetters;
    EXPECT_EQ(FullFormCtrl().CompareFormCtrl(other), i > 1) << i;
  }
}

TEST(FormCtrl, ComparesTheValueExactly) {
  VornFormCtrl other = FullFormCtrl();
  other.SetValue(0.75 + 1e-12);
  EXPECT_FALSE(FullFormCtrl().CompareFormCtrl(other));
}

// --- settings --------------------------------------------------------------------------------------------------------

class FormCtrlSettings : public test_support::SettingsTest {
 protected:
  FormCtrlSettings() { m_parent.Create(nullptr, "Parent"); }

  static constexpr std::string_view kPath = "App\\Parent\\FormCtrl";

  WexKey m_parent;
};

TEST(FormCtrl, TellsTheSettingsOfNamesAndMarks) {
  EXPECT_STREQ(VornFormCtrl::kSettingsKey, "FormCtrl");
  for (std::size_t i = 0; i < 10; ++i) {
    EXPECT_EQ(VornFormCtrl::kItemNames[i].initial, kInitialNames[i]) << i;
    EXPECT_STREQ(VornFormCtrl::kItemNames[i].setting.name, kNameSettings[i].name) << i;
    EXPECT_EQ(VornFormCtrl::kItemNames[i].setting.defaultValue, kNameSettings[i].defaultText) << i;
  }
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_STREQ(VornFormCtrl::kMarkSettings[i].name, kMarkSettings[i]) << i;
    EXPECT_EQ(VornFormCtrl::kMarkSettings[i].defaultValue, 0) << i;
  }
}

TEST_F(FormCtrlSettings, KeepsNamesAndMarksUnderTheirNames) {
  FullFormCtrl().StoreRegistry(&m_parent);
  for (std::size_t i = 0; i < 10; ++i) {
    EXPECT_EQ(m_store->ReadString(kPath, kNameSettings[i].name), FullFormCtrl().GetNames()[i]) << i;
  }
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(m_store->ReadInt(kPath, kMarkSettings[i]), 21 + static_cast<int>(i)) << i;
  }
}

TEST_F(FormCtrlSettings, LoadsWhatWasStoredButNotTheValue) {
  FullFormCtrl().StoreRegistry(&m_parent);
  VornFormCtrl formCtrl;
  formCtrl.LoadRegistry(&m_parent);
  EXPECT_EQ(formCtrl.GetNames(), FullFormCtrl().GetNames());
  EXPECT_EQ(formCtrl.GetMarks(), FullFormCtrl().GetMarks());
  EXPECT_EQ(formCtrl.GetValue(), 15.0);
}

TEST_F(FormCtrlSettings, ChangesNothingWithoutTheSubKey) {
  VornFormCtrl formCtrl = FullFormCtrl();
  formCtrl.LoadRegistry(&m_parent);
  ExpectFormCtrl(formCtrl, {"05.00"});
  EXPECT_FALSE(m_store->KeyExists(kPath)) << "loading makes no sub-key";
}

TEST_F(FormCtrlSettings, LoadsTheDefaultsOfTheSettingsForMissingValues) {
  ASSERT_TRUE(m_store->CreateKey(kPath));
  VornFormCtrl formCtrl;
  EXPECT_EQ(formCtrl.GetNames()[1], u8"道路(左)"_cp932);
  formCtrl = FullFormCtrl();
  formCtrl.LoadRegistry(&m_parent);
  EXPECT_EQ(formCtrl.GetNames()[1], u8"道路端左"_cp932);
  for (std::size_t i = 0; i < 10; ++i) EXPECT_EQ(formCtrl.GetNames()[i], kNameSettings[i].defaultText) << i;
  for (const CtrlMarkType mark : formCtrl.GetMarks()) EXPECT_EQ(static_cast<int>(mark), 0);
}

TEST_F(FormCtrlSettings, LoadsDefaultsForValuesOfTheOtherKind) {
  ASSERT_TRUE(m_store->CreateKey(kPath));
  for (const Setting& setting : kNameSettings) m_store->WriteInt(kPath, setting.name, 1);
  for (const char* name : kMarkSettings) m_store->WriteString(kPath, name, "2");
  VornFormCtrl formCtrl = FullFormCtrl();
  formCtrl.LoadRegistry(&m_parent);
  for (std::size_t i = 0; i < 10; ++i) EXPECT_EQ(formCtrl.GetNames()[i], kNameSettings[i].defaultText) << i;
  for (const CtrlMarkType mark : formCtrl.GetMarks()) EXPECT_EQ(static_cast<int>(mark), 0);
}

TEST_F(FormCtrlSettings, LieBelowTheApplicationsOwnKeyWithoutAParent) {
  FullFormCtrl().StoreRegistry(nullptr);
  EXPECT_EQ(m_store->ReadString("App\\FormCtrl", "basec"), "name0");
  EXPECT_FALSE(m_store->KeyExists(kPath));
  VornFormCtrl formCtrl;
  formCtrl.LoadRegistry(nullptr);
  EXPECT_EQ(formCtrl.GetNames(), FullFormCtrl().GetNames());
  EXPECT_EQ(formCtrl.GetMarks(), FullFormCtrl().GetMarks());
}

TEST_F(FormCtrlSettings, AreReadAndKeptTogether) {
  const auto expectGroup = [](const char* open, const std::string& call, auto run) {
    const auto store = std::make_shared<test_support::RecordingStore>();
    WexSetApplicationStore(store, "App");
    run();
    std::vector<std::string> expected = {"begin", open};
    for (const Setting& setting : kNameSettings) expected.push_back(call + setting.name);
    for (const char* name : kMarkSettings) expected.push_back(call + name);
    expected.emplace_back("end");
    EXPECT_EQ(store->Calls(), expected);
  };
  expectGroup("create App\\FormCtrl", "set ", [] { FullFormCtrl().StoreRegistry(nullptr); });
  expectGroup("open App\\FormCtrl", "get ", [] { VornFormCtrl().LoadRegistry(nullptr); });
}

TEST_F(FormCtrlSettings, KeepsEmptyNames) {
  VornFormCtrl formCtrl = FullFormCtrl();
  formCtrl.GetNames()[3].Empty();
  formCtrl.StoreRegistry(&m_parent);
  VornFormCtrl loaded;
  loaded.LoadRegistry(&m_parent);
  EXPECT_EQ(loaded.GetNames()[3], "");
}

TEST_F(FormCtrlSettings, KeepNoNameThatANulWouldCutShort) {
  VornFormCtrl().StoreRegistry(&m_parent);
  VornFormCtrl formCtrl = FullFormCtrl();
  formCtrl.GetNames()[0] = CString(std::string_view("cut\0short", 9));
  formCtrl.StoreRegistry(&m_parent);
  EXPECT_EQ(m_store->ReadString(kPath, "basec"), kInitialNames[0]) << "the one before stays";
  EXPECT_EQ(m_store->ReadString(kPath, "basel"), "name1");

  WexKey key;
  ASSERT_TRUE(key.Open(&m_parent, "FormCtrl"));
  EXPECT_FALSE(VornFormCtrl::kItemNames[0].setting.Store(key, formCtrl.GetNames()[0]));
  EXPECT_TRUE(VornFormCtrl::kItemNames[0].setting.Store(key, "whole"));
}

TEST_F(FormCtrlSettings, AreSilentBelowAClosedKey) {
  WexKey closed;
  VornFormCtrl formCtrl = FullFormCtrl();
  formCtrl.StoreRegistry(&closed);
  formCtrl.LoadRegistry(&closed);
  ExpectFormCtrl(formCtrl, {"05.00"});
}

TEST_F(FormCtrlSettings, StoreNothingWhenTheSubKeyCannotBeMade) {
  WexSetApplicationStore(std::make_shared<test_support::RefusingStore>("App\\Parent"), "App");
  WexKey parent;
  ASSERT_TRUE(parent.Open(nullptr, "Parent"));
  VornFormCtrl formCtrl = FullFormCtrl();
  formCtrl.StoreRegistry(&parent);
  formCtrl.LoadRegistry(&parent);
  ExpectFormCtrl(formCtrl, {"05.00"});
}

// --- archive ---------------------------------------------------------------------------------------------------------

class FormCtrlArchive : public InStoreVersion {};
IN_EVERY_ROAD_VERSION(FormCtrlArchive);

TEST_P(FormCtrlArchive, AlwaysWritesAllItsFields) {
  EXPECT_TRUE(HasBytes(StoredWith(FullFormCtrl(), GetParam()), FormCtrlBytes(Written())));
}

TEST_P(FormCtrlArchive, ReadsItsFields) {
  VornFormCtrl formCtrl;
  ReadWith(formCtrl, FormCtrlBytes(Read()).All(), GetParam());
  ExpectFormCtrl(formCtrl, Read());
}

TEST_P(FormCtrlArchive, SkipsTwoTextsWhateverTheySay) {
  using test_support::operator+;
  const Bytes whole = FormCtrlBytes(Read()).All();
  const Bytes bytes = Text("old").bytes + Text("older").bytes + Bytes(whole.begin() + 2, whole.end());
  VornFormCtrl formCtrl;
  ReadWith(formCtrl, bytes, GetParam());
  ExpectFormCtrl(formCtrl, Read());
}

TEST_P(FormCtrlArchive, StaysAsItIsWhenItIsStored) {
  VornFormCtrl formCtrl = FullFormCtrl();
  static_cast<void>(StoredWith(formCtrl, GetParam()));
  ExpectFormCtrl(formCtrl, {"05.00"});
}

TEST(FormCtrlArchive, ReadsAnOldRecordAndRestoresTheInitialNames) {
  VornFormCtrl formCtrl = FullFormCtrl();
  ReadWith(formCtrl, FormCtrlBytes({"02.00"}).All(), "02.00");
  EXPECT_EQ(formCtrl.GetNames(), VornFormCtrl().GetNames());
  EXPECT_EQ(static_cast<int>(formCtrl.GetMarks()[2]), 23) << "what is not read stays";
}

}  // namespace
}  // namespace road_test
