#include "hy_util/platform/file.h"

#include <gtest/gtest.h>

#include <cerrno>

#include "support/temp_dir.h"

TEST(StdioFileTest, ReadsSeeksAndMeasuresWithSixtyFourBitPositions) {
  hytest::TempDir dir;
  const std::string path = dir.Write("a.bin", "0123456789");
  CHU_StdioFile file;
  ASSERT_TRUE(file.Open(path, HU_modeRead | HU_typeBinary | HU_shareDenyNone));
  EXPECT_EQ(file.GetLength(), 10);
  EXPECT_TRUE(file.Seek(4, SEEK_SET));
  char buf[4] = {};
  EXPECT_EQ(file.Read(buf, 3), 3u);
  EXPECT_EQ(std::string(buf, 3), "456");
  EXPECT_EQ(file.GetPosition(), 7);
  EXPECT_EQ(file.Read(buf, 4), 3u);  // short read at the end
  EXPECT_TRUE(file.AtEnd());
}

TEST(StdioFileTest, MissingFileFailsToOpenAndExceptionCarriesErrno) {
  CHU_StdioFile file;
  EXPECT_FALSE(file.Open("/nonexistent/dir/file", HU_modeRead));
  EXPECT_FALSE(file.IsOpen());
  EXPECT_EQ(file.Read(nullptr, 0), 0u);
  CHU_FileException e(ENOENT, "x.txt");
  EXPECT_EQ(e.ErrorNumber(), ENOENT);
  EXPECT_NE(std::string(e.what()).find("x.txt"), std::string::npos);
}
