// Runs the benchmarks, and tells how they compare and grow. Exits with 1 when a target is missed.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "bench/bench_report.h"
#include "bench/document_memory.h"
#include "bench/document_sample.h"
#include "bench/process_state.h"
#include "vorn/model/composed_pnt.h"

namespace {

// Quadratic work has an exponent of 2. Linear work over points comes out above 1, since 1,000 of them fit into the
// processor's cache and 100,000 do not.
constexpr double kLinear = 1.15;
constexpr double kLinearBeyondCache = 1.5;
// From 1,000 to 100,000 the logarithm in n log n adds 0.11.
constexpr double kSortingBeyondCache = 1.6;

std::vector<BenchReporter::Row> Rows() {
  using Report = BenchReporter;
  std::vector<Report::Row> rows;
  for (const std::string size : {"20", "200"}) {
    const std::string mb = size + " MB: ";
    const auto at = [&](const char* name) { return Report::Names{name + ("/" + size)}; };
    rows.push_back(Report::Ratio(mb + "read / parse alone", at("ReadCopy"), at("ParseAlone"), 3.0));
    rows.push_back(Report::CpuRatio(mb + "  the same, processor time", at("ReadCopy"), at("ParseAlone")));
    rows.push_back(Report::Ratio(mb + "  the same in place, nothing copied", at("ReadDocument"), at("ParseInPlace")));
    rows.push_back(Report::Ratio(mb + "write / save alone", at("WriteDocument"), at("SaveAlone"), 3.0));
    rows.push_back(Report::CpuRatio(mb + "  the same, processor time", at("WriteDocument"), at("SaveAlone")));
    rows.push_back(
        Report::TimesFaster(mb + "read, times faster than data binding", at("ReadDocument"), at("ReadBinding"), 10.0));
    rows.push_back(Report::CpuRatio(mb + "  the same, processor time", at("ReadBinding"), at("ReadDocument")));
    rows.push_back(Report::TimesFaster(mb + "write, times faster than data binding", at("WriteDocument"),
                                       at("WriteBinding"), 10.0));
    rows.push_back(Report::TimesFaster(mb + "read, times faster than tree and structs", at("ReadDocument"),
                                       at("ReadIntoStructs"), 3.0));
    rows.push_back(Report::CpuRatio(mb + "  the same, processor time", at("ReadIntoStructs"), at("ReadDocument")));
  }
  rows.insert(
      rows.end(),
      {
          Report::Figure("200 MB: peak of memory in reading / size of the document", "peak", 6.0),
          Report::Figure("200 MB: memory allocated after reading / size of the document", "allocated", 3.0),
          Report::Figure("200 MB:   the same, memory of the machine", "resident"),
          Report::Figure("sizeof(VornComposedPnt), bytes", "point", 400.0),
          Report::Ratio("20 MB: vorn convert / read and write", {"ConvertWithTool/20"},
                        {"ReadDocument/20", "WriteDocument/20"}, 1.2),
          Report::Ratio("store a million points / cereal", {"StoreArchive"}, {"CerealStore"}, 1.0),
          Report::Ratio("load a million points / cereal", {"LoadArchive"}, {"CerealLoad"}, 1.0),
          Report::Ratio("store a million points / copy the bytes", {"StoreArchive"}, {"CopyArchiveBytes"}),
          Report::Ratio("load a million points / copy the bytes", {"LoadArchive"}, {"CopyArchiveBytes"}),
          Report::TimesFaster("crossings of 1,000 sections, times faster than all pairs", {"CrossingsOfRoad/2000"},
                              {"AllPairsOfRoad/2000"}, 8.0),
          Report::Growth("exponent: crossings of 1,000 sections, by ground points", "CrossingsOfRoad", 500, 8'000,
                         kLinear),
          Report::Growth("exponent: crossings, by ground points", "CrossingsByGround", 1'000, 100'000, kLinear),
          Report::Growth("exponent: crossings, by design segments", "CrossingsByDesign", 1'000, 100'000, kLinear),
          Report::Growth("exponent: crossings, by design segments and ground points", "CrossingsByBoth", 1'000, 100'000,
                         kLinearBeyondCache),
          Report::Growth("exponent: crossings, design beside the ground", "CrossingsBesideGround", 1'000, 100'000,
                         kLinear),
          Report::Growth("exponent: crossings recomputed, by design points", "RecomputeCrossings", 1'000, 100'000,
                         kLinearBeyondCache),
          Report::Growth("exponent: points of a derived form placed", "PlaceDerivedPoints", 1'000, 100'000,
                         kLinearBeyondCache),
          Report::Growth("exponent: points added in derived forms", "AddPointToDerivedForms", 1'000, 100'000,
                         kLinearBeyondCache),
          Report::Growth("exponent: points of a chain of derived forms placed", "PlaceChainOfLayers", 1'000, 100'000,
                         kLinearBeyondCache),
          Report::Growth("exponent: forms appended", "AppendForms", 1'000, 100'000, kLinearBeyondCache),
          Report::Growth("exponent: derived forms normalized, by forms", "NormalizeDerivedForms", 1'000, 100'000,
                         kLinearBeyondCache),
          Report::Growth("exponent: forms sorted by height", "SortFormsByHeight", 1'000, 100'000, kSortingBeyondCache),
          Report::Growth("exponent: forms sorted by name", "SortFormsByName", 1'000, 100'000, kSortingBeyondCache),
          Report::Growth("exponent: repeated control targets removed", "RemoveRepeatedTargets", 1'000, 100'000,
                         kLinearBeyondCache),
          Report::Growth("exponent: a form split, by points and targets", "SplitForm", 1'000, 100'000,
                         kLinearBeyondCache),
      });
  return rows;
}

constexpr const char* kMeasureOption = "--measure";

/// Runs the benchmarks that a regular expression names in this process, and writes their times to a file.
/// @returns the exit code
int MeasureForAnother(const std::string& filter, const std::string& out) {
  BenchReporter reporter({});
  benchmark::RunSpecifiedBenchmarks(&reporter, filter);
  std::ofstream file(out);
  reporter.WriteTimes(file);
  return file.flush().good() ? 0 : 1;
}

/// Measures in a process of its own what leaves a heap of millions of holes, in which whoever comes next would look
/// for room. Where the system does not tell this program's path, in this one.
void MeasureApart(BenchReporter& reporter, const std::string& filter) {
  const std::string program = OwnPath();
  if (program.empty()) {
    benchmark::RunSpecifiedBenchmarks(&reporter, filter);
    return;
  }
  const std::string out = (ScratchFolder() / "times").string();
  const std::string command =
      "\"" + program + "\" " + kMeasureOption + " \"" + filter + "\" \"" + out + "\" >/dev/null";
  const int exitCode = std::system(command.c_str());
  std::ifstream file(out);
  if (exitCode != 0 || !file) reporter.AddError("a process of its own failed: " + filter);
  reporter.TakeOverTimes(file);
  std::filesystem::remove(out);
}

void RunAll(BenchReporter& reporter) {
  // The smaller documents first: what is made for the large ones stays.
  const std::string own = "ParseAlone|ParseInPlace|ReadCopy|ReadDocument|SaveAlone|WriteDocument|ReadIntoStructs";
  const auto inEachRound = [&]([[maybe_unused]] const std::string& size) {
#ifdef VORN_HAS_BINDING
    MeasureApart(reporter, "^(ReadBinding|WriteBinding)/" + size + "/");
#endif
  };
  reporter.RunInRounds("^(" + own + "|ConvertWithTool)/20/", 9, [&] { inEachRound("20"); });
  reporter.RunInRounds("^(" + own + ")/200/", 5, [&] { inEachRound("200"); });
  if (const std::optional<ReadingMemory> memory = ReadingMemoryOf(SampleFile(200).string())) {
    reporter.SetFigure("peak", memory->peak);
    reporter.SetFigure("allocated", memory->allocated);
    reporter.SetFigure("resident", memory->resident);
  } else if (CurrentMemoryUse().peak != 0) {
    reporter.AddError("the memory of reading could not be measured");
  }
  reporter.SetFigure("point", static_cast<double>(sizeof(VornComposedPnt)));
  const std::string archive = "^(CopyArchiveBytes|StoreArchive|LoadArchive|CerealStore|CerealLoad)/";
  reporter.RunInRounds(archive, 7);
  const std::string road = "^(CrossingsOfRoad|AllPairsOfRoad)/";
  reporter.RunInRounds(road, 5);
  benchmark::RunSpecifiedBenchmarks(&reporter, "-/(iterations:[0-9]+)");
  RemoveScratchFiles();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 4 && std::string_view(argv[1]) == kReadMemoryOption) return MeasureReadingMemory(argv[2], argv[3]);
  if (argc == 4 && std::string_view(argv[1]) == kMeasureOption) return MeasureForAnother(argv[2], argv[3]);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  BenchReporter reporter(Rows());
  PrintMachine();
  if (const std::string filter = benchmark::GetBenchmarkFilter(); filter.empty() || filter == "all") {
    RunAll(reporter);
  } else {
    benchmark::RunSpecifiedBenchmarks(&reporter, filter);
  }
  return reporter.PrintSummary() ? 0 : 1;
}
