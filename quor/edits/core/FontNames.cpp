#include "quor/edits/core/FontNames.h"

#include <algorithm>
#include <tuple>

namespace quor::edits {

namespace {

char folded(char letter) { return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + ('a' - 'A')) : letter; }

int compare(const std::string& one, const std::string& other) {
    const std::size_t common = std::min(one.size(), other.size());
    for (std::size_t i = 0; i < common; ++i)
        if (const int difference =
                static_cast<unsigned char>(folded(one[i])) - static_cast<unsigned char>(folded(other[i])))
            return difference;
    return one.size() < other.size() ? -1 : one.size() > other.size();
}

}  // namespace

void tidyFaces(std::vector<FontFace>& faces) {
    std::erase_if(faces, [](const FontFace& face) { return face.name.empty() || face.name[0] == '@'; });
    // Letters go before pictures, so that unique keeps the former.
    std::sort(faces.begin(), faces.end(), [](const FontFace& one, const FontFace& other) {
        if (const int difference = compare(one.name, other.name)) return difference < 0;
        return std::tie(one.symbol, one.name) < std::tie(other.symbol, other.name);
    });
    const auto sameName = [](const FontFace& one, const FontFace& other) { return compare(one.name, other.name) == 0; };
    faces.erase(std::unique(faces.begin(), faces.end(), sameName), faces.end());
}

int pointsOf(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(' ');
    if (begin == std::string_view::npos) return 0;
    int points = 0;
    for (const char digit : text.substr(begin, text.find_last_not_of(' ') + 1 - begin)) {
        if (digit < '0' || digit > '9') return 0;
        points = std::min(points * 10 + (digit - '0'), kMostPoints + 1);
    }
    return points >= kLeastPoints && points <= kMostPoints ? points : 0;
}

void RecentNames::use(const std::string& name) {
    if (name.empty()) return;
    std::erase_if(m_names, [&](const std::string& known) { return compare(known, name) == 0; });
    m_names.insert(m_names.begin(), name);
    if (m_names.size() > kMost) m_names.pop_back();
}

const std::string& TypeAhead::type(char letter, unsigned time) {
    if (time - m_last > kPause) m_text.clear();
    m_last = time;
    return m_text += letter;
}

}  // namespace quor::edits
