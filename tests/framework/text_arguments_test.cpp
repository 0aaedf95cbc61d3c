#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/xml_tree.h"
#include "vorn/control/form_ctrl_target.h"
#include "vorn/framework/base.h"
#include "vorn/model/composed_pnt.h"
#include "vorn/platform/code_page_932.h"
#include "vorn/platform/sil_string.h"

// Host code keeps its texts in the framework's string and hands them over as they are.

namespace {

using test_support::EditionScope;
using test_support::XmlTree;
using test_support::XmlTreeCursor;
using testing::ElementsAre;

class TextArguments : public testing::Test {
 protected:
  [[nodiscard]] std::string Document() const { return m_tree.PrintContent(); }

  EditionScope m_edition{VornSchema::Version41};
  XmlTree m_tree;
  XmlTreeCursor m_cursor{m_tree};
};

TEST_F(TextArguments, OfWritersMayBeCStrings) {
  const CString tag = "tsf:A";
  const CString name = "name";
  const CString value = "value";
  const CString uri = "urn:tsf";
  EXPECT_TRUE(Vorn_Base::MakeChild(&m_cursor, tag, uri));
  EXPECT_TRUE(Vorn_Base::AddAttr(&m_cursor, name, value));
  EXPECT_TRUE(Vorn_Base::AddAttr(&m_cursor, CString("length"), 1.5, 3));
  EXPECT_TRUE(Vorn_Base::AddAttr(&m_cursor, CString("count"), NurLong(7), false));
  EXPECT_TRUE(Vorn_Base::AddAttr(&m_cursor, CString("none"), CString()));
  EXPECT_TRUE(Vorn_Base::SetValue(&m_cursor, CString("text")));
  EXPECT_EQ(m_cursor.Current().namespaceUri, "urn:tsf");
  EXPECT_EQ(Document(), "<tsf:A name=\"value\" length=\"1.500\" count=\"7\" none=\"\">text</tsf:A>\n");
}

TEST_F(TextArguments, KeepAByteOfValueZeroWhenTheyAreCStrings) {
  const CString value = std::string_view("a\0b", 3);
  EXPECT_TRUE(Vorn_Base::AddAttr(&m_cursor, "name", value));
  EXPECT_EQ(m_cursor.Current().attributes.front().second, std::string("a\0b", 3));
}

TEST_F(TextArguments, OfConversionsMayBeCStrings) {
  EXPECT_EQ(Vorn_Base::TurnReal(CString("12.5")), 12.5);
  EXPECT_EQ(Vorn_Base::TurnReal(CString()), kNurUnsetReal);
  EXPECT_EQ(Vorn_Base::TurnInt(CString("42")), 42);
  EXPECT_EQ(Vorn_Base::TurnInt(CString()), kNurUnsetLong);
  EXPECT_EQ(Vorn_Base::TurnDate(CString("2024-05-06T07:08:09")), COleDateTime(2024, 5, 6, 7, 8, 9));
  EXPECT_EQ(SilString::ToDouble(CString("12.5")), 12.5);
  EXPECT_EQ(SilString::ToInteger(CString("42")), 42);
  EXPECT_EQ(SilString::HanToZen(CString("A")), u8"Ａ"_cp932);
  CStringArray items;
  Vorn_Base::DivideString(CString("L1 R1"), items);
  EXPECT_THAT(std::vector<std::string>(items.begin(), items.end()), ElementsAre("L1", "R1"));
}

TEST_F(TextArguments, OfTagTestsMayBeCStrings) {
  Vorn_Base::m_staticDataKind = VORN_DataKind::RoadGeometry;
  const CString tag = "rgm:Point";
  const CString name = "Point";
  EXPECT_EQ(Vorn_Base::DelRgm(tag), "Point");
  EXPECT_TRUE(Vorn_Base::IsMatchTagName(name, tag));
  EXPECT_FALSE(Vorn_Base::IsMatchTagName(tag, name));
  EXPECT_TRUE(VornFormCtrlTarget().IsMatchTagName(CString("tsf:FormCtrlTarget")));
  EXPECT_TRUE(Vorn_FormCtrlTargetArray().IsMatchTagName(CString("tsf:FormCtrlTarget")));
}

TEST_F(TextArguments, OfTextsMayBeTextsThemselves) {
  const CString text = "abcABC";
  EXPECT_EQ(text.Compare(CString("abcABC")), 0);
  EXPECT_LT(text.Compare(CString("b")), 0);
  EXPECT_EQ(text.CompareNoCase(CString("ABCabc")), 0);
  EXPECT_EQ(text.Find(CString("AB")), 3);
  EXPECT_EQ(text.Find(CString("AB"), 4), -1);
  EXPECT_EQ(text.Find('B'), 4);
  EXPECT_EQ(text.Find('b', 2), -1);
  CString changed;
  changed = text;
  changed += CString("d");
  EXPECT_EQ(changed, "abcABCd");
  const std::string_view view = text;
  EXPECT_EQ(view, "abcABC");
}

TEST_F(TextArguments, OfControlTargetsMayBeCStrings) {
  VornFormCtrlTarget target;
  EXPECT_TRUE(target.SetWorkTypeString(CString("RE_FillWork")));
  EXPECT_TRUE(target.SetControlItemString(CString("Width")));
  EXPECT_TRUE(target.SetTargetPntTypeString(CString("Left Right")));
  EXPECT_EQ(target.GetWorkType(), VornFormCtrlTarget::WorkType::FillWork);
  EXPECT_EQ(target.GetControlItem(), VornFormCtrlTarget::ControlItem::Width);
  EXPECT_EQ(target.GetTargetPntType(), VornFormCtrlTarget::TargetPntType::LeftRight);
  // What one target tells, another takes.
  VornFormCtrlTarget other;
  EXPECT_TRUE(other.SetControlItemString(target.GetControlItemString()));
  EXPECT_EQ(other.GetControlItem(), target.GetControlItem());
}

TEST_F(TextArguments, OfComposedPointsMayBeCStrings) {
  VornComposedPnt point;
  EXPECT_TRUE(point.SetLocationStr(CString("Left")));
  EXPECT_TRUE(point.SetExistenceString(CString("true")));
  EXPECT_TRUE(point.SetComponentTypeStr(CString("Roadbed")));
  EXPECT_TRUE(point.SetSlopeTypeStr(CString("Percent")));
  EXPECT_TRUE(point.SetDataTypeStr(CString("Rate")));
  point.GetTextVal(CString("1.5 -2.5"));
  EXPECT_EQ(point.GetX(), NurReal(1.5));
}

}  // namespace
