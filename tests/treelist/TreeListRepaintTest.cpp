// Repaints that would change nothing on screen are skipped; a skipped repaint must never leave a
// frame that differs from the one a full composition gives.

#include "TreeListFixture.h"

#include <QRandomGenerator>
#include <functional>

namespace {

class TreeListRepaintTest : public TreeListFixture {
protected:
    // The observable state a frame leaves: every row's Displayed and the first cell's box of the
    // rows shown.
    QList<qint32> layoutState() const {
        QList<qint32> state;
        for (const lsNodePtr &row : *list->rows()) {
            state << row->Displayed();
            if (row->Displayed())
                if (const lsCellPtr cell = row->Cells()->at(1))
                    state << cell->Left() << cell->Top() << cell->Height() << cell->Xoffset();
        }
        state << list->FirstDisplayedRow() << list->scrY()->maximum() << list->scrY()->value()
              << list->scrX()->isHidden() << list->LastPaintedRow();
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

} // namespace
