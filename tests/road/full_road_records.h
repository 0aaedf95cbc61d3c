#pragma once

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "tests/archive/full_records.h"
#include "vorn/road/linear_xml_data.h"

// Road and survey records in which every member has a value of its own, as in tests/archive/full_records.h: how they
// are made, the fields they are archived as, and what comes back. Each is defined beside the tests of its record.

namespace road_test {

using archive_test::Bool;
using archive_test::Bytes;
using archive_test::EmptyTable;
using archive_test::ExpectedBytes;
using archive_test::HasBytes;
using archive_test::I32;
using archive_test::InStoreVersion;
using archive_test::Layout;
using archive_test::Real;
using archive_test::TableOf;
using archive_test::Text;
using archive_test::U16;
using archive_test::U32;
using archive_test::Way;
using test_support::ArchiveRefusal;
using test_support::LoadingArchive;

/// All store versions that a road record or a part of one tells apart, some between, and one above.
inline constexpr std::array kRoadVersions = {"01.10", "01.11", "02.00", "02.49", "02.50", "02.99", "03.00",
                                             "03.50", "04.00", "05.00", "05.50", "06.00", "06.50"};

#define IN_EVERY_ROAD_VERSION(fixture) \
  INSTANTIATE_TEST_SUITE_P(Archive, fixture, testing::ValuesIn(kRoadVersions), InStoreVersion::Name)

inline constexpr VORN_DataKind kFormControl = VORN_DataKind::FormControl;
inline constexpr VORN_DataKind kRoadGeometry = VORN_DataKind::RoadGeometry;
inline constexpr auto kOtherKind = static_cast<VORN_DataKind>(2);
inline constexpr std::array kKinds = {kFormControl, kRoadGeometry, kOtherKind};

/// What a record archives, in a version that has every road field, but of a composed point one detail only: storing it
/// in such a version gives up the other, which is intended.
template <typename Record, typename Tag, typename... Arguments>
Bytes StoredWhole(Record record, const Tag&, const Arguments&... arguments) {
  return test_support::Stored([&](CArchive& ar) { record.Serialize(ar, "05.50", arguments...); });
}
template <typename Record>
Bytes StoredWhole(Record record) {
  return test_support::Stored([&](CArchive& ar) { record.Serialize(ar); });
}

/// What a record puts into an archive, given what its `Serialize` takes besides that. Nobody's data may change by being
/// saved, whatever the version.
template <typename Record, typename... Arguments>
Bytes StoredWith(Record&& record, const Arguments&... arguments) {
  const Bytes former = StoredWhole(record, arguments...);
  Bytes bytes = test_support::Stored([&](CArchive& ar) { record.Serialize(ar, arguments...); });
  EXPECT_EQ(StoredWhole(record, arguments...), former) << "storing changed the record";
  return bytes;
}

/// Reads a record; it has to take all the bytes and not one more.
template <typename Record, typename... Arguments>
void ReadWith(Record& record, const Bytes& bytes, const Arguments&... arguments) {
  LoadingArchive ar(bytes);
  record.Serialize(*ar, arguments...);
  EXPECT_EQ(ar->Remaining(), 0u);
}

/// What a record throws by its bool while it is read: `false` for one that is newer than the library.
template <typename Record, typename... Arguments>
testing::AssertionResult IsRefusedAsNewer(Record& record, const Bytes& bytes, const Arguments&... arguments) {
  LoadingArchive ar(bytes);
  try {
    record.Serialize(*ar, arguments...);
  } catch (bool known) {
    return known ? testing::AssertionFailure() << "threw true" : testing::AssertionSuccess();
  }
  return testing::AssertionFailure() << "was read";
}

inline CString Numbered(const char* text, int n) { return CString(text + std::to_string(n)); }

// --- one of each record; `n` tells apart several of a kind -----------------------------------------------------------

VornCrsData FullCrs(int n);
ExpectedBytes CrsBytes(int n);
void ExpectCrs(const VornCrsData& crs, int n);
/// Two systems, of n and of n + 1.
VornCrsArray FullCrsArray(int n);
ExpectedBytes CrsArrayBytes(int n);
void ExpectCrsArray(const VornCrsArray& systems, int n);

/// Two groups, of n and of n + 1, with two points each.
VornGmPntsArray FullGroups(int n);
ExpectedBytes GroupsBytes(int n);
void ExpectGroups(const VornGmPntsArray& groups, int n);

VornCtrlPoints FullCtrlPoints(int n);
ExpectedBytes CtrlPointsBytes(int n, bool withGmPnts);
void ExpectCtrlPoints(const VornCtrlPoints& points, int n, bool withGmPnts);

/// Two alignments, of which one has a cross-section set.
VornAlignmentsArray FullAlignments();
ExpectedBytes AlignmentsBytes(const Layout& at, VORN_DataKind kind);
void ExpectAlignments(const VornAlignmentsArray& alignments, const Layout& at, VORN_DataKind kind);

VornRoadGmData FullRoad();
ExpectedBytes RoadBytes(const Layout& at, VORN_DataKind kind);
void ExpectRoad(const VornRoadGmData& road, const Layout& at, VORN_DataKind kind);

VornProjectData FullProject();
ExpectedBytes ProjectBytes();
void ExpectProject(const VornProjectData& project);

VornFormCtrl FullFormCtrl();
ExpectedBytes FormCtrlBytes(const Layout& at);
void ExpectFormCtrl(const VornFormCtrl& formCtrl, const Layout& at);

VornInfoConstrcut FullInfo();
/// Without the store version.
ExpectedBytes InfoBytes(const Layout& at);
void ExpectInfo(const VornInfoConstrcut& info, const Layout& at);

VornRoadCenterData FullCenter();
/// With the store version.
ExpectedBytes CenterBytes(const Layout& at);
void ExpectCenter(const VornRoadCenterData& center, const Layout& at);

VornLandXMLData FullLandXml();
ExpectedBytes LandXmlBytes(std::string_view version);
void ExpectLandXml(const VornLandXMLData& data, std::string_view version);

/// All road data together. Each part lies in a version of its own.
VornLinearXMLData FullData();
ExpectedBytes DataBytes(const Layout& info, const Layout& center, std::string_view landXml);
void ExpectData(const VornLinearXMLData& data, const Layout& info, const Layout& center, std::string_view landXml);

}  // namespace road_test
