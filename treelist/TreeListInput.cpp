#include "TreeListInput.h"

#include "vkTreeList.h"

#include "ColumnGeometry.h"
#include "TreeListState.h"
#include "TreeListViewport.h"

#include "FrameKeeper.h"

#include "KeyCodes.h"
#include "PictureBox.h"
#include "VariantNumber.h"

#include <QApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QToolTip>
#include <QWheelEvent>
#include <cmath>

TreeListInput::TreeListInput(vkTreeList &t) : t(t), m_range(*t.d) {}

lsNodePtr TreeListInput::rowOnLine(qint32 line) {
    // The data lines show the Visible rows from the first displayed one on, one per line, as the
    // frame painted them; a line below the last of them shows none.
    if (line < 1 || line > t.d->view->lineCount())
        return nullptr;
    const qint32 before =
        t.d->rows->VisibleRowsUpTo(std::min<qint32>(t.d->view->firstRow() - 1, t.d->rows->Count()));
    return t.d->rows->VisibleRowAt(before + line);
}

// --- Mouse --------------------------------------------------------------------------------------

void TreeListInput::onMousePress(const QMouseEvent &event) {
    const qint16 button = buttonMask(event.button());
    const qint16 shift = shiftMask(event.modifiers());
    const float x = float(event.position().x()), y = float(event.position().y());
    m_doubleClicked = false;
    t.d->columnGeometry->press(button);
    m_hit->Clear();
    m_hit = t.HitTest(x, y, button, shift);
    const lsNodePtr previous = t.d->rows->SelectedRow();
    if (m_hit->DataCol() >= 0 && m_hit->DataRow() > 0) {
        if (const lsNodePtr row = rowOnLine(m_hit->DataRow())) {
            // Shift alone or Ctrl alone adds to the selection; both together select singly. The
            // extended rule has its own meaning for them.
            const bool extended = t.d->settings.selectionMode == lsSelectionExtended;
            const bool multi = t.d->settings.multiSelect && (shift == 1 || shift == 2);
            if (!(extended && m_range.click(row, m_hit->DataCol(), shift)))
                selectRow(previous, row, m_hit->DataCol(), multi && !extended);
            t.d->ident->Refresh(row, t.d->settings.rowHeight, t.d->imageList.get(), t.d->picOut);
            // The box lies where the unscrolled frame drew it, as the hit's X does.
            if (m_hit->IsPlusMinusClick(*t.d->ident, m_hit->X(), y) && row->HasChild())
                toggleExpanded(row);
            emit t.CellClick(row->Index(), m_hit->DataCol());
        }
    }
    // Only the left button clicks a header.
    if (m_hit->HeaderRow() >= 0 && m_hit->HeaderCol() >= 1 && button == kLeftButton)
        emit t.HeaderClick(m_hit->HeaderRow(), m_hit->HeaderCol());
    emit t.MouseDown(button, shift, x, y);
}

void TreeListInput::onMouseDoubleClick() {
    m_doubleClicked = true;
    // On a column border a double click sizes that column to its texts, and does nothing else.
    if (t.d->columnGeometry->autoSizeUnderPointer())
        return;
    // The second press of a double click is not a press of its own: the hit is the first one's.
    if (m_hit->DataCol() >= 0 && m_hit->DataRow() >= 1 && m_hit->Button() == kLeftButton) {
        if (const lsNodePtr row = rowOnLine(m_hit->DataRow())) {
            t.d->rows->Selected(row->Index(), m_hit->DataCol(), false);
            if (row->HasChild() && t.d->settings.expandOnDoubleClick)
                toggleExpanded(row);
            t.d->frames->RedrawFrame(false);
        }
    }
    emit t.DblClick();
}

void TreeListInput::onMouseMove(const QMouseEvent &event) {
    const qint16 button = buttonMask(event.buttons());
    const float x = float(event.position().x()), y = float(event.position().y());
    t.d->columnGeometry->track(button, x, y);
    emit t.MouseMove(button, shiftMask(event.modifiers()), x, y);
}

void TreeListInput::onMouseRelease(const QMouseEvent &event) {
    t.d->columnGeometry->release(event.buttons() & Qt::LeftButton);
    const qint16 button = buttonMask(event.button());
    emit t.MouseUp(button, shiftMask(event.modifiers()), float(event.position().x()),
                   float(event.position().y()));
    // A click is a left press and release; the release that ends a double click is none.
    if (button == kLeftButton && !m_doubleClicked)
        emit t.Click();
    m_doubleClicked = false;
}

void TreeListInput::onWheel(const QWheelEvent &event) {
    // A wheel notch is 120; touchpads send parts of one, which add up to whole lines.
    const QPoint delta = event.angleDelta();
    if (delta.x() != 0 && !t.d->scrX->isHidden()) {
        const int step = t.d->scrX->singleStep() * QApplication::wheelScrollLines();
        t.d->scrX->setValue(t.d->scrX->value() - delta.x() * step / 120);
    }
    m_wheelRemainder += delta.y() * QApplication::wheelScrollLines();
    const int lines = m_wheelRemainder / 120;
    m_wheelRemainder -= lines * 120;
    if (lines != 0)
        t.d->view->scrollBy(lines > 0, std::abs(lines));
}

// --- Keyboard -----------------------------------------------------------------------------------

void TreeListInput::onKeyPress(const QKeyEvent &event) {
    const qint16 code = t.virtualKeyCode(event.key());
    // The host hears the key after the selection moved.
    const bool extended = t.d->settings.selectionMode == lsSelectionExtended;
    if (!(extended && m_range.key(code, shiftMask(event.modifiers()))))
        navigate(code);
    if (t.d->settings.keyboardSearch)
        search(event);
    emit t.KeyDown(code, shiftMask(event.modifiers()));
    if (const qint16 ascii = keyAscii(event.text(), code))
        emit t.KeyPress(ascii);
}

void TreeListInput::onToolTip(QHelpEvent &event) {
    if (!t.d->settings.showTips)
        return; // left ignored: the control, or a tooltip a host gave it, may answer
    const lsHitTestPtr hit = t.HitTest(event.pos().x(), event.pos().y());
    const lsNodePtr row = hit->HeaderRow() >= 1 ? t.d->headers->at(hit->HeaderRow())
                          : hit->DataRow() >= 1 ? rowOnLine(hit->DataRow())
                                                : nullptr;
    const qint32 column = hit->HeaderRow() >= 1 ? hit->HeaderCol() : hit->DataCol();
    const lsCell *cell = row && column >= 1 ? row->borrowCells().cell(column) : nullptr;
    const OffScreenDC *frame = t.surface();
    // The caption as the frame fits it into the cell, measured from the cell's text start.
    const bool shortened =
        cell && frame &&
        frame->AdjustText(cell->Xoffset(), cell->Width(), cell->Title()) != cell->Title();
    if (!shortened) {
        QToolTip::hideText();
        return;
    }
    QToolTip::showText(event.globalPos(), cell->Title(), t.d->picOut);
    event.accept();
}

void TreeListInput::search(const QKeyEvent &event) {
    // Characters typed with Ctrl or Alt are commands, not text.
    const bool command = event.modifiers() & (Qt::ControlModifier | Qt::AltModifier);
    const lsNodePtr current = t.d->rows->SelectedRow();
    const lsNodePtr found =
        m_typeAhead.typed(command ? QString() : event.text(), *t.d->rows, current);
    if (!found || found == current)
        return;
    const lsCellPtr cell = t.d->rows->SelectedCell();
    t.d->view->bringIntoView(found);
    selectRow(current, found, cell ? cell->Index() : 1);
}

void TreeListInput::navigate(qint16 keyCode) {
    const lsNodePtr row = t.d->rows->SelectedRow();
    const lsCellPtr selectedCell = t.d->rows->SelectedCell();
    const qint32 column = selectedCell ? selectedCell->Index() : 1;
    switch (keyCode) {
    case 38: // Up
    case 40: // Down
        if (row) {
            lsNodePtr next;
            if (keyCode == 38) {
                next = t.d->rows->GetPrevNode(row, true);
            } else {
                t.d->rows->SetFirstNode(row->Index());
                next = t.d->rows->GetNextNode(true);
            }
            // A row not on screen is reached by scrolling first; the selection stays until the
            // next key.
            if (next && next->Displayed())
                selectRow(row, next, column);
            else
                t.d->view->scrollBy(keyCode == 38, 1);
        }
        break;
    case 33: // Page Up
    case 34: // Page Down
        t.d->view->scrollBy(keyCode == 33, t.d->scrY->pageStep() - 1);
        break;
    case 36: // Home
        t.d->scrY->setValue(t.d->scrY->minimum());
        break;
    case 35: // End
        t.d->scrY->setValue(t.d->scrY->maximum());
        break;
    case 37: // Left
    case 39: // Right
        if (row && (keyCode == 37 ? column >= 2 : column < t.d->settings.columns)) {
            const qint32 to = keyCode == 37 ? column - 1 : column + 1;
            t.SelectItem(row->Index(), to);
            if (const lsCell *cell = row->borrowCells().cell(to))
                scrollCellIntoView(*cell);
        }
        break;
    case 13: // Enter
        if (row && row->HasChild() && t.d->settings.expandOnDoubleClick)
            toggleExpanded(row);
        break;
    default:
        break;
    }
}

void TreeListInput::scrollCellIntoView(const lsCell &cell) {
    if (t.d->scrX->isHidden())
        return;
    const qint32 shownFrom = -t.d->view->offset(), shownTo = shownFrom + t.d->picOut->ScaleWidth();
    if (cell.Left() < shownFrom)
        t.d->scrX->setValue(cell.Left());
    else if (cell.Left() + cell.Width() > shownTo)
        t.d->scrX->setValue(
            std::min(t.d->scrX->maximum(), cell.Left() + cell.Width() - (shownTo - shownFrom)));
}

// --- Selection and expansion --------------------------------------------------------------------

void TreeListInput::select(const lsNodePtr &row, qint32 column) {
    selectRow(t.d->rows->SelectedRow(), row, column);
    emit t.CellClick(row->Index(), column);
    emit t.Click();
}

void TreeListInput::toggleExpanded(const lsNodePtr &row) {
    t.setRowExpanded(row->Index(), !row->Expanded());
}

void TreeListInput::selectRow(const lsNodePtr &previous, const lsNodePtr &row, qint32 column,
                              bool multi) {
    m_range.setAnchor(row);
    // Only the rows whose look changes are painted again, in place over the kept frame when
    // nothing else changed since it was composed; otherwise the frame is composed anew.
    const bool frameWasCurrent = t.d->frames->rowsUnchangedSinceFrame();
    const qint32 selectedBefore = t.d->rows->Selected(row->Index(), column, multi);
    if (!multi && selectedBefore >= 2) {
        t.d->frames->RedrawFrame(false);
        return;
    }
    // The selection cleared the previous row's flags and set the new row's: their lines show it.
    bool inPlace = frameWasCurrent;
    if (!multi && previous && previous->Displayed())
        inPlace = inPlace && t.d->frames->repaintLineInPlace(previous);
    inPlace = inPlace && t.d->frames->repaintLineInPlace(row);
    if (inPlace)
        t.d->frames->keepFrameCurrent();
    else
        t.d->frames->RedrawFrame(false);
}

void TreeListInput::resetHit() {
    m_hit = std::make_shared<lsHitTest>();
}
