// Rows, cells, selection, columns and header rows of the control.

#include "TreeListFixture.h"

#include <QSignalSpy>

namespace {

using TreeListRowsTest = TreeListFixture;

TEST_F(TreeListRowsTest, AddItemTakesItsColumnsFromTheFirstHeaderRow) {
    list->setColumns(3);
    list->setHeaders(2);
    for (int c = 1; c <= 3; ++c)
        list->setHeaderCell(lslcWidth, 1, c, 40 + 10 * c);
    EXPECT_EQ(list->AddItem(emptyText(), lsNext, "A", "Alpha", "pic"), 1);
    const lsNodePtr a = list->Nodes("A");
    ASSERT_TRUE(a);
    EXPECT_EQ(cellValues(a, &lsCell::Width), cellValues(list->headers()->Item(1), &lsCell::Width));
    EXPECT_EQ(cellValues(a, &lsCell::Left), (std::vector<qint32>{0, 50, 110}));
    EXPECT_EQ(std::tuple(a->Cells()->at(1)->Title(), a->Cells()->at(1)->Icon().toString(),
                         a->Cells()->at(2)->Title(), a->Cells()->at(3)->Index()),
              std::tuple(QString("Alpha"), QString("pic"), QString(), qint16(3)));

    // Without header rows the tree column is wider than the others.
    list->setHeaders(0);
    list->AddItem("A", lsNext, "C", "Gamma");
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
    const auto selectedText = [&] { return list->Nodes(list->Row())->Text(); };

    // The selected last row moves the selection to the nearest displayed row above it; one in
    // the middle passes it to the next visible row.
    list->SelectItem(5, 1);
    EXPECT_TRUE(list->RemoveItem("K4"));
    EXPECT_EQ(std::tuple(list->Rows(), selectedText()), std::tuple(4, QString("Row3")));
    list->SelectItem(3, 1); // Row2
    EXPECT_TRUE(list->RemoveItem("K2"));
    EXPECT_EQ(selectedText(), "Row3");

    // A row without a key is not removed, yet the call reports success.
    EXPECT_TRUE(list->RemoveItem(2));
    EXPECT_EQ(list->Nodes(2)->Text(), "NoKey");
    EXPECT_FALSE(list->RemoveItem("nobody"));

    // Removing the parent takes its subtree; emptying the control drops the selection.
    EXPECT_TRUE(list->RemoveItem("K1") && list->RemoveItem("K3"));
    EXPECT_EQ(std::tuple(list->Rows(), list->rows()->SelectedRow(), list->Row()),
              std::tuple(0, nullptr, 0));
}

TEST_F(TreeListRowsTest, ListCellPutsReadBackAndDefaultToTheCurrentCell) {
    list->setColumns(2);
    addFlatRows(4);
    list->SelectItem(3, 2);
    qint32 row = -1, col = -1;
    ASSERT_TRUE(list->ResolveListCell(row, col));
    EXPECT_EQ(std::tuple(row, col), std::tuple(3, 2));
    list->setListCell(lslcData, -1, -1, "current");
    EXPECT_EQ(list->ListCell().toString(), "current");
    EXPECT_EQ(list->ListCell(lslcData, 3, 2).toString(), "current");
    // Outside the rows, the columns or the properties: no value, and a put is ignored.
    for (const auto &[property, r, c] :
         {std::tuple{qint32(lslcData), 5, 1}, {lslcData, 1, 3}, {12, 1, 1}})
        EXPECT_FALSE(list->ListCell(property, r, c).isValid()) << property << r << c;
    list->setListCell(12, 1, 1, 5);

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
    for (lsNodes *nodes : {list->rows(), list->headers()})
        for (const lsNodePtr &row : *nodes)
            EXPECT_EQ(row->Cells()->Count(), 1);
    // Grown again, the columns come back new: nothing of the cells that went is kept.
    list->setColumns(3);
    const lsNodePtr row = list->Nodes(1);
    EXPECT_EQ(std::tuple(row->Cells()->Count(), row->Cells()->at(2)->Title(),
                         row->Cells()->at(3)->Width()),
              std::tuple(3, QString(), 120));
    EXPECT_EQ(std::tuple(list->HeaderCell(lslcData, 2, 3).toString(),
                         list->HeaderCell(lslcbackColor, 2, 3).toUInt(),
                         list->HeaderCell(lslcAlignment, 2, 3).toInt(),
                         list->headers()->Item(2)->Cells()->at(3)->Appearance()),
              std::tuple(QString("Header3"), 0x8000000Fu, int(lsAlignLeftJustify), 4));
    EXPECT_EQ(std::tuple(changed.count("Columns"), changed.count("Headers")), std::tuple(3, 1));
}

TEST_F(TreeListRowsTest, ColumnWidthConvertsAndAutoSizeFitsTheLongestText) {
    // In twips: 15 to the pixel.
    EXPECT_EQ(list->ColumnWidth(1), list->HeaderCell(lslcWidth, 1, 1).toInt() * 15);
    list->setHeaders(0);
    EXPECT_EQ(list->ColumnWidth(1), -1) << "no rows and no headers";
    list->setColumns(2);
    addFlatRows(2);
    EXPECT_EQ(std::tuple(list->ColumnWidth(0), list->ColumnWidth(3)), std::tuple(-1, -1));
    EXPECT_EQ(list->ColumnWidth(1), list->Nodes(1)->Cells()->at(1)->Width() * 15);

    list->setColumnWidth(2, 1000); // 66.67 pixels
    EXPECT_EQ(std::tuple(list->Nodes(2)->Cells()->at(2)->Width(), list->ColumnWidth(2)),
              std::tuple(67, 1005));
    list->setScaleMode(3);
    list->setColumnWidth(2, 90);
    EXPECT_EQ(list->ColumnWidth(2), 90);

    // Empty titles size to the padding; the tree column adds the text start of its rows. Whole
    // text widths are not rounded up any further.
    EXPECT_FALSE(list->AutoSize(2));
    EXPECT_EQ(list->ColumnWidth(2), 12);
    const QString longer = "a much longer text than the others";
    list->setListCell(lslcData, 2, 2, longer);
    EXPECT_FALSE(list->AutoSize(2));
    EXPECT_EQ(list->ColumnWidth(2), list->picOut()->TextWidth(longer) + 12);
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
    const lsNodePtr child = list->Nodes("C1");
    EXPECT_FALSE(child->Visible()) << "rows added by AddItem start collapsed";
    EXPECT_FALSE(list->Expand("nobody"));
    EXPECT_TRUE(list->Expand("K1"));
    ASSERT_EQ(expanded.count(), 1);
    EXPECT_EQ(std::tuple(expanded[0][0].toInt(), child->Visible()), std::tuple(1, true));
    EXPECT_TRUE(list->Collapse(1));
    EXPECT_EQ(std::tuple(collapsed.count(), child->Visible()), std::tuple(1, false));

    // SelectItem keeps the current column when none is given; hidden rows cannot be selected.
    list->SelectItem(1, 3);
    list->SelectItem(3);
    EXPECT_EQ(std::tuple(list->Row(), list->Col()), std::tuple(3, 3));
    list->SelectItem(2);
    EXPECT_EQ(list->Row(), 3);

    EXPECT_FALSE(list->Mark(99));
    list->setMark(99, true);
    list->setMark(1, true);
    EXPECT_TRUE(list->Mark(1));
}

} // namespace
