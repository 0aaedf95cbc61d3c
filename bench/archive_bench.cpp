// Storing and loading a model of a million composed points in memory, compared with copying the same bytes and, where
// cereal is installed, with its binary archive of plain structures that have the same fields.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "bench/process_state.h"
#include "host/sample/sample_design.h"
#include "vorn/model/x_sections.h"
#include "vorn/platform/carchive.h"

#ifdef VORN_HAS_CEREAL
#include <cereal/archives/binary.hpp>
#include <cereal/types/string.hpp>
#include <cereal/types/vector.hpp>
#include <istream>
#include <sstream>
#include <streambuf>
#endif

namespace {

constexpr int kMillion = 1'000'000;
constexpr const char* kStoreVersion = "06.00";

int CountPoints(const VornXSections& set) {
  int count = 0;
  for (const VornXSection& section : set.GetXSectionArray()) {
    for (const VornBuildForm& form : section.GetBuildFormArray()) count += form.GetComposedPntArray().GetSize();
  }
  return count;
}

VornXSections MakeSet(int sections) {
  vorn_host::SampleOptions options;
  options.sections = sections;
  return std::move(vorn_host::MakeSampleDesign(options).sets[0]);
}

/// A road with as many cross sections as a million composed points take.
VornXSections& LargeSet() {
  static VornXSections set = [] {
    constexpr int kProbe = 100;
    return MakeSet(static_cast<int>(std::int64_t{kMillion} * kProbe / CountPoints(MakeSet(kProbe)) + 1));
  }();
  return set;
}

void Store(VornXSections& set, CMemFile& file) {
  CArchive ar(&file, CArchive::store);
  set.Serialize(ar, CString(kStoreVersion));
  ar.Close();
}

const std::vector<std::uint8_t>& LargeBytes() {
  static const std::vector<std::uint8_t> bytes = [] {
    CMemFile file;
    Store(LargeSet(), file);
    return file.Detach();
  }();
  return bytes;
}

/// Drops what was loaded without counting the time for that.
template <typename T>
void DropUntimed(benchmark::State& state, std::unique_ptr<T>& loaded) {
  state.PauseTiming();
  loaded.reset();
  ReturnFreedMemory();
  state.ResumeTiming();
}

void CopyArchiveBytes(benchmark::State& state) {
  const std::vector<std::uint8_t>& bytes = LargeBytes();
  ReturnFreedMemory();
  for (auto _ : state) {
    auto copy = std::make_unique<std::vector<std::uint8_t>>(bytes);
    benchmark::DoNotOptimize(copy->data());
    DropUntimed(state, copy);
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes.size()));
}

void StoreArchive(benchmark::State& state) {
  VornXSections& set = LargeSet();
  ReturnFreedMemory();
  for (auto _ : state) {
    auto file = std::make_unique<CMemFile>();
    Store(set, *file);
    benchmark::DoNotOptimize(file->Bytes().data());
    DropUntimed(state, file);
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * LargeBytes().size()));
}

void LoadArchive(benchmark::State& state) {
  CMemFile file(LargeBytes());
  ReturnFreedMemory();
  for (auto _ : state) {
    auto set = std::make_unique<VornXSections>();
    file.SeekToBegin();
    CArchive ar(&file, CArchive::load);
    set->Serialize(ar, CString(kStoreVersion));
    benchmark::DoNotOptimize(set.get());
    if (CountPoints(*set) < kMillion) state.SkipWithError("points are missing");
    DropUntimed(state, set);
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * LargeBytes().size()));
}

BENCHMARK(CopyArchiveBytes)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(StoreArchive)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(LoadArchive)->Unit(benchmark::kMillisecond)->Iterations(2);

#ifdef VORN_HAS_CEREAL

// --- the same fields in plain structures -----------------------------------------------------------------------------
// Every value that the records hold, but no extension tables and no places that are reserved.

namespace plain {

std::string Text(const CString& text) { return std::string(text.View()); }
template <typename Enum>
std::int32_t Number(Enum value) {
  return static_cast<std::int32_t>(value);
}
template <typename T, typename Item>
std::vector<T> ListOf(const Item& items) {
  return std::vector<T>(items.begin(), items.end());
}

struct Measure {
  Measure() = default;
  explicit Measure(const VornMeasureInfo& info) : first(info.first), second(info.second) {}

  std::int32_t first = 0;
  std::int32_t second = 0;

  template <typename Archive>
  void serialize(Archive& ar) {
    ar(first, second);
  }
};

struct Detail {
  Detail() = default;
  Detail(const VornComposedPnt& point, VornComposedPnt::PntType role)
      : code(Text(point.GetCode(role))),
        xSectType(point.GetXSectType(role)),
        xSectNameID(point.GetXSectNameID(role)),
        xSectName(Text(point.GetXSectName(role))),
        dekiPairID(point.GetDekiPairID(role)),
        autoLinePrev(point.IsConnectionAutoLinePrev(role)),
        autoLineNext(point.IsConnectionAutoLineNext(role)),
        measure(ListOf<Measure>(point.Measure(role))) {}

  std::string code;
  std::uint32_t xSectType = 0;
  std::uint32_t xSectNameID = 0;
  std::string xSectName;
  std::uint32_t dekiPairID = 0;
  std::int32_t autoLinePrev = 0;
  std::int32_t autoLineNext = 0;
  std::vector<Measure> measure;

  template <typename Archive>
  void serialize(Archive& ar) {
    ar(code, xSectType, xSectNameID, xSectName, dekiPairID, autoLinePrev, autoLineNext, measure);
  }
};

struct Point {
  Point() = default;
  explicit Point(const VornComposedPnt& point)
      : elementType(Number(point.ElmType())),
        dataType(Number(point.GetDataType())),
        clDist(point.GetCLDist().Value()),
        gh(point.GetGh().Value()),
        x(point.GetX().Value()),
        y(point.GetY().Value()),
        seriesPnt(point.GetSeriesPnt()),
        existence(Number(point.GetExistence())),
        ctrlFlags(point.GetCtrlFlags()),
        pointType(point.GetPointType()),
        location(Number(point.GetLocation())),
        componentType(Number(point.GetComponentType())),
        slopeType(Number(point.GetSlopeType())),
        serialID(point.GetSerialID()),
        parentID(point.GetParentID()),
        id(point.GetID()),
        thDPairIDs(ListOf<std::uint32_t>(point.ThDPairIDs())),
        ratio(point.GetRatio().Value()),
        percent(point.GetPercent().Value()),
        main(point, VornComposedPnt::PntType::Main),
        sub(point, VornComposedPnt::PntType::Sub) {}

  std::int32_t elementType = 0;
  std::int32_t dataType = 0;
  double clDist = 0.0;
  double gh = 0.0;
  double x = 0.0;
  double y = 0.0;
  bool seriesPnt = true;
  std::int32_t existence = 0;
  std::uint32_t ctrlFlags = 0;
  std::uint16_t pointType = 0;
  std::int32_t location = 0;
  std::int32_t componentType = 0;
  std::int32_t slopeType = 0;
  std::uint32_t serialID = 0;
  std::uint32_t parentID = 0;
  std::uint32_t id = 0;
  std::vector<std::uint32_t> thDPairIDs;
  std::int32_t autoLinePrev = 0;
  std::int32_t autoLineNext = 0;
  double ratio = 0.0;
  double percent = 0.0;
  Detail main;
  Detail sub;

  template <typename Archive>
  void serialize(Archive& ar) {
    ar(elementType, dataType, clDist, gh, x, y, seriesPnt, existence, ctrlFlags, pointType, location, componentType,
       slopeType, serialID, parentID, id, thDPairIDs, autoLinePrev, autoLineNext, ratio, percent, main, sub);
  }
};

struct TargetPoint {
  TargetPoint() = default;
  explicit TargetPoint(const VornFormCtrlTargetPnt& point)
      : cumulativeDist(point.GetCumulativeDist().Value()),
        xSectChg(point.GetXSectChg()),
        buildFormName(Text(point.GetBuildFormName())),
        code(Text(point.GetCode())),
        serialID(point.GetSerialID()),
        buildFormID(point.GetBuildFormID()),
        sectionID(point.GetSectionID()),
        crossPointType(Number(point.GetCrossPointType())),
        xSectType(point.GetXSectType()),
        sectNameID(point.GetSectNameID()) {}

  double cumulativeDist = 0.0;
  bool xSectChg = false;
  std::string buildFormName;
  std::string code;
  std::uint32_t serialID = 0;
  std::uint32_t buildFormID = 0;
  std::uint32_t sectionID = 0;
  std::int32_t crossPointType = 0;
  std::uint32_t xSectType = 0;
  std::uint32_t sectNameID = 0;

  template <typename Archive>
  void serialize(Archive& ar) {
    ar(cumulativeDist, xSectChg, buildFormName, code, serialID, buildFormID, sectionID, crossPointType, xSectType,
       sectNameID);
  }
};

struct Target {
  Target() = default;
  explicit Target(const VornFormCtrlTarget& target)
      : code(Text(target.GetCodeName())),
        workType(Number(target.GetWorkType())),
        controlItem(Number(target.GetControlItem())),
        targetScope(Text(target.GetTargetScope())),
        targetRegio(Text(target.GetTargetRegio())),
        targetPntType(Number(target.GetTargetPntType())),
        lr(Number(target.GetLR())),
        serialID(target.GetSerialID()),
        points(ListOf<TargetPoint>(target.GetTargetPntArray())) {}

  std::string code;
  std::int32_t workType = 0;
  std::int32_t controlItem = 0;
  std::string targetScope;
  std::string targetRegio;
  std::int32_t targetPntType = 0;
  std::int32_t lr = 0;
  std::uint32_t serialID = 0;
  std::vector<TargetPoint> points;

  template <typename Archive>
  void serialize(Archive& ar) {
    ar(code, workType, controlItem, targetScope, targetRegio, targetPntType, lr, serialID, points);
  }
};

struct Crossing {
  Crossing() = default;
  explicit Crossing(const VornCrossPointInfo& info)
      : dist(info.GetDist().Value()),
        id(info.GetID()),
        dekiPairID(info.GetDekiPairID()),
        thDPairIDs(ListOf<std::uint32_t>(info.ThDPairIDs())),
        autoLinePrev(info.IsConnectionAutoLinePrev()),
        autoLineNext(info.IsConnectionAutoLineNext()) {}

  double dist = 0.0;
  std::uint32_t id = 0;
  std::uint32_t dekiPairID = 0;
  std::vector<std::uint32_t> thDPairIDs;
  std::int32_t autoLinePrev = 0;
  std::int32_t autoLineNext = 0;

  template <typename Archive>
  void serialize(Archive& ar) {
    ar(dist, id, dekiPairID, thDPairIDs, autoLinePrev, autoLineNext);
  }
};

struct Form {
  Form() = default;
  explicit Form(const VornBuildForm& form)
      : name(Text(form.GetName())),
        xSectType(Text(form.GetXSectType())),
        exportForm(form.GetExportForm()),
        serialID(form.GetSerialID()),
        xSectTypeID(form.GetXSectTypeID()),
        parentID(form.GetParentID()),
        paveSetIdx(form.GetPaveSetIdx()),
        category(Number(form.GetCategory())),
        crossLeft(form.GetCrossLeft()),
        crossRight(form.GetCrossRight()),
        orgSurface(form.IsOrgSurface()),
        nextPointID(form.GetComposedPntArray().GetNextSerialID()),
        points(ListOf<Point>(form.GetComposedPntArray())),
        nextTargetID(form.GetFormCtrlTargetArray().GetNextSerialID()),
        targets(ListOf<Target>(form.GetFormCtrlTargetArray())) {}

  std::string name;
  std::string xSectType;
  std::int32_t exportForm = 0;
  std::uint32_t serialID = 0;
  std::uint32_t xSectTypeID = 0;
  std::uint32_t parentID = 0;
  std::uint8_t paveSetIdx = 0;
  std::int32_t category = 0;
  Crossing crossLeft;
  Crossing crossRight;
  bool orgSurface = false;
  std::uint32_t nextPointID = 0;
  std::vector<Point> points;
  std::uint32_t nextTargetID = 0;
  std::vector<Target> targets;

  template <typename Archive>
  void serialize(Archive& ar) {
    ar(name, xSectType, exportForm, serialID, xSectTypeID, parentID, paveSetIdx, category, crossLeft, crossRight,
       orgSurface, nextPointID, points, nextTargetID, targets);
  }
};

struct GroundPoint {
  GroundPoint() = default;
  explicit GroundPoint(const VornExistingComposedPnt& point)
      : clDist(point.GetCLDist().Value()), gh(point.GetGh().Value()), name(Text(point.GetName())) {}

  double clDist = 0.0;
  double gh = 0.0;
  std::string name;

  template <typename Archive>
  void serialize(Archive& ar) {
    ar(clDist, gh, name);
  }
};

struct Ground {
  Ground() = default;
  explicit Ground(const VornExistingBuildForm& ground)
      : name(Text(ground.GetName())), points(ListOf<GroundPoint>(ground.GetComposedPntArray())) {}

  std::string name;
  std::vector<GroundPoint> points;

  template <typename Archive>
  void serialize(Archive& ar) {
    ar(name, points);
  }
};

struct Section {
  Section() = default;
  explicit Section(const VornXSection& section)
      : cumulativeDist(section.GetCumulativeDist().Value()),
        xSectChg(section.GetXSectChg()),
        controlSect(section.GetControlSect()),
        name(Text(section.GetName())),
        shiftGH(section.GetShiftGH().Value()),
        shiftDist(section.GetShiftDist().Value()),
        directionAngle(Text(section.GetDirectionAngle())),
        targetPntID(Text(section.GetTargetPntID())),
        sectionID(section.GetSectionID()),
        height(section.GetHeight().Value()),
        nextFormID(section.GetBuildFormArray().GetNextSerialID()),
        forms(ListOf<Form>(section.GetBuildFormArray())),
        grounds(ListOf<Ground>(section.GetExistingBuildFormArray())) {}

  double cumulativeDist = 0.0;
  bool xSectChg = false;
  bool controlSect = false;
  std::string name;
  double shiftGH = 0.0;
  double shiftDist = 0.0;
  std::string directionAngle;
  std::string targetPntID;
  std::uint32_t sectionID = 0;
  double height = 0.0;
  std::uint32_t nextFormID = 0;
  std::vector<Form> forms;
  std::vector<Ground> grounds;

  template <typename Archive>
  void serialize(Archive& ar) {
    ar(cumulativeDist, xSectChg, controlSect, name, shiftGH, shiftDist, directionAngle, targetPntID, sectionID, height,
       nextFormID, forms, grounds);
  }
};

struct Set {
  Set() = default;
  explicit Set(const VornXSections& set)
      : refAlign(Text(set.GetRefAlign())),
        refVertical(Text(set.GetRefVertical())),
        projectPhase(Text(set.GetProjectPhase())),
        alignment(set.GetAlignment()),
        sections(ListOf<Section>(set.GetXSectionArray())),
        nextTargetID(set.GetFormCtrlTargetArray().GetNextSerialID()),
        targets(ListOf<Target>(set.GetFormCtrlTargetArray())) {}

  std::string refAlign;
  std::string refVertical;
  std::string projectPhase;
  bool alignment = true;
  std::vector<Section> sections;
  std::uint32_t nextTargetID = 0;
  std::vector<Target> targets;

  template <typename Archive>
  void serialize(Archive& ar) {
    ar(refAlign, refVertical, projectPhase, alignment, sections, nextTargetID, targets);
  }
};

}  // namespace plain

/// What a set holds, for the check that nobody is compared with something that does less.
struct SetSums {
  std::int64_t points = 0;
  std::int64_t codeBytes = 0;
  std::int64_t groundPoints = 0;
  double x = 0.0;
  double y = 0.0;
  double groundHeights = 0.0;

  bool operator==(const SetSums&) const = default;
};

SetSums SumsOf(const VornXSections& set) {
  SetSums sums;
  for (const VornXSection& section : set.GetXSectionArray()) {
    for (const VornBuildForm& form : section.GetBuildFormArray()) {
      for (const VornComposedPnt& point : form.GetComposedPntArray()) {
        ++sums.points;
        sums.codeBytes += point.GetCode().GetLength();
        sums.x += point.GetX().Value();
        sums.y += point.GetY().Value();
      }
    }
    for (const VornExistingBuildForm& ground : section.GetExistingBuildFormArray()) {
      for (const VornExistingComposedPnt& point : ground.GetComposedPntArray()) {
        ++sums.groundPoints;
        sums.groundHeights += point.GetGh().Value();
      }
    }
  }
  return sums;
}

SetSums SumsOf(const plain::Set& set) {
  SetSums sums;
  for (const plain::Section& section : set.sections) {
    for (const plain::Form& form : section.forms) {
      for (const plain::Point& point : form.points) {
        ++sums.points;
        sums.codeBytes += static_cast<std::int64_t>(point.main.code.size());
        sums.x += point.x;
        sums.y += point.y;
      }
    }
    for (const plain::Ground& ground : section.grounds) {
      for (const plain::GroundPoint& point : ground.points) {
        ++sums.groundPoints;
        sums.groundHeights += point.gh;
      }
    }
  }
  return sums;
}

const plain::Set& PlainSet() {
  static const plain::Set set(LargeSet());
  return set;
}

const std::string& CerealBytes() {
  static const std::string bytes = [] {
    std::ostringstream stream;
    cereal::BinaryOutputArchive ar(stream);
    ar(PlainSet());
    return std::move(stream).str();
  }();
  return bytes;
}

void CerealStore(benchmark::State& state) {
  const plain::Set& set = PlainSet();
  ReturnFreedMemory();
  for (auto _ : state) {
    auto stream = std::make_unique<std::ostringstream>();
    cereal::BinaryOutputArchive ar(*stream);
    ar(set);
    benchmark::DoNotOptimize(stream.get());
    DropUntimed(state, stream);
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * CerealBytes().size()));
}

/// Bytes that a stream reads where they are.
class ReadBuffer : public std::streambuf {
 public:
  explicit ReadBuffer(const std::string& bytes) {
    char* const first = const_cast<char*>(bytes.data());
    setg(first, first, first + bytes.size());
  }
};

void CerealLoad(benchmark::State& state) {
  const std::string& bytes = CerealBytes();
  ReturnFreedMemory();
  for (auto _ : state) {
    auto set = std::make_unique<plain::Set>();
    ReadBuffer buffer(bytes);
    std::istream stream(&buffer);
    cereal::BinaryInputArchive ar(stream);
    ar(*set);
    benchmark::DoNotOptimize(set.get());
    state.PauseTiming();
    if (!(SumsOf(*set) == SumsOf(LargeSet()))) state.SkipWithError("the structures do not hold what the library does");
    state.ResumeTiming();
    DropUntimed(state, set);
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes.size()));
}

BENCHMARK(CerealStore)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(CerealLoad)->Unit(benchmark::kMillisecond)->Iterations(2);

#endif

}  // namespace
