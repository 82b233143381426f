#include "SurfacePng.h"

bool saveImagePng(const QImage &image, const QString &path) {
    return !image.isNull() && image.save(path, "PNG");
}

bool saveSurfacePng(const OffScreenDC &dc, const QString &path) {
    return saveImagePng(*dc.hDC(), path);
}
