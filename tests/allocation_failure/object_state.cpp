#include "tests/allocation_failure/object_state.h"

#include "tests/support/archive_bytes.h"

namespace allocation_test {

namespace {

using PntType = VornComposedPnt::PntType;

std::string DetailOf(const VornComposedPnt& p, PntType t) {
  return Joined(p.GetCode(t), p.GetXSectName(t), p.Measure(t), p.GetXSectType(t), p.GetXSectNameID(t),
                p.GetDekiPairID(t), p.IsConnectionAutoLinePrev(t), p.IsConnectionAutoLineNext(t), p.FormID(t));
}

}  // namespace

State StateOf(const CString& text) { return {ToText(text), {}}; }

State StateOf(const VornCrossPointInfo& c) {
  return {Joined(c.GetDist(), c.GetID(), c.GetDekiPairID(), c.ThDPairIDs(), c.IsConnectionAutoLinePrev(),
                 c.IsConnectionAutoLineNext()),
          {}};
}

State StateOf(const VornComposedPnt& p) {
  return {Joined(p.DrawPairIDs(), p.ThDPairIDs(), p.GetCLDist(), p.GetGh(), p.GetX(), p.GetY(), p.GetRatio(),
                 p.GetPercent(), p.GetLastCode(), p.GetExistence(), p.GetCtrlFlags(), p.GetLocation(),
                 p.GetComponentType(), p.GetOldCmpType(), p.GetSlopeType(), p.GetDataType(), p.ElmType(),
                 p.GetTargetIndex(), p.GetDrawID(), p.GetSerialID(), p.GetOrgID(), p.GetParentID(), p.GetID(),
                 p.IsAutoConnect(), p.IsConnected(), p.GetPointType(), p.GetSeriesPnt()) +
              DetailOf(p, PntType::Main) + DetailOf(p, PntType::Sub),
          {}};
}

State StateOf(const VornFormCtrlTargetPnt& p) {
  return {Joined(p.GetPntID(), p.GetOffset(), p.GetElevation(), p.GetSide(), p.GetCumulativeDist(), p.GetXSectChg(),
                 p.GetBuildFormName(), p.GetCode(), p.GetSerialID(), p.GetBuildFormID(), p.GetSectionID(),
                 p.GetXSectType(), p.GetSectNameID(), p.GetCrossPointType()),
          {}};
}

State StateOf(const VornFormCtrlTarget& t) {
  return {Joined(t.GetCodeName(), t.GetWorkType(), t.GetControlItem(), t.GetTargetScope(), t.GetTargetRegio(),
                 t.GetTargetPntType(), t.GetLR(), t.GetExport(), t.GetSerialID()),
          {StateOf(t.GetTargetPntArray())}};
}

State StateOf(const VornBuildForm& f) {
  return {Joined(f.GetOmitFlag(), f.GetName(), f.GetExportForm(), f.GetSerialID(), f.IsOrgSurface(), f.GetXSectTypeID(),
                 f.GetParentID(), f.GetPaveSetIdx(), f.GetXSectType(), f.GetCategory(), f.GetExport()),
          {StateOf(f.GetCrossLeft()), StateOf(f.GetCrossRight()), StateOf(f.GetComposedPntArray()),
           StateOf(f.GetFormCtrlTargetArray())}};
}

State StateOf(const VornExistingComposedPnt& p) {
  return {Joined(p.GetSpare1(), p.GetSpare2(), p.GetCLDist(), p.GetGh(), p.GetName()), {}};
}

State StateOf(const VornExistingBuildForm& f) { return {Joined(f.GetName()), {StateOf(f.GetComposedPntArray())}}; }

State StateOf(const VornXSection& s) {
  return {Joined(s.GetExistingFlag(), s.GetSectionID(), s.GetName(), s.GetControlSect(), s.GetXSectChg(), s.GetHeight(),
                 s.GetCumulativeDist(), s.GetShiftGH(), s.GetShiftDist(), s.GetDirectionAngle(), s.GetTargetPntID()),
          {StateOf(s.GetBuildFormArray()), StateOf(s.GetExistingBuildFormArray())}};
}

State StateOf(const VornXSections& s) {
  return {Joined(s.GetRefAlign(), s.GetRefVertical(), s.GetProjectPhase(), s.GetAlignment(), s.GetHiErr()),
          {StateOf(s.GetXSectionArray()), StateOf(s.GetFormCtrlTargetArray())}};
}

State StateOf(const VornFileInfo& i) { return {Joined(i.GetCreateDate(), i.GetChangeDate(), i.GetNote()), {}}; }

State StateOf(const VornStructureType& t) {
  return {Joined(t.GetTypeStr(), t.GetJobName(), t.GetCompany(), t.GetStationType()), {}};
}

State StateOf(const VornBuildItem& i) { return {Joined(i.GetName(), i.GetColor(), i.GetUsed()), {}}; }

// --- type settings ---------------------------------------------------------------------------------------------------

namespace {

/// What settings hold is told by their record alone.
template <typename Settings>
State StateOfRecord(const Settings& settings, const CString& tag) {
  Settings copy = settings;
  const auto bytes = test_support::Stored([&](CArchive& ar) { copy.Serialize(ar, tag); });
  return {std::string(bytes.begin(), bytes.end()), {}};
}

}  // namespace

State StateOf(const VornXSectType& t) { return StateOfRecord(t, "06.50"); }
State StateOf(const VornTsHosoType& t) { return StateOfRecord(t, "06.50"); }

// --- road data -------------------------------------------------------------------------------------------------------

State StateOf(const VornCrsData& d) {
  return {Joined(d.GetName(), d.GetGeoDatum(), d.VerticalDatum(), d.GetVerticalHeight(), d.GetHorizonCoordinate(),
                 d.GetAuxCode(), d.GetAuxText()),
          {}};
}

State StateOf(const VornCtrlPoint& p) { return {Joined(p.GetNumber(), p.GetCtrlClass(), p.GetName()), {}}; }
State StateOf(const VornBenchMark& p) { return {Joined(p.GetNumber(), p.GetBMClass(), p.GetName()), {}}; }
State StateOf(const VornGmPnt& p) { return {Joined(p.GetNumber(), p.GetName()), {}}; }
State StateOf(const VornGmPnts& g) { return {Joined(g.GetName(), g.GetName2()), {StateOf(g.GetPoints())}}; }

State StateOf(const VornCtrlPoints& p) {
  return {Joined(p.GetName()), {StateOf(p.GetCtrlPos()), StateOf(p.GetBenchMarks()), StateOf(p.GetGmPnts())}};
}

State StateOf(const VornCreatorInfoData& c) { return {Joined(c.GetName(), c.GetText()), {}}; }

State StateOf(const VornProjectData& p) {
  return {Joined(p.GetName(), p.GetDate(), p.GetProjPhase(), p.GetText()), {StateOf(p.GetCreators())}};
}

State StateOf(const VornAlignment& a) {
  const VornUpDate::Dates& dates = a.GetUpDate().GetDates();
  return {Joined(a.GetName(), a.GetCrsName(), a.GetAuxText(), a.GetAttr1(), a.GetAttr2(), a.GetAttr3(), a.GetMemo1(),
                 a.GetMemo2(), a.GetMemo3(), dates[0], dates[1], dates[2]),
          {StateOf(a.GetXSections())}};
}

State StateOf(const VornRoadInfo& i) {
  return {Joined(i.GetName(), i.GetClassificat(), i.GetClassRiver(), i.GetSpeed(), i.GetTraffic(), i.GetText1(),
                 i.GetText2(), i.Side(), i.SingleLane()),
          {}};
}

State StateOf(const VornRoadGmData& d) {
  return {Joined(d.GetOption(), d.GetSchemaVersion(), d.GetOption2(), d.GetText()),
          {StateOf(d.GetRoadInfo()), StateOf(d.GetAlignments()), StateOf(d.GetFileInfos()),
           StateOf(d.GetStructureType()), StateOf(d.GetXSectType())}};
}

State StateOf(const VornFormCtrl& c) {
  VornFormCtrl copy = c;  // what it holds is told by its record alone
  const auto bytes = test_support::Stored([&](CArchive& ar) { copy.Serialize(ar, "05.50"); });
  return {std::string(bytes.begin(), bytes.end()), {}};
}

State StateOf(const VornInfoConstrcut& i) {
  return {Joined(i.GetStoreVersion(), i.GetLibVersion()),
          {StateOf(i.GetCrsArray()), StateOf(i.GetCtrlPoints()), StateOf(i.GetRoadGm()), StateOf(i.GetFormCtrl())}};
}

State StateOf(const VornRoadCenterData& d) {
  return {Joined(d.GetStoreVersion(), d.GetLibVersion()),
          {StateOf(d.GetProject()), StateOf(d.GetCrsArray()), StateOf(d.GetGmPnts()), StateOf(d.GetRoadGm())}};
}

State StateOf(const VornLandXMLProject& p) { return {Joined(p.GetName(), p.GetDesc()), {}}; }

State StateOf(const VornLandXMLAlignment& a) {
  VornLandXMLAlignment copy = a;
  const auto bytes = test_support::Stored([&](CArchive& ar) { copy.Serialize(ar, "", "01.11"); });
  return {std::string(bytes.begin(), bytes.end()), {}};
}

State StateOf(const VornLandXMLCgPoint& p) {
  VornLandXMLCgPoint copy = p;
  const auto bytes = test_support::Stored([&](CArchive& ar) { copy.Serialize(ar, "", "01.11"); });
  return {std::string(bytes.begin(), bytes.end()), {}};
}

State StateOf(const VornLandXMLData& d) {
  return {Joined(d.GetStoreVersion(), d.GetFlagAny(), d.GetOption1(), d.GetOption2(), d.GetOption3(), d.GetValue(),
                 d.GetTexts()),
          {StateOf(d.GetProject()), StateOf(d.GetCgPoints()), StateOf(d.GetAlignments())}};
}

State StateOf(const VornLinearXMLData& d) {
  return {Joined(d.IsSave()), {StateOf(d.GetInfoConstrcut()), StateOf(d.GetRoadCenter()), StateOf(d.GetLandXml())}};
}

}  // namespace allocation_test
