#include "fuzz/archive_target.h"

#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <utility>

#include "fuzz/archive_records.h"
#include "fuzz/memory_meter.h"

namespace vorn_fuzz {

namespace {

using Bytes = std::vector<std::uint8_t>;

/// What loading may take: the library's own needs, and some times the archive's size.
constexpr std::size_t kMemoryBase = 64u << 20;
constexpr std::size_t kMemoryFactor = 32;

/// A buffer that nearly every value crosses the edge of.
constexpr std::uint32_t kTinyBuffer = 7;
constexpr std::uint32_t kUsualBuffer = 4096;

/// Older programs read less than what is written for them: what was stored can be loaded from this version on.
constexpr std::string_view kFirstReadable = "05.00";
constexpr std::string_view kLatest = "06.50";

[[noreturn]] void Finding(const char* what, const CString& version) {
  std::fprintf(stderr, "store version %s: %s\n", version.GetString(), what);
  std::abort();
}

template <typename Record>
bool IsLoaded(const Bytes& bytes, Record& record, const CString& version, std::uint32_t bufferSize = kUsualBuffer) {
  CMemFile file(bytes);
  CArchive ar(&file, CArchive::load, bufferSize);
  const MemoryMeter meter;
  bool loaded = true;
  try {
    Transfer(ar, record, version);
  } catch (const CArchiveException&) {
    loaded = false;
  } catch (bool known) {
    if (known) Finding("a newer record is thrown as true", version);
    loaded = false;
  }
  if (meter.Peak() > kMemoryBase + kMemoryFactor * bytes.size()) Finding("loading took too much memory", version);
  return loaded;
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
  if (!IsLoaded(first, again, version, kTinyBuffer)) Finding("what was stored cannot be loaded", version);
  if (Stored(again, version) != first) Finding("what was stored, loaded and stored again is not the same", version);
}

}  // namespace

bool JudgeArchive(std::span<const std::uint8_t> input) {
  if (input.empty()) return false;
  const auto kind = static_cast<RecordKind>((input[0] >> 4) % kRecordKinds);
  const CString version(kStoreVersions[(input[0] & 0xF) % kStoreVersions.size()]);
  const Bytes bytes(input.begin() + 1, input.end());
  bool loaded = false;
  VisitRecord(kind, [&](auto record) {
    loaded = IsLoaded(bytes, record, version);
    if (!loaded) return;
    JudgeStoring(record, version);
    JudgeStoring(record, CString(kLatest));
  });
  return loaded;
}

}  // namespace vorn_fuzz
