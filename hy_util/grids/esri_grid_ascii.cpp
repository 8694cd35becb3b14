#include "hy_util/grids/esri_grid_ascii.h"

#include <algorithm>
#include <charconv>

#include "hy_util/grids/grid_text_number.h"

CHU_File_EsriGridASCII::CHU_File_EsriGridASCII(const char* path, unsigned int flags)
    : CHU_File_EsriGrid(path, flags) {}

bool CHU_File_EsriGridASCII::ReadRowData(float* row) {
  if (!header_ || row == nullptr) return false;
  std::vector<std::string> tokens;
  int charsRead = 0;
  if (!CHU_File::ReadLine(tokens, charsRead) || tokens.empty() || tokens.front().empty()) return false;
  const std::size_t count = std::min(static_cast<std::size_t>(GetColCount()), tokens.size());
  for (std::size_t c = 0; c < count; ++c) {
    double value = 0.0;
    row[c] = static_cast<float>(HU_ParseGridNumber(tokens[c], value) ? value : GetNoDataValue());
  }
  return true;
}

bool CHU_File_EsriGridASCII::WriteHeader() { return CHU_File_EsriGrid::WriteHeader(); }

bool CHU_File_EsriGridASCII::WriteNextData(const std::string& text) {
  if (Stream() == nullptr) return false;
  return std::fwrite(text.data(), 1, text.size(), Stream()) == text.size();
}

bool CHU_File_EsriGridASCII::WriteNextData(float value) {
  char buffer[400];
  auto result = std::to_chars(buffer, buffer + sizeof buffer - 1, static_cast<double>(value),
                              std::chars_format::fixed, 3);
  *result.ptr++ = ' ';
  return WriteNextData(std::string(buffer, result.ptr));
}
