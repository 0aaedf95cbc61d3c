#include "host/cli/section_choice.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <limits>

#include "host/document/design_path.h"
#include "host/document/document_error.h"
#include "host/document/text_encoding.h"
#include "host/drawing/value_text.h"

namespace vorn_cli {

namespace {

using vorn_host::DocumentError;
using vorn_host::SectionViewer;

constexpr std::size_t kMostNamed = 4;

class Chooser {
 public:
  Chooser(const vorn_host::DesignDocument& document, const SectionViewer& viewer, const SectionChoice& choice,
          const std::string& file)
      : m_document(document), m_viewer(viewer), m_choice(choice), m_file(file) {}

  [[nodiscard]] std::vector<SectionPick> Pick() const {
    RequireSet();
    const std::vector<SectionPick> all = All();
    if (all.empty()) Fail("there is no cross section");
    const bool isTold = !m_choice.station.empty() || !m_choice.name.empty() || m_choice.index > 0;
    if (!isTold && all.size() > 1) {
      Fail("there are " + std::to_string(all.size()) + " cross sections: choose one with --station, --name or --index");
    }
    std::vector<SectionPick> picked;
    std::copy_if(all.begin(), all.end(), std::back_inserter(picked), [&](const auto& pick) { return IsMeant(pick); });
    if (picked.empty()) FailForNone(all);
    if (!AreAtOneStation(picked)) {
      Fail(Wanted() + " could be " + Listed(picked) + ": choose one with --set, --index or --station");
    }
    return picked;
  }

 private:
  [[noreturn]] void Fail(const std::string& why) const { throw DocumentError(m_file + ": " + why); }

  [[nodiscard]] const VornXSection& SectionOf(const SectionPick& pick) const {
    return m_document.sets[pick.set].GetXSectionArray()[pick.section];
  }

  void RequireSet() const {
    const int sets = m_document.sets.GetSize();
    if (m_choice.set <= sets) return;
    Fail("there is no set " + std::to_string(m_choice.set) + "; the last one is set " + std::to_string(sets));
  }

  [[nodiscard]] std::vector<SectionPick> All() const {
    std::vector<SectionPick> all;
    for (int set = 0; set < m_document.sets.GetSize(); ++set) {
      if (m_choice.set > 0 && set != m_choice.set - 1) continue;
      for (int i = 0; i < m_document.sets[set].GetXSectionArray().GetSize(); ++i) all.push_back({set, i});
    }
    return all;
  }

  /// How far a section is from the station that was told; none where the text is no station of its set.
  [[nodiscard]] std::optional<double> DistanceTo(const SectionPick& pick) const {
    const std::optional<double> station = m_viewer.StationOf(pick.set, m_choice.station);
    if (!station || !SectionOf(pick).GetCumulativeDist().IsSet()) return std::nullopt;
    return std::abs(SectionOf(pick).GetCumulativeDist().Value() - *station);
  }

  [[nodiscard]] bool IsMeant(const SectionPick& pick) const {
    if (m_choice.index > 0 && pick.section != m_choice.index - 1) return false;
    if (!m_choice.name.empty() && vorn_host::ToUtf8(SectionOf(pick).GetName()) != m_choice.name) return false;
    return m_choice.station.empty() ||
           DistanceTo(pick).value_or(std::numeric_limits<double>::infinity()) < vorn_host::kSamePlace;
  }

  [[nodiscard]] bool AreAtOneStation(const std::vector<SectionPick>& picked) const {
    return std::all_of(picked.begin(), picked.end(), [&](const SectionPick& pick) {
      const NurReal& first = SectionOf(picked.front()).GetCumulativeDist();
      return pick.set == picked.front().set &&
             std::abs(SectionOf(pick).GetCumulativeDist().Value() - first.Value()) < vorn_host::kSamePlace;
    });
  }

  [[nodiscard]] std::string Wanted() const {
    std::string text;
    const auto add = [&](const std::string& part) { text += (text.empty() ? "" : " with ") + part; };
    if (!m_choice.station.empty()) add("station " + m_choice.station);
    if (!m_choice.name.empty()) add("name " + m_choice.name);
    if (m_choice.index > 0) add("index " + std::to_string(m_choice.index));
    return text;
  }

  /// "station 120.0000 (No.6)", with its set where there are several.
  [[nodiscard]] std::string Place(const SectionPick& pick) const {
    const std::string set = vorn_host::SetPath(m_document.sets[pick.set], pick.set);
    std::string path = vorn_host::SectionPath(set, SectionOf(pick));
    if (m_document.sets.GetSize() == 1) path = path.substr(set.size() + std::string(" > ").size());
    return path;
  }

  [[nodiscard]] std::string Listed(const std::vector<SectionPick>& picks) const {
    std::string text;
    for (std::size_t i = 0; i < std::min(picks.size(), kMostNamed); ++i) text += (i > 0 ? ", " : "") + Place(picks[i]);
    if (picks.size() > kMostNamed) text += " and " + std::to_string(picks.size() - kMostNamed) + " more";
    return text;
  }

  /// ", or as the document counts (STA.1+0.0000)", with a station of its own; nothing where it counts in metres.
  [[nodiscard]] std::string OwnCounting(const SectionPick& pick) const {
    const std::string station = m_viewer.Of(pick.set, pick.section).stationText;
    return station.find('+') == std::string::npos ? "" : ", or as the document counts (" + station + ")";
  }

  [[noreturn]] void FailForNone(std::vector<SectionPick> all) const {
    const std::string why = "there is no cross section with " + Wanted();
    if (m_choice.station.empty()) Fail(why);
    const SectionPick first = all.front();
    std::erase_if(all, [&](const SectionPick& pick) { return !DistanceTo(pick); });
    if (all.empty()) Fail(why + ": a station is told in metres" + OwnCounting(first));
    std::stable_sort(all.begin(), all.end(),
                     [&](const auto& a, const auto& b) { return *DistanceTo(a) < *DistanceTo(b); });
    all.resize(std::min(all.size(), kMostNamed));
    Fail(why + "; the nearest: " + Listed(all));
  }

  const vorn_host::DesignDocument& m_document;
  const SectionViewer& m_viewer;
  const SectionChoice& m_choice;
  const std::string& m_file;
};

}  // namespace

std::vector<SectionPick> PickSections(const vorn_host::DesignDocument& document, const SectionViewer& viewer,
                                      const SectionChoice& choice, const std::string& file) {
  return Chooser(document, viewer, choice, file).Pick();
}

}  // namespace vorn_cli
