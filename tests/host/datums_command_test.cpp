// `vorn datums`: the vertical datums, for people and for programs.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <iterator>
#include <string>

#include "tests/host/tool.h"

namespace {

using namespace host_test;  // NOLINT(google-build-using-namespace): the vocabulary of these tests
using testing::AllOf;
using testing::HasSubstr;

class DatumsCommand : public ToolTest {};

struct Row {
  const char* name;
  const char* designation;
  double height;
};

constexpr Row kRows[] = {
    {"東京湾中等潮位", "T.P", 0.0},
    {"北上川", "K.P", -0.8745},
    {"鳴瀬川", "S.P", -0.0873},
    {"利根川", "Y.P", -0.8402},
    {"荒川・中川・多摩川", "A.P", -1.1344},
    {"淀川", "O.P", -1.3},
    {"吉野川", "A.P", -0.8333},
    {"渡川", "T.P.W", 0.113},
    {"琵琶湖", "B.S.L", 84.371},
};

TEST_F(DatumsCommand, ShowsEveryDatumInColumnsOfFullWidthCharacters) {
  EXPECT_EQ(Output({"datums"}),
            "Vertical datums, with the height of the zero above that of Tokyo Bay in metres:\n"
            "    東京湾中等潮位      T.P      0.0\n"
            "    北上川              K.P     -0.8745\n"
            "    鳴瀬川              S.P     -0.0873\n"
            "    利根川              Y.P     -0.8402\n"
            "    荒川・中川・多摩川  A.P     -1.1344\n"
            "    淀川                O.P     -1.3\n"
            "    吉野川              A.P     -0.8333\n"
            "    渡川                T.P.W    0.113\n"
            "    琵琶湖              B.S.L   84.371\n");
}

TEST_F(DatumsCommand, TellsProgramsEveryDatum) {
  const Json datums = OutputJson({"datums", "--json"})["verticalDatums"];
  ASSERT_EQ(datums.size(), std::size(kRows));
  for (std::size_t i = 0; i < std::size(kRows); ++i) {
    EXPECT_EQ(datums[i]["name"], kRows[i].name) << i;
    EXPECT_EQ(datums[i]["designation"], kRows[i].designation) << i;
    EXPECT_EQ(datums[i]["height"].get<double>(), kRows[i].height) << i;
  }
}

TEST_F(DatumsCommand, WritesHeightsForProgramsAsTheTableHasThem) {
  EXPECT_THAT(Output({"datums", "--json"}), AllOf(HasSubstr("\"height\": 0.0\n"), HasSubstr("\"height\": -0.8745\n"),
                                                  HasSubstr("\"height\": -1.3\n"), HasSubstr("\"height\": 84.371\n")));
}

#ifndef _WIN32  // only POSIX systems have a device that is always full
TEST_F(DatumsCommand, SaysThatItsOutputCannotBeWritten) {
  ExpectFailure(Shell(Command({"datums"}) + " >/dev/full"), HasSubstr("standard output"));
  ExpectFailure(Shell(Command({"datums", "--json"}) + " >/dev/full"), HasSubstr("standard output"));
}
#endif

TEST_F(DatumsCommand, RefusesMisuse) {
  ExpectFailure({"datums", "T.P"}, HasSubstr("T.P"));
  ExpectFailure({"datums", "--lossy"}, HasSubstr("--lossy"));
  EXPECT_THAT(Output({"datums", "--help"}), HasSubstr("--json"));
}

}  // namespace
