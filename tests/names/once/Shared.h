// One definition, seen by both files.
#pragma once

class Shared {
public:
    struct Part {
        int value;
    };
    virtual ~Shared() = default;
    int sum() const { return m_part.value + 1; }

private:
    Part m_part{};
};

template <typename Value>
struct SharedBox {
    Value value;
};

enum class SharedKind { first, second };
inline int sharedInline(SharedKind kind) { return kind == SharedKind::first ? 1 : 2; }
