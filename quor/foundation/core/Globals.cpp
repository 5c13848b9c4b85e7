#include "quor/foundation/core/Globals.h"

int iMrktInfoColCount = 111;
int iNewDataArrCnt = 0;

namespace {

// Function-local: an executable's entry points may ask before this file's statics are made.
cCustomizedAppearanceSettings& globalAppearance() {
    static cCustomizedAppearanceSettings appearance;
    return appearance;
}

}  // namespace

cCustomizedAppearanceSettings Get_Apperance_setting() { return globalAppearance(); }

bool Set_Apperance_setting(cCustomizedAppearanceSettings settings) {
    globalAppearance() = settings;
    return true;
}
