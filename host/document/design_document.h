#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "host/document/atomic_file.h"
#include "host/document/carried_content.h"
#include "host/document/edition.h"
#include "host/document/text_encoding.h"
#include "host/document/unread_values.h"
#include "vorn/model/file_info.h"
#include "vorn/model/x_sections.h"
#include "vorn/types/structure_type.h"

namespace vorn_host {

/// A design document: the model that the library reads from it, and what the library does not model, so that the
/// document can be rewritten without a loss.
///
///     DesignDocument document = DesignDocument::Read("design.xml");
///     document.sets[0].GetXSectionArray()[0].SetName("No.1");
///     document.Write("design.xml");
class DesignDocument {
 public:
  /// How a document is read.
  struct ReadOptions {
    /// Edition of a document that is not recognised; without one, such a document is refused.
    std::optional<Edition> assume;
    /// Replace characters that code page 932 cannot hold with 〓 instead of refusing the document.
    bool lossy = false;
    /// The largest document that is read, in bytes. Reading takes memory in proportion: whoever takes documents from
    /// strangers sets what the machine can bear.
    std::uint64_t mostBytes = kLargestFile;
    /// How many things that are not of the design a document may hold.
    std::size_t mostCarriedItems = CarriedContent::kMostItems;
  };
  /// How a document is written.
  struct WriteOptions {
    TextEncoding encoding = TextEncoding::Utf8;  ///< of the document
    /// As for reading; only Shift_JIS output can lack a character then.
    bool lossy = false;
  };

  /// What writing a document did.
  struct WriteReport {
    /// How many characters were replaced (0 unless lossy).
    std::size_t replacedCharacters = 0;
    /// What was carried over and had no place any more, because the element that held it is not written.
    std::vector<CarriedContent::Row> unplaced;
  };

  /// Reads a file. Throws `DocumentError` when it cannot be read, is malformed or of an unknown edition, or holds
  /// text that code page 932 does not.
  [[nodiscard]] static DesignDocument Read(const std::filesystem::path& path, const ReadOptions& options);
  [[nodiscard]] static DesignDocument Read(const std::filesystem::path& path) { return Read(path, ReadOptions()); }
  /// Reads the bytes of a document; name stands for the file in messages.
  [[nodiscard]] static DesignDocument FromBytes(std::string bytes, const std::string& name, const ReadOptions& options);

  /// Whether a file's content begins as XML does, in whatever encoding.
  [[nodiscard]] static bool IsMarkup(std::string_view content);
  /// Whether a file's content begins as a document does, by its root element.
  [[nodiscard]] static bool IsDocument(std::string_view content);

  /// Writes the document in its edition, whole or not at all: an existing file stays as it is when anything fails.
  /// Throws `DocumentError`. It takes the place of whatever is there, a project too: where a person chooses the file,
  /// `DesignFile` asks what it is. Writing lasts in the model where the library says so (`VornBuildForm::toXML`).
  WriteReport Write(const std::filesystem::path& path, const WriteOptions& options);
  WriteReport Write(const std::filesystem::path& path) { return Write(path, WriteOptions()); }
  /// The bytes that `Write` writes; name stands for the file in messages.
  [[nodiscard]] std::string ToBytes(const std::string& name, const WriteOptions& options, WriteReport& report);

  Edition edition = Edition::V41;  ///< which one it is written in
  /// Whether `edition` was not recognised but assumed.
  bool assumed = false;
  /// What the document calls its encoding, "UTF-8" in a new one.
  std::string encodingName = "UTF-8";
  /// How many characters were replaced while reading.
  std::size_t replacedCharacters = 0;
  /// What was read as something else or not at all; it is not in the model and will not be written.
  std::vector<UnreadValue> unreadValues;

  VornFileInfoArray fileInfos;      ///< when the document was created and changed
  VornStructureType structureType;  ///< the kind of work
  /// Whether the document has (is to have) a structure type.
  bool hasStructureType = false;
  Vorn_XSectionsArray sets;  ///< the cross sections

  /// What is carried over unchanged.
  CarriedContent carried;
};

}  // namespace vorn_host
