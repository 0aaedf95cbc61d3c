#include "host/document/section_index.h"

#include <algorithm>
#include <cmath>

#include "host/document/design_path.h"
#include "vorn/framework/tolerance.h"

namespace vorn_host {

std::string WhyWithoutForm(const VornFormCtrlTargetPnt& point, const Standing& standing) {
  if (standing.form >= 0) return {};
  const std::string station = StationPath(point.GetCumulativeDist(), point.GetXSectChg());
  if (standing.section < 0) return "there is no cross section at " + station;
  return "there is no form " + NameText(point.GetBuildFormName()) + " at " + station;
}

SectionIndex::SectionIndex(const VornXSections& set) : m_sections(&set.GetXSectionArray()) {
  for (int i = 0; i < m_sections->GetSize(); ++i) {
    const VornXSection& section = (*m_sections)[i];
    Side& side = m_sides[section.GetXSectChg() ? 1 : 0];
    const NurReal& station = section.GetCumulativeDist();
    if (!station.IsSet()) {
      if (side.withoutStation < 0) side.withoutStation = i;
    } else if (!std::isnan(station.Value())) {  // which no station finds
      side.byStation.emplace_back(station.Value(), i);
    }
  }
  for (auto& [byStation, withoutStation] : m_sides) {
    std::sort(byStation.begin(), byStation.end());
    const auto isSame = [](const auto& a, const auto& b) { return a.first == b.first; };
    byStation.erase(std::unique(byStation.begin(), byStation.end(), isSame), byStation.end());
  }
}

int SectionIndex::Find(const NurReal& station, bool xSectChg) const {
  const auto& [byStation, withoutStation] = m_sides[xSectChg ? 1 : 0];
  if (!station.IsSet()) return withoutStation;
  const double wanted = station.Value();
  int found = -1;
  auto entry = std::lower_bound(byStation.begin(), byStation.end(), std::pair(wanted - 2 * kSameStation, 0));
  for (; entry != byStation.end() && entry->first <= wanted + 2 * kSameStation; ++entry) {
    if (IsSameStation(entry->first, wanted) && (found < 0 || entry->second < found)) found = entry->second;
  }
  return found;
}

Standing SectionIndex::FindStanding(const VornFormCtrlTargetPnt& point) {
  Standing standing;
  standing.section = Find(point.GetCumulativeDist(), point.GetXSectChg());
  if (standing.section < 0) return standing;
  FormIndex& forms = FormsOf(standing.section);
  standing.form = forms.Find(point.GetBuildFormName(), point.GetCode());
  if (standing.form >= 0) {
    standing.point = forms.FindPoint(standing.form, point.GetCode());
  } else {
    standing.form = forms.Find(point.GetBuildFormName());
  }
  return standing;
}

FormIndex& SectionIndex::FormsOf(int section) {
  return m_forms.try_emplace(section, (*m_sections)[section].GetBuildFormArray()).first->second;
}

}  // namespace vorn_host
