#include "host/drawing/view_targets.h"

#include <cmath>
#include <string>
#include <utility>

#include "host/document/design_path.h"
#include "host/document/target_codes.h"
#include "host/document/text_encoding.h"
#include "host/drawing/value_text.h"
#include "vorn/framework/tolerance.h"

namespace vorn_host {

namespace {

using ControlItem = VornFormCtrlTarget::ControlItem;

ViewTarget::Item ItemOf(ControlItem item) {
  using Item = ViewTarget::Item;
  switch (item) {
    case ControlItem::SlopeLength:
      return Item::SlopeLength;
    case ControlItem::Width:
      return Item::Width;
    case ControlItem::Height:
      return Item::Height;
    case ControlItem::Thickness:
      return Item::Thickness;
    case ControlItem::Depth:
      return Item::Depth;
    case ControlItem::XSectArea:
      return Item::SectionArea;
    case ControlItem::Length:
      return Item::Length;
    case ControlItem::Area:
      return Item::Area;
    case ControlItem::Unset:
      break;
  }
  return Item::Other;
}

/// Where a point stands that is not in the section shown.
ViewTarget::Elsewhere ElsewhereOf(const VornFormCtrlTargetPnt& point) {
  const NurReal& station = point.GetCumulativeDist();
  if (!station.IsSet()) return {std::nullopt, {}, point.GetXSectChg()};
  return {station.Value(), StationText(station), point.GetXSectChg()};
}

double Distance(const SectionPlace& from, const SectionPlace& to) {
  return std::hypot(to.offset - from.offset, to.height - from.height);
}

/// Along the line of a form from one of its points to another; straight where no line connects them.
double LengthAlong(const ViewForm& form, int from, int to) {
  const auto placeOf = [&](int index) { return form.points[static_cast<std::size_t>(index)].place; };
  const std::vector<int> path = PathBetween(form, from, to);
  double length = 0.0;
  for (std::size_t i = 1; i < path.size(); ++i) length += Distance(placeOf(path[i - 1]), placeOf(path[i]));
  return length;
}

/// Of a thickness or a depth, which is measured upright; none between points beside each other.
std::optional<double> HeightBetween(const SectionPlace& from, const SectionPlace& to) {
  if (std::abs(to.offset - from.offset) > kSamePlace) return std::nullopt;
  return std::abs(to.height - from.height);
}

void SetElevations(const SectionView& view, ViewTarget& target) {
  for (ViewTarget::Pnt& pnt : target.points) {
    if (const ViewPoint* point = PointOf(view, pnt)) pnt.designValue = point->place.height;
  }
}

/// Between the two points of whatever is measured, of the only point of a height.
std::optional<double> DesignValue(const SectionView& view, const ViewTarget& target) {
  const bool isHeight = target.item == ViewTarget::Item::Height;
  if (target.points.size() != (isHeight ? 1u : 2u)) return std::nullopt;
  const ViewTarget::Pnt& first = target.points.front();
  const ViewTarget::Pnt& last = target.points.back();
  const ViewPoint* begin = PointOf(view, first);
  const ViewPoint* end = PointOf(view, last);
  if (begin == nullptr || end == nullptr) return std::nullopt;
  const SectionPlace& from = begin->place;
  const SectionPlace& to = end->place;
  switch (target.item) {
    case ViewTarget::Item::Height:
      return from.height;
    case ViewTarget::Item::Width:
      return std::abs(to.offset - from.offset);
    case ViewTarget::Item::SlopeLength:
      return first.form == last.form ? LengthAlong(*FormOf(view, first), first.point, last.point) : Distance(from, to);
    case ViewTarget::Item::Thickness:
    case ViewTarget::Item::Depth:
      return HeightBetween(from, to);
    default:
      break;
  }
  return std::nullopt;
}

}  // namespace

TargetViewer::TargetViewer(bool edition20, const VornXSection* section, ViewIndices indices)
    : m_edition20(edition20), m_section(section), m_indices(std::move(indices)) {}

FormIndex& TargetViewer::Forms() {
  if (!m_forms) m_forms.emplace(m_section->GetBuildFormArray());
  return *m_forms;
}

void TargetViewer::Add(SectionView& view, const VornFormCtrlTarget& target, int owner) {
  ViewTarget added;
  added.itemText = target.GetControlItemString().GetString();
  added.item = ItemOf(target.GetControlItem());
  added.workType = target.GetWorkTypeString().GetString();
  added.scope = ToUtf8(target.GetTargetScope());
  added.regulation = ToUtf8(target.GetTargetRegio());
  if (owner >= 0 && m_section != nullptr) added.formName = ToUtf8(m_section->GetBuildFormArray()[owner].GetName());
  if (m_edition20 || target.GetTargetPntArray().IsEmpty()) {
    AddPointsByCode(added, target, owner);
  } else {
    AddPointsByStation(added, target);
  }
  if (added.item == ViewTarget::Item::Height) SetElevations(view, added);
  added.designValue = DesignValue(view, added);
  view.targets.push_back(std::move(added));
}

ViewTarget::Pnt TargetViewer::PntOf(int form, const CString& code, std::string name) {
  ViewTarget::Pnt pnt;
  pnt.name = std::move(name);
  if (form < 0 || m_section == nullptr) return pnt;
  const int point = Forms().FindPoint(form, code);
  if (point < 0) return pnt;
  pnt.point = m_indices.points[static_cast<std::size_t>(form)][static_cast<std::size_t>(point)];
  if (pnt.point >= 0) pnt.form = m_indices.forms[static_cast<std::size_t>(form)];
  return pnt;
}

void TargetViewer::AddPointsByCode(ViewTarget& added, const VornFormCtrlTarget& target, int owner) {
  const bool hasForm = owner >= 0 && m_section != nullptr;
  const std::string formName = hasForm ? NameText(m_section->GetBuildFormArray()[owner].GetName()) : std::string();
  for (const CString& code : CodesOf(target)) {
    if (!code.IsEmpty()) added.points.push_back(PntOf(owner, code, formName + " " + NameText(code)));
  }
}

void TargetViewer::AddPointsByStation(ViewTarget& added, const VornFormCtrlTarget& target) {
  for (const VornFormCtrlTargetPnt& point : target.GetTargetPntArray()) {
    if (added.formName.empty()) added.formName = ToUtf8(point.GetBuildFormName());
    const bool isHere = IsHere(point);
    const int form = isHere ? Forms().Find(point.GetBuildFormName(), point.GetCode()) : -1;
    added.points.push_back(
        PntOf(form, point.GetCode(), NameText(point.GetBuildFormName()) + " " + NameText(point.GetCode())));
    if (!isHere) added.points.back().elsewhere = ElsewhereOf(point);
  }
}

bool TargetViewer::IsHere(const VornFormCtrlTargetPnt& point) const {
  if (m_section == nullptr) return false;
  const NurReal& station = m_section->GetCumulativeDist();
  return point.GetCumulativeDist().IsSet() && station.IsSet() && point.GetXSectChg() == m_section->GetXSectChg() &&
         IsSameStation(point.GetCumulativeDist().Value(), station.Value());
}

}  // namespace vorn_host
