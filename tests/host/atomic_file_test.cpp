#include "host/document/atomic_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#ifndef _WIN32
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#endif

#include "tests/host/documents.h"
#include "tests/host/temporary_directory.h"

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

TEST(ReadFile, DoesNotCallAFileMissingThatItCannotLookAt) {
  const std::string name(5000, 'x');
  EXPECT_THAT(ReadError(name), AllOf(HasSubstr(": cannot be opened: "), HasSubstr("too long")));
}

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

/// No file can grow beyond a size while this lives.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) : m_formerHandler(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &m_former);
    const rlimit limit{bytes, m_former.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;
  ~FileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &m_former);
    std::signal(SIGXFSZ, m_formerHandler);
  }

 private:
  rlimit m_former{};
  void (*m_formerHandler)(int);
};

TEST(WriteFileAtomically, LeavesTheOldFileWhenWritingStopsHalfway) {
  const TemporaryDirectory directory;
  directory.Write("a", "old");
  std::string error;
  {
    const FileSizeLimit limit(10'000);
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

TEST(WriteFileAtomically, DoesNotRunInCirclesOfLinks) {
  const TemporaryDirectory directory;
  fs::create_symlink("b", directory / "a");
  fs::create_symlink("a", directory / "b");
  EXPECT_THAT(WriteError(directory / "a"), HasSubstr(": cannot be written: "));
  EXPECT_TRUE(fs::is_symlink(directory / "a"));
}

#endif  // _WIN32

}  // namespace
}  // namespace vorn_host
