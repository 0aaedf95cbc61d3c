// Reading and writing large documents, compared with the XML parser's own work on the same bytes and with what an
// application would do without the library; what memory reading takes; the tool as a whole.
//
// The clock on the wall counts, since the library reads large documents with all cores; the processor's time in
// all threads is told beside it. The input of a job is prepared and its result is dropped without counting the time,
// for every contender, and each begins without freed memory to reuse.

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <memory>
#include <pugixml.hpp>
#include <string>
#include <utility>

#include "bench/bench_report.h"
#include "bench/document_sample.h"
#include "bench/process_state.h"

#ifdef VORN_HAS_BINDING
#include "bench/competitors/binding_design.h"
#endif
#ifdef VORN_HAS_LIBXML2
#include "bench/competitors/struct_reader.h"
#endif

namespace {

using vorn_host::DesignDocument;

DocumentSample& SampleOf(const benchmark::State& state) { return DocumentSample::Of(state.range(0)); }

/// Measures job(input) and nothing around it.
/// @param prepare gives the input
/// @param check tells whether the result is what it has to be
template <typename Prepare, typename Job, typename Check>
void Measure(benchmark::State& state, Prepare prepare, Job job, Check check) {
  const DocumentSample& sample = SampleOf(state);
  double processor = 0.0;
  try {
    for (auto _ : state) {
      auto input = prepare();
      ReturnFreedMemory();
      const double processorBefore = ProcessorSeconds();
      const auto before = std::chrono::steady_clock::now();
      auto result = job(input);
      const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - before;
      processor += ProcessorSeconds() - processorBefore;
      state.SetIterationTime(taken.count());
      if (!check(result)) state.SkipWithError("the result is not that of the document");
    }
  } catch (const std::exception& failure) {
    state.SkipWithError(failure.what());
  }
  state.counters[BenchReporter::kCpuCounter] = benchmark::Counter(processor, benchmark::Counter::kAvgIterations);
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                          static_cast<std::int64_t>(sample.text.size()));
}

// --- the parser alone ----------------------------------------------------------------------------------------------

std::unique_ptr<pugi::xml_document> Parsed(const std::string& text) {
  auto tree = std::make_unique<pugi::xml_document>();
  if (!tree->load_buffer(text.data(), text.size())) tree.reset();
  return tree;
}

std::unique_ptr<pugi::xml_document> ParsedInPlace(std::string& text) {
  auto tree = std::make_unique<pugi::xml_document>();
  if (!tree->load_buffer_inplace(text.data(), text.size())) tree.reset();
  return tree;
}

std::string Save(const pugi::xml_document& tree) {
  struct TextWriter : pugi::xml_writer {
    void write(const void* data, std::size_t size) override { text.append(static_cast<const char*>(data), size); }

    std::string text;
  };
  TextWriter writer;
  tree.save(writer, "  ", pugi::format_indent, pugi::encoding_utf8);
  return std::move(writer.text);
}

void ParseAlone(benchmark::State& state) {
  const std::string& text = SampleOf(state).text;
  Measure(
      state, [] { return 0; }, [&](int) { return Parsed(text); },
      [](const std::unique_ptr<pugi::xml_document>& tree) { return tree != nullptr; });
}

void ParseInPlace(benchmark::State& state) {
  const std::string& text = SampleOf(state).text;
  Measure(
      state, [&] { return text; }, [](std::string& input) { return ParsedInPlace(input); },
      [](const std::unique_ptr<pugi::xml_document>& tree) { return tree != nullptr; });
}

void SaveAlone(benchmark::State& state) {
  std::string text = SampleOf(state).text;
  const std::unique_ptr<pugi::xml_document> tree = ParsedInPlace(text);
  // It has no line for what the library declares of the encoding.
  const std::size_t least = text.size() - 100;
  Measure(
      state, [] { return 0; }, [&](int) { return Save(*tree); },
      [&](const std::string& saved) { return saved.size() >= least; });
}

// --- the library ---------------------------------------------------------------------------------------------------

void ReadDocument(benchmark::State& state) {
  const DocumentSample& sample = SampleOf(state);
  Measure(
      state, [&] { return sample.text; }, [](std::string& input) { return ReadText(std::move(input)); },
      [&](const DesignDocument& document) { return TallyOf(document) == sample.tally; });
}

/// Of bytes that stay: the library gets a copy.
void ReadCopy(benchmark::State& state) {
  const DocumentSample& sample = SampleOf(state);
  Measure(
      state, [] { return 0; }, [&](int) { return ReadText(sample.text); },
      [&](const DesignDocument& document) { return TallyOf(document) == sample.tally; });
}

void WriteDocument(benchmark::State& state) {
  DocumentSample& sample = SampleOf(state);
  Measure(
      state, [] { return 0; }, [&](int) { return WriteText(sample.document); },
      [&](const std::string& text) { return text == sample.text; });
}

void Sizes(benchmark::internal::Benchmark* bench) {
  bench->Arg(20)->Arg(200)->Unit(benchmark::kMillisecond)->Iterations(1)->UseManualTime();
}

BENCHMARK(ParseAlone)->Apply(Sizes);
BENCHMARK(ParseInPlace)->Apply(Sizes);
BENCHMARK(ReadDocument)->Apply(Sizes);
BENCHMARK(ReadCopy)->Apply(Sizes);
BENCHMARK(SaveAlone)->Apply(Sizes);
BENCHMARK(WriteDocument)->Apply(Sizes);

// --- what one would do without the library -------------------------------------------------------------------------

#ifdef VORN_HAS_LIBXML2

void ReadIntoStructs(benchmark::State& state) {
  const DocumentSample& sample = SampleOf(state);
  Measure(
      state, [] { return 0; }, [&](int) { return struct_reader::Read(sample.text); },
      [&](const struct_reader::Design& design) { return struct_reader::Tally(design) == sample.tally; });
}

BENCHMARK(ReadIntoStructs)->Apply(Sizes);

#endif
#ifdef VORN_HAS_BINDING

void ReadBinding(benchmark::State& state) {
  const DocumentSample& sample = SampleOf(state);
  Measure(
      state, [] { return 0; }, [&](int) { return BindingDesign::Read(sample.text); },
      [&](const std::unique_ptr<BindingDesign>& design) { return design->Tally() == sample.tally; });
}

void WriteBinding(benchmark::State& state) {
  const DocumentSample& sample = SampleOf(state);
  const std::unique_ptr<BindingDesign> design = BindingDesign::Read(sample.text);
  Measure(
      state, [] { return 0; }, [&](int) { return design->Write(); },
      [&](const std::string& text) { return TallyOf(ReadText(text)) == sample.tally; });
}

BENCHMARK(ReadBinding)->Apply(Sizes);
BENCHMARK(WriteBinding)->Apply(Sizes);

#endif
#ifdef VORN_TOOL

// --- the tool ------------------------------------------------------------------------------------------------------

std::string Quoted(const std::filesystem::path& path) { return "\"" + path.string() + "\""; }

void ConvertWithTool(benchmark::State& state) {
  const std::filesystem::path in = SampleFile(state.range(0));
  std::filesystem::path out = in;
  out.replace_filename("converted.xml");
  const std::string command = Quoted(VORN_TOOL) + " convert " + Quoted(in) + " " + Quoted(out) + " >/dev/null";
  const std::string& text = SampleOf(state).text;
  Measure(
      state, [] { return 0; }, [&](int) { return std::system(command.c_str()); },
      [&](int exitCode) {
        std::ifstream file(out, std::ios::binary);
        return exitCode == 0 && std::string(std::istreambuf_iterator<char>(file), {}) == text;
      });
  std::filesystem::remove(out);
}

BENCHMARK(ConvertWithTool)->Arg(20)->Unit(benchmark::kMillisecond)->Iterations(1)->UseManualTime();

#endif

}  // namespace
