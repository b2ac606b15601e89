#pragma once

#include <QString>

class QIODevice;

/// How HTML goes on paper.
enum class PdfFlow {
    OnePage,   ///< drawn in one piece; what does not fit on the page is cut
    PageByPage ///< as many pages as it takes, no row of a table is cut in two
};

/// Writes a PDF: A4, margins 50 mm left, 20 right, 20 top and 40 bottom, embedded fonts, the logo on every
/// page. `title` is for the viewer's window. `device` must be open for writing; whether all could be written
/// is told by the device.
void writePdf(QIODevice &device, const QString &html, PdfFlow flow, const QString &title);
