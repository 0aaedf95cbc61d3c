#include "host/document/atomic_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#ifndef _WIN32
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#endif

#include "tests/host/documents.h"
#include "tests/host/file_size_limit.h"
#include "tests/host/temporary_directory.h"

// Stands before the system calls that put a file in place, so that a test can let one fail or stop the program there.
#ifdef __linux__

namespace {

/// What happens before a call: 0 lets it do its work, any other number is the error that it fails with.
struct SystemCalls {
  std::function<int()> onLink;
  std::function<int(const char* to)> onRename;
  int flushedFiles = 0;
  int flushedDirectories = 0;
};
SystemCalls* systemCalls = nullptr;

int Failed(int error) {
  errno = error;
  return -1;
}

}  // namespace

extern "C" int link(const char* from, const char* to) noexcept {
  const int error = systemCalls != nullptr && systemCalls->onLink ? systemCalls->onLink() : 0;
  return error != 0 ? Failed(error) : linkat(AT_FDCWD, from, AT_FDCWD, to, 0);
}

extern "C" int rename(const char* from, const char* to) noexcept {
  const int error = systemCalls != nullptr && systemCalls->onRename ? systemCalls->onRename(to) : 0;
  return error != 0 ? Failed(error) : renameat(AT_FDCWD, from, AT_FDCWD, to);
}

extern "C" int fsync(int file) {
  struct stat status {};
  if (systemCalls != nullptr && fstat(file, &status) == 0) {
    ++(S_ISDIR(status.st_mode) ? systemCalls->flushedDirectories : systemCalls->flushedFiles);
  }
  return fdatasync(file);
}

#endif

namespace vorn_host {
namespace {

namespace fs = std::filesystem;

using host_test::ErrorOf;
using host_test::TemporaryDirectory;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

std::string ReadError(const fs::path& path) {
  return ErrorOf([&] { (void)ReadFile(path); });
}

std::string WriteError(const fs::path& path, const std::string& content = "new") {
  return ErrorOf([&] { WriteFileAtomically(path, content); });
}

// --- reading -------------------------------------------------------------------------------------------------------

TEST(ReadFile, GivesEveryByte) {
  const TemporaryDirectory directory;
  std::string content(3'000'000, 'x');
  content[1'500'000] = '\0';
  content.back() = '\xFF';
  directory.Write("a", content);
  EXPECT_TRUE(ReadFile(directory / "a") == content);
}

TEST(ReadFile, SaysInAPlainSentenceWhatIsWrong) {
  const TemporaryDirectory directory;
  directory.Write("empty", "");
  EXPECT_EQ(ReadError(directory / "missing"), (directory / "missing").string() + ": there is no such file");
  EXPECT_EQ(ReadError(directory.Path()), directory.Path().string() + ": this is a directory, not a file");
  EXPECT_EQ(ReadError(directory / "empty"), (directory / "empty").string() + ": the file is empty");
}

#ifndef _WIN32  // a name that is too long is that of no file there
TEST(ReadFile, DoesNotCallAFileMissingThatItCannotLookAt) {
  const std::string name(5000, 'x');
  EXPECT_THAT(ReadError(name), AllOf(HasSubstr(": cannot be opened: "), HasSubstr("too long")));
}
#endif

TEST(ReadFile, RefusesWhatIsLargerThanAllowed) {
  const TemporaryDirectory directory;
  directory.Write("a", "12345");
  const std::string path = (directory / "a").string();
  EXPECT_EQ(ReadFile(path, 5), "12345");
  EXPECT_EQ(ErrorOf([&] { (void)ReadFile(path, 4); }), path + ": this is larger than 4 bytes, the most that is read");
  std::filesystem::resize_file(path, kLargestFile + 1);  // holds no blocks of the disk
  EXPECT_THAT(ReadError(path), HasSubstr("larger than 1073741824 bytes"));
}

#ifdef __linux__
TEST(ReadFile, StopsReadingAStreamThatDoesNotEnd) {
  EXPECT_THAT(ErrorOf([&] { (void)ReadFile("/dev/zero", 3'000'000); }), HasSubstr("larger than 3000000 bytes"));
}
#endif

TEST(ReadFileIfThere, TakesAMissingAndAnEmptyFileForWhatTheyAre) {
  const TemporaryDirectory directory;
  directory.Write("empty", "");
  directory.Write("a", "content");
  EXPECT_EQ(ReadFileIfThere(directory / "missing"), std::nullopt);
  EXPECT_EQ(ReadFileIfThere(directory / "a" / "below a file"), std::nullopt);
  EXPECT_EQ(ReadFileIfThere(directory / "empty"), "");
  EXPECT_EQ(ReadFileIfThere(directory / "a"), "content");
  EXPECT_THAT(ErrorOf([&] { (void)ReadFileIfThere(directory.Path()); }), HasSubstr("this is a directory"));
}

TEST(ReadBeginning, GivesNoMoreThanAskedForAndNothingOfWhatIsNoFile) {
  const TemporaryDirectory directory;
  directory.Write("a", "content");
  EXPECT_EQ(ReadBeginning(directory / "a", 3), "con");
  EXPECT_EQ(ReadBeginning(directory / "a", 30), "content");
  EXPECT_EQ(ReadBeginning(directory / "missing", 3), "");
  EXPECT_EQ(ReadBeginning(directory.Path(), 3), "");
}

#ifndef _WIN32
TEST(ReadBeginning, DoesNotTakeAFileThatItCannotLookAtForNone) {
  EXPECT_THAT(ErrorOf([] { (void)ReadBeginning(std::string(5000, 'x'), 3); }), HasSubstr(": cannot be opened: "));
}
#endif

// --- writing -------------------------------------------------------------------------------------------------------

TEST(WriteFileAtomically, MakesANewFile) {
  const TemporaryDirectory directory;
  const std::string content("a\0b\r\n", 5);
  WriteFileAtomically(directory / "a", content);
  EXPECT_EQ(ReadFile(directory / "a"), content);
  EXPECT_THAT(directory.Names(), ElementsAre("a")) << "no temporary file stays behind";
}

TEST(WriteFileAtomically, TakesTheOldFilesPlace) {
  const TemporaryDirectory directory;
  directory.Write("a", "a much longer old content");
  WriteFileAtomically(directory / "a", "new");
  EXPECT_EQ(ReadFile(directory / "a"), "new");
  EXPECT_THAT(directory.Names(), ElementsAre("a"));
}

TEST(WriteFileAtomically, TakesContentPieceByPiece) {
  const TemporaryDirectory directory;
  directory.Write("f", "old");
  WriteFileAtomically(directory / "f", [](const vorn_host::TextSink& write) {
    write("one, ");
    write("");
    write("two");
  });
  EXPECT_EQ(ReadFile(directory / "f"), "one, two");
  EXPECT_THAT(directory.Names(), ElementsAre("f"));
}

TEST(WriteFileAtomically, WritesNothingWhenAPieceCannotBeMade) {
  const TemporaryDirectory directory;
  directory.Write("f", "old");
  const auto stop = [](const vorn_host::TextSink& write) {
    write("one, ");
    throw DocumentError("stopped");
  };
  EXPECT_THROW(WriteFileAtomically(directory / "f", stop), DocumentError);
  EXPECT_THROW(WriteFileAtomically(directory / "new", stop), DocumentError);
  EXPECT_EQ(ReadFile(directory / "f"), "old");
  EXPECT_THAT(directory.Names(), ElementsAre("f"));
}

TEST(WriteFileAtomically, WorksForAPathWithoutADirectory) {
  const TemporaryDirectory directory;
  const fs::path former = fs::current_path();
  fs::current_path(directory.Path());
  const std::string error = WriteError("a");
  fs::current_path(former);
  EXPECT_EQ(error, "");
  EXPECT_EQ(ReadFile(directory / "a"), "new");
}

TEST(WriteFileAtomically, RefusesADirectory) {
  const TemporaryDirectory directory;
  EXPECT_EQ(WriteError(directory.Path()), directory.Path().string() + ": this is a directory, not a file");
}

TEST(WriteFileAtomically, NamesTheFileAndTheReasonWhenTheDirectoryIsMissing) {
  const TemporaryDirectory directory;
  const fs::path path = directory / "missing" / "a";
  EXPECT_THAT(WriteError(path), AllOf(HasSubstr("missing"), HasSubstr("No such file or directory")));
}

#ifndef _WIN32

TEST(WriteFileAtomically, KeepsThePermissionsOfTheFile) {
  const TemporaryDirectory directory;
  directory.Write("a", "old");
  fs::permissions(directory / "a", fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
  WriteFileAtomically(directory / "a", "new");
  EXPECT_EQ(fs::status(directory / "a").permissions(),
            fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
}

#ifndef _WIN32
TEST(WriteFileAtomically, HidesAPrivateFileAlsoWhileItIsWritten) {
  const TemporaryDirectory directory;
  directory.Write("a", "old");
  fs::permissions(directory / "a", fs::perms::owner_read | fs::perms::owner_write);
  WriteFileAtomically(directory / "a", [&](const TextSink& write) {
    write("new");
    for (const auto& entry : fs::directory_iterator(directory.Path())) {
      EXPECT_EQ(entry.status().permissions() & (fs::perms::group_all | fs::perms::others_all), fs::perms::none);
    }
  });
}
#endif

TEST(WriteFileAtomically, FollowsALink) {
  const TemporaryDirectory directory;
  fs::create_directory(directory / "real");
  directory.Write("real/a", "old");
  fs::create_symlink("real/a", directory / "link");
  WriteFileAtomically(directory / "link", "new");
  EXPECT_TRUE(fs::is_symlink(directory / "link"));
  EXPECT_EQ(ReadFile(directory / "real/a"), "new");
}

TEST(WriteFileAtomically, FollowsALinkToAFileThatIsNotThereYet) {
  const TemporaryDirectory directory;
  fs::create_directory(directory / "real");
  fs::create_symlink("real/a", directory / "link");
  WriteFileAtomically(directory / "link", "new");
  EXPECT_TRUE(fs::is_symlink(directory / "link"));
  EXPECT_EQ(ReadFile(directory / "real/a"), "new");
}

TEST(WriteFileAtomically, WritesStraightIntoADevice) {
  EXPECT_EQ(WriteError("/dev/null"), "");
  EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

#ifdef __linux__
TEST(WriteFileAtomically, SaysThatTheDiskIsFull) {
  EXPECT_THAT(WriteError("/dev/full"), AllOf(StartsWith("/dev/full: cannot be written: "), HasSubstr("No space left")));
}
#endif

TEST(WriteFileAtomically, LeavesTheOldFileWhenWritingStopsHalfway) {
  const TemporaryDirectory directory;
  directory.Write("a", "old");
  std::string error;
  {
    const host_test::FileSizeLimit limit(10'000);
    error = WriteError(directory / "a", std::string(50'000, 'x'));
  }
  EXPECT_THAT(error, AllOf(StartsWith((directory / "a").string()), HasSubstr(": cannot be written: ")));
  EXPECT_EQ(ReadFile(directory / "a"), "old");
  EXPECT_THAT(directory.Names(), ElementsAre("a")) << "the half-written file is gone";
}

TEST(WriteFileAtomically, TakesTheLongestNamesThatAFileSystemHas) {
  const TemporaryDirectory directory;
  const std::string name(255, 'n');
  EXPECT_EQ(WriteError(directory / name), "");
  EXPECT_THAT(directory.Names(), ElementsAre(name));
}

TEST(WriteFileAtomically, TakesTheLongestNamesAgainAndAgainWithTheFormerFileKept) {
  const TemporaryDirectory directory;
  for (const int length : {255, 252, 251}) {
    const std::string name = std::string(length - 5, 'n') + ".vorn";
    const std::string backup = name.substr(0, 251) + ".bak";
    for (const std::string content : {"1", "2", "3"}) {
      EXPECT_EQ(ErrorOf([&] { WriteFileAtomically(directory / name, content, FormerFile::Keep); }), "");
    }
    EXPECT_EQ(BackupOf(directory / name), directory / backup);
    EXPECT_EQ(ReadFile(directory / name), "3");
    EXPECT_EQ(ReadFile(directory / backup), "2");
    EXPECT_EQ(directory.Names().size(), 2u);
    fs::remove(directory / name);
    fs::remove(directory / backup);
  }
}

TEST(WriteFileAtomically, ShortensNamesBetweenCharacters) {
  const TemporaryDirectory directory;
  std::string name;
  for (int i = 0; i < 85; ++i) name += "路";  // 255 bytes; the cut for ".bak" falls into a character
  WriteFileAtomically(directory / name, "1", FormerFile::Keep);
  WriteFileAtomically(directory / name, "2", FormerFile::Keep);
  EXPECT_EQ(ReadFile(directory / (name.substr(0, 249) + ".bak")), "1");
}

TEST(WriteFileAtomically, DoesNotRunInCirclesOfLinks) {
  const TemporaryDirectory directory;
  fs::create_symlink("b", directory / "a");
  fs::create_symlink("a", directory / "b");
  EXPECT_THAT(WriteError(directory / "a"), HasSubstr(": cannot be written: "));
  EXPECT_TRUE(fs::is_symlink(directory / "a"));
}

#endif  // _WIN32

// --- what killed programs left ---------------------------------------------------------------------------------------

/// Makes a file of that name which was written two hours ago.
void LeaveOld(const TemporaryDirectory& directory, const std::string& name) {
  directory.Write(name, "half");
  fs::last_write_time(directory / name, fs::file_time_type::clock::now() - std::chrono::hours(2));
}

TEST(WriteFileAtomically, RemovesWhatAKilledSaveOfTheSameFileLeft) {
  const TemporaryDirectory directory;
  LeaveOld(directory, ".a.vorn-0123456789.tmp");
  WriteFileAtomically(directory / "a.vorn", "new");
  EXPECT_THAT(directory.Names(), ElementsAre("a.vorn"));
}

TEST(WriteFileAtomically, MakesAFormerFileThatAKilledSaveLeftTheBackup) {
  const TemporaryDirectory directory;
  directory.Write("a.bak", "older");
  fs::last_write_time(directory / "a.bak", fs::file_time_type::clock::now() - std::chrono::hours(3));
  LeaveOld(directory, ".a-0123456789.bak");
  directory.Write("a", "new");
  WriteFileAtomically(directory / "a", "newer");
  EXPECT_EQ(ReadFile(directory / "a.bak"), "half") << "what is named like this is whole";
  EXPECT_THAT(directory.Names(), ElementsAre("a", "a.bak"));
  LeaveOld(directory, ".a-0123456789.bak");
  fs::remove(directory / "a.bak");
  WriteFileAtomically(directory / "a", "newest");
  EXPECT_THAT(directory.Names(), ElementsAre("a", "a.bak"));
}

TEST(WriteFileAtomically, KeepsABackupThatIsNewerThanWhatAKilledSaveLeft) {
  const TemporaryDirectory directory;
  LeaveOld(directory, ".a-0123456789.bak");
  directory.Write("a.bak", "later");
  WriteFileAtomically(directory / "a", "new");
  EXPECT_EQ(ReadFile(directory / "a.bak"), "later");
  EXPECT_THAT(directory.Names(), ElementsAre("a", "a.bak"));
}

TEST(WriteFileAtomically, LeavesAFormerFileAloneThatASaveMayBeUsing) {
  const TemporaryDirectory directory;
  directory.Write(".a-0123456789.bak", "former");
  WriteFileAtomically(directory / "a", "new");
  EXPECT_THAT(directory.Names(), ElementsAre(".a-0123456789.bak", "a"));
}

TEST(WriteFileAtomically, LeavesAlikeFilesAlone) {
  const TemporaryDirectory directory;
  directory.Write(".a-0123456789.tmp", "in use by another program");
  for (const char* name : {".a-1.tmp", ".a-2-0123456789.tmp", ".a-012345678x.tmp", ".b-0123456789.tmp", "a-1.tmp"}) {
    LeaveOld(directory, name);
  }
  WriteFileAtomically(directory / "a", "new");
  EXPECT_EQ(directory.Names().size(), 7u);
}

TEST(WriteFileAtomically, LeavesASecondNameOfAnOldFileToTheSaveThatMayBeUsingIt) {
  const TemporaryDirectory directory;
  LeaveOld(directory, "a");
  fs::create_hard_link(directory / "a", directory / ".a-0123456789.tmp");
  WriteFileAtomically(directory / "a", "new");
  EXPECT_THAT(directory.Names(), ElementsAre(".a-0123456789.tmp", "a"));
  WriteFileAtomically(directory / "a", "newer");
  EXPECT_THAT(directory.Names(), ElementsAre("a")) << "the second name is the only one now";
}

// --- every step may fail ---------------------------------------------------------------------------------------------

#ifdef __linux__

/// A directory with a file and its backup, and system calls that a test may let fail.
class SavingAgain : public testing::Test {
 protected:
  SavingAgain() {
    m_directory.Write("a", "former");
    m_directory.Write("a.bak", "older");
    systemCalls = &m_calls;
  }
  ~SavingAgain() override { systemCalls = nullptr; }

  std::string Save() {
    return ErrorOf([&] { WriteFileAtomically(m_directory / "a", "new", FormerFile::Keep); });
  }
  void ExpectFiles(const std::string& file, const std::string& backup) {
    EXPECT_EQ(ReadFile(m_directory / "a"), file);
    EXPECT_EQ(ReadFile(m_directory / "a.bak"), backup);
    EXPECT_THAT(m_directory.Names(), ElementsAre("a", "a.bak"));
  }

  TemporaryDirectory m_directory;
  SystemCalls m_calls;
};

TEST_F(SavingAgain, MakesTheFormerFileTheBackupAndFlushesTheDirectory) {
  EXPECT_EQ(Save(), "");
  ExpectFiles("new", "former");
  EXPECT_EQ(m_calls.flushedDirectories, 1);
}

TEST_F(SavingAgain, CopiesWhereTheFileSystemHasNoSecondNames) {
  m_calls.onLink = [] { return EPERM; };
  fs::permissions(m_directory / "a", fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_EQ(Save(), "");
  ExpectFiles("new", "former");
  EXPECT_EQ(fs::status(m_directory / "a.bak").permissions(), fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_EQ(m_calls.flushedFiles, 2) << "the copy has to outlast a power failure too";
}

TEST_F(SavingAgain, LeavesTheFormerFileUnderItsSecondNameWhenItCanHaveNeitherOther) {
  int renames = 0;
  m_calls.onRename = [&](const char*) { return ++renames == 1 ? 0 : EIO; };
  const std::string error = Save();
  const std::vector<std::string> names = m_directory.Names();
  ASSERT_EQ(names.size(), 3u);
  EXPECT_THAT(error, AllOf(HasSubstr("the former file cannot be kept"), HasSubstr(names.front())));
  EXPECT_EQ(ReadFile(m_directory / names.front()), "former");
}

TEST_F(SavingAgain, KeepsAnEmptyFileToo) {
  m_calls.onLink = [] { return EPERM; };
  m_directory.Write("a", "");
  EXPECT_EQ(Save(), "");
  EXPECT_EQ(ReadFileIfThere(m_directory / "a.bak"), "");
}

TEST_F(SavingAgain, ChangesNothingWhenTheNewFileCannotBePutInPlace) {
  m_calls.onRename = [](const char* to) { return fs::path(to).filename() == "a" ? EBUSY : 0; };
  EXPECT_THAT(Save(), HasSubstr("cannot be put in place"));
  ExpectFiles("former", "older");
}

TEST_F(SavingAgain, ChangesNothingWhenTheFormerFileCannotBecomeTheBackup) {
  m_calls.onRename = [](const char* to) { return fs::path(to).filename() == "a.bak" ? EACCES : 0; };
  EXPECT_THAT(Save(), HasSubstr("the former file cannot be kept"));
  ExpectFiles("former", "older");
}

TEST_F(SavingAgain, ChangesNothingWhenThereIsADirectoryInTheBackupsPlace) {
  fs::remove(m_directory / "a.bak");
  fs::create_directory(m_directory / "a.bak");
  EXPECT_THAT(Save(), HasSubstr("the former file cannot be kept as " + (m_directory / "a.bak").string() + ": "));
  EXPECT_EQ(ReadFile(m_directory / "a"), "former");
  EXPECT_THAT(m_directory.Names(), ElementsAre("a", "a.bak"));
}

/// Saves in a process of its own, which has to end by a signal.
template <typename Save>
void SaveInAChild(int expectedSignal, Save&& save) {
  const pid_t child = fork();
  if (child == 0) {
    RemoveUnfinishedFilesOnSignals();
    save();
    _exit(0);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == expectedSignal);
}

TEST_F(SavingAgain, TakesBothOfItsFilesAwayWhenItIsStoppedBeforeTheNewOneIsInPlace) {
  m_calls.onLink = [] { return std::raise(SIGINT); };
  SaveInAChild(SIGINT, [&] { Save(); });
  ExpectFiles("former", "older");
  m_calls.onLink = [] { return EPERM; };
  m_calls.onRename = [](const char* to) { return fs::path(to).extension() == ".bak" ? std::raise(SIGTERM) : 0; };
  SaveInAChild(SIGTERM, [&] { Save(); });  // when the copy of the former file is made
  ExpectFiles("former", "older");
}

TEST_F(SavingAgain, KeepsTheFormerFileWhenItIsStoppedWhileTheFilesArePutInPlace) {
  for (const char* name : {"a", "a.bak"}) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
      m_directory.Write("a", "former");
      m_directory.Write("a.bak", "older");
      m_calls.onRename = [&](const char* to) { return fs::path(to).filename() == name ? std::raise(signal) : 0; };
      SaveInAChild(signal, [&] { Save(); });
      ExpectFiles("new", "former");
    }
  }
}

TEST_F(SavingAgain, PutsTheFormerFileBackWhenItIsStoppedAndCannotKeepIt) {
  m_calls.onRename = [](const char* to) {
    return fs::path(to).filename() == "a.bak" ? std::raise(SIGINT) + EACCES : 0;
  };
  SaveInAChild(SIGINT, [&] { Save(); });
  ExpectFiles("former", "older");
}

TEST_F(SavingAgain, LeavesTheFormerFileUnderItsSecondNameWhenItIsStoppedAndCanHaveNeitherOther) {
  int renames = 0;
  m_calls.onRename = [&](const char*) { return ++renames == 1 ? 0 : std::raise(SIGINT) + EIO; };
  SaveInAChild(SIGINT, [&] { Save(); });
  const std::vector<std::string> names = m_directory.Names();
  ASSERT_EQ(names.size(), 3u);
  EXPECT_EQ(ReadFile(m_directory / names.front()), "former");
}

TEST_F(SavingAgain, LeavesTheFormerFileUnderItsSecondNameWhenItIsKilledBeforeTheBackup) {
  m_calls.onRename = [](const char* to) { return fs::path(to).filename() == "a.bak" ? std::raise(SIGKILL) : 0; };
  SaveInAChild(SIGKILL, [&] { Save(); });
  EXPECT_EQ(ReadFile(m_directory / "a"), "new");
  EXPECT_EQ(ReadFile(m_directory / "a.bak"), "older");
  const std::vector<std::string> names = m_directory.Names();
  ASSERT_EQ(names.size(), 3u);
  EXPECT_THAT(names[0], AllOf(StartsWith(".a-"), testing::EndsWith(".bak")));
  EXPECT_EQ(ReadFile(m_directory / names[0]), "former");

  // An hour later, with a save that fails.
  const auto now = fs::file_time_type::clock::now();
  fs::last_write_time(m_directory / names[0], now - std::chrono::hours(2));
  fs::last_write_time(m_directory / "a.bak", now - std::chrono::hours(3));
  m_calls.onRename = [](const char* to) { return fs::path(to).filename() == "a" ? EBUSY : 0; };
  EXPECT_THAT(Save(), HasSubstr("cannot be put in place"));
  ExpectFiles("new", "former");
}

#endif  // __linux__

}  // namespace
}  // namespace vorn_host
