#pragma once
// The columns' widths: read and set in the host's scale unit, sized to their texts, and dragged
// by their borders in the first header row.

#include <QtGlobal>

class vkTreeList;

class ColumnGeometry {
public:
    explicit ColumnGeometry(vkTreeList &t) : t(t) {}

    // Width of a column in the control's scale mode, -1 when there is no such column or row.
    qint32 width(qint32 column) const;
    // Sets a column's width in every header and data row; a row without it raises.
    void setWidth(qint32 column, qint32 width);
    // Sizes a column to its longest text (its first cells' tree part included).
    void autoSize(qint32 column);

    // A mouse press: a left press on a border lets the drag start with the next move.
    void press(qint16 button);
    // A double click on a border sizes that column to its texts; true when it was on one.
    bool autoSizeUnderPointer();
    // The pointer moved with these buttons held: the border under it is shown, dragged or let go.
    void track(qint16 button, float x, float y);
    // The buttons were let go; `leftHeld` when the left one still is.
    void release(bool leftHeld);
    // A frame was copied over the screen: a drag's line goes back on top of it.
    void redrawDragLine();

private:
    void endDrag();

    vkTreeList &t;
    qint16 m_borderColumn = 0;  // the column whose border the pointer is over
    qint16 m_pressedBorder = 0; // the border column a left press landed on, until its release
    bool m_dragging = false;    // a border is being dragged, its line drawn at m_dragX
    qint32 m_dragX = 0;
};
