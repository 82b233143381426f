#pragma once
// The pixels a surface draws on: a 32-bit RGB raster, the image it is copied to, a horizontal
// drawing origin and a band of pixel rows that drawing may reach. Logical coordinates are those
// the caller draws at; raster coordinates are logical x plus the origin, and the same y. The
// raster holds device pixels: at a pixel ratio r a raster coordinate v becomes device pixel
// floor(v * r + 1/2), so areas stay edge to edge, while a line is `pen()` device pixels thick
// wherever it lies, so lines keep one width at fractional ratios.

#include <QImage>
#include <QRgb>
#include <algorithm>
#include <limits>
#include <memory>
#include <optional>

class QPainter;

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
    // Device pixels per logical pixel (1 by default); the raster is made at it by `reset`.
    qreal ratio() const { return m_ratio; }
    void setRatio(qreal ratio) { m_ratio = ratio > 0 ? ratio : 1; }
    // The device pixel where raster coordinate v starts; the thickness of a line.
    qint64 device(qint64 v) const;
    qint64 pen() const;
    // Device extent of a logical one at a ratio: the size a raster of that ratio is made.
    static qint32 deviceExtent(qint32 logical, qreal ratio);

    RasterSurface();
    ~RasterSurface();
    RasterSurface(const RasterSurface &) = delete;
    RasterSurface &operator=(const RasterSurface &) = delete;

    // Fills the whole raster with rgb. Columns nothing was drawn on since the raster was last
    // cleared to that same colour still have it and are not written again: a frame clears the
    // raster of the frame before last, whose blank right-hand side stays blank.
    void clear(QRgb rgb);
    // Says that drawing through `painter()` reached up to device column `hi` (exclusive).
    void touch(qint64 hi) { m_reach = std::max(m_reach, hi); }

    // The raster (null before `reset`, or when the size did not allow one). Handing it out ends
    // the surface's painter, and a writable one forgets what `clear` knew: whoever gets it may
    // share it or paint on it.
    QImage &image();
    const QImage &image() const;
    // The raster's size in device pixels.
    QSize deviceSize() const { return m_image.size(); }
    // A painter on the raster, begun on first use and kept until the raster is handed out, made
    // anew or copied: a frame paints its texts with one painter rather than one per text. Its
    // clip and composition mode are the caller's to set.
    QPainter &painter();
    // The size given to `reset`, whether or not a raster was made.
    qint32 width() const { return m_width; }
    qint32 height() const { return m_height; }
    // How far right of its logical x every pixel lands (left when negative).
    qint32 originX() const { return m_originX; }
    void setOriginX(qint32 x) { m_originX = x; }
    // Keeps drawing off the rows outside [top, bottom) until `clearClip`.
    void setClipRows(qint64 top, qint64 bottom);
    void clearClip();

    // The device columns of logical columns [lo, hi), clipped to the raster.
    Span columns(qint64 lo, qint64 hi) const;
    // The device rows of [lo, hi) that are on the raster and inside the clip.
    Span rows(qint64 lo, qint64 hi) const;
    // The raster rows inside the clip, in raster coordinates; empty without a raster.
    Span drawableRows() const;
    // Writes one pixel at raster coordinates (a pen square of device pixels) where it is on the
    // raster and inside the clip.
    void setPixel(qint64 x, qint64 y, QRgb rgb);
    // Inverts one pixel at raster coordinates, on the same condition.
    void invertPixel(qint64 x, qint64 y);
    // Fills / inverts device pixels [cols) x [rows), clipped to the raster and the clip.
    void fillDevice(Span cols, Span rows, QRgb rgb);
    void invertDevice(Span cols, Span rows);

    // Copies the raster from its origin to the target at (left, top), at most width x height
    // pixels. The whole raster copied onto a target of its size shares the raster instead;
    // whichever is drawn on next copies it first.
    void copyToTarget(qint64 left, qint64 top, qint64 width, qint64 height);
    // Copies an image opaquely, at most width x height logical pixels of it, with its top-left at
    // logical (x, y), inside the clip. An image with a pixel ratio of its own is that many times
    // larger; at another ratio than the raster's it is scaled smoothly.
    void drawImage(qint64 x, qint64 y, const QImage &image, qint64 width, qint64 height);

private:
    bool reaches(qint64 x, qint64 y) const;
    // Clips device spans to the raster and the clip and counts them drawn on; false when
    // nothing is left.
    bool clipDevice(Span &cols, Span &rows);
    // The device rows of a line at raster row y, or none outside the clip.
    Span rowsOf(qint64 y) const;

    void endPainting() const;

    QImage m_image;
    mutable std::unique_ptr<QPainter> m_painter;
    // The colour every column from `m_reach` on has had since the last `clear`, if known.
    std::optional<QRgb> m_cleanColour;
    qint64 m_reach = 0;
    QImage *m_target = nullptr;
    qint32 m_width = 0;
    qint32 m_height = 0;
    qint32 m_originX = 0;
    qreal m_ratio = 1;
    qint64 m_clipTop = 0;
    qint64 m_clipBottom = std::numeric_limits<qint32>::max();
};
