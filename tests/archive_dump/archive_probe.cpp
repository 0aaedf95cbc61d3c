// How the library itself reads and writes a record of the project archive, for the test of tools/archive_dump.py.
//
//   archive_probe load RECORD VERSION       prints the record on standard input as JSON
//   archive_probe store RECORD FROM TO      reads the record at one store version and writes it at another
//
// Records that carry their store version are read in whichever they have, and written in TO where the library lets a
// host choose.
//
// Exit codes: 0 done, 1 the archive was refused or bytes are left, 2 misuse.

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <iostream>
#include <iterator>
#include <map>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "vorn/vorn.h"

namespace {

using Bytes = std::vector<std::uint8_t>;
using Json = nlohmann::ordered_json;

// --- the model as JSON: members by the names of their accessors, unset reals as null ---------------------------------

Json ToJson(const CString& text) {
  std::string utf8;
  if (!code_page_932::AppendAsUtf8(text.View(), utf8)) throw std::runtime_error("a text is not code page 932");
  return utf8;
}
Json ToJson(const NurReal& value) { return value.IsSet() ? Json(value.Value()) : Json(); }
Json ToJson(const COleDateTime& date) {
  return {{"status", static_cast<std::int32_t>(date.GetStatus())}, {"days", date.m_dt}};
}
Json ToJson(const VornMeasureInfo& info) { return {{"first", info.first}, {"second", info.second}}; }
Json ToJson(std::uint32_t value) { return value; }

Json ToJson(const VornComposedPnt& point);
Json ToJson(const VornFormCtrlTarget& target);
Json ToJson(const VornFormCtrlTargetPnt& point);
Json ToJson(const VornBuildForm& form);
Json ToJson(const VornExistingComposedPnt& point);
Json ToJson(const VornExistingBuildForm& form);
Json ToJson(const VornXSection& section);
Json ToJson(const VornXSections& set);
Json ToJson(const VornStructureType& type);
Json ToJson(const VornFileInfo& info);

template <typename Enum>
std::int32_t Number(Enum value) {
  return static_cast<std::int32_t>(value);
}

template <typename Type, typename ArgType>
Json ToJson(const CArray<Type, ArgType>& items) {
  Json array = Json::array();
  for (const Type& item : items) array.push_back(ToJson(item));
  return array;
}

template <typename Array>
Json Numbered(const Array& items) {
  Json array = Json::array();
  for (const auto& item : items) array.push_back(ToJson(item));
  return {{"nextSerialID", items.GetNextSerialID()}, {"items", std::move(array)}};
}

Json ToJson(const VornCrossPointInfo& info) {
  return {{"dist", ToJson(info.GetDist())},
          {"id", info.GetID()},
          {"dekiPairID", info.GetDekiPairID()},
          {"thDPairIDs", ToJson(info.ThDPairIDs())},
          {"autoLinePrev", info.IsConnectionAutoLinePrev()},
          {"autoLineNext", info.IsConnectionAutoLineNext()}};
}

Json Detail(const VornComposedPnt& point, VornComposedPnt::PntType role) {
  return {{"code", ToJson(point.GetCode(role))},
          {"xSectType", point.GetXSectType(role)},
          {"xSectNameID", point.GetXSectNameID(role)},
          {"xSectName", ToJson(point.GetXSectName(role))},
          {"dekiPairID", point.GetDekiPairID(role)},
          {"autoLinePrev", point.IsConnectionAutoLinePrev(role)},
          {"autoLineNext", point.IsConnectionAutoLineNext(role)},
          {"measure", ToJson(point.Measure(role))},
          {"formID", point.FormID(role)}};
}

Json ToJson(const VornComposedPnt& point) {
  return {{"elementType", Number(point.ElmType())},
          {"dataType", Number(point.GetDataType())},
          {"clDist", ToJson(point.GetCLDist())},
          {"gh", ToJson(point.GetGh())},
          {"x", ToJson(point.GetX())},
          {"y", ToJson(point.GetY())},
          {"seriesPnt", point.GetSeriesPnt()},
          {"existence", Number(point.GetExistence())},
          {"ctrlFlags", point.GetCtrlFlags()},
          {"pointType", point.GetPointType()},
          {"location", Number(point.GetLocation())},
          {"componentType", Number(point.GetComponentType())},
          {"oldCmpType", Number(point.GetOldCmpType())},
          {"slopeType", Number(point.GetSlopeType())},
          {"serialID", point.GetSerialID()},
          {"parentID", point.GetParentID()},
          {"orgID", point.GetOrgID()},
          {"targetIndex", point.GetTargetIndex()},
          {"drawID", point.GetDrawID()},
          {"drawPairIDs", ToJson(point.DrawPairIDs())},
          {"id", point.GetID()},
          {"thDPairIDs", ToJson(point.ThDPairIDs())},
          {"autoConnect", point.IsAutoConnect()},
          {"connected", point.IsConnected()},
          {"ratio", ToJson(point.GetRatio())},
          {"percent", ToJson(point.GetPercent())},
          {"lastCode", ToJson(point.GetLastCode())},
          {"main", Detail(point, VornComposedPnt::PntType::Main)},
          {"sub", Detail(point, VornComposedPnt::PntType::Sub)}};
}

Json ToJson(const VornFormCtrlTargetPnt& point) {
  return {{"cumulativeDist", ToJson(point.GetCumulativeDist())},
          {"xSectChg", point.GetXSectChg()},
          {"buildFormName", ToJson(point.GetBuildFormName())},
          {"code", ToJson(point.GetCode())},
          {"serialID", point.GetSerialID()},
          {"buildFormID", point.GetBuildFormID()},
          {"sectionID", point.GetSectionID()},
          {"crossPointType", Number(point.GetCrossPointType())},
          {"xSectType", point.GetXSectType()},
          {"sectNameID", point.GetSectNameID()},
          {"pntID", point.GetPntID()},
          {"side", Number(point.GetSide())}};
}

Json ToJson(const VornFormCtrlTarget& target) {
  return {{"code", ToJson(target.GetCodeName())},
          {"workType", Number(target.GetWorkType())},
          {"controlItem", Number(target.GetControlItem())},
          {"targetScope", ToJson(target.GetTargetScope())},
          {"targetRegio", ToJson(target.GetTargetRegio())},
          {"targetPntType", Number(target.GetTargetPntType())},
          {"lr", Number(target.GetLR())},
          {"serialID", target.GetSerialID()},
          {"targetPnts", ToJson(target.GetTargetPntArray())},
          {"export", target.GetExport()}};
}

Json ToJson(const VornBuildForm& form) {
  return {{"name", ToJson(form.GetName())},
          {"xSectType", ToJson(form.GetXSectType())},
          {"exportForm", form.GetExportForm()},
          {"serialID", form.GetSerialID()},
          {"xSectTypeID", form.GetXSectTypeID()},
          {"parentID", form.GetParentID()},
          {"paveSetIdx", form.GetPaveSetIdx()},
          {"category", Number(form.GetCategory())},
          {"crossLeft", ToJson(form.GetCrossLeft())},
          {"crossRight", ToJson(form.GetCrossRight())},
          {"orgSurface", form.IsOrgSurface()},
          {"composedPnts", Numbered(form.GetComposedPntArray())},
          {"formCtrlTargets", Numbered(form.GetFormCtrlTargetArray())},
          {"export", form.GetExport()}};
}

Json ToJson(const VornExistingComposedPnt& point) {
  return {{"clDist", ToJson(point.GetCLDist())}, {"gh", ToJson(point.GetGh())}, {"name", ToJson(point.GetName())}};
}

Json ToJson(const VornExistingBuildForm& form) {
  return {{"name", ToJson(form.GetName())}, {"composedPnts", ToJson(form.GetComposedPntArray())}};
}

Json ToJson(const VornPresPoint& point) {
  VornPresPoint copy(point);
  return {{"first", ToJson(copy.GetFirst())}, {"second", ToJson(copy.GetSecond())}};
}

Json ToJson(const VornXSection& section) {
  return {{"cumulativeDist", ToJson(section.GetCumulativeDist())},
          {"xSectChg", section.GetXSectChg()},
          {"controlSect", section.GetControlSect()},
          {"name", ToJson(section.GetName())},
          {"shiftGH", ToJson(section.GetShiftGH())},
          {"shiftDist", ToJson(section.GetShiftDist())},
          {"directionAngle", ToJson(section.GetDirectionAngle())},
          {"targetPntID", ToJson(section.GetTargetPntID())},
          {"sectionID", section.GetSectionID()},
          {"height", ToJson(section.GetHeight())},
          {"buildForms", Numbered(section.GetBuildFormArray())},
          {"existingBuildForms", ToJson(section.GetExistingBuildFormArray())}};
}

Json ToJson(const VornXSections& set) {
  return {{"refAlign", ToJson(set.GetRefAlign())},         {"refVertical", ToJson(set.GetRefVertical())},
          {"projectPhase", ToJson(set.GetProjectPhase())}, {"alignment", set.GetAlignment()},
          {"xSections", ToJson(set.GetXSectionArray())},   {"formCtrlTargets", Numbered(set.GetFormCtrlTargetArray())}};
}

Json ToJson(const Vorn_BuildFormArray& forms) { return Numbered(forms); }
Json ToJson(const Vorn_ComposedPntArray& points) { return Numbered(points); }
Json ToJson(const Vorn_FormCtrlTargetArray& targets) { return Numbered(targets); }

Json ToJson(const VornStructureType& type) {
  return {{"type", ToJson(type.GetTypeStr())},
          {"jobName", ToJson(type.GetJobName())},
          {"company", ToJson(type.GetCompany())},
          {"stationType", ToJson(type.GetStationType())}};
}

Json ToJson(const VornFileInfo& info) {
  return {{"createDate", ToJson(info.GetCreateDate())},
          {"changeDate", ToJson(info.GetChangeDate())},
          {"note", ToJson(info.GetNote())}};
}

Json ToJson(const VornXSectType&) { return Json::object(); }

Json ToJson(const VornTsHosoType& settings) {
  Json kinds = Json::array();
  for (int i = 0; i < VornTsHosoType::kKindCount; ++i) kinds.push_back(settings.GetKindID(i));
  return {{"paveID", settings.GetPaveID()}, {"scaleID", settings.GetScaleID()}, {"kindIDs", std::move(kinds)}};
}

Json ToJson(const VornBuildItem& item) {
  return {{"name", ToJson(item.GetName())}, {"color", item.GetColor()}, {"used", item.GetUsed()}};
}

Json ToJson(const VornBldNameList& list) {
  Json items = Json::array();
  for (const VornBuildItem& item : list) items.push_back(ToJson(item));
  return items;
}

Json ToJson(const VornBldNameMap& registry) {
  Json classes = Json::array();
  for (const auto& [key, names] : registry) classes.push_back({{"key", ToJson(key)}, {"names", ToJson(names)}});
  return classes;
}

// --- road and survey records as JSON ---------------------------------------------------------------------------------

Json ToJson(const VornCrsData& crs) {
  return {{"name", ToJson(crs.GetName())},
          {"geoDatum", Number(crs.GetGeoDatum())},
          {"verticalDatum", ToJson(crs.VerticalDatum())},
          {"verticalHeight", crs.GetVerticalHeight()},
          {"horizonCoordinate", Number(crs.GetHorizonCoordinate())},
          {"auxCode", crs.GetAuxCode()},
          {"auxText", ToJson(crs.GetAuxText())}};
}

Json ToJson(const VornCtrlPoint& point) {
  return {
      {"number", point.GetNumber()}, {"ctrlClass", Number(point.GetCtrlClass())}, {"name", ToJson(point.GetName())}};
}

Json ToJson(const VornBenchMark& mark) {
  return {{"number", mark.GetNumber()}, {"bmClass", Number(mark.GetBMClass())}, {"name", ToJson(mark.GetName())}};
}

Json ToJson(const VornGmPnt& point) { return {{"number", point.GetNumber()}, {"name", ToJson(point.GetName())}}; }

Json ToJson(const VornCreatorInfoData& creator) {
  return {{"name", ToJson(creator.GetName())}, {"text", ToJson(creator.GetText())}};
}

Json ToJson(const VornUpDate& dates) {
  return {{"date1", ToJson(dates.GetDates()[0])},
          {"date2", ToJson(dates.GetDates()[1])},
          {"date3", ToJson(dates.GetDates()[2])}};
}

Json ToJson(const VornAlignment& alignment) {
  return {{"name", ToJson(alignment.GetName())},
          {"crsName", ToJson(alignment.GetCrsName())},
          {"auxText", ToJson(alignment.GetAuxText())},
          {"attr1", alignment.GetAttr1()},
          {"attr2", alignment.GetAttr2()},
          {"attr3", alignment.GetAttr3()},
          {"xSections", ToJson(alignment.GetXSections())},
          {"upDate", ToJson(alignment.GetUpDate())}};
}

Json ToJson(const VornLandXMLCgPoint& point) { return {{"number", point.GetNumber()}}; }

Json ToJson(const VornLandXMLAlignment& alignment) {
  return {{"name", ToJson(alignment.GetName())}, {"text", ToJson(alignment.GetText())},
          {"flag", alignment.GetFlag()},         {"code1", alignment.GetCode1()},
          {"code2", alignment.GetCode2()},       {"code3", alignment.GetCode3()}};
}

Json ToJson(const VornGmPnts& group);

/// The elements of a collection of road records.
template <typename Type>
Json ToJson(const VornRecordArray<Type>& items) {
  Json array = Json::array();
  for (const Type& item : items) array.push_back(ToJson(item));
  return array;
}

Json ToJson(const VornGmPnts& group) {
  return {
      {"name", ToJson(group.GetName())}, {"name2", ToJson(group.GetName2())}, {"points", ToJson(group.GetPoints())}};
}

Json ToJson(const VornAlignmentsArray& alignments) {
  const VornRecordArray<VornAlignment>& items = alignments;
  return {{"current", alignments.GetCurrent()}, {"items", ToJson(items)}};
}

Json ToJson(const VornCtrlPoints& points) {
  return {{"name", ToJson(points.GetName())},
          {"ctrlPos", ToJson(points.GetCtrlPos())},
          {"benchMarks", ToJson(points.GetBenchMarks())},
          {"gmPnts", ToJson(points.GetGmPnts())}};
}

Json ToJson(const VornRoadInfo& info) {
  return {{"name", ToJson(info.GetName())},
          {"classificat", Number(info.GetClassificat())},
          {"designSpeed", Number(info.GetSpeed())},
          {"traffic", info.GetTraffic()}};
}

Json ToJson(const VornRoadGmData& road) {
  return {{"roadInfo", ToJson(road.GetRoadInfo())},
          {"option", road.GetOption()},
          {"schemaVersion", Number(road.GetSchemaVersion())},
          {"option2", road.GetOption2()},
          {"text", ToJson(road.GetText())},
          {"alignments", ToJson(road.GetAlignments())},
          {"xSectType", ToJson(road.GetXSectType())},
          {"fileInfos", ToJson(road.GetFileInfos())},
          {"structureType", ToJson(road.GetStructureType())}};
}

Json ToJson(const VornProjectData& project) {
  return {{"name", ToJson(project.GetName())},
          {"date", ToJson(project.GetDate())},
          {"projPhase", Number(project.GetProjPhase())},
          {"text", ToJson(project.GetText())},
          {"creators", ToJson(project.GetCreators())}};
}

Json ToJson(const VornFormCtrl& formCtrl) {
  constexpr std::array kNames = {"roadCenter",  "roadLeft", "roadRight", "slopeLeft", "slopeRight",
                                 "roadSurface", "bermLeft", "bermRight", "otherLeft", "otherRight"};
  constexpr std::array kMarks = {"slopeMarks", "bermMarks", "roadMarks", "otherMarks"};
  Json members = {{"value", formCtrl.GetValue()}};
  for (std::size_t i = 0; i < kNames.size(); ++i) members[kNames[i]] = ToJson(formCtrl.GetNames()[i]);
  for (std::size_t i = 0; i < kMarks.size(); ++i) members[kMarks[i]] = Number(formCtrl.GetMarks()[i]);
  return members;
}

Json ToJson(const VornInfoConstrcut& info) {
  return {{"storeVersion", ToJson(info.GetStoreVersion())},
          {"crsArray", ToJson(info.GetCrsArray())},
          {"ctrlPoints", ToJson(info.GetCtrlPoints())},
          {"roadGm", ToJson(info.GetRoadGm())},
          {"formCtrl", ToJson(info.GetFormCtrl())}};
}

Json ToJson(const VornRoadCenterData& center) {
  return {{"storeVersion", ToJson(center.GetStoreVersion())},
          {"project", ToJson(center.GetProject())},
          {"crsArray", ToJson(center.GetCrsArray())},
          {"gmPnts", ToJson(center.GetGmPnts())},
          {"roadGm", ToJson(center.GetRoadGm())}};
}

Json ToJson(const VornLandXMLProject& project) {
  return {{"name", ToJson(project.GetName())}, {"desc", ToJson(project.GetDesc())}};
}

Json ToJson(const VornLandXMLCgPointsArray& points) {
  const VornRecordArray<VornLandXMLCgPoint>& items = points;
  return {{"points", ToJson(items)}, {"option1", points.GetOption1()}, {"option2", points.GetOption2()}};
}

Json ToJson(const VornLandXMLData& data) {
  Json texts = Json::array();
  for (const CString& text : data.GetTexts()) texts.push_back(ToJson(text));
  return {{"storeVersion", ToJson(data.GetStoreVersion())},
          {"flagAny", data.GetFlagAny()},
          {"option1", data.GetOption1()},
          {"option2", data.GetOption2()},
          {"option3", data.GetOption3()},
          {"value", data.GetValue()},
          {"texts", std::move(texts)},
          {"project", ToJson(data.GetProject())},
          {"cgPoints", ToJson(data.GetCgPoints())},
          {"alignments", ToJson(data.GetAlignments())}};
}

Json ToJson(const VornLinearXMLData& data) {
  return {{"infoConstrcut", ToJson(data.GetInfoConstrcut())},
          {"roadCenter", ToJson(data.GetRoadCenter())},
          {"landXml", ToJson(data.GetLandXml())}};
}

// --- records that hosts can ask for in other forms than those that records hold --------------------------------------

/// File information with its table in front.
class HostFileInfo : public VornFileInfo {
 public:
  void Serialize(CArchive& ar, const CString& tag) override { VornFileInfo::Serialize(ar, tag.GetString()); }
};

/// The construction information without its store version.
class InfoParts : public VornInfoConstrcut {
 public:
  void Serialize(CArchive& ar, const char* tag) { VornInfoConstrcut::Serialize(ar, tag); }
};

/// Control points with or without the groups of ground points.
template <bool kWithGmPnts>
class CtrlPoints : public VornCtrlPoints {
 public:
  void Serialize(CArchive& ar, const char* tag) { VornCtrlPoints::Serialize(ar, tag, kWithGmPnts); }
};

/// A record whose alignments are of a kind.
template <typename Record, VORN_DataKind kKind>
class OfKind : public Record {
 public:
  void Serialize(CArchive& ar, const char* tag) { Record::Serialize(ar, tag, kKind); }
};

/// The road geometry in the form before 03.00.
template <VORN_DataKind kKind>
class OldRoadGmData : public VornRoadGmData {
 public:
  void Serialize(CArchive& ar, const char* tag) { SerializeOld(ar, tag, kKind); }
};

/// A part of the LandXML data, none of which looks at a version.
template <typename Record>
class LandXMLPart : public Record {
 public:
  void Serialize(CArchive& ar, const char* tag) { Record::Serialize(ar, tag, "01.11"); }
};

// --- commands --------------------------------------------------------------------------------------------------------

/// Newer than any version that a test carries in a record.
constexpr const char* kNewestVersion = "06.50";

// The store version of the library, for the records that carry theirs.

template <typename Record>
void SetLibVersion(Record&, const char*) {}
void SetLibVersion(VornInfoConstrcut& info, const char* version) { info.SetStoreVersion(version); }
void SetLibVersion(VornRoadCenterData& center, const char* version) { center.SetStoreVersion(version); }
void SetLibVersion(VornLinearXMLData& data, const char* version) {
  SetLibVersion(data.GetInfoConstrcut(), version);
  SetLibVersion(data.GetRoadCenter(), version);
}

template <typename Record>
void Serialize(Record& record, CArchive& ar, const CString& tag) {
  if constexpr (std::is_same_v<Record, VornInfoConstrcut> || !requires { record.Serialize(ar, tag); }) {
    record.Serialize(ar);
  } else {
    record.Serialize(ar, tag);
  }
}

template <typename Record>
void Load(Record& record, const Bytes& bytes, const CString& tag) {
  CMemFile file(bytes);
  CArchive ar(&file, CArchive::load);
  Serialize(record, ar, tag);
  if (ar.Remaining() > 0) throw std::runtime_error(std::to_string(ar.Remaining()) + " bytes are left");
}

/// Prints the record, or writes it at another store version when there is one.
template <typename Record>
void Probe(const Bytes& bytes, const CString& from, const CString* to) {
  Record record;
  SetLibVersion(record, kNewestVersion);
  Load(record, bytes, from);
  if (to == nullptr) {
    std::cout << ToJson(record) << '\n';
    return;
  }
  SetLibVersion(record, *to);
  CMemFile file;
  CArchive ar(&file, CArchive::store);
  Serialize(record, ar, *to);
  ar.Close();
  const Bytes stored = file.Detach();
  std::fwrite(stored.data(), 1, stored.size(), stdout);
}

using Command = std::function<void(const Bytes&, const CString&, const CString*)>;

const std::map<std::string, Command>& Records() {
  using enum VORN_DataKind;
  static const std::map<std::string, Command> records = {
      {"linear-xml-data", Probe<VornLinearXMLData>},
      {"info-constrcut", Probe<VornInfoConstrcut>},
      {"info-constrcut-parts", Probe<InfoParts>},
      {"road-center-data", Probe<VornRoadCenterData>},
      {"crs-data", Probe<VornCrsData>},
      {"crs-data-array", Probe<VornCrsArray>},
      {"ctrl-points", Probe<CtrlPoints<false>>},
      {"ctrl-points-with-groups", Probe<CtrlPoints<true>>},
      {"ctrl-point", Probe<VornCtrlPoint>},
      {"ctrl-point-array", Probe<VornCtrlPosArray>},
      {"bench-mark", Probe<VornBenchMark>},
      {"bench-mark-array", Probe<VornBenchMkArray>},
      {"gm-pnts", Probe<VornGmPnts>},
      {"gm-pnts-array", Probe<VornGmPntsArray>},
      {"gm-pnt", Probe<VornGmPnt>},
      {"gm-pnt-array", Probe<VornGmPntArray>},
      {"road-gm-data", Probe<OfKind<VornRoadGmData, FormControl>>},
      {"road-gm-data of road-geometry", Probe<OfKind<VornRoadGmData, RoadGeometry>>},
      {"old-road-gm-data", Probe<OldRoadGmData<FormControl>>},
      {"old-road-gm-data of road-geometry", Probe<OldRoadGmData<RoadGeometry>>},
      {"road-info", Probe<VornRoadInfo>},
      {"alignments", Probe<OfKind<VornAlignmentsArray, FormControl>>},
      {"alignments of road-geometry", Probe<OfKind<VornAlignmentsArray, RoadGeometry>>},
      {"alignment", Probe<OfKind<VornAlignment, FormControl>>},
      {"alignment of road-geometry", Probe<OfKind<VornAlignment, RoadGeometry>>},
      {"up-date", Probe<VornUpDate>},
      {"project-data", Probe<VornProjectData>},
      {"creator-info-data", Probe<VornCreatorInfoData>},
      {"creator-info-data-array", Probe<VornCreatorInfoArray>},
      {"form-ctrl", Probe<VornFormCtrl>},
      {"land-xml-data", Probe<VornLandXMLData>},
      {"land-xml-project", Probe<LandXMLPart<VornLandXMLProject>>},
      {"land-xml-cg-points", Probe<LandXMLPart<VornLandXMLCgPointsArray>>},
      {"land-xml-cg-point", Probe<LandXMLPart<VornLandXMLCgPoint>>},
      {"land-xml-alignment", Probe<LandXMLPart<VornLandXMLAlignment>>},
      {"land-xml-alignment-array", Probe<LandXMLPart<VornLandXMLAlignmentsArray>>},
      {"x-sections", Probe<VornXSections>},
      {"x-sections-array", Probe<Vorn_XSectionsArray>},
      {"x-section", Probe<VornXSection>},
      {"x-section-array", Probe<Vorn_XSectionArray>},
      {"build-form", Probe<VornBuildForm>},
      {"build-form-array", Probe<Vorn_BuildFormArray>},
      {"cross-point-info", Probe<VornCrossPointInfo>},
      {"composed-pnt", Probe<VornComposedPnt>},
      {"composed-pnt-array", Probe<Vorn_ComposedPntArray>},
      {"measure-infos", Probe<VornMeasureInfos>},
      {"measure-info", Probe<VornMeasureInfo>},
      {"form-ctrl-target", Probe<VornFormCtrlTarget>},
      {"form-ctrl-target-array", Probe<Vorn_FormCtrlTargetArray>},
      {"form-ctrl-target-pnt", Probe<VornFormCtrlTargetPnt>},
      {"form-ctrl-target-pnt-array", Probe<VornFormCtrlTargetPntArray>},
      {"existing-build-form", Probe<VornExistingBuildForm>},
      {"existing-build-form-array", Probe<VornExistingBuildFormArray>},
      {"existing-composed-pnt", Probe<VornExistingComposedPnt>},
      {"existing-composed-pnt-array", Probe<VornExistingComposedPntArray>},
      {"pres-point", Probe<VornPresPoint>},
      {"structure-type", Probe<VornStructureType>},
      {"structure-type-array", Probe<Vorn_Array<VornStructureType>>},
      {"file-info", Probe<VornFileInfo>},
      {"file-info-array", Probe<VornFileInfoArray>},
      {"host-file-info", Probe<HostFileInfo>},
      {"x-section-type", Probe<VornXSectType>},
      {"pavement-settings", Probe<VornTsHosoType>},
      {"name-registry", Probe<VornBldNameMap>},
      {"name-list", Probe<VornBldNameList>},
      {"name-item", Probe<VornBuildItem>},
  };
  return records;
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  const bool loads = arguments.size() == 3 && arguments[0] == "load";
  const bool stores = arguments.size() == 4 && arguments[0] == "store";
  const auto record = loads || stores ? Records().find(arguments[1]) : Records().end();
  if (record == Records().end()) {
    std::cerr << "archive_probe load RECORD VERSION, or archive_probe store RECORD FROM TO\n";
    return 2;
  }
  const CString from(arguments[2].c_str());
  const CString to(stores ? arguments[3].c_str() : "");
  const Bytes bytes{std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>()};
  try {
    record->second(bytes, from, stores ? &to : nullptr);
  } catch (const std::exception& error) {
    std::cerr << "archive_probe: " << error.what() << '\n';
    return 1;
  } catch (bool) {
    std::cerr << "archive_probe: the record is newer than the library\n";
    return 1;
  }
  return 0;
}
