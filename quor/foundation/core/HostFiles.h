// The files that the host names by CCommonListCtrl::SetRecoveryFiles, for what stands below the lists. The strings are
// static members of the list, which hosts may write at any time; here they are only looked at.
#pragma once

#include "quor/platform/Base.h"

namespace quor::foundation {

// Where the strings are. Called once, by their owner.
void shareHostFiles(const CString* recoveryFile, const CString* dialogPositionFile);

// Empty as long as the host named none.
CString recoveryFile();
CString dialogPositionFile();

}  // namespace quor::foundation
