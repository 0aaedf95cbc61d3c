#include "host/document/edition.h"

namespace vorn_host {

namespace {

struct EditionRow {
  Edition edition;
  std::string_view name;
  VornSchema::Version version;
  int kind;
};

constexpr std::array kEditions = {
    EditionRow{Edition::V20, "2.0", VornSchema::Version20, VornSchema::KindTsf},
    EditionRow{Edition::V40, "4.0", VornSchema::Version40, VornSchema::KindTsf},
    EditionRow{Edition::V41, "4.1", VornSchema::Version41, VornSchema::KindTsf},
    EditionRow{Edition::Maff10, "maff-1.0", VornSchema::Version41, VornSchema::KindMaff},
    EditionRow{Edition::RoadGm, "RoadGm", VornSchema::Version20, VornSchema::KindRoadGm},
};

const EditionRow& RowOf(Edition edition) { return kEditions[static_cast<std::size_t>(edition)]; }

}  // namespace

std::string_view EditionName(Edition edition) { return RowOf(edition).name; }

std::optional<Edition> ParseEdition(std::string_view name) {
  for (const Edition edition : kWritableEditions) {
    if (EditionName(edition) == name) return edition;
  }
  return std::nullopt;
}

Edition CurrentEdition() {
  const VornSchema& schema = VornSchema::Instance();
  for (const EditionRow& row : kEditions) {
    if (row.version == schema.GetVersion() && row.kind == schema.Kind()) return row.edition;
  }
  return schema.IsMaff() ? Edition::Maff10 : Edition::V41;
}

EditionScope::EditionScope(Edition edition)
    : m_schema(VornSchema::Instance()),
      m_precision(VornNumericalPrecision::GetInstance()),
      m_dataKind(Vorn_Base::m_staticDataKind) {
  VornSchema& schema = VornSchema::Instance();
  schema.SetVersion(RowOf(edition).version);
  schema.Kind(RowOf(edition).kind);
  VornNumericalPrecision::GetInstance().SetDecimalPlace();
  Vorn_Base::m_staticDataKind = edition == Edition::RoadGm ? VORN_DataKind::RoadGeometry : VORN_DataKind::FormControl;
}

EditionScope::~EditionScope() {
  VornSchema::Instance() = m_schema;
  VornNumericalPrecision::GetInstance() = m_precision;
  Vorn_Base::m_staticDataKind = m_dataKind;
}

}  // namespace vorn_host
