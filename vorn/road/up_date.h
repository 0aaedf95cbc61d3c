#pragma once

#include <array>

#include "vorn/platform/ole_date_time.h"
#include "vorn/road/record.h"

/// Three dates of an alignment. The library keeps them and does not look into them.
class VornUpDate : public VornRecord {
 public:
  /// The three dates.
  using Dates = std::array<COleDateTime, 3>;

  /// All dates null.
  VornUpDate() {
    for (COleDateTime& date : m_dates) date.SetStatus(COleDateTime::null);
  }

  /// The three dates, the same in every store version. Archive and file exceptions pass through.
  void Serialize(CArchive& ar, const char* tag);

  /// The dates, in the order of the record.
  [[nodiscard]] const Dates& GetDates() const { return m_dates; }
  [[nodiscard]] Dates& GetDates() { return m_dates; }
  /// Sets all three to the same date.
  void SetDate(const COleDateTime& date) { m_dates.fill(date); }

 private:
  Dates m_dates;
};
