#include "bench/document_sample.h"

#include <fstream>
#include <map>
#include <memory>
#include <utility>

#include "host/sample/sample_document.h"

using vorn_host::DesignDocument;

namespace {

DesignDocument MakeDocument(int sections) {
  vorn_host::SampleOptions options;
  options.sections = sections;
  return vorn_host::ToDocument(vorn_host::MakeSampleDesign(options));
}

void AddPoints(const VornXSection& section, DocumentTally& tally) {
  for (const VornBuildForm& form : section.GetBuildFormArray()) {
    ++tally.forms;
    for (const VornComposedPnt& point : form.GetComposedPntArray()) {
      const VornComposedPnt::ComponentType component = point.GetComponentType();
      ++tally.points;
      tally.leftPoints += point.IsLeft();
      tally.slopes += component == VornComposedPnt::ComponentType::SlopeCut ||
                      component == VornComposedPnt::ComponentType::SlopeFill;
      tally.grades += point.GetDataType() == VornComposedPnt::DataType::Percent;
      tally.existing += point.GetExistence() == VORN_Existence::True;
      tally.codeBytes += point.GetCode().GetLength();
      tally.x += point.GetX().Value();
      tally.y += point.GetY().Value();
    }
  }
  for (const VornExistingBuildForm& ground : section.GetExistingBuildFormArray()) {
    for (const VornExistingComposedPnt& point : ground.GetComposedPntArray()) {
      ++tally.groundPoints;
      tally.codeBytes += point.GetName().GetLength();
      tally.groundDistances += point.GetCLDist().Value();
      tally.groundHeights += point.GetGh().Value();
    }
  }
}

}  // namespace

DocumentSample& DocumentSample::Of(std::int64_t megabytes) {
  static std::map<std::int64_t, std::unique_ptr<DocumentSample>> samples;
  std::unique_ptr<DocumentSample>& sample = samples[megabytes];
  if (sample) return *sample;
  constexpr int kProbe = 100;
  DesignDocument probe = MakeDocument(kProbe);
  const auto sectionBytes = static_cast<std::int64_t>(WriteText(probe).size()) / kProbe;
  sample = std::make_unique<DocumentSample>();
  sample->document = MakeDocument(static_cast<int>(megabytes * 1'000'000 / sectionBytes));
  sample->text = WriteText(sample->document);
  sample->tally = TallyOf(ReadText(sample->text));
  return *sample;
}

DesignDocument ReadText(std::string text) {
  return DesignDocument::FromBytes(std::move(text), "benchmark", DesignDocument::ReadOptions());
}

std::string WriteText(DesignDocument& document) {
  DesignDocument::WriteReport report;
  return document.ToBytes("benchmark", DesignDocument::WriteOptions(), report);
}

DocumentTally TallyOf(const DesignDocument& document) {
  DocumentTally tally;
  for (const VornXSections& set : document.sets) {
    for (const VornXSection& section : set.GetXSectionArray()) {
      ++tally.sections;
      tally.stations += section.GetCumulativeDist().Value();
      AddPoints(section, tally);
    }
    for (const VornFormCtrlTarget& target : set.GetFormCtrlTargetArray()) {
      ++tally.targets;
      tally.slopeTargets += target.GetControlItem() == VornFormCtrlTarget::ControlItem::SlopeLength;
      for (const VornFormCtrlTargetPnt& point : target.GetTargetPntArray()) {
        ++tally.targetPoints;
        tally.codeBytes += point.GetCode().GetLength();
        tally.targetStations += point.GetCumulativeDist().Value();
      }
    }
  }
  return tally;
}

std::filesystem::path ScratchFolder() { return std::filesystem::path(VORN_BENCH_SCRATCH); }

std::filesystem::path SampleFile(std::int64_t megabytes) {
  std::filesystem::path path = ScratchFolder() / ("sample-" + std::to_string(megabytes) + ".xml");
  const std::string& text = DocumentSample::Of(megabytes).text;
  std::error_code missing;
  if (std::filesystem::file_size(path, missing) == text.size()) return path;
  std::ofstream(path, std::ios::binary).write(text.data(), static_cast<std::streamsize>(text.size()));
  return path;
}

void RemoveScratchFiles() {
  std::error_code error;
  std::filesystem::remove_all(ScratchFolder(), error);
  std::filesystem::create_directories(ScratchFolder(), error);
}
