#include "DirectoryReader.h"

#include <QDateTime>
#include <QDir>
#include <QMimeDatabase>
#include <QQueue>

namespace {

constexpr QDir::Filters EntryFilter = QDir::AllEntries | QDir::NoDotAndDotDot;
constexpr QDir::SortFlags EntryOrder = QDir::DirsFirst | QDir::Name | QDir::IgnoreCase;

// One entry found by the breadth-first pass, emitted in pre-order afterwards.
struct Entry {
    QFileInfo info;
    int parent = -1; // position in the entry list, -1 under the root
    QList<int> children;
    qsizetype itemCount = -1; // for a folder: its entries, -1 when unknown
};

bool descends(const QFileInfo &info) {
    return info.isDir() && !info.isSymLink();
}

} // namespace

DirectoryReader::DirectoryReader(int maxDepth, int maxRows)
    : m_maxDepth(maxDepth), m_maxRows(maxRows) {}

QString DirectoryReader::humanSize(qint64 bytes) {
    if (bytes < 1024)
        return QStringLiteral("%1 B").arg(bytes);
    static const char *const units[] = {"KB", "MB", "GB", "TB"};
    double value = static_cast<double>(bytes) / 1024.0;
    int unit = 0;
    while (value >= 1024.0 && unit < 3) {
        value /= 1024.0;
        ++unit;
    }
    return QStringLiteral("%1 %2").arg(value, 0, 'f', value < 10.0 ? 1 : 0).arg(units[unit]);
}

QString DirectoryReader::typeName(const QFileInfo &info) const {
    if (info.isSymLink())
        return info.isDir() ? QStringLiteral("Link to folder") : QStringLiteral("Link");
    if (info.isDir())
        return QStringLiteral("Folder");
    static const QMimeDatabase mimes;
    const QMimeType mime = mimes.mimeTypeForFile(info, QMimeDatabase::MatchExtension);
    if (!mime.isDefault())
        return mime.comment();
    if (info.isExecutable())
        return QStringLiteral("Program");
    return info.suffix().isEmpty() ? QStringLiteral("File")
                                   : QStringLiteral("%1 file").arg(info.suffix().toUpper());
}

DemoTable DirectoryReader::read(const QString &root) const {
    const QDir base(root);
    QList<Entry> entries;
    QList<int> topLevel;

    // Breadth first: a folder's entries are listed when the folder is taken from the queue.
    QQueue<std::pair<int, int>> pending; // (entry position or -1 for the root, depth)
    pending.enqueue({-1, 0});
    while (!pending.isEmpty() && entries.size() < m_maxRows) {
        const auto [owner, depth] = pending.dequeue();
        const QString path = owner < 0 ? base.absolutePath() : entries[owner].info.filePath();
        const QFileInfoList listed = QDir(path).entryInfoList(EntryFilter, EntryOrder);
        if (owner >= 0)
            entries[owner].itemCount = listed.size();
        for (const QFileInfo &info : listed) {
            if (entries.size() >= m_maxRows)
                break;
            const int position = static_cast<int>(entries.size());
            entries.append(Entry{info, owner, {}, -1});
            (owner < 0 ? topLevel : entries[owner].children).append(position);
            if (descends(info) && depth + 1 < m_maxDepth)
                pending.enqueue({position, depth + 1});
        }
    }

    DemoTable table;
    table.caption = QDir::toNativeSeparators(base.absolutePath());
    using Editing = DemoTable::Editing;
    table.columns = {
        // Only the shown names edit: the files on disk are never touched.
        {QStringLiteral("Name"), QString(), lsAlignLeftJustify, 200, 300, Editing::Text, {}},
        {QStringLiteral("Size"),
         QStringLiteral("bytes / items"),
         lsAlignRightJustify,
         80,
         110,
         Editing::None,
         {}},
        {QStringLiteral("Type"), QString(), lsAlignLeftJustify, 110, 220, Editing::None, {}},
        {QStringLiteral("Modified"),
         QStringLiteral("local time"),
         lsAlignLeftJustify,
         120,
         150,
         Editing::None,
         {}},
    };

    // Pre-order, so that every row follows its parent.
    QList<QString> keys(entries.size());
    QList<int> stack(topLevel.rbegin(), topLevel.rend());
    while (!stack.isEmpty()) {
        const int position = stack.takeLast();
        const Entry &entry = entries[position];
        const bool folder = entry.info.isDir();
        QString size;
        if (!folder) {
            size = humanSize(entry.info.size());
        } else if (!entry.info.isSymLink()) {
            // Folders below the depth limit or past the row cap were not listed: count them.
            const qsizetype items =
                entry.itemCount >= 0
                    ? entry.itemCount
                    : QDir(entry.info.filePath(), QString(), QDir::NoSort, EntryFilter).count();
            size = items == 1 ? QStringLiteral("1 item") : QStringLiteral("%1 items").arg(items);
        }
        const QString modified =
            entry.info.lastModified().toString(QStringLiteral("yyyy-MM-dd HH:mm"));
        const QString parentKey = entry.parent < 0 ? QString() : keys[entry.parent];
        keys[position] =
            table.addRow(parentKey, base.relativeFilePath(entry.info.filePath()),
                         folder ? QStringLiteral("folder") : QStringLiteral("file"),
                         {entry.info.fileName(), size, typeName(entry.info), modified});
        for (auto child = entry.children.rbegin(); child != entry.children.rend(); ++child)
            stack.append(*child);
    }
    return table;
}
