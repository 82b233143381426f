#include "ComponentServer.h"

#include "lsEdit.h"
#include "vkTreeList.h"

QString ComponentServer::description() {
    return QStringLiteral("Tarnwick hierarchical ListView control");
}

QStringList ComponentServer::classNames() {
    return {QStringLiteral("vkTreeList"), QStringLiteral("lsEdit")};
}

QString ComponentServer::classDescription(const QString &className) {
    if (className == u"vkTreeList")
        return QStringLiteral("A tree view whose every row carries cells in columns, under zero "
                              "or more header rows.");
    if (className == u"lsEdit")
        return QStringLiteral("The in-place editor: a text box, a drop-down list or an ellipsis "
                              "button over a cell.");
    return QString();
}

QWidget *ComponentServer::create(const QString &className, QWidget *parent, HostContainer *host) {
    // Both constructors set the control up as a new instance.
    if (className == u"vkTreeList")
        return new vkTreeList(parent, host);
    if (className == u"lsEdit")
        return new lsEdit(parent, host);
    return nullptr;
}
