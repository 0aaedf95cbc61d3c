#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <utility>

#include "tests/allocation_failure/full_objects.h"
#include "tests/allocation_failure/old_or_new.h"
#include "tests/support/archive_bytes.h"
#include "vorn/framework/schema.h"
#include "vorn/platform/dov_data_table.h"
#include "vorn/types/type_manager.h"

// What values and collections keep when memory runs out while they are assigned and filled.

namespace {

using allocation_test::ExpectOldOrNew;
using allocation_test::FullForm;
using allocation_test::FullPoint;
using allocation_test::FullSection;
using allocation_test::FullSet;
using allocation_test::kNewName;
using allocation_test::Leaves;
using PntType = VornComposedPnt::PntType;

// --- moving and destroying: what arrays, and everything that builds first and moves then, count on ------------------

template <typename... Types>
constexpr bool kMoveWithoutFailing = ((std::is_nothrow_move_constructible_v<Types> &&
                                       std::is_nothrow_move_assignable_v<Types> &&
                                       std::is_nothrow_destructible_v<Types>)&&...);

static_assert(kMoveWithoutFailing<CString, CStringArray, CStringList, PimAttribute, DovDataTable, VornUIntArray,
                                  VornIndexArray, VornMeasureInfos, KelPointArray>);
static_assert(kMoveWithoutFailing<VornComposedPnt::Detail, VornComposedPnt, VornCrossPointInfo, VornFormCtrlTargetPnt,
                                  VornFormCtrlTarget, VornBuildForm, VornExistingComposedPnt, VornExistingBuildForm,
                                  VornXSection, VornXSections, VornFileInfo, VornStructureType>);
static_assert(kMoveWithoutFailing<Vorn_ComposedPntArray, VornFormCtrlTargetPntArray, Vorn_FormCtrlTargetArray,
                                  Vorn_BuildFormArray, VornExistingComposedPntArray, VornExistingBuildFormArray,
                                  Vorn_XSectionArray, Vorn_XSectionsArray, VornFileInfoArray>);
static_assert(kMoveWithoutFailing<VornBuildItem, VornBldNameList, VornBldNameMap>);
static_assert(kMoveWithoutFailing<VornCrsData, VornCtrlPoint, VornBenchMark, VornGmPnt, VornGmPnts, VornCtrlPoints,
                                  VornCreatorInfoData, VornProjectData, VornAlignment, VornAlignmentsArray,
                                  VornRoadInfo, VornRoadGmData, VornFormCtrl, VornInfoConstrcut, VornRoadCenterData,
                                  VornLandXMLProject, VornLandXMLAlignment, VornLandXMLData, VornLinearXMLData>);

// --- assigning -------------------------------------------------------------------------------------------------------

template <typename Object>
void ExpectAssignedWholly(const Object& object, const Object& other) {
  ExpectOldOrNew(object, [&](Object& changing) { changing = other; });
  ExpectOldOrNew(other, [&](Object& changing) { changing = object; });
}

TEST(AssigningWithoutMemory, LeavesEveryValueAsItWas) {
  VornComposedPnt other = FullPoint(VornLocation::Left, 1.0, 2.0, "a code that is another one");
  other.Measure().RemoveAll();
  other.SetXSectName(kNewName, PntType::Both);
  ExpectAssignedWholly(FullPoint(VornLocation::Right, 3.0, 4.0, "a code of the right one"), other);

  VornBuildForm form = FullForm(kNewName);
  form.GetComposedPntArray().RemoveAt(1, 2);
  form.GetComposedPntArray()[0].SetCode("a code that is another one");
  ExpectAssignedWholly(FullForm(allocation_test::kSurface), form);
  ExpectAssignedWholly(form.GetCrossLeft(), VornCrossPointInfo());
  ExpectAssignedWholly(form.GetFormCtrlTargetArray()[0], VornFormCtrlTarget());
  ExpectAssignedWholly(form.GetFormCtrlTargetArray()[0].GetTargetPntArray()[0], VornFormCtrlTargetPnt());

  const VornXSection section = FullSection(20.0);
  ExpectAssignedWholly(section, VornXSection());
  ExpectAssignedWholly(section.GetExistingBuildFormArray()[0], VornExistingBuildForm());
  ExpectAssignedWholly(section.GetExistingBuildFormArray()[0].GetComposedPntArray()[0], VornExistingComposedPnt());
  VornXSections set = FullSet();
  set.SetHiErr(true);
  set.SetRefAlign(kNewName);
  set.GetXSectionArray().RemoveAt(0);
  ExpectAssignedWholly(FullSet(), set);

  VornFileInfo info;
  info.SetNote(kNewName);
  info.GetCreateDate().SetStatus(COleDateTime::valid);
  ExpectAssignedWholly(VornFileInfo(), info);
  VornStructureType type;
  type.SetJobName(kNewName);
  type.SetCompany(allocation_test::kSurface);
  ExpectAssignedWholly(VornStructureType(), type);
}

// --- arrays ----------------------------------------------------------------------------------------------------------

template <typename Array, typename Item>
void ExpectWholeArrays(const Array& array, const Item& item) {
  const auto expect = [&](auto action) {
    ExpectOldOrNew(array, action);
    // With room for what comes, elements move within the array.
    ExpectOldOrNew(array, action, Leaves::Whole, [](Array& changing) { changing.Reserve(50); });
  };
  expect([&](Array& changing) { changing.Add(item); });
  expect([&](Array& changing) { changing.Add(Item(item)); });
  expect([&](Array& changing) { changing.SetAt(1, item); });
  for (const int index : {0, 1, array.GetSize(), array.GetSize() + 3}) {
    expect([&](Array& changing) { changing.InsertAt(index, item); });
  }
  expect([&](Array& changing) { changing.Append(Array(changing)); });
  Array longer = array;
  longer.Add(item);
  expect([&](Array& changing) { changing.Copy(longer); });
  // One more than the array has: it has to grow twice for them.
  ExpectOldOrNew(array, [&](Array& changing) { changing.Append(longer); });
  expect([&](Array& changing) { changing.SetSize(20); });
}

template <typename Array, typename Item>
void ExpectWholePlainArrays(const Array& array, const Item& item) {
  ExpectWholeArrays(array, item);
  const auto expect = [&](auto action) {
    ExpectOldOrNew(array, action);
    ExpectOldOrNew(array, action, Leaves::Whole, [](Array& changing) { changing.Reserve(50); });
  };
  expect([&](Array& changing) { changing.SetAtGrow(0, item); });
  expect([&](Array& changing) { changing.SetAtGrow(10, item); });
  for (const int index : {0, 1, array.GetSize(), array.GetSize() + 3}) {
    expect([&](Array& changing) { changing.InsertAt(index, item, 4); });
  }
}

TEST(ArraysWithoutMemory, AreAsTheyWere) {
  CStringArray texts;
  for (const char* text : {"a text that takes memory", "another text that does so", "a third one, the last of them"}) {
    texts.Add(text);
  }
  ExpectWholePlainArrays(texts, CString(kNewName));
  VornUIntArray numbers;
  for (const std::uint32_t number : {3u, 1u, 3u}) numbers.Add(number);
  ExpectWholePlainArrays(numbers, 5u);
  ExpectOldOrNew(numbers, [](VornUIntArray& changing) { changing.RemoveDup(); });

  const VornBuildForm form = FullForm(allocation_test::kSurface);
  VornComposedPnt point = FullPoint(VornLocation::Left, 1.0, 2.0, "a code that is another one");
  ExpectWholeArrays(form.GetComposedPntArray(), point);
  ExpectWholeArrays(form.GetFormCtrlTargetArray(), VornFormCtrlTarget(form.GetFormCtrlTargetArray()[0]));
  ExpectWholeArrays(FullSection(20.0).GetBuildFormArray(), form);
  const auto sectionAt = [](double station) {
    VornXSection section = model_test::SectionAt(station);
    section.SetName(kNewName);
    section.SetTargetPntID("an identifier of the target");
    return section;
  };
  Vorn_XSectionArray sections;
  for (const double station : {20.0, 40.0}) sections.Add(sectionAt(station));
  ExpectWholePlainArrays(sections, sectionAt(30.0));
  ExpectOldOrNew(sections, [&](Vorn_XSectionArray& changing) { changing.Insert(sectionAt(30.0)); });
}

TEST(ArraysWithoutMemory, OfPointsAppendWholly) {
  ExpectOldOrNew(FullForm(kNewName).GetComposedPntArray(),
                 [](Vorn_ComposedPntArray& points) { points.Append(points); });
}

TEST(ListsWithoutMemory, AreAsTheyWere) {
  CStringList list;
  list.AddTail("a text that takes memory");
  ExpectOldOrNew(list, [](CStringList& changing) { changing.AddTail(CString(kNewName)); });
  const auto stored = test_support::Stored([&](CArchive& ar) {
    CStringList more;
    for (int i = 0; i < 3; ++i) more.AddTail(kNewName);
    more.Serialize(ar);
  });
  ExpectOldOrNew(list, [&](CStringList& changing) {
    test_support::LoadingArchive ar(stored);
    changing.Serialize(*ar);
  });

  VornBldNameList names;
  names.AddTail(VornBuildItem(kNewName));
  const auto storedNames = test_support::Stored([&](CArchive& ar) {
    VornBldNameList more;
    for (int i = 0; i < 3; ++i) more.AddTail(VornBuildItem(kNewName));
    more.Serialize(ar);
  });
  ExpectOldOrNew(names, [&](VornBldNameList& changing) {
    test_support::LoadingArchive ar(storedNames);
    changing.Serialize(*ar);
  });
}

// --- composed points -------------------------------------------------------------------------------------------------

template <typename Action>
void ExpectWholePoint(Action action) {
  ExpectOldOrNew(FullPoint(VornLocation::Left, 1.0, 2.0, "a code of the left shoulder"), action);
  ExpectOldOrNew(model_test::PointOn(VornLocation::Left), action);  // without a sub record
}

TEST(PointWithoutMemory, IsAsItWasInEveryOperation) {
  for (const PntType t : {PntType::Main, PntType::Sub, PntType::Both}) {
    ExpectWholePoint([t](VornComposedPnt& point) { point.SetCode(kNewName, t); });
    ExpectWholePoint([t](VornComposedPnt& point) { point.SetXSectName(kNewName, t); });
    ExpectWholePoint([t](VornComposedPnt& point) { point.SetXSectName(kNewName, 77, t); });
    ExpectWholePoint([t](VornComposedPnt& point) { point.SetXSectName("", 77, t); });
    ExpectWholePoint([t](VornComposedPnt& point) {
      point.SetXSectType(7, t);
      point.InitDetail(t);
    });
  }
  VornComposedPnt named = model_test::PointOn(VornLocation::Left);  // in its main role only
  named.SetXSectName(kNewName);
  ExpectOldOrNew(named, [](VornComposedPnt& point) { point.SetXSectName("", 77, PntType::Both); });
  ExpectWholePoint([](VornComposedPnt& point) { point.SetConnectionAutoLine(0, 1); });
  ExpectWholePoint([](VornComposedPnt& point) {
    point.FromMainToSub();
    point.SetXSectNameID(3, PntType::Both);
  });
  ExpectWholePoint([](VornComposedPnt& point) {
    point.CopyDetail(FullPoint(VornLocation::Right, 1.0, 2.0, "a code that is another one"));
  });
  ExpectWholePoint([](VornComposedPnt& point) {
    point.AttrCopy(FullPoint(VornLocation::Right, 1.0, 2.0, "a code that is another one"));
  });
  ExpectWholePoint([](VornComposedPnt& point) {
    VornCrossPointInfo info;
    info.SetID(4);
    info.SetDekiPairID(5);
    info.ThDPairIDs().SetSize(20);
    point.CopyConnectInfo(info);
  });
}

// --- outputs and what the process has once ---------------------------------------------------------------------------

TEST(OutputsWithoutMemory, AreAsTheyWere) {
  CStringArray texts;
  texts.Add("a text that takes memory");
  ExpectOldOrNew(texts, [](CStringArray& names) { VornStructureType::GetStructureTypes(names); });
  ExpectOldOrNew(texts,
                 [](CStringArray& items) { Vorn_Base::DivideString("one two a-third-that-takes-memory", items); });
  ExpectOldOrNew(texts, [](CStringArray& codes) { FullForm(kNewName).GetNoriCodeArray(VornLocation::Left, codes); });
}

TEST(OutputsWithoutMemory, GetAllFormsOfAKindOrNone) {
  const VornTypeManager manager;
  for (const auto append : {&VornTypeManager::Road, &VornTypeManager::River, &VornTypeManager::Other}) {
    VornTypeManager::List forms;
    allocation_test::FailEachAllocation([&] { forms = VornTypeManager::List(); }, [&] { (manager.*append)(forms); },
                                        [&] { EXPECT_TRUE(forms.IsEmpty()); });
    EXPECT_FALSE(forms.IsEmpty());
  }
}

TEST(SchemaWithoutMemory, KeepsItsEdition) {
  const VornSchema kept = VornSchema::Instance();
  VornSchema& schema = VornSchema::Instance();
  schema.SetVersion(VornSchema::Version20);
  const CString location = schema.Location(VornSchema::Version41);
  allocation_test::FailEachAllocation([&] { schema.SetVersion(VornSchema::Version20); },
                                      [&] { EXPECT_TRUE(schema.AnalyzeVersion("tsf:TSFormControlData", location)); },
                                      [&] {
                                        EXPECT_EQ(schema.GetVersion(), VornSchema::Version20);
                                        EXPECT_EQ(schema.Kind(), VornSchema::KindTsf);
                                      });
  EXPECT_EQ(schema.GetVersion(), VornSchema::Version41);
  schema = kept;
}

}  // namespace
