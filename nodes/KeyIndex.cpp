#include "KeyIndex.h"

#include "lsNode.h"

#include <algorithm>
#include <cassert>

quint32 KeyIndex::foldedHash(const QString &key) {
    // Folding one code point at a time is what the case-insensitive comparison does too, so
    // keys that compare equal hash alike.
    quint32 h = 2166136261u;
    const QChar *text = key.constData();
    const qsizetype n = key.size();
    for (qsizetype i = 0; i < n; ++i) {
        char32_t c = text[i].unicode();
        if (text[i].isHighSurrogate() && i + 1 < n && text[i + 1].isLowSurrogate()) {
            c = QChar::surrogateToUcs4(text[i], text[i + 1]);
            ++i;
        }
        if (c < 128)
            c = c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c;
        else
            c = QChar::toCaseFolded(c);
        h = (h ^ c) * 16777619u;
    }
    h ^= h >> 16;
    h *= 0x7feb352du;
    h ^= h >> 15;
    return h;
}

lsNode *KeyIndex::erased() {
    // The index's own address is never a row's.
    static char marker;
    return reinterpret_cast<lsNode *>(&marker);
}

qint32 KeyIndex::slotFor(quint32 hash, qint32 probe) const {
    // The hash scaled to the table (any size, not only powers of two), then linear probing.
    const qint64 capacity = qint64(m_rows.size());
    const qint64 i = qint64((quint64(hash) * quint64(capacity)) >> 32) + probe;
    return qint32(i < capacity ? i : i - capacity);
}

lsNode *KeyIndex::find(const QString &key) const {
    if (key.isEmpty() || m_rows.empty())
        return nullptr;
    const quint32 hash = foldedHash(key);
    for (qint32 probe = 0;; ++probe) {
        const qint32 i = slotFor(hash, probe);
        lsNode *row = m_rows[size_t(i)];
        if (!row)
            return nullptr;
        if (row != erased() && m_hashes[size_t(i)] == hash &&
            QString::compare(row->storedKey(), key, Qt::CaseInsensitive) == 0)
            return row;
    }
}

void KeyIndex::insert(lsNode *row) {
    if ((m_used + 1) * 5 > qint32(m_rows.size()) * 4)
        grow();
    const quint32 hash = foldedHash(row->storedKey());
    for (qint32 probe = 0;; ++probe) {
        const qint32 i = slotFor(hash, probe);
        lsNode *&slot = m_rows[size_t(i)];
        if (!slot || slot == erased()) {
            m_used += !slot;
            slot = row;
            m_hashes[size_t(i)] = hash;
            ++m_size;
            return;
        }
    }
}

void KeyIndex::erase(const lsNode *row) {
    const quint32 hash = foldedHash(row->storedKey());
    for (qint32 probe = 0; probe < qint32(m_rows.size()); ++probe) {
        lsNode *&slot = m_rows[size_t(slotFor(hash, probe))];
        if (slot == row) {
            slot = erased();
            --m_size;
            return;
        }
        if (!slot)
            break;
    }
    assert(false && "row not stored under its key");
}

void KeyIndex::clear() {
    m_rows.clear();
    m_hashes.clear();
    m_size = m_used = 0;
}

void KeyIndex::grow() {
    // Twice the live rows: erased slots are dropped, and the table fills from half to four
    // fifths before it grows again.
    const size_t capacity = std::max<size_t>(16, size_t(m_size + 1) * 2);
    std::vector<lsNode *> rows(capacity, nullptr);
    std::vector<quint32> hashes(capacity, 0);
    std::swap(rows, m_rows);
    std::swap(hashes, m_hashes);
    m_used = m_size;
    for (size_t i = 0; i < rows.size(); ++i) {
        if (!rows[i] || rows[i] == erased())
            continue;
        for (qint32 probe = 0;; ++probe) {
            const qint32 j = slotFor(hashes[i], probe);
            if (!m_rows[size_t(j)]) {
                m_rows[size_t(j)] = rows[i];
                m_hashes[size_t(j)] = hashes[i];
                break;
            }
        }
    }
}
