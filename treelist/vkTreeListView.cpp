// vkTreeList: the viewport (line capacity, scroll bars, scrolling) and frame painting.

#include "vkTreeList.h"

#include "lsEdit.h"

#include "PictureBox.h"
#include "SystemTimer.h"
#include "TreeListPainter.h"

#include <QLabel>
#include <QScopeGuard>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyle>
#include <algorithm>
#include <cmath>
#include <optional>

// --- Viewport -----------------------------------------------------------------------------------

void vkTreeList::onResize() {
    if (!m_rows)
        return;
    // The drawing child takes the whole inner area; the bars lie over its right and bottom
    // edges, which is why line capacity subtracts the horizontal bar's height.
    m_picOut->setGeometry(contentsRect());
    const bool moreLines = lineCapacity();
    layoutScrollBars();
    m_host->DoEvents();
    RedrawFrame(!moreLines);
}

qint32 vkTreeList::scrollBarExtent() const {
    return style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, m_scrY);
}

qint32 vkTreeList::horizontalBarHeight() const {
    return m_scrX->isHidden() ? 0 : m_scrX->height();
}

qint32 vkTreeList::wholeLineCount() {
    // Data lines that fit wholly under the header rows.
    const double lines =
        std::floor(divide(m_picOut->ScaleHeight() - horizontalBarHeight(), m_rowHeight));
    return toInt32(static_cast<qint64>(lines) - Headers());
}

qint32 vkTreeList::displayedRowCount() {
    // The rows a visible-only walk reaches: exactly those whose Visible is set.
    return m_rows->VisibleRowsUpTo(m_rows->Count());
}

qint32 vkTreeList::rowAtDisplayPosition(qint32 count) {
    // The count-th Visible row; past the last one the last, before the first the first.
    const qint32 total = displayedRowCount();
    if (total < 1)
        return 1;
    return m_rows->VisibleRowAt(std::clamp(count, 1, total))->Index();
}

qint32 vkTreeList::displayPosition(qint32 rowIndex) {
    return m_rows->VisibleRowsUpTo(std::clamp(rowIndex, 0, m_rows->Count()));
}

void vkTreeList::keepFirstRowReachable() {
    // A collapse can hide the first row shown, or leave so few rows that the vertical bar goes
    // away while the view still starts further down: move the view so that no row becomes
    // unreachable.
    lsNodePtr first = m_rows->at(std::min<qint32>(m_firstDisplayedRow, m_rows->Count()));
    while (first && !first->Visible())
        first = first->Parent();
    m_firstDisplayedRow = toInt16(first ? first->Index() : 1);
    if (m_displayedRowCount <= wholeLineCount())
        m_firstDisplayedRow = 1;
}

qint16 vkTreeList::fittingLineCount() {
    // A partly visible line counts as a line.
    const double lines =
        std::floor(divide(m_picOut->ScaleHeight() - horizontalBarHeight(), m_rowHeight) + 0.99999);
    return toInt16(static_cast<qint64>(lines) - Headers());
}

bool vkTreeList::lineCapacity() {
    const qint16 old = m_visibleLineCount;
    m_visibleLineCount = fittingLineCount();
    m_displayedRowCount = displayedRowCount();
    if (m_displayedRowCount < 1)
        m_firstDisplayedRow = 1;
    return m_visibleLineCount > old && m_displayedRowCount >= old;
}

void vkTreeList::layoutScrollBars() {
    if (m_editing)
        return;
    const qint32 scaleWidth = m_picOut->ScaleWidth();
    const qint32 whole = wholeLineCount();
    const qint32 extent = scrollBarExtent();
    const lsNodePtr first = m_rows->at(1);
    const qint32 rowWidth = first ? first->Width() : 0;
    const bool vertical = m_displayedRowCount > whole;
    const qint32 position = vertical ? std::max(1, displayPosition(m_firstDisplayedRow)) : 0;
    const BarLayout layout{whole,    extent,         scaleWidth,         rowWidth,
                           position, contentsRect(), m_horizontalOffset, vertical};

    // Writing the bars' ranges may move their values: the change handlers must stay quiet, and
    // become live again even when a step below fails.
    const QScopedValueRollback<bool> suspend(m_suspend, true);
    // Rows added one by one change nothing but the count of displayed rows: when that is all that
    // changed since the last layout and nobody moved the bars since, only the maximum moves.
    // The last position shows a full last page, as Qt's views do: with the row count as the
    // maximum it would show the last row alone at the top of an empty view.
    const qint32 maximum = std::max(1, m_displayedRowCount - std::max(whole, 1) + 1);
    if (m_barLayout && m_barLayout->first == layout && m_barLayout->second == barStates()) {
        m_scrY->setMaximum(maximum);
        if (vertical)
            followVerticalBar(position);
        m_barLayout->second = barStates();
        return;
    }
    m_barLayout.reset();
    m_scrY->setMinimum(1);
    m_scrY->setMaximum(maximum);
    m_scrY->setSingleStep(1);
    m_scrY->setPageStep(std::max(whole, 1));
    if (vertical)
        followVerticalBar(position);

    const qint32 viewWidth = scaleWidth - (vertical ? extent : 0);
    const bool horizontal = rowWidth > viewWidth;
    if (horizontal) {
        // At the last position the right edge of the row lies at the right edge of the view;
        // with the row's whole width as the maximum every cell would scroll out of it.
        m_scrX->setMinimum(0);
        m_scrX->setMaximum(rowWidth - viewWidth);
        m_scrX->setSingleStep(std::max(1, scaleWidth / 50));
        m_scrX->setPageStep(std::max(1, scaleWidth / 8));
        // A range that shrank moved the bar without a word to the handler: the offset is always
        // minus the bar's value all the same.
        m_horizontalOffset = -m_scrX->value();
    } else {
        // The bar goes with its position: shown again later, it starts at the left edge.
        m_horizontalOffset = 0;
        m_scrX->setValue(0);
    }

    const QRect &area = layout.area;
    const int right = area.right() + 1;
    const int bottom = area.bottom() + 1;
    switch ((vertical ? 1 : 0) + (horizontal ? 2 : 0)) {
    case 1:
        m_scrY->setGeometry(right - extent, area.top(), extent, area.height());
        break;
    case 2:
        m_scrX->setGeometry(area.left(), bottom - extent, area.width(), extent);
        break;
    case 3:
        m_scrY->setGeometry(right - extent, area.top(), extent, area.height() - extent);
        m_scrX->setGeometry(area.left(), bottom - extent, area.width() - extent, extent);
        m_imgGhost->setGeometry(right - extent, bottom - extent, extent, extent);
        break;
    default:
        break;
    }
    m_scrY->setVisible(vertical);
    m_scrX->setVisible(horizontal);
    m_imgGhost->setVisible(vertical && horizontal);
    for (QScrollBar *bar : {m_scrY, m_scrX}) {
        if (bar->isHidden())
            continue;
        if (bar->value() < bar->minimum())
            bar->setValue(bar->minimum());
        bar->update();
    }
    m_barLayout = {layout, barStates()};
}

void vkTreeList::followVerticalBar(qint32 position) {
    // Fewer rows, or more room, can put the first row shown past the bar's new last position; the
    // view then moves up with the bar, so that the last page is full.
    m_scrY->setValue(position);
    if (m_scrY->value() != position)
        m_firstDisplayedRow = toInt16(rowAtDisplayPosition(m_scrY->value()));
}

vkTreeList::BarStates vkTreeList::barStates() const {
    return {m_scrY->minimum(), m_scrY->maximum(),   m_scrY->value(),
            m_scrX->value(),   !m_scrY->isHidden(), !m_scrX->isHidden()};
}

void vkTreeList::onVerticalScroll(int value) {
    if (m_suspend)
        return;
    // The editor would no longer lie over its cell: the edit is discarded, not committed.
    if (m_editing)
        m_lseMisc->AbortEdit();
    m_firstDisplayedRow = toInt16(rowAtDisplayPosition(value));
    RedrawFrame(false);
    emit Scroll();
}

void vkTreeList::onHorizontalScroll(int value) {
    if (m_suspend)
        return;
    if (m_editing)
        m_lseMisc->AbortEdit();
    m_horizontalOffset = -value;
    RedrawFrame(false);
    emit Scroll();
}

void vkTreeList::scrollBy(bool upwards, qint32 amount) {
    qint32 n;
    if (!upwards) {
        n = m_scrY->value() + amount;
        if (n >= m_scrY->maximum())
            n = m_scrY->maximum();
    } else {
        n = m_scrY->value() - amount;
        if (n <= m_scrY->minimum())
            n = m_scrY->minimum();
    }
    m_scrY->setValue(toInt16(n));
}

QVariant vkTreeList::EnsureVisible(const QVariant &IndexKey) {
    const lsNodePtr row = m_rows->Item(IndexKey);
    if (!row || !row->Visible())
        return QVariant();
    if (row->Displayed()) {
        const lsCellPtr first = row->Cells()->at(1);
        if (!first || m_picOut->ScaleHeight() >= first->Top() + m_rowHeight)
            return QVariant();
        // Cut off at the bottom: one more line brings it in.
        m_scrY->setValue(toInt16(std::min(m_scrY->value() + 1, m_scrY->maximum())));
        return QVariant();
    }
    // Below the view: count the visible rows from the first one shown down to this one. A row
    // above the first one shown is never reached.
    const qint32 from = std::max<qint32>(1, m_firstDisplayedRow);
    if (row->Index() < from || m_scrY->isHidden())
        return QVariant();
    const qint32 count = displayPosition(row->Index()) - displayPosition(from - 1);
    m_scrY->setValue(
        toInt16(std::min(m_scrY->value() + count - m_visibleLineCount, m_scrY->maximum())));
    return QVariant();
}

void vkTreeList::scrollIntoView(qint32 rowIndex) {
    // The bars must know about the new row before the view can move to it.
    lineCapacity();
    layoutScrollBars();
    EnsureVisible(rowIndex);
}

// --- Painting -----------------------------------------------------------------------------------

void vkTreeList::Refresh(bool Clear) {
    if (Clear)
        m_picOut->Cls();
    RedrawFrame(false);
}

std::unique_ptr<OffScreenDC> vkTreeList::newSurface() {
    // The surface of the frame before last is free again: it becomes the new one, which spares
    // allocating and clearing fresh memory for every frame.
    std::unique_ptr<OffScreenDC> dc =
        m_spareSurface ? std::move(m_spareSurface) : std::make_unique<OffScreenDC>();
    dc->setOriginX(0);
    dc->Initialize(m_picOut->screenImage(), m_picOut->ScaleWidth(), m_picOut->ScaleHeight(),
                   m_picOut->BackColor(), m_picOut->ForeColor(), m_picOut->Font());
    return dc;
}

void vkTreeList::RedrawFrame(bool keepIfUnchanged) {
    if (!m_rows)
        return;
    const float start = secondsSinceMidnight();
    if (!m_surface)
        m_surface = newSurface();
    if (m_autoRedraw) {
        if (!keepIfUnchanged) {
            // What a host reads of the view (Displayed, the cells' places, the bars, Scroll) is
            // decided now; the pixels are composed once, when Qt next paints the control or the
            // frame is asked for, so that repaints in a row cost one frame between them. A layout
            // of rows and settings that did not change since the last one would give the same
            // (while editing, the bars are left as they are: the layout is not the same).
            if (m_editing || !m_laidOut || !(m_laidOut->first == frameInputs()) ||
                m_laidOut->second != TreeEdits::count()) {
                std::vector<lsNodePtr> shown;
                layoutFrame(shown);
                m_laidOut = {frameInputs(), TreeEdits::count()};
            }
            m_frameInputs.reset();
            m_pixelsPending = true;
            m_picOut->update();
            storeRedrawTime(start);
            return;
        }
        if (m_pixelsPending ||
            m_surface->HasChanged(m_picOut->ScaleWidth(), m_picOut->ScaleHeight()))
            composeFrame();
    }
    showSurface();
    storeRedrawTime(start);
}

void vkTreeList::composeFrame() {
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
    if (m_rows->Count() == 0 || fittingLineCount() == m_visibleLineCount)
        m_frameInputs = frameInputs();
    m_frameEdits = TreeEdits::count();
}

void vkTreeList::settlePixels() {
    if (m_pixelsPending && m_autoRedraw)
        RedrawFrame(true);
}

const OffScreenDC *vkTreeList::surface() {
    settlePixels();
    return m_surface.get();
}

void vkTreeList::storeRedrawTime(float start) {
    const float elapsed = secondsSinceMidnight() - start;
    // Past midnight the stored time is the start plus one day, as it always was.
    m_redrawTime = elapsed < 0 ? start + 86400.0f : elapsed;
}

PaintContext vkTreeList::paintContext() {
    PaintContext ctx;
    ctx.rowHeight = m_rowHeight;
    ctx.columns = m_columns;
    ctx.lineStyle = m_lineStyle;
    ctx.focusType = m_focusType;
    ctx.hasFocus = m_hasFocus;
    ctx.multiSelect = m_multiSelect;
    ctx.headers = Headers();
    ctx.firstDisplayedRow = m_firstDisplayedRow;
    ctx.visibleLineCount = m_visibleLineCount;
    ctx.scaleHeight = m_picOut->ScaleHeight();
    ctx.gapColor = m_picOut->BackColor();
    ctx.imageList = m_imageList.get();
    ctx.scale = m_picOut;
    ctx.pictures = &m_pictures;
    return ctx;
}

void vkTreeList::paintFrame(OffScreenDC &dc) {
    std::vector<lsNodePtr> shown;
    layoutFrame(shown);
    const PaintContext ctx = paintContext();
    const TreeListPainter painter(ctx);
    // Rows and headers scroll sideways together.
    dc.setOriginX(m_horizontalOffset);
    painter.paintLaidOutRows(dc, *m_rows, *m_ident, shown, m_widestText);
    painter.paintLaidOutHeaders(dc, *m_headers);
    dc.setOriginX(0);
}

void vkTreeList::layoutFrame(std::vector<lsNodePtr> &shown) {
    // The bar layout that ends the row layout may bring the horizontal bar in or take it away
    // (and the offset with it), or move the view with a bar whose range shrank. The frame must
    // show what the layout decided, or the rows would stay shifted out of a view that has no bar
    // left to scroll them back, or a line would be drawn under the bar: lay out once more.
    if (layoutLayers(shown))
        layoutLayers(shown);
}

bool vkTreeList::layoutLayers(std::vector<lsNodePtr> &shown) {
    m_shownRows = 0;
    m_lastShownRow = 0;
    shown.clear();
    bool moved = false;
    if (m_rows->Count() > 0) {
        if (m_firstDisplayedRow < 1)
            m_firstDisplayedRow = 1;
        lineCapacity();
        keepFirstRowReachable();
        const PaintContext ctx = paintContext();
        RowPaintResult laid = TreeListPainter(ctx).layoutRows(*m_rows, *m_ident);
        if (laid.lastPaintedRow > 0)
            m_lastPaintedRow = laid.lastPaintedRow;
        m_shownRows = laid.painted;
        m_lastShownRow = laid.lastPaintedRow;
        shown = std::move(laid.shown);
        const qint32 offset = m_horizontalOffset;
        const qint16 first = m_firstDisplayedRow;
        layoutScrollBars();
        // A horizontal bar that came or went also changed the lines that fit.
        moved = m_horizontalOffset != offset || m_firstDisplayedRow != first ||
                fittingLineCount() != m_visibleLineCount;
    }
    const PaintContext ctx = paintContext();
    TreeListPainter(ctx).layoutHeaders(*m_headers);
    return moved;
}

void vkTreeList::repaintRow(const lsNodePtr &row, bool header) {
    if (!m_surface || !m_autoRedraw)
        return;
    if (m_pixelsPending) {
        // The frame about to be composed shows the row as it is now; its first cell's text
        // offset, which a host reads, follows the row at once.
        if (lsCell *first = header ? nullptr : row->borrowCells().cell(1)) {
            m_ident->Refresh(row, m_rowHeight, m_imageList.get(), m_picOut);
            first->setXoffset(m_ident->TextX());
        }
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
    // The screen shares the frame's raster, and painting into a shared raster would copy all of it
    // first. The screen lets go of it while the row is painted and takes it back afterwards (also
    // when painting fails), so the row is drawn in place.
    QImage *screen = m_picOut->screenImage();
    const bool shared = !screen->isNull() && screen->constBits() == m_surface->hDC()->constBits();
    if (shared)
        *screen = QImage();
    const auto giveBack = qScopeGuard([&] {
        m_surface->setOriginX(0);
        if (shared)
            *screen = *m_surface->hDC();
    });
    m_surface->setOriginX(m_horizontalOffset);
    if (header) {
        for (const lsCellPtr &cell : *row->Cells())
            if (cell->Visible())
                painter.PaintCell(*m_surface, *cell, 0);
    } else {
        m_ident->Refresh(row, m_rowHeight, m_imageList.get(), m_picOut);
        painter.paintRow(*m_surface, *m_rows, *row, *m_ident);
    }
    showSurface();
}

void vkTreeList::showSurface() {
    m_surface->BlastToScreen();
    m_picOut->showFrame();
}

// --- Frames that stay right ---------------------------------------------------------------------

vkTreeList::FrameInputs vkTreeList::frameInputs() {
    const lsImageList *images = m_imageList.get();
    return {m_picOut->ScaleWidth(),
            m_picOut->ScaleHeight(),
            m_horizontalOffset,
            m_rowHeight,
            m_columns,
            m_lineStyle,
            m_focusType,
            Headers(),
            m_firstDisplayedRow,
            m_visibleLineCount,
            m_hasFocus,
            m_multiSelect,
            m_picOut->BackColor(),
            m_picOut->ForeColor(),
            m_picOut->Font()->qfont(),
            images,
            images ? images->Count() : 0};
}

bool vkTreeList::rowsUnchangedSinceFrame() const {
    // The rest of what the frame was drawn from (FrameInputs) is compared where the frame is
    // kept; a change there only needs noticing then. While the pixels wait for Qt's paint, the
    // frame is the last layout.
    if (!m_autoRedraw || !m_surface)
        return false;
    if (m_pixelsPending)
        return m_laidOut && TreeEdits::count() == m_laidOut->second;
    return m_frameInputs && TreeEdits::count() == m_frameEdits;
}

void vkTreeList::keepFrameCurrent() {
    if (!m_pixelsPending)
        m_frameEdits = TreeEdits::count();
    else if (m_laidOut)
        m_laidOut->second = TreeEdits::count();
}

bool vkTreeList::keepFrameAfterAdd(const lsNodePtr &row) {
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
    const bool viewFull = m_shownRows > 0 && m_shownRows >= m_visibleLineCount;
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
               (previous->Displayed() || previous->Index() < m_firstDisplayedRow)) {
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
    // dotted ones paint their gaps too. Pixels left to Qt's paint are not painted here at all.
    std::vector<lsNodePtr> shown;
    const lsNodePtr landing = lands ? row : nullptr;
    if (from &&
        (m_pixelsPending ? !collectShownRows(landing, shown)
                         : m_lineStyle == lsLineDotted || !rowsShownInPlace(landing, shown)))
        return false;
    const auto fromLine = std::find(shown.begin(), shown.end(), from);
    if (from && fromLine == shown.end())
        return false;
    const bool horizontalBar = !m_scrX->isHidden();
    m_displayedRowCount = displayedRowCount();
    layoutScrollBars();
    if (m_scrX->isHidden() == horizontalBar)
        return false;
    if (from)
        repaintShownRows(shown, size_t(fromLine - shown.begin()), shown.size(), lands);
    keepFrameCurrent();
    // Nothing or a few rows were drawn. The timer, single precision seconds since midnight, does
    // not resolve the microseconds this took (late in the day not even milliseconds): it reads 0.
    m_redrawTime = 0;
    return true;
}

bool vkTreeList::rowsShownInPlace(const lsNodePtr &landing, std::vector<lsNodePtr> &shown) {
    // Lines painted again show what a frame shows there only while nothing drawn for a row
    // reaches past its own line: no image list, whose pictures may be taller than a row.
    if (m_imageList || m_rowHeight < 16)
        return false;
    return collectShownRows(landing, shown);
}

bool vkTreeList::collectShownRows(const lsNodePtr &landing, std::vector<lsNodePtr> &shown) {
    // The rows the frame showed, found as it found them, and the row that lands after them.
    const qint32 count = m_shownRows + (landing ? 1 : 0);
    const qint32 first =
        m_rows->VisibleRowsUpTo(std::min<qint32>(m_firstDisplayedRow - 1, m_rows->Count())) + 1;
    shown.reserve(size_t(count));
    for (qint32 rank = first; rank < first + count; ++rank) {
        lsNodePtr row = m_rows->VisibleRowAt(rank);
        if (!row)
            return false;
        shown.push_back(std::move(row));
    }
    return !landing || shown.back() == landing;
}

void vkTreeList::repaintShownRows(const std::vector<lsNodePtr> &shown, size_t from, size_t to,
                                  bool landed) {
    const PaintContext ctx = paintContext();
    const TreeListPainter painter(ctx);
    if (m_pixelsPending) {
        // Qt's next paint composes the whole frame: only the row that lands is laid out here.
        if (landed) {
            painter.placeRow(*m_rows, shown.back(), Headers() + m_shownRows);
            if (lsCell *first = shown.back()->borrowCells().cell(1)) {
                m_ident->Refresh(shown.back(), m_rowHeight, m_imageList.get(), m_picOut);
                first->setXoffset(m_ident->TextX());
            }
            m_shownRows += 1;
            m_lastShownRow = shown.back()->Index();
            m_lastPaintedRow = m_lastShownRow;
        }
        return;
    }
    // The lines of the rows from `from` up to `to`. Below the last row shown only lines are
    // drawn, and only those that run on to the bottom edge; while the view is not full, every
    // visible row they could lead to is shown and none does.
    const qint32 top = (Headers() + qint32(from)) * m_rowHeight;
    const bool full = qint32(shown.size()) >= m_visibleLineCount;
    const qint32 bottom =
        to < shown.size() || !full ? (Headers() + qint32(to)) * m_rowHeight : m_surface->Height();
    {
        // As in repaintRow, the screen lets go of the shared raster while it is painted.
        QImage *screen = m_picOut->screenImage();
        const bool shared =
            !screen->isNull() && screen->constBits() == m_surface->hDC()->constBits();
        if (shared)
            *screen = QImage();
        const auto giveBack = qScopeGuard([&] {
            m_surface->ClearClip();
            m_surface->setOriginX(0);
            if (shared)
                *screen = *m_surface->hDC();
        });
        try {
            // Cleared to the background the frame started from.
            m_surface->SetClipRows(top, bottom);
            m_surface->setOriginX(0);
            m_surface->DrawRect(0, top, m_surface->Width(), bottom - top, m_picOut->BackColor(),
                                m_picOut->ForeColor());
            m_surface->setOriginX(m_horizontalOffset);
            if (landed)
                painter.placeRow(*m_rows, shown.back(), Headers() + m_shownRows);
            painter.repaintRows(*m_surface, *m_rows, *m_ident, shown, from, to, m_widestText);
        } catch (...) {
            // Half painted: no longer the frame a repaint would give.
            m_frameInputs.reset();
            throw;
        }
    }
    if (landed) {
        m_shownRows += 1;
        m_lastShownRow = shown.back()->Index();
        m_lastPaintedRow = m_lastShownRow;
    }
    showSurface();
}

bool vkTreeList::repaintCellInPlace(const lsNodePtr &row, qint32 property) {
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
    if (!repaintLineInPlace(row))
        return false;
    keepFrameCurrent();
    return true;
}

bool vkTreeList::repaintLineInPlace(const lsNodePtr &row) {
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
