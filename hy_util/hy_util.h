#pragma once
// Umbrella header: every public header of the library.

#include "hy_util/version.h"

#include "hy_util/platform/application.h"
#include "hy_util/platform/copyable_array.h"
#include "hy_util/platform/file.h"
#include "hy_util/platform/object.h"
