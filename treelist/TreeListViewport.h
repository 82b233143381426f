#pragma once
// The control's view onto its rows: how many lines fit, which row is shown first, how far the
// rows are scrolled sideways, and the scroll bars that show and move all of it.

#include "lsNode.h"

#include <QRect>
#include <QtGlobal>
#include <optional>
#include <utility>

class QVariant;
class vkTreeList;

class TreeListViewport {
public:
    explicit TreeListViewport(vkTreeList &t) : t(t) {}

    // Index of the row drawn right under the header rows.
    qint16 firstRow() const { return m_firstDisplayedRow; }
    void setFirstRow(qint16 row) { m_firstDisplayedRow = row; }
    // Data lines that fit under the header rows, a partial line counted.
    qint16 lineCount() const { return m_visibleLineCount; }
    // Horizontal scroll offset in pixels (zero or negative).
    qint32 offset() const { return m_horizontalOffset; }
    // The rows whose Visible is set, as last counted.
    qint32 displayedRows() const { return m_displayedRowCount; }
    void setDisplayedRows(qint32 count) { m_displayedRowCount = count; }
    // Forgets where the view was: no lines, first row and offset at their start.
    void reset();

    // Counts the lines that fit and the visible rows again; true when more lines fit than
    // before and the rows fill them.
    bool lineCapacity();
    // Data lines that fit under the header rows, a partial line counted.
    qint16 fittingLineCount();
    // Data lines that fit wholly under the header rows.
    qint32 wholeLineCount();
    // The rows a visible-only walk reaches: exactly those whose Visible is set.
    qint32 displayedRowCount();
    // Moves the first row shown to a row a person can still reach after a collapse.
    void keepFirstRowReachable();
    // Shows, hides, sizes and sets the bars for the rows and the view as they are now.
    void layoutScrollBars();
    // The bars moved (by a person or by a put of their value).
    void onVerticalScroll(int value);
    void onHorizontalScroll(int value);
    // Moves the vertical bar by `amount` lines, clamped to its range.
    void scrollBy(bool upwards, qint32 amount);
    // Scrolls a row below the view in as the last line; never scrolls up.
    void ensureVisible(const QVariant &IndexKey);
    // Scrolls a visible row onto a whole line: up to the first line from above the view, down to
    // the last from below it.
    void bringIntoView(const lsNodePtr &row);
    // Brings a row just added into view, the bars first told about it.
    void scrollIntoView(qint32 rowIndex);

private:
    // What the bar layout reads besides the displayed row count, and the bars as it left them.
    struct BarLayout {
        qint32 whole, extent, scaleWidth, rowWidth;
        QRect area;
        qint32 offset;
        bool vertical;
        bool operator==(const BarLayout &) const = default;
    };
    struct BarStates {
        qint32 yMinimum, yMaximum, xValue;
        bool yShown, xShown;
        bool operator==(const BarStates &) const = default;
    };
    BarStates barStates() const;
    void followVerticalBar(qint32 position);
    qint32 scrollBarExtent() const;
    qint32 horizontalBarHeight() const;
    qint32 rowAtDisplayPosition(qint32 count);
    qint32 displayPosition(qint32 rowIndex);

    vkTreeList &t;
    bool m_suspend = false; // while the bars' ranges are written: their moves are not scrolls
    qint16 m_visibleLineCount = 0;
    qint32 m_displayedRowCount = 0;
    qint16 m_firstDisplayedRow = 0;
    qint32 m_horizontalOffset = 0;
    std::optional<std::pair<BarLayout, BarStates>> m_barLayout; // of the last full bar layout
};
