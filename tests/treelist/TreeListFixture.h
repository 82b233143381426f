#pragma once
// A shown control of a fixed size on the offscreen platform, and the properties it says changed.

#include "PictureBox.h"
#include "vkTreeList.h"

#include <QScrollBar>
#include <gtest/gtest.h>
#include <memory>

class TreeListFixture : public ::testing::Test {
protected:
    void SetUp() override { makeControl(true); }

    void makeControl(bool userMode, int width = 400, int height = 300) {
        list.reset();
        host = std::make_unique<HostContainer>();
        host->setAmbientUserMode(userMode);
        list = std::make_unique<vkTreeList>(nullptr, host.get());
        list->resize(width, height);
        list->InitProperties();
        list->show();
    }

    // From now on the keys of the properties a control (the list if none) says changed go to
    // `changed`.
    void recordChanges(vkTreeList *control = nullptr) {
        QObject::connect(control ? control : list.get(), &vkTreeList::PropertyChanged,
                         [this](const QString &key) { changed << key; });
    }

    // Appends top-level rows with keys "K<first>".."K<last>" and texts "Row<first>".., each after
    // the previous one (a row added with no relative goes right after the first row).
    void addFlatRows(int last, int first = 1) {
        for (int i = first; i <= last; ++i)
            list->AddItem(i == 1 ? emptyText() : QVariant(QStringLiteral("K%1").arg(i - 1)), lsNext,
                          QStringLiteral("K%1").arg(i), QStringLiteral("Row%1").arg(i));
    }

    // Opens `parent` over `count` new children keyed <prefix>1, <prefix>2...
    void branch(const QString &parent, const QString &prefix, int count) {
        for (int i = 1; i <= count; ++i)
            list->AddItem(parent, lsChild, prefix + QString::number(i), QStringLiteral("Child"));
        list->Expand(parent);
    }

    // A control with room for a few lines only, over 30 rows of `columns` columns.
    void makeScrollingList(qint32 columns) {
        makeControl(true, 300, 120);
        list->setColumns(columns);
        addFlatRows(30);
    }

    // One value of every cell of a row, in column order.
    static std::vector<qint32> cellValues(const lsNodePtr &row, qint32 (lsCell::*get)() const) {
        std::vector<qint32> values;
        for (const lsCellPtr &cell : *row->Cells())
            values.push_back(((*cell).*get)());
        return values;
    }

    // The frame the control composed last.
    QImage frame() const { return *list->surface()->hDC(); }

    std::unique_ptr<HostContainer> host;
    std::unique_ptr<vkTreeList> list;
    QStringList changed;
};
