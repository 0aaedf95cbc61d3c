// `vorn settings`: the tool with a configuration directory of its own. On Windows the settings are in the registry.
#ifndef _WIN32

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "tests/host/tool.h"

namespace {

namespace fs = std::filesystem;

using namespace host_test;  // NOLINT(google-build-using-namespace): the vocabulary of these tests
using testing::AllOf;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class SettingsCommand : public ToolTest {
 protected:
  [[nodiscard]] std::string File() const { return Path("vorn/vorn.toml"); }
  [[nodiscard]] std::string Text() const { return ReadAll(File()); }
  void WriteText(const std::string& text) const {
    fs::create_directories(Path("vorn"));
    WriteAll(File(), text);
  }

  /// Runs `vorn settings` with an environment.
  [[nodiscard]] ToolRun Run(const std::string& environment, std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), "settings");
    return Shell("env " + environment + ' ' + Command(arguments));
  }
  [[nodiscard]] ToolRun Settings(std::vector<std::string> arguments) const {
    return Run("XDG_CONFIG_HOME=" + Quoted(Path("")), std::move(arguments));
  }
  /// What a command prints that has to succeed without a complaint.
  [[nodiscard]] std::string Good(std::vector<std::string> arguments) const {
    const ToolRun run = Settings(std::move(arguments));
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.err, "");
    return run.out;
  }
  [[nodiscard]] Json GoodJson(std::vector<std::string> arguments) const {
    arguments.emplace_back("--json");
    return Json::parse(Good(std::move(arguments)));
  }
};

// --- list ------------------------------------------------------------------------------------------------------------

TEST_F(SettingsCommand, ListShowsEverySettingWithItsDefault) {
  const std::string list = Good({"list"});
  EXPECT_THAT(list, AllOf(HasSubstr(File()), HasSubstr("情報化施工\n"), HasSubstr("RoadInfo\n"),
                          HasSubstr("FormCtrl\n"), ContainsRegex("classificat +0 \\(第1種第1級\\), the default"),
                          ContainsRegex("speed +0 \\(120 km/h\\), the default"),
                          ContainsRegex("traffic +1, the default"), ContainsRegex("basec +\"道路中心\", the default")));
  EXPECT_THAT(list, AllOf(ContainsRegex("othermark +0 \\(１２３４５\\), the default"), Not(HasSubstr("Also stored"))));
  EXPECT_EQ(FileCount(), 0u) << "looking leaves no traces";
}

TEST_F(SettingsCommand, ListTellsProgramsTheSame) {
  WriteText("[\"情報化施工\".RoadInfo]\nspeed = 3\ntraffic = \"heavy\"\n[\"LandXML書込み\"]\nUnit = 2\nOn = true\n");
  const Json list = GoodJson({"list"});
  EXPECT_EQ(list["place"], File());
  EXPECT_EQ(list["root"], "情報化施工");
  ASSERT_EQ(list["settings"].size(), 17u);
  EXPECT_EQ(list["settings"][0], Json::parse(R"({"key": "RoadInfo.classificat", "value": 0, "meaning": "第1種第1級",
                                                 "default": 0, "stored": false, "ignored": null})"));
  EXPECT_EQ(list["settings"][1], Json::parse(R"({"key": "RoadInfo.speed", "value": 3, "meaning": "60 km/h",
                                                 "default": 0, "stored": true, "ignored": null})"));
  EXPECT_EQ(list["settings"][2], Json::parse(R"({"key": "RoadInfo.traffic", "value": 1, "meaning": null,
                                                 "default": 1, "stored": true, "ignored": "\"heavy\""})"));
  EXPECT_EQ(list["settings"][3], Json::parse(R"({"key": "FormCtrl.basec", "value": "道路中心", "meaning": null,
                                                 "default": "道路中心", "stored": false, "ignored": null})"));
  EXPECT_EQ(list["others"], Json::parse(R"([{"key": "LandXML書込み.On", "value": "true"},
                                            {"key": "LandXML書込み.Unit", "value": 2}])"));
}

TEST_F(SettingsCommand, ListSaysWhatCannotBeUsed) {
  WriteText(
      "[\"情報化施工\".roadinfo]\nSPEED = 99\ntraffic = 1.5\n[\"情報化施工\".FormCtrl]\nbasec = \"😀\"\nnoril = 5\n"
      "norir = \"a\\u0000b\"\n");
  EXPECT_THAT(Good({"list"}),
              AllOf(ContainsRegex("speed +99 \\(no such code\\), stored; the default is 0 \\(120 km/h\\)"),
                    ContainsRegex("traffic +1, the default, as what is stored cannot be used: 1.5"),
                    ContainsRegex("basec +\"道路中心\", the default, as what is stored cannot be used: \"😀\""),
                    ContainsRegex("noril +\"左法面\", the default, as what is stored cannot be used: 5"),
                    HasSubstr("\"右法面\", the default, as what is stored cannot be used: \"a\\u0000b\""),
                    Not(HasSubstr("Also stored"))));
}

TEST_F(SettingsCommand, ListShowsWhateverElseIsStored) {
  WriteText("top = 1\n[\"LandXML書込み\"]\nUnit = \"m\\u001B[2J\\n\"\n");
  EXPECT_THAT(Good({"list"}),
              AllOf(HasSubstr("Also stored:\n"), HasSubstr("    top = 1\n"),
                    HasSubstr("    LandXML書込み.Unit = \"m\\u001B[2J\\n\"\n"), Not(HasSubstr("\x1B"))));
}

TEST_F(SettingsCommand, ShowsNothingThatATerminalWouldActOn) {
  WriteText(
      "[x]\n\"a\\u009Bb\" = \"\\u202E1 = deeps\"\n"
      "marks = \"|\\u0080|\\u009F|\\u061C|\\u200E|\\u200F|\\u202A|\\u2066|\\u2069|\"\n"
      "kept = \"|\\u00A0|\\u2027|\\u202F|\\u2065|\\u206A|é|道路|😀|\"\n");
  EXPECT_THAT(Good({"list"}),
              AllOf(HasSubstr("    x.a b = \" 1 = deeps\"\n"), HasSubstr("    x.marks = \"| | | | | | | | |\"\n"),
                    HasSubstr("    x.kept = \"|\u00A0|\u2027|\u202F|\u2065|\u206A|é|道路|😀|\"\n")));
  EXPECT_THAT(Good({"get", "x.marks"}), HasSubstr("\"| | | | | | | | |\"\n"));
  for (const char* name : {"a\xC2\x9Bz", "a\u202Ez", "a\u2028z", "a\u2029z", "a\x9Bz"}) {
    EXPECT_THAT(Settings({"get", name}).err, HasSubstr("there is no setting a z; there are ")) << name;
  }
  EXPECT_THAT(Settings({"get", "a\x1B\x80z"}).err, Not(HasSubstr("\x1B"))) << "a byte behind it that begins nothing";
  EXPECT_THAT(Settings({"get", "a\xC2\x9B\x80z"}).err, Not(HasSubstr("\xC2\x9B")));
}

TEST_F(SettingsCommand, ReadsFilesWithoutSettingsAndFromOtherEditors) {
  for (const char* text : {"", "# nothing\n", "\xEF\xBB\xBF# nothing\r\n"}) {
    WriteText(text);
    EXPECT_THAT(Good({"list"}), HasSubstr("the default"));
    EXPECT_EQ(Text(), text);
  }
  WriteText("\xEF\xBB\xBF[\"情報化施工\".RoadInfo]\r\nspeed = 5 # 40 km/h\r\n");
  EXPECT_EQ(GoodJson({"get", "RoadInfo.speed"})["value"], 5);
  EXPECT_THAT(Good({"set", "RoadInfo.speed", "4"}), HasSubstr("4 (50 km/h)"));
  EXPECT_EQ(Text(), "\xEF\xBB\xBF[\"情報化施工\".RoadInfo]\r\nspeed = 4 # 40 km/h\r\n");
}

// --- get and set -----------------------------------------------------------------------------------------------------

TEST_F(SettingsCommand, SetStoresWhatGetShows) {
  EXPECT_THAT(Good({"set", "RoadInfo.speed", "3"}), ContainsRegex("RoadInfo.speed +3 \\(60 km/h\\), stored"));
  EXPECT_THAT(Good({"set", "formctrl.BASEC", "中心線"}), ContainsRegex("FormCtrl.basec +\"中心線\", stored"));
  EXPECT_EQ(Text(), "[\"情報化施工\".RoadInfo]\nspeed = 3\n\n[\"情報化施工\".FormCtrl]\nbasec = \"中心線\"\n");
  EXPECT_THAT(Good({"get", "RoadInfo.speed"}), StartsWith("RoadInfo.speed      3 (60 km/h), stored"));
  EXPECT_EQ(GoodJson({"get", "FormCtrl.basec"})["value"], "中心線");
  EXPECT_EQ(GoodJson({"set", "FormCtrl.roadmark", "2"})["meaning"], "ａｂｃｄｅ");
  EXPECT_THAT(Good({"get", "FormCtrl.norir"}), HasSubstr("\"右法面\", the default"));
}

TEST_F(SettingsCommand, GetKnowsWhateverElseIsStored) {
  WriteText("[\"LandXML書込み\"]\nUnit = \"m\"\n");
  EXPECT_THAT(Good({"get", "LandXML書込み.unit"}), HasSubstr("\"m\""));
  EXPECT_EQ(GoodJson({"get", "LandXML書込み.Unit"})["value"], "m");
}

TEST_F(SettingsCommand, OfNamesThatDifferInCaseTheExactOneCounts) {
  WriteText("[\"情報化施工\".RoadInfo]\nSPEED = 1\nspeed = 3\n[\"情報化施工\".ROADINFO]\ntraffic = 2\n");
  EXPECT_THAT(Good({"list"}),
              AllOf(ContainsRegex("speed +3 \\(60 km/h\\), stored"), ContainsRegex("traffic +1, the default\n"),
                    HasSubstr("Also stored:\n"), HasSubstr("    情報化施工.RoadInfo.SPEED = 1\n"),
                    HasSubstr("    情報化施工.ROADINFO.traffic = 2\n"), Not(HasSubstr("RoadInfo.speed = 3"))));
  EXPECT_THAT(Good({"get", "RoadInfo.speed"}), HasSubstr("3 (60 km/h), stored"));
  EXPECT_THAT(Good({"set", "RoadInfo.speed", "4"}), HasSubstr("4 (50 km/h), stored"));
  EXPECT_THAT(Text(), HasSubstr("SPEED = 1\nspeed = 4\n"));

  WriteText("[\"情報化施工\".RoadInfo]\nSPEED = \"fast\"\nspeed = 3\n");
  EXPECT_EQ(GoodJson({"get", "RoadInfo.speed"})["ignored"], nullptr) << "the other one is not asked";
}

TEST_F(SettingsCommand, GetShowsAllEntriesThatReadAlike) {
  WriteText("[grid]\nsize = 1\n[Grid]\nSize = 2\n[a]\n\"b.c\" = 3\n[\"a.b\"]\nc = 4\n");
  EXPECT_EQ(GoodJson({"get", "grid.size"})["value"], 1) << "the exact spelling";
  EXPECT_EQ(GoodJson({"get", "Grid.Size"})["value"], 2);
  EXPECT_THAT(Good({"get", "GRID.SIZE"}), AllOf(ContainsRegex("grid.size +1\n"), ContainsRegex("Grid.Size +2\n")));
  EXPECT_THAT(Good({"get", "a.b.c"}), AllOf(ContainsRegex("a.b.c +3\n"), ContainsRegex("a.b.c +4\n")));
  EXPECT_EQ(GoodJson({"get", "a.b.c"}).size(), 2u);
}

TEST_F(SettingsCommand, GetPlacesValuesByTheWidthOfTheName) {
  WriteText("[\"表\"]\n\"é\" = 1\n\"ｶﾅ\" = 2\n\"書込み\" = 3\n");
  EXPECT_EQ(Good({"get", "表.書込み"}), "表.書込み           3\n");
  EXPECT_EQ(Good({"get", "表.ｶﾅ"}), "表.ｶﾅ               2\n") << "half-width katakana";
  EXPECT_EQ(Good({"get", "表.é"}), "表.é                1\n") << "a character outside code page 932";
}

TEST_F(SettingsCommand, SetTakesEveryValueOfTheRange) {
  for (const char* value : {"0", "14"}) EXPECT_EQ(Settings({"set", "RoadInfo.classificat", value}).exitCode, 0);
  for (const char* value : {"0", "7"}) EXPECT_EQ(Settings({"set", "RoadInfo.speed", value}).exitCode, 0);
  for (const char* value : {"-2147483648", "2147483647"}) {
    EXPECT_EQ(GoodJson({"set", "RoadInfo.traffic", value})["value"], std::stoi(value));
  }
  for (const char* value : {"0", "1", "2"}) EXPECT_EQ(Settings({"set", "FormCtrl.norimark", value}).exitCode, 0);
}

TEST_F(SettingsCommand, SetRefusesWhatIsNoValueOfTheSetting) {
  const auto refuse = [&](const char* key, const char* value, const std::string& reason) {
    ExpectFailure(Settings({"set", key, value}), AllOf(HasSubstr(key), HasSubstr(reason)));
  };
  refuse("RoadInfo.classificat", "15", "0 to 14 (0 = 第1種第1級, 1 = ");
  refuse("RoadInfo.speed", "8", "0 to 7 (0 = 120 km/h, 1 = 100 km/h");
  refuse("RoadInfo.speed", "-1", "0 to 7");
  refuse("FormCtrl.othermark", "3", "0 to 2 (0 = １２３４５");
  refuse("RoadInfo.traffic", "2147483648", "-2147483648 to 2147483647");
  for (const char* value : {"", "fast", "3 ", "3.0", "0x3", "+3", "3km"}) refuse("RoadInfo.speed", value, "integers");
  refuse("FormCtrl.basec", "😀", "code page 932");
  EXPECT_EQ(FileCount(), 0u);
}

TEST_F(SettingsCommand, SetTakesHostileTexts) {
  const std::vector<std::string> texts = {
      "",          "\"",         "\\",   "C:\\表示\\ソート\\能", "a\nb\r\n\tc",
      "# comment", "'''\"\"\"'", "= []", "１２３ ｱｲｳ ～",        std::string(100'000, 'x')};
  for (const std::string& text : texts) {
    EXPECT_EQ(GoodJson({"set", "FormCtrl.basec", text})["value"], text);
    EXPECT_EQ(GoodJson({"get", "FormCtrl.basec"})["value"], text);
  }
  EXPECT_THAT(Good({"set", "--", "FormCtrl.basec", "--json"}), HasSubstr("\"--json\", stored"));
}

TEST_F(SettingsCommand, UnknownSettingsAreAnsweredWithTheKnownOnes) {
  const auto names =
      AllOf(HasSubstr("there is no setting RoadInfo.sped"), HasSubstr("RoadInfo.classificat, "),
            HasSubstr("RoadInfo.speed, "), HasSubstr("FormCtrl.basec, "), HasSubstr("FormCtrl.othermark"));
  ExpectFailure(Settings({"get", "RoadInfo.sped"}), names);
  ExpectFailure(Settings({"set", "RoadInfo.sped", "1"}), names);
  EXPECT_EQ(FileCount(), 0u);
}

TEST_F(SettingsCommand, RefusesMisuse) {
  ExpectFailure(Settings({}), HasSubstr("--help"));
  ExpectFailure(Settings({"get"}), HasSubstr("KEY"));
  ExpectFailure(Settings({"set", "RoadInfo.speed"}), HasSubstr("VALUE"));
  ExpectFailure(Settings({"forget"}), HasSubstr("--help"));
}

TEST_F(SettingsCommand, TotalStationEditionHasSettingsOfItsOwn) {
  EXPECT_THAT(Good({"set", "--ts", "RoadInfo.speed", "5"}), HasSubstr("40 km/h"));
  EXPECT_EQ(Text(), "[\"情報化施工_TS\".RoadInfo]\nspeed = 5\n");
  EXPECT_EQ(GoodJson({"get", "RoadInfo.speed"})["value"], 0);
  EXPECT_EQ(GoodJson({"get", "--ts", "RoadInfo.speed"})["value"], 5);
  const Json list = GoodJson({"list", "--ts"});
  EXPECT_EQ(list["root"], "情報化施工_TS");
  EXPECT_EQ(list["settings"][1]["value"], 5);
  EXPECT_THAT(Good({"list"}), HasSubstr("情報化施工_TS.RoadInfo.speed = 5")) << "something else that is stored";
}

// --- places ----------------------------------------------------------------------------------------------------------

TEST_F(SettingsCommand, SettingsAreAtHomeUnlessToldOtherwise) {
  const ToolRun run = Run("-u XDG_CONFIG_HOME HOME=" + Quoted(Path("")), {"set", "RoadInfo.speed", "1"});
  EXPECT_EQ(run.exitCode, 0) << run.err;
  EXPECT_EQ(ReadAll(Path(".config/vorn/vorn.toml")), "[\"情報化施工\".RoadInfo]\nspeed = 1\n");
}

TEST_F(SettingsCommand, SaysThatThereIsNoPlace) {
  for (const char* command : {"list", "get", "set"}) {
    std::vector<std::string> arguments = {command};
    if (arguments[0] != "list") arguments.emplace_back("RoadInfo.speed");
    if (arguments[0] == "set") arguments.emplace_back("1");
    ExpectFailure(Run("-u XDG_CONFIG_HOME -u HOME", arguments), AllOf(HasSubstr("XDG_CONFIG_HOME"), HasSubstr("HOME")));
  }
}

TEST_F(SettingsCommand, SaysWhyNothingCanBeWritten) {
  WriteAll(Path("vorn"), "a file where the directory belongs");
  ExpectFailure(Settings({"set", "RoadInfo.speed", "1"}), AllOf(HasSubstr(File()), HasSubstr("Not a directory")));
  EXPECT_THAT(Good({"list"}), HasSubstr("the default"));
  ExpectFailure(Run("XDG_CONFIG_HOME=/proc", {"set", "RoadInfo.speed", "1"}), HasSubstr("/proc/vorn/vorn.toml"));
}

TEST_F(SettingsCommand, SaysWhyNothingCanBeRead) {
  fs::create_directories(File());
  const auto reason = AllOf(HasSubstr(File()), HasSubstr("this is a directory, not a file"));
  ExpectFailure(Settings({"list"}), reason);
  ExpectFailure(Settings({"get", "RoadInfo.speed"}), reason);
  ExpectFailure(Settings({"set", "RoadInfo.speed", "1"}), reason);
}

TEST_F(SettingsCommand, ReadingADamagedFileShowsTheDefaults) {
  WriteText("[a]\nb = \n");
  for (const auto& arguments : {std::vector<std::string>{"list"}, {"get", "RoadInfo.speed"}}) {
    const ToolRun run = Settings(arguments);
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.err,
                AllOf(StartsWith("vorn: " + File() + ": line 2, column "), HasSubstr("the defaults are used")));
    EXPECT_THAT(run.out, HasSubstr("0 (120 km/h), the default"));
  }
  EXPECT_EQ(Text(), "[a]\nb = \n");
  EXPECT_EQ(FileCount(), 1u) << "looking leaves no traces";
}

TEST_F(SettingsCommand, SetPutsADamagedFileAsideAndGoesOn) {
  WriteText("[a]\nc = \n");
  const ToolRun set = Settings({"set", "RoadInfo.speed", "1"});
  EXPECT_EQ(set.exitCode, 0);
  EXPECT_THAT(set.err, AllOf(StartsWith("vorn: " + File() + ": line 2, column "),
                             HasSubstr("set aside as vorn.toml.damaged-1"), HasSubstr("the defaults are used")));
  EXPECT_EQ(Text(), "[\"情報化施工\".RoadInfo]\nspeed = 1\n");
  EXPECT_EQ(ReadAll(Path("vorn/vorn.toml.damaged-1")), "[a]\nc = \n");
  EXPECT_THAT(Good({"get", "RoadInfo.speed"}), HasSubstr("100 km/h"));
}

TEST_F(SettingsCommand, OtherCommandsDoNotTouchTheSettings) {
  WriteText("damaged");
  const ToolRun run =
      Shell("env XDG_CONFIG_HOME=" + Quoted(Path("")) + ' ' + Command({"info", Sample("road-4.1.xml")}));
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(Text(), "damaged");
}

TEST_F(SettingsCommand, SeveralToolsAtOnceLoseNothing) {
  const std::vector<std::string> keys = {"RoadInfo.classificat", "RoadInfo.speed",     "RoadInfo.traffic",
                                         "FormCtrl.norimark",    "FormCtrl.widthmark", "FormCtrl.roadmark"};
  std::string script;
  for (const std::string& key : keys) {
    script += "env XDG_CONFIG_HOME=" + Quoted(Path("")) + ' ' + Command({"settings", "set", key, "2"}) + " & ";
  }
  EXPECT_EQ(Shell(script + "wait").err, "");
  for (const std::string& key : keys) EXPECT_EQ(GoodJson({"get", key})["value"], 2) << key;
}

}  // namespace

#endif  // _WIN32
