#pragma once

#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>
#include <vector>

/// Prints benchmarks as usual, and then how they compare: absolute times differ from machine to machine and from hour
/// to hour, ratios of one run do not.
class RatioReporter : public benchmark::ConsoleReporter {
 public:
  struct Ratio {
    std::string what;      ///< "read a document"
    std::string measured;  ///< name of a benchmark
    std::string baseline;  ///< name of the benchmark that it is compared with
    double target;         ///< the ratio should not be above it
  };

  explicit RatioReporter(std::vector<Ratio> ratios) : ConsoleReporter(OO_Tabular), m_ratios(std::move(ratios)) {}

  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      const std::string name = run.run_name.function_name;
      const bool median = run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
      if (median) m_medians[name] = run.GetAdjustedCPUTime();
    }
    ConsoleReporter::ReportRuns(runs);
  }

  void PrintRatios() const {
    std::printf("\n%-44s %8s %8s\n", "ratio (medians of this run)", "ratio", "target");
    for (const Ratio& ratio : m_ratios) {
      const auto measured = m_medians.find(ratio.measured);
      const auto baseline = m_medians.find(ratio.baseline);
      if (measured == m_medians.end() || baseline == m_medians.end()) continue;
      std::printf("%-44s %8.2f %8.2f\n", ratio.what.c_str(), measured->second / baseline->second, ratio.target);
    }
  }

 private:
  std::vector<Ratio> m_ratios;
  std::map<std::string, double> m_medians;
};
