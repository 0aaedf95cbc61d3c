#include "host/project/project_file.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

#include "host/document/document_error.h"
#include "vorn/platform/carchive.h"

namespace vorn_host {

namespace {

/// A byte above 0x7F, a name, and the line ends of both worlds: a transfer that takes the file for text is found out.
constexpr std::array<std::uint8_t, 8> kMagic = {0x89, 'V', 'O', 'R', 'N', '\r', '\n', 0x1A};
constexpr std::uint32_t kContainerVersion = 1;
constexpr std::size_t kStoreVersionLength = 5;

/// What stands in front of the record.
struct Head {
  std::array<std::uint8_t, 8> magic = kMagic;
  std::uint32_t containerVersion = kContainerVersion;
  std::array<std::uint8_t, kStoreVersionLength> storeVersion{};
  std::uint64_t recordSize = 0;
  std::uint32_t recordChecksum = 0;
  std::uint64_t documentSize = 0;
  std::uint32_t documentChecksum = 0;

  void Serialize(CArchive& ar) {
    const auto bytes = [&](auto& array) {
      for (std::uint8_t& byte : array) ar.IsStoring() ? ar << byte : ar >> byte;
    };
    const auto number = [&](auto& value) { ar.IsStoring() ? ar << value : ar >> value; };
    bytes(magic);
    number(containerVersion);
    bytes(storeVersion);
    number(recordSize);
    number(recordChecksum);
    number(documentSize);
    number(documentChecksum);
  }
};

/// CRC-32 as zlib has it, over any number of bytes.
std::uint32_t Checksum(std::string_view bytes) {
  uLong checksum = crc32_z(0, nullptr, 0);
  return static_cast<std::uint32_t>(
      crc32_z(checksum, reinterpret_cast<const Bytef*>(bytes.data()), static_cast<z_size_t>(bytes.size())));
}

/// The head with its own checksum behind it.
std::vector<std::uint8_t> HeadBytes(Head head) {
  CMemFile file;
  CArchive ar(&file, CArchive::store);
  head.Serialize(ar);
  ar.Flush();
  const auto& bytes = file.Bytes();
  ar << Checksum({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
  ar.Close();
  return file.Detach();
}

[[noreturn]] void Refuse(const std::string& name, const std::string& reason) {
  throw DocumentError(name + ": " + reason);
}

Head ParseHead(std::string_view content, const std::string& name) {
  constexpr std::size_t kGuarded = ProjectFile::kHeadSize - sizeof(std::uint32_t);
  if (!ProjectFile::IsProject(content)) Refuse(name, "this is not a project file");
  if (content.size() < ProjectFile::kHeadSize) Refuse(name, "the project file ends within its head: it is incomplete");
  CMemFile file(std::vector<std::uint8_t>(content.begin(), content.begin() + ProjectFile::kHeadSize));
  CArchive ar(&file, CArchive::load);
  Head head;
  head.Serialize(ar);
  if (head.containerVersion > kContainerVersion) {
    Refuse(name, "the project file is of version " + std::to_string(head.containerVersion) +
                     "; this program reads version " + std::to_string(kContainerVersion) +
                     ": it was written by a newer one");
  }
  std::uint32_t checksum = 0;
  ar >> checksum;
  if (checksum != Checksum(content.substr(0, kGuarded)) || head.containerVersion == 0) {
    Refuse(name, "the head of the project file is damaged");
  }
  return head;
}

/// Cuts a part off the front of what is left.
std::string_view TakePart(std::string_view& rest, std::uint64_t size, std::uint32_t checksum, const std::string& what,
                          const std::string& name) {
  if (size > rest.size()) {
    Refuse(name, "the project file ends within its " + what + ": " + std::to_string(size - rest.size()) +
                     " bytes are missing");
  }
  const std::string_view part = rest.substr(0, static_cast<std::size_t>(size));
  if (Checksum(part) != checksum) Refuse(name, "the " + what + " of the project file is damaged");
  rest.remove_prefix(part.size());
  return part;
}

}  // namespace

bool ProjectFile::IsProject(std::string_view content) {
  return content.size() >= kMagic.size() && std::memcmp(content.data(), kMagic.data(), kMagic.size()) == 0;
}

ProjectFile ProjectFile::Parse(std::string_view content, const std::string& name) {
  const Head head = ParseHead(content, name);
  ProjectFile file;
  file.storeVersion.assign(head.storeVersion.begin(), head.storeVersion.end());
  std::string_view rest = content.substr(kHeadSize);
  file.record = TakePart(rest, head.recordSize, head.recordChecksum, "road data", name);
  file.document = TakePart(rest, head.documentSize, head.documentChecksum, "document part", name);
  if (!rest.empty()) Refuse(name, std::to_string(rest.size()) + " bytes too many stand behind the project");
  return file;
}

ProjectFileBuilder::ProjectFileBuilder(std::string storeVersion) : m_storeVersion(std::move(storeVersion)) {
  static_assert(kMagic.size() + 4 + kStoreVersionLength + std::size_t{2} * (8 + 4) + 4 == ProjectFile::kHeadSize);
  const std::vector<std::uint8_t> room(ProjectFile::kHeadSize);
  m_file.Write(room.data(), static_cast<std::uint32_t>(room.size()));
}

std::vector<std::uint8_t> ProjectFileBuilder::Finish(std::string_view document) {
  const std::vector<std::uint8_t>& written = m_file.Bytes();
  const std::string_view record(reinterpret_cast<const char*>(written.data()) + ProjectFile::kHeadSize,
                                written.size() - ProjectFile::kHeadSize);
  Head head;
  std::copy_n(m_storeVersion.begin(), std::min(m_storeVersion.size(), kStoreVersionLength), head.storeVersion.begin());
  head.recordSize = record.size();
  head.recordChecksum = Checksum(record);
  head.documentSize = document.size();
  head.documentChecksum = Checksum(document);
  const std::vector<std::uint8_t> headBytes = HeadBytes(head);
  std::vector<std::uint8_t> content = m_file.Detach();
  std::copy(headBytes.begin(), headBytes.end(), content.begin());
  content.insert(content.end(), document.begin(), document.end());
  return content;
}

}  // namespace vorn_host
