#include "vorn/road/crs_data.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>

#include "vorn/platform/code_page_932.h"
#include "vorn/platform/tam_world2.h"

namespace {

using GeoDatum = VornCrsData::GeoDatum;
using HorizonCoordinate = VornCrsData::HorizonCoordinate;

struct DatumRow {
  int value;
  std::string_view text;
  std::string_view code;
};
constexpr std::array kDatums = {
    DatumRow{0, u8"日本測地系2000"_cp932, "JGD2000"},
    DatumRow{1, u8"日本測地系"_cp932, "TD"},
    DatumRow{2, u8"世界測地系"_cp932, ""},
    DatumRow{3, u8"日本測地系2011"_cp932, "JGD2011"},
};

struct CoordinateRow {
  int value;
  std::string_view text;
  std::string_view code;
};
constexpr std::array kCoordinates = {
    CoordinateRow{0, u8"平面直角座標系第Ⅰ系"_cp932, "1(X,Y)"},
    CoordinateRow{1, u8"平面直角座標系第Ⅱ系"_cp932, "2(X,Y)"},
    CoordinateRow{2, u8"平面直角座標系第Ⅲ系"_cp932, "3(X,Y)"},
    CoordinateRow{3, u8"平面直角座標系第Ⅳ系"_cp932, "4(X,Y)"},
    CoordinateRow{4, u8"平面直角座標系第Ⅴ系"_cp932, "5(X,Y)"},
    CoordinateRow{5, u8"平面直角座標系第Ⅵ系"_cp932, "6(X,Y)"},
    CoordinateRow{6, u8"平面直角座標系第Ⅶ系"_cp932, "7(X,Y)"},
    CoordinateRow{7, u8"平面直角座標系第Ⅷ系"_cp932, "8(X,Y)"},
    CoordinateRow{8, u8"平面直角座標系第Ⅸ系"_cp932, "9(X,Y)"},
    CoordinateRow{9, u8"平面直角座標系第Ⅹ系"_cp932, "10(X,Y)"},
    CoordinateRow{10, u8"平面直角座標系第ⅩⅠ系"_cp932, "11(X,Y)"},
    CoordinateRow{11, u8"平面直角座標系第ⅩⅡ系"_cp932, "12(X,Y)"},
    CoordinateRow{12, u8"平面直角座標系第ⅩⅢ系"_cp932, "13(X,Y)"},
    CoordinateRow{13, u8"平面直角座標系第ⅩⅣ系"_cp932, "14(X,Y)"},
    CoordinateRow{14, u8"平面直角座標系第ⅩⅤ系"_cp932, "15(X,Y)"},
    CoordinateRow{15, u8"平面直角座標系第ⅩⅥ系"_cp932, "16(X,Y)"},
    CoordinateRow{16, u8"平面直角座標系第ⅩⅦ系"_cp932, "17(X,Y)"},
    CoordinateRow{17, u8"平面直角座標系第ⅩⅧ系"_cp932, "18(X,Y)"},
    CoordinateRow{18, u8"平面直角座標系第ⅩⅨ系"_cp932, "19(X,Y)"},
    CoordinateRow{19, u8"測地座標系（緯度・経度)"_cp932, ""},
};

VornCrsData Full() {
  VornCrsData crs;
  crs.SetName("system");
  crs.SetGeoDatum(GeoDatum::Jgd2011);
  crs.SetVerticalDatum("T.P");
  crs.SetVerticalHeight(12.5);
  crs.SetHorizonCoordinate(HorizonCoordinate::Plane9);
  crs.SetAuxCode(7);
  crs.SetAuxText("aux");
  return crs;
}

// --- data ------------------------------------------------------------------------------------------------------------

TEST(CrsData, StartsUnset) {
  const VornCrsData crs;
  EXPECT_EQ(crs.GetName(), "");
  EXPECT_EQ(static_cast<int>(crs.GetGeoDatum()), -1);
  EXPECT_EQ(crs.VerticalDatum(), "");
  EXPECT_EQ(crs.GetVerticalHeight(), 0.0);
  EXPECT_EQ(static_cast<int>(crs.GetHorizonCoordinate()), -1);
  EXPECT_EQ(crs.GetAuxCode(), -1);
  EXPECT_EQ(crs.GetAuxText(), "");
}

TEST(CrsData, KeepsAndCopiesAllItsMembers) {
  VornCrsData copy;
  copy = Full();
  const VornCrsData moved = std::move(copy);
  EXPECT_EQ(moved.GetName(), "system");
  EXPECT_EQ(moved.GetGeoDatum(), GeoDatum::Jgd2011);
  EXPECT_EQ(moved.VerticalDatum(), "T.P");
  EXPECT_EQ(moved.GetVerticalHeight(), 12.5);
  EXPECT_EQ(moved.GetHorizonCoordinate(), HorizonCoordinate::Plane9);
  EXPECT_EQ(moved.GetAuxCode(), 7);
  EXPECT_EQ(moved.GetAuxText(), "aux");
}

static_assert(std::has_virtual_destructor_v<VornCrsData> && std::is_nothrow_move_constructible_v<VornCrsData>);

// --- horizontal datum ------------------------------------------------------------------------------------------------

TEST(CrsData, GivesEachDatumItsTextAndItsCode) {
  VornCrsData crs;
  for (const DatumRow& row : kDatums) {
    const auto datum = static_cast<GeoDatum>(row.value);
    EXPECT_EQ(VornCrsData::GetGeoDatumStr(datum), row.text) << row.value;
    EXPECT_EQ(crs.HorizontalDatum(datum), row.code) << row.value;
    crs.SetGeoDatum(datum);
    EXPECT_EQ(std::as_const(crs).HorizontalDatum(), row.code) << row.value;
  }
}

TEST(CrsData, GivesAnUnknownDatumNoTextAndNoCode) {
  const VornCrsData crs;
  for (const int value : {-1, 4, 100, std::numeric_limits<int>::min()}) {
    EXPECT_EQ(VornCrsData::GetGeoDatumStr(static_cast<GeoDatum>(value)), "");
    EXPECT_EQ(crs.HorizontalDatum(static_cast<GeoDatum>(value)), "");
  }
}

TEST(CrsData, TakesEachDatumByItsCode) {
  for (const DatumRow& row : kDatums) {
    VornCrsData crs;
    EXPECT_TRUE(crs.HorizontalDatum(row.code));
    EXPECT_EQ(static_cast<int>(crs.GetGeoDatum()), row.value);
  }
}

TEST(CrsData, TakesTheEmptyCodeForTheWorldSystem) {
  VornCrsData crs = Full();
  EXPECT_TRUE(crs.HorizontalDatum(""));
  EXPECT_EQ(static_cast<int>(crs.GetGeoDatum()), 2);
}

TEST(CrsData, KeepsItsDatumWhenACodeIsUnknown) {
  for (const char* code : {"WGS84", "jgd2000", "JGD2000 ", " TD", "JGD"}) {
    VornCrsData crs = Full();
    EXPECT_FALSE(crs.HorizontalDatum(code)) << code;
    EXPECT_EQ(crs.GetGeoDatum(), GeoDatum::Jgd2011) << code;
  }
}

// --- horizontal coordinates ------------------------------------------------------------------------------------------

TEST(CrsData, GivesEachCoordinateItsTextAndItsCode) {
  VornCrsData crs;
  for (const CoordinateRow& row : kCoordinates) {
    const auto coordinate = static_cast<HorizonCoordinate>(row.value);
    EXPECT_EQ(VornCrsData::HorizonCoordStr(coordinate), row.text) << row.value;
    EXPECT_EQ(crs.CoordinateSystem(coordinate), row.code) << row.value;
    crs.SetHorizonCoordinate(coordinate);
    EXPECT_EQ(std::as_const(crs).CoordinateSystem(), row.code) << row.value;
  }
}

TEST(CrsData, WritesPlaneSystemsWithTheFullWidthRomanNumerals) {
  const std::string first = VornCrsData::HorizonCoordStr(HorizonCoordinate::Plane1).GetString();
  EXPECT_EQ(first.substr(first.size() - 4, 2), "\x87\x54");
  const std::string last = VornCrsData::HorizonCoordStr(HorizonCoordinate::Plane19).GetString();
  EXPECT_EQ(last.substr(last.size() - 6, 4), "\x87\x5D\x87\x5C");
}

TEST(CrsData, WritesGeodeticCoordinatesWithAParenthesisOfEachWidth) {
  const std::string text = VornCrsData::HorizonCoordStr(HorizonCoordinate::Geodetic).GetString();
  EXPECT_NE(text.find("\x81\x69"), std::string::npos);
  EXPECT_EQ(text.back(), ')');
}

TEST(CrsData, GivesUnknownCoordinatesNoTextAndNoCode) {
  const VornCrsData crs;
  for (const int value : {-1, 20, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
    EXPECT_EQ(VornCrsData::HorizonCoordStr(static_cast<HorizonCoordinate>(value)), "");
    EXPECT_EQ(crs.CoordinateSystem(static_cast<HorizonCoordinate>(value)), "");
  }
}

TEST(CrsData, TakesEachPlaneSystemByItsCode) {
  for (const CoordinateRow& row : kCoordinates) {
    if (row.code.empty()) continue;
    VornCrsData crs;
    EXPECT_TRUE(crs.CoordinateSystem(row.code));
    EXPECT_EQ(static_cast<int>(crs.GetHorizonCoordinate()), row.value);
  }
  VornCrsData crs;
  EXPECT_TRUE(crs.CoordinateSystem("19(X,Y)"));
  EXPECT_EQ(static_cast<int>(crs.GetHorizonCoordinate()), 18);
}

TEST(CrsData, KeepsItsCoordinatesWhenACodeIsUnknown) {
  for (const char* code : {"", "20(X,Y)", "0(X,Y)", "-1(X,Y)", "01(X,Y)", "1(x,y)", "1(X, Y)", "1"}) {
    VornCrsData crs = Full();
    EXPECT_FALSE(crs.CoordinateSystem(code)) << code;
    EXPECT_EQ(crs.GetHorizonCoordinate(), HorizonCoordinate::Plane9) << code;
  }
}

// --- comparison ------------------------------------------------------------------------------------------------------

TEST(CrsData, ComparesEqualToItsCopy) { EXPECT_TRUE(Full().Compare(Full())); }

TEST(CrsData, ComparesUnequalWhicheverMemberDiffers) {
  const auto differs = [](auto change) {
    VornCrsData other = Full();
    change(other);
    return !Full().Compare(other) && !other.Compare(Full());
  };
  EXPECT_TRUE(differs([](VornCrsData& crs) { crs.SetName("System"); }));
  EXPECT_TRUE(differs([](VornCrsData& crs) { crs.SetGeoDatum(GeoDatum::World); }));
  EXPECT_TRUE(differs([](VornCrsData& crs) { crs.SetVerticalDatum("t.p"); }));
  EXPECT_TRUE(differs([](VornCrsData& crs) { crs.SetVerticalHeight(12.6); }));
  EXPECT_TRUE(differs([](VornCrsData& crs) { crs.SetHorizonCoordinate(HorizonCoordinate::Geodetic); }));
  EXPECT_TRUE(differs([](VornCrsData& crs) { crs.SetAuxCode(-7); }));
  EXPECT_TRUE(differs([](VornCrsData& crs) { crs.SetAuxText("AUX"); }));
}

TEST(CrsData, ComparesHeightsWithinTheTinyLengthEqual) {
  VornCrsData a;
  VornCrsData b;
  for (const double difference : {kTamTinyLength, -kTamTinyLength, 0.5 * kTamTinyLength}) {
    b.SetVerticalHeight(difference);
    EXPECT_TRUE(a.Compare(b)) << difference;
  }
  for (const double difference :
       {1.001 * kTamTinyLength, -1.001 * kTamTinyLength, std::numeric_limits<double>::quiet_NaN()}) {
    b.SetVerticalHeight(difference);
    EXPECT_FALSE(a.Compare(b)) << difference;
  }
}

}  // namespace
