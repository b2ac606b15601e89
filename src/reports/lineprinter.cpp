#include "reports/lineprinter.h"

#include "base/gui/fonts.h"
#include "base/log.h"
#include "reports/showntext.h"

#include <QPainter>
#include <QPrinter>
#include <QTextLayout>

namespace {

const QPointF kStart(50, 50); ///< left end of the first base line, printer pixels
constexpr int kSmallestPixels = 7;

/// Breaks the text into lines of this width, the first base line at 0.
void breakLines(QTextLayout &layout, double width)
{
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    double top = 0;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        if (layout.lineCount() == 1)
            top = -line.ascent();
        line.setPosition({0, top});
        top += line.height();
    }
    layout.endLayout();
}

/// The largest font in which the text takes one line, or else the smallest that can be read.
QFont fittingFont(const QString &text, QPrinter &printer, double width)
{
    QFont font = fonts::text();
    while (font.pixelSize() > kSmallestPixels) {
        QTextLayout layout(text, font, &printer);
        breakLines(layout, width);
        if (layout.lineCount() <= 1)
            break;
        font.setPixelSize(font.pixelSize() - 1);
    }
    return font;
}

} // namespace

void prepareLinePrinter(QPrinter &printer)
{
    printer.setPageOrientation(QPageLayout::Landscape);
}

void printLine(QPrinter &printer, const QString &text)
{
    QPainter painter;
    if (!painter.begin(&printer)) {
        criticalLine("void printLine(QPrinter &,QString)") << "Nothing printed on" << printer.printerName();
        return;
    }
    const QString line = shownText(text.endsWith(QLatin1Char('\n')) ? text.chopped(1) : text);
    const double width = painter.viewport().width() - kStart.x();
    QTextLayout layout(line, fittingFont(line, printer, width), &printer);
    breakLines(layout, width);
    layout.draw(&painter, kStart);
}
