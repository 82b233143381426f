// Editing cells in place: the tree list's Edit members with its editor in an active window.

#include "TreeListFixture.h"
#include "lsEdit.h"

#include <QLineEdit>
#include <QTest>

namespace {

class TreeListEditTest : public TreeListFixture {
protected:
    void SetUp() override {
        makeScrollingList(3);
        list->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(list.get()));
        QObject::connect(list.get(), &vkTreeList::BeforeEdit, [this](bool &cancel) {
            events << "BeforeEdit";
            cancel = cancelBefore;
        });
        QObject::connect(
            list.get(), &vkTreeList::ValidateEdit,
            [this](QVariant &v, QVariant &, bool &) { events << "ValidateEdit " + v.toString(); });
        QObject::connect(
            list.get(), &vkTreeList::AfterEdit,
            [this](QVariant &v, QVariant &, bool &) { events << "AfterEdit " + v.toString(); });
        QObject::connect(list.get(), &vkTreeList::EditButtonClick,
                         [this](qint32 &, qint32 &, QVariant &value) {
                             events << "EditButtonClick";
                             value = "chosen";
                         });
    }

    // The handlers write into this fixture's members: the control (and an editor that still
    // has the focus and commits as it goes) must go before them.
    void TearDown() override { list.reset(); }

    QLineEdit *box() const { return list->lseMisc()->txtEdit(); }

    QStringList events;
    bool cancelBefore = false;
};

TEST_F(TreeListEditTest, EditOpensOverTheCellAndNeverWritesIt) {
    list->SelectItem(2, 2);
    qint32 row = -1, column = -1, mode = -1;
    list->Edit(row, column, mode);
    // The current cell, written back to the caller.
    EXPECT_EQ(std::tuple(row, column), std::tuple(2, 2));
    ASSERT_TRUE(list->isEditing());
    const lsCellPtr cell = list->rows()->Item(2)->Cells()->Item(2);
    EXPECT_EQ(list->lseMisc()->geometry(), QRect(cell->Left() + cell->Xoffset(), cell->Top(),
                                                 cell->Width() - cell->Xoffset(), cell->Height()));
    EXPECT_EQ(box()->text(), cell->Title());
    // Keys the editor does not use stay in it: the grid does not move under the edit.
    QTest::keyClick(box(), Qt::Key_Down);
    QTest::keyClick(box(), Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(list->Row(), 2);
    QTest::keyClicks(box(), "typed");
    QTest::keyClick(box(), Qt::Key_Return);
    EXPECT_EQ(events, QStringList({"BeforeEdit", "ValidateEdit typed", "AfterEdit typed"}));
    EXPECT_FALSE(list->isEditing());
    EXPECT_TRUE(list->picOut()->hasFocus());
    // The host did not write it: the cell keeps its text.
    EXPECT_NE(cell->Title(), "typed");

    // Another cell is selected first; a mode given stays the EditMode.
    list->Edit(5, 1, lsEditButton);
    EXPECT_EQ(std::tuple(list->Row(), list->Col(), list->EditMode()), std::tuple(5, 1, 2));
    QTest::keyClick(box(), Qt::Key_Return);
    EXPECT_TRUE(events.contains("EditButtonClick"));
    EXPECT_EQ(list->lseMisc()->Value().toString(), "chosen");
}

TEST_F(TreeListEditTest, CancelAbortScrollAndHorizontalOffset) {
    // A cancelled BeforeEdit leaves the control editing: Edit stays shut until AbortEdit.
    cancelBefore = true;
    list->Edit(1, 1);
    cancelBefore = false;
    events.clear();
    list->Edit(2, 1);
    EXPECT_TRUE(events.isEmpty());
    list->AbortEdit();
    list->Edit(2, 1);
    EXPECT_EQ(events, QStringList({"BeforeEdit"}));

    // Scrolling discards the open edit: no validation, no commit.
    QTest::keyClicks(box(), "lost");
    list->scrY()->setValue(list->scrY()->value() + 3);
    EXPECT_FALSE(list->isEditing());
    EXPECT_EQ(events, QStringList({"BeforeEdit"}));

    // In a horizontally scrolled list the editor's left edge moves with the cell.
    list->setColumns(6);
    ASSERT_FALSE(list->scrX()->isHidden());
    list->scrX()->setValue(50);
    list->Edit(list->FirstDisplayedRow(), 2);
    const lsCellPtr cell = list->rows()->Item(list->FirstDisplayedRow())->Cells()->Item(2);
    EXPECT_EQ(list->lseMisc()->x(), cell->Left() + cell->Xoffset() - 50);
    list->AbortEdit();

    // Destroyed with an edit open: the editor closes on the way out and must not call back
    // into the control being destroyed (the sanitizers' build sees it).
    list->Edit(3, 1);
    ASSERT_TRUE(list->isEditing());
    list.reset();
}

TEST_F(TreeListEditTest, NoEditorOnARowNobodySeesAndTheTextWhereTheCellShowsIt) {
    // A row under a collapsed branch: neither named nor as the current row does Edit open the
    // editor or ask BeforeEdit, and the selection stays where it was.
    list->AddItem("K2", lsChild, "C", "Child");
    list->Expand("K2");
    const qint32 child = list->Nodes("C")->Index();
    list->SelectItem(child, 1);
    list->Collapse("K2");
    events.clear();
    for (const qint32 named : {-1, child}) {
        list->Edit(named, 1);
        EXPECT_EQ(std::tuple(list->isEditing(), list->Row()), std::tuple(false, child)) << named;
    }
    EXPECT_TRUE(events.isEmpty());
    list->Expand("K2");
    list->Edit();
    EXPECT_EQ(events, QStringList({"BeforeEdit"}));
    list->AbortEdit();

    // A row scrolled out of the view, above it or below, comes onto a line before its editor.
    for (const qint32 row : {1, list->Rows()}) {
        list->scrY()->setValue(row == 1 ? list->scrY()->maximum() : 1);
        list->Edit(row, 1);
        const lsCellPtr cell = list->Nodes(row)->Cells()->at(1);
        EXPECT_TRUE(list->Nodes(row)->Displayed() && list->lseMisc()->y() == cell->Top()) << row;
        list->AbortEdit();
    }

    // The text stays where the cell shows it.
    const std::pair<qint32, Qt::Alignment> alignments[] = {{lsAlignLeftJustify, Qt::AlignLeft},
                                                           {lsAlignRightJustify, Qt::AlignRight},
                                                           {lsAlignCenter, Qt::AlignHCenter}};
    for (const auto &[cellAlignment, shown] : alignments) {
        list->setListCell(lslcAlignment, 2, 2, cellAlignment);
        list->Edit(2, 2);
        EXPECT_EQ(box()->alignment() & Qt::AlignHorizontal_Mask, shown) << cellAlignment;
        list->AbortEdit();
    }
}

} // namespace
