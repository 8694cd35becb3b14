// Feeds arbitrary bytes to the text file reader as a file: every line is read
// plain, with comment skipping, and as tokens. Seeking back by the characters
// read must bring back the same tokens.

#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "hy_util/core/text_file.h"

#include "fuzz_support.h"

namespace {

const std::string& ScratchPath() {
  static const std::string path = hyfuzz::ScratchDirectory() + "/text.txt";
  return path;
}

void ReadAllLines(bool skipComments) {
  CHU_File file(ScratchPath().c_str(), HU_modeRead | HU_typeText);
  file.SetCommentMarkers("!#");
  std::string line;
  while (file.ReadLine(line, skipComments)) {
  }
}

void ReadAllTokens(bool checkSeekBack) {
  CHU_File file(ScratchPath().c_str(), " ,\t", HU_modeRead | HU_typeText);
  file.SetCommentMarkers("#");
  std::vector<std::string> tokens;
  std::vector<std::string> again;
  for (;;) {
    int lineChars = 0;
    if (!file.ReadLine(tokens, lineChars)) break;
    if (!checkSeekBack) continue;
    int rereadChars = 0;
    if (!file.Seek(file.GetLineStart(), SEEK_SET) || !file.ReadLine(again, rereadChars) ||
        again != tokens || rereadChars != lineChars)
      __builtin_trap();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (!hyfuzz::WriteFile(ScratchPath(), data, size)) return 0;
  try {
    ReadAllLines(false);
    ReadAllLines(true);
    ReadAllTokens(size == 0 || data[0] != '\r');
  } catch (const CHU_FileException&) {
    // A read error of the file system, not of the content; nothing to check.
  }
  return 0;
}
