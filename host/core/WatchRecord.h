// The host's record of one row of a market watch, as the library's market watch list reads it.
//
// A row's item data points to a pair whose second member points to the record. The record begins with that pair, so a
// pointer to the pair and one to the record are one address, and the record tells itself from anything else.
#pragma once

#include "host/core/WatchData.h"

#include <cstddef>
#include <string>

struct sMWStruct {
    static constexpr std::size_t kTextRoom = 135;  // its terminating zero included; longer texts are cut

    const void* first = nullptr;  // of the pair; the terminal has no use for it
    sMWStruct* second = this;
    const terminal::WatchData* data = nullptr;  // borrowed
    terminal::InstrumentId instrument = 0;
    char unused[266 - 3 * sizeof(void*) - sizeof(terminal::InstrumentId)]{};
    char tradingSymbol[kTextRoom]{};  // symbol and series: "ABCD FUT"
    char symbol[kTextRoom]{};

    explicit sMWStruct(const terminal::WatchData& of) : data(&of), instrument(of.instrument.id) {
        const terminal::Instrument& told = of.instrument;
        put(symbol, told.symbol);
        put(tradingSymbol, told.series.empty() ? told.symbol : told.symbol + " " + told.series);
    }
    sMWStruct(const sMWStruct&) = delete;
    sMWStruct& operator=(const sMWStruct&) = delete;

    // The record behind a row's item data; null for data that is none.
    static const sMWStruct* of(const void* itemData) {
        const auto* const record = static_cast<const sMWStruct*>(itemData);
        return record && record->second == record ? record : nullptr;
    }

private:
    static void put(char (&room)[kTextRoom], const std::string& text) { room[text.copy(room, kTextRoom - 1)] = 0; }
};
static_assert(offsetof(sMWStruct, tradingSymbol) == 266 && offsetof(sMWStruct, symbol) == 401,
              "the library reads both texts at these offsets");
