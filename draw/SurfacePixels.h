#pragma once
// The pixel primitives of a surface. Coordinates are logical (the raster's origin is added
// here), any value is safe: only what lands on the raster and inside its clip is drawn, and
// far-off endpoints cost no more than near ones.

#include "RasterSurface.h"

#include <QFont>
#include <QString>

namespace SurfacePixels {

// Line from (x1, y1) towards (x2, y2), the end excluded.
void solidLine(RasterSurface &surface, qint64 x1, qint64 y1, qint64 x2, qint64 y2, QRgb rgb);
// Dotted line: a vertical one paints every other pixel in rgb and the gaps in back, possibly one
// pixel past the end; a horizontal one leaves the gaps; a diagonal one draws nothing.
void dottedLine(RasterSurface &surface, qint64 x1, qint64 y1, qint64 x2, qint64 y2, QRgb rgb,
                QRgb back);
// Inverts the pixels of [left, right) x [top, bottom).
void invert(RasterSurface &surface, qint64 left, qint64 top, qint64 right, qint64 bottom);
// Inverts every other pixel of the one-pixel frame of [left, right) x [top, bottom).
void focusFrame(RasterSurface &surface, qint64 left, qint64 top, qint64 right, qint64 bottom);
// Fills [left, right) x [top, bottom) with back (unless told its pixels have that colour already)
// and draws text in rgb with its top-left at (x, y), clipped to that box.
void textBox(RasterSurface &surface, qint64 x, qint64 y, qint64 left, qint64 top, qint64 right,
             qint64 bottom, const QString &text, const QFont &font, QRgb rgb, QRgb back,
             bool fill = true);

} // namespace SurfacePixels
