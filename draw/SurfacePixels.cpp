#include "SurfacePixels.h"

#include "TextCache.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace {

// Text further than this from the raster cannot reach it and is not handed to the painter,
// whose coordinates are plain ints.
constexpr qint64 TextReach = qint64(1) << 30;

// A dotted line in device pixels: dots a pen long, one every two logical pixels rounded to whole
// device pixels, so the dots are evenly spaced at any ratio. The phase is the raster's, not the
// line's, so the pieces of one line drawn row by row join up; a line starting on an odd pixel
// takes the other half of the pattern, as it does at the unit ratio.
void devicePattern(RasterSurface &surface, qint64 x1, qint64 y1, qint64 x2, qint64 y2, QRgb rgb,
                   QRgb back) {
    const bool vertical = x1 == x2;
    if (!vertical && y1 != y2)
        return;
    const qint64 pen = surface.pen();
    const qint64 pitch = std::max<qint64>(2, std::llround(2 * surface.ratio()));
    const qint64 from = vertical ? std::min(y1, y2) : std::min(x1, x2);
    // Vertical lines paint their gaps and may reach one pixel past the end, as at unit ratio.
    const qint64 to = (vertical ? std::max(y1, y2) : std::max(x1, x2)) + (vertical ? 2 : 1);
    const qint64 phase = (from & 1) ? pitch / 2 : 0;
    const qint64 at = vertical ? x1 : y1;
    const RasterSurface::Span across = {surface.device(at), surface.device(at) + pen};
    const qint64 limit = vertical ? surface.deviceSize().height() : surface.deviceSize().width();
    const qint64 lo = std::max<qint64>(surface.device(from), 0);
    const qint64 hi = std::min<qint64>(surface.device(to), limit);
    for (qint64 d = lo; d < hi; ++d) {
        const qint64 offset = ((d - phase) % pitch + pitch) % pitch;
        if (offset >= pen && !vertical)
            continue;
        const RasterSurface::Span along = {d, d + 1};
        const QRgb colour = offset < pen ? rgb : back;
        if (vertical)
            surface.fillDevice(across, along, colour);
        else
            surface.fillDevice(along, across, colour);
    }
}

// The focus frame in device pixels: its sides a pen thick inside the box's device edges, every
// other pen square inverted.
void deviceFocusFrame(RasterSurface &surface, qint64 left, qint64 top, qint64 right,
                      qint64 bottom) {
    const qint64 pen = surface.pen();
    const RasterSurface::Span cols = surface.columns(left, right);
    const RasterSurface::Span rows = surface.rows(top, bottom);
    const qint64 x0 = surface.device(left + surface.originX());
    const qint64 x1 = surface.device(right + surface.originX());
    const qint64 y0 = surface.device(top), y1 = surface.device(bottom);
    const auto dots = [&](RasterSurface::Span xs, RasterSurface::Span ys) {
        for (qint64 y = std::max(ys.lo, rows.lo); y < std::min(ys.hi, rows.hi); ++y)
            for (qint64 x = std::max(xs.lo, cols.lo); x < std::min(xs.hi, cols.hi); ++x)
                if ((((x - x0) / pen + (y - y0) / pen) & 1) == 0)
                    surface.invertDevice({x, x + 1}, {y, y + 1});
    };
    dots({x0, x1}, {y0, std::min(y0 + pen, y1)});
    if (y1 - pen > y0)
        dots({x0, x1}, {std::max(y1 - pen, y0 + pen), y1});
    dots({x0, std::min(x0 + pen, x1)}, {y0 + pen, y1 - pen});
    if (x1 - pen > x0)
        dots({std::max(x1 - pen, x0 + pen), x1}, {y0 + pen, y1 - pen});
}

} // namespace

namespace SurfacePixels {

void solidLine(RasterSurface &surface, qint64 x1, qint64 y1, qint64 x2, qint64 y2, QRgb rgb) {
    x1 += surface.originX();
    x2 += surface.originX();
    // Steps along the major axis from the start, excluding the end point; the minor coordinate
    // is rounded to nearest with ties kept back (classic Bresenham). Only the steps whose major
    // coordinate is on the raster are visited, so far-off endpoints cost nothing.
    const qint64 dx = x2 - x1;
    const qint64 dy = y2 - y1;
    const bool xMajor = std::abs(dx) >= std::abs(dy);
    const qint64 steps = xMajor ? std::abs(dx) : std::abs(dy);
    if (steps == 0)
        return;
    const qint64 minorRun = xMajor ? std::abs(dy) : std::abs(dx);
    const qint64 majorStart = xMajor ? x1 : y1;
    const qint64 minorStart = xMajor ? y1 : x1;
    const qint64 majorDir = (xMajor ? dx : dy) > 0 ? 1 : -1;
    const qint64 minorDir = (xMajor ? dy : dx) >= 0 ? 1 : -1;
    // Steps i with majorStart + majorDir * i inside [lo, hi): the raster, and the clip when the
    // major axis is vertical.
    const RasterSurface::Span rows = surface.drawableRows();
    if (rows.empty())
        return;
    const qint64 lo = xMajor ? 0 : rows.lo;
    const qint64 hi = xMajor ? surface.width() : rows.hi;
    // Off the unit ratio each step covers its pixel's device extent along the line and a pen's
    // thickness across it, so the line has no gaps and one width wherever it lies.
    const bool unit = surface.ratio() == 1;
    const qint64 pen = surface.pen();
    qint64 first = majorDir > 0 ? lo - majorStart : majorStart - (hi - 1);
    qint64 last = majorDir > 0 ? hi - 1 - majorStart : majorStart - lo;
    first = std::max<qint64>(first, 0);
    last = std::min(last, steps - 1);
    if (!unit && minorRun == 0) {
        // A line along a row or a column is one run of device pixels.
        if (first > last)
            return;
        const qint64 a = majorStart + majorDir * first, b = majorStart + majorDir * last;
        const RasterSurface::Span along = {surface.device(std::min(a, b)),
                                           surface.device(std::max(a, b) + 1)};
        const RasterSurface::Span across = {surface.device(minorStart),
                                            surface.device(minorStart) + pen};
        surface.fillDevice(xMajor ? along : across, xMajor ? across : along, rgb);
        return;
    }
    for (qint64 i = first; i <= last; ++i) {
        const auto num =
            static_cast<unsigned __int128>(2 * i) * static_cast<unsigned __int128>(minorRun) +
            static_cast<unsigned __int128>(steps - 1);
        const auto offset = static_cast<qint64>(num / (2 * static_cast<unsigned __int128>(steps)));
        const qint64 major = majorStart + majorDir * i;
        const qint64 minor = minorStart + minorDir * offset;
        if (unit) {
            surface.setPixel(xMajor ? major : minor, xMajor ? minor : major, rgb);
            continue;
        }
        const RasterSurface::Span along = {surface.device(major), surface.device(major + 1)};
        const RasterSurface::Span across = {surface.device(minor), surface.device(minor) + pen};
        surface.fillDevice(xMajor ? along : across, xMajor ? across : along, rgb);
    }
}

void dottedLine(RasterSurface &surface, qint64 x1, qint64 y1, qint64 x2, qint64 y2, QRgb rgb,
                QRgb back) {
    x1 += surface.originX();
    x2 += surface.originX();
    if (surface.ratio() != 1) {
        devicePattern(surface, x1, y1, x2, y2, rgb, back);
        return;
    }
    const QSize image = surface.deviceSize();
    if (x1 == x2) {
        // Pixels before the raster are skipped two at a time so the pattern's phase is kept.
        qint64 y = std::min(y1, y2);
        const qint64 last = std::min<qint64>(std::max(y1, y2), image.height());
        if (y < -1)
            y += ((-1 - y) / 2) * 2;
        for (; y <= last; y += 2) {
            surface.setPixel(x1, y, rgb);
            surface.setPixel(x1, y + 1, back);
        }
    } else if (y1 == y2) {
        qint64 x = std::min(x1, x2);
        const qint64 last = std::min<qint64>(std::max(x1, x2), image.width());
        if (x < 0)
            x += (-x / 2) * 2;
        for (; x <= last; x += 2)
            surface.setPixel(x, y1, rgb);
    }
}

void invert(RasterSurface &surface, qint64 left, qint64 top, qint64 right, qint64 bottom) {
    const RasterSurface::Span cols = surface.columns(left, right);
    const RasterSurface::Span rows = surface.rows(top, bottom);
    if (cols.empty() || rows.empty())
        return;
    surface.invertDevice(cols, rows);
}

void focusFrame(RasterSurface &surface, qint64 left, qint64 top, qint64 right, qint64 bottom) {
    if (right <= left || bottom <= top)
        return;
    if (surface.ratio() != 1) {
        deviceFocusFrame(surface, left, top, right, bottom);
        return;
    }
    const auto dot = [&](qint64 x, qint64 y) {
        if (((x + y) & 1) == 0)
            surface.invertPixel(x, y);
    };
    const qint64 firstX = left + surface.originX();
    const qint64 lastX = right - 1 + surface.originX();
    const qint64 lastY = bottom - 1;
    const QSize image = surface.deviceSize();
    const qint64 colsLo = std::max<qint64>(firstX, 0);
    const qint64 colsHi = std::min<qint64>(lastX + 1, image.width());
    for (qint64 x = colsLo; x < colsHi; ++x) {
        dot(x, top);
        if (lastY > top)
            dot(x, lastY);
    }
    const qint64 rowsLo = std::max<qint64>(top + 1, 0);
    const qint64 rowsHi = std::min<qint64>(lastY, image.height());
    for (qint64 y = rowsLo; y < rowsHi; ++y) {
        dot(firstX, y);
        if (lastX > firstX)
            dot(lastX, y);
    }
}

void textBox(RasterSurface &surface, qint64 x, qint64 y, qint64 left, qint64 top, qint64 right,
             qint64 bottom, const QString &text, const QFont &font, QRgb rgb, QRgb back,
             bool fill) {
    x += surface.originX();
    const RasterSurface::Span cols = surface.columns(left, right);
    const RasterSurface::Span rows = surface.rows(top, bottom);
    if (cols.empty() || rows.empty())
        return;
    const QRect box(static_cast<int>(cols.lo), static_cast<int>(rows.lo),
                    static_cast<int>(cols.hi - cols.lo), static_cast<int>(rows.hi - rows.lo));
    const bool drawn =
        !text.isEmpty() && x >= -TextReach && x <= TextReach && y >= -TextReach && y <= TextReach;
    if (!fill && !drawn)
        return;
    surface.touch(cols.hi);
    QPainter &p = surface.painter();
    p.setClipRect(box);
    if (fill)
        p.fillRect(box, QColor(back));
    if (!drawn)
        return;
    p.setPen(QColor(rgb));
    TextCache &texts = TextCache::instance();
    if (surface.ratio() == 1) {
        texts.draw(p, static_cast<int>(x), static_cast<int>(y) + texts.ascent(font), font, text);
        return;
    }
    // Off the unit ratio the text is set in the font scaled to the device, where it lands.
    const QFont &scaled = texts.scaled(font, surface.ratio());
    texts.draw(p, static_cast<int>(surface.device(x)),
               static_cast<int>(surface.device(y)) + texts.ascent(scaled), scaled, text);
}

} // namespace SurfacePixels
