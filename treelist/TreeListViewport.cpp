#include "TreeListViewport.h"

#include "vkTreeList.h"

#include "FrameKeeper.h"
#include "TreeListState.h"

#include "lsEdit.h"

#include "PictureBox.h"

#include <QLabel>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyle>
#include <algorithm>
#include <cmath>
#include <optional>

qint32 TreeListViewport::scrollBarExtent() const {
    return t.style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, t.d->scrY);
}

qint32 TreeListViewport::horizontalBarHeight() const {
    return t.d->scrX->isHidden() ? 0 : t.d->scrX->height();
}

qint32 TreeListViewport::wholeLineCount() {
    // Data lines that fit wholly under the header rows.
    const double lines = std::floor(
        divide(t.d->picOut->ScaleHeight() - horizontalBarHeight(), t.d->settings.rowHeight));
    return toInt32(static_cast<qint64>(lines) - t.Headers());
}

qint32 TreeListViewport::displayedRowCount() {
    // The rows a visible-only walk reaches: exactly those whose Visible is set.
    return t.d->rows->VisibleRowsUpTo(t.d->rows->Count());
}

qint32 TreeListViewport::rowAtDisplayPosition(qint32 count) {
    // The count-th Visible row; past the last one the last, before the first the first.
    const qint32 total = displayedRowCount();
    if (total < 1)
        return 1;
    return t.d->rows->VisibleRowAt(std::clamp(count, 1, total))->Index();
}

qint32 TreeListViewport::displayPosition(qint32 rowIndex) {
    return t.d->rows->VisibleRowsUpTo(std::clamp(rowIndex, 0, t.d->rows->Count()));
}

void TreeListViewport::keepFirstRowReachable() {
    // A collapse can hide the first row shown, or leave so few rows that the vertical bar goes
    // away while the view still starts further down: move the view so that no row becomes
    // unreachable.
    lsNodePtr first = t.d->rows->at(std::min<qint32>(m_firstDisplayedRow, t.d->rows->Count()));
    while (first && !first->Visible())
        first = first->Parent();
    m_firstDisplayedRow = toInt16(first ? first->Index() : 1);
    if (m_displayedRowCount <= wholeLineCount())
        m_firstDisplayedRow = 1;
}

qint16 TreeListViewport::fittingLineCount() {
    // A partly visible line counts as a line.
    const double lines = std::floor(
        divide(t.d->picOut->ScaleHeight() - horizontalBarHeight(), t.d->settings.rowHeight) +
        0.99999);
    return toInt16(static_cast<qint64>(lines) - t.Headers());
}

bool TreeListViewport::lineCapacity() {
    const qint16 old = m_visibleLineCount;
    m_visibleLineCount = fittingLineCount();
    m_displayedRowCount = displayedRowCount();
    if (m_displayedRowCount < 1)
        m_firstDisplayedRow = 1;
    return m_visibleLineCount > old && m_displayedRowCount >= old;
}

void TreeListViewport::layoutScrollBars() {
    if (t.d->editing)
        return;
    const qint32 scaleWidth = t.d->picOut->ScaleWidth();
    const qint32 whole = wholeLineCount();
    const qint32 extent = scrollBarExtent();
    const lsNodePtr first = t.d->rows->at(1);
    const qint32 rowWidth = first ? first->Width() : 0;
    const bool vertical = m_displayedRowCount > whole;
    const qint32 position = vertical ? std::max(1, displayPosition(m_firstDisplayedRow)) : 0;
    const BarLayout layout{
        whole, extent, scaleWidth, rowWidth, t.contentsRect(), m_horizontalOffset, vertical};

    // Writing the bars' ranges may move their values: the change handlers must stay quiet, and
    // become live again even when a step below fails.
    const QScopedValueRollback<bool> suspend(m_suspend, true);
    // Rows added one by one change nothing but the count of displayed rows, and scrolling nothing
    // but the first row shown: when that is all that changed since the last layout and nobody
    // moved the bars since (the vertical bar's value is set from the first row shown either way),
    // only the maximum and the value move.
    // The last position shows a full last page, as Qt's views do: with the row count as the
    // maximum it would show the last row alone at the top of an empty view.
    const qint32 maximum = std::max(1, m_displayedRowCount - std::max(whole, 1) + 1);
    if (m_barLayout && m_barLayout->first == layout && m_barLayout->second == barStates()) {
        t.d->scrY->setMaximum(maximum);
        if (vertical)
            followVerticalBar(position);
        m_barLayout->second = barStates();
        return;
    }
    m_barLayout.reset();
    t.d->scrY->setMinimum(1);
    t.d->scrY->setMaximum(maximum);
    t.d->scrY->setSingleStep(1);
    t.d->scrY->setPageStep(std::max(whole, 1));
    if (vertical)
        followVerticalBar(position);

    const qint32 viewWidth = scaleWidth - (vertical ? extent : 0);
    const bool horizontal = rowWidth > viewWidth;
    if (horizontal) {
        // At the last position the right edge of the row lies at the right edge of the view;
        // with the row's whole width as the maximum every cell would scroll out of it.
        t.d->scrX->setMinimum(0);
        t.d->scrX->setMaximum(rowWidth - viewWidth);
        t.d->scrX->setSingleStep(std::max(1, scaleWidth / 50));
        t.d->scrX->setPageStep(std::max(1, scaleWidth / 8));
        // A range that shrank moved the bar without a word to the handler: the offset is always
        // minus the bar's value all the same.
        m_horizontalOffset = -t.d->scrX->value();
    } else {
        // The bar goes with its position: shown again later, it starts at the left edge.
        m_horizontalOffset = 0;
        t.d->scrX->setValue(0);
    }

    const QRect &area = layout.area;
    const int right = area.right() + 1;
    const int bottom = area.bottom() + 1;
    switch ((vertical ? 1 : 0) + (horizontal ? 2 : 0)) {
    case 1:
        t.d->scrY->setGeometry(right - extent, area.top(), extent, area.height());
        break;
    case 2:
        t.d->scrX->setGeometry(area.left(), bottom - extent, area.width(), extent);
        break;
    case 3:
        t.d->scrY->setGeometry(right - extent, area.top(), extent, area.height() - extent);
        t.d->scrX->setGeometry(area.left(), bottom - extent, area.width() - extent, extent);
        t.d->imgGhost->setGeometry(right - extent, bottom - extent, extent, extent);
        break;
    default:
        break;
    }
    t.d->scrY->setVisible(vertical);
    t.d->scrX->setVisible(horizontal);
    t.d->imgGhost->setVisible(vertical && horizontal);
    for (QScrollBar *bar : {t.d->scrY, t.d->scrX}) {
        if (bar->isHidden())
            continue;
        if (bar->value() < bar->minimum())
            bar->setValue(bar->minimum());
        bar->update();
    }
    m_barLayout = {layout, barStates()};
}

void TreeListViewport::followVerticalBar(qint32 position) {
    // Fewer rows, or more room, can put the first row shown past the bar's new last position; the
    // view then moves up with the bar, so that the last page is full.
    t.d->scrY->setValue(position);
    if (t.d->scrY->value() != position)
        m_firstDisplayedRow = toInt16(rowAtDisplayPosition(t.d->scrY->value()));
}

TreeListViewport::BarStates TreeListViewport::barStates() const {
    return {t.d->scrY->minimum(), t.d->scrY->maximum(), t.d->scrX->value(), !t.d->scrY->isHidden(),
            !t.d->scrX->isHidden()};
}

void TreeListViewport::reset() {
    m_visibleLineCount = 0;
    m_displayedRowCount = 0;
    m_firstDisplayedRow = 0;
    m_horizontalOffset = 0;
}

void TreeListViewport::onVerticalScroll(int value) {
    if (m_suspend)
        return;
    // The editor would no longer lie over its cell: the edit is discarded, not committed.
    if (t.d->editing)
        t.d->lseMisc->AbortEdit();
    m_firstDisplayedRow = toInt16(rowAtDisplayPosition(value));
    t.d->frames->RedrawFrame(false);
    emit t.Scroll();
}

void TreeListViewport::onHorizontalScroll(int value) {
    if (m_suspend)
        return;
    if (t.d->editing)
        t.d->lseMisc->AbortEdit();
    m_horizontalOffset = -value;
    t.d->frames->RedrawFrame(false);
    emit t.Scroll();
}

void TreeListViewport::scrollBy(bool upwards, qint32 amount) {
    qint32 n;
    if (!upwards) {
        n = t.d->scrY->value() + amount;
        if (n >= t.d->scrY->maximum())
            n = t.d->scrY->maximum();
    } else {
        n = t.d->scrY->value() - amount;
        if (n <= t.d->scrY->minimum())
            n = t.d->scrY->minimum();
    }
    t.d->scrY->setValue(toInt16(n));
}

void TreeListViewport::ensureVisible(const QVariant &IndexKey) {
    const lsNodePtr row = t.d->rows->Item(IndexKey);
    if (!row || !row->Visible())
        return;
    if (row->Displayed()) {
        const lsCellPtr first = row->Cells()->at(1);
        if (!first || t.d->picOut->ScaleHeight() >= first->Top() + t.d->settings.rowHeight)
            return;
        // Cut off at the bottom: one more line brings it in.
        t.d->scrY->setValue(toInt16(std::min(t.d->scrY->value() + 1, t.d->scrY->maximum())));
        return;
    }
    // Below the view: count the visible rows from the first one shown down to this one. A row
    // above the first one shown is never reached.
    const qint32 from = std::max<qint32>(1, m_firstDisplayedRow);
    if (row->Index() < from || t.d->scrY->isHidden())
        return;
    const qint32 count = displayPosition(row->Index()) - displayPosition(from - 1);
    t.d->scrY->setValue(
        toInt16(std::min(t.d->scrY->value() + count - m_visibleLineCount, t.d->scrY->maximum())));
    return;
}

void TreeListViewport::bringIntoView(const lsNodePtr &row) {
    if (!row->Displayed() && row->Index() < m_firstDisplayedRow && !t.d->scrY->isHidden())
        t.d->scrY->setValue(toInt16(displayPosition(row->Index())));
    else
        ensureVisible(row->Index());
    // EnsureVisible counts a row under the horizontal bar as shown; a person cannot see it there.
    const lsCellPtr first = row->Displayed() ? row->Cells()->at(1) : nullptr;
    const qint32 bottom = t.d->picOut->ScaleHeight() - horizontalBarHeight();
    const qint32 height = t.d->settings.rowHeight;
    if (first && !t.d->scrY->isHidden() && first->Top() + height > bottom && height > 0) {
        const qint32 lines = (first->Top() + height - bottom + height - 1) / height;
        t.d->scrY->setValue(toInt16(std::min(t.d->scrY->value() + lines, t.d->scrY->maximum())));
    }
}

void TreeListViewport::scrollIntoView(qint32 rowIndex) {
    // The bars must know about the new row before the view can move to it.
    lineCapacity();
    layoutScrollBars();
    ensureVisible(rowIndex);
}
