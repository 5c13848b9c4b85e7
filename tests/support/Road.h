// The two roads by which a list comes to its window. What a list does when it starts differs on them, so tests of the
// start, the header and the painting run on both:
//
//   using SortOnEachRoad = test::OnEachRoad<Sort>;
//   TEST_P(SortOnEachRoad, ...) { ... }
//   INSTANTIATE_TEST_SUITE_P(, SortOnEachRoad, test::eachRoad, test::roadName);
#pragma once

#include <gtest/gtest.h>
#include <string>

namespace test {

enum class Road {
    created,     // it makes the window
    subclassed,  // it takes over a control that is there, as of a dialog
};

// A fixture that follows its member `road` runs on the parameter's.
template <class Fixture>
class OnEachRoad : public Fixture, public ::testing::WithParamInterface<Road> {
protected:
    OnEachRoad() { this->road = OnEachRoad::GetParam(); }
};

inline const auto eachRoad = ::testing::Values(Road::created, Road::subclassed);

inline std::string roadName(const ::testing::TestParamInfo<Road>& info) {
    return info.param == Road::created ? "Created" : "Subclassed";
}

}  // namespace test
