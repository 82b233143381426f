#include "IndexPuts.h"

qint32 IndexPuts::take(const lsNode *row, qint32 rank) {
    if (m_puts.empty())
        return rank;
    const auto it = m_puts.find(row);
    if (it == m_puts.end())
        return rank;
    const qint32 index = it->second;
    m_puts.erase(it);
    return index;
}
