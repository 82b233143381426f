// lsEdit: what an open edit does with keys, the focus and the mouse, its commits and its
// drop-down list.
//
//   Input          connectInput, key down / key press, focus in, text changed, focus exit
//   Closing        CloseEditor
//   Commits        CommitText, CommitListChoice, CommitButton (validate, announce, store)
//   Drop-down      SelectValueInList, MatchListPrefix, the arrow button, OpenDropDown, list click

#include "lsEdit.h"

#include "ButtonSurface.h"
#include "EditTextBox.h"
#include "KeyCodes.h"
#include "SystemColors.h"
#include "VariantNumber.h"

#include <QApplication>
#include <QFontMetrics>
#include <QHash>
#include <QKeyEvent>
#include <QListWidget>
#include <QMouseEvent>
#include <QScreen>
#include <functional>

namespace {

constexpr qint16 kLeftButton = 1;
constexpr qint16 kEnter = 13;
constexpr qint16 kEscape = 27;
constexpr qint32 kMostRows = 8;

// Keys on the list: characters go the text box's way (Enter closes and so commits, Escape
// aborts); the list keeps its own movement keys. A release over the list chooses.
class ListInput : public QObject {
public:
    ListInput(QListWidget *list, std::function<void(qint16 &)> keyPress,
              std::function<void()> released)
        : QObject(list), m_keyPress(std::move(keyPress)), m_released(std::move(released)) {}

    bool eventFilter(QObject *, QEvent *event) override {
        if (event->type() == QEvent::KeyPress) {
            const auto *key = static_cast<QKeyEvent *>(event);
            qint16 ascii = keyAscii(key->text(), virtualKeyCode(key->key()));
            if (ascii != 0) {
                m_keyPress(ascii);
                return ascii == 0;
            }
        } else if (event->type() == QEvent::MouseButtonRelease) {
            m_released();
            return true;
        }
        return false;
    }

private:
    std::function<void(qint16 &)> m_keyPress;
    std::function<void()> m_released;
};

} // namespace

// --- Input --------------------------------------------------------------------------------------

void lsEdit::connectInput() {
    connect(m_text, &EditTextBox::keyDown, this, [this](qint16 code, qint16) {
        guarded("text box key down", [&] { onTextKeyDown(code); });
    });
    connect(m_text, &EditTextBox::keyPress, this,
            [this](qint16 &ascii) { guarded("text box key press", [&] { onKeyPress(ascii); }); });
    connect(m_text, &EditTextBox::gotFocus, this,
            [this] { guarded("text box focus", [&] { onTextGotFocus(); }); });
    connect(m_text, &QLineEdit::textChanged, this,
            [this] { guarded("text change", [&] { onTextChanged(); }); });
    for (ButtonSurface *button : {m_select, m_down})
        connect(button, &ButtonSurface::keyPress, this,
                [this](qint16 &ascii) { guarded("button key", [&] { onKeyPress(ascii); }); });
    connect(m_select, &ButtonSurface::exposureChanged, this,
            [this] { guarded("ellipsis exposure", [&] { DrawSelectButton(m_selectState); }); });
    connect(m_down, &ButtonSurface::exposureChanged, this,
            [this] { guarded("arrow exposure", [&] { DrawDownButton(m_downState); }); });
    connect(m_down, &ButtonSurface::pressed, this, [this](qint16 button, qint16, float, float) {
        guarded("arrow press", [&] { onDownPressed(button); });
    });
    connect(m_down, &ButtonSurface::released, this,
            [this] { guarded("arrow release", [&] { DrawDownButton(lsBtnUp); }); });
    connect(m_select, &ButtonSurface::pressed, this, [this](qint16 button, qint16, float, float) {
        guarded("ellipsis press", [&] {
            if (button == kLeftButton)
                DrawSelectButton(lsBtnDown);
        });
    });
    // Any button let go over the ellipsis acts as Enter: the release is not filtered.
    connect(m_select, &ButtonSurface::released, this, [this] {
        guarded("ellipsis release", [&] {
            DrawSelectButton(lsBtnUp);
            qint16 enter = kEnter;
            onKeyPress(enter);
        });
    });
    auto *listInput = new ListInput(
        m_list, [this](qint16 &ascii) { guarded("list key", [&] { onKeyPress(ascii); }); },
        [this] { guarded("list release", [&] { onListReleased(); }); });
    m_list->installEventFilter(listInput);
    m_list->viewport()->installEventFilter(listInput);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *old, QWidget *now) {
        guarded("focus change", [&] { onFocusChanged(old, now); });
    });
}

void lsEdit::onTextKeyDown(qint16 keyCode) {
    // Only the combo box reads keys here: they open its list.
    if (modeNumber() != lsEditComboBox)
        return;
    if (!m_list->isHidden()) {
        // With the list open its movement keys are the list's, wherever the focus is, as in
        // any combo box.
        static const QHash<qint16, Qt::Key> moves = {
            {38, Qt::Key_Up}, {40, Qt::Key_Down}, {33, Qt::Key_PageUp}, {34, Qt::Key_PageDown}};
        if (moves.contains(keyCode)) {
            QKeyEvent move(QEvent::KeyPress, moves.value(keyCode), Qt::NoModifier);
            QApplication::sendEvent(m_list, &move);
        }
        return;
    }
    const bool arrow = keyCode == 40 || keyCode == 38;
    if (!arrow && (keyCode < 20 || keyCode > 127))
        return;
    onDownPressed(kLeftButton);
    // A key presses the arrow and lets it go at once: no mouse release will draw it up.
    DrawDownButton(lsBtnUp);
    // A typed character then starts a fresh search in an empty box.
    if (!arrow)
        m_text->setText(QString());
}

void lsEdit::onKeyPress(qint16 &keyAscii) {
    if (keyAscii == kEnter) {
        keyAscii = 0;
        if (modeNumber() == lsEditButton)
            CommitButton();
        // Text and combo box commit as the focus leaves the closing editor.
        CloseEditor();
    } else if (keyAscii == kEscape) {
        m_aborted = true;
        keyAscii = 0;
        CloseEditor();
    }
}

void lsEdit::onTextGotFocus() {
    switch (modeNumber()) {
    case lsEditTextBox:
        m_text->setReadOnly(false);
        m_text->setSelection(0, int(m_text->text().size()));
        break;
    case lsEditComboBox:
        m_text->setReadOnly(false);
        break;
    case lsEditButton:
        // The value changes only through the host's own window.
        m_text->setReadOnly(true);
        break;
    default:
        break;
    }
}

void lsEdit::onTextChanged() {
    if (modeNumber() == lsEditComboBox)
        MatchListPrefix();
}

bool lsEdit::contains(const QWidget *widget) const {
    return widget && (widget == this || isAncestorOf(widget));
}

void lsEdit::onFocusChanged(QWidget *, QWidget *now) {
    // Moves between the editor's own children are no exit.
    if (contains(now))
        m_focusInside = true;
    else if (m_focusInside)
        exitFocus();
}

void lsEdit::exitFocus() {
    m_focusInside = false;
    if (!m_aborted) {
        if (modeNumber() == lsEditTextBox)
            CommitText();
        else if (modeNumber() == lsEditComboBox)
            CommitListChoice();
    }
    CloseEditor();
}

// --- Closing ------------------------------------------------------------------------------------

void lsEdit::CloseEditor() {
    m_open = false;
    // Hiding the focused editor moves the focus out at once, and that exit commits; where the
    // focus has nowhere to go it is taken away here, so the exit still comes before OnClose.
    hide();
    for (QWidget *focused : {QApplication::focusWidget(), window()->focusWidget()})
        if (contains(focused) && focused != window())
            focused->clearFocus();
    m_down->hide();
    m_select->hide();
    m_list->hide();
    m_text->hide();
    emit OnClose();
}

// --- Commits ------------------------------------------------------------------------------------

namespace {

// Variant comparison of the text with a value: numerically when the value is a number and the
// text reads as one, as text otherwise.
bool sameAs(const QString &text, const QVariant &value) {
    const bool numericValue =
        value.typeId() != QMetaType::QString && value.typeId() != QMetaType::Bool;
    if (numericValue) {
        const std::optional<double> a = numberIn(text), b = numberIn(value);
        if (a && b)
            return *a == *b;
    }
    return text == value.toString();
}

} // namespace

void lsEdit::CommitText() {
    validateAnnounceStore();
}

bool lsEdit::validateAnnounceStore() {
    // The text box is read afresh at each step: a host may veto, but not rewrite, through the
    // events' arguments.
    QVariant newValue = m_text->text();
    bool cancel = false;
    emit EditValidate(newValue, m_value, cancel);
    if (cancel)
        return false;
    m_changed = !sameAs(m_text->text(), m_value);
    QVariant announced = m_text->text();
    emit AfterEdit(announced, m_value, m_changed);
    m_value = m_text->text();
    return true;
}

void lsEdit::CommitListChoice() {
    if (m_suppressListCommit)
        return;
    m_list->hide();
    // Text that matches no entry is never stored.
    const int row = m_list->currentRow();
    if (row < 0 || row >= m_list->count())
        return;
    m_text->setText(m_list->item(row)->text());
    if (validateAnnounceStore())
        m_listIndex = m_list->currentRow();
}

void lsEdit::CommitButton() {
    QVariant newValue = m_text->text();
    bool cancel = false;
    emit EditValidate(newValue, m_value, cancel);
    if (cancel)
        return;
    // The text is not the result here: the host's window is. Nothing has changed yet.
    QVariant announced = m_text->text();
    bool changed = false;
    emit AfterEdit(announced, m_value, changed);
    qint32 left = x();
    qint32 top = y();
    emit OnButtonClick(left, top, m_value);
}

// --- Drop-down list -----------------------------------------------------------------------------

qint32 lsEdit::SelectValueInList() {
    m_suppressListCommit = true;
    m_list->setCurrentRow(-1);
    for (int i = 0; i < m_list->count(); ++i) {
        if (sameAs(m_list->item(i)->text(), m_value)) {
            m_list->setCurrentRow(i);
            break;
        }
    }
    m_suppressListCommit = false;
    return m_list->currentRow();
}

bool lsEdit::MatchListPrefix() {
    bool found = false;
    const QString text = m_text->text();
    const int count = m_list->count();
    if (!text.isEmpty() && count > 0) {
        // From the current entry itself: one that still matches keeps its place as typing goes
        // on. Only the list follows the typing; the text is not completed.
        const int start = std::max(m_list->currentRow(), 0);
        const QString wanted = text.toUpper();
        int i = start;
        do {
            if (m_list->item(i)->text().left(text.size()).toUpper() == wanted) {
                m_list->setCurrentRow(i);
                found = true;
                break;
            }
            i = (i + 1) % count;
        } while (i != start);
    }
    m_text->deselect();
    if (m_text->isVisible())
        m_text->setFocus();
    return found;
}

void lsEdit::onDownPressed(qint16 button) {
    if (button != kLeftButton)
        return;
    DrawDownButton(lsBtnDown);
    if (m_list->isHidden()) {
        OpenDropDown();
        m_list->setFont(m_font->qfont());
        QPalette pal = m_list->palette();
        pal.setColor(QPalette::Base, QColor::fromRgb(oleTranslateColor(m_backColor)));
        pal.setColor(QPalette::Text, QColor::fromRgb(oleTranslateColor(m_foreColor)));
        m_list->setPalette(pal);
        m_list->move(contentsRect().x(), m_list->y());
        m_list->show();
        // A list view taking the focus makes its first entry current when none is; here no
        // entry chosen must stay so, or Enter would commit one nobody picked.
        const int current = m_list->currentRow();
        m_list->setFocus();
        if (m_list->currentRow() != current)
            m_list->setCurrentRow(current);
        return;
    }
    // A second press folds the list away and nothing is committed.
    m_list->hide();
    resize(width(), m_savedHeight);
    if (modeNumber() == lsEditComboBox) {
        move(x(), m_savedTop);
        m_text->move(m_text->x(), contentsRect().y());
        m_down->move(m_down->x(), contentsRect().y());
    }
}

void lsEdit::OpenDropDown() {
    // One row more than there are entries, on purpose; at most eight.
    qint32 wanted = std::min<qint32>(m_list->count() + 1, kMostRows);
    if (wanted == 0)
        wanted = 1;
    const qint32 rowHeight =
        QFontMetrics(m_font->qfont()).boundingRect(QStringLiteral("A")).height();
    for (int i = 0; i < m_list->count(); ++i)
        m_list->item(i)->setSizeHint(QSize(0, rowHeight));
    const qint32 needed = wanted * rowHeight;
    // Room is counted from the editor's top, in its container (the screen for a window of its
    // own).
    const QWidget *container = parentWidget();
    const qint32 clientBottom = container  ? container->rect().bottom() + 1
                                : screen() ? screen()->availableGeometry().bottom() + 1
                                           : 0;
    const qint32 roomBelow = clientBottom - y();
    const qint32 roomAbove = y();
    const auto rowsIn = [&](qint32 room) {
        qint32 rows = room >= needed ? wanted : room / rowHeight - 1;
        // Exactly no row still opens two; a negative count is left as it is.
        if (rows == 0)
            rows = 2;
        return std::min(rows, kMostRows);
    };
    const qint32 below = rowsIn(roomBelow), above = rowsIn(roomAbove);
    const QRect inner = contentsRect();
    const bool upwards = below < above;
    m_list->resize(inner.width(), std::max(0, (upwards ? above : below) * rowHeight));
    const qint32 grown = m_list->height() + m_savedHeight;
    if (!upwards) {
        // The list overlaps the text row's bottom edge by one pixel.
        m_list->move(inner.x(), inner.y() + m_savedHeight - 1);
        resize(width(), grown);
    } else {
        // The editor grows upwards and the text row stays where it was on the screen.
        m_list->move(inner.x(), inner.y() + 1);
        const qint32 gained = grown - height();
        resize(width(), grown);
        move(x(), y() - gained);
        const qint32 textTop = contentsRect().y() + contentsRect().height() - m_text->height();
        m_text->move(m_text->x(), textTop);
        m_down->move(m_down->x(), textTop);
    }
    raise();
}

void lsEdit::onListReleased() {
    // Closing commits through the focus exit first; the direct commit repeats it.
    CloseEditor();
    CommitListChoice();
}

// --- Keys left over -----------------------------------------------------------------------------

void lsEdit::keyPressEvent(QKeyEvent *event) {
    event->accept();
}

void lsEdit::keyReleaseEvent(QKeyEvent *event) {
    event->accept();
}
