#include <cstddef>
#include <initializer_list>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>

#include "fuzz/archive_records.h"
#include "fuzz/target.h"
#include "vorn/platform/code_page_932.h"

namespace vorn_fuzz {

namespace {

using PntType = VornComposedPnt::PntType;

// --- a small model with something in every field ---------------------------------------------------------------------

VornComposedPnt MakePoint(VornLocation side, double dist, std::string_view code) {
  VornComposedPnt point;
  point.SetLocation(side);
  point.SetX(dist < 0 ? -dist : dist);
  point.SetY(-1.5);
  point.SetCLDist(dist);
  point.SetGh(62.5);
  point.SetDataType(VornComposedPnt::DataType::WidthHeight);
  point.SetExistence(VORN_Existence::True);
  point.SetComponentType(VornComposedPnt::ComponentType::SlopeFill);
  point.ElmType(VornComposedPnt::ElementType::SlopeFill);
  point.SetCode(CString(code));
  point.SetCode("S1", PntType::Sub);
  point.SetXSectName(u8"盛土面"_cp932, PntType::Main);
  point.SetXSectNameID(3, PntType::Sub);
  point.ThDPairIDs().Add(7);
  point.Measure().Add({1, 2});
  return point;
}

VornFormCtrlTarget MakeTarget() {
  VornFormCtrlTarget target;
  target.SetCode("L1 L2");
  target.SetWorkType(VornFormCtrlTarget::WorkType::FillWork);
  target.SetControlItem(VornFormCtrlTarget::ControlItem::Width);
  target.SetTargetScope(u8"全延長"_cp932);
  target.SetTargetRegio(u8"管理断面"_cp932);
  target.SetTargetPntType(VornFormCtrlTarget::TargetPntType::ShoulderToe);
  return target;
}

VornFormCtrlTarget MakeTargetWithPoints() {
  VornFormCtrlTarget target = MakeTarget();
  for (const char* code : {"L1", "L2"}) {
    VornFormCtrlTargetPnt point;
    point.Set(20.0, u8"盛土面"_cp932, code, false);
    target.GetTargetPntArray().Add(std::move(point));
  }
  return target;
}

Vorn_FormCtrlTargetArray MakeTargets() {
  Vorn_FormCtrlTargetArray targets;
  targets.Add(MakeTarget());
  targets.Add(MakeTargetWithPoints());
  return targets;
}

VornBuildForm MakeForm(std::string_view name) {
  VornBuildForm form;
  form.SetName(CString(name), false);
  form.SetXSectType(u8"盛土工"_cp932);
  form.GetComposedPntArray().Add(MakePoint(VornLocation::Center, 0.0, "C"));
  form.GetComposedPntArray().Add(MakePoint(VornLocation::Left, -5.25, "L1"));
  form.SetFormCtrlTargetArray(MakeTargets());
  VornCrossPointInfo crossing;
  crossing.SetDist(-7.0);
  crossing.ThDPairIDs().Add(9);
  form.SetCrossLeft(crossing);
  return form;
}

VornExistingBuildFormArray MakeGround() {
  VornExistingBuildForm ground;
  ground.SetName(u8"現況"_cp932);
  for (const double dist : {-10.0, 10.0}) {
    VornExistingComposedPnt point;
    point.SetCLDist(dist);
    point.SetGh(60.0);
    ground.GetComposedPntArray().Add(std::move(point));
  }
  VornExistingBuildFormArray grounds;
  grounds.Add(std::move(ground));
  return grounds;
}

VornXSection MakeSection(double station) {
  VornXSection section;
  section.SetCumulativeDist(station);
  section.SetName("NO.1");
  section.SetControlSect(true);
  section.SetHeight(62.5);
  section.SetDirectionAngle("90-00-00");
  section.SetTargetPntID("T1");
  section.GetBuildFormArray().Add(MakeForm(u8"盛土面"_cp932));
  section.SetExistingBuildFormArray(MakeGround());
  return section;
}

Vorn_XSectionsArray MakeSets() {
  VornXSections set;
  set.GetXSectionArray().Add(MakeSection(20.0));
  set.SetFormCtrlTargetArray(MakeTargets());
  Vorn_XSectionsArray sets;
  sets.Add(std::move(set));
  return sets;
}

VornFileInfo MakeFileInfo() {
  VornFileInfo info;
  info.SetCreateDate(COleDateTime(2011, 4, 1, 9, 30, 0));
  info.SetNote("note");
  return info;
}

VornCrsArray MakeSystems() {
  VornCrsData crs;
  crs.SetName("crs");
  crs.SetGeoDatum(VornCrsData::GeoDatum::Jgd2011);
  crs.SetVerticalDatum("T.P");
  crs.SetVerticalHeight(0.5);
  crs.SetHorizonCoordinate(VornCrsData::HorizonCoordinate::Plane9);
  crs.SetAuxText("aux");
  VornCrsArray systems;
  systems.Add(std::move(crs));
  return systems;
}

template <typename Point>
Point MakeSurveyPoint(std::uint16_t number) {
  Point point;
  point.SetNumber(number);
  point.SetName("P");
  return point;
}

VornCtrlPoints MakeCtrlPoints() {
  VornCtrlPoints points;
  points.SetName("points");
  points.GetCtrlPos().Add(MakeSurveyPoint<VornCtrlPoint>(1));
  points.GetBenchMarks().Add(MakeSurveyPoint<VornBenchMark>(2));
  return points;
}

VornGmPntsArray MakeGroups() {
  VornGmPnts group;
  group.SetName("group");
  group.GetPoints().Add(MakeSurveyPoint<VornGmPnt>(3));
  VornGmPntsArray groups;
  groups.Add(std::move(group));
  return groups;
}

/// With a cross section that has nothing in it: there are other records for these.
VornAlignment MakeAlignment() {
  VornAlignment alignment;
  alignment.SetName("align");
  alignment.SetCrsName("crs");
  alignment.SetAttr3(7);
  VornXSection section;
  section.SetCumulativeDist(20.0);
  section.SetName("NO.1");
  alignment.GetXSections().SetRefAlign("align");
  alignment.GetXSections().SetRefVertical("vertical");
  alignment.GetXSections().GetXSectionArray().Add(std::move(section));
  alignment.GetUpDate().SetDate(COleDateTime(2024, 2, 29, 12, 0, 0));
  return alignment;
}

VornRoadInfo MakeRoadInfo() {
  VornRoadInfo info;
  info.SetName("road");
  info.SetClassificat(VornRoadInfo::Classificat::Type3Class2);
  info.SetDesignSpeed(VornRoadInfo::DesignSpeed::Kmh60);
  return info;
}

VornRoadGmData MakeRoad() {
  VornRoadGmData road;
  road.SetRoadInfo(MakeRoadInfo());
  road.GetAlignments().Add(MakeAlignment());
  road.GetAlignments().SetCurrent(0);
  road.GetFileInfos().Add(MakeFileInfo());
  road.GetStructureType().SetType(VornStructureType::Type::RoadEarthwork);
  road.SetText("text");
  return road;
}

VornProjectData MakeProject() {
  VornCreatorInfoData creator;
  creator.SetName("creator");
  VornProjectData project;
  project.SetName("project");
  project.SetDate(COleDateTime(2024, 2, 29, 12, 0, 0));
  project.GetCreators().Add(std::move(creator));
  return project;
}

VornLandXMLData MakeLandXml() {
  VornLandXMLAlignment alignment;
  alignment.SetName("align");
  alignment.SetFlag(1);
  VornLandXMLCgPoint point;
  point.SetNumber(3);
  VornLandXMLData data;
  data.GetProject().SetName("project");
  data.GetTexts().AddTail("a");
  data.GetTexts().AddTail("");
  data.GetCgPoints().Add(std::move(point));
  data.GetAlignments().Add(std::move(alignment));
  return data;
}

// Each overload fills the record of one kind.

void Fill(Vorn_XSectionsArray& sets) { sets = MakeSets(); }
void Fill(VornBldNameMap& registry) {
  registry.Set(u8"盛土工"_cp932, u8"盛土面"_cp932);
  registry.Set(u8"ｷﾘﾄﾞ"_cp932, "A");
}
void Fill(VornStructureType& type) {
  type.SetType(VornStructureType::Type::RoadEarthwork);
  type.SetJobName("job");
}
void Fill(VornFileInfoArray& infos) { infos.Add(MakeFileInfo()); }
void Fill(HostFileInfo& info) { info.info = MakeFileInfo(); }
void Fill(VornTsHosoType& settings) {
  settings.SetPaveID(5);
  settings.SetKindID(13, 6);
}
void Fill(DovDataTable& table) {
  table.SetAt(1, std::int32_t{-2});
  table.SetAt(2, 0.25);
  table.SetAt(3, CString("text"));
}
void Fill(CStringArray& texts) {
  texts.Add("a");
  texts.Add(CString(std::string(300, 'b')));
}
void Fill(COleDateTime& date) { date = COleDateTime(1999, 12, 31, 23, 59, 59); }
void Fill(VornXSection& section) { section = MakeSection(40.0); }
void Fill(VornBuildForm& form) { form = MakeForm(u8"切土面"_cp932); }
void Fill(VornComposedPnt& point) { point = MakePoint(VornLocation::Right, 3.5, "R1"); }
void Fill(Vorn_FormCtrlTargetArray& targets) { targets = MakeTargets(); }
void Fill(VornLinearXMLData& data) {
  data.GetInfoConstrcut().SetCrsArray(MakeSystems());
  data.GetInfoConstrcut().SetCtrlPoints(MakeCtrlPoints());
  data.GetInfoConstrcut().SetRoadGm(MakeRoad());
  data.GetRoadCenter().SetProject(MakeProject());
  data.GetRoadCenter().SetCrsArray(MakeSystems());
  data.GetRoadCenter().SetGmPnts(MakeGroups());
  data.GetRoadCenter().SetRoadGm(MakeRoad());
  data.SetLandXml(MakeLandXml());
}
void Fill(VornLandXMLData& data) { data = MakeLandXml(); }
void Fill(VornExistingBuildFormArray& grounds) { grounds = MakeGround(); }

// --- archives --------------------------------------------------------------------------------------------------------

std::size_t IndexOf(std::string_view version) {
  std::size_t index = 0;
  while (kStoreVersions[index] != version) ++index;
  return index;
}

/// The names of the records, in the order of `RecordKind`.
constexpr const char* kKindNames[] = {
    "sets", "registry", "structure_type", "file_infos", "small_file_info", "pavement", "table", "texts",
    "date", "section",  "form",           "point",      "targets",         "ground",   "road",  "land_xml"};
static_assert(std::size(kKindNames) == kRecordKinds);

template <typename Write>
Seed SeedOf(RecordKind kind, std::string_view version, Write write) {
  CMemFile file;
  CArchive ar(&file, CArchive::store);
  ar << FirstByte(kind, IndexOf(version));
  write(ar, CString(version));
  ar.Close();
  return {std::string(kKindNames[static_cast<std::size_t>(kind)]) + "_" + std::string(version), file.Detach()};
}

Seed StoredSeed(RecordKind kind, std::string_view version) {
  return SeedOf(kind, version, [&](CArchive& ar, const CString& tag) {
    VisitRecord(kind, [&](auto record) {
      Fill(record);
      Transfer(ar, record, tag);
    });
  });
}

// What old programs wrote differs from what is written for them. These are in the form that they are read in, before
// "05.00": there are no serials, before "04.00" also no target points, and the work is told by a code.

constexpr std::uint32_t kEmptyTable = 0;

bool IsFrom(const CString& tag, std::string_view version) { return tag.Compare(version) >= 0; }
bool IsAfter(const CString& tag, std::string_view version) { return tag.Compare(version) > 0; }

void WriteOldTarget(CArchive& ar, const CString& tag) {
  const VornFormCtrlTarget target = MakeTargetWithPoints();
  ar << kEmptyTable << target.GetCodeName() << target.GetWorkType() << target.GetControlItem()
     << target.GetTargetScope() << target.GetTargetRegio() << target.GetTargetPntType() << target.GetLR();
  if (!IsFrom(tag, "04.00")) return;
  ar << static_cast<std::uint32_t>(target.GetTargetPntArray().GetSize());
  for (const VornFormCtrlTargetPnt& point : target.GetTargetPntArray()) {
    ar << kEmptyTable << point.GetCumulativeDist() << point.GetXSectChg() << point.GetBuildFormName() << point.GetCode()
       << std::uint16_t{0} << std::uint32_t{0};
  }
}

void WriteOldForm(CArchive& ar, const CString& tag) {
  VornBuildForm form = MakeForm(u8"盛土面"_cp932);
  ar << kEmptyTable << form.GetName();
  if (IsFrom(tag, "04.00")) {
    ar << form.GetXSectType();
  } else {
    ar << std::int32_t{0};
  }
  ar << form.GetExportForm();
  ar << static_cast<std::uint32_t>(form.GetComposedPntArray().GetSize());
  for (VornComposedPnt& point : form.GetComposedPntArray()) point.Serialize(ar, tag);
  ar << std::uint32_t{1};
  WriteOldTarget(ar, tag);
}

void WriteOldSection(CArchive& ar, const CString& tag) {
  ar << kEmptyTable << NurReal(20.0) << false << true << CString("NO.1") << NurReal(0.5) << NurReal(0.0);
  if (IsAfter(tag, "03.00")) ar << CString("90") << CString("T1") << std::uint32_t{4};
  ar << std::uint32_t{1};
  WriteOldForm(ar, tag);
  if (IsAfter(tag, "03.00")) {
    VornExistingBuildFormArray ground = MakeGround();
    ground.Serialize(ar, tag);
  } else {
    ar << std::uint32_t{1} << kEmptyTable << NurReal(-10.0) << NurReal(60.0);
  }
}

void WriteOldSets(CArchive& ar, const CString& tag) {
  ar << std::uint32_t{1} << kEmptyTable << CString("align") << CString("vertical");
  if (IsAfter(tag, "03.00")) ar << CString("phase") << true;
  ar << std::uint32_t{1};
  WriteOldSection(ar, tag);
  if (!IsAfter(tag, "03.00")) return;
  ar << std::uint32_t{1};
  WriteOldTarget(ar, tag);
}

void WriteOldAlignments(CArchive& ar, const CString& tag, VORN_DataKind kind) {
  VornAlignment alignment = MakeAlignment();
  ar << std::int32_t{0} << std::int32_t{1};
  ar << alignment.GetName() << alignment.GetCrsName() << alignment.GetAuxText() << alignment.GetAttr1()
     << alignment.GetAttr2() << alignment.GetAttr3();
  if (kind == VORN_DataKind::FormControl && !IsFrom(tag, "02.50")) return;
  ar << kEmptyTable << CString("align") << CString("vertical");
  if (IsAfter(tag, "03.00")) ar << CString("phase") << true;
  ar << std::uint32_t{0};
  if (IsAfter(tag, "03.00")) ar << std::uint32_t{0};
  alignment.GetUpDate().Serialize(ar, tag);
}

void WriteOldRoad(CArchive& ar, const CString& tag, VORN_DataKind kind) {
  VornRoadGmData road = MakeRoad();
  const bool isNew = IsFrom(tag, "03.00");
  if (isNew) ar << kEmptyTable;
  road.GetRoadInfo().Serialize(ar, tag);
  if (isNew) ar << road.GetOption() << road.GetSchemaVersion() << road.GetOption2() << road.GetText();
  WriteOldAlignments(ar, tag, kind);
  if (!isNew) return;
  road.GetXSectType().Serialize(ar, tag);
  road.GetFileInfos().Serialize(ar, tag);
  road.GetStructureType().Serialize(ar, tag);
}

void WriteOldFormCtrl(CArchive& ar, const CString& tag) {
  VornFormCtrl formCtrl;
  if (IsFrom(tag, "02.50")) return formCtrl.Serialize(ar, tag);
  for (int i = 0; i < 10; ++i) ar << CString(i < 2 ? "" : "name");
  ar << std::int32_t{1} << std::int32_t{2} << formCtrl.GetValue();
}

/// LandXML data of their own version.
void WriteLandXml(CArchive& ar, std::string_view version) {
  VornLandXMLData data = MakeLandXml();
  ar << CString(version);
  if (version >= "01.11") {
    ar << data.GetFlagAny() << data.GetOption1() << data.GetOption3() << data.GetValue();
    data.GetTexts().Serialize(ar);
  }
  data.GetProject().Serialize(ar, "", "");
  data.GetCgPoints().Serialize(ar, "", "");
  data.GetAlignments().Serialize(ar, "", "");
}

void WriteOldRoadData(CArchive& ar, const CString& tag) {
  ar << tag;
  MakeSystems().Serialize(ar, tag.GetString());
  MakeCtrlPoints().Serialize(ar, tag, false);
  WriteOldRoad(ar, tag, VORN_DataKind::FormControl);
  WriteOldFormCtrl(ar, tag);
  ar << tag;
  MakeProject().Serialize(ar, tag);
  MakeSystems().Serialize(ar, tag.GetString());
  MakeGroups().Serialize(ar, tag.GetString());
  WriteOldRoad(ar, tag, VORN_DataKind::RoadGeometry);
  WriteLandXml(ar, "01.10");
}

Seed OldSeed(RecordKind kind, std::string_view version) {
  return SeedOf(kind, version, [&](CArchive& ar, const CString& tag) {
    if (kind == RecordKind::Form) return WriteOldForm(ar, tag);
    if (kind == RecordKind::Section) return WriteOldSection(ar, tag);
    if (kind == RecordKind::Road) return WriteOldRoadData(ar, tag);
    WriteOldSets(ar, tag);
  });
}

}  // namespace

std::vector<Seed> MakeSeeds() {
  std::vector<Seed> seeds;
  for (const char* version : kStoreVersions) {
    const bool isOld = std::string_view(version) < "05.00";
    seeds.push_back(isOld ? OldSeed(RecordKind::Sets, version) : StoredSeed(RecordKind::Sets, version));
  }
  for (const RecordKind kind : {RecordKind::Registry, RecordKind::StructureType, RecordKind::FileInfos,
                                RecordKind::HostFileInfo, RecordKind::PavementSettings, RecordKind::ExtensionTable,
                                RecordKind::Texts, RecordKind::Date, RecordKind::Ground}) {
    seeds.push_back(StoredSeed(kind, "06.00"));
  }
  for (const char* version : {"03.00", "03.50", "04.00"}) {
    seeds.push_back(OldSeed(RecordKind::Section, version));
    seeds.push_back(OldSeed(RecordKind::Form, version));
  }
  for (const char* version : {"05.00", "06.00"}) seeds.push_back(StoredSeed(RecordKind::Section, version));
  for (const char* version : {"05.00", "05.50", "06.00"}) seeds.push_back(StoredSeed(RecordKind::Form, version));
  for (const char* version : {"05.00", "06.00"}) seeds.push_back(StoredSeed(RecordKind::Targets, version));
  for (const char* version : {"03.50", "04.00", "05.50", "06.00", "06.50"}) {
    seeds.push_back(StoredSeed(RecordKind::Point, version));
  }
  for (const char* version : {"01.11", "02.50", "03.00", "04.00"}) seeds.push_back(OldSeed(RecordKind::Road, version));
  for (const char* version : {"05.00", "06.00"}) seeds.push_back(StoredSeed(RecordKind::Road, version));
  for (const char* version : {"01.10", "01.11"}) {
    seeds.push_back(
        SeedOf(RecordKind::LandXml, version, [&](CArchive& ar, const CString&) { WriteLandXml(ar, version); }));
  }
  return seeds;
}

}  // namespace vorn_fuzz
