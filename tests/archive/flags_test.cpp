#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "tests/archive/full_records.h"

// Flags are a byte: 0 is false, anything else true, and what is written is 0 or 1.

namespace archive_test {
namespace {

/// Where the bytes of a flag lie in a record; every layout has it once.
std::size_t PlaceOf(std::string_view flag, const ExpectedBytes& record) {
  std::size_t at = 0;
  for (const ExpectedBytes::Field& field : record.Fields()) {
    if (field.name == flag && field.value.type == "bool") return at;
    at += field.value.bytes.size();
  }
  ADD_FAILURE() << "no flag \"" << flag << '"';
  return 0;
}

/// Turns one flag of a record over, reads it, and stores it again when the layout that is written has it.
template <typename Record, typename Get>
void ExpectFlag(std::string_view flag, const ExpectedBytes& read, Get get, std::string_view version, bool isWritten) {
  const std::size_t place = PlaceOf(flag, read);
  for (const int value : {0x00, 0x01, 0x02, 0x80, 0xFF}) {
    SCOPED_TRACE(testing::Message() << flag << " as " << value);
    Bytes bytes = read.All();
    bytes[place] = static_cast<std::uint8_t>(value);
    Record record;
    ReadInto(record, bytes, version);
    EXPECT_EQ(get(record), value != 0);
    if (isWritten) {
      EXPECT_EQ(StoredAs(record, version).at(place), value != 0 ? 1 : 0);
    }
  }
}

class FlagsOfArchive : public InStoreVersion {};
IN_EVERY_STORE_VERSION(FlagsOfArchive);

TEST_P(FlagsOfArchive, TellWhetherASetHasAnAlignment) {
  if (!Read().IsAfter("03.00")) return;
  const auto get = [](const VornXSections& set) { return set.GetAlignment(); };
  ExpectFlag<VornXSections>("alignment", SetBytes(Read()), get, GetParam(), true);
}

TEST_P(FlagsOfArchive, TellWhereTheShapeOfSectionsChanges) {
  const auto get = [](const VornXSection& section) { return section.GetXSectChg(); };
  ExpectFlag<VornXSection>("change of section", SectionBytes(Read(), 3), get, GetParam(), Read().IsAfter("03.00"));
}

TEST_P(FlagsOfArchive, TellControlSections) {
  const auto get = [](const VornXSection& section) { return section.GetControlSect(); };
  ExpectFlag<VornXSection>("control section", SectionBytes(Read(), 3), get, GetParam(), Read().IsAfter("03.00"));
}

TEST_P(FlagsOfArchive, TellOrgSurfaces) {
  if (!Read().IsFrom("05.50")) return;
  const auto get = [](const VornBuildForm& form) { return form.IsOrgSurface(); };
  ExpectFlag<VornBuildForm>("org surface", FormBytes(Read(), 2), get, GetParam(), true);
}

TEST_P(FlagsOfArchive, TellWherePolylinesGoOn) {
  const auto get = [](const VornComposedPnt& point) { return point.GetSeriesPnt(); };
  ExpectFlag<VornComposedPnt>("series", PointBytes(Read(), 3), get, GetParam(), true);
}

TEST_P(FlagsOfArchive, TellWhereTheShapeOfSectionsChangesAtTargetPoints) {
  const auto get = [](const VornFormCtrlTargetPnt& point) { return point.GetXSectChg(); };
  ExpectFlag<VornFormCtrlTargetPnt>("change of section", TargetPointBytes(Read(), 2), get, GetParam(), true);
}

}  // namespace
}  // namespace archive_test
