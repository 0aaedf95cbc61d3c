// `vorn edit`: what it writes, what it tells, and what it refuses.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/host/editing.h"
#include "tests/host/tool.h"

namespace {

using namespace host_test;  // NOLINT(google-build-using-namespace): the vocabulary of these tests
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

/// A road of 4.1 that needs a centre height of 10, with a layer and control targets.
std::string RoadText() {
  return DesignXml(SectionXml("0.0000", FillForm() + LayerForm("P") + FlatGround("8.0000")) +
                   SectionXml("20.0000", FillForm() + LayerForm("P") + FlatGround("7.0000")) +
                   WidthXml("0.0000", "S", "L1", "R1") + WidthXml("20.0000", "P", "L1", "R1"));
}

class EditCommand : public ToolTest {
 protected:
  EditCommand() { WriteAll(In(), RoadText()); }

  [[nodiscard]] std::string In() const { return Path("in.xml"); }
  [[nodiscard]] std::string Out() const { return Path("out.xml"); }
  [[nodiscard]] std::vector<std::string> Arguments(const std::vector<std::string>& steps) const {
    std::vector<std::string> arguments = {"edit", In(), Out()};
    arguments.insert(arguments.end(), steps.begin(), steps.end());
    return arguments;
  }
  /// What the steps make of the road.
  [[nodiscard]] std::string Edited(const std::vector<std::string>& steps) const {
    (void)Output(Arguments(steps));
    return ReadAll(Out());
  }
  [[nodiscard]] std::string Told(const std::vector<std::string>& steps) const { return Output(Arguments(steps)); }
  [[nodiscard]] Json ToldJson(std::vector<std::string> steps) const {
    steps.push_back("--json");
    return OutputJson(Arguments(steps));
  }
  /// Expects a refusal that leaves the output as it was.
  void ExpectRefused(const std::vector<std::string>& steps, const testing::Matcher<const std::string&>& sentence) {
    WriteAll(Out(), "the former content");
    ExpectFailure(Arguments(steps), sentence);
    EXPECT_EQ(ReadAll(Out()), "the former content");
    EXPECT_EQ(FileCount(), 2u) << "a temporary file stays behind";
  }
};

// --- each step -----------------------------------------------------------------------------------------------------

TEST_F(EditCommand, RecalculatesAndFindsTheCrossings) {
  const std::string told = Told({"--recalc", "10", "--cross-points"});
  EXPECT_THAT(told, AllOf(HasSubstr("Written             " + Out()), HasSubstr("Cross sections      2"),
                          HasSubstr("--recalc 10:\n    cross sections changed: 2\n    points placed: 16\n"),
                          HasSubstr("--cross-points:\n    cross sections changed: 2\n    crossings found: 4\n")));
  ExpectInOrder(ReadAll(Out()), {"\"0.0000\"", "XL", "XR", "\"20.0000\"", "XL", "XR"});
}

TEST_F(EditCommand, Mirrors) { ExpectInOrder(Edited({"--mirror"}), {"code=\"R1\" location=\"Left\"", "code=\"L1\""}); }

TEST_F(EditCommand, Shifts) {
  EXPECT_THAT(Edited({"--shift", "0.5,0"}), AllOf(HasSubstr(">0.5000 0.0000<"), Not(HasSubstr(">0.0000 0.0000<"))));
}

TEST_F(EditCommand, Retypes) {
  EXPECT_THAT(Edited({"--retype", "切土工,盛土工"}),
              AllOf(HasSubstr("name=\"切土工\""), HasSubstr("buildFormName=\"盛土工\" code=\"R1\"")));
}

TEST_F(EditCommand, Sorts) { ExpectInOrder(Edited({"--sort", "P,S"}), {"name=\"P\"", "name=\"S\"", "name=\"P\""}); }

TEST_F(EditCommand, RemovesAForm) {
  EXPECT_THAT(Edited({"--remove-form", "P"}), AllOf(Not(HasSubstr("\"P\"")), HasSubstr("buildFormName=\"S\"")));
}

TEST_F(EditCommand, RenamesAForm) {
  EXPECT_THAT(Edited({"--rename", "盛土工:S=路面=仮"}),
              AllOf(HasSubstr("name=\"路面=仮\" xSectType=\"盛土工\""), HasSubstr("buildFormName=\"路面=仮\""),
                    Not(HasSubstr("\"S\" xSect"))));
}

TEST_F(EditCommand, RenamesAFormWithoutAType) {
  WriteAll(In(), OneSection(FormXml("S", "", FillPoints())));
  EXPECT_THAT(Edited({"--rename", ":S=T"}), HasSubstr("name=\"T\" xSectType=\"\""));
}

TEST_F(EditCommand, ClearsTheCodesAndTellsTheTargetsThatAreLost) {
  EXPECT_THAT(Told({"--clear-codes"}),
              AllOf(HasSubstr("codes emptied: 16"), HasSubstr("Control targets that name something"),
                    HasSubstr("form P: control target (Width L1 R1) names R1")));
}

TEST_F(EditCommand, ListsTheFirstLostTargetsAndTheOthersOnDemand) {
  std::string targets;
  for (int i = 0; i < 30; ++i) targets += WidthXml("0.0000", "S", "L1", "R1");
  WriteAll(In(), Replaced(RoadText(), "</tsf:XSections>", targets + "</tsf:XSections>"));
  EXPECT_THAT(Told({"--clear-codes"}),
              AllOf(HasSubstr("not there any more: 64"), HasSubstr("and 44 more (--verbose lists them)")));
  EXPECT_THAT(Told({"--clear-codes", "--verbose"}), Not(HasSubstr("more (--verbose")));
}

TEST_F(EditCommand, RegulatesTheTargets) {
  WriteAll(In(), Replaced(RoadText(), "</tsf:XSections>", WidthXml("0.0000", "S", "R1", "L1") + "</tsf:XSections>"));
  EXPECT_THAT(Told({"--regulate"}), HasSubstr("repeated control targets removed: 1"));
}

// --- the order of steps --------------------------------------------------------------------------------------------

TEST_F(EditCommand, TakesTheStepsInTheOrderGiven) {
  EXPECT_THAT(Edited({"--rename", "盛土工:S=A", "--remove-form", "A", "--rename", "基層工:P=A"}),
              AllOf(Not(HasSubstr("\"S\" xSect")), HasSubstr("name=\"A\" xSectType=\"基層工\"")));
  EXPECT_THAT(Edited({"--remove-form", "P", "--rename", "盛土工:S=P"}), HasSubstr("name=\"P\" xSectType=\"盛土工\""));
  ExpectRefused({"--rename", "盛土工:S=P", "--remove-form", "P"}, HasSubstr("a form P already"));
}

TEST_F(EditCommand, KeepsTheOrderOfPlainStepsAndStepsWithValues) {
  const Json steps =
      ToldJson({"--mirror", "--recalc", "10", "--regulate", "--cross-points", "--shift", "1,0", "--mirror"})["steps"];
  std::vector<std::string> names;
  for (const Json& step : steps) names.push_back(step["step"]);
  EXPECT_THAT(names, ElementsAre("--mirror", "--recalc 10", "--regulate", "--cross-points", "--shift 1,0", "--mirror"));
}

TEST_F(EditCommand, RepeatsSteps) {
  EXPECT_EQ(Edited({"--mirror", "--mirror"}), RoadText());
  EXPECT_EQ(Edited({"--rename", "盛土工:S=T", "--rename", "盛土工:T=S"}), RoadText());
  EXPECT_EQ(Edited({"--sort", "P", "--sort", "S"}), RoadText());
}

TEST_F(EditCommand, TakesOptionsBeforeBetweenAndBehindTheFiles) {
  EXPECT_THAT(Output({"edit", "--mirror", In(), "--recalc", "10", Out(), "--mirror"}), HasSubstr("--recalc 10:"));
  EXPECT_EQ(ReadAll(Out()), RoadText());
}

TEST_F(EditCommand, FindsTheSameCrossingsTheSecondTime) {
  const std::string once = Edited({"--recalc", "10", "--cross-points"});
  WriteAll(In(), once);
  EXPECT_THAT(Told({"--recalc", "10", "--cross-points"}), HasSubstr("--cross-points: changes nothing"));
  EXPECT_EQ(ReadAll(Out()), once);
}

// --- what it tells -------------------------------------------------------------------------------------------------

TEST_F(EditCommand, SaysSoWhenAStepChangesNothing) {
  EXPECT_THAT(Told({"--remove-form", "absent", "--sort", "S"}),
              AllOf(HasSubstr("--remove-form absent: changes nothing\n"), HasSubstr("--sort S: changes nothing\n")));
  EXPECT_EQ(ReadAll(Out()), RoadText());
}

TEST_F(EditCommand, TellsTheSectionsOnlyWhenAsked) {
  const std::vector<std::string> steps = {"--recalc", "10", "--cross-points"};
  EXPECT_THAT(Told(steps), Not(HasSubstr("station 20.0000")));
  std::vector<std::string> verbose = steps;
  verbose.push_back("--verbose");
  EXPECT_THAT(Told(verbose), HasSubstr("    set 1 (A) > station 20.0000: left XL at -7.8950, right XR at 7.8950\n"));
}

TEST_F(EditCommand, CountsTheSectionsThatStay) {
  WriteAll(In(), DesignXml(SectionXml("0.0000", FillForm()) + SectionXml("20.0000", FillForm())));
  const std::string told = Told({"--recalc", "10", "--cross-points"});
  EXPECT_THAT(told, HasSubstr("Note: there is no existing ground (2 cross sections)"));
  EXPECT_THAT(Told({"--recalc", "10", "--cross-points", "--verbose"}),
              HasSubstr("note: set 1 (A) > station 20.0000: there is no existing ground"));
}

TEST_F(EditCommand, TellsProgramsEverything) {
  const Json json = ToldJson({"--recalc", "10", "--cross-points", "--shift", "0,1", "--clear-codes"});
  EXPECT_EQ(json["in"], In());
  EXPECT_EQ(json["out"], Out());
  EXPECT_EQ(json["edition"], "4.1");
  EXPECT_EQ(json["encoding"], "UTF-8");
  EXPECT_EQ(json["crossSections"], 2);
  EXPECT_EQ(json["replacedInReading"], 0);
  EXPECT_EQ(json["replacedInWriting"], 0);
  EXPECT_THAT(json["notUnderstood"], IsEmpty());
  EXPECT_THAT(json["carriedOver"], IsEmpty());
  EXPECT_THAT(json["unplaced"], IsEmpty());
  EXPECT_EQ(json["lostTargets"].size(), 4u);
  ASSERT_EQ(json["steps"].size(), 4u);
  const Json& crossings = json["steps"][1];
  EXPECT_EQ(crossings["step"], "--cross-points");
  EXPECT_EQ(crossings["changed"], true);
  EXPECT_EQ(crossings["changedSections"], 2);
  EXPECT_EQ(crossings["counts"][0], (Json{{"what", "crossings found"}, {"count", 4}}));
  EXPECT_EQ(crossings["sections"][0]["path"], "set 1 (A) > station 0.0000");
  EXPECT_EQ(crossings["sections"][0]["what"], "left XL at -6.3950, right XR at 6.3950");
  EXPECT_THAT(crossings["remarks"], IsEmpty());
  EXPECT_THAT(json["steps"][2]["notes"][0], HasSubstr("moves no point"));
}

TEST_F(EditCommand, TellsProgramsWhatStaysAndWhatIsCarriedOver) {
  WriteAll(In(), OneSection(With(FillForm(), "<tsf:BuildForm ", "<!-- c --><tsf:BuildForm v=\"1\" ")));
  const Json json = ToldJson({"--recalc", "10", "--cross-points"});
  EXPECT_EQ(json["steps"][1]["changed"], false);
  EXPECT_EQ(json["steps"][1]["changedSections"], 0);
  EXPECT_EQ(json["steps"][1]["remarks"][0]["path"], "set 1 (A) > station 20.0000");
  EXPECT_EQ(json["carriedOver"].size(), 2u);
}

TEST_F(EditCommand, TellsWhatIsLostWithAForm) {
  WriteAll(In(), OneSection(FillForm() + With(LayerForm("P"), "name=\"P\"", "name=\"P\" v=\"1\"")));
  EXPECT_THAT(Told({"--remove-form", "P"}),
              HasSubstr("Lost, with the element that held it: attribute v of tsf:BuildForm"));
}

TEST_F(EditCommand, TellsWhatIsNotUnderstood) {
  WriteAll(In(), With(RoadText(), "cumulativeDist=\"20.0000\">\n      <tsf:BuildForm name=\"S\"",
                      "cumulativeDist=\"20,5\">\n      <tsf:BuildForm name=\"S\""));
  EXPECT_THAT(Told({"--mirror"}), HasSubstr("\"20,5\" is no number"));
  EXPECT_EQ(ToldJson({"--mirror"})["notUnderstood"][0]["text"], "20,5");
}

// --- what it refuses -----------------------------------------------------------------------------------------------

TEST_F(EditCommand, RefusesToDoNothing) {
  ExpectRefused({}, AllOf(HasSubstr("a step"), HasSubstr("required")));
  ExpectRefused({"--verbose", "--encoding", "utf-8"}, HasSubstr("a step"));
  ExpectFailure({"edit", In(), "--mirror"}, HasSubstr("OUT"));
}

TEST_F(EditCommand, RefusesBadNumbers) {
  for (const char* number :
       {"", "x", "1x", "1,5", "nan", "inf", "-inf", "1e400", "1000000", "0x10", "--mirror", "+-1", "1 "}) {
    ExpectRefused({"--recalc", number}, AllOf(HasSubstr("--recalc"), HasSubstr("length in metres")));
  }
  ExpectRefused({"--recalc"}, HasSubstr("HEIGHT"));
}

TEST_F(EditCommand, RefusesBadPairs) {
  for (const char* pair : {"", "1", "1,2,3"}) ExpectRefused({"--shift", pair}, HasSubstr("two parts"));
  for (const char* pair : {",", "1,", ",1", "1,x"}) ExpectRefused({"--shift", pair}, HasSubstr("length in metres"));
  for (const char* pair : {"", "a", "a,b,c"}) ExpectRefused({"--retype", pair}, HasSubstr("two parts"));
  for (const char* pair : {"", "a", "a:b", "a=b"}) ExpectRefused({"--rename", pair}, HasSubstr("TYPE:OLD=NEW"));
}

TEST_F(EditCommand, RefusesEmptyNames) {
  ExpectRefused({"--retype", ",b"}, HasSubstr("a name is empty"));
  ExpectRefused({"--sort", "a,,b"}, HasSubstr("a name is empty"));
  ExpectRefused({"--sort", ""}, HasSubstr("a name is empty"));
  ExpectRefused({"--remove-form", ""}, HasSubstr("a name is empty"));
  ExpectRefused({"--rename", "T:=B"}, HasSubstr("a name is empty"));
  ExpectRefused({"--rename", "T:A="}, HasSubstr("a name is empty"));
}

TEST_F(EditCommand, RefusesNamesThatCodePage932CannotHold) {
  ExpectRefused({"--remove-form", "é"}, AllOf(HasSubstr("é"), HasSubstr("code page 932")));
  ExpectRefused({"--rename", "盛土工:S=😀"}, HasSubstr("code page 932"));
  ExpectRefused({"--rename", "盛土工:S=a\x01z"}, HasSubstr("a name holds the control character (U+0001)"));
#ifndef _WIN32  // command lines there are Unicode
  ExpectRefused({"--retype", "盛土工,\xff"}, HasSubstr("code page 932"));
#endif
}

TEST_F(EditCommand, RefusesAnUnknownStep) { ExpectRefused({"--mirror", "--flip"}, HasSubstr("--flip")); }

TEST_F(EditCommand, NamesTheStepAndTheSectionThatCannotBeDone) {
  ExpectRefused({"--mirror", "--cross-points"},
                AllOf(HasSubstr(In() + ": --cross-points: set 1 (A) > station 0.0000"), HasSubstr("elevations")));
  ExpectRefused({"--recalc", "section"}, AllOf(HasSubstr("--recalc section"), HasSubstr("station 0.0000")));
  ExpectRefused({"--remove-form", "P", "--remove-form", "S"}, HasSubstr("the only one"));
}

TEST_F(EditCommand, KeepsTheDocumentThatItCannotEditInPlace) {
  ExpectFailure({"edit", In(), In(), "--mirror", "--cross-points"}, HasSubstr("elevations"));
  EXPECT_EQ(ReadAll(In()), RoadText());
}

TEST_F(EditCommand, TellsWhenTheOutputCannotBeWritten) {
  ExpectFailure({"edit", In(), Path("no/such/directory.xml"), "--mirror"}, HasSubstr("No such file or directory"));
#ifndef _WIN32  // only POSIX systems have a device that is always full
  ExpectFailure({"edit", In(), "/dev/full", "--mirror"}, HasSubstr("No space left"));
#endif
  ExpectFailure({"edit", Path("absent.xml"), Out(), "--mirror"}, HasSubstr("absent.xml"));
  EXPECT_EQ(FileCount(), 1u);
}

// --- numbers -------------------------------------------------------------------------------------------------------

TEST_F(EditCommand, TakesNumbersWithASign) {
  for (const std::vector<std::string>& steps :
       {std::vector<std::string>{"--shift", "-0.5,0"}, std::vector<std::string>{"--shift=-0.5,0"}}) {
    EXPECT_THAT(Edited(steps), HasSubstr(">-0.5000 0.0000<"));
  }
  EXPECT_THAT(Edited({"--shift", "+0.5,+0"}), HasSubstr(">0.5000 0.0000<"));
  EXPECT_THAT(Told({"--recalc", "-3"}), HasSubstr("--recalc -3:"));
  EXPECT_THAT(Told({"--recalc=-3"}), HasSubstr("--recalc -3:"));
  EXPECT_THAT(Told({"--recalc", "-.5"}), HasSubstr("points placed: 16"));
}

TEST_F(EditCommand, ShiftsThereAndBack) {
  WriteAll(In(), Edited({"--shift", "-0.1234,0"}));
  EXPECT_EQ(Edited({"--shift", "0.1234,0"}), RoadText());
}

// --- documents -----------------------------------------------------------------------------------------------------

TEST_F(EditCommand, EditsInPlace) {
  EXPECT_THAT(Output({"edit", In(), In(), "--remove-form", "P"}), HasSubstr("Written             " + In()));
  EXPECT_THAT(ReadAll(In()), Not(HasSubstr("name=\"P\"")));
  EXPECT_EQ(FileCount(), 1u) << "a temporary file stays behind";
}

TEST_F(EditCommand, KeepsTheEncodingOfTheDocument) {
  EXPECT_THAT(Output({"edit", Sample("river-2.0.xml"), Out(), "--mirror", "--mirror"}), HasSubstr("Shift_JIS"));
  EXPECT_TRUE(ReadAll(Out()) == ReadAll(Sample("river-2.0.xml")));
}

TEST_F(EditCommand, WritesTheEncodingAskedFor) {
  (void)Output({"edit", Sample("river-2.0.xml"), Out(), "--mirror", "--encoding", "utf-8"});
  EXPECT_THAT(ReadAll(Out()), AllOf(StartsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>"), HasSubstr("堤防盛土面")));
}

TEST_F(EditCommand, ReadsNamesOfAShiftJisDocument) {
  const Json json = OutputJson({"edit", Sample("river-2.0.xml"), Out(), "--remove-form", "天端舗装", "--json"});
  EXPECT_EQ(json["encoding"], "Shift_JIS");
  EXPECT_EQ(json["steps"][0]["changedSections"], 8);
}

TEST_F(EditCommand, ReplacesWhatCodePage932CannotHoldOnlyWhenAsked) {
  WriteAll(In(), With(RoadText(), "refVertical=\"V\"", "refVertical=\"é\""));
  ExpectRefused({"--mirror"}, HasSubstr("é"));
  EXPECT_THAT(Told({"--mirror", "--lossy"}), HasSubstr("1 character in reading"));
  EXPECT_EQ(ToldJson({"--mirror", "--lossy"})["replacedInReading"], 1);
}

TEST_F(EditCommand, EditsEveryEditionAndKeepsItValid) {
  for (const std::string edition : {"2.0", "4.0", "4.1", "maff-1.0"}) {
    SCOPED_TRACE(edition);
    (void)Output({"sample", In(), "--edition", edition, "--sections", "6"});
    const Json json = ToldJson({"--recalc", "75", "--cross-points", "--shift", "0.25,0", "--sort", "表層", "--mirror"});
    EXPECT_EQ(json["edition"], edition);
    EXPECT_THAT(json["lostTargets"], IsEmpty());
    EXPECT_EQ(OutputJson({"info", Out(), "--json"})["edition"], edition);
    EXPECT_EQ(OutputJson({"check", Out(), "--json"})["valid"], true);
  }
}

TEST_F(EditCommand, KeepsRoadGeometryAndComments) {
  const std::string geometry = Sample("road-with-geometry-4.0.xml");
  EXPECT_THAT(Output({"edit", geometry, Out(), "--mirror", "--mirror"}), HasSubstr("Carried over unchanged: "));
  EXPECT_TRUE(ReadAll(Out()) == ReadAll(geometry));
}

TEST_F(EditCommand, ExplainsItself) {
  EXPECT_THAT(Output({"edit", "--help"}),
              AllOf(HasSubstr("--recalc"), HasSubstr("--cross-points"), HasSubstr("--mirror"), HasSubstr("--shift"),
                    HasSubstr("--retype"), HasSubstr("--sort"), HasSubstr("--remove-form"), HasSubstr("--rename"),
                    HasSubstr("--clear-codes"), HasSubstr("--regulate")));
}

}  // namespace
