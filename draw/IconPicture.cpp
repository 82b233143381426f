#include "IconPicture.h"

#include "BuiltinPictures.h"
#include "IndexKey.h"

StdPicturePtr iconPicture(const QVariant &Icon, const lsImageList *ImageList) {
    if (ImageList)
        return ImageList->pictureOrNull(Icon);
    if (const auto position = indexKeyPosition(Icon))
        return builtinPicture(*position);
    bool ok = false;
    const int number = Icon.toString().trimmed().toInt(&ok);
    return ok ? builtinPicture(number) : nullptr;
}
