#include "host/settings/settings_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstddef>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#ifndef _WIN32
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

#include "host/document/atomic_file.h"
#include "host/settings/file_lock.h"
#include "tests/host/documents.h"
#include "tests/host/temporary_directory.h"
#include "vorn/platform/code_page_932.h"
#include "vorn/platform/wex_key.h"
#include "vorn/road/form_ctrl.h"

namespace vorn_host {
namespace {

namespace fs = std::filesystem;

using host_test::ErrorOf;
using host_test::TemporaryDirectory;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

#ifndef _WIN32
/// Runs a function in processes of their own, with their numbers; true when it gives true in all of them.
template <typename Function>
bool InProcesses(int count, Function run) {
  std::vector<pid_t> children;
  for (int number = 0; number < count; ++number) {
    const pid_t child = fork();
    if (child == 0) _exit(run(number) ? 0 : 1);
    children.push_back(child);
  }
  bool allSucceeded = true;
  for (const pid_t child : children) {
    int status = -1;
    allSucceeded = waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0 && allSucceeded;
  }
  return allSucceeded;
}
#endif

class SettingsFileTest : public testing::Test {
 protected:
  [[nodiscard]] fs::path Path() const { return m_directory / "vorn.toml"; }
  /// What the file says; empty when there is none.
  [[nodiscard]] std::string Text() const { return ReadFileIfThere(Path()).value_or(""); }
  void WriteText(std::string_view text) const { m_directory.Write("vorn.toml", text); }
  [[nodiscard]] SettingsFile Open(const fs::path& path) {
    return SettingsFile(
        path, [this](const std::string& problem) { Hear(problem); }, [this] { Pause(); });
  }
  /// What the user is told of, and does thereupon.
  void Hear(const std::string& problem) {
    m_problems.push_back(problem);
    if (m_reaction) m_reaction();
  }
  /// What happens while a write waits for an editor: nothing, unless a test says what.
  void Pause() {
    ++m_pauses;
    if (m_meanwhile) m_meanwhile();
  }
  /// The file can be neither read nor written, which is reported.
  void ExpectNoOrdinaryFile() {
    m_file.CreateKey("Grid");
    EXPECT_EQ(m_file.ReadInt("Grid", "Size"), std::nullopt);
    EXPECT_FALSE(m_file.WriteInt("Grid", "Size", 1));
    const std::string problem = Path().string() + ": this is no ordinary file";
    EXPECT_THAT(m_problems, ElementsAre(problem, problem)) << "of reading and of writing";
    EXPECT_EQ(ErrorOf([&] { (void)m_file.Entries(); }), problem);
  }

  TemporaryDirectory m_directory;
  std::vector<std::string> m_problems;
  std::function<void()> m_reaction;
  std::function<void()> m_meanwhile;
  int m_pauses = 0;
  SettingsFile m_file = Open(Path());
};

TEST_F(SettingsFileTest, HoldsNoKeyButTheStoreItselfAtFirst) {
  EXPECT_TRUE(m_file.KeyExists(""));
  EXPECT_FALSE(m_file.KeyExists("Grid"));
  EXPECT_EQ(m_file.ReadInt("Grid", "Size"), std::nullopt);
}

TEST_F(SettingsFileTest, ReadingAndCreatingKeysMakesNoFile) {
  EXPECT_TRUE(m_file.CreateKey("Vendor\\Grid"));
  EXPECT_TRUE(m_file.KeyExists("vendor\\grid"));
  EXPECT_TRUE(m_file.KeyExists("Vendor"));
  EXPECT_FALSE(m_file.KeyExists("Grid"));
  EXPECT_EQ(m_file.ReadInt("Vendor\\Grid", "Size"), std::nullopt);
  EXPECT_THAT(m_file.Entries(), IsEmpty());
  EXPECT_THAT(m_directory.Names(), IsEmpty());
}

TEST_F(SettingsFileTest, WritesToExistingKeysOnly) {
  EXPECT_FALSE(m_file.WriteInt("Grid", "Size", 1));
  EXPECT_FALSE(m_file.WriteString("Grid", "Name", "x"));
  EXPECT_THAT(m_directory.Names(), IsEmpty());
  EXPECT_THAT(m_problems, ElementsAre(Path().string() + ": Grid.Size cannot be written: there is no such key",
                                      Path().string() + ": Grid.Name cannot be written: there is no such key"));
  m_problems.clear();
  m_file.CreateKey("Grid");
  EXPECT_TRUE(m_file.WriteInt("Grid", "Size", 1));
  EXPECT_TRUE(m_file.WriteInt("", "Top", 2)) << "the store itself is a key";
  EXPECT_EQ(m_file.ReadInt("Grid", "Size"), 1);
  EXPECT_EQ(Text(), "Top = 2\n[Grid]\nSize = 1\n");
  EXPECT_THAT(m_problems, IsEmpty());
}

TEST_F(SettingsFileTest, AnotherObjectFindsTheValues) {
  m_file.CreateKey("Grid");
  m_file.WriteInt("Grid", "Size", -5);
  m_file.WriteString("Grid", "Name", u8"断面"_cp932);
  const SettingsFile other = Open(Path());
  EXPECT_TRUE(other.KeyExists("Grid"));
  EXPECT_EQ(other.ReadInt("grid", "SIZE"), -5);
  EXPECT_EQ(other.ReadString("Grid", "Name"), u8"断面"_cp932);
  m_file.WriteInt("Grid", "Size", 6);
  EXPECT_EQ(other.ReadInt("Grid", "Size"), 6) << "what it read before does not linger";
}

TEST_F(SettingsFileTest, KeepsTheLastKindWritten) {
  m_file.CreateKey("Grid");
  m_file.WriteInt("Grid", "Size", 1);
  m_file.WriteString("Grid", "Size", "large");
  EXPECT_EQ(m_file.ReadInt("Grid", "Size"), std::nullopt);
  EXPECT_EQ(m_file.ReadString("Grid", "Size"), "large");
  m_file.WriteInt("Grid", "SIZE", 2);
  EXPECT_EQ(m_file.ReadInt("Grid", "Size"), 2);
  EXPECT_EQ(m_file.ReadString("Grid", "Size"), std::nullopt);
  EXPECT_EQ(Text(), "[Grid]\nSize = 2\n");
}

TEST_F(SettingsFileTest, HoldsTextsWhoseBytesLookLikeSyntax) {
  m_file.CreateKey(u8"表\\能"_cp932);
  const std::vector<CString> texts = {u8"表"_cp932,  u8"C:\\表示\\ソ"_cp932, "\"", "\\",
                                      "a\nb\r\nc\t", u8"\"能\"\\"_cp932,     ""};
  for (const CString& text : texts) {
    EXPECT_TRUE(m_file.WriteString(u8"表\\能"_cp932, text.View(), text.View()));
    EXPECT_EQ(Open(Path()).ReadString(u8"表\\能"_cp932, text.View()), text);
  }
  EXPECT_TRUE(m_file.KeyExists(u8"表"_cp932)) << "a path is split between characters only";
  EXPECT_THAT(m_file.Entries(), SizeIs(texts.size()));
  EXPECT_THAT(m_problems, IsEmpty());
}

TEST_F(SettingsFileTest, HoldsVeryLongTexts) {
  const std::string text(1'000'000, 'x');
  m_file.CreateKey("Grid");
  EXPECT_TRUE(m_file.WriteString("Grid", "Name", text));
  EXPECT_EQ(Open(Path()).ReadString("Grid", "Name")->View(), text);
}

TEST_F(SettingsFileTest, RefusesBytesThatAreNoText) {
  m_file.CreateKey("Grid");
  EXPECT_FALSE(m_file.CreateKey("\x81"));
  EXPECT_FALSE(m_file.KeyExists("\x81"));
  EXPECT_FALSE(m_file.WriteString("Grid", "Name", "half a character: \x81"));
  EXPECT_FALSE(m_file.WriteInt("Grid", "\x81", 1));
  EXPECT_EQ(m_file.ReadInt("Grid", "\x81"), std::nullopt);
  EXPECT_THAT(m_directory.Names(), IsEmpty());
  ASSERT_THAT(m_problems, SizeIs(2));
  EXPECT_THAT(m_problems[0], AllOf(StartsWith(Path().string()), HasSubstr("Grid.Name"), HasSubstr("code page 932")));
}

TEST_F(SettingsFileTest, RefusesTextsWithANul) {
  const std::string_view text("nul\0nul", 7);
  m_file.CreateKey("Grid");
  EXPECT_FALSE(m_file.WriteString("Grid", "Name", text));
  EXPECT_FALSE(m_file.WriteInt("Grid", text, 1));
  EXPECT_FALSE(m_file.CreateKey(text));
  EXPECT_THAT(m_problems, ElementsAre(HasSubstr("Grid.Name"), HasSubstr("NUL")));
  EXPECT_THAT(m_directory.Names(), IsEmpty());

  WriteText("[Grid]\nName = \"nul\\u0000nul\"\n");
  EXPECT_EQ(m_file.ReadString("Grid", "Name"), std::nullopt) << "as C text it would be cut short";
  EXPECT_THAT(m_file.Entries(), SizeIs(1));
}

TEST_F(SettingsFileTest, RefusesKeysThatLieTooDeep) {
  std::string path = "a";
  for (std::size_t i = 1; i < kMostNames; ++i) path += "\\a";
  EXPECT_TRUE(m_file.CreateKey(path));
  EXPECT_TRUE(m_file.WriteInt(path, "Size", 1));
  EXPECT_EQ(Open(Path()).ReadInt(path, "Size"), 1);
  for (const std::string& deep : {path + "\\a", std::string(50'000, '\\')}) {
    EXPECT_FALSE(m_file.CreateKey(deep));
    EXPECT_FALSE(m_file.KeyExists(deep));
    EXPECT_FALSE(m_file.WriteInt(deep, "Size", 1));
    EXPECT_EQ(m_file.ReadInt(deep, "Size"), std::nullopt);
  }
}

TEST_F(SettingsFileTest, GivesNoTextThatCodePage932CannotHold) {
  WriteText("[Grid]\nName = \"😀\"\n");
  EXPECT_EQ(m_file.ReadString("Grid", "Name"), std::nullopt);
  EXPECT_THAT(m_file.Entries(), SizeIs(1));
}

// --- files that people edit ------------------------------------------------------------------------------------------

TEST_F(SettingsFileTest, ReadsAnEmptyFileAndOneOfComments) {
  for (const char* text : {"", "# nothing yet\n", "\r\n", "\xEF\xBB\xBF"}) {
    WriteText(text);
    EXPECT_FALSE(m_file.KeyExists("Grid"));
    EXPECT_THAT(m_file.Entries(), IsEmpty());
  }
  EXPECT_THAT(m_problems, IsEmpty());
}

TEST_F(SettingsFileTest, KeepsCommentsAndWhatItDoesNotKnow) {
  const std::string head = "\xEF\xBB\xBF# my settings\r\n[Grid] # 断面\r\nwhen = 2024-04-01\r\n";
  WriteText(head + "Size = 1 # metres\r\n");
  m_file.WriteInt("Grid", "Size", 2);
  m_file.WriteString("Grid", "Name", "x");
  EXPECT_EQ(Text(), head + "Size = 2 # metres\r\nName = \"x\"\r\n");
}

TEST_F(SettingsFileTest, DoesNotWriteAValueThatIsThereAlready) {
  WriteText("[Grid]\nSize = 1\n");
  const auto time = fs::last_write_time(Path());
  fs::last_write_time(Path(), time - std::chrono::hours(1));
  EXPECT_TRUE(m_file.WriteInt("Grid", "Size", 1));
  EXPECT_EQ(fs::last_write_time(Path()), time - std::chrono::hours(1));
}

TEST_F(SettingsFileTest, ReportsAValueThatHasNoRoom) {
  WriteText("Grid = 1\n");
  m_file.CreateKey("Grid");
  EXPECT_FALSE(m_file.WriteInt("Grid", "Size", 1));
  EXPECT_EQ(Text(), "Grid = 1\n");
  EXPECT_THAT(m_problems, ElementsAre(AllOf(StartsWith(Path().string()), HasSubstr("Grid.Size"))));
}

// --- keys ------------------------------------------------------------------------------------------------------------

/// The form control with its settings in the file.
class FormCtrlInFile : public SettingsFileTest {
 protected:
  ~FormCtrlInFile() override { WexSetApplicationStore(nullptr, ""); }

  void Use(const fs::path& path) {
    WexSetApplicationStore(std::make_shared<SettingsFile>(path, [this](const std::string& problem) { Hear(problem); }),
                           "");
    m_formCtrl.GetNames()[1] = "mine";
  }

  VornFormCtrl m_formCtrl;
};

TEST_F(FormCtrlInFile, KeepsItsNamesWhenTheyCouldNotBeStored) {
  m_directory.Write("file", "x");
  Use(m_directory / "file" / "vorn.toml");
  for (int times = 0; times < 2; ++times) {
    m_formCtrl.StoreRegistry(nullptr);
    m_formCtrl.LoadRegistry(nullptr);
    EXPECT_EQ(m_formCtrl.GetNames()[1], "mine") << "there is nothing to load";
  }
  EXPECT_THAT(m_problems, SizeIs(1));
  fs::remove(m_directory / "file");
  m_formCtrl.StoreRegistry(nullptr);
  VornFormCtrl loaded;
  loaded.LoadRegistry(nullptr);
  EXPECT_EQ(loaded.GetNames()[1], "mine");
}

TEST_F(FormCtrlInFile, KeepsItsNamesWhenTheSectionWasDeletedByHand) {
  Use(Path());
  m_formCtrl.StoreRegistry(nullptr);
  for (const char* text : {"[Other]\nx = 1\n", ""}) {
    WriteText(text);
    m_formCtrl.LoadRegistry(nullptr);
    EXPECT_EQ(m_formCtrl.GetNames()[1], "mine") << "there is nothing to load";
  }
  fs::remove(Path());
  m_formCtrl.LoadRegistry(nullptr);
  EXPECT_EQ(m_formCtrl.GetNames()[1], "mine");
}

TEST_F(SettingsFileTest, AKeyIsThereUntilItCouldNotBeStored) {
  fs::create_directory(Path());
  m_file.CreateKey("Grid\\Lines");
  EXPECT_TRUE(m_file.KeyExists("grid"));
  EXPECT_TRUE(m_file.KeyExists("grid\\lines"));
  EXPECT_FALSE(m_file.WriteInt("Grid\\Lines", "Size", 1));
  EXPECT_FALSE(m_file.KeyExists("Grid\\Lines"));
  EXPECT_FALSE(m_file.KeyExists("Grid"));
  fs::remove(Path());
  EXPECT_TRUE(m_file.WriteInt("Grid\\Lines", "Size", 1)) << "it may be written all the same";
  EXPECT_TRUE(m_file.KeyExists("Grid\\Lines"));
}

TEST_F(SettingsFileTest, AKeyWhoseOnlyValueIsRefusedIsNotThere) {
  m_file.CreateKey("Grid");
  EXPECT_FALSE(m_file.WriteString("Grid", "Name", "half a character: \x81"));
  EXPECT_FALSE(m_file.KeyExists("Grid"));
}

TEST_F(SettingsFileTest, AKeyThatWasStoredIsThereForAsLongAsTheFileSaysSo) {
  m_file.CreateKey("Grid");
  m_file.CreateKey("Road");
  EXPECT_TRUE(m_file.WriteInt("Grid", "Size", 1));
  EXPECT_TRUE(m_file.KeyExists("Grid"));
  WriteText("");
  EXPECT_FALSE(m_file.KeyExists("Grid"));
  EXPECT_FALSE(Open(Path()).KeyExists("Grid")) << "every object answers alike";
  EXPECT_TRUE(m_file.KeyExists("Road")) << "nothing was stored in it yet";
}

TEST_F(SettingsFileTest, AKeyIsThereWhileItsFirstGroupIsWritten) {
  m_file.CreateKey("Grid");
  m_file.BeginGroup();
  EXPECT_TRUE(m_file.WriteInt("Grid", "Size", 1));
  EXPECT_TRUE(m_file.KeyExists("Grid"));
  EXPECT_TRUE(m_file.WriteInt("Grid", "Width", 2));
  m_file.EndGroup();
  EXPECT_EQ(Text(), "[Grid]\nSize = 1\nWidth = 2\n");
}

// --- damaged files ---------------------------------------------------------------------------------------------------

TEST_F(SettingsFileTest, ReadingLeavesADamagedFileAlone) {
  WriteText("[Grid]\nSize = \n");
  EXPECT_EQ(m_file.ReadInt("Grid", "Size"), std::nullopt);
  EXPECT_FALSE(m_file.KeyExists("Grid"));
  EXPECT_THAT(m_file.Entries(), IsEmpty());
  EXPECT_THAT(m_directory.Names(), ElementsAre("vorn.toml"));
  EXPECT_EQ(Text(), "[Grid]\nSize = \n");
  EXPECT_EQ(m_pauses, 0);
  EXPECT_THAT(m_problems, ElementsAre(AllOf(StartsWith(Path().string() + ": line 2, column "),
                                            HasSubstr("the defaults are used"))));

  WriteText("[Grid]\nSize = 3\n");
  EXPECT_EQ(m_file.ReadInt("Grid", "Size"), 3) << "the editor came to its end";
  WriteText("[Grid]\nSize = \n");
  EXPECT_EQ(m_file.ReadInt("Grid", "Size"), std::nullopt);
  EXPECT_THAT(m_problems, SizeIs(2)) << "it was over, and is told again";
}

TEST_F(SettingsFileTest, SetsADamagedFileAsideBeforeAWrite) {
  m_file.CreateKey("Grid");
  WriteText("nonsense");
  EXPECT_TRUE(m_file.WriteInt("Grid", "Size", 1));
  EXPECT_EQ(m_pauses, 1);
  EXPECT_EQ(Text(), "[Grid]\nSize = 1\n");
  EXPECT_EQ(ReadFile(m_directory / "vorn.toml.damaged-1"), "nonsense");
  EXPECT_THAT(m_problems, ElementsAre(AllOf(StartsWith(Path().string() + ": line 1, column "),
                                            HasSubstr("set aside as vorn.toml.damaged-1"))));
}

TEST_F(SettingsFileTest, KeepsEveryDamagedFile) {
  m_file.CreateKey("Grid");
  m_directory.Write("vorn.toml.damaged-2", "someone's");
  for (const char* text : {"first", "second", "third"}) {
    WriteText(text);
    EXPECT_TRUE(m_file.WriteInt("Grid", "Size", 1));
  }
  EXPECT_EQ(ReadFile(m_directory / "vorn.toml.damaged-1"), "first");
  EXPECT_EQ(ReadFile(m_directory / "vorn.toml.damaged-2"), "someone's");
  EXPECT_EQ(ReadFile(m_directory / "vorn.toml.damaged-3"), "second");
  EXPECT_EQ(ReadFile(m_directory / "vorn.toml.damaged-4"), "third");
  EXPECT_THAT(m_problems, SizeIs(3));
}

#ifndef _WIN32  // links there take a right that few users have
TEST_F(SettingsFileTest, ADanglingLinkHasItsNameToo) {
  m_file.CreateKey("Grid");
  fs::create_symlink("nowhere", m_directory / "vorn.toml.damaged-1");
  WriteText("nonsense");
  EXPECT_TRUE(m_file.WriteInt("Grid", "Size", 1));
  EXPECT_EQ(fs::read_symlink(m_directory / "vorn.toml.damaged-1"), "nowhere");
  EXPECT_EQ(ReadFile(m_directory / "vorn.toml.damaged-2"), "nonsense");
}
#endif

TEST_F(SettingsFileTest, WritesNothingWhereADamagedFileHasToStay) {
  m_file.CreateKey("Grid");
  WriteText("nonsense");
  fs::create_directory(m_directory / "vorn.toml.lock");
  EXPECT_FALSE(m_file.WriteInt("Grid", "Size", 1));
  EXPECT_EQ(Text(), "nonsense");
  EXPECT_THAT(m_problems, ElementsAre(HasSubstr("cannot be locked")));
}

TEST_F(SettingsFileTest, ReadsNoNamesThatLieTooDeep) {
  std::string name = "a";
  for (int i = 1; i < 50'000; ++i) name += ".a";
  for (const std::string& text : {name + " = 1\n", '[' + name + "]\n"}) {
    WriteText(text);
    EXPECT_EQ(m_file.ReadInt("Grid", "Size"), std::nullopt);
    EXPECT_THAT(m_problems, ElementsAre(HasSubstr("names lie within each other; the defaults are used")));
    m_problems.clear();
    WriteText("");
    EXPECT_EQ(m_file.ReadInt("Grid", "Size"), std::nullopt);
  }
}

#ifndef _WIN32  // links there take a right that few users have
TEST_F(SettingsFileTest, SetsTheDamagedFileThatALinkLeadsToAside) {
  m_file.CreateKey("Grid");
  fs::create_directory(m_directory / "dot");
  m_directory.Write("dot/real.toml", "nonsense");
  fs::create_symlink("real.toml", m_directory / "dot" / "link.toml");
  fs::create_symlink("dot/link.toml", Path());
  for (const char* aside : {"real.toml.damaged-1", "real.toml.damaged-2"}) {
    WriteText("nonsense");
    m_problems.clear();
    EXPECT_TRUE(m_file.WriteInt("Grid", "Size", 1));
    EXPECT_EQ(fs::read_symlink(Path()), "dot/link.toml") << "the link stays";
    EXPECT_EQ(ReadFile(m_directory / "dot" / "real.toml"), "[Grid]\nSize = 1\n");
    EXPECT_EQ(ReadFile(m_directory / "dot" / aside), "nonsense");
    EXPECT_THAT(m_problems, ElementsAre(AllOf(StartsWith(Path().string() + ": line 1, column "),
                                              HasSubstr((m_directory / "dot" / aside).string()))));
  }
  EXPECT_THAT(m_directory.Names(), ElementsAre("dot", "vorn.toml"));
  EXPECT_TRUE(fs::exists(m_directory / "dot" / "real.toml.lock")) << "whoever uses the file itself waits too";
}
#endif

#ifndef _WIN32  // links there take a right that few users have
TEST_F(SettingsFileTest, MakesTheFileThatALinkLeadsTo) {
  m_file.CreateKey("Grid");
  fs::create_symlink("not/yet/real.toml", Path());
  EXPECT_TRUE(m_file.WriteInt("Grid", "Size", 1));
  EXPECT_EQ(ReadFile(m_directory / "not" / "yet" / "real.toml"), "[Grid]\nSize = 1\n");
  EXPECT_TRUE(fs::is_symlink(Path()));
}
#endif

// --- editors that are saving -----------------------------------------------------------------------------------------

TEST_F(SettingsFileTest, AWriteLetsAnEditorFinishAHalfWrittenFile) {
  m_file.CreateKey("Grid");
  WriteText("[Grid]\nWid");
  m_meanwhile = [this] { WriteText(m_pauses == 1 ? "[Grid]\nWidth =" : "[Grid]\nWidth = 7\n"); };
  EXPECT_TRUE(m_file.WriteInt("Grid", "Size", 1));
  EXPECT_EQ(Text(), "[Grid]\nWidth = 7\nSize = 1\n");
  EXPECT_EQ(m_pauses, 2);
  EXPECT_THAT(m_directory.Names(), ElementsAre("vorn.toml", "vorn.toml.lock"));
  EXPECT_THAT(m_problems, IsEmpty());
}

TEST_F(SettingsFileTest, AWriteLetsAnEditorFillTheFileThatItEmptied) {
  for (const bool isRemoved : {false, true}) {
    WriteText("[Grid]\nWidth = 7\n");
    EXPECT_EQ(m_file.ReadInt("Grid", "Width"), 7);
    WriteText("");
    if (isRemoved) fs::remove(Path());
    EXPECT_EQ(m_file.ReadInt("Grid", "Width"), std::nullopt) << "the settings are not forgotten for that";
    m_file.CreateKey("Grid");
    m_pauses = 0;
    m_meanwhile = [this] { WriteText("[Grid]\nWidth = 8\n"); };
    EXPECT_TRUE(m_file.WriteInt("Grid", "Size", 1));
    EXPECT_EQ(Text(), "[Grid]\nWidth = 8\nSize = 1\n");
    EXPECT_EQ(m_pauses, 1);
  }
}

TEST_F(SettingsFileTest, AWriteThroughAnOpenedKeyLetsAnEditorFinish) {
  const auto store = std::make_shared<SettingsFile>(
      Path(), [this](const std::string& problem) { Hear(problem); }, [this] { Pause(); });
  m_meanwhile = [this] { WriteText("[Grid]\nSize = 1\nWidth = 7\n"); };
  for (const char* unfinished : {"", "[Grid]\nSi"}) {
    WriteText("[Grid]\nSize = 1\n");
    WexSetApplicationStore(store, "");
    WexKey key;
    ASSERT_TRUE(key.Open(nullptr, "grid"));
    WexSetApplicationStore(nullptr, "");
    WriteText(unfinished);
    m_pauses = 0;
    EXPECT_TRUE(key.SetInt("Size", 2)) << unfinished;
    EXPECT_EQ(Text(), "[Grid]\nSize = 2\nWidth = 7\n");
    EXPECT_EQ(m_pauses, 1);
  }
  EXPECT_THAT(m_problems, IsEmpty());
  EXPECT_THAT(m_directory.Names(), ElementsAre("vorn.toml", "vorn.toml.lock"));
}

TEST_F(SettingsFileTest, AWriteDoesNotWaitForAFileThatNeverHeldSettings) {
  m_file.CreateKey("Grid");
  WriteText("");
  EXPECT_TRUE(m_file.WriteInt("Grid", "Size", 1));
  EXPECT_TRUE(m_file.WriteInt("Grid", "Size", 2));
  EXPECT_EQ(m_pauses, 0);
}

TEST_F(SettingsFileTest, AWriteGivesUpOnAFileThatKeepsChanging) {
  m_file.CreateKey("Grid");
  WriteText("nonsense");
  m_meanwhile = [this] { WriteText("nonsense " + std::to_string(m_pauses)); };
  EXPECT_FALSE(m_file.WriteInt("Grid", "Size", 1));
  EXPECT_THAT(Text(), StartsWith("nonsense "));
  EXPECT_THAT(m_problems, ElementsAre(AllOf(StartsWith(Path().string()), HasSubstr("another program"))));
}

#ifndef _WIN32  // a file that another program has open cannot be replaced there
TEST_F(SettingsFileTest, KeepsTheFormerFileWhenSettingsAreGone) {
  WriteText("[Grid]\nWidth = 7\nHeight = 8\n");
  EXPECT_EQ(m_file.ReadInt("Grid", "Width"), 7);
  std::ofstream editor(Path(), std::ios::binary);  // empties the file
  editor << "[Grid]\nWidth = 9\n" << std::flush;
  EXPECT_TRUE(m_file.WriteInt("Grid", "Size", 1));
  EXPECT_EQ(Text(), "[Grid]\nWidth = 9\nSize = 1\n");
  editor << "Height = 10\n" << std::flush;
  EXPECT_EQ(ReadFile(m_directory / "vorn.toml.bak"), "[Grid]\nWidth = 9\nHeight = 10\n")
      << "what the editor saves is not lost";

  EXPECT_TRUE(fs::remove(m_directory / "vorn.toml.bak"));
  EXPECT_TRUE(m_file.WriteInt("Grid", "Size", 2));
  WriteText("# mine\n" + Text());
  EXPECT_TRUE(m_file.WriteInt("Grid", "Size", 3));
  EXPECT_THAT(m_directory.Names(), ElementsAre("vorn.toml", "vorn.toml.lock")) << "no need of one otherwise";
}
#endif

TEST_F(SettingsFileTest, KeepsTheFormerFileWhenAllSettingsAreGone) {
  WriteText("[Grid]\nWidth = 7\n");
  EXPECT_EQ(m_file.ReadInt("Grid", "Width"), 7);
  WriteText("");
  m_file.CreateKey("Grid");
  EXPECT_TRUE(m_file.WriteInt("Grid", "Size", 1));
  EXPECT_EQ(Text(), "[Grid]\nSize = 1\n");
  EXPECT_THAT(m_directory.Names(), ElementsAre("vorn.toml", "vorn.toml.bak", "vorn.toml.lock"));
}

TEST_F(SettingsFileTest, RemembersSettingsThatAreGoneOverAWriteThatChangesNothing) {
  WriteText("[Grid]\nWidth = 1\nHeight = 2\n");
  EXPECT_EQ(m_file.ReadInt("Grid", "Width"), 1);
  WriteText("[Grid]\nWidth = 1\n");
  EXPECT_TRUE(m_file.WriteInt("Grid", "Width", 1));
  EXPECT_THAT(m_directory.Names(), ElementsAre("vorn.toml", "vorn.toml.lock")) << "it is there already";
  EXPECT_TRUE(m_file.WriteInt("Grid", "Width", 5));
  EXPECT_EQ(Text(), "[Grid]\nWidth = 5\n");
  EXPECT_EQ(ReadFile(m_directory / "vorn.toml.bak"), "[Grid]\nWidth = 1\n");
}

TEST_F(SettingsFileTest, KeepsTheFormerFileWhenASettingIsInAnotherSectionNow) {
  WriteText("[Grid]\nWidth = 1\n[Road]\nWidth = 2\n");
  EXPECT_EQ(m_file.ReadInt("Road", "Width"), 2);
  WriteText("[Grid]\nWidth = 1\n[Path]\nWidth = 2\n");
  EXPECT_TRUE(m_file.WriteInt("Grid", "Width", 5));
  EXPECT_EQ(ReadFile(m_directory / "vorn.toml.bak"), "[Grid]\nWidth = 1\n[Path]\nWidth = 2\n");
}

TEST_F(SettingsFileTest, FindsSettingsGoneAmongVeryMany) {
  constexpr int kSettings = 40'000;
  std::string text = "[Grid]\n";
  for (int i = 0; i < kSettings; ++i) text += 'k' + std::to_string(i) + " = 1\n";
  const auto timeToRead = [this](const std::string& now) {
    WriteText(now);
    const std::clock_t start = std::clock();
    EXPECT_EQ(m_file.ReadInt("Grid", "k1"), 1);
    return std::clock() - start;
  };
  const std::clock_t first = timeToRead(text);
  EXPECT_LT(timeToRead(text + "more = 1\n"), 10 * first) << "not every setting is compared with every other";
}

TEST_F(SettingsFileTest, KeepsTheFormerFileWhenAGroupFindsSettingsGone) {
  WriteText("[Grid]\nWidth = 7\nHeight = 8\n");
  EXPECT_EQ(m_file.ReadInt("Grid", "Width"), 7);
  WriteText("[Grid]\nWidth = 7\n");
  m_file.BeginGroup();
  EXPECT_TRUE(m_file.WriteInt("Grid", "Size", 1));
  m_file.EndGroup();
  EXPECT_EQ(ReadFile(m_directory / "vorn.toml.bak"), "[Grid]\nWidth = 7\n") << "its own reading is no excuse";
}

// --- telling of problems ---------------------------------------------------------------------------------------------

TEST_F(SettingsFileTest, WhoHearsOfAProblemMayStoreASetting) {
  m_file.CreateKey("Grid");
  m_reaction = [this] {
    m_reaction = nullptr;
    EXPECT_TRUE(m_file.WriteInt("Grid", "Told", 1));
  };
  WriteText("nonsense");
  EXPECT_TRUE(m_file.WriteInt("Grid", "Size", 1));
  EXPECT_EQ(Text(), "[Grid]\nSize = 1\nTold = 1\n");
}

TEST_F(SettingsFileTest, WhoHearsOfAProblemOfReadingMayStoreASetting) {
  m_file.CreateKey("Grid");
  m_reaction = [this] {
    m_reaction = nullptr;
    EXPECT_TRUE(m_file.WriteInt("Grid", "Told", 1));
  };
  WriteText("nonsense");
  EXPECT_EQ(m_file.ReadInt("Grid", "Size"), std::nullopt);
  EXPECT_EQ(Text(), "[Grid]\nTold = 1\n");
  EXPECT_EQ(m_file.ReadInt("Grid", "Told"), 1);
}

TEST_F(SettingsFileTest, WhoHearsOfAProblemInAGroupMayStoreASetting) {
  m_file.CreateKey("Grid");
  m_reaction = [this] {
    m_reaction = nullptr;
    EXPECT_TRUE(m_file.WriteInt("Grid", "Told", 1));
  };
  WriteText("nonsense");
  m_file.BeginGroup();
  EXPECT_TRUE(m_file.WriteInt("Grid", "Size", 1));
  m_file.EndGroup();
  EXPECT_EQ(Text(), "[Grid]\nTold = 1\nSize = 1\n");
}

TEST_F(SettingsFileTest, AProblemOfWritingThatComesBackIsToldAgain) {
  m_file.CreateKey("Grid");
  for (int times = 1; times <= 2; ++times) {
    WriteText("Grid = 1\n");
    EXPECT_FALSE(m_file.WriteInt("Grid", "Size", 1));
    EXPECT_FALSE(m_file.WriteInt("Grid", "Size", 1));
    EXPECT_THAT(m_problems, SizeIs(times));
    WriteText("");
    EXPECT_TRUE(m_file.WriteInt("Grid", "Size", 1));
  }
}

TEST_F(SettingsFileTest, NobodyNeedsToHearOfProblems) {
  SettingsFile file(Path(), nullptr, [] {});
  file.CreateKey("Grid");
  WriteText("nonsense");
  EXPECT_EQ(file.ReadInt("Grid", "Size"), std::nullopt);
  EXPECT_TRUE(file.WriteInt("Grid", "Size", 1));
  EXPECT_FALSE(file.WriteInt("Road", "Speed", 1));
  EXPECT_TRUE(fs::exists(m_directory / "vorn.toml.damaged-1"));
}

// --- groups ----------------------------------------------------------------------------------------------------------

TEST_F(SettingsFileTest, AGroupIsWrittenAtItsEnd) {
  m_file.CreateKey("Grid");
  const SettingsFile other = Open(Path());
  m_file.BeginGroup();
  EXPECT_TRUE(m_file.WriteInt("Grid", "Size", 1));
  m_file.BeginGroup();
  EXPECT_TRUE(m_file.WriteString("Grid", "Name", "x"));
  m_file.EndGroup();
  EXPECT_EQ(m_file.ReadInt("Grid", "Size"), 1) << "whoever writes finds the value";
  EXPECT_THAT(m_file.Entries(), SizeIs(2));
  EXPECT_THAT(m_directory.Names(), IsEmpty()) << "nobody else does";
  m_file.EndGroup();
  EXPECT_EQ(Text(), "[Grid]\nSize = 1\nName = \"x\"\n");
  EXPECT_EQ(other.ReadString("Grid", "Name"), "x");
}

TEST_F(SettingsFileTest, AGroupReadsOneState) {
  WriteText("[Grid]\nSize = 1\nWidth = 1\n");
  m_file.BeginGroup();
  EXPECT_EQ(m_file.ReadInt("Grid", "Size"), 1);
  WriteText("[Grid]\nSize = 2\nWidth = 2\n");
  EXPECT_EQ(m_file.ReadInt("Grid", "Width"), 1);
  EXPECT_EQ(m_file.Entries()[0].value, SettingValue(1));
  m_file.EndGroup();
  EXPECT_EQ(m_file.ReadInt("Grid", "Width"), 2);
}

TEST_F(SettingsFileTest, AGroupKeepsWhatOthersWroteMeanwhile) {
  WriteText("[Grid]\nSize = 1\n");
  m_file.BeginGroup();
  EXPECT_TRUE(m_file.WriteInt("Grid", "Size", 2));
  SettingsFile other = Open(Path());
  EXPECT_TRUE(other.WriteInt("Grid", "Width", 7));
  m_file.EndGroup();
  EXPECT_EQ(Text(), "[Grid]\nSize = 2\nWidth = 7\n");
}

TEST_F(SettingsFileTest, AGroupWithoutWritesMakesNoFile) {
  m_file.BeginGroup();
  EXPECT_EQ(m_file.ReadInt("Grid", "Size"), std::nullopt);
  m_file.EndGroup();
  EXPECT_THAT(m_directory.Names(), IsEmpty());
}

TEST_F(SettingsFileTest, AGroupTellsOnceWhatCouldNotBeKept) {
  WriteText("Grid = 1\n");
  m_file.CreateKey("Grid");
  m_file.CreateKey("Road");
  m_file.BeginGroup();
  EXPECT_FALSE(m_file.WriteInt("Grid", "Size", 1));
  EXPECT_TRUE(m_file.WriteInt("Road", "Speed", 3));
  EXPECT_FALSE(m_file.WriteInt("Grid", "Width", 1));
  EXPECT_THAT(m_problems, IsEmpty());
  m_file.EndGroup();
  EXPECT_THAT(m_problems, ElementsAre(HasSubstr(": Grid.Size, Grid.Width cannot be added")));
  EXPECT_EQ(Text(), "Grid = 1\n\n[Road]\nSpeed = 3\n") << "the others are kept";
}

TEST_F(SettingsFileTest, AGroupTellsOnceThatNothingCanBeWritten) {
  m_directory.Write("file", "x");
  SettingsFile file = Open(m_directory / "file" / "vorn.toml");
  file.CreateKey("Grid");
  file.BeginGroup();
  for (const char* name : {"Size", "Width", "Height"}) EXPECT_TRUE(file.WriteInt("Grid", name, 1));
  file.EndGroup();
  EXPECT_THAT(m_problems, SizeIs(1));
  EXPECT_EQ(file.ReadInt("Grid", "Size"), std::nullopt) << "it was not kept";
}

// --- places that cannot be used --------------------------------------------------------------------------------------

TEST_F(SettingsFileTest, MakesTheDirectoryWithTheFirstValue) {
  SettingsFile file = Open(m_directory / "a" / "b" / "vorn.toml");
  file.CreateKey("Grid");
  EXPECT_TRUE(file.WriteInt("Grid", "Size", 1));
  EXPECT_EQ(ReadFile(m_directory / "a" / "b" / "vorn.toml"), "[Grid]\nSize = 1\n");
}

TEST_F(SettingsFileTest, GivesFalseWhereNothingCanBeWritten) {
  m_directory.Write("file", "x");
  SettingsFile file = Open(m_directory / "file" / "vorn.toml");
  EXPECT_TRUE(file.CreateKey("Grid"));
  EXPECT_EQ(file.ReadInt("Grid", "Size"), std::nullopt);
  EXPECT_THAT(m_problems, IsEmpty()) << "reading finds no settings there, which is no problem";
  EXPECT_FALSE(file.WriteInt("Grid", "Size", 1));
  EXPECT_FALSE(file.WriteInt("Grid", "Size", 1));
  EXPECT_THAT(m_problems, ElementsAre(AllOf(StartsWith(file.Place()), HasSubstr("Not a directory"))))
      << "the same problem is told once";
}

TEST_F(SettingsFileTest, GivesDefaultsForWhatCannotBeRead) {
  fs::create_directory(Path());
  m_file.CreateKey("Grid");
  EXPECT_EQ(m_file.ReadInt("Grid", "Size"), std::nullopt);
  EXPECT_EQ(m_file.ReadString("Grid", "Name"), std::nullopt);
  EXPECT_THAT(m_problems, ElementsAre(Path().string() + ": this is a directory, not a file"));
  EXPECT_FALSE(m_file.WriteInt("Grid", "Size", 1));
  EXPECT_TRUE(ErrorOf([&] { (void)m_file.Entries(); }).ends_with("not a file"));

  fs::remove(Path());
  EXPECT_EQ(m_file.ReadInt("Grid", "Size"), std::nullopt);
  fs::create_directory(Path());
  m_problems.clear();
  EXPECT_EQ(m_file.ReadInt("Grid", "Size"), std::nullopt);
  EXPECT_THAT(m_problems, SizeIs(1)) << "it was over, and is told again";
}

#ifndef _WIN32
TEST_F(SettingsFileTest, RefusesAPipe) {
  ASSERT_EQ(mkfifo(Path().c_str(), 0600), 0);
  ExpectNoOrdinaryFile();
  EXPECT_TRUE(fs::is_fifo(Path()));
}

TEST_F(SettingsFileTest, RefusesASocket) {
  const int listener = socket(AF_UNIX, SOCK_STREAM, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  ASSERT_LT(Path().string().size(), sizeof address.sun_path);
  std::strcpy(address.sun_path, Path().c_str());
  ASSERT_EQ(bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  ExpectNoOrdinaryFile();
  EXPECT_TRUE(fs::is_socket(Path()));
  close(listener);
}

TEST_F(SettingsFileTest, RefusesADeviceThatHasNoEnd) {
  fs::create_symlink("/dev/zero", Path());
  ExpectNoOrdinaryFile();
  EXPECT_FALSE(fs::exists("/dev/zero.lock"));
}

TEST_F(SettingsFileTest, KeepsNothingInTheDeviceThatKeepsNothing) {
  fs::create_symlink("/dev/null", Path());
  m_file.CreateKey("Grid");
  EXPECT_TRUE(m_file.WriteInt("Grid", "Size", 1));
  EXPECT_EQ(m_file.ReadInt("Grid", "Size"), std::nullopt);
  EXPECT_THAT(m_problems, IsEmpty());
  EXPECT_THAT(m_directory.Names(), ElementsAre("vorn.toml", "vorn.toml.lock")) << "nothing is put beside the device";
}

TEST_F(SettingsFileTest, TellsThatTheFileWasSetAsideEvenWhenNothingCanBeWrittenThen) {
  EXPECT_TRUE(InProcesses(1, [this](int) {
    WriteText("nonsense");
    m_file.CreateKey("Grid");
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{100, 100};
    setrlimit(RLIMIT_FSIZE, &limit);
    return !m_file.WriteString("Grid", "Name", std::string(200, 'x')) &&
           testing::Matches(ElementsAre(HasSubstr("set aside as vorn.toml.damaged-1"), HasSubstr("cannot be written")))(
               m_problems);
  }));
  EXPECT_THAT(m_directory.Names(), ElementsAre("vorn.toml.damaged-1", "vorn.toml.lock"));
}

TEST_F(SettingsFileTest, NobodyElseMayHoldTheLock) {
  m_file.CreateKey("Grid");
  const mode_t former = umask(0);
  EXPECT_TRUE(m_file.WriteInt("Grid", "Size", 1));
  umask(former);
  EXPECT_EQ(fs::status(m_directory / "vorn.toml.lock").permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(SettingsFileTest, AFileThatWasPutRightBehindALockIsNotSetAside) {
  m_file.CreateKey("Grid");
  WriteText("nonsense");
  std::thread writer;
  {
    const FileLock lock(m_directory / "vorn.toml.lock");
    writer = std::thread([this] { EXPECT_TRUE(m_file.WriteInt("Grid", "Size", 1)); });
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    WriteText("[Grid]\nWidth = 7\n");
  }
  writer.join();
  EXPECT_EQ(Text(), "[Grid]\nWidth = 7\nSize = 1\n");
  EXPECT_THAT(m_directory.Names(), ElementsAre("vorn.toml", "vorn.toml.lock"));
}
#endif

#ifdef __linux__
TEST_F(SettingsFileTest, LivesOnAFileSystemThatTakesNothing) {
  SettingsFile file = Open("/proc/vorn/vorn.toml");
  file.CreateKey("Grid");
  EXPECT_EQ(file.ReadInt("Grid", "Size"), std::nullopt);
  EXPECT_FALSE(file.WriteInt("Grid", "Size", 1));
  EXPECT_THAT(m_problems, ElementsAre(StartsWith("/proc/vorn/vorn.toml: its directory cannot be made: ")));
}
#endif

// --- behind the settings keys ----------------------------------------------------------------------------------------

TEST_F(SettingsFileTest, ServesTheLibrarysKeys) {
  WexSetApplicationStore(
      std::make_shared<SettingsFile>(Path(), [this](const std::string& problem) { m_problems.push_back(problem); }),
      "Vendor\\Product");
  WexKey root;
  WexKey grid;
  ASSERT_TRUE(WexGetApplicationSubKey(&root, u8"情報化施工"_cp932.data(), nullptr));
  EXPECT_FALSE(grid.Open(&root, "Grid"));
  ASSERT_TRUE(grid.Create(&root, "Grid"));
  EXPECT_TRUE(grid.SetInt("Size", 3));
  EXPECT_TRUE(grid.SetString("Name", u8"断面"_cp932.data()));
  EXPECT_EQ(grid.GetInt("Size", 0), 3);
  EXPECT_EQ(grid.GetString("Size", "none"), "none") << "an integer is stored";
  WexSetApplicationStore(nullptr, "");
  EXPECT_EQ(Text(), "[Vendor.Product.\"情報化施工\".Grid]\nSize = 3\nName = \"断面\"\n");
}

// --- several processes -----------------------------------------------------------------------------------------------

#ifndef _WIN32

CString Numbered(const char* text, int number) { return CString(std::string_view(text + std::to_string(number))); }

TEST_F(SettingsFileTest, LosesNothingThatSeveralProcessesWrite) {
  constexpr int kProcesses = 6;
  constexpr int kValues = 25;
  WriteText("# kept\n");
  EXPECT_TRUE(InProcesses(kProcesses, [&](int process) {
    SettingsFile file = Open(Path());
    const CString key = Numbered("Process", process);
    bool written = file.CreateKey(key) && file.CreateKey("Shared");
    for (int i = 0; i < kValues; ++i) {
      written = file.WriteInt(key, Numbered("Value", i), process * 1000 + i) && written;
      written = file.WriteString("Shared", Numbered("Text", process * 1000 + i), Numbered("", i)) && written;
    }
    return written;
  }));
  for (int process = 0; process < kProcesses; ++process) {
    for (int i = 0; i < kValues; ++i) {
      EXPECT_EQ(m_file.ReadInt(Numbered("Process", process), Numbered("Value", i)), process * 1000 + i);
      EXPECT_EQ(m_file.ReadString("Shared", Numbered("Text", process * 1000 + i)), Numbered("", i));
    }
  }
  EXPECT_THAT(m_file.Entries(), SizeIs(std::size_t{2} * kProcesses * kValues));
  EXPECT_THAT(Text(), StartsWith("# kept\n"));
  EXPECT_THAT(m_directory.Names(), ElementsAre("vorn.toml", "vorn.toml.lock")) << "no temporary file stays behind";
}

TEST_F(SettingsFileTest, ReadsWhatAnotherProcessWroteMeanwhile) {
  m_file.CreateKey("Grid");
  for (int value = 1; value <= 20; ++value) {
    // Of one length, within one tick of the clock: nothing but the content tells the files apart.
    EXPECT_TRUE(InProcesses(1, [&](int) { return m_file.WriteInt("Grid", "Size", 100 + value); }));
    EXPECT_EQ(m_file.ReadInt("Grid", "Size"), 100 + value);
  }
}

TEST_F(SettingsFileTest, ReadersNeverSeeAHalfWrittenFile) {
  m_file.CreateKey("Grid");
  ASSERT_TRUE(m_file.WriteString("Grid", "Name", std::string(20'000, 'a')));
  EXPECT_TRUE(InProcesses(4, [&](int process) {
    bool whole = true;
    for (int i = 0; i < 40; ++i) {
      if (process == 0) {
        whole = m_file.WriteString("Grid", "Name", std::string(20'000, static_cast<char>('a' + i % 26))) && whole;
      } else {
        const CString name = m_file.ReadString("Grid", "Name").value_or("");
        whole = name.View() == std::string(20'000, name.IsEmpty() ? '-' : name[0]) && whole;
      }
    }
    return whole && m_problems.empty();
  }));
}

/// Names of control items that are all the same.
VornFormCtrl::Names Alike(const CString& name) {
  VornFormCtrl::Names names;
  names.fill(name);
  return names;
}

TEST_F(SettingsFileTest, ReadersNeverSeeHalfOfAGroup) {
  constexpr int kLast = 40;
  const auto write = [] {
    VornFormCtrl formCtrl;
    for (int number = 0; number <= kLast; ++number) {
      formCtrl.GetNames() = Alike(Numbered("name", number));
      formCtrl.StoreRegistry(nullptr);
    }
    return true;
  };
  const auto read = [] {
    constexpr int kMostReadings = 1'000'000;
    VornFormCtrl formCtrl;
    formCtrl.GetNames() = Alike("nothing yet");
    const VornFormCtrl::Names last = Alike(Numbered("name", kLast));
    for (int i = 0; i < kMostReadings && formCtrl.GetNames() != last; ++i) {
      formCtrl.LoadRegistry(nullptr);
      if (formCtrl.GetNames() != Alike(formCtrl.GetNames()[0])) return false;
    }
    return formCtrl.GetNames() == last;
  };
  EXPECT_TRUE(InProcesses(3, [&](int process) {
    WexSetApplicationStore(std::make_shared<SettingsFile>(Path(), nullptr), "App");
    return process == 0 ? write() : read();
  }));
}

TEST_F(SettingsFileTest, SeveralProcessesSetADamagedFileAsideOnce) {
  WriteText("nonsense");
  EXPECT_TRUE(InProcesses(6, [&](int process) {
    m_file.CreateKey("Grid");
    return m_file.WriteInt("Grid", Numbered("Value", process), process);
  }));
  EXPECT_THAT(m_directory.Names(), ElementsAre("vorn.toml", "vorn.toml.damaged-1", "vorn.toml.lock"));
  EXPECT_THAT(m_file.Entries(), SizeIs(6));
}

#endif  // _WIN32

}  // namespace
}  // namespace vorn_host
