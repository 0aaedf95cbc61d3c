#include "vorn/framework/schema.h"

#include <array>
#include <cstddef>

#include "vorn/platform/code_page_932.h"

namespace {

/// What the publisher fixes for one edition.
struct EditionNames {
  CString VornNamespaceHosts::*host;
  const char* tsfPath;
  const char* rgmPath;
  const char* schemaFile;
  const char* xsd;
};

enum Edition : std::size_t { kEdition20, kEdition40, kEdition41, kEditionMaff10, kEditionCount };

constexpr std::array<EditionNames, kEditionCount> kNames = {{
    {&VornNamespaceHosts::gis, "/jouho/TSFormControl", "/RoadGM", "TSFormControlData_20.xsd",
     "TSFormControlData_20.xsd"},
    {&VornNamespaceHosts::main, "/ts/main/TSFormControl-4.0", "/ts/main/RoadGM", "TSFormControl-4.0.xsd",
     "TSFormControl-4.0"},
    {&VornNamespaceHosts::main, "/ts/main/TSFormControl-4.1", "/ts/main/RoadGM-1.1", "TSFormControl-4.1.xsd",
     "TSFormControl-4.1"},
    {&VornNamespaceHosts::ministry, "/j/nousin/sekkei/index.html/TSForm_Control_MAFF-1.0",
     "/j/nousin/sekkei/index.html/MAFF_RoadGM-1.1", "TSForm_Control_MAFF-1.0.xsd", "TSForm_Control_MAFF-1.0"},
}};

/// The URIs of all editions on the current hosts, put together once: every element that is written asks for one.
struct NamespaceUris {
  explicit NamespaceUris(const VornNamespaceHosts& newHosts) : hosts(newHosts) {
    for (std::size_t edition = 0; edition < kEditionCount; ++edition) {
      const CString& host = hosts.*kNames[edition].host;
      tsf[edition] = host + kNames[edition].tsfPath;
      rgm[edition] = host + kNames[edition].rgmPath;
    }
  }

  VornNamespaceHosts hosts;
  std::array<CString, kEditionCount> tsf;
  std::array<CString, kEditionCount> rgm;
};

NamespaceUris& Uris() {
  static NamespaceUris uris{VornNamespaceHosts()};
  return uris;
}

Edition EditionOf(const VornSchema& schema, VornSchema::Version version) {
  if (schema.IsMaff()) return kEditionMaff10;
  if (version == VornSchema::Version20) return kEdition20;
  if (version == VornSchema::Version40) return kEdition40;
  return kEdition41;
}

}  // namespace

VornSchema& VornSchema::Instance() {
  static VornSchema instance;
  return instance;
}

const VornNamespaceHosts& VornSchema::NamespaceHosts() { return Uris().hosts; }

void VornSchema::SetNamespaceHosts(const VornNamespaceHosts& hosts) { Uris() = NamespaceUris(hosts); }

const CString& VornSchema::Tsf(Version version) const { return Uris().tsf[EditionOf(*this, version)]; }

const CString& VornSchema::Rgm() const { return Uris().rgm[EditionOf(*this, m_version)]; }

CString VornSchema::Xsi() { return "http://www.w3.org/2001/XMLSchema-instance"; }

CString VornSchema::Location(Version version) const {
  return Tsf(version) + " " + kNames[EditionOf(*this, version)].schemaFile;
}

CString VornSchema::Xsd(Version version) const { return kNames[EditionOf(*this, version)].xsd; }

CString VornSchema::VersionStr(Version version, bool maff) {
  if (maff) return u8"Ver 1.0形式"_cp932;
  switch (version) {
    case Version20:
      return u8"Ver 2.0形式"_cp932;
    case Version40:
      return u8"Ver 4.0形式"_cp932;
    case Version41:
      return u8"Ver 4.1形式"_cp932;
    default:
      return CString();
  }
}

bool VornSchema::AnalyzeVersion(const CString& rootTag, const CString& schemaLocation) {
  VornSchema analyzed = *this;
  const bool recognised = analyzed.Recognise(rootTag, schemaLocation);
  *this = analyzed;
  return recognised;
}

bool VornSchema::Recognise(const CString& rootTag, const CString& schemaLocation) {
  m_version = VersionUnknown;
  if (!rootTag.View().starts_with("tsf:")) {
    if (rootTag == "RoadGmxml") {
      m_version = Version20;
      m_kind = KindRoadGm;
    }
    return m_version != VersionUnknown;
  }

  m_kind = KindTsf;
  for (const Version candidate : {Version20, Version40, Version41}) {
    if (schemaLocation != Location(candidate)) continue;
    m_version = candidate;
    break;
  }
  if (m_version == VersionUnknown) {
    m_kind = KindMaff;
    if (schemaLocation != Location(Version41)) {
      m_kind = KindTsf;
      return false;
    }
    m_version = Version41;
  }

  // Confirmed by its parts as well; it cannot fail as long as a location is made of these parts.
  const CString& tsf = Tsf();
  const bool confirmed = schemaLocation.View().starts_with(tsf.View()) &&
                         schemaLocation.View().substr(tsf.View().size()).find(Xsd().View()) != std::string_view::npos;
  if (!confirmed) m_version = VersionUnknown;
  return m_version != VersionUnknown;
}
