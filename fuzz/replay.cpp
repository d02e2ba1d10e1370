// SPDX-License-Identifier: MIT
//
// Runs a fuzz target, without a fuzzer, on files and on all files in directories.

#include <cstdint>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

void replayFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::filesystem::filesystem_error("cannot be read", path, {});
  const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
  // Printed first: an input that fails ends the program.
  std::cout << path.filename().string() << std::endl;
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

std::size_t replay(const std::filesystem::path& path) {
  if (!std::filesystem::is_directory(path)) {
    replayFile(path);
    return 1;
  }
  std::size_t count = 0;
  for (const auto& entry : std::filesystem::directory_iterator(path)) count += replay(entry.path());
  return count;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    std::size_t count = 0;
    for (int i = 1; i < argc; ++i) count += replay(argv[i]);
    std::cout << count << " inputs\n";
    return count == 0 ? 1 : 0;
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
