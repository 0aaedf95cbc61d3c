#include "vorn/framework/base.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <type_traits>

#include "tests/support/xml_tree.h"
#include "vorn/platform/code_page_932.h"

namespace {

using test_support::EditionScope;
using test_support::XmlTree;
using test_support::XmlTreeCursor;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto kFormControl = VORN_DataKind::FormControl;
constexpr auto kRoadGeometry = VORN_DataKind::RoadGeometry;
constexpr auto kKindOfTheHost = static_cast<VORN_DataKind>(2);

/// An element with nothing of its own; shows what derived classes get from the root class.
class Probe : public Vorn_Base {
 public:
  Probe() = default;
  explicit Probe(VornTagName tag) : Vorn_Base(tag) {}

  using Vorn_Base::ForEachChild;
  using Vorn_Base::IsOnOwnTag;
  using Vorn_Base::IsOnTag;
  using Vorn_Base::QueryNamedAttr;
  using Vorn_Base::QueryNamedAttrs;
};

class BaseTest : public testing::Test {
 protected:
  /// The document that cursors of this test work on.
  XmlTreeCursor On(std::string_view xml) {
    m_tree = XmlTree::Parse(xml);
    return XmlTreeCursor(m_tree);
  }
  XmlTreeCursor OnEmptyRoot() { return On("<root/>"); }
  [[nodiscard]] std::string Document() const { return m_tree.PrintWithNamespaces(); }

  static std::string Attribute(const XmlTreeCursor& cursor, std::string_view name) {
    for (const auto& [key, value] : cursor.Current().attributes) {
      if (key == name) return value;
    }
    return "(none)";
  }

  static COleDateTime DateWith(COleDateTime::DateTimeStatus status) {
    COleDateTime date(2024, 5, 6, 7, 8, 9);
    date.SetStatus(status);
    return date;
  }

 private:
  EditionScope m_edition{VornSchema::Version41};
  XmlTree m_tree;
};

const COleDateTime kZeroDate(1899, 12, 30, 0, 0, 0);

// --- the root class --------------------------------------------------------------------------------------------------

TEST_F(BaseTest, RootHasNoTagIsEnabledAndNeitherWritesNorReads) {
  Probe root;
  XmlTreeCursor cursor = OnEmptyRoot();
  EXPECT_TRUE(root.tagName().IsEmpty());
  EXPECT_TRUE(root.IsEnable());
  EXPECT_TRUE(root.toXML(&cursor));
  EXPECT_TRUE(root.fromXML(&cursor));
  EXPECT_EQ(cursor.Operations(), 0);
}

TEST_F(BaseTest, DestroysDerivedElementsThroughTheRoot) { EXPECT_TRUE(std::has_virtual_destructor_v<Vorn_Base>); }

TEST_F(BaseTest, CopiesItsTag) {
  const Probe element("tsf:FileInfo");
  const Probe copy(element);
  Probe assigned("tsf:Other");
  assigned = element;
  EXPECT_EQ(copy.tagName(), "tsf:FileInfo");
  EXPECT_EQ(assigned.tagName(), "tsf:FileInfo");
}

TEST_F(BaseTest, HandsOutACopyOfItsTag) {
  const Probe element("tsf:FileInfo");
  CString tag = element.tagName();
  tag += "s";
  EXPECT_EQ(element.tagName(), "tsf:FileInfo");
}

TEST_F(BaseTest, DataKindStartsAsFormControl) {
  EXPECT_EQ(Vorn_Base::m_staticDataKind, kFormControl);
  EXPECT_EQ(static_cast<int>(kFormControl), 0);
  EXPECT_EQ(static_cast<int>(kRoadGeometry), 1);
  EXPECT_EQ(sizeof(VORN_DataKind), 4u);
}

// --- cursor moves ----------------------------------------------------------------------------------------------------

TEST_F(BaseTest, MovesTheCursorThroughTheDocument) {
  XmlTreeCursor cursor = On("<root><a><b/></a><c/></root>");
  EXPECT_TRUE(Vorn_Base::GoChild(&cursor));
  EXPECT_EQ(cursor.Current().tag, "a");
  EXPECT_TRUE(Vorn_Base::GoNextSibling(&cursor));
  EXPECT_EQ(cursor.Current().tag, "c");
  EXPECT_TRUE(Vorn_Base::GoPrevSibling(&cursor));
  EXPECT_EQ(cursor.Current().tag, "a");
  EXPECT_TRUE(Vorn_Base::ReturnParent(&cursor));
  EXPECT_EQ(cursor.Current().tag, "root");
}

TEST_F(BaseTest, TellsWhenTheCursorCannotMove) {
  XmlTreeCursor cursor = OnEmptyRoot();
  EXPECT_FALSE(Vorn_Base::GoChild(&cursor));
  EXPECT_FALSE(Vorn_Base::GoNextSibling(&cursor));
  EXPECT_FALSE(Vorn_Base::GoPrevSibling(&cursor));
  EXPECT_FALSE(Vorn_Base::ReturnParent(&cursor));
  EXPECT_TRUE(cursor.IsOnRoot());
}

TEST_F(BaseTest, GivesTheTagWithItsPrefix) {
  XmlTreeCursor cursor = On("<rgm:Point/>");
  Vorn_Base::m_staticDataKind = kRoadGeometry;
  CString tag;
  EXPECT_TRUE(Vorn_Base::QueryTagName(&cursor, tag));
  EXPECT_EQ(tag, "rgm:Point");
  cursor.FailAfter(1);
  EXPECT_FALSE(Vorn_Base::QueryTagName(&cursor, tag));
}

// --- tag tests -------------------------------------------------------------------------------------------------------

TEST_F(BaseTest, MatchesTagsExactly) {
  const Probe element("tsf:FileInfo");
  EXPECT_TRUE(element.IsMatchTagName("tsf:FileInfo"));
  for (const std::string_view other :
       {"FileInfo", "tsf:fileInfo", "TSF:FileInfo", "tsf:FileInf", "tsf:FileInfos", " tsf:FileInfo", ""}) {
    EXPECT_FALSE(element.IsMatchTagName(other)) << other;
    EXPECT_FALSE(Vorn_Base::IsMatchTagName(other, "tsf:FileInfo")) << other;
  }
  EXPECT_TRUE(Vorn_Base::IsMatchTagName("code", "code"));
}

TEST_F(BaseTest, NeverStripsTheFormControlPrefix) {
  Vorn_Base::m_staticDataKind = kRoadGeometry;
  EXPECT_EQ(Vorn_Base::DelRgm("tsf:FileInfo"), "tsf:FileInfo");
  EXPECT_TRUE(Probe("tsf:FileInfo").IsMatchTagName("tsf:FileInfo"));
  EXPECT_FALSE(Probe("tsf:FileInfo").IsMatchTagName("FileInfo"));
}

TEST_F(BaseTest, RoadGeometryTagMatchesWithoutItsPrefix) {
  Vorn_Base::m_staticDataKind = kRoadGeometry;
  EXPECT_TRUE(Probe("rgm:Point").IsMatchTagName("Point"));
  EXPECT_FALSE(Probe("rgm:Point").IsMatchTagName("rgm:Point"));  // only the own tag is stripped
  EXPECT_TRUE(Vorn_Base::IsMatchTagName("Point", "rgm:Point"));
  EXPECT_FALSE(Vorn_Base::IsMatchTagName("rgm:Point", "rgm:Point"));
  EXPECT_FALSE(Vorn_Base::IsMatchTagName("rgm:Point", "Point"));
}

TEST_F(BaseTest, OtherKindsKeepTheRoadGeometryPrefix) {
  for (const VORN_DataKind kind : {kFormControl, kKindOfTheHost, static_cast<VORN_DataKind>(-1)}) {
    Vorn_Base::m_staticDataKind = kind;
    EXPECT_EQ(Vorn_Base::DelRgm("rgm:Point"), "rgm:Point");
    EXPECT_FALSE(Probe("rgm:Point").IsMatchTagName("Point"));
    EXPECT_TRUE(Probe("rgm:Point").IsMatchTagName("rgm:Point"));
    EXPECT_TRUE(Vorn_Base::IsMatchTagName("rgm:Point", "rgm:Point"));
  }
}

TEST_F(BaseTest, StripsThePrefixOnceAndOnlyAtTheBeginning) {
  Vorn_Base::m_staticDataKind = kRoadGeometry;
  EXPECT_EQ(Vorn_Base::DelRgm("rgm:Point"), "Point");
  EXPECT_EQ(Vorn_Base::DelRgm("rgm:"), "");
  EXPECT_EQ(Vorn_Base::DelRgm("rgm:rgm:Point"), "rgm:Point");
  for (const std::string_view text : {"RGM:Point", "xrgm:Point", " rgm:Point", "rgm", "Point", ""}) {
    EXPECT_EQ(Vorn_Base::DelRgm(text), text);
  }
}

TEST_F(BaseTest, KnowsItsOwnElement) {
  XmlTreeCursor cursor = On("<tsf:FileInfo/>");
  EXPECT_TRUE(Probe("tsf:FileInfo").IsOnOwnTag(&cursor));
  EXPECT_FALSE(Probe("tsf:Other").IsOnOwnTag(&cursor));
  EXPECT_TRUE(Probe::IsOnTag(&cursor, "tsf:FileInfo"));
  EXPECT_FALSE(Probe::IsOnTag(&cursor, "tsf:Other"));
  cursor.FailAfter(1);
  EXPECT_FALSE(Probe("tsf:FileInfo").IsOnOwnTag(&cursor));
}

// --- writing ---------------------------------------------------------------------------------------------------------

TEST_F(BaseTest, MakesAChildBehindTheOthersAndMovesOntoIt) {
  XmlTreeCursor cursor = On("<root><a/></root>");
  EXPECT_TRUE(Vorn_Base::MakeChild(&cursor, "tsf:B", "http://tsf"));
  EXPECT_EQ(cursor.Current().tag, "tsf:B");
  EXPECT_EQ(Document(), "<root>\n  <a/>\n  <tsf:B xmlns=\"http://tsf\"/>\n</root>\n");
}

TEST_F(BaseTest, MakesChildrenWithTheirPrefixAndNamespaceUnlessInRoadGeometry) {
  for (const VORN_DataKind kind : {kFormControl, kKindOfTheHost}) {
    XmlTreeCursor cursor = OnEmptyRoot();
    Vorn_Base::m_staticDataKind = kind;
    EXPECT_TRUE(Vorn_Base::MakeChild(&cursor, "rgm:Point", "http://rgm"));
    EXPECT_EQ(cursor.Current().tag, "rgm:Point");
    EXPECT_EQ(cursor.Current().namespaceUri, "http://rgm");
  }
}

TEST_F(BaseTest, MakesChildrenOfRoadGeometryWithoutPrefixAndNamespace) {
  Vorn_Base::m_staticDataKind = kRoadGeometry;
  XmlTreeCursor cursor = OnEmptyRoot();
  EXPECT_TRUE(Vorn_Base::MakeChild(&cursor, "rgm:Point", "http://rgm"));
  EXPECT_EQ(cursor.Current().tag, "Point");
  EXPECT_EQ(cursor.Current().namespaceUri, std::nullopt);

  EXPECT_TRUE(Vorn_Base::MakeChild(&cursor, "tsf:Point", "http://tsf"));
  EXPECT_EQ(cursor.Current().tag, "tsf:Point");
  EXPECT_EQ(cursor.Current().namespaceUri, std::nullopt);
}

TEST_F(BaseTest, MakesChildrenWithoutANamespaceWhenThereIsNone) {
  XmlTreeCursor cursor = OnEmptyRoot();
  EXPECT_TRUE(Vorn_Base::MakeChild(&cursor, "tsf:A", nullptr));
  EXPECT_EQ(cursor.Current().namespaceUri, std::nullopt);
}

TEST_F(BaseTest, SetsTextAttributes) {
  XmlTreeCursor cursor = OnEmptyRoot();
  EXPECT_TRUE(Vorn_Base::AddAttr(&cursor, "name", u8"盛土"_cp932));
  EXPECT_TRUE(Vorn_Base::AddAttr(&cursor, "empty", std::string_view()));
  EXPECT_EQ(Attribute(cursor, "name"), u8"盛土"_cp932);
  EXPECT_EQ(Attribute(cursor, "empty"), "");
  EXPECT_TRUE(Vorn_Base::AddAttr(&cursor, "name", "x"));
  EXPECT_EQ(Attribute(cursor, "name"), "x");
}

TEST_F(BaseTest, SetsRealAttributesWithExactlyTheDecimalPlacesAskedFor) {
  struct Row {
    double value;
    KelMrmFigure places;
    const char* text;
  };
  for (const Row& row : {
           Row{2, 0, "2"},
           Row{12.3, 3, "12.300"},
           Row{0, 4, "0.0000"},
           Row{-0.0, 2, "0.00"},
           Row{-1.25, 2, "-1.25"},
           Row{2.5, 0, "3"},
           Row{-2.5, 0, "-3"},
           Row{1.005, 2, "1.01"},
           Row{-1.005, 2, "-1.01"},
           Row{2.5999999999999996, 4, "2.6000"},
           Row{-0.00004, 4, "0.0000"},
           Row{123456789.123456, 6, "123456789.123456"},
           Row{1e-98, 4, "0.0000"},
       }) {
    XmlTreeCursor cursor = OnEmptyRoot();
    EXPECT_TRUE(Vorn_Base::AddAttr(&cursor, "value", row.value, row.places));
    EXPECT_EQ(Attribute(cursor, "value"), row.text) << row.value << " with " << row.places;
  }
}

TEST_F(BaseTest, WritesAnUnsetRealEmptyAndReadsItBackUnset) {
  XmlTreeCursor cursor = OnEmptyRoot();
  EXPECT_TRUE(Vorn_Base::AddAttr(&cursor, "value", -1e-99, 3));
  EXPECT_EQ(Attribute(cursor, "value"), "");
  double value = 5;
  EXPECT_TRUE(Vorn_Base::QueryAttr(&cursor, "value", value));
  EXPECT_EQ(value, -1e-99);
}

TEST_F(BaseTest, WritesARealEmptyThatRoundsToTheUnsetOne) {
  XmlTreeCursor cursor = OnEmptyRoot();
  EXPECT_TRUE(Vorn_Base::AddAttr(&cursor, "value", -1.2e-99, 99));
  EXPECT_EQ(Attribute(cursor, "value"), "");
}

TEST_F(BaseTest, WritesARealEmptyThatHasNoDigits) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  for (const double value : {kInfinity, -kInfinity, std::nan(""), -std::nan("")}) {
    for (const KelMrmFigure places : {0, 3, 12}) {
      XmlTreeCursor cursor = OnEmptyRoot();
      EXPECT_TRUE(Vorn_Base::AddAttr(&cursor, "value", value, places));
      EXPECT_EQ(Attribute(cursor, "value"), "") << value << " with " << places;
    }
  }
}

TEST_F(BaseTest, SetsIntegerAttributesInDecimal) {
  struct Row {
    NurLong value;
    const char* text;
  };
  for (const Row& row : {Row{0, "0"}, Row{7, "7"}, Row{-7, "-7"}, Row{2147483647, "2147483647"},
                         Row{-2147483647, "-2147483647"}, Row{NurLong(), ""}}) {
    for (const bool negativeZero : {false, true}) {
      XmlTreeCursor cursor = OnEmptyRoot();
      EXPECT_TRUE(Vorn_Base::AddAttr(&cursor, "value", row.value, negativeZero));
      EXPECT_EQ(Attribute(cursor, "value"), row.text);
    }
  }
}

TEST_F(BaseTest, WritesAFlaggedZeroOfRoadGeometryAsNegativeZero) {
  struct Row {
    VORN_DataKind kind;
    NurLong value;
    bool negativeZero;
    const char* text;
  };
  for (const Row& row : {
           Row{kRoadGeometry, 0, true, "-0"},
           Row{kRoadGeometry, 0, false, "0"},
           Row{kRoadGeometry, 3, true, "3"},
           Row{kRoadGeometry, NurLong(), true, ""},
           Row{kFormControl, 0, true, "0"},
           Row{kKindOfTheHost, 0, true, "0"},
       }) {
    Vorn_Base::m_staticDataKind = row.kind;
    XmlTreeCursor cursor = OnEmptyRoot();
    EXPECT_TRUE(Vorn_Base::AddAttr(&cursor, "value", row.value, row.negativeZero));
    EXPECT_EQ(Attribute(cursor, "value"), row.text) << static_cast<int>(row.kind) << ", " << row.negativeZero;
  }
}

TEST_F(BaseTest, SetsDateAttributesWithTheTime) {
  XmlTreeCursor cursor = OnEmptyRoot();
  EXPECT_TRUE(Vorn_Base::AddAttr(&cursor, "date", COleDateTime(2024, 5, 6, 7, 8, 9)));
  EXPECT_EQ(Attribute(cursor, "date"), "2024-05-06T07:08:09");
}

TEST_F(BaseTest, WritesANullOrInvalidDateAsAnEmptyAttribute) {
  for (const auto status : {COleDateTime::invalid, COleDateTime::null}) {
    XmlTreeCursor cursor = OnEmptyRoot();
    EXPECT_TRUE(Vorn_Base::AddAttr(&cursor, "date", DateWith(status)));
    EXPECT_EQ(Attribute(cursor, "date"), "");
  }
}

TEST_F(BaseTest, WritesADateEmptyThatLiesOutsideTheCalendar) {
  for (const double days :
       {-657435.0, 2958466.0, 1e300, -1e300, std::numeric_limits<double>::infinity(), std::nan("")}) {
    COleDateTime date;
    date.m_dt = days;
    ASSERT_EQ(date.GetStatus(), COleDateTime::valid);
    XmlTreeCursor cursor = OnEmptyRoot();
    EXPECT_TRUE(Vorn_Base::AddAttr(&cursor, "date", date));
    EXPECT_TRUE(Vorn_Base::SetValue(&cursor, date));
    EXPECT_EQ(Attribute(cursor, "date"), "") << days;
    EXPECT_EQ(cursor.Current().text, "") << days;
  }
}

TEST_F(BaseTest, WritesTheFirstAndTheLastDateOfTheCalendar) {
  XmlTreeCursor cursor = OnEmptyRoot();
  EXPECT_TRUE(Vorn_Base::AddAttr(&cursor, "first", COleDateTime(100, 1, 1, 0, 0, 0)));
  EXPECT_TRUE(Vorn_Base::AddAttr(&cursor, "last", COleDateTime(9999, 12, 31, 23, 59, 59)));
  EXPECT_EQ(Attribute(cursor, "first"), "0100-01-01T00:00:00");
  EXPECT_EQ(Attribute(cursor, "last"), "9999-12-31T23:59:59");
}

TEST_F(BaseTest, SetsTheTextContent) {
  XmlTreeCursor cursor = OnEmptyRoot();
  EXPECT_TRUE(Vorn_Base::SetValue(&cursor, u8"切土"_cp932));
  EXPECT_EQ(cursor.Current().text, u8"切土"_cp932);
}

TEST_F(BaseTest, SetsADateAsTextContentWithoutTheTime) {
  XmlTreeCursor cursor = OnEmptyRoot();
  EXPECT_TRUE(Vorn_Base::SetValue(&cursor, COleDateTime(2024, 5, 6, 7, 8, 9)));
  EXPECT_EQ(cursor.Current().text, "2024-05-06");
}

TEST_F(BaseTest, SetsAnEmptyTextContentForANullOrInvalidDate) {
  for (const auto status : {COleDateTime::invalid, COleDateTime::null}) {
    XmlTreeCursor cursor = On("<root>before</root>");
    EXPECT_TRUE(Vorn_Base::SetValue(&cursor, DateWith(status)));
    EXPECT_EQ(cursor.Current().text, "");
  }
}

TEST_F(BaseTest, ReadsTheDateItWroteAsTextContentAsDayZero) {
  XmlTreeCursor cursor = OnEmptyRoot();
  EXPECT_TRUE(Vorn_Base::SetValue(&cursor, COleDateTime(2024, 5, 6, 7, 8, 9)));
  COleDateTime date(2000, 1, 1, 0, 0, 0);
  EXPECT_TRUE(Vorn_Base::QueryValue(&cursor, date));
  EXPECT_EQ(date, kZeroDate);
}

TEST_F(BaseTest, EveryWriterReportsAFailingCursor) {
  const std::vector<std::function<bool(PimIterator*)>> writers = {
      [](PimIterator* c) { return Vorn_Base::MakeChild(c, "tsf:A", "http://tsf"); },
      [](PimIterator* c) { return Vorn_Base::AddAttr(c, "a", "text"); },
      [](PimIterator* c) { return Vorn_Base::AddAttr(c, "a", 1.5, 2); },
      [](PimIterator* c) { return Vorn_Base::AddAttr(c, "a", -1e-99, 2); },
      [](PimIterator* c) { return Vorn_Base::AddAttr(c, "a", NurLong(1), false); },
      [](PimIterator* c) { return Vorn_Base::AddAttr(c, "a", NurLong(), false); },
      [](PimIterator* c) { return Vorn_Base::AddAttr(c, "a", NurLong(0), true); },
      [](PimIterator* c) { return Vorn_Base::AddAttr(c, "a", kZeroDate); },
      [](PimIterator* c) { return Vorn_Base::AddAttr(c, "a", DateWith(COleDateTime::null)); },
      [](PimIterator* c) { return Vorn_Base::SetValue(c, "text"); },
      [](PimIterator* c) { return Vorn_Base::SetValue(c, kZeroDate); },
  };
  for (const VORN_DataKind kind : {kFormControl, kRoadGeometry}) {
    Vorn_Base::m_staticDataKind = kind;
    for (std::size_t i = 0; i < writers.size(); ++i) {
      XmlTreeCursor cursor = OnEmptyRoot();
      cursor.FailAfter(1);
      EXPECT_FALSE(writers[i](&cursor)) << "writer " << i;
      EXPECT_EQ(Document(), "<root/>\n") << "writer " << i;
      EXPECT_TRUE(writers[i](&cursor)) << "writer " << i;
    }
  }
}

// --- reading ---------------------------------------------------------------------------------------------------------

TEST_F(BaseTest, ReadsTheTextContent) {
  XmlTreeCursor cursor = On("<root>A B</root>");
  CString text = "before";
  EXPECT_TRUE(Vorn_Base::QueryValue(&cursor, text));
  EXPECT_EQ(text, "A B");
}

TEST_F(BaseTest, EmptiesTheOutputWithoutTextContent) {
  XmlTreeCursor cursor = OnEmptyRoot();
  CString text = "before";
  EXPECT_FALSE(Vorn_Base::QueryValue(&cursor, text));
  EXPECT_TRUE(text.IsEmpty());
}

TEST_F(BaseTest, ReadsTheTextContentAsDate) {
  XmlTreeCursor cursor = On("<root>2024-05-06T07:08:09</root>");
  COleDateTime date;
  EXPECT_TRUE(Vorn_Base::QueryValue(&cursor, date));
  EXPECT_EQ(date, COleDateTime(2024, 5, 6, 7, 8, 9));
}

TEST_F(BaseTest, LeavesTheDateAloneWithoutTextContent) {
  XmlTreeCursor cursor = OnEmptyRoot();
  const COleDateTime before(2000, 1, 2, 3, 4, 5);
  COleDateTime date = before;
  EXPECT_FALSE(Vorn_Base::QueryValue(&cursor, date));
  EXPECT_EQ(date, before);
}

TEST_F(BaseTest, GivesAllAttributesInDocumentOrder) {
  XmlTreeCursor cursor = On("<root z='1' a='2' m=''/>");
  CArray<PimAttribute> attributes;
  attributes.Add(PimAttribute("stale", "1"));
  EXPECT_TRUE(Probe::QueryNamedAttrs(&cursor, attributes));
  std::vector<std::string> found;
  for (const PimAttribute& attribute : attributes) {
    found.push_back(std::string(attribute.GetName()) + "=" + attribute.GetValue().GetString());
  }
  EXPECT_THAT(found, ElementsAre("z=1", "a=2", "m="));
}

TEST_F(BaseTest, EmptiesTheAttributesWhenTheCursorFails) {
  XmlTreeCursor cursor = On("<root a='1'/>");
  CArray<PimAttribute> attributes;
  attributes.Add(PimAttribute("stale", "1"));
  cursor.FailAfter(1);
  EXPECT_FALSE(Probe::QueryNamedAttrs(&cursor, attributes));
  EXPECT_TRUE(attributes.IsEmpty());
}

TEST_F(BaseTest, FindsTheFirstAttributeOfExactlyThatName) {
  XmlTreeCursor cursor = On("<root Name='wrong case' rgm:name='prefixed' name='first' name='second'/>");
  Vorn_Base::m_staticDataKind = kRoadGeometry;
  CString value;
  EXPECT_TRUE(Probe::QueryNamedAttr(&cursor, "name", value));
  EXPECT_EQ(value, "first");
  EXPECT_TRUE(Probe::QueryNamedAttr(&cursor, "rgm:name", value));
  EXPECT_EQ(value, "prefixed");
  EXPECT_FALSE(Probe::QueryNamedAttr(&cursor, "NAME", value));
  EXPECT_FALSE(Probe::QueryNamedAttr(&cursor, "nam", value));
  cursor.FailAfter(1);
  EXPECT_FALSE(Probe::QueryNamedAttr(&cursor, "name", value));
}

TEST_F(BaseTest, ReadsAttributesOfEveryKind) {
  XmlTreeCursor cursor = On("<root text='A' real='12.3' integer='-4' date='2024-05-06T07:08:09'/>");
  CString text;
  double real = 0;
  NurLong integer;
  COleDateTime date;
  EXPECT_TRUE(Vorn_Base::QueryAttr(&cursor, "text", text));
  EXPECT_TRUE(Vorn_Base::QueryAttr(&cursor, "real", real));
  EXPECT_TRUE(Vorn_Base::QueryAttr(&cursor, "integer", integer));
  EXPECT_TRUE(Vorn_Base::QueryAttr(&cursor, "date", date));
  EXPECT_EQ(text, "A");
  EXPECT_EQ(real, 12.3);
  EXPECT_EQ(integer, NurLong(-4));
  EXPECT_EQ(date, COleDateTime(2024, 5, 6, 7, 8, 9));
}

TEST_F(BaseTest, ReadsEmptyAttributesAsUnset) {
  XmlTreeCursor cursor = On("<root text='' real='' integer='' date=''/>");
  CString text = "before";
  double real = 1;
  NurLong integer = 1;
  COleDateTime date(2000, 1, 1, 0, 0, 0);
  EXPECT_TRUE(Vorn_Base::QueryAttr(&cursor, "text", text));
  EXPECT_TRUE(Vorn_Base::QueryAttr(&cursor, "real", real));
  EXPECT_TRUE(Vorn_Base::QueryAttr(&cursor, "integer", integer));
  EXPECT_TRUE(Vorn_Base::QueryAttr(&cursor, "date", date));
  EXPECT_TRUE(text.IsEmpty());
  EXPECT_TRUE(KelIsShoki(real));
  EXPECT_FALSE(integer.IsSet());
  EXPECT_EQ(date, kZeroDate);
}

TEST_F(BaseTest, MissingAttributesUnsetEverythingButDates) {
  XmlTreeCursor cursor = OnEmptyRoot();
  const COleDateTime before(2000, 1, 2, 3, 4, 5);
  CString text = "before";
  double real = 1;
  NurLong integer = 1;
  COleDateTime date = before;
  EXPECT_FALSE(Vorn_Base::QueryAttr(&cursor, "a", text));
  EXPECT_FALSE(Vorn_Base::QueryAttr(&cursor, "a", real));
  EXPECT_FALSE(Vorn_Base::QueryAttr(&cursor, "a", integer));
  EXPECT_FALSE(Vorn_Base::QueryAttr(&cursor, "a", date));
  EXPECT_TRUE(text.IsEmpty());
  EXPECT_EQ(real, -1e-99);
  EXPECT_EQ(integer.Value(), INT32_MIN);
  EXPECT_EQ(date, before);
}

TEST_F(BaseTest, WalksOverAllChildrenAndReturns) {
  XmlTreeCursor cursor = On("<root><a/><b/><c/></root>");
  std::string seen;
  EXPECT_TRUE(Probe::ForEachChild(&cursor, [&] {
    seen += cursor.Current().tag;
    return true;
  }));
  EXPECT_EQ(seen, "abc");
  EXPECT_TRUE(cursor.IsOnRoot());
}

TEST_F(BaseTest, WalkOverNoChildrenSucceedsWhereItIs) {
  XmlTreeCursor cursor = On("<root><a/></root>");
  Vorn_Base::GoChild(&cursor);
  EXPECT_TRUE(Probe::ForEachChild(&cursor, [] { return false; }));
  EXPECT_EQ(cursor.Current().tag, "a");
}

TEST_F(BaseTest, WalkEndsAtTheFirstChildThatFails) {
  XmlTreeCursor cursor = On("<root><a/><b/><c/></root>");
  EXPECT_FALSE(Probe::ForEachChild(&cursor, [&] { return cursor.Current().tag != "b"; }));
  EXPECT_EQ(cursor.Current().tag, "b");
}

// --- conversions -----------------------------------------------------------------------------------------------------

TEST(TurnReal, TakesEmptyTextForUnset) { EXPECT_EQ(Vorn_Base::TurnReal(""), -1e-99); }

TEST(TurnReal, TakesTheLeadingDecimalNumber) {
  EXPECT_EQ(Vorn_Base::TurnReal("12.300"), 12.3);
  EXPECT_EQ(Vorn_Base::TurnReal("-0.5m"), -0.5);
  EXPECT_EQ(Vorn_Base::TurnReal("x"), 0.0);
  EXPECT_EQ(Vorn_Base::TurnReal(" "), 0.0);
}

TEST(TurnInt, TakesEmptyTextForUnset) { EXPECT_EQ(Vorn_Base::TurnInt(""), INT32_MIN); }

TEST(TurnInt, TakesTheLeadingDecimalInteger) {
  EXPECT_EQ(Vorn_Base::TurnInt("42"), 42);
  EXPECT_EQ(Vorn_Base::TurnInt("-7.9"), -7);
  EXPECT_EQ(Vorn_Base::TurnInt("-0"), 0);
  EXPECT_EQ(Vorn_Base::TurnInt("x"), 0);
}

TEST(TurnInt, CutsToTheRangeWhoseSmallestNumberMeansUnset) {
  EXPECT_EQ(Vorn_Base::TurnInt("99999999999"), INT32_MAX);
  EXPECT_EQ(Vorn_Base::TurnInt("-2147483647"), -INT32_MAX);
  EXPECT_TRUE(KelIsShokiL(Vorn_Base::TurnInt("-2147483648")));
  EXPECT_TRUE(KelIsShokiL(Vorn_Base::TurnInt("-99999999999")));
  EXPECT_FALSE(NurLong(Vorn_Base::TurnInt("-99999999999")).IsSet());
}

TEST(TurnDate, TakesDateAndTime) {
  const COleDateTime expected(2024, 5, 6, 7, 8, 9);
  EXPECT_EQ(Vorn_Base::TurnDate("2024-05-06T07:08:09"), expected);
  EXPECT_EQ(Vorn_Base::TurnDate("2024-5-6T7:8:09"), expected);
}

TEST(TurnDate, DropsWhatFollowsTheSeconds) {
  const COleDateTime expected(2024, 5, 6, 7, 8, 9);
  for (const std::string_view text : {"2024-05-06T07:08:09.75", "2024-05-06T07:08:09Z", "2024-05-06T07:08:09+09:00"}) {
    EXPECT_EQ(Vorn_Base::TurnDate(text), expected) << text;
  }
}

TEST(TurnDate, TakesABareDateForDayZero) {
  EXPECT_EQ(Vorn_Base::TurnDate("2024-05-06"), kZeroDate);
  EXPECT_EQ(Vorn_Base::TurnDate("2024-05-06").GetStatus(), COleDateTime::valid);
}

TEST(TurnDate, TakesATextThatStopsShortForDayZero) {
  for (const std::string_view text : {"", "2024", "2024-05", "2024-05-06T", "2024-05-06T07",
                                      "2024-05-06T07:", "2024-05-06T07:08", "2024-05-06T07:08:", "2024-05-06T07:08:9",
                                      "2024/05/06T07:08:09", "2024-05-06 07:08:09", "2024-05-06t07:08:09"}) {
    const COleDateTime date = Vorn_Base::TurnDate(text);
    EXPECT_EQ(date.m_dt, 0.0) << text;
    EXPECT_EQ(date.GetStatus(), COleDateTime::valid) << text;
  }
}

TEST(TurnDate, TakesNoSecondByteOfACharacterForASeparator) {
  // The second byte of this kana is that of the letter T.
  const std::string_view text =
      "2024-05-06\x83\x54"
      "07:08:09";
  EXPECT_EQ(Vorn_Base::TurnDate(text), kZeroDate);
  EXPECT_EQ(Vorn_Base::TurnDate(text).GetStatus(), COleDateTime::valid);
  // A character before the separator leaves the separator what it is.
  EXPECT_EQ(Vorn_Base::TurnDate("2024-05-06\x83\x54T07:08:09"), COleDateTime(2024, 5, 6, 7, 8, 9));
}

TEST(TurnDate, MarksADateThatDoesNotExistInvalid) {
  for (const std::string_view text :
       {"2024-13-06T07:08:09", "2024-00-06T07:08:09", "2023-02-29T07:08:09", "2024-05-00T07:08:09",
        "2024-05-06T24:08:09", "2024-05-06T07:60:09", "2024-05-06T07:08:60", "-05-06T07:08:09", "2024--06T07:08:09",
        "99999-05-06T07:08:09"}) {
    EXPECT_EQ(Vorn_Base::TurnDate(text).GetStatus(), COleDateTime::invalid) << text;
  }
}

std::vector<std::string> Divided(std::string_view text) {
  CStringArray items;
  items.Add("stale");
  Vorn_Base::DivideString(text, items);
  return {items.begin(), items.end()};
}

TEST(DivideString, SplitsAtSingleBlanks) {
  EXPECT_THAT(Divided("a"), ElementsAre("a"));
  EXPECT_THAT(Divided("a b"), ElementsAre("a", "b"));
  EXPECT_THAT(Divided("L1 R1 XL"), ElementsAre("L1", "R1", "XL"));
  EXPECT_THAT(Divided("a\tb\nc"), ElementsAre("a\tb\nc"));
}

TEST(DivideString, EmptiesTheItemsForAnEmptyText) { EXPECT_THAT(Divided(""), IsEmpty()); }

TEST(DivideString, TakesARunOfBlanksForOneEmptyItem) {
  EXPECT_THAT(Divided("a  b"), ElementsAre("a", "", "b"));
  EXPECT_THAT(Divided("a   b"), ElementsAre("a", "", "b"));
  EXPECT_THAT(Divided("a  b  c"), ElementsAre("a", "", "b", "", "c"));
}

TEST(DivideString, TakesLeadingBlanksForOneEmptyItem) {
  EXPECT_THAT(Divided(" a"), ElementsAre("", "a"));
  EXPECT_THAT(Divided("  a"), ElementsAre("", "a"));
  EXPECT_THAT(Divided(" "), ElementsAre(""));
  EXPECT_THAT(Divided("   "), ElementsAre(""));
}

TEST(DivideString, TakesASingleTrailingBlankForNothing) {
  EXPECT_THAT(Divided("a "), ElementsAre("a"));
  EXPECT_THAT(Divided("a  "), ElementsAre("a", ""));
}

}  // namespace
