// vkTreeList: the viewport (line capacity, scroll bars, scrolling).

#include "vkTreeList.h"

#include "FrameKeeper.h"

#include "lsEdit.h"

#include "PictureBox.h"

#include <QLabel>
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
    m_frames->RedrawFrame(!moreLines);
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
        std::floor(divide(m_picOut->ScaleHeight() - horizontalBarHeight(), m_settings.rowHeight));
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
    const double lines = std::floor(
        divide(m_picOut->ScaleHeight() - horizontalBarHeight(), m_settings.rowHeight) + 0.99999);
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
    const BarLayout layout{
        whole, extent, scaleWidth, rowWidth, contentsRect(), m_horizontalOffset, vertical};

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
    return {m_scrY->minimum(), m_scrY->maximum(), m_scrX->value(), !m_scrY->isHidden(),
            !m_scrX->isHidden()};
}

void vkTreeList::onVerticalScroll(int value) {
    if (m_suspend)
        return;
    // The editor would no longer lie over its cell: the edit is discarded, not committed.
    if (m_editing)
        m_lseMisc->AbortEdit();
    m_firstDisplayedRow = toInt16(rowAtDisplayPosition(value));
    m_frames->RedrawFrame(false);
    emit Scroll();
}

void vkTreeList::onHorizontalScroll(int value) {
    if (m_suspend)
        return;
    if (m_editing)
        m_lseMisc->AbortEdit();
    m_horizontalOffset = -value;
    m_frames->RedrawFrame(false);
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
        if (!first || m_picOut->ScaleHeight() >= first->Top() + m_settings.rowHeight)
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
