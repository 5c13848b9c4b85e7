// What both files see: one definition each, but for a class whose size is what the includer defined.
#pragma once

struct PlantedSwitched {
    int value = 0;
#ifdef PLANTED_WIDE
    int more = 0;
#endif
};

struct Shared {
    virtual ~Shared() = default;
};

template <typename Value>
struct SharedBox {
    Value value;
};

inline int sharedInline(int value) { return value + 1; }
