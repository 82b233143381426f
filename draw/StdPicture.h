#pragma once
// A picture as the host and the control pass it around: an immutable raster with its size in
// HIMETRIC units (hundredths of a millimetre at 96 pixels per inch), as a picture object reports
// it. Shared by pointer; the raster never changes after construction.

#include "vkTreeListExport.h"
#include <QImage>
#include <QString>
#include <memory>

class VKTL_EXPORT StdPicture {
public:
    // Wraps a raster (a null image gives an empty 0 x 0 picture).
    explicit StdPicture(QImage image);

    // Loads a picture from an image file; null when the file cannot be read.
    static std::shared_ptr<StdPicture> fromFile(const QString &path);

    // Width in HIMETRIC: pixels * 2540 / 96, rounded.
    qint32 Width() const;
    // Height in HIMETRIC: pixels * 2540 / 96, rounded.
    qint32 Height() const;
    // Width in pixels.
    qint32 pixelWidth() const { return m_image.width(); }
    // Height in pixels.
    qint32 pixelHeight() const { return m_image.height(); }
    // The raster, in the surface's 32-bit RGB format.
    const QImage &image() const { return m_image; }

private:
    QImage m_image;
};

using StdPicturePtr = std::shared_ptr<StdPicture>;
