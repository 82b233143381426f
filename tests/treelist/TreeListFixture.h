#pragma once
// A shown control of a fixed size on the offscreen platform, with a way to count signals.

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

    // Appends `count` top-level rows with keys "K1".."Kn" and texts "Row1".."Rown", each after
    // the previous one (a row added with no relative goes right after the first row).
    void addFlatRows(int count) {
        for (int i = 1; i <= count; ++i)
            list->AddItem(i == 1 ? emptyText() : QVariant(QStringLiteral("K%1").arg(i - 1)), lsNext,
                          QStringLiteral("K%1").arg(i), QStringLiteral("Row%1").arg(i));
    }

    // A control with room for a few lines only, over 30 rows of `columns` columns.
    void makeScrollingList(qint32 columns) {
        makeControl(true, 300, 120);
        list->setColumns(columns);
        addFlatRows(30);
    }

    // The frame the control composed last.
    QImage frame() const { return *list->surface()->hDC(); }

    std::unique_ptr<HostContainer> host;
    std::unique_ptr<vkTreeList> list;
};
