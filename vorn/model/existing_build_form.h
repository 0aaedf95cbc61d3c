#pragma once

#include <cstdint>
#include <string_view>

#include "vorn/framework/array.h"
#include "vorn/framework/base.h"
#include "vorn/platform/tam_world2.h"

/// One point of the existing ground: distance from the centre line and height, written as the element's text.
/// Element "tsf:ExistingComposedPnt", from edition 4.0 on.
class VornExistingComposedPnt : public Vorn_Base {
 public:
  VornExistingComposedPnt();
  VornExistingComposedPnt(const VornExistingComposedPnt&) = default;
  VornExistingComposedPnt(VornExistingComposedPnt&&) noexcept = default;
  /// Without the memory for a copy of all of it, the object stays as it was.
  VornExistingComposedPnt& operator=(const VornExistingComposedPnt& other) {
    return *this = VornExistingComposedPnt(other);
  }
  VornExistingComposedPnt& operator=(VornExistingComposedPnt&&) noexcept = default;

  bool toXML(PimIterator* cursor) override;
  bool fromXML(PimIterator* cursor) override;
  /// Distance and height are both set.
  [[nodiscard]] bool IsEnable() const override { return m_clDist.IsSet() && m_gh.IsSet(); }
  /// The record of the project archive (vorn/archive/). Archive and file exceptions pass through.
  virtual void Serialize(CArchive& ar, const CString& tag);

  /// Horizontal distance from the centre line in metres, negative on the left.
  [[nodiscard]] const NurReal& GetCLDist() const { return m_clDist; }
  [[nodiscard]] NurReal& GetCLDist() { return m_clDist; }
  void SetCLDist(const NurReal& dist) { m_clDist = dist; }
  /// Ground height in metres.
  [[nodiscard]] const NurReal& GetGh() const { return m_gh; }
  [[nodiscard]] NurReal& GetGh() { return m_gh; }
  void SetGh(const NurReal& height) { m_gh = height; }
  /// Name of the point (attribute "name").
  [[nodiscard]] const CString& GetName() const { return m_name; }
  [[nodiscard]] CString& GetName() { return m_name; }
  void SetName(const CString& name) { m_name = name; }

  /// Two further reals for the host: neither documents nor archives hold them.
  [[nodiscard]] const NurReal& GetSpare1() const { return m_spare1; }
  void SetSpare1(const NurReal& value) { m_spare1 = value; }
  [[nodiscard]] const NurReal& GetSpare2() const { return m_spare2; }
  void SetSpare2(const NurReal& value) { m_spare2 = value; }

  /// (distance from the centre line, height).
  [[nodiscard]] TamWorld2 Pos() const { return {m_clDist.Value(), m_gh.Value()}; }
  /// (height, distance from the centre line), the order of crossings.
  [[nodiscard]] TamWorld2 HeightAndDist() const { return {m_gh.Value(), m_clDist.Value()}; }

  /// Distance, a blank, height. An unset distance gives neither number nor blank, an unset height no number.
  [[nodiscard]] CString GetTextData() const;
  /// Takes distance and height from a text. A text with one value gives the distance, even where it was written for a
  /// height without a distance: documents are read that way.
  void GetTextValue(std::string_view text);

 private:
  NurReal m_spare1;
  NurReal m_spare2;
  NurReal m_clDist;
  NurReal m_gh;
  CString m_name;
};

/// The points of one existing ground form.
class VornExistingComposedPntArray : public Vorn_Array<VornExistingComposedPnt> {
 public:
  [[nodiscard]] VORN_Occurs occurs() const override { return VORN_Occurs::TwoOrMore; }
  [[nodiscard]] CString tagName() const override { return "tsf:ExistingComposedPnt"; }
};

/// The terrain before construction in one cross section, a named polyline. Element "tsf:ExistingBuildForm", from
/// edition 4.0 on.
class VornExistingBuildForm : public Vorn_Base {
 public:
  /// What the shortest record takes, one with an empty name and no points.
  static constexpr std::uint32_t kLeastArchiveBytes = 9;

  VornExistingBuildForm();
  VornExistingBuildForm(const VornExistingBuildForm&) = default;
  VornExistingBuildForm(VornExistingBuildForm&&) noexcept = default;
  /// Without the memory for a copy of all of it, the object stays as it was.
  VornExistingBuildForm& operator=(const VornExistingBuildForm& other) { return *this = VornExistingBuildForm(other); }
  VornExistingBuildForm& operator=(VornExistingBuildForm&&) noexcept = default;

  /// Writes nothing, and succeeds, for a form with fewer than two points.
  bool toXML(PimIterator* cursor) override;
  bool fromXML(PimIterator* cursor) override;
  /// The name is not empty, and there are at least two points, each enabled.
  [[nodiscard]] bool IsEnable() const override { return !m_name.IsEmpty() && m_composedPntArray.IsEnable(); }
  /// The record of the project archive (vorn/archive/). Archive and file exceptions pass through.
  virtual void Serialize(CArchive& ar, const CString& tag);

  /// Name of the ground form (attribute "name").
  [[nodiscard]] const CString& GetName() const { return m_name; }
  [[nodiscard]] CString& GetName() { return m_name; }
  void SetName(const CString& name) { m_name = name; }
  /// The points, in the order of the document.
  [[nodiscard]] const VornExistingComposedPntArray& GetComposedPntArray() const { return m_composedPntArray; }
  [[nodiscard]] VornExistingComposedPntArray& GetComposedPntArray() { return m_composedPntArray; }
  void SetComposedPntArray(const VornExistingComposedPntArray& points) { m_composedPntArray = points; }

 private:
  CString m_name;
  VornExistingComposedPntArray m_composedPntArray;
};

/// The existing ground forms of one cross section.
class VornExistingBuildFormArray : public Vorn_Array<VornExistingBuildForm> {
 public:
  [[nodiscard]] VORN_Occurs occurs() const override { return VORN_Occurs::OneOrMore; }
  [[nodiscard]] CString tagName() const override { return "tsf:ExistingBuildForm"; }
};
