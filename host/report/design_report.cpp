#include "host/report/design_report.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string_view>
#include <utility>
#include <vector>

#include "host/document/document_check.h"
#include "host/drawing/drawing_style.h"
#include "host/drawing/section_drawing.h"
#include "host/drawing/section_view.h"
#include "host/report/page_parts.h"
#include "host/report/page_text.h"
#include "host/report/section_report.h"

namespace vorn_host {

namespace {

using Json = nlohmann::ordered_json;

/// Cross sections that are packed together: few enough to unpack while a key is held down, enough to pack well.
constexpr std::size_t kSectionsInPack = 16;

/// Texts are UTF-8 already; whatever is not is shown replaced.
std::string Dumped(const Json& json) { return json.dump(-1, ' ', false, Json::error_handler_t::replace); }

Json LanguageCode(const std::optional<Language>& language) {
  if (!language) return nullptr;
  return *language == Language::Japanese ? "ja" : "en";
}

Json Kinds() {
  Json kinds = Json::array();
  for (const DrawingStyle& style : DrawingStyles()) {
    kinds.push_back({{"kind", static_cast<int>(style.kind)},
                     {"name", style.name},
                     {"line", style.lineColor},
                     {"width", style.lineMm},
                     {"dashes", style.dashesMm},
                     {"text", style.textColor}});
  }
  return kinds;
}

Json Marks() {
  Json marks = Json::array();
  for (const MarkStyle& style : MarkStyles()) {
    marks.push_back({{"name", style.name},
                     {"width", style.lineMm},
                     {"filled", style.isFilled},
                     {"radius", style.radiusMm},
                     {"length", style.lengthMm},
                     {"halfBase", style.halfBaseMm}});
  }
  return marks;
}

/// A text to be filled into the page, where its name stands in double braces.
struct Slot {
  std::string_view name;
  std::string text;
};

/// The page with its slots filled. They stand in the page in their order, so that nothing in a text is taken for one.
std::string Filled(std::string_view page, const std::vector<Slot>& slots) {
  std::string filled;
  for (const Slot& slot : slots) {
    const std::string mark = "{{" + std::string(slot.name) + "}}";
    const std::size_t at = page.find(mark);
    if (at == std::string_view::npos) throw std::logic_error("the page has no place for its " + std::string(slot.name));
    filled += page.substr(0, at);
    filled += slot.text;
    page.remove_prefix(at + mark.size());
  }
  return filled.append(page);
}

/// Set and section of what is found in the document as a whole.
constexpr std::pair<int, int> kWholeDocument{-1, -1};

/// Gathers what the page holds, one cross section after the other.
class ReportMaker {
 public:
  ReportMaker(const DesignDocument& document, const ReportOptions& options)
      : m_document(document), m_options(options), m_viewer(document) {
    for (Finding& finding : CheckDocument(document)) {
      ++(finding.severity == Severity::Error ? m_report.errors : m_report.notes);
      const bool isOfSection = finding.place.section >= 0;
      m_bySection[isOfSection ? std::pair(finding.place.set, finding.place.section) : kWholeDocument].push_back(
          std::move(finding));
    }
    for (const VornXSections& set : document.sets) m_report.sections += set.GetXSectionArray().GetSize();
  }

  DesignReport Make(const std::function<void(int done, int total)>& progress) {
    int done = 0;
    for (int set = 0; set < m_document.sets.GetSize(); ++set) {
      m_setNames.push_back(ToUtf8(m_document.sets[set].GetRefAlign()));
      for (int section = 0; section < m_document.sets[set].GetXSectionArray().GetSize(); ++section) {
        if (progress) progress(done++, m_report.sections);
        AddSection(set, section);
      }
      AddTargetsWithoutSection(set);
    }
    FinishPack();
    m_report.html = Page();
    return std::move(m_report);
  }

 private:
  void AddSection(int set, int section) {
    SectionReport report;
    report.view = m_viewer.Of(set, section, m_options.centerHeight);
    DrawingOptions drawing;
    drawing.exaggeration = m_options.exaggeration;
    std::vector<SectionDrawing> drawings =
        DrawInEach(std::array{Language::English, Language::Japanese}, report.view, drawing);
    report.drawing = std::move(drawings.front());
    report.japanese = std::move(drawings.back());
    if (const auto found = m_bySection.find({set, section}); found != m_bySection.end())
      report.findings = found->second;
    AddToIndex(report);
    m_pack.push_back(ToJson(report));
    if (m_pack.size() == kSectionsInPack) FinishPack();
  }

  /// What the list shows of a section, and what it is searched by.
  void AddToIndex(const SectionReport& report) {
    const SectionView& view = report.view;
    const auto errors = std::count_if(report.findings.begin(), report.findings.end(),
                                      [](const Finding& finding) { return finding.severity == Severity::Error; });
    m_sections.push_back({view.set, view.stationText, view.name, view.station ? Json(*view.station) : Json(nullptr),
                          errors, report.findings.size() - static_cast<std::size_t>(errors), IndexOfCodes(view),
                          view.isBehindChange ? 1 : 0});
  }

  /// Sections of a design mostly have the same codes: each list of them is kept once.
  int IndexOfCodes(const SectionView& view) {
    std::vector<std::string> codes;
    for (const ViewForm& form : view.forms) {
      for (const ViewPoint& point : form.points) {
        if (!point.code.empty()) codes.push_back(point.code);
      }
    }
    std::sort(codes.begin(), codes.end());
    codes.erase(std::unique(codes.begin(), codes.end()), codes.end());
    const auto [known, isNew] = m_indexOfCodes.try_emplace(std::move(codes), static_cast<int>(m_codes.size()));
    if (isNew) m_codes.push_back(known->first);
    return known->second;
  }

  /// Control targets that no section shows are listed with what is found in the document as a whole.
  void AddTargetsWithoutSection(int set) {
    const SectionView rest = m_viewer.WithoutSection(set);
    for (const ViewTarget& target : rest.targets) {
      m_targetsWithoutSection.push_back(ToJson(target));
      m_targetsWithoutSection.back()["set"] = set;
    }
    m_report.targetsWithoutSection += static_cast<int>(rest.targets.size());
  }

  void FinishPack() {
    if (m_pack.empty()) return;
    AddPack(m_pack);
    m_pack = Json::array();
  }

  void AddPack(const Json& json) {
    m_packs +=
        "<script type=\"application/octet-stream\" class=\"pack\">" + Base64(Deflated(Dumped(json))) + "</script>\n";
  }

  std::string Page() {
    const std::vector<Finding>& ofDocument = m_bySection[kWholeDocument];
    Json findings = Json::array();
    for (const Finding& finding : ofDocument) findings.push_back(ToJson(finding));
    AddPack({{"findings", findings}, {"targets", std::move(m_targetsWithoutSection)}});  // behind those of the sections

    const auto hash = [](std::string_view hex) { return "'sha256-" + Base64(BytesOfHex(hex)) + "'"; };
    return Filled(kReportPage.html, {{"style-hash", hash(kReportPage.styleSha256)},
                                     {"script-hash", hash(kReportPage.scriptSha256)},
                                     {"style", std::string(kReportPage.style)},
                                     {"index", ScriptJson(Dumped(Index(ofDocument.size())))},
                                     {"packs", m_packs},
                                     {"script", std::string(kReportPage.script)}});
  }

  /// What the page reads when it opens.
  Json Index(std::size_t documentFindings) {
    return {{"file", m_options.file},
            {"edition", EditionName(m_document.edition)},
            {"assumed", m_document.assumed},
            {"workType", ToUtf8(m_document.structureType.GetTypeStr())},
            {"language", LanguageCode(m_options.language)},
            {"errors", m_report.errors},
            {"notes", m_report.notes},
            {"documentFindings", documentFindings},
            {"targetsWithoutSection", m_report.targetsWithoutSection},
            {"kinds", Kinds()},
            {"marks", Marks()},
            {"sets", m_setNames},
            {"codes", m_codes},
            {"sectionsInPack", kSectionsInPack},
            {"sections", std::move(m_sections)}};
  }

  const DesignDocument& m_document;
  const ReportOptions& m_options;
  SectionViewer m_viewer;
  std::map<std::pair<int, int>, std::vector<Finding>> m_bySection;
  DesignReport m_report;
  Json m_setNames = Json::array();
  Json m_sections = Json::array();
  Json m_codes = Json::array();
  std::map<std::vector<std::string>, int> m_indexOfCodes;
  Json m_targetsWithoutSection = Json::array();
  Json m_pack = Json::array();
  std::string m_packs;
};

}  // namespace

DesignReport MakeReport(const DesignDocument& document, const ReportOptions& options,
                        const std::function<void(int done, int total)>& progress) {
  return ReportMaker(document, options).Make(progress);
}

}  // namespace vorn_host
