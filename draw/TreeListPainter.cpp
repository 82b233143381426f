#include "TreeListPainter.h"

#include "IconPicture.h"
#include "IndexKey.h"
#include "TreeListError.h"

#include <array>
#include <cmath>

namespace {

constexpr OleColor kHighlight = 0x8000000D; // selected row with focus
constexpr OleColor kHighlightText = 0x8000000E;
constexpr OleColor kButtonFace = 0x8000000F; // selected row without focus
constexpr OleColor kWindow = 0x80000005;     // inside a plus/minus box
constexpr OleColor kWindowText = 0x80000008; // its sign

qint32 roundHalfEven(double v) {
    return static_cast<qint32>(std::nearbyint(v));
}

// The Top of a row's first cell: where layout put the row.
qint32 rowTop(lsNode &row) {
    const lsCell *first = row.borrowCells().cell(1);
    return first ? first->Top() : 0;
}

} // namespace

// --- Rows ---------------------------------------------------------------------------------------

RowPaintResult TreeListPainter::paintRows(OffScreenDC &dc, lsNodes &rows, lsIdent &ident,
                                          qint32 widestText) const {
    RowPaintResult result = layoutRows(rows, ident);
    result.widestText = widestText;
    paintLaidOutRows(dc, rows, ident, result.shown, result.widestText);
    return result;
}

RowPaintResult TreeListPainter::layoutRows(lsNodes &rows, lsIdent &ident) const {
    RowPaintResult result;
    if (rows.Count() == 0)
        return result;
    // The rows on screen are the Visible rows from the first displayed one on, one per line;
    // every other row is not displayed. Only rows that carry the flag need clearing, and the
    // Visible rows are reached by their rank, so the pass costs the rows on screen. The header
    // rows take one line each and the data lines that fit come after them: a line counter that
    // starts at the header count stops at the header count plus the lines that fit, so no band is
    // left empty at the bottom whatever the number of header rows.
    rows.ClearDisplayed();
    qint32 line = m_ctx.headers;
    const qint32 end = m_ctx.headers + m_ctx.visibleLineCount;
    const qint32 rank =
        rows.VisibleRowsUpTo(std::min(m_ctx.firstDisplayedRow - 1, rows.Count())) + 1;
    result.shown = rows.VisibleRowsFrom(rank, end - line);
    // Rows of one level without an icon of their own start their text at the same place (the
    // built-in picture's width after the indentation, far from any overflow at these levels):
    // it is measured once a layout.
    constexpr qint32 kRememberedLevels = 64;
    std::array<qint32, kRememberedLevels> plainTextX;
    plainTextX.fill(-1);
    for (const lsNodePtr &row : result.shown) {
        placeRow(rows, row, line);
        // The first column's text starts after the tree part.
        if (lsCell *first = row->borrowCells().cell(1)) {
            const qint32 level = row->IdentLevel();
            const bool plain =
                level >= 0 && level < kRememberedLevels && isEmptyText(first->Icon());
            if (plain && plainTextX[size_t(level)] >= 0) {
                first->setXoffset(plainTextX[size_t(level)]);
            } else {
                placeText(row, ident);
                if (plain)
                    plainTextX[size_t(level)] = ident.TextX();
            }
        }
        result.lastPaintedRow = row->Index();
        ++line;
    }
    result.painted = static_cast<qint32>(result.shown.size());
    return result;
}

void TreeListPainter::paintLaidOutRows(OffScreenDC &dc, const lsNodes &rows, lsIdent &ident,
                                       const std::vector<lsNodePtr> &shown,
                                       qint32 &widestText) const {
    // Cells first, then every line, then every picture, so that opaque pictures cover line ends.
    // The cells pass draws nothing under another row's cells, so on a surface just cleared a
    // cell of the clearing colour leaves its box as it is: a frame fills its pixels once.
    dc.setFillSkipped(m_ctx.clearedTo);
    for (const lsNodePtr &row : shown) {
        ident.Refresh(row, m_ctx.rowHeight, m_ctx.imageList, m_ctx.scale);
        paintRow(dc, rows, *row, ident);
    }
    dc.setFillSkipped(std::nullopt);
    drawLines(dc, rows, ident, shown, widestText);
    drawPictures(dc, ident, shown, 0, shown.size());
}

void TreeListPainter::repaintRows(OffScreenDC &dc, const lsNodes &rows, lsIdent &ident,
                                  const std::vector<lsNodePtr> &shown, size_t from, size_t to,
                                  qint32 &widestText) const {
    // The same three passes as a frame, in the same order, so that wherever they overlap the last
    // one drawn wins as it does in a frame. Lines of any row shown may cross these rows.
    for (size_t i = from; i < to; ++i) {
        ident.Refresh(shown[i], m_ctx.rowHeight, m_ctx.imageList, m_ctx.scale);
        paintRow(dc, rows, *shown[i], ident);
    }
    drawLines(dc, rows, ident, shown, widestText);
    drawPictures(dc, ident, shown, from, to);
}

void TreeListPainter::placeText(const lsNodePtr &row, lsIdent &ident) const {
    if (lsCell *first = row->borrowCells().cell(1)) {
        ident.Refresh(row, m_ctx.rowHeight, m_ctx.imageList, m_ctx.scale);
        first->setXoffset(ident.TextX());
    }
}

void TreeListPainter::placeRow(lsNodes &rows, const lsNodePtr &row, qint32 line) const {
    rows.markDisplayed(row);
    const qint32 top = line * m_ctx.rowHeight;
    const lsCells &cells = row->borrowCells();
    // Cells are placed side by side from their widths, like header cells, so that a column whose
    // width changed after its rows were added stays under its header. A row wider than 32 bits
    // overflows, as its Width does.
    qint32 x = 0;
    for (qint32 c = 1; c <= m_ctx.columns; ++c) {
        if (lsCell *cell = cells.cell(c)) {
            cell->setLeft(x);
            x = toInt32(qint64(x) + cell->Width());
            cell->setTop(top);
            cell->setHeight(m_ctx.rowHeight);
            cell->setVisible(true);
        }
    }
}

void TreeListPainter::drawLines(OffScreenDC &dc, const lsNodes &rows, lsIdent &ident,
                                const std::vector<lsNodePtr> &shown, qint32 &widestText) const {
    // Every line before any picture, so that opaque pictures cover line ends.
    for (const lsNodePtr &row : shown) {
        if (row == shown.front()) {
            // Lines of ancestors scrolled above the view continue from the top edge.
            for (lsNodePtr anc = row->Parent(); anc; anc = anc->Parent()) {
                ident.Refresh(anc, m_ctx.rowHeight, m_ctx.imageList, m_ctx.scale);
                ident.setTreeLineY1(0);
                DrawSiblingLine(dc, rows, anc, ident, true);
                DrawChildLine(dc, anc, ident);
            }
        }
        ident.Refresh(row, m_ctx.rowHeight, m_ctx.imageList, m_ctx.scale);
        widestText = std::max(widestText, ident.TextX());
        DrawSiblingLine(dc, rows, row, ident, true);
        const qint32 treeLineX = ident.TreeLineX();
        const qint32 boxMiddle = ident.TreeLineY1();
        if (const lsNodePtr prev = row->PrevSibling()) {
            if (prev->Displayed()) {
                ident.Refresh(prev, m_ctx.rowHeight, m_ctx.imageList, m_ctx.scale);
                widestText = std::max(widestText, ident.TextX());
                DrawSiblingLine(dc, rows, prev, ident, false);
            } else {
                // The previous sibling lies above the view and its cell positions are from an
                // older frame: join this row to the top edge instead of trusting them.
                drawTreeLine(dc, treeLineX, 0, treeLineX, boxMiddle);
            }
            ident.Refresh(row, m_ctx.rowHeight, m_ctx.imageList, m_ctx.scale);
        }
        DrawChildLine(dc, row, ident);
    }
}

void TreeListPainter::drawPictures(OffScreenDC &dc, lsIdent &ident,
                                   const std::vector<lsNodePtr> &shown, size_t from,
                                   size_t to) const {
    for (size_t i = from; i < to; ++i) {
        ident.Refresh(shown[i], m_ctx.rowHeight, m_ctx.imageList, m_ctx.scale);
        DrawNodePictures(dc, *shown[i], ident);
    }
}

qint16 TreeListPainter::paintMode(const lsNodes &rows, const lsNode &row) const {
    const lsNodePtr selected = rows.SelectedRow();
    // Only the collection's selected row looks selected; a row's own flag can be left over from
    // an earlier selection that went while the row was hidden. With MultiSelect, rows picked
    // beside it carry just that flag, and look selected too.
    if ((selected && selected->Index() == row.Index()) || (m_ctx.multiSelect && row.Selected()))
        return m_ctx.hasFocus ? -1 : 1;
    return 0;
}

void TreeListPainter::paintRow(OffScreenDC &dc, const lsNodes &rows, lsNode &row,
                               const lsIdent &ident) const {
    const qint16 mode = paintMode(rows, row);
    const lsCells &cells = row.borrowCells();
    // The first column's text starts after the tree part.
    if (lsCell *first = cells.cell(1))
        first->setXoffset(ident.TextX());
    for (qint32 c = 1; c <= m_ctx.columns; ++c)
        if (lsCell *cell = cells.cell(c))
            PaintCell(dc, *cell, mode);
    if (row.Displayed())
        drawTreeLine(dc, ident.NodeLineX1(), ident.NodeLineY(), ident.NodeLineX2(),
                     ident.NodeLineY());
}

// --- Cells --------------------------------------------------------------------------------------

qint32 TreeListPainter::PictureWidthPixels(const StdPicture &picture) const {
    const double himetric = picture.Width();
    const double px = m_ctx.scale ? m_ctx.scale->ScaleX(himetric, 8, 3) : himetric * 96.0 / 2540.0;
    return roundHalfEven(px);
}

void TreeListPainter::PaintCell(OffScreenDC &dc, lsCell &cell, qint16 mode) const {
    const bool hasIcon = !isEmptyText(cell.Icon());
    // Cell pictures come from the image list only.
    StdPicturePtr picture;
    if (hasIcon && m_ctx.imageList)
        picture = iconPicture(cell.Icon(), m_ctx.imageList);

    // The first column keeps the offset the row painter gave it (the text start).
    if (hasIcon && cell.Index() >= 2 && m_ctx.imageList)
        cell.setXoffset(picture ? PictureWidthPixels(*picture) : 0);

    CaptionAlignments align = caCenterRight;
    if (cell.Alignment() == lsAlignLeftJustify)
        align = caCenterLeft;
    else if (cell.Alignment() == lsAlignCenter)
        align = caCenterCenter;

    OleColor back = cell.BackColor();
    OleColor text = cell.Color();
    if (mode == -1) {
        back = kHighlight;
        text = kHighlightText;
    } else if (mode == 1) {
        back = kButtonFace;
    }

    // Bold is set on the control's own font object, shared with every holder, and cleared after
    // the cell whatever it was before.
    StdFontPtr font = dc.Font();
    if (cell.Bold() && font) {
        font->setBold(true);
        dc.setFont(font);
    }
    dc.DrawRect(cell.Left(), cell.Top(), cell.Width(), cell.Height(), back, text, cell.Title(),
                cell.Xoffset(), align, static_cast<Appearances>(cell.Appearance()));
    if (cell.Bold() && font) {
        font->setBold(false);
        dc.setFont(font);
    }

    if (m_ctx.focusType == lsSelectCell && cell.Selected())
        dc.DrawFocusRect(cell.Left() + cell.Xoffset(), cell.Top(), cell.Left() + cell.Width(),
                         cell.Top() + cell.Height());

    // Pictures of the other columns sit at the cell's left edge; square pictures, so the width
    // centres them vertically too.
    if (hasIcon && cell.Left() >= 1 && picture) {
        const qint32 size = PictureWidthPixels(*picture);
        // The whole sum is rounded (half to even), as row geometry rounds its picture top.
        const qint32 y = roundHalfEven(cell.Top() + (m_ctx.rowHeight - size) / 2.0);
        dc.DrawPicture(picture, cell.Left(), y);
    }
}

// --- Tree part ----------------------------------------------------------------------------------

void TreeListPainter::drawTreeLine(OffScreenDC &dc, qint32 x1, qint32 y1, qint32 x2,
                                   qint32 y2) const {
    if (m_ctx.lineStyle != lsLineSolid && m_ctx.lineStyle != lsLineDotted)
        return;
    dc.DrawLine(x1, y1, x2, y2, m_ctx.lineColor, m_ctx.gapColor, m_ctx.lineStyle == lsLineDotted);
}

void TreeListPainter::DrawSiblingLine(OffScreenDC &dc, const lsNodes &rows, const lsNodePtr &row,
                                      const lsIdent &ident, bool downwards) const {
    const lsNodePtr other = downwards ? rows.GetLastSibling(row) : row->PrevSibling();
    if (!other)
        return;
    const qint32 x = ident.TreeLineX();
    const qint32 y1 = ident.TreeLineY1();
    qint32 y2;
    if (other->Displayed())
        y2 = rowTop(*other) + ident.TreeLineY2();
    else
        y2 = downwards ? m_ctx.scaleHeight : 0;
    if (y1 != y2)
        drawTreeLine(dc, x, y1, x, y2);
}

void TreeListPainter::DrawChildLine(OffScreenDC &dc, const lsNodePtr &row,
                                    const lsIdent &ident) const {
    const lsNodePtr last = row->LastChild();
    if (!row->HasChild() || !last || !row->Expanded())
        return;
    const qint32 x = ident.ChildLineX();
    const qint32 y1 = ident.TreeLineY1();
    qint32 y2;
    if (last->Displayed())
        y2 = rowTop(*last) + ident.TreeLineY2();
    else if (last->Index() >= m_ctx.firstDisplayedRow)
        y2 = m_ctx.scaleHeight; // the last child comes after the rows shown
    else
        return; // the whole branch lies above the view
    if (y1 != y2)
        drawTreeLine(dc, x, y1, x, y2);
}

StdPicturePtr TreeListPainter::builtin(int number) const {
    if (!m_ctx.pictures || number < 101 || number > 106)
        return nullptr;
    return (*m_ctx.pictures)[static_cast<size_t>(number - 101)];
}

StdPicturePtr TreeListPainter::nodePicture(const lsNode &row) const {
    const lsCell *first = const_cast<lsNode &>(row).borrowCells().cell(1);
    const QVariant icon = first ? first->Icon() : emptyText();
    if (isEmptyText(icon)) {
        if (!row.HasChild())
            return builtin(105);
        return builtin(row.Expanded() ? 103 : 104);
    }
    // Without an image list the Icon names a built-in picture or nothing; with one, a key the
    // list lacks shows the leaf picture.
    StdPicturePtr picture = iconPicture(icon, m_ctx.imageList);
    if (!picture && m_ctx.imageList)
        picture = builtin(105);
    return picture;
}

void TreeListPainter::DrawNodePictures(OffScreenDC &dc, const lsNode &row,
                                       const lsIdent &ident) const {
    if (!row.Visible())
        return;
    // The box is drawn, not copied from its picture, so its edges and sign stay on whole device
    // pixels at any ratio and take the palette's colours; at the unit ratio under the classic
    // palette it is the picture, pixel for pixel.
    if (const StdPicturePtr box = builtin(row.Expanded() ? 101 : 102); box && row.HasChild())
        dc.DrawExpandBox(ident.ExpX(), ident.ExpY(), box->pixelWidth(), !row.Expanded(),
                         m_ctx.lineColor, kWindow, kWindowText);
    const StdPicturePtr picture = row.Marked() ? builtin(106) : nodePicture(row);
    if (picture)
        dc.DrawPicture(picture, ident.picX(), ident.PicY());
}

// --- Headers ------------------------------------------------------------------------------------

void TreeListPainter::paintHeaders(OffScreenDC &dc, lsNodes &headers) const {
    layoutHeaders(headers);
    paintLaidOutHeaders(dc, headers);
}

void TreeListPainter::layoutHeaders(lsNodes &headers) const {
    // Every header row is placed on every frame: the marks start afresh, or the collection would
    // remember each header row it ever had (and keep its memory from being given back).
    headers.ClearDisplayed();
    for (lsNodePtr row = headers.SetFirstNode(); row; row = headers.GetNextNode(true)) {
        headers.markDisplayed(row);
        const qint32 top = (row->Index() - 1) * m_ctx.rowHeight;
        qint32 x = 0;
        const lsCells &cells = row->borrowCells();
        // Header cells are placed from their widths on every frame; a hidden one takes no room.
        for (qint32 c = 1; c <= m_ctx.columns; ++c) {
            lsCell *cell = cells.cell(c);
            if (!cell || !cell->Visible())
                continue;
            cell->setLeft(x);
            x = toInt32(qint64(x) + cell->Width());
            cell->setTop(top);
            cell->setHeight(m_ctx.rowHeight);
            cell->setXoffset(0);
        }
    }
}

void TreeListPainter::paintLaidOutHeaders(OffScreenDC &dc, lsNodes &headers) const {
    for (lsNodePtr row = headers.SetFirstNode(); row; row = headers.GetNextNode(true)) {
        const lsCells &cells = row->borrowCells();
        for (qint32 c = 1; c <= m_ctx.columns; ++c) {
            lsCell *cell = cells.cell(c);
            if (cell && cell->Visible())
                PaintCell(dc, *cell, 0);
        }
    }
}
