// Runs the benchmarks, and tells how they compare and grow.

#include <benchmark/benchmark.h>

#include "bench/bench_report.h"

namespace {

// Quadratic work has an exponent of 2. Linear work over points comes out above 1, since 1,000 of them fit into the
// processor's cache and 100,000 do not.
constexpr double kLinear = 1.15;
constexpr double kLinearBeyondCache = 1.5;

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  BenchReporter reporter(
      {
          {"read a document / parse alone", "ReadDocument", "ParseAlone", 4.0},
          {"write a document / save alone", "WriteDocument", "SaveAlone", 4.0},
          {"crossings, 50 design segments x 2,000 ground points / all pairs", "CrossingsByGround/2000",
           "CrossingsAllPairs/2000", 0.125},
          {"store a million points / cereal", "StoreArchive", "CerealStore", 1.0},
          {"load a million points / cereal", "LoadArchive", "CerealLoad", 1.0},
          {"store a million points / copy the bytes", "StoreArchive", "CopyArchiveBytes"},
          {"load a million points / copy the bytes", "LoadArchive", "CopyArchiveBytes"},
      },
      {
          {"crossings, by ground points", "CrossingsByGround", 1'000, 100'000, kLinear},
          {"crossings, by design segments", "CrossingsByDesign", 1'000, 100'000, kLinear},
          {"crossings, by design segments and ground points", "CrossingsByBoth", 1'000, 100'000, kLinearBeyondCache},
          {"crossings, design beside the ground", "CrossingsBesideGround", 1'000, 100'000, kLinear},
          {"crossings recomputed, by design points", "RecomputeCrossings", 1'000, 100'000, kLinearBeyondCache},
          {"points of a derived form placed", "PlaceDerivedPoints", 1'000, 100'000, kLinearBeyondCache},
          {"points added in derived forms", "AddPointToDerivedForms", 1'000, 100'000, kLinearBeyondCache},
          {"points of a chain of derived forms placed", "PlaceChainOfLayers", 1'000, 100'000, kLinearBeyondCache},
          {"forms appended", "AppendForms", 1'000, 100'000, kLinearBeyondCache},
          {"derived forms normalized, by forms", "NormalizeDerivedForms", 1'000, 100'000, kLinearBeyondCache},
          {"forms sorted by height", "SortFormsByHeight", 1'000, 100'000, kLinearBeyondCache},
          {"forms sorted by name", "SortFormsByName", 1'000, 100'000, kLinearBeyondCache},
          {"repeated control targets removed", "RemoveRepeatedTargets", 1'000, 100'000, kLinearBeyondCache},
          {"a form split, by points and targets", "SplitForm", 1'000, 100'000, kLinearBeyondCache},
      });
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.PrintSummary();
  return 0;
}
