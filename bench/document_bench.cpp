// Reading and writing a large document, compared with the XML parser's own work on the same bytes.

#include <benchmark/benchmark.h>

#include <pugixml.hpp>
#include <string>

#include "host/document/design_document.h"
#include "host/sample/sample_design.h"

namespace {

using vorn_host::DesignDocument;

constexpr std::size_t kTwentyMegabytes = 20'000'000;

DesignDocument MakeDocument(int sections) {
  vorn_host::SampleOptions options;
  options.sections = sections;
  vorn_host::SampleDesign design = vorn_host::MakeSampleDesign(options, [](int, int) {});
  DesignDocument document;
  document.fileInfos = std::move(design.fileInfos);
  document.structureType = std::move(design.structureType);
  document.hasStructureType = true;
  document.sets = std::move(design.sets);
  return document;
}

std::string Bytes(DesignDocument& document) {
  DesignDocument::WriteReport report;
  return document.ToBytes("benchmark", DesignDocument::WriteOptions(), report);
}

/// A document of about 20 MB: as many cross sections as that takes.
DesignDocument& LargeDocument() {
  static DesignDocument document = [] {
    constexpr int kProbe = 100;
    DesignDocument probe = MakeDocument(kProbe);
    return MakeDocument(static_cast<int>(kTwentyMegabytes / (Bytes(probe).size() / kProbe)));
  }();
  return document;
}

const std::string& LargeText() {
  static const std::string text = Bytes(LargeDocument());
  return text;
}

struct CountingWriter : pugi::xml_writer {
  void write(const void* data, std::size_t size) override { text.append(static_cast<const char*>(data), size); }

  std::string text;
};

void SetBytes(benchmark::State& state) {
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                          static_cast<std::int64_t>(LargeText().size()));
}

void ParseAlone(benchmark::State& state) {
  const std::string& text = LargeText();
  for (auto _ : state) {
    pugi::xml_document tree;
    benchmark::DoNotOptimize(tree.load_buffer(text.data(), text.size()));
  }
  SetBytes(state);
}

void ReadDocument(benchmark::State& state) {
  const std::string& text = LargeText();
  for (auto _ : state) {
    benchmark::DoNotOptimize(DesignDocument::FromBytes(text, "benchmark", DesignDocument::ReadOptions()));
  }
  SetBytes(state);
}

void SaveAlone(benchmark::State& state) {
  pugi::xml_document tree;
  tree.load_buffer(LargeText().data(), LargeText().size());
  for (auto _ : state) {
    CountingWriter writer;
    tree.save(writer, "  ", pugi::format_indent, pugi::encoding_utf8);
    benchmark::DoNotOptimize(writer.text.size());
  }
  SetBytes(state);
}

void WriteDocument(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(Bytes(LargeDocument()).size());
  SetBytes(state);
}

BENCHMARK(ParseAlone)->Unit(benchmark::kMillisecond)->Repetitions(5)->ReportAggregatesOnly();
BENCHMARK(ReadDocument)->Unit(benchmark::kMillisecond)->Repetitions(5)->ReportAggregatesOnly();
BENCHMARK(SaveAlone)->Unit(benchmark::kMillisecond)->Repetitions(5)->ReportAggregatesOnly();
BENCHMARK(WriteDocument)->Unit(benchmark::kMillisecond)->Repetitions(5)->ReportAggregatesOnly();

}  // namespace
