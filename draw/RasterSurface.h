#pragma once
// The pixels a surface draws on: a 32-bit RGB raster, the image it is copied to, a horizontal
// drawing origin and a band of pixel rows that drawing may reach. Logical coordinates are those
// the caller draws at; raster coordinates are logical x plus the origin, and the same y.

#include <QImage>
#include <QRgb>
#include <limits>

class RasterSurface {
public:
    // A half-open span [lo, hi) of pixel columns or rows.
    struct Span {
        qint64 lo;
        qint64 hi;
        bool empty() const { return hi <= lo; }
    };

    // Makes the raster width x height pixels (a raster of that size that nothing shares is kept
    // as it is) and lets drawing reach every row. Sizes of 0 or less, or too large to allocate,
    // give no raster: drawing is then ignored. `target` is where `copyToTarget` copies (may be
    // null).
    void reset(QImage *target, qint32 width, qint32 height);

    // The raster (null before `reset`, or when the size did not allow one).
    QImage &image() { return m_image; }
    const QImage &image() const { return m_image; }
    // The size given to `reset`, whether or not a raster was made.
    qint32 width() const { return m_width; }
    qint32 height() const { return m_height; }
    // How far right of its logical x every pixel lands (left when negative).
    qint32 originX() const { return m_originX; }
    void setOriginX(qint32 x) { m_originX = x; }
    // Keeps drawing off the rows outside [top, bottom) until `clearClip`.
    void setClipRows(qint64 top, qint64 bottom);
    void clearClip();

    // The raster columns of logical columns [lo, hi), clipped to the raster.
    Span columns(qint64 lo, qint64 hi) const;
    // The rows of [lo, hi) that are on the raster and inside the clip.
    Span rows(qint64 lo, qint64 hi) const;
    // Writes one pixel at raster coordinates when it is on the raster and inside the clip.
    void setPixel(qint64 x, qint64 y, QRgb rgb);
    // Inverts one pixel at raster coordinates, on the same condition.
    void invertPixel(qint64 x, qint64 y);

    // Copies the raster from its origin to the target at (left, top), at most width x height
    // pixels. The whole raster copied onto a target of its size shares the raster instead;
    // whichever is drawn on next copies it first.
    void copyToTarget(qint64 left, qint64 top, qint64 width, qint64 height);
    // Copies an image opaquely, at most width x height of it, with its top-left at logical
    // (x, y), inside the clip.
    void drawImage(qint64 x, qint64 y, const QImage &image, qint64 width, qint64 height);

private:
    bool reaches(qint64 x, qint64 y) const;

    QImage m_image;
    QImage *m_target = nullptr;
    qint32 m_width = 0;
    qint32 m_height = 0;
    qint32 m_originX = 0;
    qint64 m_clipTop = 0;
    qint64 m_clipBottom = std::numeric_limits<qint32>::max();
};
