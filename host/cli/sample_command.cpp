#include "host/cli/sample_command.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "host/cli/command_options.h"
#include "host/cli/design_source.h"
#include "host/cli/output.h"
#include "host/cli/progress.h"
#include "host/cli/stored_output.h"
#include "host/document/edition_conversion.h"
#include "host/project/design_file.h"
#include "host/sample/sample_document.h"

namespace vorn_cli {

namespace {

using vorn_host::DesignDocument;
using vorn_host::DesignFile;
using vorn_host::Edition;
using vorn_host::SampleKind;

constexpr int kMostSections = 100'000;
/// From here on, making and writing a sample takes long enough for a progress bar.
constexpr int kLongDesign = 5'000;

struct SampleCommandOptions {
  std::string out;
  vorn_host::SampleOptions sample;
  std::optional<Edition> edition;
  vorn_host::TextEncoding encoding = vorn_host::TextEncoding::Utf8;
  vorn_host::DesignKind kind = vorn_host::DesignKind::Document;
  bool json = false;
};

const std::map<std::string, SampleKind>& Kinds() {
  static const std::map<std::string, SampleKind> kinds = {
      {"road", SampleKind::Road}, {"river", SampleKind::River}, {"farm", SampleKind::Farm}};
  return kinds;
}

RewriteSummary WriteSample(const SampleCommandOptions& options) {
  const Edition edition = options.edition.value_or(Edition::V41);
  Progress progress(options.sample.sections >= kLongDesign);
  // Making the design takes about a fifth of the time, writing it the rest.
  DesignFile file;
  DesignDocument& document = file.design;
  document = vorn_host::ToDocument(vorn_host::MakeSampleDesign(
      options.sample, [&](int done, int total) { progress.Show("making cross sections", done, total * 5); }));
  // A design is made in terms of the later editions; only towards 2.0 there is something to convert.
  document.edition = vorn_host::IsEdition20(edition) ? Edition::V41 : edition;
  vorn_host::ConvertEdition(document, edition, options.out);
  progress.Show("writing", 1, 5);
  return WriteDesign(std::move(file), options.out, {{options.encoding, false}, {}, options.kind});
}

}  // namespace

void AddSampleCommand(CLI::App& app) {
  const auto options = std::make_shared<SampleCommandOptions>();
  CLI::App* command =
      app.add_subcommand("sample", "Write a realistic synthetic document or project, for trying out and tests");
  command->add_option("OUT", options->out, "the document to write, or a project when it ends with .vorn")
      ->required()
      ->type_name("");
  command->add_option("--sections", options->sample.sections, "number of cross sections")
      ->check(CLI::Range(1, kMostSections))
      ->capture_default_str();
  command
      ->add_option_function<std::string>(
          "--kind", [options](const std::string& text) { options->sample.kind = Kinds().at(text); },
          "kind of work (road unless told otherwise)")
      ->check(CLI::IsMember(&Kinds()))
      ->type_name("KIND");
  AddEditionOption(*command, options->edition, "edition to write (4.1 unless told otherwise)");
  command->add_option("--seed", options->sample.seed, "another number gives another terrain")->capture_default_str();
  AddEncodingOption(*command, options->encoding);
  AddJsonOption(*command, options->json);
  command->callback([options, command] {
    options->kind = KindToWrite(*command, options->out);
    const RewriteSummary written = WriteSample(*options);
    const std::string edition(vorn_host::EditionName(options->edition.value_or(Edition::V41)));
    if (options->json) {
      Json json = {{"written", written.out}, {"edition", edition}, {"crossSections", written.sections}};
      AddStored(json, written.stored);
      Print(json);
    } else {
      TextReport report;
      report.Row("Written", written.out);
      report.Row("Edition", edition);
      PrintStored(report, written.stored);
      report.Row("Cross sections", std::to_string(written.sections));
      Print(report);
    }
  });
}

}  // namespace vorn_cli
