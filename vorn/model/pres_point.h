#pragma once

#include "vorn/framework/array.h"
#include "vorn/framework/base.h"

/// A presentation point of old project archives: distance from the centre line and height of the existing ground. It
/// has no form in documents.
class VornPresPoint : public Vorn_Base {
 public:
  /// The record of the project archive (vorn/archive/). Archive and file exceptions pass through.
  virtual void Serialize(CArchive& ar, const CString& tag);

  /// Distance from the centre line in metres.
  [[nodiscard]] const NurReal& GetFirst() const { return m_first; }
  [[nodiscard]] NurReal& GetFirst() { return m_first; }
  /// Height of the existing ground in metres.
  [[nodiscard]] const NurReal& GetSecond() const { return m_second; }
  [[nodiscard]] NurReal& GetSecond() { return m_second; }

 private:
  NurReal m_first;
  NurReal m_second;
};
