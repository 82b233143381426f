#include "ColumnGeometry.h"

#include "vkTreeList.h"

#include "FrameKeeper.h"
#include "KeyCodes.h"
#include "PictureBox.h"
#include "TreeListState.h"
#include "TreeListViewport.h"

#include <QScopeGuard>
#include <cmath>

namespace {

constexpr qint16 kBorderPointer = 99;
constexpr qint16 kBusyPointer = 13;
constexpr qint16 kDefaultPointer = 0;
// How far from a column border, in pixels, the pointer still counts as on it.
constexpr qint32 kBorderReach = 8;
// Room left right of the longest text when a column is sized to its texts.
constexpr qint32 kAutoSizePadding = 12;

qint32 roundHalfEven(double v) {
    return static_cast<qint32>(std::nearbyint(v));
}

// A column's cell in a row; a column the row lacks raises invalid argument, as the cell
// collection's Item does.
lsCell &columnCell(const lsNodePtr &node, qint32 column) {
    lsCell *cell = node ? node->borrowCells().cell(column) : nullptr;
    if (!cell)
        throw TreeListError(TreeListError::InvalidArgument);
    return *cell;
}

} // namespace

qint32 ColumnGeometry::width(qint32 ColID) const {
    if (ColID < 1 || ColID > t.d->settings.columns)
        return -1;
    lsNodePtr row = t.d->headers->at(1);
    if (!row)
        row = t.d->rows->at(1);
    const lsCell *cell = row ? row->borrowCells().cell(ColID) : nullptr;
    if (!cell)
        return -1;
    return roundHalfEven(t.d->picOut->ScaleX(cell->Width(), 3, t.d->settings.scaleMode));
}

void ColumnGeometry::setWidth(qint32 ColID, qint32 width) {
    const qint32 pixels = roundHalfEven(t.d->picOut->ScaleX(width, t.d->settings.scaleMode, 3));
    // A column that a row lacks fails with the cell collection's error.
    for (const lsNodePtr &header : *t.d->headers)
        columnCell(header, ColID).setWidth(pixels);
    for (const lsNodePtr &row : *t.d->rows)
        columnCell(row, ColID).setWidth(pixels);
    t.Refresh(false);
}

void ColumnGeometry::autoSize(qint32 ColID) {
    // No range check on ColID, deliberately: a column that does not exist fails in the lookup.
    lsNodePtr first = t.d->headers->at(1);
    if (!first)
        first = t.d->rows->at(1);
    if (!first)
        return;
    // Rounded up by adding 0.99999 and keeping the whole part: an empty title measures 0.
    const auto measure = [this](const QString &text) {
        return static_cast<qint32>(std::floor(t.d->picOut->TextWidth(text) + 0.99999));
    };
    qint32 widest = measure(first->Cells()->Item(ColID)->Title()) + kAutoSizePadding;
    for (const lsNodePtr &row : *t.d->rows) {
        qint32 width = measure(row->Cells()->Item(ColID)->Title());
        if (ColID == 1) {
            t.d->ident->Refresh(row, t.d->settings.rowHeight, t.d->imageList.get(), t.d->picOut);
            width += t.d->ident->TextX();
        }
        widest = std::max(widest, width + kAutoSizePadding);
    }
    for (const lsNodePtr &row : *t.d->rows)
        row->Cells()->Item(ColID)->setWidth(widest);
    for (const lsNodePtr &header : *t.d->headers)
        header->Cells()->Item(ColID)->setWidth(widest);
    t.d->frames->RedrawFrame(false);
}

void ColumnGeometry::track(qint16 button, float x, float y) {
    if (m_dragging) {
        if (button & kLeftButton) {
            t.d->picOut->invertVerticalLine(m_dragX);
            m_dragX = qint32(std::lround(x));
            t.d->picOut->invertVerticalLine(m_dragX);
        } else {
            endDrag();
        }
        return;
    }
    qint32 border = 0;
    qint16 column = 0;
    // A drag from a pressed border takes that border wherever the pointer has got to.
    const qint16 pressed = (button & kLeftButton) ? m_pressedBorder : 0;
    const lsNodePtr header = t.d->headers->at(1);
    if (header && (pressed || y < float(t.d->settings.rowHeight) * t.Headers())) {
        // The right borders of header row 1's columns as the screen shows them.
        const lsCells &cells = header->borrowCells();
        qint32 right = t.d->view->offset();
        for (qint32 c = 1; c <= cells.Count() && !column; ++c) {
            right += cells.cell(c)->Width();
            if (pressed ? c == pressed : right - kBorderReach <= x && x <= right + kBorderReach) {
                column = toInt16(c);
                border = right;
            }
        }
    }
    if (!column) {
        t.d->picOut->setMousePointer(kDefaultPointer);
        return;
    }
    m_borderColumn = column;
    t.d->picOut->setMousePointer(kBorderPointer);
    if (button & kLeftButton) {
        // A drag starts at the border itself, wherever within reach the pointer was; one from a
        // pressed border whose first move went past that reach starts where the pointer is.
        m_dragging = true;
        const bool near = border - kBorderReach <= x && x <= border + kBorderReach;
        m_dragX = near ? border : qint32(std::lround(x));
        t.d->picOut->invertVerticalLine(m_dragX);
    }
}

void ColumnGeometry::endDrag() {
    t.d->picOut->invertVerticalLine(m_dragX);
    m_dragging = false;
    t.d->picOut->setMousePointer(kDefaultPointer);
    const lsCell *header = t.d->headers->at(1)->borrowCells().cell(m_borderColumn);
    if (!header)
        return;
    // No narrower than its title needs.
    const qint32 left = header->Left() + t.d->view->offset();
    const qint32 width = std::max(m_dragX - left, t.d->picOut->TextWidth(header->Title()) + 4);
    for (lsNodes *nodes : {t.d->rows.get(), t.d->headers.get()})
        for (const lsNodePtr &row : *nodes)
            if (lsCell *cell = row->borrowCells().cell(m_borderColumn))
                cell->setWidth(width);
    t.d->frames->RedrawFrame(false);
}

void ColumnGeometry::press(qint16 button) {
    // A left press on a border lets the drag start with the next move, wherever it lands: a
    // quick hand can leave the border's reach between two move events.
    m_pressedBorder =
        button == kLeftButton && t.d->picOut->MousePointer() == kBorderPointer ? m_borderColumn : 0;
}

bool ColumnGeometry::autoSizeUnderPointer() {
    if (t.d->picOut->MousePointer() != kBorderPointer)
        return false;
    t.d->picOut->setMousePointer(kBusyPointer);
    const auto restore = qScopeGuard([&] { t.d->picOut->setMousePointer(kDefaultPointer); });
    t.AutoSize(m_borderColumn);
    return true;
}

void ColumnGeometry::release(bool leftHeld) {
    // Letting the button go ends a drag at once; waiting for the next move would leave the line
    // on screen for as long as the mouse stays still.
    if (m_dragging && !leftHeld)
        endDrag();
    m_pressedBorder = 0;
}

void ColumnGeometry::redrawDragLine() {
    if (m_dragging)
        t.d->picOut->invertVerticalLine(m_dragX);
}
