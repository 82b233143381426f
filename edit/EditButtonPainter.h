#pragma once
// Paints the editor's two owner-drawn buttons: the ellipsis button of button mode and the arrow
// button of combo-box mode. The surface is the whole button in pixels; drawing is pixel-exact
// and clipped to it, so a surface of any size (even empty) is safe. States are the values of
// lsButtonStateConstants; any other state draws nothing and every operation returns false.

#include "TreeListTypes.h"

#include <QImage>

class EditButtonPainter {
public:
    // Clears the surface to backColor, draws the frame and, when the frame was drawn, the three
    // dots; true when the glyph was drawn.
    static bool DrawSelectButton(QImage &surface, qint16 state, OleColor backColor,
                                 OleColor foreColor);
    // The same with the downward arrow.
    static bool DrawDownButton(QImage &surface, qint16 state, OleColor backColor,
                               OleColor foreColor);
    // The frame of a state on a just-cleared surface; false (nothing drawn) for an unknown state.
    static bool DrawButtonFrame(QImage &surface, qint16 state);
    // Three 2x2 dots starting 3 px apart, centred; one pixel right and down when pressed or
    // flat; in the button-shadow colour when disabled, else in foreColor.
    static bool DrawEllipsisGlyph(QImage &surface, qint16 state, OleColor foreColor);
    // Lines of 7, 5, 3, 1 px forming a downward triangle, centred; same offsets and colours rule.
    static bool DrawArrowGlyph(QImage &surface, qint16 state, OleColor foreColor);
};
