#pragma once
// The control's mouse and keyboard: each event becomes what it means for the tree list (select a
// row or cell, open or close a row, scroll) and the host's events; a drag of a column border goes
// to the column geometry.

#include "RangeSelection.h"
#include "TypeAhead.h"
#include "lsHitTest.h"
#include "lsNodes.h"

#include <QtGlobal>

class QHelpEvent;
class QKeyEvent;
class QMouseEvent;
class QWheelEvent;
class vkTreeList;

class TreeListInput {
public:
    explicit TreeListInput(vkTreeList &t);

    void onMousePress(const QMouseEvent &event);
    void onMouseDoubleClick();
    void onMouseMove(const QMouseEvent &event);
    void onMouseRelease(const QMouseEvent &event);
    void onWheel(const QWheelEvent &event);
    void onKeyPress(const QKeyEvent &event);
    // With ShowTips on, a cell whose caption the frame shortened shows it whole in a tooltip.
    void onToolTip(QHelpEvent &event);

    // What a click on a row's cell does to it, for assistive technology: selects the cell and
    // raises CellClick and Click; opens or closes the row.
    void select(const lsNodePtr &row, qint32 column);
    void toggle(const lsNodePtr &row) { toggleExpanded(row); }

    // The hit test of the last mouse press (a fresh one until then; null once released).
    const lsHitTest *lastHit() const { return m_hit.get(); }
    void resetHit();
    void releaseHit() { m_hit.reset(); }

private:
    void navigate(qint16 keyCode);
    // With KeyboardSearch on, goes to the row the typed text names.
    void search(const QKeyEvent &event);
    lsNodePtr rowOnLine(qint32 line);
    void selectRow(const lsNodePtr &previous, const lsNodePtr &row, qint32 column,
                   bool multi = false);
    void toggleExpanded(const lsNodePtr &row);
    void scrollCellIntoView(const lsCell &cell);

    vkTreeList &t;
    lsHitTestPtr m_hit;
    bool m_doubleClicked = false; // the release that ends a double click raises no Click
    int m_wheelRemainder = 0;     // wheel turns not yet worth a line
    TypeAhead m_typeAhead;
    RangeSelection m_range;
};
