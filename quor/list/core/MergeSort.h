// The one sort of lists: a stable bottom-up merge sort.
//
// Row comparators can be inconsistent (see RowSort.h), and the library's sorts may do anything then, reading outside
// their arrays included. Here the comparator only chooses between two elements that are there: whatever it answers,
// every element comes out once and nothing outside the array is touched. Elements that it calls equal keep their order.
// At most n * ceil(log2 n) comparisons.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace quor::list {

// `compare(left, right)`: an int, above 0 where `right` stands before `left`.
template <class Element, class Compare>
void stableMergeSort(std::vector<Element>& elements, Compare compare) {
    const std::size_t count = elements.size();
    std::vector<Element> merged(count);
    for (std::size_t run = 1; run < count; run *= 2) {
        for (std::size_t begin = 0; begin < count; begin += 2 * run) {
            const std::size_t middle = std::min(begin + run, count);
            const std::size_t end = std::min(begin + 2 * run, count);
            std::size_t left = begin;
            std::size_t right = middle;
            for (std::size_t target = begin; target < end; ++target) {
                const bool takeRight = left == middle || (right < end && compare(elements[left], elements[right]) > 0);
                merged[target] = elements[takeRight ? right++ : left++];
            }
        }
        elements.swap(merged);
    }
}

}  // namespace quor::list
