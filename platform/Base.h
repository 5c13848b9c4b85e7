// The door for windowless code: strings, arrays, numbers, files and the plain value types of the Windows API, no
// windows. Every core/ folder, the settings and the servers include this file and no other of platform/; natively there
// is no more.
#pragma once

#include "platform/base/Array.h"
#include "platform/base/ComPointer.h"
#include "platform/base/Compiler.h"
#include "platform/base/DateTime.h"
#include "platform/base/Exception.h"
#include "platform/base/Export.h"
#include "platform/base/FileDevice.h"
#include "platform/base/Geometry.h"
#include "platform/base/List.h"
#include "platform/base/Map.h"
#include "platform/base/Numbers.h"
#include "platform/base/Object.h"
#include "platform/base/ShortDecimal.h"
#include "platform/base/Strings.h"
#include "platform/base/WinTypes.h"
