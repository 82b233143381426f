#include "HostContainer.h"

#include <QCoreApplication>

void HostContainer::DoEvents() {
    QCoreApplication::processEvents();
}

void HostContainer::registerImageList(const QString &name, const lsImageListPtr &list) {
    m_imageLists.insert(name, list);
}

lsImageListPtr HostContainer::findImageList(const QString &name) const {
    return m_imageLists.value(name);
}

QString HostContainer::imageListName(const lsImageListPtr &list) const {
    if (!list)
        return QString();
    for (auto it = m_imageLists.constBegin(); it != m_imageLists.constEnd(); ++it)
        if (it.value() == list)
            return it.key();
    return QString();
}
