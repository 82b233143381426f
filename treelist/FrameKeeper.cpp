// A repaint lays the view out at once and leaves the pixels to Qt's next paint; the frame is
// composed whole, off screen, and shared with the drawing child.

#include "FrameKeeper.h"

#include "vkTreeList.h"

#include "TreeListAccessibility.h"
#include "TreeListState.h"
#include "TreeListViewport.h"

#include "InheritedPalette.h"
#include "PictureBox.h"
#include "SystemColors.h"
#include "SystemTimer.h"
#include "TreeListPainter.h"

#include <QScopeGuard>

std::unique_ptr<OffScreenDC> FrameKeeper::newSurface() {
    // The surface of the frame before last is free again: it becomes the new one, which spares
    // allocating and clearing fresh memory for every frame.
    std::unique_ptr<OffScreenDC> dc =
        m_spareSurface ? std::move(m_spareSurface) : std::make_unique<OffScreenDC>();
    dc->setOriginX(0);
    dc->setPalette(inheritedPalette(t));
    dc->setPixelRatio(t.d->picOut->devicePixelRatioF());
    dc->Initialize(t.d->picOut->screenImage(), t.d->picOut->ScaleWidth(),
                   t.d->picOut->ScaleHeight(), t.d->picOut->BackColor(), t.d->picOut->ForeColor(),
                   t.d->picOut->Font());
    return dc;
}

void FrameKeeper::RedrawFrame(bool keepIfUnchanged) {
    if (!t.d->rows)
        return;
    // What a reader of the screen is told follows what the layout decided.
    const auto tell = qScopeGuard([this] { t.d->accessibility->laidOut(); });
    const float start = secondsSinceMidnight();
    if (!m_surface)
        m_surface = newSurface();
    if (t.d->settings.autoRedraw) {
        if (!keepIfUnchanged) {
            // What a host reads of the view (Displayed, the cells' places, the bars, Scroll) is
            // decided now; the pixels are composed once, when Qt next paints the control or the
            // frame is asked for, so that repaints in a row cost one frame between them. A layout
            // of rows and settings that did not change since the last one would give the same
            // (while editing, the bars are left as they are: the layout is not the same).
            if (t.d->editing || !m_laidOut || !(m_laidOut->first == frameInputs()) ||
                m_laidOut->second != TreeEdits::count()) {
                if (!scrollLaidOutRows()) {
                    std::vector<lsNodePtr> shown;
                    layoutFrame(shown);
                }
                m_laidOut = {frameInputs(), TreeEdits::count()};
            }
            m_frameInputs.reset();
            m_pixelsPending = true;
            t.d->picOut->update();
            storeRedrawTime(start);
            return;
        }
        if (m_pixelsPending ||
            m_surface->HasChanged(t.d->picOut->ScaleWidth(), t.d->picOut->ScaleHeight()) ||
            m_surface->pixelRatio() != t.d->picOut->devicePixelRatioF())
            composeFrame();
    }
    showSurface();
    storeRedrawTime(start);
}

bool FrameKeeper::scrollLaidOutRows() {
    // Only the first row shown moved down, by fewer rows than are shown, since the last layout:
    // the rows that stay move up by as many lines, the rows that leave are no longer displayed
    // and only the rows that come in are placed, as a whole layout would leave them.
    if (t.d->editing || !m_laidOut || m_laidOut->second != TreeEdits::count() ||
        t.d->rows->Count() == 0)
        return false;
    const FrameInputs now = frameInputs();
    FrameInputs before = m_laidOut->first;
    const qint32 beforeFirst = before.firstRow;
    before.firstRow = now.firstRow;
    // With every row fitting, a whole layout brings the view back to the first row.
    if (!(before == now) || now.firstRow <= beforeFirst ||
        t.d->view->displayedRows() <= t.d->view->wholeLineCount())
        return false;
    const auto firstRank = [&](qint32 first) {
        return t.d->rows->VisibleRowsUpTo(std::min(first - 1, t.d->rows->Count())) + 1;
    };
    const qint32 from = firstRank(beforeFirst), to = firstRank(now.firstRow);
    const qint32 moved = to - from;
    if (moved <= 0 || moved >= m_shownRows)
        return false;
    const qint32 headers = t.Headers();
    // The rows that leave, then those that stay, then as many as could come in.
    const std::vector<lsNodePtr> rows =
        t.d->rows->VisibleRowsFrom(from, moved + t.d->view->lineCount());
    if (qint32(rows.size()) < m_shownRows)
        return false;
    for (qint32 i = 0; i < moved; ++i)
        rows[size_t(i)]->setDisplayed(false);
    const qint32 up = moved * t.d->settings.rowHeight;
    for (qint32 i = moved; i < m_shownRows; ++i)
        rows[size_t(i)]->borrowCells().forEachUpTo(
            t.d->settings.columns, [up](lsCell &cell) { cell.setTop(cell.Top() - up); });
    const PaintContext ctx = paintContext();
    const TreeListPainter painter(ctx);
    qint32 line = headers + m_shownRows - moved;
    size_t i = size_t(m_shownRows);
    for (; line < headers + t.d->view->lineCount() && i < rows.size(); ++i, ++line) {
        painter.placeRow(*t.d->rows, rows[i], line);
        painter.placeText(rows[i], *t.d->ident);
    }
    m_shownRows = line - headers;
    m_lastShownRow = rows[i - 1]->Index();
    m_lastPaintedRow = m_lastShownRow;
    // The bars take the new position in; should they move the view after all, it is laid out
    // whole.
    const qint32 offset = t.d->view->offset();
    const qint16 first = t.d->view->firstRow();
    t.d->view->layoutScrollBars();
    return t.d->view->offset() == offset && t.d->view->firstRow() == first &&
           t.d->view->fittingLineCount() == t.d->view->lineCount();
}

void FrameKeeper::composeFrame() {
    // A frame that fails is not tried again at every paint: the last good one stays in place.
    m_pixelsPending = false;
    // Composed aside and kept only when whole.
    m_frameInputs.reset();
    std::unique_ptr<OffScreenDC> frame = newSurface();
    paintFrame(*frame);
    m_spareSurface = std::move(m_surface);
    m_surface = std::move(frame);
    // A frame whose scroll bars took or gave back a line as it ended is what a repaint gives only
    // from the next one on. (Without rows nothing counted the lines.)
    if (t.d->rows->Count() == 0 || t.d->view->fittingLineCount() == t.d->view->lineCount())
        m_frameInputs = frameInputs();
    m_frameEdits = TreeEdits::count();
}

void FrameKeeper::settlePixels() {
    if (m_pixelsPending && t.d->settings.autoRedraw)
        RedrawFrame(true);
}

const OffScreenDC *FrameKeeper::surface() {
    settlePixels();
    return m_surface.get();
}

void FrameKeeper::storeRedrawTime(float start) {
    const float elapsed = secondsSinceMidnight() - start;
    // Past midnight the timer starts again at zero: the stored time is then the start plus a day.
    m_redrawTime = elapsed < 0 ? start + 86400.0f : elapsed;
}

PaintContext FrameKeeper::paintContext() {
    PaintContext ctx;
    ctx.rowHeight = t.d->settings.rowHeight;
    ctx.columns = t.d->settings.columns;
    ctx.lineStyle = t.d->settings.lineStyle;
    ctx.focusType = t.d->settings.focusType;
    ctx.hasFocus = t.d->hasFocus;
    ctx.multiSelect = t.d->settings.multiSelect;
    ctx.headers = t.Headers();
    ctx.firstDisplayedRow = t.d->view->firstRow();
    ctx.visibleLineCount = t.d->view->lineCount();
    ctx.scaleHeight = t.d->picOut->ScaleHeight();
    ctx.gapColor = t.d->picOut->BackColor();
    ctx.imageList = t.d->imageList.get();
    ctx.scale = t.d->picOut;
    ctx.lineColor = oleFromRgb(inheritedPalette(t).color(QPalette::Active, QPalette::Mid).rgb());
    ctx.pictures = &t.d->pictures;
    return ctx;
}

void FrameKeeper::paintFrame(OffScreenDC &dc) {
    std::vector<lsNodePtr> shown;
    layoutFrame(shown);
    PaintContext ctx = paintContext();
    ctx.clearedTo = t.d->picOut->BackColor(); // newSurface cleared it
    const TreeListPainter painter(ctx);
    // Rows and headers scroll sideways together.
    dc.setOriginX(t.d->view->offset());
    painter.paintLaidOutRows(dc, *t.d->rows, *t.d->ident, shown, m_widestText);
    painter.paintLaidOutHeaders(dc, *t.d->headers);
    dc.setOriginX(0);
}

void FrameKeeper::layoutFrame(std::vector<lsNodePtr> &shown) {
    // The bar layout that ends the row layout may bring the horizontal bar in or take it away
    // (and the offset with it), or move the view with a bar whose range shrank. The frame must
    // show what the layout decided, or the rows would stay shifted out of a view that has no bar
    // left to scroll them back, or a line would be drawn under the bar: lay out once more.
    if (layoutLayers(shown))
        layoutLayers(shown);
}

bool FrameKeeper::layoutLayers(std::vector<lsNodePtr> &shown) {
    m_shownRows = 0;
    m_lastShownRow = 0;
    shown.clear();
    bool moved = false;
    if (t.d->rows->Count() > 0) {
        if (t.d->view->firstRow() < 1)
            t.d->view->setFirstRow(1);
        t.d->view->lineCapacity();
        t.d->view->keepFirstRowReachable();
        const PaintContext ctx = paintContext();
        RowPaintResult laid = TreeListPainter(ctx).layoutRows(*t.d->rows, *t.d->ident);
        if (laid.lastPaintedRow > 0)
            m_lastPaintedRow = laid.lastPaintedRow;
        m_shownRows = laid.painted;
        m_lastShownRow = laid.lastPaintedRow;
        shown = std::move(laid.shown);
        const qint32 offset = t.d->view->offset();
        const qint16 first = t.d->view->firstRow();
        t.d->view->layoutScrollBars();
        // A horizontal bar that came or went also changed the lines that fit.
        moved = t.d->view->offset() != offset || t.d->view->firstRow() != first ||
                t.d->view->fittingLineCount() != t.d->view->lineCount();
    }
    const PaintContext ctx = paintContext();
    TreeListPainter(ctx).layoutHeaders(*t.d->headers);
    return moved;
}

void FrameKeeper::repaintRow(const lsNodePtr &row, bool header) {
    const auto tell = qScopeGuard([this] { t.d->accessibility->laidOut(); });
    if (!m_surface || !t.d->settings.autoRedraw)
        return;
    if (m_pixelsPending) {
        // The frame about to be composed shows the row as it is now; its first cell's text
        // offset, which a host reads, follows the row at once.
        if (!header)
            TreeListPainter(paintContext()).placeText(row, *t.d->ident);
        return;
    }
    // A data row is painted again as a frame paints its line: the lines of the rows around it
    // and its own pictures cross its cells and would be lost if only the cells were painted.
    std::vector<lsNodePtr> shown;
    if (!header && collectShownRows(nullptr, shown)) {
        const auto line = std::find(shown.begin(), shown.end(), row);
        if (line != shown.end()) {
            const size_t from = size_t(line - shown.begin());
            repaintShownRows(shown, from, from + 1, false);
            return;
        }
    }
    const PaintContext ctx = paintContext();
    const TreeListPainter painter(ctx);
    paintInPlace([&] {
        m_surface->setOriginX(t.d->view->offset());
        if (header) {
            for (const lsCellPtr &cell : *row->Cells())
                if (cell->Visible())
                    painter.PaintCell(*m_surface, *cell, 0);
        } else {
            t.d->ident->Refresh(row, t.d->settings.rowHeight, t.d->imageList.get(), t.d->picOut);
            painter.paintRow(*m_surface, *t.d->rows, *row, *t.d->ident);
        }
    });
    showSurface();
}

void FrameKeeper::paintInPlace(const std::function<void()> &paint) {
    QImage *screen = t.d->picOut->screenImage();
    const bool shared =
        !screen->isNull() && screen->constBits() == std::as_const(*m_surface).hDC()->constBits();
    if (shared)
        *screen = QImage();
    const auto giveBack = qScopeGuard([&] {
        m_surface->ClearClip();
        m_surface->setOriginX(0);
        if (shared)
            *screen = *std::as_const(*m_surface).hDC();
    });
    paint();
}

void FrameKeeper::release() {
    m_surface.reset();
    m_spareSurface.reset();
}

void FrameKeeper::showSurface() {
    m_surface->BlastToScreen();
    t.d->picOut->showFrame();
}
