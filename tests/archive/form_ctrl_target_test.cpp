#include "vorn/control/form_ctrl_target.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/archive/full_records.h"

namespace archive_test {

VornFormCtrlTarget FullTarget(int n) {
  const int k = 100 * n;
  VornFormCtrlTarget target;
  target.SetCode(CString("code text " + std::to_string(n)));
  target.SetWorkType(static_cast<VornFormCtrlTarget::WorkType>(k + 81));
  target.SetControlItem(static_cast<VornFormCtrlTarget::ControlItem>(k + 82));
  target.SetTargetScope(CString("scope " + std::to_string(n)));
  target.SetTargetRegio(CString("region " + std::to_string(n)));
  target.SetTargetPntType(static_cast<VornFormCtrlTarget::TargetPntType>(k + 83));
  target.SetLR(static_cast<VornLocation>(k + 84));
  target.SetSerialID(static_cast<std::uint32_t>(k + 85));
  target.GetTargetPntArray().Add(FullTargetPoint(10 * n));
  target.GetTargetPntArray().Add(FullTargetPoint(10 * n + 1));
  target.SetExport(0);  // not archived
  return target;
}

ExpectedBytes TargetBytes(const Layout& at, int n) {
  const int k = 100 * n;
  const bool hasPoints = at.IsFrom("04.00");
  return {
      {"extension table", EmptyTable()},
      {"code", Text("code text " + std::to_string(n))},
      {"work type", I32(k + 81)},
      {"control item", I32(k + 82)},
      {"scope", Text("scope " + std::to_string(n))},
      {"region", Text("region " + std::to_string(n))},
      {"point type", I32(k + 83)},
      {"side", I32(k + 84)},
      {"serial", I32(k + 85), at.IsReadSince("05.00")},
      {"point count", U32(2), hasPoints},
      {"points[0]", TargetPointBytes(at, 10 * n), hasPoints},
      {"points[1]", TargetPointBytes(at, 10 * n + 1), hasPoints},
  };
}

void ExpectTarget(const VornFormCtrlTarget& target, const Layout& at, int n) {
  const int k = 100 * n;
  EXPECT_EQ(target.GetCodeName(), CString("code text " + std::to_string(n)));
  EXPECT_EQ(static_cast<int>(target.GetWorkType()), k + 81);
  EXPECT_EQ(static_cast<int>(target.GetControlItem()), k + 82);
  EXPECT_EQ(target.GetTargetScope(), CString("scope " + std::to_string(n)));
  EXPECT_EQ(target.GetTargetRegio(), CString("region " + std::to_string(n)));
  EXPECT_EQ(static_cast<int>(target.GetTargetPntType()), k + 83);
  EXPECT_EQ(static_cast<int>(target.GetLR()), k + 84);
  EXPECT_EQ(target.GetSerialID(), at.IsFrom("05.00") ? static_cast<std::uint32_t>(k + 85) : 0xFFFFFFFF);
  EXPECT_EQ(target.GetExport(), 1);
  if (!at.IsFrom("04.00")) {
    EXPECT_EQ(target.GetTargetPntArray().GetSize(), 0);
    return;
  }
  ASSERT_EQ(target.GetTargetPntArray().GetSize(), 2);
  ExpectTargetPoint(target.GetTargetPntArray()[0], at, 10 * n);
  ExpectTargetPoint(target.GetTargetPntArray()[1], at, 10 * n + 1);
}

namespace {

class FormCtrlTargetArchive : public InStoreVersion {};
IN_EVERY_STORE_VERSION(FormCtrlTargetArchive);

TEST_P(FormCtrlTargetArchive, WritesItsFields) {
  EXPECT_TRUE(HasBytes(StoredAs(FullTarget(2), GetParam()), TargetBytes(Written(), 2)));
}

TEST_P(FormCtrlTargetArchive, ReadsItsFieldsAndLeavesTheOthersAtTheirDefaults) {
  ExpectTarget(ReadBack<VornFormCtrlTarget>(TargetBytes(Read(), 2).All(), GetParam()), Read(), 2);
}

TEST_P(FormCtrlTargetArchive, NeitherReadsNorWritesTheExportFlag) {
  VornFormCtrlTarget target;
  target.SetExport(7);
  const Bytes bytes = StoredAs(target, GetParam());
  target.SetExport(0);
  EXPECT_EQ(StoredAs(target, GetParam()), bytes);
  ReadInto(target, TargetBytes(Read(), 2).All(), GetParam());
  EXPECT_EQ(target.GetExport(), 0);
}

TEST(FormCtrlTargetArchive0300, HasNoPointsAndNoSerialUntilItIsAddedAgain) {
  const auto target = ReadBack<VornFormCtrlTarget>(TargetBytes({"03.00", Way::Read}, 2).All(), "03.00");
  EXPECT_EQ(target.GetTargetPntArray().GetSize(), 0);
  EXPECT_EQ(target.GetSerialID(), 0xFFFFFFFF);

  const ExpectedBytes collection = {{"count", U32(1)}, {"0", TargetBytes({"03.00", Way::Read}, 2)}};
  auto targets = ReadBack<Vorn_FormCtrlTargetArray>(collection.All(), "03.00");
  EXPECT_EQ(targets[0].GetSerialID(), 0xFFFFFFFF);
  EXPECT_EQ(targets[targets.Add(targets[0])].GetSerialID(), 0u);
  EXPECT_EQ(targets[targets.Add(targets[0])].GetSerialID(), 1u);
}

TEST(FormCtrlTargetArchiveVersions, ChangeTheLayoutExactlyAtTheirNumber) {
  for (const char* version : {"03.99", "04.01", "04.99", "05.01"}) {
    SCOPED_TRACE(version);
    EXPECT_TRUE(HasBytes(StoredAs(FullTarget(3), version), TargetBytes({version, Way::Written}, 3)));
    const auto target = ReadBack<VornFormCtrlTarget>(TargetBytes({version, Way::Read}, 3).All(), version);
    ExpectTarget(target, {version, Way::Read}, 3);
  }
}

}  // namespace
}  // namespace archive_test
