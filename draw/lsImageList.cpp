#include "lsImageList.h"

qint32 lsImageList::Add(const QString &Key, StdPicturePtr Picture) {
    if (!Picture)
        throw TreeListError(TreeListError::InvalidArgument);
    auto entry = std::make_shared<ListImage>();
    entry->Picture = std::move(Picture);
    entry->Key = Key;
    entry->Index = m_items.count() + 1;
    m_items.append(entry, Key);
    return entry->Index;
}

ListImage lsImageList::ListImages(const QVariant &IndexKey) const {
    return *m_items.itemOrThrow(IndexKey);
}

StdPicturePtr lsImageList::pictureOrNull(const QVariant &IndexKey) const {
    try {
        return ListImages(IndexKey).Picture;
    } catch (...) { // a subclass may raise anything; this lookup promises not to
        return nullptr;
    }
}
