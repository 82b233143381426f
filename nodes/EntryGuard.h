#pragma once
// The one place where errors stop on their way back into Qt. Qt calls the control from its event
// loop (paint, resize, a scroll bar's value, focus, and later mouse, keys and timers); nothing in
// Qt can catch what such a call throws, so every one of them runs through `run`. A failed call is
// logged under the "vktreelist" category and handed to the owner's reporter (the control turns it
// into its OnError signal); the program goes on and the control keeps its last good frame.
//
// Host calls do not pass through here: a host call that fails throws to its caller.

#include <QLoggingCategory>
#include <QString>
#include <exception>
#include <functional>

Q_DECLARE_LOGGING_CATEGORY(lcTreeList)

class EntryGuard {
public:
    // Receives the error number and text of every call that failed.
    using Reporter = std::function<void(qint32 Number, const QString &Description)>;

    explicit EntryGuard(Reporter reporter) : m_reporter(std::move(reporter)) {}

    // Runs `call`; an exception of any kind is reported instead of leaving. True when the call
    // returned normally. `entry` names the Qt entry point in the log.
    template <typename Call> bool run(const char *entry, Call &&call) noexcept {
        try {
            call();
            return true;
        } catch (...) {
            report(entry, std::current_exception());
            return false;
        }
    }

    // Number of failed calls so far.
    qint64 failures() const { return m_failures; }

private:
    void report(const char *entry, std::exception_ptr error) noexcept;

    Reporter m_reporter;
    qint64 m_failures = 0;
};
