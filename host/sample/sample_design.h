#pragma once

#include <cstdint>

#include "vorn/model/file_info.h"
#include "vorn/model/x_sections.h"
#include "vorn/platform/function_ref.h"
#include "vorn/types/structure_type.h"

namespace vorn_host {

/// What kind of work a sample describes: a road with cuts and fills, a river levee, a farm field.
enum class SampleKind { Road, River, Farm };

/// What a sample is to be.
struct SampleOptions {
  /// Number of cross sections, the second one of the change-of-shape pair included (a pair needs three or more).
  int sections = 20;
  SampleKind kind = SampleKind::Road;  ///< what it describes
  /// Another seed gives another terrain under another line.
  std::uint64_t seed = 1;
};

/// A design in terms of the editions from 4.0 on: points carry data types, and the control targets stand in the set.
struct SampleDesign {
  VornFileInfoArray fileInfos;      ///< when it was created
  VornStructureType structureType;  ///< the kind of work
  Vorn_XSectionsArray sets;         ///< the cross sections
};

/// Makes a realistic synthetic design for trying out, tests and benchmarks. The same options give the same design on
/// every platform, down to the last bit.
/// @param progress called after every cross section
[[nodiscard]] SampleDesign MakeSampleDesign(const SampleOptions& options,
                                            FunctionRef<void(int done, int total)> progress);
[[nodiscard]] SampleDesign MakeSampleDesign(const SampleOptions& options);

}  // namespace vorn_host
