// The viewport: line capacity, scroll bars, scrolling and EnsureVisible.

#include "TreeListFixture.h"

#include <QLabel>
#include <QSignalSpy>

namespace {

class TreeListViewTest : public TreeListFixture {};

TEST_F(TreeListViewTest, BarsFollowTheContent) {
    const QRect inner = list->contentsRect();
    addFlatRows(5);
    EXPECT_TRUE(list->scrY()->isHidden());
    EXPECT_TRUE(list->scrX()->isHidden());
    EXPECT_EQ(list->FirstDisplayedRow(), 1);
    // 296 inner pixels hold 16.4 lines of 18: 17 counted, one of them the header.
    EXPECT_EQ(list->VisibleLineCount(), 17 - 1);

    for (int i = 6; i <= 40; ++i)
        list->AddItem(QStringLiteral("K%1").arg(i - 1), lsNext, QStringLiteral("K%1").arg(i),
                      QStringLiteral("Row%1").arg(i));
    EXPECT_FALSE(list->scrY()->isHidden());
    EXPECT_TRUE(list->imgGhost()->isHidden());
    EXPECT_EQ(list->scrY()->maximum(), 40);
    EXPECT_EQ(list->scrY()->geometry().right(), inner.right());

    // Wide rows add the horizontal bar and the corner filler covers the square between them.
    list->setColumns(5);
    ASSERT_FALSE(list->scrX()->isHidden());
    ASSERT_FALSE(list->imgGhost()->isHidden());
    const QRect ghost = list->imgGhost()->geometry();
    EXPECT_EQ(ghost.bottomRight(), inner.bottomRight());
    EXPECT_EQ(ghost.left(), list->scrX()->geometry().right() + 1);
    EXPECT_EQ(ghost.top(), list->scrY()->geometry().bottom() + 1);

    // Scrolling sideways raises Scroll too (the offset it leaves is checked with the faults).
    QSignalSpy scrolled(list.get(), &vkTreeList::Scroll);
    list->scrX()->setValue(50);
    EXPECT_EQ(scrolled.count(), 1);

    // A resize makes a surface of the new size.
    list->resize(300, 200);
    EXPECT_EQ(list->surface()->Width(), list->picOut()->width());
    EXPECT_EQ(list->surface()->Height(), list->picOut()->height());
}

TEST_F(TreeListViewTest, ScrollingRaisesScrollButLayoutDoesNot) {
    addFlatRows(40);
    QSignalSpy scrolled(list.get(), &vkTreeList::Scroll);
    list->resize(420, 500);
    list->resize(400, 300);
    list->setRowHeight(20);
    list->setRowHeight(18);
    EXPECT_EQ(scrolled.count(), 0);

    list->scrY()->setValue(5);
    EXPECT_EQ(scrolled.count(), 1);
    EXPECT_EQ(list->FirstDisplayedRow(), 5);
    EXPECT_FALSE(list->Nodes(4)->Displayed());
    EXPECT_TRUE(list->Nodes(5)->Displayed());
    EXPECT_EQ(list->Nodes(5)->Cells()->at(1)->Top(), 18);

    // Collapsed rows are not counted: the value counts rows a visible-only walk reaches.
    list->scrY()->setValue(1);
    list->AddItem("K1", lsChild, "C1", "Child1");
    list->AddItem("C1", lsNext, "C2", "Child2");
    list->scrY()->setValue(3);
    EXPECT_EQ(list->FirstDisplayedRow(), list->Nodes("K3")->Index());
}

TEST_F(TreeListViewTest, EnsureVisibleOnlyScrollsDown) {
    addFlatRows(40);
    list->scrY()->setValue(1);
    QSignalSpy scrolled(list.get(), &vkTreeList::Scroll);

    // Wholly on screen, unknown, or above the view: nothing moves.
    list->EnsureVisible("K3");
    list->EnsureVisible("nobody");
    EXPECT_EQ(scrolled.count(), 0);

    // Below the view: it becomes the last line.
    list->EnsureVisible("K30");
    EXPECT_EQ(scrolled.count(), 1);
    EXPECT_TRUE(list->Nodes("K30")->Displayed());
    EXPECT_EQ(list->LastPaintedRow(), 30);
    const qint32 first = list->FirstDisplayedRow();
    list->EnsureVisible("K2");
    EXPECT_EQ(list->FirstDisplayedRow(), first);

    // Never beyond the bar's maximum.
    list->EnsureVisible("K40");
    EXPECT_LE(list->scrY()->value(), list->scrY()->maximum());
    EXPECT_TRUE(list->Nodes("K40")->Displayed());

    // A row hidden under a collapsed parent is not opened.
    list->scrY()->setValue(1);
    list->AddItem("K1", lsChild, "H", "Hidden");
    list->Collapse("K1");
    const int before = scrolled.count();
    list->EnsureVisible("H");
    EXPECT_EQ(scrolled.count(), before);
    EXPECT_FALSE(list->Nodes("H")->Visible());
}

TEST_F(TreeListViewTest, CollapsingOrResizingColumnsKeepsEveryRowReachableAndAligned) {
    list->setColumns(3);
    addFlatRows(10);
    for (int i = 1; i <= 30; ++i)
        list->AddItem("K10", lsChild, QStringLiteral("C%1").arg(i),
                      QStringLiteral("Child%1").arg(i));
    list->Expand("K10");
    list->scrY()->setValue(list->scrY()->maximum());
    ASSERT_GT(list->FirstDisplayedRow(), 10);

    // The first row shown disappears under its collapsed parent: the view comes back to the top.
    list->Collapse("K10");
    EXPECT_TRUE(list->scrY()->isHidden());
    EXPECT_EQ(list->FirstDisplayedRow(), 1);
    EXPECT_TRUE(list->Nodes("K1")->Displayed());

    // A column resized after its rows were added stays under its header.
    list->setColumnWidth(2, 40 * 15);
    for (qint32 r : {1, 5}) {
        for (qint32 c = 1; c <= 3; ++c)
            EXPECT_EQ(list->ListCell(lslcLeft, r, c).toInt(),
                      list->HeaderCell(lslcLeft, 1, c).toInt())
                << "row " << r << " column " << c;
    }
    EXPECT_EQ(list->ListCell(lslcLeft, 1, 3).toInt(), 120 + 40);
}

} // namespace
