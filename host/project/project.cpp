#include "host/project/project.h"

#include <algorithm>
#include <functional>
#include <pugixml.hpp>
#include <sstream>
#include <utility>

#include "host/document/atomic_file.h"
#include "host/document/document_error.h"
#include "host/project/memory_view_file.h"
#include "host/project/project_file.h"
#include "vorn/platform/carchive.h"

namespace vorn_host {

namespace {

constexpr const char* kDocumentElement = "document";

// Everything comes back as it was: line ends, blanks and all kinds of nodes.
constexpr unsigned kParseOptions = pugi::parse_minimal | pugi::parse_escapes | pugi::parse_cdata |
                                   pugi::parse_comments | pugi::parse_pi | pugi::parse_ws_pcdata;

[[noreturn]] void RefuseNewer(const std::string& name, const std::string& what, std::string_view found,
                              std::string_view newest) {
  throw DocumentError(name + ": " + what + " written by a newer program, in store version " + std::string(found) +
                      "; this one reads up to " + std::string(newest));
}

bool IsStoreVersion(std::string_view text) {
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  return text.size() == 5 && text[2] == '.' && isDigit(text[0]) && isDigit(text[1]) && isDigit(text[3]) &&
         isDigit(text[4]);
}

/// Calls `visit` with every set of cross sections in the road data.
template <typename Visit>
void ForEachSet(VornLinearXMLData& data, Visit&& visit) {
  for (VornRoadGmData* roadGm : {&data.GetInfoConstrcut().GetRoadGm(), &data.GetRoadCenter().GetRoadGm()}) {
    for (VornAlignment& alignment : roadGm->GetAlignments()) visit(alignment.GetXSections());
  }
}

template <typename Visit>
void ForEachForm(VornLinearXMLData& data, Visit&& visit) {
  ForEachSet(data, [&](VornXSections& set) {
    for (VornXSection& section : set.GetXSectionArray()) {
      for (VornBuildForm& form : section.GetBuildFormArray()) visit(form);
    }
  });
}

/// The archive does not hold whether the existing ground is in use; a document's is when its first form has points.
void UseExistingGround(VornLinearXMLData& data) {
  ForEachSet(data, [](VornXSections& set) {
    for (VornXSection& section : set.GetXSectionArray()) {
      const VornExistingBuildFormArray& ground = section.GetExistingBuildFormArray();
      section.SetExistingFlag(!ground.IsEmpty() && !ground[0].GetComposedPntArray().IsEmpty() ? 1 : 0);
    }
  });
}

/// Gives the control targets of the forms the points that storing and loading give them: what is saved twice is the
/// same.
void GiveTargetsTheirPoints(VornLinearXMLData& data) {
  ForEachSet(data, [](VornXSections& set) {
    for (VornXSection& section : set.GetXSectionArray()) {
      section.GetBuildFormArray().ConvertFormCtrl(section.GetCumulativeDist());
    }
  });
}

bool IsAlike(const VornFormCtrlTargetPnt& a, const VornFormCtrlTargetPnt& b) {
  return a.GetCumulativeDist().Value() == b.GetCumulativeDist().Value() && a.GetXSectChg() == b.GetXSectChg() &&
         a.GetBuildFormName() == b.GetBuildFormName() && a.GetCode() == b.GetCode() &&
         a.GetSerialID() == b.GetSerialID() && a.GetBuildFormID() == b.GetBuildFormID() &&
         a.GetSectionID() == b.GetSectionID() && a.GetCrossPointType() == b.GetCrossPointType() &&
         a.GetXSectType() == b.GetXSectType() && a.GetSectNameID() == b.GetSectNameID();
}

/// Takes the points away that storing gave to a control target without any. In its form a document tells a target by
/// its codes, and points that say no more than these would become a second statement of the same. Points that an
/// application gave, with forms and identifiers, are others and stay.
void TakeMadePoints(VornFormCtrlTarget& target, const NurReal& station, VornBuildForm& form) {
  VornFormCtrlTargetPntArray& points = target.GetTargetPntArray();
  if (points.IsEmpty()) return;
  VornFormCtrlTarget bare = target;
  bare.GetTargetPntArray().RemoveAll();
  bare.RegulatePnt(station, &form);
  const VornFormCtrlTargetPntArray& made = bare.GetTargetPntArray();
  if (std::equal(points.begin(), points.end(), made.begin(), made.end(), IsAlike)) points.RemoveAll();
}

void TakeMadePoints(VornXSections& set) {
  for (VornXSection& section : set.GetXSectionArray()) {
    for (VornBuildForm& form : section.GetBuildFormArray()) {
      for (VornFormCtrlTarget& target : form.GetFormCtrlTargetArray()) {
        TakeMadePoints(target, section.GetCumulativeDist(), form);
      }
    }
  }
}

/// Whether an alignment has a design, where no document tells it.
bool HasDesign(const VornAlignment& alignment) {
  const VornXSections& set = alignment.GetXSections();
  return !set.GetXSectionArray().IsEmpty() || !set.GetFormCtrlTargetArray().IsEmpty() || !set.GetRefAlign().IsEmpty() ||
         !set.GetRefVertical().IsEmpty() || !set.GetProjectPhase().IsEmpty();
}

/// The record of road data in the newest store version.
std::vector<std::uint8_t> RecordOf(VornLinearXMLData& data) {
  const CString tag(Project::kNewestStoreVersion);
  data.GetInfoConstrcut().SetStoreVersion(tag);
  data.GetRoadCenter().SetStoreVersion(tag);
  CMemFile file;
  CArchive ar(&file, CArchive::store);
  data.Serialize(ar, tag);
  ar.Close();
  return file.Detach();
}

// --- older store versions --------------------------------------------------------------------------------------------

/// Whether the second role of a point says something that the first does not: before "06.00" it becomes a copy of it.
bool IsSubOfItsOwn(const VornComposedPnt& point) {
  using PntType = VornComposedPnt::PntType;
  const auto differs = [](const auto& sub, const auto& main, const auto& unset) { return sub != unset && sub != main; };
  return differs(point.GetXSectType(PntType::Sub), point.GetXSectType(), 0u) ||
         differs(point.GetXSectNameID(PntType::Sub), point.GetXSectNameID(), 0u) ||
         differs(point.GetDekiPairID(PntType::Sub), point.GetDekiPairID(), 0xFFFFFFFFu) ||
         differs(point.GetXSectName(PntType::Sub), point.GetXSectName(), CString()) ||
         differs(point.GetCode(PntType::Sub), point.GetCode(), CString()) || !point.Measure(PntType::Sub).IsEmpty();
}

/// Before "06.00" a point has one detail record and no element type, and target points name no work type.
void GiveUpWhat0600Brought(VornLinearXMLData& data, Project::Loss& details, Project::Loss& elements,
                           Project::Loss& targets) {
  const auto countTargets = [&](const Vorn_FormCtrlTargetArray& array) {
    for (const VornFormCtrlTarget& target : array) {
      for (const VornFormCtrlTargetPnt& point : target.GetTargetPntArray()) {
        if (point.GetXSectType() != 0 || point.GetSectNameID() != 0) ++targets.count;
      }
    }
  };
  ForEachSet(data, [&](VornXSections& set) { countTargets(set.GetFormCtrlTargetArray()); });
  ForEachForm(data, [&](VornBuildForm& form) {
    countTargets(form.GetFormCtrlTargetArray());
    for (VornComposedPnt& point : form.GetComposedPntArray()) {
      if (IsSubOfItsOwn(point)) ++details.count;
      if (point.ElmType() != VornComposedPnt::ElementType::Unset) ++elements.count;
      // The older record holds the code that was set last.
      point.SetCode(CString(point.GetCode()));
    }
  });
}

std::vector<Project::Loss> GiveUpFor(VornLinearXMLData& data, std::string_view storeVersion) {
  std::vector<Project::Loss> losses;
  if (storeVersion < "06.00") {
    Project::Loss details{"second role of a point (its code, work type and measurements)"};
    Project::Loss elements{"element type of a point"};
    Project::Loss targets{"work type of a control target's point"};
    GiveUpWhat0600Brought(data, details, elements, targets);
    losses = {details, elements, targets};
  }
  if (storeVersion < "05.50") {
    Project::Loss surfaces{"mark of an original surface"};
    ForEachForm(data, [&](VornBuildForm& form) { surfaces.count += form.IsOrgSurface() ? 1 : 0; });
    losses.push_back(surfaces);
  }
  std::erase_if(losses, [](const Project::Loss& loss) { return loss.count == 0; });
  return losses;
}

/// Removes an alignment; the current one stays the current one, or when it is the one that goes, gives way to the next.
void RemoveAlignment(VornAlignmentsArray& alignments, int index) {
  alignments.RemoveAt(index);
  const int current = alignments.GetCurrent() - (index < alignments.GetCurrent() ? 1 : 0);
  alignments.SetCurrent(std::min(current, alignments.GetUpperBound()));
}

Edition EditionOf(VornSchema::Version version) {
  switch (version) {
    case VornSchema::Version20:
      return Edition::V20;
    case VornSchema::Version40:
      return Edition::V40;
    default:
      return Edition::V41;
  }
}

VornSchema::Version VersionOf(Edition edition) {
  const EditionScope scope(edition);
  return VornSchema::Instance().GetVersion();
}

}  // namespace

Project::Project() {
  const CString newest(kNewestStoreVersion);
  data.GetInfoConstrcut().SetStoreVersion(newest);
  data.GetRoadCenter().SetStoreVersion(newest);
}

Project Project::Read(const std::filesystem::path& path) { return FromBytes(ReadFile(path), path.string()); }

Project Project::FromBytes(std::string_view content, const std::string& name) {
  const ProjectFile file = ProjectFile::Parse(content, name);
  if (!IsStoreVersion(file.storeVersion)) {
    throw DocumentError(name + ": \"" + file.storeVersion + "\" is no store version");
  }
  if (file.storeVersion > kNewestStoreVersion) {
    RefuseNewer(name, "the project was", file.storeVersion, kNewestStoreVersion);
  }
  Project project;
  project.m_storeVersion = file.storeVersion;
  project.LoadDocumentPart(file.document, name);
  {
    const EditionScope scope(project.m_edition);
    project.LoadRecord(file.record, name);
  }
  project.FindDesign(name);
  return project;
}

void Project::LoadRecord(std::string_view record, const std::string& name) {
  MemoryViewFile file(record);
  CArchive ar(&file, CArchive::load);
  const CString tag(std::string_view{m_storeVersion});
  try {
    data.Serialize(ar, tag);
  } catch (bool) {
    const std::pair<const CString&, const char*> sets[] = {
        {data.GetInfoConstrcut().GetStoreVersion(), "the construction information was"},
        {data.GetRoadCenter().GetStoreVersion(), "the road-centre data were"}};
    for (const auto& [version, what] : sets) {
      if (version.View() > kNewestStoreVersion) RefuseNewer(name, what, version.View(), kNewestStoreVersion);
    }
    RefuseNewer(name, "the LandXML settings were", data.GetLandXml().GetStoreVersion().View(),
                VornLandXMLData().GetStoreVersion().View());
  } catch (const CException& error) {
    const std::uint64_t at = record.size() - ar.Remaining();
    throw DocumentError(name + ": the road data cannot be read in store version " + m_storeVersion + ": at byte " +
                        std::to_string(at) + " of " + std::to_string(record.size()) + ": " + error.what());
  }
  if (ar.Remaining() > 0) {
    throw DocumentError(name + ": the road data are longer than store version " + m_storeVersion + " has them, by " +
                        std::to_string(ar.Remaining()) + " bytes");
  }
  UseExistingGround(data);
}

std::vector<Project::Loss> Project::Save(const std::filesystem::path& path, std::string_view storeVersion) {
  std::vector<Loss> losses;
  const std::vector<std::uint8_t> content = ToBytes(path.string(), storeVersion, losses);
  WriteFileAtomically(path, {reinterpret_cast<const char*>(content.data()), content.size()}, FormerFile::Keep);
  return losses;
}

std::vector<std::uint8_t> Project::ToBytes(const std::string& name, std::string_view storeVersion,
                                           std::vector<Loss>& losses) {
  if (m_isOut) throw DocumentError(name + ": the project cannot be saved while its design is handed out");
  const auto* const known = std::find(kWritableStoreVersions.begin(), kWritableStoreVersions.end(), storeVersion);
  if (known == kWritableStoreVersions.end()) {
    throw DocumentError(name + ": store version " + std::string(storeVersion) +
                        " cannot be written: cross sections have records for writing from " +
                        std::string(kWritableStoreVersions.front()) + " on");
  }
  losses = GiveUpFor(data, storeVersion);
  const CString tag(storeVersion);
  data.GetInfoConstrcut().SetStoreVersion(tag);
  data.GetRoadCenter().SetStoreVersion(tag);
  RoadGm().SetSchemaVersion(VersionOf(m_edition));

  const EditionScope scope(m_edition);
  GiveTargetsTheirPoints(data);
  ProjectFileBuilder builder{std::string(storeVersion)};
  CArchive ar(&builder.Record(), CArchive::store);
  data.Serialize(ar, tag);
  ar.Close();
  return builder.Finish(DocumentPart());
}

// --- design ----------------------------------------------------------------------------------------------------------

VornRoadGmData& Project::RoadGm() {
  return m_designInRoadCenter ? data.GetRoadCenter().GetRoadGm() : data.GetInfoConstrcut().GetRoadGm();
}

const VornRoadGmData& Project::GetRoadGm() const {
  return m_designInRoadCenter ? data.GetRoadCenter().GetRoadGm() : data.GetInfoConstrcut().GetRoadGm();
}

std::vector<int> Project::DesignAlignments() const {
  if (m_isOut) return m_given;
  std::vector<int> found;
  const VornAlignmentsArray& alignments = GetRoadGm().GetAlignments();
  for (int i = 0; i < alignments.GetSize(); ++i) {
    const bool isEmptySet = std::find(m_emptySets.begin(), m_emptySets.end(), i) != m_emptySets.end();
    if (isEmptySet || HasDesign(alignments[i])) found.push_back(i);
  }
  return found;
}

void Project::FindDesign(const std::string& name) {
  if (m_isOfDocument) {
    const VornAlignmentsArray& alignments = GetRoadGm().GetAlignments();
    const bool inOrder = std::is_sorted(m_emptySets.begin(), m_emptySets.end(), std::less_equal<>());
    if (!inOrder || (!m_emptySets.empty() && (m_emptySets.front() < 0 || !alignments.IsRange(m_emptySets.back())))) {
      throw DocumentError(name + ": the document part of the project is damaged: a set has no alignment of its own");
    }
    return;
  }
  m_designInRoadCenter = false;
  if (DesignAlignments().empty()) {
    m_designInRoadCenter = true;
    m_designInRoadCenter = !DesignAlignments().empty();
  }
  m_edition = EditionOf(GetRoadGm().GetSchemaVersion());
  m_hasStructureType = !GetRoadGm().GetStructureType().GetTypeStr().IsEmpty();
}

DesignDocument Project::GiveDesign() {
  const EditionScope scope(m_edition);
  VornRoadGmData& roadGm = RoadGm();
  m_given = DesignAlignments();
  m_isOut = true;

  DesignDocument design;
  design.edition = m_edition;
  design.encodingName = m_encodingName;
  design.fileInfos = roadGm.GetFileInfos();
  design.structureType = roadGm.GetStructureType();
  design.hasStructureType = m_hasStructureType;
  design.carried = std::exchange(m_carried, CarriedContent());
  for (const int index : m_given) {
    VornAlignment& alignment = roadGm.GetAlignments()[index];
    VornXSections& set = design.sets[design.sets.Add(std::exchange(alignment.GetXSections(), VornXSections()))];
    if (!m_isOfDocument && set.GetRefAlign().IsEmpty()) set.SetRefAlign(alignment.GetName());
    TakeMadePoints(set);
  }
  return design;
}

void Project::TakeDesign(DesignDocument design) {
  VornRoadGmData& roadGm = RoadGm();
  VornAlignmentsArray& alignments = roadGm.GetAlignments();
  std::vector<int> places = DesignAlignments();
  std::erase_if(places, [&](int index) { return !alignments.IsRange(index); });
  m_edition = design.edition;
  m_encodingName = std::move(design.encodingName);
  m_hasStructureType = design.hasStructureType;
  m_carried = std::move(design.carried);
  roadGm.SetSchemaVersion(VersionOf(m_edition));
  roadGm.SetFileInfos(design.fileInfos);
  roadGm.SetStructureType(design.structureType);

  const auto sets = static_cast<std::size_t>(design.sets.GetSize());
  while (places.size() < sets) places.push_back(alignments.Add(VornAlignment()));
  for (std::size_t i = 0; i < sets; ++i) {
    VornXSections& set = design.sets[static_cast<int>(i)];
    VornAlignment& alignment = alignments[places[i]];
    if (alignment.GetName().IsEmpty()) alignment.SetName(set.GetRefAlign());
    alignment.GetXSections() = std::move(set);
  }
  for (; places.size() > sets; places.pop_back()) RemoveAlignment(alignments, places.back());
  std::erase_if(places, [&](int index) { return HasDesign(alignments[index]); });
  m_emptySets = std::move(places);
  if (alignments.GetCurrent() < 0 && !alignments.IsEmpty()) alignments.SetCurrent(0);
  m_isOfDocument = true;
  m_isOut = false;
}

bool Project::HoldsRoadData() const {
  Project rest;
  rest.data = data;
  rest.m_designInRoadCenter = m_designInRoadCenter;
  VornRoadGmData& roadGm = rest.RoadGm();
  const VornRoadGmData none;
  roadGm.SetFileInfos(none.GetFileInfos());
  roadGm.SetStructureType(none.GetStructureType());
  roadGm.SetSchemaVersion(none.GetSchemaVersion());
  // An alignment that says no more than the name that its set refers to goes with the design.
  VornAlignmentsArray& alignments = roadGm.GetAlignments();
  alignments.RemoveIf([](const VornAlignment& alignment) {
    VornLinearXMLData one;
    one.GetInfoConstrcut().GetRoadGm().GetAlignments().Add(alignment);
    VornLinearXMLData named;
    named.GetInfoConstrcut().GetRoadGm().GetAlignments().SetSize(1);
    named.GetInfoConstrcut().GetRoadGm().GetAlignments()[0].SetName(alignment.GetName());
    return RecordOf(one) == RecordOf(named);
  });
  alignments.SetCurrent(none.GetAlignments().GetCurrent());
  VornLinearXMLData empty;
  return RecordOf(rest.data) != RecordOf(empty);
}

// --- what the records do not hold ------------------------------------------------------------------------------------

std::string Project::DocumentPart() const {
  if (!m_isOfDocument) return {};
  pugi::xml_document tree;
  pugi::xml_node element = tree.append_child(kDocumentElement);
  element.append_attribute("edition") = std::string(EditionName(m_edition)).c_str();
  element.append_attribute("encoding") = m_encodingName.c_str();
  element.append_attribute("structureType") = m_hasStructureType;
  if (m_designInRoadCenter) element.append_attribute("roadCenter") = true;
  for (const int index : m_emptySets) element.append_child("set").append_attribute("alignment") = index;
  m_carried.Store(element);
  std::ostringstream text;
  tree.save(text, "", pugi::format_raw | pugi::format_no_declaration, pugi::encoding_utf8);
  return std::move(text).str();
}

void Project::LoadDocumentPart(std::string_view text, const std::string& name) {
  if (text.empty()) return;
  m_isOfDocument = true;
  pugi::xml_document tree;
  const pugi::xml_parse_result result = tree.load_buffer(text.data(), text.size(), kParseOptions, pugi::encoding_utf8);
  const pugi::xml_node element = tree.child(kDocumentElement);
  if (!result || !element) {
    throw DocumentError(name + ": the document part of the project is damaged: " +
                        (result ? "there is no document" : result.description()));
  }
  const std::string_view edition = element.attribute("edition").value();
  if (edition == EditionName(Edition::RoadGm)) {
    m_edition = Edition::RoadGm;
  } else if (const auto known = ParseEdition(edition)) {
    m_edition = *known;
  } else {
    throw DocumentError(name + ": the project's document is of edition \"" + std::string(edition) +
                        "\", which this program does not know");
  }
  m_encodingName = element.attribute("encoding").value();
  m_hasStructureType = element.attribute("structureType").as_bool();
  m_designInRoadCenter = element.attribute("roadCenter").as_bool();
  for (const pugi::xml_node set : element.children("set")) m_emptySets.push_back(set.attribute("alignment").as_int(-1));
  m_carried = CarriedContent::Load(element, name);
}

}  // namespace vorn_host
