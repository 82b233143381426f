#include "EditSession.h"

#include "InheritedPalette.h"

#include "ButtonSurface.h"
#include "EditDropDown.h"
#include "EditTextBox.h"
#include "KeyCodes.h"
#include "VariantNumber.h"
#include "lsEdit.h"

#include <QApplication>

namespace {

constexpr qint16 kEscape = 27;

} // namespace

EditSession::EditSession(lsEdit &control, EditTextBox &text, EditDropDown &dropDown,
                         ButtonSurface &select, ButtonSurface &down, QVariant &value, bool &open)
    : m_control(control), m_text(text), m_dropDown(dropDown), m_select(select), m_down(down),
      m_value(value), m_open(open) {}

qint32 EditSession::modeOf(const QVariant &mode) {
    const std::optional<double> number = numberIn(mode);
    if (number && (*number == 0 || *number == 1 || *number == 2))
        return qint32(*number);
    return -1;
}

bool EditSession::sameAs(const QString &text, const QVariant &value) {
    const bool numericValue =
        value.typeId() != QMetaType::QString && value.typeId() != QMetaType::Bool;
    if (numericValue) {
        const std::optional<double> a = numberIn(text), b = numberIn(value);
        if (a && b)
            return *a == *b;
    }
    return text == value.toString();
}

qint32 EditSession::mode() const {
    return modeOf(m_control.Mode());
}

void EditSession::open() {
    m_changed = false;
    m_aborted = false;
    m_dropDown.hide();
    m_text.hide();
    m_down.hide();
    m_select.hide();

    // Children are sized and coloured first, then filled, then shown, then focused.
    const qint32 mode = this->mode();
    if (mode < 0)
        return;
    setBoxColours(m_text, m_control, m_control.BackColor(), m_control.ForeColor());
    m_text.setFont(m_control.Font()->qfont());
    // Framed as the application's line edits are.
    m_text.setFrame(true);
    const QRect inner = m_control.contentsRect();
    if (mode == lsEditTextBox) {
        m_text.setGeometry(inner);
        m_text.setText(m_value.toString());
        m_text.show();
    } else {
        ButtonSurface &button = mode == lsEditComboBox ? m_down : m_select;
        if (mode == lsEditComboBox)
            m_dropDown.rememberPlace();
        const qint32 side = inner.height();
        button.setGeometry(inner.x() + inner.width() - side, inner.y(), side, side);
        m_text.setGeometry(inner.x(), inner.y(), inner.width() - side, inner.height());
        m_text.setText(m_value.toString());
        if (mode == lsEditComboBox)
            m_dropDown.selectValue(m_value);
        m_text.show();
        if (mode == lsEditComboBox)
            m_control.DrawDownButton(lsBtnUp);
        else
            m_control.DrawSelectButton(lsBtnUp);
        button.show();
    }
    m_open = true;
    m_control.show();
    m_control.raise();
    m_text.setFocus();
}

void EditSession::abort() {
    m_aborted = true;
    close();
}

void EditSession::close() {
    m_open = false;
    // Hiding the focused editor moves the focus out at once, and that exit commits; where the
    // focus has nowhere to go it is taken away here, so the exit still comes before OnClose.
    m_control.hide();
    for (QWidget *focused : {QApplication::focusWidget(), m_control.window()->focusWidget()})
        if (contains(focused) && focused != m_control.window())
            focused->clearFocus();
    m_down.hide();
    m_select.hide();
    m_dropDown.hide();
    m_text.hide();
    emit m_control.OnClose();
}

void EditSession::keyPress(qint16 &keyAscii) {
    if (keyAscii == kEnter) {
        keyAscii = 0;
        if (mode() == lsEditButton)
            commitButton();
        // Text and combo box commit as the focus leaves the closing editor.
        close();
    } else if (keyAscii == kEscape) {
        m_aborted = true;
        keyAscii = 0;
        close();
    }
}

void EditSession::textGotFocus() {
    switch (mode()) {
    case lsEditTextBox:
        m_text.setReadOnly(false);
        m_text.setSelection(0, int(m_text.text().size()));
        break;
    case lsEditComboBox:
        m_text.setReadOnly(false);
        break;
    case lsEditButton:
        // The value changes only through the host's own window.
        m_text.setReadOnly(true);
        break;
    default:
        break;
    }
}

bool EditSession::contains(const QWidget *widget) const {
    return widget && (widget == &m_control || m_control.isAncestorOf(widget));
}

void EditSession::focusChanged(QWidget *now) {
    // Moves between the editor's own children are no exit.
    if (contains(now))
        m_focusInside = true;
    else if (m_focusInside)
        exitFocus();
}

void EditSession::exitFocus() {
    m_focusInside = false;
    if (!m_aborted) {
        if (mode() == lsEditTextBox)
            validateAnnounceStore();
        else if (mode() == lsEditComboBox)
            commitListChoice();
    }
    close();
}

void EditSession::listReleased() {
    // Closing commits through the focus exit first; the direct commit repeats it.
    close();
    commitListChoice();
}

bool EditSession::validateAnnounceStore() {
    // The text box is read afresh at each step: a host may veto, but not rewrite, through the
    // events' arguments.
    QVariant newValue = m_text.text();
    bool cancel = false;
    emit m_control.EditValidate(newValue, m_value, cancel);
    if (cancel)
        return false;
    m_changed = !sameAs(m_text.text(), m_value);
    QVariant announced = m_text.text();
    emit m_control.AfterEdit(announced, m_value, m_changed);
    m_value = m_text.text();
    return true;
}

void EditSession::commitListChoice() {
    if (m_dropDown.movingSelection())
        return;
    const std::optional<QString> choice = m_dropDown.takeChoice();
    if (!choice)
        return;
    m_text.setText(*choice);
    if (validateAnnounceStore())
        m_dropDown.keepChoice();
}

void EditSession::commitButton() {
    QVariant newValue = m_text.text();
    bool cancel = false;
    emit m_control.EditValidate(newValue, m_value, cancel);
    if (cancel)
        return;
    // The text is not the result here: the host's window is. Nothing has changed yet.
    QVariant announced = m_text.text();
    bool changed = false;
    emit m_control.AfterEdit(announced, m_value, changed);
    qint32 left = m_control.x();
    qint32 top = m_control.y();
    emit m_control.OnButtonClick(left, top, m_value);
}
