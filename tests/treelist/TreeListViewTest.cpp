// The viewport: line capacity, scroll bars, scrolling and EnsureVisible.

#include "TreeListFixture.h"

#include <QApplication>
#include <QLabel>
#include <QSet>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>
#include <functional>

namespace {

using TreeListViewTest = TreeListFixture;

TEST_F(TreeListViewTest, BarsFollowTheContentAndAResizeToNothingAndBackRedraws) {
    addFlatRows(5);
    EXPECT_TRUE(list->scrY()->isHidden() && list->scrX()->isHidden());
    addFlatRows(40, 6);
    EXPECT_FALSE(list->scrY()->isHidden());
    EXPECT_TRUE(list->imgGhost()->isHidden());

    // Wide rows add the horizontal bar (the places of both bars and of the corner filler between
    // them are pinned by a reference image), whose moves raise Scroll too.
    list->setColumns(5);
    ASSERT_FALSE(list->scrX()->isHidden());
    QSignalSpy scrolled(list.get(), &vkTreeList::Scroll);
    list->scrX()->setValue(50);
    EXPECT_EQ(scrolled.count(), 1);

    // A resize makes a surface of the new size; shrunk to nothing and back, the rows come back.
    // (Painting on the null picture of a control shrunk to nothing is a Qt warning, which the
    // control fuzz target fails on.)
    for (const QSize size : {QSize(0, 0), QSize(0, 150), QSize(200, 0), QSize(300, 200)}) {
        list->resize(size);
        QApplication::processEvents();
        EXPECT_EQ(QSize(list->surface()->Width(), list->surface()->Height()),
                  list->picOut()->size());
    }
    const QImage &screen = *list->picOut()->screenImage();
    QSet<QRgb> colours; // background, header face, text...: not a blank frame
    for (int y = 0; y < screen.height(); ++y)
        for (int x = 0; x < screen.width(); ++x)
            colours.insert(screen.pixel(x, y));
    EXPECT_GT(colours.size(), 3);
}

TEST_F(TreeListViewTest, ScrollingRaisesScrollButLayoutDoesNotAndEnsureVisibleOnlyScrollsDown) {
    addFlatRows(40);
    QSignalSpy scrolled(list.get(), &vkTreeList::Scroll);
    list->resize(420, 500);
    list->resize(400, 300);
    list->setRowHeight(20);
    list->setRowHeight(18);
    EXPECT_EQ(scrolled.count(), 0);

    list->scrY()->setValue(5);
    EXPECT_EQ(std::tuple(scrolled.count(), list->FirstDisplayedRow(), list->Nodes(4)->Displayed(),
                         list->Nodes(5)->Displayed(), list->Nodes(5)->Cells()->at(1)->Top()),
              std::tuple(1, 5, false, true, list->RowHeight()));

    // Wholly on screen, unknown, or above the view: EnsureVisible moves nothing.
    list->scrY()->setValue(1);
    scrolled.clear();
    list->EnsureVisible("K3");
    list->EnsureVisible("nobody");
    EXPECT_EQ(scrolled.count(), 0);
    // Below the view: it becomes the last line.
    list->EnsureVisible("K30");
    EXPECT_EQ(std::tuple(scrolled.count(), list->Nodes("K30")->Displayed(), list->LastPaintedRow()),
              std::tuple(1, true, 30));
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
    scrolled.clear();
    list->EnsureVisible("H");
    EXPECT_EQ(std::tuple(scrolled.count(), list->Nodes("H")->Visible()), std::tuple(0, false));

    // Collapsed rows are not counted: the value counts rows a visible-only walk reaches.
    list->AddItem("K1", lsChild, "C1", "Child1");
    list->AddItem("C1", lsNext, "C2", "Child2");
    list->scrY()->setValue(3);
    EXPECT_EQ(list->FirstDisplayedRow(), list->Nodes("K3")->Index());
}

TEST_F(TreeListViewTest, EveryLineShowsARowAndEveryWayToTheEndShowsAFullLastPage) {
    // Each header row takes one line: the rows fill every line left under them, the partial one
    // included (296 inner pixels hold 16.4 lines of 18).
    addFlatRows(40);
    for (const qint16 headers : {0, 1, 2, 3}) {
        list->setHeaders(headers);
        list->scrY()->setValue(1);
        qint32 shown = 0;
        for (const lsNodePtr &row : *list->rows())
            shown += row->Displayed();
        EXPECT_EQ(std::tuple(list->VisibleLineCount(), shown),
                  std::tuple(17 - headers, 17 - headers))
            << headers << " header rows";
    }
    list->setHeaders(1);

    // Every way to the vertical end shows a full last page: the last row wholly on the last of
    // the 15 whole lines, no empty band below it.
    QWheelEvent wheel(QPointF(50, 50), QPointF(50, 50), QPoint(), QPoint(0, -120 * 20),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    const std::pair<const char *, std::function<void()>> toTheEnd[] = {
        {"End", [&] { QTest::keyClick(list->picOut(), Qt::Key_End); }},
        {"Page Down",
         [&] {
             for (int i = 0; i < 5; ++i)
                 QTest::keyClick(list->picOut(), Qt::Key_PageDown);
         }},
        {"the wheel", [&] { QApplication::sendEvent(list->picOut(), &wheel); }},
        {"the thumb", [&] { list->scrY()->triggerAction(QAbstractSlider::SliderToMaximum); }}};
    for (const auto &[way, scroll] : toTheEnd) {
        list->scrY()->setValue(1);
        scroll();
        const lsNodePtr last = list->Nodes("K40");
        EXPECT_EQ(std::tuple(list->FirstDisplayedRow(), last->Displayed(),
                             last->Cells()->at(1)->Top() + list->RowHeight()),
                  std::tuple(40 - 15 + 1, true, 16 * 18))
            << way;
    }

    // At the horizontal end the right edge of the rows lies at the right edge of the view.
    list->setColumns(6);
    list->scrX()->setValue(list->scrX()->maximum());
    const qint32 right = list->HeaderCell(lslcLeft, 1, 6).toInt() +
                         list->HeaderCell(lslcWidth, 1, 6).toInt() + list->HorizontalOffset();
    EXPECT_EQ(right, list->picOut()->width() - list->scrY()->width());
}

TEST_F(TreeListViewTest, CollapsingOrResizingColumnsKeepsEveryRowReachableAndAligned) {
    list->setColumns(3);
    addFlatRows(10);
    branch("K10", "C", 30);
    list->scrY()->setValue(list->scrY()->maximum());
    ASSERT_GT(list->FirstDisplayedRow(), 10);

    // The first row shown disappears under its collapsed parent: the view comes back to the top.
    list->Collapse("K10");
    EXPECT_EQ(std::tuple(list->scrY()->isHidden(), list->FirstDisplayedRow(),
                         list->Nodes("K1")->Displayed()),
              std::tuple(true, 1, true));

    // A column resized after its rows were added stays under its header.
    list->setColumnWidth(2, 40 * 15);
    const std::vector<qint32> under = cellValues(list->headers()->Item(1), &lsCell::Left);
    EXPECT_EQ(under, (std::vector<qint32>{0, 120, 120 + 40}));
    for (qint32 r : {1, 5})
        EXPECT_EQ(cellValues(list->Nodes(r), &lsCell::Left), under) << "row " << r;
}

} // namespace
