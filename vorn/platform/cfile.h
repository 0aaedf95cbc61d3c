#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "vorn/platform/exceptions.h"

/// A file that could not be read, written or positioned.
class CFileException : public CException {
 public:
  /// The framework's causes, as far as a byte stream knows them.
  enum Cause : std::int32_t {
    none = 0,
    genericException = 1,
    accessDenied = 5,
    badSeek = 9,  ///< a position before the beginning, or one that no file has
    hardIO = 10,
    diskFull = 13,
    endOfFile = 14,
  };

  /// An error of that cause.
  explicit CFileException(Cause cause = genericException) : m_cause(cause) {}
  /// The cause in words.
  [[nodiscard]] const char* what() const noexcept override;

  Cause m_cause;  ///< why the file failed
};

/// A stream of bytes with a position: the framework's file, as far as an archive needs it. Errors throw
/// `CFileException`.
class CFile {
 public:
  /// What an offset counts from.
  enum SeekPosition : std::uint32_t { begin = 0, current = 1, end = 2 };

  CFile() = default;
  CFile(const CFile&) = delete;
  CFile& operator=(const CFile&) = delete;
  virtual ~CFile() = default;

  /// Reads up to count bytes from the position on and gives their number; 0 at the end of the file. Whoever overrides
  /// it below a file that gives its bytes in place overrides `ReadInPlace` too: otherwise those are read past it.
  virtual std::uint32_t Read(void* bytes, std::uint32_t count) = 0;
  /// A file that holds its bytes in memory gives those from the position on where they are, and moves the position to
  /// its end; they stay valid until the file is written, emptied or destroyed. Other files give none and stay, and so
  /// does any file at its end or behind it.
  virtual std::span<const std::uint8_t> ReadInPlace() { return {}; }
  /// Writes all bytes at the position, or throws; then it is not known how many of them were written.
  virtual void Write(const void* bytes, std::uint32_t count) = 0;
  /// Hands everything written to where it is kept.
  virtual void Flush() = 0;
  /// Ends the use of the file.
  virtual void Close() = 0;

  /// Length in bytes.
  [[nodiscard]] virtual std::uint64_t GetLength() const = 0;
  /// Position in bytes from the beginning.
  [[nodiscard]] virtual std::uint64_t GetPosition() const = 0;
  /// Moves to an offset from the given end or the position, and gives the new position. It may lie behind the end.
  virtual std::uint64_t Seek(std::int64_t offset, SeekPosition from) = 0;
  /// Moves to the beginning.
  void SeekToBegin() { Seek(0, begin); }
  /// Moves to the end, and gives the length.
  std::uint64_t SeekToEnd() { return Seek(0, end); }
};

/// A file in memory that grows as it is written. What is skipped by writing behind the end reads as zeros.
class CMemFile : public CFile {
 public:
  CMemFile() = default;
  /// A file of these bytes, at its beginning.
  explicit CMemFile(std::vector<std::uint8_t> bytes) { Attach(std::move(bytes)); }

  /// Makes the bytes the content of the file and goes to its beginning.
  void Attach(std::vector<std::uint8_t> bytes);
  /// Takes the content out and leaves an empty file.
  [[nodiscard]] std::vector<std::uint8_t> Detach();
  /// The content.
  [[nodiscard]] const std::vector<std::uint8_t>& Bytes() const { return m_bytes; }

  /// A subclass that reads in its own way overrides both: an archive asks for the bytes in place first.
  std::uint32_t Read(void* bytes, std::uint32_t count) override;
  std::span<const std::uint8_t> ReadInPlace() override;
  /// The bytes must not be those of the file itself. Without the memory for them it throws `CFileException::diskFull`,
  /// and content and position are as they were.
  void Write(const void* bytes, std::uint32_t count) override;
  void Flush() override {}
  /// Drops the content.
  void Close() override { Attach({}); }

  [[nodiscard]] std::uint64_t GetLength() const override { return m_bytes.size(); }
  [[nodiscard]] std::uint64_t GetPosition() const override { return m_position; }
  std::uint64_t Seek(std::int64_t offset, SeekPosition from) override;

 private:
  /// Puts bytes at the position, up to `last`.
  void Put(const std::uint8_t* bytes, std::size_t count, std::size_t last);

  std::vector<std::uint8_t> m_bytes;
  std::uint64_t m_position = 0;  ///< never above the largest signed value
};
