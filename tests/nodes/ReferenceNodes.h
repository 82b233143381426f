#pragma once
// A plain collection to judge the fast one by: it renumbers every row after a change, recomputes
// visibility from a row to the end of the tree, finds a last sibling along the sibling chain and
// counts visible rows by walking them. Plain pointers into rows it never frees.
#include "IndexKey.h"
#include "TreeListError.h"
#include "TreeListTypes.h"

#include <QHash>
#include <memory>
#include <vector>

struct RefRow {
    int id = 0; // creation order, to pair the row with the collection's
    QVariant key;
    QString storedKey; // the case-folded key the positions hold it under
    qint32 index = 0, identLevel = 0;
    bool visible = true, expanded = false, selected = false, flag = false, displayed = false;
    RefRow *parent = nullptr, *child = nullptr, *lastChild = nullptr, *next = nullptr,
           *prev = nullptr;
    std::vector<bool> cellSelected;
};

class ReferenceNodes {
public:
    std::vector<std::unique_ptr<RefRow>> rows; // every row ever made
    std::vector<RefRow *> positions;
    QHash<QString, RefRow *> keys;
    RefRow *root = nullptr, *tail = nullptr, *walkStart = nullptr, *cursor = nullptr;
    RefRow *selectedRow = nullptr, *selectedCellRow = nullptr;
    qint32 selectedCellColumn = 0, count = 0;

    RefRow *item(const QVariant &indexKey) const {
        switch (indexKeyKind(indexKey)) {
        case IndexKeyKind::Position: {
            const auto pos = indexKeyPosition(indexKey);
            return pos && *pos >= 1 && *pos <= qint32(positions.size())
                       ? positions[size_t(*pos - 1)]
                       : nullptr;
        }
        case IndexKeyKind::Key:
            return keys.value(indexKey.toString().toCaseFolded());
        default:
            return nullptr;
        }
    }
    // The row after `n` in tree order, not leaving the subtree of `top` when one is given.
    static RefRow *next(const RefRow *n, const RefRow *top = nullptr) {
        if (n->child)
            return n->child;
        for (; n && n != top; n = n->parent)
            if (n->next)
                return n->next;
        return nullptr;
    }
    qint32 reIndex() {
        qint32 counter = 1;
        for (RefRow *n = root; n; n = next(n))
            n->index = counter++;
        return counter;
    }

    // Returns the new row, which exists (linked) also when the duplicate-key error is raised.
    RefRow *add(const QVariant &relative, qint32 &relationship, const QVariant &key,
                RefRow *&made) {
        if (indexKeyKind(key) == IndexKeyKind::Invalid)
            throw TreeListError(TreeListError::TypeMismatch);
        if (root && (relationship < lsFirst || relationship > lsChild))
            throw TreeListError(TreeListError::InvalidArgument);
        rows.push_back(std::make_unique<RefRow>());
        RefRow *n = made = rows.back().get();
        n->id = int(rows.size()) - 1;
        n->key = key;
        if (!root) {
            root = n;
            count = 1;
        } else {
            RefRow *r = item(relative);
            if (!r)
                r = root;
            ++count;
            if (relationship == lsFirst || relationship == lsLast)
                relationship = lsNext;
            if (relationship == lsNext) {
                n->prev = r, n->next = r->next;
                if (r->next)
                    r->next->prev = n;
                else if (r->parent)
                    r->parent->lastChild = n;
                r->next = n, n->identLevel = r->identLevel, n->parent = r->parent;
            } else if (relationship == lsPrevious) {
                n->next = r, n->prev = r->prev;
                if (r->prev)
                    r->prev->next = n;
                else if (r->parent)
                    r->parent->child = n;
                else
                    root = n;
                r->prev = n, n->identLevel = r->identLevel, n->parent = r->parent;
            } else {
                if (r->lastChild) {
                    r->lastChild->next = n, n->prev = r->lastChild;
                    n->identLevel = r->lastChild->identLevel;
                } else {
                    r->child = n, n->identLevel = r->identLevel + 1;
                }
                n->parent = r, r->lastChild = n;
            }
            if (n->parent)
                n->visible = n->parent->expanded;
        }
        reIndex();
        const QString folded = variantText(key).toCaseFolded();
        if (!folded.isEmpty() && keys.contains(folded))
            throw TreeListError(TreeListError::DuplicateKey);
        if (!folded.isEmpty())
            keys.insert(folded, n);
        n->storedKey = folded;
        positions.insert(positions.begin() + std::min(size_t(n->index - 1), positions.size()), n);
        tail = positions.back();
        return n;
    }

    void unlink(RefRow *n) {
        if (n->prev)
            n->prev->next = n->next;
        if (n->next)
            n->next->prev = n->prev;
        if (n->parent && n->parent->child == n)
            n->parent->child = n->next;
        if (n->parent && n->parent->lastChild == n)
            n->parent->lastChild = n->prev;
        if (root == n)
            root = n->next;
        n->parent = n->child = n->lastChild = n->next = n->prev = nullptr;
    }
    void clearFlags() {
        for (RefRow *n = root; n; n = next(n))
            n->flag = false;
    }
    bool remove(const QVariant &indexKey) {
        clearFlags();
        RefRow *target = item(indexKey);
        if (!target)
            return false;
        for (RefRow *n = target; n; n = next(n, target))
            n->flag = true;
        for (qint16 i = toInt16(count); i >= 1; --i) {
            RefRow *n = i <= qint32(positions.size()) ? positions[size_t(i - 1)] : nullptr;
            if (!n || !n->flag)
                continue;
            unlink(n);
            if (n->selected || n == selectedRow)
                selectedRow = selectedCellRow = nullptr;
            if (!n->storedKey.isEmpty())
                keys.remove(n->storedKey);
            positions.erase(positions.begin() + (i - 1));
            --count;
        }
        if (count > 0)
            tail = positions.empty() ? nullptr : positions.back();
        else
            root = tail = walkStart = cursor = nullptr;
        reIndex();
        return true;
    }
    void clear() {
        toInt16(count);
        std::vector<RefRow *> reachable;
        for (RefRow *top = root; top; top = top->next) {
            qint32 index = 1;
            for (RefRow *n = top; n; n = next(n, top)) {
                n->index = index++, n->flag = true;
                reachable.push_back(n);
            }
        }
        for (RefRow *n : reachable)
            n->parent = n->child = n->lastChild = n->next = n->prev = nullptr;
        positions.clear();
        keys.clear();
        count = 0;
        root = tail = walkStart = cursor = selectedRow = selectedCellRow = nullptr;
    }

    void setVisibility(RefRow *node) {
        if (!node)
            return;
        for (RefRow *n = node; n; n = next(n))
            n->visible = !n->parent || (n->parent->visible && n->parent->expanded);
        walkStart = cursor = nullptr;
    }
    void setExpanded(RefRow *node, bool value) {
        if (node) {
            node->expanded = value;
            setVisibility(node);
        }
    }
    RefRow *setFirstNode(const QVariant &indexKey) {
        RefRow *start = isEmptyText(indexKey) ? root : item(indexKey);
        walkStart = cursor = start ? start : root;
        return walkStart;
    }
    RefRow *getNextNode(bool onlyVisible) {
        if (!walkStart || !cursor)
            return walkStart = cursor = root;
        RefRow *n = next(cursor);
        while (n && onlyVisible && !n->visible)
            n = next(n);
        if (n)
            return cursor = n;
        walkStart = cursor = nullptr;
        return nullptr;
    }
    RefRow *getPrevNode(const RefRow *node, bool onlyVisible) const {
        if (!node || node->index <= 1)
            return nullptr;
        qint32 pos = node->index - 1;
        RefRow *prev = item(pos);
        while (onlyVisible && prev && !prev->displayed && pos > 1)
            prev = item(--pos);
        return prev;
    }
    static RefRow *lastSibling(const RefRow *node) {
        if (!node || !node->next)
            return nullptr;
        RefRow *last = node->next;
        while (last->next)
            last = last->next;
        return last;
    }
    qint32 selected(qint32 rowId, qint32 colId, bool multi) {
        qint32 counter = 0;
        for (RefRow *n = setFirstNode(emptyText()); n; n = getNextNode(true)) {
            counter += n->selected;
            const bool isRow = n->index == rowId;
            if (isRow)
                n->selected = true, selectedRow = n;
            else if (!multi)
                n->selected = false;
            for (qint32 j = 1; j <= qint32(n->cellSelected.size()); ++j) {
                if (isRow && j == colId)
                    n->cellSelected[size_t(j - 1)] = true, selectedCellRow = n,
                                               selectedCellColumn = j;
                else if (!multi)
                    n->cellSelected[size_t(j - 1)] = false;
            }
        }
        return counter;
    }
};
