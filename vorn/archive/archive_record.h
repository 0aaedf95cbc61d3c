#pragma once

#include <cstdint>
#include <string_view>

#include "vorn/framework/identifier.h"
#include "vorn/platform/carchive.h"
#include "vorn/platform/cstring.h"
#include "vorn/platform/dov_data_table.h"

/// A part of a record that is a record itself, of the same store version.
template <typename T>
concept ArchivePart = requires(T& part, CArchive& ar, const CString& tag) {
  part.Serialize(ar, tag);
};

/// One record of the project archive, described once for both directions: whoever reads down a `Serialize` sees the
/// bytes in their order, each field with the store versions that have it.
///
///     ArchiveRecord record(ar, tag);
///     record.ExtensionTable();
///     record.Field(m_name);
///     record.ReadSince("05.00", m_serialID);       // always written, read from 05.00 on
///     record.OnlyFrom("04.00", m_targetPntArray);  // absent before 04.00, both ways
///
/// Store versions are texts such as "05.50", compared byte by byte.
///
/// What throws while a record is loaded, be it the archive or a lack of memory, leaves the object with the fields
/// before that loaded and the others as they were, every text and number whole. That is intended: what a record does
/// not have stays, and a copy of a whole project to go back to would double it. Whoever wants to keep what is there
/// loads into a new object and moves that in its place. Collections never hold an element that was not loaded to its
/// end.
class ArchiveRecord {
 public:
  /// Archive and tag have to outlive the record.
  ArchiveRecord(CArchive& ar, const CString& tag) : m_ar(ar), m_tag(tag) {}
  ArchiveRecord(CArchive& ar, CString&& tag) = delete;
  /// A record that is the same in every store version; its parts have to be so too.
  explicit ArchiveRecord(CArchive& ar) : ArchiveRecord(ar, kNoVersion) {}

  /// Whether the record is read.
  [[nodiscard]] bool IsLoading() const { return m_ar.IsLoading(); }
  /// Whether the record is written.
  [[nodiscard]] bool IsStoring() const { return m_ar.IsStoring(); }
  /// Whether the store version is that one or later.
  [[nodiscard]] bool IsFrom(std::string_view version) const { return m_tag.Compare(version) >= 0; }
  /// Whether the store version is later than that one.
  [[nodiscard]] bool IsAfter(std::string_view version) const { return m_tag.Compare(version) > 0; }

  /// A slot in which later versions can carry values: written empty, read and forgotten.
  void ExtensionTable() { DovDataTable::SerializeEmpty(m_ar); }

  /// Stores or loads a value, or a part with a record of its own.
  template <typename T>
  void Field(T& value) {
    if constexpr (ArchivePart<T>) {
      value.Serialize(m_ar, m_tag);
    } else if constexpr (requires { value.Serialize(m_ar); }) {
      value.Serialize(m_ar);
    } else if (IsLoading()) {
      m_ar >> value;
    } else {
      m_ar << value;
    }
  }

  /// Written in every version, read from that one on: what it is read into keeps its value with older data.
  template <typename T>
  void ReadSince(std::string_view version, T& value) {
    if (IsStoring() || IsFrom(version)) Field(value);
  }

  /// Neither written nor read before that version.
  template <typename T>
  void OnlyFrom(std::string_view version, T& value) {
    if (IsFrom(version)) Field(value);
  }

  /// A place that holds nothing any more: written as given, read and forgotten.
  template <typename T>
  void Reserved(T written) {
    Field(written);
  }

 private:
  inline static const CString kNoVersion{};

  CArchive& m_ar;
  const CString& m_tag;
};

/// The next serial of a collection that numbers its elements. Data older than "05.00" have none and leave it at 0.
inline void SerializeNextSerialID(CArchive& ar, const CString& tag, VornSerialCounter& serials) {
  ArchiveRecord record(ar, tag);
  if (record.IsLoading()) serials = VornSerialCounter(0);
  std::uint32_t next = serials.Next();
  record.ReadSince("05.00", next);
  serials = VornSerialCounter(next);
}
