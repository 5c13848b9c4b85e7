// The filter of one header item and its way in and out of a header's item record. Private to quor/platform/win.
#pragma once

#include "quor/platform/Framework.h"

#include <string>

namespace quor {

struct FilterRecord {
    static constexpr int kLongest = 1048575;  // characters, without the final null

    std::wstring text;       // empty: no filter
    int longest = kLongest;  // characters that can be written or typed
    UINT type = HDFT_ISSTRING;

    bool isNumber() const { return type == HDFT_ISNUMBER; }
};

// The A and the W form of the item record have one layout; `wide` says how pvFilter's text reads. False for a type that
// is neither text nor number, nothing is changed then.
bool writeFilter(FilterRecord& record, const HDITEMW& item, bool wide);
// Fills what pvFilter points to (null: nothing) and adds HDFT_HASNOVALUE to the type when there is no filter. False if
// the item asks for another type.
bool readFilter(const FilterRecord& record, HDITEMW& item, bool wide);

}  // namespace quor
