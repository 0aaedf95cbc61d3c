#pragma once

#include "vorn/framework/array.h"
#include "vorn/framework/base.h"

/// When a document was created and last changed, with a free note: element "tsf:FileInfo", from edition 4.0 on.
class VornFileInfo : public Vorn_Base {
 public:
  VornFileInfo();
  VornFileInfo(const VornFileInfo&) = default;
  VornFileInfo(VornFileInfo&&) noexcept = default;
  /// Without the memory for a copy of all of it, the object stays as it was.
  VornFileInfo& operator=(const VornFileInfo& other) { return *this = VornFileInfo(other); }
  VornFileInfo& operator=(VornFileInfo&&) noexcept = default;

  /// The note rides on the change date: without one it is not written. Intended, so set a change date with a note.
  bool toXML(PimIterator* cursor) override;
  bool fromXML(PimIterator* cursor) override;
  /// The creation date is valid.
  [[nodiscard]] bool IsEnable() const override { return m_createDate.GetStatus() == COleDateTime::valid; }
  /// The record of the project archive (vorn/archive/). Archive and file exceptions pass through.
  virtual void Serialize(CArchive& ar, const CString& tag);
  /// A record for hosts, the same for every store version: the table comes first. Collections archive the other one.
  void Serialize(CArchive& ar, const char* storeVersion);

  /// When the document was created.
  [[nodiscard]] const COleDateTime& GetCreateDate() const { return m_createDate; }
  [[nodiscard]] COleDateTime& GetCreateDate() { return m_createDate; }
  void SetCreateDate(const COleDateTime& date) { m_createDate = date; }
  /// When it was last changed.
  [[nodiscard]] const COleDateTime& GetChangeDate() const { return m_changeDate; }
  [[nodiscard]] COleDateTime& GetChangeDate() { return m_changeDate; }
  void SetChangeDate(const COleDateTime& date) { m_changeDate = date; }
  /// A free note, which is written with a change date only.
  [[nodiscard]] const CString& GetNote() const { return m_note; }
  [[nodiscard]] CString& GetNote() { return m_note; }
  void SetNote(const CString& note) { m_note = note; }

 private:
  COleDateTime m_createDate;
  COleDateTime m_changeDate;
  CString m_note;
};

/// The file information of a document.
class VornFileInfoArray : public Vorn_Array<VornFileInfo> {
 public:
  [[nodiscard]] VORN_Occurs occurs() const override { return VORN_Occurs::OneOrMore; }
  [[nodiscard]] CString tagName() const override { return "tsf:FileInfo"; }
};
