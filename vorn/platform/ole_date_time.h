#pragma once

#include <cstdint>

#include "vorn/platform/cstring.h"

// A system header may have claimed this name for a macro.
#ifdef GetCurrentTime
#undef GetCurrentTime
#endif

/// A date and time to the second, the years 100 to 9999: a source-compatible subset of the framework's class.
///
/// Held as days from midnight, 30 December 1899. The fraction is the time of day and counts forward whatever the
/// sign of the day: -1.25 is 29 December 1899, 06:00.
class COleDateTime {
 public:
  /// Whether there is a date.
  enum DateTimeStatus : std::int32_t {
    error = -1,   ///< what the parts of a date that is not valid read as
    valid = 0,    ///< a date
    invalid = 1,  ///< a date was set that does not exist
    null = 2,     ///< no date
  };

  /// Midnight, 30 December 1899.
  COleDateTime() = default;
  /// The date of these parts, as `SetDateTime` takes it.
  COleDateTime(int year, int month, int day, int hour, int minute, int second) {
    SetDateTime(year, month, day, hour, minute, second);
  }

  /// The local time, to the second.
  [[nodiscard]] static COleDateTime GetCurrentTime();

  /// Sets the date and gives 0; a date that does not exist leaves the value, sets the status to invalid and gives 1.
  int SetDateTime(int year, int month, int day, int hour, int minute, int second);

  /// Whether there is a date; setting it leaves the value.
  [[nodiscard]] DateTimeStatus GetStatus() const { return m_status; }
  void SetStatus(DateTimeStatus status) { m_status = status; }

  /// The parts, rounded to the nearest second; `error` unless the date is valid.
  [[nodiscard]] int GetYear() const;
  /// The month, 1 to 12.
  [[nodiscard]] int GetMonth() const;
  /// The day of the month, 1 to 31.
  [[nodiscard]] int GetDay() const;
  /// The hour, 0 to 23.
  [[nodiscard]] int GetHour() const;
  /// The minute, 0 to 59.
  [[nodiscard]] int GetMinute() const;
  /// The second, 0 to 59.
  [[nodiscard]] int GetSecond() const;

  /// The format with %Y %m %d %H %M %S %y %j (day of the year) and %% replaced, digits padded with zeros; any other
  /// conversion is copied as it stands. Empty unless the date is valid.
  [[nodiscard]] CString Format(const char* format) const;

  friend bool operator==(const COleDateTime& a, const COleDateTime& b) = default;

  double m_dt = 0.0;                ///< days from midnight, 30 December 1899
  DateTimeStatus m_status = valid;  ///< whether there is a date
};
