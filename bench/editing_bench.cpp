// How editing grows: with the points of the existing ground, of the design, with forms and with control targets.

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "vorn/framework/schema.h"
#include "vorn/model/x_section.h"
#include "vorn/platform/code_page_932.h"
#include "vorn/platform/line_geometry.h"

namespace {

constexpr double kWidth = 100.0;  ///< of a section on either side, metres
constexpr std::string_view kFillWork = u8"盛土工"_cp932;

/// Ground as a scanner sees it: a slope with noise, from left to right.
VornExistingBuildForm ScannedGround(std::int64_t points, std::uint64_t seed) {
  std::mt19937_64 random(seed);
  VornExistingBuildForm ground;
  ground.SetName("G");
  ground.GetComposedPntArray().Reserve(static_cast<int>(points));
  for (std::int64_t i = 0; i < points; ++i) {
    const double along = static_cast<double>(i) / static_cast<double>(points - 1);
    VornExistingComposedPnt point;
    point.SetCLDist(kWidth * (2.0 * along - 1.0));
    point.SetGh(2.0 * along + static_cast<double>(random() % 100) / 1000.0);
    ground.GetComposedPntArray().Add(std::move(point));
  }
  return ground;
}

VornComposedPnt PointAt(VornLocation side, double dist, double height) {
  VornComposedPnt point;
  point.SetLocation(side);
  point.SetCLDist(dist);
  point.SetGh(height);
  return point;
}

/// A design surface on both sides, out to the width, that falls from above the ground to below it.
VornBuildForm DesignSurface(std::int64_t segments) {
  VornBuildForm form;
  form.SetXSectType(kFillWork);
  Vorn_ComposedPntArray& points = form.GetComposedPntArray();
  points.Reserve(static_cast<int>(segments) + 1);
  points.Add(PointAt(VornLocation::Center, 0.0, 20.0));
  for (const VornLocation side : {VornLocation::Left, VornLocation::Right}) {
    const double outward = side == VornLocation::Left ? -kWidth : kWidth;
    for (std::int64_t i = 1; i <= segments / 2; ++i) {
      const double along = static_cast<double>(i) / static_cast<double>(segments / 2);
      points.Add(PointAt(side, outward * along, 20.0 - 30.0 * along));
    }
  }
  return form;
}

VornXSection SectionOf(std::int64_t segments, std::int64_t groundPoints, std::uint64_t seed = 7) {
  VornXSection section;
  section.GetBuildFormArray().Add(DesignSurface(segments));
  section.GetExistingBuildFormArray().Add(ScannedGround(groundPoints, seed));
  section.SetExistingFlag(1);
  return section;
}

int FindCrossings(const VornXSection& section) {
  KelPointArray crossings;
  return section.GetCrossPoint(VornLocation::Left, crossings) + section.GetCrossPoint(VornLocation::Right, crossings);
}

/// The definition: every design segment against every ground segment, the first that crosses.
int FindCrossingsAllPairs(const VornXSection& section) {
  const Vorn_ComposedPntArray& design = section.GetBuildFormArray()[0].GetComposedPntArray();
  const VornExistingComposedPntArray& ground = section.GetExistingBuildFormArray()[0].GetComposedPntArray();
  VornIndexArray left;
  VornIndexArray right;
  design.QueryIndexArray(left, right);
  int crossings = 0;
  for (const VornIndexArray* side : {&left, &right}) {
    for (int i = 0; i + 1 < side->GetSize(); ++i) {
      const TamWorld2 a = design[(*side)[i]].Pos();
      const TamWorld2 b = design[(*side)[i + 1]].Pos();
      for (int j = 0; j + 1 < ground.GetSize(); ++j) {
        const TamWorld2 p = ground[j].Pos();
        const TamWorld2 q = ground[j + 1].Pos();
        double x = 0.0;
        double y = 0.0;
        std::uint16_t flag = 0;
        if (NurGetCrossTenFrom2Lin(a.y, a.x, b.y, b.x, p.y, p.x, q.y, q.x, x, y, flag, 999999.9999) == 0) continue;
        ++crossings;
        break;
      }
    }
  }
  return crossings;
}

constexpr std::int64_t kDesignSegments = 50;

void CrossingsByGround(benchmark::State& state) {
  const VornXSection section = SectionOf(kDesignSegments, state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(FindCrossings(section));
}

/// A whole road: every section has other ground, and together they are larger than any cache.
const std::vector<VornXSection>& RoadOf(std::int64_t groundPoints) {
  constexpr std::uint64_t kSections = 1'000;
  static std::vector<VornXSection> road;
  static std::int64_t roadGround = 0;
  if (roadGround == groundPoints) return road;
  road.clear();
  road.reserve(kSections);
  for (std::uint64_t i = 0; i < kSections; ++i) road.push_back(SectionOf(kDesignSegments, groundPoints, i));
  roadGround = groundPoints;
  return road;
}

template <typename Find>
void FindInRoad(benchmark::State& state, Find find) {
  const std::vector<VornXSection>& road = RoadOf(state.range(0));
  for (auto _ : state) {
    int crossings = 0;
    for (const VornXSection& section : road) crossings += find(section);
    benchmark::DoNotOptimize(crossings);
    state.counters["crossings"] = crossings;
  }
}

void CrossingsOfRoad(benchmark::State& state) { FindInRoad(state, FindCrossings); }

void AllPairsOfRoad(benchmark::State& state) {
  FindInRoad(state, FindCrossingsAllPairs);
  int difference = 0;
  for (const VornXSection& section : RoadOf(state.range(0))) {
    difference += FindCrossings(section) != FindCrossingsAllPairs(section);
  }
  if (difference > 0) state.SkipWithError("crossings differ from those of all pairs");
}

void CrossingsByDesign(benchmark::State& state) {
  const VornXSection section = SectionOf(state.range(0), 1'000);
  for (auto _ : state) benchmark::DoNotOptimize(FindCrossings(section));
}

/// As many design segments as ground segments.
void CrossingsByBoth(benchmark::State& state) {
  const VornXSection section = SectionOf(state.range(0), state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(FindCrossings(section));
}

/// A design that runs a decimetre beside the scanned ground and never meets it.
void CrossingsBesideGround(benchmark::State& state) {
  VornXSection section = SectionOf(kDesignSegments, state.range(0));
  for (VornComposedPnt& point : section.GetBuildFormArray()[0].GetComposedPntArray()) {
    point.SetGh((point.GetCLDist().Value() / kWidth + 1.0) + 0.2);
  }
  for (auto _ : state) benchmark::DoNotOptimize(FindCrossings(section));
}

void RecomputeCrossings(benchmark::State& state) {
  VornXSection section = SectionOf(state.range(0), 1'000);
  for (auto _ : state) section.CalcCrossPoint();
}

/// A design surface and a pavement layer that hangs on it, point by point.
Vorn_BuildFormArray SurfaceAndLayer(std::int64_t points) {
  Vorn_BuildFormArray forms;
  forms.Add(DesignSurface(points));
  VornBuildForm layer = DesignSurface(points);
  layer.SetSerialID(1);
  layer.SetParentID(0);
  for (VornComposedPnt& point : layer.GetComposedPntArray()) point.SetParentID(point.GetSerialID());
  forms.Add(std::move(layer));
  return forms;
}

void PlaceDerivedPoints(benchmark::State& state) {
  Vorn_BuildFormArray forms = SurfaceAndLayer(state.range(0));
  for (auto _ : state) forms.CalcPavePointGhDist();
}

void AddPointToDerivedForms(benchmark::State& state) {
  Vorn_BuildFormArray forms = SurfaceAndLayer(state.range(0));
  VornComposedPnt added = PointAt(VornLocation::Right, kWidth / 3.0, 9.0);
  Vorn_ComposedPntArray& surface = forms[0].GetComposedPntArray();
  const std::uint32_t serial = surface[surface.Add(added)].GetSerialID();
  for (auto _ : state) {
    forms.AddedComposedPnt(0, serial);
    forms.RemovedComposedPnt(0, serial);
  }
}

/// A design surface with many layers, every other of which hangs on it by one point only.
Vorn_BuildFormArray ManyLayers(std::int64_t count) {
  Vorn_BuildFormArray forms;
  forms.Reserve(static_cast<int>(count) + 1);
  forms.Add(DesignSurface(4));
  for (std::int64_t i = 0; i < count; ++i) {
    VornBuildForm layer;
    layer.SetName(CString(std::to_string(i).c_str()), false);
    layer.SetParentID(0);
    for (std::int64_t j = 0; j < 1 + i % 2; ++j) {
      VornComposedPnt point = PointAt(VornLocation::Right, 1.0, static_cast<double>((i * 7919) % count));
      point.SetParentID(static_cast<std::uint32_t>(j));
      layer.GetComposedPntArray().Add(std::move(point));
    }
    forms.Add(std::move(layer));
  }
  return forms;
}

/// Layers that hang on each other, each with three points.
void PlaceChainOfLayers(benchmark::State& state) {
  Vorn_BuildFormArray forms;
  for (std::int64_t i = 0; i < state.range(0); ++i) {
    VornBuildForm layer = DesignSurface(2);
    layer.SetSerialID(static_cast<std::uint32_t>(i));
    if (i > 0) layer.SetParentID(static_cast<std::uint32_t>(i - 1));
    for (VornComposedPnt& point : layer.GetComposedPntArray()) point.SetParentID(point.GetSerialID());
    forms.Add(std::move(layer));
  }
  for (auto _ : state) forms.CalcPavePointGhDist();
}

void AppendForms(benchmark::State& state) {
  const Vorn_BuildFormArray forms = ManyLayers(state.range(0));
  for (auto _ : state) {
    Vorn_BuildFormArray joined;
    benchmark::DoNotOptimize(joined.Append(forms));
  }
}

void NormalizeDerivedForms(benchmark::State& state) {
  const Vorn_BuildFormArray forms = ManyLayers(state.range(0));
  for (auto _ : state) {
    state.PauseTiming();
    Vorn_BuildFormArray copy = forms;
    state.ResumeTiming();
    copy.NormalizePaveBuildForm();
  }
}

void SortFormsByHeight(benchmark::State& state) {
  const Vorn_BuildFormArray forms = ManyLayers(state.range(0));
  for (auto _ : state) {
    state.PauseTiming();
    Vorn_BuildFormArray copy = forms;
    state.ResumeTiming();
    copy.Sort();
  }
}

void SortFormsByName(benchmark::State& state) {
  VornXSection section;
  section.SetBuildFormArray(ManyLayers(state.range(0)));
  CStringArray names;
  for (int i = section.GetBuildFormArray().GetUpperBound(); i >= 0; --i) {
    names.Add(section.GetBuildFormArray()[i].GetName());
  }
  for (auto _ : state) section.SortBuildForms(names);
}

/// Targets of both sides by turns, in pairs of one code.
Vorn_FormCtrlTargetArray ManyTargets(std::int64_t count) {
  Vorn_FormCtrlTargetArray targets;
  targets.Reserve(static_cast<int>(count));
  for (std::int64_t i = 0; i < count; ++i) {
    VornFormCtrlTarget target;
    target.SetControlItem(VornFormCtrlTarget::ControlItem::Width);
    VornFormCtrlTargetPnt point;
    point.SetCode(CString(std::to_string(i / 2).c_str()));
    target.GetTargetPntArray().Add(std::move(point));
    target.SetLR(i % 2 == 0 ? VornLocation::Left : VornLocation::Right);
    targets.Add(std::move(target));
  }
  return targets;
}

void RemoveRepeatedTargets(benchmark::State& state) {
  const Vorn_FormCtrlTargetArray targets = ManyTargets(state.range(0));
  for (auto _ : state) {
    state.PauseTiming();
    Vorn_FormCtrlTargetArray copy = targets;
    state.ResumeTiming();
    copy.Regulate();
  }
}

void SplitForm(benchmark::State& state) {
  Vorn_BuildFormArray forms;
  forms.Add(DesignSurface(state.range(0)));
  forms[0].SetFormCtrlTargetArray(ManyTargets(state.range(0)));
  for (auto _ : state) {
    state.PauseTiming();
    Vorn_BuildFormArray copy = forms;
    state.ResumeTiming();
    VornXSection::DevideBuildForm(copy, CString("R"));
  }
}

/// The two sizes between which growth is told.
void Sizes(benchmark::internal::Benchmark* bench) {
  bench->Arg(1'000)->Arg(100'000)->Unit(benchmark::kMicrosecond)->MinTime(0.2)->Repetitions(3);
}

BENCHMARK(CrossingsOfRoad)->Arg(2'000)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(AllPairsOfRoad)->Arg(2'000)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(CrossingsOfRoad)->Arg(500)->Arg(8'000)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(CrossingsByGround)->Apply(Sizes);
BENCHMARK(CrossingsByDesign)->Apply(Sizes);
BENCHMARK(CrossingsByBoth)->Apply(Sizes);
BENCHMARK(CrossingsBesideGround)->Apply(Sizes);
BENCHMARK(RecomputeCrossings)->Apply(Sizes);
BENCHMARK(PlaceDerivedPoints)->Apply(Sizes);
BENCHMARK(AddPointToDerivedForms)->Apply(Sizes);
BENCHMARK(PlaceChainOfLayers)->Apply(Sizes);
BENCHMARK(AppendForms)->Apply(Sizes);
BENCHMARK(NormalizeDerivedForms)->Apply(Sizes);
BENCHMARK(SortFormsByHeight)->Apply(Sizes);
BENCHMARK(SortFormsByName)->Apply(Sizes);
BENCHMARK(RemoveRepeatedTargets)->Apply(Sizes);
BENCHMARK(SplitForm)->Apply(Sizes);

}  // namespace
