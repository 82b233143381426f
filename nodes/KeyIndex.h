#pragma once
// The rows of a collection by key, compared without regard to case. An open-addressing table of
// row pointers with the hashes of their case-folded keys: the key text itself is the row's own
// (lsNode::storedKey), so storing a key costs no string of its own.

#include <QString>
#include <vector>

class lsNode;

class KeyIndex {
public:
    // The row stored under a key (any letter case), or null; "" names none.
    lsNode *find(const QString &key) const;
    // Stores a row under its stored key, which must not be taken.
    void insert(lsNode *row);
    // Drops a row stored under its stored key.
    void erase(const lsNode *row);
    // Drops every row.
    void clear();
    // Number of stored rows.
    qint32 size() const { return m_size; }

    // The hash of a key's case-folded text, computed without making the folded copy.
    static quint32 foldedHash(const QString &key);

private:
    // Hash slot states; stored hashes are moved clear of them.
    static constexpr quint32 kEmpty = 0, kErased = 1;
    static quint32 tagOf(const QString &key);
    qint32 slotFor(quint32 tag, qint32 probe) const;
    void grow();

    // Probes read only the hashes; a row is read where its hash matches.
    std::vector<quint32> m_hashes;
    std::vector<lsNode *> m_rows;
    qint32 m_size = 0;
    qint32 m_used = 0; // rows plus erased slots
};
