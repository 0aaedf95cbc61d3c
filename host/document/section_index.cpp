#include "host/document/section_index.h"

#include <algorithm>
#include <cmath>

#include "host/document/design_path.h"
#include "host/document/text_encoding.h"
#include "vorn/framework/tolerance.h"

namespace vorn_host {

SectionIndex::SectionIndex(const VornXSections& set) : m_sections(set.GetXSectionArray()) {
  m_byStation.reserve(static_cast<std::size_t>(m_sections.GetSize()));
  for (int i = 0; i < m_sections.GetSize(); ++i) {
    const NurReal& station = m_sections[i].GetCumulativeDist();
    if (station.IsSet()) {
      m_byStation.emplace_back(station.Value(), i);
    } else {
      m_withoutStation.push_back(i);
    }
  }
  std::sort(m_byStation.begin(), m_byStation.end());
}

int SectionIndex::Find(const NurReal& station, bool xSectChg) const {
  if (!station.IsSet()) {
    const auto first = std::find_if(m_withoutStation.begin(), m_withoutStation.end(),
                                    [&](int section) { return IsBehindChange(section) == xSectChg; });
    return first == m_withoutStation.end() ? -1 : *first;
  }
  const double wanted = station.Value();
  int found = -1;
  auto entry = std::lower_bound(m_byStation.begin(), m_byStation.end(), std::pair(wanted - 2 * kSameStation, 0));
  for (; entry != m_byStation.end() && entry->first < wanted + 2 * kSameStation; ++entry) {
    const bool hit = IsSameStation(entry->first, wanted) && IsBehindChange(entry->second) == xSectChg;
    if (hit && (found < 0 || entry->second < found)) found = entry->second;
  }
  return found;
}

Standing FindStanding(const VornFormCtrlTargetPnt& point, const VornXSections& set, const SectionIndex& sections) {
  const std::string station = StationPath(point.GetCumulativeDist(), point.GetXSectChg());
  const int section = sections.Find(point.GetCumulativeDist(), point.GetXSectChg());
  if (section < 0) return {-1, -1, "there is no cross section at " + station};
  const int form = set.GetXSectionArray()[section].Find(point.GetBuildFormName(), nullptr);
  if (form >= 0) return {section, form, {}};
  return {section, -1, "there is no form " + ToUtf8(point.GetBuildFormName().View()) + " at " + station};
}

}  // namespace vorn_host
