#include "fuzz/archive_target.h"

#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fuzz/archive_records.h"
#include "fuzz/memory_meter.h"
#include "fuzz/target.h"

namespace vorn_fuzz {

namespace {

using Bytes = std::vector<std::uint8_t>;

/// What loading may take: the library's own needs, and some times the archive's size.
constexpr std::size_t kMemoryBase = 2u << 20;
constexpr std::size_t kMemoryFactor = 32;

/// A buffer that nearly every value crosses the edge of.
constexpr std::uint32_t kTinyBuffer = 7;
constexpr std::uint32_t kUsualBuffer = 4096;

/// Older programs read less than what is written for them: what was stored can be loaded from this version on.
constexpr std::string_view kFirstReadable = "05.00";
constexpr std::string_view kLatest = "06.50";

[[noreturn]] void Finding(const char* what, const CString& version) {
  vorn_fuzz::Finding("store version " + std::string(version.View()), what);
}

/// A file that hands its bytes out only when it is asked to read them, as one on a disk does.
class StreamedFile : public CMemFile {
 public:
  using CMemFile::CMemFile;
  std::span<const std::uint8_t> ReadInPlace() override { return {}; }
};

enum class Outcome { Loaded, Newer, Refused };

/// What came of loading an archive. That must not depend on how its bytes are read.
struct Loading {
  Outcome outcome = Outcome::Loaded;
  CArchiveException::Cause cause = CArchiveException::none;  ///< of a refusal
  std::uint64_t remaining = 0;                               ///< bytes that were not read

  friend bool operator==(const Loading&, const Loading&) = default;
};

template <typename Record>
Loading Load(CFile& file, Record& record, const CString& version, std::uint32_t bufferSize) {
  CArchive ar(&file, CArchive::load, bufferSize);
  const std::uint64_t size = ar.Remaining();
  const MemoryMeter meter;
  Loading loading;
  try {
    Transfer(ar, record, version);
  } catch (const CArchiveException& refusal) {
    loading.outcome = Outcome::Refused;
    loading.cause = refusal.m_cause;
  } catch (bool known) {
    if (known) Finding("a newer record is thrown as true", version);
    loading.outcome = Outcome::Newer;
  }
  if (meter.Peak() > kMemoryBase + kMemoryFactor * size) Finding("loading took too much memory", version);
  loading.remaining = ar.Remaining();
  return loading;
}

template <typename Record>
Loading LoadInPlace(const Bytes& bytes, Record& record, const CString& version) {
  CMemFile file(bytes);
  return Load(file, record, version, kUsualBuffer);
}

template <typename Record>
Loading LoadStreamed(const Bytes& bytes, Record& record, const CString& version) {
  StreamedFile file(bytes);
  return Load(file, record, version, kTinyBuffer);
}

template <typename Record>
Bytes Stored(Record& record, const CString& version, std::uint32_t bufferSize = kUsualBuffer) {
  CMemFile file;
  CArchive ar(&file, CArchive::store, bufferSize);
  Transfer(ar, record, version);
  ar.Close();
  return file.Detach();
}

/// Storing may change the record, but only once: it gives up what the version cannot hold, and gives the control
/// targets of old data their points.
template <typename Record>
void JudgeStoring(Record& record, const CString& version) {
  (void)Stored(record, version);
  const Bytes first = Stored(record, version);
  if (Stored(record, version, kTinyBuffer) != first) Finding("storing twice gives different bytes", version);
  if (version.Compare(kFirstReadable) < 0) return;
  Record again;
  if (LoadStreamed(first, again, version).outcome != Outcome::Loaded) {
    Finding("what was stored cannot be loaded", version);
  }
  if (Stored(again, version) != first) Finding("what was stored, loaded and stored again is not the same", version);
}

}  // namespace

bool Judge(std::span<const std::uint8_t> input) {
  if (input.empty()) return false;
  const auto kind = static_cast<RecordKind>((input[0] >> 4) % kRecordKinds);
  const CString version(kStoreVersions[(input[0] & 0xF) % kStoreVersions.size()]);
  const Bytes bytes(input.begin() + 1, input.end());
  bool loaded = false;
  VisitRecord(kind, [&](auto record) {
    auto streamed = record;
    const Loading loading = LoadInPlace(bytes, record, version);
    if (LoadStreamed(bytes, streamed, version) != loading) Finding("loading depends on how bytes are read", version);
    loaded = loading.outcome == Outcome::Loaded;
    if (!loaded) return;
    auto copy = record;
    if (Stored(copy, version) != Stored(streamed, version)) Finding("what is loaded depends on the buffer", version);
    JudgeStoring(record, version);
    JudgeStoring(record, CString(kLatest));
  });
  return loaded;
}

}  // namespace vorn_fuzz
