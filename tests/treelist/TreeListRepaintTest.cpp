// Repaints that would change nothing on screen are skipped; a skipped repaint must never leave a
// frame that differs from the one a full composition gives.

#include "TreeListFixture.h"

#include <QApplication>
#include <QRandomGenerator>
#include <functional>

namespace {

class TreeListRepaintTest : public TreeListFixture {
protected:
    // The observable state a frame leaves: every row's Displayed, the boxes of the cells shown and
    // the scroll bars.
    QList<qint32> layoutState() const {
        QList<qint32> state;
        for (const lsNodePtr &row : *list->rows()) {
            state << row->Displayed();
            if (row->Displayed())
                for (const lsCellPtr &cell : *row->Cells())
                    state << cell->Left() << cell->Top() << cell->Height() << cell->Xoffset();
        }
        state << list->FirstDisplayedRow() << list->scrY()->maximum() << list->scrY()->value()
              << list->scrY()->isHidden() << list->scrX()->isHidden() << list->scrX()->value()
              << list->LastPaintedRow();
        return state;
    }

    // The rows a frame shows, by the plain rule walked over every row: the Visible rows from the
    // first displayed one on, one per line below the header rows while lines remain.
    QList<bool> plainDisplayed() const {
        QList<bool> shown;
        qint32 line = list->Headers();
        for (const lsNodePtr &row : *list->rows()) {
            const bool on = row->Visible() && row->Index() >= list->FirstDisplayedRow() &&
                            line < list->Headers() + list->VisibleLineCount();
            line += on ? 1 : 0;
            shown << on;
        }
        return shown;
    }
    QList<bool> displayed() const {
        QList<bool> shown;
        for (const lsNodePtr &row : *list->rows())
            shown << row->Displayed();
        return shown;
    }
};

TEST_F(TreeListRepaintTest, PixelsWaitForQtsPaintWhatAHostReadsDoesNot) {
    // With the defaults each new row is selected and scrolled into view: after every add the
    // rows shown are the plain rule's, while the screen keeps its old picture until Qt paints.
    QApplication::processEvents();
    const QImage before = list->picOut()->screenImage()->copy();
    for (int i = 1; i <= 60; ++i) {
        addFlatRows(i, i);
        ASSERT_EQ(displayed(), plainDisplayed()) << "row " << i;
        ASSERT_TRUE(list->Nodes(i)->Displayed()) << "row " << i;
        ASSERT_EQ(list->Row(), i);
        if (i == 4) {
            EXPECT_EQ(*list->picOut()->screenImage(), before);
        }
        // Now and then the pixels are asked for, which lays the view out whole: the layouts
        // made row by row before it (rows placed one at a time, the view moved a line) left
        // the same places.
        if (i % 5 == 0) {
            const QList<qint32> laidOut = layoutState();
            list->surface();
            ASSERT_EQ(laidOut, layoutState()) << "row " << i;
        }
    }
    QApplication::processEvents();
    const QImage painted = list->picOut()->screenImage()->copy();
    list->Refresh();
    EXPECT_EQ(painted, frame());
    EXPECT_NE(painted, before);
}

TEST_F(TreeListRepaintTest, AddingBelowTheViewComposesOnlyWhenTheViewChanges) {
    list->setAutoSelectNew(false);
    list->setColumns(2);
    addFlatRows(40);
    list->AddItem("K3", lsChild, "C1", "Child"); // a collapsed branch on screen
    const OffScreenDC *composed = list->surface();
    for (int i = 41; i <= 300; ++i) {
        addFlatRows(i, i);
        list->setListCell(lslcData, list->Rows(), 2, "off screen");
    }
    EXPECT_EQ(list->surface(), composed) << "no frame was composed";
    EXPECT_EQ(list->scrY()->maximum(), 300 - 15 + 1); // the last of 15 whole lines at the end

    // Adds below the view that do change it: each must show what a full composition shows.
    const struct Case {
        const char *name;
        std::function<void()> setUp;
        std::function<void()> add;
    } cases[] = {
        {"a cell changed behind the control's back",
         [&] { list->Nodes(2)->Cells()->at(1)->setTitle("Changed directly"); },
         [&] { list->AddItem("K300", lsNext, "K301", "Row301"); }},
        {"the first child of a row on screen", [] {},
         [&] { list->AddItem("K5", lsChild, "C5", "Child"); }},
        {"a sibling after one on screen whose branch runs past the view",
         [&] { branch("K6", "D", 20); }, [&] { list->AddItem("K6", lsChild, "D21", "Deeper"); }},
        {"a last child after a sibling on screen, whose branch runs past the view",
         [&] {
             list->scrY()->setValue(1);
             list->AddItem("K2", lsChild, "P1", "Parent");
             branch("P1", "Q", 30);
             list->Expand("K2");
         },
         [&] { list->AddItem("K2", lsChild, "P2", "After the branch"); }},
        {"a last child after a sibling above the view, whose branch reaches into it",
         [&] {
             branch("C1", "G", 30);
             list->Expand("K3");
             list->scrY()->setValue(list->rows()->VisibleRowsUpTo(list->Nodes("C1")->Index()) + 2);
             ASSERT_GT(list->FirstDisplayedRow(), list->Nodes("C1")->Index());
         },
         [&] { list->AddItem("C1", lsNext, "C2", "After the branch"); }},
    };
    for (const Case &c : cases) {
        c.setUp();
        list->Refresh();
        c.add();
        const QImage shown = frame();
        list->Refresh();
        EXPECT_EQ(shown, frame()) << c.name;
    }
}

TEST_F(TreeListRepaintTest, EveryRepaintShowsWhatAFullCompositionShows) {
    // Views of many shapes filled as hosts fill them: row after row, depth first (children under
    // collapsed rows shown) and anywhere, opened, closed, removed, scrolled, selected and given
    // looks, columns taken and given, now and then with a row changed behind the control's back,
    // now and then with an image list (whose pictures may reach past their line). Now and then one
    // large tree grows in one view. Rows painted in place must leave what composing the whole
    // frame leaves.
    QRandomGenerator random(20261123);
    const auto pick = [&](int n) { return n > 0 ? int(random.bounded(quint32(n))) : 0; };
    int inPlace = 0, unsettled = 0;
    for (int round = 0; round < 60; ++round) {
        const bool large = round % 20 == 0;
        makeControl(true, large ? 400 : 150 + pick(300), large ? 300 : 80 + pick(300));
        // Now and then the defaults, each new row selected and scrolled into view; now and then
        // the frame looked at only every fourth step, its repaints composed together.
        list->setAutoSelectNew(round % 4 == 3);
        const bool coalesce = round % 3 == 2;
        list->setColumns(large ? 2 : 1 + pick(3));
        list->setHeaders(large ? 1 : pick(3));
        list->setRowHeight(large ? 18 : 16 + pick(3) * pick(8));
        list->setLineStyle(large || pick(4) ? lsLineSolid : pick(3));
        list->setMultiSelect(pick(2) == 0);
        if (pick(4) == 0)
            list->setImageList(std::make_shared<lsImageList>());
        QVariant lastTop, lastAdded;
        int added = 0;
        bool behindTheBack = false;
        const auto shownRow = [&](bool collapsed) {
            QList<lsNodePtr> rows;
            for (const lsNodePtr &row : *list->rows())
                if (row->Displayed() && !(collapsed && row->Expanded()))
                    rows << row;
            return rows.isEmpty() ? nullptr : rows[pick(int(rows.size()))];
        };
        // Whether the call found its place (then it repaints).
        const auto add = [&](const QVariant &relative, qint32 relation) {
            lastAdded = QStringLiteral("N%1").arg(++added);
            const bool placed = list->AddItem(relative, relation, lastAdded,
                                              QStringLiteral("Row %1").arg(added)) > 0;
            if (relation == lsNext)
                lastTop = lastAdded;
            return placed;
        };
        for (int step = 0; step < (large ? 1200 : 90); ++step) {
            const bool look = !coalesce || step % 4 == 3;
            const OffScreenDC *composed = look ? list->surface() : nullptr;
            const QImage before = look ? frame() : QImage();
            const lsNodePtr row = shownRow(step % 2 == 0);
            // Any row, also one under a closed branch, or one removed.
            const QVariant anyRow = QStringLiteral("N%1").arg(1 + pick(added + 1));
            if (pick(6) == 0) {
                // A host writes a row or a setting directly; only a repaint shows it.
                behindTheBack = true;
                const lsNodePtr some = list->Nodes(1 + pick(list->Rows()));
                const int what = pick(5);
                if (what == 0 && some)
                    some->setDisplayed(true);
                else if (what == 1 && some)
                    some->Cells()->at(1)->setTitle("direct");
                else if (what == 2)
                    list->setListCell(lslcIcon, 1 + pick(list->Rows()), 1, "104");
                else if (what == 3)
                    list->setAutoSelectNew(pick(4) == 0);
                else if (what == 4)
                    list->setMultiSelect(pick(2) == 0);
            }
            bool repainted = true;
            if (const int op = pick(16); op < 3) {
                add(lastTop.isValid() ? lastTop : emptyText(), lsNext);
            } else if (op < 5) {
                repainted = row && add(row->Key(), lsChild);
            } else if (op == 5) {
                repainted = lastAdded.isValid() && add(lastAdded, lsChild);
            } else if (op == 6) {
                repainted = add(added > 0 ? anyRow : emptyText(), pick(5));
            } else if (op == 7) {
                repainted = row && list->Expand(row->Key());
            } else if (op == 8) {
                repainted = list->Expand(anyRow);
            } else if (op == 9) {
                repainted = list->Collapse(anyRow);
            } else if (op == 10) {
                repainted = list->RemoveItem(anyRow);
            } else if (op == 11) {
                const int value = list->scrY()->value();
                list->scrY()->setValue(1 + pick(list->scrY()->maximum()));
                repainted = list->scrY()->value() != value;
            } else if (op == 12) {
                // Fewer columns shrink the bar's range, which moves it without a word to its
                // handler.
                if (pick(3) == 0)
                    list->setColumns(1 + pick(5));
                const int most = list->scrX()->maximum();
                list->scrX()->setValue(pick(2) ? most : pick(most + 1));
                repainted = false;
            } else if (op < 15) {
                // Texts set after each add, as a host fills its columns, and other looks of a
                // cell.
                const qint32 property[] = {lslcData,      lslcData,     lslcBold,
                                           lslcAlignment, lsLCSelected, lslcbackColor};
                const QVariant value[] = {"A rather longer text", 1, 0, 1, 2, 0xFF};
                const int which = pick(6);
                if (row)
                    list->setListCell(property[which], row->Index(), 1 + pick(list->Columns()),
                                      value[which]);
                repainted = false;
            } else {
                list->SelectItem(1 + pick(list->Rows()));
            }
            // A change behind the control's back shows from the next repaint on.
            if (behindTheBack && !repainted)
                continue;
            behindTheBack = false;
            if (!look) {
                // What a host reads is right at once, whatever the pixels wait for.
                ASSERT_EQ(displayed(), plainDisplayed()) << "round " << round << " step " << step;
                continue;
            }
            const QImage shown = frame();
            const QList<qint32> state = layoutState();
            const bool replaced = list->surface() != composed;
            const qint16 lines = list->VisibleLineCount();
            inPlace += !replaced && shown != before;
            list->Refresh();
            const std::string where =
                QStringLiteral("round %1 step %2").arg(round).arg(step).toStdString();
            if (list->VisibleLineCount() != lines) {
                // A composed frame whose scroll bars then take a line (the horizontal bar comes
                // with the vertical one) is right only from the next frame on.
                ASSERT_TRUE(replaced) << where;
                ++unsettled;
                continue;
            }
            ASSERT_EQ(shown, frame()) << where;
            ASSERT_EQ(state, layoutState()) << where;
            ASSERT_EQ(displayed(), plainDisplayed()) << where;
            ASSERT_EQ(list->HorizontalOffset(), -list->scrX()->value()) << where;
        }
    }
    EXPECT_GT(inPlace, 300) << "rows painted in place";
}

} // namespace
