#pragma once
// Umbrella header: every public header of the library.

#include "hy_util/version.h"

#include "hy_util/platform/application.h"
#include "hy_util/platform/copyable_array.h"
#include "hy_util/platform/file.h"
#include "hy_util/platform/object.h"
#include "hy_util/platform/locale.h"
#include "hy_util/platform/utf8.h"

#include "hy_util/core/localization.h"
#include "hy_util/core/str_num_conversion.h"
#include "hy_util/core/string_algorithms.h"
#include "hy_util/core/string_manager.h"
#include "hy_util/core/string_manager_helper.h"
#include "hy_util/core/strings.h"
