#pragma once
// The component server: the library's list of control classes and their creation by class name.
// The Designer plugin and hosts that build their windows from names (a form loader, a script)
// create the controls through it.

#include "vkTreeListExport.h"
#include <QString>
#include <QStringList>

class HostContainer;
class QWidget;

class VKTL_EXPORT ComponentServer {
public:
    // The library's help string.
    static QString description();
    // The names of the control classes, in the order the library registers them.
    static QStringList classNames();
    // A one-line description of a control class ("" for an unknown name).
    static QString classDescription(const QString &className);
    // A new control of the named class under `parent`, set up as a new instance; null for an
    // unknown name. The host may be null (a run-mode host of the control's own); it must
    // outlive the control.
    static QWidget *create(const QString &className, QWidget *parent = nullptr,
                           HostContainer *host = nullptr);
};
