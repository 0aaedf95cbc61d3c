#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cctype>
#include <string>
#include <string_view>

#include "tests/archive/expected_bytes.h"
#include "tests/support/archive_bytes.h"
#include "vorn/model/file_info.h"
#include "vorn/model/pres_point.h"
#include "vorn/model/x_sections.h"

// Records in which every member has a value of its own, so that none can stand in for another: how they are made, the
// fields they are archived as, and what comes back. Each is defined beside the tests of its record; `n` tells apart
// several of a kind.

namespace archive_test {

/// All store versions that any record tells apart, and one between those that only a strict comparison does.
inline constexpr std::array kStoreVersions = {"01.10", "01.11", "02.50", "03.00", "03.50",
                                              "04.00", "05.00", "05.50", "06.00", "06.50"};

enum class Way { Written, Read };

/// How a record lies in the archive: some records are written otherwise than they are read.
struct Layout {
  std::string_view version;
  Way way = Way::Read;

  [[nodiscard]] bool IsWritten() const { return way == Way::Written; }
  [[nodiscard]] bool IsRead() const { return way == Way::Read; }
  [[nodiscard]] bool IsFrom(std::string_view first) const { return version >= first; }
  [[nodiscard]] bool IsAfter(std::string_view last) const { return version > last; }
  /// In every version when written.
  [[nodiscard]] bool IsReadSince(std::string_view first) const { return IsWritten() || IsFrom(first); }
};

/// Runs a test once with each store version.
class InStoreVersion : public testing::TestWithParam<const char*> {
 public:
  static CString Tag() { return CString(GetParam()); }
  static Layout Written() { return {GetParam(), Way::Written}; }
  static Layout Read() { return {GetParam(), Way::Read}; }

  static std::string Name(const testing::TestParamInfo<const char*>& info) {
    std::string name = "V";
    for (const char c : std::string_view(info.param)) {
      if (std::isdigit(static_cast<unsigned char>(c)) != 0) name += c;
    }
    return name;
  }
};

#define IN_EVERY_STORE_VERSION(fixture) \
  INSTANTIATE_TEST_SUITE_P(Archive, fixture, testing::ValuesIn(kStoreVersions), InStoreVersion::Name)

template <typename Record>
Bytes StoredAs(Record& record, std::string_view version, std::uint32_t bufferSize = 4096) {
  const CString tag(version);
  return test_support::Stored([&](CArchive& ar) { record.Serialize(ar, tag); }, bufferSize);
}
template <typename Record>
Bytes StoredAs(Record&& record, std::string_view version) {
  return StoredAs(record, version);
}

/// Reads a record; it has to take all the bytes and not one more.
template <typename Record>
void ReadInto(Record& record, const Bytes& bytes, std::string_view version) {
  const CString tag(version);
  test_support::LoadingArchive ar(bytes);
  record.Serialize(*ar, tag);
  EXPECT_EQ(ar->Remaining(), 0u);
}
template <typename Record>
Record ReadBack(const Bytes& bytes, std::string_view version) {
  Record record;
  ReadInto(record, bytes, version);
  return record;
}

// --- one of each record ----------------------------------------------------------------------------------------------

VornMeasureInfos FullMeasures(int n);
ExpectedBytes MeasuresBytes(int n);
void ExpectMeasures(const VornMeasureInfos& measures, int n);

VornComposedPnt FullPoint(int n);
ExpectedBytes PointBytes(const Layout& at, int n);
void ExpectPoint(const VornComposedPnt& point, const Layout& at, int n);

VornCrossPointInfo FullCrossing(int n);
ExpectedBytes CrossingBytes(int n);
void ExpectCrossing(const VornCrossPointInfo& crossing, int n);
void ExpectNoCrossing(const VornCrossPointInfo& crossing);

VornFormCtrlTargetPnt FullTargetPoint(int n);
ExpectedBytes TargetPointBytes(const Layout& at, int n);
void ExpectTargetPoint(const VornFormCtrlTargetPnt& point, const Layout& at, int n);

VornFormCtrlTarget FullTarget(int n);
ExpectedBytes TargetBytes(const Layout& at, int n);
void ExpectTarget(const VornFormCtrlTarget& target, const Layout& at, int n);

VornBuildForm FullForm(int n);
ExpectedBytes FormBytes(const Layout& at, int n);
void ExpectForm(const VornBuildForm& form, const Layout& at, int n);

VornExistingBuildForm FullGround(int n);
ExpectedBytes GroundBytes(int n);
void ExpectGround(const VornExistingBuildForm& ground, int n);

/// A collection of two presentation points.
ExpectedBytes PresentationBytes(int n);

/// Two forms and two grounds, of n and of n + 1.
VornXSection FullSection(int n);
ExpectedBytes SectionBytes(const Layout& at, int n);
void ExpectSection(const VornXSection& section, const Layout& at, int n);

VornXSections FullSet();
ExpectedBytes SetBytes(const Layout& at);
void ExpectSet(const VornXSections& set, const Layout& at);

}  // namespace archive_test
