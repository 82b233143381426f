#pragma once
// Reads a directory tree into a DemoTable: Name (with a folder or file picture), Size, Type and
// Modified. Hidden entries are left out. Shallow levels are read completely before deeper ones, so
// a large tree is cut at its depths rather than in one corner. Folders come before files, each
// sorted by name.

#include "DemoTable.h"

#include <QFileInfo>

class DirectoryReader {
public:
    // At most as many rows as the control holds (its row numbers are 16-bit).
    explicit DirectoryReader(int maxDepth = 4, int maxRows = 32767);

    // The entries under `root` (not `root` itself), keyed by their path relative to it. When
    // `found` is given it gets how many entries the reader came across, which is more than the
    // rows when the row limit cut the tree (see read()).
    DemoTable read(const QString &root, qsizetype *found = nullptr) const;

    // The status bar's account of a read: how many entries are shown, of how many found.
    static QString summary(qsizetype shown, qsizetype found, qint64 milliseconds);

    // "0 B", "512 B", "1.5 KB", "12.3 MB"... in powers of 1024.
    static QString humanSize(qint64 bytes);

private:
    QString typeName(const QFileInfo &info) const;

    int m_maxDepth;
    int m_maxRows;
};
