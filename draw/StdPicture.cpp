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

StdPicture::StdPicture(const QIcon &icon, const QSize &size)
    : StdPicture(icon.pixmap(size, 1.0).toImage()) {
    m_icon = icon;
}

qint32 StdPicture::pixelWidth() const {
    return static_cast<qint32>(std::lround(m_image.deviceIndependentSize().width()));
}

qint32 StdPicture::pixelHeight() const {
    return static_cast<qint32>(std::lround(m_image.deviceIndependentSize().height()));
}

QImage StdPicture::imageAt(qreal ratio) const {
    if (m_icon.isNull() || ratio == m_image.devicePixelRatio())
        return m_image;
    if (ratio != m_atRatioOf) {
        const QSize size(pixelWidth(), pixelHeight());
        m_atRatio = m_icon.pixmap(size, ratio).toImage().convertToFormat(QImage::Format_RGB32);
        m_atRatioOf = ratio;
    }
    return m_atRatio;
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
