// Row geometry of the tree column. The absolute places are pinned by the control's reference
// images; these are the relations between them.
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

// The places across and down a row, less a shift.
std::vector<qint32> xs(const lsIdent &g, qint32 shift = 0) {
    return {g.ExpX() - shift,       g.TreeLineX() - shift, g.NodeLineX1() - shift,
            g.NodeLineX2() - shift, g.picX() - shift,      g.ChildLineX() - shift,
            g.TextX() - shift};
}
std::vector<qint32> ys(const lsIdent &g, qint32 shift = 0) {
    return {g.ExpY() - shift, g.TreeLineY1() - shift,  g.NodeLineY() - shift,
            g.PicY() - shift, g.ChildLineY1() - shift, g.ChildLineY2() - shift,
            g.TextY() - shift};
}

} // namespace

TEST(lsIdent, ADeeperRowIsStepsRightAndALowerOneMovesDownWithIt) {
    constexpr qint32 Step = 19; // one level's indentation
    const ScaleConverter scale;
    lsIdent g;
    g.Refresh(makeRow(0, 0), 19, nullptr, &scale);
    const std::vector<qint32> x0 = xs(g), y0 = ys(g);
    // The relations between the places, at levels up to 2, are pinned by the reference images.
    g.Refresh(makeRow(7, 38), 19, nullptr, &scale);
    EXPECT_EQ(std::tuple(xs(g, 7 * Step), ys(g, 38), g.IdentIndex()), std::tuple(x0, y0, 7));
    // The picture is centred in its row with halves rounded to the even neighbour: 0 + 1.5 -> 2
    // and 1 + 1.5 -> 2.
    for (const qint32 top : {0, 1}) {
        g.Refresh(makeRow(0, top), 19, nullptr, &scale);
        EXPECT_EQ(g.PicY(), 2) << top;
    }

    // A hidden row at the top has no lines; hidden rows below it keep theirs.
    g.Refresh(makeRow(1, 0, QString(), false), 19, nullptr, &scale);
    EXPECT_EQ(std::tuple(g.TreeLineY1(), g.TreeLineY2(), g.NodeLineY()), std::tuple(0, 0, 0));
    g.Refresh(makeRow(1, 19, QString(), false), 19, nullptr, &scale);
    EXPECT_EQ(g.TreeLineY1(), y0[1] + 19);

    // A row without cells sits at top 0 with the default picture; a null row changes nothing.
    g.Refresh(std::make_shared<lsNode>(), 19, nullptr, &scale);
    EXPECT_EQ(std::tuple(xs(g), ys(g), g.PicWidth()), std::tuple(x0, y0, 16));
    g.setTextX(-1);
    g.Refresh(nullptr, 19, nullptr, &scale);
    EXPECT_EQ(g.TextX(), -1);

    // An overflowing level stops the computation: positions from before it stay as they were.
    g.Refresh(makeRow(std::numeric_limits<qint32>::max(), 0), 19, nullptr, &scale);
    EXPECT_EQ(std::tuple(g.IdentIndex(), g.ExpX(), g.TextX()),
              std::tuple(std::numeric_limits<qint32>::max(), x0[0], -1));
}

TEST(lsIdent, PictureSourcesAndFallbacks) {
    const ScaleConverter scale;
    lsImageList list;
    list.Add("wide", std::make_shared<StdPicture>(QImage(32, 20, QImage::Format_RGB32)));
    lsIdent g;

    // A picture from the host's list, found by key in any case.
    g.Refresh(makeRow(0, 0, "WIDE"), 24, &list, &scale);
    EXPECT_EQ(std::tuple(g.PicWidth(), g.PicHeight(), g.TextX()),
              std::tuple(32, 20, g.picX() + 32 + 2));

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
