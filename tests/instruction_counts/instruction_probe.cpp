// Does one of the main jobs on a small design and lets callgrind count the instructions of it:
//   vorn_instruction_probe read|write|edit|save|load
// The job runs once before it is counted, so that what is set up once does not count. The document is small enough to
// be read without a second thread.

#include <valgrind/callgrind.h>

#include <cstdint>
#include <cstdio>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "host/document/design_document.h"
#include "host/document/edition.h"
#include "host/sample/sample_document.h"
#include "vorn/platform/carchive.h"
#include "vorn/platform/cfile.h"

namespace {

using vorn_host::DesignDocument;

constexpr int kSections = 40;
constexpr const char* kStoreVersion = "06.00";

DesignDocument MakeDocument() {
  vorn_host::SampleOptions options;
  options.sections = kSections;
  return vorn_host::ToDocument(vorn_host::MakeSampleDesign(options));
}

std::string Write(DesignDocument& document) {
  DesignDocument::WriteReport report;
  return document.ToBytes("sample", DesignDocument::WriteOptions(), report);
}

std::vector<std::uint8_t> Save(VornXSections& set) {
  CMemFile file;
  CArchive ar(&file, CArchive::store);
  set.Serialize(ar, CString(kStoreVersion));
  ar.Close();
  return file.Detach();
}

/// The job once to warm up and once to be counted, each with an input of its own. What it gives is checked and dropped
/// uncounted.
/// @param check tells whether the job did what it should
template <typename Prepare, typename Job, typename Check>
bool Count(Prepare prepare, Job job, Check check) {
  {
    const auto warm = job(prepare());
    if (!check(warm)) return false;
  }
  auto input = prepare();
  CALLGRIND_START_INSTRUMENTATION;
  const auto result = job(std::move(input));
  CALLGRIND_STOP_INSTRUMENTATION;
  return check(result);
}

bool CountRead() {
  DesignDocument document = MakeDocument();
  const std::string text = Write(document);
  return Count([&] { return text; },
               [](std::string input) {
                 return DesignDocument::FromBytes(std::move(input), "sample", DesignDocument::ReadOptions());
               },
               [](const DesignDocument& read) { return read.sets[0].GetXSectionArray().GetSize() == kSections; });
}

bool CountWrite() {
  DesignDocument document = MakeDocument();
  return Count([] { return 0; }, [&](int) { return Write(document); },
               [](const std::string& text) { return text.size() > 100'000 && text.size() < 1'000'000; });
}

/// The sets with every point placed half a metre too low, so that the slopes of fills meet the existing ground before
/// they end.
Vorn_XSectionsArray PlacedSets() {
  const vorn_host::EditionScope scope(vorn_host::Edition::V41);
  DesignDocument document = MakeDocument();
  for (VornXSections& set : document.sets) {
    for (VornXSection& section : set.GetXSectionArray()) {
      NurReal dist;
      NurReal height;
      section.GetBuildFormArray().RegulateComposedPnt(NurReal(section.GetHeight().Value() - 0.5), dist, height);
      section.SetExistingFlag(1);
    }
  }
  return std::move(document.sets);
}

int CountCrossings(const Vorn_XSectionsArray& sets) {
  int crossings = 0;
  for (const VornXSections& set : sets) {
    for (const VornXSection& section : set.GetXSectionArray()) {
      for (const VornBuildForm& form : section.GetBuildFormArray()) {
        for (const VornComposedPnt& point : form.GetComposedPntArray()) crossings += point.IsCrossPoint();
      }
    }
  }
  return crossings;
}

/// Crossings with the ground, recomputed in every section.
bool CountEdit() {
  const Vorn_XSectionsArray placed = PlacedSets();
  return Count([&] { return placed; },
               [](Vorn_XSectionsArray sets) {
                 for (VornXSections& set : sets) {
                   for (VornXSection& section : set.GetXSectionArray()) section.CalcCrossPoint();
                 }
                 return sets;
               },
               [](const Vorn_XSectionsArray& sets) { return CountCrossings(sets) > kSections / 2; });
}

bool CountSave() {
  DesignDocument document = MakeDocument();
  return Count([] { return 0; }, [&](int) { return Save(document.sets[0]); },
               [](const std::vector<std::uint8_t>& bytes) { return bytes.size() > 100'000; });
}

bool CountLoad() {
  DesignDocument document = MakeDocument();
  const std::vector<std::uint8_t> bytes = Save(document.sets[0]);
  return Count([&] { return bytes; },
               [](std::vector<std::uint8_t> input) {
                 CMemFile file(std::move(input));
                 CArchive ar(&file, CArchive::load);
                 VornXSections set;
                 set.Serialize(ar, CString(kStoreVersion));
                 return set;
               },
               [](const VornXSections& set) { return set.GetXSectionArray().GetSize() == kSections; });
}

}  // namespace

int main(int argc, char** argv) {
  const std::string job = argc == 2 ? argv[1] : "";
  const std::map<std::string, bool (*)()> jobs = {
      {"read", CountRead}, {"write", CountWrite}, {"edit", CountEdit}, {"save", CountSave}, {"load", CountLoad}};
  const auto found = jobs.find(job);
  if (found == jobs.end()) {
    std::fprintf(stderr, "usage: %s read|write|edit|save|load\n", argv[0]);
    return 2;
  }
  if (found->second()) return 0;
  std::fprintf(stderr, "%s: the job did not do what it should\n", argv[1]);
  return 1;
}
