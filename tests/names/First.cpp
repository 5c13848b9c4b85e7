// Five names stand in Second.cpp too, with another meaning.
#include "tests/names/Planted.h"

#include <string>

class PlantedClass {
public:
    explicit PlantedClass(int value) : m_text(static_cast<std::size_t>(value), ' ') {}
    std::size_t length() const { return m_text.size(); }

private:
    std::string m_text;
};

namespace planted {
enum class Kind { first, second };
inline int inlined(Kind kind) { return kind == Kind::first ? 1 : 2; }
template <typename Value>
struct Box {
    Value value;
};
}  // namespace planted

std::size_t first(int value, planted::Kind kind) {
    const planted::Box<int> box{planted::inlined(kind)};
    const PlantedSwitched switched;
    return PlantedClass(value).length() + static_cast<std::size_t>(box.value + switched.value);
}
