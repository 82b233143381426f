#pragma once
// The host's image list: pictures by 1-based position and by key (unique, any letter case). The
// control only reads it through `ListImages(...).Picture`; a host can subclass to serve pictures
// from elsewhere.

#include "KeyedCollection.h"
#include "ListImage.h"
#include "vkTreeListExport.h"

#include <QVariant>

class VKTL_EXPORT lsImageList {
public:
    virtual ~lsImageList() = default;

    // Appends a picture under a key ("" for none) and returns its position. A duplicate key
    // raises the duplicate-key error, a null picture the invalid-argument error.
    qint32 Add(const QString &Key, StdPicturePtr Picture);
    // Number of pictures.
    qint32 Count() const { return m_items.count(); }
    // Removes every picture.
    void Clear() { m_items.clear(); }

    // The entry at a 1-based position (a number) or under a key (a string). An unknown position
    // or key raises the invalid-argument error, any other type the type-mismatch error.
    virtual ListImage ListImages(const QVariant &IndexKey) const;
    // The picture `ListImages` would give, or null instead of raising.
    StdPicturePtr pictureOrNull(const QVariant &IndexKey) const;

private:
    KeyedCollection<ListImage> m_items;
};

using lsImageListPtr = std::shared_ptr<lsImageList>;
