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

qsizetype itemsIn(const QString &folder) {
    return QDir(folder, QString(), QDir::NoSort, EntryFilter).count();
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

QString DirectoryReader::summary(qsizetype shown, qsizetype found, qint64 milliseconds) {
    if (found > shown)
        return QStringLiteral("Read the first %L1 of %L2 entries found in %3 ms")
            .arg(shown)
            .arg(found)
            .arg(milliseconds);
    return QStringLiteral("Read %L1 entries in %2 ms").arg(shown).arg(milliseconds);
}

DemoTable DirectoryReader::read(const QString &root, qsizetype *found) const {
    const QDir base(root);
    QList<Entry> entries;
    QList<int> topLevel;
    // Past the row limit nothing more is read just to count: the total adds the entries cut from
    // the folder being listed and the entries of the folders still waiting to be listed, whose
    // counts the Size column needs anyway. What lies deeper in those folders is not counted, so
    // the total is exact when the limit hit the deepest level and a lower bound otherwise.
    qsizetype cut = 0;

    // Breadth first: a folder's entries are listed when the folder is taken from the queue.
    QQueue<std::pair<int, int>> pending; // (entry position or -1 for the root, depth)
    pending.enqueue({-1, 0});
    const auto folderOf = [&](int owner) {
        return owner < 0 ? base.absolutePath() : entries[owner].info.filePath();
    };
    while (!pending.isEmpty() && entries.size() < m_maxRows) {
        const auto [owner, depth] = pending.dequeue();
        const QFileInfoList listed = QDir(folderOf(owner)).entryInfoList(EntryFilter, EntryOrder);
        if (owner >= 0)
            entries[owner].itemCount = listed.size();
        for (qsizetype i = 0; i < listed.size(); ++i) {
            if (entries.size() >= m_maxRows) {
                cut = listed.size() - i;
                break;
            }
            const QFileInfo &info = listed[i];
            const int position = static_cast<int>(entries.size());
            entries.append(Entry{info, owner, {}, -1});
            (owner < 0 ? topLevel : entries[owner].children).append(position);
            if (descends(info) && depth + 1 < m_maxDepth)
                pending.enqueue({position, depth + 1});
        }
    }
    qsizetype total = entries.size() + cut;
    for (const auto &[owner, depth] : pending) {
        const qsizetype items = itemsIn(folderOf(owner));
        if (owner >= 0)
            entries[owner].itemCount = items;
        total += items;
    }
    if (found)
        *found = total;

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
            // Folders at the depth limit or past the row cap were not listed: count them.
            const qsizetype items =
                entry.itemCount >= 0 ? entry.itemCount : itemsIn(entry.info.filePath());
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
