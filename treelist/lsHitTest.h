#pragma once
// Calculates which object of vkTreeList is at the specified X and Y location: a header cell, a
// data cell or the plus/minus box of a row. It is both the engine and the result: a caller clears
// it, asks it to compute, then reads its properties. Every property is a plain stored value.

#include "lsIdent.h"
#include "lsNodes.h"
#include "vkTreeListExport.h"

#include <QObject>
#include <QVariant>
#include <memory>

class VKTL_EXPORT lsHitTest {
    Q_GADGET
    // The help texts Qt tools show; their wording and spelling are part of the interface.
    Q_CLASSINFO("Description",
                "Calculates which object of vkTreeList is at the spcified X and Y location.")
    Q_CLASSINFO("Button", "Mouse button")
    Q_CLASSINFO("Shift", "Shift, Control or Alt key used.")
    Q_CLASSINFO("X", "X position in pixels.")
    Q_CLASSINFO("Y", "Y position in pixels.")
    Q_CLASSINFO("DataRow", "Data row ID. (-1 if not data row clicked)")
    Q_CLASSINFO("DataCol", "Data Col ID. (-1 if not data column clicked)")
    Q_CLASSINFO("HeaderRow", "Header row ID. (-1 if not header row clicked)")
    Q_CLASSINFO("HeaderCol", "HeaderCol ID. (-1 if not header column clicked)")
    Q_CLASSINFO("PlusMinus", "True if Plus/Minus clicked.")
    Q_CLASSINFO("Indent", "Indentation level if Plus/Minus clicked.")

public:
    // Makes a hit test with every field as after Clear.
    lsHitTest() = default;

    // Sets every field to its cleared value (IDs -1, box 9 x 9 at top 4, IdentSize 19).
    void Clear();
    // Classifies the point (X, Y) on the drawing surface against the header rows and the rows;
    // returns False, with the four IDs at -1, when X or Y is not a number or there are no rows.
    bool Refresh(const QVariant &X, const QVariant &Y, qint32 RowHeight, const lsNodes *Headers,
                 const lsNodes *Rows, qint16 Button = 0, qint16 Shift = 0);
    // The same for a point already read as numbers (the control's own events and HitTest).
    bool locate(double X, double Y, qint32 RowHeight, const lsNodes *Headers, const lsNodes *Rows,
                qint16 Button = 0, qint16 Shift = 0);
    // The 1-based column at X in the first row of `Rows`, or -1 (right of the last column or no
    // rows). A point left of the first column counts for column 1.
    qint32 FindColumn(const lsNodes *Rows, qint32 X) const;
    // True when (X, Y) lies on the plus/minus box `mIdent` describes, edges included; then sets
    // Indent and PlusMinus.
    bool IsPlusMinusClick(const lsIdent &mIdent, const QVariant &X, const QVariant &Y);

    // The fields the help texts above describe, each read and written as it is stored.
    qint16 Button() const { return m_Button; }
    void setButton(qint16 v) { m_Button = v; }
    qint16 Shift() const { return m_Shift; }
    void setShift(qint16 v) { m_Shift = v; }
    qint32 X() const { return m_X; }
    void setX(qint32 v) { m_X = v; }
    qint32 Y() const { return m_Y; }
    void setY(qint32 v) { m_Y = v; }
    qint32 DataRow() const { return m_DataRow; }
    void setDataRow(qint32 v) { m_DataRow = v; }
    qint32 DataCol() const { return m_DataCol; }
    void setDataCol(qint32 v) { m_DataCol = v; }
    qint32 HeaderRow() const { return m_HeaderRow; }
    void setHeaderRow(qint32 v) { m_HeaderRow = v; }
    qint32 HeaderCol() const { return m_HeaderCol; }
    void setHeaderCol(qint32 v) { m_HeaderCol = v; }
    bool PlusMinus() const { return m_PlusMinus; }
    void setPlusMinus(bool v) { m_PlusMinus = v; }
    qint32 Indent() const { return m_Indent; }
    void setIndent(qint32 v) { m_Indent = v; }
    // Width of one indentation level, as the row geometry last gave it.
    qint32 IdentSize() const { return m_IdentSize; }
    void setIdentSize(qint32 v) { m_IdentSize = v; }
    // The plus/minus box's size and place.
    qint32 PlusMinusWidth() const { return m_PlusMinusWidth; }
    void setPlusMinusWidth(qint32 v) { m_PlusMinusWidth = v; }
    qint32 PlusMinusHeight() const { return m_PlusMinusHeight; }
    void setPlusMinusHeight(qint32 v) { m_PlusMinusHeight = v; }
    qint32 PlusMinusLeft() const { return m_PlusMinusLeft; }
    void setPlusMinusLeft(qint32 v) { m_PlusMinusLeft = v; }
    qint32 PlusMinusTop() const { return m_PlusMinusTop; }
    void setPlusMinusTop(qint32 v) { m_PlusMinusTop = v; }

private:
    static bool hasRows(const lsNodes *Headers, const lsNodes *Rows);
    void clearIds();

    qint16 m_Button = 0;
    qint16 m_Shift = 0;
    qint32 m_X = 0;
    qint32 m_Y = 0;
    qint32 m_DataRow = -1;
    qint32 m_DataCol = -1;
    qint32 m_HeaderRow = -1;
    qint32 m_HeaderCol = -1;
    bool m_PlusMinus = false;
    qint32 m_Indent = 0;
    qint32 m_IdentSize = 19;
    qint32 m_PlusMinusWidth = 9;
    qint32 m_PlusMinusHeight = 9;
    qint32 m_PlusMinusLeft = 0;
    qint32 m_PlusMinusTop = 4;
};

using lsHitTestPtr = std::shared_ptr<lsHitTest>;
