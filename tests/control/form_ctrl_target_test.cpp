#include "vorn/control/form_ctrl_target.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "tests/support/xml_tree.h"
#include "vorn/platform/code_page_932.h"

namespace {

using WorkType = VornFormCtrlTarget::WorkType;
using ControlItem = VornFormCtrlTarget::ControlItem;
using TargetPntType = VornFormCtrlTarget::TargetPntType;
using test_support::EditionScope;
using test_support::ReadXml;
using test_support::WriteXml;
using test_support::XmlTree;
using test_support::XmlTreeCursor;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t kUnnumbered = 0xFFFFFFFF;

VornFormCtrlTargetPnt Point(const char* code, const char* form = "form", std::uint32_t id = 0) {
  VornFormCtrlTargetPnt point;
  point.Set(20.0, form, code, false);
  point.SetPntID(id);
  return point;
}

/// A valid target on two points.
VornFormCtrlTarget Complete() {
  VornFormCtrlTarget target;
  target.SetCode("L1 L2");
  target.SetWorkType(WorkType::FillWork);
  target.SetControlItem(ControlItem::Width);
  target.SetTargetScope("scope");
  target.SetTargetRegio("region");
  target.SetTargetPntType(TargetPntType::InnerOuter);
  target.GetTargetPntArray().Add(Point("L1", "form", 11));
  target.GetTargetPntArray().Add(Point("L2", "form", 12));
  return target;
}

VornFormCtrlTarget Numbered(std::uint32_t serialID) {
  VornFormCtrlTarget target;
  target.SetSerialID(serialID);
  return target;
}

class FormCtrlTargetTest : public testing::Test {
 protected:
  EditionScope m_edition{VornSchema::Version41};
};

// --- data ------------------------------------------------------------------------------------------------------------

TEST_F(FormCtrlTargetTest, StartsWithItsDefaults) {
  const VornFormCtrlTarget target;
  EXPECT_EQ(target.tagName(), "tsf:FormCtrlTarget");
  EXPECT_EQ(target.GetCodeName(), "");
  EXPECT_EQ(target.GetWorkType(), WorkType::Unset);
  EXPECT_EQ(target.GetControlItem(), ControlItem::Unset);
  EXPECT_EQ(target.GetTargetScope(), "");
  EXPECT_EQ(target.GetTargetRegio(), "");
  EXPECT_EQ(target.GetTargetPntType(), TargetPntType::Unset);
  EXPECT_EQ(target.GetLR(), VornLocation::Unset);
  EXPECT_TRUE(target.GetTargetPntArray().IsEmpty());
  EXPECT_EQ(target.GetExport(), 1);
  EXPECT_EQ(target.GetSerialID(), kUnnumbered);
}

/// A target in which no member has its default, and those members as they ought to be.
VornFormCtrlTarget Filled() {
  VornFormCtrlTarget target = Complete();
  target.SetLR(VornLocation::Left);
  target.SetExport(0);
  target.SetSerialID(4);
  return target;
}

void ExpectFilled(const VornFormCtrlTarget& target) {
  EXPECT_EQ(target.tagName(), "tsf:FormCtrlTarget");
  EXPECT_EQ(target.GetCodeName(), "L1 L2");
  EXPECT_EQ(target.GetWorkType(), WorkType::FillWork);
  EXPECT_EQ(target.GetControlItem(), ControlItem::Width);
  EXPECT_EQ(target.GetTargetScope(), "scope");
  EXPECT_EQ(target.GetTargetRegio(), "region");
  EXPECT_EQ(target.GetTargetPntType(), TargetPntType::InnerOuter);
  EXPECT_EQ(target.GetLR(), VornLocation::Left);
  ASSERT_EQ(target.GetTargetPntArray().GetSize(), 2);
  EXPECT_EQ(target.GetTargetPntArray()[0].GetCode(), "L1");
  EXPECT_EQ(target.GetTargetPntArray()[1].GetCode(), "L2");
  EXPECT_EQ(target.GetExport(), 0);
  EXPECT_EQ(target.GetSerialID(), 4u);
}

TEST_F(FormCtrlTargetTest, CopiesEveryMember) {
  const VornFormCtrlTarget original = Filled();
  VornFormCtrlTarget assigned;
  assigned.GetTargetPntArray().Add(Point("R1"));
  assigned = original;
  const VornFormCtrlTarget& self = assigned;
  assigned = self;
  ExpectFilled(VornFormCtrlTarget(original));
  ExpectFilled(assigned);
}

TEST_F(FormCtrlTargetTest, CopyHasPointsOfItsOwn) {
  const VornFormCtrlTarget original = Filled();
  VornFormCtrlTarget copy(original);
  copy.GetTargetPntArray().RemoveAll();
  ExpectFilled(original);
}

TEST_F(FormCtrlTargetTest, HandsOutItsMembersForChange) {
  VornFormCtrlTarget target = Complete();
  target.GetWorkType() = WorkType::CutWork;
  target.GetControlItem() = ControlItem::Area;
  target.GetTargetScope() = "other scope";
  target.GetTargetRegio() = "other region";
  target.GetTargetPntType() = TargetPntType::LeftRight;
  target.GetLR() = VornLocation::Right;
  target.GetExport() = 7;
  target.GetSerialID() = 8;
  const VornFormCtrlTarget& changed = target;
  EXPECT_EQ(changed.GetWorkType(), WorkType::CutWork);
  EXPECT_EQ(changed.GetControlItem(), ControlItem::Area);
  EXPECT_EQ(changed.GetTargetScope(), "other scope");
  EXPECT_EQ(changed.GetTargetRegio(), "other region");
  EXPECT_EQ(changed.GetTargetPntType(), TargetPntType::LeftRight);
  EXPECT_EQ(changed.GetLR(), VornLocation::Right);
  EXPECT_EQ(changed.GetExport(), 7);
  EXPECT_EQ(changed.GetSerialID(), 8u);
}

// --- enumerations ----------------------------------------------------------------------------------------------------

/// The texts of one enumeration in value order, and the member functions that turn one into the other.
template <typename Enum>
struct Texts;

template <>
struct Texts<WorkType> {
  static inline const std::vector<std::string> kAll = {"RE_CutWork", "RE_FillWork"};
  static CString Text(WorkType value) { return VornFormCtrlTarget::GetWorkTypeString(value); }
  static CString OwnText(const VornFormCtrlTarget& t) { return t.GetWorkTypeString(); }
  static bool Parse(VornFormCtrlTarget& t, std::string_view text) { return t.SetWorkTypeString(text); }
  static WorkType& Member(VornFormCtrlTarget& t) { return t.GetWorkType(); }
};

template <>
struct Texts<ControlItem> {
  static inline const std::vector<std::string> kAll = {"SlopeLength", "Width",     "Height", "Thickness",
                                                       "Depth",       "XSectArea", "Length", "Area"};
  static CString Text(ControlItem value) { return VornFormCtrlTarget::GetControlItemString(value); }
  static CString OwnText(const VornFormCtrlTarget& t) { return t.GetControlItemString(); }
  static bool Parse(VornFormCtrlTarget& t, std::string_view text) { return t.SetControlItemString(text); }
  static ControlItem& Member(VornFormCtrlTarget& t) { return t.GetControlItem(); }
};

template <>
struct Texts<TargetPntType> {
  static inline const std::vector<std::string> kAll = {"Shoulder Toe", "Toe Shoulder", "Inner Outer", "Left Right",
                                                       "TargetPnt",    "Upper Lower",  "Lower Upper"};
  static CString Text(TargetPntType value) { return VornFormCtrlTarget::GetTargetPntTypeString(value); }
  static CString OwnText(const VornFormCtrlTarget& t) { return t.GetTargetPntTypeString(); }
  static bool Parse(VornFormCtrlTarget& t, std::string_view text) { return t.SetTargetPntTypeString(text); }
  static TargetPntType& Member(VornFormCtrlTarget& t) { return t.GetTargetPntType(); }
};

template <typename Enum>
class FormCtrlTargetEnum : public testing::Test {
 protected:
  using Of = Texts<Enum>;
  static int Size() { return static_cast<int>(Of::kAll.size()); }
  static Enum Value(int value) { return static_cast<Enum>(value); }
};

using Enumerations = testing::Types<WorkType, ControlItem, TargetPntType>;
TYPED_TEST_SUITE(FormCtrlTargetEnum, Enumerations);

TYPED_TEST(FormCtrlTargetEnum, HasATextForEveryValue) {
  using Of = Texts<TypeParam>;
  EXPECT_EQ(sizeof(TypeParam), 4u);
  for (int i = 0; i < this->Size(); ++i) {
    VornFormCtrlTarget target;
    Of::Member(target) = this->Value(i);
    EXPECT_EQ(Of::Text(this->Value(i)), Of::kAll[static_cast<std::size_t>(i)].c_str()) << i;
    EXPECT_EQ(Of::OwnText(target), Of::kAll[static_cast<std::size_t>(i)].c_str()) << i;
  }
}

TYPED_TEST(FormCtrlTargetEnum, HasNoTextForAValueOutsideTheTable) {
  using Of = Texts<TypeParam>;
  for (const int value : {-2, -1, this->Size(), 1000}) EXPECT_EQ(Of::Text(this->Value(value)), "") << value;
  EXPECT_EQ(Of::OwnText(VornFormCtrlTarget()), "");
}

TYPED_TEST(FormCtrlTargetEnum, TakesEveryText) {
  using Of = Texts<TypeParam>;
  for (int i = 0; i < this->Size(); ++i) {
    VornFormCtrlTarget target;
    EXPECT_TRUE(Of::Parse(target, Of::kAll[static_cast<std::size_t>(i)]));
    EXPECT_EQ(static_cast<int>(Of::Member(target)), i);
  }
}

TYPED_TEST(FormCtrlTargetEnum, ResetsOnAnyOtherText) {
  using Of = Texts<TypeParam>;
  for (const std::string& known : Of::kAll) {
    std::string otherCase = known;
    otherCase[0] = static_cast<char>(otherCase[0] ^ 0x20);
    for (const std::string& text :
         {otherCase, known + " ", " " + known, known.substr(1), std::string(), std::string("x")}) {
      VornFormCtrlTarget target;
      Of::Member(target) = this->Value(1);
      EXPECT_FALSE(Of::Parse(target, text)) << text;
      EXPECT_EQ(static_cast<int>(Of::Member(target)), -1) << text;
    }
  }
}

TEST_F(FormCtrlTargetTest, ControlItemInTheWrongCaseIsUnset) {
  VornFormCtrlTarget target;
  EXPECT_FALSE(target.SetControlItemString("width"));
  EXPECT_EQ(static_cast<int>(target.GetControlItem()), -1);
}

// --- codes -----------------------------------------------------------------------------------------------------------

TEST_F(FormCtrlTargetTest, Edition20TakesTheCodesFromTheText) {
  m_edition.Select(VornSchema::Version20);
  VornFormCtrlTarget target = Complete();
  target.SetCode("R1 R2");
  EXPECT_EQ(target.GetCode(), "R1 R2");
  EXPECT_EQ(target.GetCodeName(), "R1 R2");
  EXPECT_EQ(target.GetCode1(), "R1");
  EXPECT_EQ(target.GetCode2(), "R2");
}

TEST_F(FormCtrlTargetTest, Edition20LeavesTheTextAsItStands) {
  m_edition.Select(VornSchema::Version20);
  VornFormCtrlTarget target;
  target.SetCode(" R1  R2 ");
  EXPECT_EQ(target.GetCode(), " R1  R2 ");
  EXPECT_EQ(target.GetCode1(), "");  // the item before the leading blank
  EXPECT_EQ(target.GetCode2(), "R1");
}

TEST_F(FormCtrlTargetTest, Edition20HasEmptyCodesWhereTheTextHasNone) {
  m_edition.Select(VornSchema::Version20);
  VornFormCtrlTarget target;
  EXPECT_EQ(target.GetCode1(), "");
  EXPECT_EQ(target.GetCode2(), "");
  target.SetCode("R1");
  EXPECT_EQ(target.GetCode1(), "R1");
  EXPECT_EQ(target.GetCode2(), "");
}

TEST_F(FormCtrlTargetTest, LaterEditionsTakeTheCodesFromThePoints) {
  VornFormCtrlTarget target = Complete();
  target.SetCode("R1 R2");
  for (const auto version : {VornSchema::Version40, VornSchema::Version41}) {
    m_edition.Select(version);
    EXPECT_EQ(target.GetCode(), "L1 L2");
    EXPECT_EQ(target.GetCode1(), "L1");
    EXPECT_EQ(target.GetCode2(), "L2");
    EXPECT_EQ(target.GetCodeName(), "R1 R2");
  }
}

TEST_F(FormCtrlTargetTest, LaterEditionsHaveEmptyCodesWhereThereAreNoPoints) {
  VornFormCtrlTarget target;
  target.SetCode("R1 R2");
  EXPECT_EQ(target.GetCode(), "");
  EXPECT_EQ(target.GetCode1(), "");
  EXPECT_EQ(target.GetCode2(), "");
  target.GetTargetPntArray().Add(Point("L1"));
  EXPECT_EQ(target.GetCode(), "L1");
  EXPECT_EQ(target.GetCode1(), "L1");
  EXPECT_EQ(target.GetCode2(), "");
}

TEST_F(FormCtrlTargetTest, TrimsTheJoinedCodesAtTheEndsOnly) {
  VornFormCtrlTarget target;
  for (const char* code : {"", "L1", "", "L2 "}) target.GetTargetPntArray().Add(Point(code));
  EXPECT_EQ(target.GetCode(), "L1  L2");
}

TEST_F(FormCtrlTargetTest, GivesTheCodeOfPointN) {
  const VornFormCtrlTarget target = Complete();
  for (const auto version : {VornSchema::Version40, VornSchema::Version41}) {
    m_edition.Select(version);
    EXPECT_EQ(target.GetCodeN(0), "L1");
    EXPECT_EQ(target.GetCodeN(1), "L2");
  }
}

TEST_F(FormCtrlTargetTest, RefusesTheCodeOfAPointItDoesNotHave) {
  const VornFormCtrlTarget target = Complete();
  EXPECT_THROW((void)target.GetCodeN(5), CInvalidArgException);
  EXPECT_THROW((void)target.GetCodeN(2), CInvalidArgException);
  EXPECT_THROW((void)target.GetCodeN(-1), CInvalidArgException);
}

TEST_F(FormCtrlTargetTest, HasNoCodeNBeforeEdition40WhateverN) {
  const VornFormCtrlTarget target = Complete();
  for (const auto version : {VornSchema::Version20, VornSchema::VersionUnknown}) {
    m_edition.Select(version);
    for (const int n : {-1, 0, 5}) EXPECT_EQ(target.GetCodeN(n), "") << n;
  }
}

// --- queries ---------------------------------------------------------------------------------------------------------

TEST_F(FormCtrlTargetTest, HitsTheBuildFormsItsPointsName) {
  VornFormCtrlTarget target = Complete();
  target.GetTargetPntArray()[1].SetBuildFormName("Other");
  EXPECT_TRUE(target.IsHitBuildForm("form"));
  EXPECT_TRUE(target.IsHitBuildForm("Other"));
  EXPECT_FALSE(target.IsHitBuildForm("other"));
  EXPECT_FALSE(target.IsHitBuildForm("for"));
  EXPECT_FALSE(VornFormCtrlTarget().IsHitBuildForm(""));
}

TEST_F(FormCtrlTargetTest, HitsNoBuildFormInEdition20) {
  m_edition.Select(VornSchema::Version20);
  EXPECT_FALSE(Complete().IsHitBuildForm("form"));
}

TEST_F(FormCtrlTargetTest, FindsThePointsItStandsOn) {
  const VornFormCtrlTarget target = Complete();
  EXPECT_TRUE(target.FindPnt(11));
  EXPECT_TRUE(target.FindPnt(12));
  EXPECT_FALSE(target.FindPnt(13));
  EXPECT_FALSE(VornFormCtrlTarget().FindPnt(kUnnumbered));
}

// --- writing ---------------------------------------------------------------------------------------------------------

TEST_F(FormCtrlTargetTest, WritesAttributesAndPoints) {
  VornFormCtrlTarget target = Complete();
  target.SetLR(VornLocation::Left);
  for (const auto version : {VornSchema::Version40, VornSchema::Version41}) {
    m_edition.Select(version);
    EXPECT_EQ(WriteXml(target),
              "<tsf:FormCtrlTarget controlItem=\"Width\" targetScope=\"scope\" targetRegio=\"region\" "
              "targetPntType=\"Inner Outer\">\n"
              "  <tsf:FormCtrlTargetPnt cumulativeDist=\"20.0000\" buildFormName=\"form\" code=\"L1\"/>\n"
              "  <tsf:FormCtrlTargetPnt cumulativeDist=\"20.0000\" buildFormName=\"form\" code=\"L2\"/>\n"
              "</tsf:FormCtrlTarget>\n");
  }
}

TEST_F(FormCtrlTargetTest, WritesWorkTypeAndCodesInEdition20) {
  VornFormCtrlTarget target = Complete();
  for (const auto version : {VornSchema::Version20, VornSchema::VersionUnknown}) {
    m_edition.Select(version);
    EXPECT_EQ(WriteXml(target),
              "<tsf:FormCtrlTarget workType=\"RE_FillWork\" controlItem=\"Width\" targetScope=\"scope\" "
              "targetRegio=\"region\" targetPntType=\"Inner Outer\">L1 L2</tsf:FormCtrlTarget>\n");
  }
}

TEST_F(FormCtrlTargetTest, WritesWhatIsUnsetAsEmptyAttributes) {
  VornFormCtrlTarget target;
  EXPECT_EQ(WriteXml(target),
            "<tsf:FormCtrlTarget controlItem=\"\" targetScope=\"\" targetRegio=\"\" targetPntType=\"\"/>\n");
  m_edition.Select(VornSchema::Version20);
  EXPECT_EQ(WriteXml(target),
            "<tsf:FormCtrlTarget workType=\"\" controlItem=\"\" targetScope=\"\" targetRegio=\"\" "
            "targetPntType=\"\"/>\n");
}

TEST_F(FormCtrlTargetTest, WritesIntoTheNamespaceOfTheEdition) {
  for (const auto& [version, kind] :
       {std::pair(VornSchema::Version20, VornSchema::KindTsf), std::pair(VornSchema::Version40, VornSchema::KindTsf),
        std::pair(VornSchema::Version41, VornSchema::KindMaff)}) {
    m_edition.Select(version, kind);
    XmlTree tree;
    XmlTreeCursor cursor(tree);
    VornFormCtrlTarget target = Complete();
    EXPECT_TRUE(target.toXML(&cursor));
    EXPECT_EQ(tree.Root().children.front()->namespaceUri, std::string(VornSchema::Instance().Tsf()));
  }
}

TEST_F(FormCtrlTargetTest, WritesNoElementWhenItIsNotExported) {
  VornFormCtrlTarget target = Complete();
  target.SetExport(0);
  EXPECT_EQ(WriteXml(target), "");
  EXPECT_EQ(target.GetExport(), 0);
  target.SetExport(-1);  // any value but 0
  EXPECT_NE(WriteXml(target), "");
}

TEST_F(FormCtrlTargetTest, Edition20ExportsEveryTargetForGood) {
  VornFormCtrlTarget target = Complete();
  target.SetExport(0);
  m_edition.Select(VornSchema::Version20);
  EXPECT_NE(WriteXml(target), "");
  EXPECT_EQ(target.GetExport(), 1);
}

TEST_F(FormCtrlTargetTest, StopsWritingAtAnyFailure) {
  for (const auto version : {VornSchema::Version20, VornSchema::Version41}) {
    m_edition.Select(version);
    VornFormCtrlTarget target = Complete();
    EXPECT_THAT(test_support::WriteFailuresOverlooked(target), IsEmpty()) << version;
  }
}

// --- reading ---------------------------------------------------------------------------------------------------------

TEST_F(FormCtrlTargetTest, ReadsItsAttributesInAnyOrder) {
  VornFormCtrlTarget target;
  EXPECT_TRUE(ReadXml(target,
                      "<tsf:FormCtrlTarget other='x' targetPntType='Toe Shoulder' targetRegio='region' "
                      "targetScope='scope' controlItem='SlopeLength' workType='RE_CutWork' LR='Left'/>"));
  EXPECT_EQ(target.GetWorkType(), WorkType::CutWork);
  EXPECT_EQ(target.GetControlItem(), ControlItem::SlopeLength);
  EXPECT_EQ(target.GetTargetScope(), "scope");
  EXPECT_EQ(target.GetTargetRegio(), "region");
  EXPECT_EQ(target.GetTargetPntType(), TargetPntType::ToeShoulder);
  EXPECT_EQ(target.GetLR(), VornLocation::Unset);
  EXPECT_EQ(target.GetCodeName(), "");
}

TEST_F(FormCtrlTargetTest, ReadsAnUnknownEnumerationTextAsUnset) {
  VornFormCtrlTarget target = Complete();
  EXPECT_TRUE(ReadXml(target, "<tsf:FormCtrlTarget workType='x' controlItem='width' targetPntType=''/>"));
  EXPECT_EQ(target.GetWorkType(), WorkType::Unset);
  EXPECT_EQ(target.GetControlItem(), ControlItem::Unset);
  EXPECT_EQ(target.GetTargetPntType(), TargetPntType::Unset);
}

TEST_F(FormCtrlTargetTest, KeepsWhatTheElementDoesNotHave) {
  VornFormCtrlTarget target = Filled();
  EXPECT_TRUE(ReadXml(target, "<tsf:FormCtrlTarget WorkType='wrong case'/>"));
  ExpectFilled(target);
}

TEST_F(FormCtrlTargetTest, ReadsTheTwoCodesOfAnEdition20Document) {
  m_edition.Select(VornSchema::Version20);
  VornFormCtrlTarget target;
  EXPECT_TRUE(ReadXml(target, "<tsf:FormCtrlTarget>L1 R1</tsf:FormCtrlTarget>"));
  EXPECT_EQ(target.GetCodeName(), "L1 R1");
  EXPECT_EQ(target.GetCode1(), "L1");
  EXPECT_EQ(target.GetCode2(), "R1");
}

TEST_F(FormCtrlTargetTest, ReadsTheTextInLaterEditionsToo) {
  VornFormCtrlTarget target;
  EXPECT_TRUE(ReadXml(target, "<tsf:FormCtrlTarget>L1 R1</tsf:FormCtrlTarget>"));
  EXPECT_EQ(target.GetCodeName(), "L1 R1");
}

constexpr std::string_view kTwoPoints =
    "<tsf:FormCtrlTarget>"
    "<tsf:Other><tsf:FormCtrlTargetPnt code='nested'/></tsf:Other>"
    "<tsf:FormCtrlTargetPnt code='L1'/><tsf:FormCtrlTargetPnt code='L2'/>"
    "<tsf:Other/>"
    "</tsf:FormCtrlTarget>";

TEST_F(FormCtrlTargetTest, ReadsThePointsAndSkipsOtherChildren) {
  for (const auto version : {VornSchema::Version40, VornSchema::Version41}) {
    m_edition.Select(version);
    VornFormCtrlTarget target;
    EXPECT_TRUE(ReadXml(target, kTwoPoints));
    EXPECT_EQ(target.GetTargetPntArray().GetSize(), 2);
    EXPECT_EQ(target.GetCode(), "L1 L2");
  }
}

TEST_F(FormCtrlTargetTest, ReadsPointsBehindOtherChildrenToo) {
  VornFormCtrlTarget target;
  EXPECT_TRUE(ReadXml(target,
                      "<tsf:FormCtrlTarget><tsf:FormCtrlTargetPnt code='L1'/><tsf:Other/>"
                      "<tsf:FormCtrlTargetPnt code='L2'/></tsf:FormCtrlTarget>"));
  EXPECT_EQ(target.GetCode(), "L1 L2");
}

TEST_F(FormCtrlTargetTest, ReadsNoPointsBeforeEdition40) {
  for (const auto version : {VornSchema::Version20, VornSchema::VersionUnknown}) {
    m_edition.Select(version);
    VornFormCtrlTarget target;
    EXPECT_TRUE(ReadXml(target, kTwoPoints));
    EXPECT_TRUE(target.GetTargetPntArray().IsEmpty());
  }
}

TEST_F(FormCtrlTargetTest, ComesBackToItsElementAfterReading) {
  XmlTree tree = XmlTree::Parse(kTwoPoints);
  XmlTreeCursor cursor(tree);
  VornFormCtrlTarget target;
  EXPECT_TRUE(target.fromXML(&cursor));
  EXPECT_TRUE(cursor.IsOnRoot());
}

TEST_F(FormCtrlTargetTest, FailsWhenItsPointsFail) {
  // Operations: own tag, attributes, text, first child, its tag asked for by the target; the next ones are those of
  // the points.
  XmlTree tree = XmlTree::Parse("<tsf:FormCtrlTarget><tsf:FormCtrlTargetPnt code='L1'/></tsf:FormCtrlTarget>");
  XmlTreeCursor cursor(tree);
  cursor.FailAfter(6);
  VornFormCtrlTarget target;
  EXPECT_FALSE(target.fromXML(&cursor));
  EXPECT_TRUE(target.GetTargetPntArray().IsEmpty());
}

TEST_F(FormCtrlTargetTest, RefusesAnotherElementAndStaysAsItIs) {
  VornFormCtrlTarget target = Filled();
  for (const std::string tag : {"FormCtrlTarget", "tsf:FormCtrlTargetPnt", "tsf:formCtrlTarget"}) {
    EXPECT_FALSE(ReadXml(target, "<" + tag + " controlItem='Area' targetScope='x'>R1</" + tag + ">"));
  }
  ExpectFilled(target);
}

TEST_F(FormCtrlTargetTest, ReadsWhatItWroteInEveryEdition) {
  for (const auto version : {VornSchema::Version20, VornSchema::Version40, VornSchema::Version41}) {
    m_edition.Select(version);
    VornFormCtrlTarget written = Complete();
    VornFormCtrlTarget read;
    EXPECT_TRUE(ReadXml(read, WriteXml(written)));
    EXPECT_EQ(WriteXml(read), WriteXml(written));
    EXPECT_EQ(read.GetCode(), "L1 L2");
  }
}

// --- validity --------------------------------------------------------------------------------------------------------

TEST_F(FormCtrlTargetTest, ACompleteTargetIsValid) { EXPECT_TRUE(Complete().IsEnable()); }

TEST_F(FormCtrlTargetTest, ANewTargetIsNotValid) { EXPECT_FALSE(VornFormCtrlTarget().IsEnable()); }

TEST_F(FormCtrlTargetTest, EveryWorkTypeAndControlItemIsValid) {
  VornFormCtrlTarget target = Complete();
  for (int workType = -2; workType <= 2; ++workType) {
    target.SetWorkType(static_cast<WorkType>(workType));
    EXPECT_EQ(target.IsEnable(), workType == 0 || workType == 1) << workType;
  }
  target = Complete();
  for (int item = -2; item <= 9; ++item) {
    target.SetControlItem(static_cast<ControlItem>(item));
    EXPECT_EQ(target.IsEnable(), item >= 0 && item <= 7) << item;
  }
}

TEST_F(FormCtrlTargetTest, UpperLowerAndLowerUpperAreNeverValid) {
  VornFormCtrlTarget target = Complete();
  for (int type = -2; type <= 7; ++type) {
    target.SetTargetPntType(static_cast<TargetPntType>(type));
    EXPECT_EQ(target.IsEnable(), type >= 0 && type <= 4) << type;
  }
}

TEST_F(FormCtrlTargetTest, NeedsCodeScopeAndRegion) {
  VornFormCtrlTarget target = Complete();
  target.SetCode("");
  EXPECT_FALSE(target.IsEnable());
  target = Complete();
  target.SetTargetScope("");
  EXPECT_FALSE(target.IsEnable());
  target = Complete();
  target.SetTargetRegio("");
  EXPECT_FALSE(target.IsEnable());
}

TEST_F(FormCtrlTargetTest, NeedsNoPointsButValidOnesIfAny) {
  VornFormCtrlTarget target = Complete();
  target.GetTargetPntArray()[1].SetCode("");
  EXPECT_FALSE(target.IsEnable());
  target.GetTargetPntArray().RemoveAt(1);  // a single point, though valid, is one too few
  EXPECT_FALSE(target.IsEnable());
  target.GetTargetPntArray().RemoveAll();
  EXPECT_TRUE(target.IsEnable());
}

// --- the collection --------------------------------------------------------------------------------------------------

std::vector<std::uint32_t> Serials(const Vorn_FormCtrlTargetArray& targets) {
  std::vector<std::uint32_t> serials;
  for (const VornFormCtrlTarget& target : targets) serials.push_back(target.GetSerialID());
  return serials;
}

TEST_F(FormCtrlTargetTest, CollectionNumbersItsTargetsFromZero) {
  Vorn_FormCtrlTargetArray targets;
  EXPECT_EQ(targets.GetNextSerialID(), 0u);
  EXPECT_EQ(targets.Add(Numbered(kUnnumbered)), 0);
  EXPECT_EQ(targets.Add(Numbered(kUnnumbered)), 1);
  EXPECT_THAT(Serials(targets), ElementsAre(0, 1));
}

TEST_F(FormCtrlTargetTest, CollectionCountsOnBehindATargetThatBringsItsSerial) {
  Vorn_FormCtrlTargetArray targets;
  const VornFormCtrlTarget unnumbered;
  for (int i = 0; i < 2; ++i) targets.Add(unnumbered);
  targets.Add(Numbered(10));
  targets.Add(unnumbered);
  EXPECT_THAT(Serials(targets), ElementsAre(0, 1, 10, 11));
  EXPECT_EQ(unnumbered.GetSerialID(), kUnnumbered);
}

TEST_F(FormCtrlTargetTest, CollectionNeverCountsBackwards) {
  Vorn_FormCtrlTargetArray targets;
  targets.Add(Numbered(10));
  targets.Add(Numbered(3));
  targets.Add(Numbered(10));
  EXPECT_EQ(targets.GetNextSerialID(), 11u);
  targets.RemoveAt(0);
  targets.Add(Numbered(kUnnumbered));
  EXPECT_THAT(Serials(targets), ElementsAre(3, 10, 11));
}

TEST_F(FormCtrlTargetTest, CollectionCountsOnBehindItsOwnNextSerial) {
  Vorn_FormCtrlTargetArray targets;
  targets.Add(Numbered(0));
  targets.Add(Numbered(kUnnumbered));
  EXPECT_THAT(Serials(targets), ElementsAre(0, 1));
}

TEST_F(FormCtrlTargetTest, CollectionNumbersInsertedAndReplacedTargets) {
  Vorn_FormCtrlTargetArray targets;
  targets.Add(Numbered(kUnnumbered));
  targets.InsertAt(0, Numbered(kUnnumbered));
  EXPECT_THAT(Serials(targets), ElementsAre(1, 0));
  targets.SetAt(1, Numbered(kUnnumbered));
  EXPECT_THAT(Serials(targets), ElementsAre(1, 2));
  targets.InsertAt(1, Numbered(7));
  targets.SetAt(0, Numbered(9));
  targets.Add(Numbered(kUnnumbered));
  EXPECT_THAT(Serials(targets), ElementsAre(9, 7, 2, 10));
}

TEST_F(FormCtrlTargetTest, CollectionGivesNoSerialToATargetItRefuses) {
  Vorn_FormCtrlTargetArray targets;
  targets.Add(Numbered(kUnnumbered));
  for (const std::uint32_t serial : {kUnnumbered, 10u}) {
    EXPECT_THROW(targets.SetAt(-1, Numbered(serial)), CInvalidArgException);
    EXPECT_THROW(targets.SetAt(1, Numbered(serial)), CInvalidArgException);
    EXPECT_THROW(targets.InsertAt(-1, Numbered(serial)), CInvalidArgException);
    EXPECT_THROW(targets.InsertAt(std::numeric_limits<int>::max(), Numbered(serial)), CInvalidArgException);
    EXPECT_EQ(targets.GetNextSerialID(), 1u);
    EXPECT_THAT(Serials(targets), ElementsAre(0));
  }
}

TEST_F(FormCtrlTargetTest, CollectionLeavesTheTargetsOfADocumentUnnumbered) {
  XmlTree tree = XmlTree::Parse(
      "<root><tsf:FormCtrlTarget targetScope='a'/><tsf:FormCtrlTarget targetScope='b'/><tsf:Other/></root>");
  XmlTreeCursor cursor(tree);
  ASSERT_TRUE(cursor.Child());
  Vorn_FormCtrlTargetArray targets;
  EXPECT_TRUE(targets.fromXML(&cursor));
  EXPECT_THAT(Serials(targets), ElementsAre(kUnnumbered, kUnnumbered));
  EXPECT_EQ(targets.GetNextSerialID(), 0u);
  targets.Add(Numbered(kUnnumbered));
  EXPECT_THAT(Serials(targets), ElementsAre(kUnnumbered, kUnnumbered, 0));
  EXPECT_EQ(targets.GetNextSerialID(), 1u);
}

TEST_F(FormCtrlTargetTest, CollectionCopiesTargetsIntoPlace) {
  Vorn_FormCtrlTargetArray targets;
  const VornFormCtrlTarget original = Filled();
  targets.Add(original);
  ExpectFilled(targets[0]);
  ExpectFilled(original);
}

TEST_F(FormCtrlTargetTest, CopyOfACollectionCountsOn) {
  Vorn_FormCtrlTargetArray targets;
  targets.Add(Numbered(4));
  Vorn_FormCtrlTargetArray copy(targets);
  copy.Add(Numbered(kUnnumbered));
  EXPECT_THAT(Serials(copy), ElementsAre(4, 5));
}

TEST_F(FormCtrlTargetTest, CollectionFindsTheFirstTargetWithASerial) {
  Vorn_FormCtrlTargetArray targets;
  EXPECT_EQ(targets.Find(0), -1);
  for (const std::uint32_t serial : {5u, 6u, 6u}) targets.Add(Numbered(serial));
  EXPECT_EQ(targets.Find(5), 0);
  EXPECT_EQ(targets.Find(6), 1);
  EXPECT_EQ(targets.Find(7), -1);
}

TEST_F(FormCtrlTargetTest, CollectionFindsThePointsItsTargetsStandOn) {
  Vorn_FormCtrlTargetArray targets;
  targets.Add(VornFormCtrlTarget());
  EXPECT_FALSE(targets.FindPnt(12));
  targets.Add(Complete());
  EXPECT_TRUE(targets.FindPnt(12));
  EXPECT_FALSE(targets.FindPnt(13));
}

TEST_F(FormCtrlTargetTest, APointTheHostHasNotFilledIsFoundByItsUnsetIdentifier) {
  Vorn_FormCtrlTargetArray targets;
  targets.Add(Complete());
  EXPECT_FALSE(targets.FindPnt(0xFFFFFFFF));
  targets[0].GetTargetPntArray().Add(VornFormCtrlTargetPnt());
  EXPECT_TRUE(targets[0].FindPnt(0xFFFFFFFF));
  EXPECT_TRUE(targets.FindPnt(0xFFFFFFFF));
}

TEST_F(FormCtrlTargetTest, CollectionRenamesABuildFormInEveryPoint) {
  Vorn_FormCtrlTargetArray targets;
  for (int i = 0; i < 2; ++i) {
    VornFormCtrlTarget target;
    for (const char* form : {"form", "Form", "form", "other"}) target.GetTargetPntArray().Add(Point("L1", form));
    targets.Add(target);
  }
  const auto expectForms = [&](const char* renamed) {
    for (const VornFormCtrlTarget& target : targets) {
      std::vector<std::string> forms;
      for (const VornFormCtrlTargetPnt& point : target.GetTargetPntArray())
        forms.emplace_back(point.GetBuildFormName());
      EXPECT_THAT(forms, ElementsAre(renamed, "Form", renamed, "other"));
    }
  };
  targets.ChangeBuildName("form", "new");
  expectForms("new");
  targets.ChangeBuildName(targets[0].GetTargetPntArray()[0].GetBuildFormName(), "newer");
  expectForms("newer");
}

// --- sides -----------------------------------------------------------------------------------------------------------

TEST(VornIsPointLR, TakesOnlyWhatIsClearlyNegativeForLeft) {
  struct Row {
    double offset;
    int left;
    int right;
  };
  for (const Row& row : {Row{-3.0, 1, 0}, Row{-0.0000011, 1, 0}, Row{-1e-6, 0, 1}, Row{-0.0000005, 0, 1},
                         Row{0.0, 0, 1}, Row{0.0000005, 0, 1}, Row{3.0, 0, 1}}) {
    EXPECT_EQ(VornIsPoint_LR(VornLocation::Left, row.offset), row.left) << row.offset;
    EXPECT_EQ(VornIsPoint_LR(VornLocation::Right, row.offset), row.right) << row.offset;
  }
}

TEST(VornIsPointLR, TakesEveryPointForAnyOtherSide) {
  for (const int side : {-1, 0, 3}) {
    for (const double offset : {-3.0, 0.0, 3.0}) EXPECT_EQ(VornIsPoint_LR(static_cast<VornLocation>(side), offset), 1);
  }
}

}  // namespace
