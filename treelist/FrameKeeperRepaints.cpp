// Frames kept over repaints that cannot change them, and lines painted again in place over a
// kept frame.

#include "FrameKeeper.h"

#include "vkTreeList.h"

#include "TreeListAccessibility.h"
#include "TreeListState.h"
#include "TreeListViewport.h"

#include "InheritedPalette.h"
#include "PictureBox.h"
#include "TreeListPainter.h"

#include <QScopeGuard>
#include <QScrollBar>
#include <algorithm>

FrameKeeper::FrameInputs FrameKeeper::frameInputs() {
    const lsImageList *images = t.d->imageList.get();
    return {t.d->picOut->ScaleWidth(),
            t.d->picOut->ScaleHeight(),
            t.d->view->offset(),
            t.d->settings.rowHeight,
            t.d->settings.columns,
            t.d->settings.lineStyle,
            t.d->settings.focusType,
            t.Headers(),
            t.d->view->firstRow(),
            t.d->view->lineCount(),
            t.d->hasFocus,
            t.d->settings.multiSelect,
            t.d->picOut->BackColor(),
            t.d->picOut->ForeColor(),
            t.d->picOut->Font()->qfont(),
            inheritedPalette(t),
            t.d->picOut->devicePixelRatioF(),
            images,
            images ? images->Count() : 0};
}

bool FrameKeeper::rowsUnchangedSinceFrame() const {
    // The rest of what the frame was drawn from (FrameInputs) is compared where the frame is
    // kept; a change there only needs noticing then. While the pixels wait for Qt's paint, the
    // frame is the last layout.
    if (!t.d->settings.autoRedraw || !m_surface)
        return false;
    if (m_pixelsPending)
        return m_laidOut && TreeEdits::count() == m_laidOut->second;
    return m_frameInputs && TreeEdits::count() == m_frameEdits;
}

void FrameKeeper::keepFrameCurrent() {
    const auto tell = qScopeGuard([this] { t.d->accessibility->laidOut(); });
    if (!m_pixelsPending)
        m_frameEdits = TreeEdits::count();
    else if (m_laidOut)
        m_laidOut->second = TreeEdits::count();
}

bool FrameKeeper::keepFrameAfterAdd(const lsNodePtr &row) {
    const auto tell = qScopeGuard([this] { t.d->accessibility->laidOut(); });
    // No row had changed since the frame before `row` was added. A row added after every row
    // shown moves none of them. What it changes on screen starts at one row shown (`from`), and
    // that row's line and every line below it are painted again in place:
    //  - it lands on the first free line of a view that is not full (the view then shows every
    //    visible row after its first one, so it is the last visible row): the line of its previous
    //    sibling, or of its parent when it is the first child, runs on to it;
    //  - it becomes the last sibling after one shown: that line runs on to the bottom edge;
    //  - it is the first child of a row shown: a box appears there (and when the row is open, its
    //    line runs on to the bottom edge).
    // Anything else below the rows shown changes nothing on screen. The line of a previous sibling
    // above the view that runs on crosses the whole view: the frame is composed.
    if (row->Index() <= m_lastShownRow)
        return false;
    const bool viewFull = m_shownRows > 0 && m_shownRows >= t.d->view->lineCount();
    const lsNodePtr previous = row->PrevSibling();
    const lsNodePtr parent = row->Parent();
    const bool last = !row->NextSibling();
    const bool lands = !viewFull && row->Visible();
    lsNodePtr from;
    if (lands) {
        if (m_shownRows == 0 || !last)
            return false;
        from = previous ? previous : parent;
        if (!from || !from->Displayed())
            return false;
    } else if (previous && last &&
               (previous->Displayed() || previous->Index() < t.d->view->firstRow())) {
        if (!previous->Displayed())
            return false;
        from = previous;
    } else if (!previous && last && parent && parent->Displayed()) {
        from = parent;
    }
    // Nothing else the frame was drawn from may have changed. Then the count of displayed rows
    // grows at most (the lines that fit and the first row shown stay as they are) and the scroll
    // bars take it in; should the horizontal bar come or go, the lines that fit change after all
    // and the frame is composed.
    if (!(frameInputs() == (m_pixelsPending ? m_laidOut->first : *m_frameInputs)))
        return false;
    // Which lines change was worked out for lines that cover one another whatever their order:
    // dotted ones paint their gaps too. Pixels left to Qt's paint are not painted here at all:
    // then `from` is displayed, so on screen, and a row that lands comes right after the rows
    // shown, every visible row after the first shown one being shown.
    std::vector<lsNodePtr> shown;
    size_t fromLine = 0;
    if (from && !m_pixelsPending) {
        if (t.d->settings.lineStyle == lsLineDotted ||
            !rowsShownInPlace(lands ? row : nullptr, shown))
            return false;
        fromLine = size_t(std::find(shown.begin(), shown.end(), from) - shown.begin());
        if (fromLine == shown.size())
            return false;
    }
    const bool horizontalBar = !t.d->scrX->isHidden();
    t.d->view->setDisplayedRows(t.d->view->displayedRowCount());
    t.d->view->layoutScrollBars();
    if (t.d->scrX->isHidden() == horizontalBar)
        return false;
    if (!shown.empty())
        repaintShownRows(shown, fromLine, shown.size(), lands);
    else if (from && lands)
        placeLandingRow(row);
    keepFrameCurrent();
    // Nothing or a few rows were drawn. The timer, single precision seconds since midnight, does
    // not resolve the microseconds this took (late in the day not even milliseconds): it reads 0.
    m_redrawTime = 0;
    return true;
}

bool FrameKeeper::rowsShownInPlace(const lsNodePtr &landing, std::vector<lsNodePtr> &shown) {
    // Lines painted again show what a frame shows there only while nothing drawn for a row
    // reaches past its own line: no image list, whose pictures may be taller than a row.
    if (t.d->imageList || t.d->settings.rowHeight < 16)
        return false;
    return collectShownRows(landing, shown);
}

bool FrameKeeper::collectShownRows(const lsNodePtr &landing, std::vector<lsNodePtr> &shown) {
    // The rows the frame showed, found as it found them, and the row that lands after them.
    const qint32 count = m_shownRows + (landing ? 1 : 0);
    const qint32 first = t.d->rows->VisibleRowsUpTo(
                             std::min<qint32>(t.d->view->firstRow() - 1, t.d->rows->Count())) +
                         1;
    shown = t.d->rows->VisibleRowsFrom(first, count);
    return qint32(shown.size()) == count && (!landing || shown.back() == landing);
}

void FrameKeeper::repaintShownRows(const std::vector<lsNodePtr> &shown, size_t from, size_t to,
                                   bool landed) {
    const PaintContext ctx = paintContext();
    const TreeListPainter painter(ctx);
    // The lines of the rows from `from` up to `to`. Below the last row shown only lines are
    // drawn, and only those that run on to the bottom edge; while the view is not full, every
    // visible row they could lead to is shown and none does.
    const qint32 top = (t.Headers() + qint32(from)) * t.d->settings.rowHeight;
    const bool full = qint32(shown.size()) >= t.d->view->lineCount();
    const qint32 bottom = to < shown.size() || !full
                              ? (t.Headers() + qint32(to)) * t.d->settings.rowHeight
                              : m_surface->Height();
    paintInPlace([&] {
        try {
            // Cleared to the background the frame started from.
            m_surface->SetClipRows(top, bottom);
            m_surface->setOriginX(0);
            m_surface->DrawRect(0, top, m_surface->Width(), bottom - top, t.d->picOut->BackColor(),
                                t.d->picOut->ForeColor());
            m_surface->setOriginX(t.d->view->offset());
            if (landed)
                painter.placeRow(*t.d->rows, shown.back(), t.Headers() + m_shownRows);
            painter.repaintRows(*m_surface, *t.d->rows, *t.d->ident, shown, from, to, m_widestText);
        } catch (...) {
            // Half painted: no longer the frame a repaint would give.
            m_frameInputs.reset();
            throw;
        }
    });
    if (landed)
        countLandingRow(shown.back());
    showSurface();
}

void FrameKeeper::placeLandingRow(const lsNodePtr &row) {
    const PaintContext ctx = paintContext();
    const TreeListPainter painter(ctx);
    painter.placeRow(*t.d->rows, row, t.Headers() + m_shownRows);
    painter.placeText(row, *t.d->ident);
    countLandingRow(row);
}

void FrameKeeper::countLandingRow(const lsNodePtr &row) {
    m_shownRows += 1;
    m_lastShownRow = row->Index();
    m_lastPaintedRow = m_lastShownRow;
}

bool FrameKeeper::repaintCellInPlace(const lsNodePtr &row, qint32 property) {
    const auto tell = qScopeGuard([this] { t.d->accessibility->laidOut(); });
    // Properties that change nothing but how the cell itself looks. Its row's line is painted
    // again as a frame paints it, lines and pictures over the cell included, so the frame stays
    // the one a repaint would give. Geometry and pictures may reach other lines: not these.
    switch (property) {
    case lslcAlignment:
    case lslcBold:
    case lslcData:
    case lslcTag:
    case lslcForeColor:
    case lslcbackColor:
    case lsLCSelected:
        break;
    default:
        return false;
    }
    // Pixels left to Qt's paint show the cell as it is then; the layout stands as it was.
    if (!m_pixelsPending && !repaintLineInPlace(row))
        return false;
    keepFrameCurrent();
    return true;
}

bool FrameKeeper::repaintLineInPlace(const lsNodePtr &row) {
    const auto tell = qScopeGuard([this] { t.d->accessibility->laidOut(); });
    // The caller knows the frame was current before it changed how `row` looks, and nothing else.
    if (!m_frameInputs || !(frameInputs() == *m_frameInputs))
        return false;
    std::vector<lsNodePtr> shown;
    if (!rowsShownInPlace(nullptr, shown))
        return false;
    const auto line = std::find(shown.begin(), shown.end(), row);
    if (line == shown.end())
        return false;
    const size_t from = size_t(line - shown.begin());
    repaintShownRows(shown, from, from + 1, false);
    return true;
}
