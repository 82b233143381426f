#pragma once
// The one QApplication of a fuzz target that needs widgets, on the off-screen platform.

class QApplication;

// Made on first use and never destroyed: Qt's own globals go before static objects at exit.
QApplication &fuzzApplication();
