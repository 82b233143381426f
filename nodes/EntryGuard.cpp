#include "EntryGuard.h"

#include "TreeListError.h"

#include <new>

Q_LOGGING_CATEGORY(lcTreeList, "vktreelist")

namespace {

// The number and text a host sees for an error: the component's own errors keep theirs, anything
// else is told as the run-time errors a host knows.
std::pair<qint32, QString> describe(std::exception_ptr error) {
    try {
        std::rethrow_exception(error);
    } catch (const TreeListError &e) {
        return {e.number(), e.description()};
    } catch (const std::bad_alloc &) {
        return {TreeListError::OutOfMemory,
                TreeListError::standardText(TreeListError::OutOfMemory)};
    } catch (const std::exception &e) {
        return {TreeListError::InternalError,
                TreeListError::standardText(TreeListError::InternalError) + QStringLiteral(": ") +
                    QString::fromLocal8Bit(e.what())};
    } catch (...) {
        return {TreeListError::InternalError,
                TreeListError::standardText(TreeListError::InternalError)};
    }
}

} // namespace

void EntryGuard::report(const char *entry, std::exception_ptr error) noexcept {
    ++m_failures;
    try {
        const auto [number, text] = describe(error);
        qCWarning(lcTreeList, "error %d (%s) in %s", number, qUtf8Printable(text), entry);
        if (m_reporter)
            m_reporter(number, text);
    } catch (...) {
        // The host's own handler failed while hearing of an error: there is nobody left to tell.
        qCCritical(lcTreeList, "the error handler failed in %s", entry);
    }
}
