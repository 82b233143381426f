#pragma once
// The palette a widget inherits: its parent's, or the application's for its class. The controls
// read system colours from it rather than from their own palette, whose window colours they set
// to their background colour.

#include <QPalette>

class QWidget;

QPalette inheritedPalette(const QWidget &widget);
