// Bulk load, lookup by key and by position, collapsing and expanding every top-level row, and
// clearing, for 32767 rows of four text cells in three tree shapes: once with the node
// collection and once with Qt's QTreeWidget. Prints the ours/Qt time ratios and the heap bytes
// each row costs. Every case runs once: the collection renumbers all rows on every add.
#include "BenchSupport.h"
#include "lsNodes.h"

#include <QApplication>
#include <QHash>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <malloc.h>
#include <map>

namespace {

constexpr int kRows = 32767;
constexpr int kColumns = 4;

// One row of a shape, in the order rows are added: its parent's row number, or -1 for a
// top-level row, which then follows the previous top-level row `previousTop` (-1 for the first).
struct RowPlan {
    int parent;
    int previousTop;
};

enum class Shape { Flat, DepthFirst, BreadthFirst };

const char *shapeName(Shape shape) {
    switch (shape) {
    case Shape::Flat:
        return "flat";
    case Shape::DepthFirst:
        return "depth-first";
    default:
        return "breadth-first";
    }
}

std::vector<RowPlan> plan(Shape shape) {
    std::vector<RowPlan> rows;
    int lastTop = -1;
    auto top = [&] {
        rows.push_back({-1, lastTop});
        lastTop = static_cast<int>(rows.size()) - 1;
        return lastTop;
    };
    auto child = [&](int parent) {
        rows.push_back({parent, -1});
        return static_cast<int>(rows.size()) - 1;
    };
    switch (shape) {
    case Shape::Flat:
        while (rows.size() < kRows)
            top();
        break;
    case Shape::DepthFirst:
        // 32 x (1 + 32 x (1 + 31)) is 32800 rows: the last grandchildren are left out.
        for (int t = 0; t < 32 && rows.size() < kRows; ++t) {
            const int parent = top();
            for (int c = 0; c < 32 && rows.size() < kRows; ++c) {
                const int middle = child(parent);
                for (int g = 0; g < 31 && rows.size() < kRows; ++g)
                    child(middle);
            }
        }
        break;
    case Shape::BreadthFirst:
        for (int t = 0; t < 1024; ++t)
            top();
        for (int k = 0; rows.size() < kRows; ++k)
            child(k % 1024);
        break;
    }
    return rows;
}

QString keyOf(int row) {
    return QStringLiteral("R%1").arg(row);
}
QStringList textsOf(int row) {
    QStringList texts;
    for (int c = 1; c <= kColumns; ++c)
        texts << QStringLiteral("Cell %1.%2").arg(row).arg(c);
    return texts;
}

struct Result {
    double load = 0, byKey = 0, byPosition = 0, expand = 0, clear = 0;
    double bytesPerRow = 0, keyBytesPerRow = 0;
    double total() const { return load + byKey + byPosition + expand + clear; }
};
std::map<std::pair<Shape, bool>, Result> results; // (shape, is Qt)

void report(benchmark::State &state, Shape shape, bool qt, const Result &r) {
    results[{shape, qt}] = r;
    state.SetIterationTime(r.total() / 1000.0);
    state.counters["load_ms"] = r.load;
    state.counters["key_ms"] = r.byKey;
    state.counters["pos_ms"] = r.byPosition;
    state.counters["expand_ms"] = r.expand;
    state.counters["clear_ms"] = r.clear;
    state.counters["bytes_per_row"] = r.bytesPerRow + r.keyBytesPerRow;
}

void BM_lsNodes(benchmark::State &state, Shape shape) {
    const std::vector<RowPlan> rows = plan(shape);
    std::vector<QVariant> keys;
    std::vector<QStringList> texts;
    for (int i = 0; i < static_cast<int>(rows.size()); ++i) {
        keys.emplace_back(keyOf(i));
        texts.push_back(textsOf(i));
    }
    for (auto _ : state) {
        Result r;
        lsNodes nodes;
        const size_t before = heapInUse();
        r.load = timed([&] {
            for (size_t i = 0; i < rows.size(); ++i) {
                const RowPlan &row = rows[i];
                const QVariant relative = row.parent >= 0        ? keys[size_t(row.parent)]
                                          : row.previousTop >= 0 ? keys[size_t(row.previousTop)]
                                                                 : QVariant();
                const lsNodePtr node =
                    nodes.Add(relative, row.parent >= 0 ? lsChild : lsNext, keys[i], texts[i][0]);
                for (int c = 0; c < kColumns; ++c)
                    node->Cells()->Add(texts[i][c], static_cast<qint16>(c + 1));
            }
        });
        r.bytesPerRow = double(heapInUse() - before) / double(rows.size());
        r.byKey = timed([&] {
            for (const QVariant &key : keys)
                benchmark::DoNotOptimize(nodes.Item(key));
        });
        r.byPosition = timed([&] {
            for (qint32 i = 1; i <= nodes.Count(); ++i)
                benchmark::DoNotOptimize(nodes.Item(i));
        });
        std::vector<lsNodePtr> tops;
        for (lsNodePtr n = nodes.Root(); n; n = n->NextSibling())
            tops.push_back(n);
        r.expand = timed([&] {
            for (const lsNodePtr &n : tops)
                nodes.setExpanded(n, false);
            for (const lsNodePtr &n : tops)
                nodes.setExpanded(n, true);
        });
        tops.clear();
        r.clear = timed([&] { nodes.Clear(); });
        report(state, shape, false, r);
    }
}

void BM_QTreeWidget(benchmark::State &state, Shape shape) {
    const std::vector<RowPlan> rows = plan(shape);
    std::vector<QString> keys;
    std::vector<QStringList> texts;
    for (int i = 0; i < static_cast<int>(rows.size()); ++i) {
        keys.push_back(keyOf(i));
        texts.push_back(textsOf(i));
    }
    for (auto _ : state) {
        Result r;
        std::vector<QTreeWidgetItem *> items(rows.size());
        const size_t before = heapInUse();
        QTreeWidget tree;
        tree.setColumnCount(kColumns);
        QHash<QString, QTreeWidgetItem *> byKey;
        size_t afterItems = 0;
        r.load = timed([&] {
            for (size_t i = 0; i < rows.size(); ++i) {
                const RowPlan &row = rows[i];
                items[i] = row.parent >= 0
                               ? new QTreeWidgetItem(items[size_t(row.parent)], texts[i])
                               : new QTreeWidgetItem(&tree, texts[i]);
            }
            afterItems = heapInUse();
            // Our collection keys rows without regard to case; a host of QTreeWidget would keep
            // such a map beside it.
            byKey.reserve(static_cast<qsizetype>(rows.size()));
            for (size_t i = 0; i < rows.size(); ++i)
                byKey.insert(keys[i].toCaseFolded(), items[i]);
        });
        r.bytesPerRow = double(afterItems - before) / double(rows.size());
        r.keyBytesPerRow = double(heapInUse() - afterItems) / double(rows.size());
        r.byKey = timed([&] {
            for (const QString &key : keys)
                benchmark::DoNotOptimize(byKey.value(key.toCaseFolded()));
        });
        // QTreeWidget has no position in tree order; walking it in that order is the nearest.
        r.byPosition = timed([&] {
            for (QTreeWidgetItemIterator it(&tree); *it; ++it)
                benchmark::DoNotOptimize(*it);
        });
        r.expand = timed([&] {
            for (int t = 0; t < tree.topLevelItemCount(); ++t)
                tree.topLevelItem(t)->setExpanded(false);
            for (int t = 0; t < tree.topLevelItemCount(); ++t)
                tree.topLevelItem(t)->setExpanded(true);
        });
        r.clear = timed([&] {
            byKey.clear();
            tree.clear();
        });
        report(state, shape, true, r);
    }
}

void printTable() {
    std::printf("\n| shape | operation | lsNodes ms | QTreeWidget ms | ours/Qt |\n"
                "|---|---|---:|---:|---:|\n");
    for (Shape shape : {Shape::Flat, Shape::DepthFirst, Shape::BreadthFirst}) {
        const Result &ours = results[{shape, false}];
        const Result &qt = results[{shape, true}];
        const std::pair<const char *, double Result::*> rows[] = {
            {"bulk load", &Result::load},
            {"Item by key", &Result::byKey},
            {"Item by position", &Result::byPosition},
            {"collapse + expand tops", &Result::expand},
            {"Clear", &Result::clear},
        };
        for (const auto &[name, field] : rows)
            std::printf("| %s | %s | %.1f | %.1f | %.1f |\n", shapeName(shape), name, ours.*field,
                        qt.*field, ours.*field / qt.*field);
        std::printf("| %s | **total** | %.1f | %.1f | **%.1f** |\n", shapeName(shape), ours.total(),
                    qt.total(), ours.total() / qt.total());
    }
    std::printf("\n| shape | lsNodes bytes/row | QTreeWidget bytes/row | + key map bytes/row |\n"
                "|---|---:|---:|---:|\n");
    for (Shape shape : {Shape::Flat, Shape::DepthFirst, Shape::BreadthFirst}) {
        const Result &ours = results[{shape, false}];
        const Result &qt = results[{shape, true}];
        std::printf("| %s | %.0f | %.0f | %.0f |\n", shapeName(shape), ours.bytesPerRow,
                    qt.bytesPerRow, qt.keyBytesPerRow);
    }
}

} // namespace

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    for (Shape shape : {Shape::Flat, Shape::DepthFirst, Shape::BreadthFirst}) {
        const std::string name = shapeName(shape);
        benchmark::RegisterBenchmark(("lsNodes/" + name).c_str(), BM_lsNodes, shape)
            ->Iterations(1)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark(("QTreeWidget/" + name).c_str(), BM_QTreeWidget, shape)
            ->Iterations(1)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    printTable();
    return 0;
}
