#include "modules/common/elidedlabel.h"

#include "modules/common/wholetexttip.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>

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
    showWholeTextTip(*static_cast<const QHelpEvent *>(event), text(), *this);
    return true;
}
