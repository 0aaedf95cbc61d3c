#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/host/tool.h"

namespace host_test {

/// A test of a command that draws a design into a file.
class DrawingToolTest : public ToolTest {
 protected:
  /// The command, without its output, takes the place of a former drawing, but of no other design.
  void ExpectNoDesignReplaced(std::vector<std::string> command) {
    command.insert(command.end(), {"-o", ""});
    const auto refuses = [&](const std::string& out) {
      const std::string before = ReadAll(out);
      command.back() = out;
      ExpectFailure(command, testing::HasSubstr("--output"));
      EXPECT_EQ(ReadAll(out), before) << out;
    };
    (void)Output({"convert", Sample("road-4.1.xml"), Path("p.vorn")});
    refuses(Path("p.vorn"));
    std::filesystem::rename(Path("p.vorn"), Path("p.vorn.bak"));
    refuses(Path("p.vorn.bak"));
    std::filesystem::rename(Path("p.vorn.bak"), Path("plain.out"));
    refuses(Path("plain.out"));
    WriteAll(Path("other.out"), ReadAll(Sample("river-2.0.xml")));
    refuses(Path("other.out"));
    refuses(Path("new.VORN"));
    refuses(Path("new.vorn.bak"));
    EXPECT_EQ(FileCount(), 2u);
    WriteAll(Path("former.out"), "<html>a former page</html>");
    command.back() = Path("former.out");
    (void)Output(command);
  }
};

}  // namespace host_test
