#pragma once
// Tells assistive technology what changed in a vkTreeList: the focus and the selection moving,
// rows coming, going, opening or closing, a cell's text, the view scrolling. While nothing
// listens (QAccessible::isActive() false) every call returns at once, so the control pays
// nothing for it then.

#include "lsNodes.h"

class TreeListAccessible;
class vkTreeList;

class TreeListAccessibility {
public:
    explicit TreeListAccessibility(vkTreeList &t) : t(t) {}

    // A layout was made: what a reader sees is compared with the last layout's, and each
    // difference told (the rows, the selection, the first row shown).
    void laidOut();
    // The drawing child took the focus: the current cell has it.
    void focused();
    // A row was opened or closed.
    void expandedChanged(const lsNodePtr &row);
    // A cell's text or picture was set.
    void cellChanged(const lsNodePtr &row, qint32 column);

private:
    TreeListAccessible *tree() const;

    vkTreeList &t;
    // What the last layout showed a reader; no rows counted yet: nothing to compare with.
    qint32 m_rows = -1, m_visibleRows = -1, m_first = 0, m_column = 0;
    const lsNode *m_selected = nullptr;
};
