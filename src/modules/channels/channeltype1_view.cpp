#include "modules/channels/channeltype1_view.h"

#include "modules/common/gestures.h"

#include <QDebug>
#include <QPushButton>

ChannelType1_View::ChannelType1_View(TimeSource &time, QWidget *parent)
    : BridgeChannel_View(time, parent)
{
    setObjectName(QStringLiteral("ChannelType1_View"));
    polarityButton().setObjectName(QStringLiteral("checkBox_RevPol_100"));
    connect(&polarityButton(), &QPushButton::clicked, this,
            &ChannelType1_View::on_checkBox_RevPol_100_clicked);
}

void ChannelType1_View::on_checkBox_RevPol_100_clicked(bool checked)
{
    polarityClicked(checked);
}

bool ChannelType1_View::eventFilter(QObject *watched, QEvent *event)
{
    if (isAutozeroButton(watched) && isPressOf(*event, Qt::RightButton))
        qDebug() << "Mouse right button click triggered";
    return BridgeChannel_View::eventFilter(watched, event);
}
