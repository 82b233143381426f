#include "DemoEditor.h"

#include "PictureBox.h"
#include "lsEdit.h"
#include "vkTreeList.h"

#include <QApplication>
#include <QDateEdit>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QVBoxLayout>

namespace {

constexpr qint16 LeftButton = 1;

qint32 modeOf(DemoTable::Editing editing) {
    switch (editing) {
    case DemoTable::Editing::Choice:
        return lsEditComboBox;
    case DemoTable::Editing::Dialog:
        return lsEditButton;
    default:
        return lsEditTextBox;
    }
}

} // namespace

DemoEditor::DemoEditor(vkTreeList &tree, DemoTable &table, QWidget *dialogParent)
    : QObject(dialogParent), m_tree(tree), m_table(table), m_dialogParent(dialogParent) {
    m_clickTimer.setSingleShot(true);
    connect(&m_clickTimer, &QTimer::timeout, this, [this] {
        if (m_pending)
            edit(m_pending->row, m_pending->column);
        m_pending.reset();
    });
    connect(&tree, &vkTreeList::CellClick, this, &DemoEditor::onCellClick);
    connect(&tree, &vkTreeList::MouseDown, this,
            [this](qint16 button, qint16 shift, float x, float) { onMouseDown(button, shift, x); });
    connect(&tree, &vkTreeList::MouseUp, this, [this] { m_settledRow = m_tree.Row(); });
    connect(&tree, &vkTreeList::DblClick, this, [this] {
        // The second press of a double click: the branch opens or closes, nothing is edited.
        m_clickTimer.stop();
        m_pending.reset();
    });
    connect(&tree, &vkTreeList::KeyUp, this, [this] { m_settledRow = m_tree.Row(); });
    connect(&tree, &vkTreeList::ValidateEdit, this,
            [this](QVariant &newValue, QVariant &, bool &cancel) { onValidate(newValue, cancel); });
    connect(&tree, &vkTreeList::AfterEdit, this,
            [this](QVariant &newValue, QVariant &, bool &) { onAfterEdit(newValue); });
    connect(&tree, &vkTreeList::EditButtonClick, this,
            [this](qint32 &x, qint32 &y, QVariant &value) { onButtonClick(x, y, value); });
}

const DemoTable::Column *DemoEditor::columnOf(qint32 column) const {
    if (column < 1 || column > m_table.columns.size())
        return nullptr;
    return &m_table.columns[column - 1];
}

bool DemoEditor::edit(qint32 row, qint32 column) {
    const DemoTable::Column *kind = columnOf(column);
    const lsNodePtr node = m_tree.Nodes(row);
    if (!kind || kind->editing == DemoTable::Editing::None || !node ||
        column > node->borrowCells().Count())
        return false;
    if (!node->Visible()) {
        emit message(tr("The row is in a closed branch: open the branch to edit it."));
        return false;
    }
    m_editing = {row, column};
    // The drop-down list is the control's, shared by every edit: filled for this column.
    m_tree.EditComboClear();
    if (kind->editing == DemoTable::Editing::Choice)
        for (const QString &choice : kind->choices)
            m_tree.EditComboAddItem(choice);
    m_tree.Edit(row, column, modeOf(kind->editing));
    return m_tree.isEditing();
}

void DemoEditor::onCellClick(qint32 row, qint32 column) {
    m_clickTimer.stop();
    m_pending.reset();
    m_clicked.reset();
    if (row == m_settledRow)
        m_clicked = Cell{row, column};
}

void DemoEditor::onMouseDown(qint16 button, qint16 shift, float x) {
    const std::optional<Cell> clicked = std::exchange(m_clicked, std::nullopt);
    if (!clicked || button != LeftButton || shift != 0)
        return;
    // Only a click on the text: the plus/minus box and the picture keep their own meaning.
    const lsCellPtr cell = m_tree.Nodes(clicked->row)->Cells()->Item(clicked->column);
    if (!cell || x < float(cell->Left() + cell->Xoffset() + m_tree.HorizontalOffset()))
        return;
    m_pending = clicked;
    m_clickTimer.start(QApplication::doubleClickInterval());
}

bool DemoEditor::editCurrent() {
    const DemoTable::Column *kind = columnOf(m_tree.Col());
    return edit(m_tree.Row(), kind && kind->editing != DemoTable::Editing::None ? m_tree.Col() : 1);
}

void DemoEditor::onValidate(QVariant &newValue, bool &cancel) {
    if (m_editing.column == 1 && newValue.toString().trimmed().isEmpty()) {
        cancel = true;
        emit message(tr("A name cannot be empty: the old name stays."));
    }
}

void DemoEditor::onAfterEdit(const QVariant &newValue) {
    // A button edit announces the old text here: its value comes from the dialog.
    if (columnOf(m_editing.column)->editing == DemoTable::Editing::Dialog)
        return;
    const QString text = newValue.toString();
    if (text != m_table.text(m_editing.row - 1, m_editing.column - 1))
        store(text);
}

void DemoEditor::onButtonClick(qint32 x, qint32 y, QVariant &value) {
    // The editor's left and top are positions on the drawing surface; the dialog opens under them.
    const QPoint at = m_tree.picOut()->mapToGlobal(QPoint(x, y + m_tree.lseMisc()->height()));
    if (const std::optional<QString> chosen = chooseMonth(at, value.toString())) {
        value = *chosen;
        store(*chosen);
    }
}

void DemoEditor::store(const QString &text) {
    m_tree.setListCell(lslcData, m_editing.row, m_editing.column, text);
    // Row Index i is table row i - 1: the rows were added in table order.
    m_table.setText(m_editing.row - 1, m_editing.column - 1, text);
    emit message(tr("%1 set to \"%2\"").arg(columnOf(m_editing.column)->title, text));
}

std::optional<QString> DemoEditor::chooseMonth(const QPoint &at, const QString &current) {
    QDialog dialog(m_dialogParent);
    dialog.setWindowTitle(tr("Since"));
    auto *layout = new QVBoxLayout(&dialog);
    layout->addWidget(new QLabel(tr("Year and month the person joined:"), &dialog));
    auto *date = new QDateEdit(&dialog);
    date->setDisplayFormat(QStringLiteral("yyyy-MM"));
    date->setCalendarPopup(true);
    const QDate shown = QDate::fromString(current + QStringLiteral("-01"), Qt::ISODate);
    date->setDate(shown.isValid() ? shown : QDate::currentDate());
    layout->addWidget(date);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
    connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    layout->addWidget(buttons);
    dialog.move(at);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return date->date().toString(QStringLiteral("yyyy-MM"));
}
