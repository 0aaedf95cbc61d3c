#pragma once

#include <cstdint>
#include <optional>
#include <utility>

#include "vorn/framework/array.h"
#include "vorn/model/composed_pnt.h"

/// A list of indices into a point array.
using VornIndexArray = KelArraySerial<int>;

/// The points of one build form, in the order of the document: the first point is the start of the form (on a road
/// surface the centre point), after it come the points of both sides in any interleaving, each side from the centre
/// outward.
///
/// Every point that comes in through `Add`, `InsertAt` or `SetAt` is numbered: a centre point gets serial 0, a point
/// without a serial the next one, and one that brings its own raises the next serial above it.
///
/// A query without the memory for its answer throws `std::bad_alloc` and leaves its outputs as they were.
class Vorn_ComposedPntArray : public Vorn_Array<VornComposedPnt> {
 public:
  [[nodiscard]] VORN_Occurs occurs() const override { return VORN_Occurs::TwoOrMore; }
  [[nodiscard]] CString tagName() const override { return "tsf:ComposedPnt"; }
  /// The next serial (from store version "05.00" on), then the points. Older data leave the next serial at 0 and the
  /// points without serials: number them (`RegulateSerialID`) before one is added, which would get serial 0.
  void Serialize(CArchive& ar, const CString& tag) override;

  /// At least two points, or with single at least one.
  [[nodiscard]] bool IsValid(bool single) const { return GetSize() >= (single ? 1 : 2); }

  /// Appends a copy, numbers it, and returns its index.
  int Add(const VornComposedPnt& point);
  int Add(VornComposedPnt&& point);
  /// Reads a point from the cursor's element to the end of the array; nothing is added when it cannot be read.
  bool AddFromXML(PimIterator* cursor);
  /// Inserts a copy before index, and numbers it.
  void InsertAt(int index, const VornComposedPnt& point);
  /// Replaces the point at index by a copy, and numbers it.
  void SetAt(int index, const VornComposedPnt& point);
  void SetAtGrow(int index, const VornComposedPnt& point) = delete;  // would not number
  /// Replaces all points and the next serial by another collection's.
  void Copy(const Vorn_ComposedPntArray& other) { *this = other; }
  /// Appends copies that all get fresh serials.
  void Append(const Vorn_ComposedPntArray& other);
  void Append(Vorn_ComposedPntArray&& other);
  /// Numbers the point at index.
  void SetSerialID(int index);
  /// Numbers every point without a serial, centre points included.
  void RegulateSerialID();
  /// The serial that the next point receives; 1 in a new array, and never lowered.
  [[nodiscard]] std::uint32_t GetNextSerialID() const { return m_serials.Next(); }

  // Searches give the index of the first point found, -1 when there is none.

  /// By main code, exactly.
  [[nodiscard]] int Find(const CString& code) const;
  [[nodiscard]] int Find(const char* code) const { return Find(CString(code)); }
  /// By serial.
  [[nodiscard]] int Find(std::uint32_t serialID) const;
  [[nodiscard]] int Find(int serialID) const { return Find(static_cast<std::uint32_t>(serialID)); }
  /// By the serial of the point copied from.
  [[nodiscard]] int FindOrg(std::uint32_t id) const;
  /// By the serial of the parent form's point.
  [[nodiscard]] int FindParent(std::uint32_t id) const;
  /// By the connection identifier.
  [[nodiscard]] int FindID(std::uint32_t id) const;
  /// 0 for a drawing identifier of 0, without a search and even in an empty array: intended, so an answer of 0 says
  /// nothing about the first point then.
  [[nodiscard]] int FindDrawID(std::uint32_t drawID) const;
  /// By the form identifier of a role; `Both` tries main, then sub, of each point.
  [[nodiscard]] int FindPnt(std::uint32_t formID, VornComposedPnt::PntType t) const;

  /// First and last index of the points on a side; both -1 when there is none.
  void GetLocationAreaIndex(VornLocation location, int& first, int& last) const;
  /// The indices of each side from the start point outward; the start point begins both lists, other centre points
  /// and points without a side are left out. False for an empty array.
  bool QueryIndexArray(VornIndexArray& left, VornIndexArray& right) const;
  /// The centre point (the last one; -1 without one) and the indices of each side. False for an empty array, and at
  /// the first point without a side, where the lists hold what was found so far.
  bool QueryIndexArray(int& center, VornIndexArray& left, VornIndexArray& right) const;
  /// The indices from the leftmost point to the rightmost. Points without a side leave zeros in the middle. False for
  /// an empty array.
  bool QueryIndexArrayLtoR(VornIndexArray& order) const;
  /// The two end points of the polyline; false when it has fewer than two points, or when it does not go on through
  /// the start point and its one side is too short.
  bool QueryTermPoint(VornComposedPnt& first, VornComposedPnt& last) const;
  /// As above, as (distance from the centre line, height).
  bool QueryTermPoint(TamWorld2& first, TamWorld2& last) const;
  /// Whether a separation point's sub record agrees with the main record of its outward neighbour.
  [[nodiscard]] bool IsValidPointSubDetail(std::uint32_t serialID) const;

  /// Recomputes the distances from the centre line of one side from the widths X, outward from offset (metres,
  /// signed). X counts as a width and Y as a height difference whatever the data type: intended.
  void RecalcDistFromCL(bool left, const NurReal& offset);
  /// Recomputes the heights of one side from the height differences Y, from base (metres) on, reading X and Y alike.
  void RecalcHeight(bool left, const NurReal& base);

 private:
  void Number(VornComposedPnt& point);
  [[nodiscard]] std::optional<std::pair<int, int>> TermIndices() const;

  VornSerialCounter m_serials{1};
};
