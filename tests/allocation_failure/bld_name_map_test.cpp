#include "vorn/types/bld_name_map.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <new>
#include <string>
#include <vector>

#include "tests/model/model_builders.h"
#include "tests/support/archive_bytes.h"

// What the build-name registry keeps when memory runs out half-way. The global allocation is replaced, to fail where a
// test wants it to: therefore an executable of its own.

namespace {

/// How many allocations succeed before one fails; none fails while negative.
std::ptrdiff_t g_succeeding = -1;

void* Allocate(std::size_t size) {
  if (g_succeeding >= 0 && g_succeeding-- == 0) throw std::bad_alloc();
  void* memory = std::malloc(size > 0 ? size : 1);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

}  // namespace

void* operator new(std::size_t size) { return Allocate(size); }
void* operator new[](std::size_t size) { return Allocate(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }

namespace {

using testing::ElementsAre;

// Too long to be held without an allocation.
constexpr const char* kOldKey = "a class of work that is there from the beginning";
constexpr const char* kNewKey = "a class of work that comes";
constexpr const char* kOldName = "a name that is there from the beginning";
constexpr const char* kNewName = "a name that comes after the other one";

/// Does something again and again, each time with a later allocation failing, until it is done without a failure.
/// `prepare` is called before, and `check` after every failure.
template <typename Prepare, typename Action, typename Check>
void FailEachAllocation(Prepare prepare, Action action, Check check) {
  for (std::ptrdiff_t succeeding = 0;; ++succeeding) {
    prepare();
    try {
      g_succeeding = succeeding;
      action();
      const bool done = g_succeeding >= 0;
      g_succeeding = -1;
      ASSERT_TRUE(done) << "a failure was swallowed";
      ASSERT_GT(succeeding, 0) << "nothing was allocated";
      return;
    } catch (const std::bad_alloc&) {
      check();
      if (testing::Test::HasFailure()) return;
    }
  }
}

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
