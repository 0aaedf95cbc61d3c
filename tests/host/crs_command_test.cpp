// `vorn crs`: the coordinate systems and geodetic datums, for people and for programs.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <iterator>
#include <string>

#include "tests/host/tool.h"

namespace {

using namespace host_test;  // NOLINT(google-build-using-namespace): the vocabulary of these tests
using testing::HasSubstr;

class CrsCommand : public ToolTest {};

struct Row {
  const char* text;
  const char* code;  ///< null for none
};

/// By value.
constexpr Row kCoordinateSystems[] = {
    {"平面直角座標系第Ⅰ系", "1(X,Y)"},   {"平面直角座標系第Ⅱ系", "2(X,Y)"},    {"平面直角座標系第Ⅲ系", "3(X,Y)"},
    {"平面直角座標系第Ⅳ系", "4(X,Y)"},   {"平面直角座標系第Ⅴ系", "5(X,Y)"},    {"平面直角座標系第Ⅵ系", "6(X,Y)"},
    {"平面直角座標系第Ⅶ系", "7(X,Y)"},   {"平面直角座標系第Ⅷ系", "8(X,Y)"},    {"平面直角座標系第Ⅸ系", "9(X,Y)"},
    {"平面直角座標系第Ⅹ系", "10(X,Y)"},  {"平面直角座標系第ⅩⅠ系", "11(X,Y)"},  {"平面直角座標系第ⅩⅡ系", "12(X,Y)"},
    {"平面直角座標系第ⅩⅢ系", "13(X,Y)"}, {"平面直角座標系第ⅩⅣ系", "14(X,Y)"},  {"平面直角座標系第ⅩⅤ系", "15(X,Y)"},
    {"平面直角座標系第ⅩⅥ系", "16(X,Y)"}, {"平面直角座標系第ⅩⅦ系", "17(X,Y)"},  {"平面直角座標系第ⅩⅧ系", "18(X,Y)"},
    {"平面直角座標系第ⅩⅨ系", "19(X,Y)"}, {"測地座標系（緯度・経度)", nullptr},
};
constexpr Row kGeodeticDatums[] = {
    {"日本測地系2000", "JGD2000"},
    {"日本測地系", "TD"},
    {"世界測地系", nullptr},
    {"日本測地系2011", "JGD2011"},
};

template <std::size_t kCount>
void ExpectRows(const Json& values, const Row (&rows)[kCount]) {
  ASSERT_EQ(values.size(), kCount);
  for (std::size_t i = 0; i < kCount; ++i) {
    EXPECT_EQ(values[i]["value"], i);
    EXPECT_EQ(values[i]["text"], rows[i].text) << i;
    EXPECT_EQ(values[i]["code"], rows[i].code != nullptr ? Json(rows[i].code) : Json(nullptr)) << i;
  }
}

TEST_F(CrsCommand, ShowsEveryCoordinateSystemAndDatum) {
  EXPECT_EQ(Output({"crs"}),
            "Coordinate systems:\n"
            "     0  1(X,Y)   平面直角座標系第Ⅰ系\n"
            "     1  2(X,Y)   平面直角座標系第Ⅱ系\n"
            "     2  3(X,Y)   平面直角座標系第Ⅲ系\n"
            "     3  4(X,Y)   平面直角座標系第Ⅳ系\n"
            "     4  5(X,Y)   平面直角座標系第Ⅴ系\n"
            "     5  6(X,Y)   平面直角座標系第Ⅵ系\n"
            "     6  7(X,Y)   平面直角座標系第Ⅶ系\n"
            "     7  8(X,Y)   平面直角座標系第Ⅷ系\n"
            "     8  9(X,Y)   平面直角座標系第Ⅸ系\n"
            "     9  10(X,Y)  平面直角座標系第Ⅹ系\n"
            "    10  11(X,Y)  平面直角座標系第ⅩⅠ系\n"
            "    11  12(X,Y)  平面直角座標系第ⅩⅡ系\n"
            "    12  13(X,Y)  平面直角座標系第ⅩⅢ系\n"
            "    13  14(X,Y)  平面直角座標系第ⅩⅣ系\n"
            "    14  15(X,Y)  平面直角座標系第ⅩⅤ系\n"
            "    15  16(X,Y)  平面直角座標系第ⅩⅥ系\n"
            "    16  17(X,Y)  平面直角座標系第ⅩⅦ系\n"
            "    17  18(X,Y)  平面直角座標系第ⅩⅧ系\n"
            "    18  19(X,Y)  平面直角座標系第ⅩⅨ系\n"
            "    19  no code  測地座標系（緯度・経度)\n"
            "Geodetic datums:\n"
            "     0  JGD2000  日本測地系2000\n"
            "     1  TD       日本測地系\n"
            "     2  no code  世界測地系\n"
            "     3  JGD2011  日本測地系2011\n");
}

TEST_F(CrsCommand, TellsProgramsEveryCoordinateSystem) {
  ExpectRows(OutputJson({"crs", "--json"})["coordinateSystems"], kCoordinateSystems);
}

TEST_F(CrsCommand, TellsProgramsEveryGeodeticDatum) {
  ExpectRows(OutputJson({"crs", "--json"})["geodeticDatums"], kGeodeticDatums);
}

#ifndef _WIN32  // only POSIX systems have a device that is always full
TEST_F(CrsCommand, SaysThatItsOutputCannotBeWritten) {
  ExpectFailure(Shell(Command({"crs"}) + " >/dev/full"), HasSubstr("standard output"));
  ExpectFailure(Shell(Command({"crs", "--json"}) + " >/dev/full"), HasSubstr("standard output"));
}
#endif

TEST_F(CrsCommand, RefusesMisuse) {
  ExpectFailure({"crs", "JGD2011"}, HasSubstr("JGD2011"));
  ExpectFailure({"crs", "--edition", "4.1"}, HasSubstr("--edition"));
  EXPECT_THAT(Output({"crs", "--help"}), HasSubstr("--json"));
}

}  // namespace
