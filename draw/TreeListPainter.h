#pragma once
// Paints the tree list's rows and header rows onto the off-screen surface. The chain is
// paintRows -> (cells pass: paintRow -> PaintCell, node line) -> (lines pass: DrawSiblingLine,
// DrawChildLine) -> (pictures pass: DrawNodePictures), then paintHeaders -> PaintCell.
// Everything the painters read of the control is packed into a PaintContext first. The row
// painter is also the row layout: it places the cells of the rows it shows and keeps every row's
// Displayed flag, which scrolling and keyboard navigation read afterwards.

#include "OffScreenDC.h"
#include "ScaleConverter.h"
#include "StdPicture.h"
#include "lsIdent.h"
#include "lsImageList.h"
#include "lsNodes.h"

#include <array>
#include <optional>
#include <vector>

// What the painters read of the control, gathered once per frame.
struct PaintContext {
    qint32 rowHeight = 0;
    qint32 columns = 0;
    qint32 lineStyle = 0;
    qint32 focusType = 0;
    bool hasFocus = false;           // chooses the selected row's look (highlight or button face)
    bool multiSelect = false;        // rows picked beside the selected one look selected too
    qint32 headers = 0;              // header lines above the rows
    qint32 firstDisplayedRow = 1;    // Index of the row under the header rows
    qint32 visibleLineCount = 0;     // data lines that fit (a partial line counts)
    qint32 scaleHeight = 0;          // height of the drawing area, where lines run off the view
    OleColor gapColor = 0;           // the drawing child's background: gaps of dotted lines
    OleColor lineColor = 0x80000010; // tree lines: the palette's mid shade (classic: button shadow)
    // The surface was just cleared to this colour: cells of it need not fill their boxes.
    std::optional<OleColor> clearedTo;
    const lsImageList *imageList = nullptr;
    const ScaleSource *scale = nullptr;
    const std::array<StdPicturePtr, 6> *pictures = nullptr; // built-in pictures 101..106
};

// What a row frame leaves behind for the control.
struct RowPaintResult {
    qint32 painted = 0;           // rows counted by the last pass
    qint32 lastPaintedRow = 0;    // Index of the last row shown
    qint32 widestText = 0;        // greatest text start met in the lines pass
    std::vector<lsNodePtr> shown; // the rows on screen, top to bottom
};

class TreeListPainter {
public:
    explicit TreeListPainter(const PaintContext &context) : m_ctx(context) {}

    // Lays out and paints every shown row in three passes (cells, lines, pictures).
    RowPaintResult paintRows(OffScreenDC &dc, lsNodes &rows, lsIdent &ident,
                             qint32 widestText) const;
    // The layout half of paintRows: which rows are shown, their Displayed flags, their cells'
    // places and the first cell's text offset. `widestText` of the result is 0.
    RowPaintResult layoutRows(lsNodes &rows, lsIdent &ident) const;
    // The painting half: the rows a layout showed, in the same three passes.
    void paintLaidOutRows(OffScreenDC &dc, const lsNodes &rows, lsIdent &ident,
                          const std::vector<lsNodePtr> &shown, qint32 &widestText) const;
    // Paints shown[from, to) again over a frame of `shown`: cells, every shown row's lines,
    // pictures. The caller clears their lines and clips the surface to them.
    void repaintRows(OffScreenDC &dc, const lsNodes &rows, lsIdent &ident,
                     const std::vector<lsNodePtr> &shown, size_t from, size_t to,
                     qint32 &widestText) const;
    // Marks a row displayed and places its cells on a line (0 is the top one).
    void placeRow(lsNodes &rows, const lsNodePtr &row, qint32 line) const;
    // Puts where the text of the row's first cell starts, after its tree part, into the cell's
    // Xoffset (`ident` is refreshed for the row).
    void placeText(const lsNodePtr &row, lsIdent &ident) const;
    // Places and paints the header rows over the first lines.
    void paintHeaders(OffScreenDC &dc, lsNodes &headers) const;
    // The two halves of paintHeaders.
    void layoutHeaders(lsNodes &headers) const;
    void paintLaidOutHeaders(OffScreenDC &dc, lsNodes &headers) const;

    // Paints one shown row: its cells in the selection look and its node line. `ident` must be
    // refreshed for the row.
    void paintRow(OffScreenDC &dc, const lsNodes &rows, lsNode &row, const lsIdent &ident) const;
    // Paints one cell in paint mode 0 (normal), -1 (selected, focused) or 1 (selected, unfocused).
    void PaintCell(OffScreenDC &dc, lsCell &cell, qint16 mode) const;
    // The vertical line from a row down to its last sibling, or up to its previous sibling.
    void DrawSiblingLine(OffScreenDC &dc, const lsNodes &rows, const lsNodePtr &row,
                         const lsIdent &ident, bool downwards) const;
    // The vertical line from an expanded row down to its last child.
    void DrawChildLine(OffScreenDC &dc, const lsNodePtr &row, const lsIdent &ident) const;
    // The plus/minus box and the node picture of a visible row.
    void DrawNodePictures(OffScreenDC &dc, const lsNode &row, const lsIdent &ident) const;

    // A picture's width in pixels, through the context's scale conversion.
    qint32 PictureWidthPixels(const StdPicture &picture) const;
    // The paint mode of a row: -1 / 1 when it is selected (with / without focus), else 0.
    qint16 paintMode(const lsNodes &rows, const lsNode &row) const;

private:
    void drawLines(OffScreenDC &dc, const lsNodes &rows, lsIdent &ident,
                   const std::vector<lsNodePtr> &shown, qint32 &widestText) const;
    void drawPictures(OffScreenDC &dc, lsIdent &ident, const std::vector<lsNodePtr> &shown,
                      size_t from, size_t to) const;
    void drawTreeLine(OffScreenDC &dc, qint32 x1, qint32 y1, qint32 x2, qint32 y2) const;
    StdPicturePtr builtin(int number) const;
    StdPicturePtr nodePicture(const lsNode &row) const;

    const PaintContext &m_ctx;
};
