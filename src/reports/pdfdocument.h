#pragma once

#include <QString>

class QIODevice;

/// How HTML goes on paper.
enum class PdfFlow {
    OnePage,   ///< drawn in one piece; lines that do not fit on the page are left out
    PageByPage ///< as many pages as it takes; a row of a table is only parted if it is higher than a page,
               ///< and then between its lines of text
};

/// Writes a PDF: A4, margins 50 mm left, 20 right, 20 top and 40 bottom, embedded fonts, the logo on every
/// page and no text below it. `title` is for the viewer's window. False if painting could not begin, as on a
/// device that is not open for writing, or not end; whether all bytes reached their place is told by the
/// device.
[[nodiscard]] bool writePdf(QIODevice &device, const QString &html, PdfFlow flow, const QString &title);
