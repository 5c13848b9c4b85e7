// A tree of settings in memory, loaded from and saved to one JSON file. A setting belongs to a preference and applies
// to one exchange and one order side, or to all of them: "ALL". Reads that fall back try, in this order,
//     preference, exchange, side
//     preference, exchange, ALL
//     preference, ALL,      side
//     preference, ALL,      ALL
// Names, keys and values are the host's; all of them are text.
//
// Levels are joined by full stops into one address ("%s.%s.%s"), so a name or key with a full stop in it lies one level
// deeper than it looks. An address is used as it is: a full stop at its end is dropped, an empty level elsewhere
// counts. Addresses go at most 256 levels deep; what is deeper is never created.
//
// Operations that return int return 1 for done or found, 0 otherwise. Nothing is written to disk but by savePath.
// Copies share one tree. Nobody owns it: a tree lives until the process ends. No lock: one thread at a time.
#pragma once

#include "quor/platform/Base.h"

#include <functional>
#include <string>

namespace boost::property_tree {
template <class Key, class Data, class KeyCompare>
class basic_ptree;
}

class QUOR_CONTROLS_API CZTSettingsLibrary {
public:
    CZTSettingsLibrary();
    // Adopts a boost::property_tree::ptree that the caller has and keeps alive.
    explicit CZTSettingsLibrary(void* tree);

    // Stores the path and reads the file in place of the tree's contents. If it cannot be read whole (missing,
    // truncated, not JSON, nested deeper than 256), the tree stays as it was, and nothing is reported.
    void setPath(CString path);
    // Writes the tree to the stored path: beside it first, flushed, then put in its place, so the file is at any
    // moment the old one or the new one. Throws boost::property_tree::json_parser_error when the tree has what the file
    // cannot hold (bytes that are not UTF-8, an entry with both a value and children, more than 256 levels: the disk is
    // not touched then), when the file may not be written, or when writing fails.
    void savePath();

    // The first entry at an address, whichever it is. The outputs stay as they were if there is none. No "ALL" for
    // empty arguments.
    int findSetting(CString path, CString& key, CString& value);
    int findSetting(CString pref, CString exg, CString buySell, CString& key, CString& value);
    // The first entry of the first scope in the order above that has one. Empty exg, buySell mean "ALL".
    int getSetting(CString pref, CString exg, CString buySell, CString& key, CString& value);
    // Tells which scope getSetting's entry comes from; both outputs are empty if there is none. An empty argument means
    // "ALL" for the first scope only: the second and third are looked up with the argument as it is.
    int getSettingKey(CString pref, CString exg, CString buySell, CString& exgFound, CString& buySellFound);
    // False for every text.
    bool getSetting_bool(CString text);

    // Puts a value at an address and key, creating what is missing. 0 if the two joined end in a full stop (an empty
    // key) or go too deep; the tree is unchanged then. So for the operations built on it.
    int saveSetting(CString path, CString key, CString value);
    // saveSetting at one scope; other keys there stay. Empty exg, buySell mean "ALL".
    int updateSetting(CString pref, CString exg, CString buySell, CString key, CString value);
    // Replaces what getSetting finds, by deleteSetting at the scope given: an entry for a wider scope thereby removes
    // the narrower ones. An entry found at a wider scope than the one given stays. Empty exg, buySell mean "ALL".
    int createSetting(CString pref, CString exg, CString buySell, CString key, CString value);

    // Entries by key, several at one scope. Empty exg, buySell and key mean "ALL".
    int addChildSetting(CString pref, CString exg, CString buySell, CString key, CString value);
    // At side "ALL": "TRUE" for 1, "FALSE" for any other flag.
    int addChildSetting(CString pref, CString exg, CString key, int flag);
    // At side "ALL": the number in decimal.
    int addChildSetting(CString pref, CString exg, CString key, long number);
    // The child of exactly this name at an address; its text is empty if it has children. No "ALL" for empty arguments.
    int findChildSetting(CString path, CString key, CString& value);
    int findChildSetting(CString pref, CString exg, CString buySell, CString key, CString& value);
    // At one scope, without fallback. Empty exg, buySell and key mean "ALL".
    int getChildSetting(CString pref, CString exg, CString buySell, CString key, CString& value);
    // At side "ALL": flag is 1 if the text is exactly "TRUE", else 0, also if nothing is found.
    int getChildSetting(CString pref, CString exg, CString key, int& flag);
    // At side "ALL": the number read from the text (32 bits, saturating); -1 if nothing is found.
    int getChildSetting(CString pref, CString exg, CString key, long& number);
    // With the fallback. Empty exg, buySell mean "ALL"; the key is taken as it is.
    int getChildSettingQuored(CString pref, CString exg, CString buySell, CString key, CString& value);

    // Erases the key at the address made of the arguments that are not empty, then what deleteDefaultSetting erases.
    int deleteSetting(CString pref, CString exg, CString buySell, CString key);
    // Both "ALL": the whole preference. exg "ALL" alone: the side, from every exchange. buySell "ALL" alone: the
    // exchange. Neither: nothing, and 1. Empty is not "ALL" here.
    int deleteDefaultSetting(CString pref, CString exg, CString buySell);
    // 1, whether or not it existed.
    int deletePrefSetting(CString pref);
    // 1. Throws boost::property_tree::ptree_bad_path if there is no such preference.
    int deleteExgSetting(CString pref, CString exg);
    // Erases the side from every exchange of the preference, whatever exg says. 0 if there is no such preference.
    int deleteBuySellSetting(CString pref, CString exg, CString buySell);

private:
    using Tree = boost::property_tree::basic_ptree<std::string, std::string, std::less<std::string>>;

    Tree* m_tree;
    CString m_path;
};
