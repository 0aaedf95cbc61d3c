#include "host/editing/carried_follower.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>

#include "tests/host/editing.h"

namespace vorn_host {
namespace {

using namespace host_test;  // NOLINT(google-build-using-namespace): the vocabulary of these tests
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

const CString kFill = u8"盛土工"_cp932;
const CString kCut = u8"切土工"_cp932;

/// What a step makes of a document; what it reports goes to `report`.
template <typename Step>
std::string Edited(const std::string& text, EditReport& report, Step&& step) {
  DesignDocument document = ReadText(text);
  DesignEditor editor(document);
  editor.Recalc(10.0);
  report = step(editor);
  return WriteText(document);
}

template <typename Step>
std::string Edited(const std::string& text, Step&& step) {
  EditReport report;
  const std::string written = Edited(text, report, std::forward<Step>(step));
  EXPECT_THAT(report.notes, IsEmpty()) << "something was lost";
  return written;
}

EditReport Mirrored(DesignEditor& editor) { return editor.Mirror(); }
EditReport Crossed(DesignEditor& editor) { return editor.RecalcCrossings(); }
EditReport Regulated(DesignEditor& editor) { return editor.RegulateTargets(); }
EditReport Split(DesignEditor& editor) { return editor.Retype(kCut, kFill); }
EditReport Joined(DesignEditor& editor) { return editor.Retype(kFill, kFill); }
EditReport SortedToP(DesignEditor& editor) {
  CStringArray names;
  names.Add("P");
  return editor.SortForms(names);
}
EditReport RemovedP(DesignEditor& editor) { return editor.RemoveForm("P"); }

/// The element that an attribute of that value stands in, from its start to the end of the line.
std::string LineOf(const std::string& text, std::string_view part) {
  const std::size_t at = text.find(part);
  if (at == std::string::npos) return {};
  const std::size_t start = text.rfind('\n', at) + 1;
  return text.substr(start, text.find('\n', at) - start);
}

/// One section with a surface S, a layer P and the ground; something carried at each form, at the points "L2" and
/// "R1" of the surface, and at two ground points.
std::string Carrying() {
  std::string surface = FillForm();
  surface = With(surface, "<tsf:BuildForm ", "<tsf:BuildForm v=\"S\" ");
  surface = With(surface, "code=\"L2\"", "code=\"L2\" v=\"L2\"");
  surface = With(surface, "code=\"R1\"", "code=\"R1\" v=\"R1\"");
  surface = WithBefore(surface, "        <tsf:ComposedPnt code=\"R2\"", "        <!-- behind R1 -->\n");
  const std::string layer = With(LayerForm("P"), "<tsf:BuildForm ", "<tsf:BuildForm v=\"P\" ");
  std::string ground = GroundXml({"-50.0000 8.0000", "0.0000 8.0000", "60.0000 8.0000"});
  ground = With(ground, "name=\"G1\"", "name=\"G1\" v=\"G1\"");
  ground = WithBefore(ground, "        <tsf:ExistingComposedPnt name=\"G2\"", "        <vendor />\n");
  return OneSection(surface + "      <!-- before P -->\n" + layer + ground);
}

// --- forms and points ----------------------------------------------------------------------------------------------

TEST(CarriedFollower, FollowsPointsAndGroundThroughAMirror) {
  const std::string written = Edited(Carrying(), Mirrored);
  EXPECT_THAT(LineOf(written, "v=\"L2\""), AllOf(HasSubstr("code=\"L2\""), HasSubstr("location=\"Right\"")));
  EXPECT_THAT(LineOf(written, "v=\"R1\""), AllOf(HasSubstr("code=\"R1\""), HasSubstr("location=\"Left\"")));
  EXPECT_THAT(LineOf(written, "v=\"G1\""), HasSubstr("50.0000 8.0000"));
  ExpectInOrder(written, {"code=\"R1\"", "<!-- behind R1 -->", "code=\"R2\"", "code=\"L1\""});
  ExpectInOrder(written, {"name=\"G2\"", "name=\"G1\"", "<vendor />"});
  EXPECT_THAT(LineOf(written, "v=\"S\""), HasSubstr("name=\"S\""));
}

TEST(CarriedFollower, ComesBackWhenMirroredTwice) {
  const std::string text = Carrying();
  EXPECT_EQ(Edited(Edited(text, Mirrored), Mirrored), Rewritten(text));
}

TEST(CarriedFollower, FollowsSeveralGroundsThroughAMirror) {
  const std::string second =
      With(GroundXml({"-9.0000 1.0000", "9.0000 2.0000"}), "name=\"ground\"", "name=\"rock\" v=\"rock\"");
  const std::string written = Edited(OneSection(FillForm() + FlatGround("8.0000") + second), Mirrored);
  EXPECT_THAT(LineOf(written, "v=\"rock\""), HasSubstr("name=\"rock\""));
}

TEST(CarriedFollower, FollowsPointsPastAnInsertedCrossing) {
  const std::string written = Edited(Carrying(), Crossed);
  EXPECT_THAT(LineOf(written, "v=\"L2\""), HasSubstr("code=\"L2\""));
  EXPECT_THAT(LineOf(written, "v=\"R1\""), HasSubstr("code=\"R1\""));
  ExpectInOrder(written, {"code=\"XL\"", "code=\"L2\"", "code=\"R1\"", "<!-- behind R1 -->", "code=\"XR\""});
}

TEST(CarriedFollower, DropsAndReportsWhatHangsOnACrossingThatGoes) {
  const std::string form = FormXml("S", kFillType,
                                   CenterXml() + PointXml("XL", 'L', "Rate", "-1.0000 1.500", false) +
                                       "        <!-- behind XL -->\n" + PointXml("L1", 'L', "Rate", "-3.0000 1.500"));
  const std::string text = OneSection(With(form, "code=\"XL\"", "code=\"XL\" v=\"XL\"") + FlatGround("8.0000"));
  EditReport report;
  const std::string written = Edited(text, report, Crossed);
  EXPECT_THAT(report.notes, ElementsAre(AllOf(HasSubstr("Lost"), HasSubstr("attribute v of tsf:ComposedPnt"),
                                              Not(HasSubstr("comment")))));
  EXPECT_THAT(written, Not(HasSubstr("v=\"XL\"")));
  ExpectInOrder(written, {"code=\"CL\"", "<!-- behind XL -->", "code=\"L1\""});
}

TEST(CarriedFollower, KeepsWhatHangsOnACrossingThatStays) {
  const std::string once = Edited(Carrying(), Crossed);
  const std::string marked = With(once, "code=\"XL\"", "code=\"XL\" v=\"XL\"");
  EXPECT_THAT(LineOf(Edited(marked, Crossed), "v=\"XL\""), HasSubstr("code=\"XL\""));
}

TEST(CarriedFollower, FollowsFormsThroughSorting) {
  const std::string written = Edited(Carrying(), SortedToP);
  EXPECT_THAT(LineOf(written, "v=\"P\""), HasSubstr("name=\"P\""));
  EXPECT_THAT(LineOf(written, "v=\"S\""), HasSubstr("name=\"S\""));
  ExpectInOrder(written, {"v=\"P\"", "v=\"S\"", "v=\"L2\"", "<!-- before P -->", "<tsf:ExistingBuildForm"});
}

TEST(CarriedFollower, FollowsFormsOfOneNameThroughSorting) {
  const std::string second = With(LayerForm("P"), "<tsf:BuildForm ", "<tsf:BuildForm v=\"second\" ");
  const std::string written = Edited(OneSection(FillForm() + LayerForm("P") + second), SortedToP);
  ExpectInOrder(written, {"name=\"P\"", "name=\"P\"", "v=\"second\"", "name=\"S\""});
}

TEST(CarriedFollower, FollowsPointsIntoTheHalvesOfAForm) {
  const std::string written = Edited(Carrying(), Split);
  ExpectInOrder(written,
                {"name=\"切土工\" xSectType=\"切土工\" v=\"S\">", "v=\"L2\"", "<!-- before P -->",
                 "name=\"盛土工\" xSectType=\"盛土工\">", "v=\"R1\"", "<!-- behind R1 -->", "code=\"R2\"", "v=\"P\""});
}

TEST(CarriedFollower, ComesBackWhenTheHalvesAreJoined) {
  std::string text = Carrying();
  text = With(text, "name=\"S\"", "name=\"盛土工\"");
  const std::string before = Rewritten(text);
  const std::string joined = Edited(Edited(text, Split), Joined);
  EXPECT_EQ(joined, before);
}

TEST(CarriedFollower, KeepsACommentBehindAPointOfTheFormThatIsJoined) {
  const std::string written = Edited(Edited(Carrying(), Split), Joined);
  ExpectInOrder(written, {"code=\"L2\"", "code=\"R1\"", "<!-- behind R1 -->", "code=\"R2\"", "</tsf:BuildForm>"});
}

TEST(CarriedFollower, ReportsWhatHangsOnTheFormThatIsJoined) {
  const std::string text = With(Edited(Carrying(), Split), "name=\"盛土工\"", "v=\"right\" name=\"盛土工\"");
  EditReport report;
  const std::string written = Edited(text, report, Joined);
  EXPECT_THAT(report.notes, ElementsAre(HasSubstr("attribute v of tsf:BuildForm")));
  EXPECT_THAT(LineOf(written, "v=\"R1\""), HasSubstr("code=\"R1\""));
}

TEST(CarriedFollower, ReportsWhatGoesWithARemovedForm) {
  EditReport report;
  const std::string written = Edited(Carrying(), report, RemovedP);
  EXPECT_THAT(report.notes, ElementsAre("Lost, with the element that held it: attribute v of tsf:BuildForm"));
  ExpectInOrder(written, {"v=\"S\"", "<!-- before P -->", "<tsf:ExistingBuildForm"});
}

TEST(CarriedFollower, LeavesOtherSectionsAlone) {
  const std::string second =
      With(SectionXml("40.0000", FillForm() + LayerForm("Q")), "name=\"Q\"", "name=\"Q\" v=\"Q\"");
  const std::string text = DesignXml(SectionXml("20.0000", FillForm() + LayerForm("P")) + second);
  EXPECT_THAT(LineOf(Edited(text, RemovedP), "v=\"Q\""), HasSubstr("name=\"Q\""));
}

// --- control targets -----------------------------------------------------------------------------------------------

std::string Targets(const std::string& targets) {
  return DesignXml(SectionXml("20.0000", FillForm() + LayerForm("P")) + targets);
}

TEST(CarriedFollower, FollowsTheSwappedPointsOfATarget) {
  const std::string target = With(With(WidthXml("20.0000", "S", "R1", "L1"), "code=\"R1\"", "code=\"R1\" v=\"R1\""),
                                  "<tsf:FormCtrlTarget ", "<tsf:FormCtrlTarget v=\"T\" ");
  const std::string written = Edited(Targets(target), Regulated);
  EXPECT_THAT(LineOf(written, "v=\"R1\""), HasSubstr("code=\"R1\""));
  ExpectInOrder(written, {"v=\"T\"", "code=\"L1\"", "code=\"R1\""});
}

TEST(CarriedFollower, FollowsTargetsPastARemovedOne) {
  const std::string last =
      With(WidthXml("20.0000", "S", "L2", "R2"), "<tsf:FormCtrlTarget ", "<tsf:FormCtrlTarget v=\"T\" ");
  const std::string text = Targets(WidthXml("20.0000", "S", "L1", "R1") + WidthXml("20.0000", "S", "L1", "R1") +
                                   "    <!-- before T -->\n" + last);
  const std::string written = Edited(text, Regulated);
  ExpectInOrder(written, {"code=\"R1\"", "<!-- before T -->", "v=\"T\"", "code=\"L2\""});
}

TEST(CarriedFollower, ReportsWhatGoesWithARemovedTarget) {
  const std::string repeated =
      With(WidthXml("20.0000", "S", "L1", "R1"), "<tsf:FormCtrlTarget ", "<tsf:FormCtrlTarget v=\"T\" ");
  EditReport report;
  const std::string written = Edited(Targets(WidthXml("20.0000", "S", "L1", "R1") + repeated), report, Regulated);
  EXPECT_THAT(report.notes, ElementsAre("Lost, with the element that held it: attribute v of tsf:FormCtrlTarget"));
  EXPECT_THAT(written, Not(HasSubstr("v=\"T\"")));
}

TEST(CarriedFollower, FollowsTargetsPastThoseOfARemovedForm) {
  const std::string kept =
      With(WidthXml("20.0000", "S", "L1", "R1"), "<tsf:FormCtrlTarget ", "<tsf:FormCtrlTarget v=\"T\" ");
  const std::string written = Edited(Targets(WidthXml("20.0000", "P", "L1", "R1") + kept), RemovedP);
  ExpectInOrder(written, {"v=\"T\"", "buildFormName=\"S\" code=\"L1\""});
}

TEST(CarriedFollower, LeavesTheTargetsOfAnotherSet) {
  const auto set = [](const std::string& name) {
    return SetXml(SectionXml("20.0000", FillForm() + LayerForm(name)) + WidthXml("20.0000", name, "L1", "R1") +
                  With(WidthXml("20.0000", "S", "L1", "R1"), "<tsf:FormCtrlTarget ", "<tsf:FormCtrlTarget v=\"T\" "));
  };
  const std::string written = Edited(Xml(Edition::V41, set("P") + set("Q")), RemovedP);
  ExpectInOrder(written, {"v=\"T\"", "buildFormName=\"Q\"", "v=\"T\"", "buildFormName=\"S\""});
}

// --- edition 2.0 ---------------------------------------------------------------------------------------------------

std::string In20() {
  const auto point = [](const std::string& code, const std::string& side, const std::string& type) {
    return "<tsf:ComposedPnt code=\"" + code + "\" location=\"" + side + "\" slopeType=\"" + type +
           "\" existence=\"true\">3.0000 1.000</tsf:ComposedPnt>";
  };
  const auto target = [](const std::string& codes) {
    return "<tsf:FormCtrlTarget workType=\"RE_FillWork\" controlItem=\"Width\" targetScope=\"S\" targetRegio=\"R\" "
           "targetPntType=\"Inner Outer\" v=\"" +
           codes + "\">" + codes + "</tsf:FormCtrlTarget>\n";
  };
  return Xml(Edition::V20,
             "<tsf:XSections refAlign=\"A\" refVertical=\"V\"><tsf:XSection cumulativeDist=\"20.0000\">"
             "<tsf:BuildForm name=\"盛土面\">" +
                 point("CL", "Center", "Percent") + point("L1", "Left", "Percent") + point("L2", "Left", "Percent") +
                 point("R1", "Right", "Percent") + point("R2", "Right", "Percent") + target("L1 L2") + target("R2 R1") +
                 target("R1 R2") + "</tsf:BuildForm></tsf:XSection></tsf:XSections>");
}

TEST(CarriedFollower20, FollowsTheTargetsOfAFormIntoItsHalvesAndBack) {
  const std::string split = Edited(In20(), Split);
  ExpectInOrder(split, {"name=\"切土工\"", "v=\"L1 L2\">L1 L2<", "name=\"盛土工\"", "v=\"R2 R1\">R2 R1<"});
  const std::string joined = Edited(split, Joined);
  ExpectInOrder(joined, {"v=\"L1 L2\">L1 L2<", "v=\"R2 R1\">R2 R1<", "v=\"R1 R2\">R1 R2<"});
}

TEST(CarriedFollower20, ReportsWhatGoesWithARepeatedTarget) {
  EditReport report;
  const std::string written = Edited(In20(), report, Regulated);
  EXPECT_THAT(report.notes, ElementsAre("Lost, with the element that held it: attribute v of tsf:FormCtrlTarget"));
  ExpectInOrder(written, {"v=\"L1 L2\">L1 L2<", "v=\"R2 R1\">R1 R2<"});
}

TEST(CarriedFollower20, LeavesTargetsThatStandInTheSet) {
  const std::string text = With(In20(), "</tsf:XSection>",
                                "</tsf:XSection><tsf:FormCtrlTarget controlItem=\"Width\" v=\"T\">L1 "
                                "R1</tsf:FormCtrlTarget>");
  const std::string before = Rewritten(text);
  EXPECT_EQ(Edited(text, RemovedP), before);
}

}  // namespace
}  // namespace vorn_host
