#include "PropertyNotify.h"

#include <QMetaProperty>

void emitPropertyNotify(QObject &object, const QString &key) {
    const QMetaObject *meta = object.metaObject();
    const int index = meta->indexOfProperty(key.toLatin1().constData());
    if (index >= 0 && meta->property(index).hasNotifySignal())
        meta->property(index).notifySignal().invoke(&object, Qt::DirectConnection);
}
