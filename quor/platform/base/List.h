// CList: a doubly linked list walked by positions. Header only.
//
// A POSITION is null or names one element until that element is removed. Null given where an element is needed, and
// any access to an empty list's ends, throws the invalid-argument exception.
#pragma once

#include "quor/platform/base/Array.h"
#include "quor/platform/base/NodePool.h"

struct __POSITION {};
using POSITION = __POSITION*;

template <class TYPE, class ARG_TYPE = const TYPE&>
class CList {
public:
    explicit CList(INT_PTR blockSize = 10) : m_nodes(static_cast<std::ptrdiff_t>(blockSize)) {}
    CList(const CList&) = delete;
    CList& operator=(const CList&) = delete;
    ~CList() { RemoveAll(); }

    INT_PTR GetCount() const { return m_count; }
    INT_PTR GetSize() const { return m_count; }
    BOOL IsEmpty() const { return m_count == 0; }

    TYPE& GetHead() { return nodeOf(m_head)->value; }
    const TYPE& GetHead() const { return nodeOf(m_head)->value; }
    TYPE& GetTail() { return nodeOf(m_tail)->value; }
    const TYPE& GetTail() const { return nodeOf(m_tail)->value; }
    POSITION GetHeadPosition() const { return positionOf(m_head); }
    POSITION GetTailPosition() const { return positionOf(m_tail); }

    // The element at the position, which then moves on; null behind the last.
    TYPE& GetNext(POSITION& position) {
        Node* const node = nodeOf(position);
        position = positionOf(node->next);
        return node->value;
    }
    const TYPE& GetNext(POSITION& position) const { return const_cast<CList*>(this)->GetNext(position); }
    TYPE& GetPrev(POSITION& position) {
        Node* const node = nodeOf(position);
        position = positionOf(node->previous);
        return node->value;
    }
    const TYPE& GetPrev(POSITION& position) const { return const_cast<CList*>(this)->GetPrev(position); }
    TYPE& GetAt(POSITION position) { return nodeOf(position)->value; }
    const TYPE& GetAt(POSITION position) const { return nodeOf(position)->value; }
    void SetAt(POSITION position, ARG_TYPE value) { nodeOf(position)->value = value; }

    POSITION AddHead(ARG_TYPE value) { return insert(value, nullptr, m_head); }
    POSITION AddTail(ARG_TYPE value) { return insert(value, m_tail, nullptr); }
    // All elements of another list, in its order.
    void AddHead(const CList* source) {
        for (const Node* node = source->m_tail; node != nullptr; node = node->previous) AddHead(node->value);
    }
    void AddTail(const CList* source) {
        for (const Node* node = source->m_head; node != nullptr; node = node->next) AddTail(node->value);
    }
    // A null position stands for the head (before) or the tail (after).
    POSITION InsertBefore(POSITION position, ARG_TYPE value) {
        if (position == nullptr) return AddHead(value);
        Node* const node = nodeOf(position);
        return insert(value, node->previous, node);
    }
    POSITION InsertAfter(POSITION position, ARG_TYPE value) {
        if (position == nullptr) return AddTail(value);
        Node* const node = nodeOf(position);
        return insert(value, node, node->next);
    }

    TYPE RemoveHead() { return take(nodeOf(m_head)); }
    TYPE RemoveTail() { return take(nodeOf(m_tail)); }
    void RemoveAt(POSITION position) { take(nodeOf(position)); }
    void RemoveAll() {
        while (m_head != nullptr) take(m_head);
        m_nodes.clear();
    }

    // The first element equal to `value` behind `startAfter` (null: from the head); null if there is none.
    POSITION Find(ARG_TYPE value, POSITION startAfter = nullptr) const {
        Node* node = startAfter != nullptr ? nodeOf(startAfter)->next : m_head;
        while (node != nullptr && !(node->value == value)) node = node->next;
        return positionOf(node);
    }
    // Null for an index outside the list.
    POSITION FindIndex(INT_PTR index) const {
        if (index < 0 || index >= m_count) return nullptr;
        Node* node = m_head;
        while (index-- > 0) node = node->next;
        return positionOf(node);
    }

private:
    struct Node {
        TYPE value;
        Node* previous;
        Node* next;
    };

    static POSITION positionOf(Node* node) { return reinterpret_cast<POSITION>(node); }
    static Node* nodeOf(POSITION position) { return nodeOf(reinterpret_cast<Node*>(position)); }
    static Node* nodeOf(Node* node) {
        if (node == nullptr) AfxThrowInvalidArgException();
        return node;
    }
    POSITION insert(ARG_TYPE value, Node* previous, Node* next) {
        Node* const node = m_nodes.create(TYPE(value), previous, next);
        (previous != nullptr ? previous->next : m_head) = node;
        (next != nullptr ? next->previous : m_tail) = node;
        ++m_count;
        return positionOf(node);
    }
    TYPE take(Node* node) {
        (node->previous != nullptr ? node->previous->next : m_head) = node->next;
        (node->next != nullptr ? node->next->previous : m_tail) = node->previous;
        TYPE value(std::move(node->value));
        m_nodes.destroy(node);
        --m_count;
        return value;
    }

    Node* m_head = nullptr;
    Node* m_tail = nullptr;
    INT_PTR m_count = 0;
    quor::NodePool<Node> m_nodes;
};

using CPtrList = CList<void*, void*>;
using CStringList = CList<CString, LPCSTR>;
