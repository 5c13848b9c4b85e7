#include "quor/platform/win/core/SplitterLayout.h"

#include <gtest/gtest.h>
#include <numeric>
#include <random>

namespace {

using Ints = std::vector<int>;

std::vector<quor::SplitterPart> parts(const Ints& ideals, int least, int room) {
    std::vector<quor::SplitterPart> made;
    for (const int ideal : ideals) made.push_back({ideal, least, 0});
    quor::layOutParts(made, room);
    return made;
}

Ints sizes(const std::vector<quor::SplitterPart>& of) {
    Ints told;
    for (const quor::SplitterPart& part : of) told.push_back(part.size);
    return told;
}

TEST(SplitterLayout, EachGetsWhatIsLeftAndTheLastShownTheRest) {
    const struct {
        const char* what;
        Ints ideals;
        int least, room;
        Ints sizes;
    } cases[] = {
        {"a closed one", {100, 0, 50}, 0, 300, {100, 0, 200}},
        {"a closed last one hands over", {100, 300, 300}, 0, 300, {100, 200, 0}},
        {"too narrow", {100, 100, 100}, 0, 130, {100, 30, 0}},
        {"below its least", {100, 100, 100}, 40, 130, {130, 0, 0}},
        {"nobody asks", {0, -5, 0}, 10, 300, {0, 0, 300}},
        {"no room", {100, 100}, 0, -6, {0, 0}},
    };
    for (const auto& c : cases) EXPECT_EQ(sizes(parts(c.ideals, c.least, c.room)), c.sizes) << c.what;
}

TEST(SplitterLayout, ABarMovesBetweenItsNeighbours) {
    const struct {
        const char* what;
        Ints ideals;
        int bar, size;
        Ints sizes;
    } cases[] = {
        {"beyond the next bar", {100, 100, 100}, 0, 500, {200, 0, 100}},
        {"below the least", {100, 100, 100}, 1, 15, {100, 0, 200}},
        {"the neighbour's least", {100, 100, 100}, 0, 185, {200, 0, 100}},
        {"a closed one is drawn open by its second bar", {200, 0, 100}, 1, 60, {200, 60, 40}},
    };
    for (const auto& c : cases) {
        auto made = parts(c.ideals, 20, 300);
        quor::moveBar(made, c.bar, c.size);
        EXPECT_EQ(sizes(made), c.sizes) << c.what;
    }
}

TEST(SplitterLayout, AnyRunOfMovesFillsTheRoomAndStaysAsItIs) {
    std::mt19937 random(7);
    const auto any = [&](int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); };
    for (int step = 0; step < 4'000; ++step) {
        const int room = 200 + any(400);
        auto made = parts({any(200), any(200), any(200), any(200)}, any(50), room);
        for (int move = 0; move < 3; ++move) quor::moveBar(made, any(3), any(room) - 20);
        const Ints moved = sizes(made);
        ASSERT_EQ(std::accumulate(moved.begin(), moved.end(), 0), room) << step;
        quor::layOutParts(made, room);
        ASSERT_EQ(sizes(made), moved) << step;
    }
}

}  // namespace
