#include "fuzz/document_holdings.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>

#include "host/document/written_forms.h"
#include "vorn/framework/numerical_precision.h"

namespace vorn_fuzz {

namespace {

using vorn_host::DesignDocument;
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

void AddTargets(const Vorn_FormCtrlTargetArray& targets, bool edition20, Holdings& holdings) {
  for (const VornFormCtrlTarget& target : targets) {
    if (target.GetExport() == 0 && !edition20) continue;
    holdings.push_back(ItemOf(target, edition20));
    if (edition20) continue;
    for (const VornFormCtrlTargetPnt& point : target.GetTargetPntArray()) holdings.push_back(ItemOf(point));
  }
}

void AddForm(const VornBuildForm& form, bool edition20, Holdings& holdings) {
  if (!vorn_host::IsWritten(form, edition20)) return;
  holdings.push_back(
      Item("tsf:BuildForm", {form.GetName().View(), edition20 ? std::string_view() : form.GetXSectType().View()}));
  for (const VornComposedPnt& point : form.GetComposedPntArray()) holdings.push_back(ItemOf(point, edition20));
  if (edition20) AddTargets(form.GetFormCtrlTargetArray(), edition20, holdings);
}

/// Later editions have the targets of the forms behind those of the set, even where a form itself is not written.
void AddGatheredTargets(const VornXSections& set, Holdings& holdings) {
  AddTargets(set.GetFormCtrlTargetArray(), false, holdings);
  for (const VornXSection& section : set.GetXSectionArray()) {
    for (const VornBuildForm& form : section.GetBuildFormArray()) {
      AddTargets(form.GetFormCtrlTargetArray(), false, holdings);
    }
  }
}

void AddGround(const VornExistingBuildForm& ground, Holdings& holdings) {
  if (!vorn_host::IsWritten(ground)) return;
  holdings.push_back(Item("tsf:ExistingBuildForm", {ground.GetName().View()}));
  for (const VornExistingComposedPnt& point : ground.GetComposedPntArray()) {
    holdings.push_back(
        Item("tsf:ExistingComposedPnt", {point.GetName().View(), TextOf(point.GetCLDist()), TextOf(point.GetGh())}));
  }
}

void AddSection(const VornXSection& section, bool edition20, Holdings& holdings) {
  holdings.push_back(ItemOf(section, edition20));
  for (const VornBuildForm& form : section.GetBuildFormArray()) AddForm(form, edition20, holdings);
  if (edition20 || section.GetExistingFlag() == 0) return;
  for (const VornExistingBuildForm& ground : section.GetExistingBuildFormArray()) AddGround(ground, holdings);
}

}  // namespace

Holdings HoldingsOf(const DesignDocument& document) {
  const vorn_host::EditionScope scope(document.edition);
  const bool edition20 = IsEdition20(document.edition);
  Holdings holdings;
  if (!edition20) {
    for (const VornFileInfo& info : document.fileInfos) holdings.push_back(ItemOf(info));
    if (document.hasStructureType) holdings.push_back(ItemOf(document.structureType));
  }
  for (const VornXSections& set : document.sets) {
    holdings.push_back(ItemOf(set, edition20));
    for (const VornXSection& section : set.GetXSectionArray()) AddSection(section, edition20, holdings);
    if (!edition20) AddGatheredTargets(set, holdings);
  }
  return holdings;
}

int CarriedItems(const std::vector<vorn_host::CarriedContent::Row>& rows) {
  int count = 0;
  for (const vorn_host::CarriedContent::Row& row : rows) count += row.count;
  return count;
}

std::string FirstDifference(const Holdings& held, const Holdings& again) {
  const auto [lost, instead] = std::mismatch(held.begin(), held.end(), again.begin(), again.end());
  if (lost == held.end() && instead == again.end()) return {};
  return (lost == held.end() ? "nothing" : *lost) + " became " + (instead == again.end() ? "nothing" : *instead);
}

}  // namespace vorn_fuzz
