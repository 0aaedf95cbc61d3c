#include <gtest/gtest.h>

#include <clocale>
#include <locale>
#include <string>

#include "tests/support/xml_tree.h"
#include "vorn/framework/base.h"
#include "vorn/platform/sil_string.h"

// Documents hold a point before the decimals and no grouping, whatever the user's country writes.

namespace {

using test_support::XmlTree;
using test_support::XmlTreeCursor;

/// 1.234.567,5
class CommaNumbers : public std::numpunct<char> {
 protected:
  [[nodiscard]] char do_decimal_point() const override { return ','; }
  [[nodiscard]] char do_thousands_sep() const override { return '.'; }
  [[nodiscard]] std::string do_grouping() const override { return "\3"; }
};

/// Makes numbers with a comma the process's own for a scope.
class CommaScope {
 public:
  CommaScope() = default;
  CommaScope(const CommaScope&) = delete;
  CommaScope& operator=(const CommaScope&) = delete;
  ~CommaScope() { std::locale::global(m_before); }

 private:
  std::locale m_before = std::locale::global(std::locale(std::locale::classic(), new CommaNumbers));
};

/// Selects a locale of the C library that writes a comma, if the machine has one, for a scope.
class CLocaleScope {
 public:
  CLocaleScope() {
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "de_DE", "German_Germany.1252", "fr_FR.UTF-8", "fr_FR"}) {
      m_comma = std::setlocale(LC_ALL, name) != nullptr && *std::localeconv()->decimal_point == ',';
      if (m_comma) break;
    }
  }
  CLocaleScope(const CLocaleScope&) = delete;
  CLocaleScope& operator=(const CLocaleScope&) = delete;
  ~CLocaleScope() { std::setlocale(LC_ALL, m_before.c_str()); }

  [[nodiscard]] bool HasComma() const { return m_comma; }

 private:
  std::string m_before = std::setlocale(LC_ALL, nullptr);
  bool m_comma = false;
};

std::string Written(double value, KelMrmFigure places) {
  XmlTree tree;
  XmlTreeCursor cursor(tree);
  EXPECT_TRUE(Vorn_Base::AddAttr(&cursor, "value", value, places));
  return cursor.Current().attributes.front().second;
}

std::string Written(NurLong value) {
  XmlTree tree;
  XmlTreeCursor cursor(tree);
  EXPECT_TRUE(Vorn_Base::AddAttr(&cursor, "value", value, false));
  return cursor.Current().attributes.front().second;
}

std::string Written(const COleDateTime& value) {
  XmlTree tree;
  XmlTreeCursor cursor(tree);
  EXPECT_TRUE(Vorn_Base::AddAttr(&cursor, "value", value));
  return cursor.Current().attributes.front().second;
}

void ExpectNumbersOfDocuments() {
  EXPECT_EQ(SilString::StrDouble(1234567.5, 3), "1234567.500");
  EXPECT_EQ(SilString::StrDouble(-0.25, 1), "-0.3");
  EXPECT_EQ(SilString::StrDouble(1.005, 2), "1.01");
  EXPECT_EQ(SilString::StrDouble(1e21, 2), "1000000000000000000000.00");
  EXPECT_EQ(SilString::StrSignedInteger(-1234567), "-1234567");

  EXPECT_EQ(SilString::ToDouble("1234.5"), 1234.5);
  EXPECT_EQ(SilString::ToDouble("-1.5e-3"), -0.0015);
  EXPECT_EQ(SilString::ToDouble("1,5"), 1.0);
  EXPECT_EQ(SilString::ToDouble("1.234.567"), 1.234);
  EXPECT_EQ(SilString::ToInteger("1.234"), 1);
  EXPECT_EQ(Vorn_Base::TurnReal("12.300"), 12.3);

  EXPECT_EQ(Written(1234567.5, 4), "1234567.5000");
  EXPECT_EQ(Written(2.5999999999999996, 4), "2.6000");
  EXPECT_EQ(Written(NurLong(-1234567)), "-1234567");
  EXPECT_EQ(Written(COleDateTime(2024, 5, 6, 7, 8, 9)), "2024-05-06T07:08:09");
}

TEST(Locale, OfStreamsLeavesNumbersOfDocumentsAlone) {
  const CommaScope scope;
  ASSERT_EQ(std::use_facet<std::numpunct<char>>(std::locale()).decimal_point(), ',');
  ExpectNumbersOfDocuments();
}

TEST(Locale, OfTheCLibraryLeavesNumbersOfDocumentsAlone) {
  const CLocaleScope scope;
  if (!scope.HasComma()) GTEST_SKIP() << "no locale with a decimal comma on this machine";
  ExpectNumbersOfDocuments();
}

}  // namespace
