#include "vorn/platform/ole_date_time.h"

#include <gtest/gtest.h>

#include <cmath>
#include <ctime>
#include <limits>

#include "vorn/platform/code_page_932.h"

namespace {

CString Text(double dt) {
  COleDateTime dateTime;
  dateTime.m_dt = dt;
  return dateTime.Format("%Y-%m-%d %H:%M:%S");
}

bool IsLeapYear(int year) { return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0); }

int DaysInMonth(int year, int month) {
  if (month == 2) return IsLeapYear(year) ? 29 : 28;
  return month == 4 || month == 6 || month == 9 || month == 11 ? 30 : 31;
}

TEST(OleDateTime, StartsAsAValidDayZero) {
  const COleDateTime dateTime;
  EXPECT_EQ(dateTime.m_dt, 0.0);
  EXPECT_EQ(dateTime.GetStatus(), COleDateTime::valid);
  EXPECT_EQ(Text(0.0), "1899-12-30 00:00:00");
}

TEST(OleDateTime, HasAStatusOf32Bits) {
  static_assert(sizeof(COleDateTime::m_status) == 4);
  EXPECT_EQ(static_cast<std::int32_t>(COleDateTime::null), 2);
}

TEST(OleDateTime, CountsDaysFromItsDayZero) {
  EXPECT_EQ(COleDateTime(1899, 12, 31, 0, 0, 0).m_dt, 1.0);
  EXPECT_EQ(COleDateTime(1900, 1, 1, 12, 0, 0).m_dt, 2.5);
  EXPECT_EQ(COleDateTime(1970, 1, 1, 0, 0, 0).m_dt, 25569.0);
  EXPECT_EQ(COleDateTime(2000, 2, 29, 18, 0, 0).m_dt, 36585.75);
  EXPECT_EQ(COleDateTime(100, 1, 1, 0, 0, 0).m_dt, -657434.0);
  EXPECT_EQ(COleDateTime(9999, 12, 31, 0, 0, 0).m_dt, 2958465.0);
}

TEST(OleDateTime, CountsTheTimeOfDayForwardBeforeDayZero) {
  EXPECT_EQ(COleDateTime(1899, 12, 29, 6, 0, 0).m_dt, -1.25);
  EXPECT_EQ(Text(-1.25), "1899-12-29 06:00:00");
  EXPECT_EQ(Text(-1.0), "1899-12-29 00:00:00");
  EXPECT_EQ(Text(-1.75), "1899-12-29 18:00:00");
  EXPECT_EQ(Text(-0.25), "1899-12-30 06:00:00");
  EXPECT_EQ(COleDateTime(1899, 12, 30, 6, 0, 0).m_dt, 0.25) << "on day zero itself the time counts from zero up";
  EXPECT_EQ(COleDateTime(100, 1, 1, 23, 59, 59).GetSecond(), 59);
  EXPECT_EQ(COleDateTime(100, 1, 1, 23, 59, 59).GetYear(), 100);
}

TEST(OleDateTime, KeepsEveryDayOfItsRange) {
  double expected = -657434.0;
  int dayOfYear = 0;
  for (int year = 100; year <= 9999; ++year) {
    dayOfYear = 0;
    for (int month = 1; month <= 12; ++month) {
      for (int day = 1; day <= DaysInMonth(year, month); ++day, ++expected) {
        const COleDateTime date(year, month, day, 0, 0, 0);
        ++dayOfYear;
        ASSERT_EQ(date.m_dt, expected);
        if (day > 1 && day < 28) continue;
        ASSERT_EQ(date.GetYear(), year);
        ASSERT_EQ(date.GetMonth(), month);
        ASSERT_EQ(date.GetDay(), day);
      }
      EXPECT_EQ(COleDateTime(year, month, DaysInMonth(year, month) + 1, 0, 0, 0).GetStatus(), COleDateTime::invalid);
    }
    ASSERT_EQ(dayOfYear, IsLeapYear(year) ? 366 : 365);
  }
}

TEST(OleDateTime, KeepsEverySecondOfADayInTheFarCorners) {
  for (const int year : {100, 1899, 1900, 9999}) {
    for (int second = 0; second < 86400; ++second) {
      const COleDateTime date(year, 12, 31, second / 3600, second / 60 % 60, second % 60);
      ASSERT_EQ(date.GetHour() * 3600 + date.GetMinute() * 60 + date.GetSecond(), second);
      ASSERT_EQ(date.GetDay(), 31);
    }
  }
}

TEST(OleDateTime, RoundsToTheNearestSecond) {
  constexpr double kSecond = 1.0 / 86400;
  EXPECT_EQ(Text(1.0 + 0.4 * kSecond), "1899-12-31 00:00:00");
  EXPECT_EQ(Text(1.0 + 0.6 * kSecond), "1899-12-31 00:00:01");
  EXPECT_EQ(Text(2.0 - 0.4 * kSecond), "1900-01-01 00:00:00");
  EXPECT_EQ(Text(2.0 - 0.6 * kSecond), "1899-12-31 23:59:59");
  EXPECT_EQ(Text(-2.0 + 0.4 * kSecond), "1899-12-30 00:00:00");
}

TEST(OleDateTime, RefusesDatesThatDoNotExist) {
  const int wrong[][6] = {
      {99, 12, 31, 0, 0, 0},   {10000, 1, 1, 0, 0, 0},    {0, 0, 0, 0, 0, 0},     {-1, 1, 1, 0, 0, 0},
      {2000, 0, 1, 0, 0, 0},   {2000, 13, 1, 0, 0, 0},    {2000, 1, 0, 0, 0, 0},  {2000, 1, 32, 0, 0, 0},
      {2000, 4, 31, 0, 0, 0},  {2000, 2, 30, 0, 0, 0},    {2001, 2, 29, 0, 0, 0}, {1900, 2, 29, 0, 0, 0},
      {2000, 1, 1, 24, 0, 0},  {2000, 1, 1, -1, 0, 0},    {2000, 1, 1, 0, 60, 0}, {2000, 1, 1, 0, -1, 0},
      {2000, 1, 1, 0, 0, 60},  {2000, 1, 1, 0, 0, -1},    {70000, 1, 1, 0, 0, 0}, {2000, 257, 1, 0, 0, 0},
      {2000, 1, 257, 0, 0, 0}, {INT32_MAX, 1, 1, 0, 0, 0}};
  for (const auto& [year, month, day, hour, minute, second] : wrong) {
    COleDateTime date(2000, 1, 1, 0, 0, 0);
    EXPECT_EQ(date.SetDateTime(year, month, day, hour, minute, second), 1) << year << '-' << month << '-' << day;
    EXPECT_EQ(date.GetStatus(), COleDateTime::invalid);
    EXPECT_EQ(date.GetYear(), COleDateTime::error);
    EXPECT_EQ(date.Format("%Y"), "");
    EXPECT_EQ(COleDateTime(year, month, day, hour, minute, second).GetStatus(), COleDateTime::invalid);
  }
}

TEST(OleDateTime, BecomesValidAgainWithARealDate) {
  COleDateTime date(2000, 2, 30, 0, 0, 0);
  EXPECT_EQ(date.SetDateTime(2000, 2, 29, 0, 0, 0), 0);
  EXPECT_EQ(date.GetStatus(), COleDateTime::valid);
}

TEST(OleDateTime, HasNoPartsUnlessValid) {
  COleDateTime date(2024, 5, 6, 7, 8, 9);
  date.SetStatus(COleDateTime::null);
  EXPECT_EQ(date.GetYear(), -1);
  EXPECT_EQ(date.GetMonth(), -1);
  EXPECT_EQ(date.GetDay(), -1);
  EXPECT_EQ(date.GetHour(), -1);
  EXPECT_EQ(date.GetMinute(), -1);
  EXPECT_EQ(date.GetSecond(), -1);
  EXPECT_EQ(date.Format("%Y"), "");
  date.SetStatus(COleDateTime::valid);
  EXPECT_EQ(date.GetYear(), 2024);
}

TEST(OleDateTime, HasNoPartsOutsideItsRange) {
  for (const double dt :
       {-657435.0, 2958466.0, 2958465.9999999, 1e300, -1e300, std::nan(""), std::numeric_limits<double>::infinity()}) {
    EXPECT_EQ(Text(dt), "") << dt;
  }
  EXPECT_EQ(Text(-657434.0), "0100-01-01 00:00:00");
  EXPECT_EQ(Text(2958465.0), "9999-12-31 00:00:00");
}

TEST(OleDateTime, Formats) {
  const COleDateTime date(2024, 3, 5, 7, 8, 9);
  EXPECT_EQ(date.Format("%Y/%m/%d %H:%M:%S"), "2024/03/05 07:08:09");
  EXPECT_EQ(date.Format("%y %j %%Y"), "24 065 %Y");
  EXPECT_EQ(date.Format("%Q%"), "%Q%");
  EXPECT_EQ(date.Format(""), "");
  EXPECT_EQ(date.Format(nullptr), "");
  EXPECT_EQ(COleDateTime(805, 1, 1, 0, 0, 0).Format("%Y %y"), "0805 05");
  EXPECT_EQ(COleDateTime(2024, 12, 31, 0, 0, 0).Format("%j"), "366");
  EXPECT_EQ(date.Format(u8"%Y年%m月%d日"_cp932.data()), u8"2024年03月05日"_cp932);
}

TEST(OleDateTime, ComparesValueAndStatus) {
  COleDateTime a(2024, 3, 5, 7, 8, 9);
  const COleDateTime b = a;
  EXPECT_TRUE(a == b);
  a.SetStatus(COleDateTime::null);
  EXPECT_FALSE(a == b);
  EXPECT_FALSE(b == COleDateTime(2024, 3, 5, 7, 8, 10));
}

TEST(OleDateTime, TellsTheLocalTime) {
  const COleDateTime now = COleDateTime::GetCurrentTime();
  EXPECT_EQ(now.GetStatus(), COleDateTime::valid);
  const double utc = 25569.0 + static_cast<double>(std::time(nullptr)) / 86400;
  EXPECT_LT(std::fabs(now.m_dt - utc), 1.0);
}

}  // namespace
