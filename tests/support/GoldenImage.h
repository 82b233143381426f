#pragma once
// Compares an image with a reference PNG under the golden folder. On a mismatch the actual image
// and a diff (differing pixels red) are written to the artifact folder and the test fails;
// VKTL_UPDATE_GOLDEN=1 rewrites the reference instead.

#include <QImage>
#include <QString>

void expectMatchesGolden(const QImage &actual, const QString &name);
