#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#ifdef _WIN32
#include "tests/host/tool_process.h"
#else
#include <sys/wait.h>
#endif

#include "tests/host/temporary_directory.h"

// The tool as its users meet it: a process with arguments, files, an exit code and what it prints.

namespace host_test {

using Json = nlohmann::json;

inline std::string ReadAll(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

inline void WriteAll(const std::filesystem::path& path, std::string_view content) {
  std::ofstream(path, std::ios::binary).write(content.data(), static_cast<std::streamsize>(content.size()));
}

/// As a POSIX shell takes it.
inline std::string Quoted(const std::string& argument) {
  std::string quoted = "'";
  for (const char byte : argument) quoted += byte == '\'' ? std::string("'\\''") : std::string(1, byte);
  return quoted + "'";
}

/// The text with the first occurrence of one part replaced; the part has to be there.
inline std::string Replaced(std::string text, std::string_view part, std::string_view by) {
  const std::size_t at = text.find(part);
  EXPECT_NE(at, std::string::npos) << "nothing to replace: " << part;
  return at == std::string::npos ? text : text.replace(at, part.size(), by);
}

struct ToolRun {
  int exitCode = -1;
  std::string out;
  std::string err;
};

/// A test that runs the tool in a directory of its own.
class ToolTest : public testing::Test {
 protected:
  /// A path in the directory that the test works in.
  [[nodiscard]] std::string Path(const std::string& name) const { return vorn_host::Utf8Text(m_work / name); }
  [[nodiscard]] static std::string Sample(const std::string& name) { return std::string(VORN_SAMPLES) + "/" + name; }
  /// A copy of a sample, changed.
  [[nodiscard]] std::string Damaged(const std::string& name, std::string_view part, std::string_view by) const {
    WriteAll(Path("damaged.xml"), Replaced(ReadAll(Sample(name)), part, by));
    return Path("damaged.xml");
  }
  /// How many files the test's directory holds.
  [[nodiscard]] std::size_t FileCount() const { return m_work.Names().size(); }

#ifdef _WIN32
  /// Runs the tool.
  [[nodiscard]] ToolRun Vorn(const std::vector<std::string>& arguments) const {
    const int exitCode = RunProgram(VORN_TOOL, arguments, m_streams / "out", m_streams / "err");
    return {exitCode, ReadAll(m_streams / "out"), ReadAll(m_streams / "err")};
  }
#else
  /// Runs a shell command.
  [[nodiscard]] ToolRun Shell(const std::string& command) const {
    const std::string out = (m_streams / "out").string();
    const std::string err = (m_streams / "err").string();
    const int status = std::system(("( " + command + " ) >" + Quoted(out) + " 2>" + Quoted(err)).c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadAll(out), ReadAll(err)};
  }
  [[nodiscard]] static std::string Command(const std::vector<std::string>& arguments) {
    std::string command = Quoted(VORN_TOOL);
    for (const std::string& argument : arguments) command += ' ' + Quoted(argument);
    return command;
  }
  /// Runs the tool.
  [[nodiscard]] ToolRun Vorn(const std::vector<std::string>& arguments) const { return Shell(Command(arguments)); }
#endif
  /// Runs the tool where it has to succeed, and gives what it printed.
  [[nodiscard]] std::string Output(const std::vector<std::string>& arguments) const {
    const ToolRun run = Vorn(arguments);
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_EQ(run.err, "");
    return run.out;
  }
  [[nodiscard]] Json OutputJson(const std::vector<std::string>& arguments) const {
    const Json json = Json::parse(Output(arguments), nullptr, false);
    EXPECT_FALSE(json.is_discarded()) << "no JSON";
    return json;
  }
  /// Runs the tool where it has to fail with a plain sentence and nothing else.
  void ExpectFailure(const std::vector<std::string>& arguments, const testing::Matcher<const std::string&>& sentence) {
    ExpectFailure(Vorn(arguments), sentence);
  }
  static void ExpectFailure(const ToolRun& run, const testing::Matcher<const std::string&>& sentence) {
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_THAT(run.err, testing::AllOf(testing::StartsWith("vorn: "), testing::EndsWith("\n"), sentence));
  }

 private:
  TemporaryDirectory m_work;
  TemporaryDirectory m_streams;
};

}  // namespace host_test
