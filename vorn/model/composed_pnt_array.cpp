#include "vorn/model/composed_pnt_array.h"

#include <algorithm>
#include <utility>

namespace {

using DataType = VornComposedPnt::DataType;
using PntType = VornComposedPnt::PntType;

bool IsSlopeForm(const VornComposedPnt& point) {
  return point.GetDataType() == DataType::Percent || point.GetDataType() == DataType::Rate;
}

/// Whether the recalculations may go on from a point: its type is known and its values are there.
bool IsComplete(const VornComposedPnt& point) {
  if (point.GetDataType() == DataType::WidthHeight) return point.GetX().IsSet() && point.GetY().IsSet();
  if (IsSlopeForm(point)) return point.GetX().IsSet() && (point.GetRatio().IsSet() || point.GetPercent().IsSet());
  return false;
}

}  // namespace

// --- numbering -----------------------------------------------------------------------------------------------------

void Vorn_ComposedPntArray::Number(VornComposedPnt& point) {
  if (point.IsCenter()) {
    point.SetSerialID(0);
    m_serials.KeepZero();
  } else {
    m_serials.Number(point);
  }
}

int Vorn_ComposedPntArray::Add(const VornComposedPnt& point) { return Add(VornComposedPnt(point)); }

int Vorn_ComposedPntArray::Add(VornComposedPnt&& point) {
  const int index = Vorn_Array::Add(std::move(point));
  Number(GetAt(index));
  return index;
}

bool Vorn_ComposedPntArray::AddFromXML(PimIterator* cursor) {
  if (IsEmpty()) Reserve(cursor->CountRun());
  if (!AddFilled([&](VornComposedPnt& point) { return point.fromXML(cursor); })) return false;
  Number(GetAt(GetUpperBound()));
  return true;
}

void Vorn_ComposedPntArray::InsertAt(int index, const VornComposedPnt& point) {
  Vorn_Array::InsertAt(index, point);
  Number(GetAt(index));
}

void Vorn_ComposedPntArray::SetAt(int index, const VornComposedPnt& point) {
  Vorn_Array::SetAt(index, point);
  Number(GetAt(index));
}

void Vorn_ComposedPntArray::Append(const Vorn_ComposedPntArray& other) { Append(Vorn_ComposedPntArray(other)); }

void Vorn_ComposedPntArray::Append(Vorn_ComposedPntArray&& other) {
  if (&other == this) return Append(Vorn_ComposedPntArray(other));
  Reserve(GetSize() + other.GetSize());  // before the first point leaves its place
  // Fresh serials for all, so that two forms that are joined never share one: references by serial are not rewritten.
  for (VornComposedPnt& point : other) {
    point.SetSerialID(kVornNoID);
    Add(std::move(point));
  }
}

void Vorn_ComposedPntArray::SetSerialID(int index) { Number(GetAt(index)); }

void Vorn_ComposedPntArray::RegulateSerialID() {
  for (VornComposedPnt& point : *this) {
    if (point.GetSerialID() == kVornNoID) point.SetSerialID(m_serials.Take());
  }
}

// --- searches ------------------------------------------------------------------------------------------------------

int Vorn_ComposedPntArray::Find(const CString& code) const {
  return FindFirst([&](const VornComposedPnt& point) { return point.GetCode() == code; });
}

int Vorn_ComposedPntArray::Find(std::uint32_t serialID) const {
  return FindFirst([=](const VornComposedPnt& point) { return point.GetSerialID() == serialID; });
}

int Vorn_ComposedPntArray::FindOrg(std::uint32_t id) const {
  return FindFirst([=](const VornComposedPnt& point) { return point.GetOrgID() == id; });
}

int Vorn_ComposedPntArray::FindParent(std::uint32_t id) const {
  return FindFirst([=](const VornComposedPnt& point) { return point.GetParentID() == id; });
}

int Vorn_ComposedPntArray::FindID(std::uint32_t id) const {
  return FindFirst([=](const VornComposedPnt& point) { return point.GetID() == id; });
}

int Vorn_ComposedPntArray::FindDrawID(std::uint32_t drawID) const {
  if (drawID == 0) return 0;
  return FindFirst([=](const VornComposedPnt& point) { return point.GetDrawID() == drawID; });
}

int Vorn_ComposedPntArray::FindPnt(std::uint32_t formID, PntType t) const {
  return FindFirst([=](const VornComposedPnt& point) {
    if (t != PntType::Both) return point.FormID(t) == formID;
    return point.FormID(PntType::Main) == formID || point.FormID(PntType::Sub) == formID;
  });
}

// --- sides and order -----------------------------------------------------------------------------------------------

void Vorn_ComposedPntArray::GetLocationAreaIndex(VornLocation location, int& first, int& last) const {
  first = FindFirst([=](const VornComposedPnt& point) { return point.GetLocation() == location; });
  last = -1;
  for (int i = GetUpperBound(); first >= 0 && last < 0; --i) {
    if (GetAt(i).GetLocation() == location) last = i;
  }
}

// The lists are made aside: without memory, those of the caller stay as they were.

bool Vorn_ComposedPntArray::QueryIndexArray(VornIndexArray& left, VornIndexArray& right) const {
  VornIndexArray leftFound;
  VornIndexArray rightFound;
  if (!IsEmpty()) {
    leftFound.Add(0);
    rightFound.Add(0);
  }
  for (int i = 1; i < GetSize(); ++i) {
    if (GetAt(i).IsLeft()) leftFound.Add(i);
    if (GetAt(i).IsRight()) rightFound.Add(i);
  }
  left = std::move(leftFound);
  right = std::move(rightFound);
  return !IsEmpty();
}

bool Vorn_ComposedPntArray::QueryIndexArray(int& center, VornIndexArray& left, VornIndexArray& right) const {
  int centerFound = -1;
  VornIndexArray leftFound;
  VornIndexArray rightFound;
  bool sided = !IsEmpty();
  for (int i = 0; sided && i < GetSize(); ++i) {
    switch (GetAt(i).GetLocation()) {
      case VornLocation::Center:
        centerFound = i;
        break;
      case VornLocation::Left:
        leftFound.Add(i);
        break;
      case VornLocation::Right:
        rightFound.Add(i);
        break;
      default:
        sided = false;
    }
  }
  center = centerFound;
  left = std::move(leftFound);
  right = std::move(rightFound);
  return sided;
}

bool Vorn_ComposedPntArray::QueryIndexArrayLtoR(VornIndexArray& order) const {
  VornIndexArray found;
  found.SetSize(GetSize());
  int front = 0;
  int back = GetUpperBound();
  for (int i = GetUpperBound(); i >= 0; --i) {
    const VornComposedPnt& point = GetAt(i);
    if (point.IsCenter() || point.IsLeft()) found[front++] = i;
    if (point.IsRight()) found[back--] = i;
  }
  order = std::move(found);
  return !IsEmpty();
}

std::optional<std::pair<int, int>> Vorn_ComposedPntArray::TermIndices() const {
  if (GetSize() < 2) return std::nullopt;
  VornIndexArray left;
  VornIndexArray right;
  QueryIndexArray(left, right);
  const bool throughStart = GetAt(0).GetSeriesPnt();

  // An end is the outermost point of its side; a side without points ends at the start point, or, when the polyline
  // does not go on through that, at the innermost point of the other side.
  const auto endOf = [&](const VornIndexArray& side, const VornIndexArray& otherSide) -> std::optional<int> {
    if (side.GetSize() > 1) return side[side.GetUpperBound()];
    if (throughStart) return 0;
    if (otherSide.GetSize() >= 3) return otherSide[1];
    return std::nullopt;
  };
  const std::optional<int> first = endOf(left, right);
  const std::optional<int> last = endOf(right, left);
  if (!first || !last) return std::nullopt;
  return std::pair(*first, *last);
}

bool Vorn_ComposedPntArray::QueryTermPoint(VornComposedPnt& first, VornComposedPnt& last) const {
  const auto ends = TermIndices();
  if (!ends) return false;
  VornComposedPnt firstPoint = GetAt(ends->first);  // an output may be a point of this array
  last = GetAt(ends->second);
  first = std::move(firstPoint);
  return true;
}

bool Vorn_ComposedPntArray::QueryTermPoint(TamWorld2& first, TamWorld2& last) const {
  const auto ends = TermIndices();
  if (!ends) return false;
  first = GetAt(ends->first).Pos();
  last = GetAt(ends->second).Pos();
  return true;
}

bool Vorn_ComposedPntArray::IsValidPointSubDetail(std::uint32_t serialID) const {
  const int index = Find(serialID);
  if (index < 0 || !(GetAt(index).IsLeft() || GetAt(index).IsRight())) return false;
  VornIndexArray left;
  VornIndexArray right;
  QueryIndexArray(left, right);
  const VornIndexArray& side = GetAt(index).IsLeft() ? left : right;
  const auto place = std::find(side.begin(), side.end(), index);
  if (place == side.end() || place + 1 == side.end()) return false;
  const VornComposedPnt& point = GetAt(index);
  const VornComposedPnt& neighbour = GetAt(*(place + 1));
  return neighbour.GetXSectType(PntType::Main) == point.GetXSectType(PntType::Sub) &&
         neighbour.GetXSectNameID(PntType::Main) == point.GetXSectNameID(PntType::Sub);
}

// --- recalculation -------------------------------------------------------------------------------------------------

void Vorn_ComposedPntArray::RecalcDistFromCL(bool left, const NurReal& offset) {
  const VornLocation side = left ? VornLocation::Left : VornLocation::Right;
  const double outward = left ? -1.0 : 1.0;
  // The outward distance that the next width starts from. The start distance is signed, so outward it counts
  // negatively on the left.
  double running = 0.0;
  bool started = false;
  for (VornComposedPnt& point : *this) {
    if (point.GetLocation() != side) continue;
    const double start = started ? running : outward * offset.Value();
    if (point.GetX().IsSet()) point.SetCLDist(outward * (start + point.GetX().Value()));
    if (IsComplete(point)) running = start + point.GetX().Value();
    started = true;
  }
}

void Vorn_ComposedPntArray::RecalcHeight(bool left, const NurReal& base) {
  const VornLocation side = left ? VornLocation::Left : VornLocation::Right;
  double running = base.Value();
  double probed = running;
  for (VornComposedPnt& point : *this) {
    if (point.GetLocation() != side) continue;
    const bool known = point.GetDataType() == DataType::WidthHeight || IsSlopeForm(point);
    if (!known) {
      // Directly behind a complete slope point the value probed last is that point's X, not a height: intended.
      if (point.GetY().IsSet()) point.SetGh(point.GetY().Value() + probed);
      probed = running;
      continue;
    }
    const bool complete = IsComplete(point);
    if (complete || point.GetY().IsSet()) {
      point.SetGh(running + point.GetY().Value());
    }
    if (complete) running = point.GetGh().Value();
    probed = complete && IsSlopeForm(point) ? point.GetX().Value() : running;
  }
}
