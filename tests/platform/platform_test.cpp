// The platform layer: run-time classes, the buffered file and the UTF-8 check. The
// host application is exercised by every test that installs a recording host.

#include <string>

#include <gtest/gtest.h>

#include "hy_util/platform/file.h"
#include "hy_util/platform/object.h"
#include "hy_util/platform/utf8.h"
#include "support/temp_dir.h"

namespace {

class Widget : public CHU_Object {
  HU_DECLARE_DYNCREATE(Widget)
};
HU_IMPLEMENT_DYNCREATE(Widget)

TEST(RuntimeClassTest, RegisteredClassIsCreatedByItsExactName) {
  Widget::RegisterRuntimeClass();
  const auto object = CHU_RuntimeClassRegistry::Create("Widget");
  ASSERT_NE(dynamic_cast<Widget*>(object.get()), nullptr);
  EXPECT_FALSE(object->IsKindOf("widget"));
  EXPECT_EQ(CHU_RuntimeClassRegistry::Create("NoSuchClass"), nullptr);
}

TEST(StdioFileTest, ReadsSeeksAndMeasuresWithSixtyFourBitPositions) {
  hytest::TempDir dir;
  CHU_StdioFile file;
  ASSERT_TRUE(file.Open(dir.Write("a.bin", "0123456789"), HU_modeRead | HU_typeBinary));
  ASSERT_TRUE(file.Seek(4, SEEK_SET));
  EXPECT_EQ(file.GetLength(), 10);
  char buf[4] = {};
  EXPECT_EQ(file.Read(buf, 4), 4u);
  EXPECT_EQ(file.GetPosition(), 8);  // GetLength put the position back
  EXPECT_EQ(file.Read(buf, 4), 2u);  // short read at the end
  EXPECT_FALSE(file.Open(dir.File("none/x"), HU_modeRead) || file.IsOpen());
}

TEST(Utf8Test, OnlyWellFormedSequencesAreValid) {
  for (const char* valid : {"", "\xc3\xbc", "\xe6\xb5\xb8", "\xf0\x9f\x8c\x8a", "\xf4\x8f\xbf\xbf"})
    EXPECT_TRUE(HU_IsValidUtf8(valid)) << valid;
  const char* invalid[] = {"\x80", "\xc3\x28", "\xc3", "\xe6\xb5",  // stray, bad, truncated
                           "\xc0\xaf", "\xe0\x80\xaf", "\xf0\x8f\xbf\xbf",  // overlong
                           "\xed\xa0\x80",                                  // surrogate
                           "\xf4\x90\x80\x80", "\xf5\x80\x80\x80", "\xff"};  // too large
  for (const char* bytes : invalid) EXPECT_FALSE(HU_IsValidUtf8(bytes)) << bytes;
  std::string out = "previous";
  EXPECT_FALSE(HU_Utf8ToNarrow("bad \xc3", out) || out != "previous");  // output left alone
}

}  // namespace
