#include "fuzz/document_holdings.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>
#include <utility>

#include "fuzz/carried_holdings.h"
#include "host/document/carried_item.h"
#include "host/document/element_knowledge.h"
#include "host/document/written_forms.h"
#include "vorn/framework/numerical_precision.h"

namespace vorn_fuzz {

namespace {

using vorn_host::DesignDocument;
using vorn_host::TextEncoding;
using Holdings = std::vector<std::string>;

constexpr std::string_view kTrue = "true";
constexpr std::string_view kFalse = "false";

std::string_view TextOf(bool value) { return value ? kTrue : kFalse; }

/// A distance with the decimals that documents give it.
std::string TextOf(const NurReal& distance) {
  if (!distance.IsSet()) return "none";
  const NurMrm places(VornNumericalPrecision::GetInstance().GetDecimalPlaceDist());
  return std::string(places.Format(distance.Value()).View());
}

std::string TextOf(const COleDateTime& date) {
  if (date.GetStatus() != COleDateTime::valid) return "none";
  return std::string(date.Format("%Y-%m-%dT%H:%M:%S").View());
}

/// An item: the element's tag, and what is said of it.
std::string Item(std::string_view tag, std::initializer_list<std::string_view> values) {
  std::string item(tag);
  for (const std::string_view value : values) {
    item += " \"";
    item += value;
    item += '"';
  }
  return item;
}

/// The note is written with a change date only.
std::string ItemOf(const VornFileInfo& info) {
  const bool changed = info.GetChangeDate().GetStatus() != COleDateTime::null;
  return Item("tsf:FileInfo", {TextOf(info.GetCreateDate()), TextOf(info.GetChangeDate()),
                               changed ? info.GetNote().View() : std::string_view()});
}

std::string ItemOf(const VornStructureType& type) {
  return Item("tsf:StructureType", {type.GetTypeStr().View(), type.GetJobName().View(), type.GetCompany().View(),
                                    type.GetStationType().View()});
}

/// How the values are read is said in a way of each edition's own, and not of the centre point of edition 2.0.
std::string ItemOf(const VornComposedPnt& point, bool edition20) {
  const int reading =
      edition20 ? static_cast<int>(point.IsCenter() ? VornComposedPnt::SlopeType::Unset : point.GetSlopeType())
                : static_cast<int>(point.GetDataType());
  const CString component =
      point.IsCenter() ? CString() : VornComposedPnt::GetComponentTypeStr(point.GetComponentType());
  return Item("tsf:ComposedPnt",
              {point.GetCode().View(), VornComposedPnt::GetLocationStr(point.GetLocation()).View(), component.View(),
               TextOf(point.GetSeriesPnt()), VornComposedPnt::GetExistenceString(point.GetExistence()).View(),
               std::to_string(reading), point.GetTextData().View()});
}

std::string ItemOf(const VornFormCtrlTarget& target, bool edition20) {
  return Item("tsf:FormCtrlTarget", {target.GetControlItemString().View(), target.GetTargetScope().View(),
                                     target.GetTargetRegio().View(), target.GetTargetPntTypeString().View(),
                                     edition20 ? target.GetWorkTypeString().View() : std::string_view(),
                                     edition20 ? target.GetCodeName().View() : std::string_view()});
}

std::string ItemOf(const VornFormCtrlTargetPnt& point) {
  return Item("tsf:FormCtrlTargetPnt", {TextOf(point.GetCumulativeDist()), TextOf(point.GetXSectChg()),
                                        point.GetBuildFormName().View(), point.GetCode().View()});
}

std::string ItemOf(const VornXSection& section, bool edition20) {
  if (edition20) {
    return Item("tsf:XSection",
                {TextOf(section.GetCumulativeDist()), TextOf(section.GetXSectChg()), TextOf(section.GetControlSect())});
  }
  return Item("tsf:XSection",
              {TextOf(section.GetCumulativeDist()), TextOf(section.GetXSectChg()), TextOf(section.GetControlSect()),
               section.GetName().View(), section.GetDirectionAngle().View(), section.GetTargetPntID().View()});
}

std::string ItemOf(const VornXSections& set, bool edition20) {
  if (edition20) return Item("tsf:XSections", {set.GetRefAlign().View(), set.GetRefVertical().View()});
  return Item("tsf:XSections", {set.GetRefAlign().View(), set.GetRefVertical().View(), TextOf(set.GetAlignment()),
                                set.GetProjectPhase().View()});
}

/// Goes through a design as its document has it, and tells each element and what is carried over in it.
class Teller {
 public:
  Teller(const DesignDocument& document, TextEncoding encoding)
      : m_edition20(IsEdition20(document.edition)), m_carried(document, encoding), m_holdings(m_carried.OfRoot()) {}

  void Tell(const DesignDocument& document) {
    if (!m_edition20) {
      int index = 0;
      for (const VornFileInfo& info : document.fileInfos) Tell(vorn_host::kFileInfoTag, index++, ItemOf(info));
      if (document.hasStructureType) Tell(vorn_host::kStructureTypeTag, 0, ItemOf(document.structureType));
    }
    int index = 0;
    for (const VornXSections& set : document.sets) TellSet(set, index++);
  }

  [[nodiscard]] Holdings Take() { return std::move(m_holdings); }
  /// How many carried items have had no place.
  [[nodiscard]] int CountLeft() const { return m_carried.CountLeft(); }

 private:
  /// An element with what it holds.
  /// @param index among the elements of the same tag and parent in the model
  template <typename TellBelow>
  void Tell(std::string_view tag, int index, std::string item, TellBelow&& tellBelow) {
    m_path.push_back({tag, index});
    m_holdings.push_back(std::move(item));
    const Holdings carried = m_carried.Take(m_path);
    m_holdings.insert(m_holdings.end(), carried.begin(), carried.end());
    tellBelow();
    m_path.pop_back();
  }
  void Tell(std::string_view tag, int index, std::string item) {
    Tell(tag, index, std::move(item), [] {});
  }

  void TellSet(const VornXSections& set, int index) {
    Tell(vorn_host::kXSectionsTag, index, ItemOf(set, m_edition20), [&] {
      int section = 0;
      for (const VornXSection& one : set.GetXSectionArray()) TellSection(one, section++);
      if (!m_edition20) TellGatheredTargets(set);
    });
  }

  void TellSection(const VornXSection& section, int index) {
    Tell(vorn_host::kXSectionTag, index, ItemOf(section, m_edition20), [&] {
      int form = 0;
      for (const VornBuildForm& one : section.GetBuildFormArray()) TellForm(one, form++);
      if (m_edition20 || section.GetExistingFlag() == 0) return;
      int ground = 0;
      for (const VornExistingBuildForm& one : section.GetExistingBuildFormArray()) TellGround(one, ground++);
    });
  }

  void TellForm(const VornBuildForm& form, int index) {
    if (!vorn_host::IsWritten(form, m_edition20)) return;
    const std::string_view sectionType = m_edition20 ? std::string_view() : form.GetXSectType().View();
    Tell(vorn_host::kBuildFormTag, index, Item("tsf:BuildForm", {form.GetName().View(), sectionType}), [&] {
      int point = 0;
      for (const VornComposedPnt& one : form.GetComposedPntArray()) {
        Tell(vorn_host::kComposedPntTag, point++, ItemOf(one, m_edition20));
      }
      int target = 0;
      if (m_edition20) TellTargets(form.GetFormCtrlTargetArray(), target);
    });
  }

  void TellGround(const VornExistingBuildForm& ground, int index) {
    if (!vorn_host::IsWritten(ground)) return;
    Tell(vorn_host::kExistingBuildFormTag, index, Item("tsf:ExistingBuildForm", {ground.GetName().View()}), [&] {
      int point = 0;
      for (const VornExistingComposedPnt& one : ground.GetComposedPntArray()) {
        Tell(vorn_host::kExistingComposedPntTag, point++,
             Item("tsf:ExistingComposedPnt", {one.GetName().View(), TextOf(one.GetCLDist()), TextOf(one.GetGh())}));
      }
    });
  }

  /// Later editions have the targets of the forms behind those of the set, even where a form itself is not written.
  void TellGatheredTargets(const VornXSections& set) {
    int target = 0;
    TellTargets(set.GetFormCtrlTargetArray(), target);
    for (const VornXSection& section : set.GetXSectionArray()) {
      for (const VornBuildForm& form : section.GetBuildFormArray()) TellTargets(form.GetFormCtrlTargetArray(), target);
    }
  }

  /// @param index of the next target
  void TellTargets(const Vorn_FormCtrlTargetArray& targets, int& index) {
    for (const VornFormCtrlTarget& target : targets) {
      if (target.GetExport() == 0 && !m_edition20) continue;
      Tell(vorn_host::kFormCtrlTargetTag, index++, ItemOf(target, m_edition20), [&] {
        if (m_edition20) return;
        int point = 0;
        for (const VornFormCtrlTargetPnt& one : target.GetTargetPntArray()) {
          Tell(vorn_host::kFormCtrlTargetPntTag, point++, ItemOf(one));
        }
      });
    }
  }

  bool m_edition20;
  CarriedHoldings m_carried;
  Holdings m_holdings;
  vorn_host::ElementPath m_path;
};

}  // namespace

DocumentHoldings HoldingsOf(const DesignDocument& document, TextEncoding encoding) {
  const vorn_host::EditionScope scope(document.edition);
  Teller teller(document, encoding);
  teller.Tell(document);
  return {teller.Take(), teller.CountLeft()};
}

std::string FirstDifference(const Holdings& held, const Holdings& again) {
  const auto [lost, instead] = std::mismatch(held.begin(), held.end(), again.begin(), again.end());
  if (lost == held.end() && instead == again.end()) return {};
  return (lost == held.end() ? "nothing" : *lost) + " became " + (instead == again.end() ? "nothing" : *instead);
}

}  // namespace vorn_fuzz
