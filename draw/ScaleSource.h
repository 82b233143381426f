#pragma once
// Unit conversion as a drawing surface offers it (ScaleX / ScaleY between scale modes). Geometry
// code asks this interface instead of a concrete window, so tests and hosts can supply their own.

#include <QtGlobal>

// The scale modes a conversion understands (user-defined scales count as twips).
enum ScaleModeConstants : qint16 {
    vbUser = 0,
    vbTwips = 1,
    vbPoints = 2,
    vbPixels = 3,
    vbCharacters = 4,
    vbInches = 5,
    vbMillimeters = 6,
    vbCentimeters = 7,
    vbHimetric = 8,
};

class ScaleSource {
public:
    virtual ~ScaleSource() = default;
    // Converts a horizontal distance from one scale mode to another.
    virtual double ScaleX(double value, qint16 fromScale, qint16 toScale) const = 0;
    // Converts a vertical distance from one scale mode to another.
    virtual double ScaleY(double value, qint16 fromScale, qint16 toScale) const = 0;
};
