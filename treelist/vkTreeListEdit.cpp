// vkTreeList: editing a cell in place with the control's own editor, lseMisc.
//
// The host starts an edit with Edit (typically from CellClick or DblClick); nothing of the
// control's own input opens the editor. The editor's events reach the host as AfterEdit,
// BeforeEdit, ValidateEdit and EditButtonClick with their arguments by reference; the control
// never writes the edited value into the cell: the host does, in AfterEdit.

#include "vkTreeList.h"

#include "TreeListState.h"
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
    d->lseMisc = new lsEdit(d->picOut, d->host);
    connect(d->lseMisc, &lsEdit::AfterEdit, this,
            [this](QVariant &newValue, QVariant &oldValue, bool &changed) {
                emit AfterEdit(newValue, oldValue, changed);
            });
    connect(d->lseMisc, &lsEdit::BeforeEdit, this,
            [this](bool &cancel) { emit BeforeEdit(cancel); });
    connect(d->lseMisc, &lsEdit::EditValidate, this,
            [this](QVariant &newValue, QVariant &oldValue, bool &cancel) {
                emit ValidateEdit(newValue, oldValue, cancel);
            });
    connect(d->lseMisc, &lsEdit::OnButtonClick, this,
            [this](qint32 &x, qint32 &y, QVariant &value) { emit EditButtonClick(x, y, value); });
    connect(d->lseMisc, &lsEdit::OnClose, this, [this] {
        // The keyboard comes back to the grid; where the window is not active that cannot
        // happen, and it does not matter.
        d->picOut->setFocus();
        d->editing = false;
    });
}

lsEdit *vkTreeList::lseMisc() const {
    return d->lseMisc;
}

bool vkTreeList::Edit(qint32 &RowID, qint32 &ColID, qint32 &Mode) {
    if (d->editing)
        return false;
    d->editing = false;
    if (RowID == -1)
        RowID = Row();
    if (ColID == -1)
        ColID = Col();
    // A row under a collapsed branch is on no line: an editor for it would lie over whatever is
    // drawn where the row was last seen, and commit to a row nobody can see.
    if (const lsNodePtr target = d->rows->at(RowID); target && !target->Visible())
        return false;
    const lsNodePtr row = d->rows->SelectedRow();
    const lsCellPtr selected = d->rows->SelectedCell();
    if (!row || !selected || row->Index() != RowID || selected->Index() != ColID) {
        d->rows->Selected(RowID, ColID, false);
        // The selection the grid shows moves with it.
        d->frames->RedrawFrame(false);
    }
    const lsCellPtr cell = d->rows->SelectedCell();
    if (!cell)
        throw TreeListError(TreeListError::InvalidArgument);
    // A row scrolled out of the view has no place on screen but the one it was last seen at,
    // which another row now shows: the view comes to the row first.
    d->view->bringIntoView(d->rows->SelectedRow());
    if (Mode != -1)
        setEditMode(Mode);
    // Over the cell's text area, right of its indentation and pictures.
    d->lseMisc->setGeometry(cell->Left() + cell->Xoffset() + d->view->offset(), cell->Top(),
                            cell->Width() - cell->Xoffset(), cell->Height());
    d->lseMisc->setValue(cell->Title());
    // The value stays where the cell shows it instead of jumping to the left as the edit opens.
    d->lseMisc->txtEdit()->setAlignment(textAlignment(cell->Alignment()));
    // A screen reader names the text box after the column it edits.
    d->lseMisc->txtEdit()->setAccessibleName(HeaderCell(lslcData, 1, ColID).toString());
    d->lseMisc->setBackColor(BackColor());
    d->lseMisc->setForeColor(ForeColor());
    d->lseMisc->setFont(Font());
    // Set before the editor asks BeforeEdit: a host that cancels there leaves it set, and Edit
    // stays shut until AbortEdit or a scroll closes the editor.
    d->editing = true;
    qint32 mode = d->settings.editMode;
    d->lseMisc->Edit(mode);
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
    if (d->editing)
        d->lseMisc->AbortEdit();
    return QString();
}

void vkTreeList::EditComboClear() {
    d->lseMisc->Clear();
}

void vkTreeList::EditComboAddItem(const QVariant &Item, const QVariant &Index) {
    if (!Index.isValid())
        d->lseMisc->AddItem(Item);
    else
        d->lseMisc->AddItem(Item, Index);
}

qint32 vkTreeList::EditComboListIndex() {
    return d->lseMisc->ListIndex();
}

QVariant vkTreeList::EditComboList(const QVariant &Index) const {
    return d->lseMisc->List(Index);
}
