// lsNodes: selection. The rule is a walk over every visible row that counts the rows selected
// before, flags the target row and cell and, without MultiSelect, clears every other visible
// row's and cell's flag. Walking costs every row and cell of the tree on every selection, which
// makes a load that selects each new row quadratic. The collection therefore remembers the rows
// its selections left flagged: while no flag was put from outside and every row reads its rank as
// `Index`, those are the only rows the walk could count or change, and visiting them (plus the
// target) gives exactly what the walk gives. Otherwise the walk runs and the rows are remembered
// anew.

#include "lsNodes.h"

#include "RowSequence.h"
#include "TreeListError.h"

#include <unordered_set>

qint32 lsNodes::Selected(qint32 RowID, qint32 ColID, bool MultiSelect) {
    TreeEdits::note();
    if (SelectionPuts::count() == m_selectionPuts && !m_order.hasIndexPuts() &&
        (!m_root || m_order.tree().contains(m_root.get())))
        return selectFlagged(RowID, ColID, MultiSelect);
    const qint32 counter = selectByWalk(RowID, ColID, MultiSelect);
    rememberFlaggedRows();
    return counter;
}

qint32 lsNodes::selectByWalk(qint32 RowID, qint32 ColID, bool MultiSelect) {
    qint32 counter = 0;
    // Rows hidden under a collapsed branch are not visited and keep their flags.
    for (lsNodePtr node = SetFirstNode(emptyText()); node; node = GetNextNode(true)) {
        if (node->m_Selected)
            ++counter;
        selectVisitedRow(node, node->Index() == RowID, ColID, MultiSelect);
    }
    return counter;
}

void lsNodes::selectVisitedRow(const lsNodePtr &node, bool isRow, qint32 ColID, bool MultiSelect) {
    if (isRow) {
        node->m_Selected = true;
        m_selectedRow = node;
    } else if (!MultiSelect) {
        node->m_Selected = false;
    }
    // A row that never made its cells has none: looking must not make them.
    const lsCells *cells = node->cellsIfMade();
    // The cell loop counter is 16-bit: a row of more than 32767 cells overflows.
    const qint32 cellCount = cells ? toInt16(cells->Count()) : 0;
    for (qint32 j = 1; j <= cellCount; ++j) {
        lsCell *cell = cells->cell(j);
        if (isRow && j == ColID) {
            cell->m_Selected = true;
            m_selectedCell = cells->at(j);
        } else if (!MultiSelect) {
            cell->m_Selected = false;
        }
    }
}

bool lsNodes::visitedBySelection(const lsNode *row, qint32 rootRank) const {
    // The walk starts at the root, whatever its Visible, and goes on in tree order through the
    // Visible rows after it.
    if (!m_order.tree().contains(row))
        return false;
    return row == m_root.get() || (row->Visible() && RowSequence::rankOf(row) > rootRank);
}

qint32 lsNodes::selectFlagged(qint32 RowID, qint32 ColID, bool MultiSelect) {
    const qint32 rootRank = m_root ? RowSequence::rankOf(m_root.get()) : 0;
    // With every row reading its rank as Index, the row numbered RowID is the one at that rank.
    lsNodePtr target;
    if (lsNode *row = m_order.tree().rowAt(RowID); row && visitedBySelection(row, rootRank))
        target = RowSequence::slotOf(row);

    qint32 counter = 0;
    std::vector<std::weak_ptr<lsNode>> kept;
    std::unordered_set<const lsNode *> seen;
    for (const std::weak_ptr<lsNode> &weak : m_flagged) {
        const lsNodePtr node = weak.lock();
        // A row that left the collection is out of every later walk.
        if (!node || node == target || !m_order.tree().contains(node.get()) ||
            !seen.insert(node.get()).second)
            continue;
        if (!visitedBySelection(node.get(), rootRank)) {
            kept.push_back(weak);
            continue;
        }
        counter += node->m_Selected ? 1 : 0;
        if (MultiSelect)
            kept.push_back(weak);
        else
            selectVisitedRow(node, false, ColID, false);
    }

    if (target) {
        counter += target->m_Selected ? 1 : 0;
        selectVisitedRow(target, true, ColID, MultiSelect);
        kept.push_back(target);
    }
    m_flagged = std::move(kept);
    // The walk ends past the last row, with no walk under way.
    m_walkStart.reset();
    m_cursor.reset();
    return counter;
}

void lsNodes::rememberFlaggedRows() {
    m_selectionPuts = SelectionPuts::count();
    m_flagged.clear();
    const RowSequence &tree = m_order.tree();
    for (qint32 rank = 1; rank <= tree.size(); ++rank) {
        lsNode *row = tree.rowAt(rank);
        bool flagged = row->m_Selected;
        if (const lsCells *cells = row->cellsIfMade())
            for (qint32 j = 1; j <= cells->Count() && !flagged; ++j)
                flagged = cells->cell(j)->m_Selected;
        if (flagged)
            m_flagged.push_back(RowSequence::slotOf(row));
    }
}

void lsNodes::SelectRows(const std::vector<lsNodePtr> &rows, qint32 ColID) {
    if (rows.empty())
        return;
    Selected(rows.front()->Index(), ColID, false);
    // The first selection cleared every other visible row's flags and left only its target among
    // them in the flagged list: each further row joins it once.
    std::unordered_set<const lsNode *> added{rows.front().get()};
    for (size_t i = 1; i < rows.size(); ++i)
        if (added.insert(rows[i].get()).second) {
            selectVisitedRow(rows[i], true, ColID, true);
            m_flagged.push_back(rows[i]);
        }
}

void lsNodes::Deselect(const lsNodePtr &row) {
    TreeEdits::note();
    row->m_Selected = false;
    if (const lsCells *cells = row->cellsIfMade())
        for (qint32 j = 1; j <= cells->Count(); ++j)
            cells->cell(j)->m_Selected = false;
    if (m_selectedRow == row) {
        m_selectedRow.reset();
        m_selectedCell.reset();
    }
}

void lsNodes::ClearSelection() {
    TreeEdits::note();
    m_selectedRow.reset();
    m_selectedCell.reset();
}
