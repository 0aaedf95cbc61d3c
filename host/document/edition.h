#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "vorn/framework/base.h"
#include "vorn/framework/numerical_precision.h"
#include "vorn/framework/schema.h"

namespace vorn_host {

/// The editions of the schema family; `RoadGm` is a pure road-geometry document (root "RoadGmxml").
enum class Edition { V20, V40, V41, Maff10, RoadGm };

/// The editions that a document of cross sections can be written in.
inline constexpr std::array kWritableEditions = {Edition::V20, Edition::V40, Edition::V41, Edition::Maff10};

/// "2.0", "4.0", "4.1", "maff-1.0", "RoadGm".
[[nodiscard]] std::string_view EditionName(Edition edition);
/// The writable edition of that name; none for any other text.
[[nodiscard]] std::optional<Edition> ParseEdition(std::string_view name);
/// Whether an edition keeps control targets in the build forms and codes them as text, as edition 2.0 does.
[[nodiscard]] constexpr bool IsEdition20(Edition edition) {
  return edition == Edition::V20 || edition == Edition::RoadGm;
}
/// The edition that the library's schema singleton currently holds.
[[nodiscard]] Edition CurrentEdition();

/// Selects an edition in the library's process-wide settings (schema, decimal places, data kind) for as long as the
/// object lives, and puts the former ones back.
class EditionScope {
 public:
  /// Selects the edition.
  explicit EditionScope(Edition edition);
  /// Puts the former settings back.
  ~EditionScope();
  EditionScope(const EditionScope&) = delete;
  EditionScope& operator=(const EditionScope&) = delete;

 private:
  VornSchema m_schema;
  VornNumericalPrecision m_precision;
  VORN_DataKind m_dataKind;
};

}  // namespace vorn_host
