#pragma once

#include <cstddef>
#include <string>

/// Gives memory that was freed back to the system. A process that reads one document takes its memory from the system,
/// page by page; one that reads it again and again reuses what it has, and a parser alone is three times as fast then.
/// Whatever is measured starts without memory to reuse, as it does for a user.
void ReturnFreedMemory();

/// The processor's seconds of this process, all threads together, and of the programs that it ran.
[[nodiscard]] double ProcessorSeconds();

/// What this process takes and took of the machine's memory, in bytes; zeros where the system does not tell.
struct MemoryUse {
  std::size_t peak = 0;       ///< the most that it ever had
  std::size_t resident = 0;   ///< what it has
  std::size_t allocated = 0;  ///< what of it the program has asked for and not given back
};
[[nodiscard]] MemoryUse CurrentMemoryUse();

/// The path of the running program, or an empty text where the system does not tell.
[[nodiscard]] std::string OwnPath();

/// Memory, compiler and libraries; the benchmarks' own report tells about the processor.
void PrintMachine();
