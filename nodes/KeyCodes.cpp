#include "KeyCodes.h"

qint16 virtualKeyCode(int qtKey) {
    if ((qtKey >= Qt::Key_A && qtKey <= Qt::Key_Z) || (qtKey >= Qt::Key_0 && qtKey <= Qt::Key_9))
        return qint16(qtKey);
    if (qtKey >= Qt::Key_F1 && qtKey <= Qt::Key_F24)
        return qint16(112 + (qtKey - Qt::Key_F1));
    switch (qtKey) {
    case Qt::Key_Backspace:
        return 8;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return 9;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return 13;
    case Qt::Key_Shift:
        return 16;
    case Qt::Key_Control:
        return 17;
    case Qt::Key_Alt:
        return 18;
    case Qt::Key_Escape:
        return 27;
    case Qt::Key_Space:
        return 32;
    case Qt::Key_PageUp:
        return 33;
    case Qt::Key_PageDown:
        return 34;
    case Qt::Key_End:
        return 35;
    case Qt::Key_Home:
        return 36;
    case Qt::Key_Left:
        return 37;
    case Qt::Key_Up:
        return 38;
    case Qt::Key_Right:
        return 39;
    case Qt::Key_Down:
        return 40;
    case Qt::Key_Insert:
        return 45;
    case Qt::Key_Delete:
        return 46;
    default:
        return 0;
    }
}

qint16 buttonMask(Qt::MouseButtons buttons) {
    return qint16((buttons & Qt::LeftButton ? 1 : 0) | (buttons & Qt::RightButton ? 2 : 0) |
                  (buttons & Qt::MiddleButton ? 4 : 0));
}

qint16 shiftMask(Qt::KeyboardModifiers modifiers) {
    return qint16((modifiers & Qt::ShiftModifier ? 1 : 0) |
                  (modifiers & Qt::ControlModifier ? 2 : 0) |
                  (modifiers & Qt::AltModifier ? 4 : 0));
}

qint16 keyAscii(const QString &text, qint16 keyCode) {
    // Enter, Escape, Backspace and Tab type their own codes even where the platform gives no text.
    if (!text.isEmpty())
        return qint16(text.at(0).unicode());
    if (keyCode == 13 || keyCode == 27 || keyCode == 8 || keyCode == 9)
        return keyCode;
    return 0;
}
