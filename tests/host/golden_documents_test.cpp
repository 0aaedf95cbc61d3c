#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <string_view>
#include <tuple>

#include "host/document/atomic_file.h"
#include "host/document/design_document.h"
#include "tests/host/documents.h"

// Every element type in each edition against documents that were written by hand from the rules of the edition.

namespace vorn_host {
namespace {

using namespace host_test;  // NOLINT(google-build-using-namespace): the vocabulary of these tests

using ComponentType = VornComposedPnt::ComponentType;
using ControlItem = VornFormCtrlTarget::ControlItem;
using TargetPntType = VornFormCtrlTarget::TargetPntType;
using WorkType = VornFormCtrlTarget::WorkType;

std::string GoldenDocument(Edition edition) {
  return ReadFile(std::filesystem::path(VORN_TEST_DATA) / "documents" /
                  ("all_elements_" + std::string(EditionName(edition)) + ".xml"));
}

// --- the model behind the documents --------------------------------------------------------------------------------

VornComposedPnt PointOf(VornComposedPnt point, ComponentType component, VORN_Existence existence) {
  if (!point.IsCenter()) point.SetComponentType(component);
  point.SetExistence(existence);
  return point;
}

/// A point as the edition reads it: by data type, or by slope type in 2.0.
VornComposedPnt PointIn(Edition edition, const char* code, VornLocation side, DataType type, NurReal x, NurReal y) {
  if (!IsEdition20(edition)) return Point(code, side, type, x, y);
  if (side == VornLocation::Center) return Point20(code, side, SlopeType::Unset, x, y);
  return Point20(code, side, type == DataType::Rate ? SlopeType::Rate : SlopeType::Percent, x, y);
}

VornBuildForm Road(Edition edition) {
  const bool in20 = IsEdition20(edition);
  const auto point = [&](const char* code, VornLocation side, DataType type, NurReal x, NurReal y,
                         ComponentType component, VORN_Existence existence) {
    return PointOf(PointIn(edition, code, side, type, x, y), component, existence);
  };
  VornComposedPnt l2 =
      point("L2", VornLocation::Left, DataType::Rate, -5.0, 1.5, ComponentType::SlopeFill, VORN_Existence::False);
  l2.SetSeriesPnt(false);
  VornBuildForm form = Form(
      in20 ? u8"路面盛土"_cp932 : u8"路面"_cp932,
      {point("CL", VornLocation::Center, DataType::WidthHeight, 0.1235, in20 ? -0.124 : -0.1235, ComponentType::Unset,
             VORN_Existence::True),
       point("L1", VornLocation::Left, DataType::Percent, 3.5, -2.0, ComponentType::RoadbedFill, VORN_Existence::True),
       l2,
       point("R1", VornLocation::Right, DataType::WidthHeight, NurReal(), 0.25, ComponentType::Other,
             VORN_Existence::Unset)});
  form.SetXSectType(CString(u8"盛土工"_cp932));
  return form;
}

VornBuildForm Trench(Edition edition) {
  const DataType first = IsEdition20(edition) ? DataType::Rate : DataType::WidthHeight;
  return Form(u8"床掘"_cp932, {PointOf(PointIn(edition, "A", VornLocation::Left, first, 1.0, 2.0), ComponentType::Berm,
                                       VORN_Existence::True),
                               PointOf(PointIn(edition, "B", VornLocation::Left, DataType::WidthHeight, -1.0, 0.0),
                                       ComponentType::Slope, VORN_Existence::True)});
}

VornExistingBuildForm Ground() {
  VornExistingBuildForm ground;
  ground.SetName(u8"現況"_cp932);
  for (const auto& [name, dist, height] : {std::tuple("G1", -10.0, 98.7654), std::tuple("", 10.0, 100.0)}) {
    VornExistingComposedPnt point;
    point.SetName(name);
    point.SetCLDist(dist);
    point.SetGh(height);
    ground.GetComposedPntArray().Add(point);
  }
  return ground;
}

VornFormCtrlTarget Measured(ControlItem item, std::string_view scope, std::string_view region, TargetPntType type) {
  VornFormCtrlTarget target;
  target.SetControlItem(item);
  target.SetTargetScope(CString(scope));
  target.SetTargetRegio(CString(region));
  target.SetTargetPntType(type);
  return target;
}

void AddTargetPoint(VornFormCtrlTarget& target, bool xSectChg, std::string_view form, const char* code) {
  VornFormCtrlTargetPnt point;
  point.Set(0.0, CString(form), code, xSectChg);
  target.GetTargetPntArray().Add(point);
}

void AddHead(DesignDocument& document) {
  VornFileInfo created;
  created.SetCreateDate(COleDateTime(2024, 4, 1, 9, 30, 0));
  document.fileInfos.Add(created);
  VornFileInfo changed = created;
  changed.SetChangeDate(COleDateTime(2024, 12, 31, 23, 59, 59));
  changed.SetNote(u8"第2回変更"_cp932);
  document.fileInfos.Add(changed);
  document.structureType.SetType(VornStructureType::Type::RoadEarthwork);
  document.structureType.SetJobName(u8"国道<1>号改良工事"_cp932);
  document.structureType.SetCompany(u8"\"建設\" & Co"_cp932);
  document.structureType.SetStationType(u8"距離標"_cp932);
  document.hasStructureType = true;
}

DesignDocument EveryElement(Edition edition) {
  DesignDocument document;
  document.edition = edition;
  VornXSections set;
  set.SetRefAlign(u8"本線"_cp932);
  set.SetRefVertical(u8"本線縦断"_cp932);
  VornXSection first = Section(0.0, {Road(edition)});
  first.SetControlSect(true);
  VornFormCtrlTarget width = Measured(ControlItem::Width, u8"路面"_cp932, u8"本線"_cp932, TargetPntType::LeftRight);
  if (IsEdition20(edition)) {
    width.SetWorkType(WorkType::FillWork);
    width.SetCode("L1 R1");
    VornFormCtrlTarget slope = Measured(ControlItem::SlopeLength, u8"法面"_cp932, "", TargetPntType::ShoulderToe);
    slope.SetWorkType(WorkType::CutWork);
    slope.SetCode("L1 L2");
    first.GetBuildFormArray()[0].GetFormCtrlTargetArray().Add(width);
    first.GetBuildFormArray()[0].GetFormCtrlTargetArray().Add(slope);
  } else {
    AddHead(document);
    set.SetAlignment(false);
    set.SetProjectPhase("2");
    first.SetName("No.0");
    first.SetDirectionAngle("12.5");
    first.SetTargetPntID("T1");
    first.GetExistingBuildFormArray().Add(Ground());
    first.SetExistingFlag(1);
    AddTargetPoint(width, false, u8"路面"_cp932, "L1");
    AddTargetPoint(width, false, u8"路面"_cp932, "R1");
    VornFormCtrlTarget height = Measured(ControlItem::Height, u8"床掘"_cp932, "", TargetPntType::TargetPnt);
    AddTargetPoint(height, true, u8"床掘"_cp932, "A");
    set.GetFormCtrlTargetArray().Add(width);
    set.GetFormCtrlTargetArray().Add(height);
  }
  set.GetXSectionArray().Add(first);
  set.GetXSectionArray().Add(Section(0.0, {Trench(edition)}, true));
  document.sets.Add(set);
  return document;
}

// --- all members of a model as text --------------------------------------------------------------------------------

/// One line of members, each behind a bar.
class Line {
 public:
  Line(std::ostringstream& out, const char* kind) : m_out(out) { m_out << kind; }
  Line(const Line&) = delete;
  Line& operator=(const Line&) = delete;
  ~Line() { m_out << "\n"; }

  Line& operator<<(const CString& text) {
    m_out << "|" << Shown(text);
    return *this;
  }
  Line& operator<<(const NurReal& value) {
    m_out << "|" << value.Value();
    return *this;
  }
  Line& operator<<(const COleDateTime& date) {
    m_out << "|" << static_cast<int>(date.GetStatus()) << date.Format("%Y-%m-%d %H:%M:%S").GetString();
    return *this;
  }
  template <typename Number>
  Line& Count(Number number) {
    m_out << "|" << static_cast<long>(number);
    return *this;
  }

 private:
  std::ostringstream& m_out;
};

void DumpTargets(const Vorn_FormCtrlTargetArray& targets, std::ostringstream& out) {
  for (const VornFormCtrlTarget& target : targets) {
    (Line(out, "target") << target.GetCodeName() << target.GetTargetScope() << target.GetTargetRegio())
        .Count(target.GetWorkType())
        .Count(target.GetControlItem())
        .Count(target.GetTargetPntType())
        .Count(target.GetSerialID());
    for (const VornFormCtrlTargetPnt& point : target.GetTargetPntArray()) {
      (Line(out, "target point") << point.GetCumulativeDist() << point.GetBuildFormName() << point.GetCode())
          .Count(point.GetXSectChg());
    }
  }
}

void DumpForm(const VornBuildForm& form, std::ostringstream& out) {
  Line(out, "form") << form.GetName() << form.GetXSectType();
  for (const VornComposedPnt& point : form.GetComposedPntArray()) {
    (Line(out, "point") << point.GetCode() << point.GetX() << point.GetY())
        .Count(point.GetLocation())
        .Count(point.GetComponentType())
        .Count(point.GetSlopeType())
        .Count(point.GetDataType())
        .Count(point.GetExistence())
        .Count(point.GetSeriesPnt())
        .Count(point.GetSerialID());
  }
  DumpTargets(form.GetFormCtrlTargetArray(), out);
}

void DumpSection(const VornXSection& section, std::ostringstream& out) {
  (Line(out, "section") << section.GetName() << section.GetCumulativeDist() << section.GetDirectionAngle()
                        << section.GetTargetPntID())
      .Count(section.GetXSectChg())
      .Count(section.GetControlSect())
      .Count(section.GetExistingFlag());
  for (const VornBuildForm& form : section.GetBuildFormArray()) DumpForm(form, out);
  for (const VornExistingBuildForm& ground : section.GetExistingBuildFormArray()) {
    Line(out, "ground") << ground.GetName();
    for (const VornExistingComposedPnt& point : ground.GetComposedPntArray()) {
      Line(out, "ground point") << point.GetName() << point.GetCLDist() << point.GetGh();
    }
  }
}

std::string Dump(const DesignDocument& document) {
  std::ostringstream out;
  out << EditionName(document.edition) << "\n";
  for (const VornFileInfo& info : document.fileInfos) {
    Line(out, "file") << info.GetCreateDate() << info.GetChangeDate() << info.GetNote();
  }
  if (document.hasStructureType) {
    const VornStructureType& type = document.structureType;
    Line(out, "type") << type.GetTypeStr() << type.GetJobName() << type.GetCompany() << type.GetStationType();
  }
  for (const VornXSections& set : document.sets) {
    (Line(out, "set") << set.GetRefAlign() << set.GetRefVertical() << set.GetProjectPhase()).Count(set.GetAlignment());
    for (const VornXSection& section : set.GetXSectionArray()) DumpSection(section, out);
    DumpTargets(set.GetFormCtrlTargetArray(), out);
  }
  return out.str();
}

// --- tests ---------------------------------------------------------------------------------------------------------

class GoldenDocuments : public testing::TestWithParam<Edition> {};

INSTANTIATE_TEST_SUITE_P(Editions, GoldenDocuments, testing::ValuesIn(kWritableEditions), EditionTestName);

TEST_P(GoldenDocuments, AreWrittenByteForByte) {
  DesignDocument document = EveryElement(GetParam());
  EXPECT_EQ(WriteText(document), GoldenDocument(GetParam()));
}

TEST_P(GoldenDocuments, ReadBackToTheSameModel) {
  const DesignDocument document = ReadText(GoldenDocument(GetParam()));
  EXPECT_EQ(Dump(document), Dump(EveryElement(GetParam())));
  EXPECT_TRUE(document.carried.IsEmpty());
}

TEST_P(GoldenDocuments, AreRewrittenByteForByte) {
  EXPECT_EQ(Rewritten(GoldenDocument(GetParam())), GoldenDocument(GetParam()));
}

}  // namespace
}  // namespace vorn_host
