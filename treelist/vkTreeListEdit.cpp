// vkTreeList: editing a cell in place with the control's own editor, lseMisc.
//
// The host starts an edit with Edit (typically from CellClick or DblClick); nothing of the
// control's own input opens the editor. The editor's events reach the host as AfterEdit,
// BeforeEdit, ValidateEdit and EditButtonClick with their arguments by reference; the control
// never writes the edited value into the cell: the host does, in AfterEdit.

#include "vkTreeList.h"

#include "TreeListViewport.h"

#include "FrameKeeper.h"

#include "PictureBox.h"
#include "lsEdit.h"

#include <QLineEdit>

namespace {

Qt::Alignment textAlignment(qint32 cellAlignment) {
    switch (cellAlignment) {
    case lsAlignRightJustify:
        return Qt::AlignRight | Qt::AlignVCenter;
    case lsAlignCenter:
        return Qt::AlignHCenter | Qt::AlignVCenter;
    default:
        return Qt::AlignLeft | Qt::AlignVCenter;
    }
}

} // namespace

void vkTreeList::connectEditor() {
    // A child of the drawing surface: cell positions are positions on it, and the drop-down list
    // measures its room against it.
    m_lseMisc = new lsEdit(m_picOut, m_host);
    connect(m_lseMisc, &lsEdit::AfterEdit, this,
            [this](QVariant &newValue, QVariant &oldValue, bool &changed) {
                emit AfterEdit(newValue, oldValue, changed);
            });
    connect(m_lseMisc, &lsEdit::BeforeEdit, this,
            [this](bool &cancel) { emit BeforeEdit(cancel); });
    connect(m_lseMisc, &lsEdit::EditValidate, this,
            [this](QVariant &newValue, QVariant &oldValue, bool &cancel) {
                emit ValidateEdit(newValue, oldValue, cancel);
            });
    connect(m_lseMisc, &lsEdit::OnButtonClick, this,
            [this](qint32 &x, qint32 &y, QVariant &value) { emit EditButtonClick(x, y, value); });
    connect(m_lseMisc, &lsEdit::OnClose, this, [this] {
        // The keyboard comes back to the grid; where the window is not active that cannot
        // happen, and it does not matter.
        m_picOut->setFocus();
        m_editing = false;
    });
}

lsEdit *vkTreeList::lseMisc() const {
    return m_lseMisc;
}

bool vkTreeList::Edit(qint32 &RowID, qint32 &ColID, qint32 &Mode) {
    if (m_editing)
        return false;
    m_editing = false;
    if (RowID == -1)
        RowID = Row();
    if (ColID == -1)
        ColID = Col();
    // A row under a collapsed branch is on no line: an editor for it would lie over whatever is
    // drawn where the row was last seen, and commit to a row nobody can see.
    if (const lsNodePtr target = m_rows->at(RowID); target && !target->Visible())
        return false;
    const lsNodePtr row = m_rows->SelectedRow();
    const lsCellPtr selected = m_rows->SelectedCell();
    if (!row || !selected || row->Index() != RowID || selected->Index() != ColID) {
        m_rows->Selected(RowID, ColID, false);
        // The selection the grid shows moves with it.
        m_frames->RedrawFrame(false);
    }
    const lsCellPtr cell = m_rows->SelectedCell();
    if (!cell)
        throw TreeListError(TreeListError::InvalidArgument);
    // A row scrolled out of the view has no place on screen but the one it was last seen at,
    // which another row now shows: the view comes to the row first.
    m_view->bringIntoView(m_rows->SelectedRow());
    if (Mode != -1)
        setEditMode(Mode);
    // Over the cell's text area, right of its indentation and pictures.
    m_lseMisc->setGeometry(cell->Left() + cell->Xoffset() + m_view->offset(), cell->Top(),
                           cell->Width() - cell->Xoffset(), cell->Height());
    m_lseMisc->setValue(cell->Title());
    // The value stays where the cell shows it instead of jumping to the left as the edit opens.
    m_lseMisc->txtEdit()->setAlignment(textAlignment(cell->Alignment()));
    m_lseMisc->setBackColor(BackColor());
    m_lseMisc->setForeColor(ForeColor());
    m_lseMisc->setFont(Font());
    // Set before the editor asks BeforeEdit: a host that cancels there leaves it set, and Edit
    // stays shut until AbortEdit or a scroll closes the editor.
    m_editing = true;
    qint32 mode = m_settings.editMode;
    m_lseMisc->Edit(mode);
    return false;
}

bool vkTreeList::Edit(qint32 &RowID, qint32 &ColID) {
    qint32 mode = -1;
    return Edit(RowID, ColID, mode);
}

bool vkTreeList::Edit(const qint32 &RowID, const qint32 &ColID, const qint32 &Mode) {
    qint32 row = RowID, column = ColID, mode = Mode;
    return Edit(row, column, mode);
}

QString vkTreeList::AbortEdit() {
    if (m_editing)
        m_lseMisc->AbortEdit();
    return QString();
}

void vkTreeList::EditComboClear() {
    m_lseMisc->Clear();
}

void vkTreeList::EditComboAddItem(const QVariant &Item, const QVariant &Index) {
    if (!Index.isValid())
        m_lseMisc->AddItem(Item);
    else
        m_lseMisc->AddItem(Item, Index);
}

qint32 vkTreeList::EditComboListIndex() {
    return m_lseMisc->ListIndex();
}

QVariant vkTreeList::EditComboList(const QVariant &Index) const {
    return m_lseMisc->List(Index);
}
