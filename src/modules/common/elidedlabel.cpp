#include "modules/common/elidedlabel.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

ElidedLabel::ElidedLabel(QWidget *parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
}

QString ElidedLabel::shownText() const
{
    return fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width() - 2 * margin());
}

void ElidedLabel::paintEvent(QPaintEvent *event)
{
    if (!isElided()) {
        QLabel::paintEvent(event);
        return;
    }
    QPainter painter(this);
    drawFrame(&painter);
    const int side = margin();
    style()->drawItemText(&painter, contentsRect().adjusted(side, side, -side, -side),
                          static_cast<int>(alignment()), palette(), isEnabled(), shownText(),
                          foregroundRole());
}

bool ElidedLabel::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip || !isElided())
        return QLabel::event(event);
    const QString own = toolTip();
    const QString whole = own.isEmpty() ? text() : text() + QLatin1Char('\n') + own;
    QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(),
                       whole.toHtmlEscaped().replace('\n', "<br/>"), this);
    return true;
}
