#include "system/rates/ratepicture.h"

#include "base/gui/fonts.h"

#include <QPainter>
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
    for (const int ratio : kDevicePixelRatios)
        picture.icon.addPixmap(drawn(document, picture.size, ratio));
    return picture;
}

} // namespace rates
