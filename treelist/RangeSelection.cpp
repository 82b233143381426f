#include "RangeSelection.h"

#include "FrameKeeper.h"
#include "TreeListState.h"
#include "TreeListViewport.h"
#include "lsCell.h"

#include <QScrollBar>

namespace {

constexpr qint16 kShift = 1, kCtrl = 2;

} // namespace

qint32 RangeSelection::rankOf(const lsNodePtr &row) const {
    return row && row->Visible() ? s.rows->VisibleRowsUpTo(row->Index()) : 0;
}

void RangeSelection::selectTo(const lsNodePtr &target, qint32 column) {
    lsNodePtr anchor = m_anchor.lock();
    if (rankOf(anchor) == 0)
        anchor = target;
    const qint32 from = rankOf(anchor), to = rankOf(target);
    std::vector<lsNodePtr> rows =
        s.rows->VisibleRowsFrom(std::min(from, to), std::abs(to - from) + 1);
    // The anchor first, the target last: the target is the selected row.
    if (from > to)
        std::reverse(rows.begin(), rows.end());
    s.rows->SelectRows(rows, column);
    s.view->bringIntoView(target);
    s.frames->RedrawFrame(false);
}

bool RangeSelection::click(const lsNodePtr &row, qint32 column, qint16 shift) {
    if (shift == kShift) {
        selectTo(row, column);
        return true;
    }
    if (shift != kCtrl)
        return false;
    // Ctrl takes a selected row away, or adds one, and starts the next range there.
    if (row->Selected())
        s.rows->Deselect(row);
    else
        s.rows->Selected(row->Index(), column, true);
    m_anchor = row;
    s.frames->RedrawFrame(false);
    return true;
}

bool RangeSelection::key(qint16 keyCode, qint16 shift) {
    const lsNodePtr current = s.rows->SelectedRow();
    const lsCellPtr cell = s.rows->SelectedCell();
    const qint32 column = cell ? cell->Index() : 1;
    const qint32 visible = s.rows->VisibleRowsUpTo(s.rows->Count());
    if (keyCode == 'A' && shift == kCtrl) {
        // Every visible row, the current one last so that it stays the selected row.
        std::vector<lsNodePtr> rows = s.rows->VisibleRowsFrom(1, visible);
        if (current)
            std::stable_partition(rows.begin(), rows.end(),
                                  [&](const lsNodePtr &r) { return r != current; });
        s.rows->SelectRows(rows, column);
        s.frames->RedrawFrame(false);
        return true;
    }
    if (shift != kShift || visible == 0)
        return false;
    const qint32 page = std::max(s.scrY->pageStep() - 1, 1);
    const qint32 at = std::max(rankOf(current), 1);
    qint32 to = 0;
    switch (keyCode) {
    case 38:
        to = at - 1;
        break; // Up
    case 40:
        to = at + 1;
        break; // Down
    case 33:
        to = at - page;
        break; // Page Up
    case 34:
        to = at + page;
        break; // Page Down
    case 36:
        to = 1;
        break; // Home
    case 35:
        to = visible;
        break; // End
    default:
        return false;
    }
    selectTo(s.rows->VisibleRowAt(std::clamp(to, 1, visible)), column);
    return true;
}
