// What other tree views offer, each off until a host turns it on: type-ahead and tooltips for
// shortened captions, through real key and tooltip events.

#include "TreeListFixture.h"

#include <QApplication>
#include <QHelpEvent>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>
#include <functional>

namespace {

class TreeListOptInTest : public TreeListFixture {
protected:
    void SetUp() override {
        TreeListFixture::SetUp();
        list->setAutoSelectNew(false);
        const char *names[] = {"Apple", "Banana", "Blueberry", "Cherry", "banana split"};
        for (int i = 0; i < 5; ++i)
            list->AddItem(i ? QVariant(i) : emptyText(), lsNext, emptyText(), names[i]);
    }
};

TEST_F(TreeListOptInTest, TypedTextGoesToTheRowItNames) {
    QSignalSpy typed(list.get(), &vkTreeList::KeyPress);
    const struct {
        const char *keys;
        bool on;
        int waitMs; // between the keys
        qint32 row;
    } cases[] = {{"b", false, 0, 1},  {"b", true, 0, 2},   {"bl", true, 0, 3}, {"bb", true, 0, 3},
                 {"bbb", true, 0, 5}, {"BAN", true, 0, 2}, {"c", true, 0, 4},  {"z", true, 0, 1},
                 {"bc", true, 0, 2},  {"bc", true, 150, 4}};
    QApplication::setKeyboardInputInterval(100);
    for (const auto &c : cases) {
        list->setKeyboardSearch(c.on);
        list->SelectItem(1, 1);
        QTest::qWait(150); // a text typed before is over
        typed.clear();
        for (const char *key = c.keys; *key; ++key) {
            QTest::keyClicks(list->picOut(), QString(QChar(*key)));
            QTest::qWait(c.waitMs);
        }
        EXPECT_EQ(list->Row(), c.row) << c.keys << " on " << c.on;
        EXPECT_EQ(typed.count(), qsizetype(strlen(c.keys))) << c.keys; // the host hears each key
    }
    // A row out of view is scrolled into it.
    list->resize(list->width(), 3 * list->RowHeight() + 8);
    list->SelectItem(1, 1);
    QTest::qWait(150);
    list->setColumnWidth(1, 2000 * 15); // wider than the view: the horizontal bar comes
    QTest::keyClicks(list->picOut(), "c");
    EXPECT_EQ(list->Row(), 4);
    // Wholly in view: above the horizontal bar, not under it.
    const lsCell &cell = *list->Nodes(4)->Cells()->Item(1);
    ASSERT_FALSE(list->scrX()->isHidden());
    EXPECT_LE(list->picOut()->mapTo(list.get(), QPoint(0, cell.Top() + list->RowHeight())).y(),
              list->scrX()->y());
}

TEST_F(TreeListOptInTest, AShortenedCaptionShowsWholeInATooltip) {
    list->setColumnWidth(1, 90 * 15); // 90 pixels in twips
    list->setListCell(lslcData, 5, 1, "banana split with three scoops of ice cream");
    list->Refresh();
    const auto tipAt = [&](qint32 row) {
        QToolTip::hideText(); // it fades out
        EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }));
        const lsCell &cell = *list->Nodes(row)->Cells()->Item(1);
        const QPoint at(cell.Left() + cell.Width() / 2, cell.Top() + 4);
        QHelpEvent event(QEvent::ToolTip, at, list->picOut()->mapToGlobal(at));
        QApplication::sendEvent(list->picOut(), &event);
        return QToolTip::isVisible() ? QToolTip::text() : QString();
    };
    EXPECT_EQ(tipAt(5), ""); // off by default
    list->setShowTips(true);
    EXPECT_EQ(tipAt(5), "banana split with three scoops of ice cream");
    EXPECT_EQ(tipAt(1), ""); // "Apple" shows whole
}

// The extended rule through real clicks and keys: which rows end up selected, and which is the
// selected row, against what Selected with multi-selection gives row after row.
TEST_F(TreeListOptInTest, ShiftSelectsARangeCtrlTogglesCtrlASelectsAll) {
    const auto clickRow = [&](qint32 row, Qt::KeyboardModifiers keys = {}) {
        const lsCell &cell = *list->Nodes(row)->Cells()->Item(1);
        QTest::mouseClick(list->picOut(), Qt::LeftButton, keys,
                          QPoint(cell.Left() + cell.Width() - 5, cell.Top() + 4));
    };
    const auto selected = [&] {
        std::vector<qint32> rows;
        for (qint32 r = 1; r <= list->Rows(); ++r)
            if (list->Nodes(r)->Selected())
                rows.push_back(r);
        return rows;
    };
    const struct {
        const char *what;
        std::function<void()> act;
        std::vector<qint32> rows;
        qint32 current;
    } cases[] = {
        {"click", [&] { clickRow(2); }, {2}, 2},
        {"shift click down", [&] { clickRow(4, Qt::ShiftModifier); }, {2, 3, 4}, 4},
        {"shift click up from the anchor", [&] { clickRow(1, Qt::ShiftModifier); }, {1, 2}, 1},
        {"ctrl click adds", [&] { clickRow(5, Qt::ControlModifier); }, {1, 2, 5}, 5},
        {"ctrl click takes away", [&] { clickRow(1, Qt::ControlModifier); }, {2, 5}, 5},
        {"shift up: from the new anchor to the row above the current",
         [&] { QTest::keyClick(list->picOut(), Qt::Key_Up, Qt::ShiftModifier); },
         {1, 2, 3, 4},
         4},
        {"shift end",
         [&] { QTest::keyClick(list->picOut(), Qt::Key_End, Qt::ShiftModifier); },
         {1, 2, 3, 4, 5},
         5},
        {"plain key", [&] { QTest::keyClick(list->picOut(), Qt::Key_Up); }, {4}, 4},
        {"ctrl a",
         [&] { QTest::keyClick(list->picOut(), Qt::Key_A, Qt::ControlModifier); },
         {1, 2, 3, 4, 5},
         4},
    };
    list->setSelectionMode(lsSelectionExtended);
    for (const auto &c : cases) {
        c.act();
        EXPECT_EQ(selected(), c.rows) << c.what;
        EXPECT_EQ(list->Row(), c.current) << c.what;
    }
    // The same flags as Selected with multi-selection row after row.
    vkTreeList reference(nullptr, host.get());
    for (int i = 1; i <= 5; ++i)
        reference.AddItem(i > 1 ? QVariant(i - 1) : emptyText(), lsNext, emptyText(), "Row");
    for (qint32 r = 1; r <= 5; ++r)
        reference.rows()->Selected(r == 4 ? 5 : r == 5 ? 4 : r, 1, r > 1);
    for (qint32 r = 1; r <= 5; ++r)
        EXPECT_EQ(reference.Nodes(r)->Cells()->Item(1)->Selected(),
                  list->Nodes(r)->Cells()->Item(1)->Selected())
            << r;
}

} // namespace
