// CMap: a hash map with chains. Header only.
//
// 17 buckets unless InitHashTable says otherwise; the table is allocated at the first insert and never grows, so a map
// that will be large is given its buckets first. Nodes come in blocks of 10. Neither order nor bucket of a key means
// anything. Pointers to pairs stay valid until their key is removed.
#pragma once

#include "quor/platform/base/List.h"

// The hash of a key, spread over all 32 bits. Specialise it for other key types.
template <class ARG_KEY>
UINT HashKey(ARG_KEY key) {
    std::uint64_t bits;
    if constexpr (std::is_pointer_v<ARG_KEY>)
        bits = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(key));
    else
        bits = static_cast<std::uint64_t>(key);
    return static_cast<UINT>((bits * 0x9E3779B97F4A7C15u) >> 32);
}

// Texts count by content.
template <>
inline UINT HashKey<LPCSTR>(LPCSTR key) {
    UINT hash = 2166136261u;
    for (; key != nullptr && *key != '\0'; ++key) hash = (hash ^ static_cast<unsigned char>(*key)) * 16777619u;
    return hash;
}
template <>
inline UINT HashKey<const CString&>(const CString& key) {
    return HashKey<LPCSTR>(key.GetString());
}
template <>
inline UINT HashKey<CString>(CString key) {
    return HashKey<LPCSTR>(key.GetString());
}

template <class KEY, class ARG_KEY = const KEY&, class VALUE = KEY, class ARG_VALUE = const VALUE&>
class CMap {
public:
    struct CPair {
        const KEY key;
        VALUE value;
    };

    explicit CMap(INT_PTR blockSize = 10) : m_nodes(static_cast<std::ptrdiff_t>(blockSize)) {}
    CMap(const CMap&) = delete;
    CMap& operator=(const CMap&) = delete;
    ~CMap() { RemoveAll(); }

    INT_PTR GetCount() const { return m_count; }
    INT_PTR GetSize() const { return m_count; }
    BOOL IsEmpty() const { return m_count == 0; }

    UINT GetHashTableSize() const { return m_bucketCount; }
    // Only while the map is empty. Without allocNow the table is made by the first insert. 0 buckets throws.
    void InitHashTable(UINT bucketCount, BOOL allocNow = TRUE) {
        if (m_count != 0 || bucketCount == 0) AfxThrowInvalidArgException();
        m_buckets.reset();
        m_bucketCount = bucketCount;
        if (allocNow) allocateTable();
    }

    // FALSE, and the value untouched, if the key is not there.
    BOOL Lookup(ARG_KEY key, VALUE& value) const {
        const Node* const node = find(key);
        if (node == nullptr) return FALSE;
        value = node->pair.value;
        return TRUE;
    }
    // Null if the key is not there.
    CPair* PLookup(ARG_KEY key) {
        Node* const node = find(key);
        return node != nullptr ? &node->pair : nullptr;
    }
    const CPair* PLookup(ARG_KEY key) const {
        const Node* const node = find(key);
        return node != nullptr ? &node->pair : nullptr;
    }
    // Adds the key with a value-initialised value if it is not there.
    VALUE& operator[](ARG_KEY key) {
        const UINT hash = HashKey<ARG_KEY>(key);
        Node* node = find(key, hash);
        if (node == nullptr) {
            if (m_buckets == nullptr) allocateTable();
            Node*& bucket = m_buckets[hash % m_bucketCount];
            node = m_nodes.create(CPair{KEY(key), VALUE()}, bucket, hash);
            bucket = node;
            ++m_count;
        }
        return node->pair.value;
    }
    void SetAt(ARG_KEY key, ARG_VALUE value) { (*this)[key] = value; }

    // FALSE if the key is not there. A walk may remove the pair that it was just given.
    BOOL RemoveKey(ARG_KEY key) {
        if (m_buckets == nullptr) return FALSE;
        const UINT hash = HashKey<ARG_KEY>(key);
        for (Node** link = &m_buckets[hash % m_bucketCount]; *link != nullptr; link = &(*link)->next) {
            Node* const node = *link;
            if (node->hash != hash || !(node->pair.key == key)) continue;
            *link = node->next;
            m_nodes.destroy(node);
            if (--m_count == 0) RemoveAll();
            return TRUE;
        }
        return FALSE;
    }
    // Frees the table too; the number of buckets stays.
    void RemoveAll() {
        for (UINT i = 0; m_buckets != nullptr && i < m_bucketCount; ++i) {
            while (Node* const node = m_buckets[i]) {
                m_buckets[i] = node->next;
                m_nodes.destroy(node);
            }
        }
        m_buckets.reset();
        m_nodes.clear();
        m_count = 0;
    }

    // A walk over all pairs: a position, null at the end. GetNextAssoc moves it on.
    POSITION GetStartPosition() const { return reinterpret_cast<POSITION>(firstFrom(0)); }
    void GetNextAssoc(POSITION& position, KEY& key, VALUE& value) const {
        const CPair* const pair = step(position);
        key = pair->key;
        value = pair->value;
    }
    CPair* PGetFirstAssoc() { return pairOf(firstFrom(0)); }
    const CPair* PGetFirstAssoc() const { return pairOf(firstFrom(0)); }
    CPair* PGetNextAssoc(const CPair* pair) { return pairOf(after(nodeOf(pair))); }
    const CPair* PGetNextAssoc(const CPair* pair) const { return pairOf(after(nodeOf(pair))); }

private:
    struct Node {
        CPair pair;  // first: a pair's address is its node's
        Node* next;
        UINT hash;
    };

    static CPair* pairOf(Node* node) { return node != nullptr ? &node->pair : nullptr; }
    static const Node* nodeOf(const CPair* pair) {
        if (pair == nullptr) AfxThrowInvalidArgException();
        return reinterpret_cast<const Node*>(pair);
    }

    void allocateTable() { m_buckets.reset(new Node*[m_bucketCount]()); }
    Node* find(ARG_KEY key) const { return m_buckets != nullptr ? find(key, HashKey<ARG_KEY>(key)) : nullptr; }
    Node* find(ARG_KEY key, UINT hash) const {
        if (m_buckets == nullptr) return nullptr;
        Node* node = m_buckets[hash % m_bucketCount];
        while (node != nullptr && (node->hash != hash || !(node->pair.key == key))) node = node->next;
        return node;
    }
    Node* firstFrom(UINT bucket) const {
        if (m_buckets == nullptr) return nullptr;
        while (bucket < m_bucketCount && m_buckets[bucket] == nullptr) ++bucket;
        return bucket < m_bucketCount ? m_buckets[bucket] : nullptr;
    }
    Node* after(const Node* node) const {
        return node->next != nullptr ? node->next : firstFrom(node->hash % m_bucketCount + 1);
    }
    const CPair* step(POSITION& position) const {
        if (position == nullptr) AfxThrowInvalidArgException();
        Node* const node = reinterpret_cast<Node*>(position);
        position = reinterpret_cast<POSITION>(after(node));
        return &node->pair;
    }

    std::unique_ptr<Node*[]> m_buckets;
    UINT m_bucketCount = 17;
    INT_PTR m_count = 0;
    quor::NodePool<Node> m_nodes;
};
