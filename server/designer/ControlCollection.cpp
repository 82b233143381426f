#include "ControlCollection.h"

#include "ComponentServer.h"
#include "ControlPlugin.h"

ControlCollection::ControlCollection(QObject *parent) : QObject(parent) {
    for (const QString &className : ComponentServer::classNames())
        m_widgets.append(new ControlPlugin(className, this));
}
