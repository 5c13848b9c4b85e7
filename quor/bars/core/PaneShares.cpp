#include "quor/bars/core/PaneShares.h"

#include <algorithm>

namespace quor::bars {

std::vector<int> sharedOut(const std::vector<int>& shares, int room) {
    const auto counted = [](int share) { return std::int64_t{std::max(share, 0)}; };
    std::int64_t all = 0;
    for (const int share : shares) all += counted(share);
    std::vector<int> sizes(shares.size());
    if (sizes.empty()) return sizes;
    room = std::max(room, 0);
    std::int64_t sum = 0;
    int edge = 0;
    for (std::size_t i = 0; i < shares.size() && all > 0; ++i) {
        sum += counted(shares[i]);
        const int next = static_cast<int>((2 * sum * room + all) / (2 * all));
        sizes[i] = next - edge;
        edge = next;
    }
    if (all == 0) sizes.back() = room;
    return sizes;
}

}  // namespace quor::bars
