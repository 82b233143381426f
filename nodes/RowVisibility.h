#pragma once
// Keeps `Visible` of the rows of one tree in step with their parents: a row is visible when its
// parent is visible and expanded. Rows whose own `Visible` or `Expanded` was put by a host are
// marked unsettled (the marks are counted by the RowSequence), so a recomputation after an
// opening or closing visits the subtree that changed and the marked rows only. A recomputation
// confined to a subtree can be put off until a visibility is next read, so a batch of openings
// and closings costs only what its last state needs.
//
// Invariant (check() asserts it in debug builds): every recomputation put off names a held row;
// only the latest one of a row is carried out.

#include <QtGlobal>
#include <vector>

class lsNode;
class RowSequence;

class RowVisibility {
public:
    // Keeps the visibility of the rows `rows` holds.
    explicit RowVisibility(RowSequence &rows) : m_rows(rows) {}

    // Recomputes `Visible` of `top` from its parent and of every later row that may disagree
    // with its own parent, or records that for the next read when only `top`'s subtree could
    // change.
    void update(lsNode *top);
    // Carries out the recomputations put off so far, oldest first.
    void resolvePending() const {
        if (!m_pending.empty())
            resolve();
    }

    // Asserts the invariant listed above (debug builds; no-op otherwise).
    void check() const;

private:
    // Recomputes `Visible` of `top` from its parent, then of its subtree from the top down
    // (settling every row it sets); returns the number of rows set.
    qint32 recompute(lsNode *top) const;
    bool unsettledFrom(const lsNode *node) const;
    void settleAfter(const lsNode *node, qint32 subtreeRows) const;
    void resolve() const;

    RowSequence &m_rows;
    // Recomputations put off, oldest first.
    mutable std::vector<lsNode *> m_pending;
};
