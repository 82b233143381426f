#include "EditTextBox.h"

#include "KeyCodes.h"

#include <QKeyEvent>

EditTextBox::EditTextBox(QWidget *parent) : QLineEdit(parent) {}

void EditTextBox::keyPressEvent(QKeyEvent *event) {
    const qint16 code = virtualKeyCode(event->key());
    emit keyDown(code, shiftMask(event->modifiers()));
    qint16 ascii = keyAscii(event->text(), code);
    if (ascii != 0) {
        emit keyPress(ascii);
        if (ascii == 0) {
            event->accept();
            return;
        }
    }
    // The handlers may have closed the editor; a hidden box takes no more typing.
    if (isVisible())
        QLineEdit::keyPressEvent(event);
}

void EditTextBox::focusInEvent(QFocusEvent *event) {
    QLineEdit::focusInEvent(event);
    emit gotFocus();
}
