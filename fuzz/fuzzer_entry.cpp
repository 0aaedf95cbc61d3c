// The entry of libFuzzer.

#include "fuzz/target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  vorn_fuzz::Judge({data, size});
  return 0;
}
