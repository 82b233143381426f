#pragma once
// Keeps the control's frame: lays the view out when a repaint asks (what a host reads of it is
// decided then), composes the pixels once when Qt paints or the frame is asked for, and paints
// only the lines a small change touches over a frame that is otherwise still current.

#include "OffScreenDC.h"
#include "lsNodes.h"

#include <QFont>
#include <QPalette>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

class lsImageList;
class vkTreeList;
struct PaintContext;

class FrameKeeper {
public:
    explicit FrameKeeper(vkTreeList &t) : t(t) {}

    // Lays the view out now and leaves the pixels to Qt's next paint; with `keepIfUnchanged`
    // (a paint), composes them when they wait or the drawing child changed size, then shows them.
    void RedrawFrame(bool keepIfUnchanged);
    // Composes the pixels a repaint left for Qt's next paint, before something that no repaint
    // follows changes what they would show.
    void settlePixels();
    // The composed frame (null before the first one), the waiting pixels composed first.
    const OffScreenDC *surface();
    // Lets go of the surfaces.
    void release();

    // Whether no row or cell changed since the frame (or the pending layout) was made.
    bool rowsUnchangedSinceFrame() const;
    // Nothing changed on screen by what the caller did: the frame (or the pending layout) still
    // stands for the rows as they are.
    void keepFrameCurrent();
    // Keeps the frame for a row just added when only a few lines change; false when a repaint
    // must follow.
    bool keepFrameAfterAdd(const lsNodePtr &row);
    // Paints again the line of a row whose cell changed only in look; false when it cannot.
    bool repaintCellInPlace(const lsNodePtr &row, qint32 property);
    bool repaintLineInPlace(const lsNodePtr &row);
    // Paints one row (or header row) again over the kept frame.
    void repaintRow(const lsNodePtr &row, bool header);

    // What the painters read of the control, gathered now.
    PaintContext paintContext();

    bool pixelsPending() const { return m_pixelsPending; }
    float redrawTime() const { return m_redrawTime; }
    qint32 lastPaintedRow() const { return m_lastPaintedRow; }
    void setLastPaintedRow(qint32 row) { m_lastPaintedRow = row; }

private:
    // What a composed frame was drawn from besides the rows and cells (whose changes TreeEdits
    // counts): while none of it changed, the frame shown is still the one a repaint would give.
    struct FrameInputs {
        qint32 width, height, offset, rowHeight, columns, lineStyle, focusType, headers, firstRow,
            visibleLines;
        bool hasFocus, multiSelect;
        OleColor back, fore;
        QFont font;
        QPalette palette;
        qreal pixelRatio; // a move to a screen of another ratio composes the frame anew
        const lsImageList *imageList;
        qint32 images;
        bool operator==(const FrameInputs &) const = default;
    };
    FrameInputs frameInputs();

    void composeFrame();
    // Lays out a view scrolled down by part of a page since the last layout, moving the rows that
    // stay instead of placing them anew; false (with a whole layout to follow) otherwise.
    bool scrollLaidOutRows();
    void storeRedrawTime(float start);
    std::unique_ptr<OffScreenDC> newSurface();
    void paintFrame(OffScreenDC &dc);
    // Lays out rows and headers (`shown`: the rows on screen), again when the bars moved the view.
    void layoutFrame(std::vector<lsNodePtr> &shown);
    // Lays them out once; true when the bar layout that ends it moved the view.
    bool layoutLayers(std::vector<lsNodePtr> &shown);
    bool rowsShownInPlace(const lsNodePtr &landing, std::vector<lsNodePtr> &shown);
    // The rows the frame shows, top to bottom, then `landing` (when given) on the next line;
    // false when they are not all there.
    bool collectShownRows(const lsNodePtr &landing, std::vector<lsNodePtr> &shown);
    void repaintShownRows(const std::vector<lsNodePtr> &shown, size_t from, size_t to, bool landed);
    void placeLandingRow(const lsNodePtr &row);
    void countLandingRow(const lsNodePtr &row);
    // Paints into the shown frame's own raster: the screen lets go of the raster it shares while
    // `paint` runs (painting into a shared raster would copy all of it first) and takes it back
    // afterwards, also when painting fails.
    void paintInPlace(const std::function<void()> &paint);
    void showSurface();

    vkTreeList &t;
    std::unique_ptr<OffScreenDC> m_surface;
    std::unique_ptr<OffScreenDC> m_spareSurface; // the previous frame's, painted over next
    float m_redrawTime = 0.0f;
    qint32 m_lastPaintedRow = 0;
    qint32 m_widestText = 0;
    std::optional<FrameInputs> m_frameInputs; // of the frame shown; none while it may be stale
    bool m_pixelsPending = false;             // laid out, not yet composed
    // What the last layout was made from: the frame's inputs and TreeEdits::count() after it.
    std::optional<std::pair<FrameInputs, quint64>> m_laidOut;
    quint64 m_frameEdits = 0;  // TreeEdits::count() when it was last known right
    qint32 m_shownRows = 0;    // rows it shows
    qint32 m_lastShownRow = 0; // Index of its last row, 0 for none
};
