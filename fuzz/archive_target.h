#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

// What is asked of every archive, whoever wrote it: it loads, or is refused as an archive or as newer than the library,
// without taking much more memory than it has bytes, and alike however its bytes are read; and what was loaded is
// stored for good, so that loading that gives the same again.

namespace vorn_fuzz {

/// All store versions that any record tells apart, and one between those that only a strict comparison does.
inline constexpr std::array kStoreVersions = {"01.10", "01.11", "02.50", "03.00", "03.50",
                                              "04.00", "05.00", "05.50", "06.00", "06.50"};

/// What an archive holds. The order is part of every corpus file: new ones go to the end, up to sixteen.
enum class RecordKind : std::uint8_t {
  Sets,
  Registry,
  StructureType,
  FileInfos,
  HostFileInfo,
  PavementSettings,
  ExtensionTable,
  Texts,
  Date,
  Section,
  Form,
  Point,
  Targets,
  Ground,
  Road,
  LandXml,
};
inline constexpr std::size_t kRecordKinds = 16;

/// The first byte of an input: the store version in the low half, the record in the high one.
[[nodiscard]] constexpr std::uint8_t FirstByte(RecordKind kind, std::size_t version) {
  return static_cast<std::uint8_t>(static_cast<std::size_t>(kind) << 4 | version);
}

}  // namespace vorn_fuzz
