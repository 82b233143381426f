#include "InheritedPalette.h"

#include <QApplication>
#include <QWidget>

QPalette inheritedPalette(const QWidget &widget) {
    const QWidget *parent = widget.parentWidget();
    return parent && !widget.isWindow() ? parent->palette() : QApplication::palette(&widget);
}
