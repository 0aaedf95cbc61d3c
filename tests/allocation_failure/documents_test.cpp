#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <string>

#include "tests/allocation_failure/full_objects.h"
#include "tests/allocation_failure/old_or_new.h"
#include "tests/support/parted_run.h"
#include "tests/support/xml_tree.h"

// What elements keep when memory runs out while they are read from documents and written to them.

namespace {

using allocation_test::AllowAllocations;
using allocation_test::ExpectOldOrNew;
using allocation_test::ExpectOldOrNewWhenWritten;
using allocation_test::FullForm;
using allocation_test::FullSection;
using allocation_test::FullSet;
using allocation_test::HasWholeElementsOf;
using allocation_test::kNewName;
using allocation_test::kSurface;
using allocation_test::State;
using allocation_test::StateOf;
using test_support::XmlTree;
using test_support::XmlTreeCursor;

constexpr std::array kEditions = {VornSchema::Version20, VornSchema::Version40, VornSchema::Version41};

/// Reads an element while each allocation fails once: no collection in it gets an element that was not read whole.
template <typename Element>
void ExpectReadWithoutHalves(const std::string& xml) {
  XmlTree tree = XmlTree::Parse(xml);
  const auto read = [&](Element& element) {
    XmlTreeCursor cursor(tree);
    ASSERT_TRUE(element.fromXML(&cursor));
  };
  Element whole;
  read(whole);
  const State expected = StateOf(whole);
  for (std::ptrdiff_t succeeding = 0;; ++succeeding) {
    Element failing;
    try {
      AllowAllocations(succeeding, [&] { read(failing); });
      ASSERT_EQ(StateOf(failing), expected);
      return;
    } catch (const std::bad_alloc&) {
      ASSERT_TRUE(HasWholeElementsOf(StateOf(failing), expected)) << xml << " at allocation " << succeeding;
    }
  }
}

template <typename Element>
void ExpectReadAndWritten(const Element& element) {
  for (const VornSchema::Version edition : kEditions) {
    const test_support::EditionScope scope(edition);
    const auto write = [](Element& writing) {
      XmlTree tree;
      XmlTreeCursor cursor(tree);
      EXPECT_TRUE(writing.toXML(&cursor));
    };
    ExpectOldOrNewWhenWritten(element, write);
    Element written = element;
    const std::string xml = test_support::WriteXml(written);
    if (!xml.empty()) ExpectReadWithoutHalves<Element>(xml);
  }
}

TEST(DocumentWithoutMemory, IsReadAndWrittenInWholeElements) {
  VornBuildForm form = FullForm(kSurface);
  form.SetExport(0);  // writing edition 2.0 changes that
  ExpectReadAndWritten(form);
  form.SetExport(1);
  ExpectReadAndWritten(form);
  ExpectReadAndWritten(VornComposedPnt(form.GetComposedPntArray()[1]));
  ExpectReadAndWritten(VornFormCtrlTarget(form.GetFormCtrlTargetArray()[0]));
  ExpectReadAndWritten(VornFormCtrlTargetPnt(form.GetFormCtrlTargetArray()[0].GetTargetPntArray()[0]));
  const VornXSection section = FullSection(20.0);
  ExpectReadAndWritten(section);
  ExpectReadAndWritten(section.GetExistingBuildFormArray()[0]);
  ExpectReadAndWritten(section.GetExistingBuildFormArray()[0].GetComposedPntArray()[0]);

  VornFileInfo info;
  info.GetCreateDate().SetDateTime(2024, 4, 1, 9, 30, 0);
  info.GetChangeDate().SetDateTime(2024, 4, 2, 9, 30, 0);
  info.SetNote(kNewName);
  ExpectReadAndWritten(info);
  VornStructureType type;
  type.SetJobName(kNewName);
  ExpectReadAndWritten(type);
}

TEST(DocumentWithoutMemory, HasItsSetInWholeElements) {
  VornXSections set = FullSet();
  set.GetXSectionArray().RemoveAll();
  set.GetXSectionArray().Insert(FullSection(20.0));
  set.GetXSectionArray().Insert(FullSection(40.0));
  ExpectReadAndWritten(set);
}

TEST(DocumentWithoutMemory, GathersTheTargetsOfASetOnce) {
  const test_support::EditionScope scope(VornSchema::Version41);
  ExpectOldOrNew(FullSet(), [](VornXSections& set) {
    XmlTree tree;
    XmlTreeCursor cursor(tree);
    EXPECT_TRUE(set.toXML(&cursor));
  });
}

TEST(DocumentWithoutMemory, ReadInPartsGivesTheWholeRunOrNoneOfIt) {
  const test_support::EditionScope scope(VornSchema::Version41);
  const auto sectionAt = [](double station) {
    VornXSection section = model_test::SectionAt(station);
    section.SetName(kNewName);
    return section;
  };
  const auto part = [&](std::initializer_list<double> stations) {
    std::string xml;
    for (const double station : stations) {
      VornXSection section = sectionAt(station);
      xml += test_support::WriteXml(section);
    }
    return xml;
  };
  test_support::PartedRun run({part({20.0, 40.0}), part({60.0}), part({80.0, 100.0})});
  const auto read = [&](Vorn_XSectionArray& sections) {
    test_support::PartedRun::Cursor cursor(run);
    EXPECT_TRUE(sections.fromXML(&cursor));
  };
  Vorn_XSectionArray sections;
  ExpectOldOrNew(sections, read);
  sections.Add(sectionAt(0.0));
  ExpectOldOrNew(sections, read);
}

TEST(ElementTextWithoutMemory, LeavesTheOutput) {
  XmlTree words = XmlTree::Parse("<a>a text of an element, which takes more memory than the other one</a>");
  const XmlTreeCursor text(words);
  ExpectOldOrNew(CString("a text that is there from the beginning"),
                 [&](CString& output) { EXPECT_TRUE(Vorn_Base::QueryValue(&text, output)); });
  XmlTree time = XmlTree::Parse("<a>2024-04-01T09:30:00</a>");
  const XmlTreeCursor cursor(time);
  const COleDateTime before(2000, 1, 2, 3, 4, 5);
  COleDateTime date;
  allocation_test::FailEachAllocation([&] { date = before; },
                                      [&] { EXPECT_TRUE(Vorn_Base::QueryValue(&cursor, date)); },
                                      [&] { EXPECT_EQ(date.m_dt, before.m_dt); });
  EXPECT_EQ(date.Format("%Y-%m-%dT%H:%M:%S"), "2024-04-01T09:30:00");
}

TEST(AttributeWithoutMemory, LeavesTheOutput) {
  const std::string xml = "<a long=\"a text that takes memory of its own\" n=\"12\"/>";
  XmlTree tree = XmlTree::Parse(xml);
  const XmlTreeCursor cursor(tree);
  CString held("a text that is there from the beginning");
  ExpectOldOrNew(held, [&](CString& text) { Vorn_Base::QueryAttr(&cursor, "long", text); });
  double real = 0.0;
  NurLong number;
  allocation_test::FailEachAllocation(
      [&] {
        real = 1.0;
        number = 1;
      },
      [&] {
        EXPECT_TRUE(Vorn_Base::QueryAttr(&cursor, "n", real));
        EXPECT_TRUE(Vorn_Base::QueryAttr(&cursor, "n", number));
      },
      [&] {
        EXPECT_TRUE(real == 1.0 || real == 12.0);
        EXPECT_EQ(number, NurLong(1));
      });
}

}  // namespace
