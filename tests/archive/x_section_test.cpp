#include "vorn/model/x_section.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/archive/full_records.h"
#include "tests/archive/small_disk.h"

namespace archive_test {

VornXSection FullSection(int n) {
  const auto k = static_cast<std::uint32_t>(100 * n);
  VornXSection section;
  section.SetCumulativeDist(n + 0.91);
  section.SetXSectChg(true);
  section.SetControlSect(n % 2 == 0);
  section.SetName(CString("section " + std::to_string(n)));
  section.SetShiftGH(n + 0.92);
  section.SetShiftDist(n + 0.93);
  section.SetDirectionAngle(CString("angle " + std::to_string(n)));
  section.SetTargetPntID(CString("target " + std::to_string(n)));
  section.SetSectionID(k + 94);
  section.SetHeight(n + 0.95);
  // A next serial of its own, and no form made the design surface.
  VornBuildForm last;
  last.SetSerialID(k + 96);
  section.GetBuildFormArray().SetSize(1);
  section.GetBuildFormArray().Add(last);
  section.GetBuildFormArray().SetSize(2);
  section.GetBuildFormArray()[0] = FullForm(n);
  section.GetBuildFormArray()[1] = FullForm(n + 1);
  section.GetExistingBuildFormArray().Add(FullGround(n));
  section.GetExistingBuildFormArray().Add(FullGround(n + 1));
  section.SetExistingFlag(5);  // not archived
  return section;
}

namespace {

ExpectedBytes FormsBytes(const Layout& at, int n) {
  return {
      {"next serial", I32(100 * n + 97), at.IsReadSince("05.00")},
      {"count", U32(2)},
      {"0", FormBytes(at, n)},
      {"1", FormBytes(at, n + 1)},
  };
}

ExpectedBytes OldSectionBytes(const Layout& at, int n) {
  return {
      {"extension table", EmptyTable()},
      {"station", Real(n + 0.91), at.IsRead()},
      {"change of section", Bool(true), at.IsRead()},
      {"control section", Bool(n % 2 == 0), at.IsRead()},
      {"name", Text("section " + std::to_string(n)), at.IsRead()},
      {"shift upward", Real(n + 0.92), at.IsRead()},
      {"shift sideways", Real(n + 0.93), at.IsRead()},
      {"forms", FormsBytes(at, n)},
      {"no presentation points", U32(0), at.IsWritten()},
      {"presentation points", PresentationBytes(n), at.IsRead()},
  };
}

}  // namespace

ExpectedBytes SectionBytes(const Layout& at, int n) {
  if (!at.IsAfter("03.00")) return OldSectionBytes(at, n);
  return {
      {"extension table", EmptyTable()},
      {"station", Real(n + 0.91)},
      {"change of section", Bool(true)},
      {"control section", Bool(n % 2 == 0)},
      {"name", Text("section " + std::to_string(n))},
      {"shift upward", Real(n + 0.92)},
      {"shift sideways", Real(n + 0.93)},
      {"direction angle", Text("angle " + std::to_string(n))},
      {"target point", Text("target " + std::to_string(n))},
      {"section ID", I32(100 * n + 94)},
      {"height", Real(n + 0.95), at.IsFrom("05.00")},
      {"forms", FormsBytes(at, n)},
      {"ground count", U32(2)},
      {"ground[0]", GroundBytes(n)},
      {"ground[1]", GroundBytes(n + 1)},
  };
}

void ExpectSection(const VornXSection& section, const Layout& at, int n) {
  const bool isNew = at.IsAfter("03.00");
  EXPECT_EQ(section.GetCumulativeDist(), n + 0.91);
  EXPECT_TRUE(section.GetXSectChg());
  EXPECT_EQ(section.GetControlSect(), n % 2 == 0);
  EXPECT_EQ(section.GetName(), CString("section " + std::to_string(n)));
  EXPECT_EQ(section.GetShiftGH(), n + 0.92);
  EXPECT_EQ(section.GetShiftDist(), n + 0.93);
  EXPECT_EQ(section.GetDirectionAngle(), isNew ? CString("angle " + std::to_string(n)) : CString());
  EXPECT_EQ(section.GetTargetPntID(), isNew ? CString("target " + std::to_string(n)) : CString());
  EXPECT_EQ(section.GetSectionID(), isNew ? static_cast<std::uint32_t>(100 * n + 94) : 0xFFFFFFFF);
  EXPECT_EQ(section.GetHeight(), at.IsFrom("05.00") ? NurReal(n + 0.95) : NurReal());
  EXPECT_EQ(section.GetExistingFlag(), 0);

  EXPECT_EQ(section.GetBuildFormArray().GetNextSerialID(),
            at.IsFrom("05.00") ? static_cast<std::uint32_t>(100 * n + 97) : 0u);
  ASSERT_EQ(section.GetBuildFormArray().GetSize(), 2);
  ExpectForm(section.GetBuildFormArray()[0], at, n);
  ExpectForm(section.GetBuildFormArray()[1], at, n + 1);

  if (isNew) {
    ASSERT_EQ(section.GetExistingBuildFormArray().GetSize(), 2);
    ExpectGround(section.GetExistingBuildFormArray()[0], n);
    ExpectGround(section.GetExistingBuildFormArray()[1], n + 1);
    return;
  }
  ASSERT_EQ(section.GetExistingBuildFormArray().GetSize(), 1);
  const VornExistingBuildForm& ground = section.GetExistingBuildFormArray()[0];
  EXPECT_EQ(ground.GetName(), "");
  ASSERT_EQ(ground.GetComposedPntArray().GetSize(), 2);
  EXPECT_EQ(ground.GetComposedPntArray()[0].GetCLDist(), n + 0.125);
  EXPECT_EQ(ground.GetComposedPntArray()[0].GetGh(), n + 0.25);
  EXPECT_EQ(ground.GetComposedPntArray()[1].GetCLDist(), n + 0.375);
  EXPECT_EQ(ground.GetComposedPntArray()[1].GetGh(), n + 0.5);
}

namespace {

class XSectionArchive : public InStoreVersion {};
IN_EVERY_STORE_VERSION(XSectionArchive);

TEST_P(XSectionArchive, WritesItsFields) {
  EXPECT_TRUE(HasBytes(StoredAs(FullSection(3), GetParam()), SectionBytes(Written(), 3)));
}

TEST_P(XSectionArchive, ReadsItsFieldsAndLeavesTheOthersAtTheirDefaults) {
  ExpectSection(ReadBack<VornXSection>(SectionBytes(Read(), 3).All(), GetParam()), Read(), 3);
}

// Where the two flags lie in every layout that has them.
constexpr std::size_t kChangeFlag = 12;
constexpr std::size_t kControlFlag = 13;

TEST_P(XSectionArchive, ReadsEachFlagFromItsOwnPlace) {
  Bytes bytes = SectionBytes(Read(), 3).All();
  bytes[kChangeFlag] = 0;
  bytes[kControlFlag] = 0xFF;  // any byte but 0 is true
  const auto section = ReadBack<VornXSection>(bytes, GetParam());
  EXPECT_FALSE(section.GetXSectChg());
  EXPECT_TRUE(section.GetControlSect());
}

TEST_P(XSectionArchive, WritesEachFlagIntoItsOwnPlace) {
  VornXSection section;
  section.SetControlSect(true);
  const Bytes bytes = StoredAs(section, GetParam());
  if (!Written().IsAfter("03.00")) {
    EXPECT_TRUE(HasBytes(
        bytes, {{"table", EmptyTable()}, {"next serial", U32(1)}, {"forms", U32(0)}, {"presentation points", U32(0)}}));
    return;
  }
  EXPECT_EQ(bytes[kChangeFlag], 0);
  EXPECT_EQ(bytes[kControlFlag], 1);
}

TEST_P(XSectionArchive, NeitherReadsNorWritesTheExistingFlag) {
  VornXSection section = FullSection(3);
  const Bytes bytes = StoredAs(section, GetParam());
  section.SetExistingFlag(0);
  EXPECT_EQ(StoredAs(section, GetParam()), bytes);
  section.SetExistingFlag(7);
  ReadInto(section, SectionBytes(Read(), 4).All(), GetParam());
  EXPECT_EQ(section.GetExistingFlag(), 7);
}

TEST_P(XSectionArchive, WritingLeavesStationAndGround) {
  VornXSection section = FullSection(3);
  static_cast<void>(StoredAs(section, GetParam()));
  EXPECT_EQ(section.GetCumulativeDist(), 3.91);
  EXPECT_EQ(section.GetExistingBuildFormArray().GetSize(), 2);
}

// --- points of control targets that have none ------------------------------------------------------------------------

/// A section with a height target that only has a code text, and a ground form.
VornXSection SectionWithBareTarget() {
  VornXSection section;
  section.SetCumulativeDist(80.0);
  VornFormCtrlTarget target;
  target.SetCode("HC");
  target.SetControlItem(VornFormCtrlTarget::ControlItem::Height);
  VornBuildForm form;
  form.GetFormCtrlTargetArray().Add(target);
  section.GetBuildFormArray().Add(form);
  section.GetExistingBuildFormArray().Add(FullGround(1));
  return section;
}

const VornFormCtrlTargetPntArray& PointsOfTarget(const VornXSection& section) {
  return section.GetBuildFormArray()[0].GetFormCtrlTargetArray()[0].GetTargetPntArray();
}

TEST_P(XSectionArchive, GivesControlTargetsTheirPointsOnceTheFormsAreWritten) {
  VornXSection section = SectionWithBareTarget();
  VornXSection pointless = section;
  const Bytes first = StoredAs(section, GetParam());
  EXPECT_EQ(PointsOfTarget(section).GetSize(), Written().IsAfter("03.00") ? 1 : 0);
  // What was written had none yet.
  EXPECT_EQ(first, StoredAs(pointless, GetParam()));
  const Bytes second = StoredAs(section, GetParam());
  EXPECT_EQ(second.size() > first.size(), Written().IsFrom("04.00"));
  if (Written().IsAfter("03.00")) {
    EXPECT_EQ(PointsOfTarget(section)[0].GetCumulativeDist(), 80.0);
    EXPECT_EQ(PointsOfTarget(section)[0].GetCode(), "HC");
  }
}

TEST_P(XSectionArchive, GivesControlTargetsTheirPointsOnceTheFormsAreRead) {
  if (!Read().IsAfter("03.00")) {
    const Layout at = Read();
    const ExpectedBytes form = {{"table", EmptyTable()},
                                {"name", Text("F")},
                                {"work code", I32(0)},
                                {"export form", I32(1)},
                                {"points", U32(0)},
                                {"targets", U32(1)},
                                {"target.table", EmptyTable()},
                                {"code", Text("HC")},
                                {"work type", I32(0)},
                                {"control item", I32(static_cast<int>(VornFormCtrlTarget::ControlItem::Height))},
                                {"scope", Text("")},
                                {"region", Text("")},
                                {"point type", I32(0)},
                                {"side", I32(0)}};
    const ExpectedBytes bytes = {{"table", EmptyTable()},  {"station", Real(80)}, {"changed", Bool(false)},
                                 {"control", Bool(false)}, {"name", Text("")},    {"up", Real(0)},
                                 {"sideways", Real(0)},    {"forms", U32(1)},     {"form", form},
                                 {"positions", U32(0)}};
    EXPECT_EQ(PointsOfTarget(ReadBack<VornXSection>(bytes.All(), at.version)).GetSize(), 0);
    return;
  }
  if (!Read().IsFrom("05.00")) return;  // what is written is not what is read
  VornXSection section = SectionWithBareTarget();
  const auto loaded = ReadBack<VornXSection>(StoredAs(section, GetParam()), GetParam());
  ASSERT_EQ(PointsOfTarget(loaded).GetSize(), 1);
  EXPECT_EQ(PointsOfTarget(loaded)[0].GetCumulativeDist(), 80.0);
  EXPECT_EQ(PointsOfTarget(loaded)[0].GetCode(), "HC");
}

TEST(XSectionArchiveOrder, ReadingGivesControlTargetsTheirPointsBeforeTheGroundIsRead) {
  VornXSection section = SectionWithBareTarget();
  const Bytes whole = StoredAs(section, "06.00");
  const std::size_t ground = 4 + GroundBytes(1).All().size();
  const CString tag("06.00");
  for (const bool withinForms : {true, false}) {
    const std::size_t kept = whole.size() - ground - (withinForms ? 1 : 0);
    test_support::LoadingArchive ar(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(kept)));
    VornXSection loaded;
    EXPECT_EQ(test_support::ArchiveRefusal([&] { loaded.Serialize(*ar, tag); }), CArchiveException::endOfFile);
    ASSERT_EQ(loaded.GetBuildFormArray().GetSize(), withinForms ? 0 : 1);
    if (!withinForms) {
      EXPECT_EQ(PointsOfTarget(loaded).GetSize(), 1);
    }
  }
}

TEST(XSectionArchiveOrder, WritingGivesControlTargetsTheirPointsBeforeTheGroundIsWritten) {
  VornXSection whole = SectionWithBareTarget();
  const std::size_t size = StoredAs(whole, "06.00").size();
  const std::size_t ground = 4 + GroundBytes(1).All().size();
  const CString tag("06.00");
  for (const bool withinForms : {true, false}) {
    SmallDisk disk(size - ground - (withinForms ? 1 : 0));
    CArchive ar(&disk, CArchive::store, 0);
    VornXSection section = SectionWithBareTarget();
    EXPECT_THROW(section.Serialize(ar, tag), CFileException);
    EXPECT_EQ(PointsOfTarget(section).GetSize(), withinForms ? 0 : 1);
  }
}

// --- old layout ------------------------------------------------------------------------------------------------------

constexpr const char* kOldVersions[] = {"01.10", "01.11", "02.50", "03.00"};

ExpectedBytes OldSectionWith(const ExpectedBytes& presentation) {
  return {{"table", EmptyTable()},   {"station", Real(1.5)}, {"changed", Bool(false)},
          {"control", Bool(false)},  {"name", Text("old")},  {"up", Real(0.25)},
          {"sideways", Real(-0.25)}, {"forms", U32(0)},      {"presentation", presentation}};
}

TEST(OldXSectionArchive, WithoutPresentationPointsHasNoExistingGround) {
  for (const char* version : kOldVersions) {
    const auto section = ReadBack<VornXSection>(OldSectionWith({{"count", U32(0)}}).All(), version);
    EXPECT_EQ(section.GetExistingBuildFormArray().GetSize(), 0);
    EXPECT_EQ(section.GetName(), "old");
    EXPECT_EQ(section.GetShiftGH(), 0.25);
    EXPECT_EQ(section.GetShiftDist(), -0.25);
  }
}

TEST(OldXSectionArchive, OnePresentationPointMakesAGroundOfOnePoint) {
  const ExpectedBytes one = {{"count", U32(1)}, {"table", EmptyTable()}, {"first", Real(-7)}, {"second", Real(8)}};
  for (const char* version : kOldVersions) {
    const auto section = ReadBack<VornXSection>(OldSectionWith(one).All(), version);
    ASSERT_EQ(section.GetExistingBuildFormArray().GetSize(), 1);
    ASSERT_EQ(section.GetExistingBuildFormArray()[0].GetComposedPntArray().GetSize(), 1);
    EXPECT_EQ(section.GetExistingBuildFormArray()[0].GetComposedPntArray()[0].GetCLDist(), -7.0);
    EXPECT_EQ(section.GetExistingBuildFormArray()[0].GetComposedPntArray()[0].GetGh(), 8.0);
  }
}

TEST(OldXSectionArchive, AppendsThePresentationPointsToTheGroundThatIsThere) {
  for (const char* version : kOldVersions) {
    VornXSection section;
    section.GetExistingBuildFormArray().Add(ReadBack<VornExistingBuildForm>(GroundBytes(6).All(), version));
    ReadInto(section, OldSectionWith(PresentationBytes(2)).All(), version);
    ASSERT_EQ(section.GetExistingBuildFormArray().GetSize(), 2);
    ExpectGround(section.GetExistingBuildFormArray()[0], 6);
    EXPECT_EQ(section.GetExistingBuildFormArray()[1].GetComposedPntArray().GetSize(), 2);
  }
}

TEST(OldXSectionArchive, WritesNothingButATableTheFormsAndNoPresentationPoints) {
  for (const char* version : kOldVersions) {
    VornXSection section = FullSection(3);
    section.GetBuildFormArray() = Vorn_BuildFormArray();
    EXPECT_TRUE(HasBytes(
        StoredAs(section, version),
        {{"table", EmptyTable()}, {"next serial", U32(1)}, {"forms", U32(0)}, {"presentation points", U32(0)}}))
        << version;
  }
}

TEST(OldXSectionArchive, IsTakenForWhateverVersionWhenAskedFor) {
  const CString tag("06.00");
  test_support::LoadingArchive ar(ExpectedBytes({{"table", EmptyTable()},
                                                 {"station", Real(1.5)},
                                                 {"changed", Bool(false)},
                                                 {"control", Bool(false)},
                                                 {"name", Text("old")},
                                                 {"up", Real(0.25)},
                                                 {"sideways", Real(-0.25)},
                                                 {"next serial", U32(6)},
                                                 {"forms", U32(0)},
                                                 {"presentation", U32(0)}})
                                      .All());
  VornXSection section;
  section.SerializeOld(*ar, tag);
  EXPECT_EQ(ar->Remaining(), 0u);
  EXPECT_EQ(section.GetName(), "old");
  EXPECT_EQ(section.GetBuildFormArray().GetNextSerialID(), 6u);  // the forms go by the version all the same
}

TEST(XSectionArchiveVersions, ChangeTheLayoutExactlyAtTheirNumber) {
  for (const char* version : {"02.99", "03.01", "04.99", "05.01"}) {
    SCOPED_TRACE(version);
    EXPECT_TRUE(HasBytes(StoredAs(FullSection(3), version), SectionBytes({version, Way::Written}, 3)));
    ExpectSection(ReadBack<VornXSection>(SectionBytes({version, Way::Read}, 3).All(), version), {version, Way::Read},
                  3);
  }
}

}  // namespace
}  // namespace archive_test
