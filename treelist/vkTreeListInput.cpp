// vkTreeList: hit testing, mouse and keyboard.
//
//   Hit testing    HitTest, rowOnLine
//   Mouse          press, double click, move (column borders), release, wheel
//   Keyboard       key codes, navigation
//   Repaints       the selection's rows painted again in place

#include "vkTreeList.h"

#include "TreeListViewport.h"

#include "FrameKeeper.h"

#include "KeyCodes.h"
#include "PictureBox.h"
#include "VariantNumber.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>
#include <cmath>

namespace {

constexpr qint16 kLeftButton = 1;
constexpr qint16 kBorderPointer = 99;
constexpr qint16 kBusyPointer = 13;
constexpr qint16 kDefaultPointer = 0;
// How far from a column border, in pixels, the pointer still counts as on it.
constexpr qint32 kBorderReach = 8;

} // namespace

void vkTreeList::connectInput() {
    PictureBox *pic = m_picOut;
    connect(pic, &PictureBox::mousePressed, this, [this](QMouseEvent *e) {
        m_hasFocus = true;
        guarded("mouse press", [&] { onMousePress(*e); });
    });
    connect(pic, &PictureBox::mouseDoubleClicked, this,
            [this] { guarded("double click", [&] { onMouseDoubleClick(); }); });
    connect(pic, &PictureBox::mouseMoved, this,
            [this](QMouseEvent *e) { guarded("mouse move", [&] { onMouseMove(*e); }); });
    connect(pic, &PictureBox::mouseReleased, this,
            [this](QMouseEvent *e) { guarded("mouse release", [&] { onMouseRelease(*e); }); });
    connect(pic, &PictureBox::wheelTurned, this,
            [this](QWheelEvent *e) { guarded("wheel", [&] { onWheel(*e); }); });
    connect(pic, &PictureBox::keyPressed, this,
            [this](QKeyEvent *e) { guarded("key press", [&] { onKeyPress(*e); }); });
    connect(pic, &PictureBox::keyReleased, this, [this](QKeyEvent *e) {
        // An auto-repeated key sends KeyDown again, not KeyUp, until it is let go.
        if (!e->isAutoRepeat())
            guarded("key release",
                    [&] { emit KeyUp(virtualKeyCode(e->key()), shiftMask(e->modifiers())); });
    });
}

// --- Hit testing --------------------------------------------------------------------------------

lsHitTestPtr vkTreeList::HitTest(const QVariant &X, const QVariant &Y, qint16 Button,
                                 qint16 Shift) const {
    auto hit = std::make_shared<lsHitTest>();
    // Points are on the screen; the cells lie where the unscrolled frame put them. A non-numeric
    // X or Y goes through as it is, and the hit test reports that nothing was hit.
    const std::optional<double> x = numberIn(X), y = numberIn(Y);
    if (x && y)
        hit->locate(*x + std::abs(double(m_view->offset())), *y, m_settings.rowHeight,
                    m_headers.get(), m_rows.get(), Button, Shift);
    else
        hit->Refresh(X, Y, m_settings.rowHeight, m_headers.get(), m_rows.get(), Button, Shift);
    return hit;
}

lsNodePtr vkTreeList::rowOnLine(qint32 line) {
    // The data lines show the Visible rows from the first displayed one on, one per line, as the
    // frame painted them; a line below the last of them shows none.
    if (line < 1 || line > m_view->lineCount())
        return nullptr;
    const qint32 before =
        m_rows->VisibleRowsUpTo(std::min<qint32>(m_view->firstRow() - 1, m_rows->Count()));
    return m_rows->VisibleRowAt(before + line);
}

// --- Mouse --------------------------------------------------------------------------------------

void vkTreeList::onMousePress(const QMouseEvent &event) {
    const qint16 button = buttonMask(event.button());
    const qint16 shift = shiftMask(event.modifiers());
    const float x = float(event.position().x()), y = float(event.position().y());
    m_doubleClicked = false;
    // A left press on a border lets the drag start with the next move, wherever it lands: a
    // quick hand can leave the border's reach between two move events.
    m_pressedBorder =
        button == kLeftButton && m_picOut->MousePointer() == kBorderPointer ? m_borderColumn : 0;
    m_hit->Clear();
    m_hit = HitTest(x, y, button, shift);
    const lsNodePtr previous = m_rows->SelectedRow();
    if (m_hit->DataCol() >= 0 && m_hit->DataRow() > 0) {
        if (const lsNodePtr row = rowOnLine(m_hit->DataRow())) {
            // Shift alone or Ctrl alone adds to the selection; both together select singly.
            const bool multi = m_settings.multiSelect && (shift == 1 || shift == 2);
            selectRow(previous, row, m_hit->DataCol(), multi);
            m_ident->Refresh(row, m_settings.rowHeight, m_imageList.get(), m_picOut);
            // The box lies where the unscrolled frame drew it, as the hit's X does.
            if (m_hit->IsPlusMinusClick(*m_ident, m_hit->X(), y) && row->HasChild())
                toggleExpanded(row);
            emit CellClick(row->Index(), m_hit->DataCol());
        }
    }
    // Only the left button clicks a header.
    if (m_hit->HeaderRow() >= 0 && m_hit->HeaderCol() >= 1 && button == kLeftButton)
        emit HeaderClick(m_hit->HeaderRow(), m_hit->HeaderCol());
    emit MouseDown(button, shift, x, y);
}

void vkTreeList::onMouseDoubleClick() {
    m_doubleClicked = true;
    if (m_picOut->MousePointer() == kBorderPointer) {
        // On a column border a double click sizes that column to its texts, and does nothing else.
        m_picOut->setMousePointer(kBusyPointer);
        const auto restore = qScopeGuard([&] { m_picOut->setMousePointer(kDefaultPointer); });
        AutoSize(m_borderColumn);
        return;
    }
    // The second press of a double click is not a press of its own: the hit is the first one's.
    if (m_hit->DataCol() >= 0 && m_hit->DataRow() >= 1 && m_hit->Button() == kLeftButton) {
        if (const lsNodePtr row = rowOnLine(m_hit->DataRow())) {
            m_rows->Selected(row->Index(), m_hit->DataCol(), false);
            if (row->HasChild() && m_settings.expandOnDoubleClick)
                toggleExpanded(row);
            m_frames->RedrawFrame(false);
        }
    }
    emit DblClick();
}

void vkTreeList::onMouseMove(const QMouseEvent &event) {
    const qint16 button = buttonMask(event.buttons());
    const float x = float(event.position().x()), y = float(event.position().y());
    trackColumnBorder(button, x, y);
    emit MouseMove(button, shiftMask(event.modifiers()), x, y);
}

void vkTreeList::onMouseRelease(const QMouseEvent &event) {
    // Letting the button go ends a column drag at once; waiting for the next move would leave
    // the line on screen for as long as the mouse stays still.
    if (m_dragging && !(event.buttons() & Qt::LeftButton))
        endColumnDrag();
    m_pressedBorder = 0;
    const qint16 button = buttonMask(event.button());
    emit MouseUp(button, shiftMask(event.modifiers()), float(event.position().x()),
                 float(event.position().y()));
    // A click is a left press and release; the release that ends a double click is none.
    if (button == kLeftButton && !m_doubleClicked)
        emit Click();
    m_doubleClicked = false;
}

void vkTreeList::trackColumnBorder(qint16 button, float x, float y) {
    if (m_dragging) {
        if (button & kLeftButton) {
            m_picOut->invertVerticalLine(m_dragX);
            m_dragX = qint32(std::lround(x));
            m_picOut->invertVerticalLine(m_dragX);
        } else {
            endColumnDrag();
        }
        return;
    }
    qint32 border = 0;
    qint16 column = 0;
    // A drag from a pressed border takes that border wherever the pointer has got to.
    const qint16 pressed = (button & kLeftButton) ? m_pressedBorder : 0;
    const lsNodePtr header = m_headers->at(1);
    if (header && (pressed || y < float(m_settings.rowHeight) * Headers())) {
        // The right borders of header row 1's columns as the screen shows them.
        const lsCells &cells = header->borrowCells();
        qint32 right = m_view->offset();
        for (qint32 c = 1; c <= cells.Count() && !column; ++c) {
            right += cells.cell(c)->Width();
            if (pressed ? c == pressed : right - kBorderReach <= x && x <= right + kBorderReach) {
                column = toInt16(c);
                border = right;
            }
        }
    }
    if (!column) {
        m_picOut->setMousePointer(kDefaultPointer);
        return;
    }
    m_borderColumn = column;
    m_picOut->setMousePointer(kBorderPointer);
    if (button & kLeftButton) {
        // A drag starts at the border itself, wherever within reach the pointer was; one from a
        // pressed border whose first move went past that reach starts where the pointer is.
        m_dragging = true;
        const bool near = border - kBorderReach <= x && x <= border + kBorderReach;
        m_dragX = near ? border : qint32(std::lround(x));
        m_picOut->invertVerticalLine(m_dragX);
    }
}

void vkTreeList::endColumnDrag() {
    m_picOut->invertVerticalLine(m_dragX);
    m_dragging = false;
    m_picOut->setMousePointer(kDefaultPointer);
    const lsCell *header = m_headers->at(1)->borrowCells().cell(m_borderColumn);
    if (!header)
        return;
    // No narrower than its title needs.
    const qint32 left = header->Left() + m_view->offset();
    const qint32 width = std::max(m_dragX - left, m_picOut->TextWidth(header->Title()) + 4);
    for (lsNodes *nodes : {m_rows.get(), m_headers.get()})
        for (const lsNodePtr &row : *nodes)
            if (lsCell *cell = row->borrowCells().cell(m_borderColumn))
                cell->setWidth(width);
    m_frames->RedrawFrame(false);
}

void vkTreeList::onWheel(const QWheelEvent &event) {
    // A wheel notch is 120; touchpads send parts of one, which add up to whole lines.
    const QPoint delta = event.angleDelta();
    if (delta.x() != 0 && !m_scrX->isHidden()) {
        const int step = m_scrX->singleStep() * QApplication::wheelScrollLines();
        m_scrX->setValue(m_scrX->value() - delta.x() * step / 120);
    }
    m_wheelRemainder += delta.y() * QApplication::wheelScrollLines();
    const int lines = m_wheelRemainder / 120;
    m_wheelRemainder -= lines * 120;
    if (lines != 0)
        m_view->scrollBy(lines > 0, std::abs(lines));
}

// --- Keyboard -----------------------------------------------------------------------------------

void vkTreeList::onKeyPress(const QKeyEvent &event) {
    const qint16 code = virtualKeyCode(event.key());
    // The host hears the key after the selection moved.
    navigate(code);
    emit KeyDown(code, shiftMask(event.modifiers()));
    if (const qint16 ascii = keyAscii(event.text(), code))
        emit KeyPress(ascii);
}

void vkTreeList::navigate(qint16 keyCode) {
    const lsNodePtr row = m_rows->SelectedRow();
    const lsCellPtr selectedCell = m_rows->SelectedCell();
    const qint32 column = selectedCell ? selectedCell->Index() : 1;
    switch (keyCode) {
    case 38: // Up
    case 40: // Down
        if (row) {
            lsNodePtr next;
            if (keyCode == 38) {
                next = m_rows->GetPrevNode(row, true);
            } else {
                m_rows->SetFirstNode(row->Index());
                next = m_rows->GetNextNode(true);
            }
            // A row not on screen is reached by scrolling first; the selection stays until the
            // next key.
            if (next && next->Displayed())
                selectRow(row, next, column);
            else
                m_view->scrollBy(keyCode == 38, 1);
        }
        break;
    case 33: // Page Up
    case 34: // Page Down
        m_view->scrollBy(keyCode == 33, m_scrY->pageStep() - 1);
        break;
    case 36: // Home
        m_scrY->setValue(m_scrY->minimum());
        break;
    case 35: // End
        m_scrY->setValue(m_scrY->maximum());
        break;
    case 37: // Left
    case 39: // Right
        if (row && (keyCode == 37 ? column >= 2 : column < m_settings.columns)) {
            const qint32 to = keyCode == 37 ? column - 1 : column + 1;
            SelectItem(row->Index(), to);
            if (const lsCell *cell = row->borrowCells().cell(to))
                scrollCellIntoView(*cell);
        }
        break;
    case 13: // Enter
        if (row && row->HasChild() && m_settings.expandOnDoubleClick)
            toggleExpanded(row);
        break;
    default:
        break;
    }
}

void vkTreeList::scrollCellIntoView(const lsCell &cell) {
    if (m_scrX->isHidden())
        return;
    const qint32 shownFrom = -m_view->offset(), shownTo = shownFrom + m_picOut->ScaleWidth();
    if (cell.Left() < shownFrom)
        m_scrX->setValue(cell.Left());
    else if (cell.Left() + cell.Width() > shownTo)
        m_scrX->setValue(
            std::min(m_scrX->maximum(), cell.Left() + cell.Width() - (shownTo - shownFrom)));
}

// --- Selection and expansion --------------------------------------------------------------------

void vkTreeList::toggleExpanded(const lsNodePtr &row) {
    setRowExpanded(row->Index(), !row->Expanded());
}

void vkTreeList::selectRow(const lsNodePtr &previous, const lsNodePtr &row, qint32 column,
                           bool multi) {
    // Only the rows whose look changes are painted again, in place over the kept frame when
    // nothing else changed since it was composed; otherwise the frame is composed anew.
    const bool frameWasCurrent = m_frames->rowsUnchangedSinceFrame();
    const qint32 selectedBefore = m_rows->Selected(row->Index(), column, multi);
    if (!multi && selectedBefore >= 2) {
        m_frames->RedrawFrame(false);
        return;
    }
    // The selection cleared the previous row's flags and set the new row's: their lines show it.
    bool inPlace = frameWasCurrent;
    if (!multi && previous && previous->Displayed())
        inPlace = inPlace && m_frames->repaintLineInPlace(previous);
    inPlace = inPlace && m_frames->repaintLineInPlace(row);
    if (inPlace)
        m_frames->keepFrameCurrent();
    else
        m_frames->RedrawFrame(false);
}
