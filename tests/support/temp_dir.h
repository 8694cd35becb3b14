#pragma once
// A scratch directory removed with everything in it when the test ends.

#include <filesystem>
#include <fstream>
#include <random>
#include <string>

namespace hytest {

class TempDir {
 public:
  TempDir() {
    std::random_device rd;
    path_ = std::filesystem::temp_directory_path() /
            ("hy_util_test_" + std::to_string(rd()) + "_" + std::to_string(rd()));
    std::filesystem::create_directories(path_);
  }
  ~TempDir() {
    std::error_code ec;
    std::filesystem::remove_all(path_, ec);
  }
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  const std::filesystem::path& path() const { return path_; }
  std::string File(const std::string& name) const { return (path_ / name).string(); }

  // Writes bytes to a file in the directory and returns its path.
  std::string Write(const std::string& name, const std::string& bytes) const {
    const std::string p = File(name);
    std::ofstream(p, std::ios::binary) << bytes;
    return p;
  }

 private:
  std::filesystem::path path_;
};

inline std::string ReadFileBytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

}  // namespace hytest
