// The tool as a whole, and its commands that read, check, convert and make documents.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#ifndef _WIN32
#include <sys/stat.h>
#include <unistd.h>
#endif

#include "tests/host/tool.h"

namespace {

namespace fs = std::filesystem;

using namespace host_test;  // NOLINT(google-build-using-namespace): the vocabulary of these tests
using testing::AllOf;
using testing::Contains;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class Cli : public ToolTest {};

// --- the command line ------------------------------------------------------------------------------------------------

TEST_F(Cli, ExplainsItself) {
  EXPECT_THAT(Output({"--help"}),
              AllOf(HasSubstr("info"), HasSubstr("check"), HasSubstr("convert"), HasSubstr("sample"),
                    HasSubstr("datums"), HasSubstr("crs"), HasSubstr("settings")));
  EXPECT_THAT(Output({"convert", "--help"}), AllOf(HasSubstr("--edition"), HasSubstr("maff-1.0")));
  EXPECT_THAT(Output({"--version"}), StartsWith("vorn "));
}

TEST_F(Cli, RefusesMisuse) {
  ExpectFailure(std::vector<std::string>{}, HasSubstr("--help"));
  ExpectFailure({"frobnicate"}, HasSubstr("--help"));
  ExpectFailure({"info"}, HasSubstr("FILE"));
  ExpectFailure({"info", Sample("road-4.1.xml"), "another.xml"}, HasSubstr("another.xml"));
  ExpectFailure({"check", Sample("road-4.1.xml"), "--assume", "3.0"}, HasSubstr("3.0"));
  ExpectFailure({"convert", Sample("road-4.1.xml")}, HasSubstr("OUT"));
  ExpectFailure({"convert", Sample("road-4.1.xml"), Path("a.xml"), "--edition", "5"}, HasSubstr("5"));
  ExpectFailure({"convert", Sample("road-4.1.xml"), Path("a.xml"), "--encoding", "euc-jp"}, HasSubstr("euc-jp"));
  ExpectFailure({"sample", Path("a.xml"), "--sections", "0"}, HasSubstr("--sections"));
  ExpectFailure({"sample", Path("a.xml"), "--sections", "100001"}, HasSubstr("--sections"));
  ExpectFailure({"sample", Path("a.xml"), "--kind", "railway"}, HasSubstr("railway"));
  EXPECT_EQ(FileCount(), 0u);
}

// --- info ------------------------------------------------------------------------------------------------------------

TEST_F(Cli, InfoShowsWhatADocumentHolds) {
  EXPECT_THAT(Output({"info", Sample("road-4.1.xml")}),
              AllOf(HasSubstr("4.1"), HasSubstr("UTF-8"), HasSubstr("2024-04-01T09:00:00"), HasSubstr("道路土工"),
                    HasSubstr("alignment 道路中心線, vertical 計画縦断"), HasSubstr("10, stations 0.0000 to 160.0000"),
                    HasSubstr("10  上層路盤 [上層路盤工], 30 points"), HasSubstr("Thickness"),
                    HasSubstr("10 forms with 170 points")));
  EXPECT_THAT(Output({"info", Sample("river-2.0.xml")}), AllOf(HasSubstr("Shift_JIS"), HasSubstr("堤防盛土面")));
  EXPECT_THAT(Output({"info", Sample("road-with-geometry-4.0.xml")}),
              AllOf(HasSubstr("rgm:RoadGm"), HasSubstr("comment (2)")));
}

TEST_F(Cli, InfoTellsProgramsTheSame) {
  const Json json = OutputJson({"info", Sample("road-4.1.xml"), "--json"});
  EXPECT_EQ(json["edition"], "4.1");
  EXPECT_EQ(json["editionAssumed"], false);
  EXPECT_EQ(json["encoding"], "UTF-8");
  EXPECT_EQ(json["fileInformation"][0]["createDate"], "2024-04-01T09:00:00");
  EXPECT_EQ(json["structureType"]["type"], "道路土工");
  ASSERT_EQ(json["sets"].size(), 1u);
  const Json& set = json["sets"][0];
  EXPECT_EQ(set["crossSections"]["count"], 10);
  EXPECT_EQ(set["crossSections"]["firstStation"], 0.0);
  EXPECT_EQ(set["crossSections"]["lastStation"], 160.0);
  EXPECT_EQ(set["crossSections"]["changesOfShape"], 1);
  EXPECT_EQ(set["buildForms"]["count"], 50);
  EXPECT_EQ(set["existingGround"]["points"], 170);
  EXPECT_GT(set["controlTargets"]["byItem"]["SlopeLength"], 0);
  EXPECT_THAT(json["carriedOver"], IsEmpty());

  const Json river = OutputJson({"info", Sample("river-2.0.xml"), "--json"});
  EXPECT_EQ(river["edition"], "2.0");
  EXPECT_EQ(river["encoding"], "Shift_JIS");
  EXPECT_TRUE(river["structureType"].is_null());
  EXPECT_GT(river["sets"][0]["controlTargets"]["count"], 0) << "targets inside the forms count too";
  EXPECT_EQ(river["sets"][0]["existingGround"]["forms"], 0);

  const Json geometry = OutputJson({"info", Sample("road-with-geometry-4.0.xml"), "--json"});
  EXPECT_THAT(geometry["carriedOver"], Contains(Json{{"name", "rgm:RoadGm"}, {"count", 1}}));
}

TEST_F(Cli, InfoKeepsTextOfADocumentInItsLine) {
  const std::string file = Damaged("road-4.1.xml", "projectPhase=\"施工\"", "projectPhase=\"&#10;Edition  9.9\"");
  EXPECT_THAT(Output({"info", file}), AllOf(HasSubstr("Edition  9.9"), Not(HasSubstr("\nEdition  9.9"))));
}

// --- files that are none ---------------------------------------------------------------------------------------------

TEST_F(Cli, RefusesWhatIsNoDocument) {
  WriteAll(Path("empty.xml"), "");
  WriteAll(Path("binary.xml"), std::string_view("\x7f"
                                                "ELF\x02\x01\x01\0\0\0\xff\xfe\xfd",
                                                13));
  WriteAll(Path("text.xml"), "just text");
  for (const std::string command : {"info", "check"}) {
    ExpectFailure({command, Path("missing.xml")}, HasSubstr("missing.xml"));
    ExpectFailure({command, Path("empty.xml")}, HasSubstr("empty"));
    ExpectFailure({command, Path("binary.xml")}, HasSubstr("binary.xml"));
    ExpectFailure({command, Path("text.xml")}, HasSubstr("text.xml"));
    ExpectFailure({command, Path("")}, HasSubstr("directory"));
#ifndef _WIN32  // only Linux has such a file
    ExpectFailure({command, "/proc/self/mem"}, HasSubstr("cannot be read"));
#endif
  }
  ExpectFailure({"convert", Path("missing.xml"), Path("out.xml")}, HasSubstr("missing.xml"));
  EXPECT_FALSE(fs::exists(Path("out.xml")));
}

TEST_F(Cli, NamesLineAndColumnOfWhatIsMalformed) {
  WriteAll(Path("a.xml"), "<?xml version=\"1.0\"?>\n<tsf:Root>\n  <tsf:A></tsf:B>\n</tsf:Root>\n");
  ExpectFailure({"info", Path("a.xml")}, AllOf(HasSubstr("a.xml: line 3, column "), HasSubstr("malformed")));
  const std::string whole = ReadAll(Sample("road-4.1.xml"));
  WriteAll(Path("a.xml"), whole.substr(0, whole.size() / 2));
  ExpectFailure({"check", Path("a.xml")}, AllOf(HasSubstr("line "), HasSubstr("column ")));
}

TEST_F(Cli, NamesLineAndCharacterThatCodePage932CannotHold) {
  const std::string file = Damaged("road-4.1.xml", "projectPhase=\"施工\"", "projectPhase=\"施é工\"");
  ExpectFailure({"info", file}, AllOf(HasSubstr("line 5"), EndsWith("é (U+00E9); --lossy replaces it with 〓\n")));
  EXPECT_THAT(Output({"info", file, "--lossy"}), HasSubstr("施〓工"));
  EXPECT_EQ(OutputJson({"info", file, "--lossy", "--json"})["replacedCharacters"], 1);
  ExpectFailure({"convert", file, Path("out.xml")}, HasSubstr("é"));
  EXPECT_FALSE(fs::exists(Path("out.xml")));
  EXPECT_EQ(OutputJson({"convert", file, Path("out.xml"), "--lossy", "--json"})["replacedInReading"], 1);
}

TEST_F(Cli, RefusesAnUnknownEditionAndShowsWhatItFound) {
  const std::string file = Damaged("road-4.1.xml", "TSFormControl-4.1.xsd", "TSFormControl-4.7.xsd");
  for (const std::string command : {"info", "check"}) {
    ExpectFailure({command, file}, AllOf(HasSubstr("TSFormControl-4.7.xsd"), HasSubstr("TSFormControl-4.1.xsd"),
                                         HasSubstr("TSFormControlData_20.xsd"),
                                         EndsWith("\n an edition can be assumed: --assume 4.1\n")));
  }
  ExpectFailure({"convert", file, Path("out.xml")}, HasSubstr("TSFormControl-4.7.xsd"));
  WriteAll(Path("other.xml"), "<html/>");
  ExpectFailure({"info", Path("other.xml")}, AllOf(HasSubstr("not recognised"), Not(HasSubstr("--assume"))));

  EXPECT_THAT(Output({"info", file, "--assume", "4.1"}), HasSubstr("4.1 (assumed)"));
  EXPECT_EQ(OutputJson({"check", file, "--assume", "4.1", "--json"})["editionAssumed"], true);
  EXPECT_EQ(OutputJson({"convert", file, Path("out.xml"), "--assume", "4.1", "--json"})["toEdition"], "4.1");
  EXPECT_EQ(OutputJson({"info", Path("out.xml"), "--json"})["editionAssumed"], false) << "written with its edition";
}

// --- check -----------------------------------------------------------------------------------------------------------

TEST_F(Cli, CheckFindsNothingWrongInTheSamples) {
  for (const fs::directory_entry& sample : fs::directory_iterator(VORN_SAMPLES)) {
    if (sample.path().extension() != ".xml") continue;
    EXPECT_THAT(Output({"check", sample.path().string()}), HasSubstr("ok: " + sample.path().string()));
    const Json json = OutputJson({"check", sample.path().string(), "--json"});
    EXPECT_EQ(json["valid"], true);
    EXPECT_EQ(json["errors"], 0);
  }
}

TEST_F(Cli, CheckListsNotesOnlyWhenAsked) {
  const std::vector<std::string> arguments = {"check", Sample("road-4.1.xml")};
  EXPECT_THAT(Output(arguments), AllOf(HasSubstr("1 note (--verbose"), Not(HasSubstr("note: "))));
  EXPECT_THAT(Output({"check", Sample("road-4.1.xml"), "--verbose"}), AllOf(HasSubstr("note: "), HasSubstr("Notes:")));
}

/// A damage done by hand: a text in the sample, what it becomes, and what the check has to say about it.
struct Damage {
  std::string_view part;
  std::string_view by;
  std::string_view kind;
  std::vector<std::string> path;
  std::string_view reason;
};

const std::vector<Damage>& Damages() {
  static const std::vector<Damage> damages = {
      {"createDate=\"2024-04-01T09:00:00\"", "", "tsf:FileInfo", {"file information 1"}, "createDate is missing"},
      {"type=\"道路土工\"", "type=\"道路\"", "tsf:StructureType", {"structure type"}, "道路"},
      {"refVertical=\"計画縦断\"", "refVertical=\"\"", "tsf:XSections", {"set 1"}, "refVertical"},
      {"cumulativeDist=\"20.0000\">", "cumulativeDist=\"\">", "tsf:XSection", {"set 1", "No.1"}, "cumulativeDist"},
      {"cumulativeDist=\"60.0000\">", "cumulativeDist=\"40.0000\">", "station doubled", {"40.0000"}, "same station"},
      {"cumulativeDist=\"60.0000\">", "cumulativeDist=\"90.0000\">", "station out of order", {"No.4"}, "90.0000"},
      {"<tsf:BuildForm name=\"基層\"", "<tsf:BuildForm name=\"\"", "tsf:BuildForm", {"station 0.0000"}, "name"},
      {"code=\"R1\" location=\"Right\" componentType=\"Roadbed\" dataType=\"WidthHeight\" existence=\"true\"",
       "code=\"R1\" location=\"Right\" componentType=\"Roadbed\" dataType=\"WidthHeight\"",
       "tsf:ComposedPnt",
       {"station 0.0000", "form 表層", "point R1"},
       "existence"},
      {"code=\"L1\"", "code=\"\"", "tsf:ComposedPnt", {"station 0.0000"}, "code is missing"},
      {"code=\"R1\"", "code=\"L1\"", "code used twice", {"station 0.0000", "point L1"}, "L1"},
      {"name=\"G2\">-", "name=\"G2\"> ", "tsf:ExistingComposedPnt", {"station 0.0000", "現況地盤", "G2"}, "distance"},
      {"targetScope=\"全延長\"", "targetScope=\"\"", "tsf:FormCtrlTarget", {"control target 1"}, "targetScope"},
      {"controlItem=\"Width\"", "controlItem=\"Breadth\"", "tsf:FormCtrlTarget", {"control target 1"}, "controlItem"},
      {"buildFormName=\"表層\"", "buildFormName=\"無い面\"", "does not exist", {"control target"}, "無い面"},
      {"buildFormName=\"表層\" code=\"R1\"",
       "buildFormName=\"表層\" code=\"R9\"",
       "does not exist",
       {"control target"},
       "R9"},
      {"<tsf:FormCtrlTargetPnt cumulativeDist=\"0.0000\"",
       "<tsf:FormCtrlTargetPnt cumulativeDist=\"7.0000\"",
       "does not exist",
       {"control target"},
       "7.0000"},
      {"cumulativeDist=\"20.0000\">",
       "cumulativeDist=\"20,5\">",
       "value not understood",
       {"line ", "tsf:XSection No.1, attribute cumulativeDist"},
       "is no number"},
      {">3.5000 -1.501<",
       ">3.5m -1.501<",
       "value not understood",
       {"tsf:ComposedPnt L1, text"},
       "\"3.5m\" is no number"},
      {">3.5000 -1.501<", "><", "value not understood", {"tsf:ComposedPnt L1, text"}, "holds no numbers"},
      {">3.5000 -1.501<",
       ">3.5000 -1.501 2.000<",
       "value not understood",
       {"tsf:ComposedPnt L1, text"},
       "instead of two"},
      {"location=\"Left\"",
       "location=\"Lefft\"",
       "value not understood",
       {"line 9: tsf:ComposedPnt L1, attribute location"},
       "\"Lefft\" is none of Center, Left, Right"},
      {"componentType=\"Roadbed(Fill)\"",
       "componentType=\"Verge\"",
       "value not understood",
       {"attribute componentType"},
       "\"Verge\" is none of"},
      {"dataType=\"Percent\"",
       "dataType=\"Per cent\"",
       "value not understood",
       {"attribute dataType"},
       "is none of WidthHeight"},
      {"dataType=\"Percent\"",
       "slopeType=\"1:1\" dataType=\"Percent\"",
       "value not understood",
       {"attribute slopeType"},
       "is none of Percent, Rate"},
      {"existence=\"true\"", "existence=\"yes\"", "value not understood", {"attribute existence"}, "\"yes\""},
      {"changeDate=\"2024-04-15T17:30:00\"",
       "changeDate=\"yesterday\"",
       "value not understood",
       {"line 3: tsf:FileInfo, attribute changeDate"},
       "is no date"},
      {"createDate=\"2024-04-01T09:00:00\"",
       "createDate=\"2024-13-01T09:00:00\"",
       "value not understood",
       {"line 3: tsf:FileInfo, attribute createDate"},
       "is no date"},
      {"<tsf:StructureType ",
       "<tsf:StructureType /><tsf:StructureType ",
       "value not understood",
       {"tsf:StructureType"},
       "is given twice"},
      {"name=\"No.1\" ",
       "name=\"No.1\" xSectChg=\"maybe\" ",
       "value not understood",
       {"attribute xSectChg"},
       "\"maybe\""},
  };
  return damages;
}

TEST_F(Cli, CheckFindsEachDamageAndSaysWhere) {
  for (const Damage& damage : Damages()) {
    SCOPED_TRACE(damage.by);
    const ToolRun run = Vorn({"check", Damaged("road-4.1.xml", damage.part, damage.by), "--json"});
    EXPECT_EQ(run.exitCode, 1) << run.err;
    const Json json = Json::parse(run.out);
    EXPECT_EQ(json["valid"], false);
    bool found = false;
    for (const Json& finding : json["findings"]) {
      const std::string path = finding["path"];
      bool isThere = finding["severity"] == "error" &&
                     finding["kind"].get<std::string>().find(damage.kind) != std::string::npos &&
                     finding["reason"].get<std::string>().find(damage.reason) != std::string::npos;
      for (const std::string& part : damage.path) isThere = isThere && path.find(part) != std::string::npos;
      found = found || isThere;
    }
    EXPECT_TRUE(found) << run.out;
  }
}

TEST_F(Cli, CheckShowsDamageInWordsAndCountsIt) {
  std::string document = ReadAll(Sample("road-4.1.xml"));
  document = Replaced(document, "code=\"R1\"", "code=\"L1\"");
  document = Replaced(document, "refVertical=\"計画縦断\"", "refVertical=\"\"");
  WriteAll(Path("a.xml"), document);
  const ToolRun run = Vorn({"check", Path("a.xml")});
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_EQ(run.err, "");
  EXPECT_THAT(run.out, AllOf(HasSubstr("error: set 1"), HasSubstr("refVertical is missing"), HasSubstr("Errors:"),
                             HasSubstr("1  code used twice"), HasSubstr("not valid: "), Not(HasSubstr("ok: "))));
}

// --- convert ---------------------------------------------------------------------------------------------------------

TEST_F(Cli, ConvertsEverySampleIntoEveryEdition) {
  for (const fs::directory_entry& sample : fs::directory_iterator(VORN_SAMPLES)) {
    if (sample.path().extension() != ".xml") continue;
    for (const std::string edition : {"2.0", "4.0", "4.1", "maff-1.0"}) {
      SCOPED_TRACE(sample.path().filename().string() + " to " + edition);
      const std::string out = Path("out.xml");
      const Json json = OutputJson({"convert", sample.path().string(), out, "--edition", edition, "--json"});
      EXPECT_EQ(json["toEdition"], edition);
      EXPECT_LT(json["largestDisplacementMm"], 1.0);
      EXPECT_THAT(json["lostTargets"], IsEmpty());
      EXPECT_EQ(OutputJson({"info", out, "--json"})["edition"], edition);
      EXPECT_EQ(OutputJson({"check", out, "--json"})["valid"], true);
    }
  }
}

TEST_F(Cli, ConvertTellsWhatTheEditionCannotHold) {
  const std::vector<std::string> arguments = {"convert", Sample("road-with-geometry-4.0.xml"), Path("out.xml"),
                                              "--edition", "2.0"};
  EXPECT_THAT(Output(arguments), AllOf(HasSubstr("2.0 from 4.0"), HasSubstr(" mm"),
                                       HasSubstr("5  existing ground form"), HasSubstr("5  cross-section name"),
                                       HasSubstr("Carried over unchanged: "), HasSubstr("rgm:RoadGm")));
  const std::string written = ReadAll(Path("out.xml"));
  EXPECT_THAT(written, AllOf(HasSubstr("<rgm:ControlPoint name=\"KP.1\""), HasSubstr("revision=\"3\""),
                             HasSubstr("<!-- 見本: 線形と基準点を持つ道路の設計データ -->")));
}

TEST_F(Cli, ConvertAndInfoTellWhatIsNotUnderstood) {
  const std::string file = Damaged("road-4.1.xml", "cumulativeDist=\"20.0000\">", "cumulativeDist=\"20,5\">");
  EXPECT_THAT(Output({"convert", file, Path("out.xml")}),
              AllOf(HasSubstr("Not understood, and therefore written otherwise:"),
                    HasSubstr("tsf:XSection No.1, attribute cumulativeDist: \"20,5\" is no number")));
  const Json values = OutputJson({"convert", file, Path("out.xml"), "--json"})["notUnderstood"];
  ASSERT_EQ(values.size(), 1u);
  EXPECT_EQ(values[0]["where"], "tsf:XSection No.1, attribute cumulativeDist");
  EXPECT_EQ(values[0]["text"], "20,5");
  EXPECT_EQ(values[0]["reason"], "is no number");
  EXPECT_GT(values[0]["line"], 1);
  EXPECT_THAT(Output({"info", file}), HasSubstr("1 value; see vorn check"));
  EXPECT_EQ(OutputJson({"info", file, "--json"})["notUnderstood"], 1);
  EXPECT_THAT(Output({"info", Sample("road-4.1.xml")}), Not(HasSubstr("Not understood")));
}

TEST_F(Cli, ConvertShowsOnlyTheFirstOfManyValuesNotUnderstood) {
  std::string document = ReadAll(Sample("road-4.1.xml"));
  int count = 0;
  constexpr std::string_view kPart = "existence=\"true\"";
  for (std::size_t at = document.find(kPart); at != std::string::npos; at = document.find(kPart, at)) {
    document.replace(at, kPart.size(), "existence=\"yes\"");
    ++count;
  }
  ASSERT_GT(count, 20);
  WriteAll(Path("a.xml"), document);
  EXPECT_THAT(Output({"convert", Path("a.xml"), Path("out.xml")}),
              HasSubstr("and " + std::to_string(count - 20) + " more"));
}

TEST_F(Cli, ConvertWritesTheEncodingAskedFor) {
  const std::string out = Path("out.xml");
  EXPECT_THAT(Output({"convert", Sample("road-4.1.xml"), out, "--encoding", "shift_jis"}), HasSubstr("Shift_JIS"));
  EXPECT_THAT(ReadAll(out), AllOf(HasSubstr("encoding=\"Shift_JIS\""), Not(HasSubstr("道路土工"))));
  EXPECT_EQ(OutputJson({"info", out, "--json"})["structureType"]["type"], "道路土工");
  EXPECT_THAT(Output({"convert", Sample("river-2.0.xml"), out}), HasSubstr("UTF-8")) << "UTF-8 unless told otherwise";
  EXPECT_THAT(ReadAll(out), HasSubstr("堤防盛土面"));
}

TEST_F(Cli, ConvertRewritesADocumentInPlaceUnchanged) {
  for (const std::string name : {"road-4.1.xml", "farm-maff-1.0.xml", "road-with-geometry-4.0.xml"}) {
    WriteAll(Path("a.xml"), ReadAll(Sample(name)));
    EXPECT_THAT(Output({"convert", Path("a.xml"), Path("a.xml")}), HasSubstr("a.xml"));
    EXPECT_TRUE(ReadAll(Path("a.xml")) == ReadAll(Sample(name))) << name;
    EXPECT_EQ(FileCount(), 1u) << "a temporary file stays behind";
  }
}

TEST_F(Cli, ConvertInPlaceKeepsTheDocumentWhenItFails) {
  const std::string file = Damaged("road-4.1.xml", "施工", "施é工");
  const std::string before = ReadAll(file);
  ExpectFailure({"convert", file, file, "--edition", "2.0"}, HasSubstr("é"));
  EXPECT_EQ(ReadAll(file), before);
}

TEST_F(Cli, TakesFileNamesInEveryScript) {
  const std::string name = "路面 é 😀.xml";
  EXPECT_THAT(Output({"sample", Path(name)}), HasSubstr(name));
  EXPECT_TRUE(fs::exists(vorn_host::Utf8Path(Path(name))));
  EXPECT_EQ(OutputJson({"info", Path(name), "--json"})["edition"], "4.1");
  EXPECT_EQ(OutputJson({"convert", Path(name), Path("計画.VORN"), "--json"})["storeVersion"], "06.00");
  ExpectFailure({"info", Path("無い.xml")}, HasSubstr("無い.xml: there is no such file"));
}

// --- disks and directories -------------------------------------------------------------------------------------------

#ifndef _WIN32  // full disks, other users and signals are made with a POSIX shell

TEST_F(Cli, SaysSoWhenTheDiskIsFull) {
  ExpectFailure({"sample", "/dev/full"}, AllOf(HasSubstr("/dev/full"), HasSubstr("No space left")));
  ExpectFailure({"convert", Sample("road-4.1.xml"), "/dev/full"}, HasSubstr("No space left"));
  EXPECT_TRUE(fs::is_character_file("/dev/full")) << "the device was replaced";

  const std::vector<std::vector<std::string>> reports = {{"info", Sample("road-4.1.xml")}, {"--version"}, {"--help"}};
  for (const std::vector<std::string>& arguments : reports) {
    const ToolRun report = Shell(Command(arguments) + " >/dev/full");
    EXPECT_EQ(report.exitCode, 2) << arguments[0];
    EXPECT_THAT(report.err, StartsWith("vorn: ")) << arguments[0];
  }
}

TEST_F(Cli, LeavesTheFormerFileWhenThereIsNoRoomForTheNewOne) {
  WriteAll(Path("a.xml"), "the former content");
  // Files may not grow beyond 16 blocks here, which is the next best thing to a full disk.
  const ToolRun run = Shell("ulimit -f 16; " + Command({"sample", Path("a.xml"), "--sections", "20"}));
  ExpectFailure(run, HasSubstr("cannot be written"));
  EXPECT_EQ(ReadAll(Path("a.xml")), "the former content");
  EXPECT_EQ(FileCount(), 1u) << "a temporary file stays behind";
}

TEST_F(Cli, LeavesNothingInADirectoryItMayNotWriteTo) {
  ExpectFailure({"sample", Path("no/such/directory.xml")}, HasSubstr("No such file or directory"));
  ExpectFailure({"sample", Path("")}, HasSubstr("directory"));

  // Root may write everywhere: the tool runs as nobody then.
  const std::string asNobody = geteuid() == 0 ? "setpriv --reuid=65534 --regid=65534 --clear-groups " : "";
  if (Shell(asNobody + Command({"--version"})).exitCode != 0) GTEST_SKIP() << "cannot run the tool as another user";
  chmod(Path("").c_str(), 0555);
  ExpectFailure(Shell(asNobody + Command({"sample", Path("a.xml")})), HasSubstr("Permission denied"));
  chmod(Path("").c_str(), 0755);
  EXPECT_EQ(FileCount(), 0u);

  chmod(Path("").c_str(), 0777);
  WriteAll(Path("approved.xml"), "the former content");
  chmod(Path("approved.xml").c_str(), 0444);
  ExpectFailure(Shell(asNobody + Command({"sample", Path("approved.xml")})), HasSubstr("read-only"));
  EXPECT_EQ(ReadAll(Path("approved.xml")), "the former content");

  WriteAll(Path("secret.xml"), ReadAll(Sample("road-4.1.xml")));
  chmod(Path("secret.xml").c_str(), 0);
  ExpectFailure(Shell(asNobody + Command({"info", Path("secret.xml")})), HasSubstr("Permission denied"));
}

TEST_F(Cli, LeavesNothingInASharedDirectoryWhereAnotherUsersFileStays) {
  if (geteuid() != 0) GTEST_SKIP() << "needs two users";
  const std::string asNobody = "setpriv --reuid=65534 --regid=65534 --clear-groups ";
  if (Shell(asNobody + Command({"--version"})).exitCode != 0) GTEST_SKIP() << "cannot run the tool as another user";
  (void)Output({"convert", Sample("road-4.1.xml"), Path("a.vorn")});
  const std::string former = ReadAll(Path("a.vorn"));
  chmod(Path("a.vorn").c_str(), 0666);
  chmod(Path("").c_str(), 01777);
  ExpectFailure(Shell(asNobody + Command({"convert", Sample("river-2.0.xml"), Path("a.vorn")})),
                HasSubstr("cannot be put in place: Operation not permitted"));
  EXPECT_TRUE(ReadAll(Path("a.vorn")) == former);
  EXPECT_EQ(FileCount(), 1u) << "a second name that only the owner can remove";
}

TEST_F(Cli, TakesItsUnfinishedFileAwayWhenItIsStopped) {
  // Stopped at several moments, among them some while the file is being written.
  for (const char* seconds : {"0.1", "0.2", "0.3", "0.4", "0.6", "0.8"}) {
    const ToolRun run = Shell(std::string("timeout -s INT ") + seconds + " " +
                              Command({"sample", Path("a.xml"), "--sections", "8000"}));
    std::filesystem::remove(Path("a.xml"));
    EXPECT_EQ(FileCount(), 0u) << "stopped after " << seconds << " s, exit code " << run.exitCode;
  }
}

#endif  // _WIN32

// --- sample ----------------------------------------------------------------------------------------------------------

TEST_F(Cli, SampleMakesValidDocumentsOfEveryKindAndEdition) {
  for (const std::string kind : {"road", "river", "farm"}) {
    for (const std::string edition : {"2.0", "4.0", "4.1", "maff-1.0"}) {
      SCOPED_TRACE(kind + " " + edition);
      EXPECT_THAT(Output({"sample", Path("a.xml"), "--kind", kind, "--edition", edition, "--sections", "30"}),
                  HasSubstr("a.xml"));
      const Json info = OutputJson({"info", Path("a.xml"), "--json"});
      EXPECT_EQ(info["edition"], edition);
      EXPECT_EQ(info["sets"][0]["crossSections"]["count"], 30);
      EXPECT_EQ(OutputJson({"check", Path("a.xml"), "--json"})["valid"], true);
    }
  }
}

TEST_F(Cli, SampleTellsProgramsWhatItWrote) {
  const Json json = OutputJson({"sample", Path("a.xml"), "--sections", "3", "--edition", "2.0", "--json"});
  EXPECT_EQ(json["written"], Path("a.xml"));
  EXPECT_EQ(json["edition"], "2.0");
  EXPECT_EQ(json["crossSections"], 3);
}

TEST_F(Cli, SampleMakesAProjectWhereOneIsNamedAndKeepsTheFormerOne) {
  const auto make = [&](const std::string& kind) {
    return OutputJson({"sample", Path("a.vorn"), "--kind", kind, "--sections", "3", "--json"});
  };
  EXPECT_EQ(make("road")["storeVersion"], "06.00");
  const std::string first = ReadAll(Path("a.vorn"));
  EXPECT_THAT(first, StartsWith("\x89VORN"));
  EXPECT_EQ(OutputJson({"info", Path("a.vorn"), "--json"})["sets"][0]["crossSections"]["count"], 3);
  EXPECT_EQ(OutputJson({"check", Path("a.vorn"), "--json"})["valid"], true);

  EXPECT_EQ(make("river")["formerFile"], Path("a.vorn.bak"));
  EXPECT_TRUE(ReadAll(Path("a.vorn.bak")) == first);
  ExpectFailure({"sample", Path("a.vorn"), "--encoding", "shift_jis"}, HasSubstr("only a document has an encoding"));
}

TEST_F(Cli, SampleIsTheSameForASeed) {
  const auto make = [&](const std::string& seed) {
    (void)Output({"sample", Path("a.xml"), "--seed", seed});
    return ReadAll(Path("a.xml"));
  };
  const std::string first = make("1");
  EXPECT_TRUE(make("1") == first);
  EXPECT_FALSE(make("2") == first);
}

// --- progress --------------------------------------------------------------------------------------------------------

TEST_F(Cli, ShowsNoProgressToAPipe) {
  EXPECT_THAT(Output({"sample", Path("a.xml"), "--sections", "5000"}), HasSubstr("5000"));
}

#ifndef _WIN32  // a terminal is given by a POSIX program
TEST_F(Cli, ShowsProgressToAPerson) {
  const std::vector<std::string> arguments = {"sample", Path("a.xml"), "--sections", "5000"};
  if (Shell("command -v script").exitCode != 0) GTEST_SKIP() << "no program that gives a terminal";
  const ToolRun terminal = Shell("script -qec " + Quoted(Command(arguments)) + " /dev/null </dev/null");
  EXPECT_EQ(terminal.exitCode, 0);
  EXPECT_THAT(terminal.out, AllOf(HasSubstr("making cross sections"), HasSubstr("writing"), HasSubstr("\x1b[K")));
  const ToolRun brief =
      Shell("script -qec " + Quoted(Command({"info", Sample("road-4.1.xml")})) + " /dev/null </dev/null");
  EXPECT_THAT(brief.out, Not(HasSubstr("\x1b[K"))) << "short work needs no bar";
}
#endif

}  // namespace
