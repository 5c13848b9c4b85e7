// The fuzz targets' bodies. libFuzzer drives them in executables of their own; the core tests run them over the corpus.
// A body returns normally for every input, or ends the process by assertion: abort() with a line on stderr.
#pragma once

#include "quor/platform/base/Strings.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

inline void require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "%s\n", what);
    std::abort();
}

inline CString textOf(const std::uint8_t* data, std::size_t size) {
    return CString(reinterpret_cast<const char*>(data), static_cast<int>(size));
}

// Both roads of the evaluator must agree on the text.
void fuzzExpression(const std::uint8_t* data, std::size_t size);

// The compiled filter must agree with the literal reading, plain and exact.
void fuzzFilter(const std::uint8_t* data, std::size_t size);

// The reader of the settings file takes any bytes; what it gives can be written and read back the same, if at all.
void fuzzSettings(const std::uint8_t* data, std::size_t size);

// The stored texts of a list. Whatever the bytes are, the arrays that come of them are of equal count and their entries
// -1 or within the cap; where the text gives no place twice, no column set has one twice.
void fuzzColumnProfile(const std::uint8_t* data, std::size_t size);
void fuzzExchange(const std::uint8_t* data, std::size_t size);
void fuzzFactory(const std::uint8_t* data, std::size_t size);
void fuzzDealSlip(const std::uint8_t* data, std::size_t size);
void fuzzAppearance(const std::uint8_t* data, std::size_t size);

// The lock and the levels of a list's sort: what was read can be written and read back the same.
void fuzzSortTexts(const std::uint8_t* data, std::size_t size);

// The stored texts of a market watch: what comes on screen has each place from 0 up once; user columns that were read
// can be written and read back the same.
void fuzzWatchProfile(const std::uint8_t* data, std::size_t size);
void fuzzWatchUserColumns(const std::uint8_t* data, std::size_t size);
void fuzzWatchExport(const std::uint8_t* data, std::size_t size);
