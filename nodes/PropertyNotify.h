#pragma once
// The controls tell about a changed property by its key (PropertyChanged), and Qt's property
// system by the notification signal of the Q_PROPERTY of the same name: one call raises the
// latter for the former.

#include <QObject>
#include <QString>

// Raises the notification signal of `object`'s Q_PROPERTY named `key`, when it has one.
void emitPropertyNotify(QObject &object, const QString &key);
