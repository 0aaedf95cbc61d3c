#include "vorn/platform/carchive.h"

#include <utility>

namespace {

/// Counts from here on take the longer form.
constexpr std::uint32_t kLongCount = 0xFFFF;

constexpr std::uint8_t kMediumText = 0xFF;
/// Stands where a 16-bit length does and announces characters of two bytes each, which no text here has.
constexpr std::uint16_t kWideText = 0xFFFE;
constexpr std::uint16_t kLongText = 0xFFFF;

void WriteTextLength(CArchive& ar, std::uint32_t length) {
  if (length < kMediumText) {
    ar << static_cast<std::uint8_t>(length);
  } else if (length < kWideText) {
    ar << kMediumText << static_cast<std::uint16_t>(length);
  } else {
    ar << kMediumText << kLongText << length;
  }
}

std::uint32_t ReadTextLength(CArchive& ar) {
  const auto shortLength = ar.Load<std::uint8_t>();
  if (shortLength != kMediumText) return shortLength;
  const auto mediumLength = ar.Load<std::uint16_t>();
  if (mediumLength == kWideText) throw CArchiveException(CArchiveException::badIndex);
  if (mediumLength != kLongText) return mediumLength;
  return ar.Load<std::uint32_t>();
}

}  // namespace

const char* CArchiveException::what() const noexcept {
  switch (m_cause) {
    case none:
      return "no archive error";
    case readOnly:
      return "storing into an archive that was opened for loading";
    case endOfFile:
      return "the archive ends too early";
    case writeOnly:
      return "loading from an archive that was opened for storing";
    case badIndex:
      return "the archive's bytes are not in its form";
    case genericException:
      break;
  }
  return "the archive is closed or has failed";
}

CArchive::CArchive(CFile* file, std::uint32_t mode, std::uint32_t bufferSize)
    : m_file(file), m_mode(mode), m_buffer(bufferSize) {
  if (IsLoading()) return;
  m_free = m_buffer.data();
  m_full = m_free + m_buffer.size();
}

CArchive::~CArchive() {
  if ((m_mode & bNoFlushOnDelete) != 0) return;
  try {
    Close();
  } catch (...) {
    // Whoever wants to know has called Close.
  }
}

void CArchive::Flush() {
  CFile& file = File();
  if (IsStoring()) return EmptyBuffer();
  if (Unread() == 0) return;
  file.Seek(-static_cast<std::int64_t>(Unread()), CFile::current);
  m_next = m_last;
}

void CArchive::Close() {
  if (m_file == nullptr && !m_failed) return;
  Flush();
  Abort();
}

void CArchive::Abort() noexcept {
  m_file = nullptr;
  m_next = m_last = nullptr;
  m_free = m_full = nullptr;
}

std::uint64_t CArchive::Remaining() const {
  if (IsStoring() || m_file == nullptr) return 0;
  const std::uint64_t length = m_file->GetLength();
  const std::uint64_t position = m_file->GetPosition();
  return Unread() + (length > position ? length - position : 0);
}

void CArchive::WriteCount(std::uint32_t count) {
  if (count < kLongCount) {
    *this << static_cast<std::uint16_t>(count);
  } else {
    *this << static_cast<std::uint16_t>(kLongCount) << count;
  }
}

std::uint32_t CArchive::ReadCount() {
  const auto count = Load<std::uint16_t>();
  return count == kLongCount ? Load<std::uint32_t>() : count;
}

CFile& CArchive::File() const {
  if (m_file == nullptr) throw CArchiveException(CArchiveException::genericException);
  return *m_file;
}

std::uint32_t CArchive::ReadThroughBuffer(void* bytes, std::uint32_t count) {
  if (IsStoring()) throw CArchiveException(CArchiveException::writeOnly);
  CFile& file = File();
  auto* out = static_cast<std::uint8_t*>(bytes);
  std::uint32_t done = 0;
  while (done < count) {
    const std::uint32_t wanted = count - done;
    std::uint32_t taken = 0;
    if (Unread() == 0 && wanted >= m_buffer.size()) {
      taken = file.Read(out + done, wanted);
    } else {
      if (Unread() == 0) FillBuffer();
      taken = static_cast<std::uint32_t>(std::min<std::size_t>(wanted, Unread()));
      if (taken > 0) std::memcpy(out + done, m_next, taken);
      m_next += taken;
    }
    if (taken == 0) break;
    done += taken;
  }
  return done;
}

void CArchive::WriteThroughBuffer(const void* bytes, std::uint32_t count) {
  if (IsLoading()) throw CArchiveException(CArchiveException::readOnly);
  (void)File();
  if (count == 0) return;
  EmptyBuffer();
  if (count >= m_buffer.size()) return WriteToFile(bytes, count);
  std::memcpy(m_free, bytes, count);
  m_free += count;
}

void CArchive::FillBuffer() {
  if (const auto held = m_file->ReadInPlace(); !held.empty()) {
    m_next = held.data();
    m_last = m_next + held.size();
    return;
  }
  m_next = m_last = m_buffer.data();
  m_last += m_file->Read(m_buffer.data(), static_cast<std::uint32_t>(m_buffer.size()));
}

void CArchive::EmptyBuffer() {
  const auto count = static_cast<std::uint32_t>(m_free - m_buffer.data());
  m_free = m_buffer.data();
  if (count > 0) WriteToFile(m_free, count);
}

void CArchive::WriteToFile(const void* bytes, std::uint32_t count) {
  try {
    m_file->Write(bytes, count);
  } catch (...) {
    m_failed = true;
    Abort();
    throw;
  }
}

CArchive& operator>>(CArchive& ar, NurReal& value) {
  value = ar.Load<double>();
  return ar;
}

CArchive& operator>>(CArchive& ar, NurLong& value) {
  value = ar.Load<std::int32_t>();
  return ar;
}

CArchive& operator<<(CArchive& ar, const CString& text) {
  const std::string_view bytes = text.View();
  CArchive::RequireInt(bytes.size());
  const auto length = static_cast<std::uint32_t>(bytes.size());
  WriteTextLength(ar, length);
  ar.Write(bytes.data(), length);
  return ar;
}

CArchive& CArchive::ReadText(CString& text) {
  const std::uint32_t length = ReadTextLength(*this);
  RequireRemaining(length);
  CArchive::RequireInt(length);
  if (length <= Unread()) {
    text = std::string_view(reinterpret_cast<const char*>(m_next), length);
    m_next += length;
    return *this;
  }
  CString loaded;
  ReadExactly(loaded.GetBufferSetLength(static_cast<int>(length)), length);
  text = std::move(loaded);
  return *this;
}

CArchive& operator<<(CArchive& ar, const COleDateTime& dateTime) { return ar << dateTime.m_status << dateTime.m_dt; }

CArchive& operator>>(CArchive& ar, COleDateTime& dateTime) {
  COleDateTime loaded;
  ar >> loaded.m_status >> loaded.m_dt;
  dateTime = loaded;
  return ar;
}

CArchive& operator<<(CArchive& ar, const CStringArray& texts) {
  ar.WriteCount(static_cast<std::uint32_t>(texts.GetCount()));
  for (const CString& text : texts) ar << text;
  return ar;
}

CArchive& operator>>(CArchive& ar, CStringArray& texts) {
  const std::uint32_t count = ar.ReadCount();
  ar.RequireRemaining(count);  // the shortest text takes a byte
  CArchive::RequireInt(count);
  CStringArray loaded;
  loaded.Reserve(static_cast<int>(count));
  for (std::uint32_t i = 0; i < count; ++i) {
    CString text;
    ar >> text;
    loaded.Add(std::move(text));
  }
  texts = std::move(loaded);
  return ar;
}
