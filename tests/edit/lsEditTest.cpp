// The editor driven as a person drives it: real focus and key events in an active window.

#include "lsEdit.h"
#include "ButtonSurface.h"
#include "EditButtonPainter.h"
#include "ErrorOf.h"
#include "PropertyBag.h"

#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QTest>
#include <gtest/gtest.h>

// Texts in failure messages as text.
inline void PrintTo(const QString &text, std::ostream *os) {
    *os << '"' << text.toStdString() << '"';
}

namespace {

class lsEditTest : public ::testing::Test {
protected:
    void SetUp() override {
        window = std::make_unique<QWidget>();
        window->resize(320, 300);
        other = new QLineEdit(window.get());
        other->setGeometry(10, 10, 100, 22);
        edit = new lsEdit(window.get());
        edit->setGeometry(20, 100, 160, 22);
        window->show();
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
        other->setFocus();
        record();
    }
    // The window (and an editor still open in it) goes before the events it would record.
    void TearDown() override { window.reset(); }

    // Records the editor's events; the hooks let a test answer them.
    void record() {
        QObject::connect(edit, &lsEdit::BeforeEdit, [this](bool &cancel) {
            events << "BeforeEdit";
            cancel = cancelBefore;
        });
        QObject::connect(edit, &lsEdit::EditValidate,
                         [this](QVariant &newValue, QVariant &oldValue, bool &cancel) {
                             events << QString("EditValidate %1 %2")
                                           .arg(newValue.toString(), oldValue.toString());
                             newValue = "rewritten";
                             cancel = veto;
                         });
        QObject::connect(edit, &lsEdit::AfterEdit,
                         [this](QVariant &newValue, QVariant &oldValue, bool &changed) {
                             events << QString("AfterEdit %1 %2 %3")
                                           .arg(newValue.toString(), oldValue.toString())
                                           .arg(changed);
                             newValue = "rewritten";
                         });
        QObject::connect(edit, &lsEdit::OnButtonClick,
                         [this](qint32 &x, qint32 &y, QVariant &value) {
                             events << QString("OnButtonClick %1 %2").arg(x).arg(y);
                             value = "from dialog";
                         });
        QObject::connect(edit, &lsEdit::OnClose, [this] { events << "OnClose"; });
    }

    // The events so far, with repeated OnClose folded into one, then forgotten.
    QStringList take() {
        QStringList folded;
        for (const QString &e : events)
            if (!(e == "OnClose" && !folded.isEmpty() && folded.last() == "OnClose"))
                folded << e;
        events.clear();
        return folded;
    }

    std::unique_ptr<QWidget> window;
    QLineEdit *other = nullptr;
    lsEdit *edit = nullptr;
    QStringList events;
    bool cancelBefore = false;
    bool veto = false;
};

TEST_F(lsEditTest, TextBoxCommitsOnEnterAndClickAwayButNotOnEscapeOrVeto) {
    const auto enter = [&] { QTest::keyClick(edit->txtEdit(), Qt::Key_Return); };
    const auto escape = [&] { QTest::keyClick(edit->txtEdit(), Qt::Key_Escape); };
    const auto away = [&] { other->setFocus(); };
    const QString committed = "BeforeEdit, EditValidate new old, AfterEdit new old 1, OnClose";
    const struct Case {
        const char *what, *typed;
        std::function<void()> end;
        bool veto;
        QString expected, value;
    } cases[] = {
        {"Enter", "new", enter, false, committed, "new"},
        {"unchanged text", "", enter, false,
         "BeforeEdit, EditValidate old old, AfterEdit old old 0, OnClose", "old"},
        {"click away", "new", away, false, committed, "new"},
        {"Escape", "new", escape, false, "BeforeEdit, OnClose", "old"},
        {"veto", "new", enter, true, "BeforeEdit, EditValidate new old, OnClose", "old"},
    };
    for (const Case &c : cases) {
        edit->setValue("old");
        veto = c.veto;
        edit->Edit(lsEditTextBox);
        ASSERT_TRUE(edit->isVisible()) << c.what;
        // The text arrives selected, so typing replaces it.
        EXPECT_EQ(edit->txtEdit()->selectedText(), "old") << c.what;
        QTest::keyClicks(edit->txtEdit(), c.typed);
        c.end();
        EXPECT_EQ(take().join(", "), c.expected) << c.what;
        EXPECT_EQ(edit->Value().toString(), c.value) << c.what;
        EXPECT_FALSE(edit->isVisible()) << c.what;
    }

    // A cancelled BeforeEdit shows nothing; Value set while open leaves the text alone.
    cancelBefore = true;
    edit->Edit();
    EXPECT_FALSE(edit->isVisible());
    cancelBefore = false;
    edit->Edit();
    edit->setValue("elsewhere");
    EXPECT_EQ(edit->txtEdit()->text(), "old");
    // Qt's own editing keys still work in the box.
    QTest::keyClick(edit->txtEdit(), Qt::Key_End);
    QTest::keyClick(edit->txtEdit(), Qt::Key_Backspace);
    EXPECT_EQ(edit->txtEdit()->text(), "ol");
    edit->AbortEdit();
    EXPECT_EQ(edit->Value().toString(), "elsewhere");
}

TEST_F(lsEditTest, ComboBoxOpensItsListSearchesAndCommitsAChoice) {
    for (const char *entry : {"Apple", "Banana", "Blueberry", "Cherry"})
        edit->AddItem(entry);
    edit->setValue("Cherry");
    edit->Edit(lsEditComboBox);
    EXPECT_EQ(edit->lstEdit()->currentRow(), 3);
    EXPECT_TRUE(edit->lstEdit()->isHidden());

    // A letter opens the list and starts a fresh search; the search wraps round and is blind to
    // case, and the text is not completed.
    QTest::keyClicks(edit->txtEdit(), "b");
    EXPECT_FALSE(edit->lstEdit()->isHidden());
    EXPECT_EQ(edit->txtEdit()->text(), "b");
    EXPECT_EQ(edit->lstEdit()->currentRow(), 1);
    QTest::keyClicks(edit->txtEdit(), "LU");
    EXPECT_EQ(edit->txtEdit()->text(), "bLU");
    EXPECT_EQ(edit->lstEdit()->currentRow(), 2);
    // With the list open, Up and Down typed in the box move in the list.
    QTest::keyClick(edit->txtEdit(), Qt::Key_Down);
    EXPECT_EQ(edit->lstEdit()->currentRow(), 3);
    QTest::keyClick(edit->txtEdit(), Qt::Key_Up);
    EXPECT_EQ(edit->lstEdit()->currentRow(), 2);
    QTest::keyClick(edit->txtEdit(), Qt::Key_Return);
    EXPECT_EQ(take(), QStringList({"BeforeEdit", "EditValidate Blueberry Cherry",
                                   "AfterEdit Blueberry Cherry 1", "OnClose"}));
    EXPECT_EQ(edit->Value().toString(), "Blueberry");
    EXPECT_EQ(edit->ListIndex(), 2);

    // Text that matches no entry is never stored.
    edit->Edit();
    edit->lstEdit()->setCurrentRow(-1);
    QTest::keyClicks(edit->txtEdit(), "zz");
    EXPECT_EQ(edit->lstEdit()->currentRow(), -1);
    QTest::keyClick(edit->txtEdit(), Qt::Key_Return);
    EXPECT_EQ(take(), QStringList({"BeforeEdit", "OnClose"}));

    // Down opens the list and gives it the keys; Enter there commits as in the text box. No
    // mouse release follows the key: the arrow is drawn up again at once.
    edit->Edit();
    QTest::keyClick(edit->txtEdit(), Qt::Key_Down);
    ASSERT_FALSE(edit->lstEdit()->isHidden());
    EXPECT_TRUE(edit->lstEdit()->hasFocus());
    auto *arrow = static_cast<ButtonSurface *>(edit->btnDown());
    const QImage openedByKey = arrow->image().copy();
    edit->DrawDownButton(lsBtnUp);
    EXPECT_EQ(openedByKey, arrow->image());
    QTest::keyClick(edit->lstEdit(), Qt::Key_Up);
    QTest::keyClick(edit->lstEdit(), Qt::Key_Return);
    EXPECT_EQ(edit->Value().toString(), "Banana");

    // A click on an entry closes, then commits once more with nothing changed.
    edit->Edit();
    QTest::mouseClick(edit->btnDown(), Qt::RightButton);
    EXPECT_TRUE(edit->lstEdit()->isHidden());
    QTest::mouseClick(edit->btnDown(), Qt::LeftButton);
    ASSERT_FALSE(edit->lstEdit()->isHidden());
    take();
    const QRect apple = edit->lstEdit()->visualItemRect(edit->lstEdit()->item(0));
    QTest::mouseClick(edit->lstEdit()->viewport(), Qt::LeftButton, {}, apple.center());
    EXPECT_EQ(take(),
              QStringList({"EditValidate Apple Banana", "AfterEdit Apple Banana 1", "OnClose",
                           "EditValidate Apple Apple", "AfterEdit Apple Apple 0"}));
}

TEST_F(lsEditTest, DropDownSizesAndOpensUpwardsWhenShortOfRoomBelow) {
    const int row = 22; // the lines are as high as the editor was: the row it edits
    const int frame = 2 * edit->lstEdit()->frameWidth();
    struct Case {
        int entries, top, rows;
        bool upwards;
    };
    const Case cases[] = {
        {20, 20, 8, false}, {3, 20, 4, false}, {0, 20, 1, false}, {3, 300 - 22 - row, 4, true}};
    for (const Case &c : cases) {
        edit->Clear();
        for (int i = 0; i < c.entries; ++i)
            edit->AddItem(QString("Item %1").arg(i, 2, 10, QChar('0')));
        edit->setGeometry(20, c.top, 160, 22);
        edit->Edit(lsEditComboBox);
        const QPoint textOnScreen = edit->txtEdit()->mapToGlobal(QPoint());
        QTest::mouseClick(edit->btnDown(), Qt::LeftButton);
        const QString what = QString("%1 entries at %2").arg(c.entries).arg(c.top);
        EXPECT_EQ(edit->lstEdit()->height(), c.rows * row + frame) << qPrintable(what);
        EXPECT_EQ(edit->height(), 22 + c.rows * row + frame) << qPrintable(what);
        EXPECT_EQ(edit->lstEdit()->y() < edit->txtEdit()->y(), c.upwards) << qPrintable(what);
        EXPECT_EQ(edit->txtEdit()->mapToGlobal(QPoint()), textOnScreen) << qPrintable(what);
        // A second press folds it away to the editor's old place and size.
        QTest::mouseClick(edit->btnDown(), Qt::LeftButton);
        EXPECT_EQ(edit->geometry(), QRect(20, c.top, 160, 22)) << qPrintable(what);
        edit->AbortEdit();
    }
}

TEST_F(lsEditTest, ButtonModeHandsTheValueToTheHost) {
    edit->setValue("old");
    edit->Edit(lsEditButton);
    EXPECT_TRUE(edit->txtEdit()->isReadOnly());
    QTest::keyClicks(edit->txtEdit(), "xyz");
    EXPECT_EQ(edit->txtEdit()->text(), "old");
    QTest::keyClick(edit->txtEdit(), Qt::Key_Return);
    EXPECT_EQ(take(), QStringList({"BeforeEdit", "EditValidate old old", "AfterEdit old old 0",
                                   "OnButtonClick 20 100", "OnClose"}));
    EXPECT_EQ(edit->Value().toString(), "from dialog");

    // Losing the focus commits nothing; a release of any button on the ellipsis acts as Enter.
    edit->Edit();
    other->setFocus();
    EXPECT_EQ(take(), QStringList({"BeforeEdit", "OnClose"}));
    edit->Edit();
    QTest::mouseClick(edit->btnSelect(), Qt::RightButton);
    EXPECT_TRUE(take().contains("OnButtonClick 20 100"));

    // A key on a button acts as in the text box: Escape aborts.
    veto = true;
    edit->Edit();
    edit->btnSelect()->setFocus();
    QTest::keyClick(edit->btnSelect(), Qt::Key_Escape);
    EXPECT_EQ(take(), QStringList({"BeforeEdit", "OnClose"}));
    EXPECT_FALSE(edit->isVisible());
}

// A button shows the whole button's pixels as soon as it is shown. One far larger than its window
// keeps a picture of only the part that can show (a square button as tall as a 30000-pixel row
// took gigabytes); when the window grows and more shows, it is drawn again.
TEST_F(lsEditTest, ButtonKeepsOnlyWhatCanShow) {
    auto *button = static_cast<ButtonSurface *>(edit->btnSelect());
    edit->Edit(lsEditButton);
    for (const auto &[editorHeight, windowHeight] :
         {std::pair{22, 300}, {1500, 300}, {1500, 700}}) {
        if (editorHeight != edit->height()) {
            edit->AbortEdit();
            edit->setGeometry(20, 100, 160, editorHeight);
            edit->Edit(lsEditButton);
        }
        window->resize(320, windowHeight);
        QApplication::processEvents();
        // The editor clips the button as the window clips the editor.
        const QRect shown = button->rect() &
                            QRect(button->mapFrom(edit, QPoint(0, 0)), edit->size()) &
                            QRect(button->mapFrom(window.get(), QPoint(0, 0)), window->size());
        button->grab(); // paints, drawing again when more shows
        QImage whole(button->size(), QImage::Format_RGB32);
        EditButtonPainter::DrawSelectButton(whole, lsBtnUp, 0x8000000F, 0x80000012, {});
        EXPECT_EQ(button->image(), whole.copy(shown)) << editorHeight << " in " << windowHeight;
    }
}

TEST(lsEditModel, EntriesModesAndEveryPropertyThroughTheBag) {
    lsEdit edit;
    int closes = 0;
    QObject::connect(&edit, &lsEdit::OnClose, [&] { ++closes; });
    edit.InitProperties();
    EXPECT_EQ(closes, 1);
    EXPECT_EQ(edit.AddItem("a"), 0);
    EXPECT_EQ(edit.AddItem("b", 0), 0);
    EXPECT_EQ(errorOf([&] { edit.AddItem("c", 5); }), 5);
    EXPECT_EQ(
        std::tuple(edit.List(0).toString(), edit.List(-1).toString(), edit.List(2).toString()),
        std::tuple(QString("b"), QString(), QString()));
    // Any mode is kept; one outside 0..2 opens nothing.
    edit.setMode(7);
    edit.Edit();
    EXPECT_EQ(std::tuple(edit.isEditing(), edit.Mode().toInt()), std::tuple(false, 7));

    // Defaults store nothing; every put comes back from the bag. (That a bad bag changes nothing
    // the properties fuzz target checks on every input.)
    PropertyBag bag;
    edit.setMode(0);
    edit.WriteProperties(bag);
    EXPECT_EQ(bag.count(), 0);
    // clang-format off
    const std::pair<const char *, QVariant> puts[] = {{"BorderStyle", 1}, {"BackColor", 0x00123456u},
        {"Mode", lsEditComboBox}, {"Value", "42"}, {"ScaleMode", 3}};
    // clang-format on
    for (const auto &[name, value] : puts)
        edit.setProperty(name, value);
    edit.WriteProperties(bag);
    lsEdit copy;
    copy.ReadProperties(bag);
    for (const auto &[name, value] : puts)
        EXPECT_EQ(copy.property(name).toString(), value.toString()) << name;
}

} // namespace
