#pragma once
// The usual extended selection rule, for SelectionMode lsSelectionExtended: Shift with a click or
// a movement key selects the visible rows from the anchor, Ctrl with a click adds or takes away
// one row, Ctrl+A selects every visible row. The rows are flagged as Selected with
// multi-selection flags them, one after the other.

#include "lsNodes.h"

struct TreeListState;

class RangeSelection {
public:
    explicit RangeSelection(TreeListState &s) : s(s) {}

    // Where the next range starts: the row a plain click or key selected.
    void setAnchor(const lsNodePtr &row) { m_anchor = row; }
    // A click with Shift or Ctrl on a cell; false for a plain click, which selects as always.
    bool click(const lsNodePtr &row, qint32 column, qint16 shift);
    // A movement key with Shift, or Ctrl+A; false for any other key.
    bool key(qint16 keyCode, qint16 shift);

private:
    // Selects the visible rows from the anchor to `target`, which becomes the selected row.
    void selectTo(const lsNodePtr &target, qint32 column);
    qint32 rankOf(const lsNodePtr &row) const;

    TreeListState &s;
    std::weak_ptr<lsNode> m_anchor;
};
