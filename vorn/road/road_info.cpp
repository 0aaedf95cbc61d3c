#include "vorn/road/road_info.h"

#include <algorithm>
#include <array>

#include "vorn/framework/enum_table.h"
#include "vorn/platform/code_page_932.h"

namespace {

using Classificat = VornRoadInfo::Classificat;
using ClassRiver = VornRoadInfo::ClassRiver;
using DesignSpeed = VornRoadInfo::DesignSpeed;

constexpr std::array kClassificats = {
    EnumText<Classificat>{Classificat::Type1Class1, u8"第1種第1級"_cp932},
    EnumText<Classificat>{Classificat::Type1Class2, u8"第1種第2級"_cp932},
    EnumText<Classificat>{Classificat::Type1Class3, u8"第1種第3級"_cp932},
    EnumText<Classificat>{Classificat::Type1Class4, u8"第1種第4級"_cp932},
    EnumText<Classificat>{Classificat::Type2Class1, u8"第2種第1級"_cp932},
    EnumText<Classificat>{Classificat::Type2Class2, u8"第2種第2級"_cp932},
    EnumText<Classificat>{Classificat::Type3Class1, u8"第3種第1級"_cp932},
    EnumText<Classificat>{Classificat::Type3Class2, u8"第3種第2級"_cp932},
    EnumText<Classificat>{Classificat::Type3Class3, u8"第3種第3級"_cp932},
    EnumText<Classificat>{Classificat::Type3Class4, u8"第3種第4級"_cp932},
    EnumText<Classificat>{Classificat::Type3Class5, u8"第3種第5級"_cp932},
    EnumText<Classificat>{Classificat::Type4Class1, u8"第4種第1級"_cp932},
    EnumText<Classificat>{Classificat::Type4Class2, u8"第4種第2級"_cp932},
    EnumText<Classificat>{Classificat::Type4Class3, u8"第4種第3級"_cp932},
    EnumText<Classificat>{Classificat::Type4Class4, u8"第4種第4級"_cp932},
};

constexpr std::array kRiverClasses = {
    EnumText<ClassRiver>{ClassRiver::Class1, u8"1級"_cp932},
    EnumText<ClassRiver>{ClassRiver::Class2, u8"2級"_cp932},
    EnumText<ClassRiver>{ClassRiver::None, ""},
};

struct SpeedOfDesign {
  DesignSpeed speed;
  std::int32_t kmh;
};
constexpr std::array kDesignSpeeds = {
    SpeedOfDesign{DesignSpeed::Kmh120, 120}, SpeedOfDesign{DesignSpeed::Kmh100, 100},
    SpeedOfDesign{DesignSpeed::Kmh80, 80},   SpeedOfDesign{DesignSpeed::Kmh60, 60},
    SpeedOfDesign{DesignSpeed::Kmh50, 50},   SpeedOfDesign{DesignSpeed::Kmh40, 40},
    SpeedOfDesign{DesignSpeed::Kmh30, 30},   SpeedOfDesign{DesignSpeed::Kmh20, 20},
};

}  // namespace

CString VornRoadInfo::GetClassificatRoad(Classificat classificat) { return EnumToText(kClassificats, classificat); }
CString VornRoadInfo::GetClassificatRiver(ClassRiver classRiver) { return EnumToText(kRiverClasses, classRiver); }

bool VornRoadInfo::SetClassificatRoad(std::string_view text) { return SetIfKnown(kClassificats, text, m_classificat); }
bool VornRoadInfo::SetClassificatRiver(std::string_view text) { return SetIfKnown(kRiverClasses, text, m_classRiver); }

CString VornRoadInfo::Class(VornStructureType::Type type) const {
  return VornIsRiver(type, true) ? GetClassificatRiver() : GetClassificatRoad();
}

std::int32_t VornRoadInfo::GetSpeed(DesignSpeed speed) {
  const auto row = std::find_if(kDesignSpeeds.begin(), kDesignSpeeds.end(),
                                [speed](const SpeedOfDesign& known) { return known.speed == speed; });
  return row == kDesignSpeeds.end() ? -1 : row->kmh;
}

bool VornRoadInfo::SetSpeed(std::int32_t kmh) {
  const auto row = std::find_if(kDesignSpeeds.begin(), kDesignSpeeds.end(),
                                [kmh](const SpeedOfDesign& known) { return known.kmh == kmh; });
  if (row == kDesignSpeeds.end()) return false;
  m_designSpeed = row->speed;
  return true;
}

void VornRoadInfo::SetDesignInfo(const VornRoadInfo& src) {
  m_classificat = src.m_classificat;
  m_classRiver = src.m_classRiver;
  m_designSpeed = src.m_designSpeed;
  m_traffic = src.m_traffic;
  m_side = src.m_side;
  m_singleLane = src.m_singleLane;
}

bool VornRoadInfo::IsInit() const {
  return m_name.IsEmpty() && m_classificat == Classificat::Unset && m_designSpeed == DesignSpeed::Unset &&
         m_traffic == 1;
}
