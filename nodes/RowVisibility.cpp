#include "RowVisibility.h"

#include "RowSequence.h"
#include "TreeWalk.h"

#include <cassert>
#include <unordered_set>

void RowVisibility::update(lsNode *top) {
    if (top->Child() && !unsettledFrom(top)) {
        // Every row after `top` agrees with its parent, so the walk to the end would change the
        // subtree only.
        m_pending.push_back(top);
        return;
    }
    resolvePending();
    settleAfter(top, recompute(top));
}

bool RowVisibility::unsettledFrom(const lsNode *node) const {
    if (m_rows.unsettledCount() == 0)
        return false;
    for (lsNodePtr up = node->Parent(); up; up = up->Parent()) {
        if (RowSequence::isUnsettled(up.get()))
            return true;
    }
    return m_rows.firstUnsettledFrom(RowSequence::rankOf(node)) != nullptr;
}

void RowVisibility::settleAfter(const lsNode *node, qint32 subtreeRows) const {
    // Recomputing every row after `node`'s subtree would change only rows marked unsettled and
    // their subtrees: any other row agrees with its parent, whose value does not change. An
    // unsettled ancestor covers the rest of its subtree; other marked rows lie further on.
    const lsNode *top = nullptr;
    for (lsNodePtr up = node->Parent(); up; up = up->Parent()) {
        if (RowSequence::isUnsettled(up.get()))
            top = up.get();
    }
    qint32 from = RowSequence::rankOf(node) + subtreeRows;
    if (top) {
        for (lsNode *row = TreeWalk::nextPastSubtree(node, top); row;
             row = TreeWalk::nextInSubtree(row, top)) {
            const lsNodePtr parent = row->Parent();
            RowSequence::putVisible(row, parent->Visible() && parent->Expanded());
            RowSequence::settle(row);
            ++from;
        }
    }
    while (lsNode *row = m_rows.firstUnsettledFrom(from)) {
        from = RowSequence::rankOf(row) + recompute(row);
    }
}

void RowVisibility::resolve() const {
    // Taken out first: the recomputation reads visibility, which must not resolve again.
    const std::vector<lsNode *> pending = std::move(m_pending);
    m_pending.clear();
    // A later recomputation of the same row supersedes an earlier one: walking from the newest,
    // the first entry met for a row is the one carried out, in the order they were recorded.
    std::vector<bool> latest(pending.size());
    std::unordered_set<const lsNode *> seen;
    for (size_t i = pending.size(); i-- > 0;)
        latest[i] = seen.insert(pending[i]).second;
    for (size_t i = 0; i < pending.size(); ++i) {
        if (latest[i])
            recompute(pending[i]);
    }
}

qint32 RowVisibility::recompute(lsNode *top) const {
    const lsNodePtr parent = top->Parent();
    RowSequence::putVisible(top, !parent ||
                                     (RowSequence::isVisible(parent.get()) && parent->Expanded()));
    // Each child takes its parent's final value, so the order within the subtree is free: a
    // stack keeps deep chains from recursing.
    RowSequence::settle(top);
    qint32 rows = 1;
    std::vector<lsNode *> pending{top};
    while (!pending.empty()) {
        lsNode *up = pending.back();
        pending.pop_back();
        const bool shown = RowSequence::isVisible(up) && up->Expanded();
        for (lsNode *child = up->Child().get(); child; child = child->NextSibling().get()) {
            RowSequence::putVisible(child, shown);
            RowSequence::settle(child);
            ++rows;
            if (child->Child())
                pending.push_back(child);
        }
    }
    return rows;
}

void RowVisibility::check() const {
#ifndef NDEBUG
    for (const lsNode *row : m_pending)
        assert(m_rows.contains(row));
#endif
}
