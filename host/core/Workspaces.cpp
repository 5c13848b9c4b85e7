// Stored by number, so that a rename or a move rewrites what there is and never leaves two of a name. Filters are any
// text: each one says how long it is (docs/formats.md).
#include "host/core/Workspaces.h"

#include "host/core/MarketText.h"
#include "host/core/SettingsFile.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>

namespace terminal {

namespace {

constexpr const char* kSection = "Workspaces";
constexpr const char* kCountKey = "Count";
constexpr const char* kShownKey = "Shown";
constexpr const char* kNameKey = "Name";
constexpr const char* kPanesKey = "Panes";
constexpr const char* kWindowKey = "Window";
constexpr const char* kWatchKey = "Watch";
constexpr const char* kOrderKey = " Columns";  // behind a list's name, as the next two
constexpr const char* kSortKey = " Sort";
constexpr const char* kFiltersKey = " Filters";
constexpr double kLeastShare = 0.01, kLargestShare = 100;

std::string sectionOf(std::size_t place) { return "Workspace " + std::to_string(place + 1); }

// A number and the byte behind it; nothing if it is not so. The text then begins behind both.
template <class Number>
std::optional<Number> taken(std::string_view& text, char behind) {
    Number value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const auto length = static_cast<std::size_t>(end - text.data());
    const bool ends = behind == 0 ? length == text.size() : length < text.size() && *end == behind;
    if (error != std::errc() || !ends) return {};
    text.remove_prefix(length + (behind == 0 ? 0 : 1));
    return value;
}

std::string panesText(const std::vector<PaneShare>& panes) {
    std::string text;
    for (const PaneShare& pane : panes)
        text += (text.empty() ? "" : ",") + pane.pane + "=" + formatted("%.4f", pane.share) + (pane.shown ? "" : "!");
    return text;
}

// Panes that are known take what is told of them.
void readPanes(std::string_view text, std::vector<PaneShare>& panes) {
    while (!text.empty()) {
        std::string_view field = text.substr(0, text.find(','));
        text.remove_prefix(std::min(text.size(), field.size() + 1));
        const std::size_t equals = field.find('=');
        if (equals == field.npos) continue;
        const auto pane = std::ranges::find(panes, field.substr(0, equals), &PaneShare::pane);
        field.remove_prefix(equals + 1);
        const bool hidden = field.ends_with('!');
        if (hidden) field.remove_suffix(1);
        const auto share = taken<double>(field, 0);
        if (pane == panes.end() || !share || !(*share >= kLeastShare && *share <= kLargestShare)) continue;
        pane->share = *share;
        pane->shown = !hidden;
    }
}

std::string placeText(const WindowPlace& place) {
    return formatted("%d,%d,%d,%d,%d", place.left, place.top, place.width, place.height, place.maximized ? 1 : 0);
}

std::optional<WindowPlace> placeOf(std::string_view text) {
    int numbers[5];
    for (int& number : numbers) {
        const auto next = taken<int>(text, &number == &numbers[4] ? '\0' : ',');
        if (!next) return {};
        number = *next;
    }
    if (numbers[2] <= 0 || numbers[3] <= 0) return {};
    return WindowPlace{numbers[0], numbers[1], numbers[2], numbers[3], numbers[4] != 0};
}

std::string orderText(const std::vector<int>& order) {
    std::string text;
    for (const int column : order) text += std::to_string(column) + ",";
    return text;
}

std::vector<int> orderOf(std::string_view text) {
    std::vector<int> order;
    while (const auto column = taken<int>(text, ',')) order.push_back(*column);
    return text.empty() ? order : std::vector<int>();
}

std::string filtersText(const ListChoice& list) {
    std::string text;
    for (const auto& [column, filter] : list.filters)
        text += std::to_string(column) + ":" + std::to_string(filter.size()) + ":" + filter;
    return text;
}

void readFilters(std::string_view text, ListChoice& list) {
    while (const auto column = taken<int>(text, ':')) {
        const auto length = taken<std::size_t>(text, ':');
        if (!length || *length > text.size()) return;
        list.filters.emplace_back(*column, text.substr(0, *length));
        text.remove_prefix(*length);
    }
}

// The text without a number in brackets at its end.
std::string stemOf(const std::string& name) {
    const std::size_t bracket = name.rfind(" (");
    if (bracket == name.npos || !name.ends_with(')')) return name;
    const std::string_view number = std::string_view(name).substr(bracket + 2, name.size() - bracket - 3);
    const bool isNumber = !number.empty() && number.find_first_not_of("0123456789") == number.npos;
    return isNumber ? name.substr(0, bracket) : name;
}

template <class Free, class Name>
std::string firstFree(const Free& isFree, const Name& named) {
    for (int number = 2;; ++number)
        if (std::string name = named(std::to_string(number)); isFree(name)) return name;
}

bool storable(const std::string& name) {
    return !name.empty() && name.find_first_of(std::string("\r\n\0", 3)) == name.npos;
}

}  // namespace

Workspaces::Workspaces(Workspace first) { m_all.push_back(std::move(first)); }

bool Workspaces::isFree(const std::string& name) const {
    return std::ranges::find(m_all, name, &Workspace::name) == m_all.end();
}

void Workspaces::keep(Workspace changed) {
    changed.name = present().name;
    m_all[m_shown] = std::move(changed);
}

void Workspaces::show(std::size_t place) {
    if (place < m_all.size()) m_shown = place;
}

std::size_t Workspaces::add() {
    if (m_all.size() >= kMost) return m_shown;
    Workspace another = present();
    another.name = firstFree([this](const auto& name) { return isFree(name); },
                             [](const std::string& number) { return "Workspace " + number; });
    m_all.push_back(std::move(another));
    return m_all.size() - 1;
}

std::size_t Workspaces::copy(std::size_t from, std::size_t to, const std::string& name) {
    if (m_all.size() >= kMost) return m_shown;
    Workspace another = m_all[std::min(from, m_all.size() - 1)];
    another.name = storable(name) && isFree(name) ? name
                                                  : firstFree([this](const auto& free) { return isFree(free); },
                                                              [stem = stemOf(another.name)](const std::string& number) {
                                                                  return stem + " (" + number + ")";
                                                              });
    to = std::min(to, m_all.size());
    m_all.insert(m_all.begin() + static_cast<std::ptrdiff_t>(to), std::move(another));
    if (m_shown >= to) ++m_shown;
    return to;
}

bool Workspaces::rename(std::size_t place, const std::string& name) {
    if (place >= m_all.size() || !storable(name)) return false;
    if (m_all[place].name != name && !isFree(name)) return false;
    m_all[place].name = name;
    return true;
}

void Workspaces::move(std::size_t from, std::size_t to) {
    if (from >= m_all.size() || to >= m_all.size()) return;
    const std::string shown = present().name;
    Workspace moved = std::move(m_all[from]);
    m_all.erase(m_all.begin() + static_cast<std::ptrdiff_t>(from));
    m_all.insert(m_all.begin() + static_cast<std::ptrdiff_t>(to), std::move(moved));
    m_shown = static_cast<std::size_t>(std::ranges::find(m_all, shown, &Workspace::name) - m_all.begin());
}

bool Workspaces::close(std::size_t place) {
    if (m_all.size() == 1 || place >= m_all.size()) return false;
    m_all.erase(m_all.begin() + static_cast<std::ptrdiff_t>(place));
    if (m_shown > place) --m_shown;
    m_shown = std::min(m_shown, m_all.size() - 1);
    return true;
}

// --- Stored --------------------------------------------------------------------------------------------------------

void Workspaces::read(const SettingsFile& settings) {
    const auto number = [&](const char* key) {
        std::string_view text = settings.get(kSection, key).value_or("");
        return taken<std::size_t>(text, 0).value_or(0);
    };
    const Workspace first = m_all.front();
    std::vector<Workspace> all;
    all.swap(m_all);
    for (std::size_t place = 0; place < std::min(number(kCountKey), kMost); ++place) {
        const std::string section = sectionOf(place);
        const auto text = [&](const std::string& key) {
            return std::string(settings.get(section, key).value_or(std::string_view()));
        };
        Workspace one{text(kNameKey), first.panes, first.place, text(kWatchKey), {}};
        if (!storable(one.name) || !isFree(one.name)) continue;
        readPanes(text(kPanesKey), one.panes);
        one.place = placeOf(text(kWindowKey)).value_or(first.place);
        for (const ListChoice& known : first.lists) {
            ListChoice& list = one.lists.emplace_back();
            list.list = known.list;
            list.order = orderOf(text(known.list + kOrderKey));
            const std::string sort = text(known.list + kSortKey);
            std::string_view column = sort;
            list.falling = column.ends_with('-');
            if (list.falling) column.remove_suffix(1);
            list.sortColumn = taken<int>(column, 0).value_or(-1);
            readFilters(text(known.list + kFiltersKey), list);
        }
        m_all.push_back(std::move(one));
    }
    if (m_all.empty()) m_all.swap(all);
    m_shown = std::min(number(kShownKey), m_all.size() - 1);
}

void Workspaces::write(SettingsFile& settings) const {
    settings.set(kSection, kCountKey, std::to_string(m_all.size()));
    settings.set(kSection, kShownKey, std::to_string(m_shown));
    for (std::size_t place = 0; place < m_all.size(); ++place) {
        const Workspace& one = m_all[place];
        const std::string section = sectionOf(place);
        settings.set(section, kNameKey, one.name);
        settings.set(section, kPanesKey, panesText(one.panes));
        settings.set(section, kWindowKey, placeText(one.place));
        settings.set(section, kWatchKey, one.watch);
        for (const ListChoice& list : one.lists) {
            const std::string sort = list.sortColumn < 0 ? "" : std::to_string(list.sortColumn);
            settings.set(section, list.list + kOrderKey, orderText(list.order));
            settings.set(section, list.list + kSortKey, sort + (list.falling && !sort.empty() ? "-" : ""));
            settings.set(section, list.list + kFiltersKey, filtersText(list));
        }
    }
}

}  // namespace terminal
