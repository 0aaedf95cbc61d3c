#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>

/// The bytes of a text and a terminator, in 16 bytes on every machine. Up to 15 bytes lie in the object itself, longer
/// texts in memory of their own. Next to all texts of a model are codes and names that are short or empty, and there
/// are millions of them: half the size of a standard string is a third of a model.
class SmallText {
 public:
  /// Texts of that length still lie in the object.
  static constexpr std::size_t kInPlace = 15;

  SmallText() noexcept { SetInPlaceSize(0); }
  /// A copy of the text.
  explicit SmallText(std::string_view text) : SmallText() { assign(text); }
  /// The copy has memory of its own.
  SmallText(const SmallText& other) : SmallText() { assign(other.View()); }
  SmallText(SmallText&& other) noexcept : m_bytes(other.m_bytes) { other.SetInPlaceSize(0); }
  /// Replaces the text.
  SmallText& operator=(const SmallText& other) {
    assign(other.View());
    return *this;
  }
  SmallText& operator=(SmallText&& other) noexcept {
    SmallText taken(std::move(other));
    std::swap(m_bytes, taken.m_bytes);
    return *this;
  }
  /// Gives memory of its own back.
  ~SmallText() {
    if (IsApart()) Release(GetApart());
  }

  /// The number of bytes.
  [[nodiscard]] std::size_t size() const { return IsApart() ? GetApart().size : kInPlace - Tag(); }
  /// Whether there is no byte.
  [[nodiscard]] bool empty() const { return size() == 0; }
  /// The bytes, with a terminator behind them; valid until the text changes or moves.
  [[nodiscard]] const char* data() const { return IsApart() ? GetApart().bytes : m_bytes.data(); }
  [[nodiscard]] char* data() { return IsApart() ? GetApart().bytes : m_bytes.data(); }
  /// The bytes without a copy; valid until the text changes or moves.
  [[nodiscard]] std::string_view View() const { return {data(), size()}; }

  // The argument may be a part of this text. A text of 4 GiB throws `std::length_error`; like a lack of memory, that
  // leaves the text as it was.

  /// Replaces the text.
  void assign(std::string_view text);
  /// Appends to the text.
  void append(std::string_view text);
  /// Cuts the text or makes it longer, and gives its bytes. Those that are new are to be written: what is in them is
  /// not defined until then.
  [[nodiscard]] char* resize(std::size_t size);
  /// Cuts the text to its first bytes; a longer size does nothing.
  void truncate(std::size_t size);
  /// Keeps memory for the next text.
  void clear() { truncate(0); }

 private:
  /// A text in memory of its own. In front of its bytes stands how many of them there is room for.
  struct Apart {
    char* bytes;
    std::uint32_t size;
  };
  static_assert(sizeof(Apart) <= 16 && offsetof(Apart, size) + sizeof(std::uint32_t) <= kInPlace);

  static constexpr unsigned char kApart = 0x80;

  /// In place: how many bytes are free, so that a full text's tag is its terminator. Apart: `kApart`.
  [[nodiscard]] unsigned char Tag() const { return static_cast<unsigned char>(m_bytes[kInPlace]); }
  [[nodiscard]] bool IsApart() const { return Tag() == kApart; }
  [[nodiscard]] Apart GetApart() const {
    Apart apart;
    std::memcpy(&apart, m_bytes.data(), sizeof apart);
    return apart;
  }
  void SetApart(Apart apart) {
    std::memcpy(m_bytes.data(), &apart, offsetof(Apart, size) + sizeof apart.size);
    m_bytes[kInPlace] = static_cast<char>(kApart);
  }
  /// Ends the text in place behind that many bytes.
  void SetInPlaceSize(std::size_t size) {
    m_bytes[kInPlace] = static_cast<char>(kInPlace - size);
    m_bytes[size] = '\0';
  }

  [[nodiscard]] std::size_t Capacity() const;
  void SetSize(std::size_t size) noexcept;
  /// Takes memory of its own in place of what it holds.
  void Adopt(Apart apart, std::size_t size) noexcept;
  /// Memory for at least that many bytes and a terminator.
  static Apart Acquire(std::size_t capacity);
  static void Release(Apart apart) noexcept;

  alignas(void*) std::array<char, kInPlace + 1> m_bytes{};
};
