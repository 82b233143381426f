// Row geometry of the tree column.
#include "ScaleConverter.h"
#include "lsIdent.h"

#include <gtest/gtest.h>
#include <limits>

namespace {

lsNodePtr makeRow(qint32 level, qint32 top, const QVariant &icon = QString(), bool visible = true) {
    auto row = std::make_shared<lsNode>();
    row->setIdentLevel(level);
    row->setVisible(visible);
    const lsCellPtr cell = row->Cells()->Add("title", 1);
    cell->setTop(top);
    cell->setIcon(icon);
    return row;
}

} // namespace

TEST(lsIdent, PositionsOfTheWorkedExampleAndOfSpecialRows) {
    const ScaleConverter scale;
    lsIdent g;
    g.Refresh(makeRow(2, 40), 19, nullptr, &scale);
    const std::vector<qint32> actual = {
        g.ExpX(),       g.ExpY(),        g.TreeLineX(),   g.TreeLineY1(), g.TreeLineY2(),
        g.NodeLineX1(), g.NodeLineX2(),  g.NodeLineY(),   g.picX(),       g.PicY(),
        g.ChildLineX(), g.ChildLineY1(), g.ChildLineY2(), g.TextX(),      g.TextY(),
        g.PicWidth(),   g.PicHeight(),   g.IdentIndex(),  g.IdentSize(),  g.ExpWidth()};
    EXPECT_EQ(actual, std::vector<qint32>({41, 44, 45, 48, 8,  45, 56, 48, 56, 42, //
                                           64, 58, 66, 74, 42, 16, 16, 2,  19, 9}));

    // PicY rounds halves to the even neighbour: 0 + 1.5 -> 2 and 1 + 1.5 -> 2.
    for (const qint32 top : {0, 1}) {
        g.Refresh(makeRow(0, top), 19, nullptr, &scale);
        EXPECT_EQ(std::tuple(g.PicY(), g.ExpX(), g.picX(), g.TextX()), std::tuple(2, 3, 18, 36))
            << top;
    }
    // The step is fixed: changing IdentSize does not move the box.
    g.setIdentSize(40);
    g.Refresh(makeRow(1, 0), 19, nullptr, &scale);
    EXPECT_EQ(g.ExpX(), 22);

    // A hidden row at the top has no lines; hidden rows below it keep theirs.
    g.Refresh(makeRow(1, 0, QString(), false), 19, nullptr, &scale);
    EXPECT_EQ(std::tuple(g.TreeLineY1(), g.TreeLineY2(), g.NodeLineY()), std::tuple(0, 0, 0));
    g.Refresh(makeRow(1, 19, QString(), false), 19, nullptr, &scale);
    EXPECT_EQ(g.TreeLineY1(), 19 + 4 + 4);

    // A row without cells sits at top 0 with picture 103; a null row changes nothing.
    g.Refresh(std::make_shared<lsNode>(), 19, nullptr, &scale);
    EXPECT_EQ(std::pair(g.PicY(), g.PicWidth()), std::pair(2, 16));
    g.setTextX(-1);
    g.Refresh(nullptr, 19, nullptr, &scale);
    EXPECT_EQ(g.TextX(), -1);

    // An overflowing level stops the computation: positions from before it stay as they were.
    g.Refresh(makeRow(std::numeric_limits<qint32>::max(), 0), 19, nullptr, &scale);
    EXPECT_EQ(std::tuple(g.IdentIndex(), g.ExpX(), g.TextX()),
              std::tuple(std::numeric_limits<qint32>::max(), 3, -1));
}

TEST(lsIdent, PictureSourcesAndFallbacks) {
    const ScaleConverter scale;
    lsImageList list;
    list.Add("wide", std::make_shared<StdPicture>(QImage(32, 20, QImage::Format_RGB32)));
    lsIdent g;

    // A picture from the host's list, found by key in any case.
    g.Refresh(makeRow(0, 0, "WIDE"), 24, &list, &scale);
    EXPECT_EQ(std::tuple(g.PicWidth(), g.PicHeight(), g.TextX()), std::tuple(32, 20, 18 + 32 + 2));

    // Name, icon, whether the list and the scale conversion are given, and the square's size.
    const std::tuple<const char *, QVariant, bool, bool, qint32> cases[] = {
        {"empty icon with a list uses built-in 103", QString(), true, true, 16},
        {"missing key", "nope", true, true, 24},
        {"index out of range", 7, true, true, 24},
        {"wrong type", QVariant(QStringList{"a"}), true, true, 24},
        {"built-in number", 101, false, true, 9},
        {"built-in number as text", "102", false, true, 9},
        {"unknown built-in", 7, false, true, 24},
        {"no scale conversion", QString(), false, false, 24},
    };
    for (const auto &[name, icon, withList, withScale, size] : cases) {
        g.Refresh(makeRow(0, 0, icon), 24, withList ? &list : nullptr,
                  withScale ? &scale : nullptr);
        EXPECT_EQ(std::pair(g.PicWidth(), g.PicHeight()), std::pair(size, size)) << name;
    }
}
