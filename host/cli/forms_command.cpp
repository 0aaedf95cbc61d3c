#include "host/cli/forms_command.h"

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/cli/command_options.h"
#include "host/cli/design_source.h"
#include "host/cli/output.h"
#include "host/cli/progress.h"
#include "host/document/design_document.h"
#include "vorn/types/hoso_type.h"
#include "vorn/types/structure_type.h"
#include "vorn/types/type_manager.h"

namespace vorn_cli {

namespace {

using vorn_host::DesignDocument;
using vorn_host::ToUtf8;

struct FormsOptions {
  DesignSource source;
};

/// The forms of one name and type in a document, and what is known of their kind.
struct FormKind {
  std::string name;
  std::string xSectType;
  int sections = 0;
  int points = 0;
  bool isPlan = false;
  bool isKnown = false;   ///< whether there is an attribute record
  VornFormAttr attr;      ///< "不明" (unknown) when there is none
  int paveCategory = -1;  ///< 1 to 7; -1 when it is no pavement
};

struct FormsSummary {
  std::string file;
  std::string edition;
  bool assumed = false;
  std::string workType;
  std::vector<FormKind> forms;  ///< by first appearance
};

/// What kind of work a form is: its cross-section type where the document tells it, otherwise its name.
const CString& KindOf(const VornBuildForm& form) {
  return form.GetXSectType().IsEmpty() ? form.GetName() : form.GetXSectType();
}

/// The record of the document's own work type, or of any that has a form of that name.
bool FindAttr(VornStructureType::Type workType, const CString& kind, VornFormAttr& attr) {
  const VornTypeManager types;
  return types.Find(attr, workType, kind, true, true) || types.Find(attr, kind);
}

FormKind Describe(const VornBuildForm& form, VornStructureType::Type workType) {
  FormKind kind;
  kind.name = ToUtf8(form.GetName());
  kind.xSectType = ToUtf8(form.GetXSectType());
  kind.isPlan = VornIsPlan(form.GetXSectType());
  kind.isKnown = FindAttr(workType, KindOf(form), kind.attr);
  kind.paveCategory = VornTsHosoType::XSectTypeToMsdoPaveIdx(KindOf(form));
  // A pavement layer is often told by its name alone.
  if (kind.paveCategory < 0) kind.paveCategory = VornTsHosoType::XSectTypeToMsdoPaveIdx(form.GetName());
  return kind;
}

FormsSummary Summarise(const FormsOptions& options) {
  Progress progress = ProgressOf(options.source);
  const DesignDocument document = ReadDesign(options.source, progress, 2).design;
  progress.Show("listing", 1, 2);

  FormsSummary summary;
  summary.file = options.source.file;
  summary.edition = vorn_host::EditionName(document.edition);
  summary.assumed = document.assumed;
  summary.workType = ToUtf8(document.structureType.GetTypeStr());
  const vorn_host::EditionScope scope(document.edition);
  std::map<std::pair<std::string, std::string>, std::size_t> places;
  for (const VornXSections& set : document.sets) {
    for (const VornXSection& section : set.GetXSectionArray()) {
      for (const VornBuildForm& form : section.GetBuildFormArray()) {
        const auto [place, isNew] =
            places.try_emplace({form.GetName().GetString(), form.GetXSectType().GetString()}, summary.forms.size());
        if (isNew) summary.forms.push_back(Describe(form, document.structureType.GetType()));
        FormKind& kind = summary.forms[place->second];
        ++kind.sections;
        kind.points += form.GetComposedPntArray().GetSize();
      }
    }
  }
  return summary;
}

std::string FlagsText(const VornFormAttr& attr) {
  std::string text;
  for (const std::uint8_t flag : attr.flags) text += (text.empty() ? "" : " ") + std::to_string(flag);
  return text;
}

void PrintText(const FormsSummary& summary) {
  TextReport report;
  report.Row("File", summary.file);
  report.Row("Edition", summary.edition + (summary.assumed ? " (assumed)" : ""));
  report.Row("Work type", summary.workType.empty() ? "not told" : summary.workType);
  report.Row("Kinds of form", std::to_string(summary.forms.size()));
  for (const FormKind& form : summary.forms) {
    report.Line(form.name + (form.xSectType.empty() ? "" : " (" + form.xSectType + ")") + ": " +
                Counted(form.sections, "form") + ", " + Counted(form.points, "point"));
    report.Row("plan surface", form.isPlan ? "yes" : "no", 4);
    report.Row("attributes", form.isKnown ? ToUtf8(form.attr.name) + "  " + FlagsText(form.attr) : "none on record", 4);
    report.Row("pavement", form.paveCategory < 0 ? "none" : "category " + std::to_string(form.paveCategory), 4);
  }
  Print(report);
}

void PrintJson(const FormsSummary& summary) {
  Json forms = Json::array();
  for (const FormKind& form : summary.forms) {
    Json attr = nullptr;
    if (form.isKnown) attr = Json{{"name", ToUtf8(form.attr.name)}, {"flags", form.attr.flags}};
    forms.push_back({{"name", form.name},
                     {"xSectType", form.xSectType},
                     {"forms", form.sections},
                     {"points", form.points},
                     {"planSurface", form.isPlan},
                     {"attributes", std::move(attr)},
                     {"pavementCategory", form.paveCategory < 0 ? Json(nullptr) : Json(form.paveCategory)}});
  }
  Print(Json{{"file", summary.file},
             {"edition", summary.edition},
             {"editionAssumed", summary.assumed},
             {"workType", summary.workType},
             {"forms", std::move(forms)}});
}

}  // namespace

void AddFormsCommand(CLI::App& app) {
  const auto options = std::make_shared<FormsOptions>();
  CLI::App* command = app.add_subcommand("forms", "List the build forms with their attributes and pavement category");
  AddFileArgument(*command, options->source);
  AddReadOptions(*command, options->source);
  command->callback([options] {
    const FormsSummary summary = Summarise(*options);
    options->source.json ? PrintJson(summary) : PrintText(summary);
  });
}

}  // namespace vorn_cli
