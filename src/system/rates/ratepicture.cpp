#include "system/rates/ratepicture.h"

#include "base/gui/fonts.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPalette>
#include <QTextDocument>
#include <QtMath>

namespace rates {

namespace {

constexpr int kDevicePixelRatios[] = {1, 2};

QString html(const RatePair &pair)
{
    return QStringLiteral("<p align=center><font size = 4>") + pair.large +
           QStringLiteral("</font><br/><font size=2 color=red>") + pair.small + QStringLiteral("</font></p>");
}

QPixmap drawn(QTextDocument &document, QSize size, int devicePixelRatio)
{
    QPixmap pixmap(size * devicePixelRatio);
    pixmap.setDevicePixelRatio(devicePixelRatio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    document.drawContents(&painter);
    return pixmap;
}

/// The same in one colour, that of a button which cannot be pressed. Styles grey a picture each in its own
/// way, and some leave so much of it that the dead cells are hard to tell.
QPixmap greyed(const QPixmap &drawn)
{
    QPixmap pixmap(drawn);
    QPainter painter(&pixmap);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(pixmap.rect(),
                     QGuiApplication::palette().color(QPalette::Disabled, QPalette::ButtonText));
    return pixmap;
}

} // namespace

RatePicture ratePicture(const RatePair &pair)
{
    QTextDocument document;
    document.setDefaultFont(fonts::text());
    document.setDocumentMargin(0);
    document.setDefaultStyleSheet(QStringLiteral("p { margin: 0px }"));
    document.setHtml(html(pair));
    document.setTextWidth(document.idealWidth()); // the lines are centred in it
    RatePicture picture;
    picture.size = QSize(qCeil(document.size().width()), qCeil(document.size().height()));
    for (const int ratio : kDevicePixelRatios) {
        const QPixmap live = drawn(document, picture.size, ratio);
        picture.icon.addPixmap(live);
        picture.icon.addPixmap(greyed(live), QIcon::Disabled);
    }
    return picture;
}

} // namespace rates
