#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "tests/allocation_failure/full_objects.h"
#include "tests/allocation_failure/old_or_new.h"
#include "tests/support/archive_bytes.h"
#include "vorn/types/hoso_type.h"

// What records keep when memory runs out while they are stored and loaded, in every store version.

namespace {

using allocation_test::AllowAllocations;
using allocation_test::ExpectOldOrNew;
using allocation_test::ExpectOldOrNewWhenWritten;
using allocation_test::FullForm;
using allocation_test::FullSection;
using allocation_test::FullSet;
using allocation_test::HasWholeElementsOf;
using allocation_test::kNewName;
using allocation_test::kSurface;
using allocation_test::State;
using allocation_test::StateOf;
using test_support::Bytes;

constexpr std::array kStoreVersions = {"01.10", "02.50", "03.00", "03.50", "04.00", "05.00", "05.50", "06.00", "06.50"};

/// Takes all bytes and keeps none: the memory of a file is not what is to fail.
class Sink : public CMemFile {
 public:
  void Write(const void*, std::uint32_t) override {}
};

/// Loads a record while each allocation fails once. No collection gets an element that was not loaded whole, and
/// loading into the same object again succeeds.
template <typename Record, typename Load>
void ExpectLoadedWithoutHalves(const Bytes& bytes, Load load) {
  const auto loadFrom = [&](test_support::LoadingArchive& ar, Record& record) { load(*ar, record); };
  Record whole;
  test_support::LoadingArchive in(bytes);
  loadFrom(in, whole);
  const State expected = StateOf(whole);
  for (std::ptrdiff_t succeeding = 0;; ++succeeding) {
    Record failing;
    test_support::LoadingArchive ar(bytes);
    try {
      AllowAllocations(succeeding, [&] { loadFrom(ar, failing); });
      ASSERT_EQ(StateOf(failing), expected);
      return;
    } catch (const std::bad_alloc&) {
      ASSERT_TRUE(HasWholeElementsOf(StateOf(failing), expected)) << "at allocation " << succeeding;
      test_support::LoadingArchive again(bytes);
      loadFrom(again, failing);
      ASSERT_EQ(StateOf(failing), expected) << "loaded again after allocation " << succeeding;
    }
  }
}

template <typename Record>
void ExpectStoredAndLoaded(const Record& record) {
  for (const char* version : kStoreVersions) {
    SCOPED_TRACE(version);
    const CString tag(version);
    ExpectOldOrNewWhenWritten(record, [&](Record& storing) {
      Sink sink;
      CArchive ar(&sink, CArchive::store, 64);
      storing.Serialize(ar, tag);
    });
    // Older data are read otherwise than they are written: the files of old programs below are.
    if (std::string_view(version) < "05.00") continue;
    Record stored = record;
    const auto store = [&](CArchive& ar) { stored.Serialize(ar, tag); };
    (void)test_support::Stored(store);  // a section's control targets have all their points from then on
    const Bytes bytes = test_support::Stored(store);
    ExpectLoadedWithoutHalves<Record>(bytes, [&](CArchive& ar, Record& loading) { loading.Serialize(ar, tag); });
  }
}

TEST(ArchiveWithoutMemory, HasRecordsInWholeElements) {
  const VornBuildForm form = FullForm(kSurface);
  ExpectStoredAndLoaded(form);
  ExpectStoredAndLoaded(form.GetCrossLeft());
  ExpectStoredAndLoaded(form.GetComposedPntArray());
  ExpectStoredAndLoaded(form.GetComposedPntArray()[1]);
  ExpectStoredAndLoaded(form.GetFormCtrlTargetArray());
  ExpectStoredAndLoaded(form.GetFormCtrlTargetArray()[0]);
  ExpectStoredAndLoaded(form.GetFormCtrlTargetArray()[0].GetTargetPntArray()[0]);
  const VornXSection section = FullSection(20.0);
  ExpectStoredAndLoaded(section);
  ExpectStoredAndLoaded(section.GetBuildFormArray());
  ExpectStoredAndLoaded(section.GetExistingBuildFormArray());
  VornStructureType type;
  type.SetJobName(kNewName);
  ExpectStoredAndLoaded(type);
  VornTsHosoType pavement;
  pavement.SetPaveID(3);
  pavement.SetKindID(13, 7);
  ExpectStoredAndLoaded(pavement);
  VornFileInfoArray infos;
  infos.SetSize(2);
  infos[1].SetNote(kNewName);
  ExpectStoredAndLoaded(infos);
}

TEST(PointMemory, IsNotTakenForARoleThatALoadedPointDoesNotHave) {
  VornComposedPnt point = model_test::PointOn(VornLocation::Left);
  const CString tag("06.50");
  const Bytes bytes = test_support::Stored([&](CArchive& ar) { point.Serialize(ar, tag); });
  VornComposedPnt loaded;
  test_support::LoadingArchive ar(bytes);
  loaded.Serialize(*ar, tag);
  EXPECT_EQ(allocation_test::AllocationsOf([&] { const VornComposedPnt copy = loaded; }), 0u);
}

TEST(ArchiveWithoutMemory, LeavesThePavementSettings) {
  VornTsHosoType stored;
  stored.SetScaleID(5);
  const CString tag("06.50");
  const Bytes bytes = test_support::Stored([&](CArchive& ar) { stored.Serialize(ar, tag); });
  VornTsHosoType pavement;
  pavement.SetPaveID(3);
  ExpectOldOrNew(pavement, [&](VornTsHosoType& loading) {
    test_support::LoadingArchive ar(bytes);
    loading.Serialize(*ar, tag);
  });
}

TEST(ArchiveWithoutMemory, HasASetInWholeElements) {
  VornXSections set = FullSet();
  set.GetXSectionArray().RemoveAt(1);
  ExpectStoredAndLoaded(set);
}

/// The archives of all road data in the versions that programs have left.
class RoadArchiveWithoutMemory : public testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(Archive, RoadArchiveWithoutMemory,
                         testing::Values("01.10", "02.50", "03.00", "04.00", "05.00", "05.50", "06.00", "06.50"),
                         [](const auto& version) {
                           std::string name = version.param;
                           return "V" + name.erase(2, 1);
                         });

TEST_P(RoadArchiveWithoutMemory, HasWholeElements) {
  std::ifstream file(std::string(VORN_TEST_DATA) + "/archives/road-" + GetParam() + ".bin", std::ios::binary);
  ASSERT_TRUE(file.is_open());
  const Bytes bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  const auto load = [](CArchive& ar, VornLinearXMLData& data) {
    data.GetInfoConstrcut().SetStoreVersion("06.50");
    data.GetRoadCenter().SetStoreVersion("06.50");
    data.Serialize(ar, "");
  };
  ExpectLoadedWithoutHalves<VornLinearXMLData>(bytes, load);
  VornLinearXMLData data;
  test_support::LoadingArchive in(bytes);
  load(*in, data);
  ExpectOldOrNewWhenWritten(data, [](VornLinearXMLData& storing) {
    Sink sink;
    CArchive ar(&sink, CArchive::store, 64);
    storing.Serialize(ar, "");
  });
}

}  // namespace
