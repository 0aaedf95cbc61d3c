// What a project or document that means harm may hold beside the design: it must cost neither the program nor its user.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/document/carried_item.h"
#include "host/document/edition_conversion.h"
#include "host/document/xml_nodes.h"
#include "host/editing/carried_follower.h"
#include "tests/host/editing.h"

namespace vorn_host {
namespace {

using namespace host_test;  // NOLINT(google-build-using-namespace): the vocabulary of these tests
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Le;

constexpr int kBeyond = 2147483645;

CarriedContent Loaded(const std::string& items) {
  const std::string text = "<document edition='4.1'>" + items + "</document>";
  pugi::xml_document tree;
  EXPECT_TRUE(tree.load_buffer(text.data(), text.size()));
  return CarriedContent::Load(tree.document_element(), "p.vorn");
}

/// A small design, with items that a project brings for it.
DesignDocument DesignWith(const std::string& items) {
  DesignDocument document = ReadText(DesignXml(
      SectionXml("20.0000", FillForm() + LayerForm("P") + FlatGround("8.0000")) + WidthXml("20.0000", "S", "L1", "R1") +
      WidthXml("20.0000", "P", "L1", "R1") + WidthXml("20.0000", "S", "L1", "R1")));
  document.carried = Loaded(items);
  return document;
}

std::string Item(const std::string& in, const std::string& behind, const std::string& node = "<v />") {
  return "<item in='" + in + "' behind='" + behind + "' name='v'>" + node + "</item>";
}

/// Every step that moves carried content about, one after the other.
Texts EditAll(DesignDocument& document) {
  DesignEditor editor(document);
  CStringArray names;
  names.Add("P");
  Texts notes;
  const auto keep = [&](const EditReport& report) {
    notes.insert(notes.end(), report.notes.begin(), report.notes.end());
  };
  (void)editor.Recalc(10.0);
  keep(editor.Mirror());
  keep(editor.RegulateTargets());
  keep(editor.SortForms(names));
  keep(editor.RemoveForm("P"));
  return notes;
}

/// How long an action takes, in seconds.
template <typename Action>
double Seconds(Action&& action) {
  const auto start = std::chrono::steady_clock::now();
  std::forward<Action>(action)();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

std::string Number(int number) { return std::to_string(number); }

std::string Nested(int levels) {
  std::string text;
  for (int i = 0; i < levels; ++i) text += "<a>";
  for (int i = 0; i < levels; ++i) text += "</a>";
  return text;
}

// --- places beyond the design ----------------------------------------------------------------------------------------

class TargetBeyond : public testing::TestWithParam<int> {};

INSTANTIATE_TEST_SUITE_P(Hostile, TargetBeyond, testing::Values(-1, 3, 200000000, kBeyond),
                         [](const auto& info) { return "Number" + std::to_string(info.index); });

TEST_P(TargetBeyond, IsGoneWhenTargetsMove) {
  DesignDocument document = DesignWith(Item("tsf:XSections/0 tsf:FormCtrlTarget/" + Number(GetParam()), ""));
  EXPECT_THAT(EditAll(document), testing::Contains("Lost, with the element that held it: v"));
  EXPECT_TRUE(document.carried.IsEmpty());
}

TEST_P(TargetBeyond, LeavesWhatStandsBehindItBehindTheLastOne) {
  DesignDocument document = DesignWith(Item("tsf:XSections/0", "tsf:FormCtrlTarget/" + Number(GetParam())));
  EXPECT_LT(Seconds([&] { (void)EditAll(document); }), 5.0);
  const std::vector<CarriedItem>& items = document.carried.Items();
  ASSERT_EQ(items.size(), 1U);
  if (GetParam() < 0) {
    EXPECT_THAT(items[0].anchors, IsEmpty());
  } else {
    // The third target repeats the first, and that of the form P goes with it.
    EXPECT_THAT(items[0].anchors, ElementsAre(ElementStep{"tsf:FormCtrlTarget", 0}));
  }
}

TEST_P(TargetBeyond, HoldsNoPairOfPointsToSwap) {
  DesignDocument document =
      DesignWith(Item("tsf:XSections/0 tsf:FormCtrlTarget/0", "tsf:FormCtrlTargetPnt/" + Number(GetParam())));
  (void)EditAll(document);
  ASSERT_EQ(document.carried.Items().size(), 1U);
  for (const ElementStep& anchor : document.carried.Items()[0].anchors) EXPECT_EQ(anchor.index, GetParam());
}

TEST(HostileCarried, AtNeitherPointOfAPairStaysWhereThePairIsSwapped) {
  const std::string points = "tsf:XSections/0 tsf:FormCtrlTarget/0 tsf:FormCtrlTargetPnt/";
  DesignDocument document = DesignWith(Item(points + "-1", "") + Item(points + "0", "") + Item(points + "1", "") +
                                       Item(points + Number(kBeyond), ""));
  CarriedFollower follower(document);
  follower.FollowTargets(0, {TargetFate{.swapped = true}});
  EXPECT_THAT(follower.Apply(), IsEmpty());
  std::vector<int> indexes;
  for (const CarriedItem& item : document.carried.Items()) indexes.push_back(item.parent.back().index);
  EXPECT_THAT(indexes, ElementsAre(-1, 1, 0, kBeyond));
}

TEST(HostileCarried, StandsBehindTheLastFormThatThereIs) {
  DesignDocument document = DesignWith(Item("tsf:XSections/0 tsf:XSection/0", "tsf:BuildForm/" + Number(kBeyond)));
  DesignEditor editor(document);
  const auto anchors = [&] { return document.carried.Items().at(0).anchors; };
  EXPECT_LT(Seconds([&] { (void)editor.Mirror(); }), 5.0);
  EXPECT_THAT(anchors(), ElementsAre(ElementStep{"tsf:BuildForm", 1}));
  (void)editor.RemoveForm("P");
  EXPECT_THAT(anchors(), ElementsAre(ElementStep{"tsf:BuildForm", 0}));
}

TEST(HostileCarried, StandsBehindTheLastPointAndGroundThatThereAre) {
  const std::string section = "tsf:XSections/0 tsf:XSection/0";
  DesignDocument document = DesignWith(Item(section + " tsf:BuildForm/0", "tsf:ComposedPnt/" + Number(kBeyond)) +
                                       Item(section, "tsf:ExistingBuildForm/" + Number(kBeyond)) +
                                       Item(section + " tsf:BuildForm/0", "tsf:FormCtrlTarget/" + Number(kBeyond)));
  DesignEditor editor(document);
  (void)editor.Recalc(10.0);
  EXPECT_LT(Seconds([&] { (void)editor.Mirror(); }), 5.0);
  const std::vector<CarriedItem>& items = document.carried.Items();
  ASSERT_EQ(items.size(), 3U);
  ASSERT_EQ(items[0].anchors.size(), 1U);
  EXPECT_LE(items[0].anchors[0].index, 4) << "one of the five points";
  EXPECT_GE(items[0].anchors[0].index, 0);
  EXPECT_THAT(items[1].anchors, ElementsAre(ElementStep{"tsf:ExistingBuildForm", 0}));
  EXPECT_THAT(items[2].anchors, IsEmpty());
}

TEST(HostileCarried, IsWrittenWhereverItsPlacesAre) {
  const std::string section = "tsf:XSections/0 tsf:XSection/0";
  DesignDocument document =
      DesignWith(Item(section, "tsf:BuildForm/" + Number(kBeyond)) + Item(section, "tsf:BuildForm/-1") +
                 Item("tsf:XSections/" + Number(kBeyond) + " tsf:XSection/0 tsf:BuildForm/0", "tsf:ComposedPnt/1") +
                 Item(section + " tsf:ExistingBuildForm/" + Number(kBeyond), ""));
  DesignDocument::WriteReport report;
  const std::string written = document.ToBytes("out.xml", {}, report);
  ASSERT_EQ(report.unplaced.size(), 1U);
  EXPECT_EQ(report.unplaced[0].count, 2);
  ExpectInOrder(written, {"<tsf:XSection ", "<v />", "name=\"P\"", "</tsf:BuildForm>", "<v />"});
}

// --- nesting ---------------------------------------------------------------------------------------------------------

TEST(HostileCarried, NestedTooDeepInADocumentIsRefusedWithItsLine) {
  const std::string sentence = "elements are nested more than 1000 levels deep";
  EXPECT_THAT(ErrorOf([] { (void)ReadText(Xml(Edition::V41, Nested(300000))); }),
              AllOf(HasSubstr("design.xml: line 3, column "), HasSubstr(sentence)));
  EXPECT_THAT(ErrorOf([] { (void)ReadText(Xml(Edition::V41, Nested(kDeepestLevel))); }), HasSubstr(sentence));
}

TEST(HostileCarried, NestedAsDeepAsItMayBeIsCarriedThroughEverything) {
  DesignDocument document = ReadText(Xml(Edition::V41, Nested(kDeepestLevel - 1)));
  ConvertEdition(document, Edition::V40);
  const std::string written = WriteText(document);
  EXPECT_THAT(written.size(), Le(10000U)) << "indented, it would take two megabytes";
  EXPECT_EQ(Rewritten(written), written);
  pugi::xml_document tree;
  pugi::xml_node element = tree.append_child("document");
  element.append_attribute("edition") = "4.0";
  document.carried.Store(element);
  EXPECT_EQ(CarriedContent::Load(element, "p.vorn").Items().size(), 1U);
}

TEST(HostileCarried, NestedTooDeepInAProjectIsRefused) {
  const auto error = [](const std::string& items) { return ErrorOf([&] { (void)Loaded(items); }); };
  const std::string sentence = "elements are nested more than 1000 levels deep";
  EXPECT_THAT(error("<item>" + Nested(300000) + "</item>"), AllOf(HasSubstr("p.vorn: "), HasSubstr(sentence)));
  EXPECT_EQ(error("<item>" + Nested(kDeepestLevel - 1) + "</item>"), "");
  EXPECT_THAT(error("<item>" + Nested(kDeepestLevel) + "</item>"), HasSubstr(sentence));
  EXPECT_THAT(error("<item in='tsf:XSections/0'>" + Nested(kDeepestLevel - 1) + "</item>"), HasSubstr(sentence));
}

TEST(HostileCarried, NodesAreWalkedInTheOrderOfTheDocumentWithTheirLevels) {
  pugi::xml_document tree;
  ASSERT_TRUE(tree.load_string("<x><a><b/><c><d/></c></a><e/></x>"));
  Texts visits;
  WalkNodes(tree.document_element().child("a"),
            [&](pugi::xml_node node, int level) { visits.push_back(node.name() + std::to_string(level)); });
  EXPECT_THAT(visits, ElementsAre("a1", "b2", "c2", "d3"));
  WalkNodes(pugi::xml_node(), [](pugi::xml_node, int) { ADD_FAILURE() << "there is nothing"; });
}

// --- what the parser lets pass ---------------------------------------------------------------------------------------

TEST(HostileCarried, AnAttributeTwiceInADocumentIsRefused) {
  const auto error = [](const std::string& content) { return ErrorOf([&] { (void)ReadText(content); }); };
  EXPECT_THAT(error(Xml(Edition::V41, "<tsf:XSections refAlign='A' refAlign='B'/>")),
              AllOf(HasSubstr("line 3"), HasSubstr("tsf:XSections has the attribute refAlign twice")));
  std::string many = "<v";
  for (int i = 0; i < 60000; ++i) many += " a" + Number(i) + "=''";
  EXPECT_EQ(error(Xml(Edition::V41, many + "/>")), "");
  EXPECT_THAT(error(Xml(Edition::V41, many + " a7=''/>")), HasSubstr("v has the attribute a7 twice"));
}

TEST(HostileCarried, ADocumentTypeBehindTheRootOrASecondOneIsRefused) {
  const std::string text = Xml(Edition::V41, "");
  const auto error = [](const std::string& content) { return ErrorOf([&] { (void)ReadText(content); }); };
  EXPECT_THAT(error(text + "<!DOCTYPE a>"), AllOf(HasSubstr("line 4"), HasSubstr("one document type may stand")));
  EXPECT_THAT(error(WithBefore(text, "<tsf:TSFormControlData ", "<!DOCTYPE a>\n<!DOCTYPE a>\n")),
              AllOf(HasSubstr("line 3"), HasSubstr("one document type may stand")));
  EXPECT_EQ(error(WithBefore(text, "<tsf:TSFormControlData ", "<!DOCTYPE a>\n")), "");
}

// --- great numbers ---------------------------------------------------------------------------------------------------

TEST(HostileCarried, DistinctNamesAreCountedInAMoment) {
  constexpr int kNames = 60000;
  std::string content;
  for (int i = 0; i < kNames; ++i) content += "<n" + Number(i) + "/>";
  const DesignDocument document = ReadText(Xml(Edition::V41, content + "<n0/>"));
  std::vector<CarriedContent::Row> rows;
  EXPECT_LT(Seconds([&] { rows = document.carried.Rows(); }), 1.0);
  ASSERT_EQ(rows.size(), static_cast<std::size_t>(kNames));
  EXPECT_EQ(rows[0].name, "n0");
  EXPECT_EQ(rows[0].count, 2);
  EXPECT_EQ(rows.back().name, "n" + Number(kNames - 1));
}

TEST(HostileCarried, ManyItemsAmongManyFormsAreWrittenInAMoment) {
  constexpr int kForms = 20000;
  const std::string form = FormXml("S", kFillType, CenterXml() + PointXml("L1", 'L', "Percent", "3.5000 -2.000"));
  std::string forms;
  for (int i = 0; i < kForms; ++i) forms += form + "      <!-- behind " + Number(i) + " -->\n";
  const std::string text = OneSection(forms);
  DesignDocument document = ReadText(text);
  std::string written;
  EXPECT_LT(Seconds([&] { written = WriteText(document); }), 2.0);
  EXPECT_TRUE(written == text) << "too long to be shown";
}

TEST(HostileCarried, ManyItemsBehindRemovedTargetsMoveInAMoment) {
  constexpr int kTargets = 20000;
  std::string targets = "<!-- 0 -->";
  for (int i = 1; i < kTargets; ++i) targets += "<tsf:FormCtrlTarget/><!-- x -->";
  DesignDocument document = ReadText(DesignXml(targets));
  std::vector<TargetFate> fates(kTargets - 1, TargetFate{.removed = true});
  CarriedFollower follower(document);
  follower.FollowTargets(0, fates);
  EXPECT_LT(Seconds([&] { EXPECT_THAT(follower.Apply(), IsEmpty()); }), 2.0);
  EXPECT_EQ(document.carried.Items().size(), static_cast<std::size_t>(kTargets));
}

}  // namespace
}  // namespace vorn_host
