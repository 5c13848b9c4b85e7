// The names of the anonymous namespace, the local and the static ones stand in Second.cpp too: each file has its own.
#include "tests/names/once/Shared.h"

struct Second;  // declared only

namespace {
struct Own {
    int value;
};
enum class OwnKind { first, second };
}  // namespace

namespace planted::first {
class Named : public Shared {};
}  // namespace planted::first

static int ownFunction(int kind) { return static_cast<OwnKind>(kind) == OwnKind::first ? 1 : 2; }

int first(const Second* other, int kind) {
    struct Local {
        char value;
    };
    const SharedBox<Own> box{{1}};
    const SharedBox<Local> local{{1}};
    const planted::first::Named named;
    return other == nullptr ? named.sum() + static_cast<int>(box.value.value) + static_cast<int>(local.value.value)
                            : ownFunction(kind) + sharedInline(SharedKind::first);
}
