#pragma once
// The one lookup from an `Icon` value to its picture. Row geometry measures the picture that
// painting then draws, so both must find it the same way, or text would be placed after room
// reserved for a picture that never appears.

#include "StdPicture.h"
#include "lsImageList.h"

#include <QVariant>

// The picture an Icon names: with an image list, `ImageList.ListImages(Icon).Picture`; without
// one, the built-in picture whose number the Icon holds (a number, or text that reads as one).
// Null when it names none.
StdPicturePtr iconPicture(const QVariant &Icon, const lsImageList *ImageList);
