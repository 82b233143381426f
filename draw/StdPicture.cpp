#include "StdPicture.h"

#include <cmath>

namespace {

qint32 pixelsToHimetric(qint32 pixels) {
    return static_cast<qint32>(std::lround(static_cast<double>(pixels) * 2540.0 / 96.0));
}

} // namespace

StdPicture::StdPicture(QImage image) {
    // Pictures are copied opaquely, so the alpha channel has no use once the raster is loaded.
    if (!image.isNull())
        m_image = image.convertToFormat(QImage::Format_RGB32);
}

std::shared_ptr<StdPicture> StdPicture::fromFile(const QString &path) {
    QImage image(path);
    if (image.isNull())
        return nullptr;
    return std::make_shared<StdPicture>(std::move(image));
}

qint32 StdPicture::Width() const {
    return pixelsToHimetric(pixelWidth());
}

qint32 StdPicture::Height() const {
    return pixelsToHimetric(pixelHeight());
}
