#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <istream>
#include <limits>
#include <map>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

/// Prints benchmarks as usual, and then one table of how they compare and grow: absolute times differ from machine to
/// machine and from hour to hour, ratios of one run do not. The table says which targets are missed.
///
/// What is to be compared runs in rounds, one after the other and then all again: on a machine that others use too,
/// both sides of a ratio then have the same chances of an undisturbed time.
class BenchReporter : public benchmark::ConsoleReporter {
 public:
  using Names = std::vector<std::string>;  ///< of benchmarks, with their argument ("Crossings/2000")

  /// One line of the table. The functions below make them.
  struct Row {
    enum class Kind { Ratio, CpuRatio, TimesFaster, Growth, Figure };

    std::string what;  ///< "20 MB: read / parse alone"
    Kind kind = Kind::Ratio;
    Names measured;  ///< their times are added up
    Names baseline;
    std::optional<double> target = std::nullopt;  ///< without one, the line only tells
    double times = 0.0;                           ///< growth: by how much the second size is larger
  };
  using Target = std::optional<double>;

  /// The times of what is measured through those of the baseline; the target is the most that it may be.
  static Row Ratio(std::string what, Names measured, Names baseline, Target target = {}) {
    return {std::move(what), Row::Kind::Ratio, std::move(measured), std::move(baseline), target, 0.0};
  }
  /// As `Ratio`, of the processor's time in all threads.
  static Row CpuRatio(std::string what, Names measured, Names baseline) {
    return {std::move(what), Row::Kind::CpuRatio, std::move(measured), std::move(baseline), {}, 0.0};
  }
  /// How many times as long as what is measured the baseline takes; the target is the least that it may be.
  static Row TimesFaster(std::string what, Names measured, Names baseline, Target target = {}) {
    return {std::move(what), Row::Kind::TimesFaster, std::move(measured), std::move(baseline), target, 0.0};
  }
  /// How a time grows from one size to another, as the exponent of a power: 1 is linear, 2 quadratic.
  static Row Growth(std::string what, const std::string& name, std::int64_t from, std::int64_t to, double target) {
    const auto sized = [&](std::int64_t size) { return name + "/" + std::to_string(size); };
    return {std::move(what), Row::Kind::Growth,
            {sized(to)},     {sized(from)},
            target,          static_cast<double>(to) / static_cast<double>(from)};
  }
  /// A figure that is no time (`SetFigure`); the target is the most that it may be.
  static Row Figure(std::string what, std::string name, Target target = {}) {
    return {std::move(what), Row::Kind::Figure, {std::move(name)}, {}, target, 0.0};
  }

  explicit BenchReporter(std::vector<Row> rows) : ConsoleReporter(OO_Tabular), m_rows(std::move(rows)) {}

  void SetFigure(const std::string& name, double value) { m_figures[name] = value; }
  /// What could not be measured although it should; no run with an error is a good one.
  void AddError(const std::string& what) { m_errors.push_back(what); }

  /// Runs the benchmarks that a regular expression names in rounds, and prints their medians.
  /// @param alsoInRound runs what else belongs into each round
  void RunInRounds(
      const std::string& filter, int rounds, const std::function<void()>& alsoInRound = [] {}) {
    m_round.clear();
    m_inRounds = true;
    for (int round = 0; round < rounds; ++round) {
      benchmark::RunSpecifiedBenchmarks(this, filter);
      alsoInRound();
    }
    m_inRounds = false;
    std::printf("\n%-32s %7s %14s %14s %14s %14s\n", "in rounds", "rounds", "median ms", "shortest ms", "longest ms",
                "processor ms");
    for (const std::string& name : m_round) {
      const std::vector<double>& times = m_times[name];
      const auto [shortest, longest] = std::minmax_element(times.begin(), times.end());
      std::printf("%-32s %7zu %14.2f %14.2f %14.2f %14.2f\n", name.c_str(), times.size(), Median(times) * 1e3,
                  *shortest * 1e3, *longest * 1e3, Median(m_cpuTimes[name]) * 1e3);
    }
    std::fflush(stdout);
  }

  /// Writes what was measured so far for another process to take over: a line for each time (name, seconds, the
  /// processor's seconds) and for each error.
  void WriteTimes(std::ostream& out) const {
    out.precision(std::numeric_limits<double>::max_digits10);
    for (const auto& [name, times] : m_times) {
      const std::vector<double>& cpuTimes = m_cpuTimes.at(name);
      for (std::size_t i = 0; i < times.size(); ++i) {
        out << "time\t" << name << '\t' << times[i] << '\t' << cpuTimes[i] << '\n';
      }
    }
    for (const std::string& error : m_errors) out << "error\t" << error << '\n';
  }

  /// Takes over what `WriteTimes` wrote, as if it had been measured here.
  void TakeOverTimes(std::istream& in) {
    std::string kind;
    while (std::getline(in, kind, '\t')) {
      std::string name;
      if (kind == "error") {
        std::getline(in, name);
        m_errors.push_back(name);
        continue;
      }
      double seconds = 0.0;
      double cpu = 0.0;
      std::getline(in, name, '\t');
      in >> seconds >> cpu >> std::ws;
      AddTime(name, seconds, cpu);
    }
  }

  bool ReportContext(const Context& context) override {
    if (!m_contextTold) return m_contextTold = ConsoleReporter::ReportContext(context);
    name_field_width_ = context.name_field_width;
    printed_header_ = m_inRounds;
    return true;
  }

  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      const std::string& args = run.run_name.args;
      const std::string name = run.run_name.function_name + (args.empty() ? "" : "/" + args);
      if (run.error_occurred) {
        m_errors.push_back(name + ": " + run.error_message);
        continue;
      }
      if (run.run_type == Run::RT_Aggregate) continue;
      const double unit = benchmark::GetTimeUnitMultiplier(run.time_unit);
      const bool wallClock = !run.run_name.time_type.empty();
      const auto counted = run.counters.find(kCpuCounter);
      const double cpu = counted == run.counters.end() ? run.GetAdjustedCPUTime() / unit : counted->second.value;
      AddTime(name, (wallClock ? run.GetAdjustedRealTime() : run.GetAdjustedCPUTime()) / unit, cpu);
    }
    if (!m_inRounds) ConsoleReporter::ReportRuns(runs);
  }

  /// Prints the table: what the shortest times give beside what the medians give. The shortest times decide: whatever
  /// else the machine does can only make a round longer.
  /// False when a target is missed, or a benchmark gave an error instead of a time.
  [[nodiscard]] bool PrintSummary() const {
    bool good = m_errors.empty();
    std::printf("\n%-72s %9s %9s %9s\n", "this run", "shortest", "median", "target");
    for (const Row& row : m_rows) {
      const std::optional<double> best = ValueOf(row, true);
      if (!best) continue;
      const bool timed = row.kind != Row::Kind::Figure;
      const bool atLeast = row.kind == Row::Kind::TimesFaster;
      std::printf("%-72s %9.2f ", row.what.c_str(), *best);
      timed ? std::printf("%9.2f", *ValueOf(row, false)) : std::printf("%9s", "");
      if (row.target) {
        const bool met = atLeast ? *best >= *row.target : *best <= *row.target;
        std::printf(" %2s %6.2f  %s\n", atLeast ? ">=" : "<=", *row.target, met ? "ok" : "MISSED");
        good = good && met;
      } else {
        std::printf(" %9s\n", "-");
      }
    }
    for (const std::string& error : m_errors) std::printf("ERROR %s\n", error.c_str());
    return good;
  }

  /// The counter in which a benchmark gives the processor's seconds in all threads.
  static constexpr const char* kCpuCounter = "cpu_s";

 private:
  static double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2.0;
  }

  using Times = std::map<std::string, std::vector<double>>;  ///< seconds, by name

  void AddTime(const std::string& name, double seconds, double cpu) {
    if (m_inRounds && std::find(m_round.begin(), m_round.end(), name) == m_round.end()) m_round.push_back(name);
    m_times[name].push_back(seconds);
    m_cpuTimes[name].push_back(cpu);
  }

  [[nodiscard]] static std::optional<double> Sum(const Times& times, const Names& names, bool best) {
    double sum = 0.0;
    for (const std::string& name : names) {
      const auto found = times.find(name);
      if (found == times.end()) return std::nullopt;
      sum += best ? *std::min_element(found->second.begin(), found->second.end()) : Median(found->second);
    }
    return sum;
  }

  /// None when not everything was measured that it takes.
  [[nodiscard]] std::optional<double> ValueOf(const Row& row, bool best) const {
    if (row.kind == Row::Kind::Figure) {
      const auto found = m_figures.find(row.measured.front());
      return found == m_figures.end() ? std::nullopt : std::optional<double>(found->second);
    }
    const Times& times = row.kind == Row::Kind::CpuRatio ? m_cpuTimes : m_times;
    const std::optional<double> measured = Sum(times, row.measured, best);
    const std::optional<double> baseline = Sum(times, row.baseline, best);
    if (!measured || !baseline) return std::nullopt;
    if (row.kind == Row::Kind::TimesFaster) return *baseline / *measured;
    if (row.kind == Row::Kind::Growth) return std::log(*measured / *baseline) / std::log(row.times);
    return *measured / *baseline;
  }

  std::vector<Row> m_rows;
  Times m_times;
  Times m_cpuTimes;
  std::map<std::string, double> m_figures;
  std::vector<std::string> m_errors;
  Names m_round;  ///< in the order in which they ran first
  bool m_inRounds = false;
  bool m_contextTold = false;
};
