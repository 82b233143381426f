#include "TreeInvariants.h"

#include "lsNodes.h"

#include <cstdio>
#include <cstdlib>

namespace {

[[noreturn]] void broken(const char *what, qint32 position) {
    std::fprintf(stderr, "tree invariant broken at row %d: %s\n", position, what);
    std::abort();
}

void require(bool holds, const char *what, qint32 position) {
    if (!holds)
        broken(what, position);
}

// The row after `row` in pre-order, through the links only.
lsNodePtr nextInPreOrder(const lsNodePtr &row) {
    if (row->Child())
        return row->Child();
    for (lsNodePtr up = row; up; up = up->Parent())
        if (up->NextSibling())
            return up->NextSibling();
    return nullptr;
}

void checkRowLinks(const lsNodePtr &row, qint32 i) {
    const lsNodePtr parent = row->Parent();
    require(!row->PrevSibling() || row->PrevSibling()->NextSibling() == row,
            "previous sibling links back", i);
    if (const lsNodePtr &next = row->NextSibling()) {
        require(next->PrevSibling() == row, "next sibling links back", i);
        require(next->Parent() == parent, "siblings share their parent", i);
    }
    require(!row->Child() == !row->LastChild(), "first and last child set together", i);
    if (row->Child()) {
        require(row->Child()->Parent() == row, "first child's parent", i);
        require(!row->Child()->PrevSibling(), "first child has no previous sibling", i);
        require(row->LastChild()->Parent() == row, "last child's parent", i);
        require(!row->LastChild()->NextSibling(), "last child has no next sibling", i);
    }
}

} // namespace

void checkTree(const lsNodes &nodes) {
    const qint32 count = nodes.Count();
    require((count == 0) == !nodes.Root(), "Root is set exactly when there are rows", 0);
    lsNodePtr walked = nodes.Root();
    lsNodePtr last;
    for (qint32 i = 1; i <= count; ++i) {
        const lsNodePtr row = nodes.at(i);
        require(row != nullptr, "a row at every position up to Count", i);
        require(row == walked, "positions follow the links in pre-order", i);
        require(row->Index() == i, "Index is the position", i);
        checkRowLinks(row, i);
        last = row;
        walked = nextInPreOrder(row);
    }
    require(walked == nullptr, "no row reachable beyond Count", count + 1);
    require(nodes.Tail() == last, "Tail is the last row", count);
    qint32 iterated = 0;
    for (const lsNodePtr &row : nodes) {
        ++iterated;
        require(row == nodes.at(iterated), "iteration in position order", iterated);
    }
    require(iterated == count, "iteration visits Count rows", iterated);
}

void checkVisibility(const lsNodes &nodes) {
    for (qint32 i = 1; i <= nodes.Count(); ++i) {
        const lsNodePtr row = nodes.at(i);
        if (!row) // the last positions of a collection that counted a row it did not store
            continue;
        const lsNodePtr parent = row->Parent();
        require(row->Visible() == (!parent || (parent->Visible() && parent->Expanded())),
                "Visible as the branches above say", i);
    }
}

void checkLinks(const lsNodes &nodes) {
    for (qint32 i = 1; i <= nodes.Count(); ++i)
        if (const lsNodePtr row = nodes.at(i))
            checkRowLinks(row, i);
}
