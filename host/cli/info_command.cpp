#include "host/cli/info_command.h"

#include <algorithm>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/cli/command_options.h"
#include "host/cli/design_source.h"
#include "host/cli/output.h"
#include "host/cli/progress.h"
#include "host/document/design_document.h"

namespace vorn_cli {

namespace {

using vorn_host::DesignDocument;
using vorn_host::ToUtf8;

struct InfoOptions {
  DesignSource source;
};

/// What a document holds; both the text and the JSON are made from it.
struct DocumentSummary {
  struct FileInfo {
    std::string createDate;  ///< as documents have it; empty without a valid one
    std::string changeDate;
    std::string note;
  };
  struct Structure {
    std::string type;
    std::string jobName;
    std::string company;
    std::string stationType;
  };
  /// Build forms of one type and name.
  struct Forms {
    std::string xSectType;
    std::string name;
    int count = 0;
    int points = 0;
  };
  struct Targets {
    std::string item;
    int count = 0;
  };
  struct Set {
    std::string refAlign;
    std::string refVertical;
    std::string projectPhase;
    bool alignment = true;
    int sections = 0;
    int controlSections = 0;
    int changesOfShape = 0;
    std::optional<double> firstStation;
    std::optional<double> lastStation;
    std::vector<Forms> forms;
    int formCount = 0;
    int points = 0;
    std::vector<Targets> targets;
    int targetCount = 0;
    int existingForms = 0;
    int existingPoints = 0;
  };

  /// What a project holds besides the design.
  struct Project {
    std::string storeVersion;
    std::string name;
    std::string road;
    std::string roadClass;
    std::optional<int> designSpeed;  ///< km/h
    std::vector<std::string> alignments;
    std::vector<std::string> coordinateSystems;
    int controlPoints = 0;
    int benchMarks = 0;
    int groundPoints = 0;
  };

  std::string file;
  std::optional<Project> project;
  std::string edition;
  bool assumed = false;
  std::string encoding;
  std::size_t replacedCharacters = 0;
  std::size_t notUnderstood = 0;  ///< values that the library read as something else
  std::vector<FileInfo> fileInfos;
  std::optional<Structure> structure;
  std::vector<Set> sets;
  std::vector<vorn_host::CarriedContent::Row> carried;
};

// --- collecting ------------------------------------------------------------------------------------------------------

std::string DateText(const COleDateTime& date) { return date.Format("%Y-%m-%dT%H:%M:%S").GetString(); }

std::string ItemText(const VornFormCtrlTarget& target) {
  const CString text = target.GetControlItemString();
  return text.IsEmpty() ? "unknown" : text.GetString();
}

class SetSummariser {
 public:
  explicit SetSummariser(const VornXSections& set) {
    m_summary.refAlign = ToUtf8(set.GetRefAlign());
    m_summary.refVertical = ToUtf8(set.GetRefVertical());
    m_summary.projectPhase = ToUtf8(set.GetProjectPhase());
    m_summary.alignment = set.GetAlignment();
    m_summary.sections = set.GetXSectionArray().GetSize();
    for (const VornXSection& section : set.GetXSectionArray()) AddSection(section);
    AddTargets(set.GetFormCtrlTargetArray());
  }

  [[nodiscard]] DocumentSummary::Set Take() { return std::move(m_summary); }

 private:
  void AddSection(const VornXSection& section) {
    if (section.GetControlSect()) ++m_summary.controlSections;
    if (section.GetXSectChg()) ++m_summary.changesOfShape;
    if (section.GetCumulativeDist().IsSet()) {
      const double station = section.GetCumulativeDist().Value();
      m_summary.firstStation = std::min(m_summary.firstStation.value_or(station), station);
      m_summary.lastStation = std::max(m_summary.lastStation.value_or(station), station);
    }
    for (const VornBuildForm& form : section.GetBuildFormArray()) {
      AddForm(form);
      AddTargets(form.GetFormCtrlTargetArray());
    }
    for (const VornExistingBuildForm& form : section.GetExistingBuildFormArray()) {
      ++m_summary.existingForms;
      m_summary.existingPoints += form.GetComposedPntArray().GetSize();
    }
  }

  void AddForm(const VornBuildForm& form) {
    const auto [place, isNew] =
        m_formPlaces.try_emplace({form.GetXSectType().View(), form.GetName().View()}, m_summary.forms.size());
    if (isNew) m_summary.forms.push_back({ToUtf8(form.GetXSectType()), ToUtf8(form.GetName())});
    DocumentSummary::Forms& forms = m_summary.forms[place->second];
    const int points = form.GetComposedPntArray().GetSize();
    ++forms.count;
    forms.points += points;
    ++m_summary.formCount;
    m_summary.points += points;
  }

  void AddTargets(const Vorn_FormCtrlTargetArray& targets) {
    for (const VornFormCtrlTarget& target : targets) {
      const std::string item = ItemText(target);
      auto row = std::find_if(m_summary.targets.begin(), m_summary.targets.end(),
                              [&](const DocumentSummary::Targets& known) { return known.item == item; });
      if (row == m_summary.targets.end()) row = m_summary.targets.insert(row, {item});
      ++row->count;
      ++m_summary.targetCount;
    }
  }

  DocumentSummary::Set m_summary;
  std::map<std::pair<std::string_view, std::string_view>, std::size_t> m_formPlaces;
};

DocumentSummary::Project SummariseProject(const vorn_host::Project& project) {
  const VornInfoConstrcut& info = project.data.GetInfoConstrcut();
  const VornRoadGmData& roadGm = project.GetRoadGm();
  const VornRoadInfo& road = roadGm.GetRoadInfo();
  DocumentSummary::Project summary;
  summary.storeVersion = project.GetStoreVersion();
  summary.name = ToUtf8(project.data.GetRoadCenter().GetProject().GetName());
  summary.road = ToUtf8(road.GetName());
  // No store version holds a river's class.
  const bool isRiver = VornIsRiver(roadGm.GetStructureType().GetType(), true);
  if (!isRiver) summary.roadClass = ToUtf8(road.GetClassificatRoad());
  if (const int speed = road.Speed(); speed > 0) summary.designSpeed = speed;
  for (const VornAlignment& alignment : roadGm.GetAlignments()) {
    summary.alignments.push_back(ToUtf8(alignment.GetName()));
  }
  for (const VornCrsData& crs : info.GetCrsArray()) {
    summary.coordinateSystems.push_back(ToUtf8(crs.GetName()));
  }
  summary.controlPoints = info.GetCtrlPoints().GetCtrlPos().GetSize();
  summary.benchMarks = info.GetCtrlPoints().GetBenchMarks().GetSize();
  for (const VornGmPnts& group : project.data.GetRoadCenter().GetGmPnts()) {
    summary.groundPoints += group.GetPoints().GetSize();
  }
  return summary;
}

DocumentSummary Summarise(const std::string& file, const DesignDocument& document) {
  DocumentSummary summary;
  summary.file = file;
  summary.edition = vorn_host::EditionName(document.edition);
  summary.assumed = document.assumed;
  summary.encoding = document.encodingName;
  summary.replacedCharacters = document.replacedCharacters;
  summary.notUnderstood = document.unreadValues.size();
  for (const VornFileInfo& info : document.fileInfos) {
    summary.fileInfos.push_back(
        {DateText(info.GetCreateDate()), DateText(info.GetChangeDate()), ToUtf8(info.GetNote())});
  }
  if (document.hasStructureType) {
    const VornStructureType& type = document.structureType;
    summary.structure = {ToUtf8(type.GetTypeStr()), ToUtf8(type.GetJobName()), ToUtf8(type.GetCompany()),
                         ToUtf8(type.GetStationType())};
  }
  for (const VornXSections& set : document.sets) summary.sets.push_back(SetSummariser(set).Take());
  summary.carried = document.carried.Rows();
  return summary;
}

// --- as text ---------------------------------------------------------------------------------------------------------

std::string OrNone(const std::string& text) { return text.empty() ? "(none)" : text; }

/// The parts that are not empty, separated by commas.
std::string Joined(const std::vector<std::pair<std::string, std::string>>& parts) {
  std::string text;
  for (const auto& [label, value] : parts) {
    if (value.empty()) continue;
    if (!text.empty()) text += ", ";
    text += label;
    text += value;
  }
  return OrNone(text);
}

void PrintSet(TextReport& report, const DocumentSummary::Set& set, std::size_t number) {
  report.Line("");
  report.Row("Set " + std::to_string(number), Joined({{"alignment ", set.refAlign},
                                                      {"vertical ", set.refVertical},
                                                      {"phase ", set.projectPhase},
                                                      {"", set.alignment ? "" : "not along the alignment"}}));
  std::string sections = std::to_string(set.sections);
  if (set.firstStation) {
    sections += ", stations " + StationText(*set.firstStation) + " to " + StationText(*set.lastStation);
  }
  if (set.changesOfShape > 0) sections += ", " + Counted(set.changesOfShape, "change") + " of shape";
  if (set.controlSections > 0) sections += ", " + Counted(set.controlSections, "control section");
  report.Row("Cross sections", sections, 2);

  report.Row("Build forms", std::to_string(set.formCount) + " with " + Counted(set.points, "point"), 2);
  for (const DocumentSummary::Forms& forms : set.forms) {
    const std::string type = forms.xSectType.empty() ? "" : " [" + forms.xSectType + "]";
    report.CountRow(forms.count, OrNone(forms.name) + type + ", " + Counted(forms.points, "point"));
  }
  report.Row("Control targets", std::to_string(set.targetCount), 2);
  for (const DocumentSummary::Targets& targets : set.targets) report.CountRow(targets.count, targets.item);
  report.Row("Existing ground",
             set.existingForms == 0
                 ? "(none)"
                 : Counted(set.existingForms, "form") + " with " + Counted(set.existingPoints, "point"),
             2);
}

std::string List(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : ", ") + OrNone(name);
  return OrNone(text);
}

void PrintProject(TextReport& report, const DocumentSummary::Project& project) {
  report.Row("Project", Joined({{"", project.name}, {"store version ", project.storeVersion}}));
  report.Row("Road",
             Joined({{"", project.road},
                     {"class ", project.roadClass},
                     {"design speed ", project.designSpeed ? std::to_string(*project.designSpeed) + " km/h" : ""}}));
  report.Row("Alignments", List(project.alignments));
  report.Row("Coordinate systems", List(project.coordinateSystems));
  report.Row("Survey points", Counted(project.controlPoints, "control point") + ", " +
                                  Counted(project.benchMarks, "bench mark") + ", " +
                                  Counted(project.groundPoints, "ground point"));
}

void PrintText(const DocumentSummary& summary) {
  TextReport report;
  report.Row("File", summary.file);
  if (summary.project) PrintProject(report, *summary.project);
  report.Row("Edition", summary.edition + (summary.assumed ? " (assumed)" : ""));
  std::string encoding = summary.encoding;
  if (summary.replacedCharacters > 0) encoding += ", " + std::to_string(summary.replacedCharacters) + " replaced by 〓";
  report.Row("Encoding", encoding);
  if (summary.notUnderstood > 0) {
    report.Row("Not understood", Counted(static_cast<int>(summary.notUnderstood), "value") + "; see vorn check");
  }
  if (summary.fileInfos.empty()) report.Row("File information", "(none)");
  for (const DocumentSummary::FileInfo& info : summary.fileInfos) {
    report.Row("File information",
               Joined({{"created ", info.createDate}, {"changed ", info.changeDate}, {"note: ", info.note}}));
  }
  if (summary.structure) {
    report.Row("Structure type", Joined({{"", summary.structure->type},
                                         {"job ", summary.structure->jobName},
                                         {"company ", summary.structure->company},
                                         {"stations ", summary.structure->stationType}}));
  } else {
    report.Row("Structure type", "(none)");
  }
  report.Row("Carried over", summary.carried.empty() ? "(nothing)" : vorn_host::Describe(summary.carried));
  if (summary.sets.empty()) report.Row("Sets", "(none)");
  for (std::size_t i = 0; i < summary.sets.size(); ++i) PrintSet(report, summary.sets[i], i + 1);
  Print(report);
}

// --- as JSON ---------------------------------------------------------------------------------------------------------

Json SetJson(const DocumentSummary::Set& set) {
  Json forms = Json::array();
  for (const DocumentSummary::Forms& row : set.forms) {
    forms.push_back({{"xSectType", row.xSectType}, {"name", row.name}, {"count", row.count}, {"points", row.points}});
  }
  Json targets = Json::object();
  for (const DocumentSummary::Targets& row : set.targets) targets[row.item] = row.count;
  return {{"refAlign", set.refAlign},
          {"refVertical", set.refVertical},
          {"projectPhase", set.projectPhase},
          {"alignment", set.alignment},
          {"crossSections",
           {{"count", set.sections},
            {"firstStation", OrNull(set.firstStation)},
            {"lastStation", OrNull(set.lastStation)},
            {"changesOfShape", set.changesOfShape},
            {"controlSections", set.controlSections}}},
          {"buildForms", {{"count", set.formCount}, {"points", set.points}, {"byName", forms}}},
          {"controlTargets", {{"count", set.targetCount}, {"byItem", targets}}},
          {"existingGround", {{"forms", set.existingForms}, {"points", set.existingPoints}}}};
}

Json ProjectJson(const DocumentSummary::Project& project) {
  return {
      {"storeVersion", project.storeVersion},
      {"name", project.name},
      {"road", {{"name", project.road}, {"class", project.roadClass}, {"designSpeed", OrNull(project.designSpeed)}}},
      {"alignments", project.alignments},
      {"coordinateSystems", project.coordinateSystems},
      {"controlPoints", project.controlPoints},
      {"benchMarks", project.benchMarks},
      {"groundPoints", project.groundPoints}};
}

void PrintJson(const DocumentSummary& summary) {
  Json json = {{"file", summary.file},
               {"project", summary.project ? ProjectJson(*summary.project) : Json(nullptr)},
               {"edition", summary.edition},
               {"editionAssumed", summary.assumed},
               {"encoding", summary.encoding},
               {"replacedCharacters", summary.replacedCharacters},
               {"notUnderstood", summary.notUnderstood},
               {"fileInformation", Json::array()},
               {"structureType", nullptr},
               {"sets", Json::array()},
               {"carriedOver", RowsToJson(summary.carried)}};
  for (const DocumentSummary::FileInfo& info : summary.fileInfos) {
    json["fileInformation"].push_back(
        {{"createDate", OrNull(info.createDate)}, {"changeDate", OrNull(info.changeDate)}, {"note", info.note}});
  }
  if (summary.structure) {
    json["structureType"] = {{"type", summary.structure->type},
                             {"jobName", summary.structure->jobName},
                             {"company", summary.structure->company},
                             {"stationType", summary.structure->stationType}};
  }
  for (const DocumentSummary::Set& set : summary.sets) json["sets"].push_back(SetJson(set));
  Print(json);
}

DocumentSummary ReadAndSummarise(const InfoOptions& options) {
  Progress progress = ProgressOf(options.source);
  const vorn_host::DesignFile file = ReadDesign(options.source, progress, 1);
  DocumentSummary summary = Summarise(options.source.file, file.design);
  if (file.project) summary.project = SummariseProject(*file.project);
  return summary;
}

}  // namespace

void AddInfoCommand(CLI::App& app) {
  const auto options = std::make_shared<InfoOptions>();
  CLI::App* command = app.add_subcommand("info", "Show what a document or project holds");
  AddFileArgument(*command, options->source);
  AddAssumeOption(*command, options->source.read.assume);
  AddLossyOption(*command, options->source, "show characters outside code page 932 as 〓");
  AddJsonOption(*command, options->source.json);
  command->callback([options] {
    const DocumentSummary summary = ReadAndSummarise(*options);
    options->source.json ? PrintJson(summary) : PrintText(summary);
  });
}

}  // namespace vorn_cli
