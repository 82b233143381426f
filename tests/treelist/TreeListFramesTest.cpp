// Whole frames of the control compared pixel for pixel with reference images. On a mismatch the
// actual frame and a diff are written to the build's artifact folder; VKTL_UPDATE_GOLDEN=1
// rewrites the references.

#include "GoldenImage.h"
#include "SystemColors.h"
#include "TreeListFixture.h"
#include "lsEdit.h"

#include <QApplication>
#include <QFocusEvent>
#include <QLabel>
#include <QListWidget>
#include <QScopeGuard>
#include <QTest>
#include <QTreeWidget>
#include <functional>
#include <map>

namespace {

class TreeListFramesTest : public TreeListFixture {
protected:
    void setFocusFlag(bool focused) {
        QFocusEvent event(focused ? QEvent::FocusIn : QEvent::FocusOut);
        QApplication::sendEvent(list->picOut(), &event);
    }

    // Three columns with distinct widths, a header row titled by column, and a small tree.
    void buildGrid() {
        list->setColumns(3);
        const char *titles[] = {"Name", "Size", "Kind"};
        const int widths[] = {160, 70, 90};
        for (int c = 1; c <= 3; ++c) {
            list->setHeaderCell(lslcData, 1, c, titles[c - 1]);
            list->setHeaderCell(lslcWidth, 1, c, widths[c - 1]);
        }
        list->AddItem(emptyText(), lsNext, "P", "Parent");
        list->AddItem("P", lsChild, "A", "Alpha");
        list->AddItem("P", lsChild, "B", "Beta");
        list->AddItem("B", lsChild, "B1", "Beta one");
        list->AddItem("P", lsNext, "Q", "Closed parent");
        list->AddItem("Q", lsChild, "Q1", "Hidden");
        for (const char *key : {"P", "B"})
            list->Expand(key);
        for (qint32 r = 1; r <= list->Rows(); ++r) {
            list->setListCell(lslcData, r, 2, QString::number(r * 128));
            list->setListCell(lslcData, r, 3, r % 2 ? "odd" : "even");
        }
    }
};

TEST_F(TreeListFramesTest, DesignTimeSampleInEveryLineStyle) {
    makeControl(false, 360, 160);
    const char *names[] = {"sample-no-lines", "sample-solid", "sample-dotted"};
    for (qint32 style : {lsNoTreeLine, lsLineSolid, lsLineDotted}) {
        list->setLineStyle(style);
        expectMatchesGolden(frame(), names[style]);
    }
}

TEST_F(TreeListFramesTest, ScrolledViewContinuesTheLinesOfAncestorsAbove) {
    list->resize(300, 130);
    list->setAutoSelectNew(false);
    list->AddItem(emptyText(), lsNext, "R", "Root");
    for (int i = 1; i <= 4; ++i) {
        const QString key = QStringLiteral("N%1").arg(i);
        list->AddItem("R", lsChild, key, QStringLiteral("Node %1").arg(i));
        for (int j = 1; j <= 3; ++j)
            list->AddItem(key, lsChild, key + QString::number(j),
                          QStringLiteral("Leaf %1.%2").arg(i).arg(j));
        list->Expand(key);
    }
    list->Expand("R");
    list->AddItem("R", lsNext, "S", "Sibling");
    list->scrY()->setValue(8); // Leaf 2.3's parent and grandparent lie above the view
    ASSERT_FALSE(list->Nodes("N2")->Displayed());
    expectMatchesGolden(frame(), "scrolled-ancestors");
    // At the end the branches of the ancestors above end above the view: no line runs on below
    // the last row.
    list->scrY()->setValue(list->scrY()->maximum());
    expectMatchesGolden(frame(), "scrolled-to-end");
}

TEST_F(TreeListFramesTest, SelectionFocusAndCellLooks) {
    list->resize(360, 170);
    buildGrid();
    const struct Scenario {
        const char *name;
        std::function<void()> setUp;
    } scenarios[] = {
        {"row-selected-unfocused",
         [&] {
             list->setFocusType(lsSelectFullRow);
             list->SelectItem(2, 1);
             setFocusFlag(false);
         }},
        {"row-selected-focused", [&] { setFocusFlag(true); }},
        {"cell-focus",
         [&] {
             list->setFocusType(lsSelectCell);
             list->SelectItem(3, 2);
         }},
        {"bold-then-normal-aligned",
         [&] {
             setFocusFlag(false);
             list->setListCell(lslcBold, 1, 1, true);
             list->setListCell(lslcAlignment, 1, 2, lsAlignRightJustify);
             list->setListCell(lslcAlignment, 2, 2, lsAlignCenter);
             list->setListCell(lslcAlignment, 3, 2, lsAlignRightJustify);
             list->setMark(4, true);
             list->Refresh();
         }},
        {"two-header-rows",
         [&] {
             list->setHeaders(2);
             list->setHeaderCell(lslcData, 2, 1, "Second header");
             list->setHeaderCell(lslcAlignment, 2, 2, lsAlignRightJustify);
             list->Refresh();
         }},
    };
    for (const Scenario &s : scenarios) {
        s.setUp();
        expectMatchesGolden(frame(), s.name);
    }
    // The bold cell did not leave the shared font bold.
    EXPECT_FALSE(list->Font()->Bold());
}

TEST_F(TreeListFramesTest, BothScrollBarsWithTheCornerFiller) {
    list->resize(300, 160);
    buildGrid();
    for (int i = 1; i <= 12; ++i)
        list->AddItem("Q", lsNext, QStringLiteral("X%1").arg(i), QStringLiteral("Extra %1").arg(i));
    ASSERT_FALSE(list->imgGhost()->isHidden());
    setFocusFlag(false);
    expectMatchesGolden(list->grab().toImage().convertToFormat(QImage::Format_RGB32),
                        "both-scroll-bars");
}

// Under a dark palette, set on the application before or after the control is made, the rows,
// header cells, text and selection take its base, button, text and highlight colours and none
// of the classic scheme's; the frames and the editor in its three modes are pinned as images.
TEST_F(TreeListFramesTest, DarkPaletteBeforeOrAfterTheControlIsMade) {
    const QPalette dark = darkPalette();
    const auto restore = qScopeGuard([] { QApplication::setPalette(classicPalette()); });
    for (bool before : {true, false}) {
        QApplication::setPalette(before ? dark : classicPalette());
        makeControl(true, 360, 170);
        buildGrid();
        // An edit opened under the old palette leaves nothing of it in the editor.
        list->Edit(1, 1, lsEditComboBox);
        list->AbortEdit();
        QApplication::setPalette(dark);
        QApplication::processEvents(); // widgets hear of a new palette from the event loop
        list->setHeaders(2);
        list->setFocusType(lsSelectFullRow);
        list->SelectItem(2, 1);
        setFocusFlag(true);
        const QImage image = frame();
        std::map<QRgb, int> count;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                ++count[image.pixel(x, y)];
        for (QPalette::ColorRole role :
             {QPalette::Base, QPalette::Button, QPalette::Text, QPalette::Highlight})
            EXPECT_GT(count[dark.color(role).rgb()], 40) << before << " role " << role;
        for (QRgb classic : {0xFFD4D0C8u, 0xFF0A246Au}) // the pictures keep their white and black
            EXPECT_EQ(count[classic], 0) << before << std::hex << " colour " << classic;
    }
    expectMatchesGolden(frame(), "dark-row-focused");
    list->setFocusType(lsSelectCell);
    list->SelectItem(3, 2);
    setFocusFlag(false);
    expectMatchesGolden(frame(), "dark-cell-unfocused");
    for (const char *entry : {"first", "second", "third"})
        list->EditComboAddItem(entry);
    const auto grabbed = [&] {
        return list->grab().toImage().convertToFormat(QImage::Format_RGB32);
    };
    for (auto [mode, name] : {std::pair{lsEditTextBox, "dark-edit-text"},
                              {lsEditComboBox, "dark-edit-combo"},
                              {lsEditButton, "dark-edit-button"}}) {
        list->Edit(3, 2, mode);
        expectMatchesGolden(grabbed(), name);
        if (mode == lsEditComboBox) { // the list open, the pointer over its second line
            QTest::mouseClick(list->lseMisc()->btnDown(), Qt::LeftButton);
            QListWidget *entries = list->lseMisc()->lstEdit();
            QTest::mouseMove(entries->viewport(),
                             entries->visualItemRect(entries->item(1)).center());
            expectMatchesGolden(grabbed(), "dark-edit-drop-down");
        }
        list->AbortEdit();
    }
}

// The share of aligned 2x2 device-pixel blocks that are not one colour: near zero for a frame
// composed at 1x and scaled up, high where the device pixels are drawn.
double detailedBlocks(const QImage &image) {
    int detailed = 0, blocks = 0;
    for (int y = 0; y + 1 < image.height(); y += 2)
        for (int x = 0; x + 1 < image.width(); x += 2, ++blocks) {
            const QRgb p = image.pixel(x, y);
            detailed += p != image.pixel(x + 1, y) || p != image.pixel(x, y + 1) ||
                        p != image.pixel(x + 1, y + 1);
        }
    return blocks ? double(detailed) / blocks : 0;
}

// Run under QT_SCALE_FACTOR (the test command runs it at 1.5 and 2): the frame holds the screen's
// device pixels, drawn rather than scaled, while every coordinate a host sees stays logical.
TEST_F(TreeListFramesTest, FramesAtTheScreensPixelRatio) {
    const qreal ratio = list->devicePixelRatioF();
    if (ratio == 1)
        GTEST_SKIP() << "needs a screen with a pixel ratio (QT_SCALE_FACTOR)";
    makeControl(false, 360, 160);
    list->setLineStyle(lsLineDotted);
    const QImage image = frame();
    EXPECT_EQ(image.size(), QSize(356, 156) * ratio); // inside the sunken border
    expectMatchesGolden(image, QStringLiteral("sample-dotted-at-%1").arg(ratio));
    const lsCellPtr cell = list->Nodes(2)->Cells()->Item(1);
    EXPECT_EQ(cell->Top(), 2 * list->RowHeight());
    EXPECT_EQ(list->HitTest(cell->Left() + 30, cell->Top() + 3)->DataRow(), 2);
    if (ratio != 2)
        return;
    // Qt's view of the same rows, both compared below their header.
    QTreeWidget qt;
    qt.setColumnCount(list->Columns());
    for (qint32 r = 1; r <= list->Rows(); ++r)
        qt.addTopLevelItem(new QTreeWidgetItem(QStringList(list->Nodes(r)->Text())));
    qt.resize(list->size());
    qt.show();
    const int header = 2 * list->Headers() * list->RowHeight();
    EXPECT_GE(detailedBlocks(image.copy(0, header, image.width(), image.height() - header)),
              0.5 * detailedBlocks(qt.viewport()->grab().toImage()));
}

} // namespace
