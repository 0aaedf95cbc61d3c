#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>
#include <vector>

#include "vorn/platform/carray.h"
#include "vorn/platform/cfile.h"
#include "vorn/platform/cstring.h"
#include "vorn/platform/exceptions.h"
#include "vorn/platform/nur_real.h"
#include "vorn/platform/ole_date_time.h"

/// An archive that ended too early, was used in the wrong direction, or holds what no archive holds.
class CArchiveException : public CException {
 public:
  /// The framework's causes that a stream of values can have.
  enum Cause : std::int32_t {
    none = 0,
    genericException = 1,  ///< above all: the archive is closed
    readOnly = 2,          ///< storing into an archive that was opened for loading
    endOfFile = 3,         ///< fewer bytes left than a value or a count needs
    writeOnly = 4,         ///< loading from an archive that was opened for storing
    badIndex = 5,          ///< the bytes are not in the archive's form
  };

  /// An error of that cause.
  explicit CArchiveException(Cause cause = genericException) : m_cause(cause) {}
  /// The cause in words.
  [[nodiscard]] const char* what() const noexcept override;

  Cause m_cause;  ///< why the archive failed
};

/// A number that archives as its own bytes. A type whose width differs between machines, such as `long`, is taken only
/// where it is one of these.
template <typename T>
concept ArchiveNumber =
    std::same_as<T, std::uint8_t> || std::same_as<T, std::int16_t> || std::same_as<T, std::uint16_t> ||
    std::same_as<T, std::int32_t> || std::same_as<T, std::uint32_t> || std::same_as<T, std::int64_t> ||
    std::same_as<T, std::uint64_t> || std::same_as<T, float> || std::same_as<T, double>;

/// An enumeration that archives as a 32-bit integer.
template <typename T>
concept ArchiveEnum = std::is_enum_v<T> && sizeof(T) == 4;

/// A buffered stream of values to or from a file: a source-compatible subset of the framework's class.
///
/// All values are little-endian on every machine and follow each other without padding. An error of the archive
/// throws `CArchiveException`, one of the file passes through; a value whose loading throws keeps what it held.
/// What an archive promises (the length of a text, a count) is believed only as far as the bytes that are left can
/// back it, so a damaged file cannot make it allocate more than a small multiple of its own size.
///
/// The file is not owned. It has to outlive the archive or its `Close`, and is left alone until then: the archive may
/// read bytes where the file holds them.
class CArchive {
 public:
  /// The mode word; loading is its low bit.
  enum Mode : std::uint32_t {
    store = 0,
    load = 1,
    bNoFlushOnDelete = 2,  ///< the destructor writes nothing: only `Close` and `Flush` do
  };

  /// With a buffer of 0 bytes everything goes straight to or from the file. Without the memory for the buffer it throws
  /// `std::bad_alloc`, and the file is as it was; later calls take no memory but for the values that they load.
  CArchive(CFile* file, std::uint32_t mode, std::uint32_t bufferSize = 4096);
  CArchive(const CArchive&) = delete;
  CArchive& operator=(const CArchive&) = delete;
  /// Closes the archive and keeps quiet about errors: whoever stores calls `Close` first, to learn of them.
  ~CArchive();

  /// Whether values are read.
  [[nodiscard]] bool IsLoading() const { return (m_mode & load) != 0; }
  /// Whether values are written.
  [[nodiscard]] bool IsStoring() const { return !IsLoading(); }

  /// Reads up to count bytes and gives their number; fewer only at the end of the file.
  std::uint32_t Read(void* bytes, std::uint32_t count) {
    if (count == 0 || count > Unread()) return ReadThroughBuffer(bytes, count);
    std::memcpy(bytes, m_next, count);
    m_next += count;
    return count;
  }
  /// Reads count bytes; throws end-of-file when there are fewer.
  void ReadExactly(void* bytes, std::uint32_t count) {
    if (Read(bytes, count) != count) throw CArchiveException(CArchiveException::endOfFile);
  }
  /// Writes count bytes.
  void Write(const void* bytes, std::uint32_t count) {
    if (count == 0 || count > Room()) return WriteThroughBuffer(bytes, count);
    std::memcpy(m_free, bytes, count);
    m_free += count;
  }

  /// Storing: hands everything buffered to the file. Loading: moves the file back to where the archive is.
  ///
  /// Once the file has failed to take bytes, the archive does not touch it again, and storing, flushing and closing
  /// throw: an incomplete file cannot pass for a complete one.
  void Flush();
  /// Flushes and lets go of the file, without closing that. A closed archive stays as it is.
  void Close();
  /// Lets go of the file at once; what is buffered is lost.
  void Abort() noexcept;

  /// Bytes left to load; 0 while storing and when closed.
  [[nodiscard]] std::uint64_t Remaining() const;
  /// Throws end-of-file unless that many bytes are left. To be asked before a count is believed.
  void RequireRemaining(std::uint64_t bytes) const {
    if (bytes > Unread() && bytes > Remaining()) throw CArchiveException(CArchiveException::endOfFile);
  }

  /// A number of elements: 16 bits, or 0xFFFF and 32 bits when it is 0xFFFF or more.
  void WriteCount(std::uint32_t count);
  /// Reads what `WriteCount` wrote.
  [[nodiscard]] std::uint32_t ReadCount();

  /// Stores a number, an enumeration as 32 bits, or a boolean as one byte, 0 or 1.
  template <ArchiveNumber T>
  CArchive& operator<<(T value) {
    const auto bytes = InLittleEndian(std::bit_cast<std::array<std::uint8_t, sizeof(T)>>(value));
    Write(bytes.data(), sizeof(T));
    return *this;
  }
  /// Loads what was stored; any byte but 0 is true.
  template <ArchiveNumber T>
  CArchive& operator>>(T& value) {
    std::array<std::uint8_t, sizeof(T)> bytes;
    ReadExactly(bytes.data(), sizeof(T));
    value = std::bit_cast<T>(InLittleEndian(bytes));
    return *this;
  }

  /// Loads a value of that type.
  template <typename T>
  [[nodiscard]] T Load() {
    T value{};
    *this >> value;
    return value;
  }

  /// Throws `badIndex` for a length or a number of elements that is none anywhere else, where it is an `int`.
  static void RequireInt(std::uint64_t number) {
    constexpr std::uint64_t kLargest = std::numeric_limits<std::int32_t>::max();
    if (number > kLargest) throw CArchiveException(CArchiveException::badIndex);
  }

  /// One byte, 0 or 1; any other byte reads as true.
  CArchive& operator<<(std::same_as<bool> auto value) { return *this << static_cast<std::uint8_t>(value ? 1 : 0); }
  CArchive& operator>>(bool& value) {
    std::uint8_t byte = 0;
    *this >> byte;
    value = byte != 0;
    return *this;
  }

  /// A value that the enumeration does not name is taken as it stands.
  template <ArchiveEnum T>
  CArchive& operator<<(T value) {
    return *this << static_cast<std::int32_t>(value);
  }
  /// Loads 32 bits, whatever the enumeration names.
  template <ArchiveEnum T>
  CArchive& operator>>(T& value) {
    std::int32_t number = 0;
    *this >> number;
    value = static_cast<T>(number);
    return *this;
  }

 private:
  friend CArchive& operator>>(CArchive& ar, CString& text);
  CArchive& ReadText(CString& text);

  static_assert(std::numeric_limits<float>::is_iec559 && std::numeric_limits<double>::is_iec559);

  template <std::size_t kSize>
  static std::array<std::uint8_t, kSize> InLittleEndian(std::array<std::uint8_t, kSize> bytes) {
    if constexpr (std::endian::native == std::endian::big) std::reverse(bytes.begin(), bytes.end());
    return bytes;
  }

  /// Bytes that can be read without asking the file; 0 while storing and when closed.
  [[nodiscard]] std::size_t Unread() const { return static_cast<std::size_t>(m_last - m_next); }
  /// Bytes that can be written without asking the file; 0 while loading and when closed.
  [[nodiscard]] std::size_t Room() const { return static_cast<std::size_t>(m_full - m_free); }
  [[nodiscard]] CFile& File() const;

  std::uint32_t ReadThroughBuffer(void* bytes, std::uint32_t count);
  void WriteThroughBuffer(const void* bytes, std::uint32_t count);
  void FillBuffer();
  void EmptyBuffer();
  void WriteToFile(const void* bytes, std::uint32_t count);

  CFile* m_file;  ///< null when closed
  std::uint32_t m_mode;
  bool m_failed = false;  ///< the file did not take what was stored
  std::vector<std::uint8_t> m_buffer;
  const std::uint8_t* m_next = nullptr;  ///< loading: the next byte, in the buffer or where the file holds it
  const std::uint8_t* m_last = nullptr;  ///< loading: the end of the bytes that are there
  std::uint8_t* m_free = nullptr;        ///< storing: where the next byte goes in the buffer
  std::uint8_t* m_full = nullptr;        ///< storing: the end of the buffer
};

/// The real's 8 bytes, unset as -1e-99.
inline CArchive& operator<<(CArchive& ar, NurReal value) { return ar << value.Value(); }
CArchive& operator>>(CArchive& ar, NurReal& value);

/// The integer's 4 bytes, unset as the smallest one.
inline CArchive& operator<<(CArchive& ar, NurLong value) { return ar << value.Value(); }
CArchive& operator>>(CArchive& ar, NurLong& value);

/// The bytes as they are held, without a terminator, behind their number: 1 byte below 0xFF; else 0xFF and 16 bits
/// below 0xFFFE; else 0xFF, 0xFFFF and 32 bits.
CArchive& operator<<(CArchive& ar, const CString& text);
inline CArchive& operator>>(CArchive& ar, CString& text) {
  // Most texts of a model are empty.
  if (ar.Unread() == 0 || *ar.m_next != 0) return ar.ReadText(text);
  ++ar.m_next;
  text.Empty();
  return ar;
}

/// The 32-bit status, then the 64-bit value.
CArchive& operator<<(CArchive& ar, const COleDateTime& dateTime);
CArchive& operator>>(CArchive& ar, COleDateTime& dateTime);

/// The count, then each text.
CArchive& operator<<(CArchive& ar, const CStringArray& texts);
CArchive& operator>>(CArchive& ar, CStringArray& texts);
