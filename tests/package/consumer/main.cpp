// An outside program using the installed library through its umbrella header.
#include <hy_util/hy_util.h>

#include <cstdio>

int main() {
  std::printf("hy_util %s, application directory %s\n", HY_UTIL_VERSION,
              HU_GetApplication().GetAppDirectory().c_str());
  return 0;
}
