#pragma once
// The editor's text box: a line edit that reports each key before it acts on it (the key's code,
// then the character it types, which a handler may swallow by setting it to 0) and reports the
// focus arriving after the line edit has taken it. Everything else is the line edit's own
// (selection, undo, clipboard).

#include <QLineEdit>

class EditTextBox : public QLineEdit {
    Q_OBJECT
public:
    explicit EditTextBox(QWidget *parent = nullptr);

signals:
    // A key went down: its virtual-key code and the Shift mask.
    void keyDown(qint16 keyCode, qint16 shift);
    // The character the key types; set to 0 to keep it from the text.
    void keyPress(qint16 &keyAscii);
    // The text box has the focus.
    void gotFocus();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
};
