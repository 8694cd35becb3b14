#pragma once
// CHU_File_EsriGrid_Helper: opens an ESRI grid of either form by its file name.
//
// A ".flt" path is a float grid and ".asc" or ".txt" an ASCII grid (in any
// letter case); any other name is a float grid exactly when a ".hdr" file of the
// same stem exists (for a name without a dot: the name with ".hdr" appended).

#include <memory>
#include <string>

#include "hy_util/grids/esri_grid.h"

// A triangulated surface of the host application; it is not part of this library.
class CHU_Tin;

class CHU_File_EsriGrid_Helper {
 public:
  // A new grid, opened for shared reading, or nullptr when the file cannot be opened.
  static std::unique_ptr<CHU_File_EsriGrid> open(const std::string& path);
  static bool isFltFile(const std::string& path);
  // Building a grid from a triangulated surface needs the host's surface type,
  // which this library does not have: always nullptr.
  static std::unique_ptr<CHU_File_EsriGrid> createFromTin(const std::string& path, const CHU_Tin* tin,
                                                          int option);
};
