#include "vorn/framework/array.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/parted_run.h"
#include "tests/support/xml_tree.h"
#include "vorn/control/form_ctrl_target.h"
#include "vorn/model/build_form_array.h"
#include "vorn/model/existing_build_form.h"
#include "vorn/model/file_info.h"
#include "vorn/model/pres_point.h"
#include "vorn/model/x_section.h"
#include "vorn/model/x_sections.h"

namespace {

using test_support::EditionScope;
using test_support::WriteXml;
using test_support::XmlTree;
using test_support::XmlTreeCursor;
using testing::ElementsAre;
using testing::IsEmpty;

/// An element with one attribute: enabled unless it is named "bad", written unless it is named "hidden", unreadable
/// when it is named "broken".
class Item : public Vorn_Base {
 public:
  explicit Item(const CString& name = "fresh") : Vorn_Base("tsf:Item"), m_name(name) {}

  bool toXML(PimIterator* cursor) override {
    if (m_name == "hidden") return true;
    return MakeChild(cursor, "tsf:Item", nullptr) && AddAttr(cursor, "name", m_name.View()) && ReturnParent(cursor);
  }
  bool fromXML(PimIterator* cursor) override {
    if (!IsOnOwnTag(cursor)) return false;
    CString name;
    if (QueryAttr(cursor, "name", name)) m_name = name;
    return m_name != "broken";
  }
  [[nodiscard]] bool IsEnable() const override {
    ++s_enableTests;
    return m_name != "bad";
  }

  void Serialize(CArchive& ar, const CString& tag) {
    if (ar.IsLoading()) {
      ar >> m_name;
      m_name += tag;
    } else {
      ar << m_name;
    }
  }

  [[nodiscard]] const CString& Name() const { return m_name; }

  static inline int s_enableTests = 0;

 private:
  CString m_name;
};

/// A collection of items with the cardinality of the test's choice.
class Items : public Vorn_Array<Item> {
 public:
  explicit Items(VORN_Occurs occurs = VORN_Occurs::AnyNumber) : m_occurs(occurs) {}
  Items(VORN_Occurs occurs, int count) : m_occurs(occurs) { SetSize(count); }
  Items(std::initializer_list<const char*> names) : m_occurs(VORN_Occurs::AnyNumber) {
    for (const char* name : names) Add(Item(name));
  }

  [[nodiscard]] VORN_Occurs occurs() const override { return m_occurs; }
  [[nodiscard]] CString tagName() const override { return "tsf:Item"; }

  [[nodiscard]] std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const Item& item : *this) names.emplace_back(item.Name());
    return names;
  }

 private:
  VORN_Occurs m_occurs;
};

class ArrayTest : public testing::Test {
 private:
  EditionScope m_edition{VornSchema::Version41};
};

// --- layers below ----------------------------------------------------------------------------------------------------

TEST_F(ArrayTest, KnowsWhichIndicesItHas) {
  const Items items{"a", "b"};
  EXPECT_FALSE(items.IsRange(-1));
  EXPECT_TRUE(items.IsRange(0));
  EXPECT_TRUE(items.IsRange(1));
  EXPECT_FALSE(items.IsRange(2));
  EXPECT_FALSE(Items().IsRange(0));
}

TEST_F(ArrayTest, CopiesAsAWhole) {
  const Items items{"a", "b"};
  Items copy(items);
  Items assigned{"c"};
  assigned = items;
  copy.RemoveAt(0);
  EXPECT_THAT(copy.Names(), ElementsAre("b"));
  EXPECT_THAT(assigned.Names(), ElementsAre("a", "b"));
  EXPECT_THAT(items.Names(), ElementsAre("a", "b"));
}

TEST_F(ArrayTest, RefusesAnIndexItDoesNotHave) {
  Items items{"a"};
  EXPECT_THROW(items[1], CInvalidArgException);
  EXPECT_THROW(items[-1], CInvalidArgException);
  EXPECT_THROW(std::as_const(items)[1], CInvalidArgException);
}

TEST_F(ArrayTest, ListsOfIdentifiersAreArraysToo) {
  KelArraySerial<std::uint32_t> ids;
  ids.Add(7);
  ids.Add(0xFFFFFFFF);
  EXPECT_EQ(ids[1], 0xFFFFFFFFu);
  EXPECT_TRUE(ids.IsRange(1));
}

// --- cardinality and tag ---------------------------------------------------------------------------------------------

TEST_F(ArrayTest, AsksForExactlyOneAndHasNoTagUnlessDerived) {
  const Vorn_Array<Item> plain;
  EXPECT_EQ(plain.occurs(), VORN_Occurs::ExactlyOne);
  EXPECT_TRUE(plain.tagName().IsEmpty());
}

TEST_F(ArrayTest, CardinalityDecidesHowManyElementsAreEnabled) {
  struct Row {
    int value;
    VORN_Occurs occurs;
    bool enabled[4];  ///< by the number of elements
  };
  for (const Row& row : {
           Row{0, VORN_Occurs::ExactlyOne, {false, true, false, false}},
           Row{1, VORN_Occurs::ZeroOrOne, {true, true, false, false}},
           Row{2, VORN_Occurs::AnyNumber, {true, true, true, true}},
           Row{3, VORN_Occurs::OneOrMore, {false, true, true, true}},
           Row{4, VORN_Occurs::TwoOrMore, {false, false, true, true}},
           Row{5, static_cast<VORN_Occurs>(5), {false, false, false, false}},
           Row{-1, static_cast<VORN_Occurs>(-1), {false, false, false, false}},
       }) {
    EXPECT_EQ(static_cast<int>(row.occurs), row.value);
    for (int count = 0; count < 4; ++count) {
      EXPECT_EQ(Items(row.occurs, count).IsEnable(), row.enabled[count]) << row.value << " with " << count;
    }
  }
}

TEST_F(ArrayTest, IsEnabledOnlyWithEveryElement) {
  EXPECT_TRUE((Items{"a", "b"}).IsEnable());
  EXPECT_FALSE((Items{"bad", "b"}).IsEnable());
  EXPECT_FALSE((Items{"a", "bad"}).IsEnable());
}

TEST_F(ArrayTest, StopsAskingAtTheFirstElementThatIsNotEnabled) {
  const Items items{"a", "bad", "c"};
  Item::s_enableTests = 0;
  EXPECT_FALSE(items.IsEnable());
  EXPECT_EQ(Item::s_enableTests, 2);
}

TEST_F(ArrayTest, AsksNoElementWhenTheNumberIsWrong) {
  const Items items(VORN_Occurs::ExactlyOne, 2);
  Item::s_enableTests = 0;
  EXPECT_FALSE(items.IsEnable());
  EXPECT_EQ(Item::s_enableTests, 0);
}

TEST_F(ArrayTest, MatchesItsTagExactly) {
  const Items items;
  EXPECT_TRUE(items.IsMatchTagName("tsf:Item"));
  EXPECT_FALSE(items.IsMatchTagName("tsf:item"));
  EXPECT_FALSE(items.IsMatchTagName("Item"));
  EXPECT_FALSE(items.IsMatchTagName("tsf:Items"));
}

TEST_F(ArrayTest, MatchesARoadGeometryTagWithoutItsPrefix) {
  struct Points : Items {
    [[nodiscard]] CString tagName() const override { return "rgm:Point"; }
  };
  const Points points;
  EXPECT_TRUE(points.IsMatchTagName("rgm:Point"));
  EXPECT_FALSE(points.IsMatchTagName("Point"));
  Vorn_Base::m_staticDataKind = VORN_DataKind::RoadGeometry;
  EXPECT_FALSE(points.IsMatchTagName("rgm:Point"));
  EXPECT_TRUE(points.IsMatchTagName("Point"));
}

/// `elementTag` is what the element says, `tag` what its collection says.
template <typename Collection, typename Element>
void ExpectCollection(const char* tag, VORN_Occurs occurs) {
  const Collection collection;
  EXPECT_EQ(collection.tagName(), tag);
  EXPECT_EQ(Element().tagName(), tag);
  EXPECT_EQ(collection.occurs(), occurs) << tag;
  EXPECT_TRUE(collection.IsEmpty()) << tag;
  EXPECT_TRUE((std::is_base_of_v<Vorn_Array<Element>, Collection>)) << tag;
}

TEST_F(ArrayTest, NamedCollectionsFixTagAndCardinality) {
  ExpectCollection<Vorn_XSectionsArray, VornXSections>("tsf:XSections", VORN_Occurs::OneOrMore);
  ExpectCollection<Vorn_XSectionArray, VornXSection>("tsf:XSection", VORN_Occurs::OneOrMore);
  ExpectCollection<Vorn_BuildFormArray, VornBuildForm>("tsf:BuildForm", VORN_Occurs::OneOrMore);
  ExpectCollection<Vorn_ComposedPntArray, VornComposedPnt>("tsf:ComposedPnt", VORN_Occurs::TwoOrMore);
  ExpectCollection<VornFileInfoArray, VornFileInfo>("tsf:FileInfo", VORN_Occurs::OneOrMore);
  ExpectCollection<Vorn_FormCtrlTargetArray, VornFormCtrlTarget>("tsf:FormCtrlTarget", VORN_Occurs::AnyNumber);
  ExpectCollection<VornFormCtrlTargetPntArray, VornFormCtrlTargetPnt>("tsf:FormCtrlTargetPnt", VORN_Occurs::TwoOrMore);
  ExpectCollection<VornExistingBuildFormArray, VornExistingBuildForm>("tsf:ExistingBuildForm", VORN_Occurs::OneOrMore);
  ExpectCollection<VornExistingComposedPntArray, VornExistingComposedPnt>("tsf:ExistingComposedPnt",
                                                                          VORN_Occurs::TwoOrMore);
  ExpectCollection<Vorn_Array<VornPresPoint>, VornPresPoint>("", VORN_Occurs::ExactlyOne);
}

VornBuildForm EnabledForm() {
  VornComposedPnt point;
  point.SetCode("L1");
  point.SetExistence(VORN_Existence::True);
  VornBuildForm form;
  form.SetName("form", false);
  form.GetComposedPntArray().Add(point);
  form.GetComposedPntArray().Add(point);
  return form;
}

TEST_F(ArrayTest, EmptyBuildFormsAreNotEnabled) { EXPECT_FALSE(Vorn_BuildFormArray().IsEnable()); }

TEST_F(ArrayTest, OneEnabledBuildFormIsEnabled) {
  Vorn_BuildFormArray forms;
  forms.Add(EnabledForm());
  EXPECT_TRUE(forms.IsEnable());
}

TEST_F(ArrayTest, OneComposedPointIsNotEnabled) {
  Vorn_ComposedPntArray points = EnabledForm().GetComposedPntArray();
  EXPECT_TRUE(points.IsEnable());
  points.RemoveAt(1);
  EXPECT_FALSE(points.IsEnable());
}

// --- writing ---------------------------------------------------------------------------------------------------------

TEST_F(ArrayTest, WritesItsElementsInOrderAndNothingAroundThem) {
  Items items{"a", "b"};
  EXPECT_EQ(WriteXml(items), "<tsf:Item name=\"a\"/>\n<tsf:Item name=\"b\"/>\n");
}

TEST_F(ArrayTest, WritesNothingWhenEmptyAndSucceeds) {
  Items items;
  XmlTree tree;
  XmlTreeCursor cursor(tree);
  EXPECT_TRUE(items.toXML(&cursor));
  EXPECT_EQ(cursor.Operations(), 0);
}

TEST_F(ArrayTest, LetsEveryElementDecideWhetherToWrite) {
  Items items{"bad", "hidden", "c"};  // not enabled: written all the same
  EXPECT_EQ(WriteXml(items), "<tsf:Item name=\"bad\"/>\n<tsf:Item name=\"c\"/>\n");
}

TEST_F(ArrayTest, StopsWritingAtTheFirstFailure) {
  Items items{"a", "b"};
  EXPECT_THAT(test_support::WriteFailuresOverlooked(items), IsEmpty());
}

TEST_F(ArrayTest, LeavesWhatIsPartlyWrittenInTheDocument) {
  Items items{"a", "b"};
  XmlTree tree;
  XmlTreeCursor cursor(tree);
  cursor.FailAfter(5);  // the second element's attribute
  EXPECT_FALSE(items.toXML(&cursor));
  EXPECT_EQ(tree.PrintContent(), "<tsf:Item name=\"a\"/>\n<tsf:Item/>\n");
}

// --- reading ---------------------------------------------------------------------------------------------------------

/// A cursor on the first child of the root.
class RunCursor {
 public:
  explicit RunCursor(std::string_view content)
      : m_tree(XmlTree::Parse("<root>" + std::string(content) + "</root>")), m_cursor(m_tree) {
    m_cursor.Child();
  }

  XmlTreeCursor* operator&() { return &m_cursor; }
  XmlTreeCursor* operator->() { return &m_cursor; }
  /// The tag, and the name attribute when there is one, of the element that the cursor stands on.
  [[nodiscard]] std::string Position() const {
    const auto& element = m_cursor.Current();
    return element.attributes.empty() ? element.tag : element.tag + " " + element.attributes.front().second;
  }

 private:
  XmlTree m_tree;
  XmlTreeCursor m_cursor;
};

TEST_F(ArrayTest, ReadsARunAndStaysOnItsLastElement) {
  RunCursor cursor("<tsf:Item name='a'/><tsf:Item name='b'/><tsf:Item name='c'/><tsf:Other/>");
  Items items;
  EXPECT_TRUE(items.fromXML(&cursor));
  EXPECT_THAT(items.Names(), ElementsAre("a", "b", "c"));
  EXPECT_EQ(cursor.Position(), "tsf:Item c");
}

TEST_F(ArrayTest, ReadsARunAtTheEndOfItsParent) {
  RunCursor cursor("<tsf:Other/><tsf:Item name='a'/><tsf:Item name='b'/>");
  cursor->NextSibling();
  Items items;
  EXPECT_TRUE(items.fromXML(&cursor));
  EXPECT_THAT(items.Names(), ElementsAre("a", "b"));
  EXPECT_EQ(cursor.Position(), "tsf:Item b");
}

TEST_F(ArrayTest, ReadsASingleElement) {
  RunCursor cursor("<tsf:Item name='a'/>");
  Items items;
  EXPECT_TRUE(items.fromXML(&cursor));
  EXPECT_THAT(items.Names(), ElementsAre("a"));
}

TEST_F(ArrayTest, ADifferentTagEndsTheRunEvenWhenItGoesOnBehind) {
  for (const std::string_view other : {"<tsf:Other/>", "<tsf:item/>", "<tsf:Items/>"}) {
    RunCursor cursor("<tsf:Item name='a'/>" + std::string(other) + "<tsf:Item name='b'/>");
    Items items;
    EXPECT_TRUE(items.fromXML(&cursor));
    EXPECT_THAT(items.Names(), ElementsAre("a"));
    EXPECT_EQ(cursor.Position(), "tsf:Item a");
  }
}

TEST_F(ArrayTest, AppendsBehindWhatItHolds) {
  RunCursor cursor("<tsf:Item name='b'/>");
  Items items{"a"};
  EXPECT_TRUE(items.fromXML(&cursor));
  EXPECT_THAT(items.Names(), ElementsAre("a", "b"));
}

TEST_F(ArrayTest, ReadsEveryElementIntoAFreshOne) {
  RunCursor cursor("<tsf:Item name='a'/><tsf:Item/>");
  Items items;
  EXPECT_TRUE(items.fromXML(&cursor));
  EXPECT_THAT(items.Names(), ElementsAre("a", "fresh"));
}

TEST_F(ArrayTest, FailsOnARunOfAnotherElement) {
  RunCursor cursor("<tsf:Other/><tsf:Item name='a'/>");
  Items items;
  EXPECT_FALSE(items.fromXML(&cursor));
  EXPECT_TRUE(items.IsEmpty());
  EXPECT_EQ(cursor.Position(), "tsf:Other");
}

TEST_F(ArrayTest, AnElementThatFailsEndsTheRunAndThoseBeforeItStay) {
  RunCursor cursor("<tsf:Item name='a'/><tsf:Item name='broken'/><tsf:Item name='c'/>");
  Items items;
  EXPECT_FALSE(items.fromXML(&cursor));
  EXPECT_THAT(items.Names(), ElementsAre("a"));
}

TEST_F(ArrayTest, FailsWhenTheCursorCannotStepBackOntoTheRun) {
  const std::string_view xml = "<tsf:Item name='a'/><tsf:Other/>";
  RunCursor counting(xml);
  Items items;
  EXPECT_TRUE(items.fromXML(&counting));

  RunCursor cursor(xml);
  cursor->FailAfter(counting->Operations() - cursor->Operations());  // stepping back comes last
  EXPECT_FALSE(items.fromXML(&cursor));
  EXPECT_EQ(cursor.Position(), "tsf:Other");
}

TEST_F(ArrayTest, FailsWhenTheTagOfTheRunCannotBeRead) {
  RunCursor cursor("<tsf:Item name='a'/><tsf:Item name='b'/>");
  cursor->NextSibling();
  cursor->FailAfter(1);
  Items items;
  EXPECT_FALSE(items.fromXML(&cursor));
  EXPECT_TRUE(items.IsEmpty());
  EXPECT_EQ(cursor.Position(), "tsf:Item b");
}

class ArrayParts : public ArrayTest {
 protected:
  bool Read(const std::vector<std::string>& parts) {
    test_support::PartedRun run(parts);
    test_support::PartedRun::Cursor cursor(run);
    const bool read = m_items.fromXML(&cursor);
    if (read) {
      EXPECT_FALSE(cursor.NextSibling()) << "the cursor is not on the last element";
    }
    return read;
  }

  Items m_items;
};

TEST_F(ArrayParts, ComeTogetherInDocumentOrderBehindWhatIsThere) {
  m_items = {"first"};
  EXPECT_TRUE(Read({"<tsf:Item name='a'/><tsf:Item name='b'/>", "<tsf:Item name='c'/>", "<tsf:Item name='d'/>"}));
  EXPECT_THAT(m_items.Names(), ElementsAre("first", "a", "b", "c", "d"));
}

TEST_F(ArrayParts, AreReadUpToTheElementThatFails) {
  EXPECT_FALSE(Read({"<tsf:Item name='a'/>", "<tsf:Item name='b'/><tsf:Item name='broken'/><tsf:Item name='c'/>",
                     "<tsf:Item name='d'/>"}));
  EXPECT_THAT(m_items.Names(), ElementsAre("a", "b"));
}

TEST_F(ArrayParts, GiveNothingWhenTheFirstElementFails) {
  EXPECT_FALSE(Read({"<tsf:Item name='broken'/>", "<tsf:Item name='b'/>"}));
  EXPECT_TRUE(m_items.IsEmpty());
}

TEST_F(ArrayParts, AreNotAskedForWhenTheHostHasNoThreads) {
  EXPECT_TRUE(Read({"<tsf:Item name='a'/><tsf:Item name='b'/>"}));
  EXPECT_THAT(m_items.Names(), ElementsAre("a", "b"));
}

TEST_F(ArrayTest, ReadsThreeCrossSectionsBeforeAControlTarget) {
  RunCursor cursor(
      "<tsf:XSection cumulativeDist='0'/><tsf:XSection cumulativeDist='20'/><tsf:XSection cumulativeDist='40'/>"
      "<tsf:FormCtrlTarget/>");
  Vorn_XSectionArray sections;
  EXPECT_TRUE(sections.fromXML(&cursor));
  EXPECT_EQ(sections.GetSize(), 3);
  EXPECT_EQ(cursor.Position(), "tsf:XSection 40");
  EXPECT_TRUE(cursor->NextSibling());
  EXPECT_EQ(cursor.Position(), "tsf:FormCtrlTarget");
}

}  // namespace
