// The shown control under host calls interleaved with mouse, key, wheel and resize events on the
// off-screen platform. Nothing may crash or hang, no error may reach Qt's event loop (the
// control's guard would count it), and both row collections keep their invariants after every
// step. Host calls may fail only with the documented errors.

#include "FuzzApplication.h"
#include "PictureBox.h"
#include "TreeInvariants.h"
#include "TreeListError.h"
#include "lsEdit.h"
#include "vkTreeList.h"

#include <QApplication>
#include <QTest>
#include <QWheelEvent>
#include <cstdio>
#include <cstdlib>
#include <fuzzer/FuzzedDataProvider.h>

namespace {

constexpr qint32 MaxRows = 400;

// VKTL_FUZZ_TRACE=1 prints each step and the control's shape after it, to read a finding.
const bool tracing = qEnvironmentVariableIsSet("VKTL_FUZZ_TRACE");

void trace(const char *kind, int op, qint32 row = 0, qint32 column = 0) {
    if (tracing)
        std::fprintf(stderr, "%s %d (row %d, column %d)", kind, op, row, column);
}

QVariant anyRow(FuzzedDataProvider &in, const vkTreeList &list) {
    if (in.ConsumeBool())
        return QStringLiteral("k%1").arg(in.ConsumeIntegralInRange(0, 60));
    return in.ConsumeIntegralInRange(-1, list.Rows() + 1);
}

QVariant anyValue(FuzzedDataProvider &in) {
    switch (in.ConsumeIntegralInRange(0, 3)) {
    case 0:
        return in.ConsumeIntegralInRange(-70000, 70000);
    case 1:
        return in.ConsumeBool();
    case 2:
        return QVariant();
    default:
        return QString::fromStdString(in.ConsumeRandomLengthString(12));
    }
}

void hostCall(FuzzedDataProvider &in, vkTreeList &list) {
    const qint32 row = in.ConsumeIntegralInRange(-1, list.Rows() + 1);
    const qint32 column = in.ConsumeIntegralInRange(-1, list.Columns() + 1);
    const int op = in.ConsumeIntegralInRange(0, 15);
    trace("host", op, row, column);
    switch (op) {
    case 0:
    case 1:
        if (list.Rows() < MaxRows) {
            qint32 relationship = in.ConsumeIntegralInRange(0, 5);
            list.AddItem(anyRow(in, list), relationship,
                         QStringLiteral("k%1").arg(in.ConsumeIntegralInRange(0, 60)),
                         QString::fromStdString(in.ConsumeRandomLengthString(20)));
        }
        break;
    case 2:
        list.RemoveItem(anyRow(in, list));
        break;
    case 3:
        list.setListCell(in.ConsumeIntegralInRange(-1, 12), row, column, anyValue(in));
        break;
    case 4:
        list.setColumns(in.ConsumeIntegralInRange(-1, 8));
        break;
    case 5:
        list.setHeaders(in.ConsumeIntegralInRange(-2, 4));
        break;
    case 6:
        list.setRowHeight(in.ConsumeIntegralInRange(0, 300));
        break;
    case 7:
        list.setColumnWidth(column, in.ConsumeIntegralInRange(-100, 200000));
        break;
    case 8:
        if (in.ConsumeBool())
            list.Expand(anyRow(in, list));
        else
            list.Collapse(anyRow(in, list));
        break;
    case 9:
        list.SelectItem(row, column);
        break;
    case 10: {
        qint32 r = row, c = column, mode = in.ConsumeIntegralInRange(-1, 3);
        if (in.ConsumeBool())
            list.EditComboAddItem(QString::fromStdString(in.ConsumeRandomLengthString(8)));
        list.Edit(r, c, mode);
        break;
    }
    case 11:
        list.AbortEdit();
        break;
    case 12:
        list.setLineStyle(in.ConsumeIntegralInRange(-1, 3));
        list.setFocusType(in.ConsumeIntegralInRange(0, 1));
        list.setMultiSelect(in.ConsumeBool());
        break;
    case 13:
        list.setAutoRedraw(in.ConsumeBool());
        break;
    case 14:
        list.EnsureVisible(anyRow(in, list));
        list.HitTest(in.ConsumeIntegralInRange(-10, 700), in.ConsumeIntegralInRange(-10, 500));
        break;
    default:
        switch (in.ConsumeIntegralInRange(0, 7)) {
        case 0:
            list.Clear();
            break;
        case 1:
        case 2:
            list.AutoSize(column);
            break;
        default:
            list.Refresh(in.ConsumeBool());
            break;
        }
        break;
    }
}

void userInput(FuzzedDataProvider &in, vkTreeList &list) {
    PictureBox *surface = list.picOut();
    const QPoint at(in.ConsumeIntegralInRange(-5, surface->width() + 5),
                    in.ConsumeIntegralInRange(-5, surface->height() + 5));
    const Qt::KeyboardModifiers modifiers =
        Qt::KeyboardModifiers(in.ConsumeIntegralInRange(0, 3) << 25); // none, Shift, Ctrl, both
    const Qt::MouseButton button = in.ConsumeBool() ? Qt::LeftButton : Qt::RightButton;
    static const Qt::Key keys[] = {
        Qt::Key_Up,  Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Home,
        Qt::Key_End, Qt::Key_Left, Qt::Key_Right,  Qt::Key_Return,   Qt::Key_Escape,
        Qt::Key_Tab, Qt::Key_F4,   Qt::Key_A,      Qt::Key_Backspace};
    const int op = in.ConsumeIntegralInRange(0, 5);
    trace("input", op, at.y(), at.x());
    switch (op) {
    case 0:
        QTest::mouseClick(surface, button, modifiers, at);
        break;
    case 1:
        QTest::mouseDClick(surface, button, modifiers, at);
        break;
    case 2:
        QTest::mousePress(surface, Qt::LeftButton, modifiers, at);
        QTest::mouseMove(surface, at + QPoint(in.ConsumeIntegralInRange(-300, 300), 0));
        QTest::mouseRelease(surface, Qt::LeftButton, modifiers,
                            at + QPoint(in.ConsumeIntegralInRange(-300, 300), 0));
        break;
    case 3: {
        QWidget *target = QApplication::focusWidget() ? QApplication::focusWidget() : surface;
        QTest::keyClick(target, keys[in.ConsumeIntegralInRange<size_t>(0, std::size(keys) - 1)],
                        modifiers);
        break;
    }
    case 4: {
        const QPoint delta(0, in.ConsumeIntegralInRange(-720, 720));
        QWheelEvent wheel(at, surface->mapToGlobal(at), QPoint(), delta, Qt::NoButton, modifiers,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(surface, &wheel);
        break;
    }
    default:
        list.resize(in.ConsumeIntegralInRange(0, 600), in.ConsumeIntegralInRange(0, 400));
        break;
    }
    QApplication::processEvents();
}

// Qt warns, and carries on, when its drawing calls are misused (painting on a null picture, a
// pixel out of range): for this target those are findings. Font fallback notes are not.
void failOnDrawingWarnings(QtMsgType type, const QMessageLogContext &, const QString &message) {
    std::fprintf(stderr, "%s\n", qPrintable(message));
    if (type != QtDebugMsg && type != QtInfoMsg &&
        (message.startsWith(QLatin1String("QPainter")) ||
         message.startsWith(QLatin1String("QImage"))))
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    fuzzApplication();
    static const QtMessageHandler installed = qInstallMessageHandler(failOnDrawingWarnings);
    (void)installed;
    FuzzedDataProvider in(data, size);
    vkTreeList list;
    list.resize(240, 160);
    list.show();
    list.picOut()->setFocus();
    bool duplicateLinked = false; // a row linked without a position, as a duplicate key leaves
    while (in.remaining_bytes() > 0) {
        try {
            if (in.ConsumeBool())
                hostCall(in, list);
            else
                userInput(in, list);
        } catch (const TreeListError &error) {
            // A documented failure of a host call.
            duplicateLinked = duplicateLinked || error.number() == TreeListError::DuplicateKey;
        }
        if (tracing)
            std::fprintf(stderr, " -> rows %d, columns %d, headers %d, height %d, size %dx%d\n",
                         list.Rows(), list.Columns(), list.Headers(), list.RowHeight(),
                         list.width(), list.height());
        if (list.failedEntries() != 0) {
            std::fprintf(stderr, "an error reached the control's guard inside a Qt call\n");
            std::abort();
        }
        if (list.Rows() == 0)
            duplicateLinked = false;
        if (duplicateLinked)
            checkLinks(*list.rows());
        else
            checkTree(*list.rows());
        checkTree(*list.headers());
    }
    return 0;
}
