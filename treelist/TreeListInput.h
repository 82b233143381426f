#pragma once
// The control's mouse and keyboard: each event becomes what it means for the tree list (select a
// row or cell, open or close a row, scroll, drag a column border) and the host's events.

#include "lsHitTest.h"
#include "lsNodes.h"

#include <QtGlobal>

class QKeyEvent;
class QMouseEvent;
class QWheelEvent;
class vkTreeList;

class TreeListInput {
public:
    explicit TreeListInput(vkTreeList &t) : t(t) {}

    void onMousePress(const QMouseEvent &event);
    void onMouseDoubleClick();
    void onMouseMove(const QMouseEvent &event);
    void onMouseRelease(const QMouseEvent &event);
    void onWheel(const QWheelEvent &event);
    void onKeyPress(const QKeyEvent &event);

    // The hit test of the last mouse press (a fresh one until then; null once released).
    const lsHitTest *lastHit() const { return m_hit.get(); }
    void resetHit();
    void releaseHit() { m_hit.reset(); }
    // A frame was copied over the screen: a column drag's line goes back on top of it.
    void redrawDragLine();

private:
    void navigate(qint16 keyCode);
    lsNodePtr rowOnLine(qint32 line);
    void selectRow(const lsNodePtr &previous, const lsNodePtr &row, qint32 column,
                   bool multi = false);
    void toggleExpanded(const lsNodePtr &row);
    void trackColumnBorder(qint16 button, float x, float y);
    void endColumnDrag();
    void scrollCellIntoView(const lsCell &cell);

    vkTreeList &t;
    lsHitTestPtr m_hit;
    qint16 m_borderColumn = 0;  // the column whose border the pointer is over
    qint16 m_pressedBorder = 0; // the border column a left press landed on, until its release
    bool m_dragging = false;    // a column border is being dragged, its line drawn at m_dragX
    qint32 m_dragX = 0;
    bool m_doubleClicked = false; // the release that ends a double click raises no Click
    int m_wheelRemainder = 0;     // wheel turns not yet worth a line
};
