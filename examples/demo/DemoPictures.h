#pragma once
// The demo's row pictures: small 16 x 16 drawings made with QPainter and kept in an image list
// under the keys "folder", "file", "person" and "team".

#include "lsImageList.h"

#include <QColor>
#include <QImage>

class DemoPictures {
public:
    // Side length of every picture, in pixels.
    static constexpr int Size = 16;

    // An image list holding the four pictures. The control copies pictures opaquely, so they are
    // drawn over `background`, the colour of the rows they sit on.
    static lsImageListPtr makeImageList(const QColor &background);
    // Puts the four pictures, drawn over `background`, in place of what `list` held.
    static void fill(lsImageList &list, const QColor &background);

    // The single pictures (a transparent background suits a window icon).
    static QImage folder(const QColor &background);
    static QImage file(const QColor &background);
    static QImage person(const QColor &background);
    static QImage team(const QColor &background);
};
