#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <new>
#include <string>
#include <type_traits>
#include <utility>

#include "tests/archive/expected_bytes.h"
#include "vorn/model/measure_info.h"
#include "vorn/model/pres_point.h"
#include "vorn/model/x_sections.h"
#include "vorn/platform/counted_archive.h"
#include "vorn/road/crs_data.h"
#include "vorn/road/ctrl_points.h"
#include "vorn/road/land_xml_data.h"
#include "vorn/road/project_data.h"
#include "vorn/road/road_gm_data.h"
#include "vorn/types/bld_name_map.h"

// What reading an archive allocates at most, measured by replacing the global allocation: therefore an executable of
// its own. The inputs are the worst there are: as many of the shortest records as fit, as many as make a growing array
// hold the most.

namespace {

constexpr std::size_t kHeader = alignof(std::max_align_t);

/// What a block of so many bytes really gives and therefore takes: many small nodes take more than their sizes.
constexpr std::size_t Granted(std::size_t size) { return std::max<std::size_t>(24, (size + 7) / 16 * 16 + 8); }

std::atomic<std::size_t> g_used{0};
std::atomic<std::size_t> g_peak{0};

void* Allocate(std::size_t size) {
  auto* block = static_cast<unsigned char*>(std::malloc(size + kHeader));
  if (block == nullptr) throw std::bad_alloc();
  *reinterpret_cast<std::size_t*>(block) = Granted(size);
  const std::size_t used = g_used += Granted(size);
  std::size_t peak = g_peak;
  while (used > peak && !g_peak.compare_exchange_weak(peak, used)) {
  }
  return block + kHeader;
}

void Release(void* memory) noexcept {
  if (memory == nullptr) return;
  auto* block = static_cast<unsigned char*>(memory) - kHeader;
  g_used -= *reinterpret_cast<std::size_t*>(block);
  std::free(block);
}

}  // namespace

void* operator new(std::size_t size) { return Allocate(size); }
void* operator new[](std::size_t size) { return Allocate(size); }
void operator delete(void* memory) noexcept { Release(memory); }
void operator delete[](void* memory) noexcept { Release(memory); }
void operator delete(void* memory, std::size_t) noexcept { Release(memory); }
void operator delete[](void* memory, std::size_t) noexcept { Release(memory); }

namespace {

using archive_test::Bytes;
using archive_test::EmptyTable;
using archive_test::ExpectedBytes;
using archive_test::I32;
using archive_test::Real;
using archive_test::Text;
using archive_test::U16;
using archive_test::U32;
using archive_test::U8;
using test_support::ArchiveRefusal;
using test_support::LoadingArchive;
using test_support::operator+;

// The shortest record of each kind, in the version in which it is shortest.

const ExpectedBytes kOldPoint = {
    {"table", EmptyTable()}, {"distance", Real(0)}, {"height", Real(0)},   {"X", Real(0)},    {"Y", Real(0)},
    {"code", Text("")},      {"series", U8(0)},     {"existence", U32(0)}, {"flags", U32(0)}, {"reserved", U32(0)},
    {"type", U16(0)},        {"location", U32(0)},  {"component", U32(0)}, {"slope", U32(0)}};
const ExpectedBytes kOldTarget = {{"table", EmptyTable()}, {"code", Text("")},   {"work", I32(0)}, {"item", I32(0)},
                                  {"scope", Text("")},     {"region", Text("")}, {"type", I32(0)}, {"side", I32(0)}};
const ExpectedBytes kOldForm = {{"table", EmptyTable()}, {"name", Text("")}, {"type", Text("")},
                                {"export", U32(0)},      {"points", U32(0)}, {"targets", U32(0)}};
const ExpectedBytes kTargetPoint = {{"table", EmptyTable()}, {"station", Real(0)}, {"change", U8(0)},
                                    {"form", Text("")},      {"code", Text("")},   {"word", U16(0)},
                                    {"double word", U32(0)}};
const ExpectedBytes kOldSection = {{"table", EmptyTable()}, {"station", Real(0)}, {"change", U8(0)},
                                   {"control", U8(0)},      {"name", Text("")},   {"up", Real(0)},
                                   {"sideways", Real(0)},   {"forms", U32(0)},    {"points", U32(0)}};
const ExpectedBytes kGroundPoint = {
    {"distance", Real(0)}, {"height", Real(0)}, {"name", Text("")}, {"table", EmptyTable()}};
const ExpectedBytes kGround = {{"name", Text("")}, {"points", U32(0)}, {"table", EmptyTable()}};
const ExpectedBytes kMeasure = {{"table", EmptyTable()}, {"first", U32(0)}, {"second", U32(0)}};
const ExpectedBytes kPresentation = {{"table", EmptyTable()}, {"first", Real(0)}, {"second", Real(0)}};

constexpr std::size_t kMiB = std::size_t{1} << 20;
/// Small, so that small inputs show what large ones would come to.
constexpr std::size_t kAllowedAlways = kMiB / 4;

/// Enough elements to be more than what is allowed always.
constexpr std::uint32_t kRoom = std::uint32_t{8} << 11;

/// A room of a growing array of such elements: it doubles from the first one.
template <typename Item>
constexpr std::uint32_t kGrownRoom = [] {
  std::uint32_t room = kFirstCountedRoom<Item>;
  while (room < kRoom) room *= 2;
  return room;
}();

/// Numbers of elements at which a growing array of them costs most. While it grows, the old room and the new one are
/// both there: an array that grows for the last time half-way holds most for the elements that it gets, and one whose
/// archive ends just then for those that it has.
template <typename Item>
constexpr std::array<std::uint32_t, 4> kWorstCounts = {kGrownRoom<Item>, kGrownRoom<Item> + 1, 2 * kGrownRoom<Item>,
                                                       2 * kGrownRoom<Item> + 1};

template <typename Array>
using ItemOf = std::remove_cvref_t<decltype(*std::declval<Array&>().GetData())>;

Bytes Repeated(const Bytes& record, std::size_t times) {
  Bytes bytes;
  bytes.reserve(record.size() * times);
  for (std::size_t i = 0; i < times; ++i) bytes.insert(bytes.end(), record.begin(), record.end());
  return bytes;
}

struct Peak {
  std::size_t bytes;  ///< what reading allocated at most
  std::size_t input;

  [[nodiscard]] std::string Text() const {
    return std::to_string(bytes / kMiB) + " MiB for " + std::to_string(input) + " bytes, " +
           std::to_string(static_cast<double>(bytes) / static_cast<double>(input)) + " times";
  }
};

/// Reads an array as its record asks for.
template <typename Array>
void Load(Array& array, CArchive& ar, const CString& version) {
  if constexpr (requires { array.Serialize(ar); }) {
    array.Serialize(ar);
  } else if constexpr (requires { array.Serialize(ar, version.GetString(), "01.11"); }) {
    array.Serialize(ar, version.GetString(), "01.11");
  } else {
    array.Serialize(ar, version);
  }
}

/// Reads an array of a number of records that announces another number of them.
template <typename Array>
Peak PeakOf(const Bytes& record, const char* version, std::uint32_t announced, std::uint32_t elements) {
  const Bytes bytes = U32(announced).bytes + Repeated(record, elements);
  const std::size_t input = bytes.size();
  LoadingArchive ar(bytes);
  const CString tag(version);
  const std::size_t before = g_used;
  g_peak = before;
  Array array;
  const auto cause = ArchiveRefusal([&] { Load(array, *ar, tag); });
  EXPECT_EQ(cause, announced > elements ? CArchiveException::endOfFile : CArchiveException::none);
  if (announced <= elements) {
    EXPECT_EQ(array.GetSize(), static_cast<int>(announced));
  }
  return {g_peak - before, input};
}

template <typename Array>
void ExpectModest(const ExpectedBytes& element, const char* version) {
  using Item = ItemOf<Array>;
  const Bytes record = element.All();
  EXPECT_GE(PeakOf<Array>(record, version, 2 * kGrownRoom<Item>, 2 * kGrownRoom<Item>).bytes,
            3 * kGrownRoom<Item> * sizeof(Item))
      << "not the worst case: the old room and the new one at once";
  for (const std::uint32_t elements : kWorstCounts<Item>) {
    const Peak honest = PeakOf<Array>(record, version, elements, elements);
    EXPECT_LE(honest.bytes, kAllowedAlways + 32 * honest.input) << honest.Text();
    // More than there are, as many as records of so many bytes would be.
    for (const std::size_t least : {4, 5, 6, 8, 9, 11, 12, 16, 18}) {
      const auto announced = static_cast<std::uint32_t>(record.size() * elements / least);
      if (announced <= elements) continue;
      const Peak boasting = PeakOf<Array>(record, version, announced, elements);
      EXPECT_LE(boasting.bytes, kAllowedAlways + 32 * boasting.input) << least << ": " << boasting.Text();
    }
  }
}

TEST(ArchiveMemory, ComposedPoints) { ExpectModest<Vorn_Array<VornComposedPnt>>(kOldPoint, "03.00"); }
TEST(ArchiveMemory, BuildForms) { ExpectModest<Vorn_Array<VornBuildForm>>(kOldForm, "04.00"); }
TEST(ArchiveMemory, ControlTargets) { ExpectModest<Vorn_Array<VornFormCtrlTarget>>(kOldTarget, "03.00"); }
TEST(ArchiveMemory, TargetPoints) { ExpectModest<VornFormCtrlTargetPntArray>(kTargetPoint, "04.00"); }
TEST(ArchiveMemory, CrossSections) { ExpectModest<Vorn_XSectionArray>(kOldSection, "03.00"); }
TEST(ArchiveMemory, ExistingGrounds) { ExpectModest<VornExistingBuildFormArray>(kGround, "06.00"); }
TEST(ArchiveMemory, ExistingGroundPoints) { ExpectModest<VornExistingComposedPntArray>(kGroundPoint, "06.00"); }
TEST(ArchiveMemory, PresentationPoints) { ExpectModest<Vorn_Array<VornPresPoint>>(kPresentation, "03.00"); }

TEST(ArchiveMemory, RegistriesOfNames) {
  const ExpectedBytes item = {{"table", EmptyTable()}, {"name", Text("")}, {"color", U32(0)}};
  for (const std::uint32_t names : kWorstCounts<VornBuildItem>) {
    for (const std::uint32_t announced : {names, names * 2}) {
      const Bytes bytes = ExpectedBytes({{"table", EmptyTable()},
                                         {"count", U32(1)},
                                         {"key", Text("")},
                                         {"list table", EmptyTable()},
                                         {"list count", U32(announced)}})
                              .All() +
                          Repeated(item.All(), names);
      LoadingArchive ar(bytes);
      const std::size_t before = g_used;
      g_peak = before;
      const auto registry = std::make_unique<VornBldNameMap>();
      EXPECT_EQ(ArchiveRefusal([&] { registry->Serialize(*ar); }),
                announced > names ? CArchiveException::endOfFile : CArchiveException::none);
      EXPECT_LE(g_peak - before, kAllowedAlways + 32 * bytes.size());
    }
  }
}

TEST(ArchiveMemory, RegistriesOfManyClasses) {
  const ExpectedBytes list = {{"table", EmptyTable()}, {"count", U32(0)}};
  for (const std::uint32_t classes : kWorstCounts<std::pair<CString, VornBldNameList>>) {
    Bytes bytes = EmptyTable().bytes + U32(classes).bytes;
    for (std::uint32_t i = 0; i < classes; ++i) {
      const Bytes one = Text(std::to_string(i).c_str()).bytes + list.All();
      bytes.insert(bytes.end(), one.begin(), one.end());
    }
    LoadingArchive ar(bytes);
    const std::size_t before = g_used;
    g_peak = before;
    const auto registry = std::make_unique<VornBldNameMap>();
    registry->Serialize(*ar);
    EXPECT_LE(g_peak - before, kAllowedAlways + 32 * bytes.size());
  }
}

TEST(ArchiveMemory, Measurements) {
  for (const std::uint32_t count : kWorstCounts<VornMeasureInfo>) {
    for (const std::uint32_t announced : {count, 2 * count}) {
      const Bytes bytes = EmptyTable().bytes + U32(announced).bytes + Repeated(kMeasure.All(), count);
      LoadingArchive ar(bytes);
      const CString tag("06.00");
      const std::size_t before = g_used;
      g_peak = before;
      VornMeasureInfos measures;
      EXPECT_EQ(ArchiveRefusal([&] { measures.Serialize(*ar, tag); }),
                announced > count ? CArchiveException::endOfFile : CArchiveException::none);
      EXPECT_LE(g_peak - before, kAllowedAlways + 32 * bytes.size()) << count << " of " << announced;
    }
  }
}

const ExpectedBytes kOldSet = {
    {"table", EmptyTable()}, {"alignment", Text("")}, {"vertical", Text("")}, {"sections", U32(0)}};

TEST(ArchiveMemory, SetsOfCrossSections) { ExpectModest<Vorn_XSectionsArray>(kOldSet, "03.00"); }

/// As many of the shortest forms as are given, in the last of so many sections of one set. Each collection may announce
/// more than it has.
Peak PeakOfNested(std::uint32_t sections, std::uint32_t forms, bool boasting) {
  const ExpectedBytes set = {{"table", EmptyTable()},
                             {"alignment", Text("")},
                             {"vertical", Text("")},
                             {"phase", Text("")},
                             {"ordered", U8(0)}};
  const ExpectedBytes section = {{"table", EmptyTable()}, {"station", Real(0)},    {"change", U8(0)},
                                 {"control", U8(0)},      {"name", Text("")},      {"up", Real(0)},
                                 {"sideways", Real(0)},   {"direction", Text("")}, {"point", Text("")},
                                 {"identifier", U32(0)}};
  const Bytes all = Repeated(kOldForm.All(), forms);
  const auto announced = [&](std::uint32_t real, std::size_t least) {
    return U32(boasting ? static_cast<std::uint32_t>(all.size() / least) : real).bytes;
  };
  Bytes bytes = set.All() + announced(sections, 80);
  for (std::uint32_t i = 0; i + 1 < sections; ++i) bytes = bytes + section.All() + U32(0).bytes + U32(0).bytes;
  bytes = bytes + section.All() + announced(forms, 18) + all + U32(0).bytes + U32(0).bytes;
  const std::size_t input = bytes.size();
  LoadingArchive ar(std::move(bytes));
  const CString tag("04.00");
  const std::size_t before = g_used;
  g_peak = before;
  VornXSections loaded;
  const auto cause = ArchiveRefusal([&] { loaded.Serialize(*ar, tag); });
  EXPECT_EQ(cause, boasting ? CArchiveException::endOfFile : CArchiveException::none);
  return {g_peak - before, input};
}

TEST(ArchiveMemory, FormsWithinSectionsWithinASet) {
  for (const std::uint32_t forms : kWorstCounts<VornBuildForm>) {
    for (const bool boasting : {false, true}) {
      const Peak peak = PeakOfNested(200, forms, boasting);
      EXPECT_LE(peak.bytes, kAllowedAlways + 32 * peak.input) << forms << ": " << peak.Text();
    }
  }
}

TEST(ArchiveMemory, ListsOfEmptyTexts) {
  for (const std::uint32_t texts : {kRoom + 1, 70'001u, 200'000u}) {
    for (const std::uint32_t announced : {texts, texts + 1}) {
      Bytes bytes = announced < 0xFFFF ? U16(static_cast<std::uint16_t>(announced)).bytes
                                       : U16(0xFFFF).bytes + U32(announced).bytes;
      bytes.resize(bytes.size() + texts);
      const std::size_t input = bytes.size();
      LoadingArchive ar(std::move(bytes));
      const std::size_t before = g_used;
      g_peak = before;
      CStringArray loaded;
      EXPECT_EQ(ArchiveRefusal([&] { *ar >> loaded; }),
                announced > texts ? CArchiveException::endOfFile : CArchiveException::none);
      EXPECT_LE(g_peak - before, kAllowedAlways + 32 * input);
    }
  }
}

TEST(ArchiveMemory, CoordinateSystems) {
  const ExpectedBytes crs = {{"name", Text("")},    {"datum", I32(0)},      {"vertical datum", Text("")},
                             {"height", Real(0)},   {"coordinate", I32(0)}, {"aux code", I32(0)},
                             {"aux text", Text("")}};
  ExpectModest<VornCrsArray>(crs, "05.00");
}

TEST(ArchiveMemory, ControlPoints) {
  ExpectModest<VornCtrlPosArray>({{"number", U16(1)}, {"class", I32(0)}, {"name", Text("")}}, "05.00");
}

TEST(ArchiveMemory, GroundPoints) { ExpectModest<VornGmPntArray>({{"number", U16(1)}, {"name", Text("")}}, "05.00"); }

TEST(ArchiveMemory, GroupsOfGroundPoints) {
  ExpectModest<VornGmPntsArray>({{"name", Text("")}, {"name 2", Text("")}, {"count", I32(0)}}, "05.00");
}

/// Alignments of old construction information, which end before their cross sections.
class OldAlignments : public VornAlignmentsArray {
 public:
  void Serialize(CArchive& ar, const CString& tag) { VornRecordArray::Serialize(ar, tag, VORN_DataKind::FormControl); }
};

const ExpectedBytes kOldAlignment = {{"name", Text("")}, {"crs name", Text("")}, {"aux text", Text("")},
                                     {"attr 1", U16(0)}, {"attr 2", U16(0)},     {"attr 3", U16(0)}};

TEST(ArchiveMemory, OldAlignments) { ExpectModest<OldAlignments>(kOldAlignment, "02.49"); }

TEST(ArchiveMemory, AlignmentsWithoutCrossSections) {
  const ExpectedBytes set = {
      {"table", EmptyTable()}, {"alignment", Text("")}, {"vertical", Text("")}, {"sections", U32(0)}};
  const ExpectedBytes date = {{"status", I32(2)}, {"date", Real(0)}};
  ExpectModest<OldAlignments>(
      {{"alignment", kOldAlignment}, {"set", set}, {"date 1", date}, {"date 2", date}, {"date 3", date}}, "02.50");
}

TEST(ArchiveMemory, Creators) { ExpectModest<VornCreatorInfoArray>({{"name", Text("")}, {"text", Text("")}}, "05.00"); }

TEST(ArchiveMemory, PointsOfTheExport) {
  ExpectModest<VornRecordArray<VornLandXMLCgPoint>>({{"number", U16(1)}}, "05.00");
}

TEST(ArchiveMemory, AlignmentsOfTheExport) {
  ExpectModest<VornLandXMLAlignmentsArray>({{"name", Text("")},
                                            {"text", Text("")},
                                            {"flag", I32(0)},
                                            {"code 1", U16(0)},
                                            {"code 2", U16(0)},
                                            {"code 3", U16(0)}},
                                           "05.00");
}

TEST(ArchiveMemory, TextsOfTheExport) {
  const ExpectedBytes options = {
      {"version", Text("01.11")}, {"flag", I32(0)}, {"option 1", I32(0)}, {"option 3", I32(0)}, {"value", Real(0)}};
  const ExpectedBytes rest = {{"name", Text("")},   {"desc", Text("")},   {"points", I32(0)},
                              {"option 1", I32(0)}, {"option 2", I32(0)}, {"alignments", I32(0)}};
  for (const std::uint32_t texts : {kRoom + 1, 70'001u, 200'000u}) {
    for (const bool boasting : {false, true}) {
      const auto announced = static_cast<std::uint32_t>(boasting ? texts + rest.All().size() : texts);
      const Bytes count = announced < 0xFFFF ? U16(static_cast<std::uint16_t>(announced)).bytes
                                             : U16(0xFFFF).bytes + U32(announced).bytes;
      Bytes bytes = options.All() + count + Bytes(texts) + rest.All();
      const std::size_t input = bytes.size();
      LoadingArchive ar(std::move(bytes));
      const std::size_t before = g_used;
      g_peak = before;
      VornLandXMLData data;
      EXPECT_EQ(ArchiveRefusal([&] { data.Serialize(*ar, "05.00"); }),
                boasting ? CArchiveException::endOfFile : CArchiveException::none);
      EXPECT_GE(data.GetTexts().GetCount(), static_cast<int>(texts));
      const Peak peak{g_peak - before, input};
      EXPECT_LE(peak.bytes, kAllowedAlways + 32 * peak.input) << texts << ": " << peak.Text();
    }
  }
}

TEST(ArchiveMemory, Identifiers) { ExpectModest<VornUIntArray>({{"value", U32(7)}}, ""); }

}  // namespace
