// Hit testing, mouse and keyboard, driven through the control's own geometry.

#include "ErrorOf.h"
#include "TreeListFixture.h"

#include <QApplication>
#include <QTest>
#include <functional>

namespace {

class TreeListInputTest : public TreeListFixture {
protected:
    // The header cell of a column, as the last frame laid it out.
    const lsCell &headerCell(qint32 column) const {
        return *list->headers()->at(1)->borrowCells().cell(column);
    }
};

struct HitCase {
    const char *what;
    QVariant x, y;
    bool ok;
    qint32 dataRow, dataCol, headerRow, headerCol;
};

TEST_F(TreeListInputTest, HitTestClassifiesPointsAgainstTheLaidOutCells) {
    list->setColumns(3);
    addFlatRows(5);
    const qint32 h = list->RowHeight();
    const qint32 edge1 = headerCell(1).Left() + headerCell(1).Width(),
                 end = headerCell(3).Left() + headerCell(3).Width();
    const double even = edge1 - edge1 % 2; // an even X at or one left of column 1's edge
    const HitCase cases[] = {
        {"first header cell", 5, 0, true, -1, -1, 1, 1},
        {"last pixel of the header line", 5, h - 1, true, -1, -1, 1, 1},
        {"first data line", 5, h, true, 1, 1, -1, -1},
        {"a right edge belongs to its column", edge1, h * 3, true, 3, 1, -1, -1},
        {"one past it is the next column", edge1 + 1, h * 3, true, 3, 2, -1, -1},
        {"left of the first column is column 1", -40, h, true, 1, 1, -1, -1},
        {"right of the last column", end + 1, h, true, 1, -1, -1, -1},
        {"below the last row still a data line", 5, h * 40, true, 40, 1, -1, -1},
        {"above the surface: header row 0", 5, -1, true, -1, -1, 0, 1},
        {"toward minus infinity", 5, -h - 1, true, -1, -1, -1, 1},
        {"exactly one line up", 5, -h, true, -1, -1, 0, 1},
        {"a half rounds down to even", even + 0.5, h, true, 1, 1, -1, -1},
        {"a half rounds up to even", even + 1.5, h, true, 1, 2, -1, -1},
        {"numeric text", QString("5"), QString("%1").arg(h), true, 1, 1, -1, -1},
        {"X not a number", QString("abc"), 5, false, -1, -1, -1, -1},
        {"Y not a number", 5, QVariant(), false, -1, -1, -1, -1},
    };
    for (const HitCase &c : cases) {
        const lsHitTestPtr hit = list->HitTest(c.x, c.y, 1, 2);
        lsHitTest direct;
        EXPECT_EQ(direct.Refresh(c.x, c.y, h, list->headers(), list->rows(), 1, 2), c.ok) << c.what;
        EXPECT_EQ(std::tuple(hit->DataRow(), hit->DataCol(), hit->HeaderRow(), hit->HeaderCol()),
                  std::tuple(c.dataRow, c.dataCol, c.headerRow, c.headerCol))
            << c.what;
        if (c.ok) {
            EXPECT_EQ(std::tuple(hit->Button(), hit->Shift()), std::tuple(1, 2)) << c.what;
        }
    }

    // No rows and no header rows: nothing to classify.
    lsNodes none;
    lsHitTest empty;
    EXPECT_FALSE(empty.Refresh(1, 1, h, &none, &none));
    EXPECT_FALSE(empty.Refresh(1, 1, h, nullptr, list->rows()));
    // A row height of 0 divides by zero.
    EXPECT_EQ(errorOf([&] { empty.Refresh(1, 1, 0, list->headers(), list->rows()); }), 11);

    // Scrolled sideways, the screen's left edge shows the cell under x = offset of the unscrolled
    // frame.
    list->setColumns(6);
    ASSERT_FALSE(list->scrX()->isHidden());
    list->scrX()->setValue(list->scrX()->maximum());
    const qint32 offset = -list->HorizontalOffset();
    ASSERT_GT(offset, 0);
    const qint32 x = headerCell(2).Left() + headerCell(2).Width() - offset;
    EXPECT_EQ(std::tuple(list->HitTest(x, h)->DataCol(), list->HitTest(x + 1, h)->DataCol(),
                         list->HitTest(x, 0)->X()),
              std::tuple(2, 3, x + offset));
}

TEST(HitTest, ClearAndPlusMinusBoxWithItsEdges) {
    lsHitTest hit;
    hit.setDataRow(3);
    hit.Clear();
    EXPECT_EQ(hit.DataRow(), -1);

    lsIdent ident;
    ident.setExpX(10);
    ident.setExpY(20);
    ident.setExpWidth(9);
    ident.setExpHeight(9);
    ident.setIdentIndex(2);
    ident.setIdentSize(17);
    const std::tuple<int, int, bool> points[] = {
        {10, 20, true}, {19, 29, true}, {20, 25, false}, {15, 30, false}, {9, 25, false}};
    for (const auto &[x, y, on] : points) {
        lsHitTest h;
        EXPECT_EQ(h.IsPlusMinusClick(ident, x, y), on) << x << "," << y;
        EXPECT_EQ(std::tuple(h.PlusMinus(), h.Indent(), h.IdentSize()),
                  std::tuple(on, on ? 2 : 0, 17));
    }
    EXPECT_FALSE(hit.IsPlusMinusClick(ident, QString("abc"), 20));
    EXPECT_EQ(hit.IdentSize(), 19);
}

// The host's view: every input event the control raises, in order.
class TreeListMouseTest : public TreeListInputTest {
protected:
    void SetUp() override {
        TreeListInputTest::SetUp();
        list->setColumns(3);
        addFlatRows(5);
        list->AddItem("K2", lsChild, "C1", "Child1");
        list->AddItem("K2", lsChild, "C2", "Child2");
        list->Refresh();
        record();
    }
    void record() {
#define LOG(signal) on(&vkTreeList::signal, #signal)
        LOG(MouseDown), LOG(MouseUp), LOG(Click), LOG(DblClick), LOG(CellClick), LOG(HeaderClick);
        LOG(OnExpand), LOG(OnCollapse), LOG(KeyDown), LOG(KeyPress), LOG(KeyUp);
#undef LOG
    }
    // Logs a signal by name with its whole-number arguments (the mouse's X and Y left out).
    template <typename... Args> void on(void (vkTreeList::*signal)(Args...), const char *name) {
        QObject::connect(list.get(), signal, [this, name](Args... args) {
            QStringList line{name};
            ((std::is_integral_v<Args> ? void(line << QString::number(args)) : void()), ...);
            events << line.join(' ');
        });
    }
    // The middle of a row's cell on screen, from the cell's own box.
    QPoint cellPoint(const QVariant &row, qint32 column) const {
        const lsCell *cell = list->rows()->Item(row)->borrowCells().cell(column);
        return {cell->Left() + list->HorizontalOffset() + cell->Width() / 2,
                cell->Top() + cell->Height() / 2};
    }
    // The middle of a row's plus/minus box, from the row geometry.
    QPoint boxPoint(const QVariant &row) const {
        lsIdent ident;
        ident.Refresh(list->rows()->Item(row), list->RowHeight(), nullptr, list->picOut());
        return {ident.ExpX() + ident.ExpWidth() / 2, ident.ExpY() + ident.ExpHeight() / 2};
    }
    QStringList take() {
        return std::exchange(events, {});
    }
    // A move with the left button held (QTest moves carry no buttons).
    void dragTo(QPoint at) {
        QMouseEvent move(QEvent::MouseMove, at, list->picOut()->mapToGlobal(at), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(list->picOut(), &move);
    }
    QStringList events;
};

TEST_F(TreeListMouseTest, PressesRaiseTheirEventsInOrder) {
    PictureBox *pic = list->picOut();
    const QPoint header(headerCell(2).Left() + 5, 5), below(5, list->RowHeight() * 15);
    enum { Press, Click, DoubleClick };
    const struct {
        const char *what;
        int act;
        Qt::MouseButton button;
        QPoint at;
        QStringList expected;
    } cases[] = {
        // clang-format off
        {"click on a cell", Click, Qt::LeftButton, cellPoint("K3", 2),
         {"CellClick 5 2", "MouseDown 1 0", "MouseUp 1 0", "Click"}},
        {"plus box opens, then the cell click", Press, Qt::LeftButton, boxPoint("K2"),
         {"OnExpand 2", "CellClick 2 1", "MouseDown 1 0"}},
        {"and closes", Press, Qt::LeftButton, boxPoint("K2"),
         {"OnCollapse 2", "CellClick 2 1", "MouseDown 1 0"}},
        {"box of a row without children", Press, Qt::LeftButton, boxPoint("K4"),
         {"CellClick 6 1", "MouseDown 1 0"}},
        {"below the last row", Press, Qt::LeftButton, below, {"MouseDown 1 0"}},
        {"left press on a header", Press, Qt::LeftButton, header,
         {"HeaderClick 1 2", "MouseDown 1 0"}},
        {"right press on a header", Press, Qt::RightButton, header, {"MouseDown 2 0"}},
        {"double click: the second press is the double click", DoubleClick, Qt::LeftButton,
         cellPoint("K1", 1),
         {"CellClick 1 1", "MouseDown 1 0", "MouseUp 1 0", "Click", "DblClick", "MouseUp 1 0"}},
        // clang-format on
    };
    for (const auto &c : cases) {
        take();
        if (c.act == Press) {
            QTest::mousePress(pic, c.button, {}, c.at);
        } else {
            QTest::mouseClick(pic, c.button, {}, c.at);
        }
        if (c.act == DoubleClick) {
            // A window system reports the second press as the double click, then its release.
            QTest::mouseDClick(pic, c.button, {}, c.at);
            QTest::mouseRelease(pic, c.button, {}, c.at);
        }
        EXPECT_EQ(take().join(", ").toStdString(), c.expected.join(", ").toStdString()) << c.what;
        // A press left down is let go before the next case, unheard.
        if (c.act == Press)
            QTest::mouseRelease(pic, c.button);
    }
    EXPECT_EQ(list->failedEntries(), 0);
}

TEST_F(TreeListMouseTest, SelectionFollowsClicksScrollingAndModifiers) {
    PictureBox *pic = list->picOut();
    QTest::mouseClick(pic, Qt::LeftButton, {}, cellPoint("K4", 1));
    EXPECT_EQ(list->rows()->SelectedRow(), list->rows()->Item("K4"));

    list->setMultiSelect(true);
    const auto selected = [&] {
        QStringList keys;
        for (const lsNodePtr &row : *list->rows())
            if (row->Selected())
                keys << row->Key().toString();
        return keys;
    };
    QTest::mouseClick(pic, Qt::LeftButton, Qt::ControlModifier, cellPoint("K1", 1));
    EXPECT_EQ(selected(), QStringList({"K1", "K4"}));
    // Shift and Ctrl together select singly.
    QTest::mouseClick(pic, Qt::LeftButton, Qt::ControlModifier | Qt::ShiftModifier,
                      cellPoint("K3", 1));
    EXPECT_EQ(selected(), QStringList({"K3"}));

    // After scrolling, a click hits the row drawn there.
    makeScrollingList(2);
    record();
    list->scrY()->setValue(10);
    const lsNodePtr shown = list->rows()->Item(list->FirstDisplayedRow() + 1);
    QTest::mouseClick(list->picOut(), Qt::LeftButton, {}, cellPoint(shown->Index(), 2));
    EXPECT_EQ(list->rows()->SelectedRow(), shown);
}

TEST_F(TreeListMouseTest, ColumnBordersDragAndDoubleClick) {
    PictureBox *pic = list->picOut();
    const lsCell &first = headerCell(1);
    const qint32 border = first.Left() + first.Width();
    // The pointer shows the border within reach of it.
    for (const auto &[dx, pointer] : {std::pair{3, 99}, {30, 0}}) {
        QTest::mouseMove(pic, QPoint(border + dx, 5));
        EXPECT_EQ(pic->MousePointer(), pointer) << dx;
    }

    // A drag gives the column its new width in every row, header rows included.
    const QImage before = frame();
    QTest::mouseMove(pic, QPoint(border, 5));
    QTest::mousePress(pic, Qt::LeftButton, {}, QPoint(border, 5));
    // The drag starts at the first move with the button down, still within reach of the border.
    dragTo(QPoint(border + 2, 5));
    const QImage shown = *pic->screenImage();
    dragTo(QPoint(border + 40, 20));
    // The line follows the mouse on the screen: inverted there, and gone from the border. A
    // paint in between (an expose, or the line's own update) keeps it on top of the frame.
    pic->repaint();
    const QImage &screen = *pic->screenImage();
    EXPECT_EQ(screen.pixel(border + 40, 30), shown.pixel(border + 40, 30) ^ 0x00FFFFFF);
    EXPECT_EQ(screen.pixel(border, 30), shown.pixel(border, 30) ^ 0x00FFFFFF);
    QTest::mouseRelease(pic, Qt::LeftButton, {}, QPoint(border + 40, 20));
    for (lsNodes *nodes : {list->rows(), list->headers()})
        for (const lsNodePtr &row : *nodes)
            EXPECT_EQ(row->borrowCells().cell(1)->Width(), first.Width());
    EXPECT_EQ(first.Width(), border + 40 - first.Left());
    EXPECT_NE(before, frame());

    // Not narrower than its title. A drag from a pressed border follows the first move even
    // when it lands far from the border, below the header rows.
    const qint32 narrowest = pic->TextWidth(first.Title()) + 4;
    const qint32 edge = first.Left() + first.Width();
    QTest::mouseMove(pic, QPoint(edge, 5));
    QTest::mousePress(pic, Qt::LeftButton, {}, QPoint(edge, 5));
    dragTo(QPoint(first.Left() + 1, 60));
    QTest::mouseRelease(pic, Qt::LeftButton, {}, QPoint(first.Left() + 1, 5));
    EXPECT_EQ(first.Width(), narrowest);

    // A double click on a border sizes the column to its texts and raises no DblClick.
    list->setListCell(lslcData, 1, 2, QString(40, 'W'));
    const lsCell &second = headerCell(2);
    const QPoint onBorder(second.Left() + second.Width(), 5);
    QTest::mouseMove(pic, onBorder);
    take();
    QTest::mouseDClick(pic, Qt::LeftButton, {}, onBorder);
    EXPECT_FALSE(take().contains("DblClick"));
    EXPECT_GT(second.Width(), pic->TextWidth(QString(40, 'W')));
    EXPECT_EQ(pic->MousePointer(), 0);
}

TEST_F(TreeListMouseTest, KeysMoveTheSelectionScrollAndOpenBranches) {
    makeScrollingList(3);
    list->AddItem("K1", lsChild, "C1", "Child");
    record();
    PictureBox *pic = list->picOut();
    list->scrY()->setValue(list->scrY()->minimum());
    list->SelectItem(1, 1);
    take();
    QTest::keyClick(pic, Qt::Key_Down);
    EXPECT_EQ(std::tuple(list->rows()->SelectedRow()->Key().toString(), take()),
              std::tuple(QString("K2"), QStringList({"KeyDown 40 0", "KeyUp 40 0"})));
    QTest::keyClick(pic, Qt::Key_Up);
    EXPECT_EQ(list->rows()->SelectedRow()->Key().toString(), "K1");

    // Enter opens and closes a branch only with ExpandOnDoubleClick.
    take();
    QTest::keyClick(pic, Qt::Key_Return);
    EXPECT_EQ(take(), QStringList({"OnExpand 1", "KeyDown 13 0", "KeyPress 13", "KeyUp 13 0"}));
    list->setExpandOnDoubleClick(false);
    QTest::keyClick(pic, Qt::Key_Return);
    EXPECT_TRUE(list->rows()->Item("K1")->Expanded());

    // Left in column 1 and Right in the last column change nothing but still reach the host.
    take();
    QTest::keyClick(pic, Qt::Key_Left);
    EXPECT_EQ(list->rows()->SelectedCell()->Index(), 1);
    for (int i = 0; i < 3; ++i)
        QTest::keyClick(pic, Qt::Key_Right);
    EXPECT_EQ(std::tuple(list->Col(), take().filter("KeyDown").size()), std::tuple(3, 4));

    // Down on the last row shown scrolls and leaves the selection where it was.
    lsNodePtr last;
    for (const lsNodePtr &row : *list->rows())
        if (row->Displayed())
            last = row;
    list->SelectItem(last->Index(), 1);
    const int value = list->scrY()->value();
    QTest::keyClick(pic, Qt::Key_Down);
    EXPECT_EQ(std::tuple(list->rows()->SelectedRow(), list->scrY()->value()),
              std::tuple(last, value + 1));
    QTest::keyClick(pic, Qt::Key_End);
    EXPECT_EQ(list->scrY()->value(), list->scrY()->maximum());
    QTest::keyClick(pic, Qt::Key_PageUp);
    EXPECT_EQ(list->scrY()->value(), list->scrY()->maximum() - (list->scrY()->pageStep() - 1));
    QTest::keyClick(pic, Qt::Key_Home);
    EXPECT_EQ(list->scrY()->value(), list->scrY()->minimum());

    // The wheel scrolls through the same path.
    QWheelEvent wheel(QPointF(10, 40), pic->mapToGlobal(QPointF(10, 40)), {}, QPoint(0, -120),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(pic, &wheel);
    EXPECT_EQ(list->scrY()->value(), list->scrY()->minimum() + QApplication::wheelScrollLines());
    EXPECT_EQ(list->failedEntries(), 0);
}

} // namespace
