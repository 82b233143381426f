#include "ControlPlugin.h"

#include "BuiltinPictures.h"
#include "ComponentServer.h"
#include "HostContainer.h"
#include "StdPicture.h"

#include <QIcon>
#include <QPixmap>

namespace {

// The host of every control placed on a form in Designer: design mode. It lives as long as the
// plugin, longer than any form.
HostContainer &designHost() {
    static HostContainer host;
    host.setAmbientUserMode(false);
    return host;
}

} // namespace

ControlPlugin::ControlPlugin(const QString &className, QObject *parent)
    : QObject(parent), m_className(className) {}

QString ControlPlugin::group() const {
    return QStringLiteral("vkTreeList");
}

QIcon ControlPlugin::icon() const {
    // The built-in pictures: an open branch for the tree list, a leaf for the editor.
    const StdPicturePtr picture = builtinPicture(m_className == u"vkTreeList" ? 103 : 105);
    return picture ? QIcon(QPixmap::fromImage(picture->image())) : QIcon();
}

QString ControlPlugin::toolTip() const {
    return ComponentServer::classDescription(m_className);
}

QString ControlPlugin::whatsThis() const {
    return ComponentServer::description() + QStringLiteral(": ") +
           ComponentServer::classDescription(m_className);
}

QString ControlPlugin::includeFile() const {
    return QStringLiteral("vkTreeList/%1.h").arg(m_className);
}

QString ControlPlugin::domXml() const {
    const bool list = m_className == u"vkTreeList";
    return QStringLiteral("<ui language=\"c++\">\n"
                          " <widget class=\"%1\" name=\"%2\">\n"
                          "  <property name=\"geometry\">\n"
                          "   <rect><x>0</x><y>0</y><width>%3</width><height>%4</height></rect>\n"
                          "  </property>\n"
                          " </widget>\n"
                          "</ui>\n")
        .arg(m_className, list ? QStringLiteral("treeList") : QStringLiteral("editor"))
        .arg(list ? 320 : 120)
        .arg(list ? 200 : 20);
}

QWidget *ControlPlugin::createWidget(QWidget *parent) {
    return ComponentServer::create(m_className, parent, m_initialized ? &designHost() : nullptr);
}

void ControlPlugin::initialize(QDesignerFormEditorInterface *) {
    m_initialized = true;
}
