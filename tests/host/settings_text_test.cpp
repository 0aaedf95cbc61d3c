#include "host/settings/settings_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "vorn/platform/code_page_932.h"

namespace vorn_host {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

const SettingsPath kRoot;
const SettingsPath kRoadInfo = {"情報化施工", "RoadInfo"};

/// The text with one value changed; "refused" when there is no room for it.
std::string Changed(const std::string& text, const SettingsPath& path, const std::string& name,
                    const SettingValue& value) {
  const std::optional<SettingsText> changed = SettingsText(text).With(path, name, value);
  return changed ? changed->Text() : "refused";
}

std::string SyntaxError(const std::string& text) {
  try {
    SettingsText parsed(text);
  } catch (const SettingsSyntaxError& error) {
    return error.what();
  }
  return "";
}

// --- reading ---------------------------------------------------------------------------------------------------------

TEST(SettingsText, ReadsIntegersAndTexts) {
  const SettingsText text("[\"情報化施工\".RoadInfo]\nspeed = 3\nname = \"3\"\npath = 'C:\\new\\表'\nhex = 0x10\n");
  EXPECT_EQ(text.Find(kRoadInfo, "speed"), SettingValue(3));
  EXPECT_EQ(text.Find(kRoadInfo, "name"), SettingValue("3"));
  EXPECT_EQ(text.Find(kRoadInfo, "path"), SettingValue("C:\\new\\表"));
  EXPECT_EQ(text.Find(kRoadInfo, "hex"), SettingValue(16));
  EXPECT_EQ(text.Find(kRoadInfo, "missing"), std::nullopt);
  EXPECT_EQ(text.Find({"other"}, "speed"), std::nullopt);
}

TEST(SettingsText, HoldsIntegersOf32BitsOnly) {
  const SettingsText text("min = -2147483648\nmax = 2147483647\nless = -2147483649\nmore = 2147483648\n");
  EXPECT_EQ(text.Find(kRoot, "min"), SettingValue(-2147483647 - 1));
  EXPECT_EQ(text.Find(kRoot, "max"), SettingValue(2147483647));
  EXPECT_EQ(text.Find(kRoot, "less"), std::nullopt);
  EXPECT_EQ(text.Find(kRoot, "more"), std::nullopt);
}

TEST(SettingsText, KnowsTheKeysAboveAKey) {
  const SettingsText text("[a.b.c]\n");
  EXPECT_TRUE(text.HasKey({}));
  EXPECT_TRUE(text.HasKey({"a"}));
  EXPECT_TRUE(text.HasKey({"a", "b", "c"}));
  EXPECT_FALSE(text.HasKey({"b"}));
  EXPECT_FALSE(text.HasKey({"a", "b", "c", "d"}));
}

TEST(SettingsText, ComparesNamesWithoutTheCaseOfAsciiLetters) {
  const SettingsText text("[RoadInfo]\nSpeed = 3\n\"ａ\" = 1\n");
  EXPECT_TRUE(text.HasKey({"roadinfo"}));
  EXPECT_EQ(text.Find({"ROADINFO"}, "speed"), SettingValue(3));
  EXPECT_EQ(text.Find({"RoadInfo"}, "Ａ"), std::nullopt) << "full-width letters are others";
}

TEST(SettingsText, PrefersTheExactSpelling) {
  const SettingsText text("SPEED = 1\nSpeed = 2\nspeed = 3\n");
  EXPECT_EQ(text.Find(kRoot, "Speed"), SettingValue(2));
  EXPECT_EQ(text.Find(kRoot, "speed"), SettingValue(3));
}

TEST(SettingsText, ListsEverything) {
  const SettingsText text(
      "top = 1\n[a]\nt = \"x\\ny\"\nb = true\nd = 1979-05-27\nl = [1, 2]\nbig = 3000000000\n[a.c]\n");
  const auto entries = text.Entries();
  EXPECT_THAT(entries, ElementsAre(Field(&SettingsEntry::shown, "true"), Field(&SettingsEntry::shown, "3000000000"),
                                   Field(&SettingsEntry::shown, "1979-05-27"), Field(&SettingsEntry::shown, "[ 1, 2 ]"),
                                   Field(&SettingsEntry::shown, "\"x\\ny\""), Field(&SettingsEntry::shown, "1")));
  EXPECT_EQ(entries[0].path, SettingsPath{"a"});
  EXPECT_EQ(entries[0].name, "b");
  EXPECT_EQ(entries[0].value, std::nullopt);
  EXPECT_EQ(entries[1].value, std::nullopt);
  EXPECT_EQ(entries[4].value, SettingValue("x\ny"));
  EXPECT_EQ(entries[5].value, SettingValue(1));
}

TEST(SettingsText, ReadsTextsWithoutSettings) {
  for (const char* text : {"", "\n", "# only a comment", "# two\r\n# comments\r\n", "\xEF\xBB\xBF"}) {
    EXPECT_THAT(SettingsText(text).Entries(), IsEmpty()) << text;
  }
}

TEST(SettingsText, SaysWhereAndWhyATextCannotBeRead) {
  EXPECT_THAT(SyntaxError("a = 1\nb = = 2\n"), StartsWith("line 2, column "));
  EXPECT_THAT(SyntaxError("a = \"open\n"), HasSubstr("string"));
  EXPECT_THAT(SyntaxError("a = 1\na = 2\n"), HasSubstr("redefine"));
  EXPECT_THAT(SyntaxError("a = \"\x8F\xF1\"\n"), HasSubstr("utf-8")) << "saved in another encoding";
  EXPECT_THAT(SyntaxError(std::string("\xFF\xFE[\0a\0", 6)), HasSubstr("line 1"));
  EXPECT_THAT(SyntaxError(std::string(100'000, '[')), HasSubstr("line 1"));
  EXPECT_THAT(SyntaxError("a = " + std::string(100'000, '[')), HasSubstr("line 1"));
}

/// A name of so many parts, each of which is spelled so.
std::string Deep(std::size_t parts, const std::string& part = "a") {
  std::string name = part;
  for (std::size_t i = 1; i < parts; ++i) name += '.' + part;
  return name;
}

TEST(SettingsText, RefusesNamesOfThousandsOfParts) {
  constexpr std::size_t kParts = 50'000;
  const std::string name = Deep(kParts);
  const std::vector<std::string> texts = {name + " = 1\n",
                                          '[' + name + "]\n",
                                          "[[" + name + "]]\n",
                                          "[x]\n" + name + " = 1",
                                          "x = { " + name + " = 1 }",
                                          Deep(kParts, "\"\\\"#\"\t") + " = 1",
                                          '[' + Deep(kParts, "''") + ']'};
  for (const std::string& text : texts) {
    EXPECT_THAT(SyntaxError(text), AllOf(StartsWith("line "), HasSubstr("more than 100 names"))) << text.substr(0, 10);
  }
}

TEST(SettingsText, RefusesTablesInBracesThatAddUpToTooManyNames) {
  std::string text = "x = 1";
  for (int i = 0; i < 30; ++i) text = Deep(10) + " = { y = 0, " + text + " }";
  EXPECT_THAT(SyntaxError(text), HasSubstr("more than 100 names"));
  const std::string inner = Deep(80);
  EXPECT_EQ(SyntaxError(Deep(10) + " = [ { " + inner + " = 1 }, { " + inner + " = { x = 1 }, y = 2 } ]"), "");
}

TEST(SettingsText, RefusesDeepNamesBehindEveryKindOfString) {
  for (const char* value : {"''", "'\\'", "\"\\\\\"", "\"\\\"\"", "\"\"\"x\"\"\"", "\"\"\"x\"\"\"\"",
                            "\"\"\"x\"\"\"\"\"", "'''x''''", "\"\"\"\n\\\"\"\"\""}) {
    EXPECT_THAT(SyntaxError("x = { y = " + std::string(value) + ", " + Deep(50'000) + " = 1 }"), HasSubstr("100 names"))
        << value;
  }
}

TEST(SettingsText, CountsTheNamesOfEveryLineAnew) {
  std::string text = "[[s]]\n[s.t]\nl = [ { x.y = 1 }, [ 1.5 ] ]\n";
  for (int i = 0; i < 200; ++i) text += "k" + std::to_string(i) + ".x = 1\n";
  EXPECT_EQ(SyntaxError(text), "");
}

TEST(SettingsText, SaysWhereNamesLieTooDeep) {
  EXPECT_THAT(SyntaxError("\xEF\xBB\xBF# 道路\n\"道\"." + Deep(100) + ".x = 1"), StartsWith("line 2, column 204: "));
}

TEST(SettingsText, ReadsNamesOfAHundredParts) {
  const SettingsPath path(100, "a");
  EXPECT_EQ(SettingsText(Deep(100) + ".x = 1").Find(path, "x"), SettingValue(1));
  EXPECT_EQ(SettingsText('[' + Deep(100) + "]\nx = 1").Find(path, "x"), SettingValue(1));
}

TEST(SettingsText, TakesNoOtherDotsForThoseOfANameThatIsTooDeep) {
  const std::string dots(500, '.');
  const std::vector<std::string> values = {'"' + dots + '"',
                                           "'" + dots + "'",
                                           "\"\\\"" + dots + '"',
                                           "'\\' #" + dots,
                                           "\"\"\"\n\"" + dots + "\"\"\"\"\"",
                                           "'''" + dots + "\n'" + dots + "''''",
                                           "\"\" # '" + dots,
                                           "\"\"\"" + dots + "\\\"\"\"" + dots + "\"\"\""};
  for (const std::string& value : values) {
    const std::string text =
        "a = " + value + "\n" + Deep(60, "b") + " = 1\n# \"" + dots + '\n' + Deep(60, "c") + " = 1";
    EXPECT_EQ(SyntaxError(text), "") << value;
    EXPECT_THAT(SyntaxError("a = " + value + "\n" + Deep(50'000, "b")), StartsWith("line ")) << value;
  }
  std::string numbers = "n = [";
  for (int i = 0; i < 500; ++i) numbers += i % 10 == 0 ? "\n1.5, # .\n" : "1.5, ";
  EXPECT_EQ(SyntaxError(numbers + "]\n[a.b]\nt = 07:32:00.5\n"), "");
}

TEST(SettingsText, SurvivesStringsThatAreNotClosed) {
  for (const char* text :
       {"\"", "'", "a = \"", "a = '", "a = \"\"\"", "a = '''", "a = \"\\", "a = \"\"\"\\", "\"\"\"\"\"\"\""}) {
    EXPECT_THAT(SyntaxError(text), StartsWith("line 1, ")) << text;
  }
}

TEST(SettingsText, AddsNoNameThatItWouldNotRead) {
  const SettingsPath deep(50'000, "a");
  for (const char* text : {"", "x = 1\n", "a = { x = 1 }\n", "[a]\nx = 1\n"}) {
    EXPECT_EQ(Changed(text, deep, "y", 2), "refused") << text;
    EXPECT_NE(Changed(text, SettingsPath(100, "a"), "y", 2), "refused") << text;
    EXPECT_EQ(SettingsText(text).Find(deep, "y"), std::nullopt);
  }
}

// --- changing --------------------------------------------------------------------------------------------------------

TEST(SettingsText, StartsAFile) {
  EXPECT_EQ(Changed("", kRoadInfo, "speed", 3), "[\"情報化施工\".RoadInfo]\nspeed = 3\n");
  EXPECT_EQ(Changed("", kRoot, "name", "道路"), "name = \"道路\"\n");
}

TEST(SettingsText, ChangesAValueAndNothingElse) {
  const std::string text =
      "# mine\r\n\r\n [ \"情報化施工\" . RoadInfo ] # 道路\r\n\tspeed   =  0x3  # 60 km/h\r\nunknown = [1,\r\n "
      "2]\r\n#end";
  EXPECT_EQ(Changed(text, kRoadInfo, "SPEED", 7),
            "# mine\r\n\r\n [ \"情報化施工\" . RoadInfo ] # 道路\r\n\tspeed   =  7  # 60 km/h\r\nunknown = [1,\r\n "
            "2]\r\n#end");
  EXPECT_EQ(Changed(text, kRoadInfo, "unknown", "x"),
            "# mine\r\n\r\n [ \"情報化施工\" . RoadInfo ] # 道路\r\n\tspeed   =  0x3  # 60 km/h\r\nunknown = "
            "\"x\"\r\n#end");
}

TEST(SettingsText, ChangesAValueInEveryForm) {
  for (const char* value : {"1", "-17", "0b101", "1_000", "1.5e3", "nan", "true", "\"\"", "\"日\\\"本\"", "'''a\nb'''",
                            "\"\"\"a\nb\"\"\"", "'x'", "1979-05-27T07:32:00Z", "[ 1, [\n2 ] ]", "\"\\u65E5\""}) {
    for (const char* after : {"", "\n", " # c\n", "\t\r\nb = 1"}) {
      for (const char* before : {"", "\xEF\xBB\xBF", "# 日本語\n\n", "z = '日本' # x\r\n"}) {
        const std::string start = before + std::string("\"名\" = ");
        EXPECT_EQ(Changed(start + value + after, kRoot, "名", 5), start + "5" + after);
      }
    }
  }
}

TEST(SettingsText, AddsBelowTheLastValueOfTheSection) {
  EXPECT_EQ(Changed("[a]\n# first\nx = 1 # one\n\n# about b\n[b]\n", {"a"}, "y", 2),
            "[a]\n# first\nx = 1 # one\ny = 2\n\n# about b\n[b]\n");
  EXPECT_EQ(Changed("[a]\n  x = [\n1]", {"a"}, "y", 2), "[a]\n  x = [\n1]\n  y = 2\n");
  EXPECT_EQ(Changed("[a]\r\nx = 1\r\n", {"a"}, "y", 2), "[a]\r\nx = 1\r\ny = 2\r\n");
}

TEST(SettingsText, AddsBelowAHeaderWithoutValues) {
  EXPECT_EQ(Changed("[a] # c\n\n[b]\nx = 1\n", {"a"}, "y", 2), "[a] # c\ny = 2\n\n[b]\nx = 1\n");
  EXPECT_EQ(Changed("[a]", {"a"}, "y", 2), "[a]\ny = 2\n");
  EXPECT_EQ(Changed("[a.b]\nx = 1\n[a]\n[c]", {"a"}, "y", 2), "[a.b]\nx = 1\n[a]\ny = 2\n[c]");
}

TEST(SettingsText, AddsASectionWhereThereIsNone) {
  EXPECT_EQ(Changed("[a]\nx = 1", {"b"}, "y", 2), "[a]\nx = 1\n\n[b]\ny = 2\n");
  EXPECT_EQ(Changed("# only a comment", {"b"}, "y", 2), "# only a comment\n\n[b]\ny = 2\n");
  EXPECT_EQ(Changed("[a.b]\nx = 1\n", {"a"}, "y", 2), "[a.b]\nx = 1\n\n[a]\ny = 2\n") << "[a] was only implied";
  EXPECT_EQ(Changed("[Road]\nx = 1\n", {"road", "info"}, "y", 2), "[Road]\nx = 1\n\n[Road.info]\ny = 2\n")
      << "in the spelling that is there";
  EXPECT_EQ(Changed("\xEF\xBB\xBF", {"b"}, "y", 2), "\xEF\xBB\xBF[b]\ny = 2\n");
}

TEST(SettingsText, AddsToTheStoreItselfAboveAllSections) {
  EXPECT_EQ(Changed("[a]\nx = 1\n", kRoot, "y", 2), "y = 2\n[a]\nx = 1\n");
  EXPECT_EQ(Changed("z = 1\n[a]\nx = 1\n", kRoot, "y", 2), "z = 1\ny = 2\n[a]\nx = 1\n");
  EXPECT_EQ(Changed("\xEF\xBB\xBF[a]\n", kRoot, "y", 2), "\xEF\xBB\xBFy = 2\n[a]\n");
}

TEST(SettingsText, AddsToTablesThatAPersonWroteInOtherWays) {
  EXPECT_EQ(Changed("a = { x = 1 } # c\n", {"a"}, "y", 2), "a = { x = 1, y = 2 } # c\n");
  EXPECT_EQ(Changed("a = {x=1}", {"a"}, "y", 2), "a = {x=1, y = 2 }");
  EXPECT_EQ(Changed("a = {}\n", {"a"}, "y", 2), "a = { y = 2 }\n");
  EXPECT_EQ(Changed("a.b.x = 1\nc = 1\n", {"a", "b"}, "y", 2), "a.b.x = 1\na.b.y = 2\nc = 1\n");
  EXPECT_EQ(Changed("[a]\nb.x = 1\n", {"a", "b"}, "y", 2), "[a]\nb.x = 1\nb.y = 2\n");
}

TEST(SettingsText, AddsToTablesThatAreThereThroughDottedNamesOnly) {
  EXPECT_EQ(Changed("a.b.x = 1\n[c]\n", {"a"}, "y", 2), "a.b.x = 1\na.y = 2\n[c]\n");
  EXPECT_EQ(Changed("a.b.x = 1", {"a"}, "y", 2), "a.b.x = 1\na.y = 2\n");
  EXPECT_EQ(Changed("a.b.c.x = 1\r\n\r\n a.b.c.z = [\r\n] # z\r\nd = 1\r\n", {"a", "b"}, "y", 2),
            "a.b.c.x = 1\r\n\r\n a.b.c.z = [\r\n] # z\r\na.b.y = 2\r\nd = 1\r\n");
  EXPECT_EQ(Changed("[s]\n  a . b.x = 1\n  e.x = 1\n[s.a.c]\nz = 1\n", {"s", "a"}, "y", 2),
            "[s]\n  a . b.x = 1\n  a . y = 2\n  e.x = 1\n[s.a.c]\nz = 1\n");
  EXPECT_EQ(Changed("a.b.x = 1\na.z = 1\n", {"a"}, "y", 2), "a.b.x = 1\na.z = 1\na.y = 2\n");
  EXPECT_EQ(Changed("[a]\nb.x = 1\n", {"a"}, "y", 2), "[a]\nb.x = 1\ny = 2\n");
  EXPECT_EQ(Changed("a.b.x = 1\n[c]\n", kRoot, "y", 2), "a.b.x = 1\ny = 2\n[c]\n");
  EXPECT_EQ(Changed("x = { a.b.z = 1 }\n", {"x", "a"}, "y", 2), "x = { a.b.z = 1, a.y = 2 }\n");
  EXPECT_EQ(Changed("a.b.x = 1\n", {"a", "q"}, "y", 2), "a.b.x = 1\n\n[a.q]\ny = 2\n");
}

TEST(SettingsText, AddsToTablesInBracesWhateverTheirDepth) {
  const std::string text = "\"情報化施工\" = { RoadInfo = { speed = 3 } }\n";
  EXPECT_EQ(Changed(text, kRoadInfo, "traffic", 2), "\"情報化施工\" = { RoadInfo = { speed = 3, traffic = 2 } }\n");
  EXPECT_EQ(Changed(text, {"情報化施工", "FormCtrl"}, "basec", "中心"),
            "\"情報化施工\" = { RoadInfo = { speed = 3 }, FormCtrl.basec = \"中心\" }\n");
  EXPECT_EQ(Changed(text, {"情報化施工"}, "x", 1), "\"情報化施工\" = { RoadInfo = { speed = 3 }, x = 1 }\n");
  EXPECT_EQ(Changed("[a]\nb = { }\n", {"a", "b", "c", "d e"}, "y", 2), "[a]\nb = { c.\"d e\".y = 2 }\n");
  EXPECT_EQ(Changed("a = { x = 1 }\n", {"a", "b"}, "y", 2), "a = { x = 1, b.y = 2 }\n");
  EXPECT_EQ(Changed("a = { b.x = 1 }\n", {"a", "b"}, "y", 2), "a = { b.x = 1, b.y = 2 }\n");
}

TEST(SettingsText, TellsHowAnEntryIsSpelled) {
  const SettingsText text("[RoadInfo]\nSPEED = 1.5\n[roadinfo]\nspeed = 3\n[roadinfo.deep]\n");
  const std::optional<SettingsEntry> first = text.FindEntry({"RoadInfo"}, "speed");
  ASSERT_TRUE(first);
  EXPECT_EQ(*first, (SettingsEntry{{"RoadInfo"}, "SPEED", std::nullopt, "1.5"}));
  EXPECT_EQ(text.FindEntry({"roadinfo"}, "Speed")->shown, "3");
  EXPECT_EQ(text.FindEntry({"roadinfo"}, "deep"), std::nullopt) << "a key";
  EXPECT_EQ(text.FindEntry({"roadinfo"}, "none"), std::nullopt);
  EXPECT_EQ(text.FindEntry({"none"}, "speed"), std::nullopt);
}

TEST(SettingsText, RefusesToDestroyWhatIsThere) {
  EXPECT_EQ(Changed("[a.b]\nx = 1\n", {"a"}, "b", 2), "refused") << "a key";
  EXPECT_EQ(Changed("a = 1\n", {"a"}, "x", 2), "refused") << "a value";
  EXPECT_EQ(Changed("[[a]]\nx = 1\n[[a]]\nx = 2\n", {"a"}, "x", 3), "refused") << "a list of tables";
  EXPECT_EQ(Changed("[[a]]\nx = 1\n", kRoot, "a", 3), "refused");
  EXPECT_EQ(Changed("[[a]]\nx = 1\n", {"a", "b"}, "y", 3), "refused") << "no key leads into a list";
  EXPECT_EQ(Changed("a = { b = 1 }\n", {"a", "b"}, "y", 2), "refused") << "a value in braces";
}

TEST(SettingsText, WritesEveryNameAndText) {
  const std::vector<std::string> hostile = {"",
                                            " ",
                                            "道路 中心",
                                            "a.b",
                                            "a=b # c",
                                            "[x]",
                                            "\"quoted\"",
                                            "'single'",
                                            "'''\"\"\"",
                                            "back\\slash\\",
                                            "line\nbreak\r\n",
                                            "tab\tbell\x07 escape\x1B[2J delete\x7F",
                                            std::string("nul\0nul", 7),
                                            "true",
                                            "1",
                                            std::string(100'000, 'x'),
                                            "C:\\表示\\ソート\\能"};
  for (const std::string& text : hostile) {
    const std::optional<SettingsText> changed = SettingsText("[a]\nx = 1\n").With({"a", text}, text, text);
    ASSERT_TRUE(changed) << text;
    EXPECT_EQ(SettingsText(changed->Text()).Find({"a", text}, text), SettingValue(text));
    const std::optional<SettingsText> again = changed->With({"a", text}, text, 7);
    ASSERT_TRUE(again) << text;
    EXPECT_EQ(SettingsText(again->Text()).Find({"a", text}, text), SettingValue(7));
  }
}

TEST(SettingsText, WritesEveryCharacterOfCodePage932InOneLine) {
  std::string all;
  for (unsigned byte = 0; byte < 0x100; ++byte) {
    const std::string single(1, static_cast<char>(byte));
    (void)code_page_932::AppendAsUtf8(single, all);
    for (unsigned trail = 0x40; trail < 0x100; ++trail) {
      if (code_page_932::Decode(static_cast<unsigned char>(byte))) break;
      (void)code_page_932::AppendAsUtf8(single + static_cast<char>(trail), all);
    }
  }
  ASSERT_GT(all.size(), 20'000u);
  const std::string text = Changed("", kRoadInfo, all, all);
  EXPECT_EQ(SettingsText(text).Find(kRoadInfo, all), SettingValue(all));
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 2);
}

}  // namespace
}  // namespace vorn_host
