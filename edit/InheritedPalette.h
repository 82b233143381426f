#pragma once
// The palette a widget inherits: its parent's, or the application's for its class. The controls
// read system colours from it rather than from their own palettes, whose colours they set to the
// ones a host chose (and which a system colour read from them would only echo).

#include "TreeListTypes.h"

#include <QPalette>
#include <initializer_list>
#include <utility>

class QWidget;

QPalette inheritedPalette(const QWidget &widget);

// Sets these roles of a widget's palette and no other, so that every other role goes on following
// the palette it inherits (a palette change included); nothing happens when they already hold
// these colours.
void setOwnColours(QWidget &widget,
                   std::initializer_list<std::pair<QPalette::ColorRole, QColor>> colours);

// Gives a text box or list the background and text colours `back` and `fore`, system colours as
// the palette `owner` inherits has them.
void setBoxColours(QWidget &box, const QWidget &owner, OleColor back, OleColor fore);
