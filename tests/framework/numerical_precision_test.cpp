#include "vorn/framework/numerical_precision.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "tests/support/xml_tree.h"

namespace {

using Precision = VornNumericalPrecision;
using test_support::EditionScope;

struct Row {
  const char* quantity;
  KelMrmFigure (Precision::*places)() const;
  int later;
  int edition20;
};

constexpr Row kRows[] = {
    {"XY", &Precision::GetDecimalPlaceXY, 6, 6},
    {"Pos", &Precision::GetDecimalPlacePos, 4, 6},
    {"Dist", &Precision::GetDecimalPlaceDist, 4, 4},
    {"Z", &Precision::GetDecimalPlaceZ, 4, 3},
    {"Rad", &Precision::GetDecimalPlaceRad, 4, 3},
    {"ClothoidPrm", &Precision::GetDecimalPlaceClothoidPrm, 4, 3},
    {"ClothoidRad", &Precision::GetDecimalPlaceClothoidRad, 4, 3},
    {"Slant", &Precision::GetDecimalPlaceSlant, 3, 3},
    {"Slope", &Precision::GetDecimalPlaceSlope, 3, 3},
    {"Angle", &Precision::GetDecimalPlaceAngle, 5, 4},
    {"DiffTP", &Precision::GetDecimalPlaceDiffTP, 4, 4},
    {"Percent", &Precision::GetDecimalPercent, 3, 3},
    {"Rate", &Precision::GetDecimalRate, 1, 1},
};

class NumericalPrecisionTest : public testing::Test {
 protected:
  static Precision& Places() { return Precision::GetInstance(); }

  static void ExpectLater(const Precision& precision) {
    for (const Row& row : kRows) EXPECT_EQ((precision.*row.places)(), row.later) << row.quantity;
  }
  static void ExpectEdition20(const Precision& precision) {
    for (const Row& row : kRows) EXPECT_EQ((precision.*row.places)(), row.edition20) << row.quantity;
  }

  EditionScope m_edition{VornSchema::Version41};
};

TEST(NumericalPrecisionAtStart, IsThatOfEdition41) {
  for (const Row& row : kRows) EXPECT_EQ((Precision::GetInstance().*row.places)(), row.later) << row.quantity;
}

TEST(NumericalPrecisionAtStart, IsThatOfEdition41WhateverEditionIsSelectedByThen) {
  const VornSchema selected = VornSchema::Instance();
  VornSchema::Instance().SetVersion(VornSchema::Version20);
  const Precision first = Precision::GetInstance();  // in a process of its own, this is the first use
  Precision::GetInstance().SetDecimalPlace();
  const Precision asked = Precision::GetInstance();
  VornSchema::Instance() = selected;
  const Precision left = Precision::GetInstance();
  Precision::GetInstance() = first;

  for (const Row& row : kRows) {
    EXPECT_EQ((first.*row.places)(), row.later) << row.quantity;
    EXPECT_EQ((asked.*row.places)(), row.edition20) << row.quantity;
    EXPECT_EQ((left.*row.places)(), row.edition20) << row.quantity;
  }
}

TEST_F(NumericalPrecisionTest, IsOneObjectForTheProcess) {
  EXPECT_EQ(&Precision::GetInstance(), &Precision::GetInstance());
  EXPECT_TRUE(std::has_virtual_destructor_v<Precision>);
  EXPECT_EQ(sizeof(KelMrmFigure), 4u);
}

TEST_F(NumericalPrecisionTest, LaterEditionsShareTheirPlaces) {
  for (const auto version : {VornSchema::Version40, VornSchema::Version41, static_cast<VornSchema::Version>(3)}) {
    for (const int kind : {VornSchema::KindTsf, VornSchema::KindRoadGm, VornSchema::KindMaff}) {
      m_edition.Select(version, kind);
      ExpectLater(Places());
    }
  }
}

TEST_F(NumericalPrecisionTest, Edition20WritesHeightsWithThreePlacesAnglesWithFourAndKeepsSlant) {
  m_edition.Select(VornSchema::Version20);
  ExpectEdition20(Places());
}

TEST_F(NumericalPrecisionTest, AnUnknownVersionCountsAsEdition20) {
  m_edition.Select(VornSchema::VersionUnknown);
  ExpectEdition20(Places());
}

TEST_F(NumericalPrecisionTest, ComesBackFromEdition20) {
  m_edition.Select(VornSchema::Version20);
  m_edition.Select(VornSchema::Version40);
  ExpectLater(Places());
}

TEST_F(NumericalPrecisionTest, FollowsTheEditionOnlyWhenAsked) {
  VornSchema::Instance().SetVersion(VornSchema::Version20);
  ExpectLater(Places());
  Places().SetDecimalPlace();
  ExpectEdition20(Places());
}

TEST_F(NumericalPrecisionTest, AssignmentTakesAllPlaces) {
  const Precision later = Places();
  m_edition.Select(VornSchema::Version20);
  const Precision edition20 = Places();
  Places() = later;
  ExpectLater(Places());
  Places() = edition20;
  ExpectEdition20(Places());
}

}  // namespace
