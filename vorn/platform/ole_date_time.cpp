#include "vorn/platform/ole_date_time.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <ctime>
#include <optional>
#include <string>

namespace {

using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr int kFirstYear = 100;
constexpr int kLastYear = 9999;
constexpr int kSecondsADay = 86400;

constexpr sys_days Date(int year, int month, int day) {
  return year_month_day(std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
                        std::chrono::day(static_cast<unsigned>(day)));
}

constexpr sys_days kDayZero = Date(1899, 12, 30);
constexpr sys_days kFirstDay = Date(kFirstYear, 1, 1);
constexpr sys_days kLastDay = Date(kLastYear, 12, 31);

struct DateTimeParts {
  int year, month, day, hour, minute, second, yearOfCentury, dayOfYear;
};

bool Exists(int year, int month, int day) {
  if (year < kFirstYear || year > kLastYear || month < 1 || month > 12 || day < 1 || day > 31) return false;
  return year_month_day(Date(year, month, day)).day() == std::chrono::day(static_cast<unsigned>(day));
}

std::optional<DateTimeParts> Split(const COleDateTime& dateTime) {
  if (dateTime.GetStatus() != COleDateTime::valid) return std::nullopt;
  const double wholeDays = std::trunc(dateTime.m_dt);
  if (!(wholeDays >= (kFirstDay - kDayZero).count() && wholeDays <= (kLastDay - kDayZero).count())) return std::nullopt;

  auto seconds = static_cast<int>(std::lround(std::fabs(dateTime.m_dt - wholeDays) * kSecondsADay));
  sys_days day = kDayZero + std::chrono::days(static_cast<int>(wholeDays));
  if (seconds == kSecondsADay) {
    seconds = 0;
    day += std::chrono::days(1);
  }
  if (day > kLastDay) return std::nullopt;

  const year_month_day date(day);
  const int year = static_cast<int>(date.year());
  return DateTimeParts{
      .year = year,
      .month = static_cast<int>(static_cast<unsigned>(date.month())),
      .day = static_cast<int>(static_cast<unsigned>(date.day())),
      .hour = seconds / 3600,
      .minute = seconds / 60 % 60,
      .second = seconds % 60,
      .yearOfCentury = year % 100,
      .dayOfYear = static_cast<int>((day - Date(year, 1, 1)).count()) + 1,
  };
}

int Part(const COleDateTime& dateTime, int DateTimeParts::*part) {
  const auto parts = Split(dateTime);
  return parts ? (*parts).*part : static_cast<int>(COleDateTime::error);
}

struct Conversion {
  char letter;
  int DateTimeParts::*part;
  std::size_t width;
};

constexpr std::array kConversions = {
    Conversion{'Y', &DateTimeParts::year, 4},   Conversion{'y', &DateTimeParts::yearOfCentury, 2},
    Conversion{'m', &DateTimeParts::month, 2},  Conversion{'d', &DateTimeParts::day, 2},
    Conversion{'H', &DateTimeParts::hour, 2},   Conversion{'M', &DateTimeParts::minute, 2},
    Conversion{'S', &DateTimeParts::second, 2}, Conversion{'j', &DateTimeParts::dayOfYear, 3},
};

void AppendPadded(std::string& text, int value, std::size_t width) {
  const std::string digits = std::to_string(value);
  text.append(width - std::min(width, digits.size()), '0').append(digits);
}

/// Appends what the letter after a percent sign stands for; false when it is not known.
bool AppendConversion(std::string& text, char letter, const DateTimeParts& parts) {
  if (letter == '%') {
    text += '%';
    return true;
  }
  for (const Conversion& conversion : kConversions) {
    if (conversion.letter != letter) continue;
    AppendPadded(text, parts.*conversion.part, conversion.width);
    return true;
  }
  return false;
}

std::tm LocalTime(std::time_t time) {
  std::tm local{};
#ifdef _WIN32
  localtime_s(&local, &time);
#else
  localtime_r(&time, &local);
#endif
  return local;
}

}  // namespace

COleDateTime COleDateTime::GetCurrentTime() {
  const std::tm now = LocalTime(std::time(nullptr));
  // A leap second is read as the one before it.
  const int second = now.tm_sec < 60 ? now.tm_sec : 59;
  return {now.tm_year + 1900, now.tm_mon + 1, now.tm_mday, now.tm_hour, now.tm_min, second};
}

int COleDateTime::SetDateTime(int year, int month, int day, int hour, int minute, int second) {
  const bool timeExists = hour >= 0 && hour < 24 && minute >= 0 && minute < 60 && second >= 0 && second < 60;
  if (!timeExists || !Exists(year, month, day)) {
    m_status = invalid;
    return 1;
  }
  const auto days = static_cast<double>((Date(year, month, day) - kDayZero).count());
  const double timeOfDay = static_cast<double>(hour * 3600 + minute * 60 + second) / kSecondsADay;
  m_dt = days < 0 ? days - timeOfDay : days + timeOfDay;
  m_status = valid;
  return 0;
}

int COleDateTime::GetYear() const { return Part(*this, &DateTimeParts::year); }
int COleDateTime::GetMonth() const { return Part(*this, &DateTimeParts::month); }
int COleDateTime::GetDay() const { return Part(*this, &DateTimeParts::day); }
int COleDateTime::GetHour() const { return Part(*this, &DateTimeParts::hour); }
int COleDateTime::GetMinute() const { return Part(*this, &DateTimeParts::minute); }
int COleDateTime::GetSecond() const { return Part(*this, &DateTimeParts::second); }

CString COleDateTime::Format(const char* format) const {
  const auto parts = Split(*this);
  if (!parts || format == nullptr) return {};
  std::string text;
  for (const char* at = format; *at != '\0'; ++at) {
    if (*at == '%' && AppendConversion(text, at[1], *parts)) {
      ++at;
    } else {
      text += *at;
    }
  }
  return CString(text);
}
