#include "quor/foundation/core/AppearanceRecords.h"
#include "quor/list/core/ColumnImport.h"
#include "quor/list/core/DealSlipText.h"
#include "tests/fuzz/Fuzz.h"

#include <algorithm>
#include <set>
#include <string>

using namespace quor::list;
using namespace quor::foundation;

namespace {

const std::vector<ImportColumn> kColumns{{"Symbol", 80}, {"Price", 90}, {"Qty", 70}};

bool withinCap(const std::vector<int>& places) {
    return std::ranges::all_of(places, [](int place) { return place >= -1 && place < kMaxColumns; });
}

bool repeats(const std::vector<int>& places) {
    std::set<int> met;
    return std::ranges::any_of(places, [&](int place) { return place != -1 && !met.insert(place).second; });
}

// What every plan keeps: arrays of one length, inserted columns that exist, entries -1 or within the cap.
void checkArrays(const ColumnSetPlan& plan, std::size_t builtInCount) {
    std::size_t count = builtInCount;
    for (const auto& [index, column] : plan.userColumns) {
        require(index >= static_cast<int>(builtInCount) && index < kMaxColumns, "a user column outside the array");
        count = std::max(count, static_cast<std::size_t>(index) + 1);
    }
    require(plan.order.size() == count && plan.widths.size() == count, "arrays of different length");
    require(withinCap(plan.order), "a place beyond the cap");
    require(!plan.inserts.empty() && plan.visible.size() == plan.inserts.size(), "shown columns out of step");
    for (std::size_t i = 0; i < plan.inserts.size(); ++i) {
        const int column = plan.inserts[i].columnIndex;
        require(column >= 0 && static_cast<std::size_t>(column) < count, "a column that is not there is shown");
        require(plan.visible[i].iColumnIndex == column, "another column is recorded than shown");
        require(plan.visible[i].iVisiblePosition == plan.order[static_cast<std::size_t>(column)], "another place");
    }
    require(plan.firstColumn == plan.inserts[0].columnIndex, "another first column");
}

}  // namespace

void fuzzColumnProfile(const std::uint8_t* data, std::size_t size) {
    ColumnSetInput input;
    for (const ImportColumn& column : kColumns) input.widths.push_back(column.width);
    input.hasProfile = true;
    input.profile = parseColumnProfile(textOf(data, size), static_cast<int>(kColumns.size()));
    const ColumnSetPlan plan = planColumnSet(input);
    checkArrays(plan, kColumns.size());
    std::vector<int> places;
    for (const ProfileEntry& entry : input.profile) places.push_back(entry.place);
    if (!repeats(places)) require(!repeats(plan.order), "two columns at one place, though the text has none twice");
    for (std::size_t place = 0; place < plan.inserts.size(); ++place) {
        const int column = plan.inserts[place].columnIndex;  // column 0 alone may show in a gap
        require(column == 0 || plan.order[static_cast<std::size_t>(column)] == static_cast<int>(place), "a hole");
    }
}

void fuzzExchange(const std::uint8_t* data, std::size_t size) {
    const ExchangeProfile profile = parseExchangeProfile(textOf(data, size));
    const ColumnSetPlan plan = planColumnImport(kColumns, profile);
    checkArrays(plan, kColumns.size());
    // Places of the text, and those that built-in columns without an entry keep.
    std::vector<int> places;
    std::set<CString> named;
    for (const ProfileEntry& entry : profile.builtIn) {
        places.push_back(entry.place);
        named.insert(entry.name);
    }
    for (const ProfileEntry& entry : profile.user) places.push_back(entry.place);
    const bool allNamed =
        profile.hasMarker || std::ranges::all_of(kColumns, [&](const auto& c) { return named.contains(c.heading); });
    // A heading may be named and still be passed over, when its index is no column of the list.
    const bool indicesKnown = std::ranges::all_of(
        profile.builtIn, [](const auto& e) { return e.columnIndex < static_cast<int>(kColumns.size()); });
    if (allNamed && (profile.hasMarker || indicesKnown) && !repeats(places)) {
        require(!repeats(plan.order), "two columns at one place, though the text has none twice");
    }
}

void fuzzFactory(const std::uint8_t* data, std::size_t size) {
    const FactoryColumns factory = parseFactoryProfile(textOf(data, size));
    require(factory.columns.size() == factory.widths.size(), "columns and widths of different count");
    require(factory.columns.size() <= kMaxColumns, "more places than the cap");
    require(std::ranges::all_of(factory.columns, [](int c) { return fitsColumnRange(c, 0); }), "no such column");
}

void fuzzDealSlip(const std::uint8_t* data, std::size_t size) {
    const CString text = textOf(data, size);
    if (const auto places = parseDealSlipProfile(text)) {
        require(!places->empty() && places->size() <= kMaxColumns && withinCap(*places), "a profile beyond the cap");
        std::vector<ProfileEntry> entries;
        for (const int place : *places) {
            ProfileEntry entry;
            entry.columnIndex = static_cast<int>(entries.size());
            entry.place = place;
            entries.push_back(entry);
        }
        require(parseDealSlipProfile(formatDealSlipProfile(entries)) == places, "a profile reads back otherwise");
    }
    for (const CString& name : parseProfileNames(text)) require(name.Find(',') < 0, "a comma in a profile's name");
}

void fuzzAppearance(const std::uint8_t* data, std::size_t size) {
    const CString text = textOf(data, size);
    cCustomizedAppearanceSettings settings;
    parseAppearanceRecord(text, settings);
    parseUserAppearanceRecord(text, settings);
    require(!settings.pKeywords == !settings.pKeywordColors, "keywords without colours");
    require(!settings.pKeywords || settings.pKeywords->GetCount() == settings.pKeywordColors->GetCount(),
            "keywords and colours of different count");
    require(!settings.pUserKeywords || (settings.pUserKeywords->GetCount() == settings.pUserTextColors->GetCount() &&
                                        settings.pUserKeywords->GetCount() == settings.pUserBackColors->GetCount()),
            "user keywords and colours of different count");
    settings.bKeywordsEnabled = 1;
    cCustomizedAppearanceSettings again;
    again.bKeywordsEnabled = 1;
    const CString written = formatUserAppearanceRecord(settings);
    parseUserAppearanceRecord(written, again);
    require(formatUserAppearanceRecord(again) == written, "a user record reads back otherwise");
    settings.freeKeywordArrays();
    again.freeKeywordArrays();
}
