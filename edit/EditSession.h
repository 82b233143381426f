#pragma once
// One edit of the editor, from `open` to the close: what the keys and the focus do while it is
// open, and its commits (validate, announce, store through the editor's events EditValidate,
// AfterEdit and, in button mode, OnButtonClick).

#include <QVariant>

class ButtonSurface;
class EditDropDown;
class EditTextBox;
class QWidget;
class lsEdit;

class EditSession {
public:
    // value is the editor's Value, which commits store; open is its "an edit is open" flag.
    EditSession(lsEdit &control, EditTextBox &text, EditDropDown &dropDown, ButtonSurface &select,
                ButtonSurface &down, QVariant &value, bool &open);

    // The editing mode as 0, 1 or 2, or -1 for any other value.
    static qint32 modeOf(const QVariant &mode);
    // Whether a text stands for a value: numerically when the value is a number and the text
    // reads as one, as text otherwise.
    static bool sameAs(const QString &text, const QVariant &value);

    // Shows the editor for an edit in its current mode, with Value in the text box and the
    // focus there; shows nothing when the mode is none of the three.
    void open();
    // Closes without committing.
    void abort();
    // Hides the editor and raises OnClose; an open edit commits as the focus leaves it.
    void close();

    // A character typed in any part: Enter closes (committing), Escape aborts; both are
    // swallowed.
    void keyPress(qint16 &keyAscii);
    // The text box took the focus: it becomes editable, or stays locked in button mode.
    void textGotFocus();
    // The focus moved in the application: leaving the editor ends the edit.
    void focusChanged(QWidget *now);
    // A click chose a list entry.
    void listReleased();

private:
    qint32 mode() const;
    bool contains(const QWidget *widget) const;
    void exitFocus();
    void commitListChoice();
    void commitButton();
    // Validate, announce, store: the text box's text becomes Value unless the host vetoes.
    bool validateAnnounceStore();

    lsEdit &m_control;
    EditTextBox &m_text;
    EditDropDown &m_dropDown;
    ButtonSurface &m_select;
    ButtonSurface &m_down;
    QVariant &m_value;
    bool &m_open;
    bool m_changed = false;
    bool m_aborted = false;
    bool m_focusInside = false;
};
