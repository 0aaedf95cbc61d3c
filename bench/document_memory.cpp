#include "bench/document_memory.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "bench/process_state.h"
#include "host/document/design_document.h"

int MeasureReadingMemory(const std::string& in, const std::string& out) {
  try {
    const vorn_host::DesignDocument document = vorn_host::DesignDocument::Read(in);
    ReturnFreedMemory();
    const MemoryUse use = CurrentMemoryUse();
    const auto size = static_cast<double>(std::filesystem::file_size(in));
    std::ofstream file(out);
    file << static_cast<double>(use.peak) / size << ' ' << static_cast<double>(use.resident) / size << ' '
         << static_cast<double>(use.allocated) / size << '\n';
    return file.good() && !document.sets.IsEmpty() ? 0 : 1;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
    return 1;
  }
}

std::optional<ReadingMemory> ReadingMemoryOf(const std::string& in) {
  const std::string program = OwnPath();
  if (program.empty() || CurrentMemoryUse().peak == 0) return std::nullopt;
  const std::string out = in + ".memory";
  const std::string command = "\"" + program + "\" " + kReadMemoryOption + " \"" + in + "\" \"" + out + "\"";
  ReadingMemory memory;
  const bool done = std::system(command.c_str()) == 0 &&
                    static_cast<bool>(std::ifstream(out) >> memory.peak >> memory.resident >> memory.allocated);
  std::filesystem::remove(out);
  return done ? std::optional<ReadingMemory>(memory) : std::nullopt;
}
