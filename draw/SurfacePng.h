#pragma once
// Saving a frame as a PNG file, to keep reference images and to look at what was drawn.

#include "OffScreenDC.h"

#include <QImage>
#include <QString>

// Writes an image as PNG; false when it is null or the file cannot be written.
bool saveImagePng(const QImage &image, const QString &path);
// Writes the surface of a drawing object as PNG; false when it has no surface or on failure.
bool saveSurfacePng(const OffScreenDC &dc, const QString &path);
