// Faults a host met: errors inside calls that Qt makes, and paint looks that disagreed with the
// control's own state.

#include "BuiltinPictures.h"
#include "ErrorOf.h"
#include "SystemColors.h"
#include "TreeListFixture.h"

#include <QApplication>
#include <QResizeEvent>
#include <QSignalSpy>
#include <QTest>
#include <functional>

namespace {

class TreeListFaultsTest : public TreeListFixture {
protected:
    // The colour a cell shows away from its text: its right edge, half-way down.
    QRgb cellBackground(qint32 row, qint32 column) const {
        const lsCellPtr cell = list->Nodes(row)->Cells()->at(column);
        return frame().pixel(cell->Left() + cell->Width() - 3, cell->Top() + cell->Height() / 2);
    }
};

// Log lines of the library's category, caught while a test runs.
QStringList g_logged;
void catchLog(QtMsgType, const QMessageLogContext &context, const QString &text) {
    if (QLatin1String(context.category) == QLatin1String("vktreelist"))
        g_logged << text;
}

TEST_F(TreeListFaultsTest, ErrorsInsideQtCallsAreReportedAndTheControlGoesOn) {
    const struct Reproducer {
        const char *name;
        std::function<void()> setUp;   // host calls; what fails here reaches the host
        std::function<void()> trigger; // a call that Qt makes
        int error;
        std::function<void()> recover; // what the host does about it
    } reproducers[] = {
        {"a zero row height from a file, then shown",
         [&] {
             list = std::make_unique<vkTreeList>(nullptr, host.get());
             PropertyBag bag;
             ASSERT_TRUE(bag.fromJson(R"({"RowHeight": 0})"));
             list->ReadProperties(bag);
         },
         [&] {
             list->resize(400, 300);
             list->show();
         },
         TreeListError::DivisionByZero, [&] { list->setRowHeight(18); }},
        {"32768 rows in a view one line high, the vertical bar dragged to its end",
         [&] {
             list->resize(400, 2 * 18 + 4);
             list->setAutoRedraw(false);
             list->setAutoSelectNew(false);
             addFlatRows(32767);
             EXPECT_EQ(errorOf([&] { list->AddItem("K32767", lsNext, "K32768", "Last"); }),
                       TreeListError::Overflow);
             list->setAutoRedraw(true);
             ASSERT_EQ(list->scrY()->maximum(), 32768);
         },
         [&] { list->scrY()->setValue(list->scrY()->maximum()); }, TreeListError::Overflow,
         [&] { list->scrY()->setValue(5); }},
        {"a column width past the 32-bit row width, then a resize",
         [&] {
             list->setScaleMode(3);
             list->setColumns(2);
             addFlatRows(2);
             EXPECT_EQ(errorOf([&] { list->setColumnWidth(1, 2147483600); }),
                       TreeListError::Overflow);
         },
         [&] {
             QResizeEvent event(QSize(380, 280), list->size());
             QApplication::sendEvent(list.get(), &event);
         },
         TreeListError::Overflow, [&] { list->setColumnWidth(1, 100); }},
    };
    const QtMessageHandler previous = qInstallMessageHandler(catchLog);
    for (const Reproducer &r : reproducers) {
        SCOPED_TRACE(r.name);
        makeControl(true);
        g_logged.clear();
        r.setUp();
        QSignalSpy errors(list.get(), &vkTreeList::OnError);
        const qint32 firstRow = list->FirstDisplayedRow();
        const QImage shown = list->picOut()->screenImage()->copy();

        r.trigger();
        ASSERT_EQ(errors.count(), 1);
        EXPECT_EQ(std::tuple(errors[0][0].toInt(), errors[0][1].toString()),
                  std::tuple(r.error, TreeListError::standardText(r.error)));
        ASSERT_EQ(g_logged.size(), 1);
        EXPECT_TRUE(g_logged[0].contains(TreeListError::standardText(r.error)))
            << g_logged[0].toStdString();
        // The view did not move and the user still sees the last good frame.
        EXPECT_EQ(list->FirstDisplayedRow(), firstRow);
        const QImage now = *list->picOut()->screenImage();
        const QRect common = QRect(QPoint(), shown.size()).intersected(now.rect());
        if (!shown.isNull()) {
            EXPECT_EQ(now.copy(common), shown.copy(common));
        }

        // Once the host mends the cause, everything works again, scrolling included (a layout
        // that failed half-way must not leave the bars' handlers switched off).
        r.recover();
        for (int i = 0; i < 30; ++i)
            list->AddItem(emptyText(), lsNext, emptyText(), "More");
        list->resize(list->width() + 10, list->height());
        ASSERT_FALSE(list->scrY()->isHidden());
        QSignalSpy scrolled(list.get(), &vkTreeList::Scroll);
        list->scrY()->setValue(list->scrY()->value() + 1);
        EXPECT_EQ(scrolled.count(), 1);
        EXPECT_EQ(list->failedEntries(), 1);
    }
    qInstallMessageHandler(previous);
}

TEST_F(TreeListFaultsTest, ARowPaintedOnItsOwnLooksAsInAFrame) {
    // Rows with boxes and lines across them, the middle one painted again by itself: a cell
    // look that is not painted in place, or any look with an image list (whose pictures may
    // reach past their line). Its box, picture and the lines through it stay.
    auto images = std::make_shared<lsImageList>();
    const struct Case {
        lsImageListPtr images;
        qint32 property;
        QVariant value;
    } cases[] = {{nullptr, lslcIcon, "none"}, {images, lslcData, "changed"}};
    for (const Case &c : cases) {
        makeControl(true);
        list->setImageList(c.images);
        list->setColumns(2);
        list->setAutoSelectNew(false);
        list->AddItem(emptyText(), lsNext, "P", "Parent");
        for (const char *key : {"A", "B", "C"}) {
            list->AddItem("P", lsChild, key, key);
            list->AddItem(key, lsChild, QString(key) + "1", "Leaf");
        }
        list->Expand("P");
        list->setListCell(c.property, list->Nodes("B")->Index(), 1, c.value);
        const QImage seen = frame();
        list->Refresh();
        EXPECT_EQ(seen, frame()) << c.property;
    }
}

TEST_F(TreeListFaultsTest, PaintLooksFollowTheControlsState) {
    const QRgb white = qRgb(255, 255, 255);
    const QRgb buttonFace = QColor::fromRgb(oleTranslateColor(0x8000000F)).rgb();

    // Only the collection's selected row looks selected; a flag left on a row hidden at the time
    // of the next selection does not count.
    list->AddItem(emptyText(), lsNext, "P", "Parent");
    list->AddItem("P", lsChild, "A", "Alpha");
    list->AddItem("P", lsChild, "B", "Beta");
    list->Expand("P");
    list->SelectItem(3);
    list->Collapse("P");
    list->SelectItem(1);
    list->Expand("P");
    EXPECT_EQ(cellBackground(1, 1), buttonFace);
    EXPECT_EQ(cellBackground(3, 1), white);
    // With MultiSelect, rows picked beside the selected one keep the selected look.
    list->setMultiSelect(true);
    list->rows()->Selected(3, 1, true);
    list->Refresh();
    EXPECT_EQ(cellBackground(1, 1), buttonFace);
    EXPECT_EQ(cellBackground(3, 1), buttonFace);

    // A cell picture of the second column is centred with the whole sum rounded half to even:
    // row top 19, (19 - 16) / 2 = 1.5, so y = 20.5 -> 20.
    makeControl(true);
    QImage red(16, 16, QImage::Format_RGB32);
    red.fill(Qt::red);
    auto images = std::make_shared<lsImageList>();
    images->Add("red", std::make_shared<StdPicture>(red));
    list->setImageList(images);
    list->setRowHeight(19);
    list->setColumns(2);
    list->setAutoSelectNew(false);
    list->AddItem(emptyText(), lsNext, "A", "Alpha");
    list->setListCell(lslcIcon, 1, 2, "red");
    const lsCellPtr cell = list->Nodes(1)->Cells()->at(2);
    ASSERT_EQ(cell->Top(), 19);
    const auto column = [&](int y) { return frame().pixel(cell->Left() + 1, y); };
    for (const auto &[y, red] : {std::pair{19, false}, {20, true}, {35, true}, {36, false}})
        EXPECT_EQ(column(y) == qRgb(255, 0, 0), red) << y;

    // An Icon given as the text of a built-in picture number, with no image list: the geometry
    // reserves its room and the painter draws it there.
    makeControl(true);
    list->AddItem(emptyText(), lsNext, "A", "Alpha", QStringLiteral("104"));
    lsIdent ident;
    ident.Refresh(list->Nodes(1), list->RowHeight(), nullptr, list->picOut());
    EXPECT_EQ(ident.TextX(), ident.picX() + 16 + 2);
    EXPECT_EQ(frame().copy(ident.picX(), ident.PicY(), 16, 16),
              builtinPicture(picCollapsedParent)->image());
}

} // namespace
