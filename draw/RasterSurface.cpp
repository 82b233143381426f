#include "RasterSurface.h"

#include <QPainter>
#include <algorithm>

namespace {

// The largest raster made, in pixels (512 MB); a larger one behaves like a raster the platform
// failed to allocate: the surface exists and ignores drawing.
constexpr qint64 MaxRasterPixels = qint64(1) << 27;

RasterSurface::Span clipSpan(qint64 lo, qint64 hi, qint64 size) {
    return {std::max<qint64>(lo, 0), std::min(hi, size)};
}

// Copies src (from its origin) to dst at (x, y), only where both images have pixels and only
// into the pixel rows [rowsLo, rowsHi).
void blit(QImage &dst, qint64 x, qint64 y, const QImage &src, qint64 width, qint64 height,
          qint64 rowsLo = 0, qint64 rowsHi = std::numeric_limits<qint64>::max()) {
    const auto cols = clipSpan(x, x + std::min<qint64>(width, src.width()), dst.width());
    auto rows = clipSpan(y, y + std::min<qint64>(height, src.height()), dst.height());
    rows = {std::max(rows.lo, rowsLo), std::min(rows.hi, rowsHi)};
    if (cols.empty() || rows.empty() || src.isNull())
        return;
    // Sharing is what makes a frame cost one copy at most: the window's image and the raster
    // are the same pixels until one of them is drawn on.
    if (x == 0 && y == 0 && dst.size() == src.size() && width >= src.width() &&
        height >= src.height() && rows.hi - rows.lo == dst.height() &&
        dst.format() == src.format()) {
        dst = src;
        return;
    }
    QPainter p(&dst);
    p.setCompositionMode(QPainter::CompositionMode_Source);
    const auto w = static_cast<int>(cols.hi - cols.lo);
    const auto h = static_cast<int>(rows.hi - rows.lo);
    p.drawImage(QRect(static_cast<int>(cols.lo), static_cast<int>(rows.lo), w, h), src,
                QRect(static_cast<int>(cols.lo - x), static_cast<int>(rows.lo - y), w, h));
}

} // namespace

void RasterSurface::reset(QImage *target, qint32 width, qint32 height) {
    m_target = target;
    clearClip();
    m_width = width;
    m_height = height;
    // A raster of the right size that nobody else shares is painted over, not made anew: the
    // caller clears it all the same.
    const bool fits = width > 0 && height > 0 && qint64(width) * height <= MaxRasterPixels;
    if (!fits)
        m_image = QImage();
    else if (m_image.size() != QSize(width, height) || !m_image.isDetached())
        m_image = QImage(width, height, QImage::Format_RGB32);
}

void RasterSurface::setClipRows(qint64 top, qint64 bottom) {
    m_clipTop = top;
    m_clipBottom = bottom;
}

void RasterSurface::clearClip() {
    m_clipTop = 0;
    m_clipBottom = std::numeric_limits<qint32>::max();
}

RasterSurface::Span RasterSurface::columns(qint64 lo, qint64 hi) const {
    return clipSpan(lo + m_originX, hi + m_originX, m_image.width());
}

RasterSurface::Span RasterSurface::rows(qint64 lo, qint64 hi) const {
    const Span onRaster = clipSpan(lo, hi, m_image.height());
    return {std::max(onRaster.lo, m_clipTop), std::min(onRaster.hi, m_clipBottom)};
}

bool RasterSurface::reaches(qint64 x, qint64 y) const {
    return x >= 0 && y >= 0 && x < m_image.width() && y < m_image.height() && y >= m_clipTop &&
           y < m_clipBottom;
}

void RasterSurface::setPixel(qint64 x, qint64 y, QRgb rgb) {
    if (reaches(x, y))
        reinterpret_cast<QRgb *>(m_image.scanLine(static_cast<int>(y)))[x] = rgb | 0xFF000000u;
}

void RasterSurface::invertPixel(qint64 x, qint64 y) {
    if (reaches(x, y))
        reinterpret_cast<QRgb *>(m_image.scanLine(static_cast<int>(y)))[x] ^= 0x00FFFFFFu;
}

void RasterSurface::copyToTarget(qint64 left, qint64 top, qint64 width, qint64 height) {
    if (m_target)
        blit(*m_target, left, top, m_image, width, height);
}

void RasterSurface::drawImage(qint64 x, qint64 y, const QImage &image, qint64 width,
                              qint64 height) {
    blit(m_image, x + m_originX, y, image, width, height, m_clipTop, m_clipBottom);
}
