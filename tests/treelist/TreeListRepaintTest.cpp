// Repaints that would change nothing on screen are skipped; a skipped repaint must never leave a
// frame that differs from the one a full composition gives.

#include "TreeListFixture.h"

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
                            line <= list->VisibleLineCount();
            line += on ? 1 : 0;
            shown << on;
        }
        return shown;
    }
    // Opens `parent` over `count` new children keyed prefix1, prefix2...
    void branch(const char *parent, const char *prefix, int count) {
        for (int i = 1; i <= count; ++i)
            list->AddItem(parent, lsChild, QStringLiteral("%1%2").arg(prefix).arg(i), "Child");
        list->Expand(parent);
    }
    QList<bool> displayed() const {
        QList<bool> shown;
        for (const lsNodePtr &row : *list->rows())
            shown << row->Displayed();
        return shown;
    }
};

TEST_F(TreeListRepaintTest, AddingBelowTheViewComposesOnlyWhenTheViewChanges) {
    list->setAutoSelectNew(false);
    list->setColumns(2);
    addFlatRows(40);
    list->AddItem("K3", lsChild, "C1", "Child"); // a collapsed branch on screen
    const OffScreenDC *composed = list->surface();
    for (int i = 41; i <= 300; ++i) {
        list->AddItem(QStringLiteral("K%1").arg(i - 1), lsNext, QStringLiteral("K%1").arg(i),
                      QStringLiteral("Row%1").arg(i));
        list->setListCell(lslcData, list->Rows(), 2, "off screen");
    }
    EXPECT_EQ(list->surface(), composed) << "no frame was composed";
    EXPECT_EQ(list->scrY()->maximum(), 300);

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
    QRandomGenerator random(20261122);
    const auto pick = [&](int n) { return n > 0 ? 1 + int(random.bounded(quint32(n))) : 1; };
    const auto anyRow = [&] { return QVariant(QStringLiteral("R%1").arg(pick(400))); };
    int added = 0;
    // Host calls that end in a repaint when they find their row (they say whether they did),
    // weighted towards adds; and calls that do not repaint.
    const auto add = [&](const QVariant &relative, qint32 relation) {
        ++added;
        return list->AddItem(relative, lsRelationshipConstants(relation),
                             QStringLiteral("R%1").arg(added),
                             QStringLiteral("Row %1").arg(added)) > 0;
    };
    const std::function<bool()> repainting[] = {
        [&] { return add(QStringLiteral("R%1").arg(added), lsNext); },
        [&] { return add(anyRow(), lsChild); },
        [&] { return add(added > 0 ? anyRow() : emptyText(), qint32(random.bounded(5u))); },
        [&] { return list->Expand(anyRow()); },
        [&] { return list->Collapse(anyRow()); },
        [&] { return list->RemoveItem(anyRow()); },
        [&] {
            const int before = list->scrY()->value();
            list->scrY()->setValue(pick(list->scrY()->maximum()));
            return list->scrY()->value() != before;
        },
        [&] {
            list->SelectItem(pick(list->Rows()));
            return true;
        },
    };
    const std::function<void()> quiet[] = {
        [&] { list->setListCell(lslcData, pick(list->Rows()), pick(2), "set"); },
        [&] { list->setListCell(lslcIcon, pick(list->Rows()), 1, "104"); },
        [&] {
            if (const lsNodePtr row = list->Nodes(pick(list->Rows())))
                row->setDisplayed(true);
        },
        [&] {
            if (const lsNodePtr row = list->Nodes(pick(list->Rows())))
                row->Cells()->at(1)->setTitle("direct");
        },
        [&] { list->setAutoSelectNew(random.bounded(4u) == 0); },
        [&] { list->setMultiSelect(random.bounded(2u) == 0); },
    };
    list->setColumns(2);
    list->setAutoSelectNew(false);
    for (int step = 0; step < 2500; ++step) {
        if (random.bounded(4u) == 0)
            quiet[random.bounded(quint32(std::size(quiet)))]();
        const bool repainted =
            repainting[random.bounded(2u) ? random.bounded(2u)
                                          : random.bounded(quint32(std::size(repainting)))]();
        if (!repainted)
            continue;
        const QImage shown = frame();
        const QList<qint32> state = layoutState();
        list->Refresh();
        ASSERT_EQ(shown, frame()) << "step " << step;
        ASSERT_EQ(state, layoutState()) << "step " << step;
        ASSERT_EQ(displayed(), plainDisplayed()) << "step " << step;
    }
}

TEST_F(TreeListRepaintTest, LoadsPaintedInPlaceShowWhatAFullCompositionShows) {
    // Views filled row by row and depth first (children under collapsed rows shown), in views of
    // many shapes; rows painted in place must leave what composing the whole frame leaves.
    QRandomGenerator random(20261123);
    const auto pick = [&](int n) { return n > 0 ? int(random.bounded(quint32(n))) : 0; };
    int inPlace = 0, unsettled = 0;
    for (int round = 0; round < 60; ++round) {
        makeControl(true, 150 + pick(300), 80 + pick(300));
        list->setAutoSelectNew(false);
        list->setColumns(1 + pick(3));
        list->setHeaders(pick(3));
        list->setRowHeight(16 + pick(3) * pick(8));
        list->setLineStyle(pick(4) == 0 ? pick(3) : lsLineSolid);
        list->setMultiSelect(pick(2) == 0);
        QVariant lastTop, lastAdded;
        const auto shownRow = [&](bool collapsed) {
            QList<lsNodePtr> rows;
            for (const lsNodePtr &row : *list->rows())
                if (row->Displayed() && !(collapsed && row->Expanded()))
                    rows << row;
            return rows.isEmpty() ? nullptr : rows[pick(int(rows.size()))];
        };
        const auto add = [&](const QVariant &relative, lsRelationshipConstants relation) {
            lastAdded = QStringLiteral("N%1").arg(list->Rows() + 1);
            list->AddItem(relative, relation, lastAdded,
                          QStringLiteral("Row %1").arg(list->Rows()));
            return relation == lsNext ? lastAdded : lastTop;
        };
        for (int step = 0; step < 90; ++step) {
            const OffScreenDC *composed = list->surface();
            const QImage before = frame();
            const lsNodePtr row = shownRow(step % 2 == 0);
            switch (pick(12)) {
            case 0:
            case 1:
            case 2:
                lastTop = add(lastTop.isValid() ? lastTop : emptyText(), lsNext);
                break;
            case 3:
            case 4:
                if (row)
                    add(row->Key(), lsChild);
                break;
            case 5:
                if (lastAdded.isValid())
                    add(lastAdded, lsChild);
                break;
            case 6:
                if (row)
                    list->Expand(row->Key());
                break;
            case 7:
                list->scrY()->setValue(1 + pick(list->scrY()->maximum()));
                break;
            case 8:
                list->scrX()->setValue(pick(list->scrX()->maximum() + 1));
                break;
            case 9:
            case 10: {
                // Texts set after each add, as a host fills its columns, and other looks of a
                // cell.
                const qint32 property[] = {lslcData,      lslcData,     lslcBold,
                                           lslcAlignment, lsLCSelected, lslcbackColor};
                const qint32 value[] = {0, 1, 0, 1, 2, 0xFF};
                const int which = pick(6);
                if (row)
                    list->setListCell(property[which], row->Index(), 1 + pick(list->Columns()),
                                      which == 0 ? QVariant("A rather longer text") : value[which]);
                break;
            }
            default:
                list->SelectItem(1 + pick(list->Rows()));
                break;
            }
            const QImage shown = frame();
            const QList<qint32> state = layoutState();
            const bool replaced = list->surface() != composed;
            const qint16 lines = list->VisibleLineCount();
            inPlace += !replaced && shown != before;
            list->Refresh();
            if (list->VisibleLineCount() != lines) {
                // A composed frame whose scroll bars then take a line (the horizontal bar comes
                // with the vertical one) is right only from the next frame on.
                ASSERT_TRUE(replaced) << "round " << round << " step " << step;
                ++unsettled;
                continue;
            }
            ASSERT_EQ(shown, frame()) << "round " << round << " step " << step;
            ASSERT_EQ(state, layoutState()) << "round " << round << " step " << step;
            ASSERT_EQ(displayed(), plainDisplayed()) << "round " << round << " step " << step;
        }
    }
    EXPECT_GT(inPlace, 300) << "rows painted in place";
}

} // namespace
