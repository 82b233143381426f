// vkTreeList: rows, cells, selection, columns and header rows.

#include "vkTreeList.h"

#include "TreeListAccessibility.h"
#include "TreeListState.h"
#include "TreeListViewport.h"

#include "FrameKeeper.h"

#include "PictureBox.h"
#include "VariantNumber.h"

#include <cmath>

namespace {

constexpr OleColor kHeaderBackColor = 0x8000000F;
constexpr qint32 kHeaderAppearance = static_cast<qint32>(Appearances::Raised3D);

bool toBoolean(const QVariant &value) {
    if (value.typeId() == QMetaType::Bool)
        return value.toBool();
    return toLong(value) != 0;
}

// The cell at a row position and column of a collection, or null when either is out of range.
lsCellPtr cellAt(const lsNodes &nodes, qint32 row, qint32 column) {
    const lsNodePtr node = nodes.at(row);
    return node ? node->Cells()->at(column) : nullptr;
}

// The same cell borrowed from its row, for reads and writes that end before the call returns
// (a handed-out pointer costs the cells' anchor and keeps removed cells in their slots).
lsCell *borrowCell(const lsNodePtr &node, qint32 column) {
    return node ? node->borrowCells().cell(column) : nullptr;
}

} // namespace

// --- Rows ---------------------------------------------------------------------------------------

void vkTreeList::checkCellCount(qint64 rows, qint64 columns) {
    constexpr qint64 maxCells = qint64(1) << 21;
    if (rows * columns > maxCells)
        throw TreeListError(TreeListError::OutOfMemory);
}

qint16 vkTreeList::AddItem(const QVariant &Relative, qint32 &Relationship, const QVariant &Key,
                           const QString &Text, const QVariant &Image) {
    checkCellCount(qint64(d->rows->Count()) + d->headers->Count() + 1, d->settings.columns);
    // Adding rows one by one below the view must not cost a frame each when none shows them. A
    // selection changes how rows look, not where they lie: while the pixels wait for Qt's paint,
    // the new row's selection leaves the layout to the add.
    const bool frameWasCurrent = (!d->settings.autoSelectNew || d->frames->pixelsPending()) &&
                                 d->frames->rowsUnchangedSinceFrame();
    const lsNodePtr node = d->rows->Add(Relative, Relationship, Key, Text, Image);
    if (!node)
        return -1;
    CreateRowCells(node, Text, Image, d->picOut->ForeColor(), d->picOut->BackColor(),
                   static_cast<qint32>(Appearances::Flat));
    const qint16 result = toInt16(node->Index());
    if (!frameWasCurrent) {
        if (d->settings.autoSelectNew)
            SelectItem(node->Index(), 0);
        if (d->settings.autoRedraw) {
            if (d->settings.autoSelectNew)
                d->view->scrollIntoView(node->Index());
            Refresh(false);
        }
        return result;
    }
    // SelectItem's selection without its repaint: the layout of the add shows it, and the new
    // row is brought into view from there.
    if (d->settings.autoSelectNew)
        d->rows->Selected(node->Index(), 0, false);
    const bool kept = d->frames->keepFrameAfterAdd(node);
    if (!kept)
        Refresh(false);
    // A kept frame has just had its bars told about the new row.
    if (d->settings.autoSelectNew)
        kept ? d->view->ensureVisible(node->Index()) : d->view->scrollIntoView(node->Index());
    return result;
}

qint16 vkTreeList::AddItem(const QVariant &Relative, lsRelationshipConstants Relationship,
                           const QVariant &Key, const QString &Text, const QVariant &Image) {
    qint32 relationship = Relationship;
    return AddItem(Relative, relationship, Key, Text, Image);
}

void vkTreeList::CreateRowCells(const lsNodePtr &node, const QString &Text, const QVariant &Image,
                                OleColor foreColor, OleColor backColor, qint32 appearance) {
    lsCells &cells = node->borrowCells();
    const lsNodePtr header = d->headers->at(1);
    for (qint32 i = cells.Count() + 1; i <= d->settings.columns; ++i) {
        const qint16 column = toInt16(i);
        lsCell *cell = cells.append(i == 1 ? Text : QString(), column, defaultCellWidth(header, i));
        if (i == 1)
            cell->setIcon(Image);
        cell->setColor(foreColor);
        cell->setBackColor(backColor);
        cell->setAppearance(appearance);
    }
}

qint32 vkTreeList::defaultCellWidth(const lsNodePtr &firstHeader, qint32 column) {
    // Data cells follow the first header row wherever it has the column.
    if (const lsCell *cell = borrowCell(firstHeader, column))
        return cell->Width();
    return column == 1 ? 150 : 120;
}

qint32 vkTreeList::defaultHeaderWidth(qint32 column) const {
    // The first header row itself is always built with 120 for every column; later header rows
    // copy its widths.
    if (d->headers->Count() >= 2)
        if (const lsCellPtr cell = d->headers->at(1)->Cells()->at(column))
            return cell->Width();
    return 120;
}

void vkTreeList::addHeaderCells(const lsNodePtr &node) {
    const lsCellsPtr &cells = node->Cells();
    for (qint32 c = cells->Count() + 1; c <= d->settings.columns; ++c) {
        const lsCellPtr cell =
            cells->Add(QStringLiteral("Header%1").arg(c), toInt16(c), defaultHeaderWidth(c));
        cell->setColor(d->picOut->ForeColor());
        cell->setBackColor(kHeaderBackColor);
        cell->setAppearance(kHeaderAppearance);
    }
}

bool vkTreeList::Clear() {
    d->rows->Clear();
    d->view->setFirstRow(0);
    d->frames->setLastPaintedRow(0);
    d->frames->RedrawFrame(false);
    return false;
}

lsNodePtr vkTreeList::Nodes(const QVariant &IndexKey) const {
    return d->rows->Item(IndexKey);
}

qint32 vkTreeList::Rows() const {
    return d->rows->Count();
}

qint32 vkTreeList::Row() const {
    const lsNodePtr row = d->rows->SelectedRow();
    return row ? row->Index() : 0;
}

qint32 vkTreeList::Col() const {
    const lsCellPtr cell = d->rows->SelectedCell();
    return cell ? cell->Index() : 0;
}

bool vkTreeList::Expand(const QVariant &RowIndexKey) {
    return setRowExpanded(RowIndexKey, true);
}

bool vkTreeList::Collapse(const QVariant &RowIndexKey) {
    return setRowExpanded(RowIndexKey, false);
}

bool vkTreeList::setRowExpanded(const QVariant &RowIndexKey, bool expanded) {
    const lsNodePtr node = d->rows->Item(RowIndexKey);
    if (!node)
        return false;
    d->rows->setExpanded(node, expanded);
    d->accessibility->expandedChanged(node);
    if (expanded)
        emit OnExpand(node->Index());
    else
        emit OnCollapse(node->Index());
    d->frames->RedrawFrame(false);
    return true;
}

bool vkTreeList::RemoveItem(const QVariant &RowIndexKey) {
    bool result = false;
    if (const lsNodePtr node = d->rows->Item(RowIndexKey)) {
        if (node->Selected()) {
            // The replacement is searched from the node's key: a key-less row searches from the
            // first row, like the removal below that finds nothing by an empty key.
            d->rows->SetFirstNode(node->Key());
            lsNodePtr candidate = d->rows->GetNextNode(true);
            for (qint32 i = node->Index() - 1; !candidate && i >= 1; --i) {
                const lsNodePtr before = d->rows->at(i);
                if (before && before->Displayed())
                    candidate = before;
            }
            if (candidate) {
                const lsCellPtr cell = d->rows->SelectedCell();
                SelectItem(candidate->Index(),
                           cell ? std::optional<qint32>(cell->Index()) : std::nullopt);
            }
        }
        d->rows->Remove(node->Key());
        d->frames->RedrawFrame(false);
        result = true;
    }
    if (d->rows->Count() == 0)
        d->rows->ClearSelection();
    return result;
}

bool vkTreeList::SetVisibility(const QVariant &RowIndexKey) {
    return d->rows->SetVisibility(d->rows->Item(RowIndexKey));
}

// --- Cells --------------------------------------------------------------------------------------

lsNodePtr vkTreeList::listRow(qint32 &RowID, qint32 &ColID) const {
    if (RowID == -1)
        RowID = Row();
    if (ColID == -1)
        ColID = Col();
    return d->rows->at(RowID);
}

lsCellPtr vkTreeList::ResolveListCell(qint32 &RowID, qint32 &ColID) const {
    const lsNodePtr row = listRow(RowID, ColID);
    return row ? row->Cells()->at(ColID) : nullptr;
}

lsCellPtr vkTreeList::ResolveHeaderCell(qint32 RowID, qint32 ColID) const {
    return cellAt(*d->headers, RowID, ColID);
}

QVariant vkTreeList::ListCell(qint32 CellProperty, qint32 RowID, qint32 ColID) {
    const lsNodePtr row = listRow(RowID, ColID);
    const lsCell *cell = borrowCell(row, ColID);
    return cell ? cellProperty(*cell, CellProperty) : QVariant();
}

void vkTreeList::setListCell(qint32 CellProperty, qint32 RowID, qint32 ColID,
                             const QVariant &value) {
    const bool frameWasCurrent = d->frames->rowsUnchangedSinceFrame();
    const lsNodePtr row = listRow(RowID, ColID);
    lsCell *cell = borrowCell(row, ColID);
    if (!cell || !setCellProperty(*cell, CellProperty, value))
        return;
    if (CellProperty == lslcData || CellProperty == lslcIcon)
        d->accessibility->cellChanged(row, ColID);
    if (row->Displayed()) {
        if (!(frameWasCurrent && d->frames->repaintCellInPlace(row, CellProperty)))
            d->frames->repaintRow(row, false);
    } else if (frameWasCurrent)
        d->frames->keepFrameCurrent(); // a row off screen: the frame still shows the same
}

QVariant vkTreeList::HeaderCell(qint32 CellProperty, qint32 RowID, qint32 ColID) const {
    const lsCell *cell = borrowCell(d->headers->at(RowID), ColID);
    return cell ? cellProperty(*cell, CellProperty) : QVariant();
}

void vkTreeList::setHeaderCell(qint32 CellProperty, qint32 RowID, qint32 ColID,
                               const QVariant &value) {
    const lsNodePtr row = d->headers->at(RowID);
    lsCell *cell = borrowCell(row, ColID);
    if (!cell || !setCellProperty(*cell, CellProperty, value))
        return;
    if (row->Displayed())
        d->frames->repaintRow(row, true);
}

QVariant vkTreeList::cellProperty(const lsCell &cell, qint32 property) const {
    switch (property) {
    case lslcAlignment:
        return cell.Alignment();
    case lslcBold:
        return cell.Bold();
    case lslcData:
        return cell.Title();
    case lslcIcon:
        return cell.Icon();
    case lslcTag:
        return cell.Tag();
    case lslcTop:
        return cell.Top();
    case lslcLeft:
        return cell.Left();
    case lslcHeight:
        return cell.Height();
    case lslcWidth:
        return cell.Width();
    case lslcForeColor:
        return cell.Color();
    case lslcbackColor:
        return cell.BackColor();
    case lsLCSelected:
        return cell.Selected();
    default:
        return QVariant();
    }
}

bool vkTreeList::setCellProperty(lsCell &cell, qint32 property, const QVariant &value) {
    switch (property) {
    case lslcAlignment:
        cell.setAlignment(toLong(value));
        break;
    case lslcBold:
        cell.setBold(toBoolean(value));
        break;
    case lslcData:
        cell.setTitle(variantText(value));
        break;
    case lslcIcon:
        cell.setIcon(value);
        break;
    case lslcTag:
        cell.setTag(value);
        break;
    case lslcTop:
        cell.setTop(toLong(value));
        break;
    case lslcLeft:
        cell.setLeft(toLong(value));
        break;
    case lslcHeight:
        cell.setHeight(toLong(value));
        break;
    case lslcWidth:
        cell.setWidth(toLong(value));
        break;
    case lslcForeColor:
        cell.setColor(static_cast<OleColor>(value.toLongLong()));
        break;
    case lslcbackColor:
        cell.setBackColor(static_cast<OleColor>(value.toLongLong()));
        break;
    case lsLCSelected:
        cell.setSelected(toBoolean(value));
        break;
    default:
        return false;
    }
    return true;
}

// --- Selection ----------------------------------------------------------------------------------

void vkTreeList::SelectItem(qint32 RowID, qint32 ColID) {
    SelectItem(RowID, std::optional<qint32>(ColID));
}

void vkTreeList::SelectItem(qint32 RowID, std::optional<qint32> ColID) {
    if (!ColID) {
        const lsCellPtr cell = d->rows->SelectedCell();
        ColID = cell ? cell->Index() : 1;
    }
    // A programmatic selection always replaces the previous one, whatever MultiSelect says.
    d->rows->Selected(RowID, *ColID, false);
    d->frames->RedrawFrame(false);
}

bool vkTreeList::Mark(qint32 RowID) const {
    const lsNodePtr row = d->rows->Item(RowID);
    return row && row->Marked();
}

void vkTreeList::setMark(qint32 RowID, bool value) {
    const lsNodePtr row = d->rows->Item(RowID);
    if (!row)
        return;
    row->setMarked(value);
    d->frames->RedrawFrame(false);
}

// --- Columns and headers ------------------------------------------------------------------------

void vkTreeList::setColumns(qint32 value) {
    if (value < 1)
        return;
    // Cell numbers are 16-bit: past that the cells could never be made, and trying would first
    // make 32767 of them in every row.
    toInt16(value);
    checkCellCount(qint64(d->rows->Count()) + d->headers->Count(), value);
    if (value > d->settings.columns) {
        d->settings.columns = value;
        for (const lsNodePtr &row : *d->rows)
            CreateRowCells(row, QString(), emptyText(), d->picOut->ForeColor(),
                           d->picOut->BackColor(), static_cast<qint32>(Appearances::Flat));
        for (const lsNodePtr &header : *d->headers)
            addHeaderCells(header);
        notify("Columns");
        Refresh(true);
    } else if (value < d->settings.columns) {
        const auto trim = [&](lsNodes &nodes) {
            for (const lsNodePtr &row : nodes) {
                lsCells &cells = row->borrowCells();
                for (qint32 c = std::min(d->settings.columns, cells.Count()); c > value; --c)
                    cells.Remove(c);
            }
        };
        trim(*d->rows);
        trim(*d->headers);
        d->settings.columns = value;
        notify("Columns");
        Refresh(true);
    }
    // At design time the sample always covers the new column count.
    if (!d->host->AmbientUserMode()) {
        buildDesignSample();
        Refresh(true);
    }
}

qint16 vkTreeList::Headers() {
    d->settings.headerCount = d->headers->Count();
    return toInt16(d->settings.headerCount);
}

void vkTreeList::setHeaders(qint32 count) {
    // The count is 16-bit: a larger one fails before any header row is touched.
    const qint16 value = toInt16(count);
    const qint32 current = Headers();
    checkCellCount(qint64(d->rows->Count()) + value, d->settings.columns);
    if (value < current) {
        for (qint32 i = current; i > value && i >= 1; --i)
            d->headers->Remove(i);
        d->settings.headerCount = value;
        notify("Headers");
        Refresh(true);
    } else if (value > current) {
        for (qint32 i = current + 1; i <= value; ++i) {
            // Header rows are flat, each after the previous one.
            const QVariant relative = i > 1 ? QVariant(i - 1) : QVariant();
            addHeaderCells(d->headers->Add(relative, lsNext, emptyText(), QString()));
        }
        d->settings.headerCount = value;
        notify("Headers");
        Refresh(true);
    }
}
