#pragma once

#include <optional>
#include <string>

/// Memory that reading a document takes, as multiples of its size.
struct ReadingMemory {
  double peak = 0.0;       ///< the most that the process had of the machine's memory
  double resident = 0.0;   ///< what it has once everything but the document read is released
  double allocated = 0.0;  ///< what of it the document asked for
};

/// Reads a file in this process, which should have done nothing else before, and writes what it took to another.
/// @returns the exit code
int MeasureReadingMemory(const std::string& in, const std::string& out);

/// Does that in a process of its own; none where the system does not tell, or when it failed.
[[nodiscard]] std::optional<ReadingMemory> ReadingMemoryOf(const std::string& in);

/// The first argument of the process of its own; the files follow.
inline constexpr const char* kReadMemoryOption = "--read-memory";
