// vkTreeList: the two members that serve support and tuning rather than users.
// ComponentVersion says which build of the component runs; Test times the three ways a host can
// walk every row (the collection's own walk, iteration, and Item by position), each drawing the
// rows' texts off screen as a frame would.

#include "vkTreeList.h"

#include "ComponentInfo.h"
#include "NumberPicture.h"
#include "PictureBox.h"
#include "SystemTimer.h"
#include "TreeListState.h"

#include <QGuiApplication>
#include <QMessageBox>

namespace {

constexpr int Repetitions = 100;

// The timer readings around one pass's repetitions.
struct PassTimes {
    float start;
    float end;
};

QString reportLine(const QString &title, PassTimes times) {
    // Kept single precision, as the readings are.
    const float elapsed = times.end - times.start;
    return title + formatNumber(times.start, QStringLiteral("0.######0 sec ")) +
           formatNumber(times.end, QStringLiteral("0.######0 sec ")) +
           formatNumber(elapsed, QStringLiteral("0.##0 sec ")) + QStringLiteral("\r\n");
}

// A box nobody can answer would wait for ever: none without a screen, or when the host says so.
bool messageBoxesPossible(const HostContainer &host) {
    const QString platform = QGuiApplication::platformName();
    return host.MessageBoxes() && platform != u"offscreen" && platform != u"minimal";
}

} // namespace

QVariant vkTreeList::ComponentVersion() {
    const QString text = QString::fromLatin1(ComponentInfo::module) + QStringLiteral(".ocx|") +
                         QString::number(ComponentInfo::major) + u'.' +
                         formatNumber(ComponentInfo::minor, QStringLiteral("00")) + u'.' +
                         formatNumber(ComponentInfo::revision, QStringLiteral("0###")) + u'|' +
                         QString::fromLatin1(ComponentInfo::comments) + u'|';
    d->settings.componentVersion = text;
    return text;
}

void vkTreeList::setComponentVersion(const QVariant &) {
    // Read-only in effect, on purpose: what a host or a saved form puts is dropped.
    notify(QStringLiteral("ComponentVersion"));
}

QVariant vkTreeList::Test(bool &List) {
    Q_UNUSED(List); // accepted for the hosts that pass it; the report has one form
    d->picOut->Cls();
    d->host->DoEvents();
    OffScreenDC dc;
    dc.Initialize(d->picOut->screenImage(), d->picOut->ScaleWidth(), d->picOut->ScaleHeight(),
                  d->picOut->BackColor(), d->picOut->ForeColor(), d->picOut->Font());

    // Each pass reads the timer right before its first repetition and right after its last, so
    // the drawing set-up and the screen copy between passes are not timed.
    const auto timed = [&](auto &&walk) {
        PassTimes times{secondsSinceMidnight(), 0.0f};
        for (int repetition = 0; repetition < Repetitions; ++repetition) {
            qint32 y = 0;
            walk([&](const lsNodePtr &node) {
                dc.DrawText(0, y, node->Text());
                y += d->settings.rowHeight;
            });
        }
        times.end = secondsSinceMidnight();
        return times;
    };

    // The collection's own walk, with its default: rows inside closed branches are skipped.
    const PassTimes walked = timed([&](auto &&visit) {
        for (lsNodePtr node = d->rows->SetFirstNode(); node; node = d->rows->GetNextNode())
            visit(node);
    });
    dc.BlastToScreen();
    d->picOut->Cls();
    const PassTimes iterated = timed([&](auto &&visit) {
        for (const lsNodePtr &node : *d->rows)
            visit(node);
    });
    const PassTimes indexed = timed([&](auto &&visit) {
        for (qint32 i = 1; i <= d->rows->Count(); ++i)
            visit(d->rows->Item(i));
    });

    const QString report =
        reportLine(QStringLiteral("Iterating using GetNextNode(): "), walked) +
        reportLine(QStringLiteral("Iterating using 'For Each Node': "), iterated) +
        reportLine(QStringLiteral("Iterating using 'For I=1 to Count': "), indexed);
    if (messageBoxesPossible(*d->host))
        QMessageBox::information(this, QString::fromLatin1(ComponentInfo::module), report);
    return report;
}

QVariant vkTreeList::Test() {
    bool list = false;
    return Test(list);
}
