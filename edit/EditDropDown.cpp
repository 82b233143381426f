#include "EditDropDown.h"

#include "ButtonSurface.h"
#include "DropDownDelegate.h"
#include "EditSession.h"
#include "EditTextBox.h"
#include "InheritedPalette.h"
#include "KeyCodes.h"
#include "TreeListError.h"
#include "lsEdit.h"

#include <QApplication>
#include <QFontMetrics>
#include <QHash>
#include <QKeyEvent>
#include <QListWidget>
#include <QScopeGuard>
#include <QScreen>

namespace {

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

EditDropDown::EditDropDown(lsEdit &control, EditTextBox &text, QListWidget &list,
                           ButtonSurface &arrow, qint32 &listIndex)
    : m_control(control), m_text(text), m_list(list), m_arrow(arrow), m_listIndex(listIndex),
      m_hover(new DropDownDelegate(&list)) {
    // A framed list whose entry under the pointer lights up, as a combo box's list does.
    m_list.setFrameShape(QFrame::StyledPanel);
    m_list.setItemDelegate(m_hover);
    m_list.setMouseTracking(true);
    m_list.viewport()->setAttribute(Qt::WA_Hover);
}

EditDropDown::~EditDropDown() {
    // The filter's handlers reach into the editor, which is going: the list must not call them
    // while it is deleted after this.
    delete m_input;
}

void EditDropDown::listenToList(std::function<void(qint16 &)> keyPress,
                                std::function<void()> released) {
    m_input = new ListInput(&m_list, std::move(keyPress), std::move(released));
    m_list.installEventFilter(m_input);
    m_list.viewport()->installEventFilter(m_input);
}

void EditDropDown::rememberPlace() {
    m_savedTop = m_control.y();
    m_savedHeight = m_control.height();
}

qint32 EditDropDown::selectValue(const QVariant &value) {
    m_movingSelection = true;
    m_list.setCurrentRow(-1);
    for (int i = 0; i < m_list.count(); ++i) {
        if (EditSession::sameAs(m_list.item(i)->text(), value)) {
            m_list.setCurrentRow(i);
            break;
        }
    }
    m_movingSelection = false;
    return m_list.currentRow();
}

void EditDropDown::selectRow(qint32 row) {
    // Cleared even when the row does not fit, or no list commit would ever run again.
    m_movingSelection = true;
    const auto clear = qScopeGuard([&] { m_movingSelection = false; });
    m_list.setCurrentRow(toInt16(row));
}

bool EditDropDown::matchPrefix() {
    bool found = false;
    const QString text = m_text.text();
    const int count = m_list.count();
    if (!text.isEmpty() && count > 0) {
        // From the current entry itself: one that still matches keeps its place as typing goes
        // on. Only the list follows the typing; the text is not completed.
        const int start = std::max(m_list.currentRow(), 0);
        const QString wanted = text.toUpper();
        int i = start;
        do {
            if (m_list.item(i)->text().left(text.size()).toUpper() == wanted) {
                m_list.setCurrentRow(i);
                found = true;
                break;
            }
            i = (i + 1) % count;
        } while (i != start);
    }
    m_text.deselect();
    if (m_text.isVisible())
        m_text.setFocus();
    return found;
}

void EditDropDown::textKeyDown(qint16 keyCode) {
    if (!m_list.isHidden()) {
        // With the list open its movement keys are the list's, wherever the focus is, as in
        // any combo box.
        static const QHash<qint16, Qt::Key> moves = {
            {38, Qt::Key_Up}, {40, Qt::Key_Down}, {33, Qt::Key_PageUp}, {34, Qt::Key_PageDown}};
        if (moves.contains(keyCode)) {
            QKeyEvent move(QEvent::KeyPress, moves.value(keyCode), Qt::NoModifier);
            QApplication::sendEvent(&m_list, &move);
        }
        return;
    }
    const bool arrow = keyCode == 40 || keyCode == 38;
    if (!arrow && (keyCode < 20 || keyCode > 127))
        return;
    arrowPressed(kLeftButton, true);
    // A key presses the arrow and lets it go at once: no mouse release will draw it up.
    m_control.DrawDownButton(lsBtnUp);
    // A typed character then starts a fresh search in an empty box.
    if (!arrow)
        m_text.setText(QString());
}

void EditDropDown::arrowPressed(qint16 button, bool comboMode) {
    if (button != kLeftButton)
        return;
    m_control.DrawDownButton(lsBtnDown);
    if (m_list.isHidden()) {
        open();
        m_list.setFont(m_control.Font()->qfont());
        setBoxColours(m_list, m_control, m_control.BackColor(), m_control.ForeColor());
        m_list.move(m_control.contentsRect().x(), m_list.y());
        m_list.show();
        // A list view taking the focus makes its first entry current when none is; here no
        // entry chosen must stay so, or Enter would commit one nobody picked.
        const int current = m_list.currentRow();
        m_list.setFocus();
        if (m_list.currentRow() != current)
            m_list.setCurrentRow(current);
        return;
    }
    // A second press folds the list away and nothing is committed.
    m_list.hide();
    m_control.resize(m_control.width(), m_savedHeight);
    if (comboMode) {
        m_control.move(m_control.x(), m_savedTop);
        m_text.move(m_text.x(), m_control.contentsRect().y());
        m_arrow.move(m_arrow.x(), m_control.contentsRect().y());
    }
}

void EditDropDown::open() {
    // One row more than there are entries, on purpose; at most eight.
    qint32 wanted = std::min<qint32>(m_list.count() + 1, kMostRows);
    if (wanted == 0)
        wanted = 1;
    // Lines as high as the row the edit opened on, so the list continues the control's rows.
    const qint32 rowHeight =
        m_savedHeight > 0
            ? m_savedHeight
            : QFontMetrics(m_control.Font()->qfont()).boundingRect(QStringLiteral("A")).height();
    for (int i = 0; i < m_list.count(); ++i)
        m_list.item(i)->setSizeHint(QSize(0, rowHeight));
    const qint32 needed = wanted * rowHeight;
    // Room is counted from the editor's top, in its container (the screen for a window of its
    // own).
    const QWidget *container = m_control.parentWidget();
    const QScreen *screen = m_control.screen();
    const qint32 clientBottom = container ? container->rect().bottom() + 1
                                : screen  ? screen->availableGeometry().bottom() + 1
                                          : 0;
    const qint32 roomBelow = clientBottom - m_control.y();
    const qint32 roomAbove = m_control.y();
    const auto rowsIn = [&](qint32 room) {
        qint32 rows = room >= needed ? wanted : room / rowHeight - 1;
        // Exactly no row still opens two; a negative count is left as it is.
        if (rows == 0)
            rows = 2;
        return std::min(rows, kMostRows);
    };
    const qint32 below = rowsIn(roomBelow), above = rowsIn(roomAbove);
    const QRect inner = m_control.contentsRect();
    const bool upwards = below < above;
    m_list.resize(inner.width(),
                  std::max(0, (upwards ? above : below) * rowHeight + 2 * m_list.frameWidth()));
    const qint32 grown = m_list.height() + m_savedHeight;
    if (!upwards) {
        // The list overlaps the text row's bottom edge by one pixel.
        m_list.move(inner.x(), inner.y() + m_savedHeight - 1);
        m_control.resize(m_control.width(), grown);
    } else {
        // The editor grows upwards and the text row stays where it was on the screen.
        m_list.move(inner.x(), inner.y() + 1);
        const qint32 gained = grown - m_control.height();
        m_control.resize(m_control.width(), grown);
        m_control.move(m_control.x(), m_control.y() - gained);
        const qint32 textTop =
            m_control.contentsRect().y() + m_control.contentsRect().height() - m_text.height();
        m_text.move(m_text.x(), textTop);
        m_arrow.move(m_arrow.x(), textTop);
    }
    m_control.raise();
}

void EditDropDown::hide() {
    m_list.hide();
}

std::optional<QString> EditDropDown::takeChoice() {
    m_list.hide();
    // Text that matches no entry is never stored.
    const int row = m_list.currentRow();
    if (row < 0 || row >= m_list.count())
        return std::nullopt;
    return m_list.item(row)->text();
}

void EditDropDown::keepChoice() {
    m_listIndex = m_list.currentRow();
}
