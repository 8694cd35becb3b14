#include "hy_util/core/string_manager_helper.h"

#include <algorithm>
#include <iterator>

#include "hy_util/core/string_manager.h"
#include "hy_util/platform/application.h"

namespace {

std::string Lowered(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) {
    return static_cast<char>(c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c);
  });
  return text;
}

std::string CurrentLanguage() {
  return Lowered(HU_GetApplication().GetProfileString("LANGUAGE", "DefaultLanguage", "en-US"));
}

struct ReferenceTitle {
  int id;
  const char* key;
};

// 10006 has no title of its own and keeps the caller's.
constexpr ReferenceTitle kReferenceTitles[] = {
    {10000, "HYSTR_USER_DEFINED_FILES"},
    {10001, "HYSTR_DLOG_USER_HYDBREAK"},
    {10002, "HYSTR_DLOG_HYTABLES"},
    {10003, "HYSTR_DLOG_HC12"},
    {10004, "HYSTR_DLOG_HC12"},
    {10005, "HYSTR_DLOG_RATF"},
    {10007, "HYSTR_NATURAL_SECTION_SHAPES_TITLE"},
    {10008, "HYSTR_DLOG_ROUGH"},
    {10009, "HYSTR_DLOG_RDII"},
    {10010, "HYSTR_DLOG_WSPG_CHANNEL_TYPE"},
    {10011, "HYSTR_DLOG_2D_INFILTRATION"},
    {10012, "HYSTR_NATURAL_SECTION_SHAPES_TITLE"},
    {10013, "HYSTR_DLOG_BRDG_SHAPES"},
    {10014, "HYSTR_DLOG_LID_WSUD"},
    {10015, "HYSTR_DLOG_USER_HAZ_CLASSI"},
    {10016, "HYSTR_DLOG_USER_HAZ_VAL"},
    {2041, "HYSTR_DLOG_BMP"},
};

}  // namespace

const char* CStringManagerHelper::ApplySemantics(const std::string& key, std::string& out,
                                                 int count) {
  if (key != "HYSTR_GRID_FILE_DELETE_CONTENTS_DLOG_MESSAGE") return out.c_str();
  const std::string number = std::to_string(count);
  const std::string polygons = CStringManager::GetStr("HYSTR_DELETE_CONFIRM_POLYGONS");
  const std::string deleted = CStringManager::GetStr("HYSTR_DELETE_CONFIRM_DELETED");
  const std::string language = CurrentLanguage();
  if (language == "ja") {
    const std::string numberOf =
        CStringManager::GetStr("HYSTR_DELETE_CONFIRM_NUMBER_OF_POLYGONS");
    out = number + " " + numberOf + " " + polygons + " " + deleted;
  } else if (language == "ko" || language == "ch") {
    out = number + " " + polygons + " " + deleted;
  } else {
    out = deleted + " " + number + " " + polygons;
  }
  return out.c_str();
}

std::string CStringManagerHelper::ConvertNameListRefTitle(const std::string& title,
                                                          int referenceId, std::string& out) {
  const auto match = std::find_if(std::begin(kReferenceTitles), std::end(kReferenceTitles),
                                  [&](const ReferenceTitle& t) { return t.id == referenceId; });
  out = match == std::end(kReferenceTitles) ? title : CStringManager::GetStr(match->key);
  return out;
}
