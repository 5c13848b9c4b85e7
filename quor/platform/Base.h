// The door for windowless code: strings, arrays, numbers, files and the plain value types of the Windows API, no
// windows. Every core/ folder, the settings and the servers include this file and no other of platform/; natively there
// is no more.
#pragma once

#include "quor/platform/base/Array.h"
#include "quor/platform/base/ComPointer.h"
#include "quor/platform/base/Compiler.h"
#include "quor/platform/base/DateTime.h"
#include "quor/platform/base/Exception.h"
#include "quor/platform/base/Export.h"
#include "quor/platform/base/FileDevice.h"
#include "quor/platform/base/Geometry.h"
#include "quor/platform/base/List.h"
#include "quor/platform/base/Map.h"
#include "quor/platform/base/Numbers.h"
#include "quor/platform/base/Object.h"
#include "quor/platform/base/ShortDecimal.h"
#include "quor/platform/base/Strings.h"
#include "quor/platform/base/WinTypes.h"
