// Keeps the derived forms of a cross section, such as pavement layers, in step with the forms that they come from.

#include <algorithm>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

#include "vorn/model/build_form_array.h"
#include "vorn/platform/careful_difference.h"

namespace {

/// The forms of a section by the form that they are derived from.
class DerivedForms {
 public:
  explicit DerivedForms(const Vorn_BuildFormArray& forms) : m_forms(forms) {
    for (int i = 0; i < forms.GetSize(); ++i) m_children[forms[i].GetParentID()].push_back(i);
  }

  /// Indices of the forms derived from the form with that serial, in array order.
  [[nodiscard]] const std::vector<int>& Of(std::uint32_t serialID) const {
    static const std::vector<int> none;
    const auto found = m_children.find(serialID);
    return found == m_children.end() ? none : found->second;
  }

  /// The first form behind index that is derived from the form at index; -1 when there is none.
  [[nodiscard]] int FirstChild(int index) const {
    const std::vector<int>& children = Of(m_forms[index].GetSerialID());
    const auto found = std::upper_bound(children.begin(), children.end(), index);
    return found == children.end() ? -1 : *found;
  }

 private:
  const Vorn_BuildFormArray& m_forms;
  std::unordered_map<std::uint32_t, std::vector<int>> m_children;
};

/// The points of a form by serial, the first of each.
class PointsBySerial {
 public:
  explicit PointsBySerial(const Vorn_ComposedPntArray& points) : m_points(points) {
    m_index.reserve(static_cast<std::size_t>(points.GetSize()));
    for (int i = 0; i < points.GetSize(); ++i) m_index.try_emplace(points[i].GetSerialID(), i);
  }

  /// Null when there is none.
  [[nodiscard]] const VornComposedPnt* Find(std::uint32_t serialID) const {
    const auto found = m_index.find(serialID);
    return found == m_index.end() ? nullptr : &m_points[found->second];
  }

 private:
  const Vorn_ComposedPntArray& m_points;
  std::unordered_map<std::uint32_t, int> m_index;
};

/// Indices of a form's points from left to right, the outermost two left out: those do not hang on the parent form. A
/// point without a side is left out too, and the start point stands in for it: intended.
std::vector<int> InnerPoints(const Vorn_ComposedPntArray& points) {
  VornIndexArray order;
  points.QueryIndexArrayLtoR(order);
  if (order.GetSize() < 3) return {};
  return {order.begin() + 1, order.end() - 1};
}

/// What a form gets for a new point of the form above it, on which it hangs.
VornComposedPnt DerivedPoint(const VornComposedPnt& above) {
  VornComposedPnt point;
  point.AttrCopy(above);
  point.SetParentID(above.GetSerialID());
  return point;
}

/// The points of the forms that others hang on, by serial: looked through once for each.
class ParentPoints {
 public:
  explicit ParentPoints(const Vorn_BuildFormArray& forms) : m_forms(forms) {
    for (int i = 0; i < forms.GetSize(); ++i) m_bySerial.try_emplace(forms[i].GetSerialID(), i);
  }

  /// Those of the form that a derived form hangs on; throws `CInvalidArgException` when there is none.
  [[nodiscard]] const PointsBySerial& Of(int form) {
    const PointsBySerial* points = Prepare(form);
    if (points == nullptr) throw CInvalidArgException();
    return *points;
  }
  /// As above, with null when there is none. Once this was called, both need no memory until the points are forgotten.
  const PointsBySerial* Prepare(int form) {
    const auto parent = m_bySerial.find(m_forms[form].GetParentID());
    if (parent == m_bySerial.end()) return nullptr;
    const auto known = m_points.find(parent->second);
    if (known != m_points.end()) return &known->second;
    return &m_points.try_emplace(parent->second, m_forms[parent->second].GetComposedPntArray()).first->second;
  }
  /// To be called when the points of a form have come or gone.
  void Forget(int form) { m_points.erase(form); }

 private:
  const Vorn_BuildFormArray& m_forms;
  std::unordered_map<std::uint32_t, int> m_bySerial;  ///< the first form of each
  std::unordered_map<int, PointsBySerial> m_points;
};

// --- a point that has not been placed yet goes between the points that hang on its neighbours ------------------------

/// Serials of the points of the design surface on either side of a new one, towards the centre and away from it.
struct Neighbours {
  std::uint32_t inner = kVornNoID;
  std::uint32_t outer = kVornNoID;
};

std::optional<Neighbours> NeighboursOf(const Vorn_ComposedPntArray& surface, int index) {
  VornIndexArray left;
  VornIndexArray right;
  surface.QueryIndexArray(left, right);
  const VornIndexArray& side = surface[index].IsRight() ? right : left;
  const auto place = std::find(side.begin(), side.end(), index);
  if (place == side.end() || place == side.begin() || place + 1 == side.end()) return std::nullopt;
  return Neighbours{surface[*(place - 1)].GetSerialID(), surface[*(place + 1)].GetSerialID()};
}

/// Whether a form reaches across the new point: it does not when it ends at the inner neighbour or begins at the outer
/// one.
bool ReachesAcross(const Vorn_ComposedPntArray& points, bool onRight, const Neighbours& neighbours) {
  VornIndexArray order;
  points.QueryIndexArrayLtoR(order);
  if (order.GetSize() < 2) return false;
  const VornComposedPnt& second = points[order[1]];
  const VornComposedPnt& secondToLast = points[order[order.GetUpperBound() - 1]];
  const VornComposedPnt& outermost = onRight ? secondToLast : second;
  const VornComposedPnt& innermost = onRight ? second : secondToLast;
  return outermost.GetParentID() != neighbours.inner && innermost.GetParentID() != neighbours.outer;
}

void AddBetween(Vorn_BuildFormArray& forms, const DerivedForms& derived, int form, const VornComposedPnt& added,
                const Neighbours& neighbours) {
  if (!ReachesAcross(forms[form].GetComposedPntArray(), added.IsRight(), neighbours)) return;
  VornComposedPnt above = added;
  std::uint32_t outer = neighbours.outer;
  for (int level = form; level >= 0; level = derived.FirstChild(level)) {
    Vorn_ComposedPntArray& points = forms[level].GetComposedPntArray();
    const int place = points.FindParent(outer);
    if (place < 0) return;
    outer = points[place].GetSerialID();
    points.InsertAt(place, DerivedPoint(above));
    above = points[place];
  }
}

// --- a point that has been placed goes where it lies ---------------------------------------------------------------

/// Where between two neighbouring points of a form, from left to right, a point of a side is inserted; nothing where
/// the side does not fit to them.
std::optional<int> IndexBetween(const Vorn_ComposedPntArray& points, int before, int behind, VornLocation side) {
  const VornLocation sideBefore = points[before].GetLocation();
  if (side == VornLocation::Left && sideBefore == VornLocation::Center) return behind - 1;
  if (side == VornLocation::Left && sideBefore == VornLocation::Left) return before;
  if (side == VornLocation::Right && sideBefore == VornLocation::Center) return 1;
  if (side == VornLocation::Right && sideBefore == VornLocation::Right) return before + 1;
  return std::nullopt;
}

/// Where a placed point belongs in a derived form, whose own points are taken where `CalcPavePointGhDist` would put
/// them.
std::optional<int> IndexWhereItLies(const Vorn_ComposedPntArray& points, const PointsBySerial& parents,
                                    const VornComposedPnt& added) {
  constexpr double kInsideBy = 1e-6;  // metres from either neighbour
  const double dist = added.GetCLDist().Value();
  std::optional<int> before;
  double distBefore = 0.0;
  for (const int index : InnerPoints(points)) {
    const VornComposedPnt* parent = parents.Find(points[index].GetParentID());
    const NurReal& placed = (parent != nullptr ? *parent : points[index]).GetCLDist();
    if (!placed.IsSet()) continue;
    if (before && distBefore <= dist - kInsideBy && placed.Value() >= dist + kInsideBy) {
      return IndexBetween(points, *before, index, added.GetLocation());
    }
    before = index;
    distBefore = placed.Value();
  }
  return std::nullopt;
}

void AddWhereItLies(Vorn_BuildFormArray& forms, const DerivedForms& derived, ParentPoints& parents, int form,
                    const VornComposedPnt& added) {
  VornComposedPnt above = added;
  for (int level = form; level >= 0; level = derived.FirstChild(level)) {
    Vorn_ComposedPntArray& points = forms[level].GetComposedPntArray();
    const std::optional<int> place = IndexWhereItLies(points, parents.Of(level), added);
    if (!place) return;
    points.InsertAt(*place, DerivedPoint(above));
    parents.Forget(level);
    above = points[*place];
  }
}

// --- placing the points of a derived form ----------------------------------------------------------------------------

void PlaceInnerPoints(Vorn_ComposedPntArray& points, const std::vector<int>& innerPoints,
                      const PointsBySerial& parents) {
  const NurReal startHeight = points.IsEmpty() ? NurReal() : points[0].GetGh();
  for (const int index : innerPoints) {
    VornComposedPnt& point = points[index];
    const VornComposedPnt* parent = parents.Find(point.GetParentID());
    if (parent == nullptr) continue;
    const NurReal& height = parent->GetGh();
    point.SetCLDist(parent->GetCLDist());
    point.SetGh(height.IsSet() ? NurReal(NurCarefulDifference(height.Value(), startHeight.Value())) : NurReal());
    point.SetX(parent->GetX());
    point.SetY(parent->GetY());
    point.SetRatio(parent->GetRatio());
    point.SetPercent(parent->GetPercent());
    point.SetDataType(parent->GetDataType());
    point.SetSlopeType(parent->GetSlopeType());
  }
}

// --- forms that hang on their parent no longer ---------------------------------------------------------------------

int CountLinked(const Vorn_ComposedPntArray& points) {
  return static_cast<int>(std::count_if(points.begin(), points.end(),
                                        [](const VornComposedPnt& point) { return point.GetParentID() != kVornNoID; }));
}

}  // namespace

void Vorn_BuildFormArray::AddedComposedPnt(int formIndex, std::uint32_t serialID) {
  const VornBuildForm& surface = GetAt(formIndex);
  if (!surface.IsSurface()) return;
  const int index = surface.GetComposedPntArray().Find(serialID);
  const VornComposedPnt added = surface.GetComposedPntArray()[index];
  const DerivedForms derived(*this);
  if (added.GetCLDist().IsSet()) {
    ParentPoints parents(*this);
    for (const int form : derived.Of(VornBuildForm::kSurfaceSerialID))
      AddWhereItLies(*this, derived, parents, form, added);
    return;
  }
  const std::optional<Neighbours> neighbours = NeighboursOf(surface.GetComposedPntArray(), index);
  if (!neighbours) return;
  for (const int form : derived.Of(VornBuildForm::kSurfaceSerialID))
    AddBetween(*this, derived, form, added, *neighbours);
}

void Vorn_BuildFormArray::RemovedComposedPnt(int formIndex, std::uint32_t serialID) {
  if (!IsRange(formIndex)) return;
  const VornBuildForm& form = GetAt(formIndex);
  if (!form.IsSurface() && form.GetParentID() == kVornNoID) return;
  const DerivedForms derived(*this);
  for (const int child : derived.Of(form.GetSerialID())) {
    std::uint32_t removed = serialID;
    for (int level = child; level >= 0; level = derived.FirstChild(level)) {
      Vorn_ComposedPntArray& points = GetAt(level).GetComposedPntArray();
      const int index = points.FindParent(removed);
      if (index < 0) break;
      removed = points[index].GetSerialID();
      points.RemoveAt(index);
    }
  }
}

void Vorn_BuildFormArray::NormalizePaveBuildForm() {
  enum class Mark : char { Unjudged, Keep, Remove };
  constexpr int kLeastLinked = 2;
  std::vector<Mark> marks(static_cast<std::size_t>(GetSize()), Mark::Unjudged);
  const auto markOf = [&](int index) -> Mark& { return marks[static_cast<std::size_t>(index)]; };

  const DerivedForms derived(*this);
  for (int i = 0; i < GetSize(); ++i) {
    const VornBuildForm& form = GetAt(i);
    if (form.GetParentID() == kVornNoID) {
      markOf(i) = Mark::Keep;
    } else if (markOf(i) == Mark::Unjudged) {
      const Mark mark = CountLinked(form.GetComposedPntArray()) < kLeastLinked ? Mark::Remove : Mark::Keep;
      for (int level = i; level >= 0; level = derived.FirstChild(level)) markOf(level) = mark;
    }
  }
  RemoveIndices([&](int index) { return markOf(index) == Mark::Remove; });
}

void Vorn_BuildFormArray::CalcPavePointGhDist(int formIndex) {
  VornBuildForm& form = GetAt(formIndex);
  if (form.GetParentID() == kVornNoID) return;
  Vorn_ComposedPntArray& points = form.GetComposedPntArray();
  ParentPoints parents(*this);
  PlaceInnerPoints(points, InnerPoints(points), parents.Of(formIndex));
}

void Vorn_BuildFormArray::CalcPavePointGhDist() {
  struct Derived {
    int form;
    std::vector<int> innerPoints;
  };
  ParentPoints parents(*this);
  std::vector<Derived> derived;  // before the first form changes: placed once more, a form may get other heights
  for (int i = 0; i < GetSize(); ++i) {
    if (GetAt(i).GetParentID() == kVornNoID) continue;
    derived.push_back({i, InnerPoints(GetAt(i).GetComposedPntArray())});
    parents.Prepare(i);
  }
  for (const Derived& one : derived) {
    PlaceInnerPoints(GetAt(one.form).GetComposedPntArray(), one.innerPoints, parents.Of(one.form));
  }
}
