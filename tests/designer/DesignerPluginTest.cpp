// The Designer plugin as Qt loads it: its widgets in their own group, created in design mode by
// Designer and in run mode by a form loader, and a committed form loaded with its properties.

#include "lsEdit.h"
#include "vkTreeList.h"

#include <QFile>
#include <QPluginLoader>
#include <QUiLoader>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <gtest/gtest.h>
#include <memory>

namespace {

QList<QDesignerCustomWidgetInterface *> pluginWidgets() {
    QPluginLoader loader(QStringLiteral(VKTL_DESIGNER_PLUGIN));
    auto *collection = qobject_cast<QDesignerCustomWidgetCollectionInterface *>(loader.instance());
    return collection ? collection->customWidgets() : QList<QDesignerCustomWidgetInterface *>();
}

// Loaded first: the plugin instance is one per process, and Designer's initialization (in the
// next test) is for good.
TEST(DesignerPluginTest, FormLoadedAtRunTimeHasItsProperties) {
    QUiLoader loader;
    loader.addPluginPath(QStringLiteral(VKTL_DESIGNER_PLUGIN_DIR));
    EXPECT_TRUE(loader.availableWidgets().contains("vkTreeList"));
    QFile file(QStringLiteral(VKTL_FORM));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const std::unique_ptr<QWidget> form(loader.load(&file));
    ASSERT_NE(form, nullptr) << qPrintable(loader.errorString());
    auto *list = form->findChild<vkTreeList *>(QStringLiteral("treeList"));
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(std::tuple(list->RowHeight(), list->LineStyle(), list->Headers(), list->Columns(),
                         list->MultiSelect(), list->Rows()),
              std::tuple(22, qint32(lsLineDotted), qint16(2), 3, true, 0));
    auto *editor = form->findChild<lsEdit *>(QStringLiteral("editor"));
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->Mode(), 1);
}

TEST(DesignerPluginTest, OffersBothControlsDesignModeInDesignerRunModeElsewhere) {
    const QList<QDesignerCustomWidgetInterface *> widgets = pluginWidgets();
    ASSERT_EQ(widgets.size(), 2);
    EXPECT_EQ(widgets[0]->name(), "vkTreeList");
    EXPECT_EQ(widgets[1]->name(), "lsEdit");
    for (QDesignerCustomWidgetInterface *widget : widgets) {
        EXPECT_EQ(widget->group(), "vkTreeList");
        EXPECT_FALSE(widget->icon().isNull());
        EXPECT_FALSE(widget->toolTip().isEmpty());
        EXPECT_FALSE(widget->whatsThis().isEmpty());
        EXPECT_TRUE(widget->domXml().contains(QStringLiteral("class=\"%1\"").arg(widget->name())));
    }

    // A form loader creates without initializing: run mode, no sample rows, the header row of a
    // new control, taller than its minimum.
    QWidget form;
    auto *runTime = qobject_cast<vkTreeList *>(widgets[0]->createWidget(&form));
    ASSERT_NE(runTime, nullptr);
    EXPECT_EQ(std::tuple(runTime->Rows(), runTime->Headers(), runTime->headers()->Count()),
              std::tuple(0, qint16(1), 1));
    EXPECT_GT(runTime->sizeHint().height(), runTime->minimumSizeHint().height());
    // Designer initializes first: design mode, the six sample rows.
    widgets[0]->initialize(nullptr);
    auto *designTime = qobject_cast<vkTreeList *>(widgets[0]->createWidget(&form));
    ASSERT_NE(designTime, nullptr);
    EXPECT_EQ(designTime->Rows(), 6);
    EXPECT_NE(qobject_cast<lsEdit *>(widgets[1]->createWidget(&form)), nullptr);
}

} // namespace
