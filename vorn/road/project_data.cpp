#include "vorn/road/project_data.h"

#include <array>

#include "vorn/framework/enum_table.h"
#include "vorn/platform/code_page_932.h"

namespace {

using ProjPhase = VornProjectData::ProjPhase;

constexpr std::array kProjPhases = {
    EnumText<ProjPhase>{ProjPhase::Outline, u8"概略"_cp932},
    EnumText<ProjPhase>{ProjPhase::Preliminary, u8"予備"_cp932},
    EnumText<ProjPhase>{ProjPhase::Detailed, u8"詳細"_cp932},
    EnumText<ProjPhase>{ProjPhase::Construction, u8"施工"_cp932},
};

}  // namespace

CString VornProjectData::GetProjPhaseStr(ProjPhase phase) { return EnumToText(kProjPhases, phase); }
