#include "lsHitTest.h"

#include "TreeListError.h"
#include "VariantNumber.h"

#include <cmath>

void lsHitTest::Clear() {
    *this = lsHitTest();
}

void lsHitTest::clearIds() {
    m_DataRow = m_DataCol = m_HeaderRow = m_HeaderCol = -1;
}

bool lsHitTest::Refresh(const QVariant &X, const QVariant &Y, qint32 RowHeight,
                        const lsNodes *Headers, const lsNodes *Rows, qint16 Button, qint16 Shift) {
    if (!isNumeric(X) || !isNumeric(Y) || !hasRows(Headers, Rows)) {
        clearIds();
        return false;
    }
    return locate(toNumber(X), toNumber(Y), RowHeight, Headers, Rows, Button, Shift);
}

bool lsHitTest::locate(double X, double Y, qint32 RowHeight, const lsNodes *Headers,
                       const lsNodes *Rows, qint16 Button, qint16 Shift) {
    if (!hasRows(Headers, Rows)) {
        clearIds();
        return false;
    }
    // Both round before anything is stored: an overflowing Y leaves the fields as they were.
    const qint32 x = roundToLong(X), y = roundToLong(Y);
    if (RowHeight == 0)
        divide(y, RowHeight); // raises the error a division by zero gives
    m_X = x;
    m_Y = y;
    m_Button = Button;
    m_Shift = Shift;
    // Toward minus infinity: a point above the surface gives line 0 or less, a header row that
    // does not exist, on purpose (callers rule it out by the row they find). Integer division
    // floors exactly as the floating-point quotient would for any 32-bit values.
    qint64 quotient = qint64(y) / RowHeight;
    if (quotient * RowHeight != y && ((y < 0) != (RowHeight < 0)))
        --quotient;
    const qint32 line = toInt32(quotient + 1);
    const qint32 headers = Headers->Count();
    if (line > headers) {
        m_DataRow = line - headers;
        m_DataCol = FindColumn(Rows, m_X);
        m_HeaderRow = m_HeaderCol = -1;
    } else {
        m_DataRow = m_DataCol = -1;
        m_HeaderRow = line;
        m_HeaderCol = FindColumn(Headers, m_X);
    }
    return true;
}

bool lsHitTest::hasRows(const lsNodes *Headers, const lsNodes *Rows) {
    return Headers && Rows && (Headers->Count() > 0 || Rows->Count() > 0);
}

qint32 lsHitTest::FindColumn(const lsNodes *Rows, qint32 X) const {
    // All rows share the cell positions of the first: the test is one-sided, so a point left of
    // the first column falls in column 1 and a column's right edge belongs to it.
    // The first stored row, not the count: after a duplicate key the count includes a row that
    // has no position.
    const lsNodePtr first = Rows ? Rows->at(1) : nullptr;
    return first ? first->borrowCells().firstReaching(X) : -1;
}

bool lsHitTest::IsPlusMinusClick(const lsIdent &mIdent, const QVariant &X, const QVariant &Y) {
    if (!isNumeric(X) || !isNumeric(Y))
        return false;
    m_IdentSize = mIdent.IdentSize();
    const double x = toNumber(X), y = toNumber(Y);
    // Both bounds inclusive: the hit area is one pixel wider and taller than the box.
    if (x >= mIdent.ExpX() && x <= double(mIdent.ExpX()) + mIdent.ExpWidth() &&
        y >= mIdent.ExpY() && y <= double(mIdent.ExpY()) + mIdent.ExpHeight()) {
        m_Indent = mIdent.IdentIndex();
        m_PlusMinus = true;
        return true;
    }
    return false;
}
