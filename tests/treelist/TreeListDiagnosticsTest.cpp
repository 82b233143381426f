// The support members: the version text of this build and the timing self-test's report.

#include "TreeListFixture.h"

#include <QRegularExpression>
#include <QTest>

namespace {

using TreeListDiagnosticsTest = TreeListFixture;

TEST_F(TreeListDiagnosticsTest, ComponentVersionNamesThisBuild) {
    // The file name, the version as major.minor.revision, then the build date.
    const QString text = list->ComponentVersion().toString();
    const QRegularExpression version(
        R"(^vkTreeList32\.ocx\|\d+\.\d\d\.\d{4}\|[^|]*Built \d{4}-\d\d-\d\d\.\|$)");
    EXPECT_TRUE(version.match(text).hasMatch()) << qPrintable(text);
}

TEST_F(TreeListDiagnosticsTest, TestReportsThreeTimedPassesAndLeavesTheViewAsItWas) {
    const QRegularExpression line(
        R"(^Iterating using .+: (\d+\.\d{7}) sec (\d+\.\d{7}) sec (-?\d+\.\d{3}) sec $)");
    const auto checkReport = [&](const QString &report) {
        ASSERT_TRUE(report.endsWith(QStringLiteral("\r\n")));
        const QStringList lines = report.chopped(2).split(QStringLiteral("\r\n"));
        ASSERT_EQ(lines.size(), 3) << qPrintable(report);
        for (const QString &text : lines) {
            const QRegularExpressionMatch m = line.match(text);
            ASSERT_TRUE(m.hasMatch()) << qPrintable(text);
            // The elapsed time is the difference of the two readings (a day boundary aside).
            const double start = m.captured(1).toDouble(), end = m.captured(2).toDouble();
            if (end >= start) {
                EXPECT_NEAR(m.captured(3).toDouble(), end - start, 0.0006) << qPrintable(text);
            }
        }
    };

    // An empty tree: three passes of empty walks.
    bool listArgument = true;
    checkReport(list->Test(listArgument).toString());
    EXPECT_TRUE(listArgument);

    list->setColumns(2);
    addFlatRows(40);
    list->AddItem(QStringLiteral("K3"), lsChild, QStringLiteral("C1"), QStringLiteral("Child"));
    list->Collapse(QStringLiteral("K3"));
    ASSERT_TRUE(QTest::qWaitForWindowExposed(list.get()));
    list->picOut()->repaint();
    const QImage before = *list->picOut()->screenImage();
    checkReport(list->Test().toString());
    // The walks draw aside: the next paint shows the same frame, rows and selection untouched.
    list->picOut()->repaint();
    EXPECT_TRUE(*list->picOut()->screenImage() == before);
    EXPECT_EQ(list->Rows(), 41);
}

} // namespace
