// A host of the installed component: a window with the control, filled through its object model
// and rendered off screen; given the installed Designer plugin, it loads that too.
//
//   consumer OUTPUT.png [PLUGIN]

#include <vkTreeList/vkTreeList.h>

#include <QApplication>
#include <QPluginLoader>
#include <QVBoxLayout>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <cstdio>

int main(int argc, char *argv[]) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: consumer OUTPUT.png [PLUGIN]\n");
        return 2;
    }

    QWidget window;
    auto *layout = new QVBoxLayout(&window);
    auto *list = new vkTreeList(&window);
    layout->addWidget(list);
    list->setColumns(2);
    list->setHeaderCell(lslcData, 1, 1, QStringLiteral("Name"));
    list->setHeaderCell(lslcData, 1, 2, QStringLiteral("Size"));
    list->AddItem(emptyText(), lsNext, QStringLiteral("root"), QStringLiteral("Root"));
    list->AddItem(QStringLiteral("root"), lsChild, QStringLiteral("leaf"), QStringLiteral("Leaf"));
    list->setListCell(lslcData, 2, 2, QStringLiteral("42"));
    list->Expand(QStringLiteral("root"));
    window.resize(320, 160);
    window.show();
    QApplication::processEvents();
    if (list->Rows() != 2 || list->ListCell(lslcData, 2, 2) != QStringLiteral("42") ||
        list->property("RowHeight").toInt() != 18) {
        std::fprintf(stderr, "consumer: the control does not hold what was put in\n");
        return 1;
    }
    // A selection flag put by the host's own code (the setters are inline) is seen by the
    // library's next selection, which counts it and clears it.
    list->rows()->Item(1)->setSelected(true);
    if (list->rows()->Selected(2, 1) != 1 || list->rows()->Item(1)->Selected()) {
        std::fprintf(stderr, "consumer: a selection flag the host put was not seen\n");
        return 1;
    }
    if (!window.grab().save(QString::fromLocal8Bit(argv[1]), "PNG")) {
        std::fprintf(stderr, "consumer: cannot write %s\n", argv[1]);
        return 1;
    }

    if (argc > 2) {
        QPluginLoader loader(QString::fromLocal8Bit(argv[2]));
        auto *plugins = qobject_cast<QDesignerCustomWidgetCollectionInterface *>(loader.instance());
        if (!plugins || plugins->customWidgets().size() != 2) {
            std::fprintf(stderr, "consumer: the Designer plugin does not load: %s\n",
                         qPrintable(loader.errorString()));
            return 1;
        }
        for (QDesignerCustomWidgetInterface *widget : plugins->customWidgets())
            delete widget->createWidget(&window);
    }
    std::printf("consumer: %s\n", qPrintable(list->ComponentVersion().toString()));
    return 0;
}
