#include "quor/foundation/core/HostFiles.h"

namespace quor::foundation {

namespace {

const CString* g_recoveryFile = nullptr;
const CString* g_dialogPositionFile = nullptr;

CString named(const CString* file) { return file ? *file : CString(); }

}  // namespace

void shareHostFiles(const CString* recoveryFile, const CString* dialogPositionFile) {
    g_recoveryFile = recoveryFile;
    g_dialogPositionFile = dialogPositionFile;
}

CString recoveryFile() { return named(g_recoveryFile); }

CString dialogPositionFile() { return named(g_dialogPositionFile); }

}  // namespace quor::foundation
