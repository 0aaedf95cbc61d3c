#include "vorn/types/bld_name_map.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

#include "tests/allocation_failure/failing_allocation.h"
#include "tests/model/model_builders.h"
#include "tests/support/archive_bytes.h"

// What the build-name registry keeps when memory runs out half-way.

namespace {

using allocation_test::FailEachAllocation;
using testing::ElementsAre;

// Too long to be held without an allocation.
constexpr const char* kOldKey = "a class of work that is there from the beginning";
constexpr const char* kNewKey = "a class of work that comes";
constexpr const char* kOldName = "a name that is there from the beginning";
constexpr const char* kNewName = "a name that comes after the other one";

VornBldNameMap OldRegistry() {
  VornBldNameMap registry;
  registry.Set(kOldKey, kOldName);
  return registry;
}

void ExpectOldRegistry(const VornBldNameMap& registry) {
  ASSERT_EQ(registry.GetCount(), 1);
  const VornBldNameList* names = registry.Get(kOldKey);
  ASSERT_NE(names, nullptr);
  ASSERT_EQ(names->GetCount(), 1);
  EXPECT_EQ(names->begin()->GetName(), kOldName);
}

test_support::Bytes StoredNewRegistry() {
  VornBldNameMap registry;
  registry.Set(kNewKey, kNewName);
  registry.Set(kNewKey, kOldName);
  registry.Set(kOldKey, kNewName);
  return test_support::Stored([&](CArchive& ar) { registry.Serialize(ar); });
}

Vorn_XSectionArray SectionsWith(const char* type, const char* name) {
  VornBuildForm form = model_test::FormOf(name, {});
  form.SetXSectType(type);
  Vorn_XSectionArray sections;
  sections.SetSize(1);
  sections[0].GetBuildFormArray().Add(form);
  return sections;
}

TEST(RegistryWithoutMemory, SetLeavesNoClassWithoutItsName) {
  VornBldNameMap registry;
  const CString key(kNewKey);
  const CString name(kNewName);
  FailEachAllocation([&] { registry = OldRegistry(); }, [&] { registry.Set(key, name); },
                     [&] { ExpectOldRegistry(registry); });
  EXPECT_TRUE(registry.IsExist(kNewKey, name));
}

TEST(RegistryWithoutMemory, SetLeavesAListAsItWas) {
  VornBldNameMap registry;
  const CString key(kOldKey);
  const CString name(kNewName);
  FailEachAllocation([&] { registry = OldRegistry(); }, [&] { registry.Set(key, name); },
                     [&] { ExpectOldRegistry(registry); });
  EXPECT_EQ(registry.Get(kOldKey)->GetCount(), 2);
}

TEST(RegistryWithoutMemory, InitiateLeavesTheRegistryOfTheProcess) {
  VornBldNameMap& registry = VornBldNameMap::Instance();
  Vorn_XSectionArray sections = SectionsWith(kNewKey, kNewName);
  sections[0].GetBuildFormArray().Add(model_test::FormOf(kOldName, {}));
  FailEachAllocation([&] { registry = OldRegistry(); }, [&] { VornBldNameMap::Initiate(&sections); },
                     [&] { ExpectOldRegistry(registry); });
  EXPECT_EQ(registry.GetCount(), 2);
  registry.RemoveAll();
}

TEST(RegistryWithoutMemory, ReadingLeavesTheRegistry) {
  VornBldNameMap registry;
  const test_support::Bytes bytes = StoredNewRegistry();
  const auto read = [&] {
    test_support::LoadingArchive ar(bytes);
    registry.Serialize(*ar);
  };
  FailEachAllocation([&] { registry = OldRegistry(); }, read, [&] { ExpectOldRegistry(registry); });
  EXPECT_EQ(registry.GetCount(), 2);
}

TEST(RegistryWithoutMemory, TakesAListOrNot) {
  VornBldNameMap registry;
  VornBldNameList list;
  for (const char* name : {kNewName, kOldName}) list.AddTail(VornBuildItem(name));
  const auto prepare = [&] { registry = OldRegistry(); };
  const auto expectOld = [&] { ExpectOldRegistry(registry); };
  for (const char* key : {kOldKey, kNewKey}) {
    FailEachAllocation(
        prepare, [&] { registry.SetAt(key, list); }, expectOld);
    EXPECT_EQ(registry.Get(key)->GetCount(), 2);
    FailEachAllocation(
        prepare, [&] { registry.SetAt(key, VornBldNameList(list)); }, expectOld);
    EXPECT_EQ(registry.Get(key)->GetCount(), 2);
  }
  FailEachAllocation(
      prepare, [&] { (void)registry[kNewKey]; }, expectOld);
  EXPECT_EQ(registry.GetCount(), 2);
  FailEachAllocation(
      prepare, [&] { EXPECT_TRUE(registry.RemoveKey(kOldKey)); }, expectOld);
  EXPECT_TRUE(registry.IsEmpty());
}

TEST(RegistryWithoutMemory, LookupLeavesTheOutput) {
  const VornBldNameMap registry = OldRegistry();
  VornBldNameList list;
  const auto prepare = [&] {
    list.RemoveAll();
    for (int i = 0; i < 2; ++i) list.AddTail(VornBuildItem(kNewName));
  };
  FailEachAllocation(
      prepare, [&] { EXPECT_EQ(registry.Lookup(kOldKey, list), 1); },
      [&] {
        EXPECT_EQ(list.GetCount(), 2);
        EXPECT_EQ(list.begin()->GetName(), kNewName);
      });
  EXPECT_EQ(list.GetCount(), 1);
}

TEST(RegistryWithoutMemory, CheckUsedNameLeavesTheMarks) {
  VornBldNameList list;
  const Vorn_XSectionArray sections = SectionsWith(kNewKey, kNewName);
  const CString key(kNewKey);
  const auto prepare = [&] {
    list.RemoveAll();
    list.AddTail(VornBuildItem(kNewName));
    list.AddTail(VornBuildItem(kOldName));
    for (VornBuildItem& item : list) item.SetUsed(5);
  };
  const auto marks = [&] {
    std::vector<int> used;
    for (const VornBuildItem& item : list) used.push_back(item.GetUsed());
    return used;
  };
  FailEachAllocation(
      prepare, [&] { list.CheckUsedName(key, sections); }, [&] { EXPECT_THAT(marks(), ElementsAre(5, 5)); });
  EXPECT_THAT(marks(), ElementsAre(1, 0));
}

}  // namespace
