#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace vorn_fuzz {

/// Takes decisions from an input, byte by byte; zeros when it is used up.
class InputReader {
 public:
  explicit InputReader(std::span<const std::uint8_t> input) : m_input(input) {}

  [[nodiscard]] bool IsEmpty() const { return m_input.empty(); }

  std::uint8_t Byte() {
    if (m_input.empty()) return 0;
    const std::uint8_t byte = m_input.front();
    m_input = m_input.subspan(1);
    return byte;
  }

  /// A number from 0 to below a count, 0 for a count of 0.
  int Choose(int count) { return count > 0 ? Byte() % count : 0; }
  template <typename Item, std::size_t kSize>
  const Item& Choose(const Item (&items)[kSize]) {
    return items[Choose(static_cast<int>(kSize))];
  }

  /// A length in metres, to the millimetre, up to 32 m to either side; nearly as often as any other, 0.
  double Length() {
    const auto high = static_cast<std::int8_t>(Byte());
    return (high * 256 + (high % 4 == 0 ? 0 : Byte())) / 1000.0;
  }

 private:
  std::span<const std::uint8_t> m_input;
};

}  // namespace vorn_fuzz
