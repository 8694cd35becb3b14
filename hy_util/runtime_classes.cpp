// The library's dynamically creatable classes. Listing them here (rather than
// registering from static initialisers) keeps them in a static link.
#include "hy_util/platform/object.h"

void HU_RegisterLibraryClasses() {
}
