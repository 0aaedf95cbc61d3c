#include "host/cli/edit_command.h"

#include <algorithm>
#include <charconv>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/cli/command_options.h"
#include "host/cli/design_source.h"
#include "host/cli/output.h"
#include "host/cli/progress.h"
#include "host/cli/stored_output.h"
#include "host/document/control_character.h"
#include "host/editing/design_editor.h"
#include "host/project/design_file.h"

namespace vorn_cli {

namespace {

using vorn_host::DesignDocument;
using vorn_host::DesignEditor;
using vorn_host::DesignFile;
using vorn_host::EditReport;

/// One step, as the command line names it, and what it does.
struct Step {
  std::string name;
  std::function<EditReport(DesignEditor&)> run;
};

struct EditOptions {
  DesignSource source;
  std::string out;
  std::vector<Step> steps;  ///< in the order given
  std::optional<vorn_host::TextEncoding> encoding;
  vorn_host::DesignKind kind = vorn_host::DesignKind::Document;
  bool verbose = false;
};

/// What editing did; both the text and the JSON are made from it.
struct EditSummary {
  std::string in;
  std::string edition;
  std::vector<EditReport> steps;
  std::vector<std::string> lostTargets;
  RewriteSummary written;
};

EditSummary Edit(const EditOptions& options) {
  const int stages = static_cast<int>(options.steps.size()) + 2;
  Progress progress = ProgressOf(options.source);
  DesignFile file = ReadDesign(options.source, progress, stages);
  DesignDocument& document = file.design;

  EditSummary summary;
  summary.in = options.source.file;
  summary.edition = vorn_host::EditionName(document.edition);

  DesignEditor editor(document);
  for (const Step& step : options.steps) {
    progress.Show(step.name, static_cast<int>(summary.steps.size()) + 1, stages);
    try {
      summary.steps.push_back(step.run(editor));
    } catch (const vorn_host::EditError& error) {
      throw vorn_host::DocumentError(summary.in + ": " + step.name + ": " + error.what());
    }
    summary.steps.back().step = step.name;
  }
  summary.lostTargets = editor.LostTargets();

  progress.Show("writing", stages - 1, stages);
  const vorn_host::TextEncoding encoding = options.encoding.value_or(
      vorn_host::ParseEncoding(document.encodingName).value_or(vorn_host::TextEncoding::Utf8));
  summary.written =
      WriteDesign(std::move(file), options.out, {{encoding, options.source.read.lossy}, {}, options.kind});
  return summary;
}

// --- report ----------------------------------------------------------------------------------------------------------

/// Like remarks, counted, by first appearance.
std::vector<std::pair<std::string, int>> CountRemarks(const EditReport& step) {
  std::vector<std::pair<std::string, int>> rows;
  for (const EditReport::Change& remark : step.remarks) {
    const auto known =
        std::find_if(rows.begin(), rows.end(), [&](const auto& row) { return row.first == remark.what; });
    if (known == rows.end()) {
      rows.emplace_back(remark.what, 1);
    } else {
      ++known->second;
    }
  }
  return rows;
}

void PrintStep(TextReport& report, const EditReport& step, bool verbose) {
  report.Line(step.step + ":" + (step.HasChanged() ? "" : " changes nothing"));
  if (!step.changes.empty()) report.Line("cross sections changed: " + std::to_string(step.changes.size()), 4);
  for (const EditReport::Count& count : step.counts) report.Line(count.what + ": " + std::to_string(count.count), 4);
  for (const std::string& note : step.notes) report.Line("Note: " + note, 4);
  if (verbose) {
    for (const EditReport::Change& change : step.changes) report.Line(change.path + ": " + change.what, 4);
    for (const EditReport::Change& remark : step.remarks) report.Line("note: " + remark.path + ": " + remark.what, 4);
  } else {
    for (const auto& [reason, count] : CountRemarks(step)) {
      report.Line("Note: " + reason + " (" + Counted(count, "cross section") + ")", 4);
    }
  }
}

void PrintLostTargets(TextReport& report, const std::vector<std::string>& targets, bool verbose) {
  constexpr std::size_t kShown = 20;
  if (targets.empty()) return;
  report.Line("Control targets that name something which is not there any more: " + std::to_string(targets.size()));
  const std::size_t shown = verbose ? targets.size() : std::min(targets.size(), kShown);
  for (std::size_t i = 0; i < shown; ++i) report.Line(targets[i], 4);
  if (shown < targets.size()) {
    report.Line("and " + std::to_string(targets.size() - shown) + " more (--verbose lists them)", 4);
  }
}

void PrintText(const EditSummary& summary, bool verbose) {
  TextReport report;
  summary.written.PrintHead(report, summary.edition);
  summary.written.PrintDoubts(report);
  for (const EditReport& step : summary.steps) PrintStep(report, step, verbose);
  PrintLostTargets(report, summary.lostTargets, verbose);
  summary.written.PrintTail(report);
  Print(report);
}

void PrintJson(const EditSummary& summary) {
  Json steps = Json::array();
  for (const EditReport& step : summary.steps) {
    Json counts = Json::array();
    for (const EditReport::Count& count : step.counts) counts.push_back({{"what", count.what}, {"count", count.count}});
    const auto toJson = [](const std::vector<EditReport::Change>& changes) {
      Json list = Json::array();
      for (const EditReport::Change& change : changes) list.push_back({{"path", change.path}, {"what", change.what}});
      return list;
    };
    steps.push_back({{"step", step.step},
                     {"changed", step.HasChanged()},
                     {"changedSections", step.changes.size()},
                     {"counts", std::move(counts)},
                     {"sections", toJson(step.changes)},
                     {"remarks", toJson(step.remarks)},
                     {"notes", step.notes}});
  }
  Json json = {{"in", summary.in}, {"out", summary.written.out}, {"edition", summary.edition}};
  summary.written.AddHead(json);
  json["steps"] = std::move(steps);
  json["lostTargets"] = summary.lostTargets;
  summary.written.AddTail(json);
  Print(json);
}

// --- steps of the command line ---------------------------------------------------------------------------------------

[[noreturn]] void Refuse(const std::string& option, const std::string& reason) {
  throw CLI::ValidationError(option, reason);
}

/// A text of the command line as the model holds it.
CString ModelText(const std::string& option, std::string_view text) {
  const std::optional<std::string> converted = vorn_host::FromUtf8(text);
  if (!converted) Refuse(option, std::string(text) + " has characters that code page 932 cannot hold");
  if (converted->empty()) Refuse(option, "a name is empty");
  const auto control = std::find_if(text.begin(), text.end(), vorn_host::IsControlCharacter);
  if (control != text.end()) {
    Refuse(option, "a name holds the control character " +
                       vorn_host::DescribeCharacter(static_cast<char32_t>(*control)) + ", which no document can hold");
  }
  return CString(std::string_view(*converted));
}

double Number(const std::string& option, std::string_view text) {
  std::string_view digits = text;
  if (digits.starts_with('+') && !digits.starts_with("+-")) digits.remove_prefix(1);
  double value = 0.0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  constexpr double kLargest = 999999.9999;
  if (error != std::errc() || end != digits.data() + digits.size() || !(value >= -kLargest && value <= kLargest)) {
    Refuse(option, std::string(text) + " is no length in metres");
  }
  return value;
}

std::vector<std::string_view> SplitAtCommas(std::string_view text) {
  std::vector<std::string_view> parts;
  for (;;) {
    const std::size_t comma = text.find(',');
    parts.push_back(text.substr(0, comma));
    if (comma == std::string_view::npos) return parts;
    text.remove_prefix(comma + 1);
  }
}

/// The two parts of a text such as LEFT,RIGHT.
std::pair<std::string_view, std::string_view> Pair(const std::string& option, std::string_view text) {
  const std::vector<std::string_view> parts = SplitAtCommas(text);
  if (parts.size() != 2) Refuse(option, std::string(text) + " is not two parts with a comma between them");
  return {parts[0], parts[1]};
}

std::function<EditReport(DesignEditor&)> RecalcStep(const std::string& option, const std::string& text) {
  const NurReal height = text == "section" ? NurReal() : NurReal(Number(option, text));
  return [height](DesignEditor& editor) { return editor.Recalc(height); };
}

std::function<EditReport(DesignEditor&)> ShiftStep(const std::string& option, const std::string& text) {
  const auto [first, second] = Pair(option, text);
  const double dist = Number(option, first);
  const double height = Number(option, second);
  return [dist, height](DesignEditor& editor) { return editor.Shift(dist, height); };
}

std::function<EditReport(DesignEditor&)> RetypeStep(const std::string& option, const std::string& text) {
  const auto [first, second] = Pair(option, text);
  const CString left = ModelText(option, first);
  const CString right = ModelText(option, second);
  return [left, right](DesignEditor& editor) { return editor.Retype(left, right); };
}

std::function<EditReport(DesignEditor&)> SortStep(const std::string& option, const std::string& text) {
  CStringArray names;
  for (const std::string_view name : SplitAtCommas(text)) names.Add(ModelText(option, name));
  return [names](DesignEditor& editor) { return editor.SortForms(names); };
}

std::function<EditReport(DesignEditor&)> RemoveStep(const std::string& option, const std::string& text) {
  const CString name = ModelText(option, text);
  return [name](DesignEditor& editor) { return editor.RemoveForm(name); };
}

std::function<EditReport(DesignEditor&)> RenameStep(const std::string& option, const std::string& text) {
  const std::size_t colon = text.find(':');
  const std::size_t equals = colon == std::string::npos ? colon : text.find('=', colon);
  if (equals == std::string::npos) Refuse(option, text + " is not TYPE:OLD=NEW");
  const std::string_view view = text;
  // A form may have no type.
  const CString type = colon == 0 ? CString() : ModelText(option, view.substr(0, colon));
  const CString oldName = ModelText(option, view.substr(colon + 1, equals - colon - 1));
  const CString newName = ModelText(option, view.substr(equals + 1));
  return [=](DesignEditor& editor) { return editor.RenameForm(type, oldName, newName); };
}

/// Adds options that are steps: each occurrence, as it is met, appends one.
class StepOptions {
 public:
  StepOptions(CLI::App& command, std::vector<Step>& steps) : m_command(command), m_steps(steps) {}

  void AddPlain(const std::string& option, EditReport (DesignEditor::*step)(), const char* description) {
    m_command
        .add_flag_callback(
            option,
            [steps = &m_steps, option, step] {
              steps->push_back({option, std::mem_fn(step)});
            },
            description)
        ->trigger_on_parse();
  }

  void Add(const std::string& option,
           std::function<EditReport(DesignEditor&)> (*make)(const std::string&, const std::string&),
           const char* argument, const char* description) {
    m_command
        .add_option_function<std::string>(
            option,
            [steps = &m_steps, option, make](const std::string& text) {
              steps->push_back({option + " " + text, make(option, text)});
            },
            description)
        ->trigger_on_parse()
        ->type_name(argument);
  }

 private:
  CLI::App& m_command;
  std::vector<Step>& m_steps;
};

}  // namespace

void AddEditCommand(CLI::App& app) {
  const auto options = std::make_shared<EditOptions>();
  CLI::App* command =
      app.add_subcommand("edit", "Edit the cross sections of a document or project, step by step in the order given");
  command->add_option("IN", options->source.file, "the document or project (.vorn)")->required()->type_name("");
  command->add_option("OUT", options->out, "what to write, a project when it ends with .vorn; it may be IN")
      ->required()
      ->type_name("");
  StepOptions steps(*command, options->steps);
  steps.Add("--recalc", RecalcStep, "HEIGHT",
            "place the points from the height of the centre line in metres, or from each section's own (section)");
  steps.AddPlain("--cross-points", &DesignEditor::RecalcCrossings,
                 "recompute the crossings of every section that has existing ground");
  steps.AddPlain("--mirror", &DesignEditor::Mirror, "exchange left and right");
  steps.Add("--shift", ShiftStep, "DIST,HEIGHT",
            "shift the design sideways, in metres; HEIGHT is noted and moves nothing");
  steps.Add("--retype", RetypeStep, "LEFT,RIGHT", "give the sections a work type on the left and one on the right");
  steps.Add("--sort", SortStep, "NAME,NAME,...", "put the forms into this order; others follow behind");
  steps.Add("--remove-form", RemoveStep, "NAME", "remove a form from every section, with its control targets");
  steps.Add("--rename", RenameStep, "TYPE:OLD=NEW", "rename the forms of a type and a name");
  steps.AddPlain("--clear-codes", &DesignEditor::ClearCodes, "empty the codes of all points");
  steps.AddPlain("--regulate", &DesignEditor::RegulateTargets,
                 "put the control targets into their canonical form and remove repeated ones");
  AddEncodingOption(*command, options->encoding);
  AddAssumeOption(*command, options->source.read.assume);
  AddLossyOption(*command, options->source, "replace characters outside code page 932 by 〓");
  command->add_flag("--verbose", options->verbose, "tell what each step changed in each section");
  AddJsonOption(*command, options->source.json);
  command->callback([options, command] {
    options->kind = KindToWrite(*command, options->out);
    if (options->steps.empty()) throw CLI::RequiredError("a step, such as --cross-points,");
    const EditSummary summary = Edit(*options);
    options->source.json ? PrintJson(summary) : PrintText(summary, options->verbose);
  });
}

}  // namespace vorn_cli
