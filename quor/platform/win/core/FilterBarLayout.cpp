// Borders and margins grow with the screen's density, but a border never vanishes, and the glyph stays odd so that its
// stem has a middle.
#include "quor/platform/win/core/FilterBarLayout.h"

#include <algorithm>

namespace quor {

namespace {

constexpr int kBaseDpi = 96;

int scaled(int pixels, int dpi) { return (pixels * dpi + kBaseDpi / 2) / kBaseDpi; }

}  // namespace

FilterBarMetrics filterBarMetrics(int dpi, int lineHeight) {
    if (dpi < 1) dpi = kBaseDpi;
    FilterBarMetrics metrics;
    metrics.border = std::max(1, scaled(1, dpi));
    metrics.textMargin = scaled(3, dpi);
    metrics.funnelSize = scaled(9, dpi) | 1;
    metrics.buttonWidth = metrics.funnelSize + 2 * scaled(3, dpi);
    const int content = std::max({lineHeight, metrics.funnelSize, 0});
    metrics.barHeight = content + scaled(5, dpi) + 2 * metrics.border;
    return metrics;
}

FilterBarPlaces filterBarPlaces(const FilterBarMetrics& metrics, int left, int right, int top) {
    FilterBarPlaces places;
    const int first = left + metrics.border;
    const int last = std::max(first, right - metrics.border);
    const int split = std::max(first, last - metrics.buttonWidth);
    const int upper = top + metrics.border;
    const int lower = top + metrics.barHeight - metrics.border;
    places.field = {first, upper, split, lower};
    places.button = {split, upper, last, lower};
    return places;
}

bool hasOwnFilterBar(const HeaderAnswers& answers) {
    return answers.barHeight > answers.plainHeight && answers.keepsFilter && answers.clearsFilter;
}

}  // namespace quor
