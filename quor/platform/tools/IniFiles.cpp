// The INI pair, over the private-profile calls of the system. These cut, crash or lose a text without a word (a length
// beyond 16 bits, a NUL, a line break, outer blanks and quotes): what would not come back is quoted or refused here.

#include "quor/platform/tools/QuorTools.h"

#include <shlobj.h>

namespace {

enum Operation { kRead = 0, kWrite = 1 };

constexpr char kNotFound[] = "Settings not found";
// What the system hands back for a missing key. No stored value has a line break, so this is none.
constexpr char kMissing[] = "\nmissing";
// The private-profile calls count UTF-16 bytes in 16 bits: one byte more here and they cut, or crash.
constexpr int kMostTextBytes = 32766;
// Values up to this length come in one call; longer ones are asked for again with twice the room.
constexpr int kUsualValueRoom = 4096;
constexpr int kMostValueRoom = 16 * 1024 * 1024;

bool isBare(const CString& file) { return file.FindOneOf("\\/:") < 0; }

CString executablePath() {
    CString path;
    for (DWORD room = MAX_PATH;; room *= 2) {
        const DWORD length = GetModuleFileNameA(nullptr, path.GetBuffer(static_cast<int>(room)), room);
        const bool whole = length < room;
        path.ReleaseBuffer(static_cast<int>(whole ? length : 0));
        if (whole) return path;
    }
}

CString besideExecutable(const CString& file) {
    const CString path = executablePath();
    return path.Left(path.ReverseFind('\\') + 1) + file;
}

// The user's application data of this executable; empty if the system names no such folder.
CString applicationDataFolder(bool create) {
    char root[MAX_PATH];
    if (FAILED(SHGetFolderPathA(nullptr, CSIDL_APPDATA | (create ? CSIDL_FLAG_CREATE : 0), nullptr, 0, root)))
        return "";
    const CString path = executablePath();
    CString name = path.Mid(path.ReverseFind('\\') + 1);
    if (const int point = name.ReverseFind('.'); point > 0) name = name.Left(point);
    const CString folder = CString(root) + "\\" + name;
    if (create) CreateDirectoryA(folder, nullptr);
    return folder + "\\";
}

bool isBlank(char c) { return c == ' ' || c == '\t'; }
bool isQuote(char c) { return c == '"' || c == '\''; }
// The system's calls would take such a text for one that ends there.
bool hasNul(const CString& text) { return text.Find('\0') >= 0; }

// Why a name would not be found again under itself; null if it would.
const char* faultOfName(const CString& name, const char* forbidden, const char* forbiddenFirst) {
    if (name.IsEmpty()) return "its name is empty";
    if (name.GetLength() > kMostTextBytes) return "its name is too long";
    if (hasNul(name) || name.FindOneOf(forbidden) >= 0 || CString(name.Left(1)).FindOneOf(forbiddenFirst) >= 0 ||
        isBlank(name[0]) || isBlank(name[name.GetLength() - 1]))
        return "its name cannot stand in such a file";
    return nullptr;
}

struct Entry {
    CString path;
    CString section;
    CString key;

    const char* fault() const {
        if (path.IsEmpty()) return "no file was named";
        if (path.GetLength() > kMostTextBytes) return "its path is too long";
        if (hasNul(path)) return "its path has a NUL in it";
        if (const char* const reason = faultOfName(section, "]\r\n", "")) return reason;
        return faultOfName(key, "=\r\n", ";[");
    }

    CString sentence(const char* action, const char* reason) const {
        CString text;
        text.Format("Could not %s key \"%s\" of section \"%s\" in file \"%s\": %s.", action, key.GetString(),
                    section.GetString(), path.GetString(), reason);
        return text;
    }
};

int read(const Entry& entry, CString& value, CString& error) {
    const char* reason = entry.fault();
    if (reason == nullptr && GetFileAttributesA(entry.path) == INVALID_FILE_ATTRIBUTES)
        reason = "there is no such file";
    CString found(kMissing);
    for (int room = kUsualValueRoom; reason == nullptr && room <= kMostValueRoom; room *= 2) {
        const DWORD length = GetPrivateProfileStringA(entry.section, entry.key, kMissing, found.GetBuffer(room),
                                                      static_cast<DWORD>(room), entry.path);
        found.ReleaseBuffer(static_cast<int>(length));
        if (length + 1 < static_cast<DWORD>(room)) break;
    }
    if (reason == nullptr && found == kMissing) reason = "there is no such key";
    if (reason != nullptr) {
        value = kNotFound;
        error = entry.sentence("read", reason);
        return 0;
    }
    value = found;
    return 1;
}

CString stored(const CString& value) {
    if (value.IsEmpty()) return value;
    const char first = value[0];
    const char last = value[value.GetLength() - 1];
    const bool trimmed = isBlank(first) || isBlank(last) || isQuote(first) || isQuote(last);
    return trimmed ? '"' + value + '"' : value;
}

// Why a value, as it would be stored, cannot be.
const char* faultOfValue(const CString& value) {
    if (value.FindOneOf("\r\n") >= 0) return "the value has a line break";
    if (hasNul(value)) return "the value has a NUL in it";
    return value.GetLength() > kMostTextBytes ? "the value is too long" : nullptr;
}

int write(const Entry& entry, const CString& value, CString& error) {
    const CString text = stored(value);
    const char* reason = entry.fault();
    if (reason == nullptr) reason = faultOfValue(text);
    CString systemReason;
    if (reason == nullptr) {
        if (WritePrivateProfileStringA(entry.section, entry.key, text, entry.path)) return 1;
        systemReason.Format("the system refused it (error %u)", static_cast<unsigned>(GetLastError()));
        reason = systemReason;
    }
    error = entry.sentence("write", reason);
    return 0;
}

int operate(int operation, const Entry& entry, CString& value, CString& error) {
    error.Empty();
    if (operation == kRead) return read(entry, value, error);
    if (operation == kWrite) return write(entry, value, error);
    error = entry.sentence("use", "there is no such operation");
    return 0;
}

}  // namespace

int quoru_ini_file_operations(int operation, CString section, CString key, CString& value, CString& file,
                              CString& error) {
    const bool bare = !file.IsEmpty() && isBare(file);
    return operate(operation, {bare ? besideExecutable(file) : file, section, key}, value, error);
}

int quoru_appdata_ini_file_operations(int operation, CString section, CString key, CString& value, CString& file,
                                      CString& error) {
    const bool bare = !file.IsEmpty() && isBare(file);
    return operate(operation, {bare ? applicationDataFolder(operation == kWrite) + file : file, section, key}, value,
                   error);
}
