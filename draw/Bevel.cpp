#include "Bevel.h"

#include <utility>

namespace {

// The pixels of a side as a rectangle one pixel thick; null when there are none.
QRect pixelsOf(const BevelSide &side) {
    // Along one axis the side covers [from, to) walking either way: from itself up to the pixel
    // before the end.
    const auto run = [](qint64 from, qint64 to) {
        return to >= from ? std::pair(from, to - 1) : std::pair(to + 1, from);
    };
    if (side.x1 == side.x2 && side.y1 == side.y2)
        return QRect();
    if (side.y1 == side.y2) {
        const auto [lo, hi] = run(side.x1, side.x2);
        return QRect(QPoint(int(lo), int(side.y1)), QPoint(int(hi), int(side.y1)));
    }
    const auto [lo, hi] = run(side.y1, side.y2);
    return QRect(QPoint(int(side.x1), int(lo)), QPoint(int(side.x1), int(hi)));
}

} // namespace

void drawBevel(qint64 left, qint64 top, qint64 right, qint64 bottom,
               std::span<const BevelRing> rings,
               const std::function<void(const BevelSide &)> &draw) {
    const auto ringCount = qint64(rings.size());
    // The top and left sides stop a pixel short of the far corners, so each corner has one owner:
    // the bottom or the right side.
    for (qint64 n = 0; n < ringCount; ++n)
        draw({left + n, top + n, left + n, bottom - n, rings[size_t(n)].topLeft});
    for (qint64 n = 0; n < ringCount; ++n)
        draw({left + n, top + n, right - n, top + n, rings[size_t(n)].topLeft});
    for (qint64 n = 0; n < ringCount; ++n)
        draw({right - n, top + n, right - n, bottom - n, rings[size_t(n)].bottomRight});
    for (qint64 n = 0; n < ringCount; ++n)
        draw({left + n, bottom - n, right - n + 1, bottom - n, rings[size_t(n)].bottomRight});
}

void drawBevelRuns(qint64 left, qint64 top, qint64 right, qint64 bottom,
                   std::span<const BevelRing> rings,
                   const std::function<void(const QRect &, OleColor)> &fill) {
    drawBevel(left, top, right, bottom, rings, [&](const BevelSide &side) {
        const QRect pixels = pixelsOf(side);
        if (!pixels.isNull())
            fill(pixels, side.color);
    });
}
