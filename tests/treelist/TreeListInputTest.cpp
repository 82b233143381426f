// Hit testing, mouse and keyboard, driven through the control's own geometry.

#include "ErrorOf.h"
#include "TreeListFixture.h"

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
    const lsCell &c1 = headerCell(1), &c3 = headerCell(3);
    const qint32 edge1 = c1.Left() + c1.Width(), end = c3.Left() + c3.Width();
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
}

TEST_F(TreeListInputTest, HitTestTakesTheHorizontalScrollIntoAccount) {
    list->setColumns(6);
    addFlatRows(3);
    ASSERT_FALSE(list->scrX()->isHidden());
    list->scrX()->setValue(list->scrX()->maximum());
    const qint32 offset = -list->HorizontalOffset();
    ASSERT_GT(offset, 0);
    // The screen's left edge shows the cell under x = offset of the unscrolled frame.
    const lsCell &second = headerCell(2);
    const qint32 x = second.Left() + second.Width() - offset;
    EXPECT_EQ(list->HitTest(x, list->RowHeight())->DataCol(), 2);
    EXPECT_EQ(list->HitTest(x + 1, list->RowHeight())->DataCol(), 3);
    EXPECT_EQ(list->HitTest(x, 0)->X(), x + offset);
}

TEST(HitTest, ClearAndPlusMinusBoxWithItsEdges) {
    lsHitTest hit;
    hit.setPlusMinusTop(0);
    hit.setDataRow(3);
    hit.Clear();
    EXPECT_EQ(std::tuple(hit.PlusMinusTop(), hit.IdentSize(), hit.PlusMinusWidth(), hit.DataRow(),
                         hit.PlusMinus()),
              std::tuple(4, 19, 9, -1, false));

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

} // namespace
