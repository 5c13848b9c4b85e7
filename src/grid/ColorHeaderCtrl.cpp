#include "src/grid/ColorHeaderCtrl.h"

IMPLEMENT_DYNAMIC(CColorHeaderCtrl, CHeaderCtrl)
