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

using allocation_test::Changes;
using allocation_test::ExpectNoAllocation;
using allocation_test::ExpectOldOrNew;
using allocation_test::FailEachAllocation;
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

/// A new object holds nothing that takes memory: being assigned one needs none.
template <typename Object>
void ExpectAssignedWholly(const Object& object) {
  ExpectOldOrNew(Object(), [&](Object& changing) { changing = object; });
  const Object empty;
  ExpectNoAllocation(object, [&](Object& changing) { changing = empty; });
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
  ExpectAssignedWholly(form.GetCrossLeft());
  ExpectAssignedWholly(form.GetFormCtrlTargetArray()[0]);
  ExpectAssignedWholly(form.GetFormCtrlTargetArray()[0].GetTargetPntArray()[0]);

  const VornXSection section = FullSection(20.0);
  ExpectAssignedWholly(section);
  ExpectAssignedWholly(section.GetExistingBuildFormArray()[0]);
  ExpectAssignedWholly(section.GetExistingBuildFormArray()[0].GetComposedPntArray()[0]);
  VornXSections set = FullSet();
  set.SetHiErr(true);
  set.SetRefAlign(kNewName);
  set.GetXSectionArray().RemoveAt(0);
  ExpectAssignedWholly(FullSet(), set);

  VornFileInfo info;
  info.SetNote(kNewName);
  info.GetCreateDate().SetStatus(COleDateTime::valid);
  ExpectAssignedWholly(info);
  VornStructureType type;
  type.SetJobName(kNewName);
  type.SetCompany(allocation_test::kSurface);
  ExpectAssignedWholly(type);
}

// --- arrays ----------------------------------------------------------------------------------------------------------

/// What is done to an array, as it is and with room for what comes: then elements move within it.
template <typename Array, typename Item>
class WholeArrays {
 public:
  explicit WholeArrays(const Array& array) : m_array(array) {}

  /// An action that allocates, room or none.
  template <typename Action>
  void Expect(Action action) const {
    ExpectOldOrNew(m_array, action);
    ExpectOldOrNew(m_array, action, Leaves::Whole, Changes::Always, MakeRoom);
  }
  /// An action that allocates for its items: plain ones need no memory but room.
  template <typename Action>
  void ExpectForItems(Action action) const {
    if constexpr (!kPlainItems) return Expect(action);
    ExpectForRoom(action);
  }
  /// An action that allocates for room alone.
  template <typename Action>
  void ExpectForRoom(Action action) const {
    ExpectOldOrNew(m_array, action);
    ExpectNoAllocation(m_array, action, MakeRoom);
  }
  /// An action that puts an item in the place of another one.
  template <typename Action>
  void ExpectInPlace(Action action) const {
    if constexpr (!kPlainItems) return Expect(action);
    ExpectNoAllocation(m_array, action);
  }

 private:
  static constexpr bool kPlainItems = std::is_trivially_copyable_v<Item>;

  static void MakeRoom(Array& array) { array.Reserve(50); }

  const Array& m_array;
};

template <typename Array, typename Item>
void ExpectWholeArrays(const Array& array, const Item& item) {
  const WholeArrays<Array, Item> arrays(array);
  arrays.ExpectForItems([&](Array& changing) { changing.Add(item); });
  arrays.ExpectForItems([&](Array& changing) { changing.Add(Item(item)); });
  arrays.ExpectInPlace([&](Array& changing) { changing.SetAt(1, item); });
  for (const int index : {0, 1, array.GetSize()}) {
    arrays.ExpectForItems([&](Array& changing) { changing.InsertAt(index, item); });
  }
  arrays.Expect([&](Array& changing) { changing.InsertAt(changing.GetSize() + 3, item); });
  arrays.Expect([&](Array& changing) { changing.Append(Array(changing)); });
  Array longer = array;
  longer.Add(item);
  arrays.ExpectForItems([&](Array& changing) { changing.Copy(longer); });
  // One more than the array has: it has to grow twice for them.
  ExpectOldOrNew(array, [&](Array& changing) { changing.Append(longer); });
  arrays.ExpectForRoom([&](Array& changing) { changing.SetSize(20); });
  arrays.ExpectForRoom([](Array& changing) { changing.AddDefault(); });
  ExpectOldOrNew(Array(), [](Array& changing) { changing.AddDefault(); });
  ExpectNoAllocation(array, [](Array& changing) { changing.RemoveIndices([](int index) { return index == 0; }); });
  ExpectNoAllocation(array, [](Array& changing) { changing.RemoveIf([](const Item&) { return true; }); });
  ExpectNoAllocation(array, [](Array& changing) { changing.RemoveAt(0); });
}

template <typename Array, typename Item>
void ExpectWholePlainArrays(const Array& array, const Item& item) {
  ExpectWholeArrays(array, item);
  const WholeArrays<Array, Item> arrays(array);
  arrays.ExpectInPlace([&](Array& changing) { changing.SetAtGrow(0, item); });
  arrays.ExpectForItems([&](Array& changing) { changing.SetAtGrow(10, item); });
  for (const int index : {0, 1, array.GetSize(), array.GetSize() + 3}) {
    arrays.Expect([&](Array& changing) { changing.InsertAt(index, item, 4); });
  }
}

TEST(ArraysWithoutMemory, AreAsTheyWere) {
  KelArray<CString> texts;
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

VornComposedPnt PointWithBothRecords() {
  return FullPoint(VornLocation::Left, 1.0, 2.0, "a code of the left shoulder");
}
VornComposedPnt PointWithoutSubRecord() { return model_test::PointOn(VornLocation::Left); }

template <typename Action>
void ExpectWholePoint(Action action) {
  ExpectOldOrNew(PointWithBothRecords(), action);
  ExpectOldOrNew(PointWithoutSubRecord(), action);
}

/// An action that needs memory for nothing but a sub record.
template <typename Action>
void ExpectWholeSubRecord(PntType t, Action action) {
  ExpectNoAllocation(PointWithBothRecords(), action);
  if (t == PntType::Main) {
    ExpectNoAllocation(PointWithoutSubRecord(), action);
  } else {
    ExpectOldOrNew(PointWithoutSubRecord(), action);
  }
}

TEST(PointWithoutMemory, IsAsItWasInEveryOperation) {
  for (const PntType t : {PntType::Main, PntType::Sub, PntType::Both}) {
    ExpectWholePoint([t](VornComposedPnt& point) { point.SetCode(kNewName, t); });
    ExpectWholePoint([t](VornComposedPnt& point) { point.SetXSectName(kNewName, t); });
    ExpectWholePoint([t](VornComposedPnt& point) { point.SetXSectName(kNewName, 77, t); });
    ExpectWholeSubRecord(t, [t](VornComposedPnt& point) { point.SetXSectName("", 77, t); });
    ExpectWholeSubRecord(t, [t](VornComposedPnt& point) { point.SetXSectType(7, t); });
    ExpectWholeSubRecord(t, [t](VornComposedPnt& point) { point.SetXSectNameID(7, t); });
    ExpectWholeSubRecord(t, [t](VornComposedPnt& point) { point.SetDekiPairID(7, t); });
    ExpectWholeSubRecord(t, [t](VornComposedPnt& point) { point.SetConnectionAutoLinePrev(1, t); });
    ExpectWholeSubRecord(t, [t](VornComposedPnt& point) { point.SetConnectionAutoLineNext(1, t); });
    ExpectNoAllocation(PointWithBothRecords(), [t](VornComposedPnt& point) { point.InitDetail(t); });
  }
  for (const PntType t : {PntType::Main, PntType::Sub}) {
    ExpectWholePoint([t](VornComposedPnt& point) { point.Measure(t).Add({3, 4}); });
    ExpectWholeSubRecord(t, [t](VornComposedPnt& point) { point.FormID(t) = 7; });
  }
  ExpectWholeSubRecord(PntType::Both, [](VornComposedPnt& point) { point.SetConnectionAutoLine(0, 1); });
  ExpectNoAllocation(PointWithBothRecords(), [](VornComposedPnt& point) { point.ClearConnectInfo(true); });
  VornComposedPnt named = model_test::PointOn(VornLocation::Left);  // in its main role only
  named.SetXSectName(kNewName);
  ExpectOldOrNew(named, [](VornComposedPnt& point) { point.SetXSectName("", 77, PntType::Both); });
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

TEST(PointsWithoutMemory, AreNumberedAndPlaced) {
  using Points = Vorn_ComposedPntArray;
  Points points = FullForm(kNewName).GetComposedPntArray();
  ExpectNoAllocation(points, [](Points& changing) { changing.RecalcDistFromCL(true, 1.5); });
  ExpectNoAllocation(points, [](Points& changing) { changing.RecalcHeight(false, 11.0); });
  for (VornComposedPnt& point : points) point.SetSerialID(kVornNoID);
  ExpectNoAllocation(points, [](Points& changing) { changing.RegulateSerialID(); });
  ExpectNoAllocation(points, [](Points& changing) { changing.SetSerialID(1); });
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

TEST(OutputsWithoutMemory, OfPointsAreAsTheyWere) {
  const Vorn_ComposedPntArray points = FullForm(kNewName).GetComposedPntArray();
  VornIndexArray other;
  other.Add(77);
  struct Outputs {
    int center = 88;
    VornIndexArray left;
    VornIndexArray right;
  };
  const Outputs old{88, other, other};
  Outputs now;
  const auto expectOld = [&] {
    EXPECT_EQ(now.center, 88);
    EXPECT_TRUE(now.left == other);
    EXPECT_TRUE(now.right == other);
  };
  const auto reset = [&] { now = old; };
  FailEachAllocation(
      reset, [&] { EXPECT_TRUE(points.QueryIndexArray(now.left, now.right)); }, expectOld);
  EXPECT_EQ(now.left.GetSize(), 3);
  EXPECT_EQ(now.right.GetSize(), 3);
  FailEachAllocation(
      reset, [&] { EXPECT_TRUE(points.QueryIndexArray(now.center, now.left, now.right)); }, expectOld);
  EXPECT_EQ(now.center, 0);
  EXPECT_EQ(now.left.GetSize(), 2);
  EXPECT_EQ(now.right.GetSize(), 2);
  FailEachAllocation(
      reset, [&] { EXPECT_TRUE(points.QueryIndexArrayLtoR(now.left)); }, expectOld);
  EXPECT_EQ(now.left.GetSize(), 5);

  Vorn_ComposedPntArray ends;
  ends.SetSize(2);
  ExpectOldOrNew(
      ends, [&](Vorn_ComposedPntArray& changing) { EXPECT_TRUE(points.QueryTermPoint(changing[0], changing[1])); });
  ExpectOldOrNew(VornUIntArray(), [](VornUIntArray& ids) { PointWithBothRecords().ConnectIDs(ids); });
  ExpectOldOrNew(CString(), [](CString& code) { EXPECT_TRUE(FullForm(kNewName).GetCodeFromPnt({9.5, -2.0}, code)); });
  ExpectOldOrNew(KelPointArray(), [](KelPointArray& crossings) {
    EXPECT_GT(FullSection(20.0).GetCrossPoint(VornLocation::Left, crossings), 0);
  });
}

TEST(OutputsWithoutMemory, GetTheFormOfANameOrStay) {
  const VornTypeManager manager;
  const VornFormAttr other{"another form", {}};
  VornFormAttr attr;
  // Of road earthwork, and of none: the search goes on to the end then.
  VornTypeManager::List forms;
  manager.Road(forms);
  for (const CString& name : {CString(forms[0].name), CString(kNewName)}) {
    FailEachAllocation([&] { attr = other; }, [&] { (void)manager.Find(attr, name); },
                       [&] { EXPECT_EQ(attr.name, other.name); });
    EXPECT_NE(attr.name, other.name);
  }
  const auto replace = [&] { manager.Type(VornStructureType::Type::RoadEarthwork, forms, true); };
  FailEachAllocation(
      [&] {
        forms.RemoveAll();
        forms.Add(other);
      },
      replace,
      [&] {
        ASSERT_EQ(forms.GetSize(), 1);
        EXPECT_EQ(forms[0].name, other.name);
      });
  EXPECT_GT(forms.GetSize(), 1);
}

TEST(OutputsWithoutMemory, GetAllFormsOfAKindOrNone) {
  const VornTypeManager manager;
  for (const auto append : {&VornTypeManager::Road, &VornTypeManager::River, &VornTypeManager::Other}) {
    VornTypeManager::List forms;
    FailEachAllocation([&] { forms = VornTypeManager::List(); }, [&] { (manager.*append)(forms); },
                       [&] { EXPECT_TRUE(forms.IsEmpty()); });
    EXPECT_FALSE(forms.IsEmpty());
  }
}

TEST(SchemaWithoutMemory, KeepsItsEdition) {
  const VornSchema kept = VornSchema::Instance();
  VornSchema& schema = VornSchema::Instance();
  schema.SetVersion(VornSchema::Version20);
  const CString location = schema.Location(VornSchema::Version41);
  FailEachAllocation([&] { schema.SetVersion(VornSchema::Version20); },
                     [&] { EXPECT_TRUE(schema.AnalyzeVersion("tsf:TSFormControlData", location)); },
                     [&] {
                       EXPECT_EQ(schema.GetVersion(), VornSchema::Version20);
                       EXPECT_EQ(schema.Kind(), VornSchema::KindTsf);
                     });
  EXPECT_EQ(schema.GetVersion(), VornSchema::Version41);
  schema = kept;
}

TEST(SchemaWithoutMemory, KeepsItsNamespaceHosts) {
  const VornNamespaceHosts kept = VornSchema::NamespaceHosts();
  const VornNamespaceHosts hosts{"http://gis.example.org/a-long-path", "http://main.example.org/a-long-path",
                                 "http://ministry.example.org/a-long-path"};
  const CString tsf = VornSchema::Instance().Tsf();
  FailEachAllocation([] {}, [&] { VornSchema::SetNamespaceHosts(hosts); },
                     [&] {
                       EXPECT_EQ(VornSchema::NamespaceHosts().gis, kept.gis);
                       EXPECT_EQ(VornSchema::NamespaceHosts().main, kept.main);
                       EXPECT_EQ(VornSchema::NamespaceHosts().ministry, kept.ministry);
                       EXPECT_EQ(VornSchema::Instance().Tsf(), tsf);
                     });
  EXPECT_EQ(VornSchema::NamespaceHosts().ministry, hosts.ministry);
  VornSchema::SetNamespaceHosts(kept);
}

// --- tables of values ------------------------------------------------------------------------------------------------

TEST(TableWithoutMemory, IsAsItWas) {
  constexpr std::int32_t kKey = 3;
  DovDataTable table;
  const auto prepare = [&] {
    table.RemoveAll();
    table.SetAt(kKey, CString("a text that is there from the beginning"));
  };
  const auto expectOld = [&] {
    CString text;
    EXPECT_EQ(table.GetCount(), 1);
    EXPECT_TRUE(table.Lookup(kKey, text));
    EXPECT_EQ(text, "a text that is there from the beginning");
  };
  const CString longer = CString(kNewName) + kNewName;
  FailEachAllocation(
      prepare, [&] { table.SetAt(kKey, longer); }, expectOld);
  FailEachAllocation(
      prepare, [&] { table.SetAt(kKey + 1, longer); }, expectOld);
  FailEachAllocation(
      prepare, [&] { table.SetAt(kKey + 1, std::int32_t{5}); }, expectOld);
  FailEachAllocation(
      prepare, [&] { table.SetAt(kKey + 1, 5.0); }, expectOld);
  const auto stored = test_support::Stored([&](CArchive& ar) {
    DovDataTable other;
    other.SetAt(kKey, longer);
    other.SetAt(kKey + 1, longer);
    other.Serialize(ar);
  });
  const auto load = [&] {
    test_support::LoadingArchive ar(stored);
    table.Serialize(*ar);
  };
  FailEachAllocation(prepare, load, expectOld);
  EXPECT_EQ(table.GetCount(), 2);
  ExpectOldOrNew(CString(), [&](CString& text) { EXPECT_TRUE(table.Lookup(kKey, text)); });
}

}  // namespace
