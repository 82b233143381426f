#pragma once
// The numbers hosts put on the `Index` of rows a collection holds. A held row reads its rank as
// `Index` unless a number put here stands; the collection's next renumbering drops them all.

#include <QtGlobal>
#include <optional>
#include <unordered_map>

class lsNode;

class IndexPuts {
public:
    // Lets `index` stand as the row's `Index`.
    void put(const lsNode *row, qint32 index) { m_puts[row] = index; }
    // The number put on a row, if one stands.
    std::optional<qint32> find(const lsNode *row) const {
        if (m_puts.empty())
            return std::nullopt;
        const auto it = m_puts.find(row);
        return it == m_puts.end() ? std::nullopt : std::optional<qint32>(it->second);
    }
    // The number a row that leaves the collection keeps: the one put on it, else `rank`. The put
    // is dropped.
    qint32 take(const lsNode *row, qint32 rank);
    // Drops every number put.
    void clear() { m_puts.clear(); }
    // True when no number stands.
    bool empty() const { return m_puts.empty(); }
    // The rows that carry a number.
    template <typename Visit> void forEachRow(Visit visit) const {
        for (const auto &entry : m_puts)
            visit(entry.first);
    }

private:
    std::unordered_map<const lsNode *, qint32> m_puts;
};
