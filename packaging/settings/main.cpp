#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>

#include "packaging/settings/generated.h"

/// Writes everything that is made from the table of settings below a folder: the project's own, to
/// be committed.
int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
    return 2;
  }
  try {
    for (const auto& [name, bytes] : packaging::generatedFiles()) {
      const auto path = std::filesystem::path(argv[1]) / name;
      std::filesystem::create_directories(path.parent_path());
      std::ofstream file;
      file.exceptions(std::ios::failbit | std::ios::badbit);
      file.open(path, std::ios::binary);
      file << bytes;
      file.close();
    }
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s: %s\n", argv[0], error.what());
    return 1;
  }
}
