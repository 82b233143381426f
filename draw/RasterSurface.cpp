#include "RasterSurface.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

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

RasterSurface::RasterSurface() = default;

RasterSurface::~RasterSurface() {
    endPainting();
}

QImage &RasterSurface::image() {
    endPainting();
    m_cleanColour.reset();
    return m_image;
}

void RasterSurface::clear(QRgb rgb) {
    rgb |= 0xFF000000u;
    const qint64 upTo =
        m_cleanColour == rgb ? std::min<qint64>(m_reach, m_image.width()) : m_image.width();
    const Span all = {0, m_image.height()};
    const qint64 clipTop = m_clipTop, clipBottom = m_clipBottom;
    clearClip();
    fillDevice({0, upTo}, all, rgb);
    m_clipTop = clipTop;
    m_clipBottom = clipBottom;
    m_cleanColour = rgb;
    m_reach = 0;
}

const QImage &RasterSurface::image() const {
    endPainting();
    return m_image;
}

QPainter &RasterSurface::painter() {
    if (!m_painter)
        m_painter = std::make_unique<QPainter>();
    if (!m_painter->isActive()) {
        m_painter->begin(&m_image);
        m_painter->setRenderHint(QPainter::SmoothPixmapTransform);
    }
    return *m_painter;
}

void RasterSurface::endPainting() const {
    if (m_painter && m_painter->isActive())
        m_painter->end();
}

qint64 RasterSurface::device(qint64 v) const {
    if (m_ratio == 1)
        return v;
    return static_cast<qint64>(std::floor(static_cast<double>(v) * m_ratio + 0.5));
}

qint64 RasterSurface::pen() const {
    return std::max<qint64>(1, static_cast<qint64>(m_ratio));
}

qint32 RasterSurface::deviceExtent(qint32 logical, qreal ratio) {
    if (ratio == 1 || logical <= 0)
        return logical;
    return static_cast<qint32>(std::min(std::floor(logical * ratio + 0.5), double(1 << 30)));
}

void RasterSurface::reset(QImage *target, qint32 width, qint32 height) {
    endPainting();
    m_target = target;
    clearClip();
    m_width = width;
    m_height = height;
    const qint64 w = deviceExtent(width, m_ratio), h = deviceExtent(height, m_ratio);
    // A raster of the right size that nobody else shares is painted over, not made anew: the
    // caller clears it all the same.
    const bool fits = w > 0 && h > 0 && w * h <= MaxRasterPixels;
    if (!fits || m_image.size() != QSize(int(w), int(h)) || !m_image.isDetached()) {
        m_image = fits ? QImage(int(w), int(h), QImage::Format_RGB32) : QImage();
        m_cleanColour.reset();
    }
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
    return clipSpan(device(lo + m_originX), device(hi + m_originX), m_image.width());
}

RasterSurface::Span RasterSurface::rows(qint64 lo, qint64 hi) const {
    const Span onRaster = clipSpan(device(lo), device(hi), m_image.height());
    return {std::max(onRaster.lo, device(m_clipTop)), std::min(onRaster.hi, device(m_clipBottom))};
}

RasterSurface::Span RasterSurface::drawableRows() const {
    if (m_image.isNull())
        return {0, 0};
    return {std::max<qint64>(m_clipTop, 0), std::min<qint64>(m_clipBottom, m_height)};
}

bool RasterSurface::reaches(qint64 x, qint64 y) const {
    return x >= 0 && y >= 0 && x < m_image.width() && y < m_image.height() && y >= m_clipTop &&
           y < m_clipBottom;
}

void RasterSurface::setPixel(qint64 x, qint64 y, QRgb rgb) {
    if (m_ratio != 1)
        fillDevice({device(x), device(x) + pen()}, rowsOf(y), rgb);
    else if (reaches(x, y)) {
        touch(x + 1);
        reinterpret_cast<QRgb *>(m_image.scanLine(static_cast<int>(y)))[x] = rgb | 0xFF000000u;
    }
}

void RasterSurface::invertPixel(qint64 x, qint64 y) {
    if (m_ratio != 1)
        invertDevice({device(x), device(x) + pen()}, rowsOf(y));
    else if (reaches(x, y)) {
        touch(x + 1);
        reinterpret_cast<QRgb *>(m_image.scanLine(static_cast<int>(y)))[x] ^= 0x00FFFFFFu;
    }
}

RasterSurface::Span RasterSurface::rowsOf(qint64 y) const {
    if (y < m_clipTop || y >= m_clipBottom)
        return {0, 0};
    return {device(y), device(y) + pen()};
}

bool RasterSurface::clipDevice(Span &cols, Span &rows) {
    cols = clipSpan(cols.lo, cols.hi, m_image.width());
    rows = clipSpan(std::max(rows.lo, device(m_clipTop)), std::min(rows.hi, device(m_clipBottom)),
                    m_image.height());
    if (cols.empty() || rows.empty())
        return false;
    touch(cols.hi);
    return true;
}

void RasterSurface::fillDevice(Span cols, Span rows, QRgb rgb) {
    if (!clipDevice(cols, rows))
        return;
    uchar *bits = m_image.bits();
    const qsizetype stride = m_image.bytesPerLine();
    for (qint64 y = rows.lo; y < rows.hi; ++y) {
        auto *line = reinterpret_cast<QRgb *>(bits + y * stride);
        std::fill(line + cols.lo, line + cols.hi, rgb | 0xFF000000u);
    }
}

void RasterSurface::invertDevice(Span cols, Span rows) {
    if (!clipDevice(cols, rows))
        return;
    uchar *bits = m_image.bits();
    const qsizetype stride = m_image.bytesPerLine();
    for (qint64 y = rows.lo; y < rows.hi; ++y) {
        auto *line = reinterpret_cast<QRgb *>(bits + y * stride);
        for (qint64 x = cols.lo; x < cols.hi; ++x)
            line[x] ^= 0x00FFFFFFu;
    }
}

void RasterSurface::copyToTarget(qint64 left, qint64 top, qint64 width, qint64 height) {
    endPainting();
    if (m_target)
        blit(*m_target, device(left), device(top), m_image, device(width), device(height));
}

void RasterSurface::drawImage(qint64 x, qint64 y, const QImage &image, qint64 width,
                              qint64 height) {
    const qreal own = image.devicePixelRatio();
    if (m_ratio == 1 && own == 1) {
        endPainting();
        touch(x + m_originX + width);
        blit(m_image, x + m_originX, y, image, width, height, m_clipTop, m_clipBottom);
        return;
    }
    // The picture's logical size, cut to width x height, lands on the device pixels of that box.
    const QSizeF logical = image.deviceIndependentSize();
    const qreal w = std::min<qreal>(width, logical.width());
    const qreal h = std::min<qreal>(height, logical.height());
    const Span cols = {device(x + m_originX), device(x + m_originX + qint64(std::ceil(w)))};
    const Span rows = {device(y), device(y + qint64(std::ceil(h)))};
    const Span clipRows = this->rows(y, y + qint64(std::ceil(h)));
    if (cols.empty() || clipRows.empty() || m_image.isNull() || image.isNull() ||
        std::abs(cols.lo) > (1 << 30) || std::abs(rows.lo) > (1 << 30))
        return;
    touch(cols.hi);
    QPainter &p = painter();
    p.setCompositionMode(QPainter::CompositionMode_Source);
    p.setClipRect(QRect(0, int(clipRows.lo), m_image.width(), int(clipRows.hi - clipRows.lo)));
    QImage source = image;
    source.setDevicePixelRatio(1);
    p.drawImage(QRect(int(cols.lo), int(rows.lo), int(cols.hi - cols.lo), int(rows.hi - rows.lo)),
                source, QRectF(0, 0, w * own, h * own));
    p.setCompositionMode(QPainter::CompositionMode_SourceOver);
}
