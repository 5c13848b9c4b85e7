// Five names stand in First.cpp too, with another meaning.
#define PLANTED_WIDE
#include "tests/names/Planted.h"

class PlantedClass {
public:
    explicit PlantedClass(int value) : m_value(value) {}
    int value() const { return m_value; }

private:
    int m_value;
};

namespace planted {
enum class Kind { second, first };
inline int inlined(Kind kind) { return kind == Kind::first ? 2 : 1; }
template <typename Value>
struct Box {
    int count;
    Value value;
};
}  // namespace planted

int second(int value, planted::Kind kind) {
    const planted::Box<int> box{1, planted::inlined(kind)};
    const PlantedSwitched switched;
    return PlantedClass(value).value() + box.count + box.value + switched.more;
}
