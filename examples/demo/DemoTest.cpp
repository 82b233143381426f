// Tests of the demo's data sources, of the loader that keeps the control's cells in step with
// them, and of the layout files.

#include "DemoWindow.h"
#include "DirectoryReader.h"
#include "HostContainer.h"
#include "OrgChart.h"
#include "TreeLoader.h"
#include "vkTreeList.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
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
    writeFile(wrongType, R"({"RowHeight": "tall", "Columns": 5})");
    EXPECT_FALSE(window.loadLayoutFrom(wrongType, &error));
    EXPECT_TRUE(error.contains("13")) << qPrintable(error);
    EXPECT_FALSE(window.loadLayoutFrom(dir.filePath("missing.json"), &error));
    EXPECT_EQ(tree.Columns(), 2);
    EXPECT_EQ(tree.RowHeight(), 18);
    tree.setColumns(4);
    EXPECT_EQ(tree.Columns(), 4);
}

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
