// Whether a value occurs in the text so far would cost a search of that text for each value. Instead the text is read
// once, byte by byte as it grows, for all values at the same time: a tree of the values, in which each node knows the
// longest end of it that begins a value too (Aho and Corasick, "Efficient string matching", 1975). Every node that a
// byte leads to marks the values that end there; a value whose turn comes is in the text if it is marked.
//
// The tree takes a batch of values at a time, so that its size does not depend on how many are chosen. Each batch reads
// the text from its start: that is no longer than the longest filter, and a batch is not shorter.
#include "quor/grid/core/FilterValues.h"

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

namespace quor::grid {

namespace {

using Node = std::uint32_t;
constexpr Node kRoot = 0;  // where no node is meant, too: no value is empty here
constexpr char kSeparator = '~';

class ValueTree {
public:
    ValueTree() : m_nodes(1) {}

    // The node of the value, which is not empty.
    Node add(std::string_view value) {
        Node node = kRoot;
        for (const char byte : value) node = childOrNew(node, byte);
        m_hasSeparator = m_hasSeparator || value.find(kSeparator) != value.npos;
        m_nodes[node].endsValue = true;
        return node;
    }
    // After the last value.
    void seal();
    // The next bytes of the text.
    void read(std::string_view text) {
        for (const char byte : text) {
            m_at = byte == kSeparator && !m_hasSeparator ? kRoot : follow(m_at, byte);
            mark(m_at);
        }
    }
    // The same for a value and its node. At the root nothing of the text so far begins a value: then it leads through
    // its own nodes, and those that another went through are done.
    void read(std::string_view value, Node end) {
        if (m_at != kRoot) return read(value);
        for (Node node = end; node != kRoot && !m_nodes[node].isWalked; node = m_nodes[node].parent) {
            m_nodes[node].isWalked = true;
            mark(node);
        }
        m_at = end;
    }
    // Whether the text contains this node's value.
    bool isRead(Node value) const { return m_nodes[value].isRead; }

private:
    struct Entry {
        Node firstChild = kRoot;
        Node nextSibling = kRoot;
        Node parent = kRoot;
        Node fallback = kRoot;      // the longest proper end of this text that is a node
        Node shorterValue = kRoot;  // the longest that is a value
        char byte = 0;
        bool endsValue = false;
        bool isRead = false;  // then those along shorterValue are, too
        bool isWalked = false;
    };

    void mark(Node node) {
        for (; node != kRoot && !m_nodes[node].isRead; node = m_nodes[node].shorterValue) m_nodes[node].isRead = true;
    }

    Node& rootChild(char byte) { return m_rootChildren[static_cast<unsigned char>(byte)]; }
    Node child(Node parent, char byte) {
        if (parent == kRoot) return rootChild(byte);
        Node node = m_nodes[parent].firstChild;
        while (node != kRoot && m_nodes[node].byte != byte) node = m_nodes[node].nextSibling;
        return node;
    }
    Node childOrNew(Node parent, char byte);
    Node follow(Node from, char byte) {
        for (;; from = m_nodes[from].fallback) {
            const Node to = child(from, byte);
            if (to != kRoot || from == kRoot) return to;
        }
    }

    std::vector<Entry> m_nodes;
    std::array<Node, 256> m_rootChildren{};
    Node m_at = kRoot;
    bool m_hasSeparator = false;
};

// A list is sorted: the newest child is the one that the next value goes through.
Node ValueTree::childOrNew(Node parent, char byte) {
    if (const Node found = child(parent, byte); found != kRoot) return found;
    const auto made = static_cast<Node>(m_nodes.size());
    Entry& entry = m_nodes.emplace_back();
    entry.byte = byte;
    entry.parent = parent;
    entry.nextSibling = m_nodes[parent].firstChild;
    m_nodes[parent].firstChild = made;
    if (parent == kRoot) rootChild(byte) = made;
    return made;
}

// Level by level: a fallback is shorter than its node.
void ValueTree::seal() {
    std::vector<Node> level{kRoot}, deeper;
    for (; !level.empty(); level.swap(deeper), deeper.clear()) {
        for (const Node parent : level) {
            for (Node node = m_nodes[parent].firstChild; node != kRoot; node = m_nodes[node].nextSibling) {
                Entry& entry = m_nodes[node];
                if (parent != kRoot) entry.fallback = follow(m_nodes[parent].fallback, entry.byte);
                const Entry& fallback = m_nodes[entry.fallback];
                entry.shorterValue = fallback.endsValue ? entry.fallback : fallback.shorterValue;
                deeper.push_back(node);
            }
        }
    }
}

// Values that are joined together: those of one tree.
struct Batch {
    std::string bytes;
    std::vector<std::size_t> ends;

    void add(const CString& value) {
        bytes.append(value.GetString(), static_cast<std::size_t>(value.GetLength()));
        ends.push_back(bytes.size());
    }
    std::string_view value(std::size_t i) const {
        const std::size_t start = i == 0 ? 0 : ends[i - 1];
        return std::string_view(bytes).substr(start, ends[i] - start);
    }
};

void join(const Batch& batch, std::string& text, std::size_t longest) {
    ValueTree tree;
    std::vector<Node> nodes;
    for (std::size_t i = 0; i < batch.ends.size(); ++i) nodes.push_back(tree.add(batch.value(i)));
    tree.seal();
    tree.read(text);
    for (std::size_t i = 0; i < nodes.size() && text.size() < longest; ++i) {
        if (tree.isRead(nodes[i])) continue;
        if (!text.empty()) {
            text += kSeparator;
            tree.read({&kSeparator, 1});
        }
        text += batch.value(i);
        tree.read(batch.value(i), nodes[i]);
    }
}

}  // namespace

std::string joinFilterValues(const std::function<bool(CString& value)>& next, std::size_t longest) {
    std::string text;
    CString value;
    for (bool more = true; more && text.size() < longest;) {
        Batch batch;
        while (batch.bytes.size() <= longest && (more = next(value)))
            if (!value.IsEmpty()) batch.add(value);  // any text contains an empty one, and none begins with it
        join(batch, text, longest);
    }
    if (text.size() > longest) text.resize(longest);
    return text;
}

}  // namespace quor::grid
