#pragma once
// The host's global "Units" value, read by every class that converts between
// metric and US units (unit tables, transformation matrix, 2DM reader, MIF import).
//
// 0 asks for conversion (model values are metric, the user sees US units); any
// other value asks for none. A host that never sets "Units" gets
// HU_UNITS_NOT_SET, which every reader treats as "no conversion asked for".

#include "hy_util/platform/application.h"

// Name of the global integer in the application's global data.
inline constexpr const char* HU_UNITS_SETTING = "Units";

// The value GetGlobalInt answers when the host has not set "Units".
inline constexpr int HU_UNITS_NOT_SET = -1;

// The current "Units" value, or HU_UNITS_NOT_SET.
inline int HU_GetUnitsSetting() {
  return HU_GetApplication().GetGlobalInt(HU_UNITS_SETTING, HU_UNITS_NOT_SET);
}

// Name of the global flag that, when set, stops the US-to-metric conversions.
inline constexpr const char* HU_TUFLOW_UNIT_SELECTED_FLAG = "F_TUFLOW_UNIT_SELECTED";
