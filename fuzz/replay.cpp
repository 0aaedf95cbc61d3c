// Judges every file of a corpus without a fuzzer, so that what was found once stays mended:
//   vorn_<target>_replay FILE_OR_DIRECTORY...
// or writes the inputs that the fuzzer starts from:
//   vorn_<target>_replay --make-seeds DIRECTORY

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "fuzz/target.h"

namespace {

namespace fs = std::filesystem;

bool JudgeFile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  const std::vector<char> bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  if (!file) throw fs::filesystem_error("cannot be read", path, std::make_error_code(std::errc::io_error));
  // Said before, so that a crash leaves the name behind.
  std::printf("%s ", path.string().c_str());
  std::fflush(stdout);
  const bool taken = vorn_fuzz::Judge({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
  std::printf("%s\n", taken ? "taken" : "refused");
  return taken;
}

std::vector<fs::path> FilesIn(const std::vector<fs::path>& paths) {
  std::vector<fs::path> files;
  for (const fs::path& path : paths) {
    if (!fs::is_directory(path)) {
      files.push_back(path);
      continue;
    }
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(path)) {
      if (entry.is_regular_file()) files.push_back(entry.path());
    }
  }
  std::sort(files.begin(), files.end());
  return files;
}

int Replay(const std::vector<fs::path>& paths) {
  const std::vector<fs::path> files = FilesIn(paths);
  const auto taken = std::count_if(files.begin(), files.end(), JudgeFile);
  std::printf("%d inputs, %d of them taken\n", static_cast<int>(files.size()), static_cast<int>(taken));
  return taken > 0 ? 0 : 1;  // a corpus that is empty or only refused is a mistake
}

void MakeSeedFiles(const fs::path& directory) {
  fs::create_directories(directory);
  for (const vorn_fuzz::Seed& seed : vorn_fuzz::MakeSeeds()) {
    std::ofstream file(directory / seed.name, std::ios::binary);
    file.write(reinterpret_cast<const char*>(seed.input.data()), static_cast<std::streamsize>(seed.input.size()));
    file.close();
    if (!file) throw fs::filesystem_error("cannot be written", seed.name, std::make_error_code(std::errc::io_error));
  }
}

}  // namespace

int main(int argc, char** argv) try {
  if (argc == 3 && std::strcmp(argv[1], "--make-seeds") == 0) {
    MakeSeedFiles(argv[2]);
    return 0;
  }
  if (argc < 2) {
    std::fprintf(stderr, "usage: %s FILE_OR_DIRECTORY...\n       %s --make-seeds DIRECTORY\n", argv[0], argv[0]);
    return 2;
  }
  return Replay({argv + 1, argv + argc});
} catch (const std::exception& error) {
  std::fprintf(stderr, "%s\n", error.what());
  return 1;
}
