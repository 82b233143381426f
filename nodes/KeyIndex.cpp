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

quint32 KeyIndex::tagOf(const QString &key) {
    const quint32 h = foldedHash(key);
    return h <= kErased ? h + 2 : h;
}

qint32 KeyIndex::slotFor(quint32 tag, qint32 probe) const {
    // The hash scaled to the table (any size, not only powers of two), then linear probing.
    const qint64 capacity = qint64(m_hashes.size());
    const qint64 i = qint64((quint64(tag) * quint64(capacity)) >> 32) + probe;
    return qint32(i < capacity ? i : i - capacity);
}

lsNode *KeyIndex::find(const QString &key) const {
    if (key.isEmpty() || m_hashes.empty())
        return nullptr;
    const quint32 tag = tagOf(key);
    for (qint32 probe = 0;; ++probe) {
        const size_t i = size_t(slotFor(tag, probe));
        if (m_hashes[i] == kEmpty)
            return nullptr;
        if (m_hashes[i] == tag &&
            QString::compare(m_rows[i]->storedKey(), key, Qt::CaseInsensitive) == 0)
            return m_rows[i];
    }
}

void KeyIndex::insert(lsNode *row) {
    if ((m_used + 1) * 5 > qint32(m_hashes.size()) * 4)
        grow();
    const quint32 tag = tagOf(row->storedKey());
    for (qint32 probe = 0;; ++probe) {
        const size_t i = size_t(slotFor(tag, probe));
        if (m_hashes[i] <= kErased) {
            m_used += m_hashes[i] == kEmpty;
            m_hashes[i] = tag;
            m_rows[i] = row;
            ++m_size;
            return;
        }
    }
}

void KeyIndex::erase(const lsNode *row) {
    const quint32 tag = tagOf(row->storedKey());
    for (qint32 probe = 0; probe < qint32(m_hashes.size()); ++probe) {
        const size_t i = size_t(slotFor(tag, probe));
        if (m_hashes[i] == kEmpty)
            break;
        if (m_hashes[i] == tag && m_rows[i] == row) {
            m_hashes[i] = kErased;
            --m_size;
            return;
        }
    }
    assert(false && "row not stored under its key");
}

void KeyIndex::clear() {
    m_hashes.clear();
    m_rows.clear();
    m_size = m_used = 0;
}

void KeyIndex::grow() {
    // Twice the live rows: erased slots are dropped, and the table fills from half to four
    // fifths before it grows again.
    const size_t capacity = std::max<size_t>(16, size_t(m_size + 1) * 2);
    std::vector<quint32> hashes(capacity, kEmpty);
    std::vector<lsNode *> rows(capacity, nullptr);
    std::swap(hashes, m_hashes);
    std::swap(rows, m_rows);
    m_used = m_size;
    for (size_t i = 0; i < hashes.size(); ++i) {
        if (hashes[i] <= kErased)
            continue;
        for (qint32 probe = 0;; ++probe) {
            const size_t j = size_t(slotFor(hashes[i], probe));
            if (m_hashes[j] == kEmpty) {
                m_hashes[j] = hashes[i];
                m_rows[j] = rows[i];
                break;
            }
        }
    }
}
