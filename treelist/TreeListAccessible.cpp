#include "TreeListAccessible.h"

#include "PictureBox.h"
#include "TreeListAccessibleCell.h"
#include "vkTreeList.h"

#include <QAccessibleWidget>
#include <QWidget>

namespace {

QAccessibleInterface *makeInterface(const QString &className, QObject *object) {
    if (className == QLatin1String("vkTreeList"))
        return new TreeListAccessible(static_cast<vkTreeList *>(object));
    // The editor's owner-drawn buttons are push buttons, named by the editor for what they do.
    if (className == QLatin1String("ButtonSurface"))
        return new QAccessibleWidget(static_cast<QWidget *>(object), QAccessible::Button);
    return nullptr;
}

} // namespace

TreeListAccessible::TreeListAccessible(vkTreeList *list)
    : QAccessibleWidget(list, QAccessible::Tree) {}

TreeListAccessible::~TreeListAccessible() {
    forgetCells();
}

void TreeListAccessible::install() {
    static const bool installed = [] {
        QAccessible::installFactory(makeInterface);
        return true;
    }();
    Q_UNUSED(installed);
}

vkTreeList *TreeListAccessible::list() const {
    return static_cast<vkTreeList *>(object());
}

int TreeListAccessible::rankOf(const lsNode &row) const {
    if (!row.Visible() || row.Index() < 1)
        return -1;
    return list()->rows()->VisibleRowsUpTo(row.Index()) - 1;
}

lsNodePtr TreeListAccessible::rowAt(int rank) const {
    return rank >= 0 ? list()->rows()->VisibleRowAt(rank + 1) : nullptr;
}

QAccessibleInterface *TreeListAccessible::cell(const lsNodePtr &row, int column) const {
    if (column < 1 || column > columnCount() || (!row && headerCount() == 0))
        return nullptr;
    const QPair<const lsNode *, int> key(row.get(), column);
    if (const auto found = m_cells.constFind(key); found != m_cells.constEnd()) {
        // A row removed may leave its address to a new one: its cell is not the new row's.
        auto *known =
            static_cast<TreeListAccessibleCell *>(QAccessible::accessibleInterface(*found));
        if (known && known->row() == row)
            return known;
        QAccessible::deleteAccessibleInterface(*found);
    }
    auto *made = new TreeListAccessibleCell(list(), row, column);
    m_cells.insert(key, QAccessible::registerAccessibleInterface(made));
    return made;
}

void TreeListAccessible::forgetCells() {
    for (const QAccessible::Id id : std::as_const(m_cells))
        QAccessible::deleteAccessibleInterface(id);
    m_cells.clear();
}

void *TreeListAccessible::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::TableInterface)
        return static_cast<QAccessibleTableInterface *>(this);
    return QAccessibleWidget::interface_cast(type);
}

int TreeListAccessible::headerCount() const {
    return list()->Headers() > 0 ? columnCount() : 0;
}

int TreeListAccessible::childCount() const {
    return headerCount() + rowCount() * columnCount();
}

QAccessibleInterface *TreeListAccessible::child(int index) const {
    const int headers = headerCount(), columns = columnCount();
    if (index < 0 || columns == 0)
        return nullptr;
    if (index < headers)
        return cell(nullptr, index + 1);
    const int at = index - headers;
    const lsNodePtr row = rowAt(at / columns);
    return row ? cell(row, at % columns + 1) : nullptr;
}

int TreeListAccessible::indexOfChild(const QAccessibleInterface *child) const {
    const auto *c = dynamic_cast<const TreeListAccessibleCell *>(child);
    if (!c || !c->isValid())
        return -1;
    if (c->isHeader())
        return c->column() - 1;
    const int rank = rankOf(*c->row());
    return rank < 0 ? -1 : headerCount() + rank * columnCount() + c->column() - 1;
}

QAccessibleInterface *TreeListAccessible::focusChild() const {
    if (!list()->picOut()->hasFocus())
        return nullptr;
    const lsNodePtr row = list()->rows()->SelectedRow();
    return row ? cell(row, std::max(list()->Col(), 1)) : nullptr;
}

QAccessibleInterface *TreeListAccessible::childAt(int x, int y) const {
    const QPoint at = list()->picOut()->mapFromGlobal(QPoint(x, y));
    const lsHitTestPtr hit = list()->HitTest(at.x(), at.y());
    if (hit->HeaderRow() >= 1 && hit->HeaderCol() >= 1)
        return cell(nullptr, hit->HeaderCol());
    if (hit->DataRow() < 1 || hit->DataCol() < 1)
        return nullptr;
    // A data line counts from the first row shown.
    const lsNodePtr first = list()->Nodes(list()->FirstDisplayedRow());
    return first ? cell(rowAt(rankOf(*first) + hit->DataRow() - 1), hit->DataCol()) : nullptr;
}

QAccessible::State TreeListAccessible::state() const {
    QAccessible::State s = QAccessibleWidget::state();
    s.focusable = true;
    s.focused = list()->picOut()->hasFocus();
    s.multiSelectable = list()->MultiSelect();
    return s;
}

QString TreeListAccessible::columnDescription(int column) const {
    QAccessibleInterface *header = cell(nullptr, column + 1);
    return header ? header->text(QAccessible::Name) : QString();
}

int TreeListAccessible::columnCount() const {
    return std::max(list()->Columns(), 0);
}

int TreeListAccessible::rowCount() const {
    lsNodes *rows = list()->rows();
    return rows ? rows->VisibleRowsUpTo(rows->Count()) : 0;
}

QAccessibleInterface *TreeListAccessible::cellAt(int row, int column) const {
    const lsNodePtr node = rowAt(row);
    return node ? cell(node, column + 1) : nullptr;
}

QList<QAccessibleInterface *> TreeListAccessible::selectedCells() const {
    QList<QAccessibleInterface *> cells;
    for (const lsNodePtr &row : list()->rows()->VisibleRowsFrom(1, rowCount()))
        for (int c = 1; c <= columnCount(); ++c)
            if (TreeListAccessibleCell::selected(*list(), row, c))
                cells << cell(row, c);
    return cells;
}

int TreeListAccessible::selectedCellCount() const {
    // Counted without making an interface for every selected cell.
    int count = 0;
    for (const lsNodePtr &row : list()->rows()->VisibleRowsFrom(1, rowCount()))
        for (int c = 1; c <= columnCount(); ++c)
            count += TreeListAccessibleCell::selected(*list(), row, c);
    return count;
}

QList<int> TreeListAccessible::selectedRows() const {
    QList<int> ranks;
    int rank = 0;
    for (const lsNodePtr &row : list()->rows()->VisibleRowsFrom(1, rowCount())) {
        if (row->Selected())
            ranks << rank;
        ++rank;
    }
    return ranks;
}

int TreeListAccessible::selectedRowCount() const {
    return int(selectedRows().size());
}

bool TreeListAccessible::isRowSelected(int row) const {
    const lsNodePtr node = rowAt(row);
    return node && node->Selected();
}

bool TreeListAccessible::selectRow(int row) {
    QAccessibleInterface *first = cellAt(row, 0);
    if (!first)
        return false;
    first->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    return true;
}

void TreeListAccessible::modelChange(QAccessibleTableModelChangeEvent *) {
    forgetCells();
}
