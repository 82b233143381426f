// A full frame on a screen with a pixel ratio of 2 (QT_SCALE_FACTOR=2 on the offscreen platform):
// the control lays out, composes its frame in device pixels and copies it to its drawing child;
// QTreeWidget renders its viewport into an image of the same device size. Both show the same
// 4096 rows of four columns with the same row height and column widths, at 800x600 and
// 1920x1080 logical pixels.

#include "BenchSupport.h"
#include "HostContainer.h"
#include "lsCell.h"
#include "lsCells.h"
#include "lsNodes.h"
#include "vkTreeList.h"

#include <QHeaderView>
#include <QStyledItemDelegate>
#include <QTreeWidget>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <map>

namespace {

constexpr int kColumns = 4, kRows = 4096, kRowHeight = 18;
const QSize kSizes[] = {{800, 600}, {1920, 1080}};

QString text(int row, int column) {
    return QStringLiteral("Row %1 cell %2").arg(row).arg(column);
}

struct Ours {
    HostContainer host;
    vkTreeList list{nullptr, &host};
};

std::unique_ptr<Ours> newOurs(QSize size) {
    auto ours = std::make_unique<Ours>();
    vkTreeList &list = ours->list;
    list.setAutoRedraw(false);
    list.setAutoSelectNew(false);
    list.setColumns(kColumns);
    for (int r = 1; r <= kRows; ++r) {
        list.AddItem(r == 1 ? emptyText() : QVariant(r - 1), lsNext, emptyText(), text(r, 1));
        for (int c = 2; c <= kColumns; ++c)
            list.setListCell(lslcData, r, c, text(r, c));
    }
    list.resize(size);
    list.show();
    list.setAutoRedraw(true);
    QApplication::processEvents();
    return ours;
}

std::unique_ptr<QTreeWidget> newWidget(const vkTreeList &like, QSize size) {
    auto tree = std::make_unique<QTreeWidget>();
    tree->setColumnCount(kColumns);
    tree->setItemDelegate(new RowHeightDelegate(kRowHeight, tree.get()));
    tree->setUniformRowHeights(true);
    for (int c = 0; c < kColumns; ++c)
        tree->header()->resizeSection(c, like.headers()->at(1)->Cells()->at(c + 1)->Width());
    for (int r = 1; r <= kRows; ++r) {
        auto *item = new QTreeWidgetItem(tree.get());
        for (int c = 0; c < kColumns; ++c)
            item->setText(c, text(r, c + 1));
    }
    tree->resize(size);
    tree->show();
    QApplication::processEvents();
    return tree;
}

std::map<std::pair<int, bool>, double> framesMs; // (width, ours) -> ms

void BM_Frame(benchmark::State &state, QSize size, bool ours) {
    std::unique_ptr<Ours> list = newOurs(size);
    std::unique_ptr<QTreeWidget> tree = ours ? nullptr : newWidget(list->list, size);
    QImage image;
    if (tree) {
        const qreal ratio = tree->devicePixelRatioF();
        image = QImage(tree->viewport()->size() * ratio, QImage::Format_RGB32);
        image.setDevicePixelRatio(ratio);
    }
    const double ms = timed([&] {
        for (auto _ : state) {
            if (tree) {
                tree->viewport()->render(&image);
            } else {
                list->list.Refresh();
                list->list.surface();
            }
        }
    });
    framesMs[{size.width(), ours}] = ms / double(state.iterations());
    state.counters["ratio"] = list->list.devicePixelRatioF();
}

} // namespace

int main(int argc, char **argv) {
    qputenv("QT_SCALE_FACTOR", "2");
    BenchApplication app(argc, argv);
    for (const QSize size : kSizes)
        for (bool ours : {true, false}) {
            const std::string name =
                std::string("frame-at-ratio-2/") + (ours ? "vkTreeList/" : "QTreeWidget/") +
                std::to_string(size.width()) + "x" + std::to_string(size.height());
            benchmark::RegisterBenchmark(name.c_str(), BM_Frame, size, ours)
                ->Unit(benchmark::kMillisecond);
        }
    if (!runBenchmarks(argc, argv))
        return 1;
    std::printf("\n| logical size at ratio 2 | vkTreeList ms | QTreeWidget ms | ours/Qt |\n"
                "|---|---:|---:|---:|\n");
    for (const QSize size : kSizes) {
        const double o = framesMs[{size.width(), true}], q = framesMs[{size.width(), false}];
        if (o > 0 && q > 0)
            std::printf("| %dx%d | %.2f | %.2f | **%.2f** |\n", size.width(), size.height(), o, q,
                        o / q);
    }
    return 0;
}
