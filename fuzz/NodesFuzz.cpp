// The row collection under any sequence of operations: bytes decoded into adds with every
// relationship and kind of relative, duplicate and case-varied keys, removes, openings and
// closings, selection, clearing and walks. After each operation the collection must hold its
// invariants; the only exceptions allowed out are the documented errors.

#include "TreeInvariants.h"
#include "TreeListError.h"
#include "lsCells.h"
#include "lsNodes.h"

#include <cstdio>
#include <fuzzer/FuzzedDataProvider.h>

namespace {

constexpr qint32 MaxRows = 300; // enough for every shape, small enough to stay fast

// VKTL_FUZZ_TRACE=1 prints each operation, to read a finding.
const bool tracing = qEnvironmentVariableIsSet("VKTL_FUZZ_TRACE");

QString shown(const QVariant &value) {
    return QStringLiteral("%1(%2)").arg(QString::fromLatin1(value.typeName()), value.toString());
}

void trace(const char *op, const QString &detail = QString()) {
    if (tracing)
        std::fprintf(stderr, "%s %s\n", op, qPrintable(detail));
}

QVariant anyKey(FuzzedDataProvider &in) {
    switch (in.ConsumeIntegralInRange(0, 5)) {
    case 0:
        return emptyText();
    case 1:
        return QVariant();
    case 2:
        return QVariant(in.ConsumeIntegralInRange(-2, 40));
    case 3:
        return QStringLiteral("K%1").arg(in.ConsumeIntegralInRange(0, 40));
    default:
        return QStringLiteral("k%1").arg(in.ConsumeIntegralInRange(0, 40));
    }
}

QVariant anyRelative(FuzzedDataProvider &in, const lsNodes &nodes) {
    switch (in.ConsumeIntegralInRange(0, 4)) {
    case 0:
        return anyKey(in);
    case 1:
        return 0.5 + in.ConsumeIntegralInRange(0, nodes.Count() + 1);
    case 2:
        return QVariant(QVariantList{});
    default:
        return in.ConsumeIntegralInRange(-1, nodes.Count() + 2);
    }
}

void apply(FuzzedDataProvider &in, lsNodes &nodes) {
    const qint32 position = in.ConsumeIntegralInRange(0, nodes.Count() + 1);
    switch (in.ConsumeIntegralInRange(0, 11)) {
    case 0:
    case 1:
    case 2:
    case 3: {
        if (nodes.Count() >= MaxRows)
            return;
        qint32 relationship = in.ConsumeIntegralInRange(0, 6) - 1; // -1 and 5 name none
        const QVariant relative = anyRelative(in, nodes), key = anyKey(in);
        trace("Add",
              shown(relative) + QStringLiteral(" rel %1 key ").arg(relationship) + shown(key));
        const lsNodePtr row = nodes.Add(relative, relationship, key, QStringLiteral("r"));
        if (row)
            for (int c = in.ConsumeIntegralInRange(0, 2); c > 0; --c)
                row->Cells()->Add(QString(), qint16(c));
        break;
    }
    case 4: {
        const QVariant which = in.ConsumeBool() ? anyKey(in) : anyRelative(in, nodes);
        trace("Remove", shown(which));
        nodes.Remove(which);
        break;
    }
    case 5: {
        const bool open = in.ConsumeBool();
        trace("setExpanded", QStringLiteral("%1 %2").arg(position).arg(open));
        nodes.setExpanded(nodes.Item(position), open);
        break;
    }
    case 6:
        trace("Selected", QString::number(position));
        nodes.Selected(position, in.ConsumeIntegralInRange(-1, 3), in.ConsumeBool());
        break;
    case 7:
        if (in.ConsumeIntegralInRange(0, 7) == 0) {
            trace("Clear");
            nodes.Clear();
        }
        break;
    case 8: {
        trace("walk");
        const bool visibleOnly = in.ConsumeBool();
        qint32 steps = 0;
        for (lsNodePtr row = nodes.SetFirstNode(anyKey(in)); row && steps <= nodes.Count() + 1;
             row = nodes.GetNextNode(visibleOnly))
            ++steps;
        if (steps > nodes.Count() + 1) {
            std::fprintf(stderr, "a walk does not end\n");
            std::abort();
        }
        break;
    }
    case 9:
        trace("GetPrevNode", QString::number(position));
        nodes.GetPrevNode(nodes.Item(position), in.ConsumeBool());
        nodes.GetLastSibling(nodes.Item(position));
        break;
    case 10:
        trace("SetVisibility");
        nodes.SetVisibility(nodes.Root());
        checkVisibility(nodes);
        break;
    default:
        trace("FindPath", QString::number(position));
        nodes.FindPath(nodes.Item(position));
        nodes.ReIndex();
        break;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    FuzzedDataProvider in(data, size);
    lsNodes nodes;
    bool duplicateLinked = false; // a row linked without a position, as a duplicate key leaves
    while (in.remaining_bytes() > 0) {
        try {
            apply(in, nodes);
        } catch (const TreeListError &error) {
            // A documented failure (duplicate key, overflow...) reaches the caller as it should.
            trace("  error", QString::number(error.number()));
            duplicateLinked = duplicateLinked || error.number() == TreeListError::DuplicateKey;
        }
        if (nodes.Count() == 0)
            duplicateLinked = false;
        if (duplicateLinked) {
            checkLinks(nodes);
        } else {
            nodes.check();
            checkTree(nodes);
        }
    }
    return 0;
}
