#pragma once
// The standard unit conversion of a screen of a given resolution (96 pixels per inch by default).
// An unknown scale mode raises the invalid-argument TreeListError.

#include "ScaleSource.h"

// Converts a distance between scale modes at the given pixels per inch; `vertical` selects the
// character height (240 twips) instead of the character width (120 twips) for vbCharacters.
double convertScale(double value, qint16 fromScale, qint16 toScale, bool vertical = false,
                    double pixelsPerInch = 96.0);

class ScaleConverter : public ScaleSource {
public:
    // Makes a converter for a screen of `pixelsPerInch` (values of 0 or below mean 96).
    explicit ScaleConverter(double pixelsPerInch = 96.0);

    // Converts a horizontal distance from one scale mode to another.
    double ScaleX(double value, qint16 fromScale, qint16 toScale) const override;
    // Converts a vertical distance from one scale mode to another.
    double ScaleY(double value, qint16 fromScale, qint16 toScale) const override;

private:
    double m_pixelsPerInch;
};
