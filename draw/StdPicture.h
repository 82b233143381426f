#pragma once
// A picture as the host and the control pass it around: an immutable raster with its size in
// HIMETRIC units (hundredths of a millimetre at 96 pixels per inch), as a picture object reports
// it. Shared by pointer; the raster never changes after construction. Sizes are logical pixels: a
// raster with a pixel ratio of its own is that many times larger, and a picture made from an
// icon hands a surface the icon's own pixels for the surface's ratio.

#include "vkTreeListExport.h"
#include <QIcon>
#include <QImage>
#include <QString>
#include <memory>

class VKTL_EXPORT StdPicture {
public:
    // Wraps a raster (a null image gives an empty 0 x 0 picture).
    explicit StdPicture(QImage image);

    // Wraps an icon shown `size` logical pixels large (its raster: the icon at ratio 1).
    StdPicture(const QIcon &icon, const QSize &size);

    // Loads a picture from an image file; null when the file cannot be read.
    static std::shared_ptr<StdPicture> fromFile(const QString &path);

    // Width in HIMETRIC: pixels * 2540 / 96, rounded.
    qint32 Width() const;
    // Height in HIMETRIC: pixels * 2540 / 96, rounded.
    qint32 Height() const;
    // Width in logical pixels.
    qint32 pixelWidth() const;
    // Height in logical pixels.
    qint32 pixelHeight() const;
    // The raster, in the surface's 32-bit RGB format.
    const QImage &image() const { return m_image; }
    // The raster for a surface of `ratio` device pixels per logical pixel: the icon's pixels at
    // that ratio when the picture has an icon, else the raster itself.
    QImage imageAt(qreal ratio) const;

private:
    QImage m_image;
    QIcon m_icon;
    // The icon's raster at the ratio asked for last: a frame asks for one ratio many times.
    mutable QImage m_atRatio;
    mutable qreal m_atRatioOf = 0;
};

using StdPicturePtr = std::shared_ptr<StdPicture>;
