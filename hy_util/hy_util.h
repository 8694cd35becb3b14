#pragma once
// Umbrella header: every public header of the library.

#include "hy_util/version.h"

#include "hy_util/platform/application.h"
#include "hy_util/platform/copyable_array.h"
#include "hy_util/platform/file.h"
#include "hy_util/platform/object.h"
#include "hy_util/platform/process.h"
#include "hy_util/platform/locale.h"
#include "hy_util/platform/utf8.h"

#include "hy_util/core/date_time.h"
#include "hy_util/core/error_log.h"
#include "hy_util/core/localization.h"
#include "hy_util/core/str_num_conversion.h"
#include "hy_util/core/string_algorithms.h"
#include "hy_util/core/string_manager.h"
#include "hy_util/core/string_manager_helper.h"
#include "hy_util/core/strings.h"
#include "hy_util/core/text_file.h"

#include "hy_util/geometry/colour.h"
#include "hy_util/geometry/line.h"
#include "hy_util/geometry/math.h"
#include "hy_util/geometry/min_area_rect.h"
#include "hy_util/geometry/point.h"
#include "hy_util/geometry/point3d.h"
#include "hy_util/geometry/polygon.h"
#include "hy_util/geometry/polyline.h"
#include "hy_util/geometry/rect.h"
#include "hy_util/geometry/screen_point.h"
