// Five names stand in Second.cpp too, with another meaning: PlantedClass, PlantedSwitched and those of planted.
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

// What only looks like it: the names of the anonymous namespace, the local and the static ones are each file's own.

struct Second;  // declared only

namespace {
struct Own {
    int value;
};
}  // namespace

namespace planted::first_file {
struct Named : Shared {};
}  // namespace planted::first_file

static int ownFunction(const Second* other) { return other == nullptr ? 1 : 2; }

int firstOwn(const Second* other) {
    struct Local {
        char value;
    };
    const SharedBox<Own> box{{1}};
    const SharedBox<Local> local{{1}};
    const planted::first_file::Named named;
    return static_cast<int>(box.value.value) + static_cast<int>(local.value.value) + static_cast<int>(sizeof named) +
           sharedInline(ownFunction(other));
}
