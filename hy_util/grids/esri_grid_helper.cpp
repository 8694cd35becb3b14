#include "hy_util/grids/esri_grid_helper.h"

#include <cctype>
#include <filesystem>

#include "hy_util/grids/esri_grid_ascii.h"
#include "hy_util/grids/esri_grid_binary.h"

namespace {

// The position of the extension's dot, or npos when the file name has none.
std::size_t ExtensionDot(const std::string& path) {
  const std::size_t dot = path.find_last_of('.');
  const std::size_t slash = path.find_last_of('/');
  if (dot == std::string::npos || (slash != std::string::npos && dot < slash)) return std::string::npos;
  return dot;
}

bool Exists(const std::string& path) {
  std::error_code ec;
  return std::filesystem::is_regular_file(path, ec);
}

}  // namespace

bool CHU_File_EsriGrid_Helper::isFltFile(const std::string& path) {
  const std::size_t dot = ExtensionDot(path);
  if (dot == std::string::npos) return Exists(path + ".hdr");
  // Extensions are compared without regard to case, as on the systems these
  // grids usually come from.
  std::string extension = path.substr(dot);
  for (char& ch : extension) ch = static_cast<char>(std::tolower(static_cast<unsigned char>(ch)));
  if (extension == ".flt") return true;
  if (extension == ".asc" || extension == ".txt") return false;
  return Exists(path.substr(0, dot) + ".hdr");
}

std::unique_ptr<CHU_File_EsriGrid> CHU_File_EsriGrid_Helper::open(const std::string& path) {
  std::unique_ptr<CHU_File_EsriGrid> grid;
  if (isFltFile(path)) {
    grid = std::make_unique<CHU_File_EsriGridBinary>(path.c_str());
  } else {
    grid = std::make_unique<CHU_File_EsriGridASCII>(path.c_str());
  }
  if (!grid->FileOpened()) grid.reset();
  return grid;
}

std::unique_ptr<CHU_File_EsriGrid> CHU_File_EsriGrid_Helper::createFromTin(const std::string&, const CHU_Tin*,
                                                                           int) {
  return nullptr;
}
