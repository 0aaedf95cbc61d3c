#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "vorn/platform/cfile.h"

namespace vorn_host {

/// The bytes of a project file: a head, the archive record of the road data, and what its design document held beyond
/// that (docs/project-file.md). Each part is guarded by a checksum, so that a damaged file is told as such and not
/// read as another design.
struct ProjectFile {
  /// Store version that the record was written in, two digits, a point, two digits.
  std::string storeVersion;
  std::string_view record;  ///< the archive record of the road data
  /// UTF-8; empty in a project that came from no document.
  std::string_view document;

  /// Whether a file's content begins as a project file does.
  [[nodiscard]] static bool IsProject(std::string_view content);
  /// Takes a file's content apart; the parts refer to it. Throws `DocumentError` when it is no project file, was
  /// written by a newer library, ends too early or is damaged; name stands for the file.
  [[nodiscard]] static ProjectFile Parse(std::string_view content, const std::string& name);

  /// Number of bytes in front of the record.
  static constexpr std::size_t kHeadSize = 45;
};

/// Puts a project file together: the record is written first, behind room for the head.
class ProjectFileBuilder {
 public:
  /// @param storeVersion two digits, a point, two digits
  explicit ProjectFileBuilder(std::string storeVersion);

  /// Where the record is written to.
  [[nodiscard]] CFile& Record() { return m_file; }
  /// Ends the record, adds the document's part, and gives the whole content.
  [[nodiscard]] std::vector<std::uint8_t> Finish(std::string_view document);

 private:
  std::string m_storeVersion;
  CMemFile m_file;
};

}  // namespace vorn_host
