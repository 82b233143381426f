#pragma once
// Helpers shared by the benchmarks: heap bytes in use, wall-clock milliseconds, the application,
// Qt's rows at our row height, and running the registered benchmarks.

#include <QApplication>
#include <QFont>
#include <QStyledItemDelegate>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstddef>
#include <malloc.h>

// Bytes the allocator has handed out and not yet taken back.
inline size_t heapInUse() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

// Keeps freed heap memory in the process. Each case loads into a heap that earlier runs freed;
// whether glibc hands that memory back to the system in between (and every page is faulted in
// again) depends on the order of the last frees, not on the list under test. The thresholds are
// fixed where glibc's own sliding ones end up once large blocks have been freed (large blocks
// stay in the heap, which is trimmed only past twice that), so every run of every side loads
// into a warm heap.
inline void keepHeapWarm() {
    constexpr int kLargest = 32 * 1024 * 1024;
    mallopt(M_MMAP_THRESHOLD, kLargest);
    mallopt(M_TRIM_THRESHOLD, 2 * kLargest);
}

// Milliseconds taken by `work`.
template <class Work> double timed(Work &&work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

// The application a benchmark runs in: a warm heap, the offscreen platform, and the control's
// default font (DejaVu Sans 8 pt) for Qt's views too, so both sides draw the same text.
class BenchApplication : public QApplication {
public:
    BenchApplication(int &argc, char **argv) : QApplication(prepared(argc), argv) {
        QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 8));
    }

private:
    static int &prepared(int &argc) {
        keepHeapWarm();
        qputenv("QT_QPA_PLATFORM", "offscreen");
        return argc;
    }
};

// Gives a Qt view's rows our row height, so that both sides show the same rows.
class RowHeightDelegate : public QStyledItemDelegate {
public:
    RowHeightDelegate(int height, QObject *parent)
        : QStyledItemDelegate(parent), m_height(height) {}
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override {
        return {QStyledItemDelegate::sizeHint(option, index).width(), m_height};
    }

private:
    int m_height;
};

// Runs the benchmarks registered so far with the command line's options; false when an option
// was not understood.
inline bool runBenchmarks(int &argc, char **argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return false;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return true;
}
