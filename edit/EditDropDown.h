#pragma once
// The drop-down list of the editor's combo-box mode: it follows the typing, opens below the text
// row (above it when there is more room there) by growing the editor, and folds away again. The
// list widget and the arrow button belong to the editor; this drives them.

#include <QString>
#include <QVariant>
#include <functional>
#include <optional>

class ButtonSurface;
class DropDownDelegate;
class EditTextBox;
class QListWidget;
class QObject;
class lsEdit;

class EditDropDown {
public:
    // listIndex is the editor's cached ListIndex, updated when a choice is kept.
    EditDropDown(lsEdit &control, EditTextBox &text, QListWidget &list, ButtonSurface &arrow,
                 qint32 &listIndex);
    ~EditDropDown();
    EditDropDown(const EditDropDown &) = delete;
    EditDropDown &operator=(const EditDropDown &) = delete;

    // Keys on the list go to keyPress the way the text box's characters go (the handler may
    // swallow them by setting them to 0); a mouse button let go over the list calls released.
    void listenToList(std::function<void(qint16 &)> keyPress, std::function<void()> released);

    // Notes where the editor stands as a combo-box edit opens: the list grows it, and folding
    // the list shrinks it back.
    void rememberPlace();
    // Makes the entry equal to value current (none when no entry is); its index.
    qint32 selectValue(const QVariant &value);
    // Makes row current without that counting as a choice; beyond 16 bits raises overflow.
    void selectRow(qint32 row);
    // Makes the first entry from the current one on that starts with the text (any case)
    // current, and gives the text box back the focus; true when one does.
    bool matchPrefix();
    // A key went down in the text box of a combo box: with the list open, movement keys move in
    // it; closed, a character or an arrow key opens it.
    void textKeyDown(qint16 keyCode);
    // The arrow button was pressed: opens the list, or folds it away (nothing is chosen then).
    void arrowPressed(qint16 button, bool comboMode);
    // True while the editor itself moves the selection: that is no choice to commit.
    bool movingSelection() const { return m_movingSelection; }
    // Hides the list, leaving the editor's size to the caller.
    void hide();
    // Folds the list away; the text of its current entry, when there is one.
    std::optional<QString> takeChoice();
    // The current entry becomes the cached ListIndex.
    void keepChoice();

private:
    // Sizes the list for its entries and the room around the editor and grows the editor.
    void open();

    lsEdit &m_control;
    EditTextBox &m_text;
    QListWidget &m_list;
    ButtonSurface &m_arrow;
    qint32 &m_listIndex;
    DropDownDelegate *m_hover; // owned by the list
    QObject *m_input = nullptr;
    bool m_movingSelection = false;
    // Where the editor stood when a combo-box edit opened.
    qint32 m_savedTop = 0;
    qint32 m_savedHeight = 0;
};
