#pragma once

#include <cstdint>

#include "vorn/framework/array.h"
#include "vorn/model/build_form.h"

/// The build forms of one cross section: the design surface, which has serial 0, and the forms derived from it, such
/// as pavement layers. A derived form names its parent form by serial, and its points name the parent's points that
/// they hang on. Where a form has several derived ones, chains of derivation follow the first of them in the array.
///
/// Every form that comes in through `Add`, `InsertAt` or `SetAt` is numbered: the first form of a section becomes the
/// design surface, a form without a serial gets the next one, and one that brings its own raises the next serial
/// above it. Forms of a document stay unnumbered until `SetSerialID`, and so do the empty forms with which `InsertAt`
/// behind the end fills up.
class Vorn_BuildFormArray : public Vorn_Array<VornBuildForm> {
 public:
  [[nodiscard]] VORN_Occurs occurs() const override { return VORN_Occurs::OneOrMore; }
  [[nodiscard]] CString tagName() const override { return "tsf:BuildForm"; }
  /// The next serial (from store version "05.00" on), then the forms. Older data leave the next serial at 0 and the
  /// forms without serials: number them in order (`SetSerialID`) before one is added, which would get serial 0 and so
  /// become the design surface.
  void Serialize(CArchive& ar, const CString& tag) override;

  /// Appends a copy, and returns its index. The first form becomes the design surface; a form that comes while there
  /// is no design surface is marked as the org surface.
  int Add(const VornBuildForm& form);
  int Add(VornBuildForm&& form);
  /// At index 0, while there is no design surface, the form becomes that; unlike `Add` it marks no org surface. A
  /// negative index throws `CInvalidArgException`.
  void InsertAt(int index, const VornBuildForm& form);
  void InsertAt(int index, VornBuildForm&& form);
  /// As `InsertAt`, over the form at index; an index outside the array does nothing. Over the design surface it leaves
  /// the section without one, unless the form brings serial 0.
  void SetAt(int index, const VornBuildForm& form);
  void SetAtGrow(int index, const VornBuildForm& form) = delete;  // would not number
  /// Replaces all forms and the next serial by another collection's.
  void Copy(const Vorn_BuildFormArray& other) { *this = other; }
  /// Adds copies, and then numbers each of them anew, even one that `Add` made the design surface: intended, so a
  /// section that was empty has no design surface afterwards. Returns the index of the first.
  int Append(const Vorn_BuildFormArray& other);
  /// Numbers the form at index; the first one, with asSurface, becomes the design surface.
  void SetSerialID(int index, bool asSurface);
  /// The serial that the next form receives; 1 in a new array.
  [[nodiscard]] std::uint32_t GetNextSerialID() const { return m_serials.Next(); }

  /// Orders the forms by the height of their start point, lowest first. Forms without points keep their places, forms
  /// at one height (within 1e-6 m) may come in either order, and a start point without a height counts as at 0.
  void Sort();

  // Searches give the index of the first form found, -1 when there is none. A start of -1 means from the first form on.

  /// By serial.
  [[nodiscard]] int Find(std::uint32_t serialID) const;
  [[nodiscard]] int Find(int serialID) const { return Find(static_cast<std::uint32_t>(serialID)); }
  /// By name, ignoring case.
  [[nodiscard]] int Find(const CString& name, int start) const;
  /// By the serial of the parent form.
  [[nodiscard]] int FindParent(std::uint32_t parentID, int start) const;
  /// Serial of the org surface; `kVornNoID` when there is none.
  [[nodiscard]] std::uint32_t QueryOrgSurfaceID() const;
  /// `VornBuildForm::IsRoadWL_R` of any form.
  [[nodiscard]] bool IsRoadWL_R() const;

  // The computations of every form.

  /// Creates the missing points of every form's control targets, at the station dist (metres).
  void ConvertFormCtrl(const NurReal& dist);
  /// Gives the control targets of every form the station dist (metres); those for a length or an area keep their own.
  void RegulateFormDist(const NurReal& dist);
  /// `VornBuildForm::RegulateComposedPnt` of every form; dist and height hold the values of the last plan-type form.
  void RegulateComposedPnt(const NurReal& centerHeight, NurReal& dist, NurReal& height);
  /// `VornBuildForm::CalcPointGhDist` of every form that is not derived.
  void CalcPointGhDist(const NurReal& centerHeight);

  // Derived forms (derived_forms.cpp).

  /// To be called when a point was inserted into the form at formIndex: gives every form derived from the design
  /// surface, and its chain, a point that hangs on the new one. Only the design surface passes points on. A new point
  /// without a distance goes between the points that hang on its neighbours, one with a distance where it lies.
  /// An index or a serial that does not exist throws `CInvalidArgException`, and so does a form whose order of points
  /// leaves the new one no place in it; forms before it have their point by then. So do they when memory runs out: to
  /// get the others theirs, take those back with `RemovedComposedPnt` and call this again.
  void AddedComposedPnt(int formIndex, std::uint32_t serialID);
  /// To be called when a point was removed from the form at formIndex: removes what hung on it in every form derived
  /// from that one, and in its chain. Forms that are neither the design surface nor derived pass nothing on; an index
  /// that does not exist does nothing.
  void RemovedComposedPnt(int formIndex, std::uint32_t serialID);
  /// Removes the derived forms with fewer than two points that hang on a parent's, with their chains.
  void NormalizePaveBuildForm();
  /// Gives every inner point of a derived form the distance of the parent's point that it hangs on, as height the
  /// difference from that point's height to the height that the form's first point had before, and its input values.
  /// The outermost points stay. Where the first point is an inner one itself, another call gives other heights:
  /// intended, call it once for each change. A form that is not derived is left alone; a missing parent, and an index
  /// outside the array, throw `CInvalidArgException`.
  void CalcPavePointGhDist(int formIndex);
  /// As above, for every derived form in order.
  void CalcPavePointGhDist();

 private:
  int AddNumbered(VornBuildForm&& form, bool hadSurface);
  void Number(VornBuildForm& form, bool asSurface);
  [[nodiscard]] bool HasSurface() const { return Find(0U) >= 0; }
  template <typename Matches>
  [[nodiscard]] int FindFrom(int start, Matches&& matches) const;

  VornSerialCounter m_serials{1};
};
