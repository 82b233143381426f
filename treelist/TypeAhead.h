#pragma once
// Type-ahead: printable keys typed within the platform's keyboard-input interval make a text, and
// the next visible row whose first cell starts with it (in any case) is the one to go to. A new
// text starts after the current row; a text typed on refines the current row's match.

#include "lsNodes.h"

#include <QElapsedTimer>
#include <QString>

class TypeAhead {
public:
    // Adds what a key typed to the text (a text of its own after the interval, or when nothing
    // printable was typed) and finds the row to go to, or null.
    lsNodePtr typed(const QString &text, const lsNodes &rows, const lsNodePtr &current);

private:
    QString m_text;
    QElapsedTimer m_sinceLast;
};
