#pragma once
// Numbers formatted under a picture of digit places, the way report and version texts are
// written: "0" is a digit always shown, "#" a digit shown only when significant. Text before
// and after the digit places is copied as it stands ("0.##0 sec " gives "1.250 sec ").

#include <QString>

// Formats `value` under `picture`. The fraction is rounded (halves away from zero) to as many
// digits as the picture has places after its point; digits up to the rightmost "0" after the
// point are always shown, later ones only when not trailing zeros. Before the point every
// digit of the number is shown, padded with zeros up to the leftmost "0"; a number below one
// under a picture with no "0" there shows no integer digit. A picture with a point shows it
// even when no fraction digit follows.
QString formatNumber(double value, const QString &picture);
