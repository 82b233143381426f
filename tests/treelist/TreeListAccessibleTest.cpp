// The control as assistive technology reads it through Qt's accessibility API: the tree, its
// table of visible rows, the cells' names, states and places, the actions, and the events.

#include "TreeListFixture.h"
#include "lsEdit.h"

#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QAccessibleTableInterface>
#include <QApplication>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <functional>

namespace {

std::vector<QString> events; // "type name" of every event raised while recording

class TreeListAccessibleTest : public TreeListFixture {
protected:
    void SetUp() override {
        TreeListFixture::SetUp();
        QAccessible::setActive(true);
        m_handler = QAccessible::installUpdateHandler([](QAccessibleEvent *e) {
            QAccessibleInterface *iface = e->accessibleInterface();
            events.push_back(QStringLiteral("%1 %2")
                                 .arg(int(e->type()))
                                 .arg(iface ? iface->text(QAccessible::Name) : QString()));
        });
        list->setColumns(2);
        list->setHeaderCell(lslcData, 1, 1, "Name");
        list->setHeaderCell(lslcData, 1, 2, "Size");
        list->AddItem(emptyText(), lsNext, "P", "Parent");
        list->AddItem("P", lsChild, "A", "Alpha");
        list->AddItem("P", lsChild, "B", "Beta");
        list->AddItem("P", lsNext, "Q", "Leaf");
        list->setListCell(lslcData, 1, 2, "12");
        list->Expand("P");
        tree = QAccessible::queryAccessibleInterface(list.get());
        table = tree->tableInterface();
        events.clear();
    }
    void TearDown() override {
        QAccessible::installUpdateHandler(m_handler);
        QAccessible::setActive(false);
    }
    QAccessibleInterface *cell(int row, int column) const { return table->cellAt(row, column); }

    QAccessibleInterface *tree = nullptr;
    QAccessibleTableInterface *table = nullptr;

private:
    QAccessible::UpdateHandler m_handler = nullptr;
};

TEST_F(TreeListAccessibleTest, TreeOfVisibleRowsUnderColumnHeaders) {
    EXPECT_EQ(tree->role(), QAccessible::Tree);
    ASSERT_TRUE(table);
    EXPECT_EQ(table->rowCount(), 4);
    EXPECT_EQ(table->columnCount(), 2);
    EXPECT_EQ(tree->childCount(), 2 + 4 * 2);
    EXPECT_EQ(tree->child(1)->role(), QAccessible::ColumnHeader);
    EXPECT_EQ(tree->child(1)->text(QAccessible::Name), "Size");
    const struct {
        int row, column;
        const char *name, *description;
        bool expandable, expanded;
    } cases[] = {{0, 0, "Parent", "Level 1, 2 children", true, true},
                 {0, 1, "12", "", true, true},
                 {2, 0, "Beta", "Level 2 under Parent", false, false},
                 {3, 0, "Leaf", "Level 1", false, false}};
    for (const auto &c : cases) {
        QAccessibleInterface *at = cell(c.row, c.column);
        ASSERT_TRUE(at) << c.name;
        EXPECT_EQ(at->role(), QAccessible::TreeItem);
        EXPECT_EQ(at->text(QAccessible::Name), c.name);
        EXPECT_EQ(at->text(QAccessible::Description), c.description);
        EXPECT_EQ(at->state().expandable, c.expandable) << c.name;
        EXPECT_EQ(at->state().expanded, c.expanded) << c.name;
        EXPECT_EQ(tree->indexOfChild(at), 2 + c.row * 2 + c.column) << c.name;
        EXPECT_EQ(tree->child(tree->indexOfChild(at)), at) << c.name;
        const auto *place = at->tableCellInterface();
        EXPECT_EQ(place->rowIndex(), c.row);
        EXPECT_EQ(place->columnIndex(), c.column);
        EXPECT_EQ(place->columnHeaderCells().value(0), tree->child(c.column)) << c.name;
        // On the screen where the control draws it, and found there.
        const lsCell &drawn = *list->Nodes(c.row + 1)->Cells()->Item(c.column + 1);
        EXPECT_EQ(at->rect(), QRect(list->picOut()->mapToGlobal(QPoint(drawn.Left(), drawn.Top())),
                                    QSize(drawn.Width(), drawn.Height())));
        EXPECT_EQ(tree->childAt(at->rect().center().x(), at->rect().center().y()), at);
    }
    // Selected and focused: the selected cell while the control has the focus.
    list->setFocusType(lsSelectCell);
    list->SelectItem(3, 1);
    QApplication::setActiveWindow(list.get());
    list->picOut()->setFocus();
    EXPECT_TRUE(cell(2, 0)->state().selected);
    EXPECT_FALSE(cell(2, 1)->state().selected);
    EXPECT_EQ(tree->focusChild(), cell(2, 0));
    EXPECT_EQ(table->selectedRows(), QList<int>{2});
    // A row scrolled out of the view is offscreen and has no place on the screen.
    list->resize(list->width(), 3 * list->RowHeight() + 8);
    list->scrY()->setValue(list->scrY()->maximum());
    list->Refresh();
    EXPECT_TRUE(cell(0, 0)->state().offscreen);
    EXPECT_TRUE(cell(0, 0)->rect().isEmpty());
}

TEST_F(TreeListAccessibleTest, ActionsTakeTheMousesPaths) {
    QSignalSpy collapsed(list.get(), &vkTreeList::OnCollapse);
    QSignalSpy clicked(list.get(), &vkTreeList::CellClick);
    auto *parent = cell(0, 0)->actionInterface();
    ASSERT_TRUE(parent);
    EXPECT_EQ(parent->actionNames(), QStringList({QAccessibleActionInterface::pressAction(),
                                                  QAccessibleActionInterface::toggleAction()}));
    EXPECT_EQ(cell(3, 0)->actionInterface()->actionNames(),
              QStringList{QAccessibleActionInterface::pressAction()});
    parent->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_EQ(collapsed.count(), 1);
    EXPECT_EQ(table->rowCount(), 2);
    cell(1, 1)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    ASSERT_EQ(clicked.count(), 1);
    EXPECT_EQ(clicked.at(0), QVariantList({4, 2}));
    EXPECT_EQ(list->Row(), 4);
    // The editor's text box is named after its column; its buttons are push buttons.
    list->Edit(4, 2, lsEditButton);
    EXPECT_EQ(
        QAccessible::queryAccessibleInterface(list->lseMisc()->txtEdit())->text(QAccessible::Name),
        "Size");
    QAccessibleInterface *button =
        QAccessible::queryAccessibleInterface(list->lseMisc()->btnSelect());
    EXPECT_EQ(button->role(), QAccessible::Button);
    EXPECT_EQ(button->text(QAccessible::Name), "Choose a value");
}

// Events reach a reader only while one listens: this runs with an accessibility bus (the test
// command runs it so), and is skipped without one.
TEST_F(TreeListAccessibleTest, EventsFollowWhatChanged) {
    if (QGuiApplication::platformName() == QLatin1String("offscreen") ||
        !QTest::qWaitFor([] { return QAccessible::isActive(); }, 5000))
        GTEST_SKIP() << "no assistive technology is listening (no accessibility bus)";
    const auto event = [](QAccessible::Event type, const QString &name) {
        return QStringLiteral("%1 %2").arg(int(type)).arg(name);
    };
    const struct {
        const char *what;
        std::function<void()> change;
        std::vector<QString> told;
    } cases[] = {
        {"collapse",
         [&] { list->Collapse("P"); },
         {event(QAccessible::StateChanged, "Parent"), event(QAccessible::TableModelChanged, "")}},
        {"select", [&] { list->SelectItem(1, 1); }, {event(QAccessible::Selection, "Parent")}},
        {"text",
         [&] { list->setListCell(lslcData, 4, 1, "Renamed"); },
         {event(QAccessible::NameChanged, "Renamed")}},
        {"add",
         [&] { list->AddItem("Q", lsNext, "R", "Root"); },
         {event(QAccessible::TableModelChanged, ""), event(QAccessible::Selection, "Root")}},
    };
    for (const auto &c : cases) {
        events.clear();
        c.change();
        EXPECT_EQ(events, c.told) << c.what;
    }
}

} // namespace
