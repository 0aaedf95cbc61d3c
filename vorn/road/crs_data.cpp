#include "vorn/road/crs_data.h"

#include <array>

#include "vorn/framework/enum_table.h"
#include "vorn/platform/code_page_932.h"
#include "vorn/platform/tam_world2.h"

namespace {

using GeoDatum = VornCrsData::GeoDatum;
using HorizonCoordinate = VornCrsData::HorizonCoordinate;

constexpr std::array kGeoDatumTexts = {
    EnumText<GeoDatum>{GeoDatum::Jgd2000, u8"日本測地系2000"_cp932},
    EnumText<GeoDatum>{GeoDatum::Tokyo, u8"日本測地系"_cp932},
    EnumText<GeoDatum>{GeoDatum::World, u8"世界測地系"_cp932},
    EnumText<GeoDatum>{GeoDatum::Jgd2011, u8"日本測地系2011"_cp932},
};

constexpr std::array kGeoDatumCodes = {
    EnumText<GeoDatum>{GeoDatum::Jgd2000, "JGD2000"},
    EnumText<GeoDatum>{GeoDatum::Tokyo, "TD"},
    EnumText<GeoDatum>{GeoDatum::World, ""},  // intended: an empty code in a document stands for this datum
    EnumText<GeoDatum>{GeoDatum::Jgd2011, "JGD2011"},
};

constexpr std::array kHorizonCoordinateTexts = {
    EnumText<HorizonCoordinate>{HorizonCoordinate::Plane1, u8"平面直角座標系第Ⅰ系"_cp932},
    EnumText<HorizonCoordinate>{HorizonCoordinate::Plane2, u8"平面直角座標系第Ⅱ系"_cp932},
    EnumText<HorizonCoordinate>{HorizonCoordinate::Plane3, u8"平面直角座標系第Ⅲ系"_cp932},
    EnumText<HorizonCoordinate>{HorizonCoordinate::Plane4, u8"平面直角座標系第Ⅳ系"_cp932},
    EnumText<HorizonCoordinate>{HorizonCoordinate::Plane5, u8"平面直角座標系第Ⅴ系"_cp932},
    EnumText<HorizonCoordinate>{HorizonCoordinate::Plane6, u8"平面直角座標系第Ⅵ系"_cp932},
    EnumText<HorizonCoordinate>{HorizonCoordinate::Plane7, u8"平面直角座標系第Ⅶ系"_cp932},
    EnumText<HorizonCoordinate>{HorizonCoordinate::Plane8, u8"平面直角座標系第Ⅷ系"_cp932},
    EnumText<HorizonCoordinate>{HorizonCoordinate::Plane9, u8"平面直角座標系第Ⅸ系"_cp932},
    EnumText<HorizonCoordinate>{HorizonCoordinate::Plane10, u8"平面直角座標系第Ⅹ系"_cp932},
    EnumText<HorizonCoordinate>{HorizonCoordinate::Plane11, u8"平面直角座標系第ⅩⅠ系"_cp932},
    EnumText<HorizonCoordinate>{HorizonCoordinate::Plane12, u8"平面直角座標系第ⅩⅡ系"_cp932},
    EnumText<HorizonCoordinate>{HorizonCoordinate::Plane13, u8"平面直角座標系第ⅩⅢ系"_cp932},
    EnumText<HorizonCoordinate>{HorizonCoordinate::Plane14, u8"平面直角座標系第ⅩⅣ系"_cp932},
    EnumText<HorizonCoordinate>{HorizonCoordinate::Plane15, u8"平面直角座標系第ⅩⅤ系"_cp932},
    EnumText<HorizonCoordinate>{HorizonCoordinate::Plane16, u8"平面直角座標系第ⅩⅥ系"_cp932},
    EnumText<HorizonCoordinate>{HorizonCoordinate::Plane17, u8"平面直角座標系第ⅩⅦ系"_cp932},
    EnumText<HorizonCoordinate>{HorizonCoordinate::Plane18, u8"平面直角座標系第ⅩⅧ系"_cp932},
    EnumText<HorizonCoordinate>{HorizonCoordinate::Plane19, u8"平面直角座標系第ⅩⅨ系"_cp932},
    // Opened by a full-width parenthesis and closed by a half-width one, as it has always been displayed.
    EnumText<HorizonCoordinate>{HorizonCoordinate::Geodetic, u8"測地座標系（緯度・経度)"_cp932},
};

constexpr std::array kCoordinateSystemCodes = {
    EnumText<HorizonCoordinate>{HorizonCoordinate::Plane1, "1(X,Y)"},
    EnumText<HorizonCoordinate>{HorizonCoordinate::Plane2, "2(X,Y)"},
    EnumText<HorizonCoordinate>{HorizonCoordinate::Plane3, "3(X,Y)"},
    EnumText<HorizonCoordinate>{HorizonCoordinate::Plane4, "4(X,Y)"},
    EnumText<HorizonCoordinate>{HorizonCoordinate::Plane5, "5(X,Y)"},
    EnumText<HorizonCoordinate>{HorizonCoordinate::Plane6, "6(X,Y)"},
    EnumText<HorizonCoordinate>{HorizonCoordinate::Plane7, "7(X,Y)"},
    EnumText<HorizonCoordinate>{HorizonCoordinate::Plane8, "8(X,Y)"},
    EnumText<HorizonCoordinate>{HorizonCoordinate::Plane9, "9(X,Y)"},
    EnumText<HorizonCoordinate>{HorizonCoordinate::Plane10, "10(X,Y)"},
    EnumText<HorizonCoordinate>{HorizonCoordinate::Plane11, "11(X,Y)"},
    EnumText<HorizonCoordinate>{HorizonCoordinate::Plane12, "12(X,Y)"},
    EnumText<HorizonCoordinate>{HorizonCoordinate::Plane13, "13(X,Y)"},
    EnumText<HorizonCoordinate>{HorizonCoordinate::Plane14, "14(X,Y)"},
    EnumText<HorizonCoordinate>{HorizonCoordinate::Plane15, "15(X,Y)"},
    EnumText<HorizonCoordinate>{HorizonCoordinate::Plane16, "16(X,Y)"},
    EnumText<HorizonCoordinate>{HorizonCoordinate::Plane17, "17(X,Y)"},
    EnumText<HorizonCoordinate>{HorizonCoordinate::Plane18, "18(X,Y)"},
    EnumText<HorizonCoordinate>{HorizonCoordinate::Plane19, "19(X,Y)"},
};

}  // namespace

CString VornCrsData::GetGeoDatumStr(GeoDatum datum) { return EnumToText(kGeoDatumTexts, datum); }

CString VornCrsData::HorizonCoordStr(HorizonCoordinate coordinate) {
  return EnumToText(kHorizonCoordinateTexts, coordinate);
}

CString VornCrsData::HorizontalDatum(GeoDatum datum) const { return EnumToText(kGeoDatumCodes, datum); }

bool VornCrsData::HorizontalDatum(std::string_view code) { return SetIfKnown(kGeoDatumCodes, code, m_geoDatum); }

CString VornCrsData::CoordinateSystem(HorizonCoordinate coordinate) const {
  return EnumToText(kCoordinateSystemCodes, coordinate);
}

bool VornCrsData::CoordinateSystem(std::string_view code) {
  return SetIfKnown(kCoordinateSystemCodes, code, m_horizonCoordinate);
}

bool VornCrsData::Compare(const VornCrsData& other) const {
  return m_name == other.m_name && m_geoDatum == other.m_geoDatum && m_verticalDatum == other.m_verticalDatum &&
         TamIsTinyLength(m_verticalHeight - other.m_verticalHeight) &&
         m_horizonCoordinate == other.m_horizonCoordinate && m_auxCode == other.m_auxCode &&
         m_auxText == other.m_auxText;
}
