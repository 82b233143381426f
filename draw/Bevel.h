#pragma once
// The 3-D edge of a box: rings one pixel wide from the box's edge inwards, each with one colour
// on its top and left sides and another on its bottom and right sides. Raised and sunken are
// only a choice of colours, so every 3-D edge of the library (cells, the editor's buttons, the
// control's border) is drawn here and they agree. Drawing is left to the caller, which knows its
// own device, clipping and coordinate range.

#include "TreeListTypes.h"

#include <QRect>
#include <functional>
#include <span>

// One ring of a bevel.
struct BevelRing {
    OleColor topLeft;     // the left column and the top row
    OleColor bottomRight; // the right column and the bottom row, with the two corners they
                          // share with the top and left sides
};

// One side of a ring: the pixels from (x1, y1) towards (x2, y2) along a row or a column, the end
// excluded. A side of a box narrower than its rings runs backwards, or is empty.
struct BevelSide {
    qint64 x1;
    qint64 y1;
    qint64 x2;
    qint64 y2;
    OleColor color;
};

// Hands `draw` the sides of `rings` round the box from (left, top) to (right, bottom), both
// included, ring n drawn n pixels in: every ring's left side from the outside in, then their top,
// right and bottom sides. Where narrow boxes make sides overlap, later ones win.
void drawBevel(qint64 left, qint64 top, qint64 right, qint64 bottom,
               std::span<const BevelRing> rings,
               const std::function<void(const BevelSide &)> &draw);

// The same for devices that fill pixel runs: `fill` gets each side that has pixels as a
// rectangle one pixel thick.
void drawBevelRuns(qint64 left, qint64 top, qint64 right, qint64 bottom,
                   std::span<const BevelRing> rings,
                   const std::function<void(const QRect &, OleColor)> &fill);
