#pragma once
// An ordered collection with 1-based positions and optional string keys that are unique without
// regard to case. Lookup by position and by key take constant time on average; insertion and
// removal in the middle shift the later items. Items are shared pointers, so an item can outlive
// its collection.

#include "IndexKey.h"
#include "TreeListError.h"

#include <QHash>
#include <QString>
#include <memory>
#include <vector>

template <class T> class KeyedCollection {
public:
    using Ptr = std::shared_ptr<T>;

    // Number of items.
    qint32 count() const { return static_cast<qint32>(m_items.size()); }
    // The item at a 1-based position, or null when out of range.
    Ptr at(qint32 position) const {
        if (position < 1 || position > count())
            return nullptr;
        return m_items[static_cast<size_t>(position - 1)].item;
    }
    // The item under a key (any letter case), or null for an unknown or empty key.
    Ptr find(const QString &key) const {
        if (key.isEmpty())
            return nullptr;
        const auto it = m_keys.constFind(key.toCaseFolded());
        return it == m_keys.constEnd() ? nullptr : it.value();
    }
    // The item an index-or-key names, or null when it names none or is of the wrong type.
    Ptr item(const QVariant &indexKey) const {
        switch (indexKeyKind(indexKey)) {
        case IndexKeyKind::Position: {
            const auto pos = indexKeyPosition(indexKey);
            return pos ? at(*pos) : nullptr;
        }
        case IndexKeyKind::Key:
            return find(indexKey.toString());
        default:
            return nullptr;
        }
    }
    // As item(), but a missing item raises the invalid-argument error and a value that is
    // neither a number nor a string the type-mismatch error.
    Ptr itemOrThrow(const QVariant &indexKey) const {
        const IndexKeyKind kind = indexKeyKind(indexKey);
        if (kind == IndexKeyKind::Invalid)
            throw TreeListError(TreeListError::TypeMismatch);
        Ptr found = item(indexKey);
        if (!found)
            throw TreeListError(TreeListError::InvalidArgument);
        return found;
    }
    // True when a non-empty key is already used.
    bool containsKey(const QString &key) const {
        return !key.isEmpty() && m_keys.contains(key.toCaseFolded());
    }

    // Inserts before a 1-based position (a position past the end appends) under a key ("" for
    // none). A duplicate key raises the duplicate-key error and adds nothing.
    void insert(Ptr value, const QString &key, qint32 before) {
        QString folded = key.toCaseFolded();
        if (!folded.isEmpty()) {
            if (m_keys.contains(folded))
                throw TreeListError(TreeListError::DuplicateKey);
            m_keys.insert(folded, value);
        }
        Entry entry{std::move(value), std::move(folded)};
        if (before >= 1 && before <= count())
            m_items.insert(m_items.begin() + (before - 1), std::move(entry));
        else
            m_items.push_back(std::move(entry));
    }
    // Appends under a key ("" for none); a duplicate key raises and adds nothing.
    void append(Ptr value, const QString &key) { insert(std::move(value), key, count() + 1); }

    // Removes the item at a 1-based position; out of range raises the invalid-argument error.
    void removeAt(qint32 position) {
        if (position < 1 || position > count())
            throw TreeListError(TreeListError::InvalidArgument);
        const auto it = m_items.begin() + (position - 1);
        if (!it->folded.isEmpty())
            m_keys.remove(it->folded);
        m_items.erase(it);
    }
    // Removes the item under a key; an unknown key raises the invalid-argument error.
    void removeKey(const QString &key) {
        const Ptr found = find(key);
        if (!found)
            throw TreeListError(TreeListError::InvalidArgument);
        for (size_t i = 0; i < m_items.size(); ++i) {
            if (m_items[i].item == found) {
                removeAt(static_cast<qint32>(i + 1));
                return;
            }
        }
    }
    // Removes by position or key; unknown raises invalid-argument, a wrong type type-mismatch.
    void remove(const QVariant &indexKey) {
        switch (indexKeyKind(indexKey)) {
        case IndexKeyKind::Position: {
            const auto pos = indexKeyPosition(indexKey);
            removeAt(pos ? *pos : 0);
            return;
        }
        case IndexKeyKind::Key:
            removeKey(indexKey.toString());
            return;
        default:
            throw TreeListError(TreeListError::TypeMismatch);
        }
    }
    // Removes every item.
    void clear() {
        m_items.clear();
        m_keys.clear();
    }
    // Reserves room for a number of items.
    void reserve(qint32 n) {
        m_items.reserve(static_cast<size_t>(n));
        m_keys.reserve(n);
    }

private:
    // Declared before the iterator, which names it.
    struct Entry {
        Ptr item;
        QString folded; // the case-folded key, "" for none
    };

public:
    // Iteration over the items in position order.
    class const_iterator {
    public:
        using difference_type = std::ptrdiff_t;
        using value_type = Ptr;
        const_iterator() = default;
        explicit const_iterator(typename std::vector<Entry>::const_iterator it) : m_it(it) {}
        const Ptr &operator*() const { return m_it->item; }
        const_iterator &operator++() {
            ++m_it;
            return *this;
        }
        const_iterator operator++(int) {
            auto old = *this;
            ++m_it;
            return old;
        }
        bool operator==(const const_iterator &other) const { return m_it == other.m_it; }

    private:
        typename std::vector<Entry>::const_iterator m_it;
    };
    const_iterator begin() const { return const_iterator(m_items.cbegin()); }
    const_iterator end() const { return const_iterator(m_items.cend()); }

private:
    std::vector<Entry> m_items;
    QHash<QString, Ptr> m_keys;
};
