#include "host/cli/plot_command.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/cli/command_options.h"
#include "host/cli/design_source.h"
#include "host/cli/drawn_output.h"
#include "host/cli/output.h"
#include "host/cli/progress.h"
#include "host/cli/section_choice.h"
#include "host/document/atomic_file.h"
#include "host/document/path_text.h"
#include "host/drawing/section_drawing.h"
#include "host/drawing/section_title.h"
#include "host/drawing/section_view.h"
#include "host/drawing/svg_writer.h"
#include "host/drawing/value_text.h"

namespace vorn_cli {

namespace {

using vorn_host::DesignDocument;
using vorn_host::Language;
using vorn_host::SectionDrawing;
using vorn_host::SectionView;

struct PlotOptions {
  DesignSource source;
  std::string out;
  SectionChoice choice;
  std::optional<double> height;
  vorn_host::DrawingOptions drawing;
};

/// The sections chosen, as people look at them and as they are drawn.
struct Plot {
  std::vector<SectionView> views;
  std::vector<SectionDrawing> drawings;
};

Plot MakePlot(const PlotOptions& options) {
  Progress progress = ProgressOf(options.source);
  const DesignDocument document = ReadDesign(options.source, progress, 2).design;
  progress.Show("drawing", 1, 2);
  const vorn_host::SectionViewer viewer(document);
  Plot plot;
  for (const SectionPick& pick : PickSections(document, viewer, options.choice, options.source.file)) {
    plot.views.push_back(viewer.Of(pick.set, pick.section, options.height));
    SectionView& view = plot.views.back();
    plot.drawings.push_back(Draw(view, options.drawing));
    view.notes = NotesOf(view, plot.drawings.back());
  }
  return plot;
}

void PrintText(const Plot& plot, const std::string& out) {
  TextReport report;
  report.Row("Written", out);
  for (std::size_t i = 0; i < plot.views.size(); ++i) {
    report.Row("Cross section", TitleOf(plot.views[i]) + ", scale " + vorn_host::ScaleText(plot.drawings[i].scale));
    for (const std::string& note : NoteTexts(plot.views[i].notes, Language::English)) report.Line("note: " + note, 2);
  }
  Print(report);
}

void PrintJson(const Plot& plot, const std::string& out) {
  Json sections = Json::array();
  for (std::size_t i = 0; i < plot.views.size(); ++i) {
    const SectionView& view = plot.views[i];
    sections.push_back({{"set", view.set + 1},
                        {"index", view.section + 1},
                        {"station", OrNull(view.station)},
                        {"stationText", view.stationText},
                        {"name", view.name},
                        {"behindChangeOfShape", view.isBehindChange},
                        {"centerHeight", OrNull(view.centerHeight)},
                        {"scale", plot.drawings[i].scale},
                        {"exaggeration", plot.drawings[i].exaggeration},
                        {"notes", NoteTexts(view.notes, Language::English)}});
  }
  Print(Json{{"written", out}, {"crossSections", std::move(sections)}});
}

void Run(const PlotOptions& options) {
  RefuseToReplaceDesign(options.source.file, options.out, "the drawing");
  const Plot plot = MakePlot(options);
  const std::string svg = vorn_host::WriteSvg(plot.drawings, "Cross section " + TitleOf(plot.views.front()));
  if (options.out.empty()) return PrintVerbatim(svg);
  vorn_host::WriteFileAtomically(vorn_host::Utf8Path(options.out), svg);
  options.source.json ? PrintJson(plot, options.out) : PrintText(plot, options.out);
}

}  // namespace

void AddPlotCommand(CLI::App& app) {
  const auto options = std::make_shared<PlotOptions>();
  CLI::App* command = app.add_subcommand("plot", "Draw a cross section as SVG");
  AddFileArgument(*command, options->source);
  command->add_option("--station", options->choice.station,
                      "station of the cross section: in metres, or as the document counts (No.6+0.0000)");
  command->add_option("--name", options->choice.name, "name of the cross section");
  command->add_option("--set", options->choice.set, "number of the set, from 1")->check(CLI::PositiveNumber);
  command->add_option("--index", options->choice.index, "number of the cross section in its set, from 1")
      ->check(CLI::PositiveNumber);
  CLI::Option* out = AddOutputOption(*command, options->out, "the SVG file to write (otherwise the standard output)");
  AddScaleOption(*command, options->drawing.scale, "draw at 1:N (the largest usual scale that fits A3)");
  AddExaggerationOption(*command, options->drawing.exaggeration);
  AddHeightOption(*command, options->height);
  AddLanguageOption(*command, options->drawing.language, "language of the words in the drawing: en (default) or ja");
  AddReadOptions(*command, options->source)->description("JSON for programs, about what was written")->needs(out);
  command->callback([options] { Run(*options); });
}

}  // namespace vorn_cli
