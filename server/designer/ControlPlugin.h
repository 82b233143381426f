#pragma once
// One control class of the library as Qt Designer's widget box offers it. The control comes from
// the component server; in Designer (which initializes the plugin) it gets a design-mode host and
// shows its sample, while a form loaded at run time (QUiLoader, which does not) gets run mode.

#include <QtUiPlugin/QDesignerCustomWidgetInterface>

class ControlPlugin : public QObject, public QDesignerCustomWidgetInterface {
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)
public:
    // `className` is one of ComponentServer::classNames().
    ControlPlugin(const QString &className, QObject *parent = nullptr);

    QString name() const override { return m_className; }
    QString group() const override;
    QIcon icon() const override;
    QString toolTip() const override;
    QString whatsThis() const override;
    QString includeFile() const override;
    bool isContainer() const override { return false; }
    QString domXml() const override;
    QWidget *createWidget(QWidget *parent) override;
    bool isInitialized() const override { return m_initialized; }
    void initialize(QDesignerFormEditorInterface *core) override;

private:
    QString m_className;
    bool m_initialized = false;
};
