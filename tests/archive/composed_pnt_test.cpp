#include "vorn/model/composed_pnt.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>

#include "tests/archive/full_records.h"
#include "tests/model/items.h"
#include "vorn/model/composed_pnt_array.h"
#include "vorn/platform/code_page_932.h"

namespace archive_test {

using model_test::Items;
using testing::ElementsAre;
using testing::IsEmpty;
using ComponentType = VornComposedPnt::ComponentType;
using DataType = VornComposedPnt::DataType;
using ElementType = VornComposedPnt::ElementType;
using PntType = VornComposedPnt::PntType;
using SlopeType = VornComposedPnt::SlopeType;

namespace {

constexpr std::uint32_t kNone = 0xFFFFFFFF;

std::string Named(const char* what, int n) { return what + std::to_string(n); }

std::uint32_t Unsigned(int value) { return static_cast<std::uint32_t>(value); }

}  // namespace

VornComposedPnt FullPoint(int n) {
  const int k = 100 * n;
  VornComposedPnt point;
  point.ElmType(static_cast<ElementType>(k + 1));
  point.SetDataType(static_cast<DataType>(k + 2));
  point.SetCLDist(n + 0.03);
  point.SetGh(n + 0.04);
  point.SetX(n + 0.05);
  point.SetY(n + 0.06);
  point.SetSeriesPnt(false);
  point.SetExistence(static_cast<VORN_Existence>(k + 8));
  point.SetCtrlFlags(0xF0000000u + Unsigned(n));
  point.SetPointType(static_cast<std::uint16_t>(0xFF00 + n));
  point.SetLocation(static_cast<VornLocation>(k + 12));
  point.SetComponentType(static_cast<ComponentType>(k + 13));
  point.SetSlopeType(static_cast<SlopeType>(k + 14));
  point.SetSerialID(Unsigned(k + 15));
  point.SetParentID(Unsigned(k + 16));
  point.SetID(Unsigned(k + 17));
  point.ThDPairIDs().Add(Unsigned(k + 18));
  point.ThDPairIDs().Add(Unsigned(k + 19));
  point.SetRatio(n + 0.20);
  point.SetPercent(n + 0.21);

  VornComposedPnt details;
  for (const PntType t : {PntType::Main, PntType::Sub}) {
    const int role = static_cast<int>(t);
    details.SetCode(CString(Named(role == 0 ? "main-code-" : "sub-code-", n)), t);
    details.SetXSectType(Unsigned(k + 22 + 10 * role), t);
    details.SetXSectNameID(Unsigned(k + 23 + 10 * role), t);
    details.SetXSectName(CString(Named(role == 0 ? "main-name-" : "sub-name-", n)), t);
    details.SetDekiPairID(Unsigned(k + 24 + 10 * role), t);
    details.SetConnectionAutoLinePrev(0x100 << role, t);
    details.SetConnectionAutoLineNext(0x400 << role, t);
    details.Measure(t) = FullMeasures(10 * n + role);
    details.FormID(t) = Unsigned(k + 27 + 10 * role);
  }
  point.SetCode(CString(Named("last-code-", n)));  // remembered also when the codes are replaced
  point.CopyDetail(details);

  // Not archived.
  point.SetOrgID(Unsigned(k + 41));
  point.SetTargetIndex(k + 42);
  point.SetDrawID(Unsigned(k + 43));
  point.DrawPairIDs().Add(Unsigned(k + 44));
  point.SetConnected(k + 45);
  point.SetAutoConnect(k + 46);
  return point;
}

namespace {

ExpectedBytes DetailBytes(const Layout& at, int n, int role) {
  const int k = 100 * n + 10 * role;
  const bool hasAutoLines = !at.IsAfter("06.00");
  return {
      {"code", Text(Named(role == 0 ? "main-code-" : "sub-code-", n))},
      {"section type", U32(Unsigned(k + 22))},
      {"section name ID", U32(Unsigned(k + 23))},
      {"section name", Text(Named(role == 0 ? "main-name-" : "sub-name-", n))},
      {"as-built pair", U32(Unsigned(k + 24))},
      {"previous line", I32(at.IsWritten() ? 0 : 0x04 << (2 * role)), hasAutoLines},
      {"next line", I32(at.IsWritten() ? 0 : 0x08 << (2 * role)), hasAutoLines},
      {"measurements", MeasuresBytes(10 * n + role)},
      {"extension table", EmptyTable()},
  };
}

ExpectedBytes OldPointBytes(const Layout& at, int n) {
  const int k = 100 * n;
  const bool isFrom05 = at.IsFrom("05.00");
  return {
      {"extension table", EmptyTable()},
      {"data type", I32(k + 2), at.IsFrom("04.00")},
      {"distance", Real(n + 0.03)},
      {"height", Real(n + 0.04)},
      {"X", Real(n + 0.05)},
      {"Y", Real(n + 0.06)},
      {"last code", Text(Named("last-code-", n))},
      {"series", Bool(false)},
      {"existence", I32(k + 8)},
      {"control flags", U32(0xF0000000u + Unsigned(n))},
      {"reserved", U32(0xFFFFFFFF)},
      {"point type", U16(static_cast<std::uint16_t>(0xFF00 + n))},
      {"location", I32(k + 12)},
      {"component type", I32(k + 13)},
      {"slope type", I32(k + 14)},
      {"serial", U32(Unsigned(k + 15)), isFrom05},
      {"parent", U32(Unsigned(k + 16)), isFrom05},
      {"ID", U32(Unsigned(k + 17)), isFrom05},
      {"as-built pair", U32(Unsigned(k + 24)), isFrom05},
      {"3D pairs", ExpectedBytes{{"count", U32(2)}, {"0", U32(Unsigned(k + 18))}, {"1", U32(Unsigned(k + 19))}},
       isFrom05},
      {"section type", U32(Unsigned(k + 22)), isFrom05},
      {"section name", Text(Named("main-name-", n)), isFrom05},
      {"section name ID", U32(Unsigned(k + 23)), isFrom05},
      {"previous line", I32(at.IsWritten() ? 0 : 0x04), isFrom05},
      {"next line", I32(at.IsWritten() ? 0 : 0x08), isFrom05},
      {"ratio", Real(n + 0.20), isFrom05},
      {"percent", Real(n + 0.21), isFrom05},
      {"measurements", MeasuresBytes(10 * n), isFrom05},
  };
}

}  // namespace

ExpectedBytes PointBytes(const Layout& at, int n) {
  if (!at.IsFrom("06.00")) return OldPointBytes(at, n);
  const int k = 100 * n;
  const bool hasAutoLines = !at.IsAfter("06.00");
  return {
      {"extension table", TableOf(1, k + 1)},
      {"data type", I32(k + 2)},
      {"distance", Real(n + 0.03)},
      {"height", Real(n + 0.04)},
      {"X", Real(n + 0.05)},
      {"Y", Real(n + 0.06)},
      {"series", Bool(false)},
      {"existence", I32(k + 8)},
      {"control flags", U32(0xF0000000u + Unsigned(n))},
      {"reserved", U32(0xFFFFFFFF)},
      {"point type", U16(static_cast<std::uint16_t>(0xFF00 + n))},
      {"location", I32(k + 12)},
      {"component type", I32(k + 13)},
      {"slope type", I32(k + 14)},
      {"serial", U32(Unsigned(k + 15))},
      {"parent", U32(Unsigned(k + 16))},
      {"ID", U32(Unsigned(k + 17))},
      {"3D pairs", ExpectedBytes{{"count", U32(2)}, {"0", U32(Unsigned(k + 18))}, {"1", U32(Unsigned(k + 19))}}},
      {"previous line", I32(at.IsWritten() ? 0 : 0x01), hasAutoLines},
      {"next line", I32(at.IsWritten() ? 0 : 0x02), hasAutoLines},
      {"ratio", Real(n + 0.20)},
      {"percent", Real(n + 0.21)},
      {"main", DetailBytes(at, n, 0)},
      {"sub", DetailBytes(at, n, 1)},
  };
}

void ExpectPoint(const VornComposedPnt& point, const Layout& at, int n) {
  const int k = 100 * n;
  const bool isFrom05 = at.IsFrom("05.00");
  const bool isFrom06 = at.IsFrom("06.00");
  EXPECT_EQ(static_cast<int>(point.ElmType()), isFrom06 ? k + 1 : -1);
  EXPECT_EQ(static_cast<int>(point.GetDataType()), at.IsFrom("04.00") ? k + 2 : -1);
  EXPECT_EQ(point.GetCLDist(), n + 0.03);
  EXPECT_EQ(point.GetGh(), n + 0.04);
  EXPECT_EQ(point.GetX(), n + 0.05);
  EXPECT_EQ(point.GetY(), n + 0.06);
  EXPECT_FALSE(point.GetSeriesPnt());
  EXPECT_EQ(static_cast<int>(point.GetExistence()), k + 8);
  EXPECT_EQ(point.GetCtrlFlags(), 0xF0000000u + Unsigned(n));
  EXPECT_EQ(point.GetPointType(), 0xFF00 + n);
  EXPECT_EQ(static_cast<int>(point.GetLocation()), k + 12);
  EXPECT_EQ(static_cast<int>(point.GetComponentType()), k + 13);
  EXPECT_EQ(static_cast<int>(point.GetOldCmpType()), isFrom06 ? k + 13 : -1);
  EXPECT_EQ(static_cast<int>(point.GetSlopeType()), k + 14);
  EXPECT_EQ(point.GetSerialID(), isFrom05 ? Unsigned(k + 15) : kNone);
  EXPECT_EQ(point.GetParentID(), isFrom05 ? Unsigned(k + 16) : kNone);
  EXPECT_EQ(point.GetID(), isFrom05 ? Unsigned(k + 17) : 0u);
  if (isFrom05) {
    EXPECT_THAT(Items(point.ThDPairIDs()), ElementsAre(k + 18, k + 19));
  } else {
    EXPECT_THAT(Items(point.ThDPairIDs()), IsEmpty());
  }
  EXPECT_EQ(point.GetRatio(), isFrom05 ? NurReal(n + 0.20) : NurReal());
  EXPECT_EQ(point.GetPercent(), isFrom05 ? NurReal(n + 0.21) : NurReal());

  for (const PntType t : {PntType::Main, PntType::Sub}) {
    SCOPED_TRACE(t == PntType::Main ? "main" : "sub");
    // Data before 06.00 know one detail record.
    const int role = isFrom06 ? static_cast<int>(t) : 0;
    const CString code(Named(role == 0 ? "main-code-" : "sub-code-", n));
    EXPECT_EQ(point.GetCode(t), isFrom06 ? code : CString(Named("last-code-", n)));
    EXPECT_EQ(point.GetXSectType(t), isFrom05 ? Unsigned(k + 22 + 10 * role) : 0u);
    EXPECT_EQ(point.GetXSectNameID(t), isFrom05 ? Unsigned(k + 23 + 10 * role) : 0u);
    EXPECT_EQ(point.GetXSectName(t), isFrom05 ? CString(Named(role == 0 ? "main-name-" : "sub-name-", n)) : CString());
    EXPECT_EQ(point.GetDekiPairID(t), isFrom05 ? Unsigned(k + 24 + 10 * role) : kNone);
    const bool hasAutoLines = isFrom05 && !at.IsAfter("06.00") && at.IsRead();
    EXPECT_EQ(point.IsConnectionAutoLinePrev(t), hasAutoLines ? 0x04 << (2 * role) : 0);
    EXPECT_EQ(point.IsConnectionAutoLineNext(t), hasAutoLines ? 0x08 << (2 * role) : 0);
    if (isFrom06 || (isFrom05 && t == PntType::Main)) {
      ExpectMeasures(point.Measure(t), 10 * n + role);
    } else {
      EXPECT_THAT(Items(point.Measure(t)), IsEmpty());
    }
    EXPECT_EQ(point.FormID(t), kNone);
  }
  const int oldLines = isFrom05 ? 0x04 | 0x08 : 0;
  const int lines = !isFrom06 ? oldLines : at.IsAfter("06.00") ? 0 : 0x3F;
  EXPECT_EQ(point.IsAutoConnect(), at.IsRead() ? lines : 0);

  EXPECT_EQ(point.GetLastCode(), isFrom06 ? CString() : CString(Named("last-code-", n)));
  EXPECT_EQ(point.GetOrgID(), kNone);
  EXPECT_EQ(point.GetTargetIndex(), 0);
  EXPECT_EQ(point.GetDrawID(), kNone);
  EXPECT_THAT(Items(point.DrawPairIDs()), IsEmpty());
  EXPECT_EQ(point.IsConnected(), 0);
}

namespace {

class ComposedPntArchive : public InStoreVersion {};
IN_EVERY_STORE_VERSION(ComposedPntArchive);

TEST_P(ComposedPntArchive, WritesItsFields) {
  EXPECT_TRUE(HasBytes(StoredAs(FullPoint(3), GetParam()), PointBytes(Written(), 3)));
}

TEST_P(ComposedPntArchive, ReadsItsFieldsAndLeavesTheOthersAtTheirDefaults) {
  ExpectPoint(ReadBack<VornComposedPnt>(PointBytes(Read(), 3).All(), GetParam()), Read(), 3);
}

TEST_P(ComposedPntArchive, ComesBackWithoutItsAutomaticLines) {
  const auto point = ReadBack<VornComposedPnt>(StoredAs(FullPoint(3), GetParam()), GetParam());
  EXPECT_EQ(point.IsAutoConnect(), 0);
  for (const PntType t : {PntType::Main, PntType::Sub}) {
    EXPECT_EQ(point.IsConnectionAutoLinePrev(t), 0);
    EXPECT_EQ(point.IsConnectionAutoLineNext(t), 0);
  }
  ExpectPoint(point, Written(), 3);
}

TEST_P(ComposedPntArchive, ComesBackWithoutAnOriginalAndWithoutATargetIndex) {
  const auto point = ReadBack<VornComposedPnt>(StoredAs(FullPoint(3), GetParam()), GetParam());
  EXPECT_EQ(point.GetOrgID(), kNone);
  EXPECT_EQ(point.GetTargetIndex(), 0);
}

TEST_P(ComposedPntArchive, ReadingKeepsWhatTheRecordHasNot) {
  VornComposedPnt point = FullPoint(4);
  ReadInto(point, PointBytes(Read(), 3).All(), GetParam());
  EXPECT_EQ(point.GetOrgID(), 441u);
  EXPECT_EQ(point.GetTargetIndex(), 442);
  EXPECT_EQ(point.GetDrawID(), 443u);
  EXPECT_THAT(Items(point.DrawPairIDs()), ElementsAre(444u));
  EXPECT_EQ(point.IsConnected(), 445);
  EXPECT_EQ(point.FormID(PntType::Main), 427u);
  // Before 06.00 the sub detail is a copy of the main one, also of what is in no record.
  EXPECT_EQ(point.FormID(PntType::Sub), Read().IsFrom("06.00") ? 437u : 427u);
}

TEST_P(ComposedPntArchive, WritingLeavesEverythingButTheDetailsOfOldVersions) {
  VornComposedPnt point = FullPoint(3);
  const VornComposedPnt before = point;
  static_cast<void>(StoredAs(point, GetParam()));
  EXPECT_EQ(point.IsAutoConnect(), before.IsAutoConnect());
  EXPECT_EQ(point.GetOldCmpType(), before.GetOldCmpType());
  EXPECT_EQ(point.GetLastCode(), before.GetLastCode());
  EXPECT_EQ(point.IsConnectionAutoLinePrev(), before.IsConnectionAutoLinePrev());
  EXPECT_EQ(point.IsConnectionAutoLineNext(), before.IsConnectionAutoLineNext());
  EXPECT_EQ(point.ElmType(), before.ElmType());
  EXPECT_EQ(point.GetXSectName(), before.GetXSectName());
  EXPECT_TRUE(point.Measure() == before.Measure());
}

TEST_P(ComposedPntArchive, WritingAnOldVersionGivesTheSubDetailUp) {
  VornComposedPnt point = FullPoint(3);
  static_cast<void>(StoredAs(point, GetParam()));
  if (Written().IsFrom("06.00")) {
    EXPECT_EQ(point.GetCode(PntType::Main), "main-code-3");
    EXPECT_EQ(point.GetCode(PntType::Sub), "sub-code-3");
    EXPECT_EQ(point.GetXSectType(PntType::Sub), 332u);
    EXPECT_EQ(point.Measure(PntType::Sub).GetSize(), 2);
    return;
  }
  for (const PntType t : {PntType::Main, PntType::Sub}) {
    EXPECT_EQ(point.GetCode(t), "last-code-3");
    EXPECT_EQ(point.GetXSectType(t), 322u);
    EXPECT_EQ(point.GetXSectNameID(t), 323u);
    EXPECT_EQ(point.GetXSectName(t), "main-name-3");
    EXPECT_EQ(point.GetDekiPairID(t), 324u);
    EXPECT_EQ(point.IsConnectionAutoLinePrev(t), 0x100);
    EXPECT_EQ(point.IsConnectionAutoLineNext(t), 0x400);
    EXPECT_EQ(point.FormID(t), 327u);
  }
  EXPECT_EQ(point.Measure(PntType::Main).GetSize(), 2);
  EXPECT_THAT(Items(point.Measure(PntType::Sub)), IsEmpty());
}

TEST_P(ComposedPntArchive, ReadingForgetsTheReservedNumber) {
  const Bytes reserved = U32(0xFFFFFFFF).bytes;
  Bytes bytes = PointBytes(Read(), 3).All();
  const auto found = std::search(bytes.begin(), bytes.end(), reserved.begin(), reserved.end());
  ASSERT_NE(found, bytes.end());
  *found = 0x12;
  ExpectPoint(ReadBack<VornComposedPnt>(bytes, GetParam()), Read(), 3);
}

/// A point's bytes with another table at their head.
Bytes WithTable(const Bytes& table, const char* version) {
  using test_support::operator+;
  const Bytes whole = PointBytes({version, Way::Read}, 3).All();
  const std::ptrdiff_t head = version >= std::string_view("06.00") ? 13 : 4;
  return table + Bytes(whole.begin() + head, whole.end());
}

TEST_P(ComposedPntArchive, WithoutAnElementTypeInItsTableKeepsTheOneItHas) {
  VornComposedPnt point;
  point.ElmType(ElementType::Median);
  ReadInto(point, WithTable(EmptyTable().bytes, GetParam()), GetParam());
  EXPECT_EQ(point.ElmType(), ElementType::Median);
  ReadInto(point, WithTable(TableOf(2, 5).bytes, GetParam()), GetParam());
  EXPECT_EQ(point.ElmType(), ElementType::Median);
}

TEST_P(ComposedPntArchive, KeepsTheElementTypeWhenItsTableHasSomethingElseThanAnInteger) {
  using test_support::operator+;
  const Bytes key = U32(1).bytes + I32(1).bytes;
  VornComposedPnt point;
  point.ElmType(ElementType::Median);
  ReadInto(point, WithTable(key + U8(2).bytes + Real(4.0).bytes, GetParam()), GetParam());
  EXPECT_EQ(point.ElmType(), ElementType::Median);
  ReadInto(point, WithTable(key + U8(3).bytes + Text("4").bytes, GetParam()), GetParam());
  EXPECT_EQ(point.ElmType(), ElementType::Median);
}

TEST_P(ComposedPntArchive, FindsTheElementTypeAmongOtherValues) {
  if (!Read().IsFrom("06.00")) return;
  using test_support::operator+;
  const Bytes entries = I32(-7).bytes + U8(3).bytes + Text("t").bytes + I32(1).bytes + U8(1).bytes + I32(4).bytes +
                        I32(2).bytes + U8(2).bytes + Real(0.5).bytes;
  VornComposedPnt point;
  ReadInto(point, WithTable(U32(3).bytes + entries, GetParam()), GetParam());
  EXPECT_EQ(point.ElmType(), ElementType::Sidewalk);
  // The other values are not carried along.
  EXPECT_EQ(StoredAs(point, GetParam())[0], 1);
}

// The former type matters to edits since the last change: data before 06.00 do not count as one.
TEST_P(ComposedPntArchive, TheFormerComponentTypeBecomesThePresentOneFrom0600OnAndStaysBefore) {
  VornComposedPnt point;
  point.SetComponentType(ComponentType::Berm);
  point.SetComponentType(ComponentType::Slope);
  ASSERT_EQ(point.GetOldCmpType(), ComponentType::Berm);
  ReadInto(point, PointBytes(Read(), 3).All(), GetParam());
  EXPECT_EQ(static_cast<int>(point.GetComponentType()), 313);
  EXPECT_EQ(static_cast<int>(point.GetOldCmpType()),
            Read().IsFrom("06.00") ? 313 : static_cast<int>(ComponentType::Berm));
}

TEST_P(ComposedPntArchive, OnlyNewVersionsHaveAnElementTypeInTheirTable) {
  VornComposedPnt point;
  point.ElmType(ElementType::Median);
  ReadInto(point, WithTable(TableOf(1, 4).bytes, GetParam()), GetParam());
  EXPECT_EQ(point.ElmType(), Read().IsFrom("06.00") ? ElementType::Sidewalk : ElementType::Median);
}

TEST(ComposedPntArchive0600, AddsEveryAutomaticLineToThoseAlreadyThere) {
  VornComposedPnt point;
  point.SetAutoConnect(0x40);
  ReadInto(point, PointBytes({"06.00", Way::Read}, 3).All(), "06.00");
  EXPECT_EQ(point.IsAutoConnect(), 0x7F);
}

// The second role is kept only where it says something, and any one of its values is something.
TEST(ComposedPntArchive0600, ReadsASubDetailThatHasASingleValue) {
  using Change = void (*)(VornComposedPnt&);
  const std::array<Change, 6> changes = {
      [](VornComposedPnt& point) { point.SetCode("code", PntType::Sub); },
      [](VornComposedPnt& point) { point.SetXSectType(1, PntType::Sub); },
      [](VornComposedPnt& point) { point.SetXSectNameID(1, PntType::Sub); },
      [](VornComposedPnt& point) { point.SetXSectName("name", PntType::Sub); },
      [](VornComposedPnt& point) { point.SetDekiPairID(1, PntType::Sub); },
      [](VornComposedPnt& point) {
        point.Measure(PntType::Sub).Add({0, 1});
      },
  };
  const auto plain = StoredAs(VornComposedPnt(), "06.00");
  for (const Change change : changes) {
    VornComposedPnt point;
    change(point);
    const auto stored = StoredAs(point, "06.00");
    EXPECT_NE(stored, plain);
    EXPECT_EQ(StoredAs(ReadBack<VornComposedPnt>(stored, "06.00"), "06.00"), stored);
  }
}

TEST(ComposedPntArchive0650, ReadingLeavesTheAutomaticLinesAlone) {
  VornComposedPnt point;
  point.SetAutoConnect(0x40);
  point.SetConnectionAutoLine(5, 6);
  ReadInto(point, PointBytes({"06.50", Way::Read}, 3).All(), "06.50");
  EXPECT_EQ(point.IsAutoConnect(), 0x40);
  EXPECT_EQ(point.IsConnectionAutoLinePrev(PntType::Main), 5);
  EXPECT_EQ(point.IsConnectionAutoLineNext(PntType::Sub), 6);
}

TEST(ComposedPntArchive0500, AddsItsTwoAutomaticLinesToThoseAlreadyThere) {
  VornComposedPnt point;
  point.SetAutoConnect(0x40);
  ReadInto(point, PointBytes({"05.00", Way::Read}, 3).All(), "05.00");
  EXPECT_EQ(point.IsAutoConnect(), 0x4C);
}

TEST(ComposedPntArchive0400, HasItsDataTypeNoSerialsAndOneDetail) {
  const auto point = ReadBack<VornComposedPnt>(PointBytes({"04.00", Way::Read}, 3).All(), "04.00");
  EXPECT_EQ(static_cast<int>(point.GetDataType()), 302);
  EXPECT_EQ(point.GetSerialID(), kNone);
  EXPECT_EQ(point.GetParentID(), kNone);
  EXPECT_EQ(point.GetCode(PntType::Main), "last-code-3");
  EXPECT_EQ(point.GetCode(PntType::Sub), "last-code-3");
  EXPECT_THAT(Items(point.Measure(PntType::Sub)), IsEmpty());
}

// The versions just below and above those at which the layout changes.
TEST(ComposedPntArchiveVersions, ChangeTheLayoutExactlyAtTheirNumber) {
  for (const char* version : {"03.99", "04.01", "04.99", "05.01", "05.99", "06.01"}) {
    SCOPED_TRACE(version);
    EXPECT_TRUE(HasBytes(StoredAs(FullPoint(3), version), PointBytes({version, Way::Written}, 3)));
    ExpectPoint(ReadBack<VornComposedPnt>(PointBytes({version, Way::Read}, 3).All(), version), {version, Way::Read}, 3);
  }
}

TEST(ComposedPntArchiveVersions, KeepJapaneseTextsAsTheyAre) {
  constexpr std::string_view kCode = u8"ソ表層"_cp932;
  VornComposedPnt point;
  point.SetCode(CString(kCode));
  for (const char* version : kStoreVersions) {
    EXPECT_EQ(ReadBack<VornComposedPnt>(StoredAs(point, version), version).GetCode(), kCode);
  }
}

}  // namespace
}  // namespace archive_test
