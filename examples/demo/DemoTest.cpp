// Tests of the demo's data sources, of the loader that keeps the control's cells in step with
// them, of the layout files and of the window's status bar and panel.

#include "DemoEditor.h"
#include "DemoWindow.h"
#include "DirectoryReader.h"
#include "HostContainer.h"
#include "OrgChart.h"
#include "PictureBox.h"
#include "TreeLoader.h"
#include "vkTreeList.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QRegularExpression>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QThread>
#include <functional>
#include <gtest/gtest.h>

namespace {

void writeFile(const QString &path, const QByteArray &content = QByteArray()) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
}

QStringList names(const DemoTable &table, const QString &parentKey) {
    QStringList result;
    for (const DemoTable::Row &row : table.rows())
        if (row.parentKey == parentKey)
            result.append(row.cells.value(0));
    return result;
}

// Every row comes after its parent and one level below it; keys are unique in any case.
void expectTreeOrder(const DemoTable &table) {
    QSet<QString> seen;
    for (const DemoTable::Row &row : table.rows()) {
        if (!row.parentKey.isEmpty()) {
            const int parent = table.position(row.parentKey);
            ASSERT_GE(parent, 0) << qPrintable(row.key);
            EXPECT_EQ(table.rows()[parent].level + 1, row.level);
            EXPECT_TRUE(seen.contains(row.parentKey.toCaseFolded())) << qPrintable(row.key);
        }
        EXPECT_FALSE(seen.contains(row.key.toCaseFolded())) << qPrintable(row.key);
        seen.insert(row.key.toCaseFolded());
    }
}

// The data cells of every shown row start where their header cell starts.
void expectColumnsAligned(vkTreeList &tree) {
    tree.Refresh(false);
    for (qint32 c = 1; c <= tree.Columns(); ++c)
        for (qint32 r = 1; r <= tree.Rows(); r += 37)
            ASSERT_EQ(tree.ListCell(lslcLeft, r, c), tree.HeaderCell(lslcLeft, 1, c))
                << "row " << r << " column " << c;
}

QString statusOf(DemoWindow &window, const char *label) {
    window.updateStatus();
    return window.findChild<QLabel *>(QLatin1String(label))->text();
}

} // namespace

TEST(DirectoryReaderTest, ReadsFoldersFirstByNameWithinDepthAndRowLimits) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QDir root(dir.path());
    ASSERT_TRUE(root.mkpath("beta/deep/deeper/deepest"));
    ASSERT_TRUE(root.mkpath("Alpha"));
    writeFile(root.filePath("zeta.txt"), QByteArray(1536, 'x'));
    writeFile(root.filePath("Notes.md"), "# notes");
    writeFile(root.filePath("notes.MD"));
    writeFile(root.filePath(".hidden"));
    writeFile(root.filePath("beta/deep/deeper/deepest/leaf.txt"));

    const DemoTable table = DirectoryReader(3, 5000).read(dir.path());
    expectTreeOrder(table);
    EXPECT_EQ(names(table, QString()),
              (QStringList{"Alpha", "beta", "Notes.md", "notes.MD", "zeta.txt"}));
    const int zeta = table.position("zeta.txt");
    ASSERT_GE(zeta, 0);
    EXPECT_EQ(table.rows()[zeta].image, "file");
    EXPECT_EQ(table.text(zeta, 1), "1.5 KB");
    EXPECT_EQ(table.rows()[table.position("beta")].image, "folder");
    EXPECT_EQ(table.text(table.position("Alpha"), 1), "0 items");
    // Three levels are listed; the folder at the limit still tells what it holds.
    ASSERT_GE(table.position("beta/deep/deeper"), 0);
    EXPECT_EQ(table.text(table.position("beta/deep/deeper"), 1), "1 item");
    EXPECT_LT(table.position("beta/deep/deeper/deepest"), 0);

    // The cap cuts the deepest level first.
    const DemoTable capped = DirectoryReader(8, 6).read(dir.path());
    EXPECT_EQ(capped.rows().size(), 6);
    EXPECT_GE(capped.position("beta/deep"), 0);
    EXPECT_LT(capped.position("beta/deep/deeper"), 0);
}

TEST(DirectoryReaderTest, CountsTheEntriesTheRowLimitLeavesOut) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QDir root(dir.path());
    ASSERT_TRUE(root.mkpath("a/sub") && root.mkpath("b"));
    for (const char *file : {"c.txt", "d.txt", "a/a1.txt", "a/a2.txt", "a/sub/deep.txt"})
        writeFile(root.filePath(file));

    // Eight entries in three levels. The count goes as far as the folders read or waiting to be
    // read: with three rows, a/sub is neither and its file is not counted.
    const struct {
        int depth, maxRows;
        qsizetype rows, found;
    } cases[] = {{4, 100, 8, 8}, {4, 8, 8, 8}, {4, 6, 6, 8}, {4, 3, 3, 7}, {1, 100, 4, 4}};
    for (const auto &c : cases) {
        qsizetype found = -1;
        const DemoTable table = DirectoryReader(c.depth, c.maxRows).read(dir.path(), &found);
        EXPECT_EQ(table.rows().size(), c.rows) << c.depth << " " << c.maxRows;
        EXPECT_EQ(found, c.found) << c.depth << " " << c.maxRows;
    }

    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    EXPECT_EQ(DirectoryReader::summary(32767, 66012, 840),
              "Read the first 32,767 of 66,012 entries found in 840 ms");
    EXPECT_EQ(DirectoryReader::summary(1234, 1234, 5), "Read 1,234 entries in 5 ms");
    QLocale::setDefault(QLocale::system());
}

TEST(DirectoryReaderTest, HumanSizes) {
    EXPECT_EQ(DirectoryReader::humanSize(0), "0 B");
    EXPECT_EQ(DirectoryReader::humanSize(1023), "1023 B");
    EXPECT_EQ(DirectoryReader::humanSize(1024), "1.0 KB");
    EXPECT_EQ(DirectoryReader::humanSize(15 * 1024 * 1024 + 1), "15 MB");
    EXPECT_EQ(DirectoryReader::humanSize(qint64(3) << 40), "3.0 TB");
}

TEST(OrgChartTest, SameCompanyEveryTimeInFiveLevels) {
    const DemoTable first = OrgChart().build();
    const DemoTable second = OrgChart().build();
    ASSERT_EQ(first.rows().size(), second.rows().size());
    EXPECT_GE(first.rows().size(), 200);
    EXPECT_LE(first.rows().size(), 600);
    int deepest = 0;
    for (qsizetype i = 0; i < first.rows().size(); ++i) {
        const DemoTable::Row &row = first.rows()[i];
        EXPECT_EQ(row.cells, second.rows()[i].cells);
        EXPECT_EQ(row.cells.size(), first.columns.size());
        EXPECT_EQ(row.image, row.childCount > 0 ? "team" : "person") << qPrintable(row.key);
        deepest = std::max(deepest, row.level);
    }
    EXPECT_EQ(deepest, 4);
    expectTreeOrder(first);
}

TEST(TreeLoaderTest, CellsStayUnderTheirHeadersWhenColumnsAndHeadersChange) {
    HostContainer host;
    vkTreeList tree(nullptr, &host);
    tree.InitProperties();
    tree.setHeaders(1);
    tree.resize(700, 400);
    const DemoTable table = OrgChart().build();
    TreeLoader loader(tree, table);
    loader.load();

    ASSERT_EQ(tree.Rows(), table.rows().size());
    ASSERT_EQ(tree.Columns(), table.columns.size());
    EXPECT_TRUE(tree.AutoRedraw());
    EXPECT_TRUE(tree.AutoSelectNew());
    EXPECT_EQ(tree.Row(), 0);
    EXPECT_EQ(tree.HeaderCell(lslcData, 1, 2), "Title");
    EXPECT_EQ(tree.ListCell(lslcData, 7, 3), table.text(6, 2));
    EXPECT_EQ(tree.ListCell(lslcAlignment, 7, 5), lsAlignRightJustify);
    for (qint32 c = 1; c <= tree.Columns(); ++c) {
        const qint32 width = tree.ColumnWidth(c) / TreeLoader::TwipsPerPixel;
        EXPECT_GE(width, table.columns[c - 1].minWidth);
        EXPECT_LE(width, table.columns[c - 1].maxWidth);
    }
    expectColumnsAligned(tree);

    qint32 inView = 0;
    for (const lsNodePtr &row : *tree.rows())
        inView += row->Visible() ? 1 : 0;
    EXPECT_GT(inView, 10);
    EXPECT_LE(inView, TreeLoader::FirstScreenRows);

    // Columns taken away and given back come back with their data, still in line.
    loader.setColumnCount(2);
    EXPECT_EQ(tree.ListCell(lslcData, 5, 3), QVariant());
    loader.setColumnCount(8);
    EXPECT_EQ(tree.ListCell(lslcData, 5, 4), table.text(4, 3));
    EXPECT_EQ(tree.ListCell(lslcAlignment, 5, 4), lsAlignCenter);
    EXPECT_EQ(tree.ListCell(lslcData, 5, 8), "");
    expectColumnsAligned(tree);

    // Header rows made later get the data widths.
    tree.setHeaders(0);
    tree.setHeaders(3);
    loader.labelHeaders();
    loader.matchHeaderWidths();
    EXPECT_EQ(tree.HeaderCell(lslcData, 2, 4), "year-month");
    for (qint32 c = 1; c <= tree.Columns(); ++c)
        EXPECT_EQ(tree.HeaderCell(lslcWidth, 3, c), tree.ListCell(lslcWidth, 1, c));
    expectColumnsAligned(tree);
}

TEST(DemoWindowTest, LayoutRoundTripAndBadFilesLeaveTheControlUsable) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    HostContainer host;
    DemoWindow window(host, OrgChart().build());
    vkTreeList &tree = *window.tree();
    const QString saved = dir.filePath("layout.json");

    tree.setLineStyle(lsLineDotted);
    tree.setRowHeight(24);
    ASSERT_TRUE(window.saveLayoutTo(saved));
    tree.setLineStyle(lsNoTreeLine);
    tree.setRowHeight(30);
    tree.setColumns(3);
    QString error;
    ASSERT_TRUE(window.loadLayoutFrom(saved, &error)) << qPrintable(error);
    EXPECT_EQ(tree.LineStyle(), lsLineDotted);
    EXPECT_EQ(tree.RowHeight(), 24);
    EXPECT_EQ(tree.Columns(), 6);
    EXPECT_EQ(tree.ListCell(lslcData, 2, 6), OrgChart().build().text(1, 5));
    EXPECT_NE(tree.ImageList(), nullptr);
    expectColumnsAligned(tree);

    // Fewer columns in the file: every row loses the columns beyond them.
    const QString narrow = dir.filePath("narrow.json");
    writeFile(narrow, R"({"Columns": 2, "Headers": 2, "ImageList": "demoPictures"})");
    ASSERT_TRUE(window.loadLayoutFrom(narrow, &error)) << qPrintable(error);
    EXPECT_EQ(tree.Columns(), 2);
    EXPECT_EQ(tree.Headers(), 2);
    EXPECT_EQ(tree.ListCell(lslcData, 2, 3), QVariant());
    expectColumnsAligned(tree);

    const QString wrongType = dir.filePath("wrong.json");
    for (const char *json : {R"({"RowHeight": "tall", "Columns": 5})",
                             R"({"DemoColumnWidths": [90, 80], "Columns": 5})"}) {
        writeFile(wrongType, json);
        EXPECT_FALSE(window.loadLayoutFrom(wrongType, &error)) << json;
        EXPECT_TRUE(error.contains("13")) << qPrintable(error);
    }
    EXPECT_FALSE(window.loadLayoutFrom(dir.filePath("missing.json"), &error));
    EXPECT_EQ(tree.Columns(), 2);
    EXPECT_EQ(tree.RowHeight(), 18);
    tree.setColumns(4);
    EXPECT_EQ(tree.Columns(), 4);

    // A width as a drag of the column's border leaves it comes back in another window.
    const qint32 dragged = 150 * TreeLoader::TwipsPerPixel;
    tree.setColumnWidth(2, dragged);
    ASSERT_TRUE(window.saveLayoutTo(saved));
    DemoWindow fresh(host, OrgChart().build());
    ASSERT_TRUE(fresh.loadLayoutFrom(saved, &error)) << qPrintable(error);
    EXPECT_EQ(fresh.tree()->ColumnWidth(2), dragged);
}

TEST(DemoWindowTest, StatusShowsTheFrameTimeAsMeasured) {
    HostContainer host;
    DemoWindow window(host, OrgChart().build());
    window.resize(900, 600);
    window.show();
    window.tree()->SelectItem(1, 1);
    QApplication::processEvents();
    QWidget &surface = *window.tree()->picOut();
    const auto shownMs = [&] {
        const QRegularExpression pattern(QStringLiteral("^Last frame (\\d+\\.\\d) ms$"));
        const QRegularExpressionMatch match = pattern.match(statusOf(window, "frameTime"));
        return match.hasMatch() ? match.captured(1).toDouble() : -1.0;
    };
    const auto pressDown = [&] {
        QKeyEvent down(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
        QApplication::sendEvent(&surface, &down);
    };

    // A repaint alone; a key that asks for no frame of the grid, long before the repaint; a key
    // the grid answers with a frame, which counts from the key on.
    const struct {
        const char *name;
        std::function<void()> before, frame;
    } cases[] = {
        {"repaint", [] {}, [&] { surface.repaint(); }},
        {"stray key",
         [&] {
             QKeyEvent key(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier);
             QApplication::sendEvent(window.statusBar(), &key);
             QApplication::processEvents();
             QThread::msleep(30);
         },
         [&] { surface.repaint(); }},
        {"arrow key", [] {},
         [&] {
             pressDown();
             QApplication::processEvents();
         }},
    };
    for (const auto &c : cases) {
        c.before();
        QElapsedTimer clock;
        clock.start();
        c.frame();
        const double outer = double(clock.nsecsElapsed()) / 1e6;
        const double shown = shownMs();
        EXPECT_GT(shown, 0.0) << c.name;
        EXPECT_LE(shown, outer + 0.05) << c.name;
    }
    // The key's own handling, in which the grid composes its frame, is part of the frame.
    QElapsedTimer clock;
    clock.start();
    pressDown();
    const double handling = double(clock.nsecsElapsed()) / 1e6;
    QApplication::processEvents();
    EXPECT_GE(shownMs(), handling - 0.05);
}

TEST(DemoWindowTest, ARowInAClosedBranchIsNeitherReportedNorEdited) {
    HostContainer host;
    const DemoTable table = OrgChart().build();
    DemoWindow window(host, table);
    vkTreeList &tree = *window.tree();
    // A row right under the first top-level row, which starts open.
    const qint32 row = table.position(table.rows()[1].key) + 1;
    ASSERT_EQ(table.rows()[1].parentKey, table.rows()[0].key);
    tree.SelectItem(row, 1);

    const struct {
        bool open;
        const char *status;
    } cases[] = {{false, "Current row hidden in a closed branch"}, {true, "Row 2, column 1"}};
    for (const auto &c : cases) {
        if (c.open)
            tree.Expand(1);
        else
            tree.Collapse(1);
        EXPECT_EQ(statusOf(window, "currentCell").toStdString(), c.status);
        EXPECT_EQ(window.editor()->editCurrent(), c.open) << c.status;
        EXPECT_EQ(tree.isEditing(), c.open) << c.status;
    }
    tree.AbortEdit();
}

TEST(DemoWindowTest, SmallWindowScrollsThePanelInsteadOfSqueezingIt) {
    HostContainer host;
    DemoWindow window(host, OrgChart().build());
    window.show();
    window.resize(480, 300);
    QApplication::processEvents();
    EXPECT_EQ(window.size(), QSize(480, 300));
    for (QGroupBox *box : window.findChildren<QGroupBox *>()) {
        QList<QWidget *> widgets = box->findChildren<QWidget *>(Qt::FindDirectChildrenOnly);
        widgets.append(box);
        for (const QWidget *w : widgets) {
            const int wanted =
                w->hasHeightForWidth() ? w->heightForWidth(w->width()) : w->sizeHint().height();
            EXPECT_GE(w->height(), wanted)
                << qPrintable(box->title()) << " " << w->metaObject()->className();
        }
    }
}

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
