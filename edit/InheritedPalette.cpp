#include "InheritedPalette.h"

#include "SystemColors.h"

#include <QApplication>
#include <QWidget>

QPalette inheritedPalette(const QWidget &widget) {
    const QWidget *parent = widget.parentWidget();
    return parent && !widget.isWindow() ? parent->palette() : QApplication::palette(&widget);
}

void setOwnColours(QWidget &widget,
                   std::initializer_list<std::pair<QPalette::ColorRole, QColor>> colours) {
    // A palette with no role set but these: a copy of the widget's would pin every role.
    QPalette own;
    bool same = true;
    for (const auto &[role, colour] : colours) {
        own.setColor(role, colour);
        same = same && widget.palette().color(role) == colour;
    }
    if (!same)
        widget.setPalette(own);
}

void setBoxColours(QWidget &box, const QWidget &owner, OleColor back, OleColor fore) {
    const QPalette system = inheritedPalette(owner);
    setOwnColours(box, {{QPalette::Base, QColor::fromRgb(oleTranslateColor(back, system))},
                        {QPalette::Text, QColor::fromRgb(oleTranslateColor(fore, system))}});
}
