#pragma once
// Marks what the shared library exports: the object model a host programs against. Everything
// else is compiled with hidden visibility and stays inside the library.

#include <QtGlobal>

#define VKTL_EXPORT Q_DECL_EXPORT
