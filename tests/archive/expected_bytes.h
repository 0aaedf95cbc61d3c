#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iomanip>
#include <ostream>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/support/archive_bytes.h"

// Archive records as tables of their fields, written down by hand and compared byte by byte:
//
//     EXPECT_TRUE(HasBytes(bytes, {{"name", Text("road")}, {"serial", U32(7)}, {"type", Text("fill"), isNew}}));
//
// A failure names the first field that differs. The encoding is made here, not by the archive under test.

namespace archive_test {

using test_support::Bytes;

/// A value as the archive has it.
struct Encoded {
  std::string type;
  Bytes bytes;
};

namespace detail {

inline Encoded LittleEndian(std::string type, std::uint64_t value, int width) {
  Encoded encoded{std::move(type), {}};
  for (int i = 0; i < width; ++i) encoded.bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
  return encoded;
}

inline std::string Hex(const Bytes& bytes) {
  std::ostringstream out;
  out << std::hex << std::setfill('0');
  for (const std::uint8_t byte : bytes) out << ' ' << std::setw(2) << static_cast<int>(byte);
  return out.str();
}

}  // namespace detail

inline Encoded U8(std::uint8_t value) { return detail::LittleEndian("8 bits", value, 1); }
inline Encoded Bool(bool value) { return detail::LittleEndian("bool", value ? 1 : 0, 1); }
inline Encoded U16(std::uint16_t value) { return detail::LittleEndian("16 bits", value, 2); }
inline Encoded U32(std::uint32_t value) { return detail::LittleEndian("32 bits", value, 4); }
inline Encoded I32(std::int32_t value) { return detail::LittleEndian("32 bits", static_cast<std::uint32_t>(value), 4); }
inline Encoded Real(double value) { return detail::LittleEndian("real", std::bit_cast<std::uint64_t>(value), 8); }
/// A text of less than 255 bytes.
inline Encoded Text(std::string_view text) {
  Encoded encoded = detail::LittleEndian("text", text.size(), 1);
  encoded.bytes.insert(encoded.bytes.end(), text.begin(), text.end());
  return encoded;
}
/// An extension table without values.
inline Encoded EmptyTable() { return {"table", U32(0).bytes}; }
/// An extension table with one integer.
inline Encoded TableOf(std::int32_t key, std::int32_t value) {
  constexpr std::uint8_t kInteger = 1;
  using test_support::operator+;
  return {"table", U32(1).bytes + I32(key).bytes + U8(kInteger).bytes + I32(value).bytes};
}

struct ExpectedRow;

/// The fields of a record in their order.
class ExpectedBytes {
 public:
  struct Field {
    std::string name;
    Encoded value;
  };

  ExpectedBytes() = default;
  ExpectedBytes(std::initializer_list<ExpectedRow> rows);

  void Add(const ExpectedRow& row);
  [[nodiscard]] const std::vector<Field>& Fields() const { return m_fields; }
  [[nodiscard]] Bytes All() const {
    Bytes bytes;
    for (const Field& field : m_fields) {
      bytes.insert(bytes.end(), field.value.bytes.begin(), field.value.bytes.end());
    }
    return bytes;
  }

 private:
  std::vector<Field> m_fields;
};

/// A field, or a whole record in its place; left out when it is not present.
struct ExpectedRow {
  ExpectedRow(std::string name, Encoded value, bool present = true) {
    if (present) fields.push_back({std::move(name), std::move(value)});
  }
  ExpectedRow(const std::string& name, const ExpectedBytes& record, bool present = true) {
    if (!present) return;
    for (const ExpectedBytes::Field& field : record.Fields()) fields.push_back({name + '.' + field.name, field.value});
  }

  std::vector<ExpectedBytes::Field> fields;
};

inline ExpectedBytes::ExpectedBytes(std::initializer_list<ExpectedRow> rows) {
  for (const ExpectedRow& row : rows) Add(row);
}

inline void ExpectedBytes::Add(const ExpectedRow& row) {
  m_fields.insert(m_fields.end(), row.fields.begin(), row.fields.end());
}

/// The record with one field encoded otherwise.
inline Bytes With(const ExpectedBytes& table, std::size_t replaced, const Bytes& encoding) {
  Bytes bytes;
  for (std::size_t i = 0; i < table.Fields().size(); ++i) {
    const Bytes& field = i == replaced ? encoding : table.Fields()[i].value.bytes;
    bytes.insert(bytes.end(), field.begin(), field.end());
  }
  return bytes;
}

/// Whether the bytes are those of the fields, no more and no less.
inline testing::AssertionResult HasBytes(const Bytes& bytes, const ExpectedBytes& expected) {
  std::size_t at = 0;
  for (const ExpectedBytes::Field& field : expected.Fields()) {
    const std::size_t taken = std::min(field.value.bytes.size(), bytes.size() - at);
    const auto from = bytes.begin() + static_cast<std::ptrdiff_t>(at);
    const Bytes found(from, from + static_cast<std::ptrdiff_t>(taken));
    if (found != field.value.bytes) {
      return testing::AssertionFailure() << "field \"" << field.name << "\" (" << field.value.type << ") at byte " << at
                                         << ": expected" << detail::Hex(field.value.bytes) << ", found"
                                         << (found.empty() ? " the end" : detail::Hex(found));
    }
    at += taken;
  }
  if (at == bytes.size()) return testing::AssertionSuccess();
  return testing::AssertionFailure() << bytes.size() - at << " bytes behind the last field, from byte " << at << " on:"
                                     << detail::Hex(Bytes(bytes.begin() + static_cast<std::ptrdiff_t>(at),
                                                          bytes.begin() + static_cast<std::ptrdiff_t>(
                                                                              std::min(at + 16, bytes.size()))));
}

}  // namespace archive_test
