#include <gtest/gtest.h>

#include <clocale>
#include <string>

#include "binary_grid_test_reader.h"
#include "hy_util/grids/esri_grid_ascii.h"
#include "hy_util/grids/grid_converter.h"
#include "support/temp_dir.h"

namespace {

// Switches the process to a decimal-comma locale for one test, if one is installed.
class DecimalCommaLocale {
 public:
  DecimalCommaLocale() : previous_(std::setlocale(LC_ALL, nullptr)) {
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "de_DE", "German_Germany.1252"}) {
      if (std::setlocale(LC_ALL, name) != nullptr && *std::localeconv()->decimal_point == ',') {
        active_ = true;
        return;
      }
    }
    std::setlocale(LC_ALL, previous_.c_str());
  }
  ~DecimalCommaLocale() { std::setlocale(LC_ALL, previous_.c_str()); }
  bool Active() const { return active_; }

 private:
  std::string previous_;
  bool active_ = false;
};

TEST(EsriGridLocaleTest, DecimalCommaLocaleChangesNothingReadOrWritten) {
  DecimalCommaLocale locale;
  if (!locale.Active()) GTEST_SKIP() << "no decimal-comma locale installed";
  hytest::TempDir dir;
  const std::string input =
      dir.Write("g.asc", "ncols 2\nnrows 1\nxllcorner 0.5\nyllcorner 0\ncellsize 0.25\n1.75 -2.5e1\n");
  CHU_File_EsriGridASCII grid(input.c_str());
  ASSERT_TRUE(grid.ReadHeader());
  EXPECT_EQ(grid.GetXllCenter(), 0.625);
  HU_GridPointArray points;
  ASSERT_TRUE(grid.ReadLine(points, nullptr));
  ASSERT_EQ(points.size(), 2u);
  EXPECT_EQ(points[0]->z, 1.75);
  EXPECT_EQ(points[1]->z, -25.0);

  CHU_GridConverter converter;
  ASSERT_TRUE(converter.Convert(input, dir.File("g.hybg"))) << converter.GetLastError();
  hytest::DecodedGrid out;
  std::string why;
  ASSERT_TRUE(hytest::DecodeBinaryGrid(hytest::ReadFileBytes(dir.File("g.hybg")), out, why)) << why;
  EXPECT_EQ(out.rows[0], (std::vector<float>{1.75f, -25.0f}));

  CHU_File_EsriGridHeader header(dir.File("w.hdr").c_str(), HU_modeWrite | HU_modeCreate);
  header.SetCellSize(0.25);
  ASSERT_TRUE(header.Write());
  EXPECT_NE(hytest::ReadFileBytes(dir.File("w.hdr")).find("cellsize        0.250\n"), std::string::npos);
}

}  // namespace
