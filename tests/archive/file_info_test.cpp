#include "vorn/model/file_info.h"

#include <gtest/gtest.h>

#include "tests/archive/full_records.h"

namespace archive_test {
namespace {

/// 1 January 1900, 06:00, and a date of another status.
VornFileInfo FullFileInfo() {
  COleDateTime changed;
  changed.m_dt = 40000.5;
  changed.SetStatus(COleDateTime::null);
  VornFileInfo info;
  info.SetCreateDate(COleDateTime(1900, 1, 1, 6, 0, 0));
  info.SetChangeDate(changed);
  info.SetNote("note");
  return info;
}

ExpectedBytes DatesAndNote() {
  return {
      {"create status", I32(0)},      {"create date", Real(2.25)}, {"change status", I32(2)},
      {"change date", Real(40000.5)}, {"note", Text("note")},
  };
}

ExpectedBytes FileInfoBytes() {
  ExpectedBytes bytes = DatesAndNote();
  bytes.Add({"extension table", EmptyTable()});
  return bytes;
}

ExpectedBytes HostFileInfoBytes() {
  ExpectedBytes bytes = {{"extension table", EmptyTable()}};
  bytes.Add({"file", DatesAndNote()});
  return bytes;
}

void ExpectFileInfo(const VornFileInfo& info) {
  EXPECT_EQ(info.GetCreateDate(), COleDateTime(1900, 1, 1, 6, 0, 0));
  EXPECT_EQ(info.GetChangeDate().GetStatus(), COleDateTime::null);
  EXPECT_EQ(info.GetChangeDate().m_dt, 40000.5);
  EXPECT_EQ(info.GetNote(), "note");
}

class FileInfoArchive : public InStoreVersion {};
IN_EVERY_STORE_VERSION(FileInfoArchive);

TEST_P(FileInfoArchive, WritesItsDatesAndItsNoteWithTheTableLast) {
  EXPECT_TRUE(HasBytes(StoredAs(FullFileInfo(), GetParam()), FileInfoBytes()));
}

TEST_P(FileInfoArchive, ReadsItsDatesAndItsNote) {
  ExpectFileInfo(ReadBack<VornFileInfo>(FileInfoBytes().All(), GetParam()));
}

TEST_P(FileInfoArchive, KeepsANoteWithoutAChangeDate) {
  VornFileInfo info;
  info.SetNote("alone");
  EXPECT_EQ(ReadBack<VornFileInfo>(StoredAs(info, GetParam()), GetParam()).GetNote(), "alone");
}

TEST_P(FileInfoArchive, WritesTheFormForHostsWithTheTableFirst) {
  VornFileInfo info = FullFileInfo();
  EXPECT_TRUE(
      HasBytes(test_support::Stored([&](CArchive& ar) { info.Serialize(ar, GetParam()); }), HostFileInfoBytes()));
}

TEST_P(FileInfoArchive, ReadsTheFormForHosts) {
  test_support::LoadingArchive ar(HostFileInfoBytes().All());
  VornFileInfo info;
  info.Serialize(*ar, GetParam());
  EXPECT_EQ(ar->Remaining(), 0u);
  ExpectFileInfo(info);
}

TEST_P(FileInfoArchive, ForgetsWhatLaterVersionsPutIntoEitherTable) {
  using test_support::operator+;
  const Bytes table = TableOf(1, 2).bytes;
  ExpectFileInfo(ReadBack<VornFileInfo>(DatesAndNote().All() + table, GetParam()));
  test_support::LoadingArchive ar(table + DatesAndNote().All());
  VornFileInfo info;
  info.Serialize(*ar, GetParam());
  ExpectFileInfo(info);
}

// The pointer's text is not looked at.
TEST(HostFileInfoArchive, TakesNoStoreVersionAtAll) {
  VornFileInfo info = FullFileInfo();
  const auto store = [&](CArchive& ar) { info.Serialize(ar, static_cast<const char*>(nullptr)); };
  EXPECT_TRUE(HasBytes(test_support::Stored(store), HostFileInfoBytes()));
}

}  // namespace
}  // namespace archive_test
