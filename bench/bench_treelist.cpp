// The control against Qt's item views, in one run: bulk loading rows of four text cells with
// AutoRedraw and AutoSelectNew off, the heap bytes each row costs, one full frame of an 800x600
// control, and tearing the loaded control down. The yardsticks are a QTreeWidget and a QTreeView
// over a QStandardItemModel, loaded with the same rows and texts and shown at the same size.
// Loads and teardowns run once: the node collection renumbers every row on each add. Prints the
// ours/Qt ratios at the end.
#include "BenchSupport.h"
#include "vkTreeList.h"

#include <QApplication>
#include <QHeaderView>
#include <QImage>
#include <QStandardItemModel>
#include <QTreeView>
#include <QTreeWidget>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <malloc.h>
#include <map>
#include <memory>
#include <tuple>

namespace {

constexpr int kRows = 32767;
constexpr int kSmallRows = 4096;
constexpr int kColumns = 4;
constexpr int kWidth = 800;
constexpr int kHeight = 600;

enum class Shape { Flat, DepthFirst };
enum class Side { Ours, Widget, Model };

const char *shapeName(Shape shape) {
    return shape == Shape::Flat ? "flat" : "depth-first";
}

// One row in the order rows are added: its parent's row number, or -1 for a top-level row, which
// then follows the previous top-level row `previousTop` (-1 for the first).
struct RowPlan {
    int parent;
    int previousTop;
};

// flat: top-level rows only. depth-first: 32 top-level rows, each followed by its 32 children,
// each followed by its 31 grandchildren, stopped at `count` rows.
std::vector<RowPlan> plan(Shape shape, int count) {
    std::vector<RowPlan> rows;
    const auto full = [&] { return static_cast<int>(rows.size()) >= count; };
    int lastTop = -1;
    const auto add = [&](int parent) {
        rows.push_back({parent, parent < 0 ? lastTop : -1});
        const int row = static_cast<int>(rows.size()) - 1;
        if (parent < 0)
            lastTop = row;
        return row;
    };
    if (shape == Shape::Flat) {
        while (!full())
            add(-1);
        return rows;
    }
    for (int t = 0; t < 32 && !full(); ++t) {
        const int top = add(-1);
        for (int c = 0; c < 32 && !full(); ++c) {
            const int middle = add(top);
            for (int g = 0; g < 31 && !full(); ++g)
                add(middle);
        }
    }
    return rows;
}

struct Rows {
    std::vector<RowPlan> plan;
    std::vector<QVariant> keys;
    std::vector<QStringList> texts;
};

Rows makeRows(Shape shape, int count) {
    Rows rows{plan(shape, count), {}, {}};
    for (int i = 0; i < static_cast<int>(rows.plan.size()); ++i) {
        rows.keys.emplace_back(QStringLiteral("R%1").arg(i));
        QStringList texts;
        for (int c = 1; c <= kColumns; ++c)
            texts << QStringLiteral("Cell %1.%2").arg(i).arg(c);
        rows.texts.push_back(texts);
    }
    return rows;
}

// --- The three lists, shown at 800x600 with four columns of equal widths -----------------------

struct Ours {
    HostContainer host;
    vkTreeList list{nullptr, &host};
};

struct ModelView {
    QStandardItemModel model;
    QTreeView view;
};

// Our control's column widths in pixels, which the Qt views copy.
int columnPixels(int column) {
    static const std::vector<int> widths = [] {
        Ours probe;
        probe.list.InitProperties();
        probe.list.setColumns(kColumns);
        std::vector<int> w;
        for (int c = 1; c <= kColumns; ++c)
            w.push_back(probe.list.headers()->at(1)->Cells()->at(c)->Width());
        return w;
    }();
    return widths[size_t(column)];
}

std::unique_ptr<Ours> newOurs() {
    auto ours = std::make_unique<Ours>();
    vkTreeList &list = ours->list;
    list.InitProperties();
    list.setColumns(kColumns);
    for (int c = 1; c <= kColumns; ++c)
        list.setHeaderCell(lslcData, 1, c, QStringLiteral("Column %1").arg(c));
    list.setAutoRedraw(false);
    list.setAutoSelectNew(false);
    list.resize(kWidth, kHeight);
    list.show();
    QApplication::processEvents();
    return ours;
}

void setUpView(QTreeView &view) {
    for (int c = 0; c < kColumns; ++c)
        view.header()->resizeSection(c, columnPixels(c));
    view.resize(kWidth, kHeight);
    view.show();
    QApplication::processEvents();
}

std::unique_ptr<QTreeWidget> newWidget() {
    auto tree = std::make_unique<QTreeWidget>();
    tree->setColumnCount(kColumns);
    tree->setHeaderLabels({"Column 1", "Column 2", "Column 3", "Column 4"});
    setUpView(*tree);
    return tree;
}

std::unique_ptr<ModelView> newModelView() {
    auto mv = std::make_unique<ModelView>();
    mv->model.setHorizontalHeaderLabels({"Column 1", "Column 2", "Column 3", "Column 4"});
    mv->view.setModel(&mv->model);
    setUpView(mv->view);
    return mv;
}

void load(Ours &ours, const Rows &rows) {
    vkTreeList &list = ours.list;
    for (size_t i = 0; i < rows.plan.size(); ++i) {
        const RowPlan &row = rows.plan[i];
        const QVariant relative = row.parent >= 0        ? rows.keys[size_t(row.parent)]
                                  : row.previousTop >= 0 ? rows.keys[size_t(row.previousTop)]
                                                         : emptyText();
        const qint16 index = list.AddItem(relative, row.parent >= 0 ? lsChild : lsNext,
                                          rows.keys[i], rows.texts[i][0]);
        for (int c = 2; c <= kColumns; ++c)
            list.setListCell(lslcData, index, c, rows.texts[i][c - 1]);
    }
}

void load(QTreeWidget &tree, const Rows &rows) {
    std::vector<QTreeWidgetItem *> items(rows.plan.size());
    for (size_t i = 0; i < rows.plan.size(); ++i) {
        const int parent = rows.plan[i].parent;
        QTreeWidgetItem *item =
            parent >= 0 ? new QTreeWidgetItem(items[size_t(parent)]) : new QTreeWidgetItem(&tree);
        for (int c = 0; c < kColumns; ++c)
            item->setText(c, rows.texts[i][c]);
        items[i] = item;
    }
}

void load(ModelView &mv, const Rows &rows) {
    std::vector<QStandardItem *> items(rows.plan.size());
    for (size_t i = 0; i < rows.plan.size(); ++i) {
        QList<QStandardItem *> cells;
        for (int c = 0; c < kColumns; ++c)
            cells << new QStandardItem(rows.texts[i][c]);
        const int parent = rows.plan[i].parent;
        (parent >= 0 ? items[size_t(parent)] : mv.model.invisibleRootItem())->appendRow(cells);
        items[i] = cells[0];
    }
}

// --- Loaded lists, kept from the load to the frames and the teardown ---------------------------

using Case = std::pair<Shape, int>; // shape, rows
std::map<Case, std::unique_ptr<Ours>> oursLoaded;
std::map<Case, std::unique_ptr<QTreeWidget>> widgetLoaded;
std::map<Case, std::unique_ptr<ModelView>> modelLoaded;

struct Measured {
    double loadMs = 0, bytesPerRow = 0, firstFrameMs = 0, frameMs = 0, destroyMs = 0;
    int rowsDrawn = 0;
};
std::map<std::tuple<Side, Shape, int>, Measured> results;

// Makes a list of `side`, loads the case's rows into it (timed when `measured` is given) and
// keeps it.
template <class List, class Make>
List &loaded(std::map<Case, std::unique_ptr<List>> &kept, Make make, const Case &c,
             Measured *measured = nullptr) {
    std::unique_ptr<List> &list = kept[c];
    if (list)
        return *list;
    list = make();
    const size_t before = heapInUse();
    // The texts and keys are released after the load, so the strings the list shares with them
    // count for the list.
    auto rows = std::make_unique<Rows>(makeRows(c.first, c.second));
    const double ms = timed([&] { load(*list, *rows); });
    const double count = double(rows->plan.size());
    rows.reset();
    if (measured) {
        measured->loadMs = ms;
        measured->bytesPerRow = double(heapInUse() - before) / count;
    }
    return *list;
}

Ours &ours(const Case &c, Measured *m = nullptr) {
    return loaded(oursLoaded, newOurs, c, m);
}
QTreeWidget &widget(const Case &c, Measured *m = nullptr) {
    return loaded(widgetLoaded, newWidget, c, m);
}
ModelView &modelView(const Case &c, Measured *m = nullptr) {
    return loaded(modelLoaded, newModelView, c, m);
}

template <class List> double destroy(std::map<Case, std::unique_ptr<List>> &kept, const Case &c) {
    std::unique_ptr<List> list = std::move(kept[c]);
    kept.erase(c);
    return timed([&] { list.reset(); });
}

// Rows of a view that the frame shows (partly or wholly).
int rowsDrawn(const QTreeView &view) {
    int n = 0;
    for (QModelIndex i = view.indexAt(QPoint(1, 1));
         i.isValid() && view.visualRect(i).top() < view.viewport()->height();
         i = view.indexBelow(i))
        ++n;
    return n;
}

int rowsDrawn(const vkTreeList &list) {
    int n = 0;
    for (const lsNodePtr &row : *list.rows())
        n += row->Displayed() ? 1 : 0;
    return n;
}

// --- Benchmarks ---------------------------------------------------------------------------------

void BM_Load(benchmark::State &state, Side side, Case c) {
    for (auto _ : state) {
        Measured m;
        if (side == Side::Ours)
            ours(c, &m);
        else if (side == Side::Widget)
            widget(c, &m);
        else
            modelView(c, &m);
        state.SetIterationTime(m.loadMs / 1000.0);
        state.counters["bytes_per_row"] = m.bytesPerRow;
        Measured &kept = results[{side, c.first, c.second}];
        kept.loadMs = m.loadMs;
        kept.bytesPerRow = m.bytesPerRow;
    }
}

// A full frame: our control recomposes the frame and copies it to its drawing child; a Qt view
// renders its viewport (rows only; the header is another widget) into an image.
void BM_Frame(benchmark::State &state, Side side, Case c) {
    Measured &kept = results[{side, c.first, c.second}];
    QImage image;
    QTreeView *view = nullptr;
    vkTreeList *list = nullptr;
    if (side == Side::Ours) {
        list = &ours(c).list;
        if (!list->AutoRedraw()) {
            // Turning AutoRedraw back on after the load composes the first frame.
            kept.firstFrameMs = timed([&] { list->setAutoRedraw(true); });
            QApplication::processEvents();
        }
        kept.rowsDrawn = rowsDrawn(*list);
    } else {
        view = side == Side::Widget ? static_cast<QTreeView *>(&widget(c)) : &modelView(c).view;
        image = QImage(view->viewport()->size(), QImage::Format_RGB32);
        if (kept.firstFrameMs == 0) {
            // The first frame after a load lays out every row.
            kept.firstFrameMs = timed([&] { view->viewport()->render(&image); });
            QApplication::processEvents();
        }
        kept.rowsDrawn = rowsDrawn(*view);
    }
    const auto start = std::chrono::steady_clock::now();
    for (auto _ : state) {
        if (list)
            list->Refresh();
        else
            view->viewport()->render(&image);
    }
    kept.frameMs =
        std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
            .count() /
        double(state.iterations());
    state.counters["rows_drawn"] = kept.rowsDrawn;
}

void BM_Destroy(benchmark::State &state, Side side, Case c) {
    if (side == Side::Ours)
        ours(c);
    else if (side == Side::Widget)
        widget(c);
    else
        modelView(c);
    for (auto _ : state) {
        const double ms = side == Side::Ours     ? destroy(oursLoaded, c)
                          : side == Side::Widget ? destroy(widgetLoaded, c)
                                                 : destroy(modelLoaded, c);
        state.SetIterationTime(ms / 1000.0);
        results[{side, c.first, c.second}].destroyMs = ms;
    }
}

const Case kCases[] = {{Shape::Flat, kSmallRows},
                       {Shape::DepthFirst, kSmallRows},
                       {Shape::Flat, kRows},
                       {Shape::DepthFirst, kRows}};
const std::pair<Side, const char *> kSides[] = {
    {Side::Ours, "vkTreeList"}, {Side::Widget, "QTreeWidget"}, {Side::Model, "QTreeView+model"}};

void registerAll() {
    const auto name = [](const char *what, const char *side, const Case &c) {
        return std::string(what) + "/" + side + "/" + shapeName(c.first) + "/" +
               std::to_string(c.second);
    };
    for (const Case &c : kCases)
        for (const auto &[side, sideName] : kSides)
            benchmark::RegisterBenchmark(name("load", sideName, c).c_str(), BM_Load, side, c)
                ->Iterations(1)
                ->UseManualTime()
                ->Unit(benchmark::kMillisecond);
    for (Shape shape : {Shape::Flat, Shape::DepthFirst})
        for (const auto &[side, sideName] : kSides) {
            const Case c{shape, kRows};
            benchmark::RegisterBenchmark(name("frame", sideName, c).c_str(), BM_Frame, side, c)
                ->Unit(benchmark::kMillisecond);
        }
    for (const Case &c : kCases)
        for (const auto &[side, sideName] : kSides)
            benchmark::RegisterBenchmark(name("destroy", sideName, c).c_str(), BM_Destroy, side, c)
                ->Iterations(1)
                ->UseManualTime()
                ->Unit(benchmark::kMillisecond);
}

double ratio(double ours, double qt) {
    return qt > 0 ? ours / qt : 0;
}

void printTables() {
    const auto get = [](Side side, const Case &c) { return results[{side, c.first, c.second}]; };
    std::printf("\n| shape | rows | operation | vkTreeList ms | QTreeWidget ms | ours/Qt | "
                "QTreeView+model ms |\n|---|---:|---|---:|---:|---:|---:|\n");
    const std::pair<const char *, double Measured::*> operations[] = {
        {"bulk load", &Measured::loadMs},
        {"first frame", &Measured::firstFrameMs},
        {"full frame", &Measured::frameMs},
        {"destroy", &Measured::destroyMs}};
    for (const Case &c : kCases)
        for (const auto &[operation, field] : operations) {
            const Measured o = get(Side::Ours, c), w = get(Side::Widget, c),
                           m = get(Side::Model, c);
            if (o.*field == 0 && w.*field == 0)
                continue;
            std::printf("| %s | %d | %s | %.2f | %.2f | **%.1f** | %.2f |\n", shapeName(c.first),
                        c.second, operation, o.*field, w.*field, ratio(o.*field, w.*field),
                        m.*field);
        }
    std::printf("\n| shape | rows | vkTreeList bytes/row | QTreeWidget bytes/row | ours/Qt | "
                "QStandardItemModel bytes/row |\n|---|---:|---:|---:|---:|---:|\n");
    for (const Case &c : kCases) {
        const Measured o = get(Side::Ours, c), w = get(Side::Widget, c), m = get(Side::Model, c);
        if (o.bytesPerRow == 0 && w.bytesPerRow == 0)
            continue;
        std::printf("| %s | %d | %.0f | %.0f | %.1f | %.0f |\n", shapeName(c.first), c.second,
                    o.bytesPerRow, w.bytesPerRow, ratio(o.bytesPerRow, w.bytesPerRow),
                    m.bytesPerRow);
    }
    std::printf("\nRows on screen in the frames (vkTreeList / QTreeWidget / QTreeView):");
    for (Shape shape : {Shape::Flat, Shape::DepthFirst}) {
        const Case c{shape, kRows};
        std::printf(" %s %d / %d / %d;", shapeName(shape), get(Side::Ours, c).rowsDrawn,
                    get(Side::Widget, c).rowsDrawn, get(Side::Model, c).rowsDrawn);
    }
    std::printf("\n");
}

} // namespace

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    // The Qt views draw in the control's default font, DejaVu Sans 8 pt.
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 8));
    registerAll();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    printTables();
    // Lists a filtered run left loaded go away here, untimed.
    oursLoaded.clear();
    widgetLoaded.clear();
    modelLoaded.clear();
    return 0;
}
