// Workload W: the rows and the streams of operations that every benchmark and every peer here works on. Deterministic
// and the same everywhere; common/workload.js says it again for JavaScript. Changing a draw changes W: do it in both,
// and measure everything anew.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>
#include <vector>

namespace workload {

// Marsaglia's xorshift with 32 bits of state and the shifts 13, 17, 5.
struct Random {
    std::uint32_t state;
    explicit Random(std::uint32_t seed) : state(seed) {}
    std::uint32_t operator()() {
        state ^= state << 13;
        state ^= state >> 17;
        return state ^= state << 5;
    }
    std::uint32_t below(std::uint32_t n) { return (*this)() % n; }
    double cents() { return below(100'000) / 100.0; }  // 0.00 to 999.99
};

constexpr std::uint32_t dataSeed = 42;
constexpr std::uint32_t operationSeed = 4242;  // plus the number of the repeat, from 0
constexpr std::uint32_t symbolSeed = 7;

constexpr int columns = 20;  // symbol, exchange, 14 doubles, 3 integers, date
constexpr int doubles = 14;
constexpr int integers = 3;
constexpr const char* exchanges[5] = {"NYSE", "NSDQ", "LSE", "XETR", "TSE"};

struct Row {
    char symbol[12];        // "SYM%06u"
    std::uint8_t exchange;  // into exchanges
    double d[doubles];
    std::int32_t n[integers];
    char date[12];  // "2020-01-01" to "2025-12-28"
};

// `value` as decimal digits with zeros before it.
inline char* putDigits(char* to, std::uint32_t value, int digits) {
    for (int i = digits - 1; i >= 0; --i, value /= 10) to[i] = static_cast<char>('0' + value % 10);
    return to + digits;
}

// Symbol numbers go up to 999,999 for rows made at the start; those added later take seven digits.
inline Row makeRow(std::uint32_t symbolNumber, Random& random) {
    Row row{};
    std::memcpy(row.symbol, "SYM", 3);
    putDigits(row.symbol + 3, symbolNumber, symbolNumber < 1'000'000 ? 6 : 7);
    row.exchange = static_cast<std::uint8_t>(random.below(5));
    for (double& value : row.d) value = random.cents();
    row.n[0] = static_cast<std::int32_t>(random.below(1'000'000));
    row.n[1] = static_cast<std::int32_t>(random.below(10'000));
    row.n[2] = static_cast<std::int32_t>(random.below(10'000));
    const std::uint32_t day = 1 + random.below(28), month = 1 + random.below(12), year = 2020 + random.below(6);
    char* to = putDigits(row.date, year, 4);
    *to++ = '-';
    to = putDigits(to, month, 2);
    *to++ = '-';
    putDigits(to, day, 2);
    return row;
}

// The symbol numbers in the order of the rows: 0 to count - 1, shuffled (Fisher-Yates), so that a sort has work to do.
inline std::vector<std::uint32_t> symbolOrder(std::uint32_t count) {
    std::vector<std::uint32_t> order(count);
    for (std::uint32_t i = 0; i < count; ++i) order[i] = i;
    Random random(symbolSeed);
    for (std::uint32_t i = count; i-- > 1;) std::swap(order[i], order[random.below(i + 1)]);
    return order;
}

// Calls take(index, row) for each row that is there at the start.
template <class Take>
void makeRows(std::uint32_t count, Take take) {
    Random random(dataSeed);
    const std::vector<std::uint32_t> order = symbolOrder(count);
    for (std::uint32_t i = 0; i < count; ++i) take(i, makeRow(order[i], random));
}

// One tick: a row and the three cells that the host rewrites before it tells the grid. In a walk d[0] moves by up to 1.
struct Tick {
    std::uint32_t row;
    double d0;  // the new value; in a walk what is added to the old one
    double d5;
    std::int32_t n0;
};

inline Tick nextTick(Random& random, std::uint32_t rows, bool walk = false) {
    Tick tick;
    tick.row = random.below(rows);
    tick.d0 = walk ? (static_cast<int>(random.below(201)) - 100) / 100.0 : random.cents();
    tick.d5 = random.cents();
    tick.n0 = static_cast<std::int32_t>(random.below(1'000'000));
    return tick;
}

// W4: in one batch 10,000 of the rows leave and 10,000 come, while 100 are selected.
struct Churn {
    static constexpr std::uint32_t count = 10'000;
    std::vector<std::uint32_t> leaving;  // indices, sorted, each once
    std::vector<Row> coming;
};

inline Churn makeChurn(std::uint32_t rows, Random& random) {
    std::vector<bool> leaves(rows);
    for (std::uint32_t chosen = 0; chosen < Churn::count;) {
        const std::uint32_t row = random.below(rows);
        if (!leaves[row]) ++chosen;
        leaves[row] = true;
    }
    Churn churn;
    for (std::uint32_t row = 0; row < rows; ++row) {
        if (leaves[row]) churn.leaving.push_back(row);
    }
    for (std::uint32_t i = 0; i < Churn::count; ++i) churn.coming.push_back(makeRow(rows + i, random));
    return churn;
}

// The 100 rows that are selected before a churn.
inline std::vector<std::uint32_t> selectedRows(std::uint32_t rows) {
    std::vector<std::uint32_t> selected;
    for (std::uint32_t i = 0; i < 100; ++i) selected.push_back(i * (rows / 100) + rows / 200);
    return selected;
}

}  // namespace workload
