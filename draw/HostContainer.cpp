#include "HostContainer.h"

void HostContainer::DoEvents() {
    // Deliberately nothing: the control asks for this inside its own resize handling, where
    // running Qt's event loop could delete widgets that the caller is still walking. A host
    // with a loop of its own that is safe to enter there may override this.
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
