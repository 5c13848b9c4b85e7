// Memory for the nodes of lists and maps: blocks of a fixed number of nodes, freed together. Private to the framework.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <utility>
#include <vector>

namespace quor {

// Nodes are constructed and destroyed one by one; their memory goes back when the pool is cleared or destroyed. All
// nodes must have been destroyed by then.
template <class Node>
class NodePool {
public:
    explicit NodePool(std::ptrdiff_t blockSize)
        : m_blockSize(static_cast<std::size_t>(std::max<std::ptrdiff_t>(blockSize, 1))) {}
    NodePool(const NodePool&) = delete;
    NodePool& operator=(const NodePool&) = delete;

    template <class... Arguments>
    Node* create(Arguments&&... arguments) {
        if (m_free == nullptr) addBlock();
        Slot* const slot = m_free;
        Slot* const next = slot->next;
        Node* const node = ::new (static_cast<void*>(slot)) Node{std::forward<Arguments>(arguments)...};
        m_free = next;
        return node;
    }
    void destroy(Node* node) {
        node->~Node();
        m_free = ::new (static_cast<void*>(node)) Slot{m_free};
    }
    void clear() {
        m_blocks.clear();
        m_free = nullptr;
    }

private:
    struct Slot {
        Slot* next;
    };
    struct alignas(std::max(alignof(Node), alignof(Slot))) Room {
        unsigned char bytes[std::max(sizeof(Node), sizeof(Slot))];
    };

    void addBlock() {
        m_blocks.push_back(std::unique_ptr<Room[]>(new Room[m_blockSize]));
        for (std::size_t i = m_blockSize; i-- > 0;) {
            m_free = ::new (static_cast<void*>(&m_blocks.back()[i])) Slot{m_free};
        }
    }

    std::size_t m_blockSize;
    Slot* m_free = nullptr;
    std::vector<std::unique_ptr<Room[]>> m_blocks;
};

}  // namespace quor
