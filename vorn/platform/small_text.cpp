#include "vorn/platform/small_text.h"

#include <algorithm>
#include <limits>
#include <new>
#include <stdexcept>

namespace {

/// The room in front of the bytes.
constexpr std::size_t kHead = sizeof(std::uint32_t);
constexpr std::size_t kLongest = std::numeric_limits<std::uint32_t>::max() - kHead - 1;

}  // namespace

SmallText::Apart SmallText::Acquire(std::size_t capacity) {
  if (capacity > kLongest) throw std::length_error("a text of 4 GiB");
  auto* block = static_cast<char*>(::operator new(kHead + capacity + 1));
  const auto room = static_cast<std::uint32_t>(capacity);
  std::memcpy(block, &room, kHead);
  return {block + kHead, 0};
}

void SmallText::Release(Apart apart) noexcept { ::operator delete(apart.bytes - kHead); }

std::size_t SmallText::Capacity() const {
  if (!IsApart()) return kInPlace;
  std::uint32_t room = 0;
  std::memcpy(&room, GetApart().bytes - kHead, kHead);
  return room;
}

void SmallText::SetSize(std::size_t size) noexcept {
  if (!IsApart()) return SetInPlaceSize(size);
  Apart apart = GetApart();
  apart.size = static_cast<std::uint32_t>(size);
  apart.bytes[size] = '\0';
  SetApart(apart);
}

void SmallText::Adopt(Apart apart, std::size_t size) noexcept {
  if (IsApart()) Release(GetApart());
  SetApart(apart);
  SetSize(size);
}

void SmallText::assign(std::string_view text) {
  if (text.size() <= Capacity()) {
    if (!text.empty()) std::memmove(data(), text.data(), text.size());
    return SetSize(text.size());
  }
  const Apart apart = Acquire(text.size());
  std::memcpy(apart.bytes, text.data(), text.size());
  Adopt(apart, text.size());
}

void SmallText::append(std::string_view text) {
  if (text.empty()) return;
  const std::size_t before = size();
  const std::size_t after = before + text.size();
  if (after <= Capacity()) {
    std::memmove(data() + before, text.data(), text.size());
    return SetSize(after);
  }
  const Apart apart = Acquire(std::max(after, std::min(2 * before, kLongest)));
  std::memcpy(apart.bytes, data(), before);
  std::memcpy(apart.bytes + before, text.data(), text.size());
  Adopt(apart, after);
}

char* SmallText::resize(std::size_t size) {
  if (size <= Capacity()) {
    SetSize(size);
  } else {
    const Apart apart = Acquire(size);
    std::memcpy(apart.bytes, data(), this->size());
    Adopt(apart, size);
  }
  return data();
}

void SmallText::truncate(std::size_t size) {
  if (size < this->size()) SetSize(size);
}
