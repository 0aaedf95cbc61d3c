#include "host/document/edition.h"

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>
#include <string>

#include "tests/host/documents.h"

namespace vorn_host {
namespace {

std::string Settings() {
  const VornSchema& schema = VornSchema::Instance();
  return std::to_string(static_cast<int>(schema.GetVersion())) + " " + std::to_string(schema.Kind()) + " " +
         std::to_string(VornNumericalPrecision::GetInstance().GetDecimalPlaceZ()) + " " +
         std::to_string(static_cast<int>(Vorn_Base::m_staticDataKind));
}

TEST(EditionNames, AreThoseOfTheCommandLine) {
  EXPECT_EQ(EditionName(Edition::V20), "2.0");
  EXPECT_EQ(EditionName(Edition::V40), "4.0");
  EXPECT_EQ(EditionName(Edition::V41), "4.1");
  EXPECT_EQ(EditionName(Edition::Maff10), "maff-1.0");
  EXPECT_EQ(EditionName(Edition::RoadGm), "RoadGm");
}

TEST(EditionNames, OfWritableEditionsAreUnderstood) {
  for (const Edition edition : kWritableEditions) EXPECT_EQ(ParseEdition(EditionName(edition)), edition);
  EXPECT_EQ(ParseEdition("RoadGm"), std::nullopt);
  EXPECT_EQ(ParseEdition("4.2"), std::nullopt);
  EXPECT_EQ(ParseEdition("MAFF-1.0"), std::nullopt);
  EXPECT_EQ(ParseEdition(""), std::nullopt);
}

TEST(Editions, KeepControlTargetsInTheFormsIn20Only) {
  EXPECT_TRUE(IsEdition20(Edition::V20));
  EXPECT_TRUE(IsEdition20(Edition::RoadGm));
  EXPECT_FALSE(IsEdition20(Edition::V40));
  EXPECT_FALSE(IsEdition20(Edition::V41));
  EXPECT_FALSE(IsEdition20(Edition::Maff10));
}

TEST(EditionScope, SelectsTheEditionWithItsDecimals) {
  for (const Edition edition : {Edition::V20, Edition::V40, Edition::V41, Edition::Maff10, Edition::RoadGm}) {
    const EditionScope scope(edition);
    EXPECT_EQ(CurrentEdition(), edition);
    EXPECT_EQ(VornSchema::Instance().IsVer2(), IsEdition20(edition));
    EXPECT_EQ(VornSchema::Instance().IsMaff(), edition == Edition::Maff10);
    EXPECT_EQ(VornNumericalPrecision::GetInstance().GetDecimalPlaceZ(), IsEdition20(edition) ? 3 : 4);
    EXPECT_EQ(Vorn_Base::m_staticDataKind == VORN_DataKind::RoadGeometry, edition == Edition::RoadGm);
  }
}

TEST(EditionScope, PutsTheFormerSettingsBack) {
  const std::string before = Settings();
  {
    const EditionScope outer(Edition::RoadGm);
    const std::string between = Settings();
    {
      const EditionScope inner(Edition::Maff10);
      EXPECT_NE(Settings(), between);
    }
    EXPECT_EQ(Settings(), between);
  }
  EXPECT_EQ(Settings(), before);
}

TEST(EditionScope, PutsTheFormerSettingsBackAlsoWhenSomethingIsThrown) {
  const std::string before = Settings();
  try {
    const EditionScope scope(Edition::V20);
    throw std::runtime_error("anything");
  } catch (const std::runtime_error&) {
  }
  EXPECT_EQ(Settings(), before);
}

TEST(Documents, LeaveTheProcessWideSettingsAlone) {
  const std::string before = Settings();
  for (const Edition edition : {Edition::V20, Edition::Maff10}) {
    DesignDocument document = host_test::ReadText(host_test::Xml(edition, ""));
    host_test::WriteText(document);
  }
  host_test::ErrorOf([] { (void)host_test::ReadText("<tsf:A/>"); });
  host_test::ErrorOf([] { (void)host_test::ReadText(host_test::Xml(Edition::V20, "<tsf:XSections refAlign='é'/>")); });
  EXPECT_EQ(Settings(), before);
}

}  // namespace
}  // namespace vorn_host
