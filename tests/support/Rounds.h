// How long random tests run and from which seed. ./test takes a tenth of a full run and ./test --all, which sets
// QUOR_ALL, a full one; a test's own variable asks for another length by hand.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <random>

namespace test {

inline long fromEnvironment(const char* name, long otherwise) {
    const char* const text = std::getenv(name);
    return text ? std::atol(text) : otherwise;
}

inline long rounds(const char* name, long full) {
    return fromEnvironment(name, std::getenv("QUOR_ALL") ? full : std::max(full / 10, 1L));
}

// QUOR_SEED repeats a run; without it every run has another.
inline unsigned anySeed() {
    const long told = fromEnvironment("QUOR_SEED", -1);
    return told == -1 ? std::random_device{}() : static_cast<unsigned>(told);
}

}  // namespace test
