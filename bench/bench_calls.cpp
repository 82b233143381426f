// The per-row calls a host makes in a loop, on a shown list of 32767 flat rows of four text cells,
// against the QTreeWidget call that does the same job: 2000 calls at rows spread over the list,
// each batch ending with the frame on the screen (one turn of Qt's event loop). The control runs
// with its defaults (AutoRedraw and AutoSelectNew on); the QTreeWidget host keeps its items in a
// vector and a key map beside them, as it must to find a row again. Prints a table of microseconds
// per call.
#include "BenchSupport.h"
#include "vkTreeList.h"

#include <QApplication>
#include <QHash>
#include <QTreeWidget>
#include <cstdio>
#include <functional>
#include <memory>
#include <vector>

namespace {

constexpr int kRows = 32767;
constexpr int kCalls = 2000;
constexpr int kColumns = 4;

QString key(int row) {
    return QStringLiteral("R%1").arg(row);
}

// Row numbers 1..kRows visited in a spread order, the same for both sides.
std::vector<int> spread() {
    std::vector<int> rows;
    for (int i = 0; i < kCalls; ++i)
        rows.push_back(1 + int((quint64(i) * 7919u) % kRows));
    return rows;
}

struct Ours {
    HostContainer host;
    vkTreeList list{nullptr, &host};
    Ours() {
        list.setColumns(kColumns);
        list.resize(800, 600);
        list.show();
        list.setAutoSelectNew(false);
        list.setAutoRedraw(false);
        for (int i = 1; i <= kRows; ++i) {
            list.AddItem(i == 1 ? emptyText() : QVariant(key(i - 1)), lsNext, key(i),
                         QStringLiteral("Cell %1.1").arg(i));
            for (int c = 2; c <= kColumns; ++c)
                list.setListCell(lslcData, i, c, QStringLiteral("Cell %1.%2").arg(i).arg(c));
        }
        list.setAutoRedraw(true);
        list.setAutoSelectNew(true);
        QApplication::processEvents();
    }
};

struct Widget {
    QTreeWidget tree;
    std::vector<QTreeWidgetItem *> items{nullptr}; // 1-based, as the control's rows
    QHash<QString, QTreeWidgetItem *> keys;
    Widget() {
        tree.setColumnCount(kColumns);
        tree.setUniformRowHeights(true);
        tree.resize(800, 600);
        tree.show();
        for (int i = 1; i <= kRows; ++i) {
            auto *item = new QTreeWidgetItem(&tree);
            for (int c = 0; c < kColumns; ++c)
                item->setText(c, QStringLiteral("Cell %1.%2").arg(i).arg(c + 1));
            items.push_back(item);
            keys.insert(key(i), item);
        }
        QApplication::processEvents();
    }
};

// Microseconds a call, the batch's frame on the screen included.
double perCall(const std::function<void(int)> &call) {
    const std::vector<int> rows = spread();
    const double ms = timed([&] {
        for (int row : rows)
            call(row);
        QApplication::processEvents();
    });
    return ms * 1000.0 / kCalls;
}

} // namespace

int main(int argc, char **argv) {
    BenchApplication app(argc, argv);
    auto ours = std::make_unique<Ours>();
    auto qt = std::make_unique<Widget>();
    vkTreeList &list = ours->list;
    const QString text = QStringLiteral("changed");
    qint64 sink = 0;
    struct Row {
        const char *ours, *qt;
        std::function<void(int)> oursCall, qtCall;
    };
    const Row rows[] = {
        {"`ListCell` get", "`QTreeWidgetItem::text`",
         [&](int r) { sink += list.ListCell(lslcData, r, 2).toString().size(); },
         [&](int r) { sink += qt->items[size_t(r)]->text(1).size(); }},
        {"`setListCell`", "`QTreeWidgetItem::setText`",
         [&](int r) { list.setListCell(lslcData, r, 2, text); },
         [&](int r) { qt->items[size_t(r)]->setText(1, text); }},
        {"`Nodes` by position", "`QTreeWidget::topLevelItem`",
         [&](int r) { sink += list.Nodes(r) != nullptr; },
         [&](int r) { sink += qt->tree.topLevelItem(r - 1) != nullptr; }},
        {"`Nodes` by key", "the host's key map",
         [&](int r) { sink += list.Nodes(key(r)) != nullptr; },
         [&](int r) { sink += qt->keys.value(key(r)) != nullptr; }},
        {"`Mark` get", "`QTreeWidgetItem::data`", [&](int r) { sink += list.Mark(r); },
         [&](int r) { sink += qt->items[size_t(r)]->data(0, Qt::UserRole).toBool(); }},
        {"`setMark`", "`QTreeWidgetItem::setData`", [&](int r) { list.setMark(r, true); },
         [&](int r) { qt->items[size_t(r)]->setData(0, Qt::UserRole, true); }},
        {"`Expand`", "`QTreeWidgetItem::setExpanded(true)`", [&](int r) { list.Expand(r); },
         [&](int r) { qt->items[size_t(r)]->setExpanded(true); }},
        {"`Collapse`", "`QTreeWidgetItem::setExpanded(false)`", [&](int r) { list.Collapse(r); },
         [&](int r) { qt->items[size_t(r)]->setExpanded(false); }},
        {"`SelectItem`", "`QTreeWidget::setCurrentItem`", [&](int r) { list.SelectItem(r, 1); },
         [&](int r) { qt->tree.setCurrentItem(qt->items[size_t(r)]); }},
        {"`EnsureVisible`", "`QTreeWidget::scrollToItem`", [&](int r) { list.EnsureVisible(r); },
         [&](int r) { qt->tree.scrollToItem(qt->items[size_t(r)]); }},
        {"`RemoveItem` by key", "`delete` of the item from the key map",
         [&](int r) { list.RemoveItem(key(r)); }, [&](int r) { delete qt->keys.take(key(r)); }},
    };
    std::printf("| call at %d rows | vkTreeList us | Qt call | Qt us | ours/Qt |\n"
                "|---|---:|---|---:|---:|\n",
                kRows);
    for (const Row &row : rows) {
        const double o = perCall(row.oursCall), q = perCall(row.qtCall);
        std::printf("| %s | %.2f | %s | %.2f | **%.2f** |\n", row.ours, o, row.qt, q, o / q);
    }
    std::printf("(%lld)\n", static_cast<long long>(sink));
    return 0;
}
