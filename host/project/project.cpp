#include "host/project/project.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <utility>

#include "host/document/atomic_file.h"
#include "host/document/document_error.h"
#include "host/document/path_text.h"
#include "host/project/memory_view_file.h"
#include "host/project/project_file.h"
#include "vorn/platform/carchive.h"

namespace vorn_host {

namespace {

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

/// Calls `visit` with every build form of a set, and its cross section.
template <typename Visit>
void ForEachForm(VornXSections& set, Visit&& visit) {
  for (VornXSection& section : set.GetXSectionArray()) {
    for (VornBuildForm& form : section.GetBuildFormArray()) visit(form, section);
  }
}

template <typename Visit>
void ForEachForm(VornLinearXMLData& data, Visit&& visit) {
  ForEachSet(data, [&](VornXSections& set) {
    ForEachForm(set, [&](VornBuildForm& form, const VornXSection&) { visit(form); });
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
  ForEachForm(set, [](VornBuildForm& form, const VornXSection& section) {
    for (VornFormCtrlTarget& target : form.GetFormCtrlTargetArray()) {
      TakeMadePoints(target, section.GetCumulativeDist(), form);
    }
  });
}

/// Whether an alignment has a design, where no document tells it.
bool HasDesign(const VornAlignment& alignment) {
  const VornXSections& set = alignment.GetXSections();
  return !set.GetXSectionArray().IsEmpty() || !set.GetFormCtrlTargetArray().IsEmpty() || !set.GetRefAlign().IsEmpty() ||
         !set.GetRefVertical().IsEmpty() || !set.GetProjectPhase().IsEmpty();
}

bool HasDesign(const VornRoadGmData& roadGm) {
  const VornAlignmentsArray& alignments = roadGm.GetAlignments();
  return std::any_of(alignments.begin(), alignments.end(), [](const VornAlignment& one) { return HasDesign(one); });
}

/// Whether a structure type says anything that a new one does not: a document has it for any of its texts.
bool HasText(const VornStructureType& type) {
  static const VornStructureType kNew;
  return !type.GetTypeStr().IsEmpty() || !type.GetJobName().IsEmpty() || !type.GetCompany().IsEmpty() ||
         !(type.GetStationType().IsEmpty() || type.GetStationType() == kNew.GetStationType());
}

/// The road geometry that a design stands in.
template <typename Data>
auto& RoadGmOf(Data& data, bool inRoadCenter) {
  return inRoadCenter ? data.GetRoadCenter().GetRoadGm() : data.GetInfoConstrcut().GetRoadGm();
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
         differs(point.GetDekiPairID(PntType::Sub), point.GetDekiPairID(), kVornNoID) ||
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

/// A whole project file: the road data in a store version, and the document part.
std::vector<std::uint8_t> FileOf(VornLinearXMLData& data, std::string_view storeVersion, std::string_view document) {
  const CString tag(storeVersion);
  data.GetInfoConstrcut().SetStoreVersion(tag);
  data.GetRoadCenter().SetStoreVersion(tag);
  GiveTargetsTheirPoints(data);
  ProjectFileBuilder builder{std::string(storeVersion)};
  CArchive ar(&builder.Record(), CArchive::store);
  data.Serialize(ar, tag);
  ar.Close();
  return builder.Finish(document);
}

// --- edition ---------------------------------------------------------------------------------------------------------

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

// --- sets -----------------------------------------------------------------------------------------------------------

/// Whether every set is where it was.
bool IsInOrder(const std::vector<int>& formers, int formerCount) {
  for (std::size_t i = 0; i < formers.size(); ++i) {
    if (formers[i] != static_cast<int>(i)) return false;
  }
  return formers.size() == static_cast<std::size_t>(formerCount);
}

}  // namespace

Project::Project() {
  const CString newest(kNewestStoreVersion);
  data.GetInfoConstrcut().SetStoreVersion(newest);
  data.GetRoadCenter().SetStoreVersion(newest);
}

Project Project::Read(const std::filesystem::path& path, const ReadOptions& options) {
  return FromBytes(ReadFile(path, options.mostBytes), Utf8Text(path), options);
}

Project Project::FromBytes(std::string_view content, const std::string& name, const ReadOptions& options) {
  if (content.size() > options.mostBytes) throw DocumentError(TooLarge(name, options.mostBytes));
  const ProjectFile file = ProjectFile::Parse(content, name);
  if (!IsStoreVersion(file.storeVersion)) {
    throw DocumentError(name + ": \"" + file.storeVersion + "\" is no store version");
  }
  if (file.storeVersion > kNewestStoreVersion) {
    RefuseNewer(name, "the project was", file.storeVersion, kNewestStoreVersion);
  }
  Project project;
  project.m_storeVersion = file.storeVersion;
  project.m_isOfDocument = !file.document.empty();
  if (project.m_isOfDocument) project.m_document = DocumentPart::Parse(file.document, name, options.mostCarriedItems);
  {
    const EditionScope scope(project.m_document.edition);
    project.LoadRecord(file.record, name);
  }
  if (project.m_isOfDocument) project.FindSets(name);
  project.m_isStructureTypeBlank = !HasText(project.GetRoadGm().GetStructureType());
  project.Settle();
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
  const std::vector<std::uint8_t> content = ToBytes(Utf8Text(path), storeVersion, losses);
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
  Settle();
  std::string document;
  if (m_isOfDocument) {
    document = m_document.ToText();
    // What could not be read again is not written. How much of it there may be is for the host to say that reads it.
    (void)DocumentPart::Parse(document, name, std::numeric_limits<std::size_t>::max());
  }
  const EditionScope scope(m_document.edition);
  losses.clear();
  if (storeVersion == kNewestStoreVersion) return FileOf(data, storeVersion, document);
  VornLinearXMLData older = data;  // the project keeps what the older version cannot hold
  losses = GiveUpFor(older, storeVersion);
  return FileOf(older, storeVersion, document);
}

// --- design ----------------------------------------------------------------------------------------------------------

const VornRoadGmData& Project::GetRoadGm() const { return RoadGmOf(data, m_document.inRoadCenter); }

VornRoadGmData& Project::RoadGm() { return RoadGmOf(data, m_document.inRoadCenter); }

void Project::FindSets(const std::string& name) {
  VornAlignmentsArray& alignments = RoadGm().GetAlignments();
  const std::vector<int>& empty = m_document.emptySets;
  if (!empty.empty() && !alignments.IsRange(empty.back())) {
    throw DocumentError(name + ": the document part of the project is damaged: a set has no alignment of its own");
  }
  std::vector<int> places;
  auto nextEmpty = empty.begin();
  for (int i = 0; i < alignments.GetSize(); ++i) {
    const bool isListed = nextEmpty != empty.end() && *nextEmpty == i;
    if (isListed) ++nextEmpty;
    if (isListed || HasDesign(std::as_const(alignments)[i])) places.push_back(i);
  }
  m_sets.Remember(alignments, places);
}

void Project::Settle() {
  if (m_isOut) return;
  if (!m_isOfDocument) {
    m_sets = SetPlaces();
    m_document.inRoadCenter =
        !HasDesign(RoadGmOf(std::as_const(data), false)) && HasDesign(RoadGmOf(std::as_const(data), true));
    m_document.edition = EditionOf(GetRoadGm().GetSchemaVersion());
  }
  const bool saysSomething = HasText(GetRoadGm().GetStructureType());
  if (!m_isOfDocument) m_document.hasStructureType = saysSomething;
  // Of a document without one that brought texts all the same, nobody asked for it.
  if (saysSomething && m_isStructureTypeBlank) m_document.hasStructureType = true;
  SettleSets();
}

void Project::SettleSets() {
  VornAlignmentsArray& alignments = RoadGm().GetAlignments();
  std::vector<int> setAt(static_cast<std::size_t>(alignments.GetSize()), -1);
  const std::vector<int> found = m_sets.Find(alignments);
  for (std::size_t i = 0; i < found.size(); ++i) {
    if (found[i] >= 0) setAt[static_cast<std::size_t>(found[i])] = static_cast<int>(i);
  }
  std::vector<int> places;
  std::vector<int> formers;
  m_document.emptySets.clear();
  for (int i = 0; i < alignments.GetSize(); ++i) {
    const int former = setAt[static_cast<std::size_t>(i)];
    const bool hasDesign = HasDesign(std::as_const(alignments)[i]);
    if (former < 0 && !hasDesign) continue;
    if (!hasDesign) m_document.emptySets.push_back(i);
    places.push_back(i);
    formers.push_back(former);
  }
  if (m_isOfDocument && !IsInOrder(formers, m_sets.GetSize())) {
    m_document.carried.RearrangeSets(formers, m_sets.GetSize());
  }
  m_sets.Remember(alignments, places);
}

void Project::ReferToAlignments() {
  VornAlignmentsArray& alignments = RoadGm().GetAlignments();
  const std::vector<int> places = m_sets.Find(alignments);
  for (const int place : places) {
    VornAlignment& alignment = alignments[place];
    VornXSections& set = alignment.GetXSections();
    if (set.GetRefAlign().IsEmpty()) set.SetRefAlign(alignment.GetName());
  }
  m_sets.Remember(alignments, places);
}

DesignDocument Project::GiveDesign() {
  Settle();
  if (!m_isOfDocument && !m_isOut) ReferToAlignments();
  const EditionScope scope(m_document.edition);
  VornRoadGmData& roadGm = RoadGm();

  DesignDocument design;
  design.edition = m_document.edition;
  design.encodingName = m_document.encodingName;
  design.fileInfos = roadGm.GetFileInfos();
  design.structureType = roadGm.GetStructureType();
  design.hasStructureType = m_document.hasStructureType;
  design.carried = std::exchange(m_document.carried, CarriedContent());
  for (const int index : m_sets.Find(roadGm.GetAlignments())) {
    if (index < 0) continue;
    design.sets.Add(std::exchange(roadGm.GetAlignments()[index].GetXSections(), VornXSections()));
    TakeMadePoints(design.sets[design.sets.GetUpperBound()]);
  }
  m_sets.HandOut();
  m_isOut = true;
  return design;
}

void Project::TakeDesign(DesignDocument design) {
  Settle();
  VornRoadGmData& roadGm = RoadGm();
  VornAlignmentsArray& alignments = roadGm.GetAlignments();
  m_document.edition = design.edition;
  m_document.encodingName = std::move(design.encodingName);
  m_document.hasStructureType = design.hasStructureType;
  m_document.carried = std::move(design.carried);
  roadGm.SetSchemaVersion(VersionOf(design.edition));
  roadGm.SetFileInfos(design.fileInfos);
  roadGm.SetStructureType(design.structureType);
  m_isStructureTypeBlank = !HasText(design.structureType);

  const std::vector<int> found = m_sets.Find(alignments);
  const std::vector<int> matches = m_sets.Match(design.sets, alignments, found);
  std::vector<int> chosen;
  chosen.reserve(matches.size());
  for (const int former : matches) chosen.push_back(former < 0 ? -1 : found[static_cast<std::size_t>(former)]);
  const std::vector<int> places = ArrangeAlignments(alignments, found, chosen);
  for (int i = 0; i < design.sets.GetSize(); ++i) {
    const auto at = static_cast<std::size_t>(i);
    VornXSections& set = design.sets[i];
    VornAlignment& alignment = alignments[places[at]];
    const bool bearsReference = matches[at] >= 0 && alignment.GetName() == m_sets.ReferenceOf(matches[at]);
    if (alignment.GetName().IsEmpty() || (bearsReference && !set.GetRefAlign().IsEmpty())) {
      alignment.SetName(set.GetRefAlign());
    }
    alignment.GetXSections() = std::move(set);
  }
  m_sets.Remember(alignments, places);
  if (alignments.GetCurrent() < 0 && !alignments.IsEmpty()) alignments.SetCurrent(0);
  m_isOfDocument = true;
  m_isOut = false;
}

bool Project::HoldsRoadData() const {
  Project rest;
  rest.data = data;
  rest.m_document.inRoadCenter = m_document.inRoadCenter;
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

}  // namespace vorn_host
