#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

// What every target has: it judges inputs, and gives those that a search starts from. A program holds one target.

namespace vorn_fuzz {

/// Judges one input, and gives whether it is one that the library takes. A finding is told and aborts; anything that is
/// thrown is one as well.
bool Judge(std::span<const std::uint8_t> input);

/// An input to start from, with the name of its file.
struct Seed {
  std::string name;
  std::vector<std::uint8_t> input;
};
/// Small inputs that the library takes, of every kind that the target knows.
[[nodiscard]] std::vector<Seed> MakeSeeds();

/// Tells what does not hold, and aborts.
/// @param where which part of the judging, "store version 06.00"
[[noreturn]] void Finding(const std::string& where, const std::string& what);

}  // namespace vorn_fuzz
