// Row geometry of the tree column.
#include "ScaleConverter.h"
#include "lsIdent.h"

#include <gtest/gtest.h>
#include <limits>

namespace {

lsNodePtr makeRow(qint32 level, qint32 top, const QVariant &icon = QString()) {
    auto row = std::make_shared<lsNode>();
    row->setIdentLevel(level);
    const lsCellPtr cell = row->Cells()->Add("title", 1);
    cell->setTop(top);
    cell->setIcon(icon);
    return row;
}

} // namespace

TEST(lsIdent, WorkedExampleAndLevelZero) {
    const ScaleConverter scale;
    lsIdent g;
    g.Refresh(makeRow(2, 40), 19, nullptr, &scale);
    const std::pair<const char *, qint32> expected[] = {
        {"ExpX", 41},        {"ExpY", 44},       {"TreeLineX", 45},  {"TreeLineY1", 48},
        {"TreeLineY2", 8},   {"NodeLineX1", 45}, {"NodeLineX2", 56}, {"NodeLineY", 48},
        {"picX", 56},        {"PicY", 42},       {"ChildLineX", 64}, {"ChildLineY1", 58},
        {"ChildLineY2", 66}, {"TextX", 74},      {"TextY", 42},      {"PicWidth", 16},
        {"PicHeight", 16},   {"IdentIndex", 2},  {"IdentSize", 19},  {"ExpWidth", 9},
    };
    const qint32 actual[] = {g.ExpX(),        g.ExpY(),       g.TreeLineX(),  g.TreeLineY1(),
                             g.TreeLineY2(),  g.NodeLineX1(), g.NodeLineX2(), g.NodeLineY(),
                             g.picX(),        g.PicY(),       g.ChildLineX(), g.ChildLineY1(),
                             g.ChildLineY2(), g.TextX(),      g.TextY(),      g.PicWidth(),
                             g.PicHeight(),   g.IdentIndex(), g.IdentSize(),  g.ExpWidth()};
    for (size_t i = 0; i < std::size(expected); ++i)
        EXPECT_EQ(actual[i], expected[i].second) << expected[i].first;

    // PicY rounds halves to the even neighbour: 0 + 1.5 -> 2 and 1 + 1.5 -> 2.
    for (const qint32 top : {0, 1}) {
        g.Refresh(makeRow(0, top), 19, nullptr, &scale);
        EXPECT_EQ(g.PicY(), 2) << top;
        EXPECT_EQ(g.ExpX(), 3);
        EXPECT_EQ(g.picX(), 18);
        EXPECT_EQ(g.TextX(), 36);
    }

    // The step is fixed: changing IdentSize does not move the box.
    g.setIdentSize(40);
    g.Refresh(makeRow(1, 0), 19, nullptr, &scale);
    EXPECT_EQ(g.ExpX(), 22);
}

TEST(lsIdent, PictureSourcesAndFallbacks) {
    const ScaleConverter scale;
    lsImageList list;
    list.Add("wide", std::make_shared<StdPicture>(QImage(32, 20, QImage::Format_RGB32)));
    lsIdent g;

    // A picture from the host's list, found by key in any case.
    g.Refresh(makeRow(0, 0, "WIDE"), 24, &list, &scale);
    EXPECT_EQ(g.PicWidth(), 32);
    EXPECT_EQ(g.PicHeight(), 20);
    EXPECT_EQ(g.TextX(), 18 + 32 + 2);

    struct Case {
        const char *name;
        QVariant icon;
        const lsImageList *list;
        const ScaleSource *scale;
        qint32 size;
    };
    const Case cases[] = {
        {"empty icon with a list uses built-in 103", QString(), &list, &scale, 16},
        {"missing key", "nope", &list, &scale, 24},
        {"index out of range", 7, &list, &scale, 24},
        {"wrong type", QVariant(QStringList{"a"}), &list, &scale, 24},
        {"built-in number", 101, nullptr, &scale, 9},
        {"built-in number as text", "102", nullptr, &scale, 9},
        {"unknown built-in", 7, nullptr, &scale, 24},
        {"no scale conversion", QString(), nullptr, nullptr, 24},
    };
    for (const Case &c : cases) {
        g.Refresh(makeRow(0, 0, c.icon), 24, c.list, c.scale);
        EXPECT_EQ(g.PicWidth(), c.size) << c.name;
        EXPECT_EQ(g.PicHeight(), c.size) << c.name;
    }
}

TEST(lsIdent, HiddenRowsAndDegenerateRows) {
    const ScaleConverter scale;
    lsIdent g;
    const lsNodePtr hidden = makeRow(1, 0);
    hidden->setVisible(false);
    g.Refresh(hidden, 19, nullptr, &scale);
    EXPECT_EQ(g.TreeLineY1(), 0);
    EXPECT_EQ(g.TreeLineY2(), 0);
    EXPECT_EQ(g.NodeLineY(), 0);

    // Hidden rows below the top keep their lines.
    const lsNodePtr lower = makeRow(1, 19);
    lower->setVisible(false);
    g.Refresh(lower, 19, nullptr, &scale);
    EXPECT_EQ(g.TreeLineY1(), 19 + 4 + 4);

    // A row without cells sits at top 0 with picture 103; a null row changes nothing.
    g.Refresh(std::make_shared<lsNode>(), 19, nullptr, &scale);
    EXPECT_EQ(g.PicY(), 2);
    EXPECT_EQ(g.PicWidth(), 16);
    g.setTextX(-1);
    g.Refresh(nullptr, 19, nullptr, &scale);
    EXPECT_EQ(g.TextX(), -1);

    // An overflowing level stops the computation: positions from before it stay as they were.
    g.Refresh(makeRow(std::numeric_limits<qint32>::max(), 0), 19, nullptr, &scale);
    EXPECT_EQ(g.IdentIndex(), std::numeric_limits<qint32>::max());
    EXPECT_EQ(g.ExpX(), 3);
    EXPECT_EQ(g.TextX(), -1);
}
