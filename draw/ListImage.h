#pragma once
// One entry of an image list as a lookup hands it out: the picture with its key and position.

#include "StdPicture.h"

#include <QString>

struct ListImage {
    // The picture (never null for an entry of lsImageList).
    StdPicturePtr Picture;
    // The entry's key ("" for none).
    QString Key;
    // The entry's 1-based position.
    qint32 Index = 0;
};
