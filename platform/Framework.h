// The only door to the framework. Every source of this tree includes this file and no other of platform/.
// Windowless code (QUOR_WINDOWLESS) sees the base alone; shells, hosts and tests see windows too.
#pragma once

#include "platform/base/Export.h"
#include "platform/base/WinTypes.h"
#include "platform/base/Exception.h"
#include "platform/base/Object.h"
#include "platform/base/Strings.h"
#include "platform/base/Array.h"
#include "platform/base/List.h"
#include "platform/base/Map.h"
#include "platform/base/Geometry.h"
#include "platform/base/Numbers.h"
#include "platform/base/DateTime.h"

#if defined(_WIN32) && !defined(QUOR_WINDOWLESS)
#include "platform/win/GdiObjects.h"
#include "platform/win/DeviceContext.h"
#include "platform/win/ImageList.h"
#include "platform/win/Menu.h"
#include "platform/win/CmdTarget.h"
#include "platform/win/Wnd.h"
#include "platform/win/MessageMap.h"
#include "platform/win/App.h"
#include "platform/win/MessageBox.h"
#include "platform/win/Frame.h"
#include "platform/win/View.h"
#include "platform/win/Dialog.h"
#include "platform/win/HeaderCtrl.h"
#include "platform/win/ListCtrl.h"
#include "platform/win/ToolTipCtrl.h"
#include "platform/win/StandardControls.h"
#include "platform/win/CommonControls.h"
#include "platform/win/CommonDialogs.h"
#include "platform/vendor/Bcgp.h"
#endif
