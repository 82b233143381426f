// A long session: a shown control takes 100000 random host calls and input events. Nothing may
// fail inside Qt's calls, and once the rows are gone again the heap holds no more than it did
// before the session: what a session leaves behind grows with the rows still alive, not with
// the steps taken. (The sanitizers' build also checks for leaks at exit.)

#include "ErrorOf.h"
#include "TextCache.h"
#include "TreeListFixture.h"
#include "lsEdit.h"

#include <QApplication>
#include <QPixmapCache>
#include <QTest>
#include <QWheelEvent>
#include <random>
#if defined(__SANITIZE_ADDRESS__)
// From the sanitizer runtime (GCC installs no header declaring it).
extern "C" size_t __sanitizer_get_current_allocated_bytes();
#else
#include <malloc.h>
#endif

namespace {

// Bytes the program holds on the heap now.
size_t heapInUse() {
#if defined(__SANITIZE_ADDRESS__)
    return __sanitizer_get_current_allocated_bytes();
#else
    return mallinfo2().uordblks;
#endif
}

class Session {
public:
    Session(vkTreeList &list, unsigned seed) : m_list(list), m_rng(seed) {}

    void run(int steps) {
        for (int step = 0; step < steps; ++step) {
            errorOf([&] { pick(2) ? hostCall() : userInput(); });
            if (step % 64 == 0)
                QApplication::processEvents();
        }
    }

private:
    int pick(int n) { return std::uniform_int_distribution<int>(0, n - 1)(m_rng); }
    QString key() { return QStringLiteral("k%1").arg(pick(400)); }

    void hostCall() {
        const qint32 row = pick(m_list.Rows() + 2) - 1, column = pick(m_list.Columns() + 1);
        if (const int op = pick(12); op < 3) {
            if (m_list.Rows() < 300)
                m_list.AddItem(pick(3) ? QVariant(key()) : emptyText(),
                               lsRelationshipConstants(pick(5)), key(),
                               QStringLiteral("Row %1").arg(pick(1000)));
        } else if (op == 3) {
            m_list.RemoveItem(key());
        } else if (op == 4) {
            m_list.setListCell(lslcData, row, column, QStringLiteral("cell %1").arg(pick(99)));
        } else if (op == 5) {
            pick(2) ? m_list.Expand(key()) : m_list.Collapse(key());
        } else if (op == 6) {
            m_list.SelectItem(row, column);
        } else if (op == 7) {
            m_list.Edit(row, column, pick(3));
        } else if (op == 8) {
            // Columns taken away and given back: removed cells must not keep their slots once
            // no pointer to them is left.
            m_list.setColumns(1 + pick(4));
            m_list.setHeaders(pick(3));
        } else if (op == 9) {
            m_list.setRowHeight(16 + pick(14));
            m_list.setColumnWidth(column, 300 + pick(3000));
        } else if (op == 10) {
            if (pick(50) == 0)
                m_list.Clear();
        } else {
            m_list.AbortEdit();
        }
    }

    void userInput() {
        QWidget *surface = m_list.picOut();
        const QPoint at(pick(surface->width() + 1), pick(surface->height() + 1));
        static const Qt::Key keys[] = {
            Qt::Key_Up,    Qt::Key_Down, Qt::Key_PageUp, Qt::Key_Home,   Qt::Key_End,
            Qt::Key_Right, Qt::Key_Left, Qt::Key_Return, Qt::Key_Escape, Qt::Key_X};
        if (const int kind = pick(5); kind == 0) {
            QTest::mouseClick(surface, Qt::LeftButton, Qt::KeyboardModifiers(pick(2) << 25), at);
        } else if (kind == 1) {
            QTest::mouseDClick(surface, Qt::LeftButton, {}, at);
        } else if (kind == 2) {
            QWidget *target = QApplication::focusWidget() ? QApplication::focusWidget() : surface;
            QTest::keyClick(target, keys[pick(int(std::size(keys)))]);
        } else if (kind == 3) {
            QWheelEvent wheel(at, surface->mapToGlobal(at), QPoint(), QPoint(0, pick(481) - 240),
                              Qt::NoButton, {}, Qt::NoScrollPhase, false);
            QApplication::sendEvent(surface, &wheel);
        } else if (pick(20) == 0) {
            m_list.resize(120 + pick(200), 80 + pick(160));
        }
    }

    vkTreeList &m_list;
    std::mt19937 m_rng;
};

using SoakTest = TreeListFixture;

TEST_F(SoakTest, AHundredThousandStepsLeaveNothingBehindButLiveRows) {
    makeControl(true, 200, 140);
    list->setColumns(3);
    list->setHeaders(2);
    list->activateWindow();
    Session session(*list, 20261122u);
    const auto settle = [&] {
        list->AbortEdit();
        list->Clear();
        QApplication::processEvents();
        // Shaped captions are kept up to a bound, whatever rows are alive: not what is weighed.
        TextCache::instance().clear();
        QPixmapCache::clear(); // the style's pictures of scroll bars at every size they had
        return heapInUse();
    };
    session.run(3000); // caches and Qt's own first-use allocations fill up here
    const size_t before = settle();
    for (int k = 0; k < 10; ++k) {
        session.run(10000);
        settle();
    }
    const size_t after = settle();
    EXPECT_EQ(list->failedEntries(), 0);
    EXPECT_LT(after, before + 256 * 1024) << "before " << before << " after " << after;
}

} // namespace
