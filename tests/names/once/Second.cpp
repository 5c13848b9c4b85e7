// The names of the anonymous namespace, the local and the static ones stand in First.cpp too: each file has its own.
#include "tests/names/once/Shared.h"

struct First;  // declared only

namespace {
struct Own {
    double value;
};
enum class OwnKind { second, first };
}  // namespace

namespace planted::second {
class Named : public Shared {};
}  // namespace planted::second

static int ownFunction(int kind) { return static_cast<OwnKind>(kind) == OwnKind::first ? 1 : 2; }

int second(const First* other, int kind) {
    struct Local {
        long value;
    };
    const SharedBox<Own> box{{1}};
    const SharedBox<Local> local{{1}};
    const planted::second::Named named;
    return other == nullptr ? named.sum() + static_cast<int>(box.value.value) + static_cast<int>(local.value.value)
                            : ownFunction(kind) + sharedInline(SharedKind::first);
}
