// Nobody owns a tree: objects are copied, and made of the address of another's tree, and none can know that it is the
// last. A process has a handful of them, so they stay.
#include "quor/settings/ZTSettingsLibrary.h"

#include "quor/settings/SettingsFile.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace {

using quor::settings::Tree;

constexpr char kSeparator = '.';
constexpr char kAll[] = "ALL";  // every exchange, or both sides

// Texts keep NUL bytes that came out of a file.
std::string text(const CString& value) { return {value.GetString(), static_cast<std::size_t>(value.GetLength())}; }
CString text(const std::string& value) { return CString(value.data(), static_cast<int>(value.size())); }

CString join(const CString& left, const CString& right) { return left + kSeparator + right; }
CString address(const CString& pref, const CString& exg, const CString& buySell) {
    return join(join(pref, exg), buySell);
}

void emptyMeansAll(CString& level) {
    if (level.IsEmpty()) level = kAll;
}

bool isAll(const CString& level) { return level == kAll; }

Tree::path_type pathOf(const CString& path) { return Tree::path_type(text(path), kSeparator); }

// The subtree at an address, or null. An empty address is the root.
Tree* subtree(Tree& tree, const CString& path) {
    const auto found = tree.get_child_optional(pathOf(path));
    return found ? &*found : nullptr;
}

// Whether a value may be put at a path: the tree takes no empty last level, and the file no more than its depth.
bool canPut(const std::string& path) {
    return !path.empty() && path.back() != kSeparator &&
           std::count(path.begin(), path.end(), kSeparator) < quor::settings::kMaxDepth;
}

// The four scopes of a fallback, in their order, until one satisfies `found`.
template <typename Found>
bool anyScope(const CString& pref, const CString& exg, const CString& buySell, Found found) {
    return found(address(pref, exg, buySell)) || found(address(pref, exg, kAll)) ||
           found(address(pref, kAll, buySell)) || found(address(pref, kAll, kAll));
}

// Trees outlive the objects that made them; the list keeps them in sight of leak checkers.
Tree* newTree() {
    static auto* const trees = new std::vector<std::unique_ptr<Tree>>;
    return trees->emplace_back(std::make_unique<Tree>()).get();
}

}  // namespace

CZTSettingsLibrary::CZTSettingsLibrary() : m_tree(newTree()) {}

CZTSettingsLibrary::CZTSettingsLibrary(void* tree) : m_tree(static_cast<Tree*>(tree)) {}

void CZTSettingsLibrary::setPath(CString path) {
    m_path = path;
    quor::settings::readFile(text(path), *m_tree);
}

void CZTSettingsLibrary::savePath() {
    quor::Disk disk;
    quor::settings::writeFile(*m_tree, text(m_path), disk);
}

int CZTSettingsLibrary::findSetting(CString path, CString& key, CString& value) {
    const Tree* scope = subtree(*m_tree, path);
    if (!scope || scope->empty()) return 0;
    const auto& [firstKey, first] = scope->front();
    key = text(firstKey);
    value = text(first.data());
    return 1;
}

int CZTSettingsLibrary::findSetting(CString pref, CString exg, CString buySell, CString& key, CString& value) {
    return findSetting(address(pref, exg, buySell), key, value);
}

int CZTSettingsLibrary::getSetting(CString pref, CString exg, CString buySell, CString& key, CString& value) {
    emptyMeansAll(exg);
    emptyMeansAll(buySell);
    return anyScope(pref, exg, buySell, [&](const CString& path) { return findSetting(path, key, value) == 1; });
}

int CZTSettingsLibrary::getSettingKey(CString pref, CString exg, CString buySell, CString& exgFound,
                                      CString& buySellFound) {
    CString first[2] = {exg, buySell};
    emptyMeansAll(first[0]);
    emptyMeansAll(first[1]);
    // Only the first scope replaces empty levels.
    const CString scopes[4][2] = {{first[0], first[1]}, {exg, kAll}, {kAll, buySell}, {kAll, kAll}};
    for (const auto& [scopeExg, scopeBuySell] : scopes) {
        exgFound = scopeExg;
        buySellFound = scopeBuySell;
        CString key, value;
        if (findSetting(pref, scopeExg, scopeBuySell, key, value)) return 1;
    }
    exgFound.Empty();
    buySellFound.Empty();
    return 0;
}

bool CZTSettingsLibrary::getSetting_bool(CString) { return false; }

int CZTSettingsLibrary::saveSetting(CString path, CString key, CString value) {
    const CString full = join(path, key);
    if (!canPut(text(full))) return 0;
    m_tree->put(pathOf(full), text(value));
    return 1;
}

int CZTSettingsLibrary::updateSetting(CString pref, CString exg, CString buySell, CString key, CString value) {
    emptyMeansAll(exg);
    emptyMeansAll(buySell);
    return saveSetting(address(pref, exg, buySell), key, value);
}

int CZTSettingsLibrary::createSetting(CString pref, CString exg, CString buySell, CString key, CString value) {
    emptyMeansAll(exg);
    emptyMeansAll(buySell);
    const CString path = address(pref, exg, buySell);
    if (!canPut(text(join(path, key)))) return 0;  // before anything is deleted
    CString foundKey, foundValue;
    if (getSetting(pref, exg, buySell, foundKey, foundValue)) deleteSetting(pref, exg, buySell, foundKey);
    return saveSetting(path, key, value);
}

int CZTSettingsLibrary::addChildSetting(CString pref, CString exg, CString buySell, CString key, CString value) {
    emptyMeansAll(exg);
    emptyMeansAll(buySell);
    emptyMeansAll(key);
    return saveSetting(address(pref, exg, buySell), key, value);
}

int CZTSettingsLibrary::addChildSetting(CString pref, CString exg, CString key, int flag) {
    return addChildSetting(pref, exg, kAll, key, flag == 1 ? "TRUE" : "FALSE");
}

int CZTSettingsLibrary::addChildSetting(CString pref, CString exg, CString key, long number) {
    return addChildSetting(pref, exg, kAll, key, text(std::to_string(number)));
}

int CZTSettingsLibrary::findChildSetting(CString path, CString key, CString& value) {
    const Tree* scope = subtree(*m_tree, path);
    if (!scope) return 0;
    const std::string wanted = text(key);
    const auto child =
        std::find_if(scope->begin(), scope->end(), [&](const auto& entry) { return entry.first == wanted; });
    if (child == scope->end()) return 0;
    value = text(child->second.data());
    return 1;
}

int CZTSettingsLibrary::findChildSetting(CString pref, CString exg, CString buySell, CString key, CString& value) {
    return findChildSetting(address(pref, exg, buySell), key, value);
}

int CZTSettingsLibrary::getChildSetting(CString pref, CString exg, CString buySell, CString key, CString& value) {
    emptyMeansAll(exg);
    emptyMeansAll(buySell);
    emptyMeansAll(key);
    return findChildSetting(address(pref, exg, buySell), key, value);
}

int CZTSettingsLibrary::getChildSetting(CString pref, CString exg, CString key, int& flag) {
    flag = 0;
    CString value;
    if (!getChildSetting(pref, exg, kAll, key, value)) return 0;
    flag = value == "TRUE" ? 1 : 0;
    return 1;
}

int CZTSettingsLibrary::getChildSetting(CString pref, CString exg, CString key, long& number) {
    number = -1;
    CString value;
    if (!getChildSetting(pref, exg, kAll, key, value)) return 0;
    number = quor::atol(value);
    return 1;
}

int CZTSettingsLibrary::getChildSettingQuored(CString pref, CString exg, CString buySell, CString key, CString& value) {
    emptyMeansAll(exg);
    emptyMeansAll(buySell);
    return anyScope(pref, exg, buySell, [&](const CString& path) { return findChildSetting(path, key, value) == 1; });
}

int CZTSettingsLibrary::deleteSetting(CString pref, CString exg, CString buySell, CString key) {
    CString path = pref;
    if (!exg.IsEmpty()) path = join(path, exg);
    if (!buySell.IsEmpty()) path = join(path, buySell);
    if (Tree* scope = subtree(*m_tree, path)) scope->erase(text(key));
    return deleteDefaultSetting(pref, exg, buySell);
}

int CZTSettingsLibrary::deleteDefaultSetting(CString pref, CString exg, CString buySell) {
    if (isAll(exg)) return isAll(buySell) ? deletePrefSetting(pref) : deleteBuySellSetting(pref, exg, buySell);
    return isAll(buySell) ? deleteExgSetting(pref, exg) : 1;
}

int CZTSettingsLibrary::deletePrefSetting(CString pref) {
    m_tree->erase(text(pref));
    return 1;
}

int CZTSettingsLibrary::deleteExgSetting(CString pref, CString exg) {
    m_tree->get_child(pathOf(pref)).erase(text(exg));
    return 1;
}

int CZTSettingsLibrary::deleteBuySellSetting(CString pref, CString, CString buySell) {
    const Tree* preference = subtree(*m_tree, pref);
    if (!preference) return 0;
    // The names first: an exchange whose name is empty or has a full stop may lead back to a node being walked.
    std::vector<std::string> exchanges;
    for (const auto& [name, child] : *preference) exchanges.push_back(name);
    for (const std::string& exchange : exchanges)
        if (Tree* scope = subtree(*m_tree, join(pref, text(exchange)))) scope->erase(text(buySell));
    return 1;
}
