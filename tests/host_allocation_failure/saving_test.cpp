#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <map>
#include <new>
#include <string>
#include <string_view>

#include "host/document/atomic_file.h"
#include "tests/allocation_failure/failing_allocation.h"
#include "tests/host/temporary_directory.h"

// Memory that runs out while a file is saved: the file and its backup are as they were, and the save can be repeated.

namespace vorn_host {
namespace {

namespace fs = std::filesystem;

using allocation_test::FailEachAllocation;
using host_test::TemporaryDirectory;

/// Longer than any text that needs no memory of its own.
constexpr std::string_view kName = "a project whose name is long enough.vorn";
constexpr std::string_view kBackup = "a project whose name is long enough.vorn.bak";

using Files = std::map<std::string, std::string>;

class SavingWithoutMemory : public testing::Test {
 protected:
  [[nodiscard]] fs::path Target() const { return m_directory / kName; }

  [[nodiscard]] Files Found() const {
    Files files;
    for (const std::string& name : m_directory.Names()) files[name] = ReadFileIfThere(m_directory / name).value_or("");
    return files;
  }

  void Put(const Files& files) const {
    for (const std::string& name : m_directory.Names()) fs::remove(m_directory / name);
    for (const auto& [name, content] : files) m_directory.Write(name, content);
  }

  /// Saves while each allocation fails in turn.
  void Check(const Files& before, FormerFile former, const Files& after) const {
    FailEachAllocation([&] { Put(before); }, [&] { WriteFileAtomically(Target(), "new", former); },
                       [&] { EXPECT_EQ(Found(), before); });
    EXPECT_EQ(Found(), after);
  }

  const TemporaryDirectory m_directory;
};

const std::string kFile(kName);
const std::string kKept(kBackup);

TEST_F(SavingWithoutMemory, MakesNoFile) { Check({}, FormerFile::Drop, {{kFile, "new"}}); }

TEST_F(SavingWithoutMemory, LeavesTheFormerFile) {
  Check({{kFile, "former"}}, FormerFile::Drop, {{kFile, "new"}});
  Check({{kFile, "former"}}, FormerFile::Keep, {{kFile, "new"}, {kKept, "former"}});
}

TEST_F(SavingWithoutMemory, LeavesFileAndBackup) {
  Check({{kFile, "former"}, {kKept, "older"}}, FormerFile::Keep, {{kFile, "new"}, {kKept, "former"}});
}

TEST_F(SavingWithoutMemory, LeavesTheFileThatALinkLeadsTo) {
  std::error_code error;
  const fs::path link = m_directory / "a link whose name is long enough too.vorn";
  const auto prepare = [&] {
    Put({{kFile, "former"}});
    fs::create_symlink(kFile, link, error);
  };
  prepare();
  if (error) GTEST_SKIP() << "no links here: " << error.message();
  FailEachAllocation(
      prepare, [&] { WriteFileAtomically(link, "new"); },
      [&] {
        EXPECT_EQ(ReadFile(Target()), "former");
        EXPECT_TRUE(fs::is_symlink(link));
        EXPECT_EQ(m_directory.Names().size(), 2u);
      });
  EXPECT_EQ(ReadFile(Target()), "new");
}

// What killed saves left is taken away before anything is written, as far as memory lets that go; a former file becomes
// the backup then, whatever becomes of this save.
TEST_F(SavingWithoutMemory, LosesNothingThatAKilledSaveLeft) {
  const std::string half = "." + kFile + "-0123456789.tmp";
  const std::string whole = "." + kFile + "-0123456789.bak";
  const auto longAgo = fs::file_time_type::clock::now() - std::chrono::hours(2);
  FailEachAllocation(
      [&] {
        Put({{kFile, "former"}, {half, "half"}, {whole, "whole"}});
        for (const std::string& name : {half, whole}) fs::last_write_time(m_directory / name, longAgo);
      },
      [&] { WriteFileAtomically(Target(), "new"); },
      [&] {
        Files files = Found();
        files.erase(half);
        const std::string& kept = files.count(kKept) > 0 ? kKept : whole;
        EXPECT_EQ(files, (Files{{kFile, "former"}, {kept, "whole"}}));
      });
  EXPECT_EQ(Found(), (Files{{kFile, "new"}, {kKept, "whole"}}));
}

TEST_F(SavingWithoutMemory, LeavesTheFormerFileWhenItsProducerFails) {
  FailEachAllocation(
      [&] {
        Put({{kFile, "former"}});
      },
      [&] {
        WriteFileAtomically(Target(), [](const TextSink& write) {
          for (int i = 0; i < 3; ++i) write(std::string(1000, 'a'));
        });
      },
      [&] {
        EXPECT_EQ(Found(), (Files{{kFile, "former"}}));
      });
  EXPECT_EQ(ReadFile(Target()).size(), 3000u);
}

TEST_F(SavingWithoutMemory, TellsThatAFileCannotBeRead) {
  std::string content;
  FailEachAllocation([&] { Put({{kFile, std::string(5000, 'a')}}); }, [&] { content = ReadFile(Target()); }, [] {});
  EXPECT_EQ(content.size(), 5000u);
}

}  // namespace
}  // namespace vorn_host
