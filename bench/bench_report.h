#pragma once

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// Prints benchmarks as usual, and then how they compare and how they grow: absolute times differ from machine to
/// machine and from hour to hour, ratios of one run do not.
class BenchReporter : public benchmark::ConsoleReporter {
 public:
  /// Two benchmarks compared.
  struct Ratio {
    std::string what;      ///< "read a document / parse alone"
    std::string measured;  ///< name of a benchmark, with its argument ("Crossings/2000")
    std::string baseline;  ///< name of the benchmark that it is compared with
    /// The ratio should not be above it; without one it is only told.
    std::optional<double> target = std::nullopt;
  };
  /// How the time of a benchmark grows between two sizes, as the exponent of a power: 1 is linear, 2 quadratic.
  struct Growth {
    std::string what;
    std::string measured;  ///< name of a benchmark without its argument
    std::int64_t from;
    std::int64_t to;
    double target;  ///< the exponent should not be above it
  };

  BenchReporter(std::vector<Ratio> ratios, std::vector<Growth> growths)
      : ConsoleReporter(OO_Tabular), m_ratios(std::move(ratios)), m_growths(std::move(growths)) {}

  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      const std::string& args = run.run_name.args;
      const std::string name = run.run_name.function_name + (args.empty() ? "" : "/" + args);
      const bool isMedian = run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
      if (isMedian) m_medians[name] = run.GetAdjustedCPUTime() / benchmark::GetTimeUnitMultiplier(run.time_unit);
    }
    ConsoleReporter::ReportRuns(runs);
  }

  void PrintSummary() const {
    std::printf("\n%-60s %8s %8s\n", "ratio (medians of this run)", "ratio", "target");
    for (const Ratio& ratio : m_ratios) {
      const double* measured = Median(ratio.measured);
      const double* baseline = Median(ratio.baseline);
      if (measured == nullptr || baseline == nullptr) continue;
      std::printf("%-60s %8.2f", ratio.what.c_str(), *measured / *baseline);
      ratio.target ? std::printf(" %8.2f\n", *ratio.target) : std::printf(" %8s\n", "-");
    }
    std::printf("\n%-60s %8s %8s\n", "growth (exponent, medians of this run)", "exponent", "target");
    for (const Growth& growth : m_growths) {
      const double* small = Median(growth.measured + "/" + std::to_string(growth.from));
      const double* large = Median(growth.measured + "/" + std::to_string(growth.to));
      if (small == nullptr || large == nullptr) continue;
      const double times = static_cast<double>(growth.to) / static_cast<double>(growth.from);
      std::printf("%-60s %8.2f %8.2f\n", growth.what.c_str(), std::log(*large / *small) / std::log(times),
                  growth.target);
    }
  }

 private:
  [[nodiscard]] const double* Median(const std::string& name) const {
    const auto found = m_medians.find(name);
    return found == m_medians.end() ? nullptr : &found->second;
  }

  std::vector<Ratio> m_ratios;
  std::vector<Growth> m_growths;
  std::map<std::string, double> m_medians;  ///< seconds
};
