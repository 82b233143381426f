#pragma once
// Paints the editor's two owner-drawn buttons: the ellipsis button of button mode and the arrow
// button of combo-box mode. `button` is where the whole button lies on the surface (by default
// the surface itself); the surface may hold only part of it, as when a button far larger than
// its window keeps a picture of the part that can show. Drawing is pixel-exact and clipped to
// the surface, so a surface of any size (even empty) is safe. States are the values of
// lsButtonStateConstants; any other state draws nothing and every operation returns false.
// System colours are the palette's; the classic palette gives the classic buttons.

#include "SystemColors.h"
#include "TreeListTypes.h"

#include <QImage>
#include <QRect>

class EditButtonPainter {
public:
    // Clears the surface to backColor, draws the frame and, when the frame was drawn, the three
    // dots; true when the glyph was drawn.
    static bool DrawSelectButton(QImage &surface, qint16 state, OleColor backColor,
                                 OleColor foreColor, const QRect &button = {},
                                 const QPalette &palette = classicPalette());
    // The same with the downward arrow.
    static bool DrawDownButton(QImage &surface, qint16 state, OleColor backColor,
                               OleColor foreColor, const QRect &button = {},
                               const QPalette &palette = classicPalette());
    // The frame of a state on a just-cleared surface; false (nothing drawn) for an unknown state.
    static bool DrawButtonFrame(QImage &surface, qint16 state, const QRect &button = {},
                                const QPalette &palette = classicPalette());
    // Three 2x2 dots starting 3 px apart, centred; one pixel right and down when pressed or
    // flat; in the button-shadow colour when disabled, else in foreColor.
    static bool DrawEllipsisGlyph(QImage &surface, qint16 state, OleColor foreColor,
                                  const QRect &button = {},
                                  const QPalette &palette = classicPalette());
    // Lines of 7, 5, 3, 1 px forming a downward triangle, centred; same offsets and colours rule.
    static bool DrawArrowGlyph(QImage &surface, qint16 state, OleColor foreColor,
                               const QRect &button = {},
                               const QPalette &palette = classicPalette());
};
