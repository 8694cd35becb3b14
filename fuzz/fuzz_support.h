#pragma once
// Pieces shared by the fuzz targets: a host that swallows message boxes (they would
// flood the fuzzer's output), one scratch directory per process that is also the
// host's application directory, and writing the fuzzer's bytes to a file there.

#include <stdlib.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

#include "hy_util/platform/application.h"

namespace hyfuzz {

class QuietApplication : public CHU_DefaultApplication {
 public:
  void ShowMessage(const std::string&, HU_MessageKind) override {}
};

inline const std::string& ScratchDirectory() {
  static const std::string directory = [] {
    static QuietApplication application;
    HU_SetApplication(&application);
    char pattern[] = "/tmp/hy_util_fuzz_XXXXXX";
    const char* made = mkdtemp(pattern);
    std::string path = made ? made : "/tmp";
    application.SetAppDirectory(path);
    return path;
  }();
  return directory;
}

inline bool WriteFile(const std::string& path, const std::uint8_t* data, std::size_t size) {
  std::FILE* file = std::fopen(path.c_str(), "wb");
  if (file == nullptr) return false;
  const bool written = std::fwrite(data, 1, size, file) == size;
  return std::fclose(file) == 0 && written;
}

}  // namespace hyfuzz
