#pragma once

#include "vorn/platform/carchive.h"
#include "vorn/platform/clist.h"
#include "vorn/platform/cstring.h"

/// The framework's linked list of texts.
class CStringList : public CList<CString> {
 public:
  /// As the list's own.
  using CList::CList;
  CStringList() = default;
  CStringList(const CStringList&) = default;
  CStringList(CStringList&&) noexcept = default;
  CStringList& operator=(const CStringList&) = default;
  CStringList& operator=(CStringList&&) noexcept = default;
  virtual ~CStringList() = default;

  /// The number of texts (16 bits, or 0xFFFF and 32 bits), then each text. Loading appends them; more than a list
  /// can hold are refused by an archive exception before the first is read. What throws leaves the list.
  virtual void Serialize(CArchive& ar);
};
