// Projects through the tool, as its users meet them: converted, looked at, edited, saved while the power fails.

#include <chrono>
#include <csignal>
#include <filesystem>
#include <random>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#ifndef _WIN32
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

#include "host/project/project.h"
#include "tests/host/tool.h"

namespace {

using host_test::Json;
using host_test::Quoted;
using host_test::ReadAll;
using host_test::ToolRun;
using host_test::WriteAll;
using testing::AllOf;
using testing::AnyOf;
using testing::Eq;
using testing::HasSubstr;
using testing::Not;

const std::vector<std::string> kSamples = {"road-4.1.xml", "road-with-geometry-4.0.xml", "river-2.0.xml",
                                           "farm-maff-1.0.xml"};

class ProjectCommand : public host_test::ToolTest {};

/// A document without the value of its first creation date, which there has to be.
std::string WithoutCreateDate(std::string text) {
  constexpr std::string_view kAttribute = "createDate=\"";
  const std::size_t at = text.find(kAttribute);
  EXPECT_NE(at, std::string::npos);
  if (at == std::string::npos) return text;
  const std::size_t value = at + kAttribute.size();
  return text.erase(value, text.find('"', value) - value);
}

TEST_F(ProjectCommand, ConvertsEveryDocumentToAProjectAndBack) {
  for (const std::string& sample : kSamples) {
    (void)Output({"convert", Sample(sample), Path("direct.xml")});
    (void)Output({"convert", Sample(sample), Path("p.vorn")});
    (void)Output({"convert", Path("p.vorn"), Path("back.xml")});
    EXPECT_EQ(ReadAll(Path("back.xml")), ReadAll(Path("direct.xml"))) << sample;
  }
}

TEST_F(ProjectCommand, ExportsAProjectInEveryEditionAsItsDocumentWouldBe) {
  for (const std::string& sample : kSamples) {
    (void)Output({"convert", Sample(sample), Path("p.vorn")});
    for (const std::string edition : {"2.0", "4.0", "4.1", "maff-1.0"}) {
      (void)Output({"convert", Sample(sample), Path("direct.xml"), "--edition", edition});
      (void)Output({"convert", Path("p.vorn"), Path("back.xml"), "--edition", edition});
      // Editions from 4.0 on have a file information with the present time when the document has none.
      const bool isGivenTime = ReadAll(Sample(sample)).find("<tsf:FileInfo") == std::string::npos && edition != "2.0";
      const auto compared = [&](const char* name) {
        return isGivenTime ? WithoutCreateDate(ReadAll(Path(name))) : ReadAll(Path(name));
      };
      EXPECT_EQ(compared("back.xml"), compared("direct.xml")) << sample << " in " << edition;
    }
  }
}

TEST_F(ProjectCommand, TellsThatAProjectWasWritten) {
  EXPECT_THAT(Output({"convert", Sample("road-4.1.xml"), Path("p.VORN")}),
              AllOf(HasSubstr("Store version"), HasSubstr("06.00"), Not(HasSubstr("Encoding"))));
  const Json json = OutputJson({"convert", Sample("road-4.1.xml"), Path("p.vorn"), "--json"});
  EXPECT_EQ(json["storeVersion"], "06.00");
  EXPECT_EQ(json["encoding"], nullptr);
  EXPECT_EQ(json["fromStoreVersion"], nullptr);
  EXPECT_EQ(json["notStored"], Json::array());
}

TEST_F(ProjectCommand, WritesOlderStoreVersions) {
  for (const std::string version : {"05.00", "05.50", "06.00"}) {
    const Json json =
        OutputJson({"convert", Sample("road-4.1.xml"), Path("p.vorn"), "--store-version", version, "--json"});
    EXPECT_EQ(json["storeVersion"], version);
    EXPECT_EQ(OutputJson({"info", Path("p.vorn"), "--json"})["project"]["storeVersion"], version);
    EXPECT_EQ(OutputJson({"convert", Path("p.vorn"), Path("p2.vorn"), "--json"})["fromStoreVersion"], version);
  }
  ExpectFailure({"convert", Sample("road-4.1.xml"), Path("p.vorn"), "--store-version", "04.00"}, HasSubstr("05.00"));
  ExpectFailure({"convert", Sample("road-4.1.xml"), Path("p.xml"), "--store-version", "05.00"},
                HasSubstr("only a project"));
}

TEST_F(ProjectCommand, TellsWhatAnOlderStoreVersionCannotHold) {
  const std::string project = std::string(VORN_TEST_DATA) + "/projects/road-06.00.vorn";
  const std::vector<std::string> toOlder = {"convert", project, Path("p.vorn"), "--store-version", "05.00"};
  EXPECT_THAT(Output(toOlder), AllOf(HasSubstr("05.00 from 06.00"), HasSubstr("Dropped, as store version 05.00"),
                                     HasSubstr("second role of a point")));
  std::vector<std::string> toJson = toOlder;
  toJson.emplace_back("--json");
  const Json json = OutputJson(toJson);
  ASSERT_FALSE(json["notStored"].empty());
  for (const Json& loss : json["notStored"]) {
    EXPECT_FALSE(loss["what"].get<std::string>().empty());
    EXPECT_GT(loss["count"].get<int>(), 0);
  }
  EXPECT_FALSE(json["roadDataLeft"].get<bool>()) << "a project holds them";
  // The older project holds all that it says.
  EXPECT_EQ(OutputJson({"convert", Path("p.vorn"), Path("p2.vorn"), "--json"})["notStored"], Json::array());
}

TEST_F(ProjectCommand, TellsThatADocumentHoldsTheDesignAlone) {
  const std::string project = std::string(VORN_TEST_DATA) + "/projects/road-06.00.vorn";
  const std::string note = "Note: a document holds the design alone; the project's road data are not in it";
  EXPECT_THAT(Output({"convert", project, Path("d.xml")}), HasSubstr(note));
  EXPECT_THAT(Output({"edit", project, Path("d.xml"), "--clear-codes"}), HasSubstr(note));
  EXPECT_TRUE(OutputJson({"convert", project, Path("d.xml"), "--json"})["roadDataLeft"].get<bool>());
  EXPECT_THAT(Output({"convert", project, Path("p.vorn")}), Not(HasSubstr(note)));

  (void)Output({"convert", Sample("road-4.1.xml"), Path("alone.vorn")});
  EXPECT_THAT(Output({"convert", Path("alone.vorn"), Path("d.xml")}), Not(HasSubstr(note)));
  EXPECT_FALSE(OutputJson({"convert", Path("alone.vorn"), Path("d.xml"), "--json"})["roadDataLeft"].get<bool>());
}

TEST_F(ProjectCommand, RefusesControlCharactersInTheTextsOfAProject) {
  vorn_host::DesignDocument design = vorn_host::DesignDocument::Read(Sample("road-4.1.xml"));
  design.sets[0].GetXSectionArray()[0].GetBuildFormArray()[0].SetName("a\x01z", false);
  vorn_host::Project project;
  project.TakeDesign(std::move(design));
  project.Save(Path("p.vorn"));
  for (const std::string encoding : {"utf-8", "shift_jis"}) {
    const std::vector<std::string> convert = {"convert", Path("p.vorn"), Path("d.xml"), "--encoding", encoding};
    ExpectFailure(convert, AllOf(HasSubstr("d.xml: the design holds the control character (U+0001)")));
    EXPECT_FALSE(std::filesystem::exists(Path("d.xml")));
    std::vector<std::string> lossy = convert;
    lossy.insert(lossy.end(), {"--lossy", "--json"});
    EXPECT_EQ(OutputJson(lossy)["replacedInWriting"], 1) << encoding;
    EXPECT_THAT(Output({"forms", Path("d.xml")}), HasSubstr("a〓z"));
    std::filesystem::remove(Path("d.xml"));
  }
}

TEST_F(ProjectCommand, ShowsWhatAProjectHolds) {
  (void)Output({"convert", Sample("road-4.1.xml"), Path("p.vorn")});
  EXPECT_THAT(Output({"info", Path("p.vorn")}), AllOf(HasSubstr("Project"), HasSubstr("store version 06.00"),
                                                      HasSubstr("Alignments"), HasSubstr("Survey points")));
  Json document = OutputJson({"info", Sample("road-4.1.xml"), "--json"});
  Json project = OutputJson({"info", Path("p.vorn"), "--json"});
  EXPECT_EQ(document["project"], nullptr);
  ASSERT_TRUE(project["project"].is_object());
  EXPECT_EQ(project["project"]["alignments"].size(), document["sets"].size());
  for (const char* own : {"file", "project"}) {
    document.erase(own);
    project.erase(own);
  }
  EXPECT_EQ(project, document);
}

TEST_F(ProjectCommand, ChecksAProjectAsItsDocument) {
  for (const std::string& sample : kSamples) {
    (void)Output({"convert", Sample(sample), Path("p.vorn")});
    Json document = OutputJson({"check", Sample(sample), "--json", "--verbose"});
    Json project = OutputJson({"check", Path("p.vorn"), "--json", "--verbose"});
    document.erase("file");
    project.erase("file");
    EXPECT_EQ(project, document) << sample;
  }
}

TEST_F(ProjectCommand, ListsTheFormsOfAProject) {
  (void)Output({"convert", Sample("road-4.1.xml"), Path("p.vorn")});
  EXPECT_EQ(OutputJson({"forms", Path("p.vorn"), "--json"})["forms"],
            OutputJson({"forms", Sample("road-4.1.xml"), "--json"})["forms"]);
}

TEST_F(ProjectCommand, EditsAProjectAsItsDocument) {
  (void)Output({"convert", Sample("road-4.1.xml"), Path("p.vorn")});
  (void)Output({"edit", Path("p.vorn"), Path("p.vorn"), "--recalc", "100", "--cross-points", "--shift", "0.5,0"});
  (void)Output({"convert", Path("p.vorn"), Path("project.xml")});
  (void)Output(
      {"edit", Sample("road-4.1.xml"), Path("document.xml"), "--recalc", "100", "--cross-points", "--shift", "0.5,0"});
  EXPECT_EQ(ReadAll(Path("project.xml")), ReadAll(Path("document.xml")));
  EXPECT_TRUE(std::filesystem::exists(Path("p.vorn.bak")));
}

TEST_F(ProjectCommand, RecognisesAProjectByItsContentToo) {
  (void)Output({"convert", Sample("road-4.1.xml"), Path("p.vorn")});
  std::filesystem::rename(Path("p.vorn"), Path("p.data"));
  EXPECT_TRUE(OutputJson({"info", Path("p.data"), "--json"})["project"].is_object());
}

TEST_F(ProjectCommand, NeverPutsADocumentInTheProjectsPlace) {
  namespace fs = std::filesystem;
  (void)Output({"convert", Sample("road-4.1.xml"), Path("p.vorn")});
  const auto isProject = [&](const std::string& name) {
    return OutputJson({"info", Path(name), "--json"})["project"].is_object();
  };
#ifndef _WIN32  // links there take a right that few users have
  fs::create_symlink(Path("p.vorn"), Path("latest"));
  (void)Output({"edit", Path("latest"), Path("latest"), "--mirror"});
  EXPECT_TRUE(isProject("p.vorn"));
#else
  (void)Output({"edit", Path("p.vorn"), Path("p.vorn"), "--mirror"});
#endif
  (void)Output({"edit", Path("p.vorn.bak"), Path("p.vorn.bak"), "--mirror"});
  EXPECT_TRUE(isProject("p.vorn.bak"));
  fs::copy_file(Path("p.vorn"), Path("p.data"));
  (void)Output({"convert", Path("p.data"), Path("p.data")});
  EXPECT_TRUE(isProject("p.data"));
  fs::copy_file(Path("p.vorn"), Path("p.xml"));
  ExpectFailure({"convert", Path("p.vorn"), Path("p.xml")},
                AllOf(HasSubstr("p.xml: this file is a project"), HasSubstr("road data")));
  EXPECT_TRUE(isProject("p.xml"));
}

TEST_F(ProjectCommand, SaysWhereTheFormerProjectIsKept) {
  EXPECT_EQ(OutputJson({"convert", Sample("road-4.1.xml"), Path("p.vorn"), "--json"})["formerFile"], nullptr);
  EXPECT_EQ(OutputJson({"convert", Sample("river-2.0.xml"), Path("p.vorn"), "--json"})["formerFile"],
            Path("p.vorn.bak"));
  EXPECT_THAT(Output({"convert", Sample("river-2.0.xml"), Path("p.vorn")}),
              AllOf(HasSubstr("Former file"), HasSubstr("p.vorn.bak")));
}

TEST_F(ProjectCommand, SaysWhereAFormerDocumentIsKept) {
  std::filesystem::copy_file(Sample("road-4.1.xml"), Path("p.vorn"));
  EXPECT_EQ(OutputJson({"convert", Sample("river-2.0.xml"), Path("p.vorn"), "--json"})["formerFile"],
            Path("p.vorn.bak"));
  EXPECT_EQ(ReadAll(Path("p.vorn.bak")), ReadAll(Sample("road-4.1.xml")));
}

TEST_F(ProjectCommand, NamesThePlaceWhereTheFormerFileCannotBeKept) {
  (void)Output({"convert", Sample("road-4.1.xml"), Path("z.vorn")});
  const std::string before = ReadAll(Path("z.vorn"));
  std::filesystem::create_directory(Path("z.vorn.bak"));
  ExpectFailure({"convert", Sample("river-2.0.xml"), Path("z.vorn")},
                AllOf(HasSubstr("z.vorn: "), HasSubstr(Path("z.vorn.bak") + ": Is a directory")));
  EXPECT_EQ(ReadAll(Path("z.vorn")), before);
}

#ifndef _WIN32  // links there take a right that few users have

TEST_F(ProjectCommand, WritesAProjectThroughALinkToANameThatIsNotThereYet) {
  namespace fs = std::filesystem;
  fs::create_directory(Path("data"));
  fs::create_symlink("data/p.vorn", Path("middle"));
  fs::create_symlink("middle", Path("latest"));
  EXPECT_EQ(OutputJson({"convert", Sample("road-4.1.xml"), Path("latest"), "--json"})["storeVersion"], "06.00");
  EXPECT_TRUE(OutputJson({"info", Path("data/p.vorn"), "--json"})["project"].is_object());
  ExpectFailure({"convert", Sample("road-4.1.xml"), Path("latest"), "--encoding", "utf-8"},
                HasSubstr("only a document has an encoding"));
}

TEST_F(ProjectCommand, TurnsNoDocumentIntoAProjectThroughALink) {
  namespace fs = std::filesystem;
  const std::string document = ReadAll(Sample("road-4.1.xml"));
  WriteAll(Path("d.xml"), document);
  WriteAll(Path("design"), document);
  fs::create_symlink("d.xml", Path("a.vorn"));
  fs::create_symlink("design", Path("b.vorn"));
  fs::create_symlink("missing.xml", Path("c.vorn"));
  for (const char* link : {"a.vorn", "b.vorn", "c.vorn"}) {
    ExpectFailure({"convert", Sample("road-4.1.xml"), Path(link)},
                  AllOf(HasSubstr(std::string(link) + ": this link leads to "), HasSubstr("no project")));
  }
  EXPECT_EQ(ReadAll(Path("d.xml")), document);
  EXPECT_EQ(ReadAll(Path("design")), document);
  EXPECT_FALSE(fs::exists(Path("missing.xml")));
  // What is a project, or nothing yet, may be named otherwise than the link.
  fs::create_symlink("new", Path("d.vorn"));
  (void)Output({"convert", Sample("road-4.1.xml"), Path("d.vorn")});
  EXPECT_EQ(OutputJson({"convert", Sample("road-4.1.xml"), Path("d.vorn"), "--json"})["formerFile"], Path("new.bak"));
}

#endif  // _WIN32

TEST_F(ProjectCommand, KeepsTheStoreVersionOfAProject) {
  (void)Output({"convert", Sample("road-4.1.xml"), Path("p.vorn"), "--store-version", "05.00"});
  EXPECT_EQ(OutputJson({"edit", Path("p.vorn"), Path("p.vorn"), "--mirror", "--json"})["storeVersion"], "05.00");
  EXPECT_EQ(OutputJson({"info", Path("p.vorn"), "--json"})["project"]["storeVersion"], "05.00");
  EXPECT_THAT(Output({"convert", Path("p.vorn"), Path("p.vorn"), "--store-version", "06.00"}),
              HasSubstr("06.00 from 05.00"));
}

TEST_F(ProjectCommand, TellsWhatADocumentOfAnEditionWillLackAndKeepsIt) {
  const std::string text = Output({"convert", Sample("road-4.1.xml"), Path("p.vorn"), "--edition", "2.0"});
  EXPECT_THAT(text,
              AllOf(HasSubstr("Kept in the project, but not in documents of edition 2.0"), Not(HasSubstr("Dropped"))));
}

TEST_F(ProjectCommand, TakesAnEncodingForDocumentsOnly) {
  ExpectFailure({"convert", Sample("road-4.1.xml"), Path("p.vorn"), "--encoding", "utf-8"},
                HasSubstr("only a document has an encoding"));
  ExpectFailure({"edit", Sample("road-4.1.xml"), Path("p.vorn"), "--mirror", "--encoding", "utf-8"},
                HasSubstr("only a document has an encoding"));
}

TEST_F(ProjectCommand, RefusesWhatIsNoProject) {
  std::filesystem::copy_file(Sample("road-4.1.xml"), Path("p.vorn"));
  ExpectFailure({"info", Path("p.vorn")}, AllOf(HasSubstr("p.vorn"), HasSubstr("not a project file")));
  ExpectFailure({"convert", Path("p.vorn"), Path("out.xml")}, HasSubstr("not a project file"));
  EXPECT_FALSE(std::filesystem::exists(Path("out.xml")));
}

TEST_F(ProjectCommand, RefusesADamagedProjectAndTouchesNothing) {
  (void)Output({"convert", Sample("road-4.1.xml"), Path("p.vorn")});
  std::string content = ReadAll(Path("p.vorn"));
  content[content.size() / 2] = static_cast<char>(content[content.size() / 2] + 1);
  WriteAll(Path("p.vorn"), content);
  for (const char* command : {"info", "check", "forms"}) ExpectFailure({command, Path("p.vorn")}, HasSubstr("damaged"));
  ExpectFailure({"edit", Path("p.vorn"), Path("p.vorn"), "--mirror"}, HasSubstr("damaged"));
  EXPECT_EQ(ReadAll(Path("p.vorn")), content);
  EXPECT_EQ(FileCount(), 1u);
}

// --- reliability -----------------------------------------------------------------------------------------------------

#ifndef _WIN32  // processes are killed and file systems made with POSIX calls

/// Starts the tool and kills it without warning after a while, if it still runs then.
void RunAndKill(const std::vector<std::string>& arguments, std::chrono::microseconds after) {
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    std::vector<char*> argv = {const_cast<char*>(VORN_TOOL)};
    for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    if (std::freopen("/dev/null", "w", stdout) != nullptr) execv(VORN_TOOL, argv.data());
    _exit(127);
  }
  std::this_thread::sleep_for(after);
  kill(child, SIGKILL);
  int status = 0;
  waitpid(child, &status, 0);
}

TEST_F(ProjectCommand, LeavesTheOldOrTheNewProjectWhenItIsKilledWhileSaving) {
  constexpr int kSaves = 200;
  const std::vector<std::string> toNew = {"convert", Path("new.source.vorn"), Path("p.vorn")};
  const std::vector<std::string> toOld = {"convert", Path("old.source.vorn"), Path("p.vorn")};
  (void)Output({"convert", Sample("road-4.1.xml"), Path("old.source.vorn")});
  (void)Output({"convert", Sample("river-2.0.xml"), Path("new.source.vorn")});
  (void)Output(toOld);
  const std::string oldBytes = ReadAll(Path("p.vorn"));
  (void)Output(toNew);
  const std::string newBytes = ReadAll(Path("p.vorn"));
  ASSERT_NE(oldBytes, newBytes);

  // How long a save takes when nobody interferes, so that the blow falls anywhere within it.
  const auto start = std::chrono::steady_clock::now();
  RunAndKill(toOld, std::chrono::milliseconds(0));
  (void)Output(toOld);
  const auto span = std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - start);
  std::mt19937 random(20261121);
  int changed = 0;
  std::string former = ReadAll(Path("p.vorn"));
  for (int i = 0; i < kSaves; ++i) {
    const auto after = std::chrono::microseconds(random() % static_cast<unsigned long>(span.count() * 5 / 4 + 1));
    RunAndKill(i % 2 == 0 ? toNew : toOld, after);
    const std::string now = ReadAll(Path("p.vorn"));
    ASSERT_TRUE(now == oldBytes || now == newBytes) << "save " << i << " left " << now.size() << " bytes";
    const std::string backup = ReadAll(Path("p.vorn.bak"));
    ASSERT_TRUE(backup == oldBytes || backup == newBytes) << "save " << i;
    if (now != former) ++changed;
    former = now;
  }
  RecordProperty("savesThatWereDoneInTime", changed);
  EXPECT_GT(changed, 0);
  EXPECT_LT(changed, kSaves);
  (void)Output({"check", Path("p.vorn")});
}

TEST_F(ProjectCommand, LeavesTheOldProjectOnAFullFileSystem) {
  const std::string disk = Path("disk");
  std::filesystem::create_directory(disk);
  if (Shell("mount -t tmpfs -o size=200k tmpfs " + Quoted(disk)).exitCode != 0) {
    GTEST_SKIP() << "no right to mount a small file system here";
  }
  (void)Output({"sample", Path("large.xml"), "--sections", "200"});
  (void)Output({"convert", Sample("farm-maff-1.0.xml"), disk + "/p.vorn"});
  const std::string before = ReadAll(disk + "/p.vorn");
  const ToolRun full = Vorn({"convert", Path("large.xml"), disk + "/p.vorn"});
  const std::string after = ReadAll(disk + "/p.vorn");
  const ToolRun files = Shell("ls -A " + Quoted(disk));
  EXPECT_EQ(Shell("umount " + Quoted(disk)).exitCode, 0);

  ExpectFailure(full, AllOf(HasSubstr("p.vorn"), HasSubstr("No space left on device")));
  EXPECT_FALSE(before.empty());
  EXPECT_EQ(after, before);
  EXPECT_EQ(files.out, "p.vorn\n");
}

#endif  // _WIN32

}  // namespace
