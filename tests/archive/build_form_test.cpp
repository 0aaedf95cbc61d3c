#include "vorn/model/build_form.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/archive/full_records.h"
#include "vorn/platform/code_page_932.h"

namespace archive_test {

VornBuildForm FullForm(int n) {
  const int k = 100 * n;
  VornBuildForm form;
  form.SetName(CString("form " + std::to_string(n)), false);
  form.SetXSectType(CString("type " + std::to_string(n)));
  form.SetXSectTypeID(static_cast<std::uint32_t>(k + 92));
  form.SetExportForm(k + 90);
  form.SetSerialID(static_cast<std::uint32_t>(k + 91));
  form.SetParentID(static_cast<std::uint32_t>(k + 93));
  form.SetPaveSetIdx(static_cast<std::uint8_t>(0xF0 + n));
  form.SetCategory(static_cast<TargetPntCategory>(k + 95));
  form.SetCrossLeft(FullCrossing(10 * n));
  form.SetCrossRight(FullCrossing(10 * n + 1));
  form.SetOrgSurface(true);
  form.GetComposedPntArray().Add(FullPoint(10 * n));
  form.GetComposedPntArray().Add(FullPoint(10 * n + 1));
  form.GetFormCtrlTargetArray().Add(FullTarget(n));
  // Not archived.
  form.SetOmitFlag(1);
  form.SetExport(0);
  return form;
}

namespace {

constexpr std::int32_t kCutCode = 1;

}  // namespace

ExpectedBytes FormBytes(const Layout& at, int n) {
  const int k = 100 * n;
  const bool isFrom05 = at.IsFrom("05.00");
  return {
      {"extension table", EmptyTable()},
      {"name", Text("form " + std::to_string(n))},
      {"type", Text("type " + std::to_string(n)), at.IsFrom("04.00")},
      {"old work code", I32(kCutCode), at.IsRead() && !at.IsFrom("04.00")},
      {"export form", I32(k + 90)},
      {"serial", I32(k + 91), isFrom05},
      {"type ID", I32(k + 92), isFrom05},
      {"parent", I32(k + 93), isFrom05},
      {"pavement set", U8(static_cast<std::uint8_t>(0xF0 + n)), isFrom05},
      {"category", I32(k + 95), isFrom05},
      {"left crossing", CrossingBytes(10 * n), isFrom05},
      {"right crossing", CrossingBytes(10 * n + 1), isFrom05},
      {"org surface", Bool(true), at.IsFrom("05.50")},
      {"next point serial", I32(100 * (10 * n + 1) + 16), at.IsReadSince("05.00")},
      {"point count", U32(2)},
      {"points[0]", PointBytes(at, 10 * n)},
      {"points[1]", PointBytes(at, 10 * n + 1)},
      {"next target serial", I32(k + 86), at.IsReadSince("05.00")},
      {"target count", U32(1)},
      {"targets[0]", TargetBytes(at, n)},
  };
}

void ExpectForm(const VornBuildForm& form, const Layout& at, int n) {
  const int k = 100 * n;
  const bool isFrom05 = at.IsFrom("05.00");
  const auto from05 = [&](int value, std::uint32_t otherwise) {
    return isFrom05 ? static_cast<std::uint32_t>(value) : otherwise;
  };
  EXPECT_EQ(form.GetName(), CString("form " + std::to_string(n)));
  constexpr std::string_view kCut = u8"切土工"_cp932;
  EXPECT_EQ(form.GetXSectType(), at.IsFrom("04.00") ? CString("type " + std::to_string(n)) : CString(kCut));
  EXPECT_EQ(form.GetExportForm(), k + 90);
  EXPECT_EQ(form.GetSerialID(), from05(k + 91, 0xFFFFFFFF));
  EXPECT_EQ(form.GetXSectTypeID(), from05(k + 92, 0));
  EXPECT_EQ(form.GetParentID(), from05(k + 93, 0xFFFFFFFF));
  EXPECT_EQ(form.GetPaveSetIdx(), from05(0xF0 + n, 0));
  EXPECT_EQ(static_cast<std::uint32_t>(form.GetCategory()), from05(k + 95, 0));
  if (isFrom05) {
    ExpectCrossing(form.GetCrossLeft(), 10 * n);
    ExpectCrossing(form.GetCrossRight(), 10 * n + 1);
  } else {
    ExpectNoCrossing(form.GetCrossLeft());
    ExpectNoCrossing(form.GetCrossRight());
  }
  EXPECT_EQ(form.IsOrgSurface(), at.IsFrom("05.50"));
  EXPECT_EQ(form.GetOmitFlag(), 0);
  EXPECT_EQ(form.GetExport(), 1);

  EXPECT_EQ(form.GetComposedPntArray().GetNextSerialID(), from05(100 * (10 * n + 1) + 16, 0));
  ASSERT_EQ(form.GetComposedPntArray().GetSize(), 2);
  ExpectPoint(form.GetComposedPntArray()[0], at, 10 * n);
  ExpectPoint(form.GetComposedPntArray()[1], at, 10 * n + 1);
  EXPECT_EQ(form.GetFormCtrlTargetArray().GetNextSerialID(), from05(k + 86, 0));
  ASSERT_EQ(form.GetFormCtrlTargetArray().GetSize(), 1);
  ExpectTarget(form.GetFormCtrlTargetArray()[0], at, n);
}

namespace {

class BuildFormArchive : public InStoreVersion {};
IN_EVERY_STORE_VERSION(BuildFormArchive);

TEST_P(BuildFormArchive, WritesItsFields) {
  EXPECT_TRUE(HasBytes(StoredAs(FullForm(2), GetParam()), FormBytes(Written(), 2)));
}

TEST_P(BuildFormArchive, ReadsItsFieldsAndLeavesTheOthersAtTheirDefaults) {
  ExpectForm(ReadBack<VornBuildForm>(FormBytes(Read(), 2).All(), GetParam()), Read(), 2);
}

TEST_P(BuildFormArchive, NeitherReadsNorWritesTheExportAndTheOmitFlag) {
  VornBuildForm form;
  form.SetExport(7);
  form.SetOmitFlag(8);
  const Bytes bytes = StoredAs(form, GetParam());
  form.SetExport(0);
  form.SetOmitFlag(0);
  EXPECT_EQ(StoredAs(form, GetParam()), bytes);
  form.SetOmitFlag(9);
  ReadInto(form, FormBytes(Read(), 2).All(), GetParam());
  EXPECT_EQ(form.GetExport(), 0);
  EXPECT_EQ(form.GetOmitFlag(), 9);
}

/// A form of data older than "04.00" that has nothing but a work code.
ExpectedBytes OldForm(std::int32_t workCode) {
  return {{"extension table", EmptyTable()}, {"name", Text("F")}, {"work code", I32(workCode)},
          {"export form", I32(1)},           {"points", U32(0)},  {"targets", U32(0)}};
}

constexpr const char* kVersionsWithWorkCode[] = {"01.10", "01.11", "02.50", "03.00", "03.50", "03.99"};
constexpr std::string_view kFillWork = u8"盛土工"_cp932;
constexpr std::string_view kCutWork = u8"切土工"_cp932;

TEST(OldBuildFormArchive, TakesWorkCodeZeroForFillWork) {
  for (const char* version : kVersionsWithWorkCode) {
    EXPECT_EQ(ReadBack<VornBuildForm>(OldForm(0).All(), version).GetXSectType(), kFillWork) << version;
  }
}

TEST(OldBuildFormArchive, TakesAnyOtherWorkCodeForCutWork) {
  for (const char* version : kVersionsWithWorkCode) {
    for (const std::int32_t code : {1, 2, -1, 0x01000000}) {
      EXPECT_EQ(ReadBack<VornBuildForm>(OldForm(code).All(), version).GetXSectType(), kCutWork) << version << code;
    }
  }
}

TEST(OldBuildFormArchive, KeepsATypeThatIsKnownAlready) {
  for (const char* version : kVersionsWithWorkCode) {
    VornBuildForm form;
    form.SetXSectType("known");
    ReadInto(form, OldForm(0).All(), version);
    EXPECT_EQ(form.GetXSectType(), "known") << version;
  }
}

TEST(OldBuildFormArchive, WritesNoWorkCode) {
  for (const char* version : kVersionsWithWorkCode) {
    VornBuildForm form = FullForm(2);
    const ExpectedBytes expected = FormBytes({version, Way::Written}, 2);
    EXPECT_EQ(expected.Fields()[2].name, "export form");
    EXPECT_TRUE(HasBytes(StoredAs(form, version), expected)) << version;
    EXPECT_EQ(form.GetXSectType(), "type 2") << version;
  }
}

TEST(BuildFormArchiveVersions, ChangeTheLayoutExactlyAtTheirNumber) {
  for (const char* version : {"03.99", "04.01", "04.99", "05.01", "05.49", "05.51"}) {
    SCOPED_TRACE(version);
    EXPECT_TRUE(HasBytes(StoredAs(FullForm(3), version), FormBytes({version, Way::Written}, 3)));
    ExpectForm(ReadBack<VornBuildForm>(FormBytes({version, Way::Read}, 3).All(), version), {version, Way::Read}, 3);
  }
}

}  // namespace
}  // namespace archive_test
