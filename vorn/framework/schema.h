#pragma once

#include <cstdint>

#include "vorn/platform/cstring.h"

/// Hosts of the namespace URIs, without a trailing slash. A host application may replace them at start-up.
struct VornNamespaceHosts {
  CString gis = "http://www.gis.nilim.go.jp";  ///< of edition 2.0
  CString main = "http://www.nilim.go.jp";     ///< of the later editions
  CString ministry = "http://www.maff.go.jp";  ///< of the agricultural edition
};

/// The process-wide edition of the schema that is being read or written.
class VornSchema {
 public:
  /// The versions of the document family; the agricultural edition has version 4.1.
  enum Version : std::int32_t { VersionUnknown = -2, Version20 = 0, Version40 = 1, Version41 = 2 };
  // The document families.
  /// Form control: the editions 2.0, 4.0 and 4.1.
  static constexpr int KindTsf = 0;
  /// Road geometry, whose root is "RoadGmxml".
  static constexpr int KindRoadGm = 1;
  /// The ministry's agricultural edition 1.0.
  static constexpr int KindMaff = 2;

  /// The edition of the process.
  static VornSchema& Instance();
  // Copies hold an edition for a while: a host saves the instance, selects another edition and puts the copy back.
  VornSchema(const VornSchema&) = default;
  VornSchema& operator=(const VornSchema&) = default;

  /// The namespace hosts of every edition.
  static const VornNamespaceHosts& NamespaceHosts();
  /// Replaces the hosts, for all editions at once.
  static void SetNamespaceHosts(const VornNamespaceHosts& hosts);

  /// The version of the edition.
  [[nodiscard]] Version GetVersion() const { return m_version; }
  void SetVersion(Version version) { m_version = version; }
  /// Which of the document families: `KindTsf`, `KindRoadGm`, `KindMaff`.
  [[nodiscard]] int Kind() const { return m_kind; }
  void Kind(int kind) { m_kind = kind; }

  /// Whether the version is one of the three known ones.
  [[nodiscard]] bool IsValid() const { return static_cast<std::uint32_t>(m_version) < 3; }
  /// Edition 2.0; an unrecognised version counts as 2.0 too.
  [[nodiscard]] bool IsVer2() const { return m_version < Version40; }
  /// Whether the edition is the agricultural one.
  [[nodiscard]] bool IsMaff() const { return m_kind == KindMaff; }

  /// URI of the "tsf" namespace. The agricultural edition has one URI for every version.
  [[nodiscard]] const CString& Tsf(Version version) const;
  [[nodiscard]] const CString& Tsf() const { return Tsf(m_version); }
  /// URI of the "rgm" (road geometry) namespace.
  [[nodiscard]] const CString& Rgm() const;
  /// URI of the XML Schema instance namespace.
  [[nodiscard]] static CString Xsi();
  /// Value of xsi:schemaLocation: the "tsf" URI, one blank, the schema file's name.
  [[nodiscard]] CString Location(Version version) const;
  [[nodiscard]] CString Location() const { return Location(m_version); }
  /// Name of the schema: with ".xsd" for edition 2.0, without it for all others. Both forms occur inside the
  /// location, where recognition looks for them.
  [[nodiscard]] CString Xsd(Version version) const;
  [[nodiscard]] CString Xsd() const { return Xsd(m_version); }
  /// Display name, for example "Ver 4.1形式"; empty for an unknown version, "Ver 1.0形式" for the agricultural one.
  [[nodiscard]] static CString VersionStr(Version version, bool maff);

  /// Recognises a document by its root tag and the value of its xsi:schemaLocation, which must be exactly as
  /// published. True when recognised: version and kind are then set. Otherwise version is -2. Without the memory to
  /// find out, the edition stays as it was.
  bool AnalyzeVersion(const CString& rootTag, const CString& schemaLocation);

 private:
  VornSchema() = default;
  /// As `AnalyzeVersion`, with an edition that counts only when this has come to its end.
  bool Recognise(const CString& rootTag, const CString& schemaLocation);

  Version m_version = Version41;
  int m_kind = KindTsf;
};
