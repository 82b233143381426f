// Rows, cells, selection, columns and header rows of the control.

#include "TreeListFixture.h"

#include <QSignalSpy>

namespace {

class TreeListRowsTest : public TreeListFixture {};

TEST_F(TreeListRowsTest, AddItemBuildsCellsFromTheFirstHeaderRow) {
    list->setColumns(3);
    EXPECT_EQ(list->AddItem(emptyText(), lsNext, "A", "Alpha", "pic"), 1);
    const lsNodePtr a = list->Nodes("A");
    ASSERT_TRUE(a);
    // The first header row is built with 120 everywhere, so data cells copy 120.
    EXPECT_EQ(cellValues(a, &lsCell::Width), (std::vector<qint32>{120, 120, 120}));
    EXPECT_EQ(a->Cells()->at(1)->Title(), "Alpha");
    EXPECT_EQ(a->Cells()->at(1)->Icon().toString(), "pic");
    EXPECT_EQ(a->Cells()->at(2)->Title(), "");
    EXPECT_EQ(a->Cells()->at(3)->Index(), 3);

    for (int c = 1; c <= 3; ++c)
        list->setHeaderCell(lslcWidth, 1, c, 40 + 10 * c);
    list->AddItem("A", lsNext, "B", "Beta");
    EXPECT_EQ(cellValues(list->Nodes("B"), &lsCell::Width), (std::vector<qint32>{50, 60, 70}));
    EXPECT_EQ(cellValues(list->Nodes("B"), &lsCell::Left), (std::vector<qint32>{0, 50, 110}));

    // Without header rows: 150 for the tree column, 120 for the others.
    list->setHeaders(0);
    EXPECT_EQ(list->Headers(), 0);
    list->AddItem("B", lsNext, "C", "Gamma");
    EXPECT_EQ(cellValues(list->Nodes("C"), &lsCell::Width), (std::vector<qint32>{150, 120, 120}));

    // lsFirst / lsLast are written back as lsNext; an unknown relative means the first row.
    qint32 relation = lsFirst;
    EXPECT_EQ(list->AddItem("nobody", relation, "D", "Delta"), 2);
    EXPECT_EQ(relation, lsNext);
    EXPECT_EQ(list->Row(), 2) << "AutoSelectNew selects the new row";
}

TEST_F(TreeListRowsTest, RemoveItemMovesTheSelectionAndNeedsKeys) {
    addFlatRows(4);
    list->AddItem(emptyText(), lsChild, emptyText(), "NoKey"); // child of Row1, index 2
    ASSERT_EQ(list->Rows(), 5);

    // The selected last row moves the selection to the nearest displayed row above it.
    list->SelectItem(5, 1);
    EXPECT_TRUE(list->RemoveItem("K4"));
    EXPECT_EQ(list->Rows(), 4);
    EXPECT_EQ(list->Nodes(list->Row())->Text(), "Row3");

    // A selected row in the middle passes the selection to the next visible row.
    list->SelectItem(3, 1); // Row2
    EXPECT_TRUE(list->RemoveItem("K2"));
    EXPECT_EQ(list->Nodes(list->Row())->Text(), "Row3");

    // A row without a key is not removed, yet the call reports success.
    EXPECT_TRUE(list->RemoveItem(2));
    EXPECT_EQ(list->Nodes(2)->Text(), "NoKey");
    EXPECT_FALSE(list->RemoveItem("nobody"));

    // Removing the parent takes its subtree; emptying the control drops the selection.
    EXPECT_TRUE(list->RemoveItem("K1"));
    EXPECT_TRUE(list->RemoveItem("K3"));
    EXPECT_EQ(list->Rows(), 0);
    EXPECT_FALSE(list->rows()->SelectedRow());
    EXPECT_EQ(list->Row(), 0);
}

TEST_F(TreeListRowsTest, ListCellResolvesDefaultsAndReadsEveryProperty) {
    list->setColumns(2);
    addFlatRows(4);
    list->SelectItem(3, 2);

    qint32 row = -1, col = -1;
    ASSERT_TRUE(list->ResolveListCell(row, col));
    EXPECT_EQ(row, 3);
    EXPECT_EQ(col, 2);

    list->setListCell(lslcData, -1, -1, "current");
    EXPECT_EQ(list->ListCell().toString(), "current");
    EXPECT_EQ(list->ListCell(lslcData, 3, 2).toString(), "current");
    EXPECT_FALSE(list->ListCell(lslcData, 5, 1).isValid());
    EXPECT_FALSE(list->ListCell(lslcData, 1, 3).isValid());
    EXPECT_FALSE(list->ListCell(12, 1, 1).isValid());
    list->setListCell(12, 1, 1, 5); // ignored without error

    // clang-format off
    const std::pair<qint32, QVariant> table[] = {
        {lslcAlignment, lsAlignCenter}, {lslcBold, true}, {lslcData, "text"}, {lslcIcon, "key"},
        {lslcTag, 42}, {lslcTop, 7}, {lslcLeft, 9}, {lslcHeight, 11}, {lslcWidth, 99},
        {lslcForeColor, 0x123456u}, {lslcbackColor, 0xABCDEFu}, {lsLCSelected, true}};
    // clang-format on
    for (const auto &[property, value] : table) {
        list->setListCell(property, 2, 1, value);
        EXPECT_EQ(list->ListCell(property, 2, 1).toString(), value.toString()) << property;
    }
    EXPECT_THROW(list->setListCell(lslcWidth, 2, 1, "wide"), TreeListError);
    EXPECT_EQ(list->ListCell(lslcWidth, 2, 1).toInt(), 99);

    EXPECT_FALSE(list->HeaderCell(lslcData, 2, 1).isValid());
    list->setHeaderCell(lslcData, 1, 1, "Name");
    EXPECT_EQ(list->HeaderCell(lslcData, 1, 1).toString(), "Name");
}

TEST_F(TreeListRowsTest, ColumnsShrinkAndGrowEveryRowAndHeader) {
    recordChanges();
    list->setColumns(3);
    list->setHeaders(2);
    addFlatRows(2);
    list->setListCell(lslcData, 1, 2, "kept");
    list->setListCell(lslcWidth, 1, 3, 33);

    for (int bad : {0, -4})
        list->setColumns(bad);
    EXPECT_EQ(list->Columns(), 3);

    list->setColumns(1);
    for (qint32 r = 1; r <= 2; ++r) {
        EXPECT_EQ(list->Nodes(r)->Cells()->Count(), 1);
        EXPECT_EQ(list->headers()->Item(r)->Cells()->Count(), 1);
    }
    list->setColumns(3);
    const lsNodePtr row = list->Nodes(1);
    EXPECT_EQ(row->Cells()->Count(), 3);
    EXPECT_EQ(row->Cells()->at(2)->Title(), "");
    EXPECT_EQ(row->Cells()->at(3)->Width(), 120);
    EXPECT_EQ(list->HeaderCell(lslcData, 2, 3).toString(), "Header3");
    EXPECT_EQ(list->HeaderCell(lslcbackColor, 2, 3).toUInt(), 0x8000000Fu);
    EXPECT_EQ(list->HeaderCell(lslcAlignment, 2, 3).toInt(), lsAlignLeftJustify);
    EXPECT_EQ(list->headers()->Item(2)->Cells()->at(3)->Appearance(), 4);

    EXPECT_EQ(changed.count("Columns"), 3);
    EXPECT_EQ(changed.count("Headers"), 1);
}

TEST_F(TreeListRowsTest, ColumnWidthConvertsAndAutoSizeFitsTheLongestText) {
    EXPECT_EQ(list->ColumnWidth(1), 1800) << "120 pixels in twips";
    list->setHeaders(0);
    EXPECT_EQ(list->ColumnWidth(1), -1) << "no rows and no headers";
    list->setColumns(2);
    addFlatRows(2);
    EXPECT_EQ(list->ColumnWidth(0), -1);
    EXPECT_EQ(list->ColumnWidth(3), -1);
    EXPECT_EQ(list->ColumnWidth(1), 150 * 15);

    list->setColumnWidth(2, 1000); // 66.67 pixels
    EXPECT_EQ(list->Nodes(2)->Cells()->at(2)->Width(), 67);
    EXPECT_EQ(list->ColumnWidth(2), 1005);
    list->setScaleMode(3);
    list->setColumnWidth(2, 90);
    EXPECT_EQ(list->ColumnWidth(2), 90);

    // Empty titles size to the padding; the tree column adds the text start of its rows. Whole
    // text widths are not rounded up any further.
    EXPECT_FALSE(list->AutoSize(2));
    EXPECT_EQ(list->ColumnWidth(2), 12);
    list->setListCell(lslcData, 2, 2, "a much longer text than the others");
    EXPECT_FALSE(list->AutoSize(2));
    const qint32 text = list->picOut()->TextWidth("a much longer text than the others");
    EXPECT_EQ(list->ColumnWidth(2), text + 12);
    EXPECT_FALSE(list->AutoSize(1));
    EXPECT_EQ(list->ColumnWidth(1), list->picOut()->TextWidth("Row1") + 36 + 12);
    EXPECT_THROW(list->AutoSize(5), TreeListError);
}

TEST_F(TreeListRowsTest, ExpandCollapseSelectAndMark) {
    QSignalSpy expanded(list.get(), &vkTreeList::OnExpand);
    QSignalSpy collapsed(list.get(), &vkTreeList::OnCollapse);
    list->setColumns(3);
    addFlatRows(2);
    list->AddItem("K1", lsChild, "C1", "Child");
    EXPECT_FALSE(list->Nodes("C1")->Visible()) << "rows added by AddItem start collapsed";

    EXPECT_FALSE(list->Expand("nobody"));
    EXPECT_EQ(expanded.count(), 0);
    EXPECT_TRUE(list->Expand("K1"));
    ASSERT_EQ(expanded.count(), 1);
    EXPECT_EQ(expanded.at(0).at(0).toInt(), 1);
    EXPECT_TRUE(list->Nodes("C1")->Visible());
    EXPECT_TRUE(list->Collapse(1));
    EXPECT_EQ(collapsed.count(), 1);
    EXPECT_FALSE(list->Nodes("C1")->Visible());

    // SelectItem keeps the current column when none is given; hidden rows cannot be selected.
    list->SelectItem(1, 3);
    list->SelectItem(3);
    EXPECT_EQ(list->Row(), 3);
    EXPECT_EQ(list->Col(), 3);
    list->SelectItem(2);
    EXPECT_EQ(list->Row(), 3);

    EXPECT_FALSE(list->Mark(99));
    list->setMark(99, true);
    list->setMark(1, true);
    EXPECT_TRUE(list->Mark(1));
}

// The sample's texts, levels and openings are pinned by the design-time reference images.
// (A control made at run time starts empty: every other test counts its rows from 1.)
TEST_F(TreeListRowsTest, DesignTimeSample) {
    makeControl(false);
    QStringList keys;
    for (const lsNodePtr &row : *list->rows())
        keys << row->Key().toString();
    EXPECT_EQ(keys, QStringList({"Node1", "Node11", "Node12", "Node13", "Node#131", "Node#132"}));
    EXPECT_EQ(list->rows()->FindPath(list->Nodes("Node#132")), "Row1\\Row4\\Row6");
}

} // namespace
