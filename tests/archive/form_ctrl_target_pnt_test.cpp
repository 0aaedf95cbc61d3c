#include "vorn/control/form_ctrl_target_pnt.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/archive/full_records.h"

namespace archive_test {

VornFormCtrlTargetPnt FullTargetPoint(int n) {
  const auto k = static_cast<std::uint32_t>(100 * n);
  VornFormCtrlTargetPnt point;
  point.Set(n + 0.7, CString("target-form-" + std::to_string(n)), CString("target-code-" + std::to_string(n)), true);
  point.SetSerialID(k + 71);
  point.SetBuildFormID(k + 72);
  point.SetSectionID(k + 73);
  point.SetCrossPointType(static_cast<CrossPointType>(k + 74));
  point.SetXSectType(k + 75);
  point.SetSectNameID(k + 76);
  // Not archived.
  point.SetPntID(k + 77);
  point.SetOffset(n + 0.78);
  point.SetElevation(n + 0.79);
  point.SetSide(VornLocation::Right);
  return point;
}

ExpectedBytes TargetPointBytes(const Layout& at, int n) {
  const auto k = static_cast<std::uint32_t>(100 * n);
  return {
      {"extension table", EmptyTable()},
      {"station", Real(n + 0.7)},
      {"change of section", Bool(true)},
      {"form name", Text("target-form-" + std::to_string(n))},
      {"code", Text("target-code-" + std::to_string(n))},
      {"reserved word", U16(0)},
      {"reserved double word", U32(0)},
      {"serial", U32(k + 71), at.IsReadSince("05.00")},
      {"form ID", U32(k + 72), at.IsReadSince("05.00")},
      {"section ID", U32(k + 73), at.IsReadSince("05.00")},
      {"crossing type", U32(k + 74), at.IsReadSince("05.00")},
      {"section type", U32(k + 75), at.IsFrom("06.00")},
      {"section name ID", U32(k + 76), at.IsFrom("06.00")},
  };
}

namespace {

void ExpectNotArchivedAtDefaults(const VornFormCtrlTargetPnt& point) {
  const VornFormCtrlTargetPnt fresh;
  EXPECT_EQ(point.GetPntID(), 0xFFFFFFFF);
  EXPECT_EQ(point.GetOffset(), fresh.GetOffset());
  EXPECT_EQ(point.GetElevation(), fresh.GetElevation());
  EXPECT_EQ(point.GetSide(), VornLocation::Unset);
}

}  // namespace

void ExpectTargetPoint(const VornFormCtrlTargetPnt& point, const Layout& at, int n) {
  const auto k = static_cast<std::uint32_t>(100 * n);
  const bool isFrom05 = at.IsFrom("05.00");
  const bool isFrom06 = at.IsFrom("06.00");
  EXPECT_EQ(point.GetCumulativeDist(), n + 0.7);
  EXPECT_TRUE(point.GetXSectChg());
  EXPECT_EQ(point.GetBuildFormName(), CString("target-form-" + std::to_string(n)));
  EXPECT_EQ(point.GetCode(), CString("target-code-" + std::to_string(n)));
  EXPECT_EQ(point.GetSerialID(), isFrom05 ? k + 71 : 0);
  EXPECT_EQ(point.GetBuildFormID(), isFrom05 ? k + 72 : 0);
  EXPECT_EQ(point.GetSectionID(), isFrom05 ? k + 73 : 0);
  EXPECT_EQ(static_cast<std::uint32_t>(point.GetCrossPointType()), isFrom05 ? k + 74 : 0);
  EXPECT_EQ(point.GetXSectType(), isFrom06 ? k + 75 : 0);
  EXPECT_EQ(point.GetSectNameID(), isFrom06 ? k + 76 : 0);
  ExpectNotArchivedAtDefaults(point);
}

namespace {

class FormCtrlTargetPntArchive : public InStoreVersion {};
IN_EVERY_STORE_VERSION(FormCtrlTargetPntArchive);

TEST_P(FormCtrlTargetPntArchive, WritesItsFieldsWithTheReservedOnesAsZeros) {
  EXPECT_TRUE(HasBytes(StoredAs(FullTargetPoint(2), GetParam()), TargetPointBytes(Written(), 2)));
}

TEST_P(FormCtrlTargetPntArchive, ReadsItsFieldsAndLeavesTheOthersAtTheirDefaults) {
  const auto point = ReadBack<VornFormCtrlTargetPnt>(TargetPointBytes(Read(), 2).All(), GetParam());
  ExpectTargetPoint(point, Read(), 2);
}

TEST_P(FormCtrlTargetPntArchive, ReadingOldDataClearsTypeAndNameIdentifiersAndKeepsTheOtherMembers) {
  VornFormCtrlTargetPnt point = FullTargetPoint(9);
  ReadInto(point, TargetPointBytes(Read(), 2).All(), GetParam());
  EXPECT_EQ(point.GetXSectType(), Read().IsFrom("06.00") ? 275u : 0u);
  EXPECT_EQ(point.GetSectNameID(), Read().IsFrom("06.00") ? 276u : 0u);
  EXPECT_EQ(point.GetSerialID(), Read().IsFrom("05.00") ? 271u : 971u);
  EXPECT_EQ(point.GetPntID(), 977u);
  EXPECT_EQ(point.GetOffset(), 9.78);
  EXPECT_EQ(point.GetElevation(), 9.79);
  EXPECT_EQ(point.GetSide(), VornLocation::Right);
}

// Old data have no such identifiers and clear them; a record that should have them and ends too early does not.
TEST_P(FormCtrlTargetPntArchive, KeepsTypeAndNameIdentifiersOfARecordThatEndsBeforeThem) {
  if (!Read().IsFrom("06.00")) return;
  const Bytes whole = TargetPointBytes(Read(), 2).All();
  const CString tag = Tag();
  for (const std::ptrdiff_t missing : {4, 8}) {
    VornFormCtrlTargetPnt point = FullTargetPoint(9);
    test_support::LoadingArchive ar(Bytes(whole.begin(), whole.end() - missing));
    EXPECT_EQ(test_support::ArchiveRefusal([&] { point.Serialize(*ar, tag); }), CArchiveException::endOfFile);
    EXPECT_EQ(point.GetXSectType(), missing == 4 ? 275u : 975u);
    EXPECT_EQ(point.GetSectNameID(), 976u);
  }
}

TEST_P(FormCtrlTargetPntArchive, WritingLeavesTypeAndNameIdentifiersAlone) {
  VornFormCtrlTargetPnt point = FullTargetPoint(2);
  static_cast<void>(StoredAs(point, GetParam()));
  EXPECT_EQ(point.GetXSectType(), 275u);
  EXPECT_EQ(point.GetSectNameID(), 276u);
}

TEST_P(FormCtrlTargetPntArchive, ForgetsWhatStandsInTheReservedPlaces) {
  Bytes bytes = TargetPointBytes(Read(), 2).All();
  const std::size_t reserved = 4 + 8 + 1 + (1 + 13) + (1 + 13);
  for (std::size_t i = 0; i < 6; ++i) bytes[reserved + i] = 0xA5;
  const auto point = ReadBack<VornFormCtrlTargetPnt>(bytes, GetParam());
  ExpectTargetPoint(point, Read(), 2);
}

TEST(FormCtrlTargetPntArchive0500, KeepsItsIdentifiersButNotTypeAndName) {
  const auto point = ReadBack<VornFormCtrlTargetPnt>(TargetPointBytes({"05.00", Way::Read}, 2).All(), "05.00");
  EXPECT_EQ(point.GetSerialID(), 271u);
  EXPECT_EQ(point.GetBuildFormID(), 272u);
  EXPECT_EQ(point.GetSectionID(), 273u);
  EXPECT_EQ(static_cast<int>(point.GetCrossPointType()), 274);
  EXPECT_EQ(point.GetXSectType(), 0u);
  EXPECT_EQ(point.GetSectNameID(), 0u);
}

TEST(FormCtrlTargetPntArchiveVersions, ChangeTheLayoutExactlyAtTheirNumber) {
  for (const char* version : {"04.99", "05.01", "05.99", "06.01"}) {
    SCOPED_TRACE(version);
    EXPECT_TRUE(HasBytes(StoredAs(FullTargetPoint(3), version), TargetPointBytes({version, Way::Written}, 3)));
    const auto point = ReadBack<VornFormCtrlTargetPnt>(TargetPointBytes({version, Way::Read}, 3).All(), version);
    ExpectTargetPoint(point, {version, Way::Read}, 3);
  }
}

}  // namespace
}  // namespace archive_test
