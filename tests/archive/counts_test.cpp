#include <gtest/gtest.h>

#include <cstdint>

#include "tests/archive/full_records.h"
#include "tests/support/boastful_file.h"
#include "vorn/types/bld_name_map.h"

// Counts that no collection holds: more elements than an `int` tells, in a file that claims to have the bytes for them.

namespace archive_test {
namespace {

using test_support::operator+;

/// Reads such counts behind `head` into a collection of one element: they have to be refused, and the element to stay.
template <typename Collection, typename Read>
void ExpectRefused(const Collection& kept, const Bytes& head, Read read) {
  for (const std::uint32_t count : {0x80000000u, 0xFFFFFFFFu}) {
    test_support::BoastfulFile file(head + U32(count).bytes, std::uint64_t{1} << 40);
    CArchive ar(&file, CArchive::load);
    Collection collection = kept;
    EXPECT_EQ(test_support::ArchiveRefusal([&] { read(collection, ar); }), CArchiveException::badIndex) << count;
    EXPECT_EQ(collection.GetCount(), 1) << count;
  }
}

template <typename Collection>
void ExpectRefused(const Collection& kept, const Bytes& head = {}) {
  ExpectRefused(kept, head, [](Collection& collection, CArchive& ar) { collection.Serialize(ar); });
}

template <typename Collection>
void ExpectRefused(const CString& tag, const Bytes& head = {}) {
  Collection kept;
  kept.SetSize(1);
  ExpectRefused(kept, head, [&](Collection& collection, CArchive& ar) { collection.Serialize(ar, tag); });
}

class CountsAboveTheLargestInt : public InStoreVersion {};
IN_EVERY_STORE_VERSION(CountsAboveTheLargestInt);

TEST_P(CountsAboveTheLargestInt, AreRefusedInCollections) {
  ExpectRefused<Vorn_XSectionArray>(Tag());
  ExpectRefused<VornExistingBuildFormArray>(Tag());
  ExpectRefused<VornExistingComposedPntArray>(Tag());
  ExpectRefused<VornFormCtrlTargetPntArray>(Tag());
  ExpectRefused<VornFileInfoArray>(Tag());
  ExpectRefused<Vorn_Array<VornPresPoint>>(Tag());
}

TEST_P(CountsAboveTheLargestInt, AreRefusedInCollectionsThatNumberTheirElements) {
  const Bytes nextSerial = Read().IsFrom("05.00") ? U32(5).bytes : Bytes();
  ExpectRefused<Vorn_BuildFormArray>(Tag(), nextSerial);
  ExpectRefused<Vorn_ComposedPntArray>(Tag(), nextSerial);
  ExpectRefused<Vorn_FormCtrlTargetArray>(Tag(), nextSerial);
}

TEST_P(CountsAboveTheLargestInt, AreRefusedInSetsOfMeasurements) {
  ExpectRefused<VornMeasureInfos>(Tag(), EmptyTable().bytes);
}

TEST(CountsAboveTheLargestIntInPlainArrays, AreRefused) {
  VornUIntArray identifiers;
  identifiers.Add(1);
  ExpectRefused(identifiers);
  VornIndexArray indices;
  indices.Add(1);
  ExpectRefused(indices);
}

TEST(CountsAboveTheLargestIntInTheNameRegistry, AreRefused) {
  VornBldNameList list;
  list.AddTail(VornBuildItem("a"));
  ExpectRefused(list, EmptyTable().bytes);
  VornBldNameMap registry;
  registry.SetAt("key", list);
  ExpectRefused(registry, EmptyTable().bytes);
  ExpectRefused(registry, EmptyTable().bytes + U32(1).bytes + Text("k").bytes + EmptyTable().bytes);
}

}  // namespace
}  // namespace archive_test
