// The entry of libFuzzer.

#include "fuzz/archive_target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  vorn_fuzz::JudgeArchive({data, size});
  return 0;
}
