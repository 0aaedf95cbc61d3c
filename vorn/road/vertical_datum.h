#pragma once

#include <array>
#include <string_view>

#include "vorn/platform/code_page_932.h"

/// A vertical reference datum in use in Japan. The texts are constant, in code page 932 and ended by a NUL.
struct VornVerticalDatum {
  std::string_view name;         ///< the body of water whose level defines the datum
  std::string_view designation;  ///< short designation, as `VornCrsData::VerticalDatum` holds it
  double height;                 ///< the datum's zero above that of Tokyo Bay ("T.P"), in metres; negative: below
};

/// The vertical datums, for hosts; nothing in the library looks them up. A designation is no key: the "A.P" of the Ara,
/// Naka and Tama Rivers comes before that of the Yoshino River, whose zero is another one.
inline constexpr std::array kVornVerticalDatums = {
    VornVerticalDatum{u8"東京湾中等潮位"_cp932, "T.P", 0.0},
    VornVerticalDatum{u8"北上川"_cp932, "K.P", -0.8745},
    VornVerticalDatum{u8"鳴瀬川"_cp932, "S.P", -0.0873},
    VornVerticalDatum{u8"利根川"_cp932, "Y.P", -0.8402},
    VornVerticalDatum{u8"荒川・中川・多摩川"_cp932, "A.P", -1.1344},
    VornVerticalDatum{u8"淀川"_cp932, "O.P", -1.3},
    VornVerticalDatum{u8"吉野川"_cp932, "A.P", -0.8333},
    VornVerticalDatum{u8"渡川"_cp932, "T.P.W", 0.113},
    VornVerticalDatum{u8"琵琶湖"_cp932, "B.S.L", 84.371},
};
