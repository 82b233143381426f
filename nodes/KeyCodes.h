#pragma once
// Keyboard and mouse input as the controls report it to a host: Windows virtual-key codes,
// button and shift masks, and the character a key types. Both the tree list and the editor read
// keys through these, so a key means the same number in either.

#include "vkTreeListExport.h"
#include <QString>
#include <Qt>

// The virtual-key code of a Qt key: letters 65-90, digits 48-57, Enter 13, Escape 27, Space 32,
// Backspace 8, Tab 9, Shift 16, Control 17, Alt 18, Page Up 33, Page Down 34, End 35, Home 36,
// Left 37, Up 38, Right 39, Down 40, Insert 45, Delete 46, F1-F24 112-135; 0 for a key without one.
VKTL_EXPORT qint16 virtualKeyCode(int qtKey);
// Mouse buttons as a mask: left 1, right 2, middle 4.
qint16 buttonMask(Qt::MouseButtons buttons);
inline constexpr qint16 kLeftButton = 1;
// The key code of Enter, which commits an edit and opens a row.
inline constexpr qint16 kEnter = 13;
// Modifier keys as a mask: Shift 1, Ctrl 2, Alt 4.
qint16 shiftMask(Qt::KeyboardModifiers modifiers);
// The character a key press types (its first text character; Enter 13, Escape 27, Backspace 8
// and Tab 9 from their key codes), or 0 for a key that types none.
qint16 keyAscii(const QString &text, qint16 keyCode);
